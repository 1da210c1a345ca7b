#include "data/sampledata.h"

#include "data/sampledata_p.h"
#include "data/schema.h"

#include <QFileInfo>
#include <sqlite3.h>

namespace sample {
const char* const DropFrequencies[5] = {"Very Rare", "Rare", "Normal", "Frequent", "Very Frequent"};
const char* const SpawnRates[5] = {"Very Slow", "Slow", "Average", "Fast", "Very Fast"};
const char* const Temperaments[5] = {"Very Low", "Low", "Average", "High", "Very High"};
const char* const NavTypes[9] = {"Asteroid", "Gate",      "Navigation Point", "Planet", "Satellite",
                                 "Ship",     "Ship Yard", "Station",          "Weft"};
} // namespace sample

void addLookups(RowWriter& w) {
    auto fill = [&w](const char* table, const char* column, const QStringList& values) {
        for (const QString& v : values)
            w.insert(table, column, {v});
    };
    QStringList words;
    for (const char* f : sample::DropFrequencies)
        words << f;
    fill("DROP_FREQUENCY", "FREQUENCY", words);
    words.clear();
    for (const char* r : sample::SpawnRates)
        words << r;
    fill("SPAWN_RATE", "SPAWN_RATE", words);
    words.clear();
    for (const char* n : sample::NavTypes)
        words << n;
    fill("NAV_TYPES", "NAV_TYPE", words);

    fill("LAUNCH_TYPES", "LAUNCH_TYPE", {"Missile", "Projectile"});
    const QList<QPair<QString, QString>> ammo = {{"Light Slug", "Projectile"}, {"Heavy Slug", "Projectile"},
                                                 {"Flechette", "Projectile"},  {"Seeker", "Missile"},
                                                 {"Torpedo", "Missile"},       {"Swarm Rocket", "Missile"}};
    for (const auto& a : ammo)
        w.insert("AMO_TYPES", "AMO_TYPE,LAUNCH_TYPE", {a.first, a.second});
    fill("MOB_TYPES", "MOB_TYPE", {"Organic", "Mechanical", "Crystalline", "Spectral", "Hybrid"});
    fill("FACTIONS", "FACTION",
         {"Unknown", "Ashen Covenant", "Free Traders of Ilk", "Velmoran Navy", "Drift Clans",
          "The Hollow Choir"});
    fill("COMPONENT_TYPES", "COMPONENT_TYPE",
         {"Unknown", "Circuitry", "Hull Plating", "Optics", "Power Cell", "Actuator", "Casing"});
    const QList<QPair<QString, QString>> subtypes = {
        {"Circuitry", "Logic Board"},  {"Circuitry", "Relay"},      {"Optics", "Lens"},
        {"Optics", "Emitter Crystal"}, {"Power Cell", "Capacitor"}, {"Power Cell", "Fuel Cell"},
        {"Hull Plating", "Composite"}, {"Hull Plating", "Ablative"}};
    for (const auto& s : subtypes)
        w.insert("COMPONENT_TYPE_SUBTYPE", "COMPONENT_TYPE,COMPONENT_SUBTYPE", {s.first, s.second});
    fill("CLASSES", "CLASS_NAME", {"Warrior", "Scout", "Trader", "Engineer", "Explorer"});
    fill("DAMAGE_TYPE", "DAMAGE_TYPE", {"Kinetic", "Thermal", "Plasma", "Ion", "Radiation", "Psionic"});
    fill("MANUFACTURER", "MANUFACTURER_NAME",
         {"Orrin Dynamics", "Kessle Foundry", "Tarn & Voss", "Hollowmere Works", "Quillon Arms",
          "Sabel Yards"});
    fill("SPECIALS", "SPECIAL",
         {"Overcharge", "Shield Piercing", "Cloak Disruption", "Energy Siphon", "Hull Repair",
          "Targeting Boost", "Warp Dampening"});
}

QStringList SampleWorld::some(const QStringList& from, int n, int upTo) {
    const int size = upTo < 0 ? int(from.size()) : qMin(upTo, int(from.size()));
    QStringList out;
    for (int tries = 0; out.size() < n && tries < n * 4 && size > 0; ++tries) {
        const QString& v = from.at(below(size));
        if (!out.contains(v))
            out << v;
    }
    return out;
}

QString SampleWorld::date() {
    const QDateTime start(QDate(2025, 1, 1), QTime(0, 0), Qt::UTC); // the same texts in every time zone
    return start.addSecs(qint64(below(700)) * 86400 + below(86400))
        .toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
}

