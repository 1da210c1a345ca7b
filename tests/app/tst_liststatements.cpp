// The main list's statements as whole texts for every category and filter combination, the tick
// writes, and the rules the filters follow (bands, "Unknown" component type, WHERE or AND).
#include "app/liststatements.h"
#include "views/equiptypes.h"

#include <QTest>

Q_DECLARE_METATYPE(ListFilters)

namespace {
const QString EquipBase = QStringLiteral(
    "SELECT EQUIPMENTS.EQUIPMENT_NAME, EQUIPMENTS.TYPE, EQUIPMENTS.MANUFACTURER, EQUIPMENTS.LVL, "
    "EQUIPMENTS.COMMENTS, EQUIPMENTS.PRICE AS PURCHASE_PRICE, EQUIPMENTS.QUALITY, EQUIPMENTS.UNIQUE_FLAG, "
    "EQUIPMENTS.COST_TO_MANUFACTURE AS MANUFACTURING_FEE, EQUIPMENTS.LAST_UPDATED, EQUIPMENTS.CHECK, "
    "EQUIPMENTS.PERSONAL_DB, EQUIPMENTS.UPDATED");
const QString Custom = QStringLiteral(", EQUIPMENTS.CUSTOM_01, EQUIPMENTS.CUSTOM_02, EQUIPMENTS.CUSTOM_03");
const QString BeamAll = EquipBase +
    ", WEAPON_STATS.DAMAGE, WEAPON_STATS.DAMAGE_TYPE, WEAPON_STATS.DELAY, WEAPON_STATS.ENERGY_USE, "
    "WEAPON_STATS.RANGE , (WEAPON_STATS.DAMAGE/WEAPON_STATS.DELAY) AS DAMAGE_PER_SECOND, "
    "(WEAPON_STATS.DAMAGE/WEAPON_STATS.ENERGY_USE) AS EFFICIENCY FROM EQUIPMENTS, WEAPON_STATS WHERE "
    "EQUIPMENTS.EQUIPMENT_NAME = WEAPON_STATS.EQUIPMENT_NAME ";
const QString EveryType = EquipBase +
    " FROM EQUIPMENTS WHERE EQUIPMENTS.EQUIPMENT_NAME = EQUIPMENTS.EQUIPMENT_NAME ";
const QString RawBase = QStringLiteral(
    "SELECT RAW_MATERIAL_NAME, LVL, PRICE, COMMENTS, CHECK, PERSONAL_DB, UPDATED, SUBMITTED, LAST_UPDATED "
    "FROM RAW_MATERIALS");
const QString Stations = QStringLiteral(
    "SELECT STATIONS.STATION_NAME, STATIONS.SECTORS_SECTOR, SECTORS.SYSTEM_SYSTEM_NAME AS SYSTEM_NAME, "
    "STATIONS.CHECK FROM SECTORS INNER JOIN STATIONS ON SECTORS.SECTOR_NAME = STATIONS.SECTORS_SECTOR");
const QString Mobs = QStringLiteral(
    "SELECT MOBS.MOB_NAME, MOBS.UPDATED, MOBS.PERSONAL_DB, MOBS.CHECK, MOB_STATS.COMBAT_LEVEL, "
    "(MOB_STATS.COMBAT_LEVEL * 3) AS OVERALL_LEVEL, MOB_STATS.SHIELD, MOB_STATS.HULL, MOB_STATS.MASS, "
    "MOB_STATS.SIGNATURE, MOB_STATS.SCAN_RANGE, MOB_STATS.AGGRO_RANGE, MOBS.TYPE, MOBS.FACTION, "
    "MOBS.COMMENTS, MOBS.LAST_UPDATED FROM MOBS, MOB_STATS WHERE MOBS.MOB_NAME = MOB_STATS.MOB_NAME");
const QString Band = QStringLiteral(" AND MOB_STATS.COMBAT_LEVEL >= %1 AND MOB_STATS.COMBAT_LEVEL <= %2");

ListFilters filters(std::initializer_list<std::pair<const char*, QString>> values) {
    ListFilters f;
    for (const auto& [key, v] : values) {
        const QByteArray k(key);
        if (k == "type") f.equipType = v;
        else if (k == "level") f.level = v;
        else if (k == "checked") f.checked = v;
        else if (k == "comp") f.compType = v;
        else if (k == "sub") f.subType = v;
        else if (k == "band") f.combatBand = v;
        else if (k == "race") f.race = v;
        else if (k == "custom") f.customFields = (v == QLatin1String("yes"));
    }
    return f;
}
} // namespace

