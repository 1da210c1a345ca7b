#pragma once
// Stable least-significant-digit radix sorts, the engine under every column sort of the list: equal
// keys keep the order they came in, which is what makes a sort stable against the order shown.
#include <cstddef>
#include <cstdint>
#include <memory>

namespace radix {

// A key and the row (or position) it belongs to; aux rides along for the caller.
struct KeyRow {
    uint64_t key;
    uint32_t row;
    uint32_t aux;
};

// Working space that grows and is never cleared: the sorts write before they read.
template <typename T> class Scratch {
public:
    T* get(size_t n) {
        if (n > m_size) {
            m_data = std::make_unique_for_overwrite<T[]>(n);
            m_size = n;
        }
        return m_data.get();
    }

private:
    std::unique_ptr<T[]> m_data;
    size_t m_size = 0;
};

// Sorts by key, stable. The keys may come back as other numbers in the same order, equal where they
// were equal: bytes that take few values (letters, digits, blanks) are replaced by their places among
// those values, which packs the keys into fewer bits and so fewer passes.
void sortKeyRows(KeyRow* v, size_t n, Scratch<KeyRow>& tmp);

// Sorts values by their high 32 bits, stable; only the low `bits` of those may be set. The low 32
// bits ride along (a row), so (rank << 32 | row) values come out ordered by rank.
void sortByHighWord(uint64_t* v, size_t n, int bits, Scratch<uint64_t>& tmp);

} // namespace radix
