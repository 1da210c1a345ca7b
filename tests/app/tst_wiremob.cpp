// The MOB editor wired into the main window and the MOB view: Add MOB, Edit Item (menu, pop-up and the
// double click of option 1), the view's Edit button, and the list after a save (sorted as before, the
// saved MOB selected; an open view keeps what it showed).
#include "app/frmmain.h"
#include "core/childwindows.h"
#include "core/settings.h"
#include "editors/editors.h"
#include "editors/frmaddmob.h"
#include "editors/propertylistwidget.h"
#include "lists/listmodel.h"
#include "views/frmmobs.h"
#include "views/openviews.h"
#include "viewsfixture.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeView>

namespace {
frmMOBs* openView(const QString& name) {
    ViewMOBInfo(name);
    frmMOBs* found = nullptr;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* v = qobject_cast<frmMOBs*>(w); v && v->isVisible() && v->windowTitle() == name)
            found = v;
    return found;
}
} // namespace

class TestWireMob : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString e;
        QVERIFY2(f.setUp(true, &e), qPrintable(e));
        w = std::make_unique<frmMain>();
    }
    void cleanup() {
        CloseChildWindows();
        for (QWidget* v : QApplication::topLevelWidgets())
            if (qobject_cast<frmMOBs*>(v))
                v->close();
        QApplication::processEvents();
        w.reset();
        f.tearDown();
    }

    void editItemEntriesOpenTheEditor_data() {
        QTest::addColumn<QString>("how");
        QTest::newRow("Edit menu") << "mnuEditEditItem";
        QTest::newRow("pop-up menu") << "mnuPopupEditItem";
        QTest::newRow("double click of option 1") << "double click";
    }
    void editItemEntriesOpenTheEditor() {
        QFETCH(QString, how);
        SaveSetting("Options", "DoubleClickEvent", "1");
        choose("MOBs");
        const QString name = w->selectedName();
        QVERIFY(w->menuEntry("mnuEditEditItem")->isEnabled());
        QVERIFY(w->menuEntry("mnuPopupEditItem")->isEnabled());
        if (how == "double click")
            w->lstItems_DblClick();
        else
            w->menuEntry(how)->trigger();
        QVERIFY(qobject_cast<frmAddMob*>(FindChildWindow("Edit: " + name)));
        QCOMPARE(f.prompt().count(), 0);
    }

    void addMobMakesANewOneThatTheListSelects() {
        choose("MOBs");
        const int level = w->model()->columnIndex("COMBAT_LEVEL");
        QVERIFY(level >= 0);
        w->model()->sortByColumn(level);
        const int key = w->model()->sortKey();
        const int order = w->model()->sortOrder();
        QAction* add = w->menuEntry("mnuAddMob");
        QVERIFY(add);
        QCOMPARE(add->text(), QString("Add &MOB"));
        QVERIFY(add->isEnabled());
        add->trigger();
        auto* e = qobject_cast<frmAddMob*>(FindChildWindow("New: MOB"));
        QVERIFY(e);
        QVERIFY(e->prpMOB->editValue("MOBS.MOB_NAME", "Zz Hollow's Herald"));
        QVERIFY(e->prpMOB->editValue("COMBAT_LEVEL", "9"));
        QCOMPARE(e->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(w->selectedName(), QString("Zz Hollow's Herald"));
        QCOMPARE(w->model()->sortKey(), key);
        QCOMPARE(w->model()->sortOrder(), order);
        QCOMPARE(f.prompt().count(), 0);
    }

    void viewEditButtonOpensTheEditorAndTheOpenViewKeepsItsFigures() {
        const QString name = f.scalar("SELECT MOB_NAME FROM MOBS ORDER BY MOB_NAME").toString();
        frmMOBs* v = openView(name);
        QVERIFY(v);
        QVERIFY(v->cmdEdit->isEnabled());
        const QString hull = v->txtHull->text();
        v->cmdEdit->click();
        auto* e = qobject_cast<frmAddMob*>(FindChildWindow("Edit: " + name));
        QVERIFY(e);
        QVERIFY(e->prpMOB->editValue("HULL", "123456"));
        QCOMPARE(e->cmdSave_Click(), SaveResult::Saved);
        // Filled once: the open view keeps what it showed; a view opened now shows the change.
        QCOMPARE(v->txtHull->text(), hull);
        v->close();
        frmMOBs* again = openView(name);
        QVERIFY(again && again != v);
        QCOMPARE(again->txtHull->text(), QString("123456"));
        QCOMPARE(f.prompt().count(), 0);
    }

private:
    void choose(const QString& category) {
        w->cmbData->setCurrentIndex(w->cmbData->findText(category));
        QCOMPARE(w->category(), category);
        w->lstItems->setCurrentIndex(w->model()->index(0, 0));
        QVERIFY(!w->selectedName().isEmpty());
    }

    ViewsFixture f;
    std::unique_ptr<frmMain> w;
};

QTEST_MAIN(TestWireMob)
#include "tst_wiremob.moc"
