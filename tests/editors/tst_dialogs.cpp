// The pick-list dialogs on the sample world: the lookup editor (its statements, add, delete, "Record in
// Use"), the two-list pick dialog, the check-list dialog and the picture picker.
#include "core/imagestore.h"
#include "core/inifile.h"
#include "core/programfolder.h"
#include "editors/frmlistdialog.h"
#include "editors/frmlisteditdialog.h"
#include "editors/frmpicselect.h"
#include "editortests.h"
#include "viewsfixture.h"

#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

namespace {
QStringList texts(const QListWidget* list) {
    QStringList out;
    for (int i = 0; i < list->count(); ++i)
        out << list->item(i)->text();
    return out;
}

void selectText(QListWidget* list, const QString& text) {
    for (int i = 0; i < list->count(); ++i)
        if (list->item(i)->text() == text)
            list->setCurrentRow(i);
}
} // namespace

class TestDialogs : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString e;
        QVERIFY2(f.setUp(true, &e), qPrintable(e));
    }
    void cleanup() { f.tearDown(); }

    void lookupEditorAddsAndDeletes() {
        frmListEditDialog d(lookup::specials());
        QCOMPARE(d.windowTitle(), QString("Modify Specials"));
        QCOMPARE(d.lblList->text(), QString("Available Specials"));
        QCOMPARE(d.cmdAddItem->text(), QString("Add Special"));
        QCOMPARE(d.cmdDeleteItem->text(), QString("Delete Special"));
        const QStringList before = texts(d.lstSpecials);
        QVERIFY(!before.isEmpty());
        // A value with one quote is stored with one quote, and selected.
        f.prompt().queueText("Hunter's Mark");
        d.cmdAddItem_Click();
        QCOMPARE(f.prompt().last().text, QString("Please enter in the new Special:"));
        QCOMPARE(f.prompt().last().title, QString("New Special"));
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM SPECIALS WHERE SPECIAL = 'Hunter''s Mark'").toInt(), 1);
        QCOMPARE(d.lstSpecials->currentItem()->text(), QString("Hunter's Mark"));
        QVERIFY(d.changed());
        // Nothing typed: nothing happens. Two quotes together, or a value there already, are refused.
        const int shown = d.lstSpecials->count();
        d.cmdAddItem_Click();
        f.prompt().queueText("Hunter''s Mark");
        d.cmdAddItem_Click();
        QCOMPARE(f.prompt().last().title, QString("Invalid name"));
        f.prompt().queueText("HUNTER'S MARK");
        d.cmdAddItem_Click();
        QCOMPARE(f.prompt().last().title, QString("Duplicate Record"));
        QCOMPARE(d.lstSpecials->count(), shown);
        // Deleting asks first; No keeps the value, Yes removes it.
        selectText(d.lstSpecials, "Hunter's Mark");
        f.prompt().queueButton(vb::No);
        d.cmdDeleteItem_Click();
        QCOMPARE(f.prompt().last().text, QString("Are you sure you want to delete Special 'Hunter's Mark'?"));
        QCOMPARE(f.prompt().last().title, QString("Delete?"));
        QCOMPARE(f.prompt().last().style, int(vb::YesNo + vb::Question));
        QCOMPARE(d.lstSpecials->count(), shown);
        f.prompt().queueButton(vb::Yes);
        d.cmdDeleteItem_Click();
        QCOMPARE(texts(d.lstSpecials), before);
    }

    void lookupEditorRefusals() {
        frmListEditDialog d(lookup::damageTypes());
        d.lstSpecials->clearSelection();
        d.lstSpecials->setCurrentItem(nullptr);
        d.cmdDeleteItem_Click();
        QCOMPARE(f.prompt().last().text,
                 QString("Please make sure there is a Damage Type selected before deleting."));
        QCOMPARE(f.prompt().last().title, QString("No Special Selected"));
        QCOMPARE(f.prompt().last().style, int(vb::Information));
        // A damage type that a weapon uses stays.
        const QString used =
            f.scalar(
                 "SELECT DAMAGE_TYPE FROM WEAPON_STATS WHERE DAMAGE_TYPE IS NOT NULL ORDER BY DAMAGE_TYPE")
                .toString();
        selectText(d.lstSpecials, used);
        f.prompt().queueButton(vb::Yes);
        d.cmdDeleteItem_Click();
        QCOMPARE(f.prompt().last().text, "Cannot delete Damage Type '" + used +
                                             "'. It is currently being used by another database record.");
        QCOMPARE(f.prompt().last().title, QString("Record in Use"));
        QVERIFY(texts(d.lstSpecials).contains(used));
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM DAMAGE_TYPE WHERE DAMAGE_TYPE = '" + used + "'").toInt(), 1);
        QVERIFY(!d.changed());
    }

    void lookupWithAParentKeepsToItsParent() {
        const QString type =
            f.scalar("SELECT COMPONENT_TYPE FROM COMPONENT_TYPE_SUBTYPE ORDER BY COMPONENT_TYPE").toString();
        const int all = f.scalar("SELECT COUNT(*) FROM COMPONENT_TYPE_SUBTYPE").toInt();
        frmListEditDialog d(lookup::componentSubtypes(type));
        QCOMPARE(d.lstSpecials->count(),
                 f.scalar("SELECT COUNT(*) FROM COMPONENT_TYPE_SUBTYPE WHERE COMPONENT_TYPE = '" + type + "'")
                     .toInt());
        f.prompt().queueText("Zz Brace");
        d.cmdAddItem_Click();
        QCOMPARE(
            f.scalar("SELECT COMPONENT_TYPE FROM COMPONENT_TYPE_SUBTYPE WHERE COMPONENT_SUBTYPE = 'Zz Brace'")
                .toString(),
            type);
        selectText(d.lstSpecials, "Zz Brace");
        f.prompt().queueButton(vb::Yes);
        d.cmdDeleteItem_Click();
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM COMPONENT_TYPE_SUBTYPE").toInt(), all);
    }

    void pickDialogMovesValuesBetweenTheLists() {
        QVERIFY(WriteIni(programFolder() + "/VOSK.ini", "LIST_DIALOG", "ADD", "Move the chosen ### across."));
        QListWidget chosen;
        chosen.addItems({"Beta"});
        const QStringList all = {"Alpha", "beta", "Delta", "Gamma"};
        whenShown<frmListDialog>([](frmListDialog* d) {
            QCOMPARE(d->windowTitle(), QString("Select available Stations"));
            QCOMPARE(d->lblAvailable->text(), QString("Available Stations:"));
            QCOMPARE(d->lblSelected->text(), QString("Selected Stations:"));
            QVERIFY(d->cmdAdd->toolTip().contains("Move the chosen Stations across."));
            // A value is in one list only, letter case aside.
            QCOMPARE(d->availableValues(), QStringList({"Alpha", "Delta", "Gamma"}));
            d->lstAvailable->item(2)->setSelected(true);
            d->cmdAdd_Click();
            QCOMPARE(d->selectedValues(), QStringList({"Beta", "Gamma"}));
            QCOMPARE(d->lstSelected->selectedItems().size(), 1); // the value just moved
            QCOMPARE(d->lstSelected->selectedItems().first()->text(), QString("Gamma"));
            d->cmdAddAll_Click();
            QCOMPARE(d->selectedValues(), QStringList({"Alpha", "Beta", "Delta", "Gamma"}));
            QVERIFY(d->availableValues().isEmpty() && !d->cmdAddAll->isEnabled());
            d->lstSelected->clearSelection(); // the values just moved are selected
            d->lstSelected->item(0)->setSelected(true);
            d->lstSelected->item(3)->setSelected(true);
            d->cmdRemove_Click();
            QCOMPARE(d->availableValues(), QStringList({"Alpha", "Gamma"}));
            d->cmdOK->click();
        });
        QVERIFY(DisplayListDialog("Stations", all, &chosen));
        QCOMPARE(texts(&chosen), QStringList({"Beta", "Delta"}));
        // Cancel changes nothing.
        whenShown<frmListDialog>([](frmListDialog* d) {
            d->cmdRemoveAll_Click();
            d->cmdCancel->click();
        });
        QVERIFY(!DisplayListDialog("Stations", all, &chosen));
        QCOMPARE(texts(&chosen), QStringList({"Beta", "Delta"}));
    }

    void checkListReturnsTheTickedValues() {
        QStringList ticked = {"Scout"};
        whenShown<frmCheckListDialog>([](frmCheckListDialog* d) {
            QCOMPARE(d->checkedValues(), QStringList({"Scout"}));
            d->lstValues->item(2)->setCheckState(Qt::Checked);
            d->cmdOK->click();
        });
        QVERIFY(DisplayCheckListDialog("Classes", "Allowed classes:", {"Scout", "Miner", "Trader"}, &ticked));
        QCOMPARE(ticked, QStringList({"Scout", "Trader"}));
        whenShown<frmCheckListDialog>([](frmCheckListDialog* d) {
            d->cmdNone->click();
            d->cmdCancel->click();
        });
        QVERIFY(
            !DisplayCheckListDialog("Classes", "Allowed classes:", {"Scout", "Miner", "Trader"}, &ticked));
        QCOMPARE(ticked, QStringList({"Scout", "Trader"}));
    }

    void pictureChooserReturnsTheChosenNumber() {
        const long count = GetItemIconCount();
        if (count < 3)
            QSKIP("the drawn item icons are not built");
        whenShown<frmPicSelect>([count](frmPicSelect* d) {
            QCOMPARE(long(d->lstIcons->count()), count);
            QCOMPARE(d->picture(), 2L); // the current picture is chosen at first
            d->select(count - 1);
            d->cmdOK->click();
        });
        QCOMPARE(DisplayItemIconDialogbox(2), count - 1);
        whenShown<frmPicSelect>([](frmPicSelect* d) { d->cmdCancel->click(); });
        QCOMPARE(DisplayItemIconDialogbox(2), -1L);
    }

private:
    ViewsFixture f;
};

QTEST_MAIN(TestDialogs)
#include "tst_dialogs.moc"
