#include "views/recordtrees.h"

#include "data/quotes.h"
#include "data/recordset.h"
#include "views/mobtrees.h"
#include "views/modmain.h"

namespace {
struct Group {
    QString title, marker, sql;
    int image; // 0: by IsRefined (raw materials)
};

void populate(const QList<Group>& groups, TreeNodeSink& nodes) {
    bool any = false;
    for (const Group& g : groups) {
        Recordset rs;
        rs.open(g.sql);
        const QStringList names = PopulateList(rs);
        rs.close();
        if (names.isEmpty())
            continue;
        any = true;
        nodes.addNode(QString(), g.title, g.title, mobimg::Group);
        for (const QString& n : names) {
            const int image =
                g.image ? g.image : (IsRefined(n) ? buildimg::RefinedRawMaterial : buildimg::RawMaterial);
            nodes.addNode(g.title, g.title + g.marker + n, n, image);
        }
    }
    if (!any)
        nodes.addNode(QString(), NoRecordsFound, NoRecordsFound, mobimg::None);
}
} // namespace

void PopulateUsedIn(RecordKind kind, const QString& name, TreeNodeSink& nodes) {
    const QString q = FixQuotes(name);
    const QString equipment = QStringLiteral("Equipment"), components = QStringLiteral("Components"),
                  raws = QStringLiteral("Raw Materials");
    QList<Group> groups;
    switch (kind) {
    case RecordKind::Component:
        groups = {{equipment, marker::Equip,
                   "SELECT EQUIPMENTS_EQUIPMENT FROM EQUIPMENTS_COMPONENTS WHERE COMPONENTS_COMPONENT = '" +
                       q + "' ORDER BY EQUIPMENTS_EQUIPMENT",
                   buildimg::Equipment},
                  {components, marker::Comp,
                   "SELECT COMPONENT_NAME FROM COMPONENTS_UPGRADE_FROM WHERE UPGRADE_FROM = '" + q +
                       "' ORDER BY COMPONENT_NAME",
                   buildimg::Component}};
        break;
    case RecordKind::RawMaterial:
        groups = {{equipment, marker::Equip,
                   "SELECT EQUIPMENTS_EQUIPMENT FROM EQUIPMENTS_RAW_MATERIALS WHERE RAW_MATERIAL_NAME = '" +
                       q + "' ORDER BY EQUIPMENTS_EQUIPMENT",
                   buildimg::Equipment},
                  {components, marker::Comp,
                   "SELECT COMPONENTS_COMPONENT FROM COMPONENTS_RAW_MATERIALS WHERE RAW_MATERIAL = '" + q +
                       "' ORDER BY COMPONENTS_COMPONENT",
                   buildimg::Component},
                  {raws, marker::RawMat,
                   "SELECT RAW_MATERIAL_NAME FROM RAW_MATERIALS_REFINES_FROM WHERE REFINES_FROM = '" + q +
                       "' ORDER BY RAW_MATERIAL_NAME",
                   0}};
        break;
    case RecordKind::Item:
        groups = {{equipment, marker::Equip,
                   "SELECT EQUIPMENTS_EQUIPMENT FROM EQUIPMENTS_ITEMS WHERE ITEM_NAME = '" + q +
                       "' ORDER BY EQUIPMENTS_EQUIPMENT",
                   buildimg::Equipment},
                  {components, marker::Comp,
                   "SELECT COMPONENT_NAME FROM COMPONENTS_ITEMS WHERE ITEM_NAME = '" + q +
                       "' ORDER BY COMPONENT_NAME",
                   buildimg::Component},
                  {raws, marker::RawMat,
                   "SELECT RAW_MATERIAL_NAME FROM RAW_MATERIALS_ITEMS WHERE ITEM_NAME = '" + q +
                       "' ORDER BY RAW_MATERIAL_NAME",
                   0}};
        break;
    }
    populate(groups, nodes);
}

void PopulateStationSells(const QString& station, TreeNodeSink& nodes) {
    const QString q = FixQuotes(station);
    populate(
        {{QStringLiteral("Equipment"), marker::Equip,
          "SELECT EQUIPMENTS_EQUIPMENT FROM BUY_EQUIPMENT_LOCATION WHERE STATIONS_STATION = '" + q +
              "' ORDER BY EQUIPMENTS_EQUIPMENT",
          buildimg::Equipment},
         {QStringLiteral("Components"), marker::Comp,
          "SELECT COMPONENTS_COMPONENT FROM BUY_COMPONENT_LOCATIONS WHERE STATIONS_STATION = '" + q +
              "' ORDER BY COMPONENTS_COMPONENT",
          buildimg::Component},
         {QStringLiteral("Raw Materials"), marker::RawMat,
          "SELECT RAW_MATERIAL FROM BUY_RAW_MATERIAL_LOCATIONS WHERE STATIONS_STATION = '" + q +
              "' ORDER BY RAW_MATERIAL",
          0},
         {QStringLiteral("Items"), marker::Item,
          "SELECT ITEM_NAME FROM BUY_ITEM_LOCATIONS WHERE STATIONS_STATION = '" + q + "' ORDER BY ITEM_NAME",
          buildimg::Item}},
        nodes);
}
