// The raw material editor on the sample world: loading, adding, the exact statements of its save,
// the refusals before anything is written, all-or-nothing saves, and names with a single quote.
#include "core/childwindows.h"
#include "core/clock.h"
#include "data/database.h"
#include "data/recordset.h"
#include "editors/editors.h"
#include "editors/frmaddrawmaterials.h"
#include "editors/gridroutines.h"
#include "editors/ubgrid.h"
#include "viewsfixture.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QScopeGuard>
#include <QTest>
#include <sqlite3.h>

namespace {
const QDateTime Stamp(QDate(2026, 11, 21), QTime(9, 30, 0));

frmAddRawMaterials* editor(const QString& name) {
    OpenEditor("Raw Materials", name);
    return qobject_cast<frmAddRawMaterials*>(
        FindChildWindow(name.isEmpty() ? QString("Add Raw Material") : "Edit: " + name));
}

// Types a row into the grid's entry row, as the user would.
void addRow(UBGrid* g, const QStringList& cells) {
    const int row = g->grid().rows() - 1;
    for (int c = 0; c < cells.size(); ++c)
        g->grid().userEdit(row, c + 1, cells.at(c));
}

QStringList column(const QString& sql) {
    Recordset rs;
    rs.open(sql);
    QStringList out;
    for (; !rs.eof(); rs.moveNext())
        out << rs.value(0).toString();
    return out;
}
} // namespace

