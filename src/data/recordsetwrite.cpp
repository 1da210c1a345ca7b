// The updatable half of a result set: each changed field is written to its base table and column,
// by the rowid of that table's row; a new row inserts one row into each base table that got values.
// A write runs under a savepoint so that a failure leaves nothing half written.
#include "data/recordset.h"

#include "core/clock.h"
#include "data/recordset_p.h"
#include "data/sqltranslate.h"

#include <QDateTime>
#include <QLocale>
#include <cmath>
#include <sqlite3.h>

namespace {

[[noreturn]] void mismatch(Database& cn, const ColumnInfo& c, const QVariant& v) {
    cn.fail(hr::MissingValue, SQLITE_MISMATCH, QStringLiteral("22018"),
            QStringLiteral("datatype mismatch: the field %1 cannot hold the value '%2'")
                .arg(c.name, v.toString()));
}

bool parseNumber(const QString& text, double* out) {
    bool ok = false;
    const QString t = text.trimmed();
    *out = QLocale::c().toDouble(t, &ok);
    if (!ok)
        *out = QLocale::system().toDouble(t, &ok);
    return ok && std::isfinite(*out);
}

void bindValue(sqlite3_stmt* st, int index, const QVariant& v) {
    if (v.isNull()) {
        sqlite3_bind_null(st, index);
        return;
    }
    switch (v.typeId()) {
    case QMetaType::Bool:
        sqlite3_bind_int(st, index, v.toBool() ? 1 : 0);
        break;
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::UInt:
    case QMetaType::Short:
        sqlite3_bind_int64(st, index, v.toLongLong());
        break;
    case QMetaType::Double:
    case QMetaType::Float:
        sqlite3_bind_double(st, index, v.toDouble());
        break;
    default: {
        const QByteArray u = v.toString().toUtf8();
        sqlite3_bind_text(st, index, u.constData(), int(u.size()), SQLITE_TRANSIENT);
    }
    }
}

// Runs one write statement of the engine's own making; throws the engine's error.
void run(Database& cn, const QString& sql, const QList<QVariant>& values) {
    const StatementLease st = cn.acquireShape(sql);
    for (int i = 0; i < values.size(); ++i)
        bindValue(st.get(), i + 1, values[i]);
    const int rc = sqlite3_step(st.get());
    if (rc != SQLITE_DONE && rc != SQLITE_ROW)
        cn.raise(rc);
}

} // namespace

QVariant Recordset::Impl::convert(int i, const QVariant& v) const {
    const ColumnInfo& c = cols[i];
    if (v.isNull() || !v.isValid())
        return QVariant();
    const bool isString = v.typeId() == QMetaType::QString || v.typeId() == QMetaType::QByteArray;
    if (isString && !QStringView(v.toString()).isValidUtf16()) // a lone surrogate would be stored as "?"
        mismatch(*cn, c, v);
    if (isString && v.toString().trimmed().isEmpty() &&
        (isNumeric(c.kind) || c.kind == FieldKind::Boolean || c.kind == FieldKind::Date))
        return QVariant();
    switch (c.kind) {
    case FieldKind::Integer16:
    case FieldKind::Long: {
        double n = 0;
        if (v.typeId() == QMetaType::Bool)
            n = v.toBool() ? 1 : 0;
        else if (isString ? !parseNumber(v.toString(), &n) : !v.canConvert<double>())
            mismatch(*cn, c, v);
        else if (!isString)
            n = v.toDouble();
        return QVariant(qint64(std::nearbyint(n))); // whole-number columns round half to even, like Jet
    }
    case FieldKind::Single:
    case FieldKind::Double:
    case FieldKind::Currency: {
        double n = 0;
        if (isString ? !parseNumber(v.toString(), &n) : !v.canConvert<double>())
            mismatch(*cn, c, v);
        return QVariant(isString ? n : v.toDouble());
    }
    case FieldKind::Boolean: {
        if (isString) {
            const QString t = v.toString().trimmed();
            if (t.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0 ||
                t.compare(QLatin1String("Yes"), Qt::CaseInsensitive) == 0)
                return QVariant(true);
            if (t.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0 ||
                t.compare(QLatin1String("No"), Qt::CaseInsensitive) == 0)
                return QVariant(false);
            double n = 0;
            if (!parseNumber(t, &n))
                mismatch(*cn, c, v);
            return QVariant(n != 0);
        }
        if (!v.canConvert<double>())
            mismatch(*cn, c, v);
        return QVariant(v.toDouble() != 0);
    }
    case FieldKind::Date:
        if (v.typeId() == QMetaType::QDateTime)
            return QVariant(generalDate(v.toDateTime()));
        if (v.typeId() == QMetaType::QDate)
            return QVariant(generalDate(v.toDate().startOfDay()));
        return QVariant(v.toString());
    case FieldKind::Text:
    case FieldKind::Memo:
        return QVariant(v.toString());
    default:
        return v;
    }
}

