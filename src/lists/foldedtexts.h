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
#include <type_traits>
#include <vector>

namespace ranks {

// Appends the case folding of UTF-8 text to out. Text that QString::fromUtf8 would read otherwise
// than code point by code point (malformed sequences, a byte-order mark in front) is folded through a
// QString, so that the result is always that of QString::fromUtf8(text).toCaseFolded().toUtf8().
void FoldUtf8(std::string_view utf8, std::string& out);

// Case-folded texts, numbered in the order they were added, each kept as a length byte (or 255 and a
// four-byte length) and its bytes in chunks that never move: a text is reached from its position
// alone, and all are read in order by walking the chunks.
class FoldedTexts {
public:
    FoldedTexts() = default;
    FoldedTexts(const FoldedTexts&) = delete;
    FoldedTexts& operator=(const FoldedTexts&) = delete;
    void add(std::string_view utf8);              // folds it
    void add(const QString& text);                // folds it
    void addFolded(std::string_view alreadyKept); // as it is (key texts that need no folding)
    size_t size() const { return m_count; }
    // Whether a text holds a NUL byte (then texts that differ only in trailing NULs look alike by
    // their bytes and only their lengths tell them apart).
    bool hasNul() const { return m_nul; }

    // Calls f(i, position) for every text in order; an f that returns bool stops the walk with false.
    template <typename F> void forEach(F f) const {
        size_t i = 0;
        for (size_t c = 0; c < m_chunks.size(); ++c) {
            const char* base = m_chunks[c].get();
            const size_t end = c + 1 < m_chunks.size() ? m_ends[c] : m_used;
            for (size_t at = 0; at < end;) {
                if constexpr (std::is_same_v<decltype(f(i, uint32_t(0))), bool>) {
                    if (!f(i++, uint32_t((c << PlaceBits) | at)))
                        return;
                } else {
                    f(i++, uint32_t((c << PlaceBits) | at));
                }
                const auto head = static_cast<unsigned char>(base[at]);
                at += head < Long ? 1 + head : 5 + longLength(base + at);
            }
        }
    }
    size_t lengthAt(uint32_t pos) const {
        const char* r = record(pos);
        const auto head = static_cast<unsigned char>(*r);
        return head < Long ? head : longLength(r);
    }
    std::string_view textAt(uint32_t pos) const {
        const char* r = record(pos);
        const auto head = static_cast<unsigned char>(*r);
        return head < Long ? std::string_view(r + 1, head) : std::string_view(r + 5, longLength(r));
    }
    void prefetch(uint32_t pos, size_t depth) const {
        const char* r = record(pos);
        __builtin_prefetch(r);
        __builtin_prefetch(r + depth + 8);
    }
    // Bytes [depth, depth + 8) of the text kept at pos as a big-endian number, zero past its end.
    uint64_t chunkAt(uint32_t pos, size_t depth) const {
        const char* r = record(pos);
        const auto head = static_cast<unsigned char>(*r);
        const size_t len = head < Long ? head : longLength(r);
        if (depth >= len)
            return 0;
        uint64_t k;
        std::memcpy(&k, r + (head < Long ? 1 : 5) + depth, 8);
        k = qFromBigEndian(k);
        const size_t rest = len - depth;
        return rest < 8 ? k & (~uint64_t(0) << (8 * (8 - rest))) : k;
    }

private:
    static constexpr unsigned char Long = 255; // the head of a text of 255 bytes or more
    static constexpr int PlaceBits = 22;       // chunks of 4 MB, and up to 1024 of them
    static constexpr size_t ChunkBytes = size_t(1) << PlaceBits;
    static size_t longLength(const char* r) {
        uint32_t len;
        std::memcpy(&len, r + 1, 4);
        return len;
    }
    const char* record(uint32_t pos) const {
        return m_chunks[pos >> PlaceBits].get() + (pos & (ChunkBytes - 1));
    }
    // Where the next text's bytes go, with room for `bytes` of them, its head, and the eight bytes
    // chunkAt() may read past its end.
    char* room(size_t bytes) {
        m_headSize = bytes < Long ? 1 : 5;
        const size_t need = m_headSize + bytes + 8;
        if (m_full || m_used + need > m_size)
            newChunk(need);
        return m_last + m_used + m_headSize;
    }
    void newChunk(size_t need);
    // Ends the text room() was made for: its head, and zeros after it.
    void close(size_t length) {
        char* r = m_last + m_used;
        if (length < Long) {
            if (m_headSize != 1) // room was made for a longer text
                std::memmove(r + 1, r + m_headSize, length);
            *r = char(static_cast<unsigned char>(length));
            m_used += 1 + length;
        } else {
            *r = char(Long);
            const uint32_t len = uint32_t(length);
            std::memcpy(r + 1, &len, 4);
            m_used += 5 + length;
        }
        std::memset(m_last + m_used, 0, 8);
        ++m_count;
    }
    std::vector<std::unique_ptr<char[]>> m_chunks;
    char* m_last = nullptr;     // the last chunk
    std::vector<size_t> m_ends; // where the records of each full chunk end
    size_t m_used = ChunkBytes; // in the last chunk
    size_t m_size = 0;          // of the last chunk
    size_t m_count = 0;
    size_t m_headSize = 1; // of the text being added
    bool m_full = false;   // the last chunk holds a text longer than a chunk
    bool m_nul = false;
};

} // namespace ranks
