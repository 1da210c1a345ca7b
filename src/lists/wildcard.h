#pragma once
// Wildcard matching with the meaning of the classic LIKE operator: "*" any run of characters, "?" one
// character, "#" one digit, "[abc]" one of a list, "[a-z]" a range, "[!...]" none of the list. The
// comparison is exact (binary); callers wanting no case upper-case pattern and text, or ask the
// pattern to fold case itself.
//
// Lists that are not well formed never fail:
// - a "[" without its closing "]" is an ordinary character "[";
// - "[]" matches the empty text at that place (it consumes nothing);
// - a range written backwards ("[z-a]") contains no character, so that list matches nothing
//   (the classic operator refused such a pattern; here it simply finds nothing).
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
    bool matchFrom(size_t t, QStringView text, qsizetype pos) const;
    bool inList(const Token& tok, char16_t c) const;
    char16_t fold(char16_t c) const {
        if (!m_ignoreCase)
            return c;
        if (c < 128)
            return (c >= u'a' && c <= u'z') ? char16_t(c - 32) : c;
        return foldWide(c);
    }
    static char16_t foldWide(char16_t c);

    std::vector<Token> m_tokens;
    std::vector<std::pair<char16_t, char16_t>> m_ranges;
    bool m_ignoreCase = false;
    // "*text*" without wildcards inside, the usual find: searched as a plain (folded) text.
    bool m_contains = false;
    std::u16string m_literal;
};

// One-off convenience: text Like pattern.
bool LikeMatch(QStringView text, const QString& pattern, bool ignoreCase = false);
