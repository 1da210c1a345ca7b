#include "lists/cellformat.h"
#include "lists/sortkeys.h"

#include <QTest>

class TestSortKeys : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void invertDigits_data();
    void invertDigits();
    void numberKeysOrderLikeTheList();
    void numberKeyTexts_data();
    void numberKeyTexts();
    void parseListNumber_data();
    void parseListNumber();
    void dateKeys_data();
    void dateKeys();
    void formatWholeNumber_data();
    void formatWholeNumber();
    void formatFraction_data();
    void formatFraction();
};

void TestSortKeys::invertDigits_data() {
    QTest::addColumn<QString>("in");
    QTest::addColumn<QString>("out");
    QTest::newRow("every digit") << "0123456789" << "9876543210";
    QTest::newRow("minus becomes blank") << "-12" << " 87";
    QTest::newRow("point and letters kept") << "1.5e+3x" << "8.4e+6x";
    QTest::newRow("empty") << "" << "";
    QTest::newRow("ampersand kept") << "&0" << "&9";
}

void TestSortKeys::invertDigits() {
    QFETCH(QString, in);
    QFETCH(QString, out);
    QCOMPARE(InvertDigits(in), out);
    QCOMPARE(InvertDigits(InvertDigits(in)).remove(QLatin1Char(' ')), QString(in).remove(QLatin1Char('-')));
}

void TestSortKeys::numberKeysOrderLikeTheList() {
    // The key texts sort the cells as the list showed them: non-numbers, negatives up, then the rest.
    const QStringList cells{"10", "9", "-1", "-20", "-", "0", "1,234", "N/A", "0.5", "-0.25", ""};
    QStringList sorted = cells;
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const QString& a, const QString& b) { return NumberSortText(a) < NumberSortText(b); });
    QCOMPARE(sorted, (QStringList{"-", "N/A", "", "-20", "-1", "-0.25", "0", "0.5", "9", "10", "1,234"}));
}

void TestSortKeys::numberKeyTexts_data() {
    QTest::addColumn<QString>("cell");
    QTest::addColumn<QString>("key");
    const QString z30(30, QLatin1Char('0'));
    QTest::newRow("ten") << "10" << QString(28, QLatin1Char('0')) + "10." + z30;
    QTest::newRow("zero") << "0" << z30 + "." + z30;
    QTest::newRow("minus one") << "-1" << "&" + QString(29, QLatin1Char('9')) + "8." + QString(30, QLatin1Char('9'));
    QTest::newRow("fraction") << "2.25" << QString(29, QLatin1Char('0')) + "2.25" + QString(28, QLatin1Char('0'));
    QTest::newRow("grouped") << "1,234,567" << QString(23, QLatin1Char('0')) + "1234567." + z30;
    QTest::newRow("dash") << "-" << "";
    QTest::newRow("text") << "N/A" << "";
    QTest::newRow("31 digits keep them all") << "1E+30" << "1" + z30 + "." + z30;
}

void TestSortKeys::numberKeyTexts() {
    QFETCH(QString, cell);
    QFETCH(QString, key);
    QCOMPARE(NumberSortText(cell), key);
}

void TestSortKeys::parseListNumber_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<double>("value");
    QTest::newRow("grouped") << "1,234,567" << true << 1234567.0;
    QTest::newRow("negative grouped") << "-1,234" << true << -1234.0;
    QTest::newRow("blanks") << "  42 " << true << 42.0;
    QTest::newRow("fraction") << "3.14" << true << 3.14;
    QTest::newRow("exponent") << "1E+16" << true << 1e16;
    QTest::newRow("point first") << ".5" << true << 0.5;
    QTest::newRow("dash") << "-" << false << 0.0;
    QTest::newRow("N/A") << "N/A" << false << 0.0;
    QTest::newRow("empty") << "" << false << 0.0;
    QTest::newRow("comma first") << ",5" << false << 0.0;
    QTest::newRow("trailing junk") << "12abc" << false << 0.0;
    QTest::newRow("two points") << "1.2.3" << false << 0.0;
    QTest::newRow("exponent without digits") << "1e" << false << 0.0;
    QTest::newRow("Unknown") << "Unknown" << false << 0.0;
}

void TestSortKeys::parseListNumber() {
    QFETCH(QString, text);
    QFETCH(bool, ok);
    QFETCH(double, value);
    double v = -99;
    QCOMPARE(ParseListNumber(text, &v), ok);
    if (ok)
        QCOMPARE(v, value);
}

