// The program's one case folding against Qt's tables: the short way for ASCII must give what the
// tables give, for single units and for whole texts beyond the BMP.
#include "core/casefold.h"

#include <QTest>

class TestCaseFold : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void everyCharacterFoldsAsQtFoldsIt() {
        for (char32_t c = 0; c <= 0x10FFFF; ++c) {
            const char32_t expected = QChar::toCaseFolded(c);
            if (FoldCase(c) != expected)
                QFAIL(qPrintable(QStringLiteral("U+%1").arg(uint(c), 4, 16, QLatin1Char('0'))));
            if (c <= 0xFFFF && FoldCase(char16_t(c)) != char16_t(expected))
                QFAIL(qPrintable(QStringLiteral("unit U+%1").arg(uint(c), 4, 16, QLatin1Char('0'))));
        }
    }

    void textsFoldCharacterByCharacter_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("folded");
        QTest::newRow("ascii") << "Field WELDER 7"
                               << "field welder 7";
        QTest::newRow("latin") << "ÉCLAIR Über"
                               << "éclair über";
        QTest::newRow("final sigma and kelvin")
            << QString::fromUtf8("ΣΟΦΟΣ \u212A") << QString::fromUtf8("σοφοσ k");
        QTest::newRow("sharp s keeps its length")
            << QString::fromUtf8("STRA\u1E9EE straße") << QString::fromUtf8("straße straße");
        QTest::newRow("beyond the BMP")
            << QString::fromUtf8("\U00010400x") << QString::fromUtf8("\U00010428x");
    }

    void textsFoldCharacterByCharacter() {
        QFETCH(QString, text);
        QFETCH(QString, folded);
        QCOMPARE(FoldCase(text), folded);
    }
};

QTEST_GUILESS_MAIN(TestCaseFold)
#include "tst_casefold.moc"
