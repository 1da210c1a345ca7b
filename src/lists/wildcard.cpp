#include "lists/wildcard.h"

#include <QChar>

namespace {
bool hasSurrogates(QStringView text) {
    for (const QChar c : text)
        if (c.isSurrogate())
            return true;
    return false;
}
} // namespace

WildcardPattern::WildcardPattern(const QString& text, bool ignoreCase) : m_ignoreCase(ignoreCase) {
    const QString pattern = ignoreCase ? FoldCase(text) : text;
    m_wide = ignoreCase && hasSurrogates(pattern);
    const qsizetype n = pattern.size();
    for (qsizetype i = 0; i < n; ++i) {
        const char16_t c = pattern[i].unicode();
        Token tok{Token::Char};
        if (c == u'*') {
            if (!m_tokens.empty() && m_tokens.back().kind == Token::Star)
                continue;
            tok.kind = Token::Star;
        } else if (c == u'?') {
            tok.kind = Token::Any;
        } else if (c == u'#') {
            tok.kind = Token::Digit;
        } else if (c == u'[') {
            const qsizetype close = pattern.indexOf(QLatin1Char(']'), i + 1);
            if (close < 0) {
                tok.ch = fold(c); // no closing bracket: an ordinary "["
            } else if (close == i + 1) {
                tok.kind = Token::Empty; // "[]": the empty text
                i = close;
            } else {
                qsizetype j = i + 1;
                tok.kind = Token::List;
                // "[!]" has nothing after the "!" to negate: it is the list holding "!".
                if (pattern[j] == u'!' && j + 1 < close) {
                    tok.negated = true;
                    ++j;
                }
                tok.first = int(m_ranges.size());
                while (j < close) {
                    const char16_t lo = fold(pattern[j].unicode());
                    if (j + 2 < close && pattern[j + 1] == u'-') {
                        const char16_t hi = fold(pattern[j + 2].unicode());
                        if (lo <= hi) // a range written backwards holds nothing
                            m_ranges.emplace_back(lo, hi);
                        j += 3;
                    } else {
                        m_ranges.emplace_back(lo, lo); // also "-" first or last in the list
                        ++j;
                    }
                }
                tok.count = int(m_ranges.size()) - tok.first;
                i = close;
            }
        } else {
            tok.ch = fold(c);
        }
        m_tokens.push_back(tok);
    }
    const size_t count = m_tokens.size();
    if (count >= 2 && m_tokens.front().kind == Token::Star && m_tokens.back().kind == Token::Star) {
        m_contains = true;
        for (size_t t = 1; t + 1 < count && m_contains; ++t) {
            m_contains = m_tokens[t].kind == Token::Char;
            m_literal.push_back(m_tokens[t].ch);
        }
    }
}

bool WildcardPattern::inList(const Token& tok, char16_t c) const {
    bool found = false;
    for (int k = tok.first; k < tok.first + tok.count && !found; ++k)
        found = c >= m_ranges[size_t(k)].first && c <= m_ranges[size_t(k)].second;
    return found != tok.negated;
}

bool WildcardPattern::matches(QStringView text) const {
    if (m_wide && hasSurrogates(text))
        return matchesFolded(FoldCase(text.toString()));
    return matchesFolded(text);
}

// The text as it comes, each unit folded on the way when case is ignored.
bool WildcardPattern::matchesFolded(QStringView text) const {
    if (m_contains) {
        const size_t m = m_literal.size();
        const size_t n = size_t(text.size());
        if (m == 0)
            return true;
        const QChar* s = text.data();
        for (size_t p = 0; p + m <= n; ++p) {
            if (fold(s[p].unicode()) != m_literal[0])
                continue;
            size_t k = 1;
            while (k < m && fold(s[p + k].unicode()) == m_literal[k])
                ++k;
            if (k == m)
                return true;
        }
        return false;
    }
    // The usual glob walk with one remembered star: every token but "*" and "[]" takes exactly one
    // character, so backtracking to the last star is enough and the walk stays O(text x pattern).
    const size_t tokenCount = m_tokens.size();
    const qsizetype n = text.size();
    size_t t = 0;
    qsizetype p = 0;
    size_t starToken = size_t(-1);
    qsizetype starPos = 0;
    while (p < n) {
        while (t < tokenCount && m_tokens[t].kind == Token::Empty)
            ++t;
        bool step = false;
        if (t < tokenCount) {
            const Token& tok = m_tokens[t];
            const char16_t c = fold(text[p].unicode());
            switch (tok.kind) {
            case Token::Char:
                step = c == tok.ch;
                break;
            case Token::Any:
                step = true;
                break;
            case Token::Digit:
                step = c >= u'0' && c <= u'9';
                break;
            case Token::List:
                step = inList(tok, c);
                break;
            case Token::Star:
                starToken = t++;
                starPos = p;
                continue;
            case Token::Empty:
                break;
            }
        }
        if (step) {
            ++t;
            ++p;
        } else if (starToken != size_t(-1)) {
            t = starToken + 1;
            p = ++starPos;
        } else {
            return false;
        }
    }
    while (t < tokenCount && (m_tokens[t].kind == Token::Star || m_tokens[t].kind == Token::Empty))
        ++t;
    return t == tokenCount;
}

bool LikeMatch(QStringView text, const QString& pattern, bool ignoreCase) {
    return WildcardPattern(pattern, ignoreCase).matches(text);
}
