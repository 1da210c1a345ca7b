#pragma once
// Sending one mail over SMTP with libcurl: STARTTLS when the server offers it (and always TLS on port
// 465), a login when one is configured. Blocking: run it off the window thread.
#include "bugreport/bugmessage.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <atomic>
#include <functional>

struct MailMessage {
    QString from;
    QString to;
    QString subject;
    QString body; // lines ended by CR LF
    QDateTime date;
};

// The message as it goes over the wire: headers, an empty line, the body in quoted-printable UTF-8.
QByteArray ComposeMail(const MailMessage& message);
// Quoted-printable (RFC 2045) of UTF-8 text whose lines end with CR LF; no line longer than 76.
QByteArray QuotedPrintable(const QString& text);

struct MailResult {
    bool ok = false;
    long number = 0;     // the server's reply code when it refused, else libcurl's error number
    QString description; // what went wrong, in the words of the server or of libcurl
};

// Sends the message; progress, when given, hears the bytes sent of the total (from the sending thread).
// cancel, when given and set, stops the transfer.
MailResult SendMail(const BugMailSettings& server, const MailMessage& message,
                    const std::function<void(qint64 sent, qint64 total)>& progress = {},
                    const std::atomic_bool* cancel = nullptr);
