// The station editor on the sample world: a new station with what it sells of each kind and its
// terminals, a station's sector required, saves that write only what changed and stamp the station,
// failures that roll everything back, and names with a single quote.
#include "core/childwindows.h"
#include "core/clock.h"
#include "data/database.h"
#include "data/recordset.h"
#include "editors/editors.h"
#include "editors/frmaddstation.h"
#include "editors/frmlistdialog.h"
#include "editors/gridroutines.h"
#include "editors/ubgrid.h"
#include "editortests.h"
#include "viewsfixture.h"

#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <sqlite3.h>

namespace {
const QDateTime Stamp(QDate(2026, 11, 21), QTime(9, 30, 0));
const QString Kells = "Kell's Anchorage";
const QString Where = " FROM STATIONS WHERE STATION_NAME = 'Kell''s Anchorage'";

frmAddStation* editor(const QString& name) {
    OpenEditor("Stations", name);
    return qobject_cast<frmAddStation*>(
        FindChildWindow(name.isEmpty() ? QString("Add Station") : "Edit: " + name));
}

void addRow(UBGrid* g, const QStringList& cells) {
    const int row = g->grid().rows() - 1;
    for (int c = 0; c < cells.size(); ++c)
        g->grid().userEdit(row, c + 1, cells.at(c));
}
} // namespace

class TestFrmAddStation : public QObject {
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

    void loadShowsTheStationAndWhatItSells() {
        auto* w = editor(Kells);
        QVERIFY(w && w->isVisible());
        QCOMPARE(f.prompt().count(), 0);
        QVERIFY(w->txtName->isReadOnly());
        const QString sector = f.scalar("SELECT SECTORS_SECTOR" + Where).toString();
        QCOMPARE(w->cmbSector->currentText(), sector);
        QCOMPARE(w->lblSystem->text(),
                 "in the " +
                     f.scalar("SELECT SYSTEM_SYSTEM_NAME FROM SECTORS WHERE SECTOR_NAME = '" + sector + "'")
                         .toString() +
                     " system");
        for (const station::Sells& s : station::sells()) {
            QCOMPARE(w->fields().name, Kells);
            QCOMPARE(ListEntries(w, s.widget), column(s.loadSql(Kells)));
        }
        QCOMPARE(w->sellsList("lstSellsItems")->count(), 2);
        QCOMPARE(qobject_cast<QGroupBox*>(w->sellsList("lstSellsItems")->parentWidget())->title(),
                 QString("Items (2)"));
        QCOMPARE(w->ubgTerminals->grid().lastDataRow(),
                 f.scalar("SELECT COUNT(*) FROM STATION_TERMINALS WHERE STATION_NAME = 'Kell''s Anchorage'")
                     .toInt());
        // The terminal list offers the terminal types in use anywhere.
        QVERIFY(w->ubgTerminals->grid().listDisplays(1).contains("Shipyard"));
    }

