#include "data/synthetic.h"

#include "data/sampledata.h"
#include "data/sampledata_p.h"
#include "data/schema.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <sqlite3.h>

namespace {

const char* const typeWords[8] = {"Beam",   "Missile", "Projectile", "Reactor",
                                  "Engine", "Shield",  "Device",     "Ammunition"};
const char* const damageTypes[6] = {"Kinetic", "Thermal", "Plasma", "Ion", "Radiation", "Psionic"};
const char* const projectileAmmo[3] = {"Light Slug", "Heavy Slug", "Flechette"};
const char* const missileAmmo[3] = {"Seeker", "Torpedo", "Swarm Rocket"};
const char* const classes[5] = {"Warrior", "Scout", "Trader", "Engineer", "Explorer"};
const char* const manufacturers[6] = {"Orrin Dynamics",   "Kessle Foundry", "Tarn & Voss",
                                      "Hollowmere Works", "Quillon Arms",   "Sabel Yards"};

// Equipment names start with one of these words, half of them beyond ASCII, so that the list's
// sorting and searching meet accented and non-Latin letters as a real world's names would bring.
const char* const nameWords[12] = {"Synthetic", "Élan",   "Nova",   "Øresund", "Vanguard", "Ζέφυρος",
                                   "Kestrel",   "Звезда", "Helios", "Šárka",   "Corsair",  "星舰"};

QString equipmentName(int type, qint64 n) {
    return QStringLiteral("%1 %2 %3")
        .arg(QString::fromUtf8(nameWords[n % 12]), QLatin1String(typeWords[type]))
        .arg(n, 7, 10, QLatin1Char('0'));
}

QString numbered(const char* kind, qint64 n, int width = 7) {
    return QStringLiteral("Synthetic %1 %2").arg(QLatin1String(kind)).arg(n, width, 10, QLatin1Char('0'));
}

struct Gen {
    explicit Gen(RowWriter& writer) : w(writer), rng(1000003) {}
    RowWriter& w;
    QRandomGenerator rng;
    int below(int n) { return int(rng.bounded(n)); }
    int between(int lo, int hi) { return lo + below(hi - lo + 1); }
    double fraction(int lo, int hi) { return between(lo * 10, hi * 10) / 10.0; }
    QString date() {
        static const QDateTime start(QDate(2024, 1, 1), QTime(0, 0), Qt::UTC);
        return start.addSecs(qint64(below(1000)) * 86400 + below(86400))
            .toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    }
};

void addStats(Gen& g, int type, const QString& name, qint64 i) {
    const char* ammo = type == 1 ? missileAmmo[i % 3] : projectileAmmo[i % 3];
    switch (type) {
    case 0:
        g.w.insert("WEAPON_STATS", "EQUIPMENT_NAME,DAMAGE,DAMAGE_TYPE,DELAY,ENERGY_USE,RANGE,ROUNDS",
                   {name, g.between(10, 400), damageTypes[i % 6], g.fraction(1, 4), g.fraction(1, 50),
                    g.between(500, 4000), 1});
        break;
    case 1:
    case 2:
        g.w.insert("WEAPON_STATS", "EQUIPMENT_NAME,DAMAGE,DAMAGE_TYPE,DELAY,ENERGY_USE,RANGE,ROUNDS,AMO_TYPE",
                   {name, 0, QVariant(), g.fraction(1, 6), g.fraction(1, 30), g.between(500, 4000),
                    g.between(1, 8), ammo});
        break;
    case 3:
        g.w.insert("REACTOR_STATS", "EQUIPMENT_NAME,ENERGY,RECHARGE_RATE",
                   {name, g.between(100, 9000), g.fraction(1, 200)});
        break;
    case 4:
        g.w.insert("ENGINE_STATS", "EQUIPMENT_NAME,WARP,DRAIN,THRUST,SIGNATURE",
                   {name, g.between(1, 15), g.fraction(1, 40), g.between(100, 5000), g.between(10, 900)});
        break;
    case 5:
        g.w.insert("SHIELD_STATS", "EQUIPMENT_NAME,COVERAGE,REGEN_RATE",
                   {name, g.between(100, 9000), g.fraction(1, 120)});
        break;
    case 7: {
        const bool missile = i % 2;
        g.w.insert("AMO_STATS", "EQUIPMENT_NAME,DAMAGE,DAMAGE_TYPE,AMO_TYPE,STACK_SIZE,RANGE,MANEUVERABILITY",
                   {name, g.between(10, 900), damageTypes[i % 6],
                    missile ? missileAmmo[i % 3] : projectileAmmo[i % 3], g.between(1, 50) * 10,
                    missile ? QVariant(g.between(1000, 9000)) : QVariant(),
                    missile ? QVariant(g.fraction(1, 9)) : QVariant()});
        break;
    }
    default:
        break; // devices have no statistics
    }
}

bool generate(sqlite3* db, qint64 n, QString* error, SyntheticCounts* counts) {
    // A new file written in one go: nothing to protect until it is complete.
    sqlite3_exec(db, "PRAGMA synchronous=OFF", nullptr, nullptr, nullptr);
    RowWriter w(db);
    w.begin();
    addLookups(w);
    Gen g(w);
    SyntheticCounts c;
    c.stations = std::clamp<qint64>(n / 1000, 10, 500);
    c.rawMaterials = std::clamp<qint64>(n / 50, 40, 50000);
    c.items = std::clamp<qint64>(n / 100, 30, 20000);
    c.components = std::clamp<qint64>(n / 20, 50, 100000);
    c.mobs = std::clamp<qint64>(n / 100, 30, 20000);
    const qint64 sectors = std::clamp<qint64>(c.stations, 5, 200);

    for (int s = 0; s < 5; ++s)
        w.insert("SYSTEMS", "SYSTEM_NAME", {numbered("System", s, 2)});
    for (qint64 s = 0; s < sectors; ++s) {
        const QString sector = numbered("Sector", s, 4);
        w.insert("SECTORS", "SECTOR_NAME,SYSTEM_SYSTEM_NAME", {sector, numbered("System", s % 5, 2)});
        for (int p = 0; p < 4; ++p)
            w.insert("NAV_POINTS", "NAV_POINT_NAME,SECTOR_NAME,X_POINT,Y_POINT,NAV_TYPE",
                     {QStringLiteral("Point %1").arg(p), sector, g.fraction(-5000, 5000),
                      g.fraction(-5000, 5000), QString::fromLatin1(sample::NavTypes[(s + p) % 9])});
    }
    for (qint64 s = 0; s < c.stations; ++s)
        w.insert("STATIONS", "STATION_NAME,SECTORS_SECTOR,CHECK,LAST_UPDATED",
                 {numbered("Station", s, 4), numbered("Sector", s % sectors, 4), s % 7 == 0, g.date()});
    for (qint64 r = 0; r < c.rawMaterials; ++r) {
        const QString name = numbered("Ore", r);
        w.insert("RAW_MATERIALS", "RAW_MATERIAL_NAME,LVL,PRICE,CHECK,LAST_UPDATED,PIC_ID",
                 {name, g.between(1, 60), g.between(-2, 900), r % 9 == 0, g.date(), g.below(100)});
        if (r >= 10)
            w.insert("RAW_MATERIALS_REFINES_FROM", "RAW_MATERIAL_NAME,REFINES_FROM,AMOUNT",
                     {name, numbered("Ore", g.below(int(qMin<qint64>(r, 1 << 30)))), 1 + g.below(3)});
        if (r < 10)
            w.insert("MINE_LOCATIONS", "RAW_MATERIAL,SECTORS_SECTOR",
                     {name, numbered("Sector", r % sectors, 4)});
        if (r % 10 == 5)
            w.insert("RAW_MATERIALS_ITEMS", "RAW_MATERIAL_NAME,ITEM_NAME,AMOUNT",
                     {name, numbered("Item", r % c.items), 1});
        if (r % 10 == 7)
            w.insert("BUY_RAW_MATERIAL_LOCATIONS", "RAW_MATERIAL,STATIONS_STATION",
                     {name, numbered("Station", r % c.stations, 4)});
    }
    for (qint64 s = 0; s < c.stations; ++s)
        w.insert("STATION_TERMINALS", "STATION_NAME,TERMINAL_TYPE",
                 {numbered("Station", s, 4), s % 2 ? "Market" : "Bank"});
    for (qint64 i = 0; i < c.items; ++i) {
        w.insert(
            "ITEMS", "ITEM_NAME,LVL,PRICE,CHECK,LAST_UPDATED,PIC_ID",
            {numbered("Item", i), g.between(1, 60), g.between(-2, 900), i % 9 == 0, g.date(), g.below(100)});
        if (i % 4 == 0)
            w.insert("BUY_ITEM_LOCATIONS", "ITEM_NAME,STATIONS_STATION",
                     {numbered("Item", i), numbered("Station", i % c.stations, 4)});
    }
    for (qint64 k = 0; k < c.components; ++k) {
        const QString name = numbered("Part", k);
        w.insert("COMPONENTS", "COMPONENT_NAME,LVL,PRICE,TYPE,PIC_ID,LAST_UPDATED,CHECK",
                 {name, g.between(1, 60), g.between(-2, 2000),
                  k % 10 == 0 ? QVariant() : QVariant(QStringLiteral("Circuitry")), g.below(100), g.date(),
                  k % 9 == 0});
        w.insert("COMPONENTS_RAW_MATERIALS", "COMPONENTS_COMPONENT,RAW_MATERIAL,AMOUNT",
                 {name, numbered("Ore", g.below(int(c.rawMaterials))), 1 + g.below(4)});
        if (k % 5 == 0)
            w.insert("COMPONENTS_ITEMS", "COMPONENT_NAME,ITEM_NAME,AMOUNT",
                     {name, numbered("Item", k % c.items), 1});
        if (k % 7 == 1)
            w.insert("COMPONENTS_UPGRADE_FROM", "COMPONENT_NAME,UPGRADE_FROM,AMOUNT",
                     {name, numbered("Part", k - 1), 1});
        if (k % 9 == 2)
            w.insert("BUY_COMPONENT_LOCATIONS", "COMPONENTS_COMPONENT,STATIONS_STATION",
                     {name, numbered("Station", k % c.stations, 4)});
        // Device 6 is built from nothing, so a component may need it without a loop.
        if (k % 50 == 0 && n > 6)
            w.insert("COMPONENTS_EQUIPMENTS", "COMPONENT_NAME,EQUIPMENT_NAME,AMOUNT",
                     {name, equipmentName(6, 6), 1});
    }

    for (qint64 i = 0; i < n && w.ok(); ++i) {
        const int type = int(i % 8);
        const QString name = equipmentName(type, i);
        w.insert("EQUIPMENTS",
                 "EQUIPMENT_NAME,TYPE,MANUFACTURER,LVL,PRICE,QUALITY,UNIQUE_FLAG,COST_TO_MANUFACTURE,"
                 "LAST_UPDATED,CHECK,PERSONAL_DB,UPDATED,SUBMITTED,PIC_ID",
                 {name, typeWords[type], manufacturers[i % 6], g.between(1, 60), g.between(-2, 50000),
                  g.between(40, 100), i % 50 == 0, g.between(-5, 9000), g.date(), i % 10 == 0, i % 40 == 0,
                  i % 20 == 0, i % 60 == 0, g.below(100)});
        addStats(g, type, name, i);
        w.insert("EQUIPMENT_CLASS", "EQUIPMENTS_EQUIPMENT,CLASS_NAME", {name, classes[i % 5]});
        if (i % 10 == 0) {
            w.insert("BUY_EQUIPMENT_LOCATION", "EQUIPMENTS_EQUIPMENT,STATIONS_STATION",
                     {name, numbered("Station", g.below(int(c.stations)), 4)});
            w.insert("EQUIPMENTS_COMPONENTS", "EQUIPMENTS_EQUIPMENT,COMPONENTS_COMPONENT,AMOUNT",
                     {name, numbered("Part", g.below(int(c.components))), 1 + g.below(3)});
            w.insert("EQUIPMENTS_RAW_MATERIALS", "EQUIPMENTS_EQUIPMENT,RAW_MATERIAL_NAME,AMOUNT",
                     {name, numbered("Ore", g.below(int(c.rawMaterials))), 1 + g.below(3)});
        }
        if (i % 30 == 0)
            w.insert("EQUIPMENTS_ITEMS", "EQUIPMENTS_EQUIPMENT,ITEM_NAME,AMOUNT",
                     {name, numbered("Item", i % c.items), 1});
        if (i % 20 == 8)
            w.insert("EQUIPMENTS_UPGRADE_FROM", "EQUIPMENT_NAME,UPGRADE_FROM,AMOUNT",
                     {name, equipmentName(type, i - 8), 1});
        if (i % 12 == 0 && type != 7)
            w.insert("EQUIP_SPECIALS", "EQUIPMENT_NAME,SPECIAL,AMOUNT,UNITS,DURATION",
                     {name, "Overcharge", g.fraction(-5, 40), i % 24 ? "%" : "points", g.between(0, 30)});
    }
    c.equipment = n;

    for (qint64 m = 0; m < c.mobs; ++m) {
        const QString name = numbered("Raider", m);
        w.insert("MOBS", "MOB_NAME,TYPE,FACTION,LAST_UPDATED", {name, "Mechanical", "Unknown", g.date()});
        w.insert("MOB_STATS", "MOB_NAME,COMBAT_LEVEL,SHIELD,HULL,MASS,SIGNATURE,SCAN_RANGE,AGGRO_RANGE,BOSS",
                 {name, g.between(1, 70), g.between(100, 20000), g.between(100, 30000), g.between(10, 9000),
                  g.between(10, 500), g.between(500, 9000), g.between(200, 5000), m % 25 == 0});
        w.insert("MOB_ATTACK_TYPE", "MOB_NAME,ATTACK_TYPE,AMOUNT",
                 {name, damageTypes[m % 6], g.between(5, 500)});
        if (m % 3 == 0)
            w.insert("MOB_RESISTANCE", "MOB_NAME,RESISTANCE,AMOUNT",
                     {name, damageTypes[(m + 1) % 6], g.between(5, 80)});
        if (m % 3 == 1)
            w.insert("MOB_WEAKNESS", "MOB_NAME,WEAKNESS,AMOUNT",
                     {name, damageTypes[(m + 2) % 6], g.between(5, 80)});
        w.insert("MOBS_LOCATION", "MOB_NAME,SECTOR_NAME,NAV_POINT,SPAWN_RATE",
                 {name, numbered("Sector", m % sectors, 4), QStringLiteral("Point %1").arg(m % 4),
                  sample::SpawnRates[m % 5]});
        if (n > 0) {
            const qint64 e = (m * 7) % n;
            w.insert("MOB_EQUIP_DROP", "MOB_NAME,EQUIPMENT_NAME,DROP_FREQUENCY",
                     {name, equipmentName(int(e % 8), e), sample::DropFrequencies[m % 5]});
        }
        w.insert("MOB_COMP_DROP", "MOB_NAME,COMPONENT_NAME,DROP_FREQUENCY",
                 {name, numbered("Part", m % c.components), sample::DropFrequencies[(m + 1) % 5]});
        w.insert("MOB_RAW_MAT_DROP", "MOB_NAME,RAW_MATERIAL_NAME,DROP_FREQUENCY",
                 {name, numbered("Ore", m % c.rawMaterials), sample::DropFrequencies[(m + 2) % 5]});
        w.insert("MOB_ITEM_DROP", "MOB_NAME,ITEM_NAME,DROP_FREQUENCY",
                 {name, numbered("Item", m % c.items), sample::DropFrequencies[(m + 3) % 5]});
    }
    if (!w.finish(error))
        return false;
    if (counts)
        *counts = c;
    return true;
}

bool buildTree(sqlite3* db, const QString& root, int nodeCount, int fanOut, QString* error) {
    auto fail = [error](const QString& why) {
        if (error)
            *error = why;
        return false;
    };
    if (nodeCount < 1)
        return fail(QStringLiteral("A build tree needs at least its root node."));
    if (fanOut < 1)
        return fail(QStringLiteral("Each node needs room for at least one child."));
    if (root.trimmed().isEmpty())
        return fail(QStringLiteral("The root name must not be empty."));
    if (root.size() + 12 > schema::NameSize)
        return fail(QStringLiteral("The root name \"%1\" is too long.").arg(root));

    // Nodes are numbered breadth first: node i's parent is (i - 1) / fanOut.
    QList<int> depth(nodeCount, 0);
    for (int i = 1; i < nodeCount; ++i)
        depth[i] = depth[(i - 1) / fanOut] + 1;
    const int componentDepth = qMax(1, (depth.last() + 1) / 2);
    auto name = [&root](int i) {
        return i == 0 ? root : QStringLiteral("%1 Part %2").arg(root).arg(i, 6, 10, QLatin1Char('0'));
    };

    RowWriter w(db);
    w.begin();
    w.insert("EQUIPMENTS", "EQUIPMENT_NAME,TYPE,LVL,PRICE,LAST_UPDATED",
             {root, "Engine", 50, 100000, "2026-01-01 00:00:00"});
    w.insert("ENGINE_STATS", "EQUIPMENT_NAME,WARP,DRAIN,THRUST,SIGNATURE", {root, 9, 4.5, 3000, 120});
    for (int i = 1; i < nodeCount && w.ok(); ++i) {
        const int parent = (i - 1) / fanOut;
        const bool component = depth[i] <= componentDepth;
        const int level = qMax(1, 60 - depth[i] * 5);
        const int amount = 1 + i % 2;
        if (component)
            w.insert("COMPONENTS", "COMPONENT_NAME,LVL,PRICE,TYPE,LAST_UPDATED",
                     {name(i), level, 100, "Circuitry", "2026-01-01 00:00:00"});
        else
            w.insert("RAW_MATERIALS", "RAW_MATERIAL_NAME,LVL,PRICE,LAST_UPDATED",
                     {name(i), level, 10, "2026-01-01 00:00:00"});
        if (parent == 0)
            w.insert("EQUIPMENTS_COMPONENTS", "EQUIPMENTS_EQUIPMENT,COMPONENTS_COMPONENT,AMOUNT",
                     {root, name(i), amount});
        else if (component)
            w.insert("COMPONENTS_UPGRADE_FROM", "COMPONENT_NAME,UPGRADE_FROM,AMOUNT",
                     {name(parent), name(i), amount});
        else if (depth[parent] <= componentDepth)
            w.insert("COMPONENTS_RAW_MATERIALS", "COMPONENTS_COMPONENT,RAW_MATERIAL,AMOUNT",
                     {name(parent), name(i), amount});
        else
            w.insert("RAW_MATERIALS_REFINES_FROM", "RAW_MATERIAL_NAME,REFINES_FROM,AMOUNT",
                     {name(parent), name(i), amount});
    }
    return w.finish(error);
}

bool addCycle(sqlite3* db, const RecipeCycle& n, QString* error) {
    RowWriter w(db);
    w.begin();
    w.insert("EQUIPMENTS", "EQUIPMENT_NAME,TYPE,LVL,PRICE", {n.equipment, "Engine", 10, 500});
    w.insert("ENGINE_STATS", "EQUIPMENT_NAME,WARP,DRAIN,THRUST,SIGNATURE", {n.equipment, 2, 1.5, 300, 40});
    w.insert("COMPONENTS", "COMPONENT_NAME,LVL,PRICE", {n.componentA, 8, 50});
    w.insert("COMPONENTS", "COMPONENT_NAME,LVL,PRICE", {n.componentB, 9, 60});
    w.insert("EQUIPMENTS_COMPONENTS", "EQUIPMENTS_EQUIPMENT,COMPONENTS_COMPONENT,AMOUNT",
             {n.equipment, n.componentA, 1});
    w.insert("COMPONENTS_UPGRADE_FROM", "COMPONENT_NAME,UPGRADE_FROM,AMOUNT",
             {n.componentA, n.componentB, 1});
    w.insert("COMPONENTS_UPGRADE_FROM", "COMPONENT_NAME,UPGRADE_FROM,AMOUNT",
             {n.componentB, n.componentA, 1});
    w.insert("RAW_MATERIALS", "RAW_MATERIAL_NAME,LVL,PRICE", {n.rawA, 3, 5});
    w.insert("RAW_MATERIALS", "RAW_MATERIAL_NAME,LVL,PRICE", {n.rawB, 4, 6});
    w.insert("RAW_MATERIALS_REFINES_FROM", "RAW_MATERIAL_NAME,REFINES_FROM,AMOUNT", {n.rawA, n.rawB, 2});
    w.insert("RAW_MATERIALS_REFINES_FROM", "RAW_MATERIAL_NAME,REFINES_FROM,AMOUNT", {n.rawB, n.rawA, 2});
    return w.finish(error);
}

} // namespace

