#pragma once
// Inserts rows through prepared statements kept per table and column list, for the sample and the
// synthetic data sets. The first failure is remembered with the row that caused it; later inserts
// are skipped, so a caller can write a batch and check once.
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>

struct sqlite3;
struct sqlite3_stmt;

class RowWriter {
public:
    explicit RowWriter(sqlite3* db) : m_db(db) {}
    ~RowWriter();
    RowWriter(const RowWriter&) = delete;
    RowWriter& operator=(const RowWriter&) = delete;

    // columns: comma-separated names as in the table; values in the same order. A null QVariant
    // writes NULL, a bool 1/0.
    bool insert(const QString& table, const QString& columns, const QVariantList& values);
    bool exec(const QString& sql);

    bool ok() const { return m_error.isEmpty(); }
    QString error() const { return m_error; }
    sqlite3* db() const { return m_db; }

    // BEGIN ... COMMIT, or ROLLBACK when a row failed.
    bool begin();
    bool finish(QString* error);

private:
    sqlite3_stmt* statement(const QString& table, const QString& columns, int count);
    sqlite3* m_db;
    QHash<QString, sqlite3_stmt*> m_statements;
    QString m_error;
};
