// The item, raw material and station windows on the sample world: what each shows of its record,
// the raw material's statements as written, and the station's lists filled through the pick dialog.
#include "editorfixture.h"
#include "editors/frmadditem.h"
#include "editors/frmaddrawmaterials.h"
#include "editors/frmaddstation.h"
#include "editors/frmlistdialog.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>

namespace {
const QString Ledger = "Smuggler's Ledger";
const QString Kells = "Kell's Anchorage";

QStringList entries(const QListWidget* list) {
    QStringList out;
    for (int i = 0; i < list->count(); ++i)
        out << list->item(i)->text();
    return out;
}
} // namespace

class TestEditorWindows : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString e;
        QVERIFY2(f.setUp(&e), qPrintable(e));
    }
    void cleanup() { f.tearDown(); }

    void anItemShowsItsRecord() {
        auto* w = openEditor<frmAddItem>("Items", Ledger);
        QVERIFY(w && w->txtName->isReadOnly());
        QCOMPARE(w->cmbLevel->currentText() + "|" + w->txtPrice->text(),
                 rows("SELECT LVL, PRICE FROM ITEMS WHERE ITEM_NAME = " + lit(Ledger)).value(0));
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
        // The reserved prices are shown as words.
        w->txtPrice->setText("-2");
        QCOMPARE(w->lblPriceWord->text(), QString("Mission Reward"));
    }

    void aRawMaterialsStatementsAsWritten() {
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

    void aRawMaterialShowsItsRecord() {
        const QString name =
            f.scalar("SELECT RAW_MATERIAL_NAME FROM RAW_MATERIALS_REFINES_FROM ORDER BY RAW_MATERIAL_NAME")
                .toString();
        auto* w = openEditor<frmAddRawMaterials>("Raw Materials", name);
        QVERIFY(w && !w->isNew() && w->txtName->isReadOnly());
        QCOMPARE(w->cmbLevel->currentText(),
                 f.scalar("SELECT LVL FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME = " + lit(name)).toString());
        QCOMPARE(
            w->ubgBlueRawMats->grid().lastDataRow(),
            f.scalar("SELECT COUNT(*) FROM RAW_MATERIALS_REFINES_FROM WHERE RAW_MATERIAL_NAME = " + lit(name))
                .toInt());
        QCOMPARE(w->ubgBlueRawMats->grid().header(2), QString("Amount"));
        QVERIFY(w->ubgBlueRawMats->grid().colNumeric(2));
        QCOMPARE(w->listEntries(w->lstMineLocations),
                 rows("SELECT SECTORS_SECTOR FROM MINE_LOCATIONS WHERE RAW_MATERIAL = " + lit(name) +
                      " ORDER BY 1"));
        w->txtPrice->setText("-1");
        QCOMPARE(w->lblPriceWord->text(), QString("Loot Only"));
    }

    void aStationShowsWhatItSells() {
        auto* w = openEditor<frmAddStation>("Stations", Kells);
        QVERIFY(w && w->txtName->isReadOnly());
        QCOMPARE(
            w->cmbSector->currentText(),
            f.scalar("SELECT SECTORS_SECTOR FROM STATIONS WHERE STATION_NAME = " + lit(Kells)).toString());
        QCOMPARE(w->lblSystem->text(),
                 "in the " +
                     f.scalar("SELECT SYSTEM_SYSTEM_NAME FROM SECTORS INNER JOIN STATIONS ON "
                              "SECTOR_NAME = SECTORS_SECTOR WHERE STATION_NAME = " +
                              lit(Kells))
                         .toString() +
                     " system");
        for (const station::Sells& s : station::sells())
            QCOMPARE(entries(w->sellsList(s.widget)), rows(s.loadSql(Kells)));
        QCOMPARE(qobject_cast<QGroupBox*>(w->sellsList("lstSellsItems")->parentWidget())->title(),
                 QString("Items (2)"));
        QCOMPARE(
            w->ubgTerminals->grid().lastDataRow(),
            f.scalar("SELECT COUNT(*) FROM STATION_TERMINALS WHERE STATION_NAME = " + lit(Kells)).toInt());
        // The terminal list offers the terminal types in use anywhere.
        QVERIFY(w->ubgTerminals->grid().listDisplays(1).contains("Shipyard"));
    }

    void theSellsListsChangeThroughThePickDialog() {
        auto* w = openEditor<frmAddStation>("Stations", Kells);
        QVERIFY(w);
        whenShown<frmListDialog>([](frmListDialog* d) {
            QCOMPARE(d->windowTitle(), QString("Select available Raw Materials"));
            d->lstAvailable->setCurrentRow(0);
            d->cmdAdd_Click();
            d->cmdOK->click();
        });
        w->findChild<QPushButton*>("cmdSellsRawMaterials")->click();
        const QStringList first = rows("SELECT RAW_MATERIAL_NAME FROM RAW_MATERIALS ORDER BY 1").mid(0, 1);
        QCOMPARE(entries(w->sellsList("lstSellsRawMaterials")), first);
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(rows("SELECT RAW_MATERIAL FROM BUY_RAW_MATERIAL_LOCATIONS WHERE STATIONS_STATION = " +
                      lit(Kells)),
                 first);
    }

private:
    EditorFixture f;
};

QTEST_MAIN(TestEditorWindows)
#include "tst_editorwindows.moc"