    void addingWritesTheStationWhatItSellsAndItsTerminals() {
        auto* w = editor("");
        QVERIFY(w && w->isNew());
        w->txtName->setText("Orla's Rest");
        w->cmbSector->setCurrentText("Veyl Drift");
        QCOMPARE(w->lblSystem->text(), QString("in the Veyl system"));
        w->txtComments->setPlainText("Quiet; Kell's crew drinks here");
        w->sellsList("lstSellsEquipment")->addItem("Hunter's Lance Mk I");
        w->sellsList("lstSellsComponents")->addItem("Basic Navigator's Sextant");
        w->sellsList("lstSellsRawMaterials")->addItem("Miner's Gold");
        w->sellsList("lstSellsItems")->addItems({"Smuggler's Ledger", "Cracked Signal Beacon"});
        addRow(w->ubgTerminals, {"Bar"});
        addRow(w->ubgTerminals, {"Smuggler's Den"}); // a type not yet in use anywhere
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(m_saved, QStringList({"Stations: Orla's Rest"}));

        Recordset rs;
        rs.open("SELECT * FROM STATIONS WHERE STATION_NAME = 'Orla''s Rest'");
        QVERIFY(!rs.eof());
        QCOMPARE(rs.value("SECTORS_SECTOR").toString(), QString("Veyl Drift"));
        QCOMPARE(rs.value("COMMENTS").toString(), QString("Quiet; Kell's crew drinks here"));
        QCOMPARE(rs.value("PERSONAL_DB").toBool(), true);
        QCOMPARE(rs.value("UPDATED").toBool(), true);
        QCOMPARE(rs.value("LAST_UPDATED").toString(), generalDate(Stamp));
        rs.close();
        const QString n = "'Orla''s Rest'";
        QCOMPARE(
            column("SELECT EQUIPMENTS_EQUIPMENT FROM BUY_EQUIPMENT_LOCATION WHERE STATIONS_STATION = " + n),
            QStringList({"Hunter's Lance Mk I"}));
        QCOMPARE(
            column("SELECT COMPONENTS_COMPONENT FROM BUY_COMPONENT_LOCATIONS WHERE STATIONS_STATION = " + n),
            QStringList({"Basic Navigator's Sextant"}));
        QCOMPARE(column("SELECT RAW_MATERIAL FROM BUY_RAW_MATERIAL_LOCATIONS WHERE STATIONS_STATION = " + n),
                 QStringList({"Miner's Gold"}));
        QCOMPARE(column("SELECT ITEM_NAME FROM BUY_ITEM_LOCATIONS WHERE STATIONS_STATION = " + n +
                        " ORDER BY ITEM_NAME"),
                 QStringList({"Cracked Signal Beacon", "Smuggler's Ledger"}));
        QCOMPARE(column("SELECT TERMINAL_TYPE FROM STATION_TERMINALS WHERE STATION_NAME = " + n +
                        " ORDER BY TERMINAL_TYPE"),
                 QStringList({"Bar", "Smuggler's Den"}));
        // The station is in the station list, which joins stations to their sectors.
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM SECTORS INNER JOIN STATIONS ON SECTORS.SECTOR_NAME = "
                          "STATIONS.SECTORS_SECTOR WHERE STATION_NAME = " +
                          n)
                     .toInt(),
                 1);
        QCOMPARE(f.prompt().count(), 0);
    }

    void theSellsListsChangeThroughThePickDialog() {
        auto* w = editor(Kells);
        QVERIFY(w);
        whenShown<frmListDialog>([](frmListDialog* d) {
            QCOMPARE(d->windowTitle(), QString("Select available Raw Materials"));
            d->lstAvailable->setCurrentRow(0);
            d->cmdAdd_Click();
            d->cmdOK->click();
        });
        w->findChild<QPushButton*>("cmdSellsRawMaterials")->click();
        QCOMPARE(w->sellsList("lstSellsRawMaterials")->count(), 1);
        const QString first =
            f.scalar("SELECT RAW_MATERIAL_NAME FROM RAW_MATERIALS ORDER BY RAW_MATERIAL_NAME").toString();
        QCOMPARE(w->sellsList("lstSellsRawMaterials")->item(0)->text(), first);
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(
            column("SELECT RAW_MATERIAL FROM BUY_RAW_MATERIAL_LOCATIONS WHERE STATIONS_STATION = 'Kell''s "
                   "Anchorage'"),
            QStringList({first}));
        QCOMPARE(f.scalar("SELECT UPDATED" + Where).toBool(), true);
    }

    void savesWriteOnlyWhatChanged_data() {
        QTest::addColumn<QString>("change");
        QTest::addColumn<bool>("stamped");
        QTest::newRow("nothing") << "" << false;
        QTest::newRow("sector") << "sector" << true;
        QTest::newRow("comments typed and taken back") << "comments back" << false;
        QTest::newRow("a terminal removed") << "terminal" << true;
        QTest::newRow("one kind sold no more") << "sells" << true;
    }
    void savesWriteOnlyWhatChanged() {
        QFETCH(QString, change);
        QFETCH(bool, stamped);
        QVERIFY2(f.exec({"UPDATE STATIONS SET UPDATED = FALSE, LAST_UPDATED = '2020-01-01 00:00:00' WHERE "
                         "STATION_NAME = 'Kell''s Anchorage'"},
                        &m_error),
                 qPrintable(m_error));
        const QString sector = f.scalar("SELECT SECTORS_SECTOR" + Where).toString();
        const int equipment =
            f.scalar(
                 "SELECT COUNT(*) FROM BUY_EQUIPMENT_LOCATION WHERE STATIONS_STATION = 'Kell''s Anchorage'")
                .toInt();
        auto* w = editor(Kells);
        QVERIFY(w);
        if (change == "sector") {
            w->cmbSector->setCurrentText("Mossgate Verge");
        } else if (change == "comments back") {
            const QString was = w->txtComments->toPlainText();
            w->txtComments->setPlainText("changed");
            w->txtComments->setPlainText(was);
        } else if (change == "terminal") {
            w->ubgTerminals->grid().userEdit(1, 1, NoneEntry);
        } else if (change == "sells") {
            w->sellsList("lstSellsEquipment")->clear();
        }
        const int before = sqlite3_total_changes(db().handle());
        QCOMPARE(w->cmdSave_Click(), stamped ? SaveResult::Saved : SaveResult::Unchanged);
        if (!stamped)
            QCOMPARE(sqlite3_total_changes(db().handle()), before);
        QCOMPARE(f.scalar("SELECT UPDATED" + Where).toBool(), stamped);
        QCOMPARE(f.scalar("SELECT LAST_UPDATED" + Where).toString(),
                 stamped ? generalDate(Stamp) : QString("2020-01-01 00:00:00"));
        QCOMPARE(f.scalar("SELECT SECTORS_SECTOR" + Where).toString(),
                 change == "sector" ? QString("Mossgate Verge") : sector);
        QCOMPARE(
            f.scalar(
                 "SELECT COUNT(*) FROM BUY_EQUIPMENT_LOCATION WHERE STATIONS_STATION = 'Kell''s Anchorage'")
                .toInt(),
            change == "sells" ? 0 : equipment);
        QCOMPARE(m_saved, QStringList({"Stations: " + Kells}));
    }

    void refusedBeforeAnythingIsWritten_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("sector");
        QTest::addColumn<QString>("title");
        QTest::newRow("no name") << ""
                                 << "Veyl Drift"
                                 << "Empty Data";
        QTest::newRow("no sector") << "Orla's Rest"
                                   << ""
                                   << "Empty Data";
        QTest::newRow("two adjacent quotes") << "Orla''s Rest"
                                             << "Veyl Drift"
                                             << "Invalid name";
        QTest::newRow("a name taken") << "KELL'S ANCHORAGE"
                                      << "Veyl Drift"
                                      << "Duplicate Record";
    }
    void refusedBeforeAnythingIsWritten() {
        QFETCH(QString, name);
        QFETCH(QString, sector);
        QFETCH(QString, title);
        auto* w = editor("");
        QVERIFY(w);
        w->txtName->setText(name);
        w->cmbSector->setCurrentText(sector);
        w->sellsList("lstSellsItems")->addItem("Smuggler's Ledger");
        const int before = sqlite3_total_changes(db().handle());
        const SaveResult result = w->cmdSave_Click();
        QVERIFY(result == SaveResult::Refused || result == SaveResult::Failed);
        QCOMPARE(f.prompt().count(), 1);
        QCOMPARE(f.prompt().last().title, title);
        QVERIFY(w->isVisible());
        QCOMPARE(w->sellsList("lstSellsItems")->count(), 1);
        QVERIFY(!db().inTransaction());
        if (title != "Duplicate Record")
            QCOMPARE(sqlite3_total_changes(db().handle()), before);
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM STATIONS").toInt(), 12);
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM BUY_ITEM_LOCATIONS WHERE ITEM_NAME = 'Smuggler''s Ledger'")
                     .toInt(),
                 2);
    }

    void failureInTheLastWriteRollsEverythingBack() {
        const QString comments = f.scalar("SELECT COMMENTS" + Where).toString();
        auto* w = editor(Kells);
        QVERIFY(w);
        w->txtComments->setPlainText("Under new management");
        w->sellsList("lstSellsItems")->clear();
        // The terminals are written last; a type longer than its column is refused.
        addRow(w->ubgTerminals, {QString(60, 'T')});
        QCOMPARE(w->cmdSave_Click(), SaveResult::Failed);
        QCOMPARE(f.prompt().count(), 1);
        QCOMPARE(f.prompt().last().title, QString("Too Large"));
        QVERIFY(!db().inTransaction());
        QCOMPARE(f.scalar("SELECT COMMENTS" + Where).toString(), comments);
        QCOMPARE(
            f.scalar("SELECT COUNT(*) FROM BUY_ITEM_LOCATIONS WHERE STATIONS_STATION = 'Kell''s Anchorage'")
                .toInt(),
            2);
        QVERIFY(w->isVisible());
        QCOMPARE(w->txtComments->toPlainText(), QString("Under new management"));
        // Corrected, the same window saves everything.
        w->ubgTerminals->grid().userEdit(w->ubgTerminals->grid().lastDataRow(), 1, "Tailor");
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(f.scalar("SELECT COMMENTS" + Where).toString(), QString("Under new management"));
        QCOMPARE(
            f.scalar("SELECT COUNT(*) FROM BUY_ITEM_LOCATIONS WHERE STATIONS_STATION = 'Kell''s Anchorage'")
                .toInt(),
            0);
    }

    void aDeletedStationIsNotWrittenBack() {
        const QString sold =
            "SELECT COUNT(*) FROM BUY_EQUIPMENT_LOCATION WHERE STATIONS_STATION = 'Kell''s Anchorage'";
        const int before = f.scalar(sold).toInt();
        auto* w = editor(Kells);
        QVERIFY(w);
        QVERIFY2(f.exec({"DELETE FROM STATIONS WHERE STATION_NAME = 'Kell''s Anchorage'"}, &m_error),
                 qPrintable(m_error));
        w->sellsList("lstSellsEquipment")->addItem("Field Welder");
        QCOMPARE(w->cmdSave_Click(), SaveResult::Failed);
        QVERIFY(f.prompt().last().text.endsWith("procedure cmdSave_Click of Form frmAddStation"));
        QCOMPARE(f.scalar(sold).toInt(), before);
    }

private:
    static QStringList ListEntries(frmAddStation* w, const QString& widget) {
        QStringList out;
        QListWidget* list = w->sellsList(widget);
        for (int i = 0; i < list->count(); ++i)
            out << list->item(i)->text();
        return out;
    }
    QStringList column(const QString& sql) {
        Recordset rs;
        rs.open(sql);
        QStringList out;
        for (; !rs.eof(); rs.moveNext())
            out << rs.value(0).toString();
        return out;
    }

    ViewsFixture f;
    QString m_error;
    QStringList m_saved;
};

QTEST_MAIN(TestFrmAddStation)
#include "tst_frmaddstation.moc"