bool GenerateSynthetic(sqlite3* db, qint64 equipmentCount, QString* error, SyntheticCounts* counts) {
    if (equipmentCount < 0) {
        if (error)
            *error = QStringLiteral("The equipment count must not be negative.");
        return false;
    }
    return generate(db, equipmentCount, error, counts);
}

bool GenerateSynthetic(const QString& path, qint64 equipmentCount, QString* error, SyntheticCounts* counts) {
    if (equipmentCount < 0)
        return GenerateSynthetic(static_cast<sqlite3*>(nullptr), equipmentCount, error, counts);
    return withDatabase(path, true, error,
                        [&](sqlite3* db) { return generate(db, equipmentCount, error, counts); });
}

bool GenerateBuildTree(sqlite3* db, const QString& rootName, int nodeCount, int fanOut, QString* error) {
    return buildTree(db, rootName, nodeCount, fanOut, error);
}

bool GenerateBuildTree(const QString& path, const QString& rootName, int nodeCount, int fanOut,
                       QString* error) {
    return withDatabase(path, false, error,
                        [&](sqlite3* db) { return buildTree(db, rootName, nodeCount, fanOut, error); });
}

bool AddRecipeCycle(sqlite3* db, const RecipeCycle& names, QString* error) {
    return addCycle(db, names, error);
}

bool AddRecipeCycle(const QString& path, const RecipeCycle& names, QString* error) {
    return withDatabase(path, false, error, [&](sqlite3* db) { return addCycle(db, names, error); });
}
