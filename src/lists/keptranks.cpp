#include "lists/keptranks.h"
#include "lists/radixsort.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace ranks {

void ColumnRanks::cover(RankSource& source, size_t n) {
    const size_t m = m_rank.size();
    if (n <= m)
        return;
    if (m == 0) {
        m_rank.resize(n);
        m_groups = source.rank(Rows{nullptr, 0, n}, m_rank.data());
        return;
    }
    // The new rows are merged in one of two ways. Ranked together with one row standing for each
    // value ranked before, when those are few beside the new rows (the rest of a long list after its
    // first slice); or ranked on their own and each new value looked for among the old ones, when
    // the new rows are few (a slice added to a long list).
    const double g = m_groups, f = double(n - m);
    if (g + f <= f * (std::log2(g / f + 1) + 2))
        mergeByRepresentatives(source, n);
    else
        mergeBySearch(source, n);
}

void ColumnRanks::mergeByRepresentatives(RankSource& source, size_t n) {
    const size_t m = m_rank.size(), g = m_groups;
    std::vector<uint32_t> rows(g + (n - m));
    for (size_t r = 0; r < m; ++r)
        rows[m_rank[r]] = uint32_t(r);
    for (size_t r = m; r < n; ++r)
        rows[g + (r - m)] = uint32_t(r);
    std::vector<uint32_t> together(rows.size());
    const uint32_t groups = source.rank(Rows{rows.data(), 0, rows.size()}, together.data());
    const std::vector<uint32_t> oldMap(together.begin(), together.begin() + ptrdiff_t(g));
    const std::vector<uint32_t> fresh(together.begin() + ptrdiff_t(g), together.end());
    renumber(oldMap, fresh, groups);
}

void ColumnRanks::mergeBySearch(RankSource& source, size_t n) {
    const size_t m = m_rank.size(), g = m_groups;
    std::vector<uint32_t> fresh(n - m);
    const uint32_t freshGroups = source.rank(Rows{nullptr, m, n - m}, fresh.data());
    // One row standing for each value, old and new.
    std::vector<uint32_t> oldRow(g), newRow(freshGroups);
    for (size_t r = 0; r < m; ++r)
        oldRow[m_rank[r]] = uint32_t(r);
    for (size_t r = 0; r < fresh.size(); ++r)
        newRow[fresh[r]] = uint32_t(m + r);

    // The new values come in order, so each is looked for from where the one before it fell: a
    // galloping search, cheap whether a few values fall among many or many among a few.
    std::vector<uint32_t> oldMap(g), newMap(freshGroups);
    uint32_t next = 0;
    size_t done = 0; // old values renumbered so far
    for (uint32_t j = 0; j < freshGroups; ++j) {
        const size_t row = newRow[j];
        auto below = [&](size_t i) { return source.compare(oldRow[i], row) < 0; };
        size_t lo = done, hi = g, step = 1;
        for (size_t probe = lo; probe < g; probe = lo + step - 1, step *= 2) {
            if (!below(probe)) {
                hi = probe;
                break;
            }
            lo = probe + 1;
        }
        while (lo < hi) {
            const size_t mid = lo + (hi - lo) / 2;
            if (below(mid))
                lo = mid + 1;
            else
                hi = mid;
        }
        while (done < lo)
            oldMap[done++] = next++;
        if (done < g && source.compare(oldRow[done], row) == 0)
            oldMap[done++] = next;
        newMap[j] = next++;
    }
    while (done < g)
        oldMap[done++] = next++;
    for (uint32_t& r : fresh)
        r = newMap[r];
    renumber(oldMap, fresh, next);
}

void ColumnRanks::renumber(const std::vector<uint32_t>& oldMap, const std::vector<uint32_t>& fresh,
                           uint32_t groups) {
    const size_t m = m_rank.size();
    std::vector<uint32_t> merged(m + fresh.size());
    for (size_t r = 0; r < m; ++r)
        merged[r] = oldMap[m_rank[r]];
    std::copy(fresh.begin(), fresh.end(), merged.begin() + ptrdiff_t(m));
    m_rank = std::move(merged);
    m_groups = groups;
}

