#include "lists/namematch.h"

#include <cstring>

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

NameMatcher::NameMatcher(const QString& text) : m_folded(FoldCase(text)) {
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

bool NameMatcher::matchesUtf8(std::string_view name) const {
    if (m_folded.isEmpty())
        return true;
    if (!isAscii(name)) // folding may turn a non-ASCII letter into an ASCII one (K, the Kelvin sign)
        return FoldCase(QString::fromUtf8(name.data(), qsizetype(name.size()))).contains(m_folded);
    return matchesAscii(name);
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
