#pragma once
// A result set over the shared connection. ForwardOnly reads rows as they come (the common case,
// read-only); Dynamic holds the rows and is updatable: add a row, set fields by name, update, delete,
// over one table or over a join whose columns come from several tables (each field is written back
// to its base table and column).
#include "data/database.h"
#include "data/fieldkind.h"

#include <QByteArrayView>
#include <QVariant>
#include <memory>

// The run-time error of reading where there is no current row (3021), for readers that find no record.
VbError NoCurrentRecord();

class Recordset {
public:
    enum CursorType { ForwardOnly, Dynamic };

    Recordset();
    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;
    Recordset(Recordset&&) noexcept;
    Recordset& operator=(Recordset&&) noexcept;

    // Throws VbError (with the connection's error records filled) when the SQL fails.
    void open(const QString& sql, Database& cn = db(), CursorType cursor = ForwardOnly);
    void close();
    bool isOpen() const;

    bool eof() const;
    bool bof() const;
    void moveNext();
    void moveFirst();         // Dynamic, or ForwardOnly while still on the first row
    long recordCount() const; // Dynamic only; -1 for ForwardOnly

    int fieldCount() const;
    // The result column's name (its alias when it has one). Two columns of the same name from different
    // tables (SELECT * over a join) are named "TABLE.COLUMN"; the plain name then finds the first.
    QString fieldName(int i) const;
    QString baseColumnName(int i) const; // the column of its base table; empty for a computed column
    QString baseTableName(int i) const;
    FieldKind fieldKind(int i) const;
    int definedSize(int i) const; // characters for text, bytes for numbers
    // Accepts a result name or "TABLE.COLUMN"; -1 when there is none.
    int fieldIndex(const QString& name) const;

    // A null QVariant for NULL; yes/no fields read as bool, whole numbers as int, fractions as double,
    // dates and text as QString. By name throws VbError 3265 when there is no such field; at the end
    // (or on a deleted row) throws VbError 3021, which is not a database error.
    QVariant value(int i) const;
    QVariant value(const QString& name) const;
    bool isNull(int i) const;

    // Fast typed reads of the current row for the list (ForwardOnly): no QVariant and no checks; past
    // the end they read as NULL. Yes/no fields are whole numbers here (1/0).
    int storageClass(int i) const; // SQLITE_INTEGER, SQLITE_FLOAT, SQLITE_TEXT, SQLITE_BLOB, SQLITE_NULL
    qint64 intValue(int i) const;
    double doubleValue(int i) const;
    QString textValue(int i) const;
    // The text as the engine holds it (UTF-8), valid until the next move or read of this result set.
    QByteArrayView textUtf8(int i) const;
    // ForwardOnly: the engine's statement standing on the current row, for a reader of many rows that
    // reads its columns itself (valid until the next move); nullptr otherwise.
    sqlite3_stmt* currentStatement() const;

    // Dynamic only. Throws VbError on a failed write, which leaves nothing written and keeps the
    // pending values (the row can be corrected and updated again). Values are converted to the field's
    // kind when set ("12" into a number, "True" into a yes/no; empty text into a number, date or yes/no
    // is NULL); a value that does not convert, or a computed field, is refused at once. After update()
    // a new row is the current one; moving off a changed row updates it; a deleted row stays current
    // (unreadable) until moveNext(), which comes to the row after it.
    void addNew();
    void setValue(const QString& name, const QVariant& v);
    void setValue(int i, const QVariant& v);
    void update();
    void deleteCurrent();

    struct Impl; // the rows and columns (recordset_p.h)

private:
    void moveNextRaw();
    std::unique_ptr<Impl> d;
};