std::vector<uint32_t> ColumnRanks::sortFirst(RankSource& source, const std::vector<uint32_t>& order,
                                             bool descending) {
    const size_t n = order.size();
    std::vector<uint64_t> keys;
    if (!m_rank.empty() || !source.keys(Rows{nullptr, 0, n}, keys)) {
        cover(source, n);
        return SortByRanks(order, *this, descending);
    }
    // Sorted in view order by the keys themselves, as a first sort would; the ranks are read off
    // the result.
    auto items = std::make_unique_for_overwrite<radix::KeyRow[]>(n);
    for (size_t p = 0; p < n; ++p)
        items[p] = {descending ? ~keys[order[p]] : keys[order[p]], order[p], 0};
    keys = {};
    radix::Scratch<radix::KeyRow> tmp;
    radix::sortKeyRows(items.get(), n, tmp);
    std::vector<uint32_t> result(n);
    m_rank.resize(n);
    uint32_t group = 0;
    for (size_t p = 0; p < n; ++p) {
        const size_t at = descending ? n - 1 - p : p; // ranks count up from the smallest value
        if (p > 0 && items[at].key != items[descending ? at + 1 : at - 1].key)
            ++group;
        m_rank[items[at].row] = group;
        result[p] = items[p].row;
    }
    m_groups = n > 0 ? group + 1 : 0;
    return result;
}

std::vector<uint32_t> KeptRanks::sorted(int column, int kind, RankSource& source, size_t n,
                                        const std::vector<uint32_t>& order, bool descending) {
    auto it =
        std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& e) { return e.column == column; });
    if (it == m_entries.end()) {
        m_entries.insert(m_entries.begin(), Entry{column, kind, ColumnRanks()});
        if (m_entries.size() > Kept)
            m_entries.pop_back();
    } else {
        if (it->kind != kind)
            *it = Entry{column, kind, ColumnRanks()};
        std::rotate(m_entries.begin(), it, it + 1);
    }
    ColumnRanks& r = m_entries.front().ranks;
    std::vector<uint32_t> result;
    if (r.rows() == 0 && order.size() == n) {
        result = r.sortFirst(source, order, descending);
    } else {
        r.cover(source, n);
        result = SortByRanks(order, r, descending);
    }
    size_t b = 0;
    for (const Entry& e : m_entries)
        b += e.ranks.bytes();
    m_bytes.store(b, std::memory_order_relaxed);
    return result;
}

bool KeptRanks::has(int column, int kind) const {
    return std::any_of(m_entries.begin(), m_entries.end(),
                       [&](const Entry& e) { return e.column == column && e.kind == kind; });
}

std::vector<uint32_t> SortByRanks(const std::vector<uint32_t>& order, const ColumnRanks& ranks,
                                  bool descending) {
    const size_t n = order.size();
    const uint32_t top = ranks.groups() > 0 ? ranks.groups() - 1 : 0;
    if (n == ranks.rows() && ranks.groups() == n) {
        // Every row shown and every value distinct (names): the ranks are the places.
        std::vector<uint32_t> result(n);
        for (size_t r = 0; r < n; ++r)
            result[descending ? top - ranks[r] : ranks[r]] = uint32_t(r);
        return result;
    }
    auto items = std::make_unique_for_overwrite<uint64_t[]>(n);
    for (size_t p = 0; p < n; ++p) {
        const uint32_t r = ranks[order[p]];
        items[p] = (uint64_t(descending ? top - r : r) << 32) | order[p];
    }
    radix::Scratch<uint64_t> tmp;
    radix::sortByHighWord(items.get(), n, std::bit_width(top), tmp);
    std::vector<uint32_t> result(n);
    for (size_t p = 0; p < n; ++p)
        result[p] = uint32_t(items[p]);
    return result;
}

} // namespace ranks
