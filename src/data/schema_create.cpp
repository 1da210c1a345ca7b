// The DDL of a new database, generated from the table list so that the constraint names follow one
// pattern the error reporter can rely on. This is SQLite's own dialect, run directly.
#include "data/schema.h"
#include "data/sqlfunctions.h"

#include <QFile>
#include <QFileInfo>
#include <QVariant>
#include <sqlite3.h>

namespace schema {
namespace {

QString q(const QString& ident) {
    return QLatin1Char('"') + ident + QLatin1Char('"');
}

bool isWholeType(const QString& t) {
    return t == QLatin1String("INTEGER") || t == QLatin1String("SMALLINT");
}
bool isFractionType(const QString& t) {
    return t == QLatin1String("FLOAT") || t == QLatin1String("DOUBLE") || t == QLatin1String("CURRENCY");
}
bool isTextType(const QString& t) {
    return t == QLatin1String("TEXT") || textSize(t) > 0;
}

QString columnDdl(const Table& table, const Column& c) {
    const QString col = q(c.name);
    const QString tag = table.name + QLatin1Char('_') + c.name;
    QString s = col + QLatin1Char(' ') + c.type;
    if (c.required)
        s += QStringLiteral(" NOT NULL");
    if (c.type == QLatin1String("BOOLEAN"))
        s += QStringLiteral(" DEFAULT 0");
    if (isTextType(c.type))
        s += QStringLiteral(" COLLATE ") + QLatin1String(kNoCaseCollation);

    if (const int n = textSize(c.type))
        s += QStringLiteral(" CONSTRAINT TOO_LARGE_%1 CHECK (length(%2) <= %3)").arg(tag, col).arg(n);
    if (c.required && isTextType(c.type))
        s += QStringLiteral(" CONSTRAINT EMPTY_%1 CHECK (%2 <> '')").arg(tag, col);
    // A name comes back into SQL through FixQuotes, which leaves text holding '' as it is: such a
    // name would end its literal early. Malformed UTF-8 and blobs never equal any text the program
    // sends, so a tick or a lookup of them would find nothing.
    if (c.holdsName)
        s += QStringLiteral(
                 " CONSTRAINT INVALID_%1 CHECK (typeof(%2) <> 'blob' AND instr(%2, char(39, 39)) = 0 AND "
                 "%3(%2))")
                 .arg(tag, col, QLatin1String(kValidUtf8Function));
    if (isWholeType(c.type)) {
        const bool small = c.type == QLatin1String("SMALLINT");
        // A fraction too big to become a whole number is still "too large", not "invalid".
        s += QStringLiteral(" CONSTRAINT TOO_LARGE_%1 CHECK (typeof(%2) NOT IN ('integer','real') OR "
                            "%2 BETWEEN %3 AND %4)")
                 .arg(tag, col, small ? QStringLiteral("-32768") : QStringLiteral("-2147483648"),
                      small ? QStringLiteral("32767") : QStringLiteral("2147483647"));
        s += QStringLiteral(" CONSTRAINT INVALID_%1 CHECK (typeof(%2) IN ('integer','null'))").arg(tag, col);
    } else if (isFractionType(c.type)) {
        s += QStringLiteral(" CONSTRAINT INVALID_%1 CHECK (typeof(%2) IN ('integer','real','null'))")
                 .arg(tag, col);
    } else if (c.type == QLatin1String("BOOLEAN")) {
        s += QStringLiteral(" CONSTRAINT INVALID_%1 CHECK (%2 IN (0,1))").arg(tag, col);
    }
    return s;
}

QStringList tableDdl(const Table& t) {
    QStringList parts;
    for (const Column& c : t.columns)
        parts << columnDdl(t, c);
    QStringList quoted;
    for (const QString& u : t.unique)
        quoted << q(u);
    // Lists kept in table order must not be read through a sorted index: a partial index keeps the
    // values unique but is never chosen for a plain scan.
    if (!t.unique.isEmpty() && !t.ordered)
        parts << QStringLiteral("UNIQUE (%1)").arg(quoted.join(QStringLiteral(", ")));

    QStringList out;
    out << QStringLiteral("CREATE TABLE %1 (\n  %2\n)").arg(q(t.name), parts.join(QStringLiteral(",\n  ")));
    if (t.ordered)
        out << QStringLiteral("CREATE UNIQUE INDEX %1 ON %2 (%3) WHERE %4 IS NOT NULL")
                   .arg(q(QStringLiteral("UX_") + t.name), q(t.name), quoted.join(QStringLiteral(", ")),
                        quoted.first());

    // The build trees and drop lists look records up by the names held in relationship tables.
    if (t.unique.isEmpty() && !t.lookup) {
        for (const Column& c : t.columns) {
            if (textSize(c.type) == NameSize)
                out << QStringLiteral("CREATE INDEX %1 ON %2 (%3)")
                           .arg(q(QStringLiteral("IX_") + t.name + QLatin1Char('_') + c.name), q(t.name),
                                q(c.name));
        }
    }
    return out;
}

QStringList triggerDdl(const LookupUse& u) {
    QString match =
        QStringLiteral("%1.%2 = OLD.%3").arg(q(u.usingTable), q(u.usingColumn), q(u.lookupColumn));
    if (!u.lookupPartner.isEmpty())
        match +=
            QStringLiteral(" AND %1.%2 = OLD.%3").arg(q(u.usingTable), q(u.usingPartner), q(u.lookupPartner));
    const QString inUse = QStringLiteral("EXISTS (SELECT 1 FROM %1 WHERE %2)").arg(q(u.usingTable), match);
    const QString raise = QStringLiteral("BEGIN SELECT RAISE(ABORT, '%1 value is in use by %2'); END")
                              .arg(u.lookupTable, u.usingTable);
    const QString name = u.lookupTable + QLatin1Char('_') + u.usingTable + QLatin1Char('_') + u.usingColumn;

    QString changed = QStringLiteral("NEW.%1 IS NOT OLD.%1").arg(q(u.lookupColumn));
    QString columns = q(u.lookupColumn);
    if (!u.lookupPartner.isEmpty()) {
        changed = QStringLiteral("(%1 OR NEW.%2 IS NOT OLD.%2)").arg(changed, q(u.lookupPartner));
        columns += QStringLiteral(", ") + q(u.lookupPartner);
    }
    return {
        QStringLiteral("CREATE TRIGGER %1 BEFORE DELETE ON %2 FOR EACH ROW WHEN %3 %4")
            .arg(q(QStringLiteral("IN_USE_DEL_") + name), q(u.lookupTable), inUse, raise),
        QStringLiteral("CREATE TRIGGER %1 BEFORE UPDATE OF %2 ON %3 FOR EACH ROW WHEN %4 AND %5 %6")
            .arg(q(QStringLiteral("IN_USE_UPD_") + name), columns, q(u.lookupTable), changed, inUse, raise),
    };
}

bool exec(sqlite3* db, const QString& sql, QString* error) {
    char* msg = nullptr;
    if (sqlite3_exec(db, sql.toUtf8().constData(), nullptr, nullptr, &msg) == SQLITE_OK)
        return true;
    if (error)
        *error = QStringLiteral("%1\nin: %2").arg(QString::fromUtf8(msg ? msg : "unknown error"), sql);
    sqlite3_free(msg);
    return false;
}

QString addColumnDdl(const AddedColumn& a) {
    Table t;
    t.name = a.table;
    return QStringLiteral("ALTER TABLE %1 ADD COLUMN %2").arg(q(a.table), columnDdl(t, a.column));
}

// The first value of a query, or an invalid QVariant when it fails or yields no row.
QVariant firstValue(sqlite3* db, const QString& sql) {
    sqlite3_stmt* st = nullptr;
    QVariant v;
    if (sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &st, nullptr) == SQLITE_OK &&
        sqlite3_step(st) == SQLITE_ROW)
        v = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 0)));
    sqlite3_finalize(st);
    return v;
}

} // namespace