class TestListStatements : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void statement_data();
    void statement();
    void equipmentFollowsGetSQL_data();
    void equipmentFollowsGetSQL();
    void everyBand_data();
    void everyBand();
    void tickStatement_data();
    void tickStatement();
    void whereDetectionIgnoresQuotedText_data();
    void whereDetectionIgnoresQuotedText();
    void filterLists();
    void filtersPerCategory();
};

void TestListStatements::statement_data() {
    QTest::addColumn<QString>("category");
    QTest::addColumn<ListFilters>("f");
    QTest::addColumn<QString>("expected");

    // Equipment
    QTest::newRow("equipment, no filter") << "Equipment" << ListFilters{} << EveryType;
    QTest::newRow("equipment beam") << "Equipment" << filters({{"type", "Beam"}})
                                    << BeamAll + " AND EQUIPMENTS.TYPE = 'Beam'";
    QTest::newRow("equipment beam level 5 checked")
        << "Equipment" << filters({{"type", "Beam"}, {"level", "5"}, {"checked", "Checked"}})
        << BeamAll + " AND EQUIPMENTS.LVL = 5 AND EQUIPMENTS.TYPE = 'Beam' AND CHECK = TRUE";
    QTest::newRow("equipment all types, level, not checked")
        << "Equipment" << filters({{"level", "12"}, {"checked", "Not Checked"}})
        << EveryType + " AND EQUIPMENTS.LVL = 12 AND CHECK = FALSE";
    QTest::newRow("equipment for a class")
        << "Equipment" << filters({{"race", "Scout"}})
        << EquipBase + " FROM EQUIPMENTS , EQUIPMENT_CLASS WHERE EQUIPMENTS.EQUIPMENT_NAME = "
                       "EQUIPMENTS.EQUIPMENT_NAME  AND EQUIPMENTS.EQUIPMENT_NAME = "
                       "EQUIPMENT_CLASS.EQUIPMENTS_EQUIPMENT AND EQUIPMENT_CLASS.CLASS_NAME = 'Scout' ";
    QTest::newRow("equipment for a class with a quote")
        << "Equipment" << filters({{"race", "Mercs' Guild"}})
        << EquipBase + " FROM EQUIPMENTS , EQUIPMENT_CLASS WHERE EQUIPMENTS.EQUIPMENT_NAME = "
                       "EQUIPMENTS.EQUIPMENT_NAME  AND EQUIPMENTS.EQUIPMENT_NAME = "
                       "EQUIPMENT_CLASS.EQUIPMENTS_EQUIPMENT AND EQUIPMENT_CLASS.CLASS_NAME = 'Mercs'' Guild' ";
    QTest::newRow("equipment with custom fields")
        << "Equipment" << filters({{"custom", "yes"}})
        << EquipBase + Custom + " FROM EQUIPMENTS WHERE EQUIPMENTS.EQUIPMENT_NAME = EQUIPMENTS.EQUIPMENT_NAME ";
    QTest::newRow("equipment ammunition")
        << "Equipment" << filters({{"type", "Ammunition"}})
        << EquipBase + ", AMO_STATS.DAMAGE, AMO_STATS.DAMAGE_TYPE, AMO_TYPES.LAUNCH_TYPE, AMO_STATS.AMO_TYPE AS "
                       "AMO_TYPE_AMO, AMO_STATS.STACK_SIZE, IIF(AMO_TYPES.LAUNCH_TYPE = 'Missile', AMO_STATS.RANGE, "
                       "-1) AS AMMO_RANGE, IIF(AMO_TYPES.LAUNCH_TYPE = 'Missile', AMO_STATS.MANEUVERABILITY, -1) AS "
                       "MANEUVERABILITY , IIF(EQUIPMENTS.PRICE=0,0,(AMO_STATS.DAMAGE/EQUIPMENTS.PRICE)) AS "
                       "DAMAGE_PER_CREDIT FROM EQUIPMENTS, AMO_STATS, AMO_TYPES WHERE EQUIPMENTS.EQUIPMENT_NAME = "
                       "AMO_STATS.EQUIPMENT_NAME AND AMO_STATS.AMO_TYPE = AMO_TYPES.AMO_TYPE  AND EQUIPMENTS.TYPE = "
                       "'Ammunition'";

    // Components
    QTest::newRow("components all") << "Components" << ListFilters{} << "SELECT * FROM COMPONENTS";
    QTest::newRow("components of a type")
        << "Components" << filters({{"comp", "Circuit"}}) << "SELECT * FROM COMPONENTS WHERE TYPE = 'Circuit'";
    QTest::newRow("components unknown type")
        << "Components" << filters({{"comp", "Unknown"}})
        << "SELECT * FROM COMPONENTS WHERE (TYPE IS NULL OR TYPE = 'Unknown')";
    QTest::newRow("components type and subtype")
        << "Components" << filters({{"comp", "Circuit"}, {"sub", "Board"}})
        << "SELECT * FROM COMPONENTS WHERE TYPE = 'Circuit' AND SUBTYPE = 'Board'";
    QTest::newRow("components subtype N/A is no filter")
        << "Components" << filters({{"comp", "Circuit"}, {"sub", "N/A"}})
        << "SELECT * FROM COMPONENTS WHERE TYPE = 'Circuit'";
    QTest::newRow("components subtype Unknown is no filter")
        << "Components" << filters({{"comp", "Circuit"}, {"sub", "Unknown"}})
        << "SELECT * FROM COMPONENTS WHERE TYPE = 'Circuit'";
    QTest::newRow("components level only")
        << "Components" << filters({{"level", "7"}}) << "SELECT * FROM COMPONENTS WHERE LVL = 7";
    QTest::newRow("components type, subtype, level, checked")
        << "Components" << filters({{"comp", "Circuit"}, {"sub", "Board"}, {"level", "3"}, {"checked", "Checked"}})
        << "SELECT * FROM COMPONENTS WHERE TYPE = 'Circuit' AND SUBTYPE = 'Board' AND LVL = 3 AND CHECK = TRUE";
    QTest::newRow("components unknown type, level, not checked")
        << "Components" << filters({{"comp", "Unknown"}, {"level", "2"}, {"checked", "Not Checked"}})
        << "SELECT * FROM COMPONENTS WHERE (TYPE IS NULL OR TYPE = 'Unknown') AND LVL = 2 AND CHECK = FALSE";
    QTest::newRow("components checked only")
        << "Components" << filters({{"checked", "Checked"}}) << "SELECT * FROM COMPONENTS WHERE CHECK = TRUE";
    QTest::newRow("components quotes in type and subtype")
        << "Components" << filters({{"comp", "Pilot's Kit"}, {"sub", "O'Neil"}})
        << "SELECT * FROM COMPONENTS WHERE TYPE = 'Pilot''s Kit' AND SUBTYPE = 'O''Neil'";

    // Raw materials
    QTest::newRow("raw materials all") << "Raw Materials" << ListFilters{} << RawBase;
    QTest::newRow("raw materials level") << "Raw Materials" << filters({{"level", "4"}}) << RawBase + " WHERE LVL = 4";
    QTest::newRow("raw materials checked, no level")
        << "Raw Materials" << filters({{"checked", "Checked"}}) << RawBase + " WHERE CHECK = TRUE";
    QTest::newRow("raw materials checked with level")
        << "Raw Materials" << filters({{"level", "4"}, {"checked", "Checked"}})
        << RawBase + " WHERE LVL = 4 AND CHECK = TRUE";
    QTest::newRow("raw materials not checked, no level")
        << "Raw Materials" << filters({{"checked", "Not Checked"}}) << RawBase + " WHERE CHECK = FALSE";

    // Stations: no filter but the tick
    QTest::newRow("stations") << "Stations" << ListFilters{} << Stations;
    QTest::newRow("stations checked") << "Stations" << filters({{"checked", "Checked"}})
                                      << Stations + " WHERE CHECK = TRUE";
    QTest::newRow("stations ignore level") << "Stations" << filters({{"level", "9"}}) << Stations;

    // MOBs
    QTest::newRow("mobs all") << "MOBs" << ListFilters{} << Mobs;
    QTest::newRow("mobs 0-5") << "MOBs" << filters({{"band", "0-5"}}) << Mobs + Band.arg(0).arg(5);
    QTest::newRow("mobs 46-50") << "MOBs" << filters({{"band", "46-50"}}) << Mobs + Band.arg(46).arg(50);
    QTest::newRow("mobs 51+") << "MOBs" << filters({{"band", "51+"}})
                              << Mobs + " AND MOB_STATS.COMBAT_LEVEL >= 51";
    QTest::newRow("mobs band and not checked")
        << "MOBs" << filters({{"band", "6-10"}, {"checked", "Not Checked"}})
        << Mobs + Band.arg(6).arg(10) + " AND CHECK = FALSE";
    QTest::newRow("mobs checked") << "MOBs" << filters({{"checked", "Checked"}}) << Mobs + " AND CHECK = TRUE";

    // Items and characters
    QTest::newRow("items") << "Items" << ListFilters{} << "SELECT * FROM ITEMS";
    QTest::newRow("items level") << "Items" << filters({{"level", "30"}}) << "SELECT * FROM ITEMS WHERE LVL = 30";
    QTest::newRow("items level checked") << "Items" << filters({{"level", "30"}, {"checked", "Checked"}})
                                         << "SELECT * FROM ITEMS WHERE LVL = 30 AND CHECK = TRUE";
    QTest::newRow("items not checked") << "Items" << filters({{"checked", "Not Checked"}})
                                       << "SELECT * FROM ITEMS WHERE CHECK = FALSE";
    QTest::newRow("characters") << "Characters" << ListFilters{} << "SELECT * FROM CHARACTERS";
    QTest::newRow("unknown category") << "Sectors" << ListFilters{} << QString();
}

