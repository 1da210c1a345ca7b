#include "lists/foldedtexts.h"

#include "core/casefold.h"

#include <QByteArray>

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace ranks {

namespace {
constexpr size_t Malformed = size_t(-1);

char* put(char* o, char32_t c) {
    if (c < 0x80) {
        *o++ = char(c);
    } else if (c < 0x800) {
        *o++ = char(0xC0 | (c >> 6));
        *o++ = char(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        *o++ = char(0xE0 | (c >> 12));
        *o++ = char(0x80 | ((c >> 6) & 0x3F));
        *o++ = char(0x80 | (c & 0x3F));
    } else {
        *o++ = char(0xF0 | (c >> 18));
        *o++ = char(0x80 | ((c >> 12) & 0x3F));
        *o++ = char(0x80 | ((c >> 6) & 0x3F));
        *o++ = char(0x80 | (c & 0x3F));
    }
    return o;
}

// FoldCase over the Basic Multilingual Plane, looked up once (0: fold the long way).
const char16_t* bmpFolding() {
    static const std::unique_ptr<char16_t[]> table = [] {
        auto t = std::make_unique<char16_t[]>(0x10000);
        for (char32_t c = 1; c < 0x10000; ++c) {
            const char32_t f = FoldCase(c);
            t[c] = f < 0x10000 ? char16_t(f) : 0;
        }
        return t;
    }();
    return table.get();
}

// Folds well-formed UTF-8 into out (room for twice the input's bytes: no letter's folding more than
// doubles its length); returns the bytes written, or Malformed. Notes a NUL byte in *nul.
size_t foldInto(std::string_view in, char* out, bool* nul) {
    const auto* p = reinterpret_cast<const unsigned char*>(in.data());
    const auto* end = p + in.size();
    if (in.size() >= 3 && p[0] == 0xEF && p[1] == 0xBB && p[2] == 0xBF)
        return Malformed; // QString::fromUtf8 drops a leading byte-order mark
    char* o = out;
    const char16_t* bmp = nullptr;
    while (p < end) {
        if (end - p >= 8) {
            uint64_t w;
            std::memcpy(&w, p, 8);
            if ((w & 0x8080808080808080ull) == 0) {
                *nul = *nul || ((w - 0x0101010101010101ull) & ~w & 0x8080808080808080ull);
                // Eight ASCII bytes: those from 'A' to 'Z' get the 0x20 bit.
                const uint64_t upper =
                    (w + 0x3F3F3F3F3F3F3F3Full) & ~(w + 0x2525252525252525ull) & 0x8080808080808080ull;
                w |= upper >> 2;
                std::memcpy(o, &w, 8);
                o += 8;
                p += 8;
                continue;
            }
        }
        const unsigned char b = *p;
        if (b < 0x80) {
            *nul = *nul || b == 0;
            *o++ = char(b >= 'A' && b <= 'Z' ? b + 32 : b);
            ++p;
            continue;
        }
        char32_t c;
        int len;
        if (b >= 0xC2 && b <= 0xDF) {
            c = b & 0x1F;
            len = 2;
        } else if (b >= 0xE0 && b <= 0xEF) {
            c = b & 0x0F;
            len = 3;
        } else if (b >= 0xF0 && b <= 0xF4) {
            c = b & 0x07;
            len = 4;
        } else {
            return Malformed;
        }
        if (end - p < len)
            return Malformed;
        for (int k = 1; k < len; ++k) {
            if ((p[k] & 0xC0) != 0x80)
                return Malformed;
            c = (c << 6) | (p[k] & 0x3F);
        }
        if ((len == 3 && (c < 0x800 || (c >= 0xD800 && c < 0xE000))) ||
            (len == 4 && (c < 0x10000 || c > 0x10FFFF)))
            return Malformed;
        p += len;
        if (c < 0x10000) {
            if (!bmp)
                bmp = bmpFolding();
            if (const char16_t f = bmp[c]) {
                o = put(o, f);
                continue;
            }
        }
        o = put(o, FoldCase(c));
    }
    return size_t(o - out);
}

QByteArray foldedThroughQString(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), qsizetype(utf8.size())).toCaseFolded().toUtf8();
}
} // namespace

void FoldUtf8(std::string_view utf8, std::string& out) {
    const size_t at = out.size();
    out.resize(at + 2 * utf8.size());
    bool nul = false;
    const size_t n = foldInto(utf8, out.data() + at, &nul);
    if (n != Malformed) {
        out.resize(at + n);
        return;
    }
    out.resize(at);
    const QByteArray f = foldedThroughQString(utf8);
    out.append(f.constData(), size_t(f.size()));
}

void FoldedTexts::newChunk(size_t need) {
    // Positions address 1024 chunks; a text longer than a chunk has one of its own size.
    if (m_chunks.size() >= (size_t(1) << (32 - PlaceBits)))
        throw std::length_error("folded texts beyond 4 GB");
    if (!m_chunks.empty())
        m_ends.push_back(m_used);
    m_size = std::max(need, ChunkBytes);
    m_chunks.push_back(std::make_unique_for_overwrite<char[]>(m_size));
    m_last = m_chunks.back().get();
    m_used = 0;
    m_full = m_size > ChunkBytes; // a text longer than a chunk: the next one starts another
}

void FoldedTexts::add(std::string_view utf8) {
    char* to = room(2 * utf8.size());
    const size_t n = foldInto(utf8, to, &m_nul);
    if (n != Malformed) {
        close(n);
        return;
    }
    const QByteArray f = foldedThroughQString(utf8);
    addFolded(std::string_view(f.constData(), size_t(f.size())));
}

void FoldedTexts::add(const QString& text) {
    const QByteArray f = text.toCaseFolded().toUtf8();
    addFolded(std::string_view(f.constData(), size_t(f.size())));
}

void FoldedTexts::addFolded(std::string_view alreadyKept) {
    char* to = room(alreadyKept.size());
    if (!alreadyKept.empty()) {
        std::memcpy(to, alreadyKept.data(), alreadyKept.size());
        m_nul = m_nul || std::memchr(alreadyKept.data(), 0, alreadyKept.size());
    }
    close(alreadyKept.size());
}

} // namespace ranks
