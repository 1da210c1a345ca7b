// The equipment editor's save on the sample world: only what changed is written and an unchanged
// record is not touched; a cleared value is NULL; an ammunition's launch type is never written; new
// records of every kind (a device without statistics); the refusals before anything is written; a
// failure in the last grid write rolls everything back; the upgrade sources written twice.
#include "core/childwindows.h"
#include "core/clock.h"
#include "data/database.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "editors/editors.h"
#include "editors/frmaddequip.h"
#include "editors/gridroutines.h"
#include "editors/propertylistwidget.h"
#include "editors/ubgrid.h"
#include "views/equiptypes.h"
#include "views/modmain.h"
#include "viewsfixture.h"

#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QScopeGuard>
#include <QTest>
#include <sqlite3.h>

namespace {
const QDateTime Stamp(QDate(2027, 3, 14), QTime(15, 9, 26));
const QString Old = QStringLiteral("2020-01-01 00:00:00");

frmAddEquip* editor(const QString& name) {
    OpenEditor("Equipment", name);
    return qobject_cast<frmAddEquip*>(
        FindChildWindow(name.isEmpty() ? "New: " + DeEnumerate(newEquipmentType()) : "Edit: " + name));
}

// Types a row into the grid's entry row, as the user would.
void addRow(UBGrid* g, const QStringList& cells) {
    const int row = g->grid().rows() - 1;
    for (int c = 0; c < cells.size(); ++c)
        g->grid().userEdit(row, c + 1, cells.at(c));
}

QStringList rows(const QString& sql) {
    Recordset rs;
    rs.open(sql);
    QStringList out;
    for (; !rs.eof(); rs.moveNext()) {
        QStringList cells;
        for (int i = 0; i < rs.fieldCount(); ++i)
            cells << (rs.isNull(i) ? QString("NULL") : rs.value(i).toString());
        out << cells.join('|');
    }
    return out;
}

int changes() {
    return sqlite3_total_changes(db().handle());
}
} // namespace

