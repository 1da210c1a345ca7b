#pragma once
// The one shared connection. All SQL handed to it is written in the program's own dialect (text
// joined with &, IIF, TRUE/FALSE, the column CHECK) and translated once for SQLite. One call runs one
// statement: a second statement in the text is an error and is not run.
#include "core/vberror.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <memory>

struct sqlite3;
struct sqlite3_stmt;

// One error record of the last failed operation, as the error reporter reads them.
struct ErrorRecord {
    long Number = 0;      // the provider's error number (an HRESULT, negative)
    QString Description;  // the engine's message
    QString Source;       // "VOSK SQLite Provider"
    QString SQLState;     // five characters
    long NativeError = 0; // the engine's own code (SQLite's extended result code)
    QString HelpFile;     // always empty
    long HelpContext = 0;
};

// HRESULTs that the error records carry.
namespace hr {
constexpr long Fail = -2147467259;         // 0x80004005, any engine failure
constexpr long MissingValue = -2147217904; // 0x80040E10, a name the engine cannot resolve to a column
} // namespace hr

class Database {
public:
    enum State { StateClosed = 0, StateOpen = 1 };

    Database() = default;
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    // connectionText: a provider prefix, then "Data Source=<file>;". The file must exist and be an
    // SQLite database: nothing is created. Throws VbError (and fills errors()) when it cannot be opened
    // as one. Foreign keys are enforced when the schema declares any.
    void open(const QString& connectionText);
    void close();
    int state() const { return m_db ? StateOpen : StateClosed; }
    bool isOpen() const { return m_db != nullptr; }
    QString connectionString() const { return m_connectionText; }
    QString fileName() const { return m_file; }

    // Runs one INSERT, UPDATE or DELETE. Throws VbError on failure. Returns the rows affected.
    // Like opening a result set, it first clears the error records of an earlier failure.
    long execute(const QString& sql);

    // One transaction at a time: beginning a second one, or committing or rolling back none, is an error.
    void beginTrans();
    void commitTrans();
    void rollbackTrans();
    bool inTransaction() const;

    const QList<ErrorRecord>& errors() const { return m_errors; }
    void clearErrors() { m_errors.clear(); }
    // Adds a record to the collection (for code that reports several problems at once, and tests).
    void addError(const ErrorRecord& record) { m_errors.append(record); }

    sqlite3* handle() const { return m_db; }

    // For the recordsets: a prepared statement for the SQL with its literals bound, taken from a pool
    // of statements of the same shape (so recursive readers reuse them). Throws VbError.
    sqlite3_stmt* acquire(const QString& sql);
    void release(sqlite3_stmt* stmt);

    // Records the engine's last error as the error collection and throws it as a VbError.
    [[noreturn]] void raise(int code, const QString& context = QString());

    // For the engine's own SQLite text (already translated, ? for values): a pooled statement, bound
    // with params when given. Throws VbError; with quiet set, returns nullptr instead and records nothing.
    sqlite3_stmt* acquireShape(const QString& sqliteSql, const QStringList& params = {}, bool quiet = false);
    // A slot kept with each prepared shape, where result sets keep what they learned of its columns.
    std::shared_ptr<void>& shapeData(sqlite3_stmt* stmt);
    // Records one error record of the engine's own making and throws it as a VbError.
    [[noreturn]] void fail(long number, long nativeError, const QString& sqlState,
                           const QString& description);
    // The error record for a SQLite result code and message (how the reporter tells situations apart).
    static ErrorRecord makeRecord(int extendedCode, const QString& message);

private:
    long run(const QString& sql);
    struct Pool;
    sqlite3* m_db = nullptr;
    QString m_connectionText;
    QString m_file;
    QList<ErrorRecord> m_errors;
    Pool* m_pool = nullptr;
};

// The shared connection of the program.
Database& db();
