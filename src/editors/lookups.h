#pragma once
// The lookup tables behind the drop-down lists, as the lookup editor (frmListEditDialog) changes
// them: the statements it runs, and the lists the editors offer. Values go into the SQL quote-doubled.
#include <QString>
#include <QStringList>

struct LookupTable {
    QString kind;   // singular noun shown in the texts ("Special")
    QString table;  // "SPECIALS"
    QString column; // "SPECIAL"
    // Lookup tables whose values belong to a parent value (subtypes per component type).
    QString parentColumn;
    QString parentValue;

    QString parentCondition() const; // "COMPONENT_TYPE = 'Hull'"
    QString fillSql() const;
    QString insertSql(const QString& value) const;
    QString deleteSql(const QString& value) const;
    // The values, in the list's order. Throws VbError.
    QStringList values() const;
};

// The lookup lists the editors offer for editing.
namespace lookup {
LookupTable specials();
LookupTable damageTypes();
LookupTable manufacturers();
LookupTable componentTypes();
LookupTable componentSubtypes(const QString& componentType);
LookupTable ammunitionTypes(const QString& launchType);
} // namespace lookup

// The outcome of deleting a lookup value.
enum class LookupDelete { Deleted, InUse, Failed };
// Runs the delete; a value still used by a record is refused by the database (InUse) and stays.
// Any other error is reported with the procedure and container given.
LookupDelete DeleteLookupValue(const LookupTable& lookup, const QString& value, const QString& procedure,
                               const QString& container);
