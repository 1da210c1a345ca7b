#pragma once
// The pieces the benchmark measures: the bare statement loop (the limit), the list fill, and the
// memory of a filled list in a fresh process.
#include <QString>

class ListModel;

namespace bench {

// The synthetic database of that many equipment rows in dir, made when missing. The smallest also
// holds a 10,000-node build tree under treeRoot().
QString ensureDatabase(const QString& dir, qint64 rows, bool withTree, QString* error);
QString treeRoot();

// The main list's equipment statement, as the main window asks GetSQL for it with no filters.
QString equipmentListSql();

// Prepares the translated statement on the shared connection and steps it, reading every column by
// its storage class. Returns the rows read.
qint64 bareLoop(const QString& jetSql);
// Opens the statement through Recordset and fills the model (SetRStoList).
void fillList(ListModel& model, const QString& jetSql);

// The child side of the memory figure: opens file, fills the list from the statement, and prints
// "rows cols rssBefore rssAfter modelBytes". Returns the exit code.
int memoryChild(const QString& file);

void openDatabase(const QString& file);

} // namespace bench
