#pragma once
// The one case folding of the program. Names in the database (uniqueness, lookups, = and LIKE) and
// Find in the main list treat two texts as equal without regard to case when their simple Unicode
// case foldings are equal: each code point mapped on its own, as QString::toCaseFolded does ("É" and
// "é", "Σ", "σ" and "ς", "K" and the Kelvin sign are alike; "ß" and "ss" are not, since that mapping
// would change the text's length).
#include <QChar>
#include <QString>

inline char32_t FoldCase(char32_t c) {
    if (c < 0x80)
        return c >= U'A' && c <= U'Z' ? c + 32 : c;
    return QChar::toCaseFolded(c);
}

// One UTF-16 unit; a surrogate comes back unchanged (fold the whole text for letters beyond the BMP).
inline char16_t FoldCase(char16_t c) {
    if (c < 0x80)
        return c >= u'A' && c <= u'Z' ? char16_t(c + 32) : c;
    return QChar::toCaseFolded(c);
}

inline QString FoldCase(const QString& text) {
    return text.toCaseFolded();
}
