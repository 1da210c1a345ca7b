// The database tool as a user runs it: what it writes, what it refuses, and its exit codes.
#include "tst_sampledata_db.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

class TestMakeDb : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void refusesBadArguments_data();
    void refusesBadArguments();
    void createsEachKind_data();
    void createsEachKind();
    void keepsAnExistingFileUnlessForced();
    void failureLeavesNoFile();

private:
    int run(const QStringList& args, QString* err = nullptr)
    {
        QProcess p;
        p.start(QStringLiteral(VOSK_MAKEDB), args);
        if (!p.waitForFinished(120000)) return -1;
        if (err) *err = QString::fromLocal8Bit(p.readAllStandardError());
        return p.exitCode();
    }
    QTemporaryDir m_dir;
};

void TestMakeDb::refusesBadArguments_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<QString>("message");
    QTest::newRow("nothing") << QStringList() << "Usage";
    QTest::newRow("unknown option") << QStringList({"--sampel", "x.vosk"}) << "Unknown option \"--sampel\"";
    QTest::newRow("no file") << QStringList({"--create"}) << "--create takes one file name.";
    QTest::newRow("two files") << QStringList({"--sample", "a", "b"}) << "--sample takes one file name.";
    QTest::newRow("count zero") << QStringList({"--synthetic", "0", "x.vosk"}) << "whole number above 0";
    QTest::newRow("count text") << QStringList({"--synthetic", "many", "x.vosk"}) << "whole number above 0";
    QTest::newRow("tree without root") << QStringList({"--tree", "10", "x.vosk"}) << "--tree takes";
}

void TestMakeDb::refusesBadArguments()
{
    QFETCH(QStringList, args);
    QFETCH(QString, message);
    QString err;
    QCOMPARE(run(args, &err), 1);
    QVERIFY2(err.contains(message), qPrintable(err));
    QVERIFY(!QFile::exists("x.vosk"));
}

void TestMakeDb::createsEachKind_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<int>("equipment");
    QTest::newRow("empty") << QStringList({"--create"}) << 0;
    QTest::newRow("sample") << QStringList({"--sample"}) << 144;
    QTest::newRow("synthetic") << QStringList({"--synthetic", "80"}) << 80;
    QTest::newRow("tree") << QStringList({"--tree", "30", "Deep Drive"}) << 145;
    QTest::newRow("sample with cycle") << QStringList({"--sample", "--cycle"}) << 145;
}

void TestMakeDb::createsEachKind()
{
    QFETCH(QStringList, args);
    QFETCH(int, equipment);
    const QString file = m_dir.filePath(QString(QTest::currentDataTag()).replace(' ', '_') + ".vosk");
    QString err;
    QCOMPARE(run(args << file, &err), 0);
    RawDb db(file);
    QVERIFY(db.isOpen());
    QCOMPARE(db.scalar("SELECT max(VERSION) FROM DB_VERSION").toInt(), 6);
    QCOMPARE(db.count("EQUIPMENTS"), equipment);
}

void TestMakeDb::keepsAnExistingFileUnlessForced()
{
    const QString file = m_dir.filePath("kept.vosk");
    QCOMPARE(run({"--sample", file}), 0);
    QString err;
    QCOMPARE(run({"--create", file}, &err), 2);
    QVERIFY(err.contains("already exists; use --force"));
    {
        RawDb db(file);
        QVERIFY(db.count("EQUIPMENTS") > 0);
    }
    QCOMPARE(run({"--force", "--create", file}), 0);
    RawDb db(file);
    QCOMPARE(db.count("EQUIPMENTS"), 0);
}

void TestMakeDb::failureLeavesNoFile()
{
    // A tree whose root name is taken by the sample world fails after the file was made.
    const QString file = m_dir.filePath("failed.vosk");
    QString err;
    QCOMPARE(run({"--tree", "10", "Hunter's Lance Mk I", file}, &err), 3);
    QVERIFY2(err.contains("UNIQUE"), qPrintable(err));
    QVERIFY(!QFile::exists(file));
    QCOMPARE(run({"--create", m_dir.filePath("no/such/folder.vosk")}, &err), 3);
}

QTEST_GUILESS_MAIN(TestMakeDb)
#include "tst_schema_makedb.moc"
