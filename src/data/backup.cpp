#include "data/backup.h"

#include "core/clock.h"
#include "core/programfolder.h"
#include "core/progress.h"
#include "core/prompt.h"
#include "data/database.h"
#include "data/errorreport.h"
#include "data/schema.h"
#include "data/sqlfunctions.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <filesystem>
#include <sqlite3.h>
#include <system_error>

#ifdef Q_OS_WIN
#include <io.h>
#include <windows.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace {

namespace fs = std::filesystem;

constexpr long PathFileAccessError = 75;
const QString Module = QStringLiteral("Module modMain");
const QString RestoreTitle = QStringLiteral("Restore Database");

std::function<bool(const QString&, const QString&, QString*)>& copierRef() {
    static std::function<bool(const QString&, const QString&, QString*)> copier;
    return copier;
}

fs::path nativePath(const QString& path) {
    return fs::path(path.toStdU16String());
}

[[noreturn]] void fileError(long number, const QString& text) {
    db().clearErrors(); // not a database error: the reporter must not read an older record
    throw VbError(number, text);
}

bool sameFile(const QString& a, const QString& b) {
    std::error_code ec;
    if (fs::equivalent(nativePath(a), nativePath(b), ec))
        return true;
    return QFileInfo(a).absoluteFilePath() == QFileInfo(b).absoluteFilePath();
}

// The read-only attribute is the owner's write permission here: flip only that bit.
void clearReadOnly(const QString& path) {
    std::error_code ec;
    const fs::perms now = fs::status(nativePath(path), ec).permissions();
    if (!ec && (now & fs::perms::owner_write) == fs::perms::none)
        fs::permissions(nativePath(path), now ^ fs::perms::owner_write, fs::perm_options::replace, ec);
}

QString nativeText(const QString& path) {
    return QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath());
}

// One value of a statement on a raw connection; an invalid QVariant when it yields no row.
QVariant scalar(sqlite3* h, const char* sql, QString* error) {
    sqlite3_stmt* st = nullptr;
    QVariant out;
    int rc = sqlite3_prepare_v2(h, sql, -1, &st, nullptr);
    if (rc == SQLITE_OK)
        rc = sqlite3_step(st);
    if (rc == SQLITE_ROW) {
        out = sqlite3_column_type(st, 0) == SQLITE_NULL
                  ? QVariant(QString())
                  : QVariant(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 0))));
    } else if (rc != SQLITE_DONE) {
        *error = QString::fromUtf8(sqlite3_errmsg(h));
    }
    sqlite3_finalize(st);
    return out;
}

QString checkOpenFile(sqlite3* h) {
    // The integrity check runs the name columns' checks and compares by their collation.
    RegisterSqlFunctions(h);
    QString error;
    const QVariant integrity = scalar(h, "PRAGMA integrity_check", &error);
    if (!error.isEmpty())
        return QStringLiteral("it could not be read (%1)").arg(error);
    if (integrity.toString() != QLatin1String("ok"))
        return QStringLiteral("it fails SQLite's integrity check (%1)").arg(integrity.toString());
    const QVariant version = scalar(h, "SELECT MAX(VERSION) FROM DB_VERSION", &error);
    if (!error.isEmpty())
        return QStringLiteral("it has no version table, so it is not a VOSK database");
    if (version.toString().isEmpty())
        return QStringLiteral("its version table is empty");
    if (version.toString() != QString::number(schema::Version))
        return QStringLiteral("it is a version %1 database; this program reads version %2")
            .arg(version.toString())
            .arg(schema::Version);
    for (const schema::Table& table : schema::tables()) {
        QSet<QString> present;
        sqlite3_stmt* st = nullptr;
        const QByteArray sql = QStringLiteral("PRAGMA table_info(\"%1\")").arg(table.name).toUtf8();
        if (sqlite3_prepare_v2(h, sql.constData(), -1, &st, nullptr) == SQLITE_OK)
            while (sqlite3_step(st) == SQLITE_ROW)
                present.insert(
                    QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 1))).toUpper());
        sqlite3_finalize(st);
        if (present.isEmpty())
            return QStringLiteral("the table %1 is missing").arg(table.name);
        for (const schema::Column& c : table.columns)
            if (!present.contains(c.name.toUpper()))
                return QStringLiteral("the column %1 of the table %2 is missing").arg(c.name, table.name);
    }
    return QString();
}

