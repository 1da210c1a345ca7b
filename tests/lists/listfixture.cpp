#include "listfixture.h"

#include "data/database.h"
#include "data/recordset.h"

#include <sqlite3.h>

ListDb::ListDb(const QStringList& statements) {
    sqlite3* h = nullptr;
    if (sqlite3_open(QFile::encodeName(file()).constData(), &h) != SQLITE_OK) {
        m_error = QStringLiteral("cannot create the test database");
        sqlite3_close(h);
        return;
    }
    for (const QString& s : statements) {
        char* msg = nullptr;
        if (sqlite3_exec(h, s.toUtf8().constData(), nullptr, nullptr, &msg) != SQLITE_OK) {
            m_error = s + QStringLiteral(": ") + QString::fromUtf8(msg);
            sqlite3_free(msg);
            sqlite3_close(h);
            return;
        }
    }
    sqlite3_close(h);
    try {
        db().open(QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=") + file() + QLatin1Char(';'));
        m_ok = true;
    } catch (const VbError& e) {
        m_error = e.description;
    }
}

ListDb::~ListDb() { db().close(); }

void ListDb::load(ListModel& model, const QString& sql, const ListColors& colors) {
    Recordset rs;
    rs.open(sql);
    model.load(rs, colors);
}

QStringList valueTable(const QString& declaredType, const QStringList& literals) {
    QStringList s{QStringLiteral("CREATE TABLE T (NAME VARCHAR(50), VAL %1)").arg(declaredType)};
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
