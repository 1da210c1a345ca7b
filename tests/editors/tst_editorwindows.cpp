// What each editor shows of a record of the sample world, one table for all; then what only the item,
// raw material and station windows do: the sub-tabs' counts, the reserved prices as words, the
// station's lists filled through the pick dialog.
#include "editorfixture.h"
#include "editors/frmadditem.h"
#include "editors/frmaddrawmaterials.h"
#include "editors/frmaddstation.h"
#include "editors/frmlistdialog.h"

#include <QGroupBox>
#include <QPushButton>
#include <QTabWidget>

namespace {
const QString Kells = "Kell's Anchorage";
}

class TestEditorWindows : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString e;
        QVERIFY2(f.setUp(&e), qPrintable(e));
    }
    void cleanup() { f.tearDown(); }

    void eachEditorShowsItsRecord_data() {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("record"); // the name, or a statement choosing it
        // What field() reads, then the statement giving it (%1: the name; "TABLE.COLUMN": the number
        // of rows holding the name there).
        QTest::addColumn<QStringList>("checks");
        const auto row = [](const char* tag, const QString& kind, const QString& record,
                            const QStringList& c) { QTest::newRow(tag) << kind << record << c; };
        const QString comp = " FROM COMPONENTS WHERE COMPONENT_NAME = %1";
        row("component", "Components",
            "SELECT COMPONENT_NAME FROM COMPONENTS WHERE COST_TO_MANUFACTURE = -1 AND SUBTYPE IS NOT NULL "
            "ORDER BY 1",
            {"cmbType=SELECT TYPE" + comp, "cmbSubType=SELECT SUBTYPE" + comp, "txtPrice=SELECT PRICE" + comp,
             "txtManufPrice=SELECT -1", "lblManufWord=SELECT 'Not Manufacturable'",
             "ubgManuEquip=EQUIPMENTS_COMPONENTS.COMPONENTS_COMPONENT",
             "ubgManuComps=COMPONENTS_UPGRADE_FROM.UPGRADE_FROM", "ubgMOBs=MOB_COMP_DROP.COMPONENT_NAME",
             "ubgBlueEquip=COMPONENTS_EQUIPMENTS.COMPONENT_NAME",
             "ubgBlueComps=COMPONENTS_UPGRADE_FROM.COMPONENT_NAME",
             "ubgBlueRawMats=COMPONENTS_RAW_MATERIALS.COMPONENTS_COMPONENT",
             "ubgBlueItems=COMPONENTS_ITEMS.COMPONENT_NAME"});
        row("item", "Items", "Smuggler's Ledger",
            {"cmbLevel=SELECT LVL FROM ITEMS WHERE ITEM_NAME = %1",
             "txtPrice=SELECT PRICE FROM ITEMS WHERE ITEM_NAME = %1", "ubgMOBs=MOB_ITEM_DROP.ITEM_NAME",
             "ubgManuComps=COMPONENTS_ITEMS.ITEM_NAME", "ubgManuEquip=EQUIPMENTS_ITEMS.ITEM_NAME",
             "ubgManuRawMats=RAW_MATERIALS_ITEMS.ITEM_NAME",
             "lstBuyLocations=SELECT STATIONS_STATION FROM BUY_ITEM_LOCATIONS WHERE ITEM_NAME = %1 ORDER BY 1"});
        row("raw material", "Raw Materials",
            "SELECT RAW_MATERIAL_NAME FROM RAW_MATERIALS_REFINES_FROM ORDER BY RAW_MATERIAL_NAME",
            {"cmbLevel=SELECT LVL FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME = %1",
             "ubgBlueRawMats=RAW_MATERIALS_REFINES_FROM.RAW_MATERIAL_NAME",
             "ubgManuRawMats=RAW_MATERIALS_REFINES_FROM.REFINES_FROM",
             "ubgManuComps=COMPONENTS_RAW_MATERIALS.RAW_MATERIAL",
             "ubgMOBs=MOB_RAW_MAT_DROP.RAW_MATERIAL_NAME",
             "ubgBlueItems=RAW_MATERIALS_ITEMS.RAW_MATERIAL_NAME",
             "lstMineLocations=SELECT SECTORS_SECTOR FROM MINE_LOCATIONS WHERE RAW_MATERIAL = %1 ORDER BY 1"});
        const QString sells = " WHERE STATIONS_STATION = %1 ORDER BY 1";
        row("station", "Stations", Kells,
            {"cmbSector=SELECT SECTORS_SECTOR FROM STATIONS WHERE STATION_NAME = %1",
             "lblSystem=SELECT 'in the ' || SYSTEM_SYSTEM_NAME || ' system' FROM SECTORS INNER JOIN STATIONS ON "
             "SECTOR_NAME = SECTORS_SECTOR WHERE STATION_NAME = %1",
             "ubgTerminals=STATION_TERMINALS.STATION_NAME",
             "lstSellsEquipment=SELECT EQUIPMENTS_EQUIPMENT FROM BUY_EQUIPMENT_LOCATION" + sells,
             "lstSellsComponents=SELECT COMPONENTS_COMPONENT FROM BUY_COMPONENT_LOCATIONS" + sells,
             "lstSellsRawMaterials=SELECT RAW_MATERIAL FROM BUY_RAW_MATERIAL_LOCATIONS" + sells,
             "lstSellsItems=SELECT ITEM_NAME FROM BUY_ITEM_LOCATIONS" + sells});
        const QString mob = " WHERE MOB_NAME = %1";
        row("MOB", "MOBs", "Brother Kell's Wraith",
            {"MOBS.MOB_NAME=SELECT %1", "lblName=SELECT %1", "TYPE=SELECT TYPE FROM MOBS" + mob,
             "FACTION=SELECT IFNULL(FACTION, '') FROM MOBS" + mob,
             "txtComments=SELECT IFNULL(COMMENTS, '') FROM MOBS" + mob,
             "COMBAT_LEVEL=SELECT COMBAT_LEVEL FROM MOB_STATS" + mob, "HULL=SELECT HULL FROM MOB_STATS" + mob,
             "BOSS=SELECT CASE WHEN BOSS THEN 'Yes' ELSE 'No' END FROM MOB_STATS" + mob,
             "ubgAttackTypes=MOB_ATTACK_TYPE.MOB_NAME", "ubgComponents=MOB_COMP_DROP.MOB_NAME",
             "ubgEquipment=MOB_EQUIP_DROP.MOB_NAME", "ubgItems=MOB_ITEM_DROP.MOB_NAME",
             "ubgLocations=MOBS_LOCATION.MOB_NAME", "ubgRawMaterials=MOB_RAW_MAT_DROP.MOB_NAME",
             "ubgResistances=MOB_RESISTANCE.MOB_NAME", "ubgWeaknesses=MOB_WEAKNESS.MOB_NAME"});
        const QString eq = " FROM EQUIPMENTS WHERE EQUIPMENT_NAME = %1";
        row("equipment", "Equipment", "Hunter's Lance Mk II",
            {"lblTitle=SELECT %1",
             "lblType=SELECT TYPE" + eq,
             "MANUFACTURER=SELECT MANUFACTURER" + eq,
             "LVL=SELECT LVL" + eq,
             "QUALITY=SELECT QUALITY" + eq,
             "PURCHASE_PRICE=SELECT PRICE" + eq,
             "MANUFACTURING_FEE=SELECT IFNULL(COST_TO_MANUFACTURE, '')" + eq,
             "UNIQUE_FLAG=SELECT CASE WHEN UNIQUE_FLAG THEN 'Yes' ELSE 'No' END" + eq,
             "txtComments=SELECT IFNULL(COMMENTS, '')" + eq,
             "DAMAGE=SELECT DAMAGE FROM WEAPON_STATS WHERE EQUIPMENT_NAME = %1",
             "lstAllowed=SELECT CLASS_NAME FROM EQUIPMENT_CLASS WHERE EQUIPMENTS_EQUIPMENT = %1 ORDER BY 1",
             "lstBuyLocations=SELECT STATIONS_STATION FROM BUY_EQUIPMENT_LOCATION WHERE EQUIPMENTS_EQUIPMENT = %1",
             "ubgBlueEquip=EQUIPMENTS_UPGRADE_FROM.EQUIPMENT_NAME",
             "ubgManuEquip=EQUIPMENTS_UPGRADE_FROM.UPGRADE_FROM",
             "ubgManuComps=COMPONENTS_EQUIPMENTS.EQUIPMENT_NAME",
             "ubgBlueRawMats=EQUIPMENTS_RAW_MATERIALS.EQUIPMENTS_EQUIPMENT",
             "ubgBlueItems=EQUIPMENTS_ITEMS.EQUIPMENTS_EQUIPMENT",
             "ubgBlueComps=EQUIPMENTS_COMPONENTS.EQUIPMENTS_EQUIPMENT",
             "ubgMOBs=MOB_EQUIP_DROP.EQUIPMENT_NAME",
             "ubgSpecials=EQUIP_SPECIALS.EQUIPMENT_NAME"});
    }
    void eachEditorShowsItsRecord() {
        QFETCH(QString, kind);
        QFETCH(QString, record);
        QFETCH(QStringList, checks);
        const QString name = record.startsWith("SELECT ") ? f.scalar(record).toString() : record;
        auto* w = openEditor(kind, name);
        QVERIFY(w && !w->isNew());
        QCOMPARE(f.prompt().count(), 0);
        int total = 0; // of grid rows: the record has some
        for (const QString& c : checks) {
            const QString widget = c.section('=', 0, 0), source = c.section('=', 1);
            QString expected;
            if (source.startsWith("SELECT "))
                expected = rows(source.arg(lit(name))).join("; ");
            else
                expected = f.scalar("SELECT COUNT(*) FROM " + source.section('.', 0, 0) + " WHERE " +
                                    source.section('.', 1) + " = " + lit(name))
                               .toString();
            if (widget.startsWith("ubg"))
                total += expected.toInt();
            QVERIFY2(expected != "NULL", qPrintable(c));
            QCOMPARE(field(w, widget) + " <- " + c, expected + " <- " + c);
        }
        QVERIFY(total > 0);
    }

    void anItemsTabsCountItsRowsAndPricesAreWords() {
        auto* w = openEditor<frmAddItem>("Items", "Smuggler's Ledger");
        QVERIFY(w);
        auto* usedIn = qobject_cast<QTabWidget*>(w->tabMain->widget(1));
        QVERIFY(usedIn);
        QCOMPARE(usedIn->tabText(1), QString("Components (2)"));
        addRow(w->ubgManuComps, {"Basic Gyro Core", "1"});
        QCOMPARE(usedIn->tabText(1), QString("Components (3)"));
        w->txtPrice->setText("-2");
        QCOMPARE(w->lblPriceWord->text(), QString("Mission Reward"));
        auto* r = openEditor<frmAddRawMaterials>("Raw Materials", "Miner's Gold");
        QVERIFY(r);
        r->txtPrice->setText("-1");
        QCOMPARE(r->lblPriceWord->text(), QString("Loot Only"));
        QCOMPARE(r->ubgBlueRawMats->grid().header(2), QString("Amount"));
        QVERIFY(r->ubgBlueRawMats->grid().colNumeric(2));
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

    void theSellsListsChangeThroughThePickDialog() {
        auto* w = openEditor<frmAddStation>("Stations", Kells);
        QVERIFY(w);
        QCOMPARE(qobject_cast<QGroupBox*>(w->sellsList("lstSellsItems")->parentWidget())->title(),
                 QString("Items (2)"));
        // The terminal list offers the terminal types in use anywhere.
        QVERIFY(w->ubgTerminals->grid().listDisplays(1).contains("Shipyard"));
        whenShown<frmListDialog>([](frmListDialog* d) {
            QCOMPARE(d->windowTitle(), QString("Select available Raw Materials"));
            d->lstAvailable->setCurrentRow(0);
            d->cmdAdd_Click();
            d->cmdOK->click();
        });
        w->findChild<QPushButton*>("cmdSellsRawMaterials")->click();
        const QStringList first = rows("SELECT RAW_MATERIAL_NAME FROM RAW_MATERIALS ORDER BY 1").mid(0, 1);
        QCOMPARE(EditorWindow::listEntries(w->sellsList("lstSellsRawMaterials")), first);
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
