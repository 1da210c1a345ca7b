// The bill of materials on a recipe world made here, with totals worked out by hand: one raw material
// reached through six branches with different multipliers, what the player has taken off before the
// subtree is expanded, intermediates bought instead of built, cycles named and not followed, and the
// expansion tree adding up to the same totals.
#include "data/database.h"
#include "data/synthetic.h"
#include "recipeworld.h"
#include "views/billofmaterials.h"
#include "viewsfixture.h"

#include <QTest>

using namespace bom;

Q_DECLARE_METATYPE(QList<bom::Target>)
Q_DECLARE_METATYPE(bom::Options)

namespace {
// "Name: ordered+needed-have" for every line, sorted by name; built lines marked with "*".
QStringList dumpTotals(const RecipeBook& book, const Plan& plan) {
    QStringList out;
    for (const Line& l : plan.lines)
        out << QStringLiteral("%1%2: %3+%4-%5")
                   .arg(book.at(l.record).name, l.built ? "*" : "")
                   .arg(l.ordered)
                   .arg(l.needed)
                   .arg(l.have);
    out.sort();
    return out;
}

Ref comp(const QString& n) {
    return {Kind::Component, n};
}
Ref raw(const QString& n) {
    return {Kind::RawMaterial, n};
}
Ref equip(const QString& n) {
    return {Kind::Equipment, n};
}
} // namespace

