// The editors and record operations behind the main window's menus and the views' Edit buttons, over
// the sample world: which entry opens which editor, the list after a save (sorted as before, the saved
// record selected), and Delete, Copy, Rename, Backup and Restore.
#include "app/frmmain.h"
#include "core/childwindows.h"
#include "core/programfolder.h"
#include "core/settings.h"
#include "data/database.h"
#include "editors/editors.h"
#include "editors/editorwindow.h"
#include "editors/frmaddequip.h"
#include "editors/frmaddmob.h"
#include "editors/frmaddrawmaterials.h"
#include "editors/frmaddstation.h"
#include "editors/frmrename.h"
#include "lists/listmodel.h"
#include "views/equiptypes.h"
#include "views/frmequipment.h"
#include "views/frmmobs.h"
#include "views/frmrecord.h"
#include "views/openviews.h"
#include "viewsfixture.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeView>

namespace {
template <typename T> T* window(const QString& title) {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* t = qobject_cast<T*>(w); t && t->isVisible() && t->windowTitle() == title)
            return t;
    return nullptr;
}

// Presses the Edit button of the shown view with this title; false when there is no such view.
template <typename T> bool clickEdit(const QString& title) {
    T* view = window<T>(title);
    if (view)
        view->cmdEdit->click();
    return view;
}
} // namespace

class TestWireEditors : public QObject {
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

    void editEntriesOpenTheEditor_data() {
        QTest::addColumn<QString>("category");
        QTest::addColumn<QString>("how"); // a menu entry, or the double click of option 1
        QTest::addColumn<QString>("editor");
        const auto row = [](const char* name, const char* category, const char* how, const char* editor) {
            QTest::newRow(name) << QString(category) << QString(how) << QString(editor);
        };
        row("equipment, Edit menu", "Equipment", "mnuEditEditItem", "frmAddEquip");
        row("components, pop-up", "Components", "mnuPopupEditItem", "frmAddComponent");
        row("raw materials, double click", "Raw Materials", "", "frmAddRawMaterials");
        row("items, Edit menu", "Items", "mnuEditEditItem", "frmAddItem");
        row("stations, double click", "Stations", "", "frmAddStation");
        row("MOBs, pop-up", "MOBs", "mnuPopupEditItem", "frmAddMob");
    }
    void editEntriesOpenTheEditor() {
        QFETCH(QString, category);
        QFETCH(QString, how);
        QFETCH(QString, editor);
        SaveSetting("Options", "DoubleClickEvent", "1");
        choose(category);
        const QString name = w->selectedName();
        QVERIFY(CanEdit(category));
        for (const char* entry : {"mnuEditEditItem", "mnuPopupEditItem", "mnuAddEquip", "mnuAddRawMaterial",
                                  "mnuAddComps", "mnuAddItem", "mnuAddStation", "mnuAddMob"})
            QVERIFY2(w->menuEntry(entry)->isEnabled(), entry);
        if (how.isEmpty())
            w->lstItems_DblClick();
        else
            w->menuEntry(how)->trigger();
        QWidget* e = FindChildWindow("Edit: " + name);
        QVERIFY(e);
        QCOMPARE(QString(e->metaObject()->className()), editor);
        QCOMPARE(f.prompt().count(), 0);
    }

    // Add Equipment starts as the type the list is filtered to.
    void addEntriesOpenANewRecord_data() {
        QTest::addColumn<QString>("category");
        QTest::addColumn<QString>("type"); // the equipment type filter
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("title");
        const auto row = [](const char* name, const char* category, const char* type, const char* entry,
                            const char* title) {
            QTest::newRow(name) << QString(category) << QString(type) << QString(entry) << QString(title);
        };
        row("missiles listed", "Equipment", "Missile", "mnuAddEquip", "New: Missile");
        row("every type listed", "Equipment", "All", "mnuAddEquip", "New: Beam");
        row("another category", "Raw Materials", "Shield", "mnuAddEquip", "New: Beam");
        row("MOB", "MOBs", "All", "mnuAddMob", "New: MOB");
    }
    void addEntriesOpenANewRecord() {
        QFETCH(QString, category);
        QFETCH(QString, type);
        QFETCH(QString, entry);
        QFETCH(QString, title);
        w->cmbData->setCurrentIndex(w->cmbData->findText("Equipment"));
        w->cmbEquipType->setCurrentIndex(w->cmbEquipType->findText(type));
        w->cmbData->setCurrentIndex(w->cmbData->findText(category));
        w->menuEntry(entry)->trigger();
        QVERIFY(FindChildWindow(title));
        QCOMPARE(f.prompt().count(), 0);
    }

