// The equipment view on the sample world: one window per equipment, the header, prices, statistics
// by type (projectile ammunition layout), ammunition figures, specials, tooltips, Edit, errors.
#include "core/settings.h"
#include "data/database.h"
#include "data/recordset.h"
#include "data/synthetic.h"
#include "viewsfixture.h"
#include "views/childwindows.h"
#include "views/equiptypes.h"
#include "views/frmequipment.h"
#include "views/modmain.h"
#include "views/openviews.h"
#include "views/propertysheet.h"
#include "views/viewwidgets.h"

#include <QApplication>
#include <QRegularExpression>
#include <cmath>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPrinterInfo>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>

class TestFrmEquipment : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void eachType_data();
    void eachType();
    void oneWindowPerEquipment();
    void ammunitionLayout_data();
    void ammunitionLayout();
    void freeAmmunition();
    void launcherAmmo();
    void specials();
    void priceWords_data();
    void priceWords();
    void customFields();
    void uniqueAndTooltips();
    void editButton();
    void missingRecord();
    void propertySheet();
    void droppedBy();
    void cyclicBlueprint();
    void blueprintNavigation();

private:
    frmEquipment* open(const QString& name);
    ViewsFixture f;
};

namespace {
QString firstName(const QString& sql) {
    Recordset rs;
    rs.open(sql);
    return rs.eof() ? QString() : rs.value(0).toString();
}

QStringList tabTexts(QTabWidget* tabs) {
    QStringList out;
    for (int i = 0; i < tabs->count(); ++i)
        out << tabs->tabText(i);
    return out;
}

QString captured;
void recordEditor(const QString& kind, const QString& name) { captured = kind + "/" + name; }
} // namespace

void TestFrmEquipment::init() {
    QString error;
    QVERIFY2(f.setUp(true, &error), qPrintable(error));
}

void TestFrmEquipment::cleanup() {
    CloseChildWindows();
    QApplication::processEvents();
    setEditorOpener(nullptr);
    f.tearDown();
}

frmEquipment* TestFrmEquipment::open(const QString& name) {
    const int type = FindType(name);
    ViewEquipDetails(name, type, DeEnumerate(type));
    return qobject_cast<frmEquipment*>(FindChildWindow(DeEnumerate(type) + ": " + name));
}

void TestFrmEquipment::eachType_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QStringList>("stats");
    QTest::newRow("beam") << "Sunspear Mk II" << "Beam: Sunspear Mk II"
        << QStringList{"Damage:", "Damage Type:", "Delay:", "Energy Use:", "Range:", "Damage Per Second:", "Efficiency:"};
    QTest::newRow("missile") << "Seeker Rack Mk I" << "Missile: Seeker Rack Mk I"
        << QStringList{"Energy Use:", "Delay:", "Rounds:", "Ammunition  Type:"};
    QTest::newRow("projectile") << "Autocannon Mk I" << "Projectile: Autocannon Mk I"
        << QStringList{"Energy Use:", "Delay:", "Range:", "Rounds:", "Ammunition  Type:"};
    QTest::newRow("two-word projectile") << "Mass Driver Mk I" << "Projectile: Mass Driver Mk I"
        << QStringList{"Energy Use:", "Delay:", "Range:", "Rounds:", "Ammunition  Type:"};
    QTest::newRow("reactor") << "Fusion Core Mk I" << "Reactor: Fusion Core Mk I"
        << QStringList{"Energy:", "Recharge Rate:", "Recharge Time:"};
    QTest::newRow("engine") << "Afterburner Mk III" << "Engine: Afterburner Mk III"
        << QStringList{"Warp:", "Drain:", "Thrust:", "Signature:", "Efficiency:"};
    QTest::newRow("shield") << "Bulwark Mk I" << "Shield: Bulwark Mk I"
        << QStringList{"Coverage:", "Regen Rate:", "Regenerate Time:"};
    QTest::newRow("device") << "Scanner Array Mk I" << "Device: Scanner Array Mk I" << QStringList{};
    QTest::newRow("missile ammunition") << "Standard Seeker" << "Ammunition: Standard Seeker"
        << QStringList{"Damage:", "Damage Type:", "Launch Type:", "Ammunition  Type:", "Stack Size:", "Ammo Range:",
                       "Maneuverability:", "Damage Per Credit:"};
}

