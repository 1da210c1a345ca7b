#include "core/inifile.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class TestIniFile : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void readsPrivateProfileLines_data();
    void readsPrivateProfileLines();
    void writeKeepsOtherKeysAndReplacesOne();
};

void TestIniFile::readsPrivateProfileLines_data() {
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("expected");
    QTest::newRow("exact") << "Main"
                           << "DATA"
                           << "Choose a category";
    QTest::newRow("case of section and key") << "main"
                                             << "data"
                                             << "Choose a category";
    QTest::newRow("value keeps = and backslash-n") << "Main"
                                                   << "CHECKED"
                                                   << "a=b\\nc";
    QTest::newRow("value keeps commas") << "FORUM"
                                        << "URL"
                                        << "http://example.invalid/a,b";
    QTest::newRow("missing key gives default") << "Main"
                                               << "NOPE"
                                               << "dflt";
    QTest::newRow("key of another section") << "FORUM"
                                            << "DATA"
                                            << "dflt";
    QTest::newRow("first of two equal keys wins") << "Main"
                                                  << "TWICE"
                                                  << "one";
}

void TestIniFile::readsPrivateProfileLines() {
    QFETCH(QString, section);
    QFETCH(QString, key);
    QFETCH(QString, expected);
    QTemporaryDir dir;
    const QString file = dir.filePath("VOSK.ini");
    QFile f(file);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write("; comment\n[Main]\nDATA=Choose a category\nCHECKED = a=b\\nc\nTWICE=one\nTWICE=two\n"
            "[FORUM]\nURL=http://example.invalid/a,b\n");
    f.close();
    QCOMPARE(ReadIni(file, section, key, "dflt"), expected);
}

void TestIniFile::writeKeepsOtherKeysAndReplacesOne() {
    QTemporaryDir dir;
    const QString file = dir.filePath("x.ini");
    QVERIFY(WriteIni(file, "COLORS", "UPDATED", "255"));
    QVERIFY(WriteIni(file, "COLORS", "PERSONAL", "65280"));
    QVERIFY(WriteIni(file, "Main", "DATA", "d"));
    QVERIFY(WriteIni(file, "colors", "updated", "128"));
    QCOMPARE(ReadIni(file, "COLORS", "UPDATED"), QString("128"));
    QCOMPARE(ReadIni(file, "COLORS", "PERSONAL"), QString("65280"));
    QCOMPARE(ReadIni(file, "Main", "DATA"), QString("d"));
}

QTEST_GUILESS_MAIN(TestIniFile)
#include "tst_inifile.moc"
