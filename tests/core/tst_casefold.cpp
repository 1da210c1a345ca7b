// The program's one case folding: the short way for ASCII must give what Qt's tables give, for code
// points and for single UTF-16 units (above ASCII both are Qt's own folding).
#include "core/casefold.h"

#include <QTest>

class TestCaseFold : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void asciiFoldsAsQtFoldsIt() {
        for (char32_t c = 0; c <= 0x80; ++c) {
            QCOMPARE(uint(FoldCase(c)), uint(QChar::toCaseFolded(c)));
            QCOMPARE(uint(FoldCase(char16_t(c))), uint(QChar::toCaseFolded(c)));
        }
        QCOMPARE(uint(FoldCase(char32_t(0x212A))), uint('k')); // the Kelvin sign
        QCOMPARE(FoldCase(QString::fromUtf8("ΣΟΦΟς \U00010400")), QString::fromUtf8("σοφοσ \U00010428"));
    }
};

QTEST_GUILESS_MAIN(TestCaseFold)
#include "tst_casefold.moc"