void TestFrmEquipment::eachType() {
    QFETCH(QString, name);
    QFETCH(QString, caption);
    QFETCH(QStringList, stats);
    frmEquipment* w = open(name);
    QVERIFY2(w, qPrintable(caption));
    QCOMPARE(w->windowTitle(), caption);
    QVERIFY(w->isVisible());
    QCOMPARE(f.prompt().count(), 0);
    QVERIFY(w->lblType->text().contains(QRegularExpression("^(Unique )?Level ")));
    QStringList shown;
    for (int k = 0; k < frmEquipment::StatSlots; ++k)
        if (!w->lblSpecData[k]->isHidden())
            shown << w->lblSpecData[k]->text();
    QCOMPARE(shown, stats);
    QCOMPARE(w->findChild<QWidget*>("fraStats")->isHidden(), stats.isEmpty());
    QCOMPARE(w->txtPMPrice->text(), QString("TBA"));
    QCOMPARE(w->txtSRP->text(), QString("TBA"));
    QVERIFY(w->txtQuality->text().endsWith('%'));
    // the blueprint's root is the equipment itself
    QCOMPARE(w->treBlueprint->topLevelItemCount(), 1);
    QCOMPARE(w->treBlueprint->topLevelItem(0)->text(0), name);
    QVERIFY(w->treMOBs->topLevelItemCount() >= 1);
    const QStringList tabs = tabTexts(w->tabEquipment);
    QCOMPARE(tabs.mid(0, 4), (QStringList{"Attributes", "Prices", "Comments", "Other"}));
    QCOMPARE(tabs.contains("Ammo"), caption.startsWith("Missile") || caption.startsWith("Projectile"));
    QString file = "/tmp/views-equipment-" + QString(QTest::currentDataTag()).replace(' ', '-') + ".png";
    w->grab().save(file);
    w->tabEquipment->setCurrentIndex(3);
    w->grab().save(QString(file).replace(".png", "-other.png"));
}

void TestFrmEquipment::oneWindowPerEquipment() {
    ViewEquipDetails("Sunspear Mk II", 0, "Beam");
    QWidget* first = FindChildWindow("Beam: Sunspear Mk II");
    ViewEquipDetails("Sunspear Mk II", 0, "Beam");
    int count = 0;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->windowTitle() == "Beam: Sunspear Mk II" && w->isVisible())
            ++count;
    QCOMPARE(count, 1);
    QCOMPARE(FindChildWindow("Beam: Sunspear Mk II"), first);
}

void TestFrmEquipment::ammunitionLayout_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("stats");
    // Projectile ammunition has no range or maneuverability, and damage per credit moves up by two.
    QTest::newRow("projectile") << "Hollow Light Slug"
        << QStringList{"Damage:", "Damage Type:", "Launch Type:", "Ammunition  Type:", "Stack Size:", "Damage Per Credit:"};
    QTest::newRow("missile") << "Hollow Torpedo"
        << QStringList{"Damage:", "Damage Type:", "Launch Type:", "Ammunition  Type:", "Stack Size:", "Ammo Range:",
                       "Maneuverability:", "Damage Per Credit:"};
}

void TestFrmEquipment::ammunitionLayout() {
    QFETCH(QString, name);
    QFETCH(QStringList, stats);
    frmEquipment* w = open(name);
    QVERIFY(w);
    QStringList shown;
    for (int k = 0; k < frmEquipment::StatSlots; ++k)
        if (!w->lblSpecData[k]->isHidden())
            shown << w->lblSpecData[k]->text();
    QCOMPARE(shown, stats);
    const int dpc = int(stats.size()) - 1;
    QCOMPARE(w->lblSpecData[dpc]->text(), QString("Damage Per Credit:"));
    QVERIFY(!w->txtSpecData[dpc]->text().isEmpty());
    w->grab().save("/tmp/views-ammunition-" + QString(QTest::currentDataTag()) + ".png");
}

