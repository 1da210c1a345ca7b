#include "editors/stations.h"

#include "core/clock.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "editors/recordsql.h"
#include "views/modmain.h"

namespace station {

Fields readRecord(const QString& name) {
    Recordset rs;
    OpenStoredRecord(rs, QStringLiteral("STATIONS"), QStringLiteral("STATION_NAME"), name);
    Fields f;
    f.name = NzString(rs.value(QStringLiteral("STATION_NAME")));
    f.sector = NzString(rs.value(QStringLiteral("SECTORS_SECTOR")));
    f.comments = NzString(rs.value(QStringLiteral("COMMENTS")));
    return f;
}

QString insertSql(const Fields& f, const QDateTime& now) {
    return QStringLiteral(
               "INSERT INTO STATIONS (STATION_NAME, SECTORS_SECTOR, COMMENTS, PERSONAL_DB, UPDATED, "
               "LAST_UPDATED) VALUES ('") +
           FixQuotes(f.name) + QStringLiteral("', ") + SqlText(f.sector) + QStringLiteral(", ") +
           SqlText(f.comments) + QStringLiteral(", TRUE, TRUE, '") + generalDate(now) + QStringLiteral("')");
}

QString updateSql(const Fields& f, const QDateTime& now) {
    return QStringLiteral("UPDATE STATIONS SET SECTORS_SECTOR = ") + SqlText(f.sector) +
           QStringLiteral(", COMMENTS = ") + SqlText(f.comments) +
           QStringLiteral(", UPDATED = TRUE, LAST_UPDATED = '") + generalDate(now) +
           QStringLiteral("' WHERE STATION_NAME = '") + FixQuotes(f.name) + QLatin1Char('\'');
}

const GridDef& terminals() {
    static const GridDef g{"ubgTerminals",
                           "Terminals",
                           "Terminals",
                           "SELECT TERMINAL_TYPE FROM STATION_TERMINALS WHERE STATION_NAME = '",
                           "TERMINAL_TYPE",
                           {"SELECT DISTINCT TERMINAL_TYPE FROM STATION_TERMINALS ORDER BY TERMINAL_TYPE|1"},
                           "SELECT TERMINAL_TYPE, STATION_NAME FROM STATION_TERMINALS WHERE STATION_NAME = '",
                           "STATION_NAME"};
    return g;
}

QString Sells::loadSql(const QString& stationName) const {
    return QStringLiteral("SELECT ") + valueColumn + QStringLiteral(" FROM ") + table +
           QStringLiteral(" WHERE ") + StationColumn + QStringLiteral(" = '") + FixQuotes(stationName) +
           QStringLiteral("' ORDER BY ") + valueColumn;
}

const QList<Sells>& sells() {
    static const QList<Sells> s = {
        {"lstSellsEquipment", "Equipment", "BUY_EQUIPMENT_LOCATION", "EQUIPMENTS_EQUIPMENT",
         "SELECT EQUIPMENT_NAME FROM EQUIPMENTS ORDER BY EQUIPMENT_NAME"},
        {"lstSellsComponents", "Components", "BUY_COMPONENT_LOCATIONS", "COMPONENTS_COMPONENT",
         "SELECT COMPONENT_NAME FROM COMPONENTS ORDER BY COMPONENT_NAME"},
        {"lstSellsRawMaterials", "Raw Materials", "BUY_RAW_MATERIAL_LOCATIONS", "RAW_MATERIAL",
         "SELECT RAW_MATERIAL_NAME FROM RAW_MATERIALS ORDER BY RAW_MATERIAL_NAME"},
        {"lstSellsItems", "Items", "BUY_ITEM_LOCATIONS", "ITEM_NAME",
         "SELECT ITEM_NAME FROM ITEMS ORDER BY ITEM_NAME"},
    };
    return s;
}

QString sectorsSql() {
    return QStringLiteral("SELECT SECTOR_NAME, SYSTEM_SYSTEM_NAME FROM SECTORS ORDER BY SECTOR_NAME");
}

} // namespace station
