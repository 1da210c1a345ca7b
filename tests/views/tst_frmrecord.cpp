// The component, raw-material, item and station views on the sample world: captions, one window per
// record, fields, places, trees, and the navigation into other views.
#include "data/recordset.h"
#include "viewsfixture.h"
#include "views/childwindows.h"
#include "views/frmrecord.h"
#include "views/openviews.h"
#include "views/viewwidgets.h"

#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>

class TestFrmRecord : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void views_data();
    void views();
    void oneWindowPerRecord();
    void component();
    void rawMaterial();
    void station();
    void navigation();
    void missing_data();
    void missing();

private:
    ViewsFixture f;
};

void TestFrmRecord::init() {
    QString error;
    QVERIFY2(f.setUp(true, &error), qPrintable(error));
}

void TestFrmRecord::cleanup() {
    CloseChildWindows();
    QApplication::processEvents();
    f.tearDown();
}

namespace {
void openKind(const QString& kind, const QString& name) {
    if (kind == "Component") ViewComponent(name);
    else if (kind == "Raw Material") ViewRawMaterial(name);
    else if (kind == "Item") ViewItem(name);
    else ViewStation(name);
}
} // namespace

void TestFrmRecord::views_data() {
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("sql");
    QTest::newRow("component") << "Component" << "SELECT COMPONENT_NAME FROM COMPONENTS ORDER BY COMPONENT_NAME";
    QTest::newRow("raw material") << "Raw Material" << "SELECT RAW_MATERIAL_NAME FROM RAW_MATERIALS_REFINES_FROM ORDER BY RAW_MATERIAL_NAME";
    QTest::newRow("item") << "Item" << "SELECT ITEM_NAME FROM ITEMS ORDER BY ITEM_NAME";
    QTest::newRow("station") << "Station" << "SELECT STATIONS_STATION FROM BUY_EQUIPMENT_LOCATION ORDER BY STATIONS_STATION";
}

void TestFrmRecord::views() {
    QFETCH(QString, kind);
    QFETCH(QString, sql);
    const QString name = f.scalar(sql).toString();
    QVERIFY(!name.isEmpty());
    openKind(kind, name);
    QCOMPARE(f.prompt().count(), 0);
    auto* w = qobject_cast<frmRecordView*>(FindChildWindow(kind + ": " + name));
    QVERIFY2(w, qPrintable(kind + ": " + name));
    QVERIFY(w->isVisible());
    QVERIFY(!w->fields().isEmpty());
    QVERIFY(w->treUsedIn->topLevelItemCount() > 0);
    QCOMPARE(w->cmdEdit->isHidden(), kind == "Station");
    QVERIFY(!w->cmdEdit->isEnabled()); // no editor yet
    QString file = "/tmp/views-" + QString(QTest::currentDataTag()).replace(' ', '-') + ".png";
    w->grab().save(file);
    for (int i = 2; i < w->tabRecord->count(); ++i) {
        w->tabRecord->setCurrentIndex(i);
        w->grab().save(QString(file).replace(".png", QString("-%1.png").arg(i)));
    }
}

void TestFrmRecord::oneWindowPerRecord() {
    const QString name = f.scalar("SELECT ITEM_NAME FROM ITEMS ORDER BY ITEM_NAME").toString();
    ViewItem(name);
    QWidget* first = FindChildWindow("Item: " + name);
    ViewItem(name);
    QCOMPARE(FindChildWindow("Item: " + name), first);
    int count = 0;
    for (QWidget* w : QApplication::topLevelWidgets())
        count += w->windowTitle() == "Item: " + name && w->isVisible();
    QCOMPARE(count, 1);
}

void TestFrmRecord::component() {
    QString error;
    QVERIFY2(f.exec({"INSERT INTO COMPONENTS (COMPONENT_NAME, LVL, PRICE) VALUES ('Bare Coil', 4, -1)",
                     "INSERT INTO BUY_COMPONENT_LOCATIONS (COMPONENTS_COMPONENT, STATIONS_STATION) VALUES ('Bare Coil', 'Nowhere Dock')"},
                    &error),
             qPrintable(error));
    ViewComponent("Bare Coil");
    auto* w = qobject_cast<frmRecordView*>(FindChildWindow("Component: Bare Coil"));
    QVERIFY(w);
    QCOMPARE(w->lblType->text(), QString("Level 4 Component"));
    const auto fields = w->fields();
    QVERIFY(fields.contains(qMakePair(QString("Type"), QString("Unknown"))));
    QVERIFY(fields.contains(qMakePair(QString("Price"), QString("Loot Only"))));
    QCOMPARE(w->lstBuyLocations->count(), 1);
    QCOMPARE(w->treBlueprint->topLevelItemCount(), 1);
    QCOMPARE(w->treBlueprint->topLevelItem(0)->childCount(), 0);
    QCOMPARE(w->treMOBs->topLevelItem(0)->text(0), QString("No Records Found"));
}

