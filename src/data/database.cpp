#include "data/database.h"

#include "data/schema.h"
#include "data/sqltranslate.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <sqlite3.h>

// Prepared statements by their SQLite text. A statement handed out is not in its free list, so a
// reader that runs the same query inside its own loop (the build trees) gets a second one.
struct Database::Pool {
    struct Shape {
        QString sql;
        QList<sqlite3_stmt*> free;
        std::shared_ptr<void> data;
    };
    QHash<QString, Shape*> shapes;
    QHash<sqlite3_stmt*, Shape*> owner;
    // The translation hands out the same shared text for the same shape, so its buffer finds the
    // shape without hashing the whole text. Each shape keeps its buffer alive, so an address here
    // can only mean that text.
    QHash<const QChar*, Shape*> byBuffer;
    int idle = 0;

    Shape* find(const QString& sql) {
        if (Shape* s = byBuffer.value(sql.constData()))
            return s;
        Shape*& s = shapes[sql];
        if (!s) {
            s = new Shape{sql, {}, {}};
        } else if (s->sql.constData() != sql.constData()) {
            byBuffer.remove(s->sql.constData());
            s->sql = sql;
        }
        byBuffer.insert(s->sql.constData(), s);
        return s;
    }

    ~Pool() { qDeleteAll(shapes); }

    // Too many distinct shapes (numbers written into the text make new ones): drop the idle ones.
    void trim() {
        if (idle < 512)
            return;
        for (Shape* s : std::as_const(shapes)) {
            for (sqlite3_stmt* st : std::as_const(s->free)) {
                owner.remove(st);
                sqlite3_finalize(st);
            }
            s->free.clear();
        }
        idle = 0;
    }
};

namespace {

constexpr const char* kSource = "VOSK SQLite Provider";

// Jet's &: NULL joins as empty text, the whole is NULL only when every part is.
void jetConcat(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    QByteArray out;
    bool any = false;
    for (int i = 0; i < argc; ++i) {
        switch (sqlite3_value_type(argv[i])) {
        case SQLITE_NULL:
            continue;
        case SQLITE_INTEGER:
            out += QByteArray::number(sqlite3_value_int64(argv[i]));
            break;
        case SQLITE_FLOAT:
            out += jetNumberText(sqlite3_value_double(argv[i])).toUtf8();
            break;
        default:
            out.append(reinterpret_cast<const char*>(sqlite3_value_text(argv[i])),
                       sqlite3_value_bytes(argv[i]));
        }
        any = true;
    }
    if (!any)
        sqlite3_result_null(ctx);
    else
        sqlite3_result_text(ctx, out.constData(), int(out.size()), SQLITE_TRANSIENT);
}

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
    // are what the old provider reported as a missing value.
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
    const int rc = sqlite3_open_v2(QFile::encodeName(file).constData(), &h, SQLITE_OPEN_READWRITE, nullptr);
    if (rc != SQLITE_OK) {
        const QString message =
            h ? QString::fromUtf8(sqlite3_errmsg(h)) : QString::fromUtf8(sqlite3_errstr(rc));
        const int code = h ? sqlite3_extended_errcode(h) : rc;
        sqlite3_close_v2(h);
        refuse(code, message);
    }
    sqlite3_extended_result_codes(h, 1);
    sqlite3_busy_timeout(h, 2000);
    sqlite3_create_function_v2(h, kJetConcat, -1, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, jetConcat,
                               nullptr, nullptr, nullptr);
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
    m_db = h;
    m_pool = new Pool;
    m_connectionText = connectionText;
    m_file = file;
}

void Database::close() {
    if (!m_db)
        return;
    if (inTransaction())
        sqlite3_exec(m_db, "ROLLBACK", nullptr, nullptr, nullptr);
    // Statements still held by open result sets are finalized when those release them.
    for (Pool::Shape* s : std::as_const(m_pool->shapes))
        for (sqlite3_stmt* st : std::as_const(s->free))
            sqlite3_finalize(st);
    delete m_pool;
    m_pool = nullptr;
    sqlite3_close_v2(m_db);
    m_db = nullptr;
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

sqlite3_stmt* Database::acquireShape(const QString& sqliteSql, const QStringList& params, bool quiet) {
    if (!m_db) {
        if (quiet)
            return nullptr;
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
                return nullptr;
            if (rc == SQLITE_OK) // only blanks or a comment: nothing to run
                fail(hr::Fail, SQLITE_ERROR, QStringLiteral("42000"),
                     QStringLiteral("The SQL text holds no statement."));
            raise(rc);
        }
        m_pool->owner.insert(st, shape);
    }
    for (int i = 0; i < params.size() && i < sqlite3_bind_parameter_count(st); ++i) {
        const QByteArray v = params.at(i).toUtf8();
        sqlite3_bind_text(st, i + 1, v.constData(), int(v.size()), SQLITE_TRANSIENT);
    }
    return st;
}

sqlite3_stmt* Database::acquire(const QString& sql) {
    const TranslatedSql t = TranslateSql(sql);
    if (!t.error.isEmpty())
        fail(hr::Fail, SQLITE_ERROR, QStringLiteral("42000"), t.error);
    return acquireShape(t.sql, t.params);
}

void Database::release(sqlite3_stmt* stmt) {
    if (!stmt)
        return;
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
    // A new command starts with an empty error collection, as the old provider did. The transaction
    // calls keep it: save handlers roll back before they report what went wrong.
    m_errors.clear();
    return run(sql);
}

long Database::run(const QString& sql) {
    sqlite3_stmt* st = acquire(sql);
    int rc;
    while ((rc = sqlite3_step(st)) == SQLITE_ROW) {
    }
    if (rc != SQLITE_DONE) {
        const ErrorRecord r =
            makeRecord(sqlite3_extended_errcode(m_db), QString::fromUtf8(sqlite3_errmsg(m_db)));
        release(st);
        m_errors = {r};
        throw VbError(r.Number, r.Description);
    }
    const long changed = sqlite3_stmt_readonly(st) ? 0 : long(sqlite3_changes(m_db));
    release(st);
    return changed;
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
