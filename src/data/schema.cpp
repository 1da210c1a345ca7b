#include "data/schema.h"

#include <QFile>
#include <QRegularExpression>
#include <sqlite3.h>

namespace schema {
namespace {

Column col(const QString& n, const QString& type, bool required = false) {
    Column c;
    c.name = n;
    c.type = type;
    c.required = required;
    return c;
}

Column name(const QString& n, const QString& type, bool required = false) {
    Column c = col(n, type, required);
    c.holdsName = true;
    return c;
}

Column key(const QString& n) {
    return name(n, QStringLiteral("VARCHAR(100)"), true);
}
Column ref(const QString& n) {
    return name(n, QStringLiteral("VARCHAR(100)"));
}
Column lookupKey(const QString& n) {
    return name(n, QStringLiteral("VARCHAR(50)"), true);
}
Column word(const QString& n) {
    return name(n, QStringLiteral("VARCHAR(50)"));
}
Column caption(const QString& n) {
    return col(n, QStringLiteral("VARCHAR(50)"));
}
Column shortText(const QString& n) {
    return col(n, QStringLiteral("VARCHAR(20)"));
}
Column custom(const QString& n) {
    return col(n, QStringLiteral("VARCHAR(255)"));
}
Column memo(const QString& n) {
    return col(n, QStringLiteral("TEXT"));
}
Column whole(const QString& n) {
    return col(n, QStringLiteral("INTEGER"));
}
Column small(const QString& n) {
    return col(n, QStringLiteral("SMALLINT"));
}
Column dbl(const QString& n) {
    return col(n, QStringLiteral("DOUBLE"));
}
Column sgl(const QString& n) {
    return col(n, QStringLiteral("FLOAT"));
}
Column yesNo(const QString& n) {
    return col(n, QStringLiteral("BOOLEAN"));
}
Column date(const QString& n) {
    return col(n, QStringLiteral("DATETIME"));
}

Table record(const QString& name, QList<Column> cols) {
    return {name, cols, {cols.first().name}};
}
Table link(const QString& name, QList<Column> cols) {
    return {name, cols, {}};
}
Table lookup(const QString& name, QList<Column> cols, bool ordered = false) {
    QStringList keys;
    for (const Column& c : cols)
        if (c.required)
            keys << c.name;
    return {name, cols, keys, true, ordered};
}

QList<Table> buildTables() {
    QList<Table> t;
    // Main records.
    t << record("EQUIPMENTS", {key("EQUIPMENT_NAME"), word("TYPE"), ref("MANUFACTURER"), whole("LVL"),
                               memo("COMMENTS"), whole("PRICE"), small("QUALITY"), yesNo("UNIQUE_FLAG"),
                               whole("COST_TO_MANUFACTURE"), date("LAST_UPDATED"), yesNo("CHECK"),
                               yesNo("PERSONAL_DB"), yesNo("UPDATED"), yesNo("SUBMITTED"), whole("PIC_ID"),
                               custom("CUSTOM_01"), custom("CUSTOM_02"), custom("CUSTOM_03")});
    t << record("COMPONENTS", {key("COMPONENT_NAME"), whole("LVL"), whole("PRICE"), memo("COMMENTS"),
                               yesNo("PERSONAL_DB"), word("TYPE"), word("SUBTYPE"), whole("PIC_ID"),
                               date("LAST_UPDATED"), yesNo("CHECK"), yesNo("UPDATED"), yesNo("SUBMITTED")});
    t << record("RAW_MATERIALS", {key("RAW_MATERIAL_NAME"), whole("LVL"), whole("PRICE"), memo("COMMENTS"),
                                  yesNo("CHECK"), yesNo("PERSONAL_DB"), yesNo("UPDATED"), yesNo("SUBMITTED"),
                                  date("LAST_UPDATED"), whole("PIC_ID")});
    t << record("ITEMS", {key("ITEM_NAME"), whole("LVL"), whole("PRICE"), memo("COMMENTS"), yesNo("CHECK"),
                          yesNo("PERSONAL_DB"), yesNo("UPDATED"), yesNo("SUBMITTED"), date("LAST_UPDATED"),
                          whole("PIC_ID")});
    t << record("MOBS", {key("MOB_NAME"), word("TYPE"), word("FACTION"), memo("COMMENTS"), yesNo("CHECK"),
                         yesNo("PERSONAL_DB"), yesNo("UPDATED"), yesNo("SUBMITTED"), date("LAST_UPDATED")});
    t << record("MOB_STATS", {key("MOB_NAME"), whole("COMBAT_LEVEL"), whole("SHIELD"), whole("HULL"),
                              whole("MASS"), whole("SIGNATURE"), whole("SCAN_RANGE"), whole("AGGRO_RANGE"),
                              shortText("BRAVERY"), shortText("AGGRESSIVENESS"), shortText("ALTRUISM"),
                              shortText("INTELIGENCE"), yesNo("BOSS")});
    t << record("STATIONS", {key("STATION_NAME"), ref("SECTORS_SECTOR"), memo("COMMENTS"), yesNo("CHECK"),
                             yesNo("PERSONAL_DB"), yesNo("UPDATED"), date("LAST_UPDATED")});
    t << record("CHARACTERS", {key("CHARACTER_NAME")});

    // Equipment statistics, one row per equipment of the kind.
    t << record("WEAPON_STATS", {key("EQUIPMENT_NAME"), whole("DAMAGE"), word("DAMAGE_TYPE"), dbl("DELAY"),
                                 dbl("ENERGY_USE"), whole("RANGE"), whole("ROUNDS"), word("AMO_TYPE")});
    t << record("ENGINE_STATS",
                {key("EQUIPMENT_NAME"), whole("WARP"), dbl("DRAIN"), whole("THRUST"), whole("SIGNATURE")});
    t << record("REACTOR_STATS", {key("EQUIPMENT_NAME"), whole("ENERGY"), dbl("RECHARGE_RATE")});
    t << record("SHIELD_STATS", {key("EQUIPMENT_NAME"), whole("COVERAGE"), dbl("REGEN_RATE")});
    t << record("AMO_STATS", {key("EQUIPMENT_NAME"), whole("DAMAGE"), word("DAMAGE_TYPE"), word("AMO_TYPE"),
                              whole("STACK_SIZE"), whole("RANGE"), sgl("MANEUVERABILITY")});

    // Relationships: names that join records, kept even when they point nowhere.
    t << link("EQUIPMENTS_COMPONENTS",
              {ref("EQUIPMENTS_EQUIPMENT"), ref("COMPONENTS_COMPONENT"), whole("AMOUNT")});
    t << link("EQUIPMENTS_RAW_MATERIALS",
              {ref("EQUIPMENTS_EQUIPMENT"), ref("RAW_MATERIAL_NAME"), whole("AMOUNT")});
    t << link("EQUIPMENTS_ITEMS", {ref("EQUIPMENTS_EQUIPMENT"), ref("ITEM_NAME"), whole("AMOUNT")});
    t << link("EQUIPMENTS_UPGRADE_FROM", {ref("EQUIPMENT_NAME"), ref("UPGRADE_FROM"), whole("AMOUNT")});
    t << link("COMPONENTS_RAW_MATERIALS",
              {ref("COMPONENTS_COMPONENT"), ref("RAW_MATERIAL"), whole("AMOUNT")});
    t << link("COMPONENTS_EQUIPMENTS", {ref("COMPONENT_NAME"), ref("EQUIPMENT_NAME"), whole("AMOUNT")});
    t << link("COMPONENTS_ITEMS", {ref("COMPONENT_NAME"), ref("ITEM_NAME"), whole("AMOUNT")});
    t << link("COMPONENTS_UPGRADE_FROM", {ref("COMPONENT_NAME"), ref("UPGRADE_FROM"), whole("AMOUNT")});
    t << link("RAW_MATERIALS_REFINES_FROM", {ref("RAW_MATERIAL_NAME"), ref("REFINES_FROM"), whole("AMOUNT")});
    t << link("RAW_MATERIALS_ITEMS", {ref("RAW_MATERIAL_NAME"), ref("ITEM_NAME"), whole("AMOUNT")});
    t << link("EQUIPMENT_CLASS", {ref("EQUIPMENTS_EQUIPMENT"), word("CLASS_NAME")});
    t << link("EQUIP_SPECIALS", {ref("EQUIPMENT_NAME"), word("SPECIAL"), dbl("AMOUNT"), shortText("UNITS"),
                                 dbl("ENERGY_USE"), whole("RANGE"), whole("DURATION"), whole("SHUNT")});
    t << link("BUY_EQUIPMENT_LOCATION", {ref("EQUIPMENTS_EQUIPMENT"), ref("STATIONS_STATION")});
    t << link("BUY_COMPONENT_LOCATIONS", {ref("COMPONENTS_COMPONENT"), ref("STATIONS_STATION")});
    t << link("BUY_RAW_MATERIAL_LOCATIONS", {ref("RAW_MATERIAL"), ref("STATIONS_STATION")});
    t << link("BUY_ITEM_LOCATIONS", {ref("ITEM_NAME"), ref("STATIONS_STATION")});
    t << link("MINE_LOCATIONS", {ref("RAW_MATERIAL"), ref("SECTORS_SECTOR")});
    t << link("MOB_EQUIP_DROP", {ref("MOB_NAME"), ref("EQUIPMENT_NAME"), word("DROP_FREQUENCY")});
    t << link("MOB_COMP_DROP", {ref("MOB_NAME"), ref("COMPONENT_NAME"), word("DROP_FREQUENCY")});
    t << link("MOB_RAW_MAT_DROP", {ref("MOB_NAME"), ref("RAW_MATERIAL_NAME"), word("DROP_FREQUENCY")});
    t << link("MOB_ITEM_DROP", {ref("MOB_NAME"), ref("ITEM_NAME"), word("DROP_FREQUENCY")});
    t << link("MOBS_LOCATION", {ref("MOB_NAME"), ref("SECTOR_NAME"), ref("NAV_POINT"), word("SPAWN_RATE")});
    t << link("MOB_ATTACK_TYPE", {ref("MOB_NAME"), word("ATTACK_TYPE"), whole("AMOUNT")});
    t << link("MOB_RESISTANCE", {ref("MOB_NAME"), word("RESISTANCE"), whole("AMOUNT")});
    t << link("MOB_WEAKNESS", {ref("MOB_NAME"), word("WEAKNESS"), whole("AMOUNT")});
    t << link("STATION_TERMINALS", {ref("STATION_NAME"), word("TERMINAL_TYPE")});

    // Places.
    t << record("SYSTEMS", {key("SYSTEM_NAME")});
    t << record("SECTORS", {key("SECTOR_NAME"), ref("SYSTEM_SYSTEM_NAME")});
    Table nav{"NAV_POINTS",
              {key("NAV_POINT_NAME"), ref("SECTOR_NAME"), memo("COMMENTS"), dbl("X_POINT"), dbl("Y_POINT"),
               word("NAV_TYPE")},
              {"SECTOR_NAME", "NAV_POINT_NAME"}};
    t << nav;

    // Drop-down lists.
    t << lookup("CLASSES", {lookupKey("CLASS_NAME")});
    t << lookup("COMPONENT_TYPES", {lookupKey("COMPONENT_TYPE")});
    t << lookup("COMPONENT_TYPE_SUBTYPE", {lookupKey("COMPONENT_TYPE"), lookupKey("COMPONENT_SUBTYPE")});
    t << lookup("DAMAGE_TYPE", {lookupKey("DAMAGE_TYPE")});
    t << lookup("LAUNCH_TYPES", {lookupKey("LAUNCH_TYPE")});
    Table amo = lookup("AMO_TYPES", {lookupKey("AMO_TYPE"), word("LAUNCH_TYPE")});
    t << amo;
    t << lookup("MANUFACTURER", {name("MANUFACTURER_NAME", "VARCHAR(100)", true)});
    t << lookup("SPECIALS", {lookupKey("SPECIAL")});
    t << lookup("MOB_TYPES", {lookupKey("MOB_TYPE")});
    t << lookup("FACTIONS", {lookupKey("FACTION")});
    t << lookup("DROP_FREQUENCY", {lookupKey("FREQUENCY")}, true);
    t << lookup("SPAWN_RATE", {lookupKey("SPAWN_RATE")}, true);
    t << lookup("NAV_TYPES", {lookupKey("NAV_TYPE")}, true);

    // Database settings.
    t << Table{"DB_VERSION", {whole("VERSION")}, {}};
    t << Table{"DB_OPTIONS",
               {yesNo("CUSTOM_FIELDS_ON"), caption("FIELD_01_CAPTION"), caption("FIELD_02_CAPTION"),
                caption("FIELD_03_CAPTION")},
               {}};
    return t;
}

LookupUse use(const QString& lt, const QString& lc, const QString& ut, const QString& uc,
              const QString& lp = QString(), const QString& up = QString()) {
    LookupUse u;
    u.lookupTable = lt;
    u.lookupColumn = lc;
    u.usingTable = ut;
    u.usingColumn = uc;
    u.lookupPartner = lp;
    u.usingPartner = up;
    return u;
}

QList<LookupUse> buildUses() {
    return {
        use("CLASSES", "CLASS_NAME", "EQUIPMENT_CLASS", "CLASS_NAME"),
        use("COMPONENT_TYPES", "COMPONENT_TYPE", "COMPONENTS", "TYPE"),
        use("COMPONENT_TYPES", "COMPONENT_TYPE", "COMPONENT_TYPE_SUBTYPE", "COMPONENT_TYPE"),
        use("COMPONENT_TYPE_SUBTYPE", "COMPONENT_SUBTYPE", "COMPONENTS", "SUBTYPE", "COMPONENT_TYPE", "TYPE"),
        use("DAMAGE_TYPE", "DAMAGE_TYPE", "WEAPON_STATS", "DAMAGE_TYPE"),
        use("DAMAGE_TYPE", "DAMAGE_TYPE", "AMO_STATS", "DAMAGE_TYPE"),
        use("DAMAGE_TYPE", "DAMAGE_TYPE", "MOB_ATTACK_TYPE", "ATTACK_TYPE"),
        use("DAMAGE_TYPE", "DAMAGE_TYPE", "MOB_RESISTANCE", "RESISTANCE"),
        use("DAMAGE_TYPE", "DAMAGE_TYPE", "MOB_WEAKNESS", "WEAKNESS"),
        use("LAUNCH_TYPES", "LAUNCH_TYPE", "AMO_TYPES", "LAUNCH_TYPE"),
        use("AMO_TYPES", "AMO_TYPE", "WEAPON_STATS", "AMO_TYPE"),
        use("AMO_TYPES", "AMO_TYPE", "AMO_STATS", "AMO_TYPE"),
        use("MANUFACTURER", "MANUFACTURER_NAME", "EQUIPMENTS", "MANUFACTURER"),
        use("SPECIALS", "SPECIAL", "EQUIP_SPECIALS", "SPECIAL"),
        use("MOB_TYPES", "MOB_TYPE", "MOBS", "TYPE"),
        use("FACTIONS", "FACTION", "MOBS", "FACTION"),
        use("DROP_FREQUENCY", "FREQUENCY", "MOB_EQUIP_DROP", "DROP_FREQUENCY"),
        use("DROP_FREQUENCY", "FREQUENCY", "MOB_COMP_DROP", "DROP_FREQUENCY"),
        use("DROP_FREQUENCY", "FREQUENCY", "MOB_RAW_MAT_DROP", "DROP_FREQUENCY"),
        use("DROP_FREQUENCY", "FREQUENCY", "MOB_ITEM_DROP", "DROP_FREQUENCY"),
        use("SPAWN_RATE", "SPAWN_RATE", "MOBS_LOCATION", "SPAWN_RATE"),
        use("NAV_TYPES", "NAV_TYPE", "NAV_POINTS", "NAV_TYPE"),
    };
}

} // namespace

const QList<Table>& tables() {
    static const QList<Table> t = buildTables();
    return t;
}

const QList<LookupUse>& lookupUses() {
    static const QList<LookupUse> u = buildUses();
    return u;
}

const Table* findTable(const QString& name) {
    for (const Table& t : tables())
        if (t.name.compare(name, Qt::CaseInsensitive) == 0)
            return &t;
    return nullptr;
}

QStringList tableNames() {
    QStringList names;
    for (const Table& t : tables())
        names << t.name;
    return names;
}

int textSize(const QString& declaredType) {
    static const QRegularExpression re(QStringLiteral("^VARCHAR\\((\\d+)\\)$"));
    const auto m = re.match(declaredType.trimmed().toUpper());
    return m.hasMatch() ? m.captured(1).toInt() : 0;
}

} // namespace schema
