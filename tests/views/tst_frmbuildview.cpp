// The build view window: the tree for each kind, one window per root, the clipboard text, and the
// report of a recipe that contains itself (nodes kept).
#include "views/frmbuildview.h"
#include "views/openviews.h"
#include "views/viewwidgets.h"
#include "viewsfixture.h"
#include "viewswindows.h"

#include <QClipboard>
#include <QTest>
#include <QTreeWidget>

class TestFrmBuildView : public QObject {
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
    void kinds_data() {
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
    void kinds() {
        QFETCH(QString, sql);
        QFETCH(QString, kind);
        QFETCH(int, rootImage);
        const QString name = f.scalar(sql).toString();
        QVERIFY(!name.isEmpty());
        ShowBuildView(name, kind);
        frmBuildView* w = window(name);
        QVERIFY(w && w->isVisible());
        QCOMPARE(f.prompt().count(), 0);
        QCOMPARE(w->treBuildView->topLevelItemCount(), 1);
        QTreeWidgetItem* root = w->treBuildView->topLevelItem(0);
        QCOMPARE(root->text(0) + "/" + NodeKey(root) + "/" + QString::number(NodeImage(root)),
                 name + "/" + name + "/" + QString::number(rootImage));
        QVERIFY(root->childCount() > 0 && root->isExpanded());
        QVERIFY(NodeKey(root->child(0)).startsWith(name + "|"));
    }
    // A second request brings the open window forward; Copy puts the tree on the clipboard, each line
    // indented by one tab per level below the root and ended by CR LF.
    void secondRequestAndCopy() {
        const QString name = f.scalar("SELECT EQUIPMENTS_EQUIPMENT FROM EQUIPMENTS_COMPONENTS").toString();
        ShowBuildView(name, "Equipment");
        frmBuildView* w = window(name);
        ShowBuildView(name, "Equipment");
        QVERIFY(w && window(name) == w);
        QCOMPARE(visibleWindows("Build View (" + name + ")"), 1);
        QApplication::clipboard()->clear();
        w->mnuEditCopy_Click();
        const QStringList lines = QApplication::clipboard()->text().split("\r\n");
        QTreeWidgetItem* child = w->treBuildView->topLevelItem(0)->child(0);
        QCOMPARE(lines.mid(0, 2), (QStringList{name, "\t" + child->text(0)}));
        if (child->childCount() > 0)
            QCOMPARE(lines.at(2), "\t\t" + child->child(0)->text(0));
        QCOMPARE(lines.last(), QString());
    }
    void cycleReported() {
        QString error;
        QVERIFY2(f.addRecipeCycle(&error), qPrintable(error));
        ShowBuildView("Cycle Engine", "Equipment");
        QCOMPARE(f.prompt().count(), 1);
        QCOMPARE(f.prompt().last().text,
                 QString("Error 28 (Out of stack space)  procedure ShowBuildView of Module modMain"));
        frmBuildView* w = window("Cycle Engine");
        QVERIFY2(w && w->isVisible(), "the window stays with what was built");
        int nodes = 0;
        for (QTreeWidgetItem* i = w->treBuildView->topLevelItem(0); i;
             i = i->childCount() ? i->child(0) : nullptr)
            ++nodes;
        QVERIFY2(nodes > 100, qPrintable(QString::number(nodes)));
        ShowBuildView("Cycle Ore A", "Raw Materials");
        QCOMPARE(f.prompt().count(), 2);
        QVERIFY(window("Cycle Ore A"));
    }

private:
    frmBuildView* window(const QString& name) {
        return qobject_cast<frmBuildView*>(FindChildWindow("Build View (" + name + ")"));
    }
    ViewsFixture f;
};

QTEST_MAIN(TestFrmBuildView)
#include "tst_frmbuildview.moc"
