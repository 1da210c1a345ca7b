#pragma once
// Texts case-folded for sorting: the program's one folding (core/casefold.h) applied to the UTF-8 the
// list stores, giving UTF-8 whose byte order is the order of the folded code points. ASCII, by far the
// common case, is folded eight bytes at a time.
#include <QString>
#include <QtEndian>

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ranks {

// Appends the case folding of UTF-8 text to out. Text that QString::fromUtf8 would read otherwise
// than code point by code point (malformed sequences, a byte-order mark in front) is folded through a
// QString, so that the result is always that of QString::fromUtf8(text).toCaseFolded().toUtf8().
void FoldUtf8(std::string_view utf8, std::string& out);

// Case-folded texts, numbered in the order they were added. Each is kept as its length and its bytes,
// four-byte aligned, in chunks that never move, so that a text is reached from its position alone.
class FoldedTexts {
public:
    FoldedTexts() = default;
    FoldedTexts(const FoldedTexts&) = delete;
    FoldedTexts& operator=(const FoldedTexts&) = delete;
    void reserve(size_t texts) { m_pos.reserve(texts); }
    void add(std::string_view utf8);              // folds it
    void add(const QString& text);                // folds it
    void addFolded(std::string_view alreadyKept); // as it is (key texts that need no folding)
    size_t size() const { return m_pos.size(); }
    // Whether a text holds a NUL byte (then texts that differ only in trailing NULs look alike by
    // their bytes and only their lengths tell them apart).
    bool hasNul() const { return m_nul; }
    // Where text i is kept: chunk and place in it (in four-byte units).
    uint32_t position(size_t i) const { return m_pos[i]; }
    size_t lengthAt(uint32_t pos) const {
        uint32_t len;
        std::memcpy(&len, record(pos), 4);
        return len;
    }
    std::string_view textAt(uint32_t pos) const { return {record(pos) + 4, lengthAt(pos)}; }
    std::string_view at(size_t i) const { return textAt(m_pos[i]); }
    void prefetch(uint32_t pos, size_t depth) const {
        const char* r = record(pos);
        __builtin_prefetch(r);
        __builtin_prefetch(r + 4 + depth + 7);
    }
    // Bytes [depth, depth + 8) of the text kept at pos as a big-endian number, zero past its end.
    uint64_t chunkAt(uint32_t pos, size_t depth) const {
        const char* r = record(pos);
        uint32_t len;
        std::memcpy(&len, r, 4);
        if (depth >= len)
            return 0;
        uint64_t k;
        std::memcpy(&k, r + 4 + depth, 8);
        k = qFromBigEndian(k);
        const size_t rest = len - depth;
        return rest < 8 ? k & (~uint64_t(0) << (8 * (8 - rest))) : k;
    }

private:
    static constexpr int PlaceBits = 20; // chunks of 4 MB
    static constexpr size_t ChunkBytes = size_t(4) << PlaceBits;
    const char* record(uint32_t pos) const {
        return m_chunks[pos >> PlaceBits].get() + size_t(pos & ((1u << PlaceBits) - 1)) * 4;
    }
    char* room(size_t bytes); // where the next text's bytes go, with room for `bytes` of them
    void close(size_t length);
    std::vector<std::unique_ptr<char[]>> m_chunks;
    size_t m_used = ChunkBytes; // in the last chunk, a multiple of four
    size_t m_size = 0;          // of the last chunk
    std::vector<uint32_t> m_pos;
    bool m_nul = false;
};

} // namespace ranks
