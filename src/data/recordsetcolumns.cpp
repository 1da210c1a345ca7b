// What a result set knows of its columns: the kind and size from the declared type, the base table
// and column, names told apart across a join, and a computed column's kind from its first value.
#include "data/recordset_p.h"
#include "data/sqltranslate.h"

#include <QRegularExpression>
#include <sqlite3.h>

FieldKind kindOfDeclared(const QString& declType, int* size) {
    const QString t = declType.trimmed().toUpper();
    auto is = [&](const char* word) {
        return t == QLatin1String(word) || t.startsWith(QLatin1String(word) + u'(');
    };
    *size = 0;
    if (is("VARCHAR") || is("CHAR") || is("NVARCHAR") || is("NCHAR") || is("VARYING CHARACTER")) {
        static const QRegularExpression n(QStringLiteral("\\((\\d+)\\)"));
        const QRegularExpressionMatch m = n.match(t);
        *size = m.hasMatch() ? m.captured(1).toInt() : 255;
        return FieldKind::Text;
    }
    if (is("TEXT") || is("MEMO") || is("CLOB") || is("LONGTEXT")) {
        *size = 536870910;
        return FieldKind::Memo;
    }
    if (is("SMALLINT") || is("SHORT") || is("INT2")) {
        *size = 2;
        return FieldKind::Integer16;
    }
    if (is("INTEGER") || is("INT") || is("LONG") || is("BIGINT") || is("INT4") || is("INT8")) {
        *size = 4;
        return FieldKind::Long;
    }
    if (is("FLOAT") || is("SINGLE") || is("REAL4")) {
        *size = 4;
        return FieldKind::Single;
    }
    if (is("DOUBLE") || is("REAL") || is("NUMERIC") || is("DECIMAL") || is("DOUBLE PRECISION")) {
        *size = 8;
        return FieldKind::Double;
    }
    if (is("CURRENCY") || is("MONEY")) {
        *size = 8;
        return FieldKind::Currency;
    }
    if (is("BOOLEAN") || is("BOOL") || is("BIT") || is("YESNO")) {
        *size = 2;
        return FieldKind::Boolean;
    }
    if (is("DATETIME") || is("DATE") || is("TIMESTAMP") || is("TIME")) {
        *size = 8;
        return FieldKind::Date;
    }
    return FieldKind::Empty;
}

void Recordset::Impl::describe(sqlite3_stmt* st, int count) {
    cols.clear();
    tables.clear();
    for (int i = 0; i < count; ++i) {
        ColumnInfo c;
        c.plainName = QString::fromUtf8(sqlite3_column_name(st, i));
        c.baseColumn = QString::fromUtf8(sqlite3_column_origin_name(st, i));
        c.baseTable = QString::fromUtf8(sqlite3_column_table_name(st, i));
        c.declType = QString::fromUtf8(sqlite3_column_decltype(st, i));
        c.kind = kindOfDeclared(c.declType, &c.size);
        if (!c.baseTable.isEmpty()) {
            int t = int(tables.indexOf(c.baseTable));
            if (t < 0) {
                t = int(tables.size());
                tables.append(c.baseTable);
            }
            c.table = t;
        }
        cols.append(c);
    }
    // A computed column whose first value is NULL still has a kind: read it from the expression.
    const QStringList items = topLevelSelectItems(QString::fromUtf8(sqlite3_sql(st)));
    bool starred = false;
    for (const QString& item : items)
        starred = starred || item == u'*' || item.endsWith(QLatin1String(".*"));
    if (!starred && items.size() == count) {
        for (int i = 0; i < count; ++i) {
            if (!cols[i].baseColumn.isEmpty())
                continue;
            const QString& e = items[i];
            // An expression without an alias is named by its place, as Jet named it (Expr1000, ...),
            // not by the text it was translated into.
            if (cols[i].plainName == e)
                cols[i].plainName = QStringLiteral("Expr%1").arg(1000 + i);
            if (e.contains(QLatin1String(kJetConcat) + u'('))
                cols[i].hint = FieldKind::Text;
            else if (e.contains(QLatin1String("* 1.0 /")))
                cols[i].hint = FieldKind::Double;
            else if (e.startsWith(QLatin1String("COUNT("), Qt::CaseInsensitive))
                cols[i].hint = FieldKind::Long;
        }
    }
    // Two columns of one name from different tables (SELECT * over a join) are told apart by
    // their table, as "MOBS.MOB_NAME" and "MOB_STATS.MOB_NAME".
    for (int i = 0; i < count; ++i) {
        ColumnInfo& c = cols[i];
        c.name = c.plainName;
        if (c.baseTable.isEmpty())
            continue;
        for (int j = 0; j < count; ++j) {
            if (j != i && cols[j].plainName.compare(c.plainName, Qt::CaseInsensitive) == 0 &&
                cols[j].baseTable.compare(c.baseTable, Qt::CaseInsensitive) != 0) {
                c.name = c.baseTable + u'.' + c.plainName;
                break;
            }
        }
    }
}

// Computed columns take the kind of their first value.
void kindsFromFirstRow(const QList<ColumnInfo>& cols, sqlite3_stmt* st, QVarLengthArray<FieldKind, 32>& out) {
    out.resize(cols.size());
    for (int i = 0; i < cols.size(); ++i) {
        const ColumnInfo& c = cols.at(i);
        if (c.kind != FieldKind::Empty) {
            out[i] = c.kind;
            continue;
        }
        switch (st ? sqlite3_column_type(st, i) : SQLITE_NULL) {
        case SQLITE_INTEGER:
            out[i] = FieldKind::Long;
            break;
        case SQLITE_FLOAT:
            out[i] = FieldKind::Double;
            break;
        case SQLITE_TEXT:
            out[i] = FieldKind::Text;
            break;
        case SQLITE_BLOB:
            out[i] = FieldKind::Memo;
            break;
        default:
            out[i] = c.hint; // NULL or no row at all
        }
    }
}

int computedSize(FieldKind kind) {
    switch (kind) {
    case FieldKind::Long:
        return 4;
    case FieldKind::Double:
        return 8;
    case FieldKind::Text:
        return 255;
    case FieldKind::Memo:
        return 536870910;
    default:
        return 0;
    }
}

QVariant Recordset::Impl::readAs(sqlite3_stmt* st, int i, FieldKind k) {
    switch (sqlite3_column_type(st, i)) {
    case SQLITE_NULL:
        return QVariant();
    case SQLITE_INTEGER: {
        const qint64 v = sqlite3_column_int64(st, i);
        if (k == FieldKind::Boolean)
            return QVariant(v != 0);
        if (isFraction(k))
            return QVariant(double(v));
        if (v >= INT_MIN && v <= INT_MAX)
            return QVariant(int(v));
        return QVariant(v);
    }
    case SQLITE_FLOAT:
        return QVariant(sqlite3_column_double(st, i));
    default:
        return QVariant(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, i)),
                                          sqlite3_column_bytes(st, i)));
    }
}
