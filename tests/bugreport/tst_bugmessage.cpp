// The bug report without a server: its refusals, subject and body, the system-fact texts, where it is
// sent, the installation's identifier, and the mail's wire form.
#include "bugreport/bugmessage.h"
#include "bugreport/smtpmail.h"
#include "core/inifile.h"
#include "core/programfolder.h"
#include "core/prompt.h"
#include "core/settings.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

namespace {
BugReport filled() {
    BugReport r;
    r.name = "Kestrel";
    r.email = "kestrel@example.org";
    r.severity = "Data Loss";
    r.description = "The list lost my ticks.";
    r.steps = "Tick a row.\nRestart.";
    r.errorCodes = "91";
    r.facts = {"Debian 12", "Zen 3 (3400 MHz)", "16,000 Kbyte", "8,000 Kbyte", "SQLite 3.40.1"};
    return r;
}

// Reverses quoted-printable, to check that what goes over the wire says what was written.
QByteArray decodeQuotedPrintable(const QByteArray& in) {
    QByteArray out;
    for (qsizetype i = 0; i < in.size(); ++i) {
        if (in[i] != '=') {
            out += in[i];
        } else if (in.mid(i + 1, 2) == "\r\n") {
            i += 2;
        } else {
            out += char(in.mid(i + 1, 2).toInt(nullptr, 16));
            i += 2;
        }
    }
    return out;
}
} // namespace

