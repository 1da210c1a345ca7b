#pragma once
// The SQL behind the main window's list: one statement per category and filter choice, the tick
// writes, and the statements that fill the filter lists. No widgets: the window reads its combo boxes
// into a ListFilters and asks here for the text.
#include <QString>
#include <QStringList>

// The text shown by every filter meaning "no restriction".
inline const QString& allEntry() {
    static const QString all = QStringLiteral("All");
    return all;
}

// The current text of each filter box of the main window.
struct ListFilters {
    QString equipType = allEntry();  // cmbEquipType: "All" or a DeEnumerate word
    QString level = allEntry();      // cmbLevel: "All" or a whole number
    QString checked = allEntry();    // cmbChecked: "All", "Checked", "Not Checked"
    QString compType = allEntry();   // cmbCompType
    QString subType = allEntry();    // cmbSubType: "All", "N/A" or a subtype
    QString combatBand = allEntry(); // cmbCL: "All", "0-5" ... "46-50", "51+"
    QString race = allEntry();       // cmbRace: "All" or a class name
    bool customFields = false;       // the database's custom equipment columns are in use
};

namespace listcat {
inline const QString Equipment = QStringLiteral("Equipment");
inline const QString Components = QStringLiteral("Components");
inline const QString RawMaterials = QStringLiteral("Raw Materials");
inline const QString Stations = QStringLiteral("Stations");
inline const QString MOBs = QStringLiteral("MOBs");
inline const QString Items = QStringLiteral("Items");
inline const QString Characters = QStringLiteral("Characters"); // understood, never offered
} // namespace listcat

// The categories offered by cmbData, in their order.
QStringList Categories();
// The entries of cmbChecked and cmbCL, "All" first.
QStringList CheckedChoices();
QStringList CombatBands();
// "All" then the eight equipment types in index order.
QStringList EquipTypeChoices();

// The list statement of a category under the filters. An unknown category gives an empty text.
QString ListStatement(const QString& category, const ListFilters& filters);
// The condition a combat-level band adds to the MOB statement; empty for "All" or an unknown band.
QString CombatBandCondition(const QString& band);
// True when the statement has a WHERE clause of its own (a WHERE inside a quoted value does not count).
bool HasWhereClause(const QString& sql);
// Appends " WHERE " or " AND " + condition, whichever the statement needs.
QString AppendCondition(const QString& sql, const QString& condition);
// The tick filter of cmbChecked applied to a finished statement.
QString AddTickFilter(const QString& sql, const QString& checked);

// The UPDATE that stores a row's tick; empty for a category without a CHECK column.
QString CheckStatement(const QString& category, const QString& name, bool state);

// Statements that fill the filter lists while the window loads.
QString ClassListStatement();
QString ComponentTypeListStatement();
QString SubTypeListStatement(const QString& componentType);
// One statement per levelled table giving its highest level (one row, column MAX_LVL).
QStringList HighestLevelStatements();
// Levels offered by cmbLevel: 1 up to the larger of the fixed floor and the highest level in the data.
constexpr int LevelFloor = 50;
QStringList LevelChoices(int highestInData);

// Which filter boxes a category uses.
struct FilterUse {
    bool equipType = false, level = false, checked = true, compType = false, subType = false,
         combatBand = false, race = false;
};
FilterUse FiltersFor(const QString& category);