void TestListStatements::statement() {
    QFETCH(QString, category);
    QFETCH(ListFilters, f);
    QFETCH(QString, expected);
    QCOMPARE(ListStatement(category, f), expected);
}

void TestListStatements::equipmentFollowsGetSQL_data() {
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("level");
    QTest::addColumn<QString>("race");
    QTest::addColumn<QString>("checked");
    for (int t = equip::Beam; t <= equip::Ammunition; ++t) {
        const QByteArray n = DeEnumerate(t).toLatin1();
        QTest::newRow(n + " plain") << t << "All" << "All" << "All";
        QTest::newRow(n + " level, class, checked") << t << "40" << "Trader" << "Checked";
        QTest::newRow(n + " not checked") << t << "All" << "All" << "Not Checked";
    }
}

// Every type keeps the list's switches: marks on, no stat name, no picture, custom off here.
void TestListStatements::equipmentFollowsGetSQL() {
    QFETCH(int, type);
    QFETCH(QString, level);
    QFETCH(QString, race);
    QFETCH(QString, checked);
    ListFilters f = filters({{"type", DeEnumerate(type)}, {"level", level}, {"race", race}, {"checked", checked}});
    QString expected = GetSQL(type, true, false, false, false, race == "All" ? QString() : race, false);
    if (level != "All")
        expected += " AND EQUIPMENTS.LVL = " + level;
    expected += " AND EQUIPMENTS.TYPE = '" + DeEnumerate(type) + "'";
    if (checked == "Checked")
        expected += " AND CHECK = TRUE";
    else if (checked == "Not Checked")
        expected += " AND CHECK = FALSE";
    QCOMPARE(ListStatement("Equipment", f), expected);
}

