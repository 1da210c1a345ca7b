#include "lists/finditem.h"
#include "lists/listmodel.h"
#include "lists/wildcard.h"

int UberFindItem(const QString& searchText, int start, ListModel& items, bool down, bool namesOnly,
                 bool matchCase, bool markAll) {
    // Without match-case, pattern and texts compare case-folded, as names compare in the database.
    const WildcardPattern pattern(QLatin1Char('*') + searchText + QLatin1Char('*'), !matchCase);
    const int count = items.rowCount();
    if (count == 0)
        return 0;
    const int from = down ? start : start - 2;
    const int to = down ? count : 1;
    const int step = down ? 1 : -1;
    const int subItems = items.columnCount() - 1; // read once, as from the first row
    int result = 0;
    QString text;
    bool marked = false;
    for (int i = from; down ? i <= to : i >= to; i += step) {
        // A position outside the list was an error that ended the search with nothing found.
        if (i < 1 || i > count) {
            result = 0;
            break;
        }
        const int row = i - 1;
        items.cellText(row, 0, text);
        if (pattern.matches(text)) {
            result = i;
            if (!markAll)
                return i;
            items.setRowBold(row, true, false);
            marked = true;
            continue;
        }
        if (namesOnly)
            continue;
        for (int c = 1; c <= subItems; ++c) {
            items.cellText(row, c, text);
            if (pattern.matches(text)) {
                result = i;
                if (!markAll)
                    return i;
                items.setBold(row, c, true, false);
                marked = true;
            }
        }
    }
    if (marked)
        items.notifyBoldChanged();
    return result;
}
