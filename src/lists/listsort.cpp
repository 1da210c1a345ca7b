// The list's column-click sort. Numeric and date cells are ordered as their fixed-width key texts
// (sortkeys.h) would order them; the keys are computed as numbers, which gives that order over the
// range the texts can express, and the rare values beyond it are sorted by the key texts themselves.
// Texts are ordered without case. A column's keys are turned into ranks once and kept with the model
// (keptranks.h): sorting the column again, in either direction, only reorders the rows by rank.
#include "lists/cellformat.h"
#include "lists/keptranks.h"
#include "lists/listmodel_p.h"
#include "lists/sortkeys.h"
#include "lists/textranks.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
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
uint64_t orderedDouble(double v) {
    uint64_t u;
    std::memcpy(&u, &v, sizeof u);
    const uint64_t sign = uint64_t(1) << 63;
    return (u & sign) ? ~u : (u | sign);
}

uint64_t orderedInt(qint64 v) {
    return uint64_t(v) ^ (uint64_t(1) << 63);
}

enum KeyKind { TextKey, NumberKey, DateKey };

// The keys of each kind, read through the model's cells (Model is ListModel::Impl).

// Texts without case: every cell as shown, case-folded. Stored texts are folded where they lie.
template <typename Model> class TextSource : public ranks::RankSource {
public:
    TextSource(const Model& d, int col) : m_d(d), m_col(col), m_c(d.cols[size_t(col)]) {}

    uint32_t rank(const ranks::Rows& rows, uint32_t* out) override {
        uint32_t groups = 0;
        if (rankFew(rows, out, &groups))
            return groups;
        ranks::FoldedTexts texts;
        QString s;
        for (size_t i = 0; i < rows.size(); ++i) {
            const size_t r = rows[i];
            if (m_c.cellClass(r) == Cell::Text) {
                texts.add(m_c.textAt(r));
            } else {
                m_d.cellText(r, m_col, s);
                texts.add(s);
            }
        }
        return ranks::RankTexts(texts, out);
    }

    int compare(size_t a, size_t b) override {
        fold(a, m_a);
        if (b != m_bRow) { // a merge compares one new row with many old ones
            fold(b, m_b);
            m_bRow = b;
        }
        return m_a.compare(m_b);
    }

private:
    // A column of few distinct texts (types, makers) keeps each text once: its cells are ranked by
    // ranking those. False, having read only the first rows, when the texts are many.
    bool rankFew(const ranks::Rows& rows, uint32_t* out, uint32_t* groups) const {
        constexpr size_t Most = 4096, Slots = 2 * Most;
        std::vector<const char*> slotText(Slots, nullptr);
        std::vector<uint32_t> slotId(Slots);
        ranks::FoldedTexts texts;
        uint32_t nullId = UINT32_MAX;
        for (size_t i = 0; i < rows.size(); ++i) {
            const size_t r = rows[i];
            const Cell cls = m_c.cellClass(r);
            if (cls == Cell::Null) {
                if (nullId == UINT32_MAX) {
                    nullId = uint32_t(texts.size());
                    texts.addFolded({});
                }
                out[i] = nullId;
                continue;
            }
            if (cls != Cell::Text)
                return false;
            const std::string_view t = m_c.textAt(r);
            size_t slot = (uintptr_t(t.data()) * 0x9E3779B97F4A7C15ull) >> 51; // 13 bits: Slots
            while (slotText[slot] && slotText[slot] != t.data())
                slot = (slot + 1) % Slots;
            if (!slotText[slot]) {
                if (texts.size() == Most)
                    return false;
                slotText[slot] = t.data();
                slotId[slot] = uint32_t(texts.size());
                texts.add(t);
            }
            out[i] = slotId[slot];
        }
        std::vector<uint32_t> rankOf(texts.size());
        *groups = ranks::RankTexts(texts, rankOf.data());
        for (size_t i = 0; i < rows.size(); ++i)
            out[i] = rankOf[out[i]];
        return true;
    }

    void fold(size_t r, std::string& out) {
        out.clear();
        if (m_c.cellClass(r) == Cell::Text) {
            ranks::FoldUtf8(m_c.textAt(r), out);
        } else {
            m_d.cellText(r, m_col, m_scratch);
            const QByteArray f = m_scratch.toCaseFolded().toUtf8();
            out.assign(f.constData(), size_t(f.size()));
        }
    }

    const Model& m_d;
    const int m_col;
    const Column& m_c;
    QString m_scratch;
    std::string m_a, m_b;
    size_t m_bRow = size_t(-1);
};

