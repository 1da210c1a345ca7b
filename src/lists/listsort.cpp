// The list's column-click sort. The old list rewrote numeric and date cells into fixed-width key
// texts, sorted texts, and put the cells back; here the keys are computed as numbers, which gives the
// same order (the key texts' order is the numbers' order over the range the texts could express; the
// rare values beyond it are sorted by the key texts themselves).
#include "lists/cellformat.h"
#include "lists/listmodel_p.h"
#include "lists/sortkeys.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>

using liststore::Cell;
using liststore::Column;
using liststore::Display;

namespace {
// A value with more than 15 significant digits was keyed from its 15-digit rounding.
double fifteenDigits(double v) {
    return std::fabs(v) >= 1e15 ? QString::number(v, 'e', 14).toDouble() : v;
}
} // namespace

bool ListModel::Impl::cellNumber(size_t src, int col, double* value) const {
    const Column& c = cols[size_t(col)];
    switch (c.cellClass(src)) {
    case Cell::Null:
        return false;
    case Cell::Int: {
        const qint64 v = c.intAt(src);
        if (c.display == Display::YesNo || (c.naForMinusOne && v == -1))
            return false;
        *value = fifteenDigits(double(v));
        return true;
    }
    case Cell::Real: {
        const double v = c.realAt(src);
        if (c.display == Display::YesNo || (c.naForMinusOne && v == -1.0) || !std::isfinite(v))
            return false;
        if (c.display == Display::Numbers && !(isWholeNumber(c.kind) && v == std::trunc(v))) {
            const double shown = RoundTo2(v);
            if (std::fabs(shown) < 1e13) { // otherwise the text holds fewer decimals than that
                *value = shown;
                return true;
            }
        } else if (std::fabs(v) < 1e15) {
            *value = v;
            return true;
        }
        break;
    }
    case Cell::Text:
        break;
    }
    QString s;
    cellText(src, col, s);
    return ParseListNumber(s, value);
}

qint64 ListModel::Impl::cellDate(size_t src, int col, QString& scratch) const {
    cellText(src, col, scratch);
    return DateSortKey(scratch);
}

namespace {
template <typename Key>
struct Item {
    Key key;
    uint32_t pos; // current view position: ties keep it, which makes the sort stable
};

template <typename Key>
void sortItems(std::vector<Item<Key>>& items, bool descending) {
    if (descending)
        std::sort(items.begin(), items.end(), [](const Item<Key>& a, const Item<Key>& b) {
            return a.key > b.key || (a.key == b.key && a.pos < b.pos);
        });
    else
        std::sort(items.begin(), items.end(), [](const Item<Key>& a, const Item<Key>& b) {
            return a.key < b.key || (a.key == b.key && a.pos < b.pos);
        });
}

// Texts without case: ASCII folded to lower case byte by byte, anything else case-folded first.
// Sorted by 8 bytes at a time, going deeper only inside runs that are still equal.
struct TextSorter {
    std::vector<std::string_view> texts; // by current view position
    bool descending = false;

    static uint64_t chunk(std::string_view s, size_t depth) {
        uint64_t k = 0;
        const size_t from = depth * 8;
        for (size_t i = 0; i < 8; ++i) {
            unsigned char c = from + i < s.size() ? static_cast<unsigned char>(s[from + i]) : 0;
            if (c >= 'A' && c <= 'Z')
                c = static_cast<unsigned char>(c + 32);
            k = (k << 8) | c;
        }
        return k;
    }

    void sort(std::vector<Item<uint64_t>>& items, size_t begin, size_t end, size_t depth) {
        for (size_t i = begin; i < end; ++i)
            items[i].key = chunk(texts[items[i].pos], depth);
        std::vector<Item<uint64_t>> part(items.begin() + std::ptrdiff_t(begin), items.begin() + std::ptrdiff_t(end));
        sortItems(part, descending);
        std::copy(part.begin(), part.end(), items.begin() + std::ptrdiff_t(begin));
        for (size_t i = begin; i < end;) {
            size_t j = i + 1;
            while (j < end && items[j].key == items[i].key)
                ++j;
            if (j - i > 1) {
                bool longer = false;
                for (size_t k = i; k < j && !longer; ++k)
                    longer = texts[items[k].pos].size() > (depth + 1) * 8;
                if (longer)
                    sort(items, i, j, depth + 1);
            }
            i = j;
        }
    }
};
} // namespace

