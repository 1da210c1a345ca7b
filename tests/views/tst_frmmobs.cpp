// The MOB view: fields with their null words, the Boss mark, the three trees, a new window on every
// request, and the reports of a MOB that is not there.
#include "viewsfixture.h"
#include "views/childwindows.h"
#include "views/frmmobs.h"
#include "views/openviews.h"
#include "views/viewwidgets.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>

class TestFrmMOBs : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void fields();
    void nullWords();
    void newWindowEachTime();
    void trees();
    void missing();
    void sampleScreens();

private:
    QList<frmMOBs*> windows(const QString& name);
    ViewsFixture f;
};

void TestFrmMOBs::init() {
    QString error;
    QVERIFY2(f.setUp(false, &error), qPrintable(error));
    QVERIFY2(f.exec({
        "INSERT INTO MOBS (MOB_NAME, TYPE, FACTION, COMMENTS, LAST_UPDATED) VALUES ('Iron Maw', 'Mechanical', 'Drift Clans', "
        "'Hunts near gates.', '2024-03-01 10:00:00')",
        "INSERT INTO MOB_STATS (MOB_NAME, COMBAT_LEVEL, SHIELD, HULL, MASS, SIGNATURE, SCAN_RANGE, AGGRO_RANGE, BRAVERY, "
        "AGGRESSIVENESS, ALTRUISM, INTELIGENCE, BOSS) VALUES ('Iron Maw', 14, 900, 1200, 300, 45, 4000, 1500, 'High', "
        "'Very High', 'Low', 'Average', TRUE)",
        "INSERT INTO MOBS (MOB_NAME, TYPE) VALUES ('Pale Leech', 'Organic')",
        "INSERT INTO MOB_STATS (MOB_NAME, COMBAT_LEVEL, BOSS) VALUES ('Pale Leech', 3, FALSE)",
        "INSERT INTO MOB_RESISTANCE (MOB_NAME, RESISTANCE, AMOUNT) VALUES ('Iron Maw', 'Kinetic', 30)",
        "INSERT INTO MOBS_LOCATION (MOB_NAME, SECTOR_NAME, NAV_POINT, SPAWN_RATE) VALUES ('Iron Maw', 'Kell Reach', 'Old Gate', 'Average')",
        "INSERT INTO MOBS_LOCATION (MOB_NAME, SECTOR_NAME, NAV_POINT, SPAWN_RATE) VALUES ('Iron Maw', 'Kell Reach', 'Ice Field', 'Sporadic')",
        "INSERT INTO MOB_ITEM_DROP (MOB_NAME, ITEM_NAME, DROP_FREQUENCY) VALUES ('Iron Maw', 'Gear Box', 'Very Rare')",
        "INSERT INTO MOB_ITEM_DROP (MOB_NAME, ITEM_NAME, DROP_FREQUENCY) VALUES ('Iron Maw', 'Old Boot', 'very rare')",
    }, &error), qPrintable(error));
}

void TestFrmMOBs::cleanup() {
    CloseChildWindows();
    QApplication::processEvents();
    f.tearDown();
}

QList<frmMOBs*> TestFrmMOBs::windows(const QString& name) {
    QList<frmMOBs*> out;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* m = qobject_cast<frmMOBs*>(w); m && m->isVisible() && m->windowTitle() == name)
            out << m;
    return out;
}

void TestFrmMOBs::fields() {
    ViewMOBInfo("Iron Maw");
    QCOMPARE(f.prompt().count(), 0);
    const QList<frmMOBs*> found = windows("Iron Maw");
    QCOMPARE(found.size(), 1);
    frmMOBs* w = found.first();
    QCOMPARE(w->lblName->text(), QString("Iron Maw"));
    QCOMPARE(w->lblType->text(), QString("Level 14 Mechanical Boss"));
    QCOMPARE(w->txtFaction->text(), QString("Drift Clans"));
    QCOMPARE(w->txtLevel->text(), QString("14"));
    QCOMPARE(w->txtHull->text(), QString("1200"));
    QCOMPARE(w->txtAggroRange->text(), QString("1500"));
    QCOMPARE(w->txtAggressiveness->text(), QString("Very High"));
    QCOMPARE(w->txtInteligence->text(), QString("Average"));
    QCOMPARE(w->txtComments->toPlainText(), QString("Hunts near gates."));
    QVERIFY(w->txtLastUpdated->text().startsWith("2024-03-01"));
    QStringList tabs;
    for (int i = 0; i < w->tabMOBData->count(); ++i)
        tabs << w->tabMOBData->tabText(i);
    QCOMPARE(tabs, (QStringList{"Attributes", "Comments", "Tactical Info", "Spawn Locations", "Loot Drops"}));
    w->grab().save("/tmp/views-mob-attributes.png");
}

