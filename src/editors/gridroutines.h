#pragma once
// The five routines every editor drives its relationship grids with, and the rules of the grids'
// edits. They work on the widget-free GridModel; the grid widget (ubgrid.h) shows one.
//
// Loading:  PopulateGrid(grid, {loadQuery, "dropDownQuery|column", ...}, true) fills the grid, attaches
//           the drop-down lists ("(None)" first in a column-1 list) and keeps the content fingerprint
//           in the grid's tag.
// Saving:   ValidateGrid for every grid first (it shows the first fault); then, inside the editor's
//           transaction, SaveUBGrid for each grid whose GridChanged() is true and UpdateList for each
//           plain list whose joined entries differ from those at load (editorsave.h does all this).
// Database errors are reported here ("Module modMain") and the routine returns false; the editor's
// save then rolls back.
#include <QString>
#include <QStringList>

class GridModel;

// The entry of a column-1 list that removes its row when chosen.
inline const QString NoneEntry = QStringLiteral("(None)");

// Element 0 of queries is the load query, each further element "query|column". False when a query
// failed: the grid is then locked (it holds only part of its rows and must never be saved).
bool PopulateGrid(GridModel& grid, const QStringList& queries, bool formatAfter);
// Sizes the data columns to the grid's width: 80/20 for a name-and-amount grid, equal shares otherwise.
void FormatUBGrids(GridModel& grid);
// True when the grid may be saved; otherwise one message about the first duplicate or empty cell.
bool ValidateGrid(const GridModel& grid, const QString& listName);
// Replaces the record's rows of the link table by the grid's rows, through an updatable result set
// on saveQuery (the grid's columns in order, then keyColumn). keyValue is the record's name as it is
// stored (not quote-doubled).
bool SaveUBGrid(const GridModel& grid, const QString& saveQuery, const QString& keyColumn,
                const QString& keyValue);
// Replaces the record's rows of a two-column link table by the entries. keyValue goes into the SQL
// as given: the caller passes it quote-doubled.
bool UpdateList(const QStringList& entries, const QString& table, const QString& keyColumn,
                const QString& valueColumn, const QString& keyValue);

// Every data cell followed by "|", each row closed by "~"; the entry row is left out.
QString GridFingerprint(const GridModel& grid);
// The grid differs from what PopulateGrid loaded (its fingerprint against its tag).
bool GridChanged(const GridModel& grid);
// The joined entries of a plain list, as compared at a save.
inline QString JoinedEntries(const QStringList& entries) {
    return entries.join(QLatin1Char('|'));
}

// The after-edit rule of every grid: "(None)" set in column 1 removes the row; then the columns are
// sized again.
void GridAfterEdit(GridModel& grid, int row, int col);
// Installs GridAfterEdit as the grid's after-edit hook (and no before-edit hook).
void InstallStandardEdits(GridModel& grid);
// The MOB locations grid (sector, nav point, spawn rate): the nav-point list follows the row's sector,
// editing a nav point needs a sector ("Please set the Sector first."), and a new sector empties the
// row's nav point. Errors are reported under the grid's event names in the given container.
void InstallLocationRules(GridModel& grid, const QString& container);
// Fills column 2's list with "(None)" and the sector's nav points.
void FillNavPointList(GridModel& grid, const QString& sector);