class TestFrmAddEquipSave : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString e;
        QVERIFY2(f.setUp(true, &e), qPrintable(e));
        setClock([] { return Stamp; });
        m_saved.clear();
        setRecordSavedHandler(
            [this](const QString& kind, const QString& name) { m_saved << kind + ": " + name; });
        QVERIFY2(f.exec({"UPDATE EQUIPMENTS SET UPDATED = FALSE, LAST_UPDATED = '" + Old + "'"}, &e),
                 qPrintable(e));
    }
    void cleanup() {
        CloseChildWindows();
        QApplication::processEvents();
        setRecordSavedHandler(nullptr);
        setNewEquipmentType(nullptr);
        setClock(nullptr);
        f.tearDown();
    }

    void onlyWhatChangedIsWritten_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("change");
        QTest::addColumn<QString>("check"); // a statement that reads what the change wrote
        QTest::addColumn<QString>("expected");
        const QString hunter = "Hunter's Lance Mk III";
        const QString where = " WHERE EQUIPMENT_NAME = 'Hunter''s Lance Mk III'";
        QTest::newRow("nothing") << hunter << "" << QString() << QString();
        QTest::newRow("a level edited back") << hunter << "level back" << QString() << QString();
        QTest::newRow("a grid edited back") << hunter << "grid back" << QString() << QString();
        QTest::newRow("an ammunition's launch type") << "Standard Seeker"
                                                     << "launch" << QString() << QString();
        QTest::newRow("a level") << hunter << "level"
                                 << "SELECT LVL FROM EQUIPMENTS" + where << "47";
        QTest::newRow("a statistic") << hunter << "damage"
                                     << "SELECT DAMAGE FROM WEAPON_STATS" + where << "777";
        QTest::newRow("the purchase price word") << hunter << "price"
                                                 << "SELECT PRICE FROM EQUIPMENTS" + where << "-2";
        QTest::newRow("the picture") << hunter << "picture"
                                     << "SELECT PIC_ID FROM EQUIPMENTS" + where << "99";
        QTest::newRow("the comments") << hunter << "comments"
                                      << "SELECT COMMENTS FROM EQUIPMENTS" + where << "Pilots' pick";
        QTest::newRow("a class") << hunter << "class"
                                 << "SELECT CLASS_NAME FROM EQUIPMENT_CLASS WHERE EQUIPMENTS_EQUIPMENT = "
                                    "'Hunter''s Lance Mk III' AND CLASS_NAME = 'Smuggler''s Kin'"
                                 << "Smuggler's Kin";
        QTest::newRow("a grid") << hunter << "grid"
                                << "SELECT AMOUNT FROM EQUIPMENTS_ITEMS WHERE EQUIPMENTS_EQUIPMENT = "
                                   "'Hunter''s Lance Mk III' AND ITEM_NAME = 'Smuggler''s Ledger'"
                                << "6";
    }
    void onlyWhatChangedIsWritten() {
        QFETCH(QString, name);
        QFETCH(QString, change);
        QFETCH(QString, check);
        QFETCH(QString, expected);
        QString e;
        if (change == "launch")
            QVERIFY2(
                f.exec({"UPDATE AMO_STATS SET AMO_TYPE = NULL WHERE EQUIPMENT_NAME = 'Standard Seeker'"}, &e),
                qPrintable(e));
        auto* w = editor(name);
        QVERIFY(w);
        const QString level = w->prpList->list().value("LVL");
        if (change == "level back") {
            QVERIFY(w->prpList->editValue("LVL", "47"));
            QVERIFY(w->prpList->editValue("LVL", level));
        } else if (change == "grid back") {
            addRow(w->ubgBlueItems, {"Smuggler's Ledger", "6"});
            w->ubgBlueItems->grid().userEdit(w->ubgBlueItems->grid().lastDataRow(), 1, NoneEntry);
        } else if (change == "launch") {
            // An ammunition without its type: choosing a launch type changes nothing of the record.
            QCOMPARE(w->prpList->list().value("LAUNCH_TYPE"), QString());
            QVERIFY(w->prpList->editValue("LAUNCH_TYPE", "Projectile"));
            QCOMPARE(w->prpList->list().changedKeys(), QStringList{"LAUNCH_TYPE"});
        } else if (change == "level") {
            QVERIFY(w->prpList->editValue("LVL", "47"));
        } else if (change == "damage") {
            QVERIFY(w->prpList->editValue("DAMAGE", "777"));
        } else if (change == "price") {
            QVERIFY(w->prpList->editValue("PURCHASE_PRICE", "-2"));
            QCOMPARE(w->prpList->shownValue("PURCHASE_PRICE"), QString("Mission Reward"));
        } else if (change == "picture") {
            w->setPicture(99);
        } else if (change == "comments") {
            w->txtComments->setPlainText("Pilots' pick");
        } else if (change == "class") {
            w->lstAllowed->addItem("Smuggler's Kin");
        } else if (change == "grid") {
            addRow(w->ubgBlueItems, {"Smuggler's Ledger", "6"});
        }
        const QString q = FixQuotes(name);
        const QString others =
            "SELECT EQUIPMENT_NAME, LAST_UPDATED FROM EQUIPMENTS WHERE EQUIPMENT_NAME <> '" + q + "'";
        const QStringList before = rows(others);
        const int at = changes();
        const SaveResult result = w->cmdSave_Click();
        QCOMPARE(result, check.isEmpty() ? SaveResult::Unchanged : SaveResult::Saved);
        QCOMPARE(f.prompt().count(), 0);
        if (check.isEmpty())
            QCOMPARE(changes(), at);
        else
            QCOMPARE(f.scalar(check).toString(), expected);
        const bool stamped = !check.isEmpty();
        QCOMPARE(f.scalar("SELECT UPDATED FROM EQUIPMENTS WHERE EQUIPMENT_NAME = '" + q + "'").toBool(),
                 stamped);
        QCOMPARE(
            f.scalar("SELECT LAST_UPDATED FROM EQUIPMENTS WHERE EQUIPMENT_NAME = '" + q + "'").toString(),
            stamped ? generalDate(Stamp) : Old);
        QCOMPARE(rows(others), before);
        // Either way the window closes and the main list is told.
        QCOMPARE(m_saved, QStringList{"Equipment: " + name});
        QVERIFY(!db().inTransaction());
        QApplication::processEvents();
        QVERIFY(!FindChildWindow("Edit: " + name));
    }

    void aClearedValueIsStoredAsNull_data() {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("stored"); // table.column
        QTest::newRow("manufacturer") << "MANUFACTURER"
                                      << "EQUIPMENTS.MANUFACTURER";
        QTest::newRow("purchase price") << "PURCHASE_PRICE"
                                        << "EQUIPMENTS.PRICE";
        QTest::newRow("damage type") << "DAMAGE_TYPE"
                                     << "WEAPON_STATS.DAMAGE_TYPE";
        QTest::newRow("delay") << "DELAY"
                               << "WEAPON_STATS.DELAY";
    }
    void aClearedValueIsStoredAsNull() {
        QFETCH(QString, key);
        QFETCH(QString, stored);
        const QString table = stored.section('.', 0, 0);
        const QString name = "Ray Projector Mk II";
        QVERIFY(!f.scalar("SELECT " + stored + " FROM " + table + " WHERE EQUIPMENT_NAME = '" + name + "'")
                     .isNull());
        auto* w = editor(name);
        QVERIFY(w);
        QVERIFY(w->prpList->editValue(key, ""));
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM " + table + " WHERE EQUIPMENT_NAME = '" + name + "' AND " +
                          stored + " IS NULL")
                     .toInt(),
                 1);
    }

    void anAmmunitionsLaunchTypeIsNeverWritten() {
        const QStringList types = rows("SELECT AMO_TYPE, LAUNCH_TYPE FROM AMO_TYPES ORDER BY AMO_TYPE");
        auto* w = editor("Standard Seeker");
        QVERIFY(w);
        QVERIFY(w->prpList->editValue("LAUNCH_TYPE", "Projectile"));
        QVERIFY(w->prpList->editValue("AMO_TYPE_AMO", "Heavy Slug"));
        QVERIFY(w->prpList->editValue("STACK_SIZE", "250"));
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(rows("SELECT AMO_TYPE, STACK_SIZE FROM AMO_STATS WHERE EQUIPMENT_NAME = 'Standard Seeker'"),
                 QStringList{"Heavy Slug|250"});
        QCOMPARE(rows("SELECT AMO_TYPE, LAUNCH_TYPE FROM AMO_TYPES ORDER BY AMO_TYPE"), types);
        // Opened again, the launch type is the one of its new ammunition type.
        QApplication::processEvents();
        w = editor("Standard Seeker");
        QVERIFY(w);
        QCOMPARE(w->prpList->list().value("LAUNCH_TYPE"), QString("Projectile"));
    }

    void newRecords_data() {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("values"); // key=value typed into the property list
        QTest::addColumn<QString>("check");      // the statistics row as stored
        QTest::addColumn<QString>("expected");
        QTest::newRow("beam") << int(equip::Beam) << "O'Brien's Ray"
                              << QStringList{"DAMAGE=55", "DAMAGE_TYPE=ion"}
                              << "SELECT DAMAGE, DAMAGE_TYPE, DELAY FROM WEAPON_STATS"
                              << "55|Ion|NULL";
        QTest::newRow("engine") << int(equip::Engine) << "Zephyr Drive" << QStringList{"WARP=3", "DRAIN=1.5"}
                                << "SELECT WARP, DRAIN FROM ENGINE_STATS"
                                << "3|1.5";
        QTest::newRow("ammunition") << int(equip::Ammunition) << "Ember Slug"
                                    << QStringList{"LAUNCH_TYPE=Projectile", "AMO_TYPE_AMO=Light Slug",
                                                   "DAMAGE=20"}
                                    << "SELECT AMO_TYPE, DAMAGE, RANGE FROM AMO_STATS"
                                    << "Light Slug|20|NULL";
        QTest::newRow("device without statistics")
            << int(equip::Device) << "Quill's Scanner" << QStringList{"MANUFACTURER=Sabel Yards"} << QString()
            << QString();
    }
    void newRecords() {
        QFETCH(int, type);
        QFETCH(QString, name);
        QFETCH(QStringList, values);
        QFETCH(QString, check);
        QFETCH(QString, expected);
        const QStringList types = rows("SELECT AMO_TYPE, LAUNCH_TYPE FROM AMO_TYPES ORDER BY AMO_TYPE");
        setNewEquipmentType([type] { return type; });
        auto* w = editor("");
        QVERIFY(w && w->isNew());
        QVERIFY(w->prpList->editValue("EQUIPMENT_NAME", name));
        QVERIFY(w->prpList->editValue("LVL", "12"));
        for (const QString& v : values)
            QVERIFY2(w->prpList->editValue(v.section('=', 0, 0), v.section('=', 1)), qPrintable(v));
        w->setPicture(5);
        w->txtComments->setPlainText("Found at Kell's");
        w->lstBuyLocations->addItem("Kell's Anchorage");
        addRow(w->ubgBlueItems, {"Smuggler's Ledger", "2"});
        addRow(w->ubgSpecials, {"Overcharge", "", "%"});
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(f.prompt().count(), 0);
        QCOMPARE(m_saved, QStringList{"Equipment: " + name});

        const QString q = FixQuotes(name);
        QCOMPARE(
            rows(
                "SELECT TYPE, LVL, QUALITY, PERSONAL_DB, UPDATED, LAST_UPDATED, PIC_ID, COMMENTS, PRICE FROM "
                "EQUIPMENTS WHERE EQUIPMENT_NAME = '" +
                q + "'"),
            QStringList{DeEnumerate(type) + "|12|100|true|true|" + generalDate(Stamp) +
                        "|5|Found at Kell's|NULL"});
        int statRows = 0;
        for (const char* table :
             {"WEAPON_STATS", "REACTOR_STATS", "ENGINE_STATS", "SHIELD_STATS", "AMO_STATS"})
            statRows += f.scalar(QString("SELECT COUNT(*) FROM %1 WHERE EQUIPMENT_NAME = '%2'").arg(table, q))
                            .toInt();
        QCOMPARE(statRows, check.isEmpty() ? 0 : 1);
        if (!check.isEmpty())
            QCOMPARE(rows(check + " WHERE EQUIPMENT_NAME = '" + q + "'"), QStringList{expected});
        QCOMPARE(rows("SELECT STATIONS_STATION FROM BUY_EQUIPMENT_LOCATION WHERE EQUIPMENTS_EQUIPMENT = '" +
                      q + "'"),
                 QStringList{"Kell's Anchorage"});
        QCOMPARE(
            rows("SELECT ITEM_NAME, AMOUNT FROM EQUIPMENTS_ITEMS WHERE EQUIPMENTS_EQUIPMENT = '" + q + "'"),
            QStringList{"Smuggler's Ledger|2"});
        // The special's empty amount was taken as 0.
        QCOMPARE(rows("SELECT SPECIAL, AMOUNT, UNITS, SHUNT FROM EQUIP_SPECIALS WHERE EQUIPMENT_NAME = '" +
                      q + "'"),
                 QStringList{"Overcharge|0|%|NULL"});
        QCOMPARE(rows("SELECT AMO_TYPE, LAUNCH_TYPE FROM AMO_TYPES ORDER BY AMO_TYPE"), types);
        // The new record opens in the editor like any other.
        QApplication::processEvents();
        QVERIFY(editor(name));
        QCOMPARE(f.prompt().count(), 0);
    }

    void refusedBeforeAnythingIsWritten_data() {
        QTest::addColumn<QString>("record"); // empty: a new beam
        QTest::addColumn<QString>("name");   // typed as a new record's name
        QTest::addColumn<QString>("grid");
        QTest::addColumn<QList<QStringList>>("gridRows");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("text");
        const QString sun = "Sunspear Mk II";
        QTest::newRow("two adjacent quotes")
            << QString() << "O''Brien's Ray" << QString() << QList<QStringList>() << "Invalid name"
            << "Names cannot contain a double single-quote! Please change name to continue.";
        QTest::newRow("a MOB without its frequency")
            << sun << QString() << "ubgMOBs" << QList<QStringList>{{"Brother Kell's Wraith"}} << "MOBs Error"
            << "MOBs:\r\nPlease specify an entry for Drop Frequency\r\nRow: 1,  Column: 2";
        QTest::newRow("a component twice in manufacturing")
            << sun << QString() << "ubgManuComps"
            << QList<QStringList>{{"Hull Plate", "1"}, {"hull plate", "2"}} << "Manufacturing: Items Error"
            << "Manufacturing: Items:\r\nThe value 'hull plate' appears more than once in the Component Name list, "
               "please remove one";
        QTest::newRow("a special twice")
            << sun << QString() << "ubgSpecials"
            << QList<QStringList>{{"Overcharge", "1", "%"}, {"Overcharge", "2", "%"}}
            << "Duplicate Special Entries"
            << "The special 'Overcharge' appears more than once in the special list, please remove one";
        QTest::newRow("a new record without a name")
            << QString() << QString() << QString() << QList<QStringList>() << "Empty Data"
            << "One or more of the values entered must not be empty";
        QTest::newRow("a new record's name taken in another letter case")
            << QString() << "SUNSPEAR MK II" << QString() << QList<QStringList>() << "Duplicate Record"
            << "The name of the item you entered already exists, please rename this item";
    }
    void refusedBeforeAnythingIsWritten() {
        QFETCH(QString, record);
        QFETCH(QString, name);
        QFETCH(QString, grid);
        QFETCH(QList<QStringList>, gridRows);
        QFETCH(QString, title);
        QFETCH(QString, text);
        QString e;
        QVERIFY2(f.exec({"DELETE FROM MOB_EQUIP_DROP WHERE EQUIPMENT_NAME = 'Sunspear Mk II'",
                         "DELETE FROM COMPONENTS_EQUIPMENTS WHERE EQUIPMENT_NAME = 'Sunspear Mk II'",
                         "DELETE FROM EQUIP_SPECIALS WHERE EQUIPMENT_NAME = 'Sunspear Mk II'"},
                        &e),
                 qPrintable(e));
        setNewEquipmentType([] { return int(equip::Beam); });
        auto* w = editor(record);
        QVERIFY(w);
        if (!name.isEmpty())
            QVERIFY(w->prpList->editValue("EQUIPMENT_NAME", name));
        QVERIFY(w->prpList->editValue("LVL", "33"));
        for (const QStringList& r : gridRows)
            addRow(w->grid(grid), r);
        const int at = changes();
        const SaveResult result = w->cmdSave_Click();
        QVERIFY(result == SaveResult::Refused || result == SaveResult::Failed);
        QCOMPARE(f.prompt().count(), 1);
        QCOMPARE(f.prompt().last().title, title);
        QCOMPARE(f.prompt().last().text, text);
        // The window stays open with the user's edits; nothing is written.
        QVERIFY(w->isVisible());
        QCOMPARE(w->prpList->list().value("LVL"), QString("33"));
        if (!grid.isEmpty())
            QCOMPARE(w->grid(grid)->grid().lastDataRow(), gridRows.size());
        QCOMPARE(changes(), at);
        QVERIFY(!db().inTransaction());
        QVERIFY(m_saved.isEmpty());
        QCOMPARE(f.scalar("SELECT LVL FROM EQUIPMENTS WHERE EQUIPMENT_NAME = 'Sunspear Mk II'").toInt() == 33,
                 false);
    }

    void aFailureInTheLastGridWriteRollsEverythingBack() {
        const QString name = "Glimmer Array Mk II";
        const QString where = " WHERE EQUIPMENTS_EQUIPMENT = 'Glimmer Array Mk II'";
        const QStringList record = rows("SELECT * FROM EQUIPMENTS WHERE EQUIPMENT_NAME = '" + name + "'");
        const QStringList classes = rows("SELECT CLASS_NAME FROM EQUIPMENT_CLASS" + where);
        const QStringList comps = rows("SELECT * FROM EQUIPMENTS_COMPONENTS" + where);
        const QStringList upgrades =
            rows("SELECT * FROM EQUIPMENTS_UPGRADE_FROM ORDER BY EQUIPMENT_NAME, UPGRADE_FROM");
        auto* w = editor(name);
        QVERIFY(w);
        QVERIFY(w->prpList->editValue("LVL", "41"));
        QVERIFY(w->prpList->editValue("DAMAGE", "1234"));
        w->lstAllowed->addItem("Smuggler's Kin");
        addRow(w->ubgBlueEquip, {"Sunspear Mk I", "1"});
        addRow(w->ubgBlueComps, {"Hull Plate", "4"});
        // The specials are written last; this amount cannot be stored.
        addRow(w->ubgSpecials, {"Overcharge", "plenty", "%"});
        QCOMPARE(w->cmdSave_Click(), SaveResult::Failed);
        QCOMPARE(f.prompt().count(), 1);
        QCOMPARE(f.prompt().last().title, QString("Invalid Values"));
        QVERIFY(!db().inTransaction());
        QCOMPARE(rows("SELECT * FROM EQUIPMENTS WHERE EQUIPMENT_NAME = '" + name + "'"), record);
        QCOMPARE(rows("SELECT CLASS_NAME FROM EQUIPMENT_CLASS" + where), classes);
        QCOMPARE(rows("SELECT * FROM EQUIPMENTS_COMPONENTS" + where), comps);
        QCOMPARE(rows("SELECT * FROM EQUIPMENTS_UPGRADE_FROM ORDER BY EQUIPMENT_NAME, UPGRADE_FROM"),
                 upgrades);
        QVERIFY(f.scalar("SELECT DAMAGE FROM WEAPON_STATS WHERE EQUIPMENT_NAME = '" + name + "'").toInt() !=
                1234);
        QVERIFY(m_saved.isEmpty());
        QVERIFY(w->isVisible());
        QCOMPARE(w->prpList->list().value("LVL"), QString("41"));
        QCOMPARE(w->ubgSpecials->grid().text(1, 2), QString("plenty"));
        // Corrected, the same window saves everything.
        w->ubgSpecials->grid().userEdit(1, 2, "2.5");
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(f.scalar("SELECT LVL FROM EQUIPMENTS WHERE EQUIPMENT_NAME = '" + name + "'").toInt(), 41);
        QCOMPARE(f.scalar("SELECT DAMAGE FROM WEAPON_STATS WHERE EQUIPMENT_NAME = '" + name + "'").toInt(),
                 1234);
        QCOMPARE(rows("SELECT CLASS_NAME FROM EQUIPMENT_CLASS" + where).size(), classes.size() + 1);
        QCOMPARE(rows("SELECT AMOUNT FROM EQUIP_SPECIALS WHERE EQUIPMENT_NAME = '" + name + "'"),
                 QStringList{"2.5"});
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

    void aRecordDeletedWhileOpenIsNotWrittenBack() {
        auto* w = editor("Sunspear Mk IV");
        QVERIFY(w);
        QString e;
        QVERIFY2(f.exec({"DELETE FROM EQUIPMENTS WHERE EQUIPMENT_NAME = 'Sunspear Mk IV'"}, &e),
                 qPrintable(e));
        addRow(w->ubgMOBs, {"Brother Kell's Wraith", "Rare"});
        QCOMPARE(w->cmdSave_Click(), SaveResult::Failed);
        QVERIFY(f.prompt().last().text.endsWith("procedure cmdSave_Click of Form frmAddEquip"));
        QCOMPARE(
            f.scalar("SELECT COUNT(*) FROM MOB_EQUIP_DROP WHERE EQUIPMENT_NAME = 'Sunspear Mk IV'").toInt(),
            0);
        QVERIFY(!db().inTransaction());
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
        QStringList rowsShown;
        for (int i = 0; i < p.count(); ++i)
            if (p.at(i).parent == "Custom")
                rowsShown << p.at(i).key + "=" + p.at(i).caption;
        // The second field has no caption: it is not in use.
        QCOMPARE(rowsShown, QStringList({"CUSTOM_01=Seen at", "CUSTOM_03=Trade note"}));
        QVERIFY(w->prpList->editValue("CUSTOM_03", "Kell's price"));
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(
            f.scalar("SELECT CUSTOM_03 FROM EQUIPMENTS WHERE EQUIPMENT_NAME = 'Ion Drive Mk I'").toString(),
            QString("Kell's price"));
    }

    void closingAsksOnlyAfterRealEdits() {
        setNewEquipmentType([] { return int(equip::Shield); });
        auto* w = editor("");
        QVERIFY(w);
        // Another type is no edit yet.
        QVERIFY(w->prpList->editValue("TYPE", "Reactor"));
        QApplication::processEvents();
        QCOMPARE(w->windowTitle(), QString("New: Reactor"));
        QVERIFY(w->close());
        QCOMPARE(f.prompt().count(), 0);
        QApplication::processEvents();
        w = editor("Deflector Mk I");
        QVERIFY(w);
        QVERIFY(w->prpList->editValue("COVERAGE", "1"));
        f.prompt().queueButton(vb::No);
        QVERIFY(!w->close());
        QCOMPARE(f.prompt().last().title, QString("Unsaved Changes"));
        f.prompt().queueButton(vb::Yes);
        QVERIFY(w->close());
        QVERIFY(m_saved.isEmpty());
    }

private:
    ViewsFixture f;
    QStringList m_saved;
};

QTEST_MAIN(TestFrmAddEquipSave)
#include "tst_frmaddequip_save.moc"