const QList<AddedColumn>& addedColumns() {
    static const QList<AddedColumn> added = {
        {QStringLiteral("COMPONENTS"),
         Column{QStringLiteral("COST_TO_MANUFACTURE"), QStringLiteral("INTEGER")}},
    };
    return added;
}

bool EnsureAddedColumns(sqlite3* db, QString* error) {
    if (firstValue(db, QStringLiteral("SELECT MAX(VERSION) FROM DB_VERSION")).toString() !=
        QString::number(Version))
        return true;
    for (const AddedColumn& a : addedColumns()) {
        const QString table = QStringLiteral("SELECT COUNT(*) FROM pragma_table_info('%1')").arg(a.table);
        const QString column = table + QStringLiteral(" WHERE name = '%1' COLLATE NOCASE").arg(a.column.name);
        if (firstValue(db, table).toInt() == 0 || firstValue(db, column).toInt() > 0)
            continue;
        if (!exec(db, addColumnDdl(a), error))
            return false;
    }
    return true;
}

const QList<Table>& addedTables() {
    static const QList<Table> added = {
        Table{OwnedTable,
              {Column{QStringLiteral("RECORD_KIND"), QStringLiteral("VARCHAR(50)"), true},
               Column{QStringLiteral("RECORD_NAME"), QStringLiteral("VARCHAR(100)"), true},
               Column{QStringLiteral("QUANTITY"), QStringLiteral("INTEGER")}},
              {QStringLiteral("RECORD_KIND"), QStringLiteral("RECORD_NAME")}}};
    return added;
}

