// The bold marks of the find dialog's "Mark All", kept by stored row so that sorting keeps them.
#include "lists/listmodel_p.h"

void ListModel::setBold(int row, int col, bool bold, bool notify) {
    if (row < 0 || size_t(row) >= d->shown() || col < 0 || size_t(col) >= d->cols.size())
        return;
    if (d->cellBold.size() < d->cols.size())
        d->cellBold.resize(d->cols.size());
    auto& bits = d->cellBold[size_t(col)];
    const size_t src = d->order[size_t(row)];
    if (bits.size() <= src / 64) {
        if (!bold)
            return;
        bits.resize((d->rows + 63) / 64, 0);
    }
    const uint64_t mask = uint64_t(1) << (src % 64);
    bits[src / 64] = bold ? (bits[src / 64] | mask) : (bits[src / 64] & ~mask);
    if (notify) {
        const QModelIndex i = index(row, col);
        Q_EMIT dataChanged(i, i, {Qt::FontRole});
    }
}

void ListModel::setRowBold(int row, bool bold, bool notify) {
    if (row < 0 || size_t(row) >= d->shown())
        return;
    uint8_t& f = d->flags[d->order[size_t(row)]];
    f = bold ? (f | listflags::RowBold) : (f & ~listflags::RowBold);
    if (notify && !d->cols.empty())
        Q_EMIT dataChanged(index(row, 0), index(row, int(d->cols.size()) - 1), {Qt::FontRole});
}

bool ListModel::isCellBold(int row, int col) const {
    if (row < 0 || size_t(row) >= d->shown() || col < 0 || size_t(col) >= d->cellBold.size())
        return false;
    const auto& bits = d->cellBold[size_t(col)];
    const size_t src = d->order[size_t(row)];
    return src / 64 < bits.size() && (bits[src / 64] >> (src % 64)) & 1;
}

bool ListModel::isRowBold(int row) const {
    return row >= 0 && size_t(row) < d->shown() && (d->flags[d->order[size_t(row)]] & listflags::RowBold);
}

bool ListModel::isBold(int row, int col) const {
    return isRowBold(row) || isCellBold(row, col);
}

void ListModel::clearBold() {
    d->cellBold.clear();
    for (size_t r = 0; r < d->rows; ++r)
        d->flags[r] &= ~listflags::RowBold;
    notifyBoldChanged();
}

void ListModel::notifyBoldChanged() {
    if (d->shown() && !d->cols.empty())
        Q_EMIT dataChanged(index(0, 0), index(int(d->shown()) - 1, int(d->cols.size()) - 1), {Qt::FontRole});
}
