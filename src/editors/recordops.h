#pragma once
// Delete, copy and rename of the five editable kinds of record (equipment, components, raw materials,
// items, MOBs). The database declares no cascading relationships, so every link row that names a
// record is removed, copied or re-keyed here, table by table.
//
// Each routine reports its own database errors under its own name ("Module modMain") and returns
// false. Each one also makes its work all-or-nothing: when no transaction is open it runs inside one
// of its own and rolls it back on failure; inside a caller's transaction it leaves that to the caller.
#include <QString>
#include <QStringList>

namespace recordops {
// The main window's category texts of the kinds these routines handle.
inline const QString Equipment = QStringLiteral("Equipment");
inline const QString Components = QStringLiteral("Components");
inline const QString RawMaterials = QStringLiteral("Raw Materials");
inline const QString Items = QStringLiteral("Items");
inline const QString MOBs = QStringLiteral("MOBs");
bool supported(const QString& kind);

// A place where a record's name is held: the table and the column.
struct LinkEnd {
    QString keyColumn;
    QString table;
};
// The link rows a copy takes along, in order ((key column, table) of the copy lists).
QList<LinkEnd> copyList(const QString& kind);
// The statements that remove a record's link rows, in the order they run (names already quoted).
QStringList relationshipDeletes(const QString& kind, const QString& name);
} // namespace recordops

// Relationship deletion, one routine per kind. The MOB routine reports its errors as
// "DeleteItemRelationships", as it always has.
bool DeleteComponentRelationships(const QString& name);
bool DeleteEquipmentRelationships(const QString& name);
bool DeleteItemRelationships(const QString& name);
bool DeleteMOBRelationships(const QString& name);
bool DeleteRawMaterialRelationships(const QString& name);

// The equipment deletion: its relationships, its statistics row (none for a device), the record.
// typeText is the type word ("Beam", "device", ...).
bool DeleteEquipment(const QString& name, const QString& typeText);

// The generic row copier: every row of table whose keyColumn holds oldName is added again with
// newName in that column and every other field as it was.
bool CopyRows(const QString& table, const QString& keyColumn, const QString& oldName, const QString& newName);

// Copies a record and, when withLinks is set (always, from the menu), its link rows. The copy is the
// user's own: PERSONAL_DB and UPDATED true, LAST_UPDATED now. typeIndex is the equipment type index.
bool CopyComponent(const QString& oldName, const QString& newName, bool withLinks = true);
bool CopyEquipment(const QString& oldName, const QString& newName, int typeIndex, bool withLinks = true);
bool CopyItem(const QString& oldName, const QString& newName, bool withLinks = true);
bool CopyMOB(const QString& oldName, const QString& newName, bool withLinks = true);
bool CopyRawMaterial(const QString& oldName, const QString& newName, bool withLinks = true);

// Copy to the new name, then remove the old record and its link rows.
bool RenameComponent(const QString& oldName, const QString& newName);
bool RenameEquipment(const QString& oldName, const QString& newName, int typeIndex);
bool RenameItem(const QString& oldName, const QString& newName);
bool RenameMOB(const QString& oldName, const QString& newName);
bool RenameRawMaterial(const QString& oldName, const QString& newName);

// The work of the main window's three commands for the selected record of a category. Each runs in
// one transaction: it completes, or the database is left exactly as it was. Errors are reported by
// the routine that met them; a failure of the command's own statements is thrown (VbError) for the
// menu handler to report. Stations and other categories are not handled here (false).
bool DeleteRecord(const QString& kind, const QString& name);
// Refuses an equipment that another equipment upgrades from ("Cannot upgrade ...", "Cannot Copy")
// and confirms an equipment copy with a message. Returns true when the copy exists.
bool CopyRecord(const QString& kind, const QString& oldName, const QString& newName);
// A new name that differs from the old one only in letter case is allowed (names are unique without
// regard to case, so it goes through a temporary name inside the same transaction).
bool RenameRecord(const QString& kind, const QString& oldName, const QString& newName);

// Checks a name typed into the rename dialog; an empty text means it is acceptable, else the refusal
// and its title.
struct NameRefusal {
    QString text;
    QString title;
};
NameRefusal CheckNewName(const QString& name);
