// Bug reports sent to a real SMTP server that the test starts on this machine (Python's aiosmtpd): the
// mail as received, a refused recipient, a server that cannot be reached, and the window end to end.
#include "bugreport/frmbugsubmissions.h"
#include "bugreport/smtpmail.h"
#include "core/frmprogress.h"
#include "core/inifile.h"
#include "core/programfolder.h"
#include "core/scriptedprompt.h"
#include "core/settings.h"

#include <QComboBox>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QProcess>
#include <QPushButton>
#include <QSettings>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>

namespace {
quint16 freePort() {
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost, 0);
    return probe.serverPort();
}

// A Python that has aiosmtpd (Debian's python3-aiosmtpd installs it for /usr/bin/python3).
QString pythonWithAiosmtpd() {
    for (const QString& python : {QStringLiteral("/usr/bin/python3"), QStringLiteral("python3")}) {
        QProcess p;
        p.start(python, {"-c", "import aiosmtpd"});
        if (p.waitForFinished(20000) && p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0)
            return python;
    }
    return QString();
}

QString normalised(QString text) {
    return text.replace("\r\n", "\n");
}
} // namespace

class TestBugMail : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() {
        QVERIFY(m_dir.isValid());
        for (auto format : {QSettings::NativeFormat, QSettings::IniFormat})
            QSettings::setPath(format, QSettings::UserScope, m_dir.filePath("settings"));
        setProgramFolder(m_dir.path());
        m_python = pythonWithAiosmtpd();
        if (m_python.isEmpty())
            QSKIP("No Python with aiosmtpd: scripts/install-deps.sh installs python3-aiosmtpd.");
        m_port = freePort();
        m_server.setProgram(m_python);
        m_server.setArguments({VOSK_SMTP_SINK, QString::number(m_port), mailFile(), "nobody@example.org"});
        m_server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_server.start();
        QVERIFY(m_server.waitForStarted(10000));
        QByteArray said;
        QTRY_VERIFY_WITH_TIMEOUT((said += m_server.readAllStandardOutput()).contains("READY") ||
                                     m_server.state() != QProcess::Running,
                                 20000);
        QVERIFY2(m_server.state() == QProcess::Running, said.constData());
    }
    void cleanupTestCase() {
        if (m_server.state() == QProcess::Running) {
            m_server.closeWriteChannel(); // the sink stops when its input closes
            if (!m_server.waitForFinished(10000))
                m_server.kill();
        }
    }
    void init() {
        DeleteAllSettings();
        m_prompt.clear();
        QFile::remove(mailFile());
        QFile ini(iniPath());
        QVERIFY(ini.open(QIODevice::WriteOnly));
        ini.write(QStringLiteral("[SUBMIT_BUG]\nNAME=Handle:\nSEND=Send &it\n[BUG_REPORT]\nSERVER=127.0.0.1\n"
                                 "PORT=%1\nRECIPIENT=bugs@example.org\nINSTALLATION=Test-Install\n")
                      .arg(m_port)
                      .toUtf8());
    }

    void receivedAsSent() {
        MailMessage m{"kestrel@example.org", "bugs@example.org", "Automated Bug Submission from:Test-Install",
                      "\r\n\r\nTest-Install\r\nKestrel\r\n.\r\nÄrger mit dem Filter\r\n" +
                          QString("y").repeated(300) + "\r\n",
                      QDateTime::currentDateTime()};
        qint64 lastSent = 0, lastTotal = 0;
        const MailResult r = SendMail(ReadBugMailSettings(), m, [&](qint64 sent, qint64 total) {
            lastSent = sent;
            lastTotal = total;
        });
        QVERIFY2(r.ok, qPrintable(QString::number(r.number) + " " + r.description));
        QVERIFY(lastTotal > 0 && lastSent == lastTotal);
        const QList<QJsonObject> mails = received();
        QCOMPARE(mails.size(), 1);
        const QJsonObject mail = mails.first();
        QCOMPARE(mail["mail_from"].toString() + " " + mail["rcpt_tos"].toArray().at(0).toString(),
                 QString("kestrel@example.org bugs@example.org"));
        QCOMPARE(mail["rcpt_tos"].toArray().size(), 1);
        QCOMPARE(mail["subject"].toString(), m.subject);
        QCOMPARE(normalised(mail["body"].toString()), normalised(m.body));
        const QJsonObject headers = mail["headers"].toObject();
        QCOMPARE(headers["To"].toString(), QString("bugs@example.org"));
        QVERIFY(headers["Content-Type"].toString().contains("charset=\"utf-8\"", Qt::CaseInsensitive) ||
                headers["Content-Type"].toString().contains("charset=UTF-8", Qt::CaseInsensitive));
    }

    // A refused recipient gives the server's reply code; a closed port libcurl's "could not connect".
    void failuresAreReported_data() {
        QTest::addColumn<QString>("recipient");
        QTest::addColumn<bool>("reachable");
        QTest::addColumn<long>("number");
        QTest::newRow("recipient refused") << "nobody@example.org" << true << 550L;
        QTest::newRow("server unreachable") << "bugs@example.org" << false << 7L;
    }
    void failuresAreReported() {
        QFETCH(QString, recipient);
        QFETCH(bool, reachable);
        QFETCH(long, number);
        BugMailSettings s = ReadBugMailSettings();
        if (!reachable)
            s.port = freePort();
        const MailResult r =
            SendMail(s, {"kestrel@example.org", recipient, "Subject", "Body\r\n", QDateTime()});
        QVERIFY(!r.ok);
        QCOMPARE(r.number, number);
        QVERIFY(!r.description.isEmpty());
        QVERIFY(received().isEmpty());
    }

    // The window: captions from VOSK.ini, the refusals with nothing sent, the mail with its subject and
    // body, "Bug Submission Successful!", and the name and address remembered for the next report.
    void windowSendsTheReport() {
        InstallProgressWindow();
        auto guard = qScopeGuard([] { setProgressFactory({}); });
        auto* w = new frmBugSubmissions;
        QCOMPARE(w->lblName->text(), QString("Handle:"));
        QCOMPARE(w->cmdSend->text(), QString("Send &it"));
        QCOMPARE(w->lblEMail->text(), QString("E-mail:")); // a caption missing from the file
        QCOMPARE(w->cmbType->count(), 6);
        QVERIFY(w->txtADOVer->text().startsWith("SQLite ") && w->txtRAM->text().endsWith(" Kbyte"));

        // A refusal (the texts are the message's own business) shows its box and sends nothing.
        w->txtName->setText("Kestrel");
        w->txtEMail->setText("kestrel.example.org");
        w->txtDescription->setPlainText("It broke");
        QTest::mouseClick(w->cmdSend, Qt::LeftButton);
        QCOMPARE(m_prompt.count(), 1);
        QCOMPARE(m_prompt.last().title, QString("Invalid E-mail'"));
        w->txtEMail->setText("kestrel@example.org");
        QVERIFY(received().isEmpty());

        m_prompt.clear();
        w->txtDescription->setPlainText("The list lost my ticks.");
        w->txtStepsToRecreate->setPlainText("Tick a row.\nRestart.");
        w->txtErrorCodes->setText("91");
        w->cmbType->setCurrentText("Data Loss");
        QPointer<frmBugSubmissions> alive(w);
        QTest::mouseClick(w->cmdSend, Qt::LeftButton);
        QCOMPARE(m_prompt.count(), 1);
        QCOMPARE(m_prompt.last().text, QString("Bug Submission Successful!"));
        QCOMPARE(m_prompt.last().title, QString("Success!"));
        QCOMPARE(m_prompt.last().style, int(vb::Information));
        QTRY_VERIFY(!alive); // closed and gone once sent

        const QList<QJsonObject> mails = received();
        QCOMPARE(mails.size(), 1);
        QCOMPARE(mails[0]["subject"].toString(), QString("Automated Bug Submission from:Test-Install"));
        const QStringList body = normalised(mails[0]["body"].toString()).split('\n');
        QCOMPARE(body.mid(0, 6),
                 (QStringList{"", "", "Test-Install", "Kestrel", "kestrel@example.org", "91"}));
        QVERIFY(body.contains("Severity: Data Loss"));

        frmBugSubmissions again;
        QCOMPARE(again.txtName->text(), QString("Kestrel"));
        QCOMPARE(again.txtEMail->text(), QString("kestrel@example.org"));
    }

    // A refusing server shows "Error: " and "Description: "; without a server nothing is tried.
    void windowShowsMailErrors() {
        frmBugSubmissions w;
        w.txtName->setText("Kestrel");
        w.txtEMail->setText("kestrel@example.org");
        w.txtDescription->setPlainText("It broke");
        QVERIFY(WriteIni(iniPath(), "BUG_REPORT", "RECIPIENT", "nobody@example.org"));
        QTest::mouseClick(w.cmdSend, Qt::LeftButton);
        QCOMPARE(m_prompt.count(), 1);
        QVERIFY2(m_prompt.last().text.startsWith("Error: 550\r\nDescription: "),
                 qPrintable(m_prompt.last().text));
        QCOMPARE(w.txtDescription->toPlainText(), QString("It broke")); // kept for another try

        QVERIFY(WriteIni(iniPath(), "BUG_REPORT", "SERVER", ""));
        QTest::mouseClick(w.cmdSend, Qt::LeftButton);
        QCOMPARE(m_prompt.count(), 2);
        QVERIFY(m_prompt.last().text.contains("[BUG_REPORT]"));
        QVERIFY(received().isEmpty());
    }

    // The error reporter's way in: description and number fill an empty report, one window at a time.
    void openedForAnError() {
        frmBugSubmissions* w =
            OpenBugSubmissions("Overflow >procedure cmdSave_Click of Form frmAddEquip", "6");
        QCOMPARE(w->txtDescription->toPlainText(),
                 QString("Overflow >procedure cmdSave_Click of Form frmAddEquip"));
        QCOMPARE(w->txtErrorCodes->text(), QString("6"));
        QCOMPARE(OpenBugSubmissions("Another", "7"), w);
        QCOMPARE(w->txtErrorCodes->text(), QString("6"));
        w->close();
    }

private:
    QString mailFile() const { return m_dir.filePath("mail.jsonl"); }
    QList<QJsonObject> received() const {
        QList<QJsonObject> out;
        QFile f(mailFile());
        if (f.open(QIODevice::ReadOnly))
            for (const QByteArray& line : f.readAll().split('\n'))
                if (!line.trimmed().isEmpty())
                    out << QJsonDocument::fromJson(line).object();
        return out;
    }

    QTemporaryDir m_dir;
    ScriptedPrompt m_prompt;
    QProcess m_server;
    QString m_python;
    quint16 m_port = 0;
};

QTEST_MAIN(TestBugMail)
#include "tst_bugmail.moc"
