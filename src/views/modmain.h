#pragma once
// The shared view routines: captions from column names, tooltips from "VOSK.ini", price words, node
// texts back to record names, the null-safe readers and the texts of the specials tree.
#include <QString>
#include <QStringList>
#include <QVariant>

class Recordset;

// Column name to caption ("DAMAGE_PER_SECOND" -> "Damage Per Second", "LVL" -> "Level").
QString FormatFieldName(const QString& columnName);
// Key of a section of "VOSK.ini" with "###" the name without "_", "%%%" the markup and "\n" a line end.
QString GetToolTip(const QString& section, const QString& key, const QString& name);
// Price words: -2 "Mission Reward", -1 "Loot Only", 0 "Unknown"; for a fee any negative value is
// "Not Manufacturable". Anything else comes back as given.
QString PriceText(const QString& value, bool manufactureFee);
// A price as the views show it before the words are applied: "###,###,##0".
QString FormatWhole(qint64 value);
// A tree node text back to its record name ("Name (L12) x3" -> "Name").
QString RemoveExtra(const QString& nodeText);

QString NzString(const QVariant& v, const QString& defaultValue = QString());
bool NzBool(const QVariant& v, bool defaultValue = false);
qint32 NzLong(const QVariant& v, qint32 defaultValue = 0);
double NzDouble(const QVariant& v, double defaultValue = 0);

// Rounds half away from zero to the given decimals and writes it without trailing zeros ("12.35", "3").
QString RoundText(double value, int decimals = 2);
// Every word with a capital first letter and the rest lower case.
QString ProperCase(const QString& text);

// The specials tree: the top node ("Shield Boost +12.35%", "Drain -3 Points") and the detail rows.
QString SpecialText(const QString& special, const QVariant& amount, const QString& units);
// "Energy Use: 5" for a positive value; an empty text when the row is left out (null, 0 or less).
QString SpecialDetailText(const QString& column, const QVariant& value);

// The first column of every row.
QStringList PopulateList(Recordset& rs);
struct ListSink {
    virtual ~ListSink() = default;
    virtual void addItem(const QString& text) = 0;
};
void PopulateList(ListSink& list, Recordset& rs);

// True when the raw material is refined from another raw material or made from items.
bool IsRefined(const QString& rawMaterialName);

// The custom equipment fields of DB_OPTIONS: whether they are used and their three captions. Read
// from the database on first use; the options window sets them after saving.
struct CustomFields {
    bool on = false;
    QString caption[3];
};
const CustomFields& customFields();
void setCustomFields(const CustomFields& fields);
// Reads DB_OPTIONS again (a new database was opened).
void reloadCustomFields();
