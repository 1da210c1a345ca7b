// The main list's statements, whole, for every category and filter; the tick writes; the filter lists;
// the printed list's title of the filters in force.
#include "app/liststatements.h"
#include "app/listtitle.h"

#include <QHash>
#include <QTest>

namespace {
const QString EquipBase = QStringLiteral(
    "SELECT EQUIPMENTS.EQUIPMENT_NAME, EQUIPMENTS.TYPE, EQUIPMENTS.MANUFACTURER, EQUIPMENTS.LVL, "
    "EQUIPMENTS.COMMENTS, EQUIPMENTS.PRICE AS PURCHASE_PRICE, EQUIPMENTS.QUALITY, EQUIPMENTS.UNIQUE_FLAG, "
    "EQUIPMENTS.COST_TO_MANUFACTURE AS MANUFACTURING_FEE, EQUIPMENTS.LAST_UPDATED, EQUIPMENTS.CHECK, "
    "EQUIPMENTS.PERSONAL_DB, EQUIPMENTS.UPDATED");
const QString BeamAll =
    EquipBase +
    ", WEAPON_STATS.DAMAGE, WEAPON_STATS.DAMAGE_TYPE, WEAPON_STATS.DELAY, WEAPON_STATS.ENERGY_USE, "
    "WEAPON_STATS.RANGE , (WEAPON_STATS.DAMAGE/WEAPON_STATS.DELAY) AS DAMAGE_PER_SECOND, "
    "(WEAPON_STATS.DAMAGE/WEAPON_STATS.ENERGY_USE) AS EFFICIENCY FROM EQUIPMENTS, WEAPON_STATS WHERE "
    "EQUIPMENTS.EQUIPMENT_NAME = WEAPON_STATS.EQUIPMENT_NAME ";
const QString EveryType = " FROM EQUIPMENTS WHERE EQUIPMENTS.EQUIPMENT_NAME = EQUIPMENTS.EQUIPMENT_NAME ";
const QString Raw =
    QStringLiteral("SELECT RAW_MATERIAL_NAME, LVL, PRICE, COMMENTS, CHECK, PERSONAL_DB, UPDATED, "
                   "SUBMITTED, LAST_UPDATED FROM RAW_MATERIALS");
const QString Stations = QStringLiteral(
    "SELECT STATIONS.STATION_NAME, STATIONS.SECTORS_SECTOR, SECTORS.SYSTEM_SYSTEM_NAME AS SYSTEM_NAME, "
    "STATIONS.CHECK FROM SECTORS INNER JOIN STATIONS ON SECTORS.SECTOR_NAME = STATIONS.SECTORS_SECTOR");
const QString Mobs = QStringLiteral(
    "SELECT MOBS.MOB_NAME, MOBS.UPDATED, MOBS.PERSONAL_DB, MOBS.CHECK, MOB_STATS.COMBAT_LEVEL, "
    "(MOB_STATS.COMBAT_LEVEL * 3) AS OVERALL_LEVEL, MOB_STATS.SHIELD, MOB_STATS.HULL, MOB_STATS.MASS, "
    "MOB_STATS.SIGNATURE, MOB_STATS.SCAN_RANGE, MOB_STATS.AGGRO_RANGE, MOBS.TYPE, MOBS.FACTION, "
    "MOBS.COMMENTS, MOBS.LAST_UPDATED FROM MOBS, MOB_STATS WHERE MOBS.MOB_NAME = MOB_STATS.MOB_NAME");
const QString Band = QStringLiteral(" AND MOB_STATS.COMBAT_LEVEL >= %1 AND MOB_STATS.COMBAT_LEVEL <= %2");
const QString Comps = QStringLiteral("SELECT * FROM COMPONENTS");

// Filters from "key=value" pairs (type, level, checked, comp, sub, band, race) and "custom".
ListFilters filters(const QStringList& pairs) {
    ListFilters f;
    const QHash<QString, QString*> field{{"type", &f.equipType}, {"level", &f.level}, {"checked", &f.checked},
                                         {"comp", &f.compType},  {"sub", &f.subType}, {"band", &f.combatBand},
                                         {"race", &f.race}};
    for (const QString& p : pairs)
        p == "custom" ? void(f.customFields = true)
                      : void(*field.value(p.section('=', 0, 0)) = p.section('=', 1));
    return f;
}
} // namespace