std::vector<uint32_t> ListModel::Impl::sortedOrder(int col, int sortOrder) const {
    const size_t n = order.size();
    const bool descending = sortOrder == ListModel::Descending;
    const QString tag = cols[size_t(col)].tag.toUpper();
    std::vector<uint32_t> result(n);

    if (tag == ListModel::NumberTag) {
        // Non-numbers (an empty key) first, then by value.
        std::vector<Item<double>> items(n);
        bool plain = true;
        for (size_t p = 0; p < n; ++p) {
            double v = 0;
            if (cellNumber(order[p], col, &v)) {
                const double a = std::fabs(v);
                plain = plain && (a == 0.0 || (a >= 1e-15 && a < 1e30));
            } else {
                v = -std::numeric_limits<double>::infinity();
            }
            items[p] = {v, uint32_t(p)};
        }
        if (plain) {
            sortItems(items, descending);
        } else {
            // Values beyond 30 integer digits or below 30 decimals: sort the key texts as written.
            std::vector<std::string> keys(n);
            QString s;
            for (size_t p = 0; p < n; ++p) {
                cellText(order[p], col, s);
                keys[p] = NumberSortText(s).toStdString();
            }
            std::vector<uint32_t> idx(n);
            for (size_t p = 0; p < n; ++p)
                idx[p] = uint32_t(p);
            std::stable_sort(idx.begin(), idx.end(), [&](uint32_t a, uint32_t b) {
                return descending ? keys[b] < keys[a] : keys[a] < keys[b];
            });
            for (size_t p = 0; p < n; ++p)
                items[p].pos = idx[p];
        }
        for (size_t p = 0; p < n; ++p)
            result[p] = order[items[p].pos];
        return result;
    }

    if (tag == ListModel::DateTag) {
        std::vector<Item<qint64>> items(n);
        QString scratch;
        for (size_t p = 0; p < n; ++p)
            items[p] = {cellDate(order[p], col, scratch), uint32_t(p)};
        sortItems(items, descending);
        for (size_t p = 0; p < n; ++p)
            result[p] = order[items[p].pos];
        return result;
    }

    // Text: stored ASCII texts are compared where they lie; other cells are written out first.
    const Column& c = cols[size_t(col)];
    TextSorter sorter;
    sorter.descending = descending;
    sorter.texts.resize(n);
    std::vector<std::string> written; // texts that are not stored as they are compared
    std::vector<std::pair<size_t, size_t>> writtenAt;
    QString s;
    for (size_t p = 0; p < n; ++p) {
        const size_t src = order[p];
        if (c.cellClass(src) == Cell::Text) {
            const std::string_view t = c.textAt(src);
            bool ascii = true;
            for (char ch : t)
                ascii = ascii && static_cast<unsigned char>(ch) < 0x80;
            if (ascii) {
                sorter.texts[p] = t;
                continue;
            }
        }
        cellText(src, col, s);
        written.push_back(s.toCaseFolded().toStdString());
        writtenAt.emplace_back(p, written.size() - 1);
    }
    for (const auto& [p, w] : writtenAt)
        sorter.texts[p] = written[w];
    std::vector<Item<uint64_t>> items(n);
    for (size_t p = 0; p < n; ++p)
        items[p] = {0, uint32_t(p)};
    if (n > 1)
        sorter.sort(items, 0, n, 0);
    for (size_t p = 0; p < n; ++p)
        result[p] = order[items[p].pos];
    return result;
}

void ListModel::sortByColumn(int col) {
    if (col < 0 || size_t(col) >= d->cols.size())
        return;
    // The order toggles on every click, whichever column was sorted before.
    setSort(col, (d->sortOrder + 1) % 2);
}

void ListModel::setSort(int key, int order) {
    d->sortKey = key;
    d->sortOrder = order == Descending ? Descending : Ascending;
    d->sorted = true;
    if (key < 0 || size_t(key) >= d->cols.size() || d->rows == 0)
        return;
    std::vector<uint32_t> next = d->sortedOrder(key, d->sortOrder);

    Q_EMIT layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    const QModelIndexList before = persistentIndexList();
    std::vector<uint32_t> sources;
    sources.reserve(size_t(before.size()));
    for (const QModelIndex& i : before)
        sources.push_back(d->order[size_t(i.row())]);
    d->order = std::move(next);
    d->inverse.clear();
    QModelIndexList after;
    after.reserve(before.size());
    for (qsizetype k = 0; k < before.size(); ++k)
        after.append(index(int(d->viewOf(sources[size_t(k)])), before[k].column()));
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

int ListModel::sortKey() const { return d->sortKey; }
int ListModel::sortOrder() const { return d->sortOrder; }
bool ListModel::isSorted() const { return d->sorted; }

int ListModel::sourceRow(int row) const {
    return row >= 0 && size_t(row) < d->rows ? int(d->order[size_t(row)]) : -1;
}

int ListModel::viewRow(int sourceRow) const {
    return sourceRow >= 0 && size_t(sourceRow) < d->rows ? int(d->viewOf(uint32_t(sourceRow))) : -1;
}