class TestBugMessage : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() {
        QVERIFY(m_dir.isValid());
        for (auto format : {QSettings::NativeFormat, QSettings::IniFormat})
            QSettings::setPath(format, QSettings::UserScope, m_dir.filePath("settings"));
        setProgramFolder(m_dir.path());
    }

    void refusals_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("email");
        QTest::addColumn<QString>("description");
        QTest::addColumn<QString>("text"); // empty: accepted
        QTest::addColumn<QString>("title");
        const QString noName = "Please fill in your name or handle.";
        const QString badMail = "Invalid e-mail address, please entera  valid e-mail address.";
        const QString noText = "Please fill in a description of the bug.";
        auto row = [](const char* tag, const char* name, const char* email, const char* description,
                      const QString& text, const char* title) {
            QTest::newRow(tag) << QString(name) << QString(email) << QString(description) << text
                               << QString(title);
        };
        row("accepted", "Kestrel", "k@example.org", "x", "", "");
        row("name of spaces passes", "   ", "k@example.org", "x", "", "");
        row("no name", "", "k@example.org", "x", noName, "Name Missing");
        row("name checked first", "", "bad", "", noName, "Name Missing");
        row("no point after the at sign", "K", "k@example", "x", badMail, "Invalid E-mail'");
        row("no at sign", "K", "k.example.org", "x", badMail, "Invalid E-mail'");
        row("empty parts pass the pattern", "K", "@.", "x", "", "");
        row("address checked before text", "K", "", "", badMail, "Invalid E-mail'");
        row("no description", "K", "k@example.org", "", noText, "");
    }
    void refusals() {
        QFETCH(QString, name);
        QFETCH(QString, email);
        QFETCH(QString, description);
        QFETCH(QString, text);
        QFETCH(QString, title);
        BugReport r = filled();
        r.name = name;
        r.email = email;
        r.description = description;
        const auto refusal = CheckBugReport(r);
        QCOMPARE(refusal.has_value(), !text.isEmpty());
        if (refusal) {
            QCOMPARE(refusal->text, text);
            QCOMPARE(refusal->title, title);
            QCOMPARE(refusal->style, int(vb::Exclamation));
        }
    }

    void subjectAndBody() {
        QCOMPARE(BugSeverities(), (QStringList{"Minor Bug", "Crash to Desktop", "Cosmetic", "Data Loss",
                                               "Unexpected Behavior", "Other"}));
        QCOMPARE(BugSubject("VOSK-42"), QString("Automated Bug Submission from:VOSK-42"));
        const QString body = BugBody(filled(), "VOSK-42", QDate(2024, 5, 1));
        const QStringList lines = body.split("\r\n");
        const QString version =
            QString("v%1.%2.%3").arg(VOSK_VERSION_MAJOR).arg(VOSK_VERSION_MINOR).arg(VOSK_VERSION_REVISION);
        QCOMPARE(lines,
                 QString("||VOSK-42|Kestrel|kestrel@example.org|91|" + version +
                         "|OS: Debian 12|CPU: Zen 3 (3400 MHz)|Available Memory: 16,000 Kbyte|Free Memory: "
                         "8,000 Kbyte|ADO Version: SQLite 3.40.1|Severity: Data Loss|2024-05-01|" +
                         QString(50, '-') + "|The list lost my ticks.||Tick a row.|Restart.|")
                     .split('|'));
        QVERIFY(!body.contains(QRegularExpression("[^\r]\n")));
    }

    void windowsNames() {
        QStringList names; // one per name, and 5.2 keeps NT
        for (const auto& [platform, major, minor] :
             {std::tuple{0, 3, 1}, {1, 4, 0}, {1, 4, 10}, {1, 4, 90}, {2, 5, 0}, {2, 5, 1}, {2, 5, 2}})
            names << WindowsVersionName(platform, major, minor);
        QCOMPARE(names.join('|'),
                 "Win32s|Windows 95|Windows 98|Windows ME|Windows 2000|Windows XP|Windows NT");
    }

    void systemFactTexts() {
        // The build keeps its low 16 bits; the service pack ends at its first NUL.
        QCOMPARE(WindowsVersionText({2, 5, 1, 0x0A280A28, QString("Service Pack 2") + QChar(0) + "junk"}),
                 QString("Windows XP 5.1 build 2600 (Service Pack 2)"));
        QCOMPARE(KbyteText(16314040) + "|" + KbyteText(999) + "|" + KbyteText(1000) + "|" + KbyteText(0),
                 QString("16,314,040 Kbyte|999 Kbyte|1,000 Kbyte| Kbyte"));
        const QString cpuinfo =
            "processor\t: 0\nvendor_id\t: AuthenticAMD\nmodel name\t: AMD  EPYC 7B13\n"
            "cpu MHz\t\t: 2449.998\n\nprocessor\t: 1\nmodel name\t: Other\ncpu MHz\t: 1.0\n";
        QCOMPARE(CpuTextFromCpuInfo(cpuinfo), QString("AMD EPYC 7B13 (2450 MHz)"));
        QCOMPARE(CpuTextFromCpuInfo("processor : 0\nBogoMIPS : 50.00\n"), QString("No Value Found"));
        qint64 total = 0, free = 0;
        QVERIFY(MemoryFromMemInfo(
            "MemTotal:       16314040 kB\nMemFree:  100 kB\nMemAvailable:    9018112 kB\n", &total, &free));
        QCOMPARE(total, 16314040);
        QCOMPARE(free, 9018112);
        QVERIFY(MemoryFromMemInfo("MemTotal: 2000 kB\nMemFree: 1500 kB\n", &total, &free) && free == 1500);
        QVERIFY(!MemoryFromMemInfo("nothing here", &total, &free));
        // This machine's facts are all filled.
        const SystemFacts f = GatherSystemFacts();
        QVERIFY(f.databaseVersion.startsWith("SQLite 3."));
        QVERIFY(f.totalMemory.endsWith(" Kbyte") && f.freeMemory.endsWith(" Kbyte"));
        QVERIFY(!f.os.isEmpty() && !f.cpu.isEmpty());
    }

    // Where reports go comes from VOSK.ini; the installation's identifier is made once and kept there.
    void settingsAndInstallation() {
        QFile::remove(iniPath());
        QVERIFY(!ReadBugMailSettings().complete());
        QVERIFY(WriteIni(iniPath(), "BUG_REPORT", "SERVER", " smtp.example.org "));
        QVERIFY(WriteIni(iniPath(), "BUG_REPORT", "RECIPIENT", "bugs@example.org"));
        BugMailSettings s = ReadBugMailSettings();
        QVERIFY(s.complete());
        QCOMPARE(s.server, QString("smtp.example.org"));
        QCOMPARE(s.port, 25);
        QVERIFY(WriteIni(iniPath(), "BUG_REPORT", "PORT", "587"));
        QCOMPARE(ReadBugMailSettings().port, 587);
        QVERIFY(WriteIni(iniPath(), "BUG_REPORT", "PORT", "70000"));
        QVERIFY(!ReadBugMailSettings().complete());

        const QString id = InstallationId();
        QVERIFY2(id.startsWith("VOSK-") && id.size() > 20, qPrintable(id));
        QCOMPARE(ReadIni(iniPath(), "BUG_REPORT", "INSTALLATION"), id);
        QCOMPARE(InstallationId(), id);
        QVERIFY(WriteIni(iniPath(), "BUG_REPORT", "INSTALLATION", "Guild-7"));
        QCOMPARE(InstallationId(), QString("Guild-7"));
    }

    // The wire form: headers that a typed text cannot add to, a subject encoded when it is not ASCII,
    // and a body whose lines stay short and decode back to the text.
    void wireForm() {
        MailMessage m{"kestrel@example.org\r\nBcc: victim@example.org",
                      "bugs@example.org",
                      QString("Automated Bug Submission from:Grüße"),
                      {},
                      QDateTime(QDate(2024, 5, 1), QTime(10, 0))};
        m.body = "\r\n\r\nline with = sign and trailing blank \r\n.\r\n" + QString("x").repeated(200) +
                 "\r\nÄrger über Türen\r\n";
        const QByteArray wire = ComposeMail(m);
        const qsizetype split = wire.indexOf("\r\n\r\n");
        const QByteArray head = wire.left(split), body = wire.mid(split + 4);
        QVERIFY(head.contains("From: <kestrel@example.org"));
        QVERIFY(!head.contains("\r\nBcc:"));
        QVERIFY(head.contains("Subject: =?UTF-8?B?" +
                              QString("Automated Bug Submission from:Grüße").toUtf8().toBase64()));
        QVERIFY(head.contains("Content-Transfer-Encoding: quoted-printable"));
        QVERIFY(head.contains("Date: 01 May 2024 10:00:00 "));
        for (const QByteArray& line : body.split('\n'))
            QVERIFY2(line.size() <= 77, line.constData()); // 76 and the CR
        QVERIFY(!body.contains("\r\n.\r\n"));              // a lone point would end the mail
        QVERIFY(body.contains("blank=20\r\n"));
        QCOMPARE(QString::fromUtf8(decodeQuotedPrintable(body)), m.body);
    }

private:
    QTemporaryDir m_dir;
};

QTEST_MAIN(TestBugMessage)
#include "tst_bugmessage.moc"
