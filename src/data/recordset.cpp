#include "data/recordset.h"

#include "data/recordset_p.h"
#include "data/sqltranslate.h"

#include <QRegularExpression>
#include <sqlite3.h>

VbError NoCurrentRecord() {
    return VbError(vberr::NoCurrentRecord,
                   QStringLiteral("Either BOF or EOF is True, or the current record has been deleted. "
                                  "Requested operation requires a current record."));
}

VbError ItemNotFound() {
    return VbError(vberr::ItemNotFound,
                   QStringLiteral("Item cannot be found in the collection corresponding to "
                                  "the requested name or ordinal."));
}

VbError ObjectClosed() {
    return VbError(vberr::ObjectClosed,
                   QStringLiteral("Operation is not allowed when the object is closed."));
}

namespace {

struct ShapeColumns {
    QList<ColumnInfo> cols;
    QStringList tables;
};

QString fromUtf8(const unsigned char* text, int bytes) {
    return QString::fromUtf8(reinterpret_cast<const char*>(text), bytes);
}

// Base tables that are refreshed row by row cannot be recognised in a grouped or combined result.
bool rowsAreTableRows(const QString& sqliteSql) {
    static const QRegularExpression re(QStringLiteral("\\b(DISTINCT|GROUP\\s+BY|UNION|INTERSECT|EXCEPT)\\b"),
                                       QRegularExpression::CaseInsensitiveOption);
    return !re.match(sqliteSql).hasMatch();
}

} // namespace

void Recordset::Impl::requireCurrent() const {
    const bool none =
        cursor == ForwardOnly ? (atEnd || !stmt) : (!adding && (onDeleted || pos < 0 || pos >= rows.size()));
    if (none)
        throw NoCurrentRecord();
}

Recordset::Recordset() : d(std::make_unique<Impl>()) {}
Recordset::~Recordset() {
    close();
}
Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(Recordset&& other) noexcept {
    if (this != &other) {
        close();
        d = std::move(other.d);
        if (!other.d)
            other.d = std::make_unique<Impl>();
    }
    return *this;
}

void Recordset::open(const QString& sql, Database& cn, CursorType cursor) {
    close();
    d->cursor = cursor;
    cn.clearErrors();
    const TranslatedSql t = TranslateSql(sql);
    if (!t.error.isEmpty())
        cn.fail(t.errorNumber, SQLITE_ERROR, t.sqlState, t.error);
    StatementLease st = cn.acquireShape(t.sql, t.params);
    const int count = sqlite3_column_count(st.get());
    // What the columns are depends on the shape only: learn it once per prepared shape.
    std::shared_ptr<void>& known = cn.shapeData(st.get());
    if (known) {
        const auto* shape = static_cast<const ShapeColumns*>(known.get());
        d->cols = shape->cols;
        d->tables = shape->tables;
    } else {
        d->describe(st.get(), count);
        known = std::make_shared<ShapeColumns>(ShapeColumns{d->cols, d->tables});
    }
    d->cn = &cn; // open from here on; a failure above leaves the result set closed
    d->generation = cn.generation();
    if (cursor == ForwardOnly) {
        d->stmt = std::move(st);
        d->moved = false;
        d->atEnd = false;
        moveNextRaw();
        kindsFromFirstRow(d->cols, d->atEnd ? nullptr : d->stmt.get(), d->computed);
        return;
    }
    // Dynamic: read every row, with the rowid of each base table so changes can be written back.
    StatementLease withRowids;
    const int from = topLevelFrom(t.sql);
    if (!d->tables.isEmpty() && from > 0 && rowsAreTableRows(t.sql)) {
        QString withIds = t.sql.left(from).trimmed();
        for (int i = 0; i < d->tables.size(); ++i)
            withIds += QStringLiteral(", %1.rowid").arg(quoteIdentifier(d->tables[i]));
        withIds += u' ' + t.sql.mid(from);
        withRowids = cn.acquireShape(withIds, t.params, true);
    }
    d->rowidsKnown = bool(withRowids);
    if (withRowids)
        st = std::move(withRowids);
    sqlite3_stmt* rows = st.get();
    int rc;
    while ((rc = sqlite3_step(rows)) == SQLITE_ROW) {
        if (d->rows.isEmpty())
            kindsFromFirstRow(d->cols, rows, d->computed);
        QList<QVariant> values;
        values.reserve(count);
        for (int i = 0; i < count; ++i)
            values.append(d->read(rows, i));
        QList<qint64> ids(d->tables.size(), 0);
        if (d->rowidsKnown)
            for (int i = 0; i < d->tables.size(); ++i)
                ids[i] = sqlite3_column_int64(rows, count + i);
        d->rows.append(values);
        d->rowids.append(ids);
    }
    if (d->rows.isEmpty())
        kindsFromFirstRow(d->cols, nullptr, d->computed);
    if (rc != SQLITE_DONE) {
        close();
        cn.raise(rc);
    }
    d->pos = 0;
}

