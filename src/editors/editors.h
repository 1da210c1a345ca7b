#pragma once
// The editors by the kind of record they edit (the main window's category words). The application
// hands OpenEditor to the views' Edit buttons and the main window's Edit Item, and each kind's Add
// entry to its menu; a kind without an editor keeps them disabled.
//
// A new editor registers itself by filling its line in editors.cpp: the kind, the Add menu entry
// and its opener (an empty name opens it for a new record).
#include <QList>
#include <QString>

struct EditorKind {
    QString kind;                                // "Raw Materials"
    QString addMenu;                             // "mnuAddRawMaterial"; empty when there is none
    void (*open)(const QString& name) = nullptr; // nullptr while the kind has no editor
};

const QList<EditorKind>& editorKinds();
bool HasEditor(const QString& kind);
// Opens the kind's editor on the record (empty name: a new record); nothing for a kind without one.
void OpenEditor(const QString& kind, const QString& name);