// The online backup of one open connection into a new file.
void onlineBackup(sqlite3* source, const QString& to) {
    QFile::remove(to);
    sqlite3* dest = nullptr;
    int rc = sqlite3_open_v2(QFile::encodeName(to).constData(), &dest,
                             SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    QString message;
    if (rc == SQLITE_OK) {
        sqlite3_backup* b = sqlite3_backup_init(dest, "main", source, "main");
        if (b) {
            // Copied in steps so that the progress window can follow a large database; the copy is
            // still one snapshot, as a write on another connection between steps restarts it.
            std::unique_ptr<Progress> progress =
                StartProgress(QStringLiteral("Backing Up Database"), false, 300);
            for (;;) {
                rc = sqlite3_backup_step(b, 4096);
                if (rc == SQLITE_BUSY || rc == SQLITE_LOCKED) {
                    sqlite3_sleep(20);
                    continue;
                }
                if (rc != SQLITE_OK)
                    break;
                const int pages = sqlite3_backup_pagecount(b);
                progress->setRange(pages);
                progress->setValue(pages - sqlite3_backup_remaining(b));
            }
            sqlite3_backup_finish(b);
        }
        rc = sqlite3_errcode(dest);
    }
    if (rc != SQLITE_OK && rc != SQLITE_DONE)
        message = dest ? QString::fromUtf8(sqlite3_errmsg(dest)) : QString::fromUtf8(sqlite3_errstr(rc));
    sqlite3_close_v2(dest);
    if (!message.isEmpty()) {
        QFile::remove(to);
        fileError(PathFileAccessError,
                  QStringLiteral("The backup could not be written to %1 (%2)").arg(nativeText(to), message));
    }
}

bool openedVersionIsCurrent() {
    QString error;
    const QVariant v = scalar(db().handle(), "SELECT MAX(VERSION) FROM DB_VERSION", &error);
    return error.isEmpty() && v.toString() == QString::number(schema::Version);
}

} // namespace

bool SyncFile(const QString& path, QString* error) {
#ifdef Q_OS_WIN
    QFile f(path);
    if (!f.open(QIODevice::ReadWrite) || !FlushFileBuffers(HANDLE(_get_osfhandle(f.handle())))) {
        *error = QStringLiteral("%1 could not be flushed to disk").arg(nativeText(path));
        return false;
    }
    return true;
#else
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY);
    const bool ok = fd >= 0 && ::fsync(fd) == 0;
    if (fd >= 0)
        ::close(fd);
    if (!ok)
        *error = QStringLiteral("%1 could not be flushed to disk").arg(nativeText(path));
    return ok;
#endif
}

bool ReplaceFile(const QString& from, const QString& to, QString* error) {
    std::error_code ec;
    fs::rename(nativePath(from), nativePath(to), ec);
    if (ec) {
        *error = QStringLiteral("%1 could not be renamed to %2 (%3)")
                     .arg(nativeText(from), nativeText(to), QString::fromStdString(ec.message()));
        return false;
    }
#ifndef Q_OS_WIN
    // The folder's entry is what a power cut could lose.
    const int fd = ::open(QFile::encodeName(QFileInfo(to).absolutePath()).constData(), O_RDONLY);
    if (fd >= 0) {
        ::fsync(fd);
        ::close(fd);
    }
#endif
    return true;
}