// Steps the live statement; a failed step is a database error like a failed open.
void Recordset::moveNextRaw() {
    const int rc = sqlite3_step(d->stmt.get());
    if (rc == SQLITE_ROW)
        return;
    d->atEnd = true;
    if (rc != SQLITE_DONE) {
        Database* cn = d->cn;
        const ErrorRecord r = Database::makeRecord(sqlite3_extended_errcode(cn->handle()),
                                                   QString::fromUtf8(sqlite3_errmsg(cn->handle())));
        close();
        cn->fail(r.Number, r.NativeError, r.SQLState, r.Description);
    }
    // Past the last row the statement is of no more use: back to the pool for the next reader.
    d->stmt.reset();
}

void Recordset::close() {
    if (!d || !d->cn)
        return;
    d->stmt.reset();
    d->cn = nullptr;
    // Assigning empty lists drops the shared column facts without copying them (clear() would).
    d->cols = {};
    d->tables = {};
    d->rows = {};
    d->rowids = {};
    d->pending = {};
    d->computed.clear();
    d->adding = false;
    d->onDeleted = false;
    d->atEnd = true;
}

bool Recordset::isOpen() const {
    return d && d->cn;
}

bool Recordset::eof() const {
    if (!isOpen())
        return true;
    if (d->cursor == ForwardOnly)
        return d->atEnd;
    return !d->adding && !d->onDeleted && d->pos >= d->rows.size();
}

bool Recordset::bof() const {
    if (!isOpen())
        return true;
    if (d->cursor == ForwardOnly)
        return d->atEnd && !d->moved;
    return !d->adding && (d->pos < 0 || d->rows.isEmpty());
}

void Recordset::moveNext() {
    if (!isOpen())
        throw ObjectClosed();
    if (d->cursor == ForwardOnly) {
        d->requireCurrent();
        // A reader kept across the closing of its connection (a list still loading while a backup is
        // restored) must not step a statement of the connection that is gone.
        if (d->generation != d->cn->generation()) {
            close();
            throw ObjectClosed();
        }
        d->moved = true;
        moveNextRaw();
        return;
    }
    if (d->adding || !d->pending.isEmpty())
        update(); // leaving a changed row saves it
    if (d->onDeleted) {
        d->onDeleted = false;
        return;
    }
    d->requireCurrent();
    ++d->pos;
}

void Recordset::moveFirst() {
    if (!isOpen())
        throw ObjectClosed();
    if (d->cursor == ForwardOnly) {
        if (d->moved)
            d->cn->fail(hr::CantFetchBackwards, SQLITE_MISUSE, QStringLiteral("HY109"),
                        QStringLiteral("Rowset does not support fetching backward."));
        return;
    }
    if (d->adding || !d->pending.isEmpty())
        update();
    d->onDeleted = false;
    d->pos = 0;
}

long Recordset::recordCount() const {
    if (!isOpen() || d->cursor == ForwardOnly)
        return -1;
    return long(d->rows.size());
}

int Recordset::fieldCount() const {
    return isOpen() ? int(d->cols.size()) : 0;
}

static const ColumnInfo& column(const Recordset::Impl* d, int i) {
    if (i < 0 || i >= d->cols.size())
        throw ItemNotFound();
    return d->cols[i];
}