void TestFrmEquipment::freeAmmunition() {
    frmEquipment* w = open("Standard Flechette");
    QVERIFY(w);
    QCOMPARE(w->txtPurchasePrice->text(), QString("Unknown"));
    QCOMPARE(w->lblSpecData[5]->text(), QString("Damage Per Credit:"));
    QCOMPARE(w->txtSpecData[5]->text(), QString("0"));
}

void TestFrmEquipment::launcherAmmo() {
    frmEquipment* w = open("Seeker Rack Mk I");
    QVERIFY(w);
    QVERIFY(w->lstAmmo->count() > 0);
    QCOMPARE(w->lstAmmo->currentRow(), 0);
    QVERIFY(w->tbAmmoView->isEnabled());
    QVERIFY(w->txtAmmoName->text().isEmpty()); // nothing worked out until the user picks
    const QString ammoType = w->txtSpecData[3]->text();
    QVERIFY(w->lstAmmo->item(0)->text().endsWith(ammoType));
    w->lstAmmo_Click();
    QCOMPARE(w->txtAmmoName->text(), w->lstAmmo->item(0)->text());
    QVERIFY(!w->txtAmmoRange->isHidden());
    QVERIFY(!w->txtAmmoRange->text().isEmpty());

    // The launcher's figures with the ammunition, from the shown values.
    Recordset rs;
    rs.open("SELECT W.ENERGY_USE, W.DELAY, W.ROUNDS, A.DAMAGE FROM WEAPON_STATS AS W, AMO_STATS AS A WHERE "
            "W.EQUIPMENT_NAME = 'Seeker Rack Mk I' AND A.EQUIPMENT_NAME = '" + w->txtAmmoName->text() + "'");
    QVERIFY(!rs.eof());
    const double e = rs.value(0).toDouble(), d = rs.value(1).toDouble(), r = rs.value(2).toDouble(),
                 dmg = rs.value(3).toDouble();
    const double shownD = QString(w->txtSpecData[1]->text()).remove(',').toDouble();
    const double shownE = QString(w->txtSpecData[0]->text()).remove(',').toDouble();
    QVERIFY(qAbs(shownD - d) < 0.006 && qAbs(shownE - e) < 0.006);
    QCOMPARE(w->txtDamagePerSecond->text().toDouble(), std::round(dmg * r / shownD * 100) / 100);
    QCOMPARE(w->txtAmmoEfficiency->text().toDouble(), std::round(dmg * r / shownE * 100) / 100);
    w->tabEquipment->setCurrentIndex(w->tabEquipment->count() - 1);
    w->grab().save("/tmp/views-equipment-ammo-page.png");

    frmEquipment* gun = open("Autocannon Mk I");
    QVERIFY(gun);
    QVERIFY(gun->lstAmmo->count() > 0);
    gun->lstAmmo_Click();
    QVERIFY(gun->txtAmmoRange->isHidden());
    QVERIFY(gun->lblAmmoManeuverability->isHidden());
}

