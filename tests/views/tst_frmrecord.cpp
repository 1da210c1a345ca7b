// The component, raw-material, item and station views on the sample world: each opens by its name in
// one window of its own, a missing record is reported, and the trees and lists lead to other views.
#include "views/equiptypes.h"
#include "views/frmrecord.h"
#include "views/openviews.h"
#include "views/viewwidgets.h"
#include "viewsfixture.h"
#include "viewswindows.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>

namespace {
void openKind(const QString& kind, const QString& name) {
    if (kind == "Component")
        ViewComponent(name);
    else if (kind == "Raw Material")
        ViewRawMaterial(name);
    else if (kind == "Item")
        ViewItem(name);
    else
        ViewStation(name);
}

frmRecordView* view(const QString& kind, const QString& name) {
    openKind(kind, name);
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
        closeViews();
        f.tearDown();
    }
    void views_data() {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("sql");
        QTest::addColumn<QString>("procedure");
        QTest::newRow("component") << "Component"
                                   << "SELECT COMPONENT_NAME FROM COMPONENTS ORDER BY COMPONENT_NAME"
                                   << "ViewComponent";
        QTest::newRow("raw material")
            << "Raw Material"
            << "SELECT RAW_MATERIAL_NAME FROM RAW_MATERIALS_REFINES_FROM ORDER BY RAW_MATERIAL_NAME"
            << "ViewRawMaterial";
        QTest::newRow("item") << "Item"
                              << "SELECT ITEM_NAME FROM ITEMS ORDER BY ITEM_NAME"
                              << "ViewItem";
        QTest::newRow("station")
            << "Station"
            << "SELECT STATIONS_STATION FROM BUY_EQUIPMENT_LOCATION ORDER BY STATIONS_STATION"
            << "ViewStation";
    }
    void views() {
        QFETCH(QString, kind);
        QFETCH(QString, sql);
        QFETCH(QString, procedure);
        const QString name = f.scalar(sql).toString();
        QVERIFY(!name.isEmpty());
        auto* w = view(kind, name);
        QCOMPARE(f.prompt().count(), 0);
        QVERIFY2(w && w->isVisible(), qPrintable(kind + ": " + name));
        QVERIFY(!w->fields().isEmpty());
        // The first field is a level (right-aligned figure) but for a station, whose sector is a text.
        auto* first = w->findChild<QLineEdit*>("txtField_0");
        QVERIFY(first);
        QCOMPARE(bool(first->alignment() & Qt::AlignRight), kind != "Station");
        QVERIFY(w->treUsedIn->topLevelItemCount() > 0);
        QCOMPARE(w->cmdEdit->isHidden(), kind == "Station");
        QVERIFY(!w->cmdEdit->isEnabled()); // no editor yet
        openKind(kind, name);              // a second request brings the same window forward
        QCOMPARE(FindChildWindow(kind + ": " + name), w);
        QCOMPARE(visibleWindows(kind + ": " + name), 1);
        openKind(kind, "Nothing Here"); // a missing record is reported and opens nothing
        QCOMPARE(f.prompt().count(), 1);
        QVERIFY2(f.prompt().last().text.endsWith("procedure " + procedure + " of Module modMain"),
                 qPrintable(f.prompt().last().text));
        QVERIFY(!FindChildWindow(kind + ": Nothing Here"));
    }
    void navigation() {
        // From a station's "Sells" tree to the equipment view, by the marker of the node's key.
        const QString station =
            f.scalar("SELECT STATIONS_STATION FROM BUY_EQUIPMENT_LOCATION ORDER BY STATIONS_STATION")
                .toString();
        auto* w = view("Station", station);
        QVERIFY(w);
        QTreeWidgetItem* group = w->treUsedIn->topLevelItem(0);
        QCOMPARE(group->text(0), QString("Equipment"));
        QTreeWidgetItem* equipment = group->child(0);
        Q_EMIT w->treUsedIn->itemDoubleClicked(equipment, 0);
        QCOMPARE(f.prompt().count(), 0);
        const QString name = equipment->text(0);
        QCOMPARE(visibleWindows(DeEnumerate(FindType(name)) + ": " + name, "frmEquipment"), 1);

        // From a component's "Bought At" list to the station view.
        const QString comp =
            f.scalar("SELECT COMPONENTS_COMPONENT FROM BUY_COMPONENT_LOCATIONS ORDER BY COMPONENTS_COMPONENT")
                .toString();
        auto* c = view("Component", comp);
        QVERIFY(c && c->lstBuyLocations->count() > 0);
        const QString where = c->lstBuyLocations->item(0)->text();
        Q_EMIT c->lstBuyLocations->itemDoubleClicked(c->lstBuyLocations->item(0));
        QVERIFY(FindChildWindow("Station: " + where));

        // From a blueprint node to its record by the node's picture.
        QTreeWidgetItem* root = c->treBlueprint->topLevelItem(0);
        QVERIFY(root->childCount() > 0);
        Q_EMIT c->treBlueprint->itemDoubleClicked(root->child(0), 0);
        QCOMPARE(f.prompt().count(), 0);
    }
    // A list without records says so, like the trees, and its placeholder opens nothing.
    void emptyListSaysSo() {
        const QString item =
            f.scalar(
                 "SELECT ITEM_NAME FROM ITEMS WHERE ITEM_NAME NOT IN (SELECT ITEM_NAME FROM BUY_ITEM_LOCATIONS) "
                 "ORDER BY ITEM_NAME")
                .toString();
        QVERIFY(!item.isEmpty());
        auto* w = view("Item", item);
        QVERIFY(w);
        QCOMPARE(w->lstBuyLocations->count(), 1);
        QListWidgetItem* none = w->lstBuyLocations->item(0);
        QCOMPARE(none->text(), QString("No Records Found"));
        QVERIFY(IsPlaceholder(none) && !(none->flags() & Qt::ItemIsSelectable));
        QCOMPARE(RecordCount(w->lstBuyLocations), 0);
        Q_EMIT w->lstBuyLocations->itemDoubleClicked(none);
        QVERIFY(!FindChildWindow("Station: No Records Found"));
        QCOMPARE(f.prompt().count(), 0);
    }

private:
    ViewsFixture f;
};

QTEST_MAIN(TestFrmRecord)
#include "tst_frmrecord.moc"