void TestFrmMOBs::nullWords() {
    ViewMOBInfo("Pale Leech");
    frmMOBs* w = windows("Pale Leech").value(0);
    QVERIFY(w);
    QCOMPARE(w->lblType->text(), QString("Level 3 Organic"));
    QCOMPARE(w->txtFaction->text(), QString("Unknown"));
    for (QLineEdit* box : {w->txtBravery, w->txtAggressiveness, w->txtAltruism, w->txtInteligence})
        QCOMPARE(box->text(), QString("No Entry"));
    QCOMPARE(w->txtComments->toPlainText(), QString());
}

void TestFrmMOBs::newWindowEachTime() {
    ViewMOBInfo("Iron Maw");
    ViewMOBInfo("Iron Maw");
    QCOMPARE(windows("Iron Maw").size(), 2);
}

void TestFrmMOBs::trees() {
    ViewMOBInfo("Iron Maw");
    frmMOBs* w = windows("Iron Maw").value(0);
    QVERIFY(w);
    QTreeWidget* t = w->treTactical;
    QCOMPARE(t->topLevelItemCount(), 3);
    QCOMPARE(t->topLevelItem(0)->text(0), QString("Attack Types"));
    QCOMPARE(t->topLevelItem(0)->child(0)->text(0), QString("No Records Found"));
    QCOMPARE(NodeKey(t->topLevelItem(0)->child(0)), QString("Attack Types|Attack:No Records Found"));
    QCOMPARE(t->topLevelItem(1)->child(0)->text(0), QString("Kinetic 30%"));

    QTreeWidget* s = w->treSpawn;
    QCOMPARE(s->topLevelItemCount(), 1);
    QCOMPARE(s->topLevelItem(0)->text(0), QString("Kell Reach"));
    QCOMPARE(s->topLevelItem(0)->childCount(), 2);
    for (int i = 0; i < 2; ++i) {
        QTreeWidgetItem* nav = s->topLevelItem(0)->child(i);
        QCOMPARE(NodeImage(nav), nav->text(0) == "Old Gate" ? 7 : 0);
        QCOMPARE(nav->icon(0).isNull(), nav->text(0) != "Old Gate");
    }

    QTreeWidget* l = w->treLoot;
    QCOMPARE(l->topLevelItemCount(), 4);
    QTreeWidgetItem* items = l->topLevelItem(3);
    QCOMPARE(items->text(0), QString("Items"));
    QCOMPARE(items->childCount(), 1);
    QCOMPARE(items->child(0)->text(0), QString("Gear Box"));
    QCOMPARE(NodeKey(items->child(0)), QString("Items|Item:Gear Box"));
    QCOMPARE(NodeKey(l->topLevelItem(0)->child(0)), QString("Equipment|No Records Found"));
    for (int i = 0; i < 3; ++i) {
        w->tabMOBData->setCurrentIndex(2 + i);
        w->grab().save(QString("/tmp/views-mob-tree-%1.png").arg(i));
    }
}

void TestFrmMOBs::missing() {
    ViewMOBInfo("Nobody");
    QCOMPARE(f.prompt().count(), 1);
    QVERIFY(f.prompt().last().text.contains("procedure ViewMOBInfo of Module modMain"));
    QVERIFY(windows("Nobody").isEmpty());
}

void TestFrmMOBs::sampleScreens() {
    f.tearDown();
    QString error;
    QVERIFY2(f.setUp(true, &error), qPrintable(error));
    ViewMOBInfo("The Tyrant of Mossgate");
    QCOMPARE(f.prompt().count(), 0);
    frmMOBs* w = windows("The Tyrant of Mossgate").value(0);
    QVERIFY(w);
    QVERIFY(w->lblType->text().endsWith(" Boss"));
    w->tabMOBData->setCurrentIndex(4);
    w->grab().save("/tmp/views-mob-sample-loot.png");
    ViewMOBInfo("Brother Kell's Wraith");
    QCOMPARE(f.prompt().count(), 0);
    QCOMPARE(windows("Brother Kell's Wraith").size(), 1);

    // From a drop in the loot tree to the record's own view, by the marker in the node's key.
    const QString mob = f.scalar("SELECT MOB_NAME FROM MOB_COMP_DROP WHERE DROP_FREQUENCY = 'Rare' ORDER BY MOB_NAME").toString();
    QVERIFY(!mob.isEmpty());
    ViewMOBInfo(mob);
    frmMOBs* m = windows(mob).value(0);
    QVERIFY(m);
    QTreeWidgetItem* components = m->treLoot->topLevelItem(1);
    QCOMPARE(components->text(0), QString("Components"));
    QVERIFY(components->childCount() > 0);
    QTreeWidgetItem* drop = components->child(0);
    QVERIFY(NodeKey(drop).startsWith("Components|Comp:"));
    Q_EMIT m->treLoot->itemDoubleClicked(drop, 0);
    QCOMPARE(f.prompt().count(), 0);
    QVERIFY(FindChildWindow("Component: " + drop->text(0)));
}

QTEST_MAIN(TestFrmMOBs)
#include "tst_frmmobs.moc"
