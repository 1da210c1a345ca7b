#pragma once
// What a result set holds, shared by its reading half (recordset.cpp) and its writing half
// (recordsetwrite.cpp).
#include "data/recordset.h"

#include <QHash>
#include <QList>
#include <QStringList>
#include <QVarLengthArray>

struct sqlite3_stmt;

struct ColumnInfo {
    QString name;       // as the caller sees it (qualified with its table when two share a name)
    QString plainName;  // as the engine named it
    QString baseColumn; // empty for a computed column
    QString baseTable;
    QString declType;
    FieldKind kind = FieldKind::Empty;
    int size = 0;
    int table = -1;                    // index into Recordset::Impl::tables, -1 when computed
    FieldKind hint = FieldKind::Empty; // a computed column's kind read from its expression
};

struct Recordset::Impl {
    Database* cn = nullptr;
    quint64 generation = 0; // the connection's, when opened
    CursorType cursor = ForwardOnly;
    QList<ColumnInfo> cols; // shared by every result set of the same shape: never changed here
    QVarLengthArray<FieldKind, 32> computed; // computed columns' kinds, from this result's first row

    // ForwardOnly: the live statement, positioned on the current row.
    StatementLease stmt;
    bool atEnd = true;
    bool moved = false; // left the first row

    // Dynamic: every row in memory, with the rowid of each base table's row (0 when absent).
    QStringList tables; // base tables in order of first appearance among the columns
    bool rowidsKnown = false;
    QList<QList<QVariant>> rows;
    QList<QList<qint64>> rowids;
    int pos = 0; // == rows.size() at the end mark; -1 before the first row
    bool adding = false;
    bool onDeleted = false;       // the current row was deleted; moveNext comes to the one after it
    QHash<int, QVariant> pending; // changed fields of the current (or new) row, already converted
    mutable QByteArray utf8;      // what textUtf8 last handed out (Dynamic)

    void describe(sqlite3_stmt* st, int count);
    QVariant read(sqlite3_stmt* st, int i) const { return readAs(st, i, cols[i].kind); }
    static QVariant readAs(sqlite3_stmt* st, int i, FieldKind k);
    QVariant convert(int i, const QVariant& v) const; // to the column's kind; throws on a mismatch
    void requireCurrent() const;
    void requireUpdatable() const; // open, and Dynamic
    void writeRow();
    void deleteRow();
};

// The run-time errors of asking for a field that is not there, and of using a closed result set.
VbError ItemNotFound();
VbError ObjectClosed();

// The kind and defined size of a declared column type.
FieldKind kindOfDeclared(const QString& declType, int* size);
// Computed columns (and columns of no declared type) take the kind of their first value; st is null
// when there is no row.
void kindsFromFirstRow(const QList<ColumnInfo>& cols, sqlite3_stmt* st, QVarLengthArray<FieldKind, 32>& out);
// The defined size Jet gave a computed column of a kind.
int computedSize(FieldKind kind);
