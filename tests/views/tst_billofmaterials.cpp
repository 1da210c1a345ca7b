// The bill of materials on a recipe world made here, with totals worked out by hand: one raw material
// reached through six branches with different multipliers, what the player has taken off before the
// subtree is expanded, intermediates bought instead of built, cycles named and not followed, and the
// expansion tree adding up to the same totals. Where-used on the same world: direct uses, uses through
// chains with the amount one of each takes in all, end products, missing records and cycles.
#include "data/database.h"
#include "data/synthetic.h"
#include "recipeworld.h"
#include "views/billofmaterials.h"
#include "views/whereused.h"
#include "viewsfixture.h"

#include <QTest>

using namespace bom;

Q_DECLARE_METATYPE(QList<bom::Target>)
Q_DECLARE_METATYPE(bom::Options)

namespace {
// "Name: ordered+needed-have" for every line, sorted by name and joined by ", "; built lines marked "*".
QString dumpTotals(const RecipeBook& book, const Plan& plan) {
    QStringList out;
    for (const Line& l : plan.lines)
        out << QStringLiteral("%1%2: %3+%4-%5")
                   .arg(book.at(l.record).name, l.built ? "*" : "")
                   .arg(l.ordered)
                   .arg(l.needed)
                   .arg(l.have);
    out.sort();
    return out.join(", ");
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
        QTest::addColumn<QString>("expected");
        const QList<Target> two = {{equip("Pulse Cannon"), 2}};
        const QString owned = "INSERT INTO OWNED_QUANTITIES (RECORD_KIND, RECORD_NAME, QUANTITY) VALUES ";
        const QString barrelTicked = "UPDATE COMPONENTS SET CHECK = TRUE WHERE COMPONENT_NAME = 'Barrel'";
        const QString all =
            "Barrel*: 0+4-0, Coal: 0+16-0, Core*: 0+2-0, Iron: 0+90-0, Pulse Cannon*: 2+0-0, Smith's Manual: 0+2-0, Spark Drill*: 0+2-0, Steel*: 0+16-0, Tube*: 0+4-0";
        Options ignoreHave, buy;
        ignoreHave.countHave = false;
        buy.buildIntermediates = false;
        Options coreBuilt = buy;
        coreBuilt.build.insert(comp("Core"), true);
        auto row = [](const char* tag, const QStringList& setup, const QList<Target>& targets,
                      const Options& o,
                      const QString& expected) { QTest::newRow(tag) << setup << targets << o << expected; };
        row("everything, iron through six branches", {}, two, {}, all);
        row("ten steel owned: thirty iron and ten coal fewer", {owned + "('Raw Materials', 'steel', 10)"},
            two, {},
            "Barrel*: 0+4-0, Coal: 0+6-0, Core*: 0+2-0, Iron: 0+60-0, Pulse Cannon*: 2+0-0, Smith's Manual: 0+2-0, Spark Drill*: 0+2-0, Steel*: 0+16-10, Tube*: 0+4-0");
        row("barrels ticked: their whole subtree goes", {barrelTicked}, two, {},
            "Barrel*: 0+4-4, Coal: 0+4-0, Core*: 0+2-0, Iron: 0+38-0, Pulse Cannon*: 2+0-0, Smith's Manual: 0+2-0, Spark Drill*: 0+2-0, Steel*: 0+4-0");
        row("one barrel of four owned: a quarter of its subtree goes",
            {owned + "('Components', 'Barrel', 1)"}, two, {},
            "Barrel*: 0+4-1, Coal: 0+13-0, Core*: 0+2-0, Iron: 0+77-0, Pulse Cannon*: 2+0-0, Smith's Manual: 0+2-0, Spark Drill*: 0+2-0, Steel*: 0+13-0, Tube*: 0+3-0");
        row("more owned than needed covers it, no more", {owned + "('Components', 'Core', 50)"}, two, {},
            "Barrel*: 0+4-0, Coal: 0+12-0, Core*: 0+2-2, Iron: 0+62-0, Pulse Cannon*: 2+0-0, Smith's Manual: 0+2-0, Steel*: 0+12-0, Tube*: 0+4-0");
        row("an owned quantity of another kind does not count",
            {owned + "('Components', 'Iron', 500)", owned + "('Items', 'Steel', 500)"}, two, {}, all);
        row("what is had not counted", {barrelTicked}, two, ignoreHave, all);
        row("a ticked target is still built",
            {"UPDATE EQUIPMENTS SET CHECK = TRUE WHERE EQUIPMENT_NAME = 'Pulse Cannon'"},
            {{equip("Pulse Cannon"), 1}}, {},
            "Barrel*: 0+2-0, Coal: 0+8-0, Core*: 0+1-0, Iron: 0+45-0, Pulse Cannon*: 1+0-0, Smith's Manual: 0+1-0, Spark Drill*: 0+1-0, Steel*: 0+8-0, Tube*: 0+2-0");
        row("intermediates bought", {}, two, buy,
            "Barrel: 0+4-0, Core: 0+2-0, Iron: 0+10-0, Pulse Cannon*: 2+0-0, Smith's Manual: 0+2-0");
        row("all bought but one", {}, two, coreBuilt,
            "Barrel: 0+4-0, Core*: 0+2-0, Iron: 0+12-0, Pulse Cannon*: 2+0-0, Smith's Manual: 0+2-0, Spark Drill: 0+2-0, Steel: 0+4-0");
        row("two targets, one inside the other", {}, {{equip("Pulse Cannon"), 2}, {comp("barrel"), 3}}, {},
            "Barrel*: 3+4-0, Coal: 0+25-0, Core*: 0+2-0, Iron: 0+129-0, Pulse Cannon*: 2+0-0, Smith's Manual: 0+2-0, Spark Drill*: 0+2-0, Steel*: 0+25-0, Tube*: 0+7-0");
        row("the same target twice adds up", {}, {{raw("Steel"), 2}, {raw("Steel"), 5}, {raw("Iron"), 0}}, {},
            "Coal: 0+7-0, Iron: 0+21-0, Steel*: 7+0-0");
        row("a recipe naming a record that does not exist",
            {"INSERT INTO COMPONENTS_ITEMS (COMPONENT_NAME, ITEM_NAME, AMOUNT) VALUES ('Tube', 'Ghost', 2)"},
            {{comp("Tube"), 3}}, {}, "Ghost: 0+6-0, Iron: 0+12-0, Tube*: 3+0-0");
    }
    void totals() {
        QFETCH(QStringList, setup);
        QFETCH(QList<Target>, targets);
        QFETCH(Options, options);
        QFETCH(QString, expected);
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
        QHash<int, QPair<qint64, qint64>> sums; // record -> (needed, covered)
        for (const TreeNode& n : ExpandTree(book, targets, options).nodes)
            if (!n.target) {
                sums[n.record].first += n.quantity;
                sums[n.record].second += n.covered;
            }
        for (const Line& l : plan.lines)
            QCOMPARE(sums.value(l.record), qMakePair(l.needed, l.have));
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
        QVERIFY(line(equip("Spark Drill")).ordered == 1 && line(equip("Spark Drill")).needed == 1);
        // Records read with what the database says of them; names spelled as the records spell them.
        const Record& core = book.at(book.indexOf(comp("CORE")));
        QVERIFY(core.found && core.name == "Core" && core.price == -1);
        QCOMPARE(book.at(book.indexOf(equip("Pulse Cannon"))).fee, 450);
        const Record& barrel = book.at(book.indexOf(comp("Barrel")));
        QCOMPARE(barrel.ingredients.size(), 2); // steel, then the upgrade
        QCOMPARE(barrel.ingredients.last().link, Link::UpgradeFrom);
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
        QCOMPARE(
            dumpTotals(book, plan),
            "Cycle Coil A*: 0+2-0, Cycle Coil B*: 0+2-0, Cycle Engine*: 2+0-0, Cycle Ore A*: 1+0-0, Cycle Ore B*: 0+2-0, Selfish*: 1+0-0");
        const ExpansionTree tree = ExpandTree(book, targets, Options());
        QCOMPARE(int(std::count_if(tree.nodes.begin(), tree.nodes.end(),
                                   [](const TreeNode& n) { return n.cycle; })),
                 3);
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
            const int rec = std::max(book.indexOf(comp(name)), book.indexOf(raw(name)));
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
        QCOMPARE(dumpTotals(book, plan), "No Such Thing: 1+0-0");
        Kind k;
        QVERIFY(kindOfWord("raw materials", &k) && k == Kind::RawMaterial);
        QVERIFY(kindOfWord("Item", &k) && k == Kind::Item);
        QVERIFY(!kindOfWord("Stations", &k) && !kindOfWord("MOBs", &k));
        QCOMPARE(categoryOf(Kind::Component), QStringLiteral("Components"));
    }

