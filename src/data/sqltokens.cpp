#include "data/sqltokens.h"
#include "data/sqltranslate.h"

namespace jetsql {

int readQuoted(const QString& s, int i, QChar q, QString& value) {
    const int n = int(s.size());
    for (int j = i + 1; j < n; ++j) {
        if (s[j] == q) {
            if (j + 1 < n && s[j + 1] == q) {
                value += q;
                ++j;
                continue;
            }
            return j + 1;
        }
        value += s[j];
    }
    return -1;
}

QList<Token> tokenize(const QString& s) {
    QList<Token> out;
    const int n = int(s.size());
    int i = 0;
    bool space = false;
    while (i < n) {
        const QChar c = s[i];
        if (c.isSpace()) {
            space = true;
            ++i;
            continue;
        }
        Token t{Tok::Op, i, 1, space, {}};
        space = false;
        if (c == u'\'' || c == u'"') {
            const int end = readQuoted(s, i, c, t.value);
            if (end < 0) { // an unterminated literal goes through as it is, for the engine to refuse
                t.len = n - i;
                t.value.clear();
            } else {
                t.kind = Tok::String;
                t.len = end - i;
            }
        } else if (isIdentStart(c) || c == u'[') {
            // NAME, TABLE.NAME, [A NAME], TABLE.*: the parts joined by dots make one identifier.
            int j = i;
            QString text;
            while (true) {
                if (j < n && s[j] == u'[') {
                    const int close = int(s.indexOf(u']', j));
                    if (close < 0)
                        break;
                    text += quoteIdentifier(s.mid(j + 1, close - j - 1));
                    j = close + 1;
                } else if (j < n && isIdentStart(s[j])) {
                    const int start = j;
                    while (j < n && isIdentChar(s[j]))
                        ++j;
                    text += s.mid(start, j - start);
                } else if (j < n && s[j] == u'*' && !text.isEmpty()) {
                    text += u'*';
                    ++j;
                    break;
                } else {
                    break;
                }
                if (j + 1 < n && s[j] == u'.' &&
                    (isIdentStart(s[j + 1]) || s[j + 1] == u'[' || s[j + 1] == u'*')) {
                    text += u'.';
                    ++j;
                    continue;
                }
                break;
            }
            if (j == i) { // a lone '[' with no closing bracket
                t.len = 1;
            } else {
                t.kind = Tok::Ident;
                t.len = j - i;
                t.value = text;
            }
        } else if (c.isDigit() || (c == u'.' && i + 1 < n && s[i + 1].isDigit())) {
            int j = i;
            while (j < n && (s[j].isDigit() || s[j] == u'.'))
                ++j;
            if (j < n && (s[j] == u'e' || s[j] == u'E')) {
                int k = j + 1;
                if (k < n && (s[k] == u'+' || s[k] == u'-'))
                    ++k;
                if (k < n && s[k].isDigit()) {
                    j = k;
                    while (j < n && s[j].isDigit())
                        ++j;
                }
            }
            t.kind = Tok::Number;
            t.len = j - i;
        } else if (c == u'(') {
            t.kind = Tok::LParen;
        } else if (c == u')') {
            t.kind = Tok::RParen;
        } else if (c == u',') {
            t.kind = Tok::Comma;
        } else if (c == u';') {
            t.kind = Tok::Semi;
        } else if (i + 1 < n) {
            const QStringView two = QStringView(s).mid(i, 2);
            if (two == u"<>" || two == u"<=" || two == u">=" || two == u"!=" || two == u"||" || two == u"==")
                t.len = 2;
        }
        out.append(t);
        i += t.len;
    }
    return out;
}

} // namespace jetsql
