#include "data/errorreport.h"

#include "core/clock.h"
#include "core/programfolder.h"
#include "core/prompt.h"
#include "core/settings.h"

#include <QFile>
#include <sqlite3.h>

namespace {

std::function<void(const QString&, const QString&)>& opener() {
    static std::function<void(const QString&, const QString&)> f;
    return f;
}

const QString kCrLf = QStringLiteral("\r\n");

QString checkName(const QString& description) {
    static const QLatin1String prefix("CHECK constraint failed: ");
    return description.startsWith(prefix) ? description.mid(prefix.size()).trimmed() : QString();
}

void appendToLog(const QString& line) {
    // Opened for each report and closed again; a failure here is not caught.
    QFile log(errorLogPath());
    if (log.open(QIODevice::WriteOnly | QIODevice::Append))
        log.write(line.toLatin1() + '\n');
}

} // namespace

DBErrorKind classifyError(const ErrorRecord& r) {
    const long native = r.NativeError;
    if (native == SQLITE_TOOBIG)
        return DBErrorKind::TooLarge;
    if (native == SQLITE_CONSTRAINT_NOTNULL)
        return DBErrorKind::Empty;
    if (native == SQLITE_CONSTRAINT_UNIQUE || native == SQLITE_CONSTRAINT_PRIMARYKEY)
        return DBErrorKind::Duplicate;
    if (native == SQLITE_CONSTRAINT_CHECK) {
        const QString name = checkName(r.Description).toUpper();
        if (name.startsWith(QLatin1String("TOO_LARGE")))
            return DBErrorKind::TooLarge;
        if (name.startsWith(QLatin1String("EMPTY")))
            return DBErrorKind::Empty;
        if (name.startsWith(QLatin1String("INVALID")))
            return DBErrorKind::Invalid;
    }
    if (native == SQLITE_CONSTRAINT_TRIGGER || native == SQLITE_CONSTRAINT_FOREIGNKEY)
        return DBErrorKind::InUse;
    if (r.Number == hr::MissingValue)
        return DBErrorKind::Invalid;
    return DBErrorKind::Other;
}

void ReportDBError(const VbError& error, const QString& procedure, const QString& container) {
    const QList<ErrorRecord> records = db().errors();
    const QString where = procedure + QStringLiteral(" of ") + container;
    if (records.size() == 1) {
        const ErrorRecord& r = records.first();
        switch (classifyError(r)) {
        case DBErrorKind::TooLarge:
            MsgBox(QStringLiteral("One or more of the values entered is too large"), vb::Information,
                   QStringLiteral("Too Large"));
            break;
        case DBErrorKind::Empty:
            MsgBox(QStringLiteral("One or more of the values entered must not be empty"), vb::Information,
                   QStringLiteral("Empty Data"));
            break;
        case DBErrorKind::Duplicate:
            MsgBox(QStringLiteral("The name of the item you entered already exists, please rename this item"),
                   vb::Information, QStringLiteral("Duplicate Record"));
            break;
        case DBErrorKind::Invalid:
            MsgBox(QStringLiteral("One or more of the values entered is invalid"), vb::Information,
                   QStringLiteral("Invalid Values"));
            break;
        default:
            MsgBox(QStringLiteral("Database Error: ") + QString::number(r.Number) + u'(' + r.Description +
                       u')' + kCrLf + QStringLiteral("in procedure ") + where,
                   vb::OKOnly);
        }
    } else if (records.size() > 1) {
        QString list;
        for (const ErrorRecord& r : records)
            list += QStringLiteral("Error ") + QString::number(r.Number) + QStringLiteral(" (") +
                    r.Description + u')' + kCrLf;
        MsgBox(QStringLiteral("The following database errors have occureind: ") + kCrLf + list +
                   QStringLiteral(" in procedure ") + where,
               vb::OKOnly);
    } else {
        MsgBox(QStringLiteral("Error ") + QString::number(error.number) + QStringLiteral(" (") +
                   error.description + QStringLiteral(")  procedure ") + where,
               vb::OKOnly);
        if (opt::flag(opt::ReportErrorMessages) && opener())
            opener()(error.description + QStringLiteral(" >procedure ") + where,
                     QString::number(error.number));
    }
    appendToLog(QStringLiteral("Error ") + QString::number(error.number) + QStringLiteral(" (") +
                error.description + QStringLiteral(") in procedure ") + where + u' ' + generalDate(Now()));
    db().clearErrors();
}

void ReportDBError(const std::exception& error, const QString& procedure, const QString& container) {
    if (const auto* vb = dynamic_cast<const VbError*>(&error)) {
        ReportDBError(*vb, procedure, container);
        return;
    }
    ReportDBError(VbError(vberr::InvalidCall, QString::fromLocal8Bit(error.what())), procedure, container);
}

void setBugReportOpener(std::function<void(const QString& description, const QString& number)> f) {
    opener() = std::move(f);
}

QString DescribeErrorRecords() {
    QString out;
    const QChar cr = u'\r';
    for (const ErrorRecord& r : db().errors()) {
        out += QStringLiteral("Error #") + QString::number(r.Number) + cr;
        out += QStringLiteral(" (Source: ") + r.Source + u')' + cr;
        out += QStringLiteral(" (SQL State: ") + r.SQLState + u')' + cr;
        out += QStringLiteral(" (NativeError: ") + QString::number(r.NativeError) + u')' + cr;
        if (r.HelpFile.isEmpty()) {
            out += QStringLiteral(" No Help file available") + cr;
        } else {
            out += QStringLiteral(" (HelpFile: ") + r.HelpFile + u')' + cr;
            out += QStringLiteral(" (HelpContext: ") + QString::number(r.HelpContext) + u')' + cr;
        }
    }
    return out;
}