void TestFrmEquipment::specials() {
    frmEquipment* w = open("Hunter's Lance Mk I");
    QVERIFY(w);
    QVERIFY(tabTexts(w->tabEquipment).contains("Specials"));
    QStringList tops;
    for (int i = 0; i < w->treSpecials->topLevelItemCount(); ++i)
        tops << w->treSpecials->topLevelItem(i)->text(0);
    QCOMPARE(tops, (QStringList{"Energy Siphon -3 Points", "Overcharge +12.35%"}));
    for (int i = 0; i < w->treSpecials->topLevelItemCount(); ++i)
        for (int c = 0; c < w->treSpecials->topLevelItem(i)->childCount(); ++c) {
            const QString detail = w->treSpecials->topLevelItem(i)->child(c)->text(0);
            QVERIFY2(!detail.endsWith(": 0"), qPrintable(detail));
            QVERIFY2(QRegularExpression("^(Energy Use|Range|Duration|Shunt): ").match(detail).hasMatch(), qPrintable(detail));
        }
    w->tabEquipment->setCurrentIndex(w->tabEquipment->count() - 1);
    w->grab().save("/tmp/views-equipment-specials.png");

    frmEquipment* zero = open("Hunter's Lance Mk II");
    QVERIFY(zero);
    bool found = false;
    for (int i = 0; i < zero->treSpecials->topLevelItemCount(); ++i)
        found |= zero->treSpecials->topLevelItem(i)->text(0) == "Targeting Boost";
    QVERIFY2(found, "an amount of 0 shows the name alone");
}

void TestFrmEquipment::priceWords_data() {
    QTest::addColumn<QString>("where");
    QTest::addColumn<QString>("price");
    QTest::addColumn<QString>("fee");
    QTest::newRow("loot only") << "PRICE = -1" << "Loot Only" << "";
    QTest::newRow("mission reward") << "PRICE = -2" << "Mission Reward" << "";
    QTest::newRow("unknown price") << "PRICE = 0" << "Unknown" << "";
    QTest::newRow("fee -1") << "COST_TO_MANUFACTURE = -1" << "" << "Not Manufacturable";
    QTest::newRow("fee -5") << "COST_TO_MANUFACTURE = -5" << "" << "Not Manufacturable";
    QTest::newRow("fee 0") << "COST_TO_MANUFACTURE = 0" << "" << "Unknown";
    QTest::newRow("grouped") << "PRICE >= 1000" << "," << "";
}

void TestFrmEquipment::priceWords() {
    QFETCH(QString, where);
    QFETCH(QString, price);
    QFETCH(QString, fee);
    const QString name = firstName("SELECT EQUIPMENT_NAME FROM EQUIPMENTS WHERE " + where + " AND TYPE <> 'Device' ORDER BY EQUIPMENT_NAME");
    QVERIFY2(!name.isEmpty(), qPrintable(where));
    frmEquipment* w = open(name);
    QVERIFY2(w, qPrintable(name));
    if (price == ",")
        QVERIFY(w->txtPurchasePrice->text().contains(','));
    else if (!price.isEmpty())
        QCOMPARE(w->txtPurchasePrice->text(), price);
    if (!fee.isEmpty())
        QCOMPARE(w->txtManufFee->text(), fee);
}

void TestFrmEquipment::customFields() {
    QString error;
    QVERIFY2(f.exec({"DELETE FROM DB_OPTIONS",
                     "INSERT INTO DB_OPTIONS (CUSTOM_FIELDS_ON, FIELD_01_CAPTION, FIELD_02_CAPTION, FIELD_03_CAPTION) "
                     "VALUES (TRUE, 'Seen At', '', 'Spare Part')",
                     "UPDATE EQUIPMENTS SET CUSTOM_01 = 'Kell fair', CUSTOM_03 = 'yes' WHERE EQUIPMENT_NAME = 'Ion Drive Mk I'"},
                    &error),
             qPrintable(error));
    reloadCustomFields();
    frmEquipment* w = open("Ion Drive Mk I");
    QVERIFY(w);
    QCOMPARE(w->lblCustom[0]->text(), QString("Seen At:"));
    QCOMPARE(w->txtCustom[0]->text(), QString("Kell fair"));
    QVERIFY(!w->txtCustom[0]->isHidden());
    QVERIFY(w->txtCustom[1]->isHidden()); // no caption, not shown
    QCOMPARE(w->lblCustom[2]->text(), QString("Spare Part:"));
    QCOMPARE(w->txtCustom[2]->text(), QString("yes"));
    w->grab().save("/tmp/views-equipment-custom.png");

    CloseChildWindows();
    QApplication::processEvents();
    QVERIFY(f.exec({"UPDATE DB_OPTIONS SET CUSTOM_FIELDS_ON = FALSE"}, &error));
    reloadCustomFields();
    w = open("Ion Drive Mk I");
    QVERIFY(w);
    for (int i = 0; i < 3; ++i)
        QVERIFY(w->txtCustom[i]->isHidden());
}

