#include "lists/liststore.h"

#include <cstring>

namespace liststore {

namespace {
constexpr size_t MaxEqual = 4096; // distinct texts kept in the table (it has 16384 slots)

uint64_t hashText(const char* p, size_t n) {
    uint64_t h = 0x9E3779B97F4A7C15ull ^ n;
    while (n >= 8) {
        uint64_t w;
        std::memcpy(&w, p, 8);
        h = (h ^ w) * 0xFF51AFD7ED558CCDull;
        h ^= h >> 32;
        p += 8;
        n -= 8;
    }
    uint64_t w = 0;
    std::memcpy(&w, p, n);
    h = (h ^ w) * 0xC4CEB9FE1A85EC53ull;
    return h ^ (h >> 29);
}
} // namespace

uint32_t TextStore::add(const char* data, size_t len) {
    unsigned char prefix[5];
    size_t plen = 0;
    size_t v = len;
    do {
        prefix[plen++] = static_cast<unsigned char>((v & 0x7F) | (v > 0x7F ? 0x80 : 0));
        v >>= 7;
    } while (v != 0);
    const size_t need = plen + len;
    if (m_used + need > ChunkBytes) {
        // A text longer than a chunk gets a chunk of its own size.
        const size_t size = need > ChunkBytes ? need : ChunkBytes;
        m_chunks.emplace_back(new char[size]);
        m_bytes += size;
        m_used = 0;
    }
    char* dst = m_chunks.back().get() + m_used;
    std::memcpy(dst, prefix, plen);
    if (len)
        std::memcpy(dst + plen, data, len);
    const uint32_t ref = uint32_t(((m_chunks.size() - 1) << 20) | m_used);
    m_used += need;
    if (m_used > ChunkBytes) // an oversized text fills its chunk
        m_used = ChunkBytes;
    return ref;
}

std::string_view TextStore::at(uint32_t ref) const {
    const unsigned char* p =
        reinterpret_cast<const unsigned char*>(m_chunks[ref >> 20].get() + (ref & 0xFFFFF));
    size_t len = 0;
    int shift = 0;
    while (*p & 0x80) {
        len |= size_t(*p++ & 0x7F) << shift;
        shift += 7;
    }
    len |= size_t(*p++) << shift;
    return {reinterpret_cast<const char*>(p), len};
}

void Column::noteOther(Cell c) {
    if (m_mixed) {
        m_cls.push_back(uint8_t(c));
        return;
    }
    if (c == Cell::Null) {
        const size_t word = m_rows / 64;
        if (m_nullBits.size() <= word)
            m_nullBits.resize(word + 1, 0);
        m_nullBits[word] |= uint64_t(1) << (m_rows % 64);
        return;
    }
    if (m_uniform == Cell::Null) {
        m_uniform = c;
    } else if (m_uniform != c) {
        // A second kind of value in one column (the engine allows it): from here on every cell
        // records its own class.
        m_mixed = true;
        for (size_t r = 0; r < m_rows; ++r) {
            const bool null = r / 64 < m_nullBits.size() && (m_nullBits[r / 64] >> (r % 64)) & 1;
            m_cls.push_back(uint8_t(null ? Cell::Null : m_uniform));
        }
        m_nullBits.clear();
        m_nullBits.shrink_to_fit();
        m_cls.push_back(uint8_t(c));
    }
}

void Column::appendNull() {
    note(Cell::Null);
    if (!m_num.empty())
        m_num.fill(m_rows + 1, 0);
    if (!m_textRef.empty())
        m_textRef.fill(m_rows + 1, 0);
    ++m_rows;
}

void Column::appendText(const QString& s) {
    // ASCII, by far the common case, narrows in one pass; anything else goes through the codec.
    const qsizetype n = s.size();
    m_scratch.resize(n);
    const QChar* src = s.constData();
    char* dst = m_scratch.data();
    char16_t orAll = 0;
    for (qsizetype i = 0; i < n; ++i) {
        const char16_t c = src[i].unicode();
        orAll |= c;
        dst[i] = char(c);
    }
    if (orAll >= 0x80)
        m_scratch = s.toUtf8();
    appendUtf8(m_scratch.constData(), size_t(m_scratch.size()));
}

void Column::appendUtf8(const char* data, size_t len) {
    note(Cell::Text);
    if (asciiOnly) {
        uint64_t orAll = 0;
        size_t i = 0;
        for (; i + 8 <= len; i += 8) {
            uint64_t w;
            std::memcpy(&w, data + i, 8);
            orAll |= w;
        }
        for (; i < len; ++i)
            orAll |= static_cast<unsigned char>(data[i]);
        asciiOnly = (orAll & 0x8080808080808080ull) == 0;
    }
    uint32_t ref = 0;
    if (m_dedup) {
        const uint64_t hash = hashText(data, len);
        if (!findEqual(data, len, hash, &ref)) {
            ref = m_texts.add(data, len);
            rememberEqual(hash, ref);
            // Worth it only while texts repeat a lot.
            if (m_equalCount > MaxEqual || (m_rows >= 2048 && m_equalCount * 4 > m_rows)) {
                m_dedup = false;
                m_equalSlots = {};
            }
        }
    } else {
        ref = m_texts.add(data, len);
    }
    m_textRef.fill(m_rows, 0);
    m_textRef.push_back(ref);
    if (!m_num.empty())
        m_num.fill(m_rows + 1, 0);
    ++m_rows;
}

bool Column::findEqual(const char* data, size_t len, uint64_t hash, uint32_t* ref) const {
    if (m_equalSlots.empty())
        return false;
    const size_t mask = m_equalSlots.size() - 1;
    for (size_t i = size_t(hash) & mask;; i = (i + 1) & mask) {
        const uint32_t slot = m_equalSlots[i];
        if (slot == 0)
            return false;
        const std::string_view t = m_texts.at(slot - 1);
        if (t.size() == len && (len == 0 || std::memcmp(t.data(), data, len) == 0)) {
            *ref = slot - 1;
            return true;
        }
    }
}

void Column::rememberEqual(uint64_t hash, uint32_t ref) {
    if (m_equalSlots.empty())
        m_equalSlots.assign(4 * MaxEqual, 0);
    const size_t mask = m_equalSlots.size() - 1;
    size_t i = size_t(hash) & mask;
    while (m_equalSlots[i] != 0)
        i = (i + 1) & mask;
    m_equalSlots[i] = ref + 1;
    ++m_equalCount;
}

void Column::finish() {
    m_equalSlots = {};
    m_dedup = false;
    m_scratch = QByteArray();
    if (!m_num.empty())
        m_num.fill(m_rows, 0);
    if (!m_textRef.empty())
        m_textRef.fill(m_rows, 0);
}

Cell Column::cellClass(size_t r) const {
    if (m_mixed)
        return Cell(m_cls[r]);
    if (r / 64 < m_nullBits.size() && (m_nullBits[r / 64] >> (r % 64)) & 1)
        return Cell::Null;
    return m_uniform;
}

double Column::realAt(size_t r) const {
    const qint64 bits = m_num[r];
    double v;
    std::memcpy(&v, &bits, sizeof v);
    return v;
}

size_t Column::bytes() const {
    return m_nullBits.capacity() * 8 + m_cls.bytes() + m_num.bytes() + m_textRef.bytes() + m_texts.bytes() +
           size_t(m_scratch.capacity()) + m_equalSlots.capacity() * 4;
}

void decodeInto(std::string_view utf8, QString& out) {
    const size_t n = utf8.size();
    unsigned char orAll = 0;
    for (size_t i = 0; i < n; ++i)
        orAll |= static_cast<unsigned char>(utf8[i]);
    if (orAll >= 0x80) {
        out = QString::fromUtf8(utf8.data(), qsizetype(n));
        return;
    }
    out.resize(qsizetype(n));
    QChar* dst = out.data();
    for (size_t i = 0; i < n; ++i)
        dst[i] = QChar(char16_t(static_cast<unsigned char>(utf8[i])));
}

} // namespace liststore
