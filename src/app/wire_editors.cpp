// Add, Edit Item and the views' Edit buttons open the editors; after a save the main list shows the
// saved record selected.
#include "app/frmmain.h"
#include "app/wiring.h"
#include "editors/editors.h"
#include "editors/editorsave.h"
#include "editors/frmaddequip.h"
#include "lists/listmodel.h"
#include "views/equiptypes.h"
#include "views/openviews.h"

#include <QComboBox>
#include <QItemSelectionModel>
#include <QPointer>

namespace {
// The list is read again (it keeps its sort) and the saved record selected, when the list shows its
// kind; a list of another category is left as it is.
void showSaved(frmMain& w, const QString& kind, const QString& name) {
    if (w.category() != kind)
        return;
    w.RefreshGrid();
    w.whenListLoaded([&w, name] {
        ListModel* model = w.model();
        for (int r = 0; r < model->rowCount(); ++r) {
            if (model->name(r).compare(name, Qt::CaseInsensitive) != 0)
                continue;
            const QModelIndex at = model->index(r, 0);
            model->markChanged(r); // a sort that follows keeps the saved record in sight
            w.lstItems->setCurrentIndex(at);
            w.lstItems->selectionModel()->select(at, QItemSelectionModel::ClearAndSelect |
                                                         QItemSelectionModel::Rows);
            w.lstItems->scrollTo(at, QAbstractItemView::PositionAtCenter);
            return;
        }
    });
}
} // namespace

void wireEditors(frmMain& w) {
    setEditorAvailable(&HasEditor);
    setEditorOpener(&OpenEditor);
    const QPointer<frmMain> window(&w);
    setRecordSavedHandler([window](const QString& kind, const QString& name) {
        if (window)
            showSaved(*window, kind, name);
    });
    // A new piece of equipment starts as the type the equipment list is filtered to.
    setNewEquipmentType([window] {
        return window && window->category() == QLatin1String("Equipment")
                   ? Enumerate(window->cmbEquipType->currentText(), true)
                   : int(equip::Beam);
    });
    for (const EditorKind& k : editorKinds()) {
        if (!k.open || k.addMenu.isEmpty())
            continue;
        const auto open = k.open;
        w.setMenuHandler(k.addMenu, [open] { open(QString()); });
    }
}
