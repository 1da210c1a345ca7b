#pragma once
// The property list of the equipment and MOB editors (prpList, prpMOB) without its widget: one row per
// editable field, grouped under category rows, each with its value, a changed flag, a help text and
// the kind of editor that fits its column. The widget (propertylistwidget.h) shows and edits it.
//
// Typical use by an editor:
//   PropertyList p;
//   p.addCategory("General", "General");
//   p.addField("General", rs, "LVL");                  // editor, range and value from the column
//   p.addField("General", rs, "TYPE").choices = ...;   // a choice list
//   p.row("PRICE")->price = PriceWords::Price;         // the pop-up menu of reserved prices
//   p.row("MANUFACTURER")->lookup = lookup::manufacturers(); // the list can be edited from the row
//   p.buildHelp("EDIT_EQUIPMENT", typeName);           // GetToolTip texts with their suffixes
//   ... later, inside the save: p.writeChanged(rs, skip);
// A cleared value is written as NULL.
#include "editors/lookups.h"

#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>
#include <functional>

class Recordset;

enum class PropertyEditor { Text, Whole, Decimal, YesNo, Date, Choice };
// Prices and costs carry reserved numbers that a pop-up menu writes.
enum class PriceWords { None, Price, Cost };

struct PropertyRow {
    QString key;     // the database column; a category row's own key
    QString caption; // shown in the list
    QString value;   // as shown and written; empty is NULL
    QString loaded;  // the value as read; the row is changed while value differs from it
    QString parent;  // the category's key; "parent" for a category row
    QString help;
    PropertyEditor editor = PropertyEditor::Text;
    bool ranged = false;
    double minimum = 0, maximum = 0;
    int maxLength = 0; // text: the column's size; 0 for no limit
    bool readOnly = false;
    QString defaultValue;
    QStringList choices;
    bool choicesOnly = true; // a value must be one of the choices
    PriceWords price = PriceWords::None;
    // A choice list kept in a lookup table (manufacturers, ammunition types...): the widget's pop-up
    // menu offers to edit the table and takes its values as the choices afterwards. No table: none.
    LookupTable lookup;

    bool isCategory() const { return parent == QLatin1String("parent"); }
    bool changed() const { return !isCategory() && value != loaded; }
};

// The reserved numbers and their words, in the order the pop-up menu offers them.
QList<QPair<QString, QString>> PriceChoices(PriceWords kind); // (word, number)
// The word for a reserved number, or the value itself ("-1" -> "Loot Only" for a price).
QString PriceDisplay(const QString& value, PriceWords kind);

// The five-step choices of the MOB temperaments.
QStringList TemperamentChoices();
// The choices of a query's first column. Throws VbError.
QStringList ChoicesFrom(const QString& sql);

class PropertyList {
public:
    static inline const QString CategoryParent = QStringLiteral("parent");

    void clear() { m_rows.clear(); }
    void addCategory(const QString& key, const QString& caption);
    PropertyRow& addRow(const QString& category, const QString& key, const QString& caption,
                        PropertyEditor editor);
    // A row for a field of the current record: editor, range and size from the column's kind; the
    // value read from the current row, or empty when the result set is at its end (a new record).
    PropertyRow& addField(const QString& category, const Recordset& rs, const QString& field,
                          const QString& caption = QString());

    int count() const { return int(m_rows.size()); }
    const PropertyRow& at(int i) const { return m_rows.at(i); }
    int indexOf(const QString& key) const; // -1 when there is none
    PropertyRow* row(const QString& key);
    const PropertyRow* row(const QString& key) const;
    QString value(const QString& key) const;

    // The value as read: the row is unchanged.
    void load(const QString& key, const QString& value);
    // A new record: every row with a default takes it, as a change to be written.
    void applyDefaults();
    // Why the value cannot be taken (empty when it can): out of range, not a number, not a choice.
    QString checkValue(int index, const QString& value) const;
    // The user's edit: false (nothing changes) when checkValue refuses it or the row is read-only.
    // A value equal to a choice in another letter case takes the choice's spelling.
    bool setValue(int index, const QString& value);
    bool setValue(const QString& key, const QString& value) { return setValue(indexOf(key), value); }

    // The help texts of every row: GetToolTip(section, key, name) with the range, read-only and
    // default suffixes.
    void buildHelp(const QString& section, const QString& name);
    static QString helpText(const QString& section, const PropertyRow& row, const QString& name);

    QStringList changedKeys() const;
    bool anyChanged() const { return !changedKeys().isEmpty(); }
    // Writes the changed rows into the current row of an updatable result set, empty values as NULL,
    // leaving out the rows skip() names. True when something was written. Throws VbError.
    bool writeChanged(Recordset& rs, const std::function<bool(const QString& key)>& skip = {}) const;
    // The values now read are the loaded ones (after a save that the window survives).
    void markSaved();

    // Told when a row's value changes (its index), so that a view can show it.
    std::function<void(int index)> onChanged;

private:
    QList<PropertyRow> m_rows;
};
