#pragma once
// What the raw material editor (frmAddRawMaterials) reads and writes, without its window: the record's
// fields, its two lists, its six grids and the exact statements of its save.
#include "editors/recordsql.h"

#include <QDateTime>
#include <QList>
#include <QString>

namespace rawmat {

// The grids in the order they are validated: ubgMOBs, ubgManuComps, ubgManuEquip, ubgManuRawMats,
// ubgBlueRawMats, ubgBlueItems. The two "Requires in Manufacture" save queries select their key
// column as well, so that SaveUBGrid can set it on every new row.
const QList<GridDef>& grids();
const GridDef& grid(const QString& widget);
// The widgets in the order a save rewrites them (lists and grids).
QStringList writeOrder();

using Fields = PricedFields;
// Reads the record (throws VbError 3021 when there is none).
Fields readRecord(const QString& name);

QString insertSql(const Fields& f, const QDateTime& now);
QString updateSql(const Fields& f, const QDateTime& now);

// The two plain lists' load queries, and the sectors offered.
QString buyLocationsSql(const QString& name);
QString mineLocationsSql(const QString& name);
QString allSectorsSql();

} // namespace rawmat