bool CopyFileAtomically(const QString& from, const QString& to, QString* error) {
    const QString part = to + QStringLiteral(".part");
    QFile in(from);
    QFile out(part);
    if (!in.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("%1 could not be read (%2)").arg(nativeText(from), in.errorString());
        return false;
    }
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        *error = QStringLiteral("%1 could not be written (%2)").arg(nativeText(part), out.errorString());
        return false;
    }
    QByteArray chunk;
    bool ok = true;
    std::unique_ptr<Progress> progress = StartProgress(QStringLiteral("Copying the Database"), false, 300);
    progress->setRange(in.size() >> 20);
    while (ok && !in.atEnd()) {
        chunk = in.read(1 << 20);
        ok = !chunk.isEmpty() && out.write(chunk) == chunk.size();
        progress->advance();
    }
    ok = ok && in.error() == QFileDevice::NoError && out.flush();
    if (!ok)
        *error = QStringLiteral("%1 could not be copied to %2 (%3)")
                     .arg(nativeText(from), nativeText(part), out.errorString());
    out.close();
    if (ok && !SyncFile(part, error))
        ok = false;
    if (ok && !ReplaceFile(part, to, error))
        ok = false;
    if (!ok)
        QFile::remove(part);
    return ok;
}

void setRestoreCopier(std::function<bool(const QString&, const QString&, QString*)> copier) {
    copierRef() = std::move(copier);
}

QString CheckRestorable(const QString& path) {
    const QFileInfo info(path);
    if (!info.isFile())
        return QStringLiteral("there is no such file");
    if (info.size() == 0)
        return QStringLiteral("it is empty");
    {
        QFile f(path);
        if (!f.open(QIODevice::ReadOnly))
            return QStringLiteral("it could not be read (%1)").arg(f.errorString());
        if (f.read(16) != QByteArray("SQLite format 3", 16))
            return QStringLiteral("it is not a database file");
    }
    sqlite3* h = nullptr;
    if (sqlite3_open_v2(QFile::encodeName(path).constData(), &h, SQLITE_OPEN_READONLY, nullptr) !=
        SQLITE_OK) {
        const QString message = h ? QString::fromUtf8(sqlite3_errmsg(h)) : QStringLiteral("out of memory");
        sqlite3_close_v2(h);
        return QStringLiteral("it could not be opened (%1)").arg(message);
    }
    const QString why = checkOpenFile(h);
    sqlite3_close_v2(h);
    return why;
}

QString ProposedBackupName(const QDate& day) {
    return day.toString(QStringLiteral("ddMMyyyy")) + QStringLiteral(".bak");
}

bool BackUpDB(const QString& targetPath) {
    if (targetPath.isEmpty())
        return false;
    try {
        const QString database = databasePath();
        if (sameFile(targetPath, database))
            fileError(PathFileAccessError,
                      QStringLiteral("A backup cannot be written over the database itself"));
        if (db().inTransaction())
            fileError(PathFileAccessError, QStringLiteral("The database is in the middle of a change"));
        // Written beside the target and renamed over it once whole: an older backup of the same name
        // is kept until the new one is complete.
        const QString part = targetPath + QStringLiteral(".part");
        if (db().isOpen()) {
            onlineBackup(db().handle(), part);
        } else {
            sqlite3* h = nullptr;
            if (sqlite3_open_v2(QFile::encodeName(database).constData(), &h, SQLITE_OPEN_READONLY, nullptr) !=
                SQLITE_OK) {
                sqlite3_close_v2(h);
                fileError(vberr::FileNotFound, QStringLiteral("File not found"));
            }
            try {
                onlineBackup(h, part);
            } catch (...) {
                sqlite3_close_v2(h);
                throw;
            }
            sqlite3_close_v2(h);
        }
        QString error;
        if (!ReplaceFile(part, targetPath, &error)) {
            QFile::remove(part);
            fileError(PathFileAccessError, error);
        }
        return true;
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("BackUpDB"), Module);
    } catch (const std::exception& e) {
        ReportDBError(e, QStringLiteral("BackUpDB"), Module);
    }
    return false;
}

