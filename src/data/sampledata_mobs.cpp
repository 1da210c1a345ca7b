// MOBs with statistics, temperaments, tactics, spawn locations and drops of every kind.
#include "data/sampledata.h"
#include "data/sampledata_p.h"

namespace {

const QStringList damageTypes = {"Kinetic", "Thermal", "Plasma", "Ion", "Radiation", "Psionic"};

QVariant temperament(SampleWorld& s) {
    return s.chance(15) ? QVariant() : QVariant(QString::fromLatin1(sample::Temperaments[s.below(5)]));
}

QString frequency(SampleWorld& s, int index) {
    // A few words in lower case, which the loot tree leaves out.
    if (index % 17 == 5)
        return QStringLiteral("rare");
    if (index % 23 == 9)
        return QStringLiteral("very frequent");
    return QString::fromLatin1(sample::DropFrequencies[s.below(5)]);
}

} // namespace

void addMobs(SampleWorld& s) {
    const QStringList first = {"Ashen", "Void",    "Grey",  "Hollow", "Rust",
                               "Pale",  "Crimson", "Drift", "Silent", "Storm"};
    const QStringList second = {"Stalker", "Leech",  "Warden",  "Drone",
                                "Maw",     "Wraith", "Harrier", "Sentinel"};
    const QStringList types = {"Organic", "Mechanical", "Crystalline", "Spectral", "Hybrid"};
    const QStringList factions = {"Unknown",       "Ashen Covenant", "Free Traders of Ilk",
                                  "Velmoran Navy", "Drift Clans",    "The Hollow Choir"};
    int drop = 0;
    for (int i = 0; i < 42; ++i) {
        QString name = first.at(i % first.size()) + QLatin1Char(' ') +
                       second.at((i * 3 + i / first.size()) % second.size());
        if (i == 7)
            name = QStringLiteral("Brother Kell's Wraith");
        if (i == 20)
            name = QStringLiteral("The Tyrant of Mossgate");
        if (s.mobs.contains(name))
            continue;
        const bool boss = i == 7 || i == 20 || i % 13 == 12;
        // The combat-level bands' edges: 5 is in "0-5", 60 in "51+".
        const int level = i == 0 ? 5 : (i == 20 ? 60 : (boss ? s.between(40, 70) : s.between(1, 55)));
        const bool personal = s.chance(6);
        s.w.insert("MOBS", "MOB_NAME,TYPE,FACTION,COMMENTS,CHECK,PERSONAL_DB,UPDATED,SUBMITTED,LAST_UPDATED",
                   {name, s.pick(types), s.chance(10) ? QVariant() : QVariant(s.pick(factions)),
                    s.chance(30) ? QVariant(QStringLiteral("Travels in packs of %1.").arg(2 + s.below(5)))
                                 : QVariant(),
                    s.flag(15), personal, personal || s.flag(10), s.flag(5), s.date()});
        s.w.insert("MOB_STATS",
                   "MOB_NAME,COMBAT_LEVEL,SHIELD,HULL,MASS,SIGNATURE,SCAN_RANGE,AGGRO_RANGE,"
                   "BRAVERY,AGGRESSIVENESS,ALTRUISM,INTELIGENCE,BOSS",
                   {name, level, s.between(50, 400) * level, s.between(80, 600) * level, s.between(50, 5000),
                    s.between(10, 400), s.between(1000, 8000), s.between(500, 4000), temperament(s),
                    temperament(s), temperament(s), temperament(s), boss});
        s.mobs << name;

        for (const QString& d : s.some(damageTypes, i % 11 == 4 ? 0 : 1 + s.below(2)))
            s.w.insert("MOB_ATTACK_TYPE", "MOB_NAME,ATTACK_TYPE,AMOUNT",
                       {name, d, s.between(5, 120) * (1 + level / 10)});
        for (const QString& d : s.some(damageTypes, s.below(3)))
            s.w.insert("MOB_RESISTANCE", "MOB_NAME,RESISTANCE,AMOUNT", {name, d, s.between(5, 75)});
        for (const QString& d : s.some(damageTypes, s.below(3)))
            s.w.insert("MOB_WEAKNESS", "MOB_NAME,WEAKNESS,AMOUNT", {name, d, s.between(5, 60)});

        // Two nav points of one sector now and then, and a spawn rate word nobody put in the list.
        QList<QPair<QString, QString>> places;
        const int count = i % 9 == 8 ? 0 : 1 + s.below(3);
        for (int k = 0; k < count; ++k) {
            const auto& p = s.navPoints.at(s.below(int(s.navPoints.size())));
            if (!places.contains(p))
                places << p;
        }
        if (i % 6 == 1) {
            const QString sector = places.isEmpty() ? s.sectors.first() : places.first().first;
            for (const auto& p : s.navPoints)
                if (p.first == sector && !places.contains(p)) {
                    places << p;
                    break;
                }
        }
        for (int k = 0; k < places.size(); ++k) {
            const QString rate = i % 10 == 3 && k == 0 ? QStringLiteral("Sporadic")
                                                       : QString::fromLatin1(sample::SpawnRates[s.below(5)]);
            s.w.insert("MOBS_LOCATION", "MOB_NAME,SECTOR_NAME,NAV_POINT,SPAWN_RATE",
                       {name, places.at(k).first, places.at(k).second, rate});
        }

        for (const QString& e : s.some(s.equipment, s.below(3)))
            s.w.insert("MOB_EQUIP_DROP", "MOB_NAME,EQUIPMENT_NAME,DROP_FREQUENCY",
                       {name, e, frequency(s, drop++)});
        for (const QString& c : s.some(s.components, s.below(3)))
            s.w.insert("MOB_COMP_DROP", "MOB_NAME,COMPONENT_NAME,DROP_FREQUENCY",
                       {name, c, frequency(s, drop++)});
        for (const QString& r : s.some(s.rawMaterials, s.below(3)))
            s.w.insert("MOB_RAW_MAT_DROP", "MOB_NAME,RAW_MATERIAL_NAME,DROP_FREQUENCY",
                       {name, r, frequency(s, drop++)});
        for (const QString& it : s.some(s.items, s.below(3)))
            s.w.insert("MOB_ITEM_DROP", "MOB_NAME,ITEM_NAME,DROP_FREQUENCY",
                       {name, it, frequency(s, drop++)});
    }
}
