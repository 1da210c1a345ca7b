// The profile module: reading and writing INI files as the Windows profile functions do.
#include "core/inifile.h"
#include "core/scriptedprompt.h"

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

// Sets an environment variable for one scope.
struct EnvGuard {
    EnvGuard(const char* name, const QByteArray& value)
        : n(name), old(qgetenv(name)), had(qEnvironmentVariableIsSet(name)) {
        qputenv(name, value);
    }
    ~EnvGuard() {
        if (had)
            qputenv(n, old);
        else
            qunsetenv(n);
    }
    const char* n;
    QByteArray old;
    bool had;
};
} // namespace

class TestIniFile : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void readsPrivateProfileLines_data();
    void readsPrivateProfileLines();
    void readingBufferCutsLongValues_data();
    void readingBufferCutsLongValues();
    void writeKeepsEverythingElseAndWritesCrLf();
    void writesOfOneFileInMemoryEqualSingleWrites();
    void windows1252OnDisk_data();
    void windows1252OnDisk();
    void byteOrderMarkKeepsItsEncoding();
    void refusedWritesLeaveTheFile();
    void bareNameResolvesToTheWineWindowsFolder();
    void garbageAndHugeFilesAreHarmless();
    void readIniSeesItsOwnWrites();
    void scriptedPromptPlaysBackAndRecords();

private:
    QTemporaryDir m_dir;
};

void TestIniFile::readsPrivateProfileLines_data() {
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, const char* section, const char* key, const QString& expected) {
        QTest::newRow(name) << QString(section) << QString(key) << expected;
    };
    row("exact", "Main", "DATA", "Choose a category");
    row("case of section and key", "main", "data", "Choose a category");
    row("value keeps = and backslash-n", "Main", "CHECKED", "a=b\\nc");
    row("value keeps commas", "FORUM", "URL", "http://example.invalid/a,b");
    row("missing key gives default", "Main", "NOPE", "dflt");
    row("key of another section", "FORUM", "DATA", "dflt");
    row("first of two equal keys wins", "Main", "TWICE", "one");
    row("first of two equal sections wins", "FORUM", "SECOND", "dflt");
    row("blanks and tabs around the value go", "Q", "BLANKS", "inner  blanks");
    row("one pair of double quotes goes", "Q", "DOUBLE", "  kept inside  ");
    row("one pair of single quotes goes", "Q", "SINGLE", "'twice'");
    row("unmatched quotes stay", "Q", "MIXED", "\"half'");
    row("a lone quote stays", "Q", "LONE", "\"");
    row("cut at a NUL", "Q", "NUL", "before");
    row("blanks around the key and the section name", "Q", "SPACED KEY", "found");
    row("a lone CR ends a line", "CR", "A", "1");
    row("the line after a lone CR", "CR", "B", "2");
    row("a lone LF ends a line", "LF", "C", "3");
    row("section without closing bracket", "OPEN", "D", "4");
    row("empty value", "Q", "EMPTY", "");
}

void TestIniFile::readsPrivateProfileLines() {
    QFETCH(QString, section);
    QFETCH(QString, key);
    QFETCH(QString, expected);
    const QString file = m_dir.filePath("read.ini");
    QVERIFY(writeAll(file, QByteArray("; comment\r\n[Main]\r\nDATA=Choose a category\r\nCHECKED = a=b\\nc\r\n"
                                      "TWICE=one\r\nTWICE=two\r\n"
                                      "[FORUM]\r\nURL=http://example.invalid/a,b\r\n"
                                      "[forum]\r\nSECOND=x\r\n"
                                      "  [ Q ]  \r\nBLANKS= \t inner  blanks \t\r\n"
                                      "DOUBLE=\"  kept inside  \"\r\nSINGLE=''twice''\r\n"
                                      "MIXED=\"half'\r\nLONE=\"\r\nNUL=before") +
                               QByteArray(1, '\0') +
                               QByteArray("after\r\n  Spaced Key  =found\r\nEMPTY=\r\n"
                                          "[CR]\rA=1\rB=2\r\n[LF]\nC=3\n[OPEN\r\nD=4")));
    QCOMPARE(ReadProfileString(file, section, key, "dflt"), expected);
    QCOMPARE(ReadIni(file, section, key, "dflt"), expected);
}

