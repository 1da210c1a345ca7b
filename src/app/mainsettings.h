#pragma once
// What the main window keeps between runs in the settings store (section "Settings"): the category,
// each filter, the window's state and place, and per category the list's column layout.
#include "app/liststatements.h"

#include <QByteArray>
#include <QList>
#include <QString>

struct MainWindowPlace {
    int windowState = 0; // 0 normal, 1 minimised, 2 maximised, as the store has always kept it
    QByteArray geometry; // the window's own geometry record; empty when never saved
};

struct ColumnLayout {
    QList<int> order;  // visual position of each logical column
    QList<int> widths; // width of each logical column in pixels
    int sortKey = -1;  // sorted column, -1 when unsorted
    int sortOrder = 0; // 0 ascending, 1 descending
    bool isEmpty() const { return order.isEmpty() && widths.isEmpty() && sortKey < 0; }
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

// The column layout of a category's list; kept apart per category since each has other columns.
void SaveColumnLayout(const QString& category, const ColumnLayout& layout);
ColumnLayout LoadColumnLayout(const QString& category);

// Writes the program folder as "path" (every start, so other tools can find the installation).
void SaveProgramPath();

// Numbers kept as a comma-separated text; anything unreadable gives an empty list.
QString joinNumbers(const QList<int>& list);
QList<int> splitNumbers(const QString& text);
