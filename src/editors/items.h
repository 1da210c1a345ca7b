#pragma once
// What the item editor (frmAddItem) reads and writes, without its window: the record's fields, its
// list of stations, its four grids and the record's write through an updatable result set.
#include "editors/recordsql.h"

#include <QDateTime>
#include <QList>
#include <QString>

namespace item {

// The grids in the order they are validated: ubgMOBs, ubgManuEquip, ubgManuComps, ubgManuRawMats.
const QList<GridDef>& grids();
const GridDef& grid(const QString& widget);
// The widgets in the order a save rewrites them (the list and the grids).
QStringList writeOrder();

using Fields = PricedFields;
// Reads the record (throws VbError 3021 when there is none).
Fields readRecord(const QString& name);
// The statement the write opens its result set on.
QString recordSql(const QString& name);
// Writes the record through a result set on recordSql: a new one (adding) gets PERSONAL_DB and its
// name; either gets LVL, PRICE, COMMENTS, PIC_ID, UPDATED and LAST_UPDATED. Empty boxes are NULL.
// Throws VbError (3021 when the record to change is gone).
void writeRecord(const Fields& f, bool adding, const QDateTime& now);

QString buyLocationsSql(const QString& name);

} // namespace item
