#include "lists/radixsort.h"

#include <algorithm>
#include <array>
#include <bit>
#include <vector>

namespace radix {

namespace {
// LSD passes over the low `bits` of what key(item) gives, stable; the result ends in v.
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
    // Which bytes vary, and how often each of those takes each value: one pass for each of them, and
    // none for the bytes every key shares.
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
    KeyRow* src = v;
    KeyRow* dst = tmp.get(n);
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
}

void sortByHighWord(uint64_t* v, size_t n, int bits, Scratch<uint64_t>& tmp) {
    if (n < 2 || bits <= 0)
        return;
    digitPasses(v, n, tmp.get(n), bits, [](uint64_t x) { return x >> 32; });
}

} // namespace radix