QString Recordset::fieldName(int i) const {
    return column(d.get(), i).name;
}
QString Recordset::baseColumnName(int i) const {
    return column(d.get(), i).baseColumn;
}
QString Recordset::baseTableName(int i) const {
    return column(d.get(), i).baseTable;
}
FieldKind Recordset::fieldKind(int i) const {
    const ColumnInfo& c = column(d.get(), i);
    return c.kind != FieldKind::Empty || i >= d->computed.size() ? c.kind : d->computed[i];
}

int Recordset::definedSize(int i) const {
    const ColumnInfo& c = column(d.get(), i);
    return c.kind != FieldKind::Empty || i >= d->computed.size() ? c.size : computedSize(d->computed[i]);
}

int Recordset::fieldIndex(const QString& name) const {
    if (!isOpen())
        return -1;
    const QList<ColumnInfo>& cols = d->cols;
    for (int i = 0; i < cols.size(); ++i)
        if (cols[i].name.compare(name, Qt::CaseInsensitive) == 0)
            return i;
    const int dot = int(name.lastIndexOf(u'.'));
    if (dot > 0) {
        const QStringView table = QStringView(name).left(dot), col = QStringView(name).mid(dot + 1);
        for (int i = 0; i < cols.size(); ++i)
            if (cols[i].baseTable.compare(table, Qt::CaseInsensitive) == 0 &&
                (cols[i].baseColumn.compare(col, Qt::CaseInsensitive) == 0 ||
                 cols[i].plainName.compare(col, Qt::CaseInsensitive) == 0))
                return i;
        return -1;
    }
    for (int i = 0; i < cols.size(); ++i) // a plain name also finds the first of a qualified pair
        if (cols[i].plainName.compare(name, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

QVariant Recordset::value(int i) const {
    column(d.get(), i);
    d->requireCurrent();
    if (d->cursor == ForwardOnly)
        return d->read(d->stmt.get(), i);
    const auto p = d->pending.constFind(i);
    if (p != d->pending.constEnd())
        return *p;
    return d->adding ? QVariant() : d->rows[d->pos][i];
}

QVariant Recordset::value(const QString& name) const {
    const int i = fieldIndex(name);
    if (i < 0)
        throw ItemNotFound();
    return value(i);
}

bool Recordset::isNull(int i) const {
    if (d->cursor == ForwardOnly) {
        column(d.get(), i);
        d->requireCurrent();
        return sqlite3_column_type(d->stmt.get(), i) == SQLITE_NULL;
    }
    return value(i).isNull();
}

int Recordset::storageClass(int i) const {
    if (d->cursor == ForwardOnly)
        return sqlite3_column_type(d->stmt.get(), i);
    const QVariant v = value(i);
    if (v.isNull())
        return SQLITE_NULL;
    switch (v.typeId()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Bool:
        return SQLITE_INTEGER;
    case QMetaType::Double:
        return SQLITE_FLOAT;
    default:
        return SQLITE_TEXT;
    }
}

qint64 Recordset::intValue(int i) const {
    return d->cursor == ForwardOnly ? sqlite3_column_int64(d->stmt.get(), i) : value(i).toLongLong();
}

double Recordset::doubleValue(int i) const {
    return d->cursor == ForwardOnly ? sqlite3_column_double(d->stmt.get(), i) : value(i).toDouble();
}

QString Recordset::textValue(int i) const {
    if (d->cursor == ForwardOnly) {
        const unsigned char* t = sqlite3_column_text(d->stmt.get(), i);
        return t ? fromUtf8(t, sqlite3_column_bytes(d->stmt.get(), i)) : QString();
    }
    return value(i).toString();
}

sqlite3_stmt* Recordset::currentStatement() const {
    return isOpen() && d->cursor == ForwardOnly ? d->stmt.get() : nullptr;
}

QByteArrayView Recordset::textUtf8(int i) const {
    if (d->cursor == ForwardOnly) {
        const unsigned char* t = sqlite3_column_text(d->stmt.get(), i);
        return t ? QByteArrayView(reinterpret_cast<const char*>(t), sqlite3_column_bytes(d->stmt.get(), i))
                 : QByteArrayView();
    }
    d->utf8 = value(i).toString().toUtf8();
    return QByteArrayView(d->utf8);
}
