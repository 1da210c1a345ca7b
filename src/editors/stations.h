#pragma once
// What the station editor (frmAddStation) reads and writes, without its window: the station's name,
// sector and comments, its terminals grid, and what it sells (the four buy-location tables, one list
// per kind of record). Written like the other editors: one transaction, UPDATED and LAST_UPDATED on
// every save that changes something, PERSONAL_DB on a new station, nothing when nothing changed.
#include "editors/griddef.h"

#include <QDateTime>
#include <QList>
#include <QString>

namespace station {

struct Fields {
    QString name;
    QString sector;
    QString comments;
};
// Reads the record (throws VbError 3021 when there is none).
Fields readRecord(const QString& name);

QString insertSql(const Fields& f, const QDateTime& now);
QString updateSql(const Fields& f, const QDateTime& now);

// The terminals found at the station: a one-column grid whose list offers the terminal types in use;
// a type typed that is not in the list is kept.
const GridDef& terminals();

// One kind of record the station sells, and the table that says so.
struct Sells {
    QString widget;      // "lstSellsEquipment"
    QString kind;        // the plural the pick dialog shows: "Equipment", "Components"...
    QString table;       // "BUY_EQUIPMENT_LOCATION"
    QString valueColumn; // "EQUIPMENTS_EQUIPMENT": the record sold
    QString allSql;      // every record of the kind, in order
    // The station's column (the key of its rows) is STATIONS_STATION in every table.
    QString loadSql(const QString& stationName) const;
};
inline const QString StationColumn = QStringLiteral("STATIONS_STATION");
// Equipment, components, raw materials and items, in the order a save rewrites them.
const QList<Sells>& sells();

// The sectors to choose from, with their systems: "SECTOR_NAME, SYSTEM_SYSTEM_NAME" in order.
QString sectorsSql();

} // namespace station
