#pragma once
// What the record operation files share.
#include "data/database.h"

#include <QString>
#include <QStringList>

namespace recordops {

inline const QString ModuleName = QStringLiteral("Module modMain");

// Opens a transaction when none is open and owns it: commit() keeps the work, and anything else
// (rollback(), an early return, an exception) undoes it. Inside a caller's transaction it does
// nothing, and the caller decides.
class ChangeScope {
public:
    ChangeScope() : m_own(!db().inTransaction()) {
        if (m_own)
            db().beginTrans();
    }
    ~ChangeScope() { rollback(); }
    ChangeScope(const ChangeScope&) = delete;
    ChangeScope& operator=(const ChangeScope&) = delete;

    void commit() {
        if (m_own && db().inTransaction())
            db().commitTrans();
        m_own = false;
    }
    // Keeps the connection's error records for the report that follows.
    void rollback() noexcept {
        if (!m_own)
            return;
        m_own = false;
        try {
            if (db().inTransaction())
                db().rollbackTrans();
        } catch (...) {
            // The engine ends a failed transaction itself; nothing is left to undo.
        }
    }

private:
    bool m_own;
};

// Runs the statements in order, reporting a failure under the procedure's name.
bool runAll(const QStringList& statements, const QString& procedure);
// The kind's relationship deletion routine (DeleteComponentRelationships, ...); false for other kinds.
bool deleteRelationships(const QString& kind, const QString& name);

} // namespace recordops
