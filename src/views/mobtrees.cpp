#include "views/mobtrees.h"

#include "data/quotes.h"
#include "data/recordset.h"
#include "views/modmain.h"

#include <QStringList>

int DropFrequencyImage(const QString& frequency) {
    static const QStringList words{"Very Rare", "Rare", "Normal", "Frequent", "Very Frequent"};
    const int i = int(words.indexOf(frequency));
    return i < 0 ? mobimg::None : mobimg::VeryRare + i;
}

int SpawnRateImage(const QString& rate) {
    static const QStringList words{"Very Slow", "Slow", "Average", "Fast", "Very Fast"};
    const int i = int(words.indexOf(rate));
    return i < 0 ? mobimg::None : mobimg::VeryRare + i;
}

namespace {
struct TacticalGroup {
    const char* title;
    const char* marker;
    const char* sql;   // up to the quoted name
    const char* order; // after it
    const char* unit;
};

void tacticalGroup(const TacticalGroup& g, const QString& quotedName, TreeNodeSink& nodes) {
    const QString group = QString::fromLatin1(g.title);
    const QString prefix = group + QLatin1String(g.marker);
    nodes.addNode(QString(), group, group, mobimg::Group);
    Recordset rs;
    rs.open(QLatin1String(g.sql) + quotedName + QLatin1String(g.order));
    bool any = false;
    for (; !rs.eof(); rs.moveNext()) {
        any = true;
        const QString what = NzString(rs.value(0));
        nodes.addNode(group, prefix + what, what + " " + NzString(rs.value(1)) + QLatin1String(g.unit),
                      mobimg::None);
    }
    rs.close();
    if (!any)
        nodes.addNode(group, prefix + NoRecordsFound, NoRecordsFound, mobimg::None);
}
} // namespace

void PopulateTacticalTree(const QString& mobName, TreeNodeSink& nodes) {
    const QString name = FixQuotes(mobName);
    tacticalGroup({"Attack Types",
                   "|Attack:", "SELECT ATTACK_TYPE, AMOUNT FROM MOB_ATTACK_TYPE WHERE MOB_NAME = '",
                   "' ORDER BY ATTACK_TYPE", " Units"},
                  name, nodes);
    tacticalGroup({"Resistances",
                   "|Resist:", "SELECT RESISTANCE, AMOUNT FROM MOB_RESISTANCE WHERE MOB_NAME = '",
                   "' ORDER BY RESISTANCE", "%"},
                  name, nodes);
    tacticalGroup({"Weaknesses", "|Weak:", "SELECT WEAKNESS, AMOUNT FROM MOB_WEAKNESS WHERE MOB_NAME = '",
                   "' ORDER BY WEAKNESS", "%"},
                  name, nodes);
}

void PopulateSpawnTree(const QString& mobName, TreeNodeSink& nodes) {
    Recordset rs;
    rs.open("SELECT SECTOR_NAME, NAV_POINT, SPAWN_RATE FROM MOBS_LOCATION WHERE MOB_NAME = '" +
            FixQuotes(mobName) + "' ORDER BY SECTOR_NAME");
    if (rs.eof()) {
        nodes.addNode(QString(), NoRecordsFound, NoRecordsFound, mobimg::None);
        return;
    }
    QString sectorKey;
    bool first = true;
    for (; !rs.eof(); rs.moveNext()) {
        const QString sector = NzString(rs.value(0));
        if (first || sector != sectorKey) {
            sectorKey = sector;
            nodes.addNode(QString(), sectorKey, sector, mobimg::Sector);
            first = false;
        }
        const QString nav = NzString(rs.value(1));
        // An unknown rate still shows the place, only without a picture; the word is shown either way.
        const QString rate = NzString(rs.value(2));
        const QString key = sectorKey + "|Nav:" + nav;
        nodes.addNode(sectorKey, key, nav, SpawnRateImage(rate));
        if (!rate.isEmpty())
            nodes.setNote(key, "Spawn Rate: " + rate);
    }
}

void PopulateLootTree(const QString& mobName, TreeNodeSink& nodes) {
    struct Group {
        const char* title;
        const char* marker;
        const char* column;
        const char* table;
        const char* none;
    };
    static const Group groups[] = {
        {"Equipment", "|Equip:", "EQUIPMENT_NAME", "MOB_EQUIP_DROP", "|No Records Found"},
        {"Components", "|Comp:", "COMPONENT_NAME", "MOB_COMP_DROP", "|No Records Found"},
        {"Raw Materials", "|RawMat:", "RAW_MATERIAL_NAME", "MOB_RAW_MAT_DROP", "|No Records Found"},
        {"Items", "|Item:", "ITEM_NAME", "MOB_ITEM_DROP", "|+No Records Found"},
    };
    const QString name = FixQuotes(mobName);
    for (const Group& g : groups) {
        const QString group = QString::fromLatin1(g.title);
        const QString column = QString::fromLatin1(g.column);
        nodes.addNode(QString(), group, group, mobimg::Group);
        Recordset rs;
        rs.open("SELECT " + column + ", DROP_FREQUENCY FROM " + QLatin1String(g.table) +
                " WHERE MOB_NAME = '" + name + "' ORDER BY " + column);
        bool any = false;
        for (; !rs.eof(); rs.moveNext()) {
            any = true;
            // A frequency outside the five words is not shown at all.
            const int image = DropFrequencyImage(NzString(rs.value(1)));
            if (image == mobimg::None)
                continue;
            const QString what = NzString(rs.value(0));
            const QString key = group + QLatin1String(g.marker) + what;
            nodes.addNode(group, key, what, image);
            nodes.setNote(key, "Drop Rate: " + NzString(rs.value(1)));
        }
        rs.close();
        if (!any)
            nodes.addNode(group, group + QLatin1String(g.none), NoRecordsFound, mobimg::None);
    }
}

void PopulateMOBs(DropKind kind, const QString& name, TreeNodeSink& nodes) {
    QString table, column;
    switch (kind) {
    case DropKind::Equipment:
        table = "MOB_EQUIP_DROP";
        column = "EQUIPMENT_NAME";
        break;
    case DropKind::Component:
        table = "MOB_COMP_DROP";
        column = "COMPONENT_NAME";
        break;
    case DropKind::RawMaterial:
        table = "MOB_RAW_MAT_DROP";
        column = "RAW_MATERIAL_NAME";
        break;
    case DropKind::Item:
        table = "MOB_ITEM_DROP";
        column = "ITEM_NAME";
        break;
    }
    Recordset rs;
    rs.open("SELECT MOB_NAME, DROP_FREQUENCY FROM " + table + " WHERE " + column + " = '" + FixQuotes(name) +
            "' ORDER BY MOB_NAME");
    if (rs.eof()) {
        nodes.addNode(QString(), NoRecordsFound, NoRecordsFound, mobimg::None);
        return;
    }
    for (; !rs.eof(); rs.moveNext()) {
        const QString mob = NzString(rs.value(0));
        const QString frequency = NzString(rs.value(1));
        nodes.addNode(QString(), mob, mob, mobimg::Mob);
        nodes.addNode(mob, mob + "|", "Drop Rate: " + frequency, DropFrequencyImage(frequency));
    }
}

QString MobTypeLine(const QString& combatLevel, const QString& type, bool boss) {
    QString line = "Level " + combatLevel + " " + type;
    if (boss)
        line += QLatin1String(" Boss");
    return line;
}
