// The "Where Used" page of the record views on the sample world: filled when first shown, the same
// uses as the query, opening a use, and the way to the shopping list when one is installed.
#include "views/frmbuildview.h"
#include "views/frmequipment.h"
#include "views/frmrecord.h"
#include "views/openviews.h"
#include "views/shoppinghook.h"
#include "views/whereused.h"
#include "views/whereusedpanel.h"
#include "viewsfixture.h"
#include "viewswindows.h"

#include <QAction>
#include <QLabel>
#include <QPushButton>
#include <QScopeGuard>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>

namespace {
QStringList added;
void recordAdded(const QString& kind, const QString& name) {
    added << kind + ": " + name;
}

WhereUsedPanel* panelOf(QWidget* window) {
    return window ? window->findChild<WhereUsedPanel*>() : nullptr;
}
} // namespace

class TestWhereUsedPanel : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString e;
        QVERIFY2(f.setUp(true, &e), qPrintable(e));
        added.clear();
    }
    void cleanup() {
        setShoppingListAdder(nullptr);
        closeViews();
        f.tearDown();
    }

    void everyRecipeViewHasThePage_data() {
        QTest::addColumn<QString>("caption");
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("name");
        QTest::newRow("equipment") << "Beam: Hunter's Lance Mk I" << int(bom::Kind::Equipment)
                                   << "Hunter's Lance Mk I";
        QTest::newRow("component") << "Component: Basic Logic Board" << int(bom::Kind::Component)
                                   << "Basic Logic Board";
        QTest::newRow("raw material")
            << "Raw Material: Ferrite Ore" << int(bom::Kind::RawMaterial) << "Ferrite Ore";
        QTest::newRow("item") << "Item: Smuggler's Ledger" << int(bom::Kind::Item) << "Smuggler's Ledger";
    }
    void everyRecipeViewHasThePage() {
        QFETCH(QString, caption);
        QFETCH(int, kind);
        QFETCH(QString, name);
        setShoppingListAdder(&recordAdded);
        const QString word = bom::kindWord(bom::Kind(kind));
        if (word == "Equipment")
            ViewEquipDetails(name, 0, "Beam");
        else if (word == "Component")
            ViewComponent(name);
        else if (word == "Raw Material")
            ViewRawMaterial(name);
        else
            ViewItem(name);
        WhereUsedPanel* panel = panelOf(FindChildWindow(caption));
        QVERIFY(panel);
        QVERIFY(!panel->loaded()); // nothing read until the page is shown
        QTabWidget* owner = qobject_cast<QTabWidget*>(panel->parentWidget()->parentWidget());
        QVERIFY(owner);
        QCOMPARE(owner->tabText(owner->count() - 1), QStringLiteral("Where Used"));
        owner->setCurrentWidget(panel);
        QVERIFY(panel->loaded());

        const bom::WhereUsedResult r = bom::WhereUsed({bom::Kind(kind), name});
        QTreeWidget* tree = panel->treWhereUsed;
        QCOMPARE(tree->topLevelItem(0)->childCount(), r.directCount());
        QCOMPARE(tree->topLevelItem(1)->childCount(), int(r.uses.size()) - r.directCount());
        if (!r.uses.isEmpty()) {
            QTreeWidgetItem* first = tree->topLevelItem(r.directCount() ? 0 : 1)->child(0);
            QCOMPARE(first->text(0), r.uses.first().ref.name);
            QCOMPARE(first->text(2).remove(','), QString::number(r.uses.first().perUnit));
        } else {
            QVERIFY(panel->lblSummary->text().startsWith("No recipe calls for"));
        }
        QVERIFY(panel->cmdAddToList->isVisibleTo(panel));
        panel->cmdAddToList->click();
        QCOMPARE(added, QStringList{bom::categoryOf(bom::Kind(kind)) + ": " + name});
    }

    void aUseOpensItsOwnView() {
        ViewRawMaterial("Ferrite Ore");
        WhereUsedPanel* panel = panelOf(FindChildWindow("Raw Material: Ferrite Ore"));
        QVERIFY(panel);
        QVERIFY(!panel->cmdAddToList->isVisibleTo(panel)); // no shopping list installed
        panel->load();
        QTreeWidgetItem* use = panel->treWhereUsed->topLevelItem(0)->child(0);
        QVERIFY(use);
        Q_EMIT panel->treWhereUsed->itemActivated(use, 0);
        const QString kind = use->data(0, Qt::UserRole).toString();
        QVERIFY(FindChildWindow(kind + ": " + use->text(0)));
    }

    void theBuildViewAddsItsRoot() {
        setShoppingListAdder(&recordAdded);
        ShowBuildView("Basic Logic Board", "Components");
        auto* view = qobject_cast<frmBuildView*>(FindChildWindow("Build View (Basic Logic Board)"));
        QVERIFY(view);
        QAction* add = view->findChild<QAction*>("mnuEditAddToList");
        QVERIFY(add && add->isVisible());
        add->trigger();
        QCOMPARE(added, QStringList{"Components: Basic Logic Board"});
    }

private:
    ViewsFixture f;
};

QTEST_MAIN(TestWhereUsedPanel)
#include "tst_whereusedpanel.moc"
