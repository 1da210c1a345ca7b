// The component, raw-material, item and station views on the sample world: each opens by its name in
// one window of its own, a missing record is reported, and the trees and lists lead to other views.
// The "Where Used" page of the recipe views: filled when first shown, the same uses as the query,
// opening a use, and the way to the shopping list when one is installed. The build view window: the
// tree for each kind, one window per root, the clipboard text, and the report of a recipe that contains
// itself (nodes kept).
#include "views/equiptypes.h"
#include "views/frmbuildview.h"
#include "views/frmrecord.h"
#include "views/openviews.h"
#include "views/shoppinghook.h"
#include "views/viewwidgets.h"
#include "views/whereused.h"
#include "views/whereusedpanel.h"
#include "viewsfixture.h"
#include "viewswindows.h"

#include <QAction>
#include <QClipboard>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>

namespace {
QStringList added;
void recordAdded(const QString& kind, const QString& name) {
    added << kind + ": " + name;
}

frmRecordView* view(const QString& kind, const QString& name) {
    if (kind == "Component")
        ViewComponent(name);
    else if (kind == "Raw Material")
        ViewRawMaterial(name);
    else if (kind == "Item")
        ViewItem(name);
    else
        ViewStation(name);
    return qobject_cast<frmRecordView*>(FindChildWindow(kind + ": " + name));
}
} // namespace

