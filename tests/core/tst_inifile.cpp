// The profile module: reading and writing INI files as the Windows profile functions do.
#include "core/inifile.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

namespace {
QByteArray readAll(const QString& file) {
    QFile f(file);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

bool writeAll(const QString& file, const QByteArray& bytes) {
    QFile f(file);
    return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(bytes) == bytes.size();
}
} // namespace

class TestIniFile : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void readsPrivateProfileLines_data() {
        QTest::addColumn<QString>("section");
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("buffer");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* name, const char* section, const char* key, const QString& expected,
                            int buffer = 0) {
            QTest::newRow(name) << QString(section) << QString(key) << buffer << expected;
        };
        row("case of section and key", "main", "data", "Choose a category");
        row("value keeps = and backslash-n", "Main", "CHECKED", "a=b\\nc");
        row("missing key gives default", "Main", "NOPE", "dflt");
        row("key of another section", "FORUM", "DATA", "dflt");
        row("first of two equal keys wins", "Main", "TWICE", "one");
        row("first of two equal sections wins", "FORUM", "SECOND", "dflt");
        row("blanks and tabs around the value go", "Q", "BLANKS", "inner  blanks");
        row("one pair of double quotes goes", "Q", "DOUBLE", "  kept inside  ");
        row("one pair of single quotes goes", "Q", "SINGLE", "'twice'");
        row("unmatched quotes stay", "Q", "MIXED", "\"half'");
        row("cut at a NUL", "Q", "NUL", "before");
        row("blanks around the key and the section name", "Q", "SPACED KEY", "found");
        row("lone CR and lone LF end lines", "CR", "B", "2");
        row("section without closing bracket", "OPEN", "D", "4");
        row("the reading buffer cuts to one less", "LONG", "TEXT", QString(511, 'x'), 512);
    }
    void readsPrivateProfileLines() {
        QFETCH(QString, section);
        QFETCH(QString, key);
        QFETCH(int, buffer);
        QFETCH(QString, expected);
        const QString file = m_dir.filePath("read.ini");
        QVERIFY(writeAll(
            file, "; comment\r\n[Main]\r\nDATA=Choose a category\r\nCHECKED = a=b\\nc\r\nTWICE=one\r\n"
                  "TWICE=two\r\n[FORUM]\r\nURL=x\r\n[forum]\r\nSECOND=x\r\n  [ Q ]  \r\n"
                  "BLANKS= \t inner  blanks \t\r\nDOUBLE=\"  kept inside  \"\r\nSINGLE=''twice''\r\n"
                  "MIXED=\"half'\r\nNUL=before" +
                      QByteArray(1, '\0') +
                      "after\r\n  Spaced Key  =found\r\n[CR]\rA=1\rB=2\n[OPEN\r\nD=4\r\n[LONG]\r\nTEXT=" +
                      QByteArray(600, 'x') + "\r\n"));
        QCOMPARE(ReadProfileString(file, section, key, "dflt", buffer), expected);
        if (buffer == 0)
            QCOMPARE(ReadIni(file, section, key, "dflt"), expected);
    }
    void writeKeepsEverythingElseAndWritesCrLf() {
        const QString file = m_dir.filePath("keep.ini");
        QVERIFY(writeAll(file, "; made by hand\n[NUM_LINES]\nLINES=2\nstray line without equals\n\n"
                               "[Line-0000]\r\nText=old\r\n[LINE-0003]\r\nTEXT=stale\n[OTHER]\nkeep=me"));
        QVERIFY(WriteIni(file, "num_lines", "lines", "5"));    // replaced, written with the key as given
        QVERIFY(WriteIni(file, "NUM_LINES", "EXTRA", "e"));    // added after the last line, before the blank
        QVERIFY(WriteIni(file, "LINE-0001", "TEXT", "new"));   // a new section at the end
        QVERIFY(WriteIni(file, "LINE-0000", "TEXT", "fresh")); // the existing section, whatever its case
        const QByteArray expected =
            "; made by hand\r\n[NUM_LINES]\r\nlines=5\r\nstray line without equals\r\nEXTRA=e\r\n"
            "\r\n[Line-0000]\r\nTEXT=fresh\r\n[LINE-0003]\r\nTEXT=stale\r\n[OTHER]\r\nkeep=me\r\n"
            "[LINE-0001]\r\nTEXT=new\r\n";
        QCOMPARE(readAll(file), expected);
        QCOMPARE(ReadIni(file, "NUM_LINES", "LINES"), QString("5")); // the cache follows its own writes
        // Many writes in memory, saved once, leave the same file as the writes made one by one.
        QVERIFY(writeAll(file, "[x]\n"));
        ProfileFile page(file);
        for (const auto& [section, key, value] : {std::tuple{"num_lines", "lines", "5"},
                                                  {"NUM_LINES", "EXTRA", "e"},
                                                  {"LINE-0001", "TEXT", "new"},
                                                  {"LINE-0000", "TEXT", "fresh"}})
            page.setValue(section, key, value);
        QVERIFY(page.save());
        QCOMPARE(readAll(file),
                 QByteArray("[x]\r\n[num_lines]\r\nlines=5\r\nEXTRA=e\r\n[LINE-0001]\r\nTEXT=new\r\n"
                            "[LINE-0000]\r\nTEXT=fresh\r\n"));
        // A value cannot break the file into more lines.
        QVERIFY(WriteIni(file, "x", "k", "one\r\ntwo\nthree"));
        QCOMPARE(ReadProfileString(file, "X", "K"), QString("one  two three"));
    }
    void windows1252OnDisk_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("Latin-1 letters")
            << QString::fromUtf8("Caf\u00e9 \u00d8re") << QByteArray("Caf\xe9 \xd8re");
        QTest::newRow("the code page's own high half")
            << QString::fromUtf8("\u20ac \u2018x\u2019 \u2026 \u0160")
            << QByteArray("\x80 \x91x\x92 \x85 \x8a");
        QTest::newRow("what it cannot hold is ?")
            << QString::fromUtf8("\u03a9 \U0001F680.") << QByteArray("? ?.");
        QTest::newRow("undefined bytes read as control characters")
            << QString(QChar(0x81)) << QByteArray("\x81");
    }
    void windows1252OnDisk() {
        QFETCH(QString, text);
        QFETCH(QByteArray, bytes);
        const QString file = m_dir.filePath("cp.ini");
        QFile::remove(file);
        QVERIFY(WriteIni(file, "S", "K", text));
        QCOMPARE(readAll(file), "[S]\r\nK=" + bytes + "\r\n");
        QCOMPARE(profile::encode(ReadProfileString(file, "S", "K")), bytes);
        // A file with a byte-order mark keeps its encoding.
        QVERIFY(writeAll(file, "\xEF\xBB\xBF[S]\r\n"));
        QVERIFY(WriteIni(file, "S", "K", QString::fromUtf8("\u03a9")));
        QCOMPARE(readAll(file), QByteArray("\xEF\xBB\xBF[S]\r\nK=\xCE\xA9\r\n"));
        QVERIFY(writeAll(file, QByteArray("\xFF\xFE[\0S\0]\0\n\0K\0=\0\xA9\x03", 16)));
        QCOMPARE(ReadProfileString(file, "s", "k"), QString::fromUtf8("\u03a9"));
    }
    void refusedWritesAndBareNames() {
        const QString file = m_dir.filePath("ro.ini");
        QVERIFY(writeAll(file, "[S]\nK=v\n"));
        QVERIFY(QFile::setPermissions(file, QFileDevice::ReadOwner));
        QVERIFY(!WriteIni(file, "S", "K", "changed"));
        QCOMPARE(readAll(file), QByteArray("[S]\nK=v\n"));
        QVERIFY(!WriteIni(m_dir.filePath("no such folder/p.ini"), "S", "K", "v"));
        QVERIFY(!QFileInfo::exists(m_dir.filePath("no such folder")));

        // A bare name is a file of the Windows folder as Wine shows it; without that folder nothing is made.
        const QByteArray old = qgetenv("WINEPREFIX");
        const QString prefix = m_dir.filePath("wineprefix");
        qputenv("WINEPREFIX", QFile::encodeName(prefix));
        QCOMPARE(profile::resolve("player1_options.ini"), prefix + "/drive_c/windows/player1_options.ini");
        QVERIFY(!WriteIni("player1_options.ini", "INT-017", "OptionValue", "950"));
        QVERIFY(!QFileInfo::exists(prefix));
        QVERIFY(QDir().mkpath(prefix + "/drive_c/windows"));
        QVERIFY(WriteIni("player1_options.ini", "INT-017", "OptionValue", "950"));
        QCOMPARE(readAll(prefix + "/drive_c/windows/player1_options.ini"),
                 QByteArray("[INT-017]\r\nOptionValue=950\r\n"));
        qunsetenv("WINEPREFIX");
        QCOMPARE(profile::windowsFolder(), QDir::homePath() + "/.wine/drive_c/windows");
        if (!old.isEmpty())
            qputenv("WINEPREFIX", old);
    }
    void garbageAndHugeFilesAreHarmless() {
        const QString file = m_dir.filePath("garbage.ini");
        QRandomGenerator random(951);
        QByteArray junk(10 * 1024 * 1024, Qt::Uninitialized);
        for (char& c : junk)
            c = char(random.bounded(256));
        junk.replace("[", "("); // no stray line may look like a section
        QVERIFY(writeAll(file, junk));
        QCOMPARE(ReadProfileString(file, "LINE-0000", "TEXT", "none", profile::CapLogBuffer),
                 QString("none"));
        QVERIFY(WriteIni(file, "LINE-0000", "TEXT", "answer"));
        // Every byte of the junk is kept; only its line ends are written as CR LF.
        QByteArray expected = junk.replace("\r\n", "\n").replace('\r', '\n');
        QByteArray got = readAll(file).replace("\r\n", "\n");
        QVERIFY(got.startsWith(expected));
        QVERIFY(got.endsWith("\n[LINE-0000]\nTEXT=answer\n"));
    }

private:
    QTemporaryDir m_dir;
};

QTEST_GUILESS_MAIN(TestIniFile)
#include "tst_inifile.moc"
