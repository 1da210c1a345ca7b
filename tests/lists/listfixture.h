#pragma once
// A small database for the list tests: a temporary file made with raw sqlite3 from the statements
// given (tables declared with the program's column types), opened as the shared connection.
#include "lists/listmodel.h"

#include <QStringList>
#include <QTemporaryDir>

class ListDb {
public:
    // Runs each statement as SQLite text; ok() tells whether all ran and the connection opened.
    explicit ListDb(const QStringList& statements);
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

// A table T(NAME, VAL) with one row per value text (SQL literals), named "r0", "r1", ...
QStringList valueTable(const QString& declaredType, const QStringList& literals);
// The model's rows as "name=value" texts of column col, in view order.
QStringList rowTexts(const ListModel& model, int col);
