#include "data/sampledata_writer.h"

#include <sqlite3.h>

RowWriter::~RowWriter() {
    for (sqlite3_stmt* s : std::as_const(m_statements))
        sqlite3_finalize(s);
}

sqlite3_stmt* RowWriter::statement(const QString& table, const QString& columns, int count) {
    const QString key = table + QLatin1Char('|') + columns;
    if (sqlite3_stmt* s = m_statements.value(key))
        return s;
    QStringList quoted;
    for (const QString& c : columns.split(QLatin1Char(',')))
        quoted << QLatin1Char('"') + c.trimmed() + QLatin1Char('"');
    QStringList marks;
    for (int i = 0; i < count; ++i)
        marks << QStringLiteral("?");
    const QString sql = QStringLiteral("INSERT INTO \"%1\" (%2) VALUES (%3)")
                            .arg(table, quoted.join(QLatin1Char(',')), marks.join(QLatin1Char(',')));
    sqlite3_stmt* s = nullptr;
    if (sqlite3_prepare_v2(m_db, sql.toUtf8().constData(), -1, &s, nullptr) != SQLITE_OK) {
        m_error = QStringLiteral("%1 (%2)").arg(QString::fromUtf8(sqlite3_errmsg(m_db)), sql);
        return nullptr;
    }
    m_statements.insert(key, s);
    return s;
}

bool RowWriter::insert(const QString& table, const QString& columns, const QVariantList& values) {
    if (!ok())
        return false;
    sqlite3_stmt* s = statement(table, columns, int(values.size()));
    if (!s)
        return false;
    for (int i = 0; i < values.size(); ++i) {
        const QVariant& v = values.at(i);
        const int at = i + 1;
        if (v.isNull()) {
            sqlite3_bind_null(s, at);
            continue;
        }
        switch (v.typeId()) {
        case QMetaType::Bool:
            sqlite3_bind_int(s, at, v.toBool() ? 1 : 0);
            break;
        case QMetaType::Int:
        case QMetaType::LongLong:
        case QMetaType::UInt:
        case QMetaType::ULongLong:
            sqlite3_bind_int64(s, at, v.toLongLong());
            break;
        case QMetaType::Double:
        case QMetaType::Float:
            sqlite3_bind_double(s, at, v.toDouble());
            break;
        default: {
            const QByteArray text = v.toString().toUtf8();
            sqlite3_bind_text(s, at, text.constData(), int(text.size()), SQLITE_TRANSIENT);
        }
        }
    }
    const int rc = sqlite3_step(s);
    sqlite3_reset(s);
    if (rc != SQLITE_DONE) {
        QStringList shown;
        for (const QVariant& v : values)
            shown << (v.isNull() ? QStringLiteral("NULL") : v.toString());
        m_error = QStringLiteral("%1 while adding to %2 (%3): %4")
                      .arg(QString::fromUtf8(sqlite3_errmsg(m_db)), table, columns,
                           shown.join(QStringLiteral(", ")));
        return false;
    }
    return true;
}

bool RowWriter::exec(const QString& sql) {
    if (!ok())
        return false;
    char* msg = nullptr;
    if (sqlite3_exec(m_db, sql.toUtf8().constData(), nullptr, nullptr, &msg) == SQLITE_OK)
        return true;
    m_error = QStringLiteral("%1 (%2)").arg(QString::fromUtf8(msg ? msg : "unknown error"), sql);
    sqlite3_free(msg);
    return false;
}

bool RowWriter::begin() {
    return exec(QStringLiteral("BEGIN"));
}

bool RowWriter::finish(QString* error) {
    if (ok() && exec(QStringLiteral("COMMIT")))
        return true;
    sqlite3_exec(m_db, "ROLLBACK", nullptr, nullptr, nullptr);
    if (error)
        *error = m_error;
    return false;
}
