// The item editor on the sample world: the record written through its result set, the grids and the
// list, a name with two adjacent quotes refused before any statement runs, saves that write only
// what changed, and failures that roll everything back.
#include "core/childwindows.h"
#include "core/clock.h"
#include "data/database.h"
#include "data/recordset.h"
#include "editors/editors.h"
#include "editors/frmadditem.h"
#include "editors/gridroutines.h"
#include "editors/ubgrid.h"
#include "viewsfixture.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTest>
#include <sqlite3.h>

namespace {
const QDateTime Stamp(QDate(2026, 11, 21), QTime(9, 30, 0));
const QString Ledger = "Smuggler's Ledger";
const QString Where = " FROM ITEMS WHERE ITEM_NAME = 'Smuggler''s Ledger'";

frmAddItem* editor(const QString& name) {
    OpenEditor("Items", name);
    return qobject_cast<frmAddItem*>(FindChildWindow(name.isEmpty() ? QString("Add Item") : "Edit: " + name));
}

void addRow(UBGrid* g, const QStringList& cells) {
    const int row = g->grid().rows() - 1;
    for (int c = 0; c < cells.size(); ++c)
        g->grid().userEdit(row, c + 1, cells.at(c));
}

// Counts the statements the connection runs while it is installed.
class StatementCounter {
public:
    StatementCounter() {
        sqlite3_trace_v2(db().handle(), SQLITE_TRACE_STMT, &StatementCounter::seen, &m_count);
    }
    ~StatementCounter() { sqlite3_trace_v2(db().handle(), 0, nullptr, nullptr); }
    int count() const { return m_count; }

private:
    static int seen(unsigned, void* count, void*, void*) {
        ++*static_cast<int*>(count);
        return 0;
    }
    int m_count = 0;
};
} // namespace

class TestFrmAddItem : public QObject {
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

    void loadShowsTheRecord() {
        auto* w = editor(Ledger);
        QVERIFY(w && w->isVisible());
        QCOMPARE(f.prompt().count(), 0);
        QCOMPARE(w->windowTitle(), "Edit: " + Ledger);
        QVERIFY(w->txtName->isReadOnly());
        QCOMPARE(w->cmbLevel->currentText(), f.scalar("SELECT LVL" + Where).toString());
        QCOMPARE(w->txtPrice->text(), f.scalar("SELECT PRICE" + Where).toString());
        QCOMPARE(w->ubgMOBs->grid().lastDataRow(), 2);
        QCOMPARE(w->ubgManuComps->grid().lastDataRow(), 2);
        QCOMPARE(w->ubgManuComps->grid().header(1), QString("Component Name"));
        QCOMPARE(w->lstBuyLocations->count(), 2);
        // The sub-tabs say how many rows each grid holds.
        auto* usedIn = qobject_cast<QTabWidget*>(w->tabMain->widget(1));
        QVERIFY(usedIn);
        QCOMPARE(usedIn->tabText(1), QString("Components (2)"));
        addRow(w->ubgManuComps, {"Basic Gyro Core", "1"});
        QCOMPARE(usedIn->tabText(1), QString("Components (3)"));
    }

