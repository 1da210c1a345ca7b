// The build view window: the tree for each kind, one window per root, the clipboard text, and the
// report of a recipe that contains itself (nodes kept).
#include "data/database.h"
#include "data/recordset.h"
#include "data/synthetic.h"
#include "viewsfixture.h"
#include "views/childwindows.h"
#include "views/frmbuildview.h"
#include "views/openviews.h"
#include "views/viewwidgets.h"

#include <QApplication>
#include <QClipboard>
#include <QTest>
#include <QTreeWidget>

class TestFrmBuildView : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void kinds_data();
    void kinds();
    void oneWindowPerRoot();
    void copyToClipboard();
    void cycleReported();

private:
    frmBuildView* window(const QString& name) {
        return qobject_cast<frmBuildView*>(FindChildWindow("Build View (" + name + ")"));
    }
    ViewsFixture f;
};

void TestFrmBuildView::init() {
    QString error;
    QVERIFY2(f.setUp(true, &error), qPrintable(error));
}

void TestFrmBuildView::cleanup() {
    CloseChildWindows();
    QApplication::processEvents();
    f.tearDown();
}

void TestFrmBuildView::kinds_data() {
    QTest::addColumn<QString>("sql");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("rootImage");
    QTest::newRow("equipment") << "SELECT EQUIPMENTS_EQUIPMENT FROM EQUIPMENTS_COMPONENTS ORDER BY EQUIPMENTS_EQUIPMENT DESC"
                               << "Equipment" << 1;
    QTest::newRow("component") << "SELECT COMPONENTS_COMPONENT FROM COMPONENTS_RAW_MATERIALS ORDER BY COMPONENTS_COMPONENT"
                               << "Components" << 2;
    QTest::newRow("refined raw material") << "SELECT RAW_MATERIAL_NAME FROM RAW_MATERIALS_REFINES_FROM ORDER BY RAW_MATERIAL_NAME"
                                          << "Raw Materials" << 3;
}

void TestFrmBuildView::kinds() {
    QFETCH(QString, sql);
    QFETCH(QString, kind);
    QFETCH(int, rootImage);
    const QString name = f.scalar(sql).toString();
    QVERIFY(!name.isEmpty());
    ShowBuildView(name, kind);
    frmBuildView* w = window(name);
    QVERIFY(w);
    QVERIFY(w->isVisible());
    QCOMPARE(f.prompt().count(), 0);
    QCOMPARE(w->treBuildView->topLevelItemCount(), 1);
    QTreeWidgetItem* root = w->treBuildView->topLevelItem(0);
    QCOMPARE(root->text(0), name);
    QCOMPARE(NodeKey(root), name);
    QCOMPARE(NodeImage(root), rootImage);
    QVERIFY(root->childCount() > 0);
    QVERIFY(root->isExpanded());
    for (int i = 0; i < root->childCount(); ++i) {
        QVERIFY(NodeKey(root->child(i)).startsWith(name + "|"));
        QVERIFY(root->child(i)->text(0).contains(" (L"));
    }
    w->grab().save("/tmp/views-buildview-" + QString(QTest::currentDataTag()).replace(' ', '-') + ".png");
}

void TestFrmBuildView::oneWindowPerRoot() {
    const QString name = f.scalar("SELECT EQUIPMENTS_EQUIPMENT FROM EQUIPMENTS_COMPONENTS").toString();
    ShowBuildView(name, "Equipment");
    QWidget* first = window(name);
    ShowBuildView(name, "Equipment");
    QCOMPARE(window(name), first);
    int count = 0;
    for (QWidget* w : QApplication::topLevelWidgets())
        count += w->windowTitle() == "Build View (" + name + ")" && w->isVisible();
    QCOMPARE(count, 1);
}

void TestFrmBuildView::copyToClipboard() {
    const QString name = f.scalar("SELECT EQUIPMENTS_EQUIPMENT FROM EQUIPMENTS_COMPONENTS").toString();
    ShowBuildView(name, "Equipment");
    frmBuildView* w = window(name);
    QVERIFY(w);
    w->mnuEditCopy_Click();
    const QString text = QApplication::clipboard()->text();
    QCOMPARE(text, w->clipboardText());
    const QStringList lines = text.split("\r\n");
    QCOMPARE(lines.last(), QString()); // every line ends with CR LF
    QCOMPARE(lines.first(), name);
    // Each line is indented by its depth: one tab per level below the root.
    QTreeWidgetItem* child = w->treBuildView->topLevelItem(0)->child(0);
    QCOMPARE(lines.at(1), "\t" + child->text(0));
    if (child->childCount() > 0)
        QCOMPARE(lines.at(2), "\t\t" + child->child(0)->text(0));
}

void TestFrmBuildView::cycleReported() {
    QString error;
    db().close();
    QVERIFY2(AddRecipeCycle(f.databaseFile(), RecipeCycle(), &error), qPrintable(error));
    db().open("Provider=VOSK.SQLite;Data Source=" + f.databaseFile() + ";");
    ShowBuildView("Cycle Engine", "Equipment");
    QCOMPARE(f.prompt().count(), 1);
    QCOMPARE(f.prompt().last().text, QString("Error 28 (Out of stack space)  procedure ShowBuildView of Module modMain"));
    frmBuildView* w = window("Cycle Engine");
    QVERIFY2(w, "the window stays with what was built");
    QVERIFY(w->isVisible());
    int nodes = 0;
    for (QTreeWidgetItem* i = w->treBuildView->topLevelItem(0); i; i = i->childCount() ? i->child(0) : nullptr)
        ++nodes;
    QVERIFY2(nodes > 100, qPrintable(QString::number(nodes)));
    ShowBuildView("Cycle Ore A", "Raw Materials");
    QCOMPARE(f.prompt().count(), 2);
    QVERIFY(window("Cycle Ore A"));
}

QTEST_MAIN(TestFrmBuildView)
#include "tst_frmbuildview.moc"