class TestListStatements : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void statement_data() {
        QTest::addColumn<QString>("category");
        QTest::addColumn<QStringList>("f");
        QTest::addColumn<QString>("expected");
        auto row = [](const char* name, const QString& c, const QStringList& f, const QString& sql) {
            QTest::newRow(name) << c << f << sql;
        };
        row("equipment beam, level, checked", "Equipment", {"type=Beam", "level=5", "checked=Checked"},
            BeamAll + " AND EQUIPMENTS.LVL = 5 AND EQUIPMENTS.TYPE = 'Beam' AND CHECK = TRUE");
        row("equipment class with a quote", "Equipment", {"race=Mercs' Guild"},
            EquipBase + " FROM EQUIPMENTS , EQUIPMENT_CLASS WHERE EQUIPMENTS.EQUIPMENT_NAME = "
                        "EQUIPMENTS.EQUIPMENT_NAME "
                        " AND EQUIPMENTS.EQUIPMENT_NAME = EQUIPMENT_CLASS.EQUIPMENTS_EQUIPMENT AND "
                        "EQUIPMENT_CLASS.CLASS_NAME = 'Mercs'' Guild' ");
        row("equipment custom fields, not checked", "Equipment", {"custom", "checked=Not Checked"},
            EquipBase + ", EQUIPMENTS.CUSTOM_01, EQUIPMENTS.CUSTOM_02, EQUIPMENTS.CUSTOM_03" + EveryType +
                " AND CHECK = FALSE");
        row("components level, checked", "Components", {"level=7", "checked=Checked"},
            Comps + " WHERE LVL = 7 AND CHECK = TRUE");
        row("components quoted type and subtype", "Components", {"comp=Pilot's Kit", "sub=O'Neil"},
            Comps + " WHERE TYPE = 'Pilot''s Kit' AND SUBTYPE = 'O''Neil'");
        row("components subtype N/A", "Components", {"comp=Circuit", "sub=N/A"},
            Comps + " WHERE TYPE = 'Circuit'");
        row("components type, subtype, level, checked", "Components",
            {"comp=Circuit", "sub=Board", "level=3", "checked=Checked"},
            Comps + " WHERE TYPE = 'Circuit' AND SUBTYPE = 'Board' AND LVL = 3 AND CHECK = TRUE");
        row("components unknown type, level, not checked", "Components",
            {"comp=Unknown", "level=2", "checked=Not Checked"},
            Comps + " WHERE (TYPE IS NULL OR TYPE = 'Unknown') AND LVL = 2 AND CHECK = FALSE");
        row("raw materials checked, no level", "Raw Materials", {"checked=Checked"},
            Raw + " WHERE CHECK = TRUE");
        row("raw materials checked with level", "Raw Materials", {"level=4", "checked=Checked"},
            Raw + " WHERE LVL = 4 AND CHECK = TRUE");
        row("stations: no level, not checked", "Stations", {"level=9", "checked=Not Checked"},
            Stations + " WHERE CHECK = FALSE");
        row("mobs 46-50", "MOBs", {"band=46-50"}, Mobs + Band.arg(46).arg(50));
        row("mobs 51+", "MOBs", {"band=51+"}, Mobs + " AND MOB_STATS.COMBAT_LEVEL >= 51");
        row("mobs band, not checked", "MOBs", {"band=6-10", "checked=Not Checked"},
            Mobs + Band.arg(6).arg(10) + " AND CHECK = FALSE");
        row("items level, checked", "Items", {"level=30", "checked=Checked"},
            "SELECT * FROM ITEMS WHERE LVL = 30 AND CHECK = TRUE");
        row("characters", "Characters", {}, "SELECT * FROM CHARACTERS");
        row("unknown category", "Sectors", {}, QString());
    }
    void statement() {
        QFETCH(QString, category);
        QFETCH(QStringList, f);
        QFETCH(QString, expected);
        QCOMPARE(ListStatement(category, filters(f)), expected);
    }
    void tickStatement_data() {
        QTest::addColumn<QString>("category");
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("state");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* what, const QString& c, const QString& name, bool state,
                            const QString& sql) { QTest::newRow(what) << c << name << state << sql; };
        row("equipment quote", "Equipment", "Kell's Lance", false,
            "UPDATE EQUIPMENTS SET EQUIPMENTS.CHECK = FALSE WHERE EQUIPMENT_NAME = 'Kell''s Lance';");
        row("components", "Components", "Coil", true,
            "UPDATE COMPONENTS SET COMPONENTS.CHECK = TRUE WHERE COMPONENT_NAME = 'Coil';");
        row("raw materials", "Raw Materials", "Iron Ore", false,
            "UPDATE RAW_MATERIALS SET RAW_MATERIALS.CHECK = FALSE WHERE RAW_MATERIAL_NAME = 'Iron Ore'");
        row("stations", "Stations", "Port Ada", true,
            "UPDATE STATIONS SET STATIONS.CHECK = TRUE WHERE STATION_NAME = 'Port Ada'");
        row("mobs", "MOBs", "Drone", true, "UPDATE MOBS SET MOBS.CHECK = TRUE WHERE MOB_NAME = 'Drone'");
        row("items, doubled quotes stay", "Items", "A''B", false,
            "UPDATE ITEMS SET ITEMS.CHECK = FALSE WHERE ITEM_NAME = 'A''B'");
        row("characters have no tick", "Characters", "Me", true, QString());
    }
    void tickStatement() {
        QFETCH(QString, category);
        QFETCH(QString, name);
        QFETCH(bool, state);
        QFETCH(QString, expected);
        QCOMPARE(CheckStatement(category, name, state), expected);
    }
    void filterLists() {
        QCOMPARE(Categories(),
                 QStringList({"Equipment", "Components", "Raw Materials", "Stations", "MOBs", "Items"}));
        QCOMPARE(CheckedChoices(), QStringList({"All", "Checked", "Not Checked"}));
        QCOMPARE(CombatBands(), QStringList({"All", "0-5", "6-10", "11-15", "16-20", "21-25", "26-30",
                                             "31-35", "36-40", "41-45", "46-50", "51+"}));
        QCOMPARE(SubTypeListStatement("Pilot's Kit"),
                 "SELECT COMPONENT_SUBTYPE FROM COMPONENT_TYPE_SUBTYPE WHERE COMPONENT_TYPE = 'Pilot''s Kit' "
                 "ORDER BY COMPONENT_SUBTYPE");
    }
    void filterTitles_data() {
        QTest::addColumn<QStringList>("f");
        QTest::addColumn<QString>("text");
        QTest::newRow("nothing filtered") << QStringList{} << "";
        QTest::newRow("equipment") << QStringList{"type=Beam", "level=12", "race=Terran", "checked=Checked"}
                                   << "Type: Beam, Level: 12, Class: Terran, Checked only";
        QTest::newRow("components") << QStringList{"comp=Hull", "sub=Plating", "checked=Not Checked"}
                                    << "Type: Hull, Subtype: Plating, Not checked only";
        QTest::newRow("no subtype") << QStringList{"comp=Hull", "sub=N/A"} << "Type: Hull";
        QTest::newRow("MOBs") << QStringList{"band=46-50"} << "Combat level: 46-50";
    }
    void filterTitles() {
        QFETCH(QStringList, f);
        QFETCH(QString, text);
        QCOMPARE(ListFilterText(filters(f)), text);
    }
};

QTEST_GUILESS_MAIN(TestListStatements)
#include "tst_liststatements.moc"
