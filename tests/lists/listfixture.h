#pragma once
// A small database for the list tests: a temporary file made with raw sqlite3 from the statements
// given (tables declared with the program's column types), opened as the shared connection.
#include "lists/listmodel.h"

#include <QStringList>
#include <QTemporaryDir>

class ListDb {
public:
    explicit ListDb(const QStringList& statements); // ok() tells whether all ran and the connection opened
    ~ListDb();
    bool ok() const { return m_ok; }
    QString error() const { return m_error; }
    QString file() const { return m_dir.filePath(QStringLiteral("lists.vosk")); }
    // Opens sql (the program's dialect) forward-only and loads it into the model.
    void load(ListModel& model, const QString& sql, const ListColors& colors = ListColors());

private:
    QTemporaryDir m_dir;
    bool m_ok = false;
    QString m_error;
};

// Declares the ListDb m_db made of the statements (failing the test if it cannot be made) and the
// ListModel m loaded from sql.
#define LOAD_LIST(m, sql, ...)                                                                               \
    ListDb m##_db(QStringList{__VA_ARGS__});                                                                 \
    QVERIFY2(m##_db.ok(), qPrintable(m##_db.error()));                                                       \
    ListModel m;                                                                                             \
    m##_db.load(m, sql)

// A table T(NAME, <column>, e.g. "VAL INTEGER") with one row per value (SQL literals) named "r0", "r1", ...
QStringList valueTable(const QString& column, const QStringList& literals);
// In view order: the rows as "name=text" of column col; the texts of one column; the names.
QStringList rowTexts(const ListModel& model, int col);
QStringList column(const ListModel& model, int col);
inline QStringList names(const ListModel& model) {
    return column(model, 0);
}
