// Equipment of every type in four marks, each mark upgraded from the one before, with statistics,
// specials, classes, buy locations and recipes from the components written earlier.
#include "data/sampledata_p.h"

namespace {

struct Model {
    const char* type; // as stored in EQUIPMENTS.TYPE (a few with two words, one in lower case)
    const char* name;
};

const Model models[] = {
    {"Beam", "Hunter's Lance"},
    {"Beam", "Ray Projector"},
    {"Light Beam", "Cutter"},
    {"Beam", "Sunspear"},
    {"Beam", "Glimmer Array"},
    {"Missile", "Seeker Rack"},
    {"Missile", "Torpedo Tube"},
    {"Missile", "Swarm Pod"},
    {"Missile", "Viper Launcher"},
    {"Projectile", "Autocannon"},
    {"Projectile", "Railgun"},
    {"Projectile", "Flak Battery"},
    {"Heavy Projectile", "Mass Driver"},
    {"Reactor", "Fusion Core"},
    {"Reactor", "Ion Reactor"},
    {"Reactor", "Breeder Pile"},
    {"Reactor", "Zero-Point Cell"},
    {"Engine", "Ion Drive"},
    {"Engine", "Warp Coil"},
    {"Engine", "Sail Engine"},
    {"engine", "Afterburner"},
    {"Shield", "Deflector"},
    {"Shield", "Aegis Field"},
    {"Heavy Shield", "Bulwark"},
    {"Shield", "Mirror Screen"},
    {"Device", "Scanner Array"},
    {"Device", "Cloak Emitter"},
    {"Device", "Tractor Beam"},
    {"Device", "Repair Drone"},
};

const char* const marks[] = {"Mk I", "Mk II", "Mk III", "Mk IV"};
const QStringList ammoPrefixes = {"Standard", "Hollow", "Incendiary", "Vanguard"};
const QStringList projectileAmmo = {"Light Slug", "Heavy Slug", "Flechette"};
const QStringList missileAmmo = {"Seeker", "Torpedo", "Swarm Rocket"};
const QStringList beamDamage = {"Thermal", "Plasma", "Ion", "Radiation"};
const QStringList damageTypes = {"Kinetic", "Thermal", "Plasma", "Ion", "Radiation", "Psionic"};
const QStringList specials = {"Overcharge",  "Shield Piercing", "Cloak Disruption", "Energy Siphon",
                              "Hull Repair", "Targeting Boost", "Warp Dampening"};
const QStringList classes = {"Warrior", "Scout", "Trader", "Engineer", "Explorer"};
const QStringList manufacturers = {"Orrin Dynamics",   "Kessle Foundry", "Tarn & Voss",
                                   "Hollowmere Works", "Quillon Arms",   "Sabel Yards"};

double fraction(SampleWorld& s, int lo, int hi) {
    return s.between(lo * 10, hi * 10) / 10.0;
}

QVariant positiveOrNot(SampleWorld& s, int lo, int hi) {
    const int r = s.below(4);
    return r == 0 ? QVariant() : (r == 1 ? QVariant(0) : QVariant(s.between(lo, hi)));
}

void addSpecial(SampleWorld& s, const QString& name, const QString& special, double amount,
                const QString& units) {
    s.w.insert("EQUIP_SPECIALS", "EQUIPMENT_NAME,SPECIAL,AMOUNT,UNITS,ENERGY_USE,RANGE,DURATION,SHUNT",
               {name, special, amount, units, s.chance(50) ? QVariant(fraction(s, 1, 30)) : QVariant(),
                positiveOrNot(s, 200, 3000), positiveOrNot(s, 2, 60), positiveOrNot(s, 1, 25)});
}

void addStats(SampleWorld& s, const QString& type, const QString& name, int mark, const QString& ammoType) {
    const int m = mark + 1;
    const QString t = type.section(QLatin1Char(' '), -1).toLower();
    if (t == QLatin1String("beam")) {
        s.w.insert("WEAPON_STATS", "EQUIPMENT_NAME,DAMAGE,DAMAGE_TYPE,DELAY,ENERGY_USE,RANGE,ROUNDS",
                   {name, s.between(10, 60) * m, s.pick(beamDamage), fraction(s, 1, 3),
                    fraction(s, 2, 12) * m, s.between(800, 3000), 1});
    } else if (t == QLatin1String("missile")) {
        s.w.insert("WEAPON_STATS", "EQUIPMENT_NAME,DAMAGE,ENERGY_USE,DELAY,ROUNDS,AMO_TYPE",
                   {name, 0, fraction(s, 1, 8) * m, fraction(s, 2, 6), s.between(1, 6), ammoType});
    } else if (t == QLatin1String("projectile")) {
        s.w.insert("WEAPON_STATS", "EQUIPMENT_NAME,DAMAGE,ENERGY_USE,DELAY,RANGE,ROUNDS,AMO_TYPE",
                   {name, 0, fraction(s, 1, 5) * m, fraction(s, 0, 2) + 0.2, s.between(600, 2500),
                    s.between(1, 8), ammoType});
    } else if (t == QLatin1String("reactor")) {
        s.w.insert("REACTOR_STATS", "EQUIPMENT_NAME,ENERGY,RECHARGE_RATE",
                   {name, s.between(100, 1200) * m, fraction(s, 5, 40) * m});
    } else if (t == QLatin1String("engine")) {
        s.w.insert(
            "ENGINE_STATS", "EQUIPMENT_NAME,WARP,DRAIN,THRUST,SIGNATURE",
            {name, s.between(1, 3) * m, fraction(s, 1, 5) * m, s.between(100, 800) * m, s.between(10, 500)});
    } else if (t == QLatin1String("shield")) {
        s.w.insert("SHIELD_STATS", "EQUIPMENT_NAME,COVERAGE,REGEN_RATE",
                   {name, s.between(100, 2000) * m, fraction(s, 2, 20) * m});
    }
}

void addRelations(SampleWorld& s, const QString& name, bool ammo) {
    for (const QString& c : s.some(classes, s.chance(15) ? 0 : 1 + s.below(3)))
        s.w.insert("EQUIPMENT_CLASS", "EQUIPMENTS_EQUIPMENT,CLASS_NAME", {name, c});
    for (const QString& st : s.some(s.stations, s.below(4)))
        s.w.insert("BUY_EQUIPMENT_LOCATION", "EQUIPMENTS_EQUIPMENT,STATIONS_STATION", {name, st});
    if (ammo && s.chance(50))
        return; // much ammunition is only ever bought
    for (const QString& c : s.some(s.components, 1 + s.below(3)))
        s.w.insert("EQUIPMENTS_COMPONENTS", "EQUIPMENTS_EQUIPMENT,COMPONENTS_COMPONENT,AMOUNT",
                   {name, c, 1 + s.below(4)});
    for (const QString& r : s.some(s.rawMaterials, s.below(3)))
        s.w.insert("EQUIPMENTS_RAW_MATERIALS", "EQUIPMENTS_EQUIPMENT,RAW_MATERIAL_NAME,AMOUNT",
                   {name, r, 1 + s.below(6)});
    if (s.chance(25))
        s.w.insert("EQUIPMENTS_ITEMS", "EQUIPMENTS_EQUIPMENT,ITEM_NAME,AMOUNT",
                   {name, s.pick(s.items), 1 + s.below(2)});
}

} // namespace

