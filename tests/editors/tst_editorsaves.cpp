// The saves of every editor on the sample world, one table per rule: a save is refused before
// anything is written, with the box that says why; a new record is written with everything typed; a
// save writes only what changed and stamps only its own record; a failure in the last write rolls
// everything back and the corrected window saves. Edits are written as edit() in editorfixture.h
// takes them, separated by "; ".
#include "editorfixture.h"
#include "views/equiptypes.h"

namespace {
void editAll(QWidget* w, const QString& edits) {
    for (const QString& e : edits.split("; ", Qt::SkipEmptyParts))
        edit(w, e);
}

// The record's fields, UPDATED and LAST_UPDATED aside.
QHash<QString, QString> recordFields(const QString& kind, const QString& name) {
    const Kind k = kindOf(kind);
    Recordset rs;
    rs.open(kind == "MOBs" ? "SELECT * FROM MOBS INNER JOIN MOB_STATS ON MOBS.MOB_NAME = MOB_STATS.MOB_NAME "
                             "WHERE MOBS.MOB_NAME = " +
                                 lit(name)
                           : "SELECT * FROM " + k.table + " WHERE " + k.nameColumn + " = " + lit(name));
    QHash<QString, QString> out;
    for (int i = 0; !rs.eof() && i < rs.fieldCount(); ++i)
        if (rs.fieldName(i) != "UPDATED" && rs.fieldName(i) != "LAST_UPDATED")
            out.insert(rs.fieldName(i), rs.isNull(i) ? "NULL" : rs.value(i).toString());
    return out;
}

int countStatement(unsigned, void* count, void*, void*) {
    ++*static_cast<int*>(count);
    return 0;
}
} // namespace