class TestFrmRecord : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString e;
        QVERIFY2(f.setUp(true, &e), qPrintable(e));
    }
    void cleanup() {
        setShoppingListAdder(nullptr);
        added.clear();
        closeViews();
        f.tearDown();
    }
    void views_data() {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("sql");
        auto row = [](const char* kind, const char* sql) {
            QTest::newRow(kind) << QString(kind) << QString(sql);
        };
        row("Component", "SELECT COMPONENT_NAME FROM COMPONENTS ORDER BY COMPONENT_NAME");
        row("Raw Material",
            "SELECT RAW_MATERIAL_NAME FROM RAW_MATERIALS_REFINES_FROM ORDER BY RAW_MATERIAL_NAME");
        row("Item", "SELECT ITEM_NAME FROM ITEMS ORDER BY ITEM_NAME");
        row("Station", "SELECT STATIONS_STATION FROM BUY_EQUIPMENT_LOCATION ORDER BY STATIONS_STATION");
    }
    void views() {
        QFETCH(QString, kind);
        QFETCH(QString, sql);
        const QString name = f.scalar(sql).toString();
        auto* w = view(kind, name);
        QCOMPARE(f.prompt().count(), 0);
        QVERIFY2(w && w->isVisible() && !w->fields().isEmpty(), qPrintable(kind + ": " + name));
        QVERIFY(w->treUsedIn->topLevelItemCount() > 0);
        QVERIFY(!w->cmdEdit->isHidden() &&
                !w->cmdEdit->isEnabled()); // every kind has an editor, none installed
        QCOMPARE(view(kind, name), w);     // a second request brings the same window forward
        QCOMPARE(visibleWindows(kind + ": " + name), 1);
        QVERIFY(!view(kind, "Nothing Here")); // a missing record is reported and opens nothing
        QCOMPARE(f.prompt().count(), 1);
        const QString procedure = "View" + QString(kind).remove(' ');
        QVERIFY2(f.prompt().last().text.endsWith("procedure " + procedure + " of Module modMain"),
                 qPrintable(f.prompt().last().text));
    }
    void componentShowsItsManufacturingFee() {
        QString e;
        QVERIFY2(f.exec({"UPDATE COMPONENTS SET COST_TO_MANUFACTURE = -3 WHERE COMPONENT_NAME = 'Basic "
                         "Navigator''s Sextant'"},
                        &e),
                 qPrintable(e));
        auto* w = view("Component", "Basic Navigator's Sextant");
        QVERIFY(w);
        const auto fields = w->fields();
        const auto at = std::find_if(fields.cbegin(), fields.cend(),
                                     [](const auto& p) { return p.first == "Manufacturing Fee"; });
        QVERIFY(at != fields.cend() && at != fields.cbegin());
        QCOMPARE(at->second, QString("Not Manufacturable"));
        QCOMPARE((at - 1)->first, QString("Price")); // beside the price
    }

    void navigation() {
        // From a station's "Sells" tree to the equipment view, by the marker of the node's key.
        auto* w =
            view("Station",
                 f.scalar("SELECT STATIONS_STATION FROM BUY_EQUIPMENT_LOCATION ORDER BY STATIONS_STATION")
                     .toString());
        QVERIFY(w);
        QTreeWidgetItem* group = w->treUsedIn->topLevelItem(0);
        QCOMPARE(group->text(0), QString("Equipment"));
        Q_EMIT w->treUsedIn->itemDoubleClicked(group->child(0), 0);
        QCOMPARE(f.prompt().count(), 0);
        const QString name = group->child(0)->text(0);
        QCOMPARE(visibleWindows(DeEnumerate(FindType(name)) + ": " + name, "frmEquipment"), 1);

        // From a component's "Bought At" list to the station view.
        auto* c = view(
            "Component",
            f.scalar("SELECT COMPONENTS_COMPONENT FROM BUY_COMPONENT_LOCATIONS ORDER BY COMPONENTS_COMPONENT")
                .toString());
        QVERIFY(c && c->lstBuyLocations->count() > 0);
        Q_EMIT c->lstBuyLocations->itemDoubleClicked(c->lstBuyLocations->item(0));
        QVERIFY(FindChildWindow("Station: " + c->lstBuyLocations->item(0)->text()));

        // From a blueprint node to its record by the node's picture.
        QTreeWidgetItem* root = c->treBlueprint->topLevelItem(0);
        QVERIFY(root->childCount() > 0);
        Q_EMIT c->treBlueprint->itemDoubleClicked(root->child(0), 0);
        QCOMPARE(f.prompt().count(), 0);
    }
    // A list without records says so, like the trees, and its placeholder opens nothing.
    void emptyListSaysSo() {
        auto* w =
            view("Item", f.scalar("SELECT ITEM_NAME FROM ITEMS WHERE ITEM_NAME NOT IN (SELECT ITEM_NAME FROM "
                                  "BUY_ITEM_LOCATIONS) ORDER BY ITEM_NAME")
                             .toString());
        QVERIFY(w && w->lstBuyLocations->count() == 1);
        QListWidgetItem* none = w->lstBuyLocations->item(0);
        QCOMPARE(none->text(), QString("No Records Found"));
        QVERIFY(IsPlaceholder(none) && !(none->flags() & Qt::ItemIsSelectable));
        QCOMPARE(RecordCount(w->lstBuyLocations), 0);
        Q_EMIT w->lstBuyLocations->itemDoubleClicked(none);
        QVERIFY(!FindChildWindow("Station: No Records Found"));
        QCOMPARE(f.prompt().count(), 0);
    }

    void whereUsedPage_data() {
        QTest::addColumn<QString>("caption");
        QTest::addColumn<int>("kind");
        auto row = [](const char* caption, bom::Kind kind) {
            QTest::newRow(caption) << QString(caption) << int(kind);
        };
        row("Beam: Hunter's Lance Mk I", bom::Kind::Equipment);
        row("Raw Material: Ferrite Ore", bom::Kind::RawMaterial);
    }
    void whereUsedPage() {
        QFETCH(QString, caption);
        QFETCH(int, kind);
        setShoppingListAdder(&recordAdded);
        const QString name = caption.section(": ", 1);
        if (kind == int(bom::Kind::Equipment))
            ViewEquipDetails(name, 0, "Beam");
        else
            view(caption.section(": ", 0, 0), name);
        QWidget* window = FindChildWindow(caption);
        QVERIFY(window);
        WhereUsedPanel* panel = window->findChild<WhereUsedPanel*>();
        QVERIFY(panel && !panel->loaded()); // nothing read until the page is shown
        auto* owner = qobject_cast<QTabWidget*>(panel->parentWidget()->parentWidget());
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
    void aUseOpensItsOwnViewAndTheBuildViewAddsItsRoot() {
        frmRecordView* ore = view("Raw Material", "Ferrite Ore");
        QVERIFY(ore);
        WhereUsedPanel* panel = ore->findChild<WhereUsedPanel*>();
        QVERIFY(panel && !panel->cmdAddToList->isVisibleTo(panel)); // no shopping list installed
        panel->load();
        QTreeWidgetItem* use = panel->treWhereUsed->topLevelItem(0)->child(0);
        QVERIFY(use);
        Q_EMIT panel->treWhereUsed->itemActivated(use, 0);
        QVERIFY(FindChildWindow(use->data(0, Qt::UserRole).toString() + ": " + use->text(0)));
        setShoppingListAdder(&recordAdded);
        ShowBuildView("Basic Logic Board", "Components");
        QAction* add =
            FindChildWindow("Build View (Basic Logic Board)")->findChild<QAction*>("mnuEditAddToList");
        QVERIFY(add && add->isVisible());
        add->trigger();
        QCOMPARE(added, QStringList{"Components: Basic Logic Board"});
    }

    void buildViewKinds_data() {
        QTest::addColumn<QString>("sql");
        QTest::addColumn<QString>("kind");
        QTest::addColumn<int>("rootImage");
        QTest::newRow("equipment")
            << "SELECT EQUIPMENTS_EQUIPMENT FROM EQUIPMENTS_COMPONENTS ORDER BY EQUIPMENTS_EQUIPMENT DESC"
            << "Equipment" << 1;
        QTest::newRow("component")
            << "SELECT COMPONENTS_COMPONENT FROM COMPONENTS_RAW_MATERIALS ORDER BY COMPONENTS_COMPONENT"
            << "Components" << 2;
        QTest::newRow("refined raw material")
            << "SELECT RAW_MATERIAL_NAME FROM RAW_MATERIALS_REFINES_FROM ORDER BY RAW_MATERIAL_NAME"
            << "Raw Materials" << 3;
    }
    // Each kind gets its tree; a second request brings the open window forward; Copy puts the tree on
    // the clipboard, each line indented by one tab per level below the root and ended by CR LF.
    void buildViewKinds() {
        QFETCH(QString, sql);
        QFETCH(QString, kind);
        QFETCH(int, rootImage);
        const QString name = f.scalar(sql).toString();
        ShowBuildView(name, kind);
        frmBuildView* w = buildView(name);
        QVERIFY(w && w->isVisible());
        QCOMPARE(f.prompt().count(), 0);
        QCOMPARE(w->treBuildView->topLevelItemCount(), 1);
        QTreeWidgetItem* root = w->treBuildView->topLevelItem(0);
        QCOMPARE(root->text(0) + "/" + NodeKey(root) + "/" + QString::number(NodeImage(root)),
                 name + "/" + name + "/" + QString::number(rootImage));
        QVERIFY(root->childCount() > 0 && root->isExpanded());
        QVERIFY(NodeKey(root->child(0)).startsWith(name + "|"));
        ShowBuildView(name, kind);
        QVERIFY(buildView(name) == w && visibleWindows("Build View (" + name + ")") == 1);
        QApplication::clipboard()->clear();
        w->mnuEditCopy_Click();
        const QStringList lines = QApplication::clipboard()->text().split("\r\n");
        QTreeWidgetItem* child = root->child(0);
        QCOMPARE(lines.mid(0, 2), (QStringList{name, "\t" + child->text(0)}));
        if (child->childCount() > 0)
            QCOMPARE(lines.at(2), "\t\t" + child->child(0)->text(0));
        QCOMPARE(lines.last(), QString());
    }
    void buildViewCycleReported() {
        QString error;
        QVERIFY2(f.addRecipeCycle(&error), qPrintable(error));
        ShowBuildView("Cycle Engine", "Equipment");
        QCOMPARE(f.prompt().count(), 1);
        QCOMPARE(f.prompt().last().text,
                 QString("Error 28 (Out of stack space)  procedure ShowBuildView of Module modMain"));
        frmBuildView* w = buildView("Cycle Engine");
        QVERIFY2(w && w->isVisible() && w->treBuildView->topLevelItem(0)->childCount() > 0,
                 "the window stays with what was built");
    }

private:
    frmBuildView* buildView(const QString& name) {
        return qobject_cast<frmBuildView*>(FindChildWindow("Build View (" + name + ")"));
    }
    ViewsFixture f;
};

QTEST_MAIN(TestFrmRecord)
#include "tst_frmrecord.moc"
