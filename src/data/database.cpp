#include "data/database.h"

#include "data/schema.h"
#include "data/sqlfunctions.h"
#include "data/sqltranslate.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <sqlite3.h>
#include <unordered_map>

// Prepared statements by their SQLite text. A statement handed out is not in its free list, so a
// reader that runs the same query inside its own loop (the build trees) gets a second one.
struct Database::Pool {
    struct Shape {
        QString sql;
        QList<sqlite3_stmt*> free;
        std::shared_ptr<void> data;
    };
    std::unordered_map<QString, std::unique_ptr<Shape>> shapes;
    QHash<sqlite3_stmt*, Shape*> owner;
    // The translation hands out the same shared text for the same shape, so its buffer finds the
    // shape without hashing the whole text. Each shape keeps its buffer alive, so an address here
    // can only mean that text.
    QHash<const QChar*, Shape*> byBuffer;
    int idle = 0;

    Shape* find(const QString& sql) {
        if (Shape* s = byBuffer.value(sql.constData()))
            return s;
        std::unique_ptr<Shape>& slot = shapes[sql];
        if (!slot) {
            slot = std::make_unique<Shape>(Shape{sql, {}, {}});
        } else if (slot->sql.constData() != sql.constData()) {
            byBuffer.remove(slot->sql.constData());
            slot->sql = sql;
        }
        byBuffer.insert(slot->sql.constData(), slot.get());
        return slot.get();
    }

    // Finalizes every statement not handed out; those still out are finalized when given back.
    void finalizeIdle() {
        for (const auto& [sql, s] : shapes) {
            for (sqlite3_stmt* st : std::as_const(s->free)) {
                owner.remove(st);
                sqlite3_finalize(st);
            }
            s->free.clear();
        }
        idle = 0;
    }

    // Too many distinct shapes (numbers written into the text make new ones): drop the idle ones.
    void trim() {
        if (idle >= 512)
            finalizeIdle();
    }
};