void TestIniFile::readingBufferCutsLongValues_data() {
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("expected");
    QTest::newRow("shorter than the buffer") << 100 << 100;
    QTest::newRow("one less than the buffer fits") << 511 << 511;
    QTest::newRow("the buffer's size is cut by one") << 512 << 511;
    QTest::newRow("much longer") << 5000 << 511;
}

void TestIniFile::readingBufferCutsLongValues() {
    QFETCH(int, length);
    QFETCH(int, expected);
    const QString file = m_dir.filePath("long.ini");
    QByteArray text(length, 'x');
    text[0] = 'a';
    QVERIFY(writeAll(file, "[LINE-0000]\r\nTEXT=" + text + "\r\n"));
    const QString v = ReadProfileString(file, "LINE-0000", "TEXT", {}, profile::CapLogBuffer);
    QCOMPARE(v.size(), expected);
    QVERIFY(v.startsWith('a'));
    QCOMPARE(ReadProfileString(file, "LINE-0000", "TEXT").size(), length); // no buffer, no cut
}

void TestIniFile::writeKeepsEverythingElseAndWritesCrLf() {
    const QString file = m_dir.filePath("keep.ini");
    QVERIFY(writeAll(file, "; made by hand\n[NUM_LINES]\nLINES=2\nstray line without equals\n\n"
                           "[Line-0000]\r\nText=old\r\n[OTHER]\nkeep=me"));
    QVERIFY(WriteIni(file, "num_lines", "lines", "5"));    // replaced, written with the key as given
    QVERIFY(WriteIni(file, "NUM_LINES", "EXTRA", "e"));    // added after the last line, before the blank
    QVERIFY(WriteIni(file, "LINE-0001", "TEXT", "new"));   // a new section at the end
    QVERIFY(WriteIni(file, "LINE-0000", "TEXT", "fresh")); // the existing section, whatever its case
    QCOMPARE(readAll(file), QByteArray("; made by hand\r\n[NUM_LINES]\r\nlines=5\r\n"
                                       "stray line without equals\r\nEXTRA=e\r\n\r\n"
                                       "[Line-0000]\r\nTEXT=fresh\r\n[OTHER]\r\nkeep=me\r\n"
                                       "[LINE-0001]\r\nTEXT=new\r\n"));
    // A value cannot break the file into more lines.
    QVERIFY(WriteIni(file, "OTHER", "keep", "one\r\ntwo\nthree"));
    QCOMPARE(ReadProfileString(file, "OTHER", "keep"), QString("one  two three"));
    QCOMPARE(ReadProfileString(file, "LINE-0001", "TEXT"), QString("new"));
}

void TestIniFile::writesOfOneFileInMemoryEqualSingleWrites() {
    const QString one = m_dir.filePath("one.ini"), many = m_dir.filePath("many.ini");
    const QByteArray start = "[LINE-0003]\r\nTEXT=stale\r\n[NUM_LINES]\r\nLINES=9\r\n";
    QVERIFY(writeAll(one, start) && writeAll(many, start));
    ProfileFile page(many);
    QVERIFY(page.existed());
    const QStringList lines = {"first", "    second", "third"};
    QVERIFY(WriteIni(one, "NUM_LINES", "LINES", "3"));
    page.setValue("NUM_LINES", "LINES", "3");
    for (int i = 0; i < lines.size(); ++i) {
        const QString section = QString("LINE-%1").arg(i, 4, 10, QChar('0'));
        QVERIFY(WriteIni(one, section, "TEXT", lines[i]));
        page.setValue(section, "TEXT", lines[i]);
        QCOMPARE(page.value(section, "TEXT"), lines[i].trimmed());
    }
    QVERIFY(page.save());
    QCOMPARE(readAll(many), readAll(one));
    QCOMPARE(ReadProfileString(many, "LINE-0003", "TEXT"), QString("stale"));
    QVERIFY(!ProfileFile(m_dir.filePath("none.ini")).existed());
}