void writeEquipment(SampleWorld& s, const QString& name, const QString& type, int level) {
    const int n = int(s.equipment.size());
    const int price =
        n % 10 == 3 ? -1 : (n % 15 == 7 ? -2 : (n % 19 == 11 ? 0 : s.between(20, 5000) * (1 + level / 10)));
    const int fee = n % 7 == 2 ? -1 : (n % 23 == 5 ? -5 : (n % 29 == 13 ? 0 : s.between(10, 900)));
    const bool personal = s.chance(5);
    const QVariant custom =
        s.chance(8) ? QVariant(QStringLiteral("Seen at the %1 fair").arg(2020 + s.below(6))) : QVariant();
    s.w.insert("EQUIPMENTS",
               "EQUIPMENT_NAME,TYPE,MANUFACTURER,LVL,COMMENTS,PRICE,QUALITY,UNIQUE_FLAG,COST_TO_MANUFACTURE,"
               "LAST_UPDATED,CHECK,PERSONAL_DB,UPDATED,SUBMITTED,PIC_ID,CUSTOM_01,CUSTOM_02,CUSTOM_03",
               {name, type, s.chance(85) ? QVariant(s.pick(manufacturers)) : QVariant(), level,
                s.chance(30)
                    ? QVariant(QStringLiteral("A favourite of %1 pilots.").arg(s.pick(classes).toLower()))
                    : QVariant(),
                price, s.between(40, 100), s.chance(5), fee, s.date(), s.flag(15), personal,
                personal || s.flag(10), s.flag(5), s.below(100), custom, QVariant(),
                s.chance(5) ? QVariant(QStringLiteral("Spare")) : QVariant()});
    s.equipment << name;
}

