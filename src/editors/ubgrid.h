#pragma once
// The editable relationship grid on screen (the ubg... widgets of the editors). It shows a GridModel:
// a header row, a row-header column (row numbers, "*" on the empty entry row at the bottom), text
// cells, an editable drop-down list in every column that has one (a typed value that is not in the
// list is kept), numeric columns right-aligned with a numeric editor.
//
// Keys: typing or F2 starts an edit, Enter accepts (also in a drop-down), Escape cancels it, Delete
// removes the current row; Tab leaves the grid for the next field. The grid's before-edit hook runs
// before an editor opens (it can refuse), its after-edit hook once the cell holds the new text; by
// default "(None)" in column 1 removes the row. The columns are sized with FormatUBGrids whenever the
// grid is shown or resized.
//
//   auto* g = new UBGrid("ubgMOBs", page);
//   PopulateGrid(g->grid(), def.queries(FixQuotes(name)), true);
#include "editors/gridmodel.h"
#include "editors/lookups.h"

#include <QHash>
#include <QTableView>

class GridItemModel;

class UBGrid : public QTableView {
    Q_OBJECT
public:
    explicit UBGrid(const QString& name, QWidget* parent = nullptr);
    ~UBGrid() override;

    GridModel& grid() { return m_grid; }
    const GridModel& grid() const { return m_grid; }

    // A column whose drop-down list comes from a lookup table: the grid's pop-up menu offers to edit
    // that table (frmListEditDialog), and the list is read again afterwards. The list's query is the
    // column's drop-down query ("SELECT SPECIAL FROM SPECIALS ORDER BY SPECIAL").
    void setLookup(int col, const LookupTable& lookup, const QString& listQuery);
    // Opens the lookup editor of a column set up with setLookup, then reads the column's list again.
    void editLookup(int col);

    // The data cell of a view index and back (model numbers: row 0 is the header).
    int gridRow(const QModelIndex& index) const { return index.row() + 1; }
    int gridCol(const QModelIndex& index) const { return index.column() + 1; }
    QModelIndex cellIndex(int row, int col) const;

    // Sizes the columns to the grid's width now.
    void format();

protected:
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void applyLayout();
    void removeCurrentRow();

    struct Lookup {
        LookupTable table;
        QString listQuery;
    };
    GridModel m_grid;
    GridItemModel* m_model = nullptr;
    QHash<int, Lookup> m_lookups;
};
