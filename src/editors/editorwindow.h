#pragma once
// What every editor window shares: its identity (caption "Edit: " + name, or one beginning with "Add"
// or "New" for a new record), the Save and Cancel buttons, the save through RunSave (editorsave.h),
// the announcement of the saved record and closing, and a question before unsaved changes are
// dropped.
//
// A new editor derives from EditorWindow, builds its widgets, loads its record, and implements:
//   savePlan()     the SavePlan of its save (grids to validate, checks, the record write, the rewrites)
//   savedName()    the record's name as it will be after the save
//   hasChanges()   whether closing now would lose edits
// and is registered with its kind in editors.cpp. Grids (UBGrid) size themselves when shown.
#include "editors/editorsave.h"
#include "editors/griddef.h"

#include <QWidget>
#include <initializer_list>

class QHBoxLayout;
class QListWidget;
class QPushButton;
class QVBoxLayout;
class UBGrid;

class EditorWindow : public QWidget {
    Q_OBJECT
public:
    // kind: the main window's category word of the records it edits ("Raw Materials").
    EditorWindow(const QString& objectName, const QString& kind, QWidget* parent = nullptr);

    QString kind() const { return m_kind; }
    // The record's name as loaded; empty for a new record.
    QString recordName() const { return m_name; }
    // A window opened for adding: its title begins with "Add" or "New".
    bool isNew() const;

    // Save: runs the plan; on success (or when nothing changed) announces the record and closes.
    SaveResult cmdSave_Click();
    // The last save's outcome (Refused and Failed leave the window open with its contents).
    SaveResult lastResult() const { return m_result; }

    QPushButton *cmdSave = nullptr, *cmdCancel = nullptr;

    // The grid with the widget name; the entries of a list in the order shown.
    UBGrid* grid(const QString& widgetName) const;
    static QStringList listEntries(const QListWidget* list);

    // The caption of a record's editor: "Edit: " + name, or newCaption for a new record (no name).
    static QString caption(const QString& newCaption, const QString& name);

    // Opens an editor: brings a window with the caption forward, or makes one with make(), lets it
    // load (load() returns false after reporting a failure: no window then), registers and shows it.
    template <typename Window> static Window* open(const QString& caption, const QString& name) {
        if (bringForward(caption))
            return nullptr;
        auto* w = new Window(ownerForNew());
        if (!w->load(name)) {
            delete w;
            return nullptr;
        }
        static_cast<EditorWindow*>(w)->present();
        return w;
    }

protected:
    virtual SavePlan savePlan() = 0;
    virtual QString savedName() const = 0;
    virtual bool hasChanges() const = 0;

    void setRecordName(const QString& name) { m_name = name; }
    // Captions the window for the record as loaded (no stored name: a new one) and keeps its name.
    void showCaption(const QString& newCaption, const QString& storedName);

    // The window's grids of the definitions: filled from the record, changed since, validated and
    // rewritten by a save (the name as stored; the queries get it quote-doubled).
    void populateGrids(const QList<GridDef>& defs, const QString& name);
    bool gridsChanged(const QList<GridDef>& defs) const;
    QList<SaveGrid> gridChecks(const QList<GridDef>& defs) const;
    SaveStep gridWrite(const GridDef& def, const QString& name) const;

    // The tool tips of the widgets, from the help section's keys, worded for the record noun.
    struct Tip {
        QWidget* widget;
        const char* key;
    };
    static void setTips(const QString& section, const QString& noun, std::initializer_list<Tip> tips);

    // The row of Save and Cancel, to be put at the foot of the window's layout.
    QHBoxLayout* buttonRow() const { return m_buttons; }
    void closeEvent(QCloseEvent* event) override;

private:
    void commitOpenEdits();
    static bool bringForward(const QString& caption);
    static QWidget* ownerForNew();
    void present();

    QString m_kind;
    QString m_name;
    QHBoxLayout* m_buttons = nullptr;
    SaveResult m_result = SaveResult::Unchanged;
    bool m_closing = false; // saved: close without asking
};
