#include "editors/editorsave.h"

#include "core/prompt.h"
#include "data/database.h"
#include "data/errorreport.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "editors/gridmodel.h"
#include "editors/gridroutines.h"
#include "editors/recordsql.h"

namespace {
QString& lastDetails() {
    static QString details;
    return details;
}

std::function<void(const QString&, const QString&)>& savedHandler() {
    static std::function<void(const QString&, const QString&)> handler;
    return handler;
}

void rollBack() {
    if (db().inTransaction())
        db().rollbackTrans();
}
} // namespace

SaveStep SaveStep::forGrid(const GridModel& grid, const QString& saveQuery, const QString& keyColumn,
                           const QString& keyValue) {
    SaveStep s;
    s.grid = &grid;
    s.saveQuery = saveQuery;
    s.keyColumn = keyColumn;
    s.keyValue = keyValue;
    return s;
}

SaveStep SaveStep::forList(const QStringList& entries, const QString& loadedEntries, const QString& table,
                           const QString& keyColumn, const QString& valueColumn, const QString& keyValue) {
    SaveStep s;
    s.entries = entries;
    s.loadedEntries = loadedEntries;
    s.table = table;
    s.keyColumn = keyColumn;
    s.valueColumn = valueColumn;
    s.keyValue = keyValue;
    return s;
}

bool SaveStep::changed() const {
    return grid ? GridChanged(*grid) : JoinedEntries(entries) != loadedEntries;
}

bool SaveStep::write() const {
    return grid ? SaveUBGrid(*grid, saveQuery, keyColumn, keyValue)
                : UpdateList(entries, table, keyColumn, valueColumn, keyValue);
}

SaveResult RunSave(const SavePlan& plan) {
    lastDetails().clear();
    for (const SaveGrid& g : plan.validate)
        if (!ValidateGrid(*g.grid, g.listName))
            return SaveResult::Refused;
    if (plan.checkInput && !plan.checkInput())
        return SaveResult::Refused;

    bool relations = false;
    for (const SaveStep& step : plan.writes)
        relations = relations || step.changed();

    try {
        db().beginTrans();
        bool changed = plan.writeRecord ? plan.writeRecord(relations) : false;
        for (const SaveStep& step : plan.writes) {
            if (!step.changed())
                continue;
            if (!step.write()) {
                rollBack();
                return SaveResult::Failed;
            }
            changed = true;
        }
        if (plan.finish)
            plan.finish(changed);
        if (!changed) {
            db().rollbackTrans();
            return SaveResult::Unchanged;
        }
        db().commitTrans();
        return SaveResult::Saved;
    } catch (const VbError& e) {
        lastDetails() = DescribeErrorRecords();
        try {
            rollBack();
        } catch (const VbError&) {
            // The report below is about the first failure; a failed rollback adds nothing to it.
        }
        ReportDBError(e, QStringLiteral("cmdSave_Click"), plan.container);
        return SaveResult::Failed;
    }
}

void ShowEmptyData() {
    MsgBox(QStringLiteral("One or more of the values entered must not be empty"), vb::Information,
           QStringLiteral("Empty Data"));
}

void ShowInvalidName() {
    MsgBox(QStringLiteral("Names cannot contain a double single-quote! Please change name to continue."),
           vb::Exclamation, QStringLiteral("Invalid name"));
}

void ShowInvalidValues() {
    MsgBox(QStringLiteral("One or more of the values entered is invalid"), vb::Information,
           QStringLiteral("Invalid Values"));
}

bool CheckRecordInput(const QString& name, const QStringList& required, const QStringList& numbers) {
    for (const QString& value : required)
        if (value.isEmpty()) {
            ShowEmptyData();
            return false;
        }
    if (!ValidName(name)) {
        ShowInvalidName();
        return false;
    }
    for (const QString& number : numbers)
        if (!IsWholeNumberText(number)) {
            ShowInvalidValues();
            return false;
        }
    return true;
}

std::function<bool(bool)> WriteWhenChanged(bool adding, bool fieldsChanged, std::function<void()> write) {
    return [adding, fieldsChanged, write = std::move(write)](bool relationsChanged) {
        if (!adding && !fieldsChanged && !relationsChanged)
            return false;
        write();
        return true;
    };
}

std::function<bool(bool)> WriteByStatement(bool adding, bool fieldsChanged,
                                           std::function<QString()> insertSql,
                                           std::function<QString()> updateSql) {
    return WriteWhenChanged(adding, fieldsChanged,
                            [adding, insertSql = std::move(insertSql), updateSql = std::move(updateSql)] {
                                if (adding)
                                    db().execute(insertSql());
                                else if (db().execute(updateSql()) == 0)
                                    throw NoCurrentRecord();
                            });
}

QString LastSaveErrorDetails() {
    return lastDetails();
}

void setRecordSavedHandler(std::function<void(const QString& kind, const QString& name)> handler) {
    savedHandler() = std::move(handler);
}

void RecordSaved(const QString& kind, const QString& name) {
    if (savedHandler())
        savedHandler()(kind, name);
}
