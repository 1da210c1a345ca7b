#pragma once
// The list's storage: typed columns in fixed-size chunks (no re-allocation while a million rows
// stream in, no slack left afterwards), texts packed as UTF-8 with a length prefix, equal short
// texts (types, makers, dates) stored once.
#include "data/fieldkind.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

namespace liststore {

template <typename T> class ChunkedVector {
public:
    static constexpr size_t Shift = 16;
    static constexpr size_t ChunkSize = size_t(1) << Shift;

    void push_back(T v) {
        if (m_left == 0) {
            m_chunks.emplace_back(new T[ChunkSize]);
            m_next = m_chunks.back().get();
            m_left = ChunkSize;
        }
        *m_next++ = v;
        --m_left;
        ++m_size;
    }
    void fill(size_t n, T v) {
        while (m_size < n)
            push_back(v);
    }
    T operator[](size_t i) const { return m_chunks[i >> Shift][i & (ChunkSize - 1)]; }
    T& operator[](size_t i) { return m_chunks[i >> Shift][i & (ChunkSize - 1)]; }
    size_t size() const { return m_size; }
    bool empty() const { return m_size == 0; }
    size_t bytes() const { return m_chunks.size() * ChunkSize * sizeof(T); }

private:
    std::vector<std::unique_ptr<T[]>> m_chunks;
    size_t m_size = 0;
    T* m_next = nullptr; // where the next value goes, m_left places before the chunk ends
    size_t m_left = 0;
};

// Texts as length-prefixed UTF-8 in 1 MB chunks; a reference is (chunk << 20) | position.
class TextStore {
public:
    uint32_t add(const char* data, size_t len);
    std::string_view at(uint32_t ref) const;
    size_t bytes() const { return m_bytes; }

private:
    static constexpr size_t ChunkBytes = size_t(1) << 20;
    std::vector<std::unique_ptr<char[]>> m_chunks;
    size_t m_used = ChunkBytes; // forces the first chunk
    size_t m_bytes = 0;
};

enum class Cell : uint8_t { Null, Int, Real, Text };

// How the cells of a column are written.
enum class Display : uint8_t { Numbers, Plain, YesNo };

// Price columns show the price words (PriceWord) in place of their coded values.
enum class PriceKind : uint8_t { None, Purchase, ManufactureFee };

class Column {
public:
    QString name;
    QString header;
    QString tag;
    FieldKind kind = FieldKind::Empty;
    Display display = Display::Numbers;
    bool naForMinusOne = false;  // MANEUVERABILITY, AMMO_RANGE
    bool unknownIfEmpty = false; // TYPE, SUBTYPE
    PriceKind price = PriceKind::None;
    bool asciiOnly = true;

    void appendNull();
    void appendInt(qint64 v) {
        note(Cell::Int);
        if (m_num.size() != m_rows)
            m_num.fill(m_rows, 0);
        m_num.push_back(v);
        if (!m_textRef.empty())
            m_textRef.fill(m_rows + 1, 0);
        ++m_rows;
    }
    void appendReal(double v) {
        qint64 bits;
        std::memcpy(&bits, &v, sizeof bits);
        note(Cell::Real);
        if (m_num.size() != m_rows)
            m_num.fill(m_rows, 0);
        m_num.push_back(bits);
        if (!m_textRef.empty())
            m_textRef.fill(m_rows + 1, 0);
        ++m_rows;
    }
    void appendText(const QString& s);
    void appendUtf8(const char* data, size_t len);
    void finish(); // ends loading: drops the table of equal texts

    Cell cellClass(size_t r) const;
    qint64 intAt(size_t r) const { return m_num[r]; }
    double realAt(size_t r) const;
    std::string_view textAt(size_t r) const { return m_texts.at(m_textRef[r]); }
    // The class every non-NULL cell has, or Null when they differ or all are NULL.
    Cell uniformClass() const { return m_mixed ? Cell::Null : m_uniform; }
    size_t bytes() const;

private:
    // Records the class of the next cell. Inline for the common case: a column of one class.
    void note(Cell c) {
        if (c == m_uniform && c != Cell::Null && !m_mixed)
            return;
        noteOther(c);
    }
    void noteOther(Cell c);
    size_t m_rows = 0;
    Cell m_uniform = Cell::Null;
    bool m_mixed = false;
    std::vector<uint64_t> m_nullBits; // while not mixed
    ChunkedVector<uint8_t> m_cls;     // when mixed
    ChunkedVector<qint64> m_num;      // ints, and doubles by their bits
    ChunkedVector<uint32_t> m_textRef;
    TextStore m_texts;
    QByteArray m_scratch;
    // Equal texts stored once while that pays: an open-addressing table of text references.
    bool findEqual(const char* data, size_t len, uint64_t hash, uint32_t* ref) const;
    void rememberEqual(uint64_t hash, uint32_t ref);
    std::vector<uint32_t> m_equalSlots; // ref + 1, 0 = free
    size_t m_equalCount = 0;
    bool m_dedup = true;
};

// Writes a stored UTF-8 text into out, reusing its buffer.
void decodeInto(std::string_view utf8, QString& out);

} // namespace liststore