bool RestoreDB(const QString& sourcePath) {
    if (!QFileInfo(sourcePath).isFile()) {
        MsgBox(QStringLiteral("Invalid Filename!"), vb::Exclamation, QStringLiteral("Invalid File Name!"));
        return false;
    }
    const QString why = CheckRestorable(sourcePath);
    if (!why.isEmpty()) {
        MsgBox(QStringLiteral("The file\r\n") + nativeText(sourcePath) +
                   QStringLiteral("\r\ncannot be restored: ") + why +
                   QStringLiteral(".\r\n\r\nNothing was changed: your current database is still in place."),
               vb::Exclamation, RestoreTitle);
        return false;
    }
    const QString connection = db().connectionString();
    const QString target = databasePath();
    const QString incoming = target + QStringLiteral(".restoring");
    const QString safety = target + QStringLiteral(".temp");
    // Whatever happens below, the program ends up with an open database: the new one or the old one.
    auto reopen = [&connection] {
        if (!db().isOpen() && !connection.isEmpty())
            db().open(connection);
    };
    try {
        if (connection.isEmpty())
            fileError(3704, QStringLiteral("The database is not open"));
        if (db().inTransaction())
            fileError(PathFileAccessError, QStringLiteral("The database is in the middle of a change"));
        db().close();
        clearReadOnly(target);
        clearReadOnly(sourcePath);

        // The chosen file is copied beside the database first; the database itself is not touched
        // until the copy is whole.
        QString error;
        const auto& copier = copierRef();
        if (!(copier ? copier(sourcePath, incoming, &error)
                     : CopyFileAtomically(sourcePath, incoming, &error))) {
            QFile::remove(incoming);
            fileError(PathFileAccessError, error);
        }
        if (!CopyFileAtomically(target, safety, &error)) {
            QFile::remove(incoming);
            fileError(PathFileAccessError, error);
        }
        if (!ReplaceFile(incoming, target, &error)) {
            QFile::remove(incoming);
            QFile::remove(safety);
            fileError(PathFileAccessError, error);
        }

        QString problem;
        try {
            db().open(connection);
            if (!openedVersionIsCurrent())
                problem = QStringLiteral("it is not a version %1 VOSK database").arg(schema::Version);
        } catch (const VbError& e) {
            problem = e.description;
            db().clearErrors();
        }
        if (!problem.isEmpty()) {
            db().close();
            if (!ReplaceFile(safety, target, &error))
                fileError(PathFileAccessError, error +
                                                   QStringLiteral(". Your previous database is kept as ") +
                                                   nativeText(safety));
            reopen();
            MsgBox(QStringLiteral("The restored database could not be opened (") + problem +
                       QStringLiteral(
                           ").\r\n\r\nYour previous database has been put back: nothing was changed."),
                   vb::Exclamation, RestoreTitle);
            return false;
        }
        QFile::remove(safety);
        if (!db().isOpen())
            fileError(3704, QStringLiteral("The database is not open"));
        return true;
    } catch (const VbError& e) {
        try {
            reopen();
        } catch (const VbError&) {
            // Reported below with the first error; the reporter copes without a connection.
        }
        ReportDBError(e, QStringLiteral("RestoreDB"), Module);
    } catch (const std::exception& e) {
        try {
            reopen();
        } catch (const VbError&) {
        }
        ReportDBError(e, QStringLiteral("RestoreDB"), Module);
    }
    return false;
}

void CleanRestoreLeftovers(const QString& target) {
    const QString safety = target + QStringLiteral(".temp");
    for (const char* suffix : {".restoring", ".restoring.part", ".temp.part"})
        QFile::remove(target + QLatin1String(suffix));
    if (QFileInfo::exists(safety) && QFileInfo(target).isFile() && CheckRestorable(target).isEmpty())
        QFile::remove(safety);
}

bool BackupDatabaseCommand() {
    const QString proposed = ProposedBackupName(Now().date());
    for (;;) {
        const QString path = prompts().saveFileUnconfirmed(QStringLiteral("Backup Database"),
                                                           QStringLiteral("Backup Files|*.bak"), proposed);
        if (path.isEmpty())
            return false; // cancelled
        if (QFileInfo::exists(path) &&
            MsgBox(nativeText(path) + QStringLiteral(" already exists.\r\nDo you want to replace it?"),
                   vb::YesNo + vb::Exclamation, QStringLiteral("Confirm Save As")) != vb::Yes)
            continue; // back to the dialog, as the save dialog itself does
        return BackUpDB(path);
    }
}

bool RestoreDatabaseCommand() {
    const QString path = prompts().openFile(RestoreTitle, QStringLiteral("Backup Files|*.bak"));
    if (path.isEmpty())
        return false; // cancelled
    return RestoreDB(path);
}
