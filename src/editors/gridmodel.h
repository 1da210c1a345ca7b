#pragma once
// The editable relationship grid without its widget: what the grid routines (gridroutines.h) work on,
// and what the grid widget (ubgrid.h) shows and edits.
//
// Row 0 is the header row and column 0 the fixed row-header column; data cells are (row, column) with
// rows 1 .. lastDataRow() and columns 1 .. cols() - 1. Every cell holds text. With adding allowed, one
// empty entry row follows the data rows: typing into it makes it a data row and a new entry row
// appears below. Each data column may carry a drop-down list of (display, data) entries; a value typed
// that is not in the list is kept as typed.
//
// The user's edits come in through beginUserEdit / userEdit / removeRowByUser, which run the
// before-edit hook (it can cancel) and the after-edit hook. Programmatic changes (setText, addRow...)
// run no hook. While redraw is off, the listener hears nothing; switching it back on sends one reset.
#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

struct GridListEntry {
    QString display;
    QString data;
};

// What a view of the grid is told, before and after each change. Rows and columns are the model's
// own numbers (row 0 = header).
class GridListener {
public:
    virtual ~GridListener() = default;
    virtual void gridAboutToReset() = 0; // anything may change
    virtual void gridReset() = 0;
    virtual void gridAboutToInsertRows(int first, int last) = 0;
    virtual void gridRowsInserted() = 0;
    virtual void gridAboutToRemoveRows(int first, int last) = 0;
    virtual void gridRowsRemoved() = 0;
    virtual void gridCellChanged(int row, int col) = 0;
    virtual void gridLayoutChanged() = 0; // widths, headers, numeric marks
};

class GridModel {
public:
    explicit GridModel(const QString& name = QString());

    // The grid's name ("ubgLocations"): some routines treat a grid by its name.
    QString name() const { return m_name; }
    void setName(const QString& name) { m_name = name; }

    // Every row: header, data rows and the entry row when adding is allowed.
    int rows() const { return int(m_cells.size()); }
    int cols() const { return m_cols; }
    int lastDataRow() const { return rows() - 1 - (m_allowAdd ? 1 : 0); }
    int dataRowCount() const { return lastDataRow(); }
    bool isEntryRow(int row) const { return m_allowAdd && row == rows() - 1; }
    // Column count including the fixed column; at least 1. Cells of removed columns are dropped.
    void setCols(int count);

    // An empty text outside the grid.
    QString text(int row, int col) const;
    void setText(int row, int col, const QString& text);
    // Appends a data row (above the entry row) whose fixed cell holds rowHeader; returns its number.
    int addRow(const QString& rowHeader = QString());
    void removeRow(int row); // data rows only
    void clearRows();        // removes every data row

    // The header row as one text: columns separated by "|", column 0 first. Each header's length
    // (spaces included) gives its column's width; the header text is kept without the spaces.
    void setFormatString(const QString& format);
    QString header(int col) const { return text(0, col); }

    void setColNumeric(int col, bool numeric);
    bool colNumeric(int col) const;
    // Column widths in pixels. The format string sets them from the header lengths, charWidth each.
    void setColWidth(int col, int width);
    int colWidth(int col) const;
    void setCharWidth(int pixels) { m_charWidth = pixels; }

    // The drop-down list of a column.
    void addListItem(int col, const QString& display, const QString& data);
    void clearList(int col);
    QList<GridListEntry> list(int col) const;
    QStringList listDisplays(int col) const;

    // The width the routines size the columns to: the data area's width plus the 10 pixels (the
    // old 150 twips) that FormatUBGrids leaves for the fixed column and the border.
    void setWidth(int width) { m_width = width; }
    int width() const { return m_width; }

    void setRedraw(bool on);
    bool redraw() const { return m_redraw; }
    // The grid's tag text: PopulateGrid keeps the content fingerprint there.
    void setTag(const QString& tag) { m_tag = tag; }
    QString tag() const { return m_tag; }
    void setAllowAdd(bool allow);
    bool allowAdd() const { return m_allowAdd; }
    // The widget's appearance and editing-mode settings, kept as the numbers the routines set.
    void setAppearance(int value) { m_appearance = value; }
    int appearance() const { return m_appearance; }
    void setEditMode(int value) { m_editMode = value; }
    int editMode() const { return m_editMode; }
    // A locked grid refuses every edit (its rows could not be read completely, so it is never saved).
    void setLocked(bool locked) { m_locked = locked; }
    bool locked() const { return m_locked; }

    // Hooks of the user's edits: the before-edit hook may set cancel; the after-edit hook runs once
    // the cell holds its new text.
    std::function<void(GridModel& grid, int row, int col, bool& cancel)> beforeEdit;
    std::function<void(GridModel& grid, int row, int col)> afterEdit;

    // True when the user may edit (row, col) now: a data or entry cell, not locked, not cancelled.
    bool beginUserEdit(int row, int col);
    // Sets the cell as the user's edit; in the entry row a non-empty text makes it a data row first.
    // A text equal to the cell's is no edit (no hook runs).
    void userEdit(int row, int col, const QString& text);
    // The user removes a data row (the Delete key); the after-edit hook is not run.
    void removeRowByUser(int row);

    void setListener(GridListener* listener) { m_listener = listener; }

private:
    void ensureEntryRow();
    // The listener to tell now; nullptr while redraw is off (the change is then remembered).
    GridListener* told() {
        if (m_redraw && m_listener)
            return m_listener;
        m_dirty = true;
        return nullptr;
    }

    QString m_name;
    int m_cols = 1;
    QList<QStringList> m_cells; // row-major; every row has m_cols texts
    QList<bool> m_numeric;
    QList<int> m_widths;
    QList<QList<GridListEntry>> m_lists;
    int m_width = 0;
    int m_charWidth = 7;
    bool m_redraw = true;
    bool m_dirty = false;
    QString m_tag;
    bool m_allowAdd = false;
    int m_appearance = 0;
    int m_editMode = 0;
    bool m_locked = false;
    GridListener* m_listener = nullptr;
};
