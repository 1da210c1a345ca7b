// Print Filtered List: the main list as it is filtered and sorted, printed as a report.
#include "app/frmmain.h"
#include "app/listtitle.h"
#include "app/wiring.h"
#include "core/prompt.h"
#include "lists/frmprintlist.h"
#include "lists/listmodel.h"

#include <QHeaderView>

void wirePrinting(frmMain& w) {
    w.setMenuHandler(QStringLiteral("mnuPrintPrintFilteredList"), [&w] {
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
