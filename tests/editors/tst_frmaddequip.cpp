// The equipment editor on the sample world: every type loads its own property rows, values, lists and
// grids; the help texts; the launch type that steers the ammunition types; a new record's type; the
// pick dialogs and the lookup editors it offers; the specials checks.
#include "core/childwindows.h"
#include "data/database.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "editors/editors.h"
#include "editors/equipment.h"
#include "editors/frmaddequip.h"
#include "editors/frmlistdialog.h"
#include "editors/frmlisteditdialog.h"
#include "editors/gridroutines.h"
#include "editors/propertylistwidget.h"
#include "editors/ubgrid.h"
#include "editortests.h"
#include "views/equiptypes.h"
#include "viewsfixture.h"

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>

namespace {
frmAddEquip* editor(const QString& name) {
    OpenEditor("Equipment", name);
    return qobject_cast<frmAddEquip*>(
        FindChildWindow(name.isEmpty() ? "New: " + DeEnumerate(newEquipmentType()) : "Edit: " + name));
}

QStringList column(const QString& sql, int col = 0) {
    Recordset rs;
    rs.open(sql);
    QStringList out;
    for (; !rs.eof(); rs.moveNext())
        out << rs.value(col).toString();
    return out;
}

// The keys of the rows under a category, in order.
QStringList rowsUnder(const PropertyList& p, const QString& category) {
    QStringList keys;
    for (int i = 0; i < p.count(); ++i)
        if (p.at(i).parent == category)
            keys << p.at(i).key;
    return keys;
}

QStringList gridColumn(const GridModel& g, int col) {
    QStringList out;
    for (int r = 1; r <= g.lastDataRow(); ++r)
        out << g.text(r, col);
    return out;
}

// The statistics column a property row stands for.
QString statColumn(const QString& key) {
    if (key == "AMO_TYPE_AMO")
        return "AMO_TYPE";
    return key == "AMMO_RANGE" ? "RANGE" : key;
}
} // namespace

