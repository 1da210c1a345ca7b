#include "editors/rawmaterials.h"

#include "core/clock.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "editors/recordsql.h"
#include "views/modmain.h"

namespace rawmat {
namespace {
QList<GridDef> build() {
    QList<GridDef> g;
    g << GridDef{"ubgMOBs",
                 "Dropped by MOBs",
                 "General: MOBs",
                 "SELECT MOB_NAME, DROP_FREQUENCY FROM MOB_RAW_MAT_DROP WHERE RAW_MATERIAL_NAME = '",
                 "MOB_NAME",
                 {GridChoices::Mobs, GridChoices::DropFrequencies},
                 "SELECT MOB_NAME, DROP_FREQUENCY, RAW_MATERIAL_NAME FROM MOB_RAW_MAT_DROP WHERE "
                 "RAW_MATERIAL_NAME = '",
                 "RAW_MATERIAL_NAME"};
    g << GridDef{"ubgManuComps",
                 "Components",
                 "Requires in Manufacture: Components",
                 "SELECT COMPONENTS_COMPONENT, AMOUNT FROM COMPONENTS_RAW_MATERIALS WHERE RAW_MATERIAL = '",
                 "COMPONENTS_COMPONENT",
                 {GridChoices::Components},
                 "SELECT COMPONENTS_COMPONENT, AMOUNT, RAW_MATERIAL FROM COMPONENTS_RAW_MATERIALS WHERE "
                 "RAW_MATERIAL = '",
                 "RAW_MATERIAL"};
    g << GridDef{
        "ubgManuEquip",
        "Equipment",
        "Requires in Manufacture: Equipment",
        "SELECT EQUIPMENTS_EQUIPMENT, AMOUNT FROM EQUIPMENTS_RAW_MATERIALS WHERE RAW_MATERIAL_NAME = '",
        "EQUIPMENTS_EQUIPMENT",
        {GridChoices::Equipment},
        "SELECT EQUIPMENTS_EQUIPMENT, AMOUNT, RAW_MATERIAL_NAME FROM EQUIPMENTS_RAW_MATERIALS WHERE "
        "RAW_MATERIAL_NAME = '",
        "RAW_MATERIAL_NAME"};
    g << GridDef{"ubgManuRawMats",
                 "Raw Materials",
                 "Requires in Manufacture: Raw Materials",
                 "SELECT RAW_MATERIAL_NAME, AMOUNT FROM RAW_MATERIALS_REFINES_FROM WHERE REFINES_FROM = '",
                 "RAW_MATERIAL_NAME",
                 {GridChoices::RawMaterials},
                 "SELECT RAW_MATERIAL_NAME, AMOUNT, REFINES_FROM FROM RAW_MATERIALS_REFINES_FROM WHERE "
                 "REFINES_FROM = '",
                 "REFINES_FROM"};
    g << GridDef{"ubgBlueRawMats",
                 "Raw Materials",
                 "Required to Refine: Refines From",
                 "SELECT REFINES_FROM, AMOUNT FROM RAW_MATERIALS_REFINES_FROM WHERE RAW_MATERIAL_NAME = '",
                 "REFINES_FROM",
                 {GridChoices::RawMaterials},
                 "SELECT REFINES_FROM, AMOUNT, RAW_MATERIAL_NAME FROM RAW_MATERIALS_REFINES_FROM WHERE "
                 "RAW_MATERIAL_NAME = '",
                 "RAW_MATERIAL_NAME"};
    g << GridDef{
        "ubgBlueItems",
        "Items",
        "Required to Refine: Items",
        "SELECT ITEM_NAME, AMOUNT FROM RAW_MATERIALS_ITEMS WHERE RAW_MATERIAL_NAME = '",
        "ITEM_NAME",
        {GridChoices::Items},
        "SELECT ITEM_NAME, AMOUNT, RAW_MATERIAL_NAME FROM RAW_MATERIALS_ITEMS WHERE RAW_MATERIAL_NAME = '",
        "RAW_MATERIAL_NAME"};
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
    return {"lstBuyLocations", "ubgManuComps",     "ubgManuEquip",   "ubgManuRawMats",
            "ubgMOBs",         "lstMineLocations", "ubgBlueRawMats", "ubgBlueItems"};
}

Fields readRecord(const QString& name) {
    Recordset rs;
    OpenStoredRecord(rs, QStringLiteral("RAW_MATERIALS"), QStringLiteral("RAW_MATERIAL_NAME"), name);
    return ReadPricedFields(rs, QStringLiteral("RAW_MATERIAL_NAME"));
}

QString insertSql(const Fields& f, const QDateTime& now) {
    return QStringLiteral("INSERT INTO RAW_MATERIALS (RAW_MATERIAL_NAME, LVL, PRICE, COMMENTS, PERSONAL_DB, "
                          "PIC_ID, LAST_UPDATED) VALUES ('") +
           FixQuotes(f.name) + QStringLiteral("',") + f.level + QLatin1Char(',') + f.price +
           QStringLiteral(",'") + FixQuotes(f.comments) + QStringLiteral("',TRUE,") +
           QString::number(f.picture) + QStringLiteral(", '") + generalDate(now) + QStringLiteral("')");
}

QString updateSql(const Fields& f, const QDateTime& now) {
    return QStringLiteral("UPDATE RAW_MATERIALS SET LVL = ") + f.level + QStringLiteral(", PRICE = ") +
           f.price + QStringLiteral(", COMMENTS = '") + FixQuotes(f.comments) +
           QStringLiteral("', UPDATED = TRUE, PIC_ID = ") + QString::number(f.picture) +
           QStringLiteral(", LAST_UPDATED = '") + generalDate(now) + QStringLiteral("' ") +
           QStringLiteral("WHERE RAW_MATERIAL_NAME = '") + FixQuotes(f.name) + QLatin1Char('\'');
}

QString buyLocationsSql(const QString& name) {
    return QStringLiteral("SELECT STATIONS_STATION FROM BUY_RAW_MATERIAL_LOCATIONS WHERE RAW_MATERIAL = '") +
           FixQuotes(name) + QStringLiteral("' ORDER BY STATIONS_STATION");
}

QString mineLocationsSql(const QString& name) {
    return QStringLiteral("SELECT SECTORS_SECTOR FROM MINE_LOCATIONS WHERE RAW_MATERIAL = '") +
           FixQuotes(name) + QStringLiteral("' ORDER BY SECTORS_SECTOR");
}

QString allSectorsSql() {
    return QStringLiteral("SELECT SECTOR_NAME FROM SECTORS ORDER BY SECTOR_NAME");
}

} // namespace rawmat
