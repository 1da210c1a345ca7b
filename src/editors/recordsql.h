#pragma once
// Pieces shared by the statements and records of the component, item, raw material and station
// editors.
#include "editors/griddef.h"

#include <QString>

class Recordset;

// What a component, an item and a raw material all have, as the window shows it: texts as typed,
// the picture number.
struct PricedFields {
    QString name;
    QString level;
    QString price;
    QString comments;
    qint32 picture = 0;
};
// Reads those fields from a record whose name is in nameColumn.
PricedFields ReadPricedFields(const Recordset& rs, const QString& nameColumn);

// "SELECT * FROM table WHERE nameColumn = 'name'", the name quote-doubled.
QString RecordSql(const QString& table, const QString& nameColumn, const QString& name);
// Opens rs on the stored record of that name (throws VbError 3021 when there is none).
void OpenStoredRecord(Recordset& rs, const QString& table, const QString& nameColumn, const QString& name);

// A number as typed, or NULL when the box is empty (a bare "LVL = ," would not run).
QString SqlNumber(const QString& typed);
// A text between single quotes, quote-doubled; NULL when it is empty.
QString SqlText(const QString& text);
// True for an empty box or a whole number as the boxes take it: digits after an optional minus sign.
bool IsWholeNumberText(const QString& typed);