class TestFrmAddEquip : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString e;
        QVERIFY2(f.setUp(true, &e), qPrintable(e));
        // The editor's help texts come from its own section of the settings file.
        QFile ini(f.path() + "/VOSK.ini");
        QFile section(VOSK_EDIT_EQUIPMENT_INI);
        QVERIFY(ini.open(QIODevice::Append) && section.open(QIODevice::ReadOnly));
        ini.write(section.readAll());
    }
    void cleanup() {
        CloseChildWindows();
        QApplication::processEvents();
        setNewEquipmentType(nullptr);
        f.tearDown();
    }

    void everyTypeLoadsItsRecord_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("stats");
        QTest::newRow("beam") << "Hunter's Lance Mk II"
                              << QStringList{"DAMAGE", "DAMAGE_TYPE", "DELAY", "ENERGY_USE", "RANGE"};
        QTest::newRow("two-word beam")
            << "Cutter Mk III" << QStringList{"DAMAGE", "DAMAGE_TYPE", "DELAY", "ENERGY_USE", "RANGE"};
        QTest::newRow("missile") << "Seeker Rack Mk II"
                                 << QStringList{"ENERGY_USE", "DELAY", "ROUNDS", "AMO_TYPE"};
        QTest::newRow("projectile") << "Railgun Mk I"
                                    << QStringList{"ENERGY_USE", "DELAY", "RANGE", "ROUNDS", "AMO_TYPE"};
        QTest::newRow("reactor") << "Fusion Core Mk IV" << QStringList{"ENERGY", "RECHARGE_RATE"};
        QTest::newRow("engine in lower case")
            << "Afterburner Mk II" << QStringList{"WARP", "DRAIN", "THRUST", "SIGNATURE"};
        QTest::newRow("shield") << "Bulwark Mk I" << QStringList{"COVERAGE", "REGEN_RATE"};
        QTest::newRow("device") << "Scanner Array Mk III" << QStringList();
        const QStringList ammo{"DAMAGE",     "DAMAGE_TYPE", "LAUNCH_TYPE",    "AMO_TYPE_AMO",
                               "STACK_SIZE", "AMMO_RANGE",  "MANEUVERABILITY"};
        QTest::newRow("missile ammunition") << "Vanguard Torpedo" << ammo;
        QTest::newRow("projectile ammunition") << "Hollow Light Slug" << ammo;
    }
    void everyTypeLoadsItsRecord() {
        QFETCH(QString, name);
        QFETCH(QStringList, stats);
        const QString q = FixQuotes(name);
        const QString typeWord =
            f.scalar("SELECT TYPE FROM EQUIPMENTS WHERE EQUIPMENT_NAME = '" + q + "'").toString();
        const int type = Enumerate(typeWord);
        auto* w = editor(name);
        QVERIFY(w && w->isVisible());
        QCOMPARE(f.prompt().count(), 0);
        QCOMPARE(w->windowTitle(), "Edit: " + name);
        QCOMPARE(w->lblTitle->text(), name);
        QCOMPARE(w->lblType->text(), typeWord);
        QCOMPARE(w->equipmentType(), type);
        const PropertyList& p = w->prpList->list();
        QCOMPARE(rowsUnder(p, "General"),
                 QStringList({"EQUIPMENT_NAME", "TYPE", "MANUFACTURER", "LVL", "QUALITY", "UNIQUE_FLAG"}));
        QCOMPARE(rowsUnder(p, "Prices"), QStringList({"PURCHASE_PRICE", "MANUFACTURING_FEE"}));
        QCOMPARE(rowsUnder(p, "Statistics"), stats);
        QVERIFY(p.row("EQUIPMENT_NAME")->readOnly && p.row("TYPE")->readOnly);
        QVERIFY(!p.anyChanged());

        Recordset rec;
        rec.open("SELECT * FROM EQUIPMENTS WHERE EQUIPMENT_NAME = '" + q + "'");
        for (const char* col : {"MANUFACTURER", "LVL", "QUALITY"})
            QCOMPARE(p.value(col), rec.value(col).toString());
        QCOMPARE(p.value("PURCHASE_PRICE"), rec.value("PRICE").toString());
        QCOMPARE(p.value("MANUFACTURING_FEE"), rec.value("COST_TO_MANUFACTURE").toString());
        QCOMPARE(p.value("UNIQUE_FLAG"), rec.value("UNIQUE_FLAG").toBool() ? QString("Yes") : QString("No"));
        QCOMPARE(w->picture(), rec.value("PIC_ID").toInt());
        QCOMPARE(w->txtComments->toPlainText(), rec.value("COMMENTS").toString());
        const QString table = GetStatTable(DeEnumerate(type));
        for (const QString& key : stats) {
            if (key == "LAUNCH_TYPE")
                continue;
            const QVariant stored = f.scalar("SELECT " + statColumn(key) + " FROM " + table +
                                             " WHERE EQUIPMENT_NAME = '" + q + "'");
            QCOMPARE(p.value(key), stored.isNull() ? QString() : stored.toString());
        }

        QCOMPARE(w->listEntries(w->lstAllowed),
                 column("SELECT CLASS_NAME FROM EQUIPMENT_CLASS WHERE EQUIPMENTS_EQUIPMENT = '" + q + "'"));
        QCOMPARE(w->listEntries(w->lstBuyLocations),
                 column("SELECT STATIONS_STATION FROM BUY_EQUIPMENT_LOCATION WHERE EQUIPMENTS_EQUIPMENT = '" +
                        q + "'"));
        for (const GridDef& def : equipedit::grids()) {
            const GridModel& g = w->grid(def.widget)->grid();
            QVERIFY2(!g.locked(), qPrintable(def.widget));
            QCOMPARE(gridColumn(g, 1), column(def.queries(q).first()));
            QCOMPARE(g.tag(), GridFingerprint(g));
        }
    }

    // The two ends of the upgrade table and the specials, on records known to have them.
    void gridsShowBothEndsOfTheUpgrades() {
        auto* w = editor("Hunter's Lance Mk II");
        QVERIFY(w);
        QCOMPARE(gridColumn(w->ubgBlueEquip->grid(), 1), QStringList{"Hunter's Lance Mk I"});
        QCOMPARE(gridColumn(w->ubgManuEquip->grid(), 1), QStringList{"Hunter's Lance Mk III"});
        QCOMPARE(gridColumn(w->ubgSpecials->grid(), 1), QStringList{"Targeting Boost"});
        QCOMPARE(w->ubgSpecials->grid().cols(), 8);
        QCOMPARE(w->ubgSpecials->grid().listDisplays(1).first(), NoneEntry);
        QCOMPARE(w->ubgMOBs->grid().listDisplays(2), column("SELECT FREQUENCY FROM DROP_FREQUENCY"));
    }

    void priceRowsShowTheirWords() {
        const QString loot = f.scalar("SELECT EQUIPMENT_NAME FROM EQUIPMENTS WHERE PRICE = -1").toString();
        const QString made =
            f.scalar("SELECT EQUIPMENT_NAME FROM EQUIPMENTS WHERE COST_TO_MANUFACTURE = -5").toString();
        QVERIFY(!loot.isEmpty() && !made.isEmpty());
        auto* w = editor(loot);
        QVERIFY(w);
        QCOMPARE(w->prpList->shownValue("PURCHASE_PRICE"), QString("Loot Only"));
        w = editor(made);
        QVERIFY(w);
        QCOMPARE(w->prpList->shownValue("MANUFACTURING_FEE"), QString("Not Manufacturable"));
        QCOMPARE(w->prpList->list().value("MANUFACTURING_FEE"), QString("-5"));
    }

    void helpTextsCarryTheirSuffixes() {
        setNewEquipmentType([] { return int(equip::Reactor); });
        auto* w = editor("");
        QVERIFY(w);
        const PropertyList& p = w->prpList->list();
        QVERIFY2(p.row("QUALITY")->help.endsWith(" (Valid Range: 0 to 100) (Default: 100)"),
                 qPrintable(p.row("QUALITY")->help));
        QCOMPARE(p.row("ENERGY")->help, QString("The energy the reactor holds when full."));
        QVERIFY(p.row("LAST_UPDATED")->help.endsWith(" (Read Only)"));
        QVERIFY(!p.row("TYPE")->help.endsWith(" (Read Only)"));
        auto* e = editor("Fusion Core Mk I");
        QVERIFY(e);
        QVERIFY(e->prpList->list().row("TYPE")->help.endsWith(" (Read Only)"));
    }

    void aNewRecordStartsBlankAsItsType() {
        setNewEquipmentType([] { return int(equip::Missile); });
        auto* w = editor("");
        QVERIFY(w && w->isNew());
        QCOMPARE(w->windowTitle(), QString("New: Missile"));
        QCOMPARE(w->lblTitle->text(), QString("New Missile"));
        const PropertyList& p = w->prpList->list();
        QCOMPARE(p.value("TYPE"), QString("Missile"));
        QCOMPARE(p.value("QUALITY"), QString("100"));
        QCOMPARE(p.changedKeys(), QStringList({"QUALITY", "UNIQUE_FLAG"}));
        QCOMPARE(p.value("UNIQUE_FLAG"), QString("No"));
        QVERIFY(!p.row("EQUIPMENT_NAME")->readOnly);
        QCOMPARE(p.row("AMO_TYPE")->choices,
                 column("SELECT AMO_TYPE FROM AMO_TYPES WHERE LAUNCH_TYPE = 'Missile' ORDER BY AMO_TYPE"));
        for (const GridDef& def : equipedit::grids())
            QCOMPARE(w->grid(def.widget)->grid().lastDataRow(), 0);
        QVERIFY(w->lstAllowed->count() == 0 && w->lstBuyLocations->count() == 0);
        // Nothing typed yet: closing asks nothing.
        QVERIFY(w->close());
        QCOMPARE(f.prompt().count(), 0);
        // No real type proposed: a beam.
        QApplication::processEvents();
        setNewEquipmentType([] { return int(equip::All); });
        QVERIFY(editor(""));
        QVERIFY(FindChildWindow("New: Beam"));
    }

    void changingANewRecordsTypeKeepsWhatWasTyped() {
        setNewEquipmentType([] { return int(equip::Beam); });
        auto* w = editor("");
        QVERIFY(w);
        QVERIFY(w->prpList->editValue("EQUIPMENT_NAME", " Dawn's Drive  "));
        QCOMPARE(w->lblTitle->text(), QString("Dawn's Drive"));
        QVERIFY(w->prpList->editValue("LVL", "14"));
        QVERIFY(w->prpList->editValue("DAMAGE", "40"));
        QVERIFY(w->prpList->editValue("TYPE", "engine"));
        QApplication::processEvents();
        QCOMPARE(w->windowTitle(), QString("New: Engine"));
        QCOMPARE(w->equipmentType(), int(equip::Engine));
        const PropertyList& p = w->prpList->list();
        QCOMPARE(rowsUnder(p, "Statistics"), QStringList({"WARP", "DRAIN", "THRUST", "SIGNATURE"}));
        QCOMPARE(p.value("EQUIPMENT_NAME"), QString("Dawn's Drive"));
        QCOMPARE(p.value("LVL"), QString("14"));
        QCOMPARE(p.value("QUALITY"), QString("100"));
        QVERIFY(p.row("DAMAGE") == nullptr);
        QCOMPARE(w->prpList->shownValue("LVL"), QString("14"));
        QCOMPARE(w->lblTitle->text(), QString("Dawn's Drive"));
        QCOMPARE(w->prpList->list().row("WARP")->help, QString("Top speed under warp."));
    }

    void theLaunchTypeSteersTheAmmunitionTypes() {
        auto* w = editor("Vanguard Torpedo");
        QVERIFY(w);
        PropertyList& p = w->prpList->list();
        QCOMPARE(p.value("LAUNCH_TYPE"), QString("Missile"));
        QCOMPARE(p.value("AMO_TYPE_AMO"), QString("Torpedo"));
        const QStringList missiles =
            column("SELECT AMO_TYPE FROM AMO_TYPES WHERE LAUNCH_TYPE = 'Missile' ORDER BY AMO_TYPE");
        QCOMPARE(p.row("AMO_TYPE_AMO")->choices, missiles);
        QCOMPARE(p.row("AMO_TYPE_AMO")->lookup.parentValue, QString("Missile"));
        QVERIFY(w->prpList->editValue("LAUNCH_TYPE", "Projectile"));
        QCOMPARE(p.row("AMO_TYPE_AMO")->choices,
                 column("SELECT AMO_TYPE FROM AMO_TYPES WHERE LAUNCH_TYPE = 'Projectile' ORDER BY AMO_TYPE"));
        // A torpedo is no projectile's ammunition: the type is cleared, to be chosen again.
        QCOMPARE(p.value("AMO_TYPE_AMO"), QString());
        QVERIFY(!w->prpList->editValue("AMO_TYPE_AMO", "Torpedo"));
        QCOMPARE(f.prompt().last().title, QString("Invalid Value"));
        QVERIFY(w->prpList->editValue("AMO_TYPE_AMO", "flechette"));
        QCOMPARE(p.value("AMO_TYPE_AMO"), QString("Flechette"));
        // Back to missiles with a type both offer: nothing to clear.
        QVERIFY(w->prpList->editValue("LAUNCH_TYPE", "Missile"));
        QVERIFY(w->prpList->editValue("AMO_TYPE_AMO", "Seeker"));
        QVERIFY(w->prpList->editValue("LAUNCH_TYPE", "Missile"));
        QCOMPARE(p.value("AMO_TYPE_AMO"), QString("Seeker"));
    }

    // From the keyboard: a new record's type chosen in its drop-down with Enter (the rows are built
    // again while the list is still closing its editor), a special removed with Delete.
    void aNewRecordFromTheKeyboard() {
        setNewEquipmentType([] { return int(equip::Beam); });
        auto* w = editor("");
        QVERIFY(w);
        QVERIFY(QTest::qWaitForWindowExposed(w));
        QTreeWidget* t = w->prpList->tree();
        t->setCurrentItem(w->prpList->itemFor("TYPE"), 1);
        QTest::keyClick(t, Qt::Key_F2);
        auto* box = openEditorIn<QComboBox>(t);
        QVERIFY(box);
        box->setCurrentIndex(box->findText("Shield"));
        QTest::keyClick(box, Qt::Key_Return);
        QTRY_COMPARE(w->windowTitle(), QString("New: Shield"));
        QVERIFY(w->prpList->list().row("COVERAGE"));

        w->tabMain->setCurrentIndex(0);
        UBGrid* g = w->ubgSpecials;
        g->grid().userEdit(1, 1, "Overcharge");
        g->grid().userEdit(2, 1, "Hull Repair");
        g->setCurrentIndex(g->cellIndex(1, 2));
        QTest::keyClick(g, Qt::Key_Delete);
        QCOMPARE(g->grid().lastDataRow(), 1);
        QCOMPARE(g->grid().text(1, 1), QString("Hull Repair"));
        QCOMPARE(f.prompt().count(), 0);
    }

    void specialsChecks_data() {
        QTest::addColumn<QList<QStringList>>("rows"); // special, amount, units
        QTest::addColumn<QString>("title");           // empty: accepted
        QTest::addColumn<QString>("text");
        QTest::newRow("fine") << QList<QStringList>{{"Overcharge", "5", "%"}, {"Hull Repair", "10", "points"}}
                              << QString() << QString();
        QTest::newRow("named twice in another case")
            << QList<QStringList>{{"Overcharge", "5", "%"}, {"overcharge", "7", "%"}}
            << "Duplicate Special Entries"
            << "The special 'overcharge' appears more than once in the special list, please remove one";
        QTest::newRow("no unit") << QList<QStringList>{{"Overcharge", "5", "%"}, {"Hull Repair", "10", ""}}
                                 << "Specials Error"
                                 << "Please specify a Unit  value for the special 'Hull Repair'";
        QTest::newRow("no name") << QList<QStringList>{{"", "5", "%"}} << "Specials Error"
                                 << "Please choose the special of row 1 or remove the row";
        QTest::newRow("no amount") << QList<QStringList>{{"Overcharge", "", "%"}} << QString() << QString();
    }
    void specialsChecks() {
        QFETCH(QList<QStringList>, rows);
        QFETCH(QString, title);
        QFETCH(QString, text);
        GridModel g("ubgSpecials");
        fillGrid(g, {"Special", "Amount", "Units"}, rows);
        QCOMPARE(equipedit::CheckSpecials(g), title.isEmpty());
        if (title.isEmpty()) {
            QCOMPARE(f.prompt().count(), 0);
            // An empty amount is taken as 0.
            for (int r = 1; r <= g.lastDataRow(); ++r)
                QCOMPARE(g.text(r, 2), rows.at(r - 1).at(1).isEmpty() ? QString("0") : rows.at(r - 1).at(1));
            return;
        }
        QCOMPARE(f.prompt().count(), 1);
        QCOMPARE(f.prompt().last().title, title);
        QCOMPARE(f.prompt().last().text, text);
        QCOMPARE(f.prompt().last().style,
                 title.startsWith("Duplicate") ? int(vb::Exclamation) : int(vb::Information));
    }

    void listsArePickedInTheDialog() {
        auto* w = editor("Bulwark Mk I");
        QVERIFY(w);
        whenShown<frmListDialog>([](frmListDialog* d) {
            QCOMPARE(d->windowTitle(), QString("Select available Classes"));
            d->cmdRemoveAll_Click();
            const auto warrior = d->lstAvailable->findItems("Warrior", Qt::MatchExactly);
            QCOMPARE(warrior.size(), 1);
            d->lstAvailable->clearSelection();
            warrior.first()->setSelected(true);
            d->cmdAdd_Click();
            d->cmdOK->click();
        });
        w->cmdAllowed->click();
        QCOMPARE(w->listEntries(w->lstAllowed), QStringList{"Warrior"});
        // The stations' dialog offers every station.
        QCOMPARE(column(equipedit::allStationsSql()).size(),
                 f.scalar("SELECT COUNT(*) FROM STATIONS").toInt());
    }

    void lookupListsCanBeEditedFromTheEditor() {
        auto* w = editor("Sunspear Mk I");
        QVERIFY(w);
        f.prompt().queueText("Vantor & Kell's");
        whenShown<frmListEditDialog>([](frmListEditDialog* d) {
            QCOMPARE(d->windowTitle(), QString("Modify Manufacturers"));
            d->cmdAddItem_Click();
            d->cmdClose->click();
        });
        w->prpList->editLookup("MANUFACTURER");
        QVERIFY(w->prpList->list().row("MANUFACTURER")->choices.contains("Vantor & Kell's"));
        QVERIFY(w->prpList->editValue("MANUFACTURER", "Vantor & Kell's"));
        const PropertyList& p = w->prpList->list();
        QCOMPARE(p.row("DAMAGE_TYPE")->lookup.table, QString("DAMAGE_TYPE"));
        auto* launcher = editor("Railgun Mk I");
        QVERIFY(launcher);
        QCOMPARE(launcher->prpList->list().row("AMO_TYPE")->lookup.parentValue, QString("Projectile"));
    }

    void aMissingRecordIsReportedOnce() {
        OpenEditor("Equipment", "Nothing Here");
        QCOMPARE(f.prompt().count(), 1);
        QVERIFY(f.prompt().last().text.endsWith("procedure EditEquipment of Module modMain"));
        QVERIFY(!FindChildWindow("Edit: Nothing Here"));
        // A beam whose statistics row is gone cannot be edited through its type's statement either.
        QString e;
        QVERIFY2(f.exec({"DELETE FROM WEAPON_STATS WHERE EQUIPMENT_NAME = 'Sunspear Mk I'"}, &e),
                 qPrintable(e));
        OpenEditor("Equipment", "Sunspear Mk I");
        QCOMPARE(f.prompt().count(), 2);
        QVERIFY(!FindChildWindow("Edit: Sunspear Mk I"));
    }

private:
    ViewsFixture f;
};

QTEST_MAIN(TestFrmAddEquip)
#include "tst_frmaddequip.moc"
