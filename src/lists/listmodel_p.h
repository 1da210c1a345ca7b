#pragma once
// The inside of ListModel, shared by its loading, display and sorting sources.
#include "lists/keptranks.h"
#include "lists/listmodel.h"
#include "lists/liststore.h"

#include <memory>
#include <vector>

namespace listflags {
constexpr uint8_t Checked = 1, Updated = 2, Personal = 4, RowBold = 8;
}

struct ListModel::Impl {
    Impl();
    ~Impl();
    std::vector<liststore::Column> cols;
    liststore::ChunkedVector<uint8_t> flags; // per stored row
    size_t rows = 0;
    std::vector<uint32_t> order;                 // view row -> stored row (the rows shown)
    std::vector<uint32_t> all;                   // while a name filter is on: every row, in sort order
    QString nameFilter;                          // the search box's text
    mutable std::vector<uint32_t> inverse;       // stored row -> view row, made when asked for
    std::vector<std::vector<uint64_t>> cellBold; // per column, bits by stored row
    ListColors colors;
    int sortKey = -1;
    int sortOrder = ListModel::Ascending;
    bool sorted = false;
    bool colourFlags = false; // the rows carry UPDATED or PERSONAL_DB
    qint64 changed = -1;      // stored row of the record the user changed last, -1 for none
    ListModel::LoadError loadError;
    mutable ranks::KeptRanks keptRanks; // the sort keys of the columns sorted last
    struct Load;
    std::unique_ptr<Load> loading; // while rows are still to be read
    size_t shownUpTo = 0;          // stored rows [shownUpTo, rows) are read but not yet in the view

    // Loading (listload.cpp): the columns of a result set; its rows until the end (true) or until the
    // budget is spent (false; a negative budget has none); the end of loading; the view order of the
    // rows read at first.
    void prepare(Recordset& rs, const ListColors& rowColors);
    bool readRows(qint64 budgetNs, Progress* progress);
    void finishColumns();
    void showFirstRows();

    // The cell's text as shown, and its value as the numeric sort reads that text.
    void cellText(size_t src, int col, QString& out) const;
    bool cellNumber(size_t src, int col, double* value) const;
    qint64 cellDate(size_t src, int col, QString& scratch) const;
    // Reorders the rows by a column in the given order, stable against the current view order.
    // Returns the new view-to-stored index.
    std::vector<uint32_t> sortedOrder(int col, int direction) const;
    // The rows of base (stored rows) sorted by a column, stable against base's order. Reads only the
    // columns and changes only the kept sort keys: it may run on another thread while this one reads
    // the list, as long as nothing else sorts meanwhile.
    std::vector<uint32_t> sortRows(int col, int direction, const std::vector<uint32_t>& base) const;
    // The view row of a stored row; Hidden when the name filter leaves it out.
    static constexpr uint32_t Hidden = 0xFFFFFFFFu;
    uint32_t viewOf(uint32_t src) const;
    // The rows shown, sorted by a column; with a name filter on, every row is sorted (into all), so
    // that clearing the filter finds them in order.
    std::vector<uint32_t> sortedWithFilter(int col, int direction);
    size_t shown() const { return order.size(); }
    // The rows of from, in their order, whose name contains the filter's text.
    std::vector<uint32_t> matching(const std::vector<uint32_t>& from, const class NameMatcher& filter) const;
    // An empty list that keeps this one's sort column and order and its name filter (for a clear or a
    // reload).
    std::unique_ptr<Impl> emptyKeepingSort() const;
};
