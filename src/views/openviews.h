#pragma once
// Opening the record windows by name. Every view is read-only, filled once when opened; the
// equipment, build and other record views bring an open window with the same caption forward instead
// of opening a second one, the MOB view opens a new window on every call.
#include <QString>

class QWidget;

void ViewEquipDetails(const QString& name, int typeIndex, const QString& typeName);
void ShowBuildView(const QString& name, const QString& kind); // "Equipment", "Components", "Raw Materials"
void ViewMOBInfo(const QString& name);
void ViewComponent(const QString& name);
void ViewRawMaterial(const QString& name);
void ViewItem(const QString& name);
void ViewStation(const QString& name);

// Where a view's Edit button leads. Until the editors exist this is empty and Edit is disabled. The
// kind is the main window's category word: "Equipment", "Components", "Raw Materials", "Items" or
// "MOBs"; the name is the record's.
using EditorOpener = void (*)(const QString& kind, const QString& name);
void setEditorOpener(EditorOpener opener);
EditorOpener editorOpener();
// Which kinds have an editor. Without it, every kind counts as having one once an opener is set.
using EditorAvailable = bool (*)(const QString& kind);
void setEditorAvailable(EditorAvailable available);
// True when Edit can open the kind's editor: an opener is set and the kind has an editor.
bool CanEdit(const QString& kind);

// Where a link to a sector map leads: the map of the sector, centred on the navigation point when one
// is named. Until the maps are wired this is empty and the links do nothing.
using MapOpener = void (*)(const QString& sector, const QString& navPoint);
void setMapOpener(MapOpener opener);
MapOpener mapOpener();