void addEquipment(SampleWorld& s) {
    // Ammunition first: launchers name the ammunition types they fire.
    const QStringList ammoTypes = projectileAmmo + missileAmmo;
    for (const QString& at : ammoTypes) {
        const bool missile = missileAmmo.contains(at);
        for (int p = 0; p < ammoPrefixes.size(); ++p) {
            const QString name = ammoPrefixes.at(p) + QLatin1Char(' ') + at;
            writeEquipment(s, name, QStringLiteral("Ammunition"), 1 + p * 10 + s.below(6));
            s.w.insert("AMO_STATS",
                       "EQUIPMENT_NAME,DAMAGE,DAMAGE_TYPE,AMO_TYPE,STACK_SIZE,RANGE,MANEUVERABILITY",
                       {name, s.between(20, 300) * (p + 1), s.pick(damageTypes), at, s.between(1, 50) * 10,
                        missile ? QVariant(s.between(2000, 9000)) : QVariant(),
                        missile ? QVariant(fraction(s, 1, 9)) : QVariant()});
            addRelations(s, name, true);
        }
    }
    // A round given away free, so that damage per credit meets a zero price.
    s.w.exec(QStringLiteral("UPDATE EQUIPMENTS SET PRICE = 0 WHERE EQUIPMENT_NAME = 'Standard Flechette'"));

    for (const Model& model : models) {
        const QString type = QString::fromLatin1(model.type);
        const QString lastWord = type.section(QLatin1Char(' '), -1).toLower();
        const QStringList& ammoList = lastWord == QLatin1String("missile") ? missileAmmo : projectileAmmo;
        const QString ammoType = s.pick(ammoList);
        QString previous;
        for (int mark = 0; mark < 4; ++mark) {
            const QString name =
                QString::fromUtf8(model.name) + QLatin1Char(' ') + QLatin1String(marks[mark]);
            writeEquipment(s, name, type, 2 + mark * 12 + s.below(8));
            addStats(s, type, name, mark, ammoType);
            addRelations(s, name, false);
            if (!previous.isEmpty())
                s.w.insert("EQUIPMENTS_UPGRADE_FROM", "EQUIPMENT_NAME,UPGRADE_FROM,AMOUNT",
                           {name, previous, 1});
            if (lastWord != QLatin1String("missile") && lastWord != QLatin1String("projectile") &&
                !name.startsWith(QLatin1String("Hunter's")) && s.chance(35)) {
                for (const QString& sp : s.some(specials, 1 + s.below(2))) {
                    static const QStringList units = {"%", "points", "hull points", "seconds", "%"};
                    static const double amounts[] = {5, 10.5, 25, -3, 0, 7.25, 40};
                    addSpecial(s, name, sp, amounts[s.below(7)], s.pick(units));
                }
            }
            previous = name;
        }
    }
    // The cases the specials tab must show exactly.
    addSpecial(s, QStringLiteral("Hunter's Lance Mk I"), QStringLiteral("Overcharge"), 12.345,
               QStringLiteral("%"));
    addSpecial(s, QStringLiteral("Hunter's Lance Mk I"), QStringLiteral("Energy Siphon"), -3,
               QStringLiteral("points"));
    addSpecial(s, QStringLiteral("Hunter's Lance Mk II"), QStringLiteral("Targeting Boost"), 0,
               QStringLiteral("%"));
}