void addPlaces(SampleWorld& s) {
    const QStringList systems = {"Aldra", "Veyl", "Corrin Reach", "Mossgate"};
    const QStringList parts = {"Prime", "Drift", "Verge"};
    const QStringList planets = {"Tessary", "Umbrel", "Kaddo",    "Lirien", "Pell",   "Ossa",
                                 "Varro",   "Nim",    "Cassavel", "Hobb",   "Iretta", "Quor"};
    const QStringList stationNames = {"Harrow Station", "Kell's Anchorage", "Brightwater Dock",
                                      "Sable Ring",     "Outpost Nine",     "Marrow Yard",
                                      "The Lantern",    "Gullet Exchange",  "Fenwick Hold",
                                      "Corrin Spire",   "Tollbridge",       "Saint Ivo's Rest"};
    const QStringList terminals = {"Market", "Bank", "Shipyard", "Refinery", "Mission Board", "Bar"};
    for (const QString& sys : systems)
        s.w.insert("SYSTEMS", "SYSTEM_NAME", {sys});
    for (int i = 0; i < systems.size() * parts.size(); ++i) {
        const QString system = systems.at(i / parts.size());
        const QString sector = system + QLatin1Char(' ') + parts.at(i % parts.size());
        s.sectors << sector;
        s.w.insert("SECTORS", "SECTOR_NAME,SYSTEM_SYSTEM_NAME", {sector, system});
    }
    for (int i = 0; i < s.sectors.size(); ++i) {
        const QString& sector = s.sectors.at(i);
        const QString station = stationNames.at(i);
        QList<QPair<QString, QString>> points = {
            {planets.at(i), "Planet"},
            {planets.at(i) + QStringLiteral(" Minor"), "Satellite"},
            {QStringLiteral("Gate to ") + s.sectors.at((i + 1) % s.sectors.size()), "Gate"},
            {station, "Station"},
            {QStringLiteral("Nav %1").arg(QChar('A' + i)), "Navigation Point"},
            {QStringLiteral("Field %1").arg(i + 1), "Asteroid"}};
        if (i % 3 == 0)
            points << QPair<QString, QString>(sector + QStringLiteral(" Yards"), "Ship Yard");
        if (i % 4 == 1)
            points << QPair<QString, QString>(QStringLiteral("Derelict Hauler"), "Ship");
        if (i % 5 == 2)
            points << QPair<QString, QString>(QStringLiteral("Weft Crossing"), "Weft");
        for (const auto& p : points) {
            const double x = s.between(-5000, 5000) + s.below(100) / 100.0;
            const double y = s.between(-5000, 5000) + s.below(100) / 100.0;
            const QVariant comment =
                s.chance(30) ? QVariant(QStringLiteral("Charted by the survey of %1.").arg(2020 + s.below(6)))
                             : QVariant();
            s.w.insert("NAV_POINTS", "NAV_POINT_NAME,SECTOR_NAME,COMMENTS,X_POINT,Y_POINT,NAV_TYPE",
                       {p.first, sector, comment, x, y, p.second});
            s.navPoints << qMakePair(sector, p.first);
        }
        s.stations << station;
        s.w.insert("STATIONS", "STATION_NAME,SECTORS_SECTOR,COMMENTS,CHECK,PERSONAL_DB,UPDATED,LAST_UPDATED",
                   {station, sector,
                    i % 4 == 0 ? QVariant(QStringLiteral("Docking fee waived for members.")) : QVariant(),
                    s.flag(25), i == 11, i == 10, s.date()});
        for (const QString& t : s.some(terminals, 2 + s.below(3)))
            s.w.insert("STATION_TERMINALS", "STATION_NAME,TERMINAL_TYPE", {station, t});
    }
    s.w.insert("CHARACTERS", "CHARACTER_NAME", {QStringLiteral("Orla Venn")});
    s.w.insert("CHARACTERS", "CHARACTER_NAME", {QStringLiteral("Tamsin O'Dell")});
}

bool FillSampleData(sqlite3* db, QString* error) {
    RowWriter w(db);
    w.begin();
    addLookups(w);
    SampleWorld s(w);
    addPlaces(s);
    addMaterials(s);
    addComponents(s);
    addEquipment(s);
    addMobs(s);
    chartPlaces(s);
    return w.finish(error);
}

bool FillSampleData(const QString& path, QString* error) {
    return withDatabase(path, false, error, [&](sqlite3* db) { return FillSampleData(db, error); });
}
