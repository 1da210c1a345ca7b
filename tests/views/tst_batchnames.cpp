// The planner's in-memory name matching must agree with the database's: a record reached under two
// spellings that the database holds as one is one line of the shopping list, never two.
#include "views/batchquery.h"

#include <QTest>

class TestBatchNames : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void sameAsTheDatabase_data() {
        QTest::addColumn<QString>("a");
        QTest::addColumn<QString>("b");
        QTest::addColumn<bool>("same");
        QTest::newRow("ascii case") << "Field Welder"
                                    << "FIELD welder" << true;
        QTest::newRow("accented") << QString::fromUtf8("Éclair Core") << QString::fromUtf8("éclair core")
                                  << true;
        QTest::newRow("greek final sigma")
            << QString::fromUtf8("ΣΟΦΟΣ") << QString::fromUtf8("σοφος") << true;
        QTest::newRow("beyond the first plane")
            << QString::fromUtf8("\U00010400 Shard") << QString::fromUtf8("\U00010428 shard") << true;
        QTest::newRow("accents count") << QString::fromUtf8("Éclair") << "Eclair" << false;
        QTest::newRow("sharp s is not ss") << QString::fromUtf8("Straße") << "STRASSE" << false;
        QTest::newRow("one letter apart") << "Ore A"
                                          << "Ore B" << false;
    }
    void sameAsTheDatabase() {
        QFETCH(QString, a);
        QFETCH(QString, b);
        QFETCH(bool, same);
        QCOMPARE(SameName(a, b), same);
        QCOMPARE(SameName(b, a), same);
        QCOMPARE(NameKey(a) == NameKey(b), same);
        if (same)
            QCOMPARE(NameHash(a, 7), NameHash(b, 7));
    }
};

QTEST_APPLESS_MAIN(TestBatchNames)
#include "tst_batchnames.moc"
