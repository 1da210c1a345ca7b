#pragma once
// Reading many records by name at once: one statement per batch of names ("... IN ('a', 'b', ...)")
// instead of one per name, for the bill of materials, where-used and the shopping list, which look up
// thousands of records at a time. Every batch of one statement has one of a few lengths, so each
// statement is translated and prepared only a few times whatever the number of names.
#include <QString>
#include <QStringList>
#include <functional>

class Recordset;

// Runs head + "(" + the quoted names + ")" + tail for every batch of names and hands each row to
// row. head ends with the column and " IN " (the program's SQL dialect, names quoted by FixQuotes).
// Throws VbError; the rows handed over before the error stay handled.
void ForEachRowIn(const QString& head, const QStringList& names, const QString& tail,
                  const std::function<void(const Recordset& rs)>& row);

// The text of a column of the current row ("" for NULL) and a whole number (0 for NULL or text that
// is not one).
QString RowText(const Recordset& rs, int column);
qint64 RowNumber(const Recordset& rs, int column);

// One read transaction around many statements: they read one consistent state of the file, which is
// locked once. Does nothing when a transaction is already open (it is then the caller's).
class ReadingTransaction {
public:
    ReadingTransaction();
    ~ReadingTransaction();
    ReadingTransaction(const ReadingTransaction&) = delete;
    ReadingTransaction& operator=(const ReadingTransaction&) = delete;

private:
    bool m_mine;
};

// Names as the database compares them: equal when their case foldings are (core/casefold.h).
QString NameKey(const QString& name);
bool SameName(const QString& a, const QString& b);
size_t NameHash(const QString& name, size_t seed = 0);

// What the database holds, as a stamp that changes whenever this connection writes, another writes
// the file, or another file is opened: equal stamps, the same data. For keeping what was read.
struct DataStamp {
    const void* connection = nullptr;
    QString file;
    qint64 changes = 0;
    unsigned version = 0;
    friend bool operator==(const DataStamp&, const DataStamp&) = default;
};
DataStamp CurrentDataStamp();