void TestSortKeys::dateKeys_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<qint64>("key");
    QTest::newRow("iso with time") << "2024-03-15 14:20:05" << Q_INT64_C(20240315142005);
    QTest::newRow("stored form, no such day") << "2023-02-29 10:00:00" << Q_INT64_C(-1);
    QTest::newRow("stored form, minute 60") << "2023-02-01 10:60:00" << Q_INT64_C(-1);
    QTest::newRow("stored form, last day") << "2023-12-31 23:59:59" << Q_INT64_C(20231231235959);
    QTest::newRow("iso T") << "2024-03-15T14:20:05" << Q_INT64_C(20240315142005);
    QTest::newRow("iso date") << "2024-03-15" << Q_INT64_C(20240315000000);
    QTest::newRow("iso minutes") << "2024-03-15 09:07" << Q_INT64_C(20240315090700);
    QTest::newRow("us pm") << "3/5/2024 2:04:05 PM" << Q_INT64_C(20240305140405);
    QTest::newRow("us 12 am") << "3/5/2024 12:00:00 AM" << Q_INT64_C(20240305000000);
    QTest::newRow("us two-digit year") << "1/2/99" << Q_INT64_C(19990102000000);
    QTest::newRow("time alone") << "10:20" << Q_INT64_C(18991230102000);
    QTest::newRow("leap day") << "2024-02-29" << Q_INT64_C(20240229000000);
    QTest::newRow("no such day") << "2023-02-29" << Q_INT64_C(-1);
    QTest::newRow("month 13") << "13/1/2024" << Q_INT64_C(-1);
    QTest::newRow("hour 24") << "2024-01-01 24:00" << Q_INT64_C(-1);
    QTest::newRow("words") << "not a date" << Q_INT64_C(-1);
    QTest::newRow("empty") << "" << Q_INT64_C(-1);
    QTest::newRow("trailing junk") << "2024-01-01 x" << Q_INT64_C(-1);
}

void TestSortKeys::dateKeys() {
    QFETCH(QString, text);
    QFETCH(qint64, key);
    QCOMPARE(DateSortKey(text), key);
    const QByteArray latin1 = text.toLatin1();
    QCOMPARE(DateSortKey(QLatin1StringView(latin1)), key);
    QCOMPARE(DateSortText(text), key < 0 ? QString() : QString::number(key).rightJustified(14, QLatin1Char('0')));
}

void TestSortKeys::formatWholeNumber_data() {
    QTest::addColumn<qint64>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << Q_INT64_C(0) << "0";
    QTest::newRow("three digits") << Q_INT64_C(999) << "999";
    QTest::newRow("thousand") << Q_INT64_C(1000) << "1,000";
    QTest::newRow("million") << Q_INT64_C(1234567) << "1,234,567";
    QTest::newRow("negative") << Q_INT64_C(-1234) << "-1,234";
    QTest::newRow("smallest") << std::numeric_limits<qint64>::min() << "-9,223,372,036,854,775,808";
}

void TestSortKeys::formatWholeNumber() {
    QFETCH(qint64, value);
    QFETCH(QString, text);
    QCOMPARE(FormatWholeNumber(value), text);
}

void TestSortKeys::formatFraction_data() {
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("two decimals") << 3.14159 << "3.14";
    QTest::newRow("one decimal") << 2.5 << "2.5";
    QTest::newRow("whole") << 3.0 << "3";
    QTest::newRow("no grouping") << 1234.567 << "1234.57";
    QTest::newRow("tiny negative is zero") << -0.001 << "0";
    QTest::newRow("negative") << -2.333 << "-2.33";
    QTest::newRow("huge") << 1e16 << "1E+16";
    QTest::newRow("leading zero decimal") << 0.05 << "0.05";
    QTest::newRow("one tenth") << 0.1 << "0.1";
    QTest::newRow("ties to even down") << 0.125 << "0.12";
    QTest::newRow("ties to even up") << 0.375 << "0.38";
    QTest::newRow("fifteen digits") << 99999999999.99 << "99999999999.99";
    QTest::newRow("beyond cents") << 12345678901234.5 << "12345678901234.5";
}

void TestSortKeys::formatFraction() {
    QFETCH(double, value);
    QFETCH(QString, text);
    QCOMPARE(FormatFractionNumber(value), text);
}

QTEST_APPLESS_MAIN(TestSortKeys)
#include "tst_sortkeys.moc"
