// The editors wired into the main window and the views: which Add and Edit entries are enabled, the
// views' Edit buttons, the double click of option 1, and the list after a save (sorted as before, the
// saved record selected).
#include "app/frmmain.h"
#include "core/childwindows.h"
#include "core/settings.h"
#include "editors/editors.h"
#include "editors/editorwindow.h"
#include "editors/frmaddrawmaterials.h"
#include "lists/listmodel.h"
#include "views/frmrecord.h"
#include "views/openviews.h"
#include "viewsfixture.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeView>

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
        QApplication::processEvents();
        w.reset();
        f.tearDown();
    }

    void entriesFollowTheKindsThatHaveEditors_data() {
        QTest::addColumn<QString>("category");
        QTest::addColumn<bool>("editable");
        QTest::newRow("raw materials") << "Raw Materials" << true;
        QTest::newRow("equipment") << "Equipment" << false;
        QTest::newRow("components") << "Components" << false;
        QTest::newRow("stations") << "Stations" << false;
    }
    void entriesFollowTheKindsThatHaveEditors() {
        QFETCH(QString, category);
        QFETCH(bool, editable);
        QVERIFY(w->menuEntry("mnuAddRawMaterial")->isEnabled());
        for (const char* none : {"mnuAddEquip", "mnuAddComps", "mnuAddItem"})
            QVERIFY2(!w->menuEntry(none)->isEnabled(), none);
        choose(category);
        QCOMPARE(w->menuEntry("mnuEditEditItem")->isEnabled(), editable);
        QCOMPARE(w->menuEntry("mnuPopupEditItem")->isEnabled(), editable);
        QCOMPARE(CanEdit(category), editable);
    }

    void viewsEditButtonsOpenTheEditor() {
        const QString raw =
            f.scalar("SELECT RAW_MATERIAL_NAME FROM RAW_MATERIALS ORDER BY RAW_MATERIAL_NAME").toString();
        const QString comp =
            f.scalar("SELECT COMPONENT_NAME FROM COMPONENTS ORDER BY COMPONENT_NAME").toString();
        ViewComponent(comp);
        auto* cv = qobject_cast<frmRecordView*>(FindChildWindow("Component: " + comp));
        QVERIFY(cv && !cv->cmdEdit->isEnabled());
        ViewRawMaterial(raw);
        auto* rv = qobject_cast<frmRecordView*>(FindChildWindow("Raw Material: " + raw));
        QVERIFY(rv && rv->cmdEdit->isEnabled());
        rv->cmdEdit->click();
        auto* e = qobject_cast<frmAddRawMaterials*>(FindChildWindow("Edit: " + raw));
        QVERIFY(e);
        const auto shownPrice = [](const frmRecordView* v) {
            for (const auto& field : v->fields())
                if (field.first == "Price")
                    return field.second;
            return QString();
        };
        const QString before = shownPrice(rv);
        e->txtPrice->setText("4321");
        QCOMPARE(e->cmdSave_Click(), SaveResult::Saved);
        // The open view was filled once and keeps what it showed; a view opened now shows the change.
        QCOMPARE(shownPrice(rv), before);
        rv->close();
        QApplication::processEvents();
        ViewRawMaterial(raw);
        rv = qobject_cast<frmRecordView*>(FindChildWindow("Raw Material: " + raw));
        QVERIFY(rv);
        QCOMPARE(shownPrice(rv), QString("4,321"));
        QCOMPARE(f.prompt().count(), 0);
    }

    void doubleClickOfOptionOneOpensTheEditorWhereThereIsOne() {
        SaveSetting("Options", "DoubleClickEvent", "1");
        choose("Raw Materials");
        const QString raw = w->selectedName();
        w->lstItems_DblClick();
        QVERIFY(FindChildWindow("Edit: " + raw));
        // Components have no editor yet: the view opens instead.
        choose("Components");
        const QString comp = w->selectedName();
        w->lstItems_DblClick();
        QVERIFY(FindChildWindow("Component: " + comp));
    }

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
        // Editing another record selects that one.
        const QString other = w->model()->name(5);
        OpenEditor("Raw Materials", other);
        auto* o = qobject_cast<frmAddRawMaterials*>(FindChildWindow("Edit: " + other));
        QVERIFY(o);
        o->txtComments->setPlainText("checked again");
        QCOMPARE(o->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(w->selectedName(), other);
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

QTEST_MAIN(TestWireEditors)
#include "tst_wireeditors.moc"
