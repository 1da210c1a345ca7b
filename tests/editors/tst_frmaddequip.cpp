// The equipment editor on the sample world: every type loads its own property rows, values, lists and
// grids; the help texts; the launch type that steers the ammunition types and is never written; a new
// record's type; the pick dialogs and the lookup editors it offers; the upgrade sources written
// twice; the custom fields.
#include "editorfixture.h"
#include "editors/equipment.h"
#include "editors/frmaddequip.h"
#include "editors/frmlistdialog.h"
#include "editors/frmlisteditdialog.h"
#include "editors/propertylistwidget.h"
#include "views/equiptypes.h"
#include "views/modmain.h"

#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QTabWidget>
#include <QTreeWidget>

namespace {
frmAddEquip* editor(const QString& name) {
    return openEditor<frmAddEquip>("Equipment", name, "New: " + DeEnumerate(newEquipmentType()));
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

QStringList ammoTypes(const QString& launch) {
    return rows("SELECT AMO_TYPE FROM AMO_TYPES WHERE LAUNCH_TYPE = " + lit(launch) + " ORDER BY AMO_TYPE");
}
} // namespace

class TestFrmAddEquip : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString e;
        QVERIFY2(f.setUp(&e), qPrintable(e));
        // The editor's help texts come from its own section of the settings file.
        QFile ini(f.path() + "/VOSK.ini");
        QFile section(VOSK_EDIT_EQUIPMENT_INI);
        QVERIFY(ini.open(QIODevice::Append) && section.open(QIODevice::ReadOnly));
        ini.write(section.readAll());
    }
    void cleanup() {
        setNewEquipmentType(nullptr);
        f.tearDown();
    }

    void everyTypeLoadsItsRecord_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("stats");
        const QStringList beam{"DAMAGE", "DAMAGE_TYPE", "DELAY", "ENERGY_USE", "RANGE"};
        const QStringList ammo{"DAMAGE",     "DAMAGE_TYPE", "LAUNCH_TYPE",    "AMO_TYPE_AMO",
                               "STACK_SIZE", "AMMO_RANGE",  "MANEUVERABILITY"};
        QTest::newRow("beam") << "Hunter's Lance Mk II" << beam;
        QTest::newRow("missile") << "Seeker Rack Mk II"
                                 << QStringList{"ENERGY_USE", "DELAY", "ROUNDS", "AMO_TYPE"};
        QTest::newRow("projectile") << "Railgun Mk I"
                                    << QStringList{"ENERGY_USE", "DELAY", "RANGE", "ROUNDS", "AMO_TYPE"};
        QTest::newRow("reactor") << "Fusion Core Mk IV" << QStringList{"ENERGY", "RECHARGE_RATE"};
        QTest::newRow("engine in lower case")
            << "Afterburner Mk II" << QStringList{"WARP", "DRAIN", "THRUST", "SIGNATURE"};
        QTest::newRow("shield") << "Bulwark Mk I" << QStringList{"COVERAGE", "REGEN_RATE"};
        QTest::newRow("device") << "Scanner Array Mk III" << QStringList();
        QTest::newRow("missile ammunition") << "Vanguard Torpedo" << ammo;
    }
    void everyTypeLoadsItsRecord() {
        QFETCH(QString, name);
        QFETCH(QStringList, stats);
        const QString where = " WHERE EQUIPMENT_NAME = " + lit(name);
        const QString typeWord = f.scalar("SELECT TYPE FROM EQUIPMENTS" + where).toString();
        auto* w = editor(name);
        QVERIFY(w);
        QCOMPARE(w->lblTitle->text(), name);
        QCOMPARE(w->lblType->text(), typeWord);
        QCOMPARE(w->equipmentType(), Enumerate(typeWord));
        const PropertyList& p = w->prpList->list();
        QCOMPARE(rowsUnder(p, "General"),
                 QStringList({"EQUIPMENT_NAME", "TYPE", "MANUFACTURER", "LVL", "QUALITY", "UNIQUE_FLAG"}));
        QCOMPARE(rowsUnder(p, "Prices"), QStringList({"PURCHASE_PRICE", "MANUFACTURING_FEE"}));
        QCOMPARE(rowsUnder(p, "Statistics"), stats);
        QVERIFY(p.row("EQUIPMENT_NAME")->readOnly && p.row("TYPE")->readOnly && !p.anyChanged());
        for (const QString& key : stats) {
            if (key == "LAUNCH_TYPE")
                continue;
            const QString column = key == "AMO_TYPE_AMO" ? "AMO_TYPE" : key == "AMMO_RANGE" ? "RANGE" : key;
            const QVariant stored = f.scalar("SELECT " + column + " FROM " +
                                             GetStatTable(DeEnumerate(Enumerate(typeWord))) + where);
            QCOMPARE(p.value(key), stored.isNull() ? QString() : stored.toString());
        }
    }

    // The two ends of the upgrade table, the specials, and the word shown for a reserved price.
    void gridsAndPriceWords() {
        auto* w = editor("Hunter's Lance Mk II");
        QVERIFY(w);
        QCOMPARE(gridColumn(w->ubgBlueEquip->grid(), 1), QStringList{"Hunter's Lance Mk I"});
        QCOMPARE(gridColumn(w->ubgManuEquip->grid(), 1), QStringList{"Hunter's Lance Mk III"});
        QCOMPARE(gridColumn(w->ubgSpecials->grid(), 1), QStringList{"Targeting Boost"});
        QCOMPARE(w->ubgMOBs->grid().listDisplays(2), rows("SELECT FREQUENCY FROM DROP_FREQUENCY"));
        w = editor(f.scalar("SELECT EQUIPMENT_NAME FROM EQUIPMENTS WHERE PRICE = -1").toString());
        QVERIFY(w);
        QCOMPARE(w->prpList->shownValue("PURCHASE_PRICE"), QString("Loot Only"));
        w = editor(
            f.scalar("SELECT EQUIPMENT_NAME FROM EQUIPMENTS WHERE COST_TO_MANUFACTURE = -5").toString());
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
        QVERIFY(e && e->prpList->list().row("TYPE")->help.endsWith(" (Read Only)"));
    }

    void aNewRecordStartsBlankAsItsType() {
        setNewEquipmentType([] { return int(equip::Missile); });
        auto* w = editor("");
        QVERIFY(w && w->isNew());
        QCOMPARE(w->windowTitle(), QString("New: Missile"));
        QCOMPARE(w->lblTitle->text(), QString("New Missile"));
        const PropertyList& p = w->prpList->list();
        QCOMPARE(p.value("TYPE") + "|" + p.value("QUALITY") + "|" + p.value("UNIQUE_FLAG"),
                 QString("Missile|100|No"));
        QVERIFY(!p.row("EQUIPMENT_NAME")->readOnly);
        QCOMPARE(p.row("AMO_TYPE")->choices, ammoTypes("Missile"));
        // Nothing typed yet, or only another type chosen: closing asks nothing.
        QVERIFY(w->prpList->editValue("TYPE", "Reactor"));
        QApplication::processEvents();
        QVERIFY(w->close());
        QCOMPARE(f.prompt().count(), 0);
        // No real type proposed: a beam.
        QApplication::processEvents();
        setNewEquipmentType([] { return int(equip::All); });
        QVERIFY(editor("") && FindChildWindow("New: Beam"));
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
        QCOMPARE(p.value("EQUIPMENT_NAME") + "|" + p.value("LVL") + "|" + p.value("QUALITY"),
                 QString("Dawn's Drive|14|100"));
        QVERIFY(p.row("DAMAGE") == nullptr);
        QCOMPARE(w->prpList->shownValue("LVL"), QString("14"));
        QCOMPARE(w->lblTitle->text(), QString("Dawn's Drive"));
        QCOMPARE(p.row("WARP")->help, QString("Top speed under warp."));
    }

    void theLaunchTypeSteersTheAmmunitionTypes() {
        auto* w = editor("Vanguard Torpedo");
        QVERIFY(w);
        PropertyList& p = w->prpList->list();
        QCOMPARE(p.value("LAUNCH_TYPE") + "|" + p.value("AMO_TYPE_AMO"), QString("Missile|Torpedo"));
        QCOMPARE(p.row("AMO_TYPE_AMO")->choices, ammoTypes("Missile"));
        QCOMPARE(p.row("AMO_TYPE_AMO")->lookup.parentValue, QString("Missile"));
        QVERIFY(w->prpList->editValue("LAUNCH_TYPE", "Projectile"));
        QCOMPARE(p.row("AMO_TYPE_AMO")->choices, ammoTypes("Projectile"));
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

    // A new record's type chosen in its drop-down with Enter: the rows are built again while the list
    // is still closing its editor.
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
        QCOMPARE(f.prompt().count(), 0);
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
    }

    // A beam whose statistics row is gone cannot be edited through its type's statement either.
    void aRecordWithoutItsStatisticsIsReported() {
        f.run({"DELETE FROM WEAPON_STATS WHERE EQUIPMENT_NAME = 'Sunspear Mk I'"});
        OpenEditor("Equipment", "Sunspear Mk I");
        QCOMPARE(f.prompt().count(), 1);
        QVERIFY(!FindChildWindow("Edit: Sunspear Mk I"));
    }

    void theUpgradeSourcesAreWrittenTwice() {
        char* error = nullptr;
        const int rc =
            sqlite3_exec(db().handle(),
                         "CREATE TEMP TABLE UPGRADE_LOG (FROM_NAME TEXT);"
                         "CREATE TEMP TRIGGER LOG_UPGRADES AFTER INSERT ON EQUIPMENTS_UPGRADE_FROM "
                         "BEGIN INSERT INTO UPGRADE_LOG VALUES (NEW.UPGRADE_FROM); END;",
                         nullptr, nullptr, &error);
        QVERIFY2(rc == SQLITE_OK, error);
        auto* w = editor("Sunspear Mk III");
        QVERIFY(w);
        addRow(w->ubgBlueEquip, {"Cutter Mk I", "2"});
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(rows("SELECT FROM_NAME FROM UPGRADE_LOG"),
                 QStringList({"Sunspear Mk II", "Cutter Mk I", "Sunspear Mk II", "Cutter Mk I"}));
        QCOMPARE(
            rows(
                "SELECT UPGRADE_FROM, AMOUNT FROM EQUIPMENTS_UPGRADE_FROM WHERE EQUIPMENT_NAME = 'Sunspear Mk "
                "III' ORDER BY UPGRADE_FROM"),
            QStringList({"Cutter Mk I|2", "Sunspear Mk II|1"}));
        // From the other end: what Sunspear Mk I upgrades into.
        QApplication::processEvents();
        sqlite3_exec(db().handle(), "DELETE FROM UPGRADE_LOG", nullptr, nullptr, nullptr);
        w = editor("Sunspear Mk I");
        QVERIFY(w);
        addRow(w->ubgManuEquip, {"Glimmer Array Mk I", "3"});
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(
            rows(
                "SELECT EQUIPMENT_NAME, AMOUNT FROM EQUIPMENTS_UPGRADE_FROM WHERE UPGRADE_FROM = 'Sunspear Mk "
                "I' ORDER BY EQUIPMENT_NAME"),
            QStringList({"Glimmer Array Mk I|3", "Sunspear Mk II|1"}));
        QCOMPARE(rows("SELECT FROM_NAME FROM UPGRADE_LOG").size(), 2);
    }

    void theCustomFieldsInUseAreRows() {
        CustomFields custom;
        custom.on = true;
        custom.caption[0] = "Seen at";
        custom.caption[2] = "Trade note";
        setCustomFields(custom);
        const auto restore = qScopeGuard([] { reloadCustomFields(); });
        auto* w = editor("Ion Drive Mk I");
        QVERIFY(w);
        const PropertyList& p = w->prpList->list();
        QStringList shown;
        for (int i = 0; i < p.count(); ++i)
            if (p.at(i).parent == "Custom")
                shown << p.at(i).key + "=" + p.at(i).caption;
        // The second field has no caption: it is not in use.
        QCOMPARE(shown, QStringList({"CUSTOM_01=Seen at", "CUSTOM_03=Trade note"}));
        QVERIFY(w->prpList->editValue("CUSTOM_03", "Kell's price"));
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(rows("SELECT CUSTOM_03 FROM EQUIPMENTS WHERE EQUIPMENT_NAME = 'Ion Drive Mk I'"),
                 QStringList{"Kell's price"});
    }

private:
    EditorFixture f;
};

QTEST_MAIN(TestFrmAddEquip)
#include "tst_frmaddequip.moc"
