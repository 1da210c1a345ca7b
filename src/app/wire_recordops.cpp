// Delete, Copy, Rename, Backup and Restore.
#include "app/frmmain.h"
#include "app/wiring.h"
#include "data/backup.h"
#include "editors/frmrename.h"
#include "editors/recordops.h"
#include "lists/listmodel.h"
#include "views/modmain.h"

namespace {

// After a copy or rename the list shows the record under its new name, selected.
void refreshAndSelect(frmMain& w, const QString& name) {
    w.RefreshGrid();
    w.whenListLoaded([&w, name] {
        ListModel* model = w.model();
        for (int row = 0; row < model->rowCount(); ++row)
            if (model->name(row) == name) {
                const QModelIndex at = model->index(row, 0);
                model->markChanged(row); // a sort that follows keeps the new record in sight
                w.lstItems->setCurrentIndex(at);
                w.lstItems->scrollTo(at);
                return;
            }
    });
}

void copyOrRename(frmMain& w, bool rename) {
    const QString kind = w.category();
    const QString oldName = w.selectedName();
    if (oldName.isEmpty())
        return;
    const QString newName =
        frmRename::Ask(rename ? QStringLiteral("Rename") : QStringLiteral("Copy"), oldName, &w);
    if (newName.isEmpty() || newName == oldName)
        return;
    const bool done = rename ? RenameRecord(kind, oldName, newName) : CopyRecord(kind, oldName, newName);
    if (done)
        refreshAndSelect(w, newName);
    else
        w.RefreshGrid();
}

} // namespace

void wireRecordOps(frmMain& w) {
    // The main window asks "Are you sure..." before and refreshes after.
    w.setMenuHandler(QStringLiteral("mnuEditDelete"), [&w] { DeleteRecord(w.category(), w.selectedName()); });
    w.setMenuHandler(QStringLiteral("mnuEditCopy"), [&w] { copyOrRename(w, false); });
    w.setMenuHandler(QStringLiteral("mnuEditRename"), [&w] { copyOrRename(w, true); });
    w.setMenuHandler(QStringLiteral("mnuFileBackupDB"), [] { BackupDatabaseCommand(); });
    w.setMenuHandler(QStringLiteral("mnuFileRestoreDB"), [&w] {
        if (!RestoreDatabaseCommand())
            return;
        // Another database is open now: its custom field captions, its filter lists and its records.
        reloadCustomFields();
        w.ReloadFilterLists();
        w.RefreshGrid();
    });
}