class TestEditorSaves : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString e;
        QVERIFY2(f.setUp(&e), qPrintable(e));
        setNewEquipmentType([] { return int(equip::Beam); });
    }
    void cleanup() {
        setNewEquipmentType(nullptr);
        f.tearDown();
    }

    void refusedBeforeAnythingIsWritten_data() {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("record"); // empty: a new one
        QTest::addColumn<QString>("edits");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("text"); // %1: the number of the grid row typed last
        const auto row = [](const char* tag, const QString& kind, const QString& record, const QString& edits,
                            const QString& title, const QString& text) {
            QTest::newRow(tag) << kind << record << edits << title << text;
        };
        const QString gold = "Miner's Gold", sun = "Sunspear Mk II",
                      sells = "; lstSellsItems+Smuggler's Ledger";
        row("component without a name", "Components", "", "txtPrice=10", "Empty Data", EmptyText);
        row("component named with two adjacent quotes", "Components", "",
            "txtName=Navigator''s Sextant; txtPrice=10", "Invalid name", QuotesText);
        row("component's price no number", "Components", "", "txtName=Gunner's Sight; txtPrice=-",
            "Invalid Values", "One or more of the values entered is invalid");
        row("component's grid row without its amount", "Components", "",
            "txtName=Gunner's Sight; txtPrice=10; ubgManuEquip+Hunter's Lance Mk I",
            "Manufacturing: Equipment Error",
            "Manufacturing: Equipment:\r\nPlease specify an entry for Amount\r\nRow: %1,  Column: 2");
        row("component's name taken in another letter case", "Components", "",
            "txtName=BASIC NAVIGATOR'S SEXTANT; txtPrice=10", "Duplicate Record", TakenText);
        row("item named with two adjacent quotes", "Items", "",
            "txtName=Pilot''s Log; txtPrice=5; ubgMOBs+Ashen Maw|Rare", "Invalid name", QuotesText);
        row("station without a name", "Stations", "", "cmbSector=Veyl Drift" + sells, "Empty Data",
            EmptyText);
        row("station without a sector", "Stations", "", "txtName=Orla's Rest" + sells, "Empty Data",
            EmptyText);
        row("station's name taken", "Stations", "", "txtName=KELL'S ANCHORAGE; cmbSector=Veyl Drift" + sells,
            "Duplicate Record", TakenText);
        row("raw material without a price", "Raw Materials", gold, "txtPrice=", "Empty Data", EmptyText);
        row("raw material's grid row without its frequency", "Raw Materials", gold, "ubgMOBs+Hive Queen",
            "General: MOBs Error",
            "General: MOBs:\r\nPlease specify an entry for Drop Frequency\r\nRow: %1,  Column: 2");
        row("MOB named with two adjacent quotes", "MOBs", "",
            "MOBS.MOB_NAME=Brother Kell''s Wraith; "
            "ubgAttackTypes+Ion|5",
            "Invalid Name",
            "Names cannot contain a double single-quote! Please change the name to continue.");
        row("MOB's name taken in another letter case", "MOBs", "",
            "MOBS.MOB_NAME=BROTHER KELL'S WRAITH; ubgAttackTypes+Ion|5", "Duplicate Record", TakenText);
        row("equipment named with two adjacent quotes", "Equipment", "",
            "EQUIPMENT_NAME=O''Brien's Ray; LVL=33", "Invalid name", QuotesText);
        row("equipment's component twice", "Equipment", sun,
            "LVL=33; ubgManuComps+Hull Plate|1; ubgManuComps+hull plate|2", "Manufacturing: Items Error",
            "Manufacturing: Items:\r\nThe value 'hull plate' appears more than once in the Component Name list, "
            "please remove one");
        row("equipment's special twice", "Equipment", sun,
            "LVL=33; ubgSpecials+Overcharge|1|%; "
            "ubgSpecials+Overcharge|2|%",
            "Duplicate Special Entries",
            "The special 'Overcharge' appears more than once in the special list, please remove one");
        row("equipment's special without its unit", "Equipment", sun,
            "ubgSpecials+Overcharge|5|%; ubgSpecials+Hull Repair|10|", "Specials Error",
            "Please specify a Unit  value for the special 'Hull Repair'");
        row("equipment's special not chosen", "Equipment", sun, "ubgSpecials+|5|%", "Specials Error",
            "Please choose the special of row %1 or remove the row");
        row("equipment's name taken in another letter case", "Equipment", "",
            "EQUIPMENT_NAME=SUNSPEAR MK II; LVL=33", "Duplicate Record", TakenText);
    }
    void refusedBeforeAnythingIsWritten() {
        QFETCH(QString, kind);
        QFETCH(QString, record);
        QFETCH(QString, edits);
        QFETCH(QString, title);
        QFETCH(QString, text);
        if (record == "Sunspear Mk II")
            f.run({"DELETE FROM COMPONENTS_EQUIPMENTS WHERE EQUIPMENT_NAME = 'Sunspear Mk II'",
                   "DELETE FROM EQUIP_SPECIALS WHERE EQUIPMENT_NAME = 'Sunspear Mk II'"});
        auto* w = openEditor(kind, record);
        QVERIFY(w);
        editAll(w, edits);
        const QString lastGrid = edits.section("; ", -1).section('+', 0, 0);
        const int lastRow =
            lastGrid.startsWith("ubg") ? w->findChild<UBGrid*>(lastGrid)->grid().lastDataRow() : 0;
        const QString before = world::dump();
        int statements = 0;
        sqlite3_trace_v2(db().handle(), SQLITE_TRACE_STMT, countStatement, &statements);
        const SaveResult result = w->cmdSave_Click();
        sqlite3_trace_v2(db().handle(), 0, nullptr, nullptr);
        QVERIFY(result == SaveResult::Refused || result == SaveResult::Failed);
        QCOMPARE(f.prompt().count(), 1);
        QCOMPARE(f.prompt().last().title, title);
        QCOMPARE(f.prompt().last().text, text.contains("%1") ? text.arg(lastRow) : text);
        // Only a taken name needs the database to tell; nothing stays written either way, and the
        // window stays open with the user's edits.
        if (result == SaveResult::Refused)
            QCOMPARE(statements, 0);
        QCOMPARE(world::dump(), before);
        QVERIFY(!db().inTransaction() && f.saved.isEmpty() && w->isVisible());
        // Closing it now asks first: No keeps it open, Yes closes it unsaved.
        f.prompt().queueButton(vb::No);
        QVERIFY(!w->close());
        QCOMPARE(f.prompt().last().title, QString("Unsaved Changes"));
        f.prompt().queueButton(vb::Yes);
        QVERIFY(w->close());
        QCOMPARE(world::dump(), before);
    }

    void aNewRecordIsWrittenWithAllTyped_data() {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<int>("type"); // of a new equipment
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("edits");
        QTest::addColumn<QStringList>("checks"); // a statement, then its rows joined by "; "
        const auto row = [](const char* tag, const QString& kind, int type, const QString& name,
                            const QString& edits, const QStringList& checks) {
            QTest::newRow(tag) << kind << type << name << edits << checks;
        };
        const QString stamp = "|true|true|" + generalDate(Stamp);
        QString n = " WHERE ITEM_NAME = 'Pilot''s Log'";
        row("item", "Items", 0, "Pilot's Log",
            "txtName=Pilot's Log; cmbLevel=7; txtPrice=-2; txtComments=Given by Kell's harbourmaster; picture=12; "
            "lstBuyLocations+Kell's Anchorage; lstBuyLocations+Harrow Station; ubgManuEquip+Hunter's Lance Mk I|2; "
            "ubgManuComps+Basic Navigator's Sextant|1",
            {"SELECT LVL, PRICE, COMMENTS, PIC_ID, PERSONAL_DB, UPDATED, LAST_UPDATED FROM ITEMS" + n,
             "7|-2|Given by Kell's harbourmaster|12" + stamp,
             "SELECT EQUIPMENTS_EQUIPMENT, AMOUNT FROM EQUIPMENTS_ITEMS" + n, "Hunter's Lance Mk I|2",
             "SELECT COMPONENT_NAME, AMOUNT FROM COMPONENTS_ITEMS" + n, "Basic Navigator's Sextant|1",
             "SELECT STATIONS_STATION FROM BUY_ITEM_LOCATIONS" + n + " ORDER BY 1",
             "Harrow Station; Kell's Anchorage"});
        n = " = 'Tinker''s Dust'";
        // The rows of "Requires in Manufacture: Components" hang on the record by RAW_MATERIAL.
        row("raw material", "Raw Materials", 0, "Tinker's Dust",
            "txtName=Tinker's Dust; cmbLevel=5; txtPrice=-1; txtComments=It's shiny; picture=7; "
            "lstBuyLocations+Kell's Post; ubgManuComps+Smuggler's Coil|3; ubgMOBs+Hive Queen|Rare; "
            "ubgBlueItems+Smuggler's Ledger|2",
            {"SELECT LVL, PRICE, COMMENTS, PIC_ID, PERSONAL_DB, UPDATED, LAST_UPDATED FROM RAW_MATERIALS WHERE "
             "RAW_MATERIAL_NAME" +
                 n,
             "5|-1|It's shiny|7|true|false|" + generalDate(Stamp),
             "SELECT COMPONENTS_COMPONENT, AMOUNT FROM COMPONENTS_RAW_MATERIALS WHERE RAW_MATERIAL" + n,
             "Smuggler's Coil|3",
             "SELECT MOB_NAME, DROP_FREQUENCY FROM MOB_RAW_MAT_DROP WHERE RAW_MATERIAL_NAME" + n,
             "Hive Queen|Rare",
             "SELECT ITEM_NAME, AMOUNT FROM RAW_MATERIALS_ITEMS WHERE RAW_MATERIAL_NAME" + n,
             "Smuggler's Ledger|2",
             "SELECT STATIONS_STATION FROM BUY_RAW_MATERIAL_LOCATIONS WHERE RAW_MATERIAL" + n,
             "Kell's Post"});
        n = " = 'Orla''s Rest'";
        // The station list joins stations to their sectors.
        row("station", "Stations", 0, "Orla's Rest",
            "txtName=Orla's Rest; cmbSector=Veyl Drift; txtComments=Quiet, Kell's crew drinks here; "
            "lstSellsEquipment+Hunter's Lance Mk I; lstSellsComponents+Basic Navigator's Sextant; "
            "lstSellsRawMaterials+Miner's Gold; lstSellsItems+Smuggler's Ledger; lstSellsItems+Cracked Signal Beacon; "
            "ubgTerminals+Bar; ubgTerminals+Smuggler's Den",
            {"SELECT SECTORS_SECTOR, COMMENTS, PERSONAL_DB, UPDATED, LAST_UPDATED FROM SECTORS INNER JOIN STATIONS "
             "ON SECTORS.SECTOR_NAME = STATIONS.SECTORS_SECTOR WHERE STATION_NAME" +
                 n,
             "Veyl Drift|Quiet, Kell's crew drinks here" + stamp,
             "SELECT EQUIPMENTS_EQUIPMENT FROM BUY_EQUIPMENT_LOCATION WHERE STATIONS_STATION" + n,
             "Hunter's Lance Mk I",
             "SELECT COMPONENTS_COMPONENT FROM BUY_COMPONENT_LOCATIONS WHERE STATIONS_STATION" + n,
             "Basic Navigator's Sextant",
             "SELECT RAW_MATERIAL FROM BUY_RAW_MATERIAL_LOCATIONS WHERE STATIONS_STATION" + n, "Miner's Gold",
             "SELECT ITEM_NAME FROM BUY_ITEM_LOCATIONS WHERE STATIONS_STATION" + n + " ORDER BY 1",
             "Cracked Signal Beacon; Smuggler's Ledger",
             "SELECT TERMINAL_TYPE FROM STATION_TERMINALS WHERE STATION_NAME" + n + " ORDER BY 1",
             "Bar; Smuggler's Den"});
        for (const QString& name : {QString("New MOB"), QString("Tinker's Wyrm")}) {
            n = " WHERE MOB_NAME = " + lit(name);
            // Not renamed, a new MOB keeps the name it was given.
            row(name == "New MOB" ? "MOB not renamed" : "MOB with a quote", "MOBs", 0, name,
                (name == "New MOB" ? QString() : "MOBS.MOB_NAME=" + name + "; ") +
                    "COMBAT_LEVEL=14; HULL=900; BOSS=Yes; ALTRUISM=very high; txtComments=It's quick; "
                    "ubgAttackTypes+Plasma|40; ubgResistances+Ion|25; ubgWeaknesses+Kinetic|10; "
                    "ubgEquipment+Hunter's Lance Mk I|Rare; ubgComponents+Navigator's Sextant|Normal; "
                    "ubgRawMaterials+Miner's Gold|Frequent; ubgItems+Smuggler's Ledger|Very Rare",
                {"SELECT TYPE, FACTION, COMMENTS, PERSONAL_DB, UPDATED, LAST_UPDATED FROM MOBS" + n,
                 "Organic|Unknown|It's quick" + stamp,
                 "SELECT COMBAT_LEVEL, HULL, SHIELD, BOSS, BRAVERY, ALTRUISM FROM MOB_STATS" + n,
                 "14|900|NULL|true|Average|Very High", "SELECT ATTACK_TYPE, AMOUNT FROM MOB_ATTACK_TYPE" + n,
                 "Plasma|40", "SELECT RESISTANCE, AMOUNT FROM MOB_RESISTANCE" + n, "Ion|25",
                 "SELECT WEAKNESS, AMOUNT FROM MOB_WEAKNESS" + n, "Kinetic|10",
                 "SELECT EQUIPMENT_NAME, DROP_FREQUENCY FROM MOB_EQUIP_DROP" + n, "Hunter's Lance Mk I|Rare",
                 "SELECT COMPONENT_NAME, DROP_FREQUENCY FROM MOB_COMP_DROP" + n, "Navigator's Sextant|Normal",
                 "SELECT RAW_MATERIAL_NAME, DROP_FREQUENCY FROM MOB_RAW_MAT_DROP" + n,
                 "Miner's Gold|Frequent", "SELECT ITEM_NAME, DROP_FREQUENCY FROM MOB_ITEM_DROP" + n,
                 "Smuggler's Ledger|Very Rare"});
        }
        // Every kind of equipment, a device without statistics; the special's empty amount is taken as 0.
        const auto equipment = [&](const char* tag, int type, const QString& name, const QString& values,
                                   const QStringList& stats) {
            const QString q = " = " + lit(name);
            QString statRows = "SELECT 0";
            for (const char* t :
                 {"WEAPON_STATS", "REACTOR_STATS", "ENGINE_STATS", "SHIELD_STATS", "AMO_STATS"})
                statRows += QString(" + (SELECT COUNT(*) FROM %1 WHERE EQUIPMENT_NAME").arg(t) + q + ")";
            row(tag, "Equipment", type, name,
                "EQUIPMENT_NAME=" + name +
                    "; LVL=12; picture=5; txtComments=Found at Kell's; "
                    "lstBuyLocations+Kell's Anchorage; ubgBlueItems+Smuggler's Ledger|2; ubgSpecials+Overcharge||%; " +
                    values,
                QStringList{
                    "SELECT TYPE, LVL, QUALITY, PERSONAL_DB, UPDATED, LAST_UPDATED, PIC_ID, COMMENTS, PRICE "
                    "FROM EQUIPMENTS WHERE EQUIPMENT_NAME" +
                        q,
                    DeEnumerate(type) + "|12|100" + stamp + "|5|Found at Kell's|NULL", statRows,
                    stats.isEmpty() ? "0" : "1",
                    "SELECT STATIONS_STATION FROM BUY_EQUIPMENT_LOCATION WHERE EQUIPMENTS_EQUIPMENT" + q,
                    "Kell's Anchorage",
                    "SELECT ITEM_NAME, AMOUNT FROM EQUIPMENTS_ITEMS WHERE EQUIPMENTS_EQUIPMENT" + q,
                    "Smuggler's Ledger|2",
                    "SELECT SPECIAL, AMOUNT, UNITS, SHUNT FROM EQUIP_SPECIALS WHERE EQUIPMENT_NAME" + q,
                    "Overcharge|0|%|NULL"} +
                    (stats.isEmpty() ? QStringList()
                                     : QStringList{stats[0] + " WHERE EQUIPMENT_NAME" + q, stats[1]}));
        };
        equipment("beam", equip::Beam, "O'Brien's Ray", "DAMAGE=55; DAMAGE_TYPE=ion",
                  {"SELECT DAMAGE, DAMAGE_TYPE, DELAY FROM WEAPON_STATS", "55|Ion|NULL"});
        equipment("ammunition", equip::Ammunition, "Ember Slug",
                  "LAUNCH_TYPE=Projectile; AMO_TYPE_AMO=Light Slug; DAMAGE=20",
                  {"SELECT AMO_TYPE, DAMAGE, RANGE FROM AMO_STATS", "Light Slug|20|NULL"});
        equipment("device", equip::Device, "Quill's Scanner", "MANUFACTURER=Sabel Yards", {});
    }
    void aNewRecordIsWrittenWithAllTyped() {
        QFETCH(QString, kind);
        QFETCH(int, type);
        QFETCH(QString, name);
        QFETCH(QString, edits);
        QFETCH(QStringList, checks);
        if (type)
            setNewEquipmentType([type] { return type; });
        const QString title = type ? "New: " + DeEnumerate(type) : kindOf(kind).newTitle;
        auto* w = openEditor(kind, "", title);
        QVERIFY(w && w->isNew());
        editAll(w, edits);
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(f.prompt().count(), 0);
        QCOMPARE(f.saved, QStringList{kind + ": " + name});
        QApplication::processEvents();
        QVERIFY(!FindChildWindow(title));
        for (int i = 0; i + 1 < checks.size(); i += 2)
            QCOMPARE(rows(checks.at(i)).join("; "), checks.at(i + 1));
        // Opened again, it is a record like any other and saves unchanged.
        w = openEditor(kind, name);
        QVERIFY(w);
        QCOMPARE(w->cmdSave_Click(), SaveResult::Unchanged);
        QCOMPARE(f.prompt().count(), 0);
    }

    void onlyWhatChangedIsWritten_data() {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("record");
        QTest::addColumn<QString>("edits");
        QTest::addColumn<QString>("check");    // reads what the edits wrote; empty: nothing is written
        QTest::addColumn<QString>("expected"); // "*": other than before the save
        const auto row = [](const char* tag, const QString& kind, const QString& record, const QString& edits,
                            const QString& check = QString(), const QString& expected = QString()) {
            QTest::newRow(tag) << kind << record << edits << check << expected;
        };
        const QString ledger = "Smuggler's Ledger", kells = "Kell's Anchorage", gold = "Miner's Gold";
        const QString kell = "Brother Kell's Wraith", hunter = "Hunter's Lance Mk III",
                      ray = "Ray Projector Mk II";
        const QString item = " WHERE ITEM_NAME = 'Smuggler''s Ledger'", raw = " = 'Miner''s Gold'";
        const QString station = " = 'Kell''s Anchorage'", mob = " WHERE MOB_NAME = 'Brother Kell''s Wraith'";
        const QString beam = " WHERE EQUIPMENT_NAME = 'Hunter''s Lance Mk III'";
        const QString rays = " WHERE EQUIPMENT_NAME = 'Ray Projector Mk II'";
        row("item's level", "Items", ledger, "cmbLevel=59", "SELECT LVL FROM ITEMS" + item, "59");
        row("item's grid only", "Items", ledger, "ubgMOBs[1,2]=Very Frequent",
            "SELECT DROP_FREQUENCY FROM MOB_ITEM_DROP" + item + " ORDER BY MOB_NAME LIMIT 1",
            "Very Frequent");
        row("item's list only", "Items", ledger, "lstBuyLocations-",
            "SELECT COUNT(*) FROM BUY_ITEM_LOCATIONS" + item, "0");
        row("station's sector", "Stations", kells, "cmbSector=Mossgate Verge",
            "SELECT SECTORS_SECTOR FROM STATIONS WHERE STATION_NAME" + station, "Mossgate Verge");
        row("station's terminal removed", "Stations", kells, "ubgTerminals[1,1]=" + NoneEntry,
            "SELECT COUNT(*) FROM STATION_TERMINALS WHERE STATION_NAME" + station, "*");
        row("station sells one kind no more", "Stations", kells, "lstSellsEquipment-",
            "SELECT COUNT(*) FROM BUY_EQUIPMENT_LOCATION WHERE STATIONS_STATION" + station, "0");
        row("raw material's price", "Raw Materials", gold, "txtPrice=900",
            "SELECT PRICE FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME" + raw, "900");
        row("raw material's grid row added and removed", "Raw Materials", gold, "ubgMOBs~Hive Queen|Rare");
        row("raw material's list only", "Raw Materials", gold, "lstMineLocations+Aster Reach",
            "SELECT COUNT(*) FROM MINE_LOCATIONS WHERE SECTORS_SECTOR = 'Aster Reach' AND RAW_MATERIAL" + raw,
            "1");
        row("MOBS column", "MOBs", kell, "FACTION=Drift Clans", "SELECT FACTION FROM MOBS" + mob,
            "Drift Clans");
        row("MOB_STATS column", "MOBs", kell, "SHIELD=1234", "SELECT SHIELD FROM MOB_STATS" + mob, "1234");
        row("MOB's value cleared", "MOBs", kell, "HULL=", "SELECT IFNULL(HULL, 'NULL') FROM MOB_STATS" + mob,
            "NULL");
        row("MOB's flag", "MOBs", kell, "SUBMITTED=Yes", "SELECT SUBMITTED FROM MOBS" + mob, "true");
        row("MOB's comments cleared", "MOBs", kell,
            "txtComments=", "SELECT IFNULL(COMMENTS, 'NULL') FROM MOBS" + mob, "NULL");
        row("MOB's grid only", "MOBs", kell, "ubgItems+Cracked Signal Beacon|Rare",
            "SELECT DROP_FREQUENCY FROM MOB_ITEM_DROP" + mob + " AND ITEM_NAME = 'Cracked Signal Beacon'",
            "Rare");
        row("equipment's level set back", "Equipment", hunter, "LVL~47");
        row("equipment's level", "Equipment", hunter, "LVL=47", "SELECT LVL FROM EQUIPMENTS" + beam, "47");
        row("equipment's statistic", "Equipment", hunter, "DAMAGE=777",
            "SELECT DAMAGE FROM WEAPON_STATS" + beam, "777");
        row("equipment's purchase price word", "Equipment", hunter, "PURCHASE_PRICE=-2",
            "SELECT PRICE FROM EQUIPMENTS" + beam, "-2");
        row("equipment's picture", "Equipment", hunter, "picture=99", "SELECT PIC_ID FROM EQUIPMENTS" + beam,
            "99");
        row("equipment's class", "Equipment", hunter, "lstAllowed+Smuggler's Kin",
            "SELECT COUNT(*) FROM EQUIPMENT_CLASS WHERE CLASS_NAME = 'Smuggler''s Kin' AND EQUIPMENTS_EQUIPMENT = " +
                lit(hunter),
            "1");
        row("equipment's grid", "Equipment", hunter, "ubgBlueItems+Smuggler's Ledger|6",
            "SELECT AMOUNT FROM EQUIPMENTS_ITEMS WHERE ITEM_NAME = 'Smuggler''s Ledger' AND EQUIPMENTS_EQUIPMENT = " +
                lit(hunter),
            "6");
        row("equipment's text cleared", "Equipment", ray,
            "MANUFACTURER=", "SELECT IFNULL(MANUFACTURER, 'NULL') FROM EQUIPMENTS" + rays, "NULL");
        row("equipment's decimal cleared", "Equipment", ray,
            "DELAY=", "SELECT IFNULL(DELAY, 'NULL') FROM WEAPON_STATS" + rays, "NULL");
        // An ammunition's launch type belongs to its ammunition type: choosing one changes nothing.
        row("ammunition's launch type", "Equipment", "Standard Seeker", "LAUNCH_TYPE=Projectile");
    }
    void onlyWhatChangedIsWritten() {
        QFETCH(QString, kind);
        QFETCH(QString, record);
        QFETCH(QString, edits);
        QFETCH(QString, check);
        QFETCH(QString, expected);
        const Kind k = kindOf(kind);
        const QString stamps =
            "SELECT " + k.nameColumn + ", UPDATED, LAST_UPDATED FROM " + k.table + " ORDER BY 1";
        f.run({"UPDATE " + k.table + " SET UPDATED = FALSE, LAST_UPDATED = '" + Old + "'",
               "UPDATE AMO_STATS SET AMO_TYPE = NULL WHERE EQUIPMENT_NAME = 'Standard Seeker'",
               "UPDATE MOBS SET COMMENTS = 'old' WHERE MOB_NAME = 'Brother Kell''s Wraith'"});
        QStringList after = rows(stamps);
        const int at = int(after.indexOf(record + "|false|" + Old));
        QVERIFY(at >= 0);
        const QHash<QString, QString> fields = recordFields(kind, record);
        const QString was = check.isEmpty() ? QString() : f.scalar(check).toString();
        QVERIFY(check.isEmpty() || was != expected);
        auto* w = openEditor(kind, record);
        QVERIFY(w);
        editAll(w, edits);
        const int before = changes();
        const bool saved = !check.isEmpty();
        QCOMPARE(w->cmdSave_Click(), saved ? SaveResult::Saved : SaveResult::Unchanged);
        QCOMPARE(f.prompt().count(), 0);
        if (!saved)
            QCOMPARE(changes(), before);
        else if (expected == "*")
            QVERIFY(f.scalar(check).toString() != was);
        else
            QCOMPARE(f.scalar(check).toString(), expected);
        // Only this record is stamped, and of its fields no more than the one edited changed.
        if (saved)
            after[at] = record + "|true|" + generalDate(Stamp);
        QCOMPARE(rows(stamps), after);
        const QHash<QString, QString> now = recordFields(kind, record);
        int differ = 0;
        for (auto i = fields.cbegin(); i != fields.cend(); ++i)
            differ += now.value(i.key()) != i.value() ? 1 : 0;
        QVERIFY2(differ <= 1, qPrintable(QString::number(differ)));
        // Either way the window closes and the main list is told.
        QCOMPARE(f.saved, QStringList{kind + ": " + record});
        QVERIFY(!db().inTransaction());
        QApplication::processEvents();
        QVERIFY(!FindChildWindow("Edit: " + record));
    }

    void aFailureInTheLastWriteRollsEverythingBack_data() {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("record");
        QTest::addColumn<QString>("edits"); // the last one cannot be stored
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("fix");
        QTest::addColumn<QString>("check"); // the first edit and the fixed one, once saved
        QTest::addColumn<QString>("expected");
        const auto row = [](const QString& kind, const QString& record, const QString& edits,
                            const QString& title, const QString& fix, const QString& check,
                            const QString& expected) {
            QTest::newRow(qPrintable(kind)) << kind << record << edits << title << fix << check << expected;
        };
        row("Components", "Basic Navigator's Sextant",
            "txtPrice=12345; txtManufPrice=-1; lstBuyLocations+Kell's Anchorage; ubgBlueRawMats+Miner's Gold|4; "
            "ubgManuComps+Deluxe Sextant|plenty",
            "Invalid Values", "ubgManuComps[-1,2]=2",
            "SELECT PRICE || '|' || (SELECT AMOUNT FROM COMPONENTS_UPGRADE_FROM WHERE COMPONENT_NAME = 'Deluxe "
            "Sextant' AND UPGRADE_FROM = COMPONENTS.COMPONENT_NAME) FROM COMPONENTS WHERE COMPONENT_NAME = 'Basic "
            "Navigator''s Sextant'",
            "12345|2");
        row("Items", "Smuggler's Ledger",
            "txtPrice=777; lstBuyLocations+Sable Ring; ubgManuRawMats+Miner's Gold|2; ubgMOBs+Ashen Maw|" +
                QString(60, 'x'),
            "Too Large", "ubgMOBs[-1,2]=Rare",
            "SELECT PRICE || '|' || (SELECT DROP_FREQUENCY FROM MOB_ITEM_DROP WHERE MOB_NAME = 'Ashen Maw' AND "
            "ITEM_NAME = ITEMS.ITEM_NAME) FROM ITEMS WHERE ITEM_NAME = 'Smuggler''s Ledger'",
            "777|Rare");
        row("Stations", "Kell's Anchorage",
            "txtComments=Under new management; lstSellsItems-; ubgTerminals+" + QString(60, 'T'), "Too Large",
            "ubgTerminals[-1,1]=Tailor",
            "SELECT COMMENTS || '|' || (SELECT COUNT(*) FROM STATION_TERMINALS WHERE TERMINAL_TYPE = 'Tailor' AND "
            "STATION_NAME = STATIONS.STATION_NAME) FROM STATIONS WHERE STATION_NAME = 'Kell''s Anchorage'",
            "Under new management|1");
        row("Raw Materials", "Miner's Gold",
            "txtPrice=12345; lstBuyLocations+Kell's Post; ubgBlueRawMats+Ferrite Ore|4; "
            "ubgBlueItems+Smuggler's Ledger|plenty",
            "Invalid Values", "ubgBlueItems[-1,2]=2",
            "SELECT PRICE || '|' || (SELECT AMOUNT FROM RAW_MATERIALS_ITEMS WHERE ITEM_NAME = 'Smuggler''s Ledger' "
            "AND RAW_MATERIAL_NAME = RAW_MATERIALS.RAW_MATERIAL_NAME) FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME = "
            "'Miner''s Gold'",
            "12345|2");
        row("MOBs", "Brother Kell's Wraith",
            "HULL=31337; txtComments=changed; ubgAttackTypes+Psionic|12; ubgWeaknesses+Thermal|lots",
            "Invalid Values", "ubgWeaknesses[-1,2]=15",
            "SELECT HULL || '|' || (SELECT AMOUNT FROM MOB_WEAKNESS WHERE WEAKNESS = 'Thermal' AND MOB_NAME = "
            "MOB_STATS.MOB_NAME) FROM MOB_STATS WHERE MOB_NAME = 'Brother Kell''s Wraith'",
            "31337|15");
        row("Equipment", "Glimmer Array Mk II",
            "LVL=41; DAMAGE=1234; lstAllowed+Smuggler's Kin; ubgBlueEquip+Sunspear Mk I|1; ubgBlueComps+Hull Plate|4; "
            "ubgSpecials+Overcharge|plenty|%",
            "Invalid Values", "ubgSpecials[-1,2]=2.5",
            "SELECT LVL || '|' || (SELECT AMOUNT FROM EQUIP_SPECIALS WHERE SPECIAL = 'Overcharge' AND EQUIPMENT_NAME "
            "= EQUIPMENTS.EQUIPMENT_NAME) FROM EQUIPMENTS WHERE EQUIPMENT_NAME = 'Glimmer Array Mk II'",
            "41|2.5");
    }
    void aFailureInTheLastWriteRollsEverythingBack() {
        QFETCH(QString, kind);
        QFETCH(QString, record);
        QFETCH(QString, edits);
        QFETCH(QString, title);
        QFETCH(QString, fix);
        QFETCH(QString, check);
        QFETCH(QString, expected);
        const QString before = world::dump();
        auto* w = openEditor(kind, record);
        QVERIFY(w);
        editAll(w, edits);
        QCOMPARE(w->cmdSave_Click(), SaveResult::Failed);
        QCOMPARE(f.prompt().count(), 1);
        QCOMPARE(f.prompt().last().title, title);
        QVERIFY(!db().inTransaction());
        QCOMPARE(world::dump(), before);
        QVERIFY(f.saved.isEmpty() && w->isVisible());
        // Corrected, the same window saves everything.
        edit(w, fix);
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(f.scalar(check).toString(), expected);
    }

private:
    EditorFixture f;
};

QTEST_MAIN(TestEditorSaves)
#include "tst_editorsaves.moc"
