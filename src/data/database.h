#pragma once
// The one shared connection. All SQL handed to it is written in the program's own dialect (text
// joined with &, IIF, TRUE/FALSE, the column CHECK) and translated once for SQLite. One call runs one
// statement: a second statement in the text is an error and is not run.
#include "core/vberror.h"
#include "data/hresult.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <memory>
#include <utility>

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

class Database;

// A pooled statement on loan from the connection. Whatever ends the lease (its scope, an exception,
// reset()) gives the statement back: reset, its values unbound, ready for the next reader of the
// same shape. A lease that outlives its connection's open state finalizes the statement instead.
class StatementLease {
public:
    StatementLease() = default;
    StatementLease(Database* cn, sqlite3_stmt* stmt) : m_cn(cn), m_stmt(stmt) {}
    ~StatementLease() { reset(); }
    StatementLease(StatementLease&& other) noexcept
        : m_cn(other.m_cn), m_stmt(std::exchange(other.m_stmt, nullptr)) {}
    StatementLease& operator=(StatementLease&& other) noexcept {
        if (this != &other) {
            reset();
            m_cn = other.m_cn;
            m_stmt = std::exchange(other.m_stmt, nullptr);
        }
        return *this;
    }
    StatementLease(const StatementLease&) = delete;
    StatementLease& operator=(const StatementLease&) = delete;

    sqlite3_stmt* get() const { return m_stmt; }
    explicit operator bool() const { return m_stmt != nullptr; }
    void reset(); // gives the statement back now

private:
    Database* m_cn = nullptr;
    sqlite3_stmt* m_stmt = nullptr;
};

class Database {
public:
    enum State { StateClosed = 0, StateOpen = 1 };

    Database();
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
    // Changes with every close: a reader that outlived its connection can tell.
    quint64 generation() const { return m_generation; }

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

    // The program's SQL translated (sqltranslate.h), prepared, its literals bound: a statement from a
    // pool of statements of the same shape, so a reader that runs the same query inside its own loop
    // gets a second one. Throws VbError.
    StatementLease acquire(const QString& sql);
    // For the engine's own SQLite text (already translated, ? for values): the same, bound with params
    // when given. Throws VbError; with quiet set, returns an empty lease instead and records nothing.
    StatementLease acquireShape(const QString& sqliteSql, const QStringList& params = {}, bool quiet = false);

    // Records the engine's last error as the error collection and throws it as a VbError.
    [[noreturn]] void raise(int code, const QString& context = QString());
    // A slot kept with each prepared shape, where result sets keep what they learned of its columns.
    std::shared_ptr<void>& shapeData(sqlite3_stmt* stmt);
    // Records one error record of the engine's own making and throws it as a VbError.
    [[noreturn]] void fail(long number, long nativeError, const QString& sqlState,
                           const QString& description);
    // The error record for a SQLite result code and message (how the reporter tells situations apart).
    static ErrorRecord makeRecord(int extendedCode, const QString& message);

private:
    friend class StatementLease;
    void release(sqlite3_stmt* stmt);
    long run(const QString& sql);
    struct Pool;
    sqlite3* m_db = nullptr;
    QString m_connectionText;
    QString m_file;
    quint64 m_generation = 0;
    QList<ErrorRecord> m_errors;
    std::unique_ptr<Pool> m_pool;
};

// The shared connection of the program.
Database& db();
