#pragma once
// The pieces the benchmark measures: the bare statement loop (the limit), the list filled as the main
// window fills it (into a list view on screen) and plainly, and the memory of a loaded list in a fresh
// process.
#include "app/itemlistview.h"
#include "lists/listmodel.h"
#include "lists/listviewsort.h"

#include <QString>

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
// Opens the statement through Recordset and fills the model at once (ListModel::load).
void fillList(ListModel& model, const QString& jetSql);

// The list as the main window shows it: the model in the window's own list view, shown, with a header
// that sorts on a click, as big as a window's list.
struct ShownList {
    ShownList();
    ListModel model;
    ItemListView view;
    ListViewSort sorter;
};
// Loads the statement as the window does: ListModel::startLoad, the event loop run until
// loadFinished (what the view does meanwhile counts; what it leaves pending after the last row is the
// caller's). Works whether startLoad reads everything at once or in steps. Throws VbError when the
// load fails.
void loadShown(ShownList& list, const QString& jetSql);
// Lets the view handle what the model told it and paints its first screenful now.
void paintShown(ShownList& list);

// The child side of the memory figure: opens file, loads the list from the statement (into a shown
// list view when shown, else plainly), and prints "rows cols rssBefore rssAfter modelBytes peakAfter".
// Returns the exit code.
int memoryChild(const QString& file, bool shown);

void openDatabase(const QString& file);

} // namespace bench
