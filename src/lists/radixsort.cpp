#include "lists/radixsort.h"

#include <algorithm>
#include <array>
#include <bit>
#include <vector>

namespace radix {

namespace {
// LSD passes over digits of `width` bits of what key(item) gives, stable; the result ends in v.
template <typename T, typename Key> void digitPasses(T* v, size_t n, T* scratch, int bits, Key key) {
    if (bits <= 0)
        return;
    // Digits of at most 11 bits: their counters stay in the first-level cache.
    const int passes = (bits + 10) / 11;
    const int width = (bits + passes - 1) / passes;
    const size_t buckets = size_t(1) << width;
    const uint64_t mask = buckets - 1;
    std::vector<size_t> counts(size_t(passes) * buckets, 0);
    for (size_t i = 0; i < n; ++i) {
        const uint64_t k = key(v[i]);
        for (int p = 0; p < passes; ++p)
            ++counts[size_t(p) * buckets + ((k >> (p * width)) & mask)];
    }
    T* src = v;
    T* dst = scratch;
    for (int p = 0; p < passes; ++p) {
        size_t* c = &counts[size_t(p) * buckets];
        const int shift = p * width;
        if (c[(key(src[0]) >> shift) & mask] == n)
            continue; // every key has the same digit here
        size_t sum = 0;
        for (size_t i = 0; i < buckets; ++i) {
            const size_t t = c[i];
            c[i] = sum;
            sum += t;
        }
        for (size_t i = 0; i < n; ++i)
            dst[c[(key(src[i]) >> shift) & mask]++] = src[i];
        std::swap(src, dst);
    }
    if (src != v)
        std::copy(src, src + n, v);
}
} // namespace

void sortKeyRows(KeyRow* v, size_t n, Scratch<KeyRow>& tmp) {
    if (n < 64) {
        std::stable_sort(v, v + n, [](const KeyRow& a, const KeyRow& b) { return a.key < b.key; });
        return;
    }
    // Which bytes vary, and how often each of those takes each value.
    uint64_t differ = 0;
    for (size_t i = 1; i < n; ++i)
        differ |= v[i].key ^ v[0].key;
    if (differ == 0)
        return;
    std::array<size_t, 8> varying{};
    size_t varyingBytes = 0;
    for (size_t b = 0; b < 8; ++b)
        if ((differ >> (8 * b)) & 0xFF)
            varying[varyingBytes++] = b;
    std::vector<uint32_t> counts(varyingBytes * 256, 0);
    for (size_t i = 0; i < n; ++i) {
        const uint64_t k = v[i].key;
        for (size_t j = 0; j < varyingBytes; ++j)
            ++counts[j * 256 + ((k >> (8 * varying[j])) & 0xFF)];
    }
    KeyRow* scratch = tmp.get(n);

    // Keys of texts use few values per byte (letters, digits, blanks). Replacing each byte by its
    // place among the values it takes keeps the order and packs the key into fewer bits: when that
    // saves passes, the keys are sorted packed.
    int bits = 0;
    std::array<int, 8> width{};
    for (size_t j = 0; j < varyingBytes; ++j) {
        const auto values = unsigned(
            std::count_if(&counts[j * 256], &counts[j * 256] + 256, [](uint32_t c) { return c != 0; }));
        width[j] = std::bit_width(values - 1);
        bits += width[j];
    }
    const int packedPasses = (bits + 10) / 11;
    if (size_t(packedPasses) >= varyingBytes) {
        // Byte by byte, with the counts at hand.
        KeyRow* src = v;
        KeyRow* dst = scratch;
        for (size_t j = 0; j < varyingBytes; ++j) {
            uint32_t* c = &counts[j * 256];
            uint32_t sum = 0;
            for (size_t x = 0; x < 256; ++x) {
                const uint32_t t = c[x];
                c[x] = sum;
                sum += t;
            }
            const int shift = 8 * int(varying[j]);
            for (size_t i = 0; i < n; ++i)
                dst[c[(src[i].key >> shift) & 0xFF]++] = src[i];
            std::swap(src, dst);
        }
        if (src != v)
            std::copy(src, src + n, v);
        return;
    }
    // Packed: a table per byte gives its place already shifted where it goes.
    std::vector<uint64_t> table(varyingBytes * 256, 0);
    int at = 0;
    for (size_t j = 0; j < varyingBytes; ++j) {
        uint64_t place = 0;
        for (size_t x = 0; x < 256; ++x)
            if (counts[j * 256 + x])
                table[j * 256 + x] = place++ << at;
        at += width[j];
    }
    for (size_t i = 0; i < n; ++i) {
        const uint64_t k = v[i].key;
        uint64_t p = 0;
        for (size_t j = 0; j < varyingBytes; ++j)
            p |= table[j * 256 + ((k >> (8 * varying[j])) & 0xFF)];
        v[i].key = p;
    }
    digitPasses(v, n, scratch, bits, [](const KeyRow& r) { return r.key; });
}

void sortByHighWord(uint64_t* v, size_t n, int bits, Scratch<uint64_t>& tmp) {
    if (n < 2 || bits <= 0)
        return;
    digitPasses(v, n, tmp.get(n), bits, [](uint64_t x) { return x >> 32; });
}

} // namespace radix
