// The shopping list over the hand-worked recipe world with its stations, mines and MOBs: which group
// each record lands in, the texts of where and what from, prices and costs, the warnings; the exports;
// what is written and kept (ticks, owned quantities, the plan in the settings).
#include "core/settings.h"
#include "planner/plannerstore.h"
#include "planner/shoppingexport.h"
#include "planner/shoppinglist.h"
#include "views/recipeworld.h"
#include "viewsfixture.h"

#include <QTest>

using namespace planner;
using bom::Kind;

namespace {
ShoppingList listFor(const QList<bom::Target>& targets, const bom::Options& options = bom::Options()) {
    bom::RecipeBook book;
    QList<bom::Ref> roots;
    for (const bom::Target& t : targets)
        roots << t.ref;
    book.load(roots);
    const bom::Plan plan = bom::Expand(book, targets, options);
    SourceBook sources;
    QList<bom::Ref> records;
    for (const bom::Line& l : plan.lines)
        records << book.at(l.record).ref();
    sources.load(records);
    return BuildShoppingList(book, plan, sources, targets);
}

const ShoppingLine* find(const ShoppingList& list, const QString& name) {
    for (const ShoppingLine& l : list.lines)
        if (l.ref.name == name)
            return &l;
    return nullptr;
}

const QList<bom::Target> kTwoCannons = {{{Kind::Equipment, "Pulse Cannon"}, 2}};
} // namespace

