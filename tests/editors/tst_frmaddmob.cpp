// The MOB editor on the sample world: its statements and captions, a new MOB, the record written over
// its two tables, the location rules, saves that write only what changed, the refusals before
// anything is written, all-or-nothing saves, the lookup lists it offers and the keyboard.
#include "editorfixture.h"
#include "editors/frmaddmob.h"
#include "editors/frmlisteditdialog.h"
#include "editors/propertylistwidget.h"
#include "views/modmain.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeWidget>

namespace {
const QString Kell = "Brother Kell's Wraith";

frmAddMob* editor(const QString& name) {
    return openEditor<frmAddMob>("MOBs", name, "New: MOB");
}

} // namespace

class TestFrmAddMob : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString e;
        QVERIFY2(f.setUp(&e), qPrintable(e));
    }
    void cleanup() { f.tearDown(); }

    // Each grid's statements (tagged by its list name) with a name holding a quote.
    void gridStatementsAsWritten_data() {
        QTest::addColumn<QString>("widget");
        QTest::addColumn<QStringList>("load");
        QTest::addColumn<QString>("save");
        const QString dmg = "SELECT DAMAGE_TYPE FROM DAMAGE_TYPE ORDER BY DAMAGE_TYPE|1";
        const QString freq = "SELECT FREQUENCY FROM DROP_FREQUENCY|2";
        const QString w = " WHERE MOB_NAME = 'O''Brien' ORDER BY ";
        const auto drops = [&](const char* tag, const QString& widget, const QString& table,
                               const QString& col, const QString& list) {
            QTest::newRow(tag) << widget
                               << QStringList{"SELECT " + col + ", DROP_FREQUENCY FROM " + table + w + col,
                                              "SELECT " + col + " FROM " + list + " ORDER BY " + col + "|1",
                                              freq}
                               << "SELECT " + col + ", DROP_FREQUENCY, MOB_NAME FROM " + table + w + col;
        };
        const auto amounts = [&](const char* tag, const QString& widget, const QString& table,
                                 const QString& col) {
            QTest::newRow(tag) << widget
                               << QStringList{"SELECT " + col + ", AMOUNT FROM " + table + w + col, dmg}
                               << "SELECT " + col + ", AMOUNT, MOB_NAME FROM " + table + w + col;
        };
        amounts("Attack Types", "ubgAttackTypes", "MOB_ATTACK_TYPE", "ATTACK_TYPE");
        drops("Components", "ubgComponents", "MOB_COMP_DROP", "COMPONENT_NAME", "COMPONENTS");
        drops("Equipment", "ubgEquipment", "MOB_EQUIP_DROP", "EQUIPMENT_NAME", "EQUIPMENTS");
        drops("Items", "ubgItems", "MOB_ITEM_DROP", "ITEM_NAME", "ITEMS");
        QTest::newRow("Locations")
            << "ubgLocations"
            << QStringList{"SELECT SECTOR_NAME, NAV_POINT, SPAWN_RATE FROM MOBS_LOCATION" + w + "SECTOR_NAME",
                           "SELECT SECTOR_NAME FROM SECTORS ORDER BY SECTOR_NAME|1",
                           "SELECT SPAWN_RATE FROM SPAWN_RATE|3"}
            << "SELECT SECTOR_NAME, NAV_POINT, SPAWN_RATE, MOB_NAME FROM MOBS_LOCATION" + w + "SECTOR_NAME";
        drops("Raw Materials", "ubgRawMaterials", "MOB_RAW_MAT_DROP", "RAW_MATERIAL_NAME", "RAW_MATERIALS");
        amounts("Resistances", "ubgResistances", "MOB_RESISTANCE", "RESISTANCE");
        amounts("Weaknesses", "ubgWeaknesses", "MOB_WEAKNESS", "WEAKNESS");
    }
    void gridStatementsAsWritten() {
        QFETCH(QString, widget);
        QFETCH(QStringList, load);
        QFETCH(QString, save);
        const GridDef& def = mob::grid(widget);
        QCOMPARE(def.queries("O''Brien"), load);
        QCOMPARE(def.save("O''Brien"), save);
        QCOMPARE(def.keyColumn, QString("MOB_NAME"));
        // The list name titles the grid's messages; the tab shows the same words.
        QCOMPARE(def.listName, QString(QTest::currentDataTag()));
        QCOMPARE(mob::tabGrid(QTest::currentDataTag()), widget);
    }

    void windowLayoutAndRecordQuery() {
        QCOMPARE(mob::recordSql("O'Brien"),
                 QString("SELECT * FROM MOBS INNER JOIN MOB_STATS ON MOBS.MOB_NAME = "
                         "MOB_STATS.MOB_NAME WHERE MOB_STATS.MOB_NAME = 'O''Brien'"));
        auto* w = editor(Kell);
        QVERIFY(w);
        QStringList tabs;
        for (int i = 0; i < w->tabMOB->count(); ++i)
            tabs << w->tabMOB->tabText(i);
        QCOMPARE(tabs, QStringList({"Comments", "Attack Types", "Resistances", "Weaknesses", "Locations",
                                    "Equipment", "Components", "Raw Materials", "Items"}));
        QCOMPARE(w->tabMOB->widget(4), static_cast<QWidget*>(w->ubgLocations));
    }

    void aNewMobStartsWithItsDefaults() {
        auto* w = editor("");
        QVERIFY(w && w->isNew());
        const PropertyList& p = w->prpMOB->list();
        QCOMPARE(p.value("MOBS.MOB_NAME"), QString("New MOB"));
        QVERIFY(!p.row("MOBS.MOB_NAME")->readOnly);
        for (const char* t : {"AGGRESSIVENESS", "INTELIGENCE"})
            QCOMPARE(p.value(t), QString("Average"));
        QCOMPARE(p.row("BRAVERY")->choices, QStringList({"Very Low", "Low", "Average", "High", "Very High"}));
        QVERIFY(p.row("TYPE")->choices.contains("Spectral"));
        for (const GridDef& def : mob::grids())
            QCOMPARE(w->grid(def.widget)->grid().lastDataRow(), 0);
        // Nothing typed yet: closing asks nothing.
        QVERIFY(w->close());
        QCOMPARE(f.prompt().count(), 0);
    }

    // The window keeps the locations grid's rules: the nav point waits for its sector, and the same
    // sector and nav point twice, in any letter case, are refused before anything is written.
    void theLocationsGridKeepsItsRules() {
        const QString sector =
            rows("SELECT SECTOR_NAME FROM NAV_POINTS GROUP BY SECTOR_NAME HAVING COUNT(*) > 1 ORDER BY 1")
                .value(0);
        const QString nav =
            rows("SELECT NAV_POINT_NAME FROM NAV_POINTS WHERE SECTOR_NAME = " + lit(sector) + " ORDER BY 1")
                .value(0);
        f.run({"DELETE FROM MOBS_LOCATION WHERE MOB_NAME = " + lit(Kell)});
        auto* w = editor(Kell);
        QVERIFY(w);
        GridModel& g = w->ubgLocations->grid();
        QVERIFY(!g.beginUserEdit(g.rows() - 1, 2));
        QCOMPARE(f.prompt().last().text, QString("Please set the Sector first."));
        f.prompt().clear();
        addRow(w->ubgLocations, {sector, nav, "Fast"});
        addRow(w->ubgLocations, {sector.toUpper(), nav.toUpper(), "Slow"});
        const int before = changes();
        QCOMPARE(w->cmdSave_Click(), SaveResult::Refused);
        QCOMPARE(f.prompt().count(), 1);
        QCOMPARE(f.prompt().last().title, QString("Locations Error"));
        QCOMPARE(f.prompt().last().text, "Locations:\r\nThe Sector " + sector.toUpper() +
                                             " already has an entry for Nav Point " + nav.toUpper());
        QCOMPARE(changes(), before);
    }

    // The lists behind the damage-type drop-downs and the type and faction rows can be extended from
    // the editor, and the new value is offered at once.
    void lookupListsCanBeEdited() {
        auto* w = editor(Kell);
        QVERIFY(w);
        const auto add = [this](const QString& title, const QString& value) {
            whenShown<frmListEditDialog>([this, title, value](frmListEditDialog* d) {
                QCOMPARE(d->windowTitle(), title);
                f.prompt().queueText(value);
                d->cmdAddItem_Click();
                d->accept();
            });
        };
        for (UBGrid* g : {w->ubgAttackTypes, w->ubgResistances, w->ubgWeaknesses}) {
            add("Modify Damage Types", "Aaa " + g->objectName());
            g->editLookup(1);
            QCOMPARE(g->grid().listDisplays(1).first(), NoneEntry);
            QVERIFY(g->grid().listDisplays(1).contains("Aaa " + g->objectName()));
        }
        for (const QString& r : {QString("TYPE=Modify MOB Types"), QString("FACTION=Modify Factions")}) {
            add(r.section('=', 1), "Zz New One");
            w->prpMOB->editLookup(r.section('=', 0, 0));
            QVERIFY(w->prpMOB->editValue(r.section('=', 0, 0), "Zz New One"));
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

private:
    EditorFixture f;
};

QTEST_MAIN(TestFrmAddMob)
#include "tst_frmaddmob.moc"
