#include "lists/namematch.h"

#include <cstring>
#include <memory>

namespace {
inline unsigned char lowerAscii(unsigned char c) {
    return (c >= 'A' && c <= 'Z') ? static_cast<unsigned char>(c + 32) : c;
}

bool isAscii(std::string_view s) {
    unsigned char any = 0;
    for (const char c : s)
        any |= static_cast<unsigned char>(c);
    return any < 0x80;
}
} // namespace

QString FoldCase(const QString& text) {
    return text.toCaseFolded();
}

NameMatcher::NameMatcher(const QString& text) : m_folded(FoldCase(text)), m_utf8(m_folded.toUtf8()) {
    for (const QChar c : std::as_const(m_folded))
        if (c.unicode() >= 0x80)
            m_asciiNeedle = false;
    if (m_asciiNeedle) {
        m_ascii = m_folded.toLatin1();
        m_first = m_ascii.isEmpty() ? 0 : static_cast<unsigned char>(m_ascii.at(0));
    }
}

bool NameMatcher::narrows(const NameMatcher& wider) const {
    return m_folded.contains(wider.m_folded);
}

bool NameMatcher::matches(const QString& name) const {
    return m_folded.isEmpty() || FoldCase(name).contains(m_folded);
}

namespace {
// Only two letters beyond ASCII fold into ASCII: the long s (U+017F, to "s") and the Kelvin sign
// (U+212A, to "k"). A name without them holds an ASCII text, folded, only where its ASCII bytes do.
bool mayFoldIntoAscii(std::string_view s) {
    return s.find("\xC5\xBF") != std::string_view::npos || s.find("\xE2\x84\xAA") != std::string_view::npos;
}

// The folding of the letters written in two bytes (Latin, Greek, Cyrillic...), looked up once.
const char32_t* twoByteFolds() {
    static const auto table = [] {
        auto t = std::make_unique<char32_t[]>(0x800);
        for (char32_t c = 0; c < 0x800; ++c)
            t[c] = QChar::toCaseFolded(c);
        return t;
    }();
    return table.get();
}

// The UTF-8 text folded code point by code point into out; false for a text that is not UTF-8.
bool foldUtf8(std::string_view in, std::string& out) {
    // A folded letter takes at most half as many bytes again as the letter itself.
    out.resize(in.size() * 2 + 4);
    char* o = out.data();
    const char32_t* folds = twoByteFolds();
    const auto* p = reinterpret_cast<const unsigned char*>(in.data());
    const auto* end = p + in.size();
    while (p < end) {
        const unsigned char c = *p;
        if (c < 0x80) {
            *o++ = char(lowerAscii(c));
            ++p;
            continue;
        }
        const int extra = c >= 0xF0 ? 3 : c >= 0xE0 ? 2 : c >= 0xC0 ? 1 : -1;
        if (extra < 0 || end - p <= extra)
            return false;
        char32_t cp = c & (0x3F >> extra);
        for (int k = 1; k <= extra; ++k) {
            if ((p[k] & 0xC0) != 0x80)
                return false;
            cp = (cp << 6) | (p[k] & 0x3F);
        }
        p += extra + 1;
        const char32_t f = cp < 0x800 ? folds[cp] : QChar::toCaseFolded(cp);
        if (f < 0x80) {
            *o++ = char(f);
        } else if (f < 0x800) {
            *o++ = char(0xC0 | (f >> 6));
            *o++ = char(0x80 | (f & 0x3F));
        } else if (f < 0x10000) {
            *o++ = char(0xE0 | (f >> 12));
            *o++ = char(0x80 | ((f >> 6) & 0x3F));
            *o++ = char(0x80 | (f & 0x3F));
        } else {
            *o++ = char(0xF0 | (f >> 18));
            *o++ = char(0x80 | ((f >> 12) & 0x3F));
            *o++ = char(0x80 | ((f >> 6) & 0x3F));
            *o++ = char(0x80 | (f & 0x3F));
        }
    }
    out.resize(size_t(o - out.data()));
    return true;
}
} // namespace

bool NameMatcher::foldedContains(std::string_view name) const {
    // Folded where it lies, into a buffer kept between calls: no QString for each name.
    thread_local std::string folded;
    if (!foldUtf8(name, folded))
        return FoldCase(QString::fromUtf8(name.data(), qsizetype(name.size()))).contains(m_folded);
    return std::string_view(folded).find(std::string_view(m_utf8.constData(), size_t(m_utf8.size()))) !=
           std::string_view::npos;
}

bool NameMatcher::matchesUtf8(std::string_view name) const {
    if (m_folded.isEmpty())
        return true;
    if (m_asciiNeedle) {
        // The bytes of letters beyond ASCII never equal an ASCII text's bytes.
        if (matchesAscii(name))
            return true;
        return !isAscii(name) && mayFoldIntoAscii(name) && foldedContains(name);
    }
    return !isAscii(name) && foldedContains(name);
}

bool NameMatcher::matchesAscii(std::string_view name) const {
    if (m_folded.isEmpty())
        return true;
    if (!m_asciiNeedle)
        return false; // ASCII folds to ASCII: a needle with other letters cannot be in it
    const size_t n = size_t(m_ascii.size());
    if (n > name.size())
        return false;
    const char* needle = m_ascii.constData();
    const auto* h = reinterpret_cast<const unsigned char*>(name.data());
    const size_t last = name.size() - n;
    for (size_t i = 0; i <= last; ++i) {
        if (lowerAscii(h[i]) != m_first)
            continue;
        size_t k = 1;
        while (k < n && lowerAscii(h[i + k]) == static_cast<unsigned char>(needle[k]))
            ++k;
        if (k == n)
            return true;
    }
    return false;
}
