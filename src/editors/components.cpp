#include "editors/components.h"

#include "core/clock.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "editors/recordsql.h"
#include "views/modmain.h"

namespace comp {
namespace {

QList<GridDef> build() {
    QList<GridDef> g;
    // Used in: the equipment built with it and the components upgraded from it.
    g << GridDef{"ubgManuEquip",
                 "Equipment",
                 "Manufacturing: Equipment",
                 "SELECT EQUIPMENTS_EQUIPMENT AS EQUIPMENT_NAME, AMOUNT FROM EQUIPMENTS_COMPONENTS WHERE "
                 "COMPONENTS_COMPONENT = '",
                 "EQUIPMENTS_EQUIPMENT",
                 {GridChoices::Equipment},
                 "SELECT EQUIPMENTS_EQUIPMENT, AMOUNT, COMPONENTS_COMPONENT FROM EQUIPMENTS_COMPONENTS WHERE "
                 "COMPONENTS_COMPONENT = '",
                 "COMPONENTS_COMPONENT"};
    g << GridDef{
        "ubgManuComps",
        "Components",
        "Manufacturing: Components",
        "SELECT COMPONENT_NAME, AMOUNT FROM COMPONENTS_UPGRADE_FROM WHERE UPGRADE_FROM = '",
        "COMPONENT_NAME",
        {GridChoices::Components},
        "SELECT COMPONENT_NAME, AMOUNT, UPGRADE_FROM FROM COMPONENTS_UPGRADE_FROM WHERE UPGRADE_FROM = '",
        "UPGRADE_FROM"};
    g << GridDef{
        "ubgMOBs",
        "Dropped by MOBs",
        "MOBs",
        "SELECT MOB_NAME, DROP_FREQUENCY FROM MOB_COMP_DROP WHERE COMPONENT_NAME = '",
        "MOB_NAME",
        {GridChoices::Mobs, GridChoices::DropFrequencies},
        "SELECT MOB_NAME, DROP_FREQUENCY, COMPONENT_NAME FROM MOB_COMP_DROP WHERE COMPONENT_NAME = '",
        "COMPONENT_NAME"};
    // Blueprint: what it is built from.
    g << GridDef{
        "ubgBlueEquip",
        "Equipment",
        "Blueprint: Equipment",
        "SELECT EQUIPMENT_NAME, AMOUNT FROM COMPONENTS_EQUIPMENTS WHERE COMPONENT_NAME = '",
        "EQUIPMENT_NAME",
        {GridChoices::Equipment},
        "SELECT EQUIPMENT_NAME, AMOUNT, COMPONENT_NAME FROM COMPONENTS_EQUIPMENTS WHERE COMPONENT_NAME = '",
        "COMPONENT_NAME"};
    g << GridDef{
        "ubgBlueComps",
        "Components",
        "Blueprint: Components",
        "SELECT UPGRADE_FROM AS COMPONENT_NAME, AMOUNT FROM COMPONENTS_UPGRADE_FROM WHERE COMPONENT_NAME = '",
        "UPGRADE_FROM",
        {GridChoices::Components},
        "SELECT UPGRADE_FROM, AMOUNT, COMPONENT_NAME FROM COMPONENTS_UPGRADE_FROM WHERE COMPONENT_NAME = '",
        "COMPONENT_NAME"};
    g << GridDef{"ubgBlueRawMats",
                 "Raw Materials",
                 "Blueprint: Raw Materials",
                 "SELECT RAW_MATERIAL, AMOUNT FROM COMPONENTS_RAW_MATERIALS WHERE COMPONENTS_COMPONENT = '",
                 "RAW_MATERIAL",
                 {GridChoices::RawMaterials},
                 "SELECT RAW_MATERIAL, AMOUNT, COMPONENTS_COMPONENT FROM COMPONENTS_RAW_MATERIALS WHERE "
                 "COMPONENTS_COMPONENT = '",
                 "COMPONENTS_COMPONENT"};
    g << GridDef{"ubgBlueItems",
                 "Items",
                 "Blueprint: Items",
                 "SELECT ITEM_NAME, AMOUNT FROM COMPONENTS_ITEMS WHERE COMPONENT_NAME = '",
                 "ITEM_NAME",
                 {GridChoices::Items},
                 "SELECT ITEM_NAME, AMOUNT, COMPONENT_NAME FROM COMPONENTS_ITEMS WHERE COMPONENT_NAME = '",
                 "COMPONENT_NAME"};
    return g;
}
} // namespace

const QList<GridDef>& grids() {
    static const QList<GridDef> g = build();
    return g;
}

const GridDef& grid(const QString& widget) {
    return FindGridDef(grids(), widget);
}

QStringList writeOrder() {
    return {"lstBuyLocations", "ubgMOBs",      "ubgBlueEquip", "ubgBlueComps",
            "ubgBlueRawMats",  "ubgBlueItems", "ubgManuEquip", "ubgManuComps"};
}

Fields readRecord(const QString& name) {
    Recordset rs;
    OpenStoredRecord(rs, QStringLiteral("COMPONENTS"), QStringLiteral("COMPONENT_NAME"), name);
    Fields f;
    static_cast<PricedFields&>(f) = ReadPricedFields(rs, QStringLiteral("COMPONENT_NAME"));
    if (const int cost = rs.fieldIndex(QStringLiteral("COST_TO_MANUFACTURE")); cost >= 0)
        f.cost = NzString(rs.value(cost));
    f.type = NzString(rs.value(QStringLiteral("TYPE")));
    f.subtype = NzString(rs.value(QStringLiteral("SUBTYPE")));
    return f;
}

QString insertSql(const Fields& f, const QDateTime& now) {
    return QStringLiteral("INSERT INTO COMPONENTS (COMPONENT_NAME, LVL, PRICE, COMMENTS, PERSONAL_DB, TYPE, "
                          "SUBTYPE, PIC_ID, LAST_UPDATED) VALUES ") +
           QStringLiteral("('") + FixQuotes(f.name) + QStringLiteral("',") + SqlNumber(f.level) +
           QLatin1Char(',') + SqlNumber(f.price) + QStringLiteral(",'") + FixQuotes(f.comments) +
           QStringLiteral("',TRUE,") + SqlText(f.type) + QLatin1Char(',') + SqlText(f.subtype) +
           QStringLiteral(",'") + QString::number(f.picture) + QStringLiteral("','") + generalDate(now) +
           QStringLiteral("')");
}

QString updateSql(const Fields& f, const QDateTime& now) {
    return QStringLiteral("UPDATE COMPONENTS SET LVL = ") + SqlNumber(f.level) +
           QStringLiteral(", PRICE = ") + SqlNumber(f.price) + QStringLiteral(", COMMENTS = '") +
           FixQuotes(f.comments) + QStringLiteral("',UPDATED = TRUE,COST_TO_MANUFACTURE = ") +
           SqlNumber(f.cost) + QStringLiteral(", TYPE = ") + SqlText(f.type) +
           QStringLiteral(", SUBTYPE = ") + SqlText(f.subtype) + QStringLiteral(", PIC_ID = '") +
           QString::number(f.picture) + QStringLiteral("', LAST_UPDATED = '") + generalDate(now) +
           QStringLiteral("'") + QStringLiteral("WHERE COMPONENT_NAME = '") + FixQuotes(f.name) +
           QLatin1Char('\'');
}

QString buyLocationsSql(const QString& name) {
    return QStringLiteral(
               "SELECT STATIONS_STATION FROM BUY_COMPONENT_LOCATIONS WHERE COMPONENTS_COMPONENT = '") +
           FixQuotes(name) + QStringLiteral("' ORDER BY STATIONS_STATION");
}

QString typesSql() {
    return QStringLiteral("SELECT COMPONENT_TYPE FROM COMPONENT_TYPES ORDER BY COMPONENT_TYPE");
}

QString subtypesSql(const QString& type) {
    return QStringLiteral("SELECT COMPONENT_SUBTYPE FROM COMPONENT_TYPE_SUBTYPE WHERE COMPONENT_TYPE = '") +
           FixQuotes(type) + QStringLiteral("' ORDER BY COMPONENT_SUBTYPE");
}

} // namespace comp