void TestFrmRecord::rawMaterial() {
    const QString refined = f.scalar("SELECT RAW_MATERIAL_NAME FROM RAW_MATERIALS_REFINES_FROM ORDER BY RAW_MATERIAL_NAME").toString();
    ViewRawMaterial(refined);
    auto* w = qobject_cast<frmRecordView*>(FindChildWindow("Raw Material: " + refined));
    QVERIFY(w);
    QVERIFY(w->lblType->text().endsWith(" Refined Raw Material"));
    QCOMPARE(NodeImage(w->treBlueprint->topLevelItem(0)), 3);
    QVERIFY(w->treBlueprint->topLevelItem(0)->childCount() > 0);
    QVERIFY(w->lstMineLocations);

    const QString mined = f.scalar("SELECT RAW_MATERIAL FROM MINE_LOCATIONS ORDER BY RAW_MATERIAL").toString();
    ViewRawMaterial(mined);
    auto* m = qobject_cast<frmRecordView*>(FindChildWindow("Raw Material: " + mined));
    QVERIFY(m);
    QVERIFY(m->lstMineLocations->count() > 0);
}

void TestFrmRecord::station() {
    const QString name = f.scalar("SELECT STATION_NAME FROM STATIONS ORDER BY STATION_NAME").toString();
    const QString sector = f.scalar("SELECT SECTORS_SECTOR FROM STATIONS WHERE STATION_NAME = '" + QString(name).replace("'", "''") + "'").toString();
    const QString system = f.scalar("SELECT SYSTEM_SYSTEM_NAME FROM SECTORS WHERE SECTOR_NAME = '" + QString(sector).replace("'", "''") + "'").toString();
    ViewStation(name);
    auto* w = qobject_cast<frmRecordView*>(FindChildWindow("Station: " + name));
    QVERIFY(w);
    QVERIFY(w->fields().contains(qMakePair(QString("Sector"), sector)));
    QVERIFY(w->fields().contains(qMakePair(QString("System"), system)));
    QVERIFY(w->lstTerminals);
    QVERIFY(w->cmdBuildView->isHidden());
}

void TestFrmRecord::navigation() {
    // From a station's "Sells" tree to the equipment view, by the marker of the node's key.
    const QString station = f.scalar("SELECT STATIONS_STATION FROM BUY_EQUIPMENT_LOCATION ORDER BY STATIONS_STATION").toString();
    ViewStation(station);
    auto* w = qobject_cast<frmRecordView*>(FindChildWindow("Station: " + station));
    QVERIFY(w);
    QTreeWidgetItem* group = w->treUsedIn->topLevelItem(0);
    QCOMPARE(group->text(0), QString("Equipment"));
    QTreeWidgetItem* equipment = group->child(0);
    Q_EMIT w->treUsedIn->itemDoubleClicked(equipment, 0);
    QCOMPARE(f.prompt().count(), 0);
    bool opened = false;
    for (QWidget* top : QApplication::topLevelWidgets())
        opened |= top->isVisible() && top->windowTitle().endsWith(": " + equipment->text(0)) &&
                  top->objectName() == "frmEquipment";
    QVERIFY2(opened, qPrintable(equipment->text(0)));

    // From a component's "Bought At" list to the station view.
    const QString comp = f.scalar("SELECT COMPONENTS_COMPONENT FROM BUY_COMPONENT_LOCATIONS ORDER BY COMPONENTS_COMPONENT").toString();
    ViewComponent(comp);
    auto* c = qobject_cast<frmRecordView*>(FindChildWindow("Component: " + comp));
    QVERIFY(c && c->lstBuyLocations->count() > 0);
    const QString where = c->lstBuyLocations->item(0)->text();
    Q_EMIT c->lstBuyLocations->itemDoubleClicked(c->lstBuyLocations->item(0));
    QVERIFY(FindChildWindow("Station: " + where));

    // From a blueprint node to its record by the node's picture.
    QTreeWidgetItem* root = c->treBlueprint->topLevelItem(0);
    if (root->childCount() > 0) {
        Q_EMIT c->treBlueprint->itemDoubleClicked(root->child(0), 0);
        QCOMPARE(f.prompt().count(), 0);
    }
}

void TestFrmRecord::missing_data() {
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("procedure");
    QTest::newRow("component") << "Component" << "ViewComponent";
    QTest::newRow("raw material") << "Raw Material" << "ViewRawMaterial";
    QTest::newRow("item") << "Item" << "ViewItem";
    QTest::newRow("station") << "Station" << "ViewStation";
}

void TestFrmRecord::missing() {
    QFETCH(QString, kind);
    QFETCH(QString, procedure);
    openKind(kind, "Nothing Here");
    QCOMPARE(f.prompt().count(), 1);
    QVERIFY2(f.prompt().last().text.contains("procedure " + procedure + " of Module modMain"), qPrintable(f.prompt().last().text));
    QVERIFY(!FindChildWindow(kind + ": Nothing Here"));
}

QTEST_MAIN(TestFrmRecord)
#include "tst_frmrecord.moc"
