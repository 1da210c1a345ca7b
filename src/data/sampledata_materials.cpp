// Raw materials (mined ores refined in up to three further steps) and items.
#include "data/sampledata_p.h"

namespace {

const QStringList& baseOres() {
    static const QStringList b = {"Ferrite", "Calcine", "Veyl Crystal", "Thorium",  "Rime",   "Carbon",
                                  "Sulphur", "Nickel",  "Helion",       "Silicate", "Cobalt", "Quillite"};
    return b;
}

void addRaw(SampleWorld& s, const QString& name, int level, int price) {
    const bool personal = s.chance(6);
    s.w.insert(
        "RAW_MATERIALS",
        "RAW_MATERIAL_NAME,LVL,PRICE,COMMENTS,CHECK,PERSONAL_DB,UPDATED,SUBMITTED,LAST_UPDATED,PIC_ID",
        {name, level, price,
         s.chance(25)
             ? QVariant(QStringLiteral("Found in %1 fields.").arg(s.chance(50) ? "dense" : "scattered"))
             : QVariant(),
         s.flag(15), personal, personal || s.flag(8), s.rawMaterials.size() % 7 == 3, s.date(),
         s.below(100)});
    s.rawMaterials << name;
}

void refine(SampleWorld& s, const QString& product, const QString& source, int amount) {
    s.w.insert("RAW_MATERIALS_REFINES_FROM", "RAW_MATERIAL_NAME,REFINES_FROM,AMOUNT",
               {product, source, amount});
}

} // namespace

void addMaterials(SampleWorld& s) {
    // Items first: some raw materials are recovered from them.
    const QStringList itemWords = {"Datacore", "Insignia",      "Relic Shard",   "Star Chart", "Ration Crate",
                                   "Med Kit",  "Signal Beacon", "Fuel Canister", "Cipher Key", "Drone Husk",
                                   "Idol",     "Bone Lattice",  "Spore Sac",     "Tooth",      "Hide"};
    const QStringList itemAdjectives = {"Salvaged", "Pirate", "Ancient", "Cracked", "Navy", "Glowing"};
    for (int i = 0; i < 36; ++i) {
        QString name = itemAdjectives.at(i % itemAdjectives.size()) + QLatin1Char(' ') +
                       itemWords.at((i * 7) % itemWords.size());
        if (s.items.contains(name))
            name += QStringLiteral(" Fragment");
        if (i == 5)
            name = QStringLiteral("Smuggler's Ledger");
        if (s.items.contains(name))
            continue;
        const int price = i % 11 == 3 ? -1 : (i % 13 == 4 ? -2 : (i % 17 == 6 ? 0 : s.between(5, 900)));
        const bool personal = s.chance(5);
        s.w.insert("ITEMS",
                   "ITEM_NAME,LVL,PRICE,COMMENTS,CHECK,PERSONAL_DB,UPDATED,SUBMITTED,LAST_UPDATED,PIC_ID",
                   {name, s.between(1, 40), price,
                    s.chance(30) ? QVariant(QStringLiteral("Trade goods.")) : QVariant(), s.flag(15),
                    personal, personal || s.flag(10), s.flag(5), s.date(), s.below(100)});
        s.items << name;
        for (const QString& st : s.some(s.stations, s.below(3)))
            s.w.insert("BUY_ITEM_LOCATIONS", "ITEM_NAME,STATIONS_STATION", {name, st});
    }

    // Ores are mined; each step of refining needs several of the step below, and the later steps
    // mix in a second material.
    const QStringList& ores = baseOres();
    for (int i = 0; i < ores.size(); ++i) {
        const QString ore = ores.at(i) + QStringLiteral(" Ore");
        addRaw(s, ore, 1 + i % 3, i == 4 ? 0 : s.between(2, 30));
        for (const QString& sector : s.some(s.sectors, 1 + s.below(3)))
            s.w.insert("MINE_LOCATIONS", "RAW_MATERIAL,SECTORS_SECTOR", {ore, sector});
        if (s.chance(40))
            s.w.insert("BUY_RAW_MATERIAL_LOCATIONS", "RAW_MATERIAL,STATIONS_STATION",
                       {ore, s.pick(s.stations)});
    }
    const QStringList steps = {"Refined %1", "Pure %1", "%1 Alloy"};
    for (int step = 0; step < steps.size(); ++step) {
        for (int i = 0; i < ores.size(); ++i) {
            if (step == 2 && i % 2)
                continue;
            const QString name = steps.at(step).arg(ores.at(i));
            const QString from =
                step == 0 ? ores.at(i) + QStringLiteral(" Ore") : steps.at(step - 1).arg(ores.at(i));
            addRaw(s, name, 4 + step * 5 + i % 4, s.chance(8) ? -1 : s.between(40, 400) * (step + 1));
            refine(s, name, from, 2 + s.below(3));
            if (step > 0) {
                const QString other = s.rawMaterials.at(s.below(int(s.rawMaterials.size()) - 1));
                if (other != from && other != name)
                    refine(s, name, other, 1);
            }
            if (step == 1 && i % 3 == 0)
                s.w.insert("RAW_MATERIALS_ITEMS", "RAW_MATERIAL_NAME,ITEM_NAME,AMOUNT",
                           {name, s.pick(s.items), 1 + s.below(2)});
            if (s.chance(25))
                s.w.insert("BUY_RAW_MATERIAL_LOCATIONS", "RAW_MATERIAL,STATIONS_STATION",
                           {name, s.pick(s.stations)});
        }
    }
    addRaw(s, QStringLiteral("Miner's Gold"), 12, 750);
    refine(s, QStringLiteral("Miner's Gold"), QStringLiteral("Pure Nickel"), 3);
}
