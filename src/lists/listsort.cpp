// The list's column-click sort. Numeric and date cells are ordered as their fixed-width key texts
// (sortkeys.h) would order them; the keys are computed as numbers, which gives that order over the
// range the texts can express, and the rare values beyond it are sorted by the key texts themselves.
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
// A sort key and the row's current view position. Keys are unsigned numbers whose order is the sort
// order (descending keys are inverted), and the radix sort below is stable, so equal keys keep the
// current view order: the sort is stable in both directions.
struct KeyPos {
    uint64_t key;
    uint32_t pos;
};

uint64_t orderedDouble(double v) {
    uint64_t u;
    std::memcpy(&u, &v, sizeof u);
    const uint64_t sign = uint64_t(1) << 63;
    return (u & sign) ? ~u : (u | sign);
}

uint64_t orderedInt(qint64 v) {
    return uint64_t(v) ^ (uint64_t(1) << 63);
}

void radixSort(KeyPos* v, size_t n, std::vector<KeyPos>& tmp) {
    if (n < 64) {
        std::stable_sort(v, v + n, [](const KeyPos& a, const KeyPos& b) { return a.key < b.key; });
        return;
    }
    if (tmp.size() < n)
        tmp.resize(n);
    std::vector<size_t> counts(8 * 256, 0);
    for (size_t i = 0; i < n; ++i) {
        const uint64_t k = v[i].key;
        for (int b = 0; b < 8; ++b)
            ++counts[size_t(b) * 256 + ((k >> (8 * b)) & 0xFF)];
    }
    KeyPos* src = v;
    KeyPos* dst = tmp.data();
    for (int b = 0; b < 8; ++b) {
        size_t* c = &counts[size_t(b) * 256];
        if (c[(src[0].key >> (8 * b)) & 0xFF] == n)
            continue; // every key has the same byte here
        size_t sum = 0;
        for (int i = 0; i < 256; ++i) {
            const size_t t = c[i];
            c[i] = sum;
            sum += t;
        }
        for (size_t i = 0; i < n; ++i)
            dst[c[(src[i].key >> (8 * b)) & 0xFF]++] = src[i];
        std::swap(src, dst);
    }
    if (src != v)
        std::copy(src, src + n, v);
}

// Texts without case: ASCII folded to lower case byte by byte (other texts arrive case-folded), sorted
// 8 bytes at a time, going deeper only inside runs that are still equal.
struct TextSorter {
    std::vector<std::string_view> texts; // by current view position
    bool descending = false;
    std::vector<KeyPos> tmp;

    static unsigned char fold(char ch) {
        const unsigned char c = static_cast<unsigned char>(ch);
        return (c >= 'A' && c <= 'Z') ? static_cast<unsigned char>(c + 32) : c;
    }

    static uint64_t chunk(std::string_view s, size_t from) {
        uint64_t k = 0;
        for (size_t i = 0; i < 8; ++i)
            k = (k << 8) | (from + i < s.size() ? fold(s[from + i]) : 0);
        return k;
    }

    void sort(KeyPos* items, size_t n, size_t offset) {
        // Skip what all texts of the range have in common.
        const std::string_view first = texts[items[0].pos];
        size_t common = first.size() > offset ? first.size() - offset : 0;
        size_t longest = first.size();
        for (size_t i = 1; i < n; ++i) {
            const std::string_view t = texts[items[i].pos];
            longest = std::max(longest, t.size());
            size_t k = 0;
            while (k < common && offset + k < t.size() && fold(t[offset + k]) == fold(first[offset + k]))
                ++k;
            common = k;
        }
        offset += common;
        if (longest <= offset)
            return; // all equal: they stay in view order
        for (size_t i = 0; i < n; ++i) {
            const uint64_t k = chunk(texts[items[i].pos], offset);
            items[i].key = descending ? ~k : k;
        }
        radixSort(items, n, tmp);
        for (size_t i = 0; i < n;) {
            size_t j = i + 1;
            while (j < n && items[j].key == items[i].key)
                ++j;
            if (j - i > 1)
                sort(items + i, j - i, offset + 8);
            i = j;
        }
    }
};
} // namespace

std::vector<uint32_t> ListModel::Impl::sortedOrder(int col, int direction) const {
    return sortRows(col, direction, order);
}

