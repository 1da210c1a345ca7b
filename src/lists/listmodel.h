#pragma once
// The main list's model: one result set held as typed columns (numbers as numbers, texts packed in one
// buffer per column, NULL bits), cell texts made only when a cell is shown, and a row-order index that
// sorting rearranges. A million rows stay cheap to fill, sort and search.
//
// Rows are addressed in VIEW order everywhere (row 0 is the row shown first); sorting changes which
// record sits at a row, never a cell's text.
#include <QAbstractTableModel>
#include <QColor>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class Progress;
class QTimer;
class Recordset;

// The row colours of the list. An invalid colour leaves the view's own text colour.
struct ListColors {
    QColor updated;  // rows whose UPDATED flag is set
    QColor personal; // rows whose PERSONAL_DB flag is set (wins over updated)
};

// A colour number as "VOSK.ini" section "COLORS" keeps it (0x00BBGGRR, decimal or "&H..." hex text)
// turned into a colour; an empty or unreadable text gives an invalid colour.
QColor colorFromVbColor(qint64 vbColor);
QColor colorFromVbColorText(const QString& text);

class ListModel : public QAbstractTableModel {
    Q_OBJECT
public:
    // Column tags the sorter understands (as the column headers carried them).
    static inline const QString NumberTag = QStringLiteral("NUMBER");
    static inline const QString DateTag = QStringLiteral("DATE");

    // Sort orders as the list kept them in the settings.
    enum SortOrder { Ascending = 0, Descending = 1 };

    explicit ListModel(QObject* parent = nullptr);
    ~ListModel() override;

    // SetRStoList: replaces columns and rows with the rows of an open forward-only result set. The
    // flag columns CHECK, PERSONAL_DB, UPDATED, SUBMITTED, UNIQUE_FLAG and PIC_ID give the row's tick
    // and colour and are never columns. Throws VbError when reading fails; the model is then empty.
    // The sort column and order are kept: if the list was sorted, the new rows come sorted the same way.
    // progress, when given, hears the number of rows read so far.
    void load(Recordset& rs, const ListColors& colors, Progress* progress = nullptr);
    void clear();

    // The same in steps, for a list on screen: the first rows are read at once, the rest in short slices
    // from the event loop, so that the window paints and takes input while a long list comes in. The
    // model owns the result set until the last row. Sorting, find and ticks work on the rows read so
    // far. A kept sort orders the first rows; later rows come in below the rows shown, and the sort
    // is applied to the whole list after the last one. loadProgress reports the rows read after each
    // slice; loadFinished follows the last row, or a read error (loadError() then tells it, and the
    // rows read before it stay).
    void startLoad(std::unique_ptr<Recordset> rs, const ListColors& colors);
    // Stops a load in progress; the rows read so far stay. clear(), load() and startLoad() cancel too.
    void cancelLoad();
    bool isLoading() const; // also while the kept sort orders the whole list after the last row
    // How long the first slice and each later one read (nanoseconds; at least 256 rows a slice), and
    // how often the rows read are added to those shown. The defaults keep a window answering; tests
    // make them small to get many slices.
    static void setSliceBudget(qint64 firstNs, qint64 laterNs, qint64 showEveryNs);
    struct LoadError {
        long number = 0; // 0: none
        QString description;
    };
    LoadError loadError() const;

    // QAbstractItemModel
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

    // Columns.
    QString columnName(int col) const; // the result column's name
    QString columnTag(int col) const;  // "NUMBER", "DATE" or empty
    void setColumnTag(int col, const QString& tag);
    void setHeaderText(int col, const QString& text); // the caption shown (default: the column name)
    int columnIndex(const QString& name) const;       // -1 when not shown

    // Cells, as shown. Price columns (PRICE, PURCHASE_PRICE, MANUFACTURING_FEE) show the price words
    // for their coded values and still sort by value; numeric columns are right-aligned.
    QString name(int row) const; // the first column's text
    QString text(int row, int col) const;
    // The same text written into out (its buffer is reused: for loops over many cells).
    void cellText(int row, int col, QString& out) const;

    // Ticks. setChecked does not emit checkToggled (it is how a failed write is undone); a tick by the
    // user (setData) marks its row as changed.
    bool isChecked(int row) const;
    void setChecked(int row, bool checked);
    // The record the user changed last (a tick, or a row the window marks after an edit), followed
    // through sorting: its view row, or -1. A reload forgets it.
    void markChanged(int row);
    int changedRow() const;
    bool isUpdated(int row) const;
    // True when the rows carry the UPDATED or PERSONAL_DB flag (and may take their colours).
    bool hasColourFlags() const;
    bool isPersonal(int row) const;

    // Bold marks. A bold row shows all its cells bold; a bold cell only itself. Marking many cells at
    // once passes notify = false and calls notifyBoldChanged() once at the end.
    void setBold(int row, int col, bool bold = true, bool notify = true);
    void setRowBold(int row, bool bold = true, bool notify = true);
    void notifyBoldChanged();
    bool isBold(int row, int col) const; // the cell is shown bold (its own mark or its row's)
    bool isCellBold(int row, int col) const;
    bool isRowBold(int row) const;
    void clearBold();

    // Sorting (the list's column-click). Toggles the order on every call, also for a new column, and
    // orders by the column's tag: numbers by value, dates by time, texts without case. Stable.
    void sortByColumn(int col);
    int sortKey() const;   // 0-based column; -1 before any sort
    int sortOrder() const; // Ascending or Descending
    bool isSorted() const;
    // Restores a saved sort column and order and applies it without toggling (when the column exists;
    // otherwise at the next load). A key of -1 forgets the sort: rows stay where they are, and the next
    // load keeps the result set's order.
    void setSort(int key, int order);

    // The search box: shows only the rows whose name (the first column) contains the text, without
    // regard to case (NameMatcher), in their current order. An empty text shows every row again. The
    // filter stays for the next load and for sorting; rows that stay keep their selection.
    void setNameFilter(const QString& text);
    QString nameFilter() const;
    // Every row loaded, shown or not (rowCount() counts the rows shown).
    int loadedRowCount() const;

    // The row-order index: the stored record behind a view row and back (-1 for a row the filter hides).
    int sourceRow(int row) const;
    int viewRow(int sourceRow) const;

    // How many bytes the stored rows take (columns, texts, flags and the order index).
    qint64 memoryUsed() const;

Q_SIGNALS:
    // The user ticked or unticked a row (view row, its name, the new state). The window writes the
    // database and calls setChecked(row, !checked) if that fails.
    void checkToggled(int row, const QString& name, bool checked);
    void loadProgress(qint64 rowsRead);
    void loadFinished();

private:
    struct Impl;
    void loadSlice();
    void showReadRows();
    void showOrder(std::vector<uint32_t> next); // the rows in a new order, selection kept
    // After a load the kept sort orders the whole list on another thread, the window answering
    // meanwhile (listbackground.cpp).
    struct Background;
    void startBackgroundSort();
    void backgroundSortDone(Background* done);
    void replaceImpl(std::unique_ptr<Impl> next);
    std::unique_ptr<Impl> d;
    QTimer* m_slicer;
    std::unique_ptr<Background> m_background;
    std::vector<std::unique_ptr<Background>> m_abandoned; // sorts of lists replaced since, still running
};
