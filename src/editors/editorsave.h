#pragma once
// The save every editor shares, without widgets. An editor describes its save as a SavePlan and
// RunSave carries it out:
//
//   1. ValidateGrid on each grid of `validate`, in order; the first fault stops the save.
//   2. checkInput(): the editor's own checks (empty values, the name rule); it shows its own box and
//      returns false to stop. Nothing has been written yet.
//   3. A transaction is begun. writeRecord(relationsChanged) writes the record itself and returns
//      true when it wrote something (relationsChanged tells it whether any list or grid below will
//      be rewritten, so an editor that stamps UPDATED in its UPDATE statement can write it then).
//   4. Each step of `writes`, in order, that changed since the load: UpdateList for a list whose
//      joined entries differ, SaveUBGrid for a grid whose fingerprint differs.
//   5. finish(changed), when set: whatever comes after the relations (the equipment and MOB editors
//      stamp UPDATED and LAST_UPDATED there).
//   6. Nothing written: roll back (SaveResult::Unchanged). Otherwise commit (SaveResult::Saved).
//
// A failure anywhere rolls everything back and leaves the editor's contents as they were: a
// VbError thrown by writeRecord or finish is reported with "cmdSave_Click" and the editor's
// container; SaveUBGrid and UpdateList report their own errors ("Module modMain"). Either way the
// result is SaveResult::Failed and the window stays open.
//
// After Saved or Unchanged the window calls RecordSaved(kind, name), which the application connects
// to the main list's refresh-and-select, and closes.
#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

class GridModel;

struct SaveGrid {
    const GridModel* grid = nullptr;
    QString listName; // "General: MOBs": the title and first line of ValidateGrid's messages
};

// One rewrite of a list or a grid.
struct SaveStep {
    // A grid: SaveUBGrid(grid, saveQuery, keyColumn, keyValue) when GridChanged(grid).
    const GridModel* grid = nullptr;
    QString saveQuery;
    // A plain list: UpdateList(entries, table, keyColumn, valueColumn, keyValue) when the joined
    // entries differ from loadedEntries.
    QStringList entries;
    QString loadedEntries;
    QString table, valueColumn;
    QString keyColumn;
    // The record's name: as stored for a grid, quote-doubled for a list (it goes into the SQL).
    QString keyValue;

    static SaveStep forGrid(const GridModel& grid, const QString& saveQuery, const QString& keyColumn,
                            const QString& keyValue);
    static SaveStep forList(const QStringList& entries, const QString& loadedEntries, const QString& table,
                            const QString& keyColumn, const QString& valueColumn, const QString& keyValue);
    bool changed() const;
    bool write() const; // false after the routine reported a failure
};

struct SavePlan {
    QString container;        // "Form frmAddRawMaterials"
    QList<SaveGrid> validate; // in the order the editor validates them
    std::function<bool()> checkInput;
    std::function<bool(bool relationsChanged)> writeRecord; // throws VbError on failure
    QList<SaveStep> writes;                                 // in the order they are rewritten
    std::function<void(bool changed)> finish;               // optional; throws VbError on failure
};

enum class SaveResult { Saved, Unchanged, Refused, Failed };

SaveResult RunSave(const SavePlan& plan);
// The lines composed from the connection's error records when the last save failed (before its
// rollback); empty after a save that did not fail on a database error.
QString LastSaveErrorDetails();

// The refusals of a save, before anything is written.
void ShowEmptyData();     // "Empty Data"
void ShowInvalidName();   // "Invalid name": two single quotes together
void ShowInvalidValues(); // "Invalid Values": a number box holding something else
// The checks of an editor's own values before anything is written, in this order: every required
// value filled in, the name without two single quotes together, every number empty or whole. Shows
// the first refusal and returns false then.
bool CheckRecordInput(const QString& name, const QStringList& required, const QStringList& numbers = {});

// A writeRecord that writes a new record always, and an existing one only when it or a relation
// changed (the write stamps it as updated): write() throws VbError on failure.
std::function<bool(bool)> WriteWhenChanged(bool adding, bool fieldsChanged, std::function<void()> write);
// The same by statement: a new record's INSERT, or an existing one's UPDATE, which must find it still
// there (a record deleted or renamed meanwhile must not get link rows that point nowhere).
std::function<bool(bool)> WriteByStatement(bool adding, bool fieldsChanged,
                                           std::function<QString()> insertSql,
                                           std::function<QString()> updateSql);

// Where a saved record is announced (kind as the main window names its category, and the name).
void setRecordSavedHandler(std::function<void(const QString& kind, const QString& name)> handler);
void RecordSaved(const QString& kind, const QString& name);
