// The equipment view on the sample world: one window per equipment, statistics by type (projectile
// ammunition layout), free ammunition, launcher ammunition, specials, custom fields, tooltips, Edit,
// the property sheet, and the reports of a missing record and of a recipe that contains itself.
#include "core/settings.h"
#include "core/vberror.h"
#include "views/equiptypes.h"
#include "views/frmequipment.h"
#include "views/modmain.h"
#include "views/openviews.h"
#include "views/propertysheet.h"
#include "views/viewwidgets.h"
#include "viewsfixture.h"
#include "viewswindows.h"

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPrinterInfo>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>

namespace {
QString captured;
void recordEditor(const QString& kind, const QString& name) {
    captured = kind + "/" + name;
}

QStringList topTexts(QTreeWidget* tree) {
    QStringList out;
    for (int i = 0; i < tree->topLevelItemCount(); ++i)
        out << tree->topLevelItem(i)->text(0);
    return out;
}
} // namespace

class TestFrmEquipment : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString e;
        QVERIFY2(f.setUp(true, &e), qPrintable(e));
    }
    void cleanup() {
        closeViews();
        setEditorOpener(nullptr);
        f.tearDown();
    }
    void eachType_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QStringList>("stats");
        auto row = [](const char* tag, const char* name, const char* caption, const QStringList& stats) {
            QTest::newRow(tag) << QString(name) << QString(caption) << stats;
        };
        row("beam", "Sunspear Mk II", "Beam: Sunspear Mk II",
            {"Damage:", "Damage Type:", "Delay:", "Energy Use:", "Range:", "Damage Per Second:",
             "Efficiency:"});
        row("device", "Scanner Array Mk I", "Device: Scanner Array Mk I", {});
        // Projectile ammunition has no range or maneuverability, and damage per credit moves up by two.
        row("projectile ammunition", "Hollow Light Slug", "Ammunition: Hollow Light Slug",
            {"Damage:", "Damage Type:", "Launch Type:", "Ammunition  Type:", "Stack Size:",
             "Damage Per Credit:"});
        row("missile ammunition", "Hollow Torpedo", "Ammunition: Hollow Torpedo",
            {"Damage:", "Damage Type:", "Launch Type:", "Ammunition  Type:", "Stack Size:", "Ammo Range:",
             "Maneuverability:", "Damage Per Credit:"});
    }
    void eachType() {
        QFETCH(QString, name);
        QFETCH(QString, caption);
        QFETCH(QStringList, stats);
        frmEquipment* w = open(name);
        QVERIFY2(w && w->isVisible(), qPrintable(caption));
        QCOMPARE(w->windowTitle(), caption);
        QCOMPARE(f.prompt().count(), 0);
        QStringList shown;
        for (int k = 0; k < frmEquipment::StatSlots; ++k)
            if (!w->lblSpecData[k]->isHidden()) {
                shown << w->lblSpecData[k]->text();
                QVERIFY(!w->txtSpecData[k]->text().isEmpty());
            }
        QCOMPARE(shown, stats);
        QCOMPARE(w->findChild<QWidget*>("fraStats")->isHidden(), stats.isEmpty());
        QCOMPARE(w->txtPMPrice->text() + w->txtSRP->text(), QString("TBATBA"));
        QCOMPARE(topTexts(w->treBlueprint), QStringList{name}); // the blueprint's root is the equipment
        QStringList tabs;
        for (int i = 0; i < w->tabEquipment->count(); ++i)
            tabs << w->tabEquipment->tabText(i);
        QCOMPARE(tabs.mid(0, 4), (QStringList{"Attributes", "Prices", "Comments", "Other"}));
        QCOMPARE(tabs.contains("Ammo"), caption.startsWith("Missile") || caption.startsWith("Projectile"));
        QCOMPARE(open(name), w); // a second request brings the same window forward
        QCOMPARE(visibleWindows(caption), 1);
    }
    void ammunition() {
        frmEquipment* free = open("Standard Flechette");
        QVERIFY(free);
        QCOMPARE(free->txtPurchasePrice->text() + " " + free->lblSpecData[5]->text() + " " +
                     free->txtSpecData[5]->text(),
                 QString("Unknown Damage Per Credit: 0"));
        frmEquipment* w = open("Seeker Rack Mk I");
        QVERIFY(w && RecordCount(w->lstAmmo) > 0 && w->lstAmmo->currentRow() == 0);
        QVERIFY(w->lstAmmo->item(0)->text().endsWith(w->txtSpecData[3]->text()));
        // The first round is picked and its figures are shown as the window opens; another can be picked.
        QCOMPARE(w->txtAmmoName->text(), w->lstAmmo->item(0)->text());
        QVERIFY(!w->txtAmmoRange->isHidden() && !w->txtAmmoRange->text().isEmpty());
        QVERIFY(!w->txtDamagePerSecond->text().isEmpty());
        w->lstAmmo->setCurrentRow(1);
        QCOMPARE(w->txtAmmoName->text(), w->lstAmmo->item(1)->text());
        frmEquipment* gun = open("Autocannon Mk I");
        QVERIFY(gun && RecordCount(gun->lstAmmo) > 0);
        QVERIFY(gun->txtAmmoRange->isHidden() && gun->lblAmmoManeuverability->isHidden());
    }
    void specialsUniqueAndTooltips() {
        frmEquipment* w = open("Hunter's Lance Mk I");
        QVERIFY(w);
        QCOMPARE(topTexts(w->treSpecials), (QStringList{"Energy Siphon -3 Points", "Overcharge +12.35%"}));
        frmEquipment* zero = open("Hunter's Lance Mk II");
        QVERIFY2(zero && topTexts(zero->treSpecials).contains("Targeting Boost"),
                 "an amount of 0 shows the name alone");
        const QString name =
            f.scalar("SELECT EQUIPMENT_NAME FROM EQUIPMENTS WHERE UNIQUE_FLAG = TRUE ORDER BY EQUIPMENT_NAME")
                .toString();
        w = open(name);
        QVERIFY2(w && w->lblType->text().startsWith("Unique Level "), qPrintable(name));
        QVERIFY(!w->cmdClose->toolTip().isEmpty());
        closeViews();
        opt::saveFlag(opt::Tooltips, false);
        w = open(name);
        QVERIFY(w && w->cmdClose->toolTip().isEmpty());
    }
    void customFields() {
        QString error;
        QVERIFY2(
            f.exec(
                {"DELETE FROM DB_OPTIONS",
                 "INSERT INTO DB_OPTIONS (CUSTOM_FIELDS_ON, FIELD_01_CAPTION, FIELD_02_CAPTION, FIELD_03_CAPTION) "
                 "VALUES (TRUE, 'Seen At', '', 'Spare Part')",
                 "UPDATE EQUIPMENTS SET CUSTOM_01 = 'Kell fair', CUSTOM_03 = 'yes' WHERE EQUIPMENT_NAME = 'Ion Drive Mk I'"},
                &error),
            qPrintable(error));
        reloadCustomFields();
        frmEquipment* w = open("Ion Drive Mk I");
        QVERIFY(w);
        QCOMPARE(w->lblCustom[0]->text() + w->txtCustom[0]->text(), QString("Seen At:Kell fair"));
        QVERIFY(w->txtCustom[1]->isHidden()); // no caption, not shown
        QCOMPARE(w->lblCustom[2]->text() + w->txtCustom[2]->text(), QString("Spare Part:yes"));
        closeViews();
        QVERIFY(f.exec({"UPDATE DB_OPTIONS SET CUSTOM_FIELDS_ON = FALSE"}, &error));
        reloadCustomFields();
        w = open("Ion Drive Mk I");
        QVERIFY(w && w->txtCustom[0]->isHidden() && w->txtCustom[2]->isHidden());
    }
    void editButton() {
        frmEquipment* w = open("Fusion Core Mk I");
        QVERIFY(w && !w->cmdEdit->isEnabled());
        closeViews();
        setEditorOpener(&recordEditor);
        w = open("Fusion Core Mk I");
        QVERIFY(w);
        QTest::mouseClick(w->cmdEdit, Qt::LeftButton);
        QCOMPARE(captured, QString("Equipment/Fusion Core Mk I"));
        QTest::mouseClick(w->cmdClose, Qt::LeftButton);
        QApplication::processEvents();
        QVERIFY(!FindChildWindow("Reactor: Fusion Core Mk I"));
    }
    void missingRecord() {
        ViewEquipDetails("No Such Gun", 0, "Beam");
        QVERIFY(!FindChildWindow("Beam: No Such Gun") && f.prompt().count() == 1);
        QVERIFY2(f.prompt().last().text.endsWith("procedure ViewEquipDetails of Module modMain"),
                 qPrintable(f.prompt().last().text));
        QVERIFY(open("Hunter's Lance Mk III")); // a name with an apostrophe is found
        QCOMPARE(f.prompt().count(), 1);
    }
    void propertySheet() {
        const PropertySheet sheet = EquipmentPropertySheet("Hunter's Lance Mk I", equip::Beam);
        QCOMPARE(sheet.title, QString("Beam: Hunter's Lance Mk I"));
        QVERIFY(PropertySheetHtml(sheet).contains("Overcharge +12.35%"));
        QVERIFY_THROWS_EXCEPTION(VbError, EquipmentPropertySheet("No Such Gun", equip::Beam));
        if (!QPrinterInfo::availablePrinters().isEmpty())
            QSKIP("a printer is installed: the no-printer path cannot be taken");
        // Printing without a printer offers a PDF file; cancelling that writes nothing.
        opt::saveFlag(opt::PrintPreview, false);
        frmEquipment* w = open("Hunter's Lance Mk I");
        QVERIFY(w);
        QTest::mouseClick(w->cmdPrint, Qt::LeftButton);
        QCOMPARE(f.prompt().count(), 1);
        QVERIFY(f.prompt().last().kind == ScriptedPrompt::Kind::SaveFile);
        QCOMPARE(f.prompt().last().extra, QString("Beam Hunter's Lance Mk I.pdf"));
        QVERIFY(QDir(f.path()).entryList({"*.pdf"}).isEmpty());
    }
    void droppedBy() {
        frmEquipment* w =
            open(f.scalar("SELECT EQUIPMENT_NAME FROM MOB_EQUIP_DROP ORDER BY EQUIPMENT_NAME").toString());
        QVERIFY(w);
        QTreeWidgetItem* mob = w->treMOBs->topLevelItem(0);
        QVERIFY(mob->isExpanded() && mob->childCount() == 1);
        QVERIFY(mob->child(0)->text(0).startsWith("Drop Rate: "));
        Q_EMIT w->treMOBs->itemDoubleClicked(mob->child(0), 0);
        QCOMPARE(visibleWindows(mob->text(0), "frmMOBs"), 1);
    }
    void blueprint() {
        frmEquipment* w = open("Sunspear Mk II");
        QVERIFY(w);
        QTreeWidgetItem* root = w->treBlueprint->topLevelItem(0);
        QTreeWidgetItem* upgrade = root->child(0);
        QVERIFY2(upgrade->text(0).endsWith(" (Upgrade)"), qPrintable(upgrade->text(0)));
        // An upgrade node keeps its level bracket after RemoveExtra, so it does not resolve to a record:
        // the type look-up and the view each report it, and no window opens.
        Q_EMIT w->treBlueprint->itemDoubleClicked(upgrade, 0);
        QCOMPARE(f.prompt().count(), 2);
        QVERIFY(f.prompt().calls().at(0).text.startsWith("Error 3021 ("));
        QVERIFY(f.prompt().calls().at(0).text.endsWith("  procedure FindType of Module modMain"));
        QVERIFY(f.prompt().calls().at(1).text.endsWith("procedure ViewEquipDetails of Module modMain"));
        for (int i = 0; i < root->childCount(); ++i)
            if (NodeImage(root->child(i)) == buildimg::Component) { // a component opens the component's view
                Q_EMIT w->treBlueprint->itemDoubleClicked(root->child(i), 0);
                QVERIFY(FindChildWindow("Component: " + RemoveExtra(root->child(i)->text(0))));
                break;
            }
        QCOMPARE(f.prompt().count(), 2);
        // A recipe that contains itself is reported; the header was read, so the window stays.
        QString error;
        QVERIFY2(f.addRecipeCycle(&error), qPrintable(error));
        w = open("Cycle Engine");
        QCOMPARE(f.prompt().last().text,
                 QString("Error 28 (Out of stack space)  procedure ViewEquipDetails of Module modMain"));
        QVERIFY(w && w->treBlueprint->topLevelItem(0)->childCount() == 1);
    }

private:
    frmEquipment* open(const QString& name) {
        const int type = FindType(name);
        ViewEquipDetails(name, type, DeEnumerate(type));
        return qobject_cast<frmEquipment*>(FindChildWindow(DeEnumerate(type) + ": " + name));
    }
    ViewsFixture f;
};

QTEST_MAIN(TestFrmEquipment)
#include "tst_frmequipment.moc"
