#pragma once
// Searching the main list's rows as shown (never the database).
#include <QString>

class ListModel;

// UberFindItem: searches for "*" + searchText + "*" with wildcard matching (see wildcard.h).
// Positions are 1-based view rows. Downwards walks from start to the last row; upwards from start - 2
// to row 1 (the caller passes the selected row + 1). No wrap-around. Returns the found row, or 0 for
// nothing; in mark-all mode every matching row (name match) or cell is set bold and the last matching
// row is returned.
int UberFindItem(const QString& searchText, int start, ListModel& items, bool down, bool namesOnly,
                 bool matchCase, bool markAll);

// What the find dialog needs of the window that owns the list: its status bar panels.
class FindStatus {
public:
    virtual ~FindStatus() = default;
    virtual void setStatus(const QString& text) = 0;   // the "Status" panel
    virtual void setLoadTime(const QString& text) = 0; // the "LoadTime" panel
};
