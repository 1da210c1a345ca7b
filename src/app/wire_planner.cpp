// The shopping list: View > Shopping List, Add to Shopping List from the list's selection and from
// the views, the owned-quantity table on a database that lacks it, and the main list's ticks reaching
// an open shopping list.
#include "app/frmmain.h"
#include "app/wiring.h"
#include "data/database.h"
#include "data/schema.h"
#include "lists/listmodel.h"
#include "planner/frmshoppinglist.h"
#include "views/shoppinghook.h"

#include <QPointer>

void wirePlanner(frmMain& w) {
    // A database of an older program gets the table now; one that cannot take it keeps working
    // without owned quantities.
    if (db().handle())
        schema::EnsureAddedTables(db().handle());
    setShoppingListAdder(&AddToShoppingList);
    w.setMenuHandler(QStringLiteral("mnuViewShoppingList"), [] { ShowShoppingList(); });
    w.setMenuHandler(QStringLiteral("mnuPopupAddToList"),
                     [&w] { AddToShoppingList(w.category(), w.selectedName()); });
    // A tick written by the shopping list shows in the main list when it lists that record.
    SetShoppingCheckHook(
        [main = QPointer<frmMain>(&w)](const QString& category, const QString& name, bool checked) {
            if (!main || main->category() != category)
                return;
            ListModel* m = main->model();
            for (int r = 0; r < m->rowCount(); ++r)
                if (m->name(r).compare(name, Qt::CaseInsensitive) == 0) {
                    m->setChecked(r, checked);
                    break;
                }
        });
    // A tick in the main list is written there first; an open shopping list then shows it.
    QObject::connect(w.model(), &ListModel::checkToggled, &w, [] {
        if (frmShoppingList* list = OpenShoppingList(); list && list->session().stale())
            list->refreshList();
    });
}
