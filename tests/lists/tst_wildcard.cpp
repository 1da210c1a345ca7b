#include "lists/wildcard.h"

#include <QTest>

class TestWildcard : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void like_data();
    void like();
    void ignoreCase_data();
    void ignoreCase();
};

void TestWildcard::like_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<bool>("match");
    QTest::newRow("plain equal") << "Beam" << "Beam" << true;
    QTest::newRow("plain differs") << "Beam" << "Bean" << false;
    QTest::newRow("binary case") << "beam" << "Beam" << false;
    QTest::newRow("star any run") << "Heavy Beam Mk2" << "*Beam*" << true;
    QTest::newRow("star empty run") << "Beam" << "*Beam*" << true;
    QTest::newRow("star needs the rest") << "Heavy Beam" << "*Beam*x" << false;
    QTest::newRow("stars only") << "" << "**" << true;
    QTest::newRow("question one char") << "Mk2" << "Mk?" << true;
    QTest::newRow("question not zero") << "Mk" << "Mk?" << false;
    QTest::newRow("hash digit") << "Mk2" << "Mk#" << true;
    QTest::newRow("hash not letter") << "MkA" << "Mk#" << false;
    QTest::newRow("list") << "b" << "[abc]" << true;
    QTest::newRow("list miss") << "d" << "[abc]" << false;
    QTest::newRow("range") << "m" << "[a-z]" << true;
    QTest::newRow("range miss") << "M" << "[a-z]" << false;
    QTest::newRow("negated") << "d" << "[!abc]" << true;
    QTest::newRow("negated miss") << "a" << "[!abc]" << false;
    QTest::newRow("negated range") << "5" << "[!a-z]" << true;
    QTest::newRow("literal star in list") << "a*b" << "a[*]b" << true;
    QTest::newRow("literal star in list miss") << "axb" << "a[*]b" << false;
    QTest::newRow("literal question in list") << "?" << "[?]" << true;
    QTest::newRow("literal hash in list") << "#" << "[#]" << true;
    QTest::newRow("open bracket in list") << "[" << "[[]" << true;
    QTest::newRow("dash first is literal") << "-" << "[-a]" << true;
    QTest::newRow("dash last is literal") << "-" << "[a-]" << true;
    QTest::newRow("closing bracket outside") << "a]" << "a]" << true;
    QTest::newRow("backtracking") << "abcabd" << "*abd" << true;
    QTest::newRow("several stars") << "one two three" << "*o*t*e" << true;
    // Lists that are not well formed.
    QTest::newRow("unclosed bracket is literal") << "x[ab" << "*[ab*" << true;
    QTest::newRow("unclosed bracket literal miss") << "xab" << "*[ab*" << false;
    QTest::newRow("lone bracket") << "[" << "[" << true;
    QTest::newRow("empty list takes no character") << "ab" << "a[]b" << true;
    QTest::newRow("empty list alone") << "" << "[]" << true;
    QTest::newRow("backwards range finds nothing") << "m" << "[z-a]" << false;
    QTest::newRow("backwards range negated") << "m" << "[!z-a]" << true;
    QTest::newRow("bang alone is a bang") << "!" << "[!]" << true;
    QTest::newRow("bang alone not other") << "x" << "[!]" << false;
}

void TestWildcard::like() {
    QFETCH(QString, text);
    QFETCH(QString, pattern);
    QFETCH(bool, match);
    QCOMPARE(LikeMatch(text, pattern), match);
}

void TestWildcard::ignoreCase_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<bool>("match");
    QTest::newRow("letters") << "heavy BEAM" << "*Beam*" << true;
    QTest::newRow("range") << "Q" << "[a-z]" << true;
    QTest::newRow("negated range") << "q" << "[!A-Z]" << false;
    QTest::newRow("non-ascii") << "ÜBER" << "*über*" << true;
}

void TestWildcard::ignoreCase() {
    QFETCH(QString, text);
    QFETCH(QString, pattern);
    QFETCH(bool, match);
    QCOMPARE(LikeMatch(text, pattern, true), match);
    // The same as upper-casing both first.
    QCOMPARE(LikeMatch(text.toUpper(), pattern.toUpper()), match);
}

QTEST_APPLESS_MAIN(TestWildcard)
#include "tst_wildcard.moc"
