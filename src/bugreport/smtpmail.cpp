#include "bugreport/smtpmail.h"

#include <QUuid>

#include <curl/curl.h>

#include <cstring>
#include <mutex>

namespace {

// Header values never carry a line break: it would let a typed text add headers of its own.
QString headerValue(const QString& s) {
    QString out = s;
    out.replace(u'\r', u' ').replace(u'\n', u' ');
    return out.trimmed();
}

// A header text, encoded (RFC 2047) when it is not plain ASCII.
QByteArray encodedWord(const QString& s) {
    const QString v = headerValue(s);
    bool ascii = true;
    for (const QChar c : v)
        ascii = ascii && c.unicode() < 128;
    if (ascii)
        return v.toLatin1();
    return "=?UTF-8?B?" + v.toUtf8().toBase64() + "?=";
}

struct Upload {
    QByteArray data;
    qsizetype sent = 0;
};

size_t readMail(char* buffer, size_t size, size_t count, void* user) {
    auto* up = static_cast<Upload*>(user);
    const size_t room = size * count;
    const size_t left = size_t(up->data.size() - up->sent);
    const size_t n = std::min(room, left);
    std::memcpy(buffer, up->data.constData() + up->sent, n);
    up->sent += qsizetype(n);
    return n;
}

struct Watch {
    const std::function<void(qint64, qint64)>* progress;
    const std::atomic_bool* cancel;
};

int transferInfo(void* user, curl_off_t, curl_off_t, curl_off_t total, curl_off_t now) {
    auto* w = static_cast<Watch*>(user);
    if (w->cancel && w->cancel->load())
        return 1; // libcurl stops with "aborted by callback"
    if (*w->progress)
        (*w->progress)(qint64(now), qint64(total));
    return 0;
}

void initOnce() {
    static std::once_flag once;
    std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
}

} // namespace

QByteArray QuotedPrintable(const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    QByteArray out;
    int column = 0;
    auto put = [&](const QByteArray& piece) {
        if (column + piece.size() > 75) { // a soft line break keeps every line within 76
            out += "=\r\n";
            column = 0;
        }
        out += piece;
        column += int(piece.size());
    };
    for (qsizetype i = 0; i < utf8.size(); ++i) {
        const unsigned char c = uchar(utf8[i]);
        if (c == '\r' && i + 1 < utf8.size() && utf8[i + 1] == '\n') {
            // Blanks before a line end would be lost on the way: they are written encoded.
            if (out.endsWith(' ') || out.endsWith('\t')) {
                const char last = out.back();
                out.chop(1);
                --column;
                put(last == ' ' ? "=20" : "=09");
            }
            out += "\r\n";
            column = 0;
            ++i;
        } else if (c == '.' && column == 0) {
            put("=2E"); // a line of one "." would end the mail early on a careless server
        } else if ((c >= 33 && c <= 126 && c != '=') || c == ' ' || c == '\t') {
            put(QByteArray(1, char(c)));
        } else {
            put("=" + QByteArray::number(c, 16).toUpper().rightJustified(2, '0'));
        }
    }
    return out;
}

QByteArray ComposeMail(const MailMessage& m) {
    const QByteArray crlf = "\r\n";
    QByteArray mail;
    mail += "Date: " + m.date.toString(Qt::RFC2822Date).toLatin1() + crlf;
    mail += "From: <" + headerValue(m.from).toUtf8() + ">" + crlf;
    mail += "To: <" + headerValue(m.to).toUtf8() + ">" + crlf;
    mail += "Subject: " + encodedWord(m.subject) + crlf;
    mail += "Message-ID: <" + QUuid::createUuid().toString(QUuid::WithoutBraces).toLatin1() + "@vosk>" + crlf;
    mail += "MIME-Version: 1.0" + crlf;
    mail += "Content-Type: text/plain; charset=UTF-8" + crlf;
    mail += "Content-Transfer-Encoding: quoted-printable" + crlf;
    mail += "X-Mailer: VOSK" + crlf;
    mail += crlf;
    mail += QuotedPrintable(m.body);
    if (!mail.endsWith(crlf))
        mail += crlf;
    return mail;
}

MailResult SendMail(const BugMailSettings& server, const MailMessage& message,
                    const std::function<void(qint64, qint64)>& progress, const std::atomic_bool* cancel) {
    initOnce();
    MailResult result;
    CURL* curl = curl_easy_init();
    if (!curl) {
        result.number = CURLE_FAILED_INIT;
        result.description = QString::fromLatin1(curl_easy_strerror(CURLE_FAILED_INIT));
        return result;
    }
    Upload upload{ComposeMail(message)};
    Watch watch{&progress, cancel};
    char errors[CURL_ERROR_SIZE] = {};
    const bool implicitTls = server.port == 465;
    const QByteArray url = (implicitTls ? QByteArray("smtps://") : QByteArray("smtp://")) +
                           server.server.toUtf8() + ':' + QByteArray::number(server.port);
    const QByteArray from = '<' + headerValue(message.from).toUtf8() + '>';
    const QByteArray user = server.user.toUtf8(), password = server.password.toUtf8();
    curl_slist* recipients =
        curl_slist_append(nullptr, ('<' + headerValue(message.to).toUtf8() + '>').constData());

    curl_easy_setopt(curl, CURLOPT_URL, url.constData());
    curl_easy_setopt(curl, CURLOPT_USE_SSL, long(implicitTls ? CURLUSESSL_ALL : CURLUSESSL_TRY));
    curl_easy_setopt(curl, CURLOPT_MAIL_FROM, from.constData());
    curl_easy_setopt(curl, CURLOPT_MAIL_RCPT, recipients);
    if (!user.isEmpty()) {
        curl_easy_setopt(curl, CURLOPT_USERNAME, user.constData());
        curl_easy_setopt(curl, CURLOPT_PASSWORD, password.constData());
    }
    curl_easy_setopt(curl, CURLOPT_READFUNCTION, readMail);
    curl_easy_setopt(curl, CURLOPT_READDATA, &upload);
    curl_easy_setopt(curl, CURLOPT_UPLOAD, 1L);
    curl_easy_setopt(curl, CURLOPT_INFILESIZE_LARGE, curl_off_t(upload.data.size()));
    curl_easy_setopt(curl, CURLOPT_ERRORBUFFER, errors);
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, 20L);
    curl_easy_setopt(curl, CURLOPT_TIMEOUT, 120L);
    curl_easy_setopt(curl, CURLOPT_NOPROGRESS, 0L);
    curl_easy_setopt(curl, CURLOPT_XFERINFOFUNCTION, transferInfo);
    curl_easy_setopt(curl, CURLOPT_XFERINFODATA, &watch);

    const CURLcode code = curl_easy_perform(curl);
    if (code == CURLE_OK) {
        result.ok = true;
    } else {
        long reply = 0;
        curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &reply);
        result.number = reply >= 400 ? reply : long(code);
        result.description =
            errors[0] ? QString::fromUtf8(errors).trimmed() : QString::fromLatin1(curl_easy_strerror(code));
    }
    curl_slist_free_all(recipients);
    curl_easy_cleanup(curl);
    return result;
}