void TestIniFile::windows1252OnDisk_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("plain") << QString("Mk IV") << QByteArray("Mk IV");
    QTest::newRow("Latin-1 letters") << QString::fromUtf8("Caf\u00e9 \u00d8re")
                                     << QByteArray("Caf\xe9 \xd8re");
    QTest::newRow("the code page's own high half")
        << QString::fromUtf8("\u20ac \u2018x\u2019 \u2026 \u0160") << QByteArray("\x80 \x91x\x92 \x85 \x8a");
    QTest::newRow("what it cannot hold is ?")
        << QString::fromUtf8("\u03a9 \U0001F680.") << QByteArray("? ?.");
    QTest::newRow("undefined bytes read as control characters") << QString(QChar(0x81)) << QByteArray("\x81");
}

void TestIniFile::windows1252OnDisk() {
    QFETCH(QString, text);
    QFETCH(QByteArray, bytes);
    QCOMPARE(profile::encode(text), bytes);
    const QString file = m_dir.filePath("cp.ini");
    QFile::remove(file);
    QVERIFY(WriteIni(file, "S", "K", text));
    QCOMPARE(readAll(file), "[S]\r\nK=" + bytes + "\r\n");
    const QString back = ReadProfileString(file, "S", "K");
    QCOMPARE(back, profile::decode(bytes));
    QCOMPARE(profile::encode(back), bytes);
}

void TestIniFile::byteOrderMarkKeepsItsEncoding() {
    const QString file = m_dir.filePath("bom.ini");
    QVERIFY(writeAll(file, "\xEF\xBB\xBF[S]\r\nK=\xE2\x82\xAC\r\n"));
    QCOMPARE(ReadProfileString(file, "S", "K"), QString::fromUtf8("\u20ac"));
    QVERIFY(WriteIni(file, "S", "L", QString::fromUtf8("\u03a9")));
    QCOMPARE(readAll(file), QByteArray("\xEF\xBB\xBF[S]\r\nK=\xE2\x82\xAC\r\nL=\xCE\xA9\r\n"));
    QVERIFY(writeAll(file, QByteArray("\xFF\xFE[\0S\0]\0\r\0\n\0K\0=\0\xA9\x03", 18)));
    QCOMPARE(ReadProfileString(file, "s", "k"), QString::fromUtf8("\u03a9"));
}

void TestIniFile::refusedWritesLeaveTheFile() {
    const QString file = m_dir.filePath("ro.ini");
    QVERIFY(writeAll(file, "[S]\nK=v\n"));
    QVERIFY(QFile::setPermissions(file, QFileDevice::ReadOwner | QFileDevice::ReadGroup));
    QVERIFY(!WriteIni(file, "S", "K", "changed"));
    QCOMPARE(readAll(file), QByteArray("[S]\nK=v\n"));
    QCOMPARE(ReadProfileString(file, "S", "K"), QString("v"));
    QVERIFY(QFile::setPermissions(file, QFileDevice::ReadOwner | QFileDevice::WriteOwner));
    QVERIFY(WriteIni(file, "S", "K", "changed"));
    QVERIFY(QFile::permissions(file) & QFileDevice::WriteOwner);

    const QString lost = m_dir.filePath("no such folder/p.ini");
    QVERIFY(!WriteIni(lost, "S", "K", "v"));
    QVERIFY(!QFileInfo::exists(m_dir.filePath("no such folder")));
}

