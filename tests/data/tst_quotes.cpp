#include "data/database.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "enginedb.h"

#include <QTest>

class TestQuotes : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void fixQuotes_data();
    void fixQuotes();
    void quotedNamesRoundTrip_data();
    void quotedNamesRoundTrip();
    void alreadyDoubledTextBreaksTheStatement();
};

void TestQuotes::fixQuotes_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("fixed");
    QTest::addColumn<bool>("valid");
    QTest::newRow("no quote") << "Ember Beam" << "Ember Beam" << true;
    QTest::newRow("one quote") << "O'Brien" << "O''Brien" << true;
    QTest::newRow("typed doubled") << "O''Brien" << "O''Brien" << false;
    QTest::newRow("single and doubled elsewhere") << "a'b''c" << "a'b''c" << false;
    QTest::newRow("two separate quotes") << "a'b'c" << "a''b''c" << true;
    QTest::newRow("three together") << "a'''b" << "a'''b" << false;
    QTest::newRow("leading and trailing") << "'x'" << "''x''" << true;
    QTest::newRow("only a quote") << "'" << "''" << true;
    QTest::newRow("empty") << "" << "" << true;
    QTest::newRow("double quote untouched") << "say \"hi\"" << "say \"hi\"" << true;
}

void TestQuotes::fixQuotes() {
    QFETCH(QString, text);
    QFETCH(QString, fixed);
    QFETCH(bool, valid);
    QCOMPARE(FixQuotes(text), fixed);
    QCOMPARE(ValidName(text), valid);
}

// A name with quotes, put into SQL through FixQuotes, is stored and found as typed.
void TestQuotes::quotedNamesRoundTrip_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("apostrophe") << "Hunter's Mark";
    QTest::newRow("two apostrophes apart") << "Kal'Dor's Eye";
    QTest::newRow("ends with one") << "Pilots'";
}

void TestQuotes::quotedNamesRoundTrip() {
    QFETCH(QString, name);
    QTemporaryDir dir;
    Database cn;
    cn.open(enginedb::connectionFor(enginedb::create(dir)));
    cn.execute("INSERT INTO CHARACTERS (CHARACTER_NAME) VALUES ('" + FixQuotes(name) + "')");
    Recordset rs;
    rs.open("SELECT CHARACTER_NAME FROM CHARACTERS WHERE CHARACTER_NAME = '" + FixQuotes(name) + "'", cn);
    QVERIFY(!rs.eof());
    QCOMPARE(rs.value(0).toString(), name);
}

void TestQuotes::alreadyDoubledTextBreaksTheStatement() {
    QTemporaryDir dir;
    Database cn;
    cn.open(enginedb::connectionFor(enginedb::create(dir)));
    QVERIFY_THROWS_EXCEPTION(VbError, cn.execute("INSERT INTO CHARACTERS (CHARACTER_NAME) VALUES ('" +
                                                 FixQuotes("a'b''c") + "')"));
    QCOMPARE(cn.errors().size(), 1);
}

QTEST_GUILESS_MAIN(TestQuotes)
#include "tst_quotes.moc"
