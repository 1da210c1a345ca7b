// The equipment editor wired into the main window and the equipment view: Add Equipment starts as the
// type the list is filtered to, Edit Item and the double click of option 1 open the selected record,
// the view's Edit button opens its record, and after a save the list selects it.
#include "app/frmmain.h"
#include "core/childwindows.h"
#include "core/settings.h"
#include "editors/frmaddequip.h"
#include "editors/propertylistwidget.h"
#include "lists/listmodel.h"
#include "views/equiptypes.h"
#include "views/frmequipment.h"
#include "views/openviews.h"
#include "viewsfixture.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTreeView>

class TestWireEquip : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString e;
        QVERIFY2(f.setUp(true, &e), qPrintable(e));
        w = std::make_unique<frmMain>();
    }
    void cleanup() {
        CloseChildWindows();
        QApplication::processEvents();
        w.reset();
        f.tearDown();
    }

    void addEquipmentStartsAsTheListsType_data() {
        QTest::addColumn<QString>("category");
        QTest::addColumn<QString>("type"); // the equipment type filter
        QTest::addColumn<QString>("caption");
        QTest::newRow("missiles listed") << "Equipment"
                                         << "Missile"
                                         << "New: Missile";
        QTest::newRow("ammunition listed") << "Equipment"
                                           << "Ammunition"
                                           << "New: Ammunition";
        QTest::newRow("every type listed") << "Equipment"
                                           << "All"
                                           << "New: Beam";
        QTest::newRow("another category") << "Raw Materials"
                                          << "Shield"
                                          << "New: Beam";
    }
    void addEquipmentStartsAsTheListsType() {
        QFETCH(QString, category);
        QFETCH(QString, type);
        QFETCH(QString, caption);
        w->cmbData->setCurrentIndex(w->cmbData->findText("Equipment"));
        w->cmbEquipType->setCurrentIndex(w->cmbEquipType->findText(type));
        w->cmbData->setCurrentIndex(w->cmbData->findText(category));
        QVERIFY(w->menuEntry("mnuAddEquip")->isEnabled());
        w->menuEntry("mnuAddEquip")->trigger();
        auto* e = qobject_cast<frmAddEquip*>(FindChildWindow(caption));
        QVERIFY(e);
        QVERIFY(e->isNew());
        QCOMPARE(f.prompt().count(), 0);
    }

    void editItemAndTheDoubleClickOpenTheSelectedRecord() {
        choose("Equipment");
        const QString name = w->selectedName();
        w->menuEntry("mnuEditEditItem")->trigger();
        QVERIFY(qobject_cast<frmAddEquip*>(FindChildWindow("Edit: " + name)));
        CloseChildWindows();
        QApplication::processEvents();
        SaveSetting("Options", "DoubleClickEvent", "1");
        w->lstItems_DblClick();
        QVERIFY(qobject_cast<frmAddEquip*>(FindChildWindow("Edit: " + name)));
        QCOMPARE(f.prompt().count(), 0);
    }

    void theViewsEditButtonOpensItsRecordAndTheListSelectsItAfterTheSave() {
        choose("Equipment");
        const QString name = "Ion Drive Mk II";
        ViewEquipDetails(name, FindType(name), DeEnumerate(FindType(name)));
        auto* view = qobject_cast<frmEquipment*>(FindChildWindow("Engine: " + name));
        QVERIFY(view && view->cmdEdit->isEnabled());
        const QString shownBefore = view->lblType->text();
        view->cmdEdit->click();
        auto* e = qobject_cast<frmAddEquip*>(FindChildWindow("Edit: " + name));
        QVERIFY(e);
        QVERIFY(e->prpList->editValue("LVL", "77"));
        QCOMPARE(e->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(w->selectedName(), name);
        // The open view keeps what it showed; a view opened now shows the new level.
        QCOMPARE(view->lblType->text(), shownBefore);
        view->close();
        QApplication::processEvents();
        ViewEquipDetails(name, FindType(name), DeEnumerate(FindType(name)));
        view = qobject_cast<frmEquipment*>(FindChildWindow("Engine: " + name));
        QVERIFY(view);
        QCOMPARE(view->lblType->text(), QString("Level 77 Engine"));
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

QTEST_MAIN(TestWireEquip)
#include "tst_wireequip.moc"