void Recordset::Impl::requireUpdatable() const {
    if (!cn)
        throw ObjectClosed();
    if (cursor != Dynamic)
        cn->fail(hr::PermissionDenied, SQLITE_READONLY, QStringLiteral("HY000"),
                 QStringLiteral("The result set cannot be updated: it was opened forward-only."));
}

void Recordset::addNew() {
    d->requireUpdatable();
    if (d->adding || !d->pending.isEmpty())
        update();
    d->adding = true;
    d->pending.clear();
}

void Recordset::setValue(const QString& name, const QVariant& v) {
    const int i = fieldIndex(name);
    if (i < 0)
        throw ItemNotFound();
    setValue(i, v);
}

void Recordset::setValue(int i, const QVariant& v) {
    d->requireUpdatable();
    if (i < 0 || i >= d->cols.size())
        throw ItemNotFound();
    const ColumnInfo& c = d->cols.at(i);
    d->requireCurrent();
    if (c.baseColumn.isEmpty())
        d->cn->fail(hr::PermissionDenied, SQLITE_READONLY, QStringLiteral("HY000"),
                    QStringLiteral("The field %1 is computed and cannot be updated.").arg(c.name));
    d->pending.insert(i, d->convert(i, v));
}

void Recordset::update() {
    if (!isOpen() || d->cursor != Dynamic || (!d->adding && d->pending.isEmpty()))
        return;
    d->writeRow();
}

void Recordset::deleteCurrent() {
    d->requireUpdatable();
    if (d->adding) { // deleting a row not yet written just drops it
        d->adding = false;
        d->pending.clear();
        return;
    }
    d->requireCurrent();
    d->deleteRow();
}

// Savepoint around every write: ROLLBACK TO undoes this write only, inside or outside a transaction.
namespace {
struct WriteScope {
    Database& cn;
    bool done = false;
    explicit WriteScope(Database& c) : cn(c) { run(cn, QStringLiteral("SAVEPOINT VOSK_ROW"), {}); }
    void commit() {
        run(cn, QStringLiteral("RELEASE VOSK_ROW"), {});
        done = true;
    }
    ~WriteScope() {
        if (!done) {
            sqlite3_exec(cn.handle(), "ROLLBACK TO VOSK_ROW", nullptr, nullptr, nullptr);
            sqlite3_exec(cn.handle(), "RELEASE VOSK_ROW", nullptr, nullptr, nullptr);
        }
    }
};
} // namespace

