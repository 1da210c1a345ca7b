#include "bugreport/bugmessage.h"

#include "core/inifile.h"
#include "core/programfolder.h"
#include "core/prompt.h"
#include "core/settings.h"
#include "lists/wildcard.h"

#include <QUuid>

namespace {
const QString Section = QStringLiteral("BUG_REPORT");
const QString CrLf = QStringLiteral("\r\n");
} // namespace

const QStringList& BugSeverities() {
    static const QStringList list = {
        QStringLiteral("Minor Bug"), QStringLiteral("Crash to Desktop"),    QStringLiteral("Cosmetic"),
        QStringLiteral("Data Loss"), QStringLiteral("Unexpected Behavior"), QStringLiteral("Other")};
    return list;
}

std::optional<BugRefusal> CheckBugReport(const BugReport& r) {
    if (r.name.isEmpty())
        return BugRefusal{QStringLiteral("Please fill in your name or handle."),
                          QStringLiteral("Name Missing"), vb::Exclamation, QStringLiteral("txtName")};
    if (!LikeMatch(r.email, QStringLiteral("*@*.*")))
        return BugRefusal{QStringLiteral("Invalid e-mail address, please entera  valid e-mail address."),
                          QStringLiteral("Invalid E-mail'"), vb::Exclamation, QStringLiteral("txtEMail")};
    if (r.description.isEmpty())
        return BugRefusal{QStringLiteral("Please fill in a description of the bug."), QString(),
                          vb::Exclamation, QStringLiteral("txtDescription")};
    return std::nullopt;
}

QString BugSubject(const QString& installation) {
    return QStringLiteral("Automated Bug Submission from:") + installation;
}

QString ProgramVersionText() {
    return QStringLiteral("v%1.%2.%3")
        .arg(VOSK_VERSION_MAJOR)
        .arg(VOSK_VERSION_MINOR)
        .arg(VOSK_VERSION_REVISION);
}

QString BugBody(const BugReport& r, const QString& installation, const QDate& date) {
    QStringList lines = {QString(),
                         QString(),
                         installation,
                         r.name,
                         r.email,
                         r.errorCodes,
                         ProgramVersionText(),
                         QStringLiteral("OS: ") + r.facts.os,
                         QStringLiteral("CPU: ") + r.facts.cpu,
                         QStringLiteral("Available Memory: ") + r.facts.totalMemory,
                         QStringLiteral("Free Memory: ") + r.facts.freeMemory,
                         QStringLiteral("ADO Version: ") + r.facts.databaseVersion,
                         QStringLiteral("Severity: ") + r.severity,
                         date.toString(Qt::ISODate),
                         QString(50, u'-'),
                         r.description,
                         QString(),
                         r.steps};
    QString body = lines.join(CrLf);
    // Texts typed in the window end their lines with LF alone; a mail's lines end with CR LF.
    body.replace(CrLf, QStringLiteral("\n")).replace(u'\r', u'\n');
    return body.replace(u'\n', CrLf) + CrLf;
}

BugMailSettings ReadBugMailSettings() {
    BugMailSettings s;
    s.server = ReadVoskIni(Section, QStringLiteral("SERVER")).trimmed();
    bool ok = false;
    const int port = ReadVoskIni(Section, QStringLiteral("PORT")).trimmed().toInt(&ok);
    s.port = ok ? port : 25;
    s.recipient = ReadVoskIni(Section, QStringLiteral("RECIPIENT")).trimmed();
    s.user = ReadVoskIni(Section, QStringLiteral("USER")).trimmed();
    s.password = ReadVoskIni(Section, QStringLiteral("PASSWORD"));
    return s;
}

QString InstallationId() {
    const QString key = QStringLiteral("INSTALLATION");
    QString id = ReadVoskIni(Section, key).trimmed();
    if (!id.isEmpty())
        return id;
    id = GetSetting(QStringLiteral("BugSubmission"), QStringLiteral("Installation"));
    if (!id.isEmpty())
        return id;
    id = QStringLiteral("VOSK-") + QUuid::createUuid().toString(QUuid::WithoutBraces);
    if (!WriteIni(iniPath(), Section, key, id))
        SaveSetting(QStringLiteral("BugSubmission"), QStringLiteral("Installation"), id);
    return id;
}