    void addingWritesTheRecordItsListAndGrids() {
        auto* w = editor("");
        QVERIFY(w && w->isNew());
        QCOMPARE(w->windowTitle(), QString("Add Item"));
        w->txtName->setText("Pilot's Log");
        w->cmbLevel->setEditText("7");
        w->txtPrice->setText("-2");
        QCOMPARE(w->lblPriceWord->text(), QString("Mission Reward"));
        w->txtComments->setPlainText("Given by Kell's harbourmaster");
        w->setPicture(12);
        w->lstBuyLocations->addItems({"Kell's Anchorage", "Harrow Station"});
        addRow(w->ubgManuEquip, {"Hunter's Lance Mk I", "2"});
        addRow(w->ubgManuComps, {"Basic Navigator's Sextant", "1"});
        addRow(w->ubgManuRawMats, {"Miner's Gold", "3"});
        addRow(w->ubgMOBs, {"Brother Kell's Wraith", "Very Rare"});
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(m_saved, QStringList({"Items: Pilot's Log"}));

        Recordset rs;
        rs.open("SELECT * FROM ITEMS WHERE ITEM_NAME = 'Pilot''s Log'");
        QVERIFY(!rs.eof());
        QCOMPARE(rs.value("LVL").toInt(), 7);
        QCOMPARE(rs.value("PRICE").toInt(), -2);
        QCOMPARE(rs.value("COMMENTS").toString(), QString("Given by Kell's harbourmaster"));
        QCOMPARE(rs.value("PIC_ID").toInt(), 12);
        QCOMPARE(rs.value("PERSONAL_DB").toBool(), true);
        QCOMPARE(rs.value("UPDATED").toBool(), true);
        QCOMPARE(rs.value("LAST_UPDATED").toString(), generalDate(Stamp));
        rs.close();
        const QString n = "'Pilot''s Log'";
        QCOMPARE(f.scalar("SELECT AMOUNT FROM EQUIPMENTS_ITEMS WHERE ITEM_NAME = " + n +
                          " AND EQUIPMENTS_EQUIPMENT = 'Hunter''s Lance Mk I'")
                     .toInt(),
                 2);
        QCOMPARE(f.scalar("SELECT AMOUNT FROM COMPONENTS_ITEMS WHERE ITEM_NAME = " + n +
                          " AND COMPONENT_NAME = 'Basic Navigator''s Sextant'")
                     .toInt(),
                 1);
        QCOMPARE(f.scalar("SELECT AMOUNT FROM RAW_MATERIALS_ITEMS WHERE ITEM_NAME = " + n +
                          " AND RAW_MATERIAL_NAME = 'Miner''s Gold'")
                     .toInt(),
                 3);
        QCOMPARE(f.scalar("SELECT DROP_FREQUENCY FROM MOB_ITEM_DROP WHERE ITEM_NAME = " + n +
                          " AND MOB_NAME = 'Brother Kell''s Wraith'")
                     .toString(),
                 QString("Very Rare"));
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM BUY_ITEM_LOCATIONS WHERE ITEM_NAME = " + n +
                          " AND STATIONS_STATION IN ('Kell''s Anchorage', 'Harrow Station')")
                     .toInt(),
                 2);
        QCOMPARE(f.prompt().count(), 0);
    }

    void savesWriteOnlyWhatChanged_data() {
        QTest::addColumn<QString>("change");
        QTest::addColumn<bool>("stamped");
        QTest::newRow("nothing") << "" << false;
        QTest::newRow("level") << "level" << true;
        QTest::newRow("level back as it was") << "level back" << false;
        QTest::newRow("a grid only") << "grid" << true;
        QTest::newRow("the list only") << "list" << true;
        QTest::newRow("price cleared") << "price cleared" << true;
    }
    void savesWriteOnlyWhatChanged() {
        QFETCH(QString, change);
        QFETCH(bool, stamped);
        QVERIFY2(
            f.exec(
                {"UPDATE ITEMS SET UPDATED = FALSE, LAST_UPDATED = '2020-01-01 00:00:00' WHERE ITEM_NAME = "
                 "'Smuggler''s Ledger'"},
                &m_error),
            qPrintable(m_error));
        const QString level = f.scalar("SELECT LVL" + Where).toString();
        auto* w = editor(Ledger);
        QVERIFY(w);
        if (change == "level") {
            w->cmbLevel->setEditText("59");
        } else if (change == "level back") {
            w->cmbLevel->setEditText("59");
            w->cmbLevel->setEditText(level);
        } else if (change == "grid") {
            w->ubgMOBs->grid().userEdit(1, 2, "Very Frequent");
        } else if (change == "list") {
            w->lstBuyLocations->takeItem(0);
        } else if (change == "price cleared") {
            w->txtPrice->clear();
        }
        const int before = sqlite3_total_changes(db().handle());
        const SaveResult result = w->cmdSave_Click();
        QCOMPARE(result, stamped ? SaveResult::Saved : SaveResult::Unchanged);
        if (!stamped)
            QCOMPARE(sqlite3_total_changes(db().handle()), before);
        QCOMPARE(f.scalar("SELECT UPDATED" + Where).toBool(), stamped);
        QCOMPARE(f.scalar("SELECT LAST_UPDATED" + Where).toString(),
                 stamped ? generalDate(Stamp) : QString("2020-01-01 00:00:00"));
        QCOMPARE(f.scalar("SELECT LVL" + Where).toString(), change == "level" ? QString("59") : level);
        // A cleared price is no price at all, not an empty text.
        QCOMPARE(f.scalar("SELECT PRICE IS NULL" + Where).toBool(), change == "price cleared");
        QCOMPARE(m_saved, QStringList({"Items: " + Ledger}));
        QVERIFY(!db().inTransaction());
    }

    void twoAdjacentQuotesAreRefusedBeforeAnyStatement() {
        auto* w = editor("");
        QVERIFY(w);
        w->txtName->setText("Pilot''s Log");
        w->txtPrice->setText("5");
        addRow(w->ubgMOBs, {"Ashen Maw", "Rare"});
        SaveResult result;
        {
            StatementCounter statements;
            result = w->cmdSave_Click();
            QCOMPARE(statements.count(), 0);
        }
        QCOMPARE(result, SaveResult::Refused);
        QCOMPARE(f.prompt().count(), 1);
        QCOMPARE(f.prompt().last().title, QString("Invalid name"));
        QCOMPARE(f.prompt().last().style, int(vb::Exclamation));
        QVERIFY(w->isVisible());
        QCOMPARE(w->txtName->text(), QString("Pilot''s Log"));
        // Corrected, it saves.
        w->txtName->setText("Pilot's Log");
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM MOB_ITEM_DROP WHERE ITEM_NAME = 'Pilot''s Log'").toInt(), 1);
    }

    void failureInTheLastGridWriteRollsEverythingBack() {
        const QString price = f.scalar("SELECT PRICE" + Where).toString();
        const int recipes = f.scalar("SELECT COUNT(*) FROM RAW_MATERIALS_ITEMS").toInt();
        auto* w = editor(Ledger);
        QVERIFY(w);
        w->txtPrice->setText("777");
        w->lstBuyLocations->addItem("Sable Ring");
        addRow(w->ubgManuRawMats, {"Miner's Gold", "2"});
        // ubgMOBs is written last; a frequency longer than its column is refused.
        addRow(w->ubgMOBs, {"Ashen Maw", QString(60, 'x')});
        QCOMPARE(w->cmdSave_Click(), SaveResult::Failed);
        QCOMPARE(f.prompt().count(), 1);
        QCOMPARE(f.prompt().last().title, QString("Too Large"));
        QVERIFY(!db().inTransaction());
        QCOMPARE(f.scalar("SELECT PRICE" + Where).toString(), price);
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM RAW_MATERIALS_ITEMS").toInt(), recipes);
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM BUY_ITEM_LOCATIONS WHERE ITEM_NAME = 'Smuggler''s Ledger'")
                     .toInt(),
                 2);
        QVERIFY(w->isVisible());
        QCOMPARE(w->txtPrice->text(), QString("777"));
        QCOMPARE(w->lstBuyLocations->count(), 3);
    }

    void failuresNameTheFormWithoutItsWord() {
        OpenEditor("Items", "Nothing Here");
        QCOMPARE(f.prompt().count(), 1);
        QVERIFY(f.prompt().last().text.endsWith("procedure Form_Load of frmAddItem"));
        // An item deleted while its editor is open is not written back, nor are its link rows.
        auto* w = editor(Ledger);
        QVERIFY(w);
        QVERIFY2(f.exec({"DELETE FROM ITEMS WHERE ITEM_NAME = 'Smuggler''s Ledger'"}, &m_error),
                 qPrintable(m_error));
        addRow(w->ubgManuRawMats, {"Miner's Gold", "2"});
        QCOMPARE(w->cmdSave_Click(), SaveResult::Failed);
        QVERIFY(f.prompt().last().text.endsWith("procedure cmdSave_Click of frmAddItem"));
        QCOMPARE(f.scalar("SELECT COUNT(*)" + Where).toInt(), 0);
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM RAW_MATERIALS_ITEMS WHERE ITEM_NAME = 'Smuggler''s Ledger'")
                     .toInt(),
                 0);
    }

private:
    ViewsFixture f;
    QString m_error;
    QStringList m_saved;
};

QTEST_MAIN(TestFrmAddItem)
#include "tst_frmadditem.moc"