bool EnsureAddedTables(sqlite3* db, QString* error) {
    for (const Table& t : addedTables()) {
        const QVariant present = firstValue(
            db, QStringLiteral("SELECT COUNT(*) FROM sqlite_master WHERE type = 'table' AND name = '%1'")
                    .arg(t.name));
        if (!present.isValid()) {
            if (error)
                *error = QString::fromUtf8(sqlite3_errmsg(db));
            return false;
        }
        if (present.toInt() > 0)
            continue;
        if (!exec(db, QStringLiteral("SAVEPOINT ADD_TABLES"), error))
            return false;
        for (const QString& s : tableDdl(t)) {
            if (!exec(db, s, error)) {
                exec(db, QStringLiteral("ROLLBACK TO ADD_TABLES"), nullptr);
                exec(db, QStringLiteral("RELEASE ADD_TABLES"), nullptr);
                return false;
            }
        }
        if (!exec(db, QStringLiteral("RELEASE ADD_TABLES"), error))
            return false;
    }
    return true;
}

QStringList addedIndexDdl() {
    QStringList out;
    for (const char* table : {"EQUIPMENTS", "COMPONENTS", "RAW_MATERIALS", "ITEMS"})
        out << QStringLiteral("CREATE INDEX IF NOT EXISTS %1 ON %2 (LVL)")
                   .arg(q(QStringLiteral("IX_%1_LVL").arg(QLatin1String(table))), q(QLatin1String(table)));
    return out;
}

bool EnsureAddedIndexes(sqlite3* db, QString* error) {
    if (firstValue(db, QStringLiteral("SELECT MAX(VERSION) FROM DB_VERSION")).toString() !=
        QString::number(Version))
        return true;
    const QVariant present = firstValue(
        db,
        QStringLiteral("SELECT COUNT(*) FROM sqlite_master WHERE type = 'index' AND name IN "
                       "('IX_EQUIPMENTS_LVL', 'IX_COMPONENTS_LVL', 'IX_RAW_MATERIALS_LVL', 'IX_ITEMS_LVL')"));
    if (present.toInt() == int(addedIndexDdl().size()))
        return true;
    for (const QString& s : addedIndexDdl())
        if (!exec(db, s, error))
            return false;
    return true;
}

bool CreateSchema(sqlite3* db, QString* error) {
    RegisterSqlFunctions(db);
    QStringList statements;
    for (const Table& t : tables())
        statements << tableDdl(t);
    for (const AddedColumn& a : addedColumns())
        statements << addColumnDdl(a);
    statements << addedIndexDdl();
    for (const LookupUse& u : lookupUses())
        statements << triggerDdl(u);
    statements << QStringLiteral("INSERT INTO DB_VERSION (VERSION) VALUES (%1)").arg(Version);
    statements << QStringLiteral(
        "INSERT INTO DB_OPTIONS (CUSTOM_FIELDS_ON, FIELD_01_CAPTION, FIELD_02_CAPTION, "
        "FIELD_03_CAPTION) VALUES (0, '', '', '')");

    if (!exec(db, QStringLiteral("BEGIN"), error))
        return false;
    for (const QString& s : statements) {
        if (!exec(db, s, error)) {
            exec(db, QStringLiteral("ROLLBACK"), nullptr);
            return false;
        }
    }
    return exec(db, QStringLiteral("COMMIT"), error);
}

} // namespace schema

bool CreateDatabase(const QString& path, QString* error) {
    if (QFileInfo::exists(path)) {
        if (error)
            *error = QStringLiteral("The file \"%1\" already exists.").arg(path);
        return false;
    }
    sqlite3* db = nullptr;
    const int rc =
        sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    if (rc != SQLITE_OK) {
        if (error)
            *error = QStringLiteral("Cannot create \"%1\": %2")
                         .arg(path, QString::fromUtf8(db ? sqlite3_errmsg(db) : sqlite3_errstr(rc)));
        sqlite3_close(db);
        QFile::remove(path);
        return false;
    }
    QString why;
    const bool ok = schema::CreateSchema(db, &why);
    sqlite3_close(db);
    if (!ok) {
        QFile::remove(path);
        if (error)
            *error = QStringLiteral("Cannot create \"%1\": %2").arg(path, why);
    }
    return ok;
}