void TestIniFile::bareNameResolvesToTheWineWindowsFolder() {
    const QString prefix = m_dir.filePath("wineprefix");
    EnvGuard env("WINEPREFIX", prefix.toLocal8Bit());
    QCOMPARE(profile::windowsFolder(), prefix + "/drive_c/windows");
    QCOMPARE(profile::resolve("player1_options.ini"), prefix + "/drive_c/windows/player1_options.ini");
    QCOMPARE(profile::resolve(m_dir.filePath("x.ini")), m_dir.filePath("x.ini"));
    // No Windows folder: the write fails and nothing is made.
    QVERIFY(!WriteIni("player1_options.ini", "INT-017", "OptionValue", "950"));
    QVERIFY(!QFileInfo::exists(prefix));
    QVERIFY(QDir().mkpath(prefix + "/drive_c/windows"));
    QVERIFY(WriteIni("player1_options.ini", "INT-017", "OptionValue", "950"));
    QCOMPARE(readAll(prefix + "/drive_c/windows/player1_options.ini"),
             QByteArray("[INT-017]\r\nOptionValue=950\r\n"));
    {
        EnvGuard noPrefix("WINEPREFIX", QByteArray());
        QCOMPARE(profile::windowsFolder(), QDir::homePath() + "/.wine/drive_c/windows");
    }
}

void TestIniFile::garbageAndHugeFilesAreHarmless() {
    const QString file = m_dir.filePath("garbage.ini");
    QRandomGenerator random(951);
    QByteArray junk(10 * 1024 * 1024, Qt::Uninitialized);
    for (char& c : junk)
        c = char(random.bounded(256));
    // No stray line may look like the section this test writes.
    junk.replace("[", "(");
    QVERIFY(writeAll(file, junk));
    QCOMPARE(ReadProfileString(file, "LINE-0000", "TEXT", "none", profile::CapLogBuffer), QString("none"));
    QVERIFY(WriteIni(file, "LINE-0000", "TEXT", "answer"));
    QCOMPARE(ReadProfileString(file, "LINE-0000", "TEXT"), QString("answer"));
    const QByteArray after = readAll(file);
    // Every byte of the junk is kept; only its line ends are written as CR LF.
    QByteArray expected = junk;
    expected.replace("\r\n", "\n").replace('\r', '\n');
    QByteArray got = after;
    got.replace("\r\n", "\n");
    QVERIFY(got.startsWith(expected));
    QVERIFY(got.endsWith("\n[LINE-0000]\nTEXT=answer\n"));
}

void TestIniFile::readIniSeesItsOwnWrites() {
    const QString file = m_dir.filePath("x.ini");
    QVERIFY(WriteIni(file, "COLORS", "UPDATED", "255"));
    QCOMPARE(ReadIni(file, "COLORS", "UPDATED"), QString("255"));
    QVERIFY(WriteIni(file, "colors", "updated", "128")); // same size, maybe the same second
    QCOMPARE(ReadIni(file, "COLORS", "UPDATED"), QString("128"));
}

void TestIniFile::scriptedPromptPlaysBackAndRecords() {
    ScriptedPrompt p;
    p.queueButton(vb::No);
    QCOMPARE(MsgBox("q?", vb::YesNo + vb::Question, "T"), int(vb::No));
    QCOMPARE(MsgBox("again?", vb::YesNo), int(vb::Yes)); // nothing queued: the default answer
    QCOMPARE(MsgBox("note"), int(vb::OK));
    QCOMPARE(p.count(), 3);
    QCOMPARE(p.calls().at(0).style, 36);
    QCOMPARE(p.calls().at(0).title, QString("T"));
    QCOMPARE(p.last().title, QString("VOSK"));
    bool cancelled = false;
    QCOMPARE(prompts().inputBox("name?", "Character Name", {}, &cancelled), QString());
    QVERIFY(cancelled);
    p.queueText("Zed");
    QCOMPARE(prompts().inputBox("name?", "Character Name", {}, &cancelled), QString("Zed"));
    QVERIFY(!cancelled);
}

QTEST_GUILESS_MAIN(TestIniFile)
#include "tst_inifile.moc"
