#pragma once
// A bug report as the user fills it in, the checks it must pass before anything is sent, the mail's
// subject and body, and where it is sent (the [BUG_REPORT] section of "VOSK.ini").
#include "bugreport/systemfacts.h"

#include <QDate>
#include <QString>
#include <QStringList>
#include <optional>

struct BugReport {
    QString name;
    QString email;
    QString severity; // one of BugSeverities()
    QString description;
    QString steps;
    QString errorCodes;
    SystemFacts facts;
};

// "Minor Bug", "Crash to Desktop", "Cosmetic", "Data Loss", "Unexpected Behavior", "Other".
const QStringList& BugSeverities();

// A refused report: the message box to show, and nothing is sent.
struct BugRefusal {
    QString text;
    QString title; // empty: the program's name
    int style = 0;
    QString field; // the object name of the control to put right
};
// In order: a missing name (spaces count as a name), an address not like "*@*.*", a missing
// description.
std::optional<BugRefusal> CheckBugReport(const BugReport& report);

QString BugSubject(const QString& installation);
// The body, lines ended by CR LF: two empty lines, the installation, name, address and error codes,
// the program's version, the system facts and the severity, the date, a line of 50 "-", the
// description and, after an empty line, the steps to recreate.
QString BugBody(const BugReport& report, const QString& installation, const QDate& date);
// "v" + major.minor.revision of this program.
QString ProgramVersionText();

// Where reports go: "VOSK.ini" section [BUG_REPORT], keys SERVER, PORT (25 when missing), RECIPIENT,
// and USER and PASSWORD for servers that want a login.
struct BugMailSettings {
    QString server;
    int port = 25;
    QString recipient;
    QString user;
    QString password;
    bool complete() const { return !server.isEmpty() && !recipient.isEmpty() && port > 0 && port < 65536; }
};
BugMailSettings ReadBugMailSettings();

// The installation's identifier: INSTALLATION in [BUG_REPORT] of "VOSK.ini". When it is empty one is
// made ("VOSK-" and a random UUID) and written there, so that the installation keeps it; when the
// file cannot be written it is kept in the user's settings instead.
QString InstallationId();
