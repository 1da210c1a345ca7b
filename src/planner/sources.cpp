#include "planner/sources.h"

#include "data/recordset.h"
#include "views/batchquery.h"

#include <QSet>

namespace planner {

namespace {
using bom::Kind;

// Per kind: the table of stations that sell it and of MOBs that drop it, with its name column.
struct KindTables {
    const char* buyTable;
    const char* buyColumn;
    const char* dropTable;
    const char* dropColumn;
};
const KindTables kTables[bom::KindCount] = {
    {"BUY_EQUIPMENT_LOCATION", "EQUIPMENTS_EQUIPMENT", "MOB_EQUIP_DROP", "EQUIPMENT_NAME"},
    {"BUY_COMPONENT_LOCATIONS", "COMPONENTS_COMPONENT", "MOB_COMP_DROP", "COMPONENT_NAME"},
    {"BUY_RAW_MATERIAL_LOCATIONS", "RAW_MATERIAL", "MOB_RAW_MAT_DROP", "RAW_MATERIAL_NAME"},
    {"BUY_ITEM_LOCATIONS", "ITEM_NAME", "MOB_ITEM_DROP", "ITEM_NAME"},
};

const Sources& noSources() {
    static const Sources none;
    return none;
}
} // namespace

void SourceBook::clear() {
    m_sources.clear();
}

const Sources& SourceBook::of(const bom::Ref& record) const {
    const auto it = m_sources.constFind(record);
    return it == m_sources.constEnd() ? noSources() : it.value();
}

void SourceBook::load(const QList<bom::Ref>& records) {
    QStringList names[bom::KindCount];
    for (const bom::Ref& r : records)
        if (!m_sources.contains(r)) {
            m_sources.insert(r, Sources());
            names[int(r.kind)].append(r.name);
        }
    ReadingTransaction reading;
    QHash<QString, QList<Drop*>> dropsByMob; // MOB name key -> the drops that name it
    QStringList mobs;
    for (int k = 0; k < bom::KindCount; ++k) {
        if (names[k].isEmpty())
            continue;
        const Kind kind = Kind(k);
        const KindTables& t = kTables[k];
        ForEachRowIn(
            QStringLiteral("SELECT B.%1, B.STATIONS_STATION, S.SECTORS_SECTOR, C.SYSTEM_SYSTEM_NAME FROM "
                           "(%2 AS B LEFT JOIN STATIONS AS S ON S.STATION_NAME = B.STATIONS_STATION) "
                           "LEFT JOIN SECTORS AS C ON C.SECTOR_NAME = S.SECTORS_SECTOR WHERE B.%1 IN ")
                .arg(QLatin1String(t.buyColumn), QLatin1String(t.buyTable)),
            names[k], QStringLiteral(" ORDER BY B.STATIONS_STATION"), [&](const Recordset& rs) {
                const auto it = m_sources.find({kind, RowText(rs, 0)});
                if (it != m_sources.end())
                    it->stations.append({RowText(rs, 1), RowText(rs, 2), RowText(rs, 3)});
            });
        if (kind == Kind::RawMaterial)
            ForEachRowIn(QStringLiteral("SELECT M.RAW_MATERIAL, M.SECTORS_SECTOR, C.SYSTEM_SYSTEM_NAME FROM "
                                        "MINE_LOCATIONS AS M LEFT JOIN SECTORS AS C ON C.SECTOR_NAME = "
                                        "M.SECTORS_SECTOR WHERE M.RAW_MATERIAL IN "),
                         names[k], QStringLiteral(" ORDER BY M.SECTORS_SECTOR"), [&](const Recordset& rs) {
                             const auto it = m_sources.find({kind, RowText(rs, 0)});
                             if (it != m_sources.end())
                                 it->mines.append({RowText(rs, 1), RowText(rs, 2)});
                         });
        ForEachRowIn(QStringLiteral("SELECT %1, MOB_NAME, DROP_FREQUENCY FROM %2 WHERE %1 IN ")
                         .arg(QLatin1String(t.dropColumn), QLatin1String(t.dropTable)),
                     names[k], QStringLiteral(" ORDER BY MOB_NAME"), [&](const Recordset& rs) {
                         const auto it = m_sources.find({kind, RowText(rs, 0)});
                         if (it == m_sources.end())
                             return;
                         it->drops.append({RowText(rs, 1), RowText(rs, 2), {}});
                     });
    }
    // Where the MOBs spawn, read once for all of them.
    for (auto it = m_sources.begin(); it != m_sources.end(); ++it)
        for (Drop& d : it->drops) {
            const QString key = NameKey(d.mob);
            if (!dropsByMob.contains(key))
                mobs.append(d.mob);
            dropsByMob[key].append(&d);
        }
    QHash<QString, QList<Spawn>> spawns;
    ForEachRowIn(
        QStringLiteral("SELECT L.MOB_NAME, L.SECTOR_NAME, C.SYSTEM_SYSTEM_NAME, L.NAV_POINT, L.SPAWN_RATE "
                       "FROM MOBS_LOCATION AS L LEFT JOIN SECTORS AS C ON C.SECTOR_NAME = L.SECTOR_NAME "
                       "WHERE L.MOB_NAME IN "),
        mobs, QStringLiteral(" ORDER BY L.SECTOR_NAME, L.NAV_POINT"), [&](const Recordset& rs) {
            spawns[NameKey(RowText(rs, 0))].append(
                {RowText(rs, 1), RowText(rs, 2), RowText(rs, 3), RowText(rs, 4)});
        });
    for (auto it = dropsByMob.constBegin(); it != dropsByMob.constEnd(); ++it)
        for (Drop* d : it.value())
            d->spawns = spawns.value(it.key());
}

QString StationText(const Station& s) {
    QStringList where;
    if (!s.sector.isEmpty())
        where << s.sector;
    if (!s.system.isEmpty())
        where << s.system;
    return where.isEmpty() ? s.name : s.name + QStringLiteral(" (") + where.join(QStringLiteral(", ")) + u')';
}

QString PlaceText(const Place& p) {
    return p.system.isEmpty() ? p.sector : p.sector + QStringLiteral(" (") + p.system + u')';
}

QString DropText(const Drop& d) {
    QString text = d.frequency.isEmpty() ? d.mob : d.mob + QStringLiteral(" (") + d.frequency + u')';
    QStringList sectors;
    for (const Spawn& s : d.spawns)
        if (!sectors.contains(s.sector))
            sectors << s.sector;
    if (!sectors.isEmpty())
        text += QStringLiteral(" in ") + sectors.join(QStringLiteral(", "));
    return text;
}

} // namespace planner