class TestFrmAddRawMaterials : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString e;
        QVERIFY2(f.setUp(true, &e), qPrintable(e));
        setClock([] { return Stamp; });
        m_saved.clear();
        setRecordSavedHandler(
            [this](const QString& kind, const QString& name) { m_saved << kind + ": " + name; });
    }
    void cleanup() {
        CloseChildWindows();
        QApplication::processEvents();
        setRecordSavedHandler(nullptr);
        setClock(nullptr);
        f.tearDown();
    }

    void statementsAsWritten() {
        rawmat::Fields r;
        r.name = "Tinker's Dust";
        r.level = "5";
        r.price = "-1";
        r.comments = "It's shiny";
        r.picture = 7;
        QCOMPARE(
            rawmat::insertSql(r, Stamp),
            QString(
                "INSERT INTO RAW_MATERIALS (RAW_MATERIAL_NAME, LVL, PRICE, COMMENTS, PERSONAL_DB, PIC_ID, "
                "LAST_UPDATED) VALUES ('Tinker''s Dust',5,-1,'It''s shiny',TRUE,7, '2026-11-21 09:30:00')"));
        QCOMPARE(
            rawmat::updateSql(r, Stamp),
            QString(
                "UPDATE RAW_MATERIALS SET LVL = 5, PRICE = -1, COMMENTS = 'It''s shiny', UPDATED = TRUE, "
                "PIC_ID = 7, LAST_UPDATED = '2026-11-21 09:30:00' WHERE RAW_MATERIAL_NAME = 'Tinker''s Dust'"));
        // The two grids whose rows hang on the record by another column name carry that column.
        QCOMPARE(
            rawmat::grid("ubgManuComps").save("A'B"),
            QString("SELECT COMPONENTS_COMPONENT, AMOUNT, RAW_MATERIAL FROM COMPONENTS_RAW_MATERIALS WHERE "
                    "RAW_MATERIAL = 'A'B' ORDER BY COMPONENTS_COMPONENT"));
        QCOMPARE(rawmat::grid("ubgManuEquip").keyColumn, QString("RAW_MATERIAL_NAME"));
    }

    void loadShowsTheRecord() {
        const QString name =
            f.scalar("SELECT RAW_MATERIAL_NAME FROM RAW_MATERIALS_REFINES_FROM ORDER BY RAW_MATERIAL_NAME")
                .toString();
        auto* w = editor(name);
        QVERIFY(w && w->isVisible());
        QCOMPARE(f.prompt().count(), 0);
        QCOMPARE(w->windowTitle(), "Edit: " + name);
        QVERIFY(!w->isNew() && w->txtName->isReadOnly());
        QCOMPARE(
            w->cmbLevel->currentText(),
            f.scalar("SELECT LVL FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME = '" + name + "'").toString());
        QCOMPARE(w->ubgBlueRawMats->grid().lastDataRow(),
                 f.scalar("SELECT COUNT(*) FROM RAW_MATERIALS_REFINES_FROM WHERE RAW_MATERIAL_NAME = '" +
                          name + "'")
                     .toInt());
        QCOMPARE(w->ubgBlueRawMats->grid().header(2), QString("Amount"));
        QVERIFY(w->ubgBlueRawMats->grid().colNumeric(2));
        QCOMPARE(w->listEntries(w->lstMineLocations),
                 column("SELECT SECTORS_SECTOR FROM MINE_LOCATIONS WHERE RAW_MATERIAL = '" + name +
                        "' ORDER BY SECTORS_SECTOR"));
        // A second request brings the same window forward.
        QCOMPARE(editor(name), w);
    }

    void addingWritesTheRecordItsListsAndGrids() {
        auto* w = editor("");
        QVERIFY(w && w->isNew());
        QCOMPARE(w->windowTitle(), QString("Add Raw Material"));
        w->txtName->setText("Tinker's Dust");
        w->cmbLevel->setEditText("5");
        w->txtPrice->setText("-1");
        QCOMPARE(w->lblPriceWord->text(), QString("Loot Only"));
        w->txtComments->setPlainText("It's shiny");
        w->setPicture(7);
        w->lstBuyLocations->addItems({"Kell's Post"});
        addRow(w->ubgManuComps, {"Smuggler's Coil", "3"});
        addRow(w->ubgMOBs, {"Hive Queen", "Rare"});
        addRow(w->ubgBlueItems, {"Smuggler's Ledger", "2"});
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(m_saved, QStringList({"Raw Materials: Tinker's Dust"}));
        QApplication::processEvents();
        QVERIFY(!FindChildWindow("Add Raw Material"));

        Recordset rs;
        rs.open("SELECT * FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME = 'Tinker''s Dust'");
        QVERIFY(!rs.eof());
        QCOMPARE(rs.value("LVL").toInt(), 5);
        QCOMPARE(rs.value("PRICE").toInt(), -1);
        QCOMPARE(rs.value("COMMENTS").toString(), QString("It's shiny"));
        QCOMPARE(rs.value("PIC_ID").toInt(), 7);
        QCOMPARE(rs.value("PERSONAL_DB").toBool(), true);
        QCOMPARE(rs.value("LAST_UPDATED").toString(), generalDate(Stamp));
        // The save query of "Requires in Manufacture: Components" carries its key column.
        QCOMPARE(
            f.scalar("SELECT AMOUNT FROM COMPONENTS_RAW_MATERIALS WHERE RAW_MATERIAL = 'Tinker''s Dust' AND "
                     "COMPONENTS_COMPONENT = 'Smuggler''s Coil'")
                .toInt(),
            3);
        QCOMPARE(
            f.scalar("SELECT DROP_FREQUENCY FROM MOB_RAW_MAT_DROP WHERE RAW_MATERIAL_NAME = 'Tinker''s Dust'")
                .toString(),
            QString("Rare"));
        QCOMPARE(
            column("SELECT ITEM_NAME FROM RAW_MATERIALS_ITEMS WHERE RAW_MATERIAL_NAME = 'Tinker''s Dust'"),
            QStringList({"Smuggler's Ledger"}));
        QCOMPARE(column("SELECT STATIONS_STATION FROM BUY_RAW_MATERIAL_LOCATIONS WHERE RAW_MATERIAL = "
                        "'Tinker''s Dust'"),
                 QStringList({"Kell's Post"}));
        QCOMPARE(f.prompt().count(), 0);
    }

    void savesWriteOnlyWhatChanged_data() {
        QTest::addColumn<QString>("change");
        QTest::addColumn<int>("rowsWritten"); // -1: nothing at all
        QTest::addColumn<bool>("stamped");
        QTest::newRow("nothing") << "" << -1 << false;
        QTest::newRow("price") << "price" << 1 << true;
        QTest::newRow("comments back as they were") << "comments back" << -1 << false;
        QTest::newRow("a grid only") << "grid" << 2 << true;
        QTest::newRow("a grid edited back") << "grid back" << -1 << false;
        QTest::newRow("a list only") << "list" << 2 << true;
    }
    void savesWriteOnlyWhatChanged() {
        QFETCH(QString, change);
        QFETCH(int, rowsWritten);
        QFETCH(bool, stamped);
        const QString name = "Miner's Gold";
        QVERIFY2(
            f.exec({"UPDATE RAW_MATERIALS SET UPDATED = FALSE, LAST_UPDATED = '2020-01-01 00:00:00' WHERE "
                    "RAW_MATERIAL_NAME = 'Miner''s Gold'"},
                   &m_error),
            qPrintable(m_error));
        auto* w = editor(name);
        QVERIFY(w);
        if (change == "price") {
            w->txtPrice->setText("900");
        } else if (change == "comments back") {
            const QString was = w->txtComments->toPlainText();
            w->txtComments->setPlainText("changed");
            w->txtComments->setPlainText(was);
        } else if (change == "grid") {
            addRow(w->ubgMOBs, {"Hive Queen", "Rare"});
        } else if (change == "grid back") {
            addRow(w->ubgMOBs, {"Hive Queen", "Rare"});
            w->ubgMOBs->grid().userEdit(w->ubgMOBs->grid().lastDataRow(), 1, NoneEntry);
        } else if (change == "list") {
            w->lstMineLocations->addItem("Aster Reach");
        }
        const int before = sqlite3_total_changes(db().handle());
        const SaveResult result = w->cmdSave_Click();
        const int written = sqlite3_total_changes(db().handle()) - before;
        QCOMPARE(result, rowsWritten < 0 ? SaveResult::Unchanged : SaveResult::Saved);
        if (rowsWritten < 0)
            QCOMPARE(written, 0);
        else
            QVERIFY2(written >= rowsWritten, qPrintable(QString::number(written)));
        QCOMPARE(
            f.scalar("SELECT UPDATED FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME = 'Miner''s Gold'").toBool(),
            stamped);
        QCOMPARE(f.scalar("SELECT LAST_UPDATED FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME = 'Miner''s Gold'")
                     .toString(),
                 stamped ? generalDate(Stamp) : QString("2020-01-01 00:00:00"));
        // Either way the window closes and the main list is told.
        QCOMPARE(m_saved, QStringList({"Raw Materials: Miner's Gold"}));
        QVERIFY(!db().inTransaction());
    }

    void refusedBeforeAnythingIsWritten_data() {
        QTest::addColumn<QString>("record");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("price");
        QTest::addColumn<QStringList>("mobRow");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("text");
        const QString empty = "One or more of the values entered must not be empty";
        QTest::newRow("no name") << ""
                                 << ""
                                 << "10" << QStringList() << "Empty Data" << empty;
        QTest::newRow("no price") << "Miner's Gold"
                                  << ""
                                  << "" << QStringList() << "Empty Data" << empty;
        QTest::newRow("two adjacent quotes")
            << ""
            << "Miner''s Gold"
            << "10" << QStringList() << "Invalid name"
            << "Names cannot contain a double single-quote! Please change name to continue.";
        QTest::newRow("a grid row without its frequency")
            << "Miner's Gold"
            << ""
            << "10" << QStringList{"Hive Queen"} << "General: MOBs Error"
            << "General: MOBs:\r\nPlease specify an entry for Drop Frequency\r\nRow: 1,  Column: 2";
        QTest::newRow("a new record's name taken in another letter case")
            << ""
            << "MINER'S GOLD"
            << "10" << QStringList() << "Duplicate Record"
            << "The name of the item you entered already exists, please rename this item";
    }
    void refusedBeforeAnythingIsWritten() {
        QFETCH(QString, record);
        QFETCH(QString, name);
        QFETCH(QString, price);
        QFETCH(QStringList, mobRow);
        QFETCH(QString, title);
        QFETCH(QString, text);
        QVERIFY2(f.exec({"DELETE FROM MOB_RAW_MAT_DROP WHERE RAW_MATERIAL_NAME = 'Miner''s Gold'"}, &m_error),
                 qPrintable(m_error));
        auto* w = editor(record);
        QVERIFY(w);
        if (record.isEmpty())
            w->txtName->setText(name);
        w->txtPrice->setText(price);
        if (!mobRow.isEmpty())
            addRow(w->ubgMOBs, mobRow);
        const int before = sqlite3_total_changes(db().handle());
        const SaveResult result = w->cmdSave_Click();
        QVERIFY(result == SaveResult::Refused || result == SaveResult::Failed);
        QCOMPARE(f.prompt().count(), 1);
        QCOMPARE(f.prompt().last().title, title);
        QCOMPARE(f.prompt().last().text, text);
        // The window stays open with the user's edits; nothing stays written.
        QVERIFY(w->isVisible());
        QCOMPARE(w->txtPrice->text(), price);
        QCOMPARE(w->ubgMOBs->grid().lastDataRow(), mobRow.isEmpty() ? 0 : 1);
        QVERIFY(!db().inTransaction());
        QVERIFY(m_saved.isEmpty());
        if (title != "Duplicate Record")
            QCOMPARE(sqlite3_total_changes(db().handle()), before);
        QCOMPARE(
            f.scalar("SELECT COUNT(*) FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME = 'MINER''S GOLD'").toInt(),
            1);
    }

    void failureInTheLastGridWriteRollsEverythingBack() {
        const QString name = "Miner's Gold";
        const QString price =
            f.scalar("SELECT PRICE FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME = 'Miner''s Gold'").toString();
        const int refines = f.scalar("SELECT COUNT(*) FROM RAW_MATERIALS_REFINES_FROM").toInt();
        auto* w = editor(name);
        QVERIFY(w);
        w->txtPrice->setText("12345");
        w->lstBuyLocations->addItem("Kell's Post");
        addRow(w->ubgBlueRawMats, {"Ferrite Ore", "4"});
        // ubgBlueItems is written last; its amount cannot be stored.
        addRow(w->ubgBlueItems, {"Smuggler's Ledger", "plenty"});
        QCOMPARE(w->cmdSave_Click(), SaveResult::Failed);
        QCOMPARE(f.prompt().count(), 1);
        QCOMPARE(f.prompt().last().title, QString("Invalid Values"));
        QVERIFY(!db().inTransaction());
        QCOMPARE(
            f.scalar("SELECT PRICE FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME = 'Miner''s Gold'").toString(),
            price);
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM RAW_MATERIALS_REFINES_FROM").toInt(), refines);
        QCOMPARE(
            f.scalar("SELECT COUNT(*) FROM BUY_RAW_MATERIAL_LOCATIONS WHERE RAW_MATERIAL = 'Miner''s Gold'")
                .toInt(),
            0);
        QVERIFY(w->isVisible());
        QCOMPARE(w->txtPrice->text(), QString("12345"));
        QCOMPARE(w->ubgBlueItems->grid().text(1, 2), QString("plenty"));
        // Corrected, the same window saves everything.
        w->ubgBlueItems->grid().userEdit(1, 2, "2");
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(
            f.scalar("SELECT PRICE FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME = 'Miner''s Gold'").toInt(),
            12345);
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM RAW_MATERIALS_REFINES_FROM").toInt(), refines + 1);
    }

    void aMissingRecordIsReported() {
        OpenEditor("Raw Materials", "Nothing Here");
        QCOMPARE(f.prompt().count(), 1);
        QVERIFY(f.prompt().last().text.endsWith("procedure Form_Load of Form frmAddRawMaterials"));
        QVERIFY(!FindChildWindow("Edit: Nothing Here"));
        // A record deleted while its editor is open is not written back, nor are its link rows.
        auto* w = editor("Miner's Gold");
        QVERIFY(w);
        QVERIFY2(f.exec({"DELETE FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME = 'Miner''s Gold'"}, &m_error),
                 qPrintable(m_error));
        addRow(w->ubgMOBs, {"Hive Queen", "Rare"});
        QCOMPARE(w->cmdSave_Click(), SaveResult::Failed);
        QVERIFY(f.prompt().last().text.endsWith("procedure cmdSave_Click of Form frmAddRawMaterials"));
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM MOB_RAW_MAT_DROP WHERE RAW_MATERIAL_NAME = 'Miner''s Gold'")
                     .toInt(),
                 0);
    }

    void closingWithChangesAsks() {
        auto* w = editor("Miner's Gold");
        QVERIFY(w);
        QVERIFY(w->close()); // nothing changed: no question
        QCOMPARE(f.prompt().count(), 0);
        QApplication::processEvents();
        w = editor("Miner's Gold");
        w->txtPrice->setText("1");
        f.prompt().queueButton(vb::No);
        QVERIFY(!w->close());
        QCOMPARE(f.prompt().last().title, QString("Unsaved Changes"));
        f.prompt().queueButton(vb::Yes);
        QVERIFY(w->close());
        QVERIFY(m_saved.isEmpty());
    }

private:
    ViewsFixture f;
    QString m_error;
    QStringList m_saved;
};

QTEST_MAIN(TestFrmAddRawMaterials)
#include "tst_frmaddrawmaterials.moc"