    // The editors say which record they saved (checked with them); the list reads itself again.
    void aSavedRecordIsSelectedInTheListSortedAsBefore() {
        choose("Raw Materials");
        const int price = w->model()->columnIndex("PRICE");
        w->model()->sortByColumn(price);
        const int order = w->model()->sortOrder();
        w->menuEntry("mnuAddRawMaterial")->trigger();
        auto* e = qobject_cast<frmAddRawMaterials*>(FindChildWindow("Add Raw Material"));
        QVERIFY(e);
        e->txtName->setText("Zz Rock's Salt");
        e->txtPrice->setText("999999");
        QCOMPARE(e->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(w->selectedName(), QString("Zz Rock's Salt"));
        QCOMPARE(w->model()->sortKey(), price);
        QCOMPARE(w->model()->sortOrder(), order);
        // The dearest of all: first or last as the list is sorted.
        QCOMPARE(w->lstItems->currentIndex().row(),
                 order == ListModel::Descending ? 0 : w->model()->rowCount() - 1);

        QCOMPARE(f.prompt().count(), 0);
    }

    // Each view's Edit button opens the editor of its record.
    void viewsEditButtonsOpenTheEditor() {
        const QString comp =
            f.scalar("SELECT COMPONENT_NAME FROM COMPONENTS ORDER BY COMPONENT_NAME").toString();
        ViewComponent(comp);
        QVERIFY(clickEdit<frmRecordView>("Component: " + comp));
        QVERIFY(FindChildWindow("Edit: " + comp));
        ViewStation("Kell's Anchorage");
        QVERIFY(clickEdit<frmRecordView>("Station: Kell's Anchorage"));
        QVERIFY(qobject_cast<frmAddStation*>(FindChildWindow("Edit: Kell's Anchorage")));

        const QString raw =
            f.scalar("SELECT RAW_MATERIAL_NAME FROM RAW_MATERIALS ORDER BY RAW_MATERIAL_NAME").toString();
        ViewRawMaterial(raw);
        QVERIFY(clickEdit<frmRecordView>("Raw Material: " + raw));
        QVERIFY(qobject_cast<frmAddRawMaterials*>(FindChildWindow("Edit: " + raw)));

        const QString equip = "Ion Drive Mk II";
        ViewEquipDetails(equip, FindType(equip), DeEnumerate(FindType(equip)));
        QVERIFY(clickEdit<frmEquipment>("Engine: " + equip));
        QVERIFY(qobject_cast<frmAddEquip*>(FindChildWindow("Edit: " + equip)));
        const QString mob = f.scalar("SELECT MOB_NAME FROM MOBS ORDER BY MOB_NAME").toString();
        ViewMOBInfo(mob);
        QVERIFY(clickEdit<frmMOBs>(mob));
        QVERIFY(qobject_cast<frmAddMob*>(FindChildWindow("Edit: " + mob)));
        QCOMPARE(f.prompt().count(), 0);
    }

    void copyAndRenameShowTheResultSelected_data() {
        QTest::addColumn<QString>("category");
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("query");
        // A record of each kind that no equipment upgrades from (those cannot be copied).
        const QString pick =
            "SELECT %2 FROM %1 WHERE %2 NOT IN (SELECT UPGRADE_FROM FROM EQUIPMENTS_UPGRADE_FROM) "
            "ORDER BY %2";
        const QList<QStringList> kinds = {{"Equipment", "EQUIPMENTS", "EQUIPMENT_NAME"},
                                          {"Components", "COMPONENTS", "COMPONENT_NAME"},
                                          {"Raw Materials", "RAW_MATERIALS", "RAW_MATERIAL_NAME"},
                                          {"Items", "ITEMS", "ITEM_NAME"},
                                          {"MOBs", "MOBS", "MOB_NAME"}};
        for (const QStringList& k : kinds)
            for (const char* entry : {"mnuEditCopy", "mnuPopupRename"})
                QTest::addRow("%s %s", entry, qPrintable(k[0]))
                    << k[0] << QString(entry) << pick.arg(k[1], k[2]);
    }
    void copyAndRenameShowTheResultSelected() {
        QFETCH(QString, category);
        QFETCH(QString, entry);
        QFETCH(QString, query);
        choose(category);
        const QString old = f.scalar(query).toString();
        QVERIFY(select(old));
        const QString renamed = old + (entry == "mnuEditCopy" ? " Mk II" : " Renamed");
        answerRename(renamed);
        QVERIFY(w->menuEntry(entry)->isEnabled());
        w->menuEntry(entry)->trigger();
        QCOMPARE(w->selectedName(), renamed);
        QCOMPARE(rowOf(old) >= 0, entry == "mnuEditCopy");
        // Only the equipment copy says so.
        QCOMPARE(f.prompt().count(), category == "Equipment" && entry == "mnuEditCopy" ? 1 : 0);
    }

    void refusedCopyKeepsTheSelection() {
        choose("Equipment");
        const QString source =
            f.scalar("SELECT UPGRADE_FROM FROM EQUIPMENTS_UPGRADE_FROM WHERE UPGRADE_FROM IN "
                     "(SELECT EQUIPMENT_NAME FROM EQUIPMENTS)")
                .toString();
        QVERIFY(select(source));
        const int rows = w->model()->rowCount();
        answerRename(source + " Copy");
        w->menuEntry("mnuPopupCopy")->trigger();
        QCOMPARE(f.prompt().count(), 1);
        QCOMPARE(f.prompt().last().title, QString("Cannot Copy"));
        QCOMPARE(w->model()->rowCount(), rows);
        QCOMPARE(w->selectedName(), source);
    }

    void deleteThenRestoreTheBackup() {
        choose("Raw Materials");
        const QString name = w->model()->name(0);
        const QString backup = f.path() + "/menu.bak";
        QVERIFY(w->menuEntry("mnuFileBackupDB")->isEnabled() &&
                w->menuEntry("mnuFileRestoreDB")->isEnabled());
        // A component type the window has not listed yet: the restore fills the filter lists again.
        db().execute("INSERT INTO COMPONENT_TYPES (COMPONENT_TYPE) VALUES ('Restored Type')");
        f.prompt().queueText(backup);
        w->menuEntry("mnuFileBackupDB")->trigger();
        QVERIFY(QFile::exists(backup));
        QVERIFY(select(name));
        w->menuEntry("mnuEditDelete")->trigger(); // the scripted answer to "Are you sure" is Yes
        QCOMPARE(f.prompt().last().title, QString("Delete?"));
        QCOMPARE(rowOf(name), -1);
        f.prompt().queueText(backup);
        w->menuEntry("mnuFileRestoreDB")->trigger();
        QVERIFY(db().isOpen());
        QVERIFY(rowOf(name) >= 0); // the list shows the restored database
        QVERIFY(w->cmbCompType->findText("Restored Type") >= 0);
        QCOMPARE(w->category(), QString("Raw Materials"));
        QVERIFY(!QFile::exists(databasePath() + ".temp"));
    }

private:
    void choose(const QString& category) {
        w->cmbData->setCurrentIndex(w->cmbData->findText(category));
        QCOMPARE(w->category(), category);
        w->lstItems->setCurrentIndex(w->model()->index(0, 0));
        QVERIFY(!w->selectedName().isEmpty());
    }
    int rowOf(const QString& name) const {
        for (int r = 0; r < w->model()->rowCount(); ++r)
            if (w->model()->name(r) == name)
                return r;
        return -1;
    }
    bool select(const QString& name) {
        const int row = rowOf(name);
        if (row < 0)
            return false;
        w->lstItems->setCurrentIndex(w->model()->index(row, 0));
        w->mnuPopup->aboutToShow();
        return w->selectedName() == name;
    }
    // Types the name into the new-name dialog once it is up, and presses OK.
    void answerRename(const QString& name) {
        QTimer::singleShot(0, [name] {
            if (auto* d = qobject_cast<frmRename*>(QApplication::activeModalWidget())) {
                d->txtName->setText(name);
                d->cmdOK->click();
            } // otherwise the caller finds the name unchanged
        });
    }

    ViewsFixture f;
    std::unique_ptr<frmMain> w;
};

QTEST_MAIN(TestWireEditors)
#include "tst_wireeditors.moc"
