#include "editors/editorwindow.h"

#include "core/childwindows.h"
#include "core/prompt.h"
#include "core/tooltip.h"
#include "data/database.h"
#include "data/quotes.h"
#include "editors/gridroutines.h"
#include "editors/ubgrid.h"
#include "views/modmain.h"
#include "views/viewwidgets.h"

#include <QAbstractItemView>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeySequence>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>

EditorWindow::EditorWindow(const QString& objectName, const QString& kind, QWidget* parent)
    : QWidget(parent), m_kind(kind) {
    setObjectName(objectName);
    PrepareViewWindow(this);
    m_buttons = NewButtonRow();
    cmdSave = AddButton(m_buttons, this, QStringLiteral("&Save"), QStringLiteral("cmdSave"));
    cmdCancel = AddButton(m_buttons, this, QStringLiteral("Cancel"), QStringLiteral("cmdCancel"));
    connect(cmdSave, &QPushButton::clicked, this, [this] { cmdSave_Click(); });
    connect(cmdCancel, &QPushButton::clicked, this, &QWidget::close);
    auto* save = new QShortcut(QKeySequence::Save, this);
    connect(save, &QShortcut::activated, this, [this] { cmdSave_Click(); });
}

bool EditorWindow::isNew() const {
    const QString title = windowTitle();
    return title.startsWith(QLatin1String("Add")) || title.startsWith(QLatin1String("New"));
}

UBGrid* EditorWindow::grid(const QString& widgetName) const {
    return findChild<UBGrid*>(widgetName);
}

QStringList EditorWindow::listEntries(const QListWidget* list) {
    QStringList out;
    for (int i = 0; i < list->count(); ++i)
        out.append(list->item(i)->text());
    return out;
}

QString EditorWindow::caption(const QString& newCaption, const QString& name) {
    return name.isEmpty() ? newCaption : QStringLiteral("Edit: ") + name;
}

void EditorWindow::showCaption(const QString& newCaption, const QString& storedName) {
    setWindowTitle(caption(newCaption, storedName));
    setRecordName(storedName);
}

void EditorWindow::populateGrids(const QList<GridDef>& defs, const QString& name) {
    const QString quoted = FixQuotes(name);
    for (const GridDef& def : defs)
        PopulateGrid(grid(def.widget)->grid(), def.queries(quoted), true);
}

bool EditorWindow::gridsChanged(const QList<GridDef>& defs) const {
    for (const GridDef& def : defs)
        if (GridChanged(grid(def.widget)->grid()))
            return true;
    return false;
}

QList<SaveGrid> EditorWindow::gridChecks(const QList<GridDef>& defs) const {
    QList<SaveGrid> out;
    for (const GridDef& def : defs)
        out.append({&grid(def.widget)->grid(), def.listName});
    return out;
}

SaveStep EditorWindow::gridWrite(const GridDef& def, const QString& name) const {
    return SaveStep::forGrid(grid(def.widget)->grid(), def.save(FixQuotes(name)), def.keyColumn, name);
}

void EditorWindow::setTips(const QString& section, const QString& noun, std::initializer_list<Tip> tips) {
    for (const Tip& t : tips)
        SetTip(t.widget, GetToolTip(section, QLatin1String(t.key), noun));
}

// A cell or value still being typed belongs to the save: every open editor of a grid or a property
// list hands its text over and closes, as it would on leaving the cell.
void EditorWindow::commitOpenEdits() {
    for (QAbstractItemView* view : findChildren<QAbstractItemView*>()) {
        // The viewport's own children are the open editors.
        for (QWidget* editor : view->viewport()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
            QMetaObject::invokeMethod(view, "commitData", Q_ARG(QWidget*, editor));
            QMetaObject::invokeMethod(
                view, "closeEditor", Q_ARG(QWidget*, editor),
                Q_ARG(QAbstractItemDelegate::EndEditHint, QAbstractItemDelegate::NoHint));
        }
    }
}

SaveResult EditorWindow::cmdSave_Click() {
    commitOpenEdits();
    m_result = RunSave(savePlan());
    if (m_result == SaveResult::Saved || m_result == SaveResult::Unchanged) {
        RecordSaved(m_kind, savedName());
        m_closing = true;
        close();
    }
    return m_result;
}

void EditorWindow::closeEvent(QCloseEvent* event) {
    // When the program is closing (the connection is gone), nothing could be saved any more: no question.
    if (!m_closing && db().isOpen() && hasChanges() &&
        MsgBox(QStringLiteral("Close without saving the changes to ") +
                   (m_name.isEmpty() ? QStringLiteral("the new record")
                                     : QLatin1Char('\'') + m_name + QLatin1Char('\'')) +
                   QStringLiteral("?"),
               vb::YesNo + vb::Question, QStringLiteral("Unsaved Changes")) != vb::Yes) {
        event->ignore();
        return;
    }
    event->accept();
}

bool EditorWindow::bringForward(const QString& caption) {
    return CheckWindow(caption);
}

QWidget* EditorWindow::ownerForNew() {
    return ViewOwner();
}

void EditorWindow::present() {
    RegisterChildWindow(this);
    show();
    raise();
    activateWindow();
}
