#pragma once
// What the main window keeps between runs in the settings store (section "Settings"): the category,
// each filter, the window's state and place, and per category the list's column layout.
#include "app/liststatements.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

struct MainWindowPlace {
    int windowState = 0; // 0 normal, 1 minimised, 2 maximised
    QByteArray geometry; // the window's own geometry record; empty when never saved
};

// A list's column layout, by column name, so that it can be applied to another list that shares
// some of its columns (the equipment types share the common equipment columns).
struct ColumnLayout {
    QStringList order;  // column names in their visual order
    QList<int> widths;  // the width of each, in pixels, in the same order
    QString sortColumn; // the sorted column's name; empty when unsorted
    int sortKey = -1;   // the sorted column's 0-based index, -1 when unsorted
    int sortOrder = 0;  // 0 ascending, 1 descending
    bool isEmpty() const { return order.isEmpty() && sortColumn.isEmpty() && sortKey < 0; }
    int width(const QString& column) const; // 0 when the layout has none for it
};

namespace mainkey {
inline const QString Section = QStringLiteral("Settings");
} // namespace mainkey

void SaveCategory(const QString& category);
QString LoadCategory(); // the saved category, "Equipment" when none

void SaveFilters(const ListFilters& f);
// Filters as saved; customFields is not a filter and stays false.
ListFilters LoadFilters();

void SaveWindowPlace(const MainWindowPlace& p);
MainWindowPlace LoadWindowPlace();

// The name a list's column layout is kept under: the category, and for equipment of one type the
// category and the type ("Equipment/Beam"), since each type lists its own statistics columns.
QString ColumnLayoutKey(const QString& category, const QString& equipType);
void SaveColumnLayout(const QString& key, const ColumnLayout& layout);
ColumnLayout LoadColumnLayout(const QString& key);

// The visual order of a list's columns (logical indices, the first shown first) under a saved order
// of column names: the saved columns the list has, in their saved order; each column the saved order
// does not name goes after every column that comes before it in the statement.
QList<int> VisualOrder(const QStringList& columns, const QStringList& savedOrder);
// Column widths that fit into budget pixels: when they do not, the widest columns are cut down to one
// common width (never below minimum) and the narrower ones keep theirs.
QList<int> FitWidths(const QList<int>& widths, int budget, int minimum = 40);

// Writes the program folder as "path" (every start, so other tools can find the installation).
void SaveProgramPath();

// Numbers kept as a comma-separated text; anything unreadable gives an empty list.
QString joinNumbers(const QList<int>& list);
QList<int> splitNumbers(const QString& text);
