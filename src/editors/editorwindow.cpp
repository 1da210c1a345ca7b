#include "editors/editorwindow.h"

#include "core/childwindows.h"
#include "core/prompt.h"
#include "data/database.h"
#include "views/viewwidgets.h"

#include <QAbstractItemView>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeySequence>
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