namespace {

constexpr const char* kSource = "VOSK SQLite Provider";

QString sqlStateFor(int extended, const QString& message) {
    const int primary = extended & 0xff;
    if (primary == SQLITE_CONSTRAINT)
        return extended == SQLITE_CONSTRAINT_DATATYPE ? QStringLiteral("22018") : QStringLiteral("23000");
    if (primary == SQLITE_MISMATCH)
        return QStringLiteral("22018");
    if (primary == SQLITE_TOOBIG)
        return QStringLiteral("22001");
    if (message.startsWith(QLatin1String("no such column")))
        return QStringLiteral("42S22");
    if (message.startsWith(QLatin1String("no such table")))
        return QStringLiteral("42S02");
    if (primary == SQLITE_ERROR)
        return QStringLiteral("42000");
    return QStringLiteral("HY000");
}

QString dataSource(const QString& connectionText) {
    static const QRegularExpression re(QStringLiteral("Data Source\\s*=\\s*([^;]*)"),
                                       QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch m = re.match(connectionText);
    QString file = m.hasMatch() ? m.captured(1).trimmed() : QString();
    if (file.size() >= 2 && file.startsWith(u'"') && file.endsWith(u'"'))
        file = file.mid(1, file.size() - 2);
    return file;
}

} // namespace

ErrorRecord Database::makeRecord(int extendedCode, const QString& message) {
    ErrorRecord r;
    const int primary = extendedCode & 0xff;
    // A name the engine cannot resolve, and a value of the wrong kind (the schema's INVALID_... checks),
    // carry the missing-value number, which the reporter shows as "Invalid Values".
    const bool missing =
        message.startsWith(QLatin1String("no such column")) || primary == SQLITE_MISMATCH ||
        extendedCode == SQLITE_CONSTRAINT_DATATYPE ||
        (extendedCode == SQLITE_CONSTRAINT_CHECK &&
         message.startsWith(QLatin1String("CHECK constraint failed: INVALID"), Qt::CaseInsensitive));
    r.Number = missing ? hr::MissingValue : hr::Fail;
    r.Description = message;
    r.Source = QLatin1String(kSource);
    r.SQLState = sqlStateFor(extendedCode, message);
    r.NativeError = extendedCode;
    return r;
}

Database::Database() = default;

Database::~Database() {
    close();
}

void Database::open(const QString& connectionText) {
    close();
    m_errors.clear();
    const QString file = dataSource(connectionText);
    auto refuse = [&](int code, const QString& message) {
        m_errors = {makeRecord(code, message)};
        throw VbError(m_errors.first().Number, message);
    };
    if (file.isEmpty())
        refuse(SQLITE_CANTOPEN, QStringLiteral("The connection text names no data source."));
    const QFileInfo info(file);
    if (!info.exists() || !info.isFile())
        refuse(SQLITE_CANTOPEN, QStringLiteral("Could not find file '%1'.").arg(file));
    {
        // Only a file that already is a database is opened; SQLite would take an empty file as one.
        QFile f(file);
        const QByteArray head = f.open(QIODevice::ReadOnly) ? f.read(16) : QByteArray();
        if (head != QByteArray("SQLite format 3", 16))
            refuse(SQLITE_NOTADB, QStringLiteral("The file '%1' is not a database.").arg(file));
    }
    sqlite3* h = nullptr;
    // The connection is used from the thread that opened it only: SQLite's own locking around every
    // call (a fifth of the time spent reading a long list) buys nothing here.
    const int rc = sqlite3_open_v2(QFile::encodeName(file).constData(), &h,
                                   SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    if (rc != SQLITE_OK) {
        const QString message =
            h ? QString::fromUtf8(sqlite3_errmsg(h)) : QString::fromUtf8(sqlite3_errstr(rc));
        const int code = h ? sqlite3_extended_errcode(h) : rc;
        sqlite3_close_v2(h);
        refuse(code, message);
    }
    sqlite3_extended_result_codes(h, 1);
    sqlite3_busy_timeout(h, 2000);
    RegisterSqlFunctions(h);
    // Reading the schema proves the file is readable as a database; it also says whether it uses
    // foreign keys, which SQLite enforces only when asked.
    sqlite3_stmt* st = nullptr;
    int code = sqlite3_prepare_v2(h, "SELECT COUNT(*) FROM sqlite_master WHERE sql LIKE '%REFERENCES%'", -1,
                                  &st, nullptr);
    if (code == SQLITE_OK)
        code = sqlite3_step(st);
    if (code != SQLITE_ROW) {
        const QString message = QString::fromUtf8(sqlite3_errmsg(h));
        const int ext = sqlite3_extended_errcode(h);
        sqlite3_finalize(st);
        sqlite3_close_v2(h);
        refuse(ext, message);
    }
    const bool foreignKeys = sqlite3_column_int(st, 0) > 0;
    sqlite3_finalize(st);
    if (foreignKeys)
        sqlite3_exec(h, "PRAGMA foreign_keys=ON", nullptr, nullptr, nullptr);
    // A version-6 file of an older program gets the columns added since (schema.h) before anything
    // reads it; one that cannot take them (read-only) opens as it is.
    schema::EnsureAddedColumns(h);
    schema::EnsureAddedIndexes(h);
    m_db = h;
    m_pool = std::make_unique<Pool>();
    m_connectionText = connectionText;
    m_file = file;
}

void Database::close() {
    if (!m_db)
        return;
    if (inTransaction())
        sqlite3_exec(m_db, "ROLLBACK", nullptr, nullptr, nullptr);
    m_pool->finalizeIdle();
    m_pool.reset();
    sqlite3_close_v2(m_db);
    m_db = nullptr;
    ++m_generation;
    m_connectionText.clear();
    m_file.clear();
}

void Database::raise(int code, const QString& context) {
    if (m_db) {
        m_errors = {makeRecord(sqlite3_extended_errcode(m_db), QString::fromUtf8(sqlite3_errmsg(m_db)))};
    } else {
        m_errors = {
            makeRecord(code, context.isEmpty() ? QStringLiteral("The database is not open.") : context)};
    }
    throw VbError(m_errors.first().Number, m_errors.first().Description);
}

void Database::fail(long number, long nativeError, const QString& sqlState, const QString& description) {
    ErrorRecord r;
    r.Number = number;
    r.Description = description;
    r.Source = QLatin1String(kSource);
    r.SQLState = sqlState;
    r.NativeError = nativeError;
    m_errors = {r};
    throw VbError(number, description);
}

StatementLease Database::acquireShape(const QString& sqliteSql, const QStringList& params, bool quiet) {
    if (!m_db) {
        if (quiet)
            return {};
        raise(SQLITE_MISUSE, QStringLiteral("The database is not open."));
    }
    Pool::Shape* shape = m_pool->find(sqliteSql);
    sqlite3_stmt* st = nullptr;
    if (!shape->free.isEmpty()) {
        st = shape->free.takeLast();
        --m_pool->idle;
    } else {
        const QByteArray utf8 = sqliteSql.toUtf8();
        const int rc = sqlite3_prepare_v3(m_db, utf8.constData(), int(utf8.size()), SQLITE_PREPARE_PERSISTENT,
                                          &st, nullptr);
        if (rc != SQLITE_OK || !st) {
            sqlite3_finalize(st);
            if (quiet)
                return {};
            if (rc == SQLITE_OK) // only blanks or a comment: nothing to run
                fail(hr::Fail, SQLITE_ERROR, QStringLiteral("42000"),
                     QStringLiteral("The SQL text holds no statement."));
            raise(rc);
        }
        m_pool->owner.insert(st, shape);
    }
    StatementLease lease(this, st);
    for (int i = 0; i < params.size() && i < sqlite3_bind_parameter_count(st); ++i) {
        const QByteArray v = params.at(i).toUtf8();
        sqlite3_bind_text(st, i + 1, v.constData(), int(v.size()), SQLITE_TRANSIENT);
    }
    return lease;
}

StatementLease Database::acquire(const QString& sql) {
    const TranslatedSql t = TranslateSql(sql);
    if (!t.error.isEmpty())
        fail(t.errorNumber, SQLITE_ERROR, t.sqlState, t.error);
    return acquireShape(t.sql, t.params);
}

void StatementLease::reset() {
    if (m_stmt)
        m_cn->release(std::exchange(m_stmt, nullptr));
}

void Database::release(sqlite3_stmt* stmt) {
    Pool::Shape* shape = m_pool ? m_pool->owner.value(stmt) : nullptr;
    if (!shape) { // the connection was closed (or trimmed) while the statement was out
        sqlite3_finalize(stmt);
        return;
    }
    sqlite3_reset(stmt);
    sqlite3_clear_bindings(stmt);
    shape->free.append(stmt);
    ++m_pool->idle;
    m_pool->trim();
}

std::shared_ptr<void>& Database::shapeData(sqlite3_stmt* stmt) {
    Pool::Shape* shape = m_pool ? m_pool->owner.value(stmt) : nullptr;
    if (shape)
        return shape->data;
    static std::shared_ptr<void> none;
    none.reset();
    return none;
}

long Database::execute(const QString& sql) {
    // A new command starts with an empty error collection. The transaction
    // calls keep it: save handlers roll back before they report what went wrong.
    m_errors.clear();
    return run(sql);
}

long Database::run(const QString& sql) {
    const StatementLease st = acquire(sql);
    // The engine keeps the count of the last INSERT, UPDATE or DELETE, whichever statement ran last;
    // only a statement that changed rows itself reports a count.
    const sqlite3_int64 before = sqlite3_total_changes64(m_db);
    int rc;
    while ((rc = sqlite3_step(st.get())) == SQLITE_ROW) {
    }
    if (rc != SQLITE_DONE)
        raise(rc);
    return sqlite3_total_changes64(m_db) == before ? 0 : long(sqlite3_changes64(m_db));
}

bool Database::inTransaction() const {
    return m_db && !sqlite3_get_autocommit(m_db);
}

void Database::beginTrans() {
    if (inTransaction())
        fail(hr::Fail, SQLITE_ERROR, QStringLiteral("HY000"),
             QStringLiteral("A transaction is already open: transactions cannot be nested."));
    run(QStringLiteral("BEGIN"));
}

void Database::commitTrans() {
    if (!inTransaction())
        fail(hr::Fail, SQLITE_ERROR, QStringLiteral("HY000"),
             QStringLiteral("No transaction is open to commit."));
    run(QStringLiteral("COMMIT"));
}

void Database::rollbackTrans() {
    if (!inTransaction())
        fail(hr::Fail, SQLITE_ERROR, QStringLiteral("HY000"),
             QStringLiteral("No transaction is open to roll back."));
    run(QStringLiteral("ROLLBACK"));
}

Database& db() {
    static Database shared;
    return shared;
}
