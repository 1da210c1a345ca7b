#pragma once
// "Name contains", without regard to case, as the search box of the main window narrows the list:
// both texts are case folded (QString::toCaseFolded), so "ION" finds "Ion Drive" and "straße" finds
// "STRASSE" only where folding makes them equal. ASCII names, by far the common case, are compared
// byte by byte where the list stores them (UTF-8), without making a QString.
#include <QByteArray>
#include <QString>

#include <string_view>

// The folding every name comparison of the search box uses.
QString FoldCase(const QString& text);

class NameMatcher {
public:
    explicit NameMatcher(const QString& text = QString());

    bool isEmpty() const { return m_folded.isEmpty(); }
    // The folded text; one matcher's text containing another's means it narrows that one further.
    const QString& folded() const { return m_folded; }
    bool narrows(const NameMatcher& wider) const;

    bool matches(const QString& name) const;
    bool matchesUtf8(std::string_view name) const;
    // The same for a name known to be ASCII (a column of ASCII names need not be checked row by row).
    bool matchesAscii(std::string_view name) const;

private:
    bool foldedContains(std::string_view name) const;
    QString m_folded;
    QByteArray m_utf8;  // the folded text as UTF-8
    QByteArray m_ascii; // the folded text when it is ASCII (lower case bytes)
    bool m_asciiNeedle = true;
    unsigned char m_first = 0;
};