void TestListStatements::everyBand_data() {
    QTest::addColumn<QString>("band");
    QTest::addColumn<QString>("condition");
    QTest::newRow("All") << "All" << QString();
    for (int a = 0; a <= 45; a = (a == 0 ? 6 : a + 5)) {
        const int b = a == 0 ? 5 : a + 4;
        const QString name = QString("%1-%2").arg(a).arg(b);
        QTest::newRow(name.toLatin1()) << name
                                       << QString("MOB_STATS.COMBAT_LEVEL >= %1 AND MOB_STATS.COMBAT_LEVEL <= %2")
                                              .arg(a).arg(b);
    }
    QTest::newRow("51+") << "51+" << "MOB_STATS.COMBAT_LEVEL >= 51";
    QTest::newRow("not a band") << "3-4" << QString();
    QTest::newRow("garbage") << "x-y" << QString();
}

void TestListStatements::everyBand() {
    QFETCH(QString, band);
    QFETCH(QString, condition);
    QCOMPARE(CombatBandCondition(band), condition);
    QVERIFY(band == "All" || condition.isEmpty() || CombatBands().contains(band));
}

void TestListStatements::tickStatement_data() {
    QTest::addColumn<QString>("category");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("state");
    QTest::addColumn<QString>("expected");
    QTest::newRow("equipment on") << "Equipment" << "Ion Beam" << true
        << "UPDATE EQUIPMENTS SET EQUIPMENTS.CHECK = TRUE WHERE EQUIPMENT_NAME = 'Ion Beam';";
    QTest::newRow("equipment quote") << "Equipment" << "Kell's Lance" << false
        << "UPDATE EQUIPMENTS SET EQUIPMENTS.CHECK = FALSE WHERE EQUIPMENT_NAME = 'Kell''s Lance';";
    QTest::newRow("components") << "Components" << "Coil" << true
        << "UPDATE COMPONENTS SET COMPONENTS.CHECK = TRUE WHERE COMPONENT_NAME = 'Coil';";
    QTest::newRow("raw materials") << "Raw Materials" << "Iron Ore" << false
        << "UPDATE RAW_MATERIALS SET RAW_MATERIALS.CHECK = FALSE WHERE RAW_MATERIAL_NAME = 'Iron Ore'";
    QTest::newRow("stations") << "Stations" << "Port Ada" << true
        << "UPDATE STATIONS SET STATIONS.CHECK = TRUE WHERE STATION_NAME = 'Port Ada'";
    QTest::newRow("mobs") << "MOBs" << "Drone" << true << "UPDATE MOBS SET MOBS.CHECK = TRUE WHERE MOB_NAME = 'Drone'";
    QTest::newRow("items") << "Items" << "Bolt" << false
        << "UPDATE ITEMS SET ITEMS.CHECK = FALSE WHERE ITEM_NAME = 'Bolt'";
    QTest::newRow("already doubled quotes stay") << "Items" << "A''B" << true
        << "UPDATE ITEMS SET ITEMS.CHECK = TRUE WHERE ITEM_NAME = 'A''B'";
    QTest::newRow("characters have no tick") << "Characters" << "Me" << true << QString();
}