class TestShoppingList : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString error;
        QVERIFY2(f.setUp(false, &error), qPrintable(error));
        QVERIFY2(
            f.exec(RecipeWorld() + RecipeWorldSources() +
                       QStringList{"INSERT INTO COMPONENTS_ITEMS (COMPONENT_NAME, ITEM_NAME, AMOUNT) VALUES "
                                   "('Tube', 'Ghost Gear', 1)"},
                   &error),
            qPrintable(error));
    }
    void cleanup() { f.tearDown(); }

    void eachRecordInTheGroupOfHowItIsHad() {
        const ShoppingList list = listFor(kTwoCannons);
        QStringList got;
        for (const ShoppingLine& l : list.lines)
            got << GroupTitle(l.group) + ": " + QuantityText(l.toGet) + " " + l.ref.name;
        QCOMPARE(got,
                 (QStringList{"Bought: 90 Iron", "Mined: 16 Coal", "Refined: 16 Steel", "Built: 4 Barrel",
                              "Built: 2 Core", "Built: 2 Pulse Cannon", "Built: 2 Spark Drill",
                              "Built: 4 Tube", "Looted: 2 Smith's Manual", "Unknown Source: 4 Ghost Gear"}));
    }

    void linesSayWhereAndForHowMuch_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("texts"); // price, cost, where, other ways, used in, for
        QTest::newRow("bought, priced")
            << "Iron"
            << QStringList{"2",
                           "180",
                           "Far Post (Lone Reach)",
                           "mined in Aldra Drift (Aldra); Lone Reach",
                           "Core \u00d71, Pulse Cannon \u00d75, Spark Drill \u00d77, "
                           "Steel \u00d73, Tube \u00d74",
                           "Pulse Cannon"};
        QTest::newRow("mined, price unknown")
            << "Coal"
            << QStringList{"Unknown", "", "Aldra Drift (Aldra)", "", "Steel \u00d71", "Pulse Cannon"};
        QTest::newRow("refined from what") << "Steel" << QStringList{"",
                                                                     "",
                                                                     "1 \u00d7 Coal + 3 \u00d7 Iron each",
                                                                     "",
                                                                     "Barrel \u00d73, Core \u00d72",
                                                                     "Pulse Cannon"};
        QTest::newRow("built equipment: the manufacturing fee")
            << "Spark Drill" << QStringList{"20",
                                            "40",
                                            "7 \u00d7 Iron each",
                                            "sold at Kell's Anchorage (Aldra Drift, Aldra)",
                                            "Core \u00d71",
                                            "Pulse Cannon"};
        QTest::newRow("the target") << "Pulse Cannon"
                                    << QStringList{
                                           "450",
                                           "900",
                                           "2 \u00d7 Barrel + 1 \u00d7 Core + 1 \u00d7 Smith's Manual + 5 "
                                           "\u00d7 Iron each",
                                           "",
                                           "",
                                           "Pulse Cannon"};
        QTest::newRow("looted: the MOB and where it spawns")
            << "Smith's Manual" << QStringList{"Mission Reward",
                                               "",
                                               "Grey Wraith (Rare) in Aldra Drift, Lone Reach",
                                               "",
                                               "Pulse Cannon \u00d71",
                                               "Pulse Cannon"};
        QTest::newRow("not in the database")
            << "Ghost Gear" << QStringList{"", "", "Not in the database", "", "Tube \u00d71", "Pulse Cannon"};
    }
    void linesSayWhereAndForHowMuch() {
        QFETCH(QString, name);
        QFETCH(QStringList, texts);
        const ShoppingList list = listFor(kTwoCannons);
        const ShoppingLine* l = find(list, name);
        QVERIFY(l);
        QCOMPARE((QStringList{l->priceText, l->costKnown ? QuantityText(l->cost) : QString(), l->where,
                              l->otherWays, l->usedIn, l->forTargets}),
                 texts);
    }

    void totalsAndWarnings() {
        QString error;
        QVERIFY2(
            f.exec({"UPDATE EQUIPMENTS SET COST_TO_MANUFACTURE = -1 WHERE EQUIPMENT_NAME = 'Spark Drill'",
                    "UPDATE RAW_MATERIALS SET PRICE = 0 WHERE RAW_MATERIAL_NAME = 'Iron'"},
                   &error),
            qPrintable(error));
        ShoppingList list = listFor(kTwoCannons);
        QCOMPARE(list.totalCost, qint64(0));
        QCOMPARE(list.unpriced, 1);       // Iron, bought, price unknown
        QCOMPARE(list.fees, qint64(900)); // the drill is not manufacturable: no fee counted
        QCOMPARE(list.groups[int(Group::Built)].lines, 5);
        QCOMPARE(list.warnings, (QStringList{"Named in a recipe but not in the database: Ghost Gear (Item).",
                                             "Spark Drill is marked Not Manufacturable."}));

        // Bought instead of built, the core's price of "Loot Only" is no cost; a MOB dropping it would
        // make it looted.
        bom::Options buy;
        buy.buildIntermediates = false;
        list = listFor(kTwoCannons, buy);
        QCOMPARE(find(list, "Core")->group, Group::Unknown);
        QCOMPARE(find(list, "Core")->priceText, QStringLiteral("Loot Only"));
        QVERIFY2(
            f.exec({"INSERT INTO MOB_COMP_DROP (MOB_NAME, COMPONENT_NAME, DROP_FREQUENCY) VALUES "
                    "('Grey Wraith', 'Core', 'Normal')",
                    "INSERT INTO BUY_COMPONENT_LOCATIONS (COMPONENTS_COMPONENT, STATIONS_STATION) VALUES "
                    "('Core', 'Far Post'), ('Barrel', 'Far Post')"},
                   &error),
            qPrintable(error));
        list = listFor(kTwoCannons, buy);
        QCOMPARE(find(list, "Core")->group, Group::Looted);
        QCOMPARE(find(list, "Barrel")->group, Group::Bought);
        QCOMPARE(find(list, "Barrel")->cost, qint64(4 * 120));
        QCOMPARE(list.totalCost, qint64(4 * 120));
    }

    void haveShowsAndCoveredLinesStay() {
        QString error;
        QVERIFY2(f.exec({"UPDATE COMPONENTS SET CHECK = TRUE WHERE COMPONENT_NAME = 'Barrel'"}, &error),
                 qPrintable(error));
        const ShoppingList list = listFor(kTwoCannons);
        const ShoppingLine* barrel = find(list, "Barrel");
        QVERIFY(barrel && barrel->checked && barrel->toGet == 0 && barrel->have == 4);
        QVERIFY(!find(list, "Tube")); // its whole subtree is gone
        QVERIFY(!find(list, "Ghost Gear"));
    }

    void exports() {
        QString error;
        QVERIFY2(
            f.exec({"UPDATE ITEMS SET ITEM_NAME = 'Manual, \"Smith''s\"' WHERE ITEM_NAME = 'Smith''s Manual'",
                    "UPDATE EQUIPMENTS_ITEMS SET ITEM_NAME = 'Manual, \"Smith''s\"'",
                    "UPDATE MOB_ITEM_DROP SET ITEM_NAME = 'Manual, \"Smith''s\"'",
                    "UPDATE RAW_MATERIALS SET CHECK = TRUE WHERE RAW_MATERIAL_NAME = 'Coal'"},
                   &error),
            qPrintable(error));
        const ShoppingList list = listFor(kTwoCannons);
        const QString csv = ShoppingListCsv(list);
        const QStringList rows = csv.split("\r\n");
        QCOMPARE(
            rows.first(),
            "Group,Name,Kind,Ordered,Needed,Have,To Get,Price,Cost,Where,Other Ways,Used In,For,Obtained");
        QVERIFY(rows.contains(
            "Bought,Iron,Raw Material,0,90,0,90,2,180,Far Post (Lone Reach),"
            "mined in Aldra Drift (Aldra); Lone Reach,\"Core \u00d71, Pulse Cannon \u00d75, Spark "
            "Drill \u00d77, Steel \u00d73, Tube \u00d74\",Pulse Cannon,No"));
        QVERIFY(rows.contains(
            "Looted,\"Manual, \"\"Smith's\"\"\",Item,0,2,0,2,Mission Reward,,\"Grey Wraith (Rare) in "
            "Aldra Drift, Lone Reach\",,Pulse Cannon \u00d71,Pulse Cannon,No"));
        QVERIFY(rows.contains("Mined,Coal,Raw Material,0,16,16,0,Unknown,,Aldra Drift (Aldra),,Steel \u00d71,"
                              "Pulse Cannon,Yes"));
        QCOMPARE(rows.size(),
                 list.lines.size() + 2); // header, lines, and the empty text after the last CR LF

        const QString text = ShoppingListText(list, "2 \u00d7 Pulse Cannon");
        QVERIFY(text.startsWith(
            "Shopping list: 2 \u00d7 Pulse Cannon\r\nTotal to buy: 180 credits; manufacturing "
            "fees: 940 credits\r\n! Named in a recipe but not in the database: Ghost Gear (Item).\r\n"));
        QVERIFY(text.contains(
            "\r\nBought (1) \u2014 180 credits\r\n  [ ] 90 \u00d7 Iron (Raw Material) \u2014 2 each, "
            "180 \u2014 Far Post (Lone Reach)\r\n"));
        QVERIFY(text.contains(
            "  [x] 0 \u00d7 Coal (Raw Material), have 16 of 16 \u2014 Unknown \u2014 Aldra Drift"));

        const QString html = ShoppingListHtml(list, "2 \u00d7 <Cannon>");
        QVERIFY(html.contains("&lt;Cannon&gt;") && html.contains("<h3>Built (5) \u2014 940 credits</h3>"));
        QCOMPARE(html.count("<tr>"), list.lines.size() + 6); // a header row per group
    }

    void ticksAndOwnedQuantitiesAreWritten() {
        const bom::Ref manual{Kind::Item, "Smith's Manual"};
        WriteCheck(manual, true);
        QCOMPARE(f.scalar("SELECT CHECK FROM ITEMS WHERE ITEM_NAME = 'Smith''s Manual'").toBool(), true);
        WriteCheck(manual, false);
        QCOMPARE(f.scalar("SELECT CHECK FROM ITEMS WHERE ITEM_NAME = 'Smith''s Manual'").toBool(), false);
        for (const Kind k : {Kind::Equipment, Kind::Component, Kind::RawMaterial})
            WriteCheck({k, k == Kind::Equipment   ? "Spark Drill"
                           : k == Kind::Component ? "Tube"
                                                  : "Coal"},
                       true);
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM EQUIPMENTS WHERE CHECK = TRUE").toInt(), 1);
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM COMPONENTS WHERE CHECK = TRUE").toInt(), 1);
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM RAW_MATERIALS WHERE CHECK = TRUE").toInt(), 1);

        WriteOwned(manual, 3);
        WriteOwned(manual, 5); // the same row again
        WriteOwned({Kind::RawMaterial, "Smith's Manual"}, 7);
        QCOMPARE(
            f.scalar("SELECT QUANTITY FROM OWNED_QUANTITIES WHERE RECORD_KIND = 'Items' AND RECORD_NAME = "
                     "'smith''s manual'")
                .toInt(),
            5);
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM OWNED_QUANTITIES").toInt(), 2);
        WriteOwned(manual, 0);
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM OWNED_QUANTITIES").toInt(), 1);
    }

    void thePlanIsKept() {
        SavedPlan plan;
        plan.targets = {{{Kind::Equipment, "Hunter's Lance"}, 2}, {{Kind::RawMaterial, "Ore, Pure"}, 40}};
        plan.buildIntermediates = false;
        plan.countHave = false;
        plan.build.insert({Kind::Component, "Core"}, true);
        plan.build.insert({Kind::RawMaterial, "Steel"}, false);
        SavePlan(plan);
        const SavedPlan back = LoadPlan();
        QCOMPARE(back.targets.size(), 2);
        QCOMPARE(back.targets[1].ref.name, QStringLiteral("Ore, Pure"));
        QCOMPARE(back.targets[1].quantity, 40);
        QVERIFY(back.targets[0].ref == plan.targets[0].ref);
        QVERIFY(!back.buildIntermediates && !back.countHave);
        QCOMPARE(back.build, plan.build);
        // What a hand-edited settings store holds that makes no sense is left out.
        SaveSetting("ShoppingList", "Targets",
                    "Stations\tFar Post\t1\nItems\t\t3\nItems\tCrate\t-4\nJunk\nItems\tCrate\t2");
        QCOMPARE(LoadPlan().targets.size(), 1);
    }

private:
    ViewsFixture f;
};

QTEST_GUILESS_MAIN(TestShoppingList)
#include "tst_shoppinglist.moc"
