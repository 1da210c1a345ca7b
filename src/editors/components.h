#pragma once
// What the component editor (frmAddComponent) reads and writes, without its window: the record's
// fields, its list of stations, its seven grids and the exact statements of its save.
//
// The statements are built as the component editor has always built them, with one intended
// asymmetry: a new component is INSERTed without COST_TO_MANUFACTURE, which only the UPDATE of an
// existing component writes. An empty number, type or subtype is written as NULL (an empty type
// must stay NULL, or the main list's "Unknown" filter would lose the component).
#include "editors/recordsql.h"

#include <QDateTime>
#include <QList>
#include <QString>

namespace comp {

// The grids in the order they are validated: ubgManuEquip, ubgManuComps, ubgMOBs, ubgBlueEquip,
// ubgBlueComps, ubgBlueRawMats, ubgBlueItems.
const QList<GridDef>& grids();
const GridDef& grid(const QString& widget);
// The widgets in the order a save rewrites them (the list and the grids).
QStringList writeOrder();

// The record as the window shows it: texts as typed, the picture number.
struct Fields : PricedFields {
    QString cost; // COST_TO_MANUFACTURE, the manufacturing fee
    QString type;
    QString subtype;
};
// Reads the record (throws VbError 3021 when there is none).
Fields readRecord(const QString& name);

QString insertSql(const Fields& f, const QDateTime& now);
QString updateSql(const Fields& f, const QDateTime& now);

// The stations that sell it, and the choices of the type and subtype lists.
QString buyLocationsSql(const QString& name);
QString typesSql();
QString subtypesSql(const QString& type);

} // namespace comp
