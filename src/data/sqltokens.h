#pragma once
// The pieces of a statement in the program's SQL dialect, for the translation to SQLite.
#include <QList>
#include <QString>

namespace jetsql {

enum class Tok { Ident, String, Number, Op, LParen, RParen, Comma, Semi };

struct Token {
    Tok kind;
    int pos;
    int len;
    bool spaceBefore;
    QString value; // strings: the literal's value; identifiers: the text with [..] resolved
};

inline bool isIdentStart(QChar c) {
    return c.isLetter() || c == u'_';
}
inline bool isIdentChar(QChar c) {
    return c.isLetterOrNumber() || c == u'_' || c == u'$';
}

// Reads a quoted run starting at i (the opening quote); doubled quotes stand for one. Returns the
// index after the closing quote, or -1 when the text ends first.
int readQuoted(const QString& s, int i, QChar q, QString& value);

// String literals ('..' and Jet's ".."), identifiers (NAME, TABLE.NAME, [A NAME], TABLE.*), numbers,
// operators, parentheses, commas and semicolons. Blanks only mark the token after them.
QList<Token> tokenize(const QString& s);

} // namespace jetsql
