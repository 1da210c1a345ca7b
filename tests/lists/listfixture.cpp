#include "listfixture.h"

#include "data/database.h"
#include "data/recordset.h"

#include <sqlite3.h>

ListDb::ListDb(const QStringList& statements) {
    sqlite3* h = nullptr;
    char* msg = nullptr;
    sqlite3_open(QFile::encodeName(file()).constData(), &h);
    const QByteArray sql = statements.join(QLatin1Char(';')).toUtf8();
    if (sqlite3_exec(h, sql.constData(), nullptr, nullptr, &msg) != SQLITE_OK)
        m_error = QString::fromUtf8(msg ? msg : sqlite3_errmsg(h));
    sqlite3_free(msg);
    sqlite3_close(h);
    try {
        if (m_error.isEmpty())
            db().open(QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=%1;").arg(file()));
        m_ok = m_error.isEmpty();
    } catch (const VbError& e) {
        m_error = e.description;
    }
}

ListDb::~ListDb() {
    db().close();
}

void ListDb::load(ListModel& model, const QString& sql, const ListColors& colors) {
    Recordset rs;
    rs.open(sql);
    model.load(rs, colors);
}

QStringList valueTable(const QString& column, const QStringList& literals) {
    QStringList s{QStringLiteral("CREATE TABLE T (NAME VARCHAR(50), %1)").arg(column)};
    for (int i = 0; i < literals.size(); ++i)
        s << QStringLiteral("INSERT INTO T VALUES ('r%1', %2)").arg(i).arg(literals[i]);
    return s;
}

QStringList rowTexts(const ListModel& model, int col) {
    QStringList out;
    for (int r = 0; r < model.rowCount(); ++r)
        out << model.name(r) + QLatin1Char('=') + model.text(r, col);
    return out;
}

QStringList column(const ListModel& model, int col) {
    QStringList out;
    for (int r = 0; r < model.rowCount(); ++r)
        out << model.text(r, col);
    return out;
}
