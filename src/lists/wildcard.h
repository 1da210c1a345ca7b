#pragma once
// Wildcard matching with the meaning of the classic LIKE operator: "*" any run of characters, "?" one
// character, "#" one digit, "[abc]" one of a list, "[a-z]" a range, "[!...]" none of the list. The
// comparison is exact (binary), or without regard to case under the program's one case folding
// (core/casefold.h), the same as the database's names, = and LIKE.
//
// Lists that are not well formed never fail:
// - a "[" without its closing "]" is an ordinary character "[";
// - "[]" matches the empty text at that place (it consumes nothing);
// - a range written backwards ("[z-a]") contains no character, so that list matches nothing
//   (rather than refusing the pattern).
#include "core/casefold.h"

#include <QString>
#include <QStringView>
#include <string>
#include <vector>

class WildcardPattern {
public:
    explicit WildcardPattern(const QString& pattern, bool ignoreCase = false);
    bool matches(QStringView text) const;

private:
    struct Token {
        enum Kind : unsigned char { Char, Any, Star, Digit, List, Empty } kind;
        bool negated = false;
        char16_t ch = 0;
        int first = 0, count = 0; // ranges in m_ranges for a List
    };
    bool matchesFolded(QStringView text) const;
    bool inList(const Token& tok, char16_t c) const;
    char16_t fold(char16_t c) const { return m_ignoreCase ? FoldCase(c) : c; }

    std::vector<Token> m_tokens;
    std::vector<std::pair<char16_t, char16_t>> m_ranges;
    bool m_ignoreCase = false;
    // The folded pattern holds letters beyond the BMP, which fold only as whole surrogate pairs: texts
    // holding such pairs are folded as a whole before they are matched.
    bool m_wide = false;
    // "*text*" without wildcards inside, the usual find: searched as a plain (folded) text.
    bool m_contains = false;
    std::u16string m_literal;
};

// One-off convenience: text Like pattern.
bool LikeMatch(QStringView text, const QString& pattern, bool ignoreCase = false);