void TestFrmEquipment::uniqueAndTooltips() {
    const QString name = firstName("SELECT EQUIPMENT_NAME FROM EQUIPMENTS WHERE UNIQUE_FLAG = TRUE ORDER BY EQUIPMENT_NAME");
    QVERIFY(!name.isEmpty());
    frmEquipment* w = open(name);
    QVERIFY(w);
    QVERIFY2(w->lblType->text().startsWith("Unique Level "), qPrintable(w->lblType->text()));
    QVERIFY(w->cmdClose->toolTip().contains("Close this window."));
    QVERIFY(w->lstBuyLocations->toolTip().contains("Stations that sell " + QString(name).remove('_')));
    QCOMPARE(w->cmdClose->toolTipDuration(), 20000);
    QVERIFY(!w->lblSpecData[0]->toolTip().isEmpty());

    CloseChildWindows();
    QApplication::processEvents();
    opt::saveFlag(opt::Tooltips, false);
    w = open(name);
    QVERIFY(w->cmdClose->toolTip().isEmpty());
}

void TestFrmEquipment::editButton() {
    frmEquipment* w = open("Fusion Core Mk I");
    QVERIFY(w);
    QVERIFY(!w->cmdEdit->isEnabled());
    CloseChildWindows();
    QApplication::processEvents();
    setEditorOpener(&recordEditor);
    w = open("Fusion Core Mk I");
    QVERIFY(w->cmdEdit->isEnabled());
    captured.clear();
    QTest::mouseClick(w->cmdEdit, Qt::LeftButton);
    QCOMPARE(captured, QString("Equipment/Fusion Core Mk I"));
    QTest::mouseClick(w->cmdClose, Qt::LeftButton);
    QApplication::processEvents();
    QVERIFY(!FindChildWindow("Reactor: Fusion Core Mk I"));
}

void TestFrmEquipment::missingRecord() {
    ViewEquipDetails("No Such Gun", 0, "Beam");
    QVERIFY(!FindChildWindow("Beam: No Such Gun"));
    QCOMPARE(f.prompt().count(), 1);
    QVERIFY2(f.prompt().last().text.contains("procedure ViewEquipDetails of Module modMain"), qPrintable(f.prompt().last().text));
    // A name with an apostrophe is found.
    frmEquipment* w = open("Hunter's Lance Mk III");
    QVERIFY(w);
    QCOMPARE(f.prompt().count(), 1);
}

void TestFrmEquipment::propertySheet() {
    const PropertySheet sheet = EquipmentPropertySheet("Hunter's Lance Mk I", equip::Beam);
    QCOMPARE(sheet.title, QString("Beam: Hunter's Lance Mk I"));
    QVERIFY(sheet.subtitle.contains("Level "));
    QStringList captions;
    for (const auto& row : sheet.rows)
        captions << row.first;
    for (const char* c : {"Manufacturer", "Quality", "Purchase Price", "Manufacturing Fee", "Damage", "Damage Per Second",
                          "Efficiency", "Last Updated"})
        QVERIFY2(captions.contains(c), c);
    QStringList headings;
    for (const auto& section : sheet.sections)
        headings << section.first;
    QCOMPARE(headings, (QStringList{"Specials", "Buy Locations", "Allowed Classes", "Blueprint"}));
    QCOMPARE(sheet.sections.at(0).second.first(), QString("Energy Siphon -3 Points"));
    const QString html = PropertySheetHtml(sheet);
    QVERIFY(html.contains("<h2>Beam: Hunter's Lance Mk I</h2>"));
    QVERIFY(html.contains("Overcharge +12.35%"));

    bool threw = false;
    try {
        EquipmentPropertySheet("No Such Gun", equip::Beam);
    } catch (const VbError& e) {
        threw = e.number == 3021;
    }
    QVERIFY(threw);

    // Printing without a printer says so and prints nothing.
    if (QPrinterInfo::availablePrinters().isEmpty()) {
        opt::saveFlag(opt::PrintPreview, false);
        frmEquipment* w = open("Hunter's Lance Mk I");
        QVERIFY(w);
        QTest::mouseClick(w->cmdPrint, Qt::LeftButton);
        QCOMPARE(f.prompt().count(), 1);
        QCOMPARE(f.prompt().last().style, int(vb::Exclamation));
        QVERIFY(f.prompt().last().text.contains("printer"));
    }
}