void TestListStatements::tickStatement() {
    QFETCH(QString, category);
    QFETCH(QString, name);
    QFETCH(bool, state);
    QFETCH(QString, expected);
    QCOMPARE(CheckStatement(category, name, state), expected);
}

void TestListStatements::whereDetectionIgnoresQuotedText_data() {
    QTest::addColumn<QString>("sql");
    QTest::addColumn<bool>("hasWhere");
    QTest::newRow("none") << "SELECT * FROM ITEMS" << false;
    QTest::newRow("plain") << "SELECT * FROM ITEMS WHERE LVL = 1" << true;
    QTest::newRow("lower case") << "select * from items where lvl = 1" << true;
    QTest::newRow("only in a literal") << "SELECT * FROM X INNER JOIN Y ON A = 'Somewhere WHERE'" << false;
    QTest::newRow("literal with doubled quote") << "SELECT * FROM X ON A = 'it''s WHERE'" << false;
    QTest::newRow("part of a name") << "SELECT NOWHERE FROM X" << false;
    QTest::newRow("column named WHERE_X") << "SELECT WHERE_X FROM X" << false;
}

void TestListStatements::whereDetectionIgnoresQuotedText() {
    QFETCH(QString, sql);
    QFETCH(bool, hasWhere);
    QCOMPARE(HasWhereClause(sql), hasWhere);
    QCOMPARE(AddTickFilter(sql, "Checked"), sql + (hasWhere ? " AND CHECK = TRUE" : " WHERE CHECK = TRUE"));
    QCOMPARE(AddTickFilter(sql, "All"), sql);
}

void TestListStatements::filterLists() {
    QCOMPARE(Categories(), QStringList({"Equipment", "Components", "Raw Materials", "Stations", "MOBs", "Items"}));
    QCOMPARE(CheckedChoices(), QStringList({"All", "Checked", "Not Checked"}));
    QCOMPARE(CombatBands(), QStringList({"All", "0-5", "6-10", "11-15", "16-20", "21-25", "26-30", "31-35",
                                         "36-40", "41-45", "46-50", "51+"}));
    QCOMPARE(EquipTypeChoices(), QStringList({"All", "Beam", "Missile", "Projectile", "Reactor", "Engine",
                                              "Shield", "Device", "Ammunition"}));
    QCOMPARE(SubTypeListStatement("Pilot's Kit"),
             "SELECT COMPONENT_SUBTYPE FROM COMPONENT_TYPE_SUBTYPE WHERE COMPONENT_TYPE = 'Pilot''s Kit' "
             "ORDER BY COMPONENT_SUBTYPE");
    const QStringList levels = LevelChoices(0);
    QCOMPARE(levels.size(), LevelFloor + 1);
    QCOMPARE(levels.first(), "All");
    QCOMPARE(levels.at(1), "1");
    QCOMPARE(levels.last(), QString::number(LevelFloor));
    QCOMPARE(LevelChoices(72).last(), "72");
}

void TestListStatements::filtersPerCategory() {
    QVERIFY(FiltersFor("Equipment").equipType && FiltersFor("Equipment").race && FiltersFor("Equipment").level);
    QVERIFY(!FiltersFor("Equipment").compType && !FiltersFor("Equipment").combatBand);
    QVERIFY(FiltersFor("Components").compType && FiltersFor("Components").subType && FiltersFor("Components").level);
    QVERIFY(FiltersFor("MOBs").combatBand && !FiltersFor("MOBs").level);
    QVERIFY(!FiltersFor("Stations").level && FiltersFor("Stations").checked);
    QVERIFY(FiltersFor("Raw Materials").level && FiltersFor("Items").level);
}

QTEST_GUILESS_MAIN(TestListStatements)
#include "tst_liststatements.moc"
