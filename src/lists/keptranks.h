#pragma once
// The sort keys the list keeps for a column it has sorted: one rank per stored row (its place among
// the column's distinct values, textranks.h), so that sorting that column again, in either direction,
// is a radix sort of small integers. Rows appended since (a list that loads in slices) are ranked on
// their own and merged in: the rows ranked before are renumbered, never read again.
//
// Only the columns sorted last keep their ranks (4 bytes a row each).
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace ranks {

// Rows to rank: [from, from + count), or list[0, count) when a list is given.
struct Rows {
    const uint32_t* list = nullptr;
    size_t from = 0;
    size_t count = 0;
    size_t operator[](size_t i) const { return list ? list[i] : from + i; }
    size_t size() const { return count; }
};

// What a column's rows are ordered by, for one kind of key.
class RankSource {
public:
    virtual ~RankSource() = default;
    // Ranks the rows among themselves (out[i] for rows[i]); returns the number of distinct values.
    virtual uint32_t rank(const Rows& rows, uint32_t* out) = 0;
    // Orders two rows: < 0, 0 (equal values) or > 0.
    virtual int compare(size_t a, size_t b) = 0;
    // Numbers whose order is the order of the rows (out[i] for rows[i]), for keys that are numbers;
    // false otherwise.
    virtual bool keys(const Rows& rows, std::vector<uint64_t>& out) {
        (void)rows, (void)out;
        return false;
    }
};

class ColumnRanks {
public:
    // The rows ranked: [0, rows()).
    size_t rows() const { return m_rank.size(); }
    uint32_t groups() const { return m_groups; }
    uint32_t operator[](size_t row) const { return m_rank[row]; }
    // Ranks rows [rows(), n), the rows appended since the last call, and merges them in.
    void cover(RankSource& source, size_t n);
    // With no rows ranked yet and order holding every row [0, n): the rows of order sorted (stable),
    // ranking them on the way where the keys are numbers; otherwise cover() and SortByRanks().
    std::vector<uint32_t> sortFirst(RankSource& source, const std::vector<uint32_t>& order, bool descending);
    size_t bytes() const { return m_rank.capacity() * sizeof(uint32_t); }

private:
    void mergeByRepresentatives(RankSource& source, size_t n);
    void mergeBySearch(RankSource& source, size_t n);
    void renumber(const std::vector<uint32_t>& oldMap, const std::vector<uint32_t>& fresh, uint32_t groups);
    std::vector<uint32_t> m_rank; // by stored row
    uint32_t m_groups = 0;
};

// The ranks of the columns sorted last, by column and kind of key.
class KeptRanks {
public:
    static constexpr size_t Kept = 2;
    // The rows of order (stored rows [0, n), all or some) sorted by a column for a kind of key,
    // stable. The column's ranks are made on first use (a column re-tagged is ranked afresh) and
    // extended with the rows appended since.
    std::vector<uint32_t> sorted(int column, int kind, RankSource& source, size_t n,
                                 const std::vector<uint32_t>& order, bool descending);
    bool has(int column, int kind) const;
    // May be asked from another thread while a sort runs.
    size_t bytes() const { return m_bytes.load(std::memory_order_relaxed); }

private:
    struct Entry {
        int column;
        int kind;
        ColumnRanks ranks;
    };
    std::vector<Entry> m_entries; // the most recently used first
    std::atomic<size_t> m_bytes = 0;
};

// The rows of order sorted by their ranks, stable: equal ranks keep their order.
std::vector<uint32_t> SortByRanks(const std::vector<uint32_t>& order, const ColumnRanks& ranks,
                                  bool descending);

} // namespace ranks