void TestFrmEquipment::droppedBy() {
    const QString name = firstName("SELECT EQUIPMENT_NAME FROM MOB_EQUIP_DROP ORDER BY EQUIPMENT_NAME");
    QVERIFY(!name.isEmpty());
    frmEquipment* w = open(name);
    QVERIFY(w);
    QTreeWidgetItem* mob = w->treMOBs->topLevelItem(0);
    QVERIFY(mob->childCount() == 1);
    QVERIFY(mob->child(0)->text(0).startsWith("Drop Rate: "));
    QVERIFY(mob->isExpanded());
    Q_EMIT w->treMOBs->itemDoubleClicked(mob->child(0), 0);
    bool opened = false;
    for (QWidget* top : QApplication::topLevelWidgets())
        opened |= top->objectName() == "frmMOBs" && top->isVisible() && top->windowTitle() == mob->text(0);
    QVERIFY2(opened, qPrintable(mob->text(0)));
}

void TestFrmEquipment::cyclicBlueprint() {
    QString error;
    db().close();
    QVERIFY2(AddRecipeCycle(f.databaseFile(), RecipeCycle(), &error), qPrintable(error));
    db().open("Provider=VOSK.SQLite;Data Source=" + f.databaseFile() + ";");
    frmEquipment* w = open("Cycle Engine");
    QCOMPARE(f.prompt().count(), 1);
    QCOMPARE(f.prompt().last().text, QString("Error 28 (Out of stack space)  procedure ViewEquipDetails of Module modMain"));
    QVERIFY2(w, "the header was read, so the window stays with what it has");
    QCOMPARE(w->treBlueprint->topLevelItem(0)->childCount(), 1);
}

void TestFrmEquipment::blueprintNavigation() {
    frmEquipment* w = open("Sunspear Mk II");
    QVERIFY(w);
    QTreeWidgetItem* root = w->treBlueprint->topLevelItem(0);
    QTreeWidgetItem* upgrade = root->child(0);
    QVERIFY2(upgrade->text(0).endsWith(" (Upgrade)"), qPrintable(upgrade->text(0)));
    // An upgrade node keeps its level bracket after RemoveExtra, so it does not resolve to a record:
    // the type look-up and the view each report it, and no window opens.
    Q_EMIT w->treBlueprint->itemDoubleClicked(upgrade, 0);
    QCOMPARE(f.prompt().count(), 2);
    QVERIFY(f.prompt().calls().at(0).text.endsWith("procedure FindType of Module modMain"));
    QVERIFY(f.prompt().calls().at(1).text.endsWith("procedure ViewEquipDetails of Module modMain"));
    // A component node opens the component's view.
    for (int i = 0; i < root->childCount(); ++i)
        if (NodeImage(root->child(i)) == 2) {
            Q_EMIT w->treBlueprint->itemDoubleClicked(root->child(i), 0);
            QVERIFY(FindChildWindow("Component: " + RemoveExtra(root->child(i)->text(0))));
            break;
        }
    QCOMPARE(f.prompt().count(), 2);
}

QTEST_MAIN(TestFrmEquipment)
#include "tst_frmequipment.moc"