void Recordset::Impl::writeRow() {
    Database& db = *cn;
    if (!rowidsKnown && !(adding && tables.size() == 1))
        db.fail(
            hr::PermissionDenied, SQLITE_READONLY, QStringLiteral("HY000"),
            QStringLiteral("The result set cannot be updated: its rows cannot be traced to their tables."));
    // Per base table, in order of first appearance: its changed columns (one value per column).
    QList<QStringList> names(tables.size());
    QList<QList<QVariant>> values(tables.size());
    for (int i = 0; i < cols.size(); ++i) {
        const auto p = pending.constFind(i);
        if (p == pending.constEnd() || cols[i].table < 0)
            continue;
        const int t = cols[i].table;
        const QString col = quoteIdentifier(cols[i].baseColumn);
        const int at = int(names[t].indexOf(col));
        if (at >= 0) {
            values[t][at] = *p;
        } else {
            names[t].append(col);
            values[t].append(*p);
        }
    }
    // A new row given no value at all is still a row: the first table gets one of its defaults, or
    // refuses it when a required value is missing.
    bool none = true;
    for (const QStringList& n : std::as_const(names))
        none = none && n.isEmpty();
    const bool defaultsOnly = adding && none && !tables.isEmpty();
    QList<qint64> ids = adding ? QList<qint64>(tables.size(), 0) : rowids[pos];
    {
        WriteScope scope(db);
        if (defaultsOnly) {
            run(db, QStringLiteral("INSERT INTO %1 DEFAULT VALUES").arg(quoteIdentifier(tables[0])), {});
            ids[0] = sqlite3_last_insert_rowid(db.handle());
        }
        for (int t = 0; t < tables.size(); ++t) {
            if (names[t].isEmpty())
                continue;
            const QString table = quoteIdentifier(tables[t]);
            if (adding || ids[t] == 0) {
                if (!adding) // an outer join's missing side: there is no row to change
                    db.fail(hr::PermissionDenied, SQLITE_READONLY, QStringLiteral("HY000"),
                            QStringLiteral("The row of %1 for this record does not exist.").arg(tables[t]));
                QStringList marks;
                for (int k = 0; k < names[t].size(); ++k)
                    marks.append(QStringLiteral("?"));
                run(db,
                    QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                        .arg(table, names[t].join(QStringLiteral(", ")), marks.join(QStringLiteral(", "))),
                    values[t]);
                ids[t] = sqlite3_last_insert_rowid(db.handle());
            } else {
                QStringList sets;
                for (const QString& n : std::as_const(names[t]))
                    sets.append(n + QStringLiteral(" = ?"));
                QList<QVariant> vals = values[t];
                vals.append(ids[t]);
                run(db,
                    QStringLiteral("UPDATE %1 SET %2 WHERE rowid = ?")
                        .arg(table, sets.join(QStringLiteral(", "))),
                    vals);
            }
        }
        scope.commit();
    }
    // Read the written rows back, so defaults and the engine's own conversions show.
    QList<QVariant> row = adding ? QList<QVariant>(cols.size()) : rows[pos];
    for (auto p = pending.constBegin(); p != pending.constEnd(); ++p)
        row[p.key()] = p.value();
    for (int t = 0; t < tables.size(); ++t) {
        if (ids[t] == 0)
            continue;
        QStringList wanted;
        QList<int> at;
        for (int i = 0; i < cols.size(); ++i)
            if (cols[i].table == t) {
                wanted.append(quoteIdentifier(cols[i].baseColumn));
                at.append(i);
            }
        const StatementLease st =
            db.acquireShape(QStringLiteral("SELECT %1 FROM %2 WHERE rowid = ?")
                                .arg(wanted.join(QStringLiteral(", ")), quoteIdentifier(tables[t])),
                            {}, true);
        if (!st)
            continue;
        sqlite3_bind_int64(st.get(), 1, ids[t]);
        if (sqlite3_step(st.get()) == SQLITE_ROW)
            for (int k = 0; k < at.size(); ++k)
                row[at[k]] = readAs(st.get(), k, cols[at[k]].kind);
    }
    if (adding) {
        rows.append(row);
        rowids.append(ids);
        pos = int(rows.size()) - 1;
        onDeleted = false;
        rowidsKnown = rowidsKnown || tables.size() == 1;
    } else {
        rows[pos] = row;
        rowids[pos] = ids;
    }
    adding = false;
    pending.clear();
}

void Recordset::Impl::deleteRow() {
    Database& db = *cn;
    if (!rowidsKnown)
        db.fail(
            hr::PermissionDenied, SQLITE_READONLY, QStringLiteral("HY000"),
            QStringLiteral("The result set cannot be updated: its rows cannot be traced to their tables."));
    pending.clear();
    {
        // The later tables of a join hang on the earlier ones: remove them first.
        WriteScope scope(db);
        for (int t = int(tables.size()) - 1; t >= 0; --t)
            if (rowids[pos][t] != 0)
                run(db, QStringLiteral("DELETE FROM %1 WHERE rowid = ?").arg(quoteIdentifier(tables[t])),
                    {rowids[pos][t]});
        scope.commit();
    }
    rows.removeAt(pos);
    rowids.removeAt(pos);
    // The deleted row stays current until the cursor moves; the next row then takes its place.
    onDeleted = true;
}
