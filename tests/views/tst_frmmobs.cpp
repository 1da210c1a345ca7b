// The MOB view: fields with their null words, the Boss mark, the three trees, a new window on every
// request, the report of a MOB that is not there, and a loot drop opening the record's own view.
#include "views/frmmobs.h"
#include "views/openviews.h"
#include "views/viewwidgets.h"
#include "viewsfixture.h"
#include "viewswindows.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>

class TestFrmMOBs : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString error;
        QVERIFY2(f.setUp(false, &error), qPrintable(error));
        QVERIFY2(
            f.exec(
                {
                    "INSERT INTO MOBS (MOB_NAME, TYPE, FACTION, COMMENTS, LAST_UPDATED) VALUES ('Iron Maw', 'Mechanical', "
                    "'The Hollowmere Salvage Covenant of the Outer Drift', 'Hunts near gates.', '2024-03-01 10:00:00'), "
                    "('Pale Leech', 'Organic', NULL, NULL, NULL)",
                    "INSERT INTO MOB_STATS (MOB_NAME, COMBAT_LEVEL, SHIELD, HULL, MASS, SIGNATURE, SCAN_RANGE, AGGRO_RANGE, BRAVERY, "
                    "AGGRESSIVENESS, ALTRUISM, INTELIGENCE, BOSS) VALUES ('Iron Maw', 14, 900, 1200, 300, 45, 4000, 1500, 'High', "
                    "'Very High', 'Low', 'Average', TRUE), ('Pale Leech', 3, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, FALSE)",
                    "INSERT INTO MOB_RESISTANCE (MOB_NAME, RESISTANCE, AMOUNT) VALUES ('Iron Maw', 'Kinetic', 30)",
                    "INSERT INTO MOBS_LOCATION (MOB_NAME, SECTOR_NAME, NAV_POINT, SPAWN_RATE) VALUES ('Iron Maw', 'Kell Reach', "
                    "'Old Gate', 'Average'), ('Iron Maw', 'Kell Reach', 'Ice Field', 'Sporadic')",
                    "INSERT INTO MOB_ITEM_DROP (MOB_NAME, ITEM_NAME, DROP_FREQUENCY) VALUES ('Iron Maw', 'Gear Box', 'Very Rare'), "
                    "('Iron Maw', 'Old Boot', 'very rare')",
                },
                &error),
            qPrintable(error));
    }
    void cleanup() {
        closeViews();
        f.tearDown();
    }
    void fields_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("shown"); // type line, faction, level, hull, the temperaments, comments
        // A long faction shows its start.
        QTest::newRow("boss") << "Iron Maw"
                              << QStringList{"Level 14 Mechanical Boss",
                                             "The Hollowmere Salvage Covenant of the Outer Drift",
                                             "14",
                                             "1200",
                                             "High",
                                             "Very High",
                                             "Low",
                                             "Average",
                                             "Hunts near gates."};
        QTest::newRow("nulls") << "Pale Leech"
                               << QStringList{"Level 3 Organic", "Unknown",  "3",        "", "No Entry",
                                              "No Entry",        "No Entry", "No Entry", ""};
    }
    void fields() {
        QFETCH(QString, name);
        QFETCH(QStringList, shown);
        ViewMOBInfo(name);
        ViewMOBInfo(name); // a new window on every request
        QCOMPARE(windows(name).size(), 2);
        QCOMPARE(f.prompt().count(), 0);
        frmMOBs* w = windows(name).value(0);
        QCOMPARE(w->lblName->text(), name);
        QStringList texts{w->lblType->text()};
        for (QLineEdit* box : {w->txtFaction, w->txtLevel, w->txtHull, w->txtBravery, w->txtAggressiveness,
                               w->txtAltruism, w->txtInteligence})
            texts << box->text();
        QCOMPARE(texts << w->txtComments->toPlainText(), shown);
        for (QLineEdit* box : w->findChildren<QLineEdit*>())
            QCOMPARE(box->cursorPosition(), 0);
        QVERIFY(name != "Iron Maw" || w->txtLastUpdated->text().startsWith("2024-03-01"));
        QStringList tabs;
        for (int i = 0; i < w->tabMOBData->count(); ++i)
            tabs << w->tabMOBData->tabText(i);
        QCOMPARE(tabs,
                 (QStringList{"Attributes", "Comments", "Tactical Info", "Spawn Locations", "Loot Drops"}));
    }
    // What goes into the trees is the tree builders' business; here, that the window shows them.
    void trees() {
        ViewMOBInfo("Iron Maw");
        frmMOBs* w = windows("Iron Maw").value(0);
        QVERIFY(w);
        QCOMPARE(w->treTactical->topLevelItemCount(), 3);
        QCOMPARE(w->treTactical->topLevelItem(1)->child(0)->text(0), QString("Kinetic 30%"));
        QTreeWidgetItem* sector = w->treSpawn->topLevelItem(0);
        QCOMPARE(sector->text(0) + " " + QString::number(sector->childCount()), QString("Kell Reach 2"));
        // The unknown rate "Sporadic" shows no picture; each rate is spelled out beside its place.
        for (int i = 0; i < 2; ++i) {
            QTreeWidgetItem* place = sector->child(i);
            QCOMPARE(place->icon(0).isNull(), place->text(0) != "Old Gate");
            QCOMPARE(place->text(1), place->text(0) == "Old Gate" ? QString("Spawn Rate: Average")
                                                                  : QString("Spawn Rate: Sporadic"));
        }
        QTreeWidgetItem* items = w->treLoot->topLevelItem(3);
        QCOMPARE(items->childCount(), 1); // "very rare" in lower case is left out
        QTreeWidgetItem* gearBox = items->child(0);
        QCOMPARE(NodeKey(gearBox), QString("Items|Item:Gear Box"));
        QCOMPARE(gearBox->text(0), QString("Gear Box")); // the name alone: it is what the navigation reads
        QCOMPARE(gearBox->text(1) + "/" + gearBox->toolTip(0),
                 QString("Drop Rate: Very Rare/Drop Rate: Very Rare"));
        ViewMOBInfo("Nobody");
        QCOMPARE(f.prompt().count(), 1);
        QVERIFY(f.prompt().last().text.contains("procedure ViewMOBInfo of Module modMain"));
        QVERIFY(windows("Nobody").isEmpty());
    }
    // On the sample world: a quoted name, and from a loot drop to the record's own view by the node's key.
    void lootNavigation() {
        f.tearDown();
        QString error;
        QVERIFY2(f.setUp(true, &error), qPrintable(error));
        ViewMOBInfo("Brother Kell's Wraith"); // a name with an apostrophe is found
        QCOMPARE(windows("Brother Kell's Wraith").size(), 1);
        const QString mob =
            f.scalar("SELECT MOB_NAME FROM MOB_COMP_DROP WHERE DROP_FREQUENCY = 'Rare' ORDER BY MOB_NAME")
                .toString();
        ViewMOBInfo(mob);
        frmMOBs* m = windows(mob).value(0);
        QVERIFY2(m && m->treLoot->topLevelItem(1)->childCount() > 0, qPrintable(mob));
        QTreeWidgetItem* drop = m->treLoot->topLevelItem(1)->child(0);
        QVERIFY(NodeKey(drop).startsWith("Components|Comp:"));
        Q_EMIT m->treLoot->itemDoubleClicked(drop, 0);
        QCOMPARE(f.prompt().count(), 0);
        QVERIFY(FindChildWindow("Component: " + drop->text(0)));
    }

private:
    QList<frmMOBs*> windows(const QString& name) {
        QList<frmMOBs*> out;
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* m = qobject_cast<frmMOBs*>(w); m && m->isVisible() && m->windowTitle() == name)
                out << m;
        return out;
    }
    ViewsFixture f;
};

QTEST_MAIN(TestFrmMOBs)
#include "tst_frmmobs.moc"
