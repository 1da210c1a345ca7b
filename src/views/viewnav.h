#pragma once
// Moving from one record to another: what a double-click or a pop-up command on a node or list entry
// opens. Each returns after opening; errors are thrown for the calling handler to report.
#include <QString>

class QListWidget;
class QTreeWidget;
class QTreeWidgetItem;

// The build-view kind of a build-tree picture: "Equipment", "Components", "Raw Materials"; empty for
// items, which are not built.
QString BuildKindOfImage(int image);
// A build-tree node by its picture: equipment, component, raw material or item view of the name that
// RemoveExtra leaves of the text.
void OpenBuildNode(const QString& text, int image);
// The build view of a build-tree node; nothing for items.
void OpenBuildViewOfNode(const QString& text, int image);
// An equipment by name, its type looked up.
void OpenEquipment(const QString& name);
// A node whose key carries a kind marker ("|Equip:", "|Comp:", "|RawMat:", "|Item:"); false when the
// key has none.
bool OpenByMarker(const QString& key, const QString& text);
bool OpenBuildViewByMarker(const QString& key, const QString& text);

// The pop-up menu of a build tree: "Detailed View" and, unless the node is an item, "Build View".
// A double-click opens the detailed view. Errors go to the reporter under the names given.
void AttachBuildTreeCommands(QTreeWidget* tree, const QString& procedurePrefix, const QString& container);
// The same for trees whose nodes carry kind markers (loot, used in, sells).
void AttachMarkerTreeCommands(QTreeWidget* tree, const QString& procedurePrefix, const QString& container);
// A double-click on a list entry opens the record of that kind ("Station", "Equipment", "MOB", ...).
void AttachListOpener(QListWidget* list, const QString& kind, const QString& procedure,
                      const QString& container);
// Opens a record of a kind by name.
void OpenRecord(const QString& kind, const QString& name);