// Numbers by value; cells that are not numbers (an empty key) first.
template <typename Model> class NumberSource : public ranks::RankSource {
public:
    NumberSource(const Model& d, int col) : m_d(d), m_col(col) {}

    bool keys(const ranks::Rows& rows, std::vector<uint64_t>& out) override {
        bool plain = true;
        out.resize(rows.size());
        for (size_t i = 0; i < rows.size(); ++i)
            out[i] = key(rows[i], &plain);
        return plain;
    }

    uint32_t rank(const ranks::Rows& rows, uint32_t* out) override {
        std::vector<uint64_t> keys;
        if (this->keys(rows, keys))
            return ranks::RankKeys(keys.data(), keys.size(), out);
        // Values beyond 30 integer digits or below 30 decimals: the key texts as written.
        keys = {};
        ranks::FoldedTexts texts;
        for (size_t i = 0; i < rows.size(); ++i)
            texts.addFolded(keyText(rows[i]));
        return ranks::RankTexts(texts, out);
    }

    int compare(size_t a, size_t b) override {
        bool plain = true;
        const uint64_t ka = key(a, &plain), kb = key(b, &plain);
        if (plain)
            return ka < kb ? -1 : ka > kb ? 1 : 0;
        return keyText(a).compare(keyText(b));
    }

private:
    uint64_t key(size_t r, bool* plain) const {
        double v = 0;
        if (m_d.cellNumber(r, m_col, &v)) {
            const double a = std::fabs(v);
            *plain = *plain && (a == 0.0 || (a >= 1e-15 && a < 1e30));
        } else {
            v = -std::numeric_limits<double>::infinity();
        }
        return orderedDouble(v == 0.0 ? 0.0 : v); // -0 sorts as 0
    }

    std::string keyText(size_t r) {
        m_d.cellText(r, m_col, m_scratch);
        return NumberSortText(m_scratch).toStdString();
    }

    const Model& m_d;
    const int m_col;
    QString m_scratch;
};

// Dates by time; cells that are not dates first.
template <typename Model> class DateSource : public ranks::RankSource {
public:
    DateSource(const Model& d, int col) : m_d(d), m_col(col), m_c(d.cols[size_t(col)]) {}

    bool keys(const ranks::Rows& rows, std::vector<uint64_t>& out) override {
        out.resize(rows.size());
        for (size_t i = 0; i < rows.size(); ++i)
            out[i] = key(rows[i]);
        return true;
    }

    uint32_t rank(const ranks::Rows& rows, uint32_t* out) override {
        std::vector<uint64_t> keys;
        this->keys(rows, keys);
        return ranks::RankKeys(keys.data(), keys.size(), out);
    }

    int compare(size_t a, size_t b) override {
        const uint64_t ka = key(a), kb = key(b);
        return ka < kb ? -1 : ka > kb ? 1 : 0;
    }

private:
    uint64_t key(size_t r) {
        if (m_c.asciiOnly && m_c.cellClass(r) == Cell::Text) {
            const std::string_view t = m_c.textAt(r);
            return orderedInt(DateSortKey(QLatin1StringView(t.data(), qsizetype(t.size()))));
        }
        return orderedInt(m_d.cellDate(r, m_col, m_scratch));
    }

    const Model& m_d;
    const int m_col;
    const Column& m_c;
    QString m_scratch;
};
} // namespace

std::vector<uint32_t> ListModel::Impl::sortedOrder(int col, int direction) const {
    return sortRows(col, direction, order);
}

std::vector<uint32_t> ListModel::Impl::sortRows(int col, int direction,
                                                const std::vector<uint32_t>& base) const {
    const QString tag = cols[size_t(col)].tag.toUpper();
    const KeyKind kind = tag == ListModel::NumberTag ? NumberKey
                         : tag == ListModel::DateTag ? DateKey
                                                     : TextKey;
    std::unique_ptr<ranks::RankSource> source;
    switch (kind) {
    case NumberKey:
        source = std::make_unique<NumberSource<Impl>>(*this, col);
        break;
    case DateKey:
        source = std::make_unique<DateSource<Impl>>(*this, col);
        break;
    case TextKey:
        source = std::make_unique<TextSource<Impl>>(*this, col);
        break;
    }
    return keptRanks.sorted(col, kind, *source, rows, base, direction == ListModel::Descending);
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