class TestBillOfMaterials : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString error;
        QVERIFY2(f.setUp(false, &error), qPrintable(error));
        QVERIFY2(f.exec(RecipeWorld(), &error), qPrintable(error));
    }
    void cleanup() { f.tearDown(); }

    void totals_data() {
        QTest::addColumn<QStringList>("setup"); // statements run before the expansion
        QTest::addColumn<QList<Target>>("targets");
        QTest::addColumn<Options>("options");
        QTest::addColumn<QStringList>("expected");
        const QList<Target> two = {{equip("Pulse Cannon"), 2}};
        const QString owned = "INSERT INTO OWNED_QUANTITIES (RECORD_KIND, RECORD_NAME, QUANTITY) VALUES ";
        QTest::newRow("everything, iron through six branches")
            << QStringList() << two << Options()
            << QStringList{"Barrel*: 0+4-0",      "Coal: 0+16-0",         "Core*: 0+2-0",
                           "Iron: 0+90-0",        "Pulse Cannon*: 2+0-0", "Smith's Manual: 0+2-0",
                           "Spark Drill*: 0+2-0", "Steel*: 0+16-0",       "Tube*: 0+4-0"};
        QTest::newRow("ten steel owned: thirty iron and ten coal fewer")
            << QStringList{owned + "('Raw Materials', 'steel', 10)"} << two << Options()
            << QStringList{"Barrel*: 0+4-0",      "Coal: 0+6-0",          "Core*: 0+2-0",
                           "Iron: 0+60-0",        "Pulse Cannon*: 2+0-0", "Smith's Manual: 0+2-0",
                           "Spark Drill*: 0+2-0", "Steel*: 0+16-10",      "Tube*: 0+4-0"};
        QTest::newRow("barrels ticked: their whole subtree goes")
            << QStringList{"UPDATE COMPONENTS SET CHECK = TRUE WHERE COMPONENT_NAME = 'Barrel'"} << two
            << Options()
            << QStringList{"Barrel*: 0+4-4",      "Coal: 0+4-0",          "Core*: 0+2-0",
                           "Iron: 0+38-0",        "Pulse Cannon*: 2+0-0", "Smith's Manual: 0+2-0",
                           "Spark Drill*: 0+2-0", "Steel*: 0+4-0"};
        QTest::newRow("one barrel of four owned: a quarter of its subtree goes")
            << QStringList{owned + "('Components', 'Barrel', 1)"} << two << Options()
            << QStringList{"Barrel*: 0+4-1",      "Coal: 0+13-0",         "Core*: 0+2-0",
                           "Iron: 0+77-0",        "Pulse Cannon*: 2+0-0", "Smith's Manual: 0+2-0",
                           "Spark Drill*: 0+2-0", "Steel*: 0+13-0",       "Tube*: 0+3-0"};
        QTest::newRow("more owned than needed covers it, no more")
            << QStringList{owned + "('Components', 'Core', 50)"} << two << Options()
            << QStringList{"Barrel*: 0+4-0",       "Coal: 0+12-0",          "Core*: 0+2-2",   "Iron: 0+62-0",
                           "Pulse Cannon*: 2+0-0", "Smith's Manual: 0+2-0", "Steel*: 0+12-0", "Tube*: 0+4-0"};
        QTest::newRow("an owned quantity of another kind does not count")
            << QStringList{owned + "('Components', 'Iron', 500)", owned + "('Items', 'Steel', 500)"} << two
            << Options()
            << QStringList{"Barrel*: 0+4-0",      "Coal: 0+16-0",         "Core*: 0+2-0",
                           "Iron: 0+90-0",        "Pulse Cannon*: 2+0-0", "Smith's Manual: 0+2-0",
                           "Spark Drill*: 0+2-0", "Steel*: 0+16-0",       "Tube*: 0+4-0"};
        Options ignoreHave;
        ignoreHave.countHave = false;
        QTest::newRow("what is had not counted")
            << QStringList{"UPDATE COMPONENTS SET CHECK = TRUE WHERE COMPONENT_NAME = 'Barrel'"} << two
            << ignoreHave
            << QStringList{"Barrel*: 0+4-0",      "Coal: 0+16-0",         "Core*: 0+2-0",
                           "Iron: 0+90-0",        "Pulse Cannon*: 2+0-0", "Smith's Manual: 0+2-0",
                           "Spark Drill*: 0+2-0", "Steel*: 0+16-0",       "Tube*: 0+4-0"};
        QTest::newRow("a ticked target is still built")
            << QStringList{"UPDATE EQUIPMENTS SET CHECK = TRUE WHERE EQUIPMENT_NAME = 'Pulse Cannon'"}
            << QList<Target>{{equip("Pulse Cannon"), 1}} << Options()
            << QStringList{"Barrel*: 0+2-0",      "Coal: 0+8-0",          "Core*: 0+1-0",
                           "Iron: 0+45-0",        "Pulse Cannon*: 1+0-0", "Smith's Manual: 0+1-0",
                           "Spark Drill*: 0+1-0", "Steel*: 0+8-0",        "Tube*: 0+2-0"};
        Options buy;
        buy.buildIntermediates = false;
        QTest::newRow("intermediates bought") << QStringList() << two << buy
                                              << QStringList{"Barrel: 0+4-0", "Core: 0+2-0", "Iron: 0+10-0",
                                                             "Pulse Cannon*: 2+0-0", "Smith's Manual: 0+2-0"};
        Options steelBought;
        steelBought.build.insert(raw("STEEL"), false);
        QTest::newRow("one intermediate bought")
            << QStringList() << two << steelBought
            << QStringList{"Barrel*: 0+4-0",       "Core*: 0+2-0",          "Iron: 0+42-0",
                           "Pulse Cannon*: 2+0-0", "Smith's Manual: 0+2-0", "Spark Drill*: 0+2-0",
                           "Steel: 0+16-0",        "Tube*: 0+4-0"};
        Options coreBuilt = buy;
        coreBuilt.build.insert(comp("Core"), true);
        QTest::newRow("all bought but one")
            << QStringList() << two << coreBuilt
            << QStringList{"Barrel: 0+4-0",        "Core*: 0+2-0",          "Iron: 0+12-0",
                           "Pulse Cannon*: 2+0-0", "Smith's Manual: 0+2-0", "Spark Drill: 0+2-0",
                           "Steel: 0+4-0"};
        QTest::newRow("two targets, one inside the other")
            << QStringList() << QList<Target>{{equip("Pulse Cannon"), 2}, {comp("barrel"), 3}} << Options()
            << QStringList{"Barrel*: 3+4-0",      "Coal: 0+25-0",         "Core*: 0+2-0",
                           "Iron: 0+129-0",       "Pulse Cannon*: 2+0-0", "Smith's Manual: 0+2-0",
                           "Spark Drill*: 0+2-0", "Steel*: 0+25-0",       "Tube*: 0+7-0"};
        QTest::newRow("the same target twice adds up")
            << QStringList() << QList<Target>{{raw("Steel"), 2}, {raw("Steel"), 5}, {raw("Iron"), 0}}
            << Options() << QStringList{"Coal: 0+7-0", "Iron: 0+21-0", "Steel*: 7+0-0"};
        QTest::newRow("a recipe naming a record that does not exist")
            << QStringList{"INSERT INTO COMPONENTS_ITEMS (COMPONENT_NAME, ITEM_NAME, AMOUNT) VALUES ('Tube', 'Ghost', 2)"}
            << QList<Target>{{comp("Tube"), 3}} << Options()
            << QStringList{"Ghost: 0+6-0", "Iron: 0+12-0", "Tube*: 3+0-0"};
    }
    void totals() {
        QFETCH(QStringList, setup);
        QFETCH(QList<Target>, targets);
        QFETCH(Options, options);
        QFETCH(QStringList, expected);
        QString error;
        RecipeBook warm; // the owned-quantity table is made on the first expansion
        warm.load({});
        QVERIFY2(f.exec(setup, &error), qPrintable(error));
        RecipeBook book;
        QList<Ref> roots;
        for (const Target& t : targets)
            roots << t.ref;
        book.load(roots);
        const Plan plan = Expand(book, targets, options);
        QCOMPARE(dumpTotals(book, plan), expected);
        QVERIFY(plan.cycles.isEmpty() && !plan.overflow);

        // The tree explains the same totals: its uses of a record add up to the record's line.
        const ExpansionTree tree = ExpandTree(book, targets, options);
        QHash<int, QPair<qint64, qint64>> sums; // record -> (needed, covered)
        for (const TreeNode& n : tree.nodes)
            if (!n.target) {
                sums[n.record].first += n.quantity;
                sums[n.record].second += n.covered;
            }
        for (const Line& l : plan.lines) {
            QCOMPARE(sums.value(l.record).first, l.needed);
            QCOMPARE(sums.value(l.record).second, l.have);
        }
        for (auto it = sums.cbegin(); it != sums.cend(); ++it)
            QVERIFY(plan.lineOf(it.key()) >= 0);
    }

    void linesKnowWhatCallsForThem() {
        const QList<Target> targets = {{equip("Pulse Cannon"), 1}, {equip("Spark Drill"), 1}};
        RecipeBook book;
        book.load({targets[0].ref, targets[1].ref});
        const Plan plan = Expand(book, targets, Options());
        auto line = [&](const Ref& r) { return plan.lines.at(plan.lineOf(book.indexOf(r))); };
        QStringList users;
        for (const int u : line(raw("Iron")).usedBy)
            users << book.at(u).name;
        users.sort();
        QCOMPARE(users, (QStringList{"Core", "Pulse Cannon", "Spark Drill", "Steel", "Tube"}));
        QCOMPARE(line(raw("Iron")).targets, (std::vector<bool>{true, true}));
        QCOMPARE(line(comp("Tube")).targets, (std::vector<bool>{true, false}));
        QCOMPARE(line(equip("Spark Drill")).ordered, 1);
        QCOMPARE(line(equip("Spark Drill")).needed, 1);
        // Records read with what the database says of them; names spelled as the records spell them.
        const Record& core = book.at(book.indexOf(comp("CORE")));
        QVERIFY(core.found);
        QCOMPARE(core.name, QStringLiteral("Core"));
        QCOMPARE(core.price, -1);
        QCOMPARE(book.at(book.indexOf(equip("Pulse Cannon"))).fee, 450);
        QCOMPARE(book.at(book.indexOf(comp("Barrel"))).ingredients.size(), 2); // steel, then the upgrade
        QCOMPARE(book.at(book.indexOf(comp("Barrel"))).ingredients.last().link, Link::UpgradeFrom);
    }

    void cyclesAreNamedNotFollowed() {
        QString error;
        QVERIFY2(f.addRecipeCycle(&error), qPrintable(error));
        const RecipeCycle names;
        const QList<Target> targets = {
            {equip(names.equipment), 2}, {raw(names.rawA), 1}, {comp("Selfish"), 1}};
        QVERIFY2(f.exec({"INSERT INTO COMPONENTS (COMPONENT_NAME) VALUES ('Selfish')",
                         "INSERT INTO COMPONENTS_UPGRADE_FROM (COMPONENT_NAME, UPGRADE_FROM, AMOUNT) VALUES "
                         "('Selfish', 'Selfish', 2)"},
                        &error),
                 qPrintable(error));
        RecipeBook book;
        book.load({targets[0].ref, targets[1].ref, targets[2].ref});
        const Plan plan = Expand(book, targets, Options());
        QStringList cycles;
        for (const Cycle& c : plan.cycles)
            cycles << CycleText(book, c);
        QCOMPARE(
            cycles,
            (QStringList{"Cycle Coil A (Component) \u2192 Cycle Coil B (Component) \u2192 Cycle Coil A",
                         "Cycle Ore A (Raw Material) \u2192 Cycle Ore B (Raw Material) \u2192 Cycle Ore A",
                         "Selfish (Component) \u2192 Selfish"}));
        QCOMPARE(dumpTotals(book, plan),
                 (QStringList{"Cycle Coil A*: 0+2-0", "Cycle Coil B*: 0+2-0", "Cycle Engine*: 2+0-0",
                              "Cycle Ore A*: 1+0-0", "Cycle Ore B*: 0+2-0", "Selfish*: 1+0-0"}));
        const ExpansionTree tree = ExpandTree(book, targets, Options());
        int cut = 0;
        for (const TreeNode& n : tree.nodes)
            cut += n.cycle;
        QCOMPARE(cut, 3);
        QCOMPARE(tree.nodes.size(), size_t(9));
    }

    void deepGeneratedTreeCrossesTheBatches() {
        QString error;
        db().close();
        QVERIFY2(GenerateBuildTree(f.databaseFile(), "Deep Engine", 3000, 4, &error), qPrintable(error));
        db().open("Provider=VOSK.SQLite;Data Source=" + f.databaseFile() + ";");
        RecipeBook book;
        book.load({equip("Deep Engine")});
        QCOMPARE(book.size(), 3000);
        const Plan plan = Expand(book, {{equip("Deep Engine"), 3}}, Options());
        QCOMPARE(plan.lines.size(), 3000);
        // Node i hangs below (i - 1) / 4 and is needed 1 + i % 2 times there.
        for (const int i : {1, 6, 29, 118, 2999}) {
            qint64 each = 1;
            for (int n = i; n > 0; n = (n - 1) / 4)
                each *= 1 + n % 2;
            const QString name = QStringLiteral("Deep Engine Part %1").arg(i, 6, 10, QLatin1Char('0'));
            const int rec =
                book.indexOf(comp(name)) >= 0 ? book.indexOf(comp(name)) : book.indexOf(raw(name));
            QVERIFY2(rec >= 0, qPrintable(name));
            QCOMPARE(plan.lines.at(plan.lineOf(rec)).needed, 3 * each);
        }
        QCOMPARE(ExpandTree(book, {{equip("Deep Engine"), 3}}, Options()).nodes.size(), size_t(3000));
        const ExpansionTree cutShort = ExpandTree(book, {{equip("Deep Engine"), 3}}, Options(), 100);
        QVERIFY(cutShort.truncated && cutShort.nodes.size() <= 100);
    }

    void hugeTotalsAreHeldNotWrapped() {
        QString error;
        QVERIFY2(
            f.exec({"INSERT INTO RAW_MATERIALS (RAW_MATERIAL_NAME) VALUES ('Dust'), ('Grit'), ('Sand')",
                    "INSERT INTO RAW_MATERIALS_REFINES_FROM (RAW_MATERIAL_NAME, REFINES_FROM, AMOUNT) VALUES "
                    "('Dust', 'Grit', 2000000000), ('Grit', 'Sand', 2000000000)"},
                   &error),
            qPrintable(error));
        RecipeBook book;
        book.load({raw("Dust")});
        const Plan plan = Expand(book, {{raw("Dust"), 1000}}, Options());
        QVERIFY(plan.overflow);
        QCOMPARE(plan.lines.at(plan.lineOf(book.indexOf(raw("Sand")))).needed, MaxQuantity);
    }

    void unknownTargetsAndKindWords() {
        RecipeBook book;
        book.load({equip("No Such Thing")});
        QVERIFY(!book.at(book.indexOf(equip("no such thing"))).found);
        const Plan plan = Expand(book, {{equip("No Such Thing"), 1}, {comp("Never Loaded"), 1}}, Options());
        QCOMPARE(dumpTotals(book, plan), QStringList{"No Such Thing: 1+0-0"});
        Kind k;
        QVERIFY(kindOfWord("raw materials", &k) && k == Kind::RawMaterial);
        QVERIFY(kindOfWord("Item", &k) && k == Kind::Item);
        QVERIFY(!kindOfWord("Stations", &k) && !kindOfWord("MOBs", &k));
        QCOMPARE(categoryOf(Kind::Component), QStringLiteral("Components"));
    }

private:
    ViewsFixture f;
};

QTEST_GUILESS_MAIN(TestBillOfMaterials)
#include "tst_billofmaterials.moc"