    void whereUsed_data() {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("uses"); // "steps name kind: per one" with "!" for an end product
        auto row = [](const char* tag, Kind kind, const char* name, const char* uses) {
            QTest::newRow(tag) << int(kind) << QString(name) << QString(uses);
        };
        row("iron, six branches", Kind::RawMaterial, "IRON",
            "1 Core Component: 14, 1 Pulse Cannon Equipment: 45 !, 1 Spark Drill Equipment: 7, 1 Steel Raw Material: 3, 1 Tube Component: 4, 2 Barrel Component: 13");
        row("an item with a quote, amount missing", Kind::Item, "Smith's Manual",
            "1 Pulse Cannon Equipment: 1 !");
        row("an equipment used in a component", Kind::Equipment, "Spark Drill",
            "1 Core Component: 1, 2 Pulse Cannon Equipment: 1 !");
        row("an upgrade source", Kind::Component, "Tube",
            "1 Barrel Component: 1, 2 Pulse Cannon Equipment: 2 !");
        row("nothing uses it", Kind::Equipment, "Pulse Cannon", "");
        row("same name, other kind", Kind::Component, "Iron", "");
    }
    void whereUsed() {
        QFETCH(int, kind);
        QFETCH(QString, name);
        QFETCH(QString, uses);
        const WhereUsedResult r = WhereUsed({Kind(kind), name});
        QStringList got;
        int direct = 0;
        for (const Use& u : r.uses) {
            QVERIFY(u.found);
            direct += u.steps == 1;
            got << QStringLiteral("%1 %2 %3: %4%5")
                       .arg(u.steps)
                       .arg(u.ref.name, kindWord(u.ref.kind))
                       .arg(u.perUnit)
                       .arg(u.endProduct ? " !" : "");
        }
        QCOMPARE(got.join(", "), uses);
        QVERIFY(r.cycles.isEmpty() && !r.overflow);
        QCOMPARE(r.directCount(), direct);
    }
    void whereUsedOfMissingRecordsAndCycles() {
        QString error;
        QVERIFY2(
            f.exec({"INSERT INTO EQUIPMENTS_RAW_MATERIALS (EQUIPMENTS_EQUIPMENT, RAW_MATERIAL_NAME, AMOUNT) "
                    "VALUES ('Lost Blueprint', 'Coal', 9)"},
                   &error),
            qPrintable(error));
        WhereUsedResult r = WhereUsed({Kind::RawMaterial, "Coal"});
        QCOMPARE(r.uses.at(0).ref.name, QStringLiteral("Lost Blueprint"));
        QVERIFY(!r.uses.at(0).found && r.uses.at(0).perUnit == 9 && r.uses.at(0).endProduct);
        QVERIFY2(f.addRecipeCycle(&error), qPrintable(error));
        r = WhereUsed({Kind::Component, "Cycle Coil A"});
        QStringList got;
        for (const Use& u : r.uses)
            got << QStringLiteral("%1 %2: %3").arg(u.steps).arg(u.ref.name).arg(u.perUnit);
        QCOMPARE(got, (QStringList{"1 Cycle Coil B: 1", "1 Cycle Engine: 1"}));
        QCOMPARE(r.cycles.size(), 1);
        QStringList cycle;
        for (const Ref& c : r.cycles.first())
            cycle << c.name;
        QCOMPARE(cycle, (QStringList{"Cycle Coil B", "Cycle Coil A"})); // B is made from A, A from B
    }

private:
    ViewsFixture f;
};

QTEST_GUILESS_MAIN(TestBillOfMaterials)
#include "tst_billofmaterials.moc"
