// Print Filtered List: the main list as it is filtered and sorted, printed as a report.
#include "app/frmmain.h"
#include "app/listtitle.h"
#include "app/wiring.h"
#include "core/prompt.h"
#include "lists/frmprintlist.h"
#include "lists/listmodel.h"

#include <QAction>
#include <QHeaderView>

void wirePrinting(frmMain& w) {
    w.setMenuHandler(QStringLiteral("mnuPrintPrintFilteredList"), [&w] {
        // A list still coming in is printed whole: the print waits for its last row (the status bar
        // counts them meanwhile).
        if (w.model()->isLoading()) {
            w.whenListLoaded([&w] { w.menuEntry(QStringLiteral("mnuPrintPrintFilteredList"))->trigger(); });
            return;
        }
        if (w.model()->rowCount() == 0) {
            MsgBox(
                QStringLiteral("The list is empty: there is nothing to print. Choose other filters first."),
                vb::Information, QStringLiteral("Print Filtered List"));
            return;
        }
        const QString category = w.category();
        PrintFilteredList(*w.model(), w.lstItems->header(), category, ListFilterText(w.currentFilters()),
                          category, &w);
    });
}