std::vector<uint32_t> ListModel::Impl::sortRows(int col, int direction,
                                                const std::vector<uint32_t>& base) const {
    const size_t n = base.size();
    const bool descending = direction == ListModel::Descending;
    const QString tag = cols[size_t(col)].tag.toUpper();
    const Column& c = cols[size_t(col)];
    std::vector<uint32_t> result(n);
    std::vector<KeyPos> items(n);
    std::vector<KeyPos> tmp;
    auto finish = [&] {
        for (size_t p = 0; p < n; ++p)
            result[p] = base[items[p].pos];
        return result;
    };

    if (tag == ListModel::NumberTag) {
        // Non-numbers (an empty key) first, then by value.
        bool plain = true;
        for (size_t p = 0; p < n; ++p) {
            double v = 0;
            if (cellNumber(base[p], col, &v)) {
                const double a = std::fabs(v);
                plain = plain && (a == 0.0 || (a >= 1e-15 && a < 1e30));
            } else {
                v = -std::numeric_limits<double>::infinity();
            }
            const uint64_t k = orderedDouble(v == 0.0 ? 0.0 : v); // -0 sorts as 0
            items[p] = {descending ? ~k : k, uint32_t(p)};
        }
        if (plain) {
            radixSort(items.data(), n, tmp);
            return finish();
        }
        // Values beyond 30 integer digits or below 30 decimals: sort the key texts as written.
        std::vector<std::string> keys(n);
        QString s;
        for (size_t p = 0; p < n; ++p) {
            cellText(base[p], col, s);
            keys[p] = NumberSortText(s).toStdString();
        }
        for (size_t p = 0; p < n; ++p)
            items[p].pos = uint32_t(p);
        std::stable_sort(items.begin(), items.end(), [&](const KeyPos& a, const KeyPos& b) {
            return descending ? keys[b.pos] < keys[a.pos] : keys[a.pos] < keys[b.pos];
        });
        return finish();
    }

    if (tag == ListModel::DateTag) {
        // Keys are read in storage base (the texts lie in that base) and then placed by view row.
        std::vector<qint64> byStored(n);
        QString scratch;
        const bool ascii = c.asciiOnly;
        for (size_t src = 0; src < n; ++src) {
            if (ascii && c.cellClass(src) == Cell::Text) {
                const std::string_view t = c.textAt(src);
                byStored[src] = DateSortKey(QLatin1StringView(t.data(), qsizetype(t.size())));
            } else {
                byStored[src] = cellDate(src, col, scratch);
            }
        }
        for (size_t p = 0; p < n; ++p) {
            const uint64_t k = orderedInt(byStored[base[p]]);
            items[p] = {descending ? ~k : k, uint32_t(p)};
        }
        radixSort(items.data(), n, tmp);
        return finish();
    }

    // Text: stored ASCII texts are compared where they lie; other cells are written out first.
    TextSorter sorter;
    sorter.descending = descending;
    sorter.texts.resize(n);
    std::vector<std::string> written; // texts that are not stored as they are compared
    std::vector<std::pair<size_t, size_t>> writtenAt;
    QString s;
    for (size_t p = 0; p < n; ++p) {
        const size_t src = base[p];
        if (c.cellClass(src) == Cell::Text) {
            const std::string_view t = c.textAt(src);
            bool ascii = true;
            for (size_t k = 0; !c.asciiOnly && ascii && k < t.size(); ++k)
                ascii = static_cast<unsigned char>(t[k]) < 0x80;
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
    for (size_t p = 0; p < n; ++p)
        items[p] = {0, uint32_t(p)};
    if (n > 1)
        sorter.sort(items.data(), n, 0);
    return finish();
}

void ListModel::sortByColumn(int col) {
    if (col < 0 || size_t(col) >= d->cols.size())
        return;
    // The order toggles on every click, whichever column was sorted before.
    setSort(col, (d->sortOrder + 1) % 2);
}

void ListModel::setSort(int key, int order) {
    d->sortKey = key < 0 ? -1 : key;
    d->sortOrder = order == Descending ? Descending : Ascending;
    d->sorted = key >= 0;
    if (key < 0 || size_t(key) >= d->cols.size() || d->rows == 0)
        return;
    // While the whole list is being sorted on another thread the choice is only noted: that sort
    // is redone for it when it ends.
    if (m_background)
        return;
    showOrder(d->sortedWithFilter(key, d->sortOrder));
}

void ListModel::showOrder(std::vector<uint32_t> next) {
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

int ListModel::sortKey() const {
    return d->sortKey;
}
int ListModel::sortOrder() const {
    return d->sortOrder;
}
bool ListModel::isSorted() const {
    return d->sorted;
}

int ListModel::sourceRow(int row) const {
    return row >= 0 && size_t(row) < d->shown() ? int(d->order[size_t(row)]) : -1;
}

int ListModel::viewRow(int sourceRow) const {
    if (sourceRow < 0 || size_t(sourceRow) >= d->rows)
        return -1;
    const uint32_t view = d->viewOf(uint32_t(sourceRow));
    return view == Impl::Hidden ? -1 : int(view);
}
