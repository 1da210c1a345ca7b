// The MOB editor on the sample world: the loader and its captions, a new MOB, the record written over
// its two tables, the location rules, saves that write only what changed, the refusals before anything
// is written, all-or-nothing saves, and the lookup lists it offers.
#include "core/childwindows.h"
#include "core/clock.h"
#include "data/database.h"
#include "data/recordset.h"
#include "editors/editors.h"
#include "editors/frmaddmob.h"
#include "editors/frmlisteditdialog.h"
#include "editors/gridroutines.h"
#include "editors/propertylistwidget.h"
#include "editors/ubgrid.h"
#include "editortests.h"
#include "views/modmain.h"
#include "viewsfixture.h"

#include <QApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>
#include <sqlite3.h>

namespace {
const QDateTime Stamp(QDate(2027, 3, 14), QTime(15, 9, 26));
const QString Kell = "Brother Kell's Wraith";

frmAddMob* editor(const QString& name) {
    OpenEditor("MOBs", name);
    return qobject_cast<frmAddMob*>(FindChildWindow(name.isEmpty() ? QString("New: MOB") : "Edit: " + name));
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

QString lit(const QString& s) {
    return "'" + QString(s).replace("'", "''") + "'";
}
} // namespace

class TestFrmAddMob : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString e;
        QVERIFY2(f.setUp(true, &e), qPrintable(e));
        setClock([] { return Stamp; });
        m_saved.clear();
        setRecordSavedHandler(
            [this](const QString& kind, const QString& name) { m_saved << kind + ": " + name; });
    }
    void cleanup() {
        CloseChildWindows();
        QApplication::processEvents();
        setRecordSavedHandler(nullptr);
        setClock(nullptr);
        f.tearDown();
    }

    // Each grid's statements (tagged by its list name), written out as the editor must send them, with a name
    // holding a quote.
    void gridStatementsAsWritten_data() {
        QTest::addColumn<QString>("widget");
        QTest::addColumn<QStringList>("load");
        QTest::addColumn<QString>("save");
        const QString dmg = "SELECT DAMAGE_TYPE FROM DAMAGE_TYPE ORDER BY DAMAGE_TYPE|1";
        const QString freq = "SELECT FREQUENCY FROM DROP_FREQUENCY|2";
        const QString w = " WHERE MOB_NAME = 'O''Brien' ORDER BY ";
        QTest::newRow("Attack Types")
            << "ubgAttackTypes"
            << QStringList{"SELECT ATTACK_TYPE, AMOUNT FROM MOB_ATTACK_TYPE" + w + "ATTACK_TYPE", dmg}
            << "SELECT ATTACK_TYPE, AMOUNT, MOB_NAME FROM MOB_ATTACK_TYPE" + w + "ATTACK_TYPE";
        QTest::newRow("Components")
            << "ubgComponents"
            << QStringList{"SELECT COMPONENT_NAME, DROP_FREQUENCY FROM MOB_COMP_DROP" + w + "COMPONENT_NAME",
                           "SELECT COMPONENT_NAME FROM COMPONENTS ORDER BY COMPONENT_NAME|1", freq}
            << "SELECT COMPONENT_NAME, DROP_FREQUENCY, MOB_NAME FROM MOB_COMP_DROP" + w + "COMPONENT_NAME";
        QTest::newRow("Equipment")
            << "ubgEquipment"
            << QStringList{"SELECT EQUIPMENT_NAME, DROP_FREQUENCY FROM MOB_EQUIP_DROP" + w + "EQUIPMENT_NAME",
                           "SELECT EQUIPMENT_NAME FROM EQUIPMENTS ORDER BY EQUIPMENT_NAME|1", freq}
            << "SELECT EQUIPMENT_NAME, DROP_FREQUENCY, MOB_NAME FROM MOB_EQUIP_DROP" + w + "EQUIPMENT_NAME";
        QTest::newRow("Items") << "ubgItems"
                               << QStringList{"SELECT ITEM_NAME, DROP_FREQUENCY FROM MOB_ITEM_DROP" + w +
                                                  "ITEM_NAME",
                                              "SELECT ITEM_NAME FROM ITEMS ORDER BY ITEM_NAME|1", freq}
                               << "SELECT ITEM_NAME, DROP_FREQUENCY, MOB_NAME FROM MOB_ITEM_DROP" + w +
                                      "ITEM_NAME";
        QTest::newRow("Locations")
            << "ubgLocations"
            << QStringList{"SELECT SECTOR_NAME, NAV_POINT, SPAWN_RATE FROM MOBS_LOCATION" + w + "SECTOR_NAME",
                           "SELECT SECTOR_NAME FROM SECTORS ORDER BY SECTOR_NAME|1",
                           "SELECT SPAWN_RATE FROM SPAWN_RATE|3"}
            << "SELECT SECTOR_NAME, NAV_POINT, SPAWN_RATE, MOB_NAME FROM MOBS_LOCATION" + w + "SECTOR_NAME";
        QTest::newRow("Raw Materials")
            << "ubgRawMaterials"
            << QStringList{"SELECT RAW_MATERIAL_NAME, DROP_FREQUENCY FROM MOB_RAW_MAT_DROP" + w +
                               "RAW_MATERIAL_NAME",
                           "SELECT RAW_MATERIAL_NAME FROM RAW_MATERIALS ORDER BY RAW_MATERIAL_NAME|1", freq}
            << "SELECT RAW_MATERIAL_NAME, DROP_FREQUENCY, MOB_NAME FROM MOB_RAW_MAT_DROP" + w +
                   "RAW_MATERIAL_NAME";
        QTest::newRow("Resistances")
            << "ubgResistances"
            << QStringList{"SELECT RESISTANCE, AMOUNT FROM MOB_RESISTANCE" + w + "RESISTANCE", dmg}
            << "SELECT RESISTANCE, AMOUNT, MOB_NAME FROM MOB_RESISTANCE" + w + "RESISTANCE";
        QTest::newRow("Weaknesses") << "ubgWeaknesses"
                                    << QStringList{"SELECT WEAKNESS, AMOUNT FROM MOB_WEAKNESS" + w +
                                                       "WEAKNESS",
                                                   dmg}
                                    << "SELECT WEAKNESS, AMOUNT, MOB_NAME FROM MOB_WEAKNESS" + w + "WEAKNESS";
    }
    void gridStatementsAsWritten() {
        QFETCH(QString, widget);
        QFETCH(QStringList, load);
        QFETCH(QString, save);
        const GridDef& def = mob::grid(widget);
        QCOMPARE(def.widget, widget);
        QCOMPARE(def.queries("O''Brien"), load);
        QCOMPARE(def.save("O''Brien"), save);
        QCOMPARE(def.keyColumn, QString("MOB_NAME"));
        // The list name titles the grid's messages; the tab shows the same words.
        QCOMPARE(def.listName, QString(QTest::currentDataTag()));
        QCOMPARE(mob::tabGrid(QTest::currentDataTag()), widget);
    }

    void windowLayoutAndRecordQuery() {
        QCOMPARE(mob::recordSql("O'Brien"),
                 QString("SELECT * FROM MOBS INNER JOIN MOB_STATS ON MOBS.MOB_NAME = MOB_STATS.MOB_NAME "
                         "WHERE MOB_STATS.MOB_NAME = 'O''Brien'"));
        // Validated and rewritten in the order of the grid table.
        QStringList order;
        for (const GridDef& g : mob::grids())
            order << g.widget;
        QCOMPARE(order, QStringList({"ubgAttackTypes", "ubgComponents", "ubgEquipment", "ubgItems",
                                     "ubgLocations", "ubgRawMaterials", "ubgResistances", "ubgWeaknesses"}));
        auto* w = editor(Kell);
        QVERIFY(w);
        QStringList tabs;
        for (int i = 0; i < w->tabMOB->count(); ++i)
            tabs << w->tabMOB->tabText(i);
        QCOMPARE(tabs, QStringList({"Comments", "Attack Types", "Resistances", "Weaknesses", "Locations",
                                    "Equipment", "Components", "Raw Materials", "Items"}));
        QCOMPARE(w->tabMOB->widget(4), static_cast<QWidget*>(w->ubgLocations));
    }

    void loaderFillsAnExistingMob() {
        auto* w = editor(Kell);
        QVERIFY(w && w->isVisible());
        QCOMPARE(f.prompt().count(), 0);
        QCOMPARE(w->windowTitle(), "Edit: " + Kell);
        QVERIFY(!w->isNew());
        const PropertyList& p = w->prpMOB->list();
        QCOMPARE(p.value("MOBS.MOB_NAME"), Kell);
        QCOMPARE(p.row("MOBS.MOB_NAME")->caption, QString("MOB Name"));
        QVERIFY(p.row("MOBS.MOB_NAME")->readOnly);
        QVERIFY(!p.anyChanged());
        // Every property row holds the column as stored, across both tables.
        Recordset rs;
        rs.open(mob::recordSql(Kell));
        QVERIFY(!rs.eof());
        for (const char* c : {"TYPE", "FACTION", "COMBAT_LEVEL", "HULL", "AGGRO_RANGE", "BRAVERY",
                              "INTELIGENCE", "LAST_UPDATED"})
            QCOMPARE(p.value(c), NzString(rs.value(c)));
        QCOMPARE(p.value("BOSS"), QString(rs.value("BOSS").toBool() ? "Yes" : "No"));
        QCOMPARE(w->txtComments->toPlainText(), NzString(rs.value("COMMENTS")));
        QCOMPARE(w->lblName->text(), Kell);
        QVERIFY(w->lblType->text().startsWith("Level " + p.value("COMBAT_LEVEL") + " "));
        for (const GridDef& def : mob::grids()) {
            const QString table = def.saveQuery.section(" FROM ", 1).section(' ', 0, 0);
            QCOMPARE(w->grid(def.widget)->grid().lastDataRow(),
                     f.scalar("SELECT COUNT(*) FROM " + table + " WHERE MOB_NAME = " + lit(Kell)).toInt());
        }
        // The help texts carry their suffixes.
        QVERIFY(p.row("BRAVERY")->help.endsWith(" (Default: Average)"));
        QVERIFY(p.row("LAST_UPDATED")->help.endsWith(" (Read Only)"));
        // A second request brings the same window forward.
        QCOMPARE(editor(Kell), w);
    }

    void aNewMobStartsWithItsDefaults() {
        auto* w = editor("");
        QVERIFY(w && w->isNew());
        QCOMPARE(w->windowTitle(), QString("New: MOB"));
        const PropertyList& p = w->prpMOB->list();
        QCOMPARE(p.value("MOBS.MOB_NAME"), QString("New MOB"));
        QVERIFY(!p.row("MOBS.MOB_NAME")->readOnly);
        QCOMPARE(p.value("TYPE"), QString("Organic"));
        QCOMPARE(p.value("FACTION"), QString("Unknown"));
        for (const char* t : {"BRAVERY", "AGGRESSIVENESS", "ALTRUISM", "INTELIGENCE"})
            QCOMPARE(p.value(t), QString("Average"));
        QCOMPARE(p.row("BRAVERY")->choices, QStringList({"Very Low", "Low", "Average", "High", "Very High"}));
        QVERIFY(p.row("TYPE")->choices.contains("Spectral"));
        for (const GridDef& def : mob::grids())
            QCOMPARE(w->grid(def.widget)->grid().lastDataRow(), 0);
        // Nothing typed yet: closing asks nothing.
        QVERIFY(w->close());
        QCOMPARE(f.prompt().count(), 0);
    }

    void aNewMobIsWrittenToBothTables_data() {
        QTest::addColumn<QString>("name"); // empty: saved without renaming
        QTest::newRow("not renamed") << "";
        QTest::newRow("a name with one quote") << "Tinker's Wyrm";
    }
    void aNewMobIsWrittenToBothTables() {
        QFETCH(QString, name);
        const QString stored = name.isEmpty() ? QString("New MOB") : name;
        auto* w = editor("");
        QVERIFY(w);
        if (!name.isEmpty())
            QVERIFY(w->prpMOB->editValue("MOBS.MOB_NAME", name));
        QVERIFY(w->prpMOB->editValue("COMBAT_LEVEL", "14"));
        QVERIFY(w->prpMOB->editValue("HULL", "900"));
        QVERIFY(w->prpMOB->editValue("BOSS", "Yes"));
        QVERIFY(w->prpMOB->editValue("ALTRUISM", "very high"));
        QCOMPARE(w->lblType->text(), QString("Level 14 Organic Boss"));
        w->txtComments->setPlainText("It's quick");
        const QString sector =
            f.scalar("SELECT SECTOR_NAME FROM NAV_POINTS ORDER BY SECTOR_NAME, NAV_POINT_NAME").toString();
        const QString nav =
            f.scalar("SELECT NAV_POINT_NAME FROM NAV_POINTS WHERE SECTOR_NAME = " + lit(sector) +
                     " ORDER BY NAV_POINT_NAME")
                .toString();
        addRow(w->ubgAttackTypes, {"Plasma", "40"});
        addRow(w->ubgResistances, {"Ion", "25"});
        addRow(w->ubgWeaknesses, {"Kinetic", "10"});
        addRow(w->ubgLocations, {sector, nav, "Fast"});
        addRow(w->ubgEquipment, {"Hunter's Lance Mk I", "Rare"});
        addRow(w->ubgComponents, {"Navigator's Sextant", "Normal"});
        addRow(w->ubgRawMaterials, {"Miner's Gold", "Frequent"});
        addRow(w->ubgItems, {"Smuggler's Ledger", "Very Rare"});
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(f.prompt().count(), 0);
        QCOMPARE(m_saved, QStringList({"MOBs: " + stored}));
        QApplication::processEvents();
        QVERIFY(!FindChildWindow("New: MOB"));

        const QString n = lit(stored);
        QCOMPARE(rows("SELECT TYPE, FACTION, COMMENTS, PERSONAL_DB, UPDATED, LAST_UPDATED FROM MOBS WHERE "
                      "MOB_NAME = " +
                      n),
                 QStringList({"Organic|Unknown|It's quick|true|true|" + generalDate(Stamp)}));
        QCOMPARE(
            rows(
                "SELECT COMBAT_LEVEL, HULL, SHIELD, BOSS, BRAVERY, ALTRUISM FROM MOB_STATS WHERE MOB_NAME = " +
                n),
            QStringList({"14|900|NULL|true|Average|Very High"}));
        QCOMPARE(rows("SELECT ATTACK_TYPE, AMOUNT FROM MOB_ATTACK_TYPE WHERE MOB_NAME = " + n),
                 QStringList({"Plasma|40"}));
        QCOMPARE(rows("SELECT RESISTANCE FROM MOB_RESISTANCE WHERE MOB_NAME = " + n), QStringList({"Ion"}));
        QCOMPARE(rows("SELECT WEAKNESS FROM MOB_WEAKNESS WHERE MOB_NAME = " + n), QStringList({"Kinetic"}));
        QCOMPARE(rows("SELECT SECTOR_NAME, NAV_POINT, SPAWN_RATE FROM MOBS_LOCATION WHERE MOB_NAME = " + n),
                 QStringList({sector + "|" + nav + "|Fast"}));
        QCOMPARE(rows("SELECT EQUIPMENT_NAME, DROP_FREQUENCY FROM MOB_EQUIP_DROP WHERE MOB_NAME = " + n),
                 QStringList({"Hunter's Lance Mk I|Rare"}));
        QCOMPARE(rows("SELECT COMPONENT_NAME FROM MOB_COMP_DROP WHERE MOB_NAME = " + n),
                 QStringList({"Navigator's Sextant"}));
        QCOMPARE(rows("SELECT RAW_MATERIAL_NAME FROM MOB_RAW_MAT_DROP WHERE MOB_NAME = " + n),
                 QStringList({"Miner's Gold"}));
        QCOMPARE(rows("SELECT ITEM_NAME FROM MOB_ITEM_DROP WHERE MOB_NAME = " + n),
                 QStringList({"Smuggler's Ledger"}));

        // Opened again, it is an ordinary MOB that saves unchanged.
        auto* again = editor(stored);
        QVERIFY(again);
        QCOMPARE(again->prpMOB->list().value("TYPE"), QString("Organic"));
        QCOMPARE(again->cmdSave_Click(), SaveResult::Unchanged);
    }

    // The location grid's rules in this editor: the same sector at two nav points is one MOB's right;
    // the same sector and nav point twice is refused, whatever the letter case.
    void locationsKeyOnSectorAndNavPoint_data() {
        QTest::addColumn<bool>("sameNav");
        QTest::addColumn<bool>("upperCase");
        QTest::addColumn<QString>("spawnRate");
        QTest::addColumn<QString>("error"); // empty: saved
        QTest::newRow("two nav points of one sector") << false << false << "Slow"
                                                      << "";
        QTest::newRow("the same nav point twice") << true << false << "Slow"
                                                  << "The Sector %1 already has an entry for Nav Point %2";
        QTest::newRow("the same nav point in capitals")
            << true << true << "Slow"
            << "The Sector %1 already has an entry for Nav Point %2";
        QTest::newRow("no spawn rate") << false << false << ""
                                       << "Please specify an entry for Spawn Rate\r\nRow: 2,  Column: 3";
    }
    void locationsKeyOnSectorAndNavPoint() {
        QFETCH(bool, sameNav);
        QFETCH(bool, upperCase);
        QFETCH(QString, spawnRate);
        QFETCH(QString, error);
        const QString sector = f.scalar("SELECT SECTOR_NAME FROM NAV_POINTS GROUP BY SECTOR_NAME HAVING "
                                        "COUNT(*) > 1 ORDER BY SECTOR_NAME")
                                   .toString();
        QVERIFY(!sector.isEmpty());
        const QStringList navs =
            rows("SELECT NAV_POINT_NAME FROM NAV_POINTS WHERE SECTOR_NAME = " + lit(sector) +
                 " ORDER BY NAV_POINT_NAME");
        QVERIFY2(f.exec({"DELETE FROM MOBS_LOCATION WHERE MOB_NAME = " + lit(Kell)}, &m_error),
                 qPrintable(m_error));
        auto* w = editor(Kell);
        QVERIFY(w);
        addRow(w->ubgLocations, {sector, navs.at(0), "Fast"});
        const QString second = sameNav ? navs.at(0) : navs.at(1);
        addRow(w->ubgLocations,
               {upperCase ? sector.toUpper() : sector, upperCase ? second.toUpper() : second, spawnRate});
        const int before = sqlite3_total_changes(db().handle());
        const SaveResult result = w->cmdSave_Click();
        if (error.isEmpty()) {
            QCOMPARE(result, SaveResult::Saved);
            QCOMPARE(f.prompt().count(), 0);
            QCOMPARE(rows("SELECT NAV_POINT, SPAWN_RATE FROM MOBS_LOCATION WHERE MOB_NAME = " + lit(Kell) +
                          " ORDER BY NAV_POINT"),
                     QStringList({navs.at(0) + "|Fast", navs.at(1) + "|Slow"}));
            return;
        }
        QCOMPARE(result, SaveResult::Refused);
        QCOMPARE(f.prompt().count(), 1);
        QCOMPARE(f.prompt().last().title, QString("Locations Error"));
        QCOMPARE(f.prompt().last().text, "Locations:\r\n" + error.arg(upperCase ? sector.toUpper() : sector,
                                                                      upperCase ? second.toUpper() : second));
        QCOMPARE(sqlite3_total_changes(db().handle()), before);
        QVERIFY(w->isVisible());
        QCOMPARE(w->ubgLocations->grid().lastDataRow(), 2);
    }

    void theNavPointListFollowsTheRowsSector() {
        auto* w = editor(Kell);
        QVERIFY(w);
        GridModel& g = w->ubgLocations->grid();
        const int entry = g.rows() - 1;
        // No sector yet: the nav point cannot be chosen.
        QVERIFY(!g.beginUserEdit(entry, 2));
        QCOMPARE(f.prompt().last().text, QString("Please set the Sector first."));
        const QString sector = f.scalar("SELECT SECTOR_NAME FROM NAV_POINTS GROUP BY SECTOR_NAME HAVING "
                                        "COUNT(*) > 1 ORDER BY SECTOR_NAME DESC")
                                   .toString();
        g.userEdit(entry, 1, sector);
        QCOMPARE(g.listDisplays(2),
                 QStringList{NoneEntry} + rows("SELECT NAV_POINT_NAME FROM NAV_POINTS WHERE "
                                               "SECTOR_NAME = " +
                                               lit(sector) + " ORDER BY NAV_POINT_NAME"));
        g.userEdit(entry, 2, g.listDisplays(2).at(1));
        // Another sector empties the row's nav point.
        g.userEdit(entry, 1, g.listDisplays(1).at(1));
        QCOMPARE(g.text(entry, 2), QString());
        // "(None)" as the sector removes the row.
        const int count = g.lastDataRow();
        g.userEdit(entry, 1, NoneEntry);
        QCOMPARE(g.lastDataRow(), count - 1);
    }

    void savesWriteOnlyWhatChanged_data() {
        QTest::addColumn<QString>("key");   // a property row, "comments" or a grid's widget
        QTest::addColumn<QString>("value"); // "=": set to something else and back
        QTest::addColumn<QString>("check"); // a column of the join, as stored after the save
        QTest::addColumn<QString>("stored");
        QTest::addColumn<bool>("saved");
        QTest::newRow("nothing") << ""
                                 << ""
                                 << ""
                                 << "" << false;
        QTest::newRow("a MOBS column") << "FACTION"
                                       << "Drift Clans"
                                       << "FACTION"
                                       << "Drift Clans" << true;
        QTest::newRow("a MOB_STATS column") << "SHIELD"
                                            << "1234"
                                            << "SHIELD"
                                            << "1234" << true;
        QTest::newRow("a temperament") << "BRAVERY"
                                       << "Very Low"
                                       << "BRAVERY"
                                       << "Very Low" << true;
        QTest::newRow("a cleared value is NULL") << "HULL"
                                                 << ""
                                                 << "HULL"
                                                 << "NULL" << true;
        QTest::newRow("a flag") << "SUBMITTED"
                                << "Yes"
                                << "SUBMITTED"
                                << "true" << true;
        QTest::newRow("a value set back") << "MASS"
                                          << "="
                                          << ""
                                          << "" << false;
        QTest::newRow("comments") << "comments"
                                  << "Hides behind moons."
                                  << "COMMENTS"
                                  << "Hides behind moons." << true;
        QTest::newRow("comments cleared") << "comments"
                                          << ""
                                          << "COMMENTS"
                                          << "NULL" << true;
        QTest::newRow("a grid only") << "ubgItems"
                                     << "Smuggler's Ledger"
                                     << ""
                                     << "" << true;
        QTest::newRow("a grid row added and removed") << "ubgItems"
                                                      << "="
                                                      << ""
                                                      << "" << false;
    }
    void savesWriteOnlyWhatChanged() {
        QFETCH(QString, key);
        QFETCH(QString, value);
        QFETCH(QString, check);
        QFETCH(QString, stored);
        QFETCH(bool, saved);
        QVERIFY2(
            f.exec({"UPDATE MOBS SET UPDATED = FALSE, COMMENTS = 'old', LAST_UPDATED = '2020-01-01 00:00:00' "
                    "WHERE MOB_NAME = " +
                        lit(Kell),
                    "UPDATE MOB_STATS SET HULL = 77 WHERE MOB_NAME = " + lit(Kell),
                    "DELETE FROM MOB_ITEM_DROP WHERE MOB_NAME = " + lit(Kell)},
                   &m_error),
            qPrintable(m_error));
        auto* w = editor(Kell);
        QVERIFY(w);
        if (key == "comments") {
            w->txtComments->setPlainText(value);
        } else if (key.startsWith("ubg")) {
            addRow(w->grid(key), {"Smuggler's Ledger", "Rare"});
            if (value == "=")
                w->grid(key)->grid().userEdit(1, 1, NoneEntry);
        } else if (!key.isEmpty()) {
            const QString was = w->prpMOB->list().value(key);
            QVERIFY(w->prpMOB->editValue(key, value == "=" ? "4242" : value));
            if (value == "=")
                QVERIFY(w->prpMOB->editValue(key, was));
        }
        const int before = sqlite3_total_changes(db().handle());
        QCOMPARE(w->cmdSave_Click(), saved ? SaveResult::Saved : SaveResult::Unchanged);
        QCOMPARE(f.prompt().count(), 0);
        if (!saved)
            QCOMPARE(sqlite3_total_changes(db().handle()), before);
        if (!check.isEmpty())
            QCOMPARE(rows("SELECT " + check +
                          " FROM MOBS INNER JOIN MOB_STATS ON MOBS.MOB_NAME = "
                          "MOB_STATS.MOB_NAME WHERE MOBS.MOB_NAME = " +
                          lit(Kell)),
                     QStringList{stored});
        QCOMPARE(rows("SELECT UPDATED, LAST_UPDATED FROM MOBS WHERE MOB_NAME = " + lit(Kell)),
                 QStringList{saved ? "true|" + generalDate(Stamp) : QString("false|2020-01-01 00:00:00")});
        // Only the one change: the rest of the record is as it was.
        if (key != "HULL")
            QCOMPARE(f.scalar("SELECT HULL FROM MOB_STATS WHERE MOB_NAME = " + lit(Kell)).toInt(), 77);
        if (key != "comments")
            QCOMPARE(f.scalar("SELECT COMMENTS FROM MOBS WHERE MOB_NAME = " + lit(Kell)).toString(),
                     QString("old"));
        QCOMPARE(m_saved, QStringList({"MOBs: " + Kell}));
        QVERIFY(!db().inTransaction());
    }

    void refusedBeforeAnythingIsWritten_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("text");
        QTest::newRow("two adjacent quotes")
            << "Brother Kell''s Wraith"
            << "Invalid Name"
            << "Names cannot contain a double single-quote! Please change the name to continue.";
        QTest::newRow("no name") << ""
                                 << "Empty Data"
                                 << "One or more of the values entered must not be empty";
        QTest::newRow("a name taken, in another letter case")
            << "BROTHER KELL'S WRAITH"
            << "Duplicate Record"
            << "The name of the item you entered already exists, please rename this item";
    }
    void refusedBeforeAnythingIsWritten() {
        QFETCH(QString, name);
        QFETCH(QString, title);
        QFETCH(QString, text);
        const int mobs = f.scalar("SELECT COUNT(*) FROM MOBS").toInt();
        const int stats = f.scalar("SELECT COUNT(*) FROM MOB_STATS").toInt();
        const int attacks = f.scalar("SELECT COUNT(*) FROM MOB_ATTACK_TYPE").toInt();
        auto* w = editor("");
        QVERIFY(w);
        QVERIFY(w->prpMOB->editValue("MOBS.MOB_NAME", name));
        addRow(w->ubgAttackTypes, {"Ion", "5"});
        const SaveResult result = w->cmdSave_Click();
        QCOMPARE(result, title == "Duplicate Record" ? SaveResult::Failed : SaveResult::Refused);
        QCOMPARE(f.prompt().count(), 1);
        QCOMPARE(f.prompt().last().title, title);
        QCOMPARE(f.prompt().last().text, text);
        QVERIFY(w->isVisible());
        QCOMPARE(w->prpMOB->list().value("MOBS.MOB_NAME"), name);
        QCOMPARE(w->ubgAttackTypes->grid().lastDataRow(), 1);
        QVERIFY(!db().inTransaction());
        QVERIFY(m_saved.isEmpty());
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM MOBS").toInt(), mobs);
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM MOB_STATS").toInt(), stats);
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM MOB_ATTACK_TYPE").toInt(), attacks);
    }

    void failureInTheLastGridWriteRollsEverythingBack() {
        const QString hull = f.scalar("SELECT HULL FROM MOB_STATS WHERE MOB_NAME = " + lit(Kell)).toString();
        const int attacks = f.scalar("SELECT COUNT(*) FROM MOB_ATTACK_TYPE").toInt();
        auto* w = editor(Kell);
        QVERIFY(w);
        QVERIFY(w->prpMOB->editValue("HULL", "31337"));
        w->txtComments->setPlainText("changed");
        addRow(w->ubgAttackTypes, {"Psionic", "12"});
        // The weaknesses are written last; this amount cannot be stored.
        addRow(w->ubgWeaknesses, {"Thermal", "lots"});
        QCOMPARE(w->cmdSave_Click(), SaveResult::Failed);
        QCOMPARE(f.prompt().count(), 1);
        QCOMPARE(f.prompt().last().title, QString("Invalid Values"));
        QVERIFY(!db().inTransaction());
        QCOMPARE(f.scalar("SELECT HULL FROM MOB_STATS WHERE MOB_NAME = " + lit(Kell)).toString(), hull);
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM MOB_ATTACK_TYPE").toInt(), attacks);
        QCOMPARE(f.scalar("SELECT UPDATED FROM MOBS WHERE MOB_NAME = " + lit(Kell)).toBool(), false);
        QVERIFY(w->isVisible());
        QCOMPARE(w->prpMOB->list().value("HULL"), QString("31337"));
        QCOMPARE(w->txtComments->toPlainText(), QString("changed"));
        const int last = w->ubgWeaknesses->grid().lastDataRow();
        QCOMPARE(w->ubgWeaknesses->grid().text(last, 2), QString("lots"));
        // Corrected, the same window saves everything.
        w->ubgWeaknesses->grid().userEdit(last, 2, "15");
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(f.scalar("SELECT HULL FROM MOB_STATS WHERE MOB_NAME = " + lit(Kell)).toInt(), 31337);
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM MOB_ATTACK_TYPE").toInt(), attacks + 1);
        QCOMPARE(
            rows("SELECT AMOUNT FROM MOB_WEAKNESS WHERE WEAKNESS = 'Thermal' AND MOB_NAME = " + lit(Kell)),
            QStringList{"15"});
    }

    void aMissingMobIsReported() {
        OpenEditor("MOBs", "Nothing Here");
        QCOMPARE(f.prompt().count(), 1);
        QVERIFY(f.prompt().last().text.endsWith("procedure Form_Load of Form frmAddMob"));
        QVERIFY(!FindChildWindow("Edit: Nothing Here"));
        // A MOB deleted while its editor is open is not written back, nor are its link rows.
        auto* w = editor(Kell);
        QVERIFY(w);
        const int drops =
            f.scalar("SELECT COUNT(*) FROM MOB_ITEM_DROP WHERE MOB_NAME = " + lit(Kell)).toInt();
        QVERIFY2(f.exec({"DELETE FROM MOB_STATS WHERE MOB_NAME = " + lit(Kell),
                         "DELETE FROM MOBS WHERE MOB_NAME = " + lit(Kell)},
                        &m_error),
                 qPrintable(m_error));
        addRow(w->ubgItems, {"Smuggler's Ledger", "Rare"});
        QCOMPARE(w->cmdSave_Click(), SaveResult::Failed);
        QVERIFY(f.prompt().last().text.endsWith("procedure cmdSave_Click of Form frmAddMob"));
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM MOB_ITEM_DROP WHERE MOB_NAME = " + lit(Kell)).toInt(), drops);
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM MOBS WHERE MOB_NAME = " + lit(Kell)).toInt(), 0);
    }

    // The lists behind the damage-type drop-downs and the type and faction rows can be extended from
    // the editor, and the new value is offered at once.
    void lookupListsCanBeEdited() {
        auto* w = editor(Kell);
        QVERIFY(w);
        for (UBGrid* g : {w->ubgAttackTypes, w->ubgResistances, w->ubgWeaknesses}) {
            const QString value = "Aaa " + g->objectName();
            whenShown<frmListEditDialog>([this, value](frmListEditDialog* d) {
                QCOMPARE(d->windowTitle(), QString("Modify Damage Types"));
                f.prompt().queueText(value);
                d->cmdAddItem_Click();
                d->accept();
            });
            g->editLookup(1);
            QCOMPARE(g->grid().listDisplays(1).first(), NoneEntry);
            QVERIFY(g->grid().listDisplays(1).contains(value));
        }
        const struct {
            const char* key;
            const char* title;
        } lists[] = {{"TYPE", "Modify MOB Types"}, {"FACTION", "Modify Factions"}};
        for (const auto& r : lists) {
            whenShown<frmListEditDialog>([this, r](frmListEditDialog* d) {
                QCOMPARE(d->windowTitle(), QString(r.title));
                f.prompt().queueText("Zz New One");
                d->cmdAddItem_Click();
                d->accept();
            });
            w->prpMOB->editLookup(r.key);
            QVERIFY(w->prpMOB->editValue(r.key, "Zz New One"));
        }
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(rows("SELECT TYPE, FACTION FROM MOBS WHERE MOB_NAME = " + lit(Kell)),
                 QStringList{"Zz New One|Zz New One"});
    }

    // Tab walks from the property list to the tabs, into the page shown and on to Save; Delete in a
    // grid removes the current row; Delete in the property list clears a value.
    void keyboard() {
        auto* w = editor(Kell);
        QVERIFY(w);
        QApplication::setActiveWindow(w);
        QVERIFY(QTest::qWaitForWindowActive(w));
        QTreeWidget* tree = w->prpMOB->tree();
        tree->setFocus();
        tree->setCurrentItem(w->prpMOB->itemFor("SHIELD"));
        QTest::keyClick(tree, Qt::Key_Delete);
        QCOMPARE(w->prpMOB->list().value("SHIELD"), QString());
        QTest::keyClick(tree, Qt::Key_Tab);
        QVERIFY(w->tabMOB->isAncestorOf(QApplication::focusWidget()));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(w->txtComments));
        QTest::keyClick(w->txtComments, Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(w->cmdSave));

        w->tabMOB->setCurrentWidget(w->ubgAttackTypes);
        const int count = w->ubgAttackTypes->grid().lastDataRow();
        QVERIFY(count > 0);
        w->ubgAttackTypes->setFocus();
        w->ubgAttackTypes->setCurrentIndex(w->ubgAttackTypes->cellIndex(1, 1));
        QTest::keyClick(w->ubgAttackTypes, Qt::Key_Delete);
        QCOMPARE(w->ubgAttackTypes->grid().lastDataRow(), count - 1);
    }

    void closingWithChangesAsks() {
        auto* w = editor(Kell);
        QVERIFY(w);
        QVERIFY(w->close());
        QCOMPARE(f.prompt().count(), 0);
        QApplication::processEvents();
        w = editor(Kell);
        addRow(w->ubgResistances, {"Radiation", "5"});
        f.prompt().queueButton(vb::No);
        QVERIFY(!w->close());
        QCOMPARE(f.prompt().last().title, QString("Unsaved Changes"));
        QVERIFY(f.prompt().last().text.contains(Kell));
        f.prompt().queueButton(vb::Yes);
        QVERIFY(w->close());
        QVERIFY(m_saved.isEmpty());
    }

private:
    ViewsFixture f;
    QString m_error;
    QStringList m_saved;
};

QTEST_MAIN(TestFrmAddMob)
#include "tst_frmaddmob.moc"
