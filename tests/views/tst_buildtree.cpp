// The build trees on a small recipe database made here: keys, texts, pictures and depth-first order;
// the clipboard text; recipes that contain themselves; a large generated tree.
#include "data/database.h"
#include "data/synthetic.h"
#include "viewsfixture.h"
#include "views/buildtree.h"
#include "views/modmain.h"

#include <QTest>

class TestBuildTree : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void equipmentTree();
    void withoutRecurse();
    void componentTree();
    void rawMaterialTree();
    void noRecipe();
    void sameComponentTwice();
    void quotedNames();
    void isRefined_data();
    void isRefined();
    void clipboard_data();
    void clipboard();
    void cycleStops();
    void largeTree();

private:
    ViewsFixture f;
};

namespace {
QStringList recipe() {
    return {
        "INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, TYPE, LVL) VALUES ('Ion Beam', 'beam', 5)",
        "INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, TYPE, LVL) VALUES ('Old Beam', 'Heavy Beam', 3)",
        "INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, TYPE, LVL) VALUES ('Spark Gun', 'projectile', 6)",
        "INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, TYPE, LVL) VALUES ('Twin Beam', 'beam', 7)",
        "INSERT INTO EQUIPMENTS_UPGRADE_FROM (EQUIPMENT_NAME, UPGRADE_FROM, AMOUNT) VALUES ('Ion Beam', 'Old Beam', 1)",
        "INSERT INTO COMPONENTS (COMPONENT_NAME, LVL) VALUES ('Coil', 2)",
        "INSERT INTO COMPONENTS (COMPONENT_NAME, LVL) VALUES ('Lens', 4)",
        "INSERT INTO COMPONENTS (COMPONENT_NAME, LVL) VALUES ('Old Coil', 9)",
        "INSERT INTO EQUIPMENTS_COMPONENTS (EQUIPMENTS_EQUIPMENT, COMPONENTS_COMPONENT, AMOUNT) VALUES ('Ion Beam', 'Lens', 1)",
        "INSERT INTO EQUIPMENTS_COMPONENTS (EQUIPMENTS_EQUIPMENT, COMPONENTS_COMPONENT, AMOUNT) VALUES ('Ion Beam', 'Coil', 3)",
        "INSERT INTO EQUIPMENTS_COMPONENTS (EQUIPMENTS_EQUIPMENT, COMPONENTS_COMPONENT, AMOUNT) VALUES ('Twin Beam', 'Coil', 1)",
        "INSERT INTO EQUIPMENTS_COMPONENTS (EQUIPMENTS_EQUIPMENT, COMPONENTS_COMPONENT, AMOUNT) VALUES ('Twin Beam', 'Lens', 2)",
        "INSERT INTO ITEMS (ITEM_NAME, LVL) VALUES ('Crate', 1)",
        "INSERT INTO EQUIPMENTS_ITEMS (EQUIPMENTS_EQUIPMENT, ITEM_NAME, AMOUNT) VALUES ('Ion Beam', 'Crate', 2)",
        "INSERT INTO RAW_MATERIALS (RAW_MATERIAL_NAME, LVL) VALUES ('Ore', 1)",
        "INSERT INTO RAW_MATERIALS (RAW_MATERIAL_NAME, LVL) VALUES ('Alloy', 3)",
        "INSERT INTO EQUIPMENTS_RAW_MATERIALS (EQUIPMENTS_EQUIPMENT, RAW_MATERIAL_NAME, AMOUNT) VALUES ('Ion Beam', 'Ore', 1)",
        "INSERT INTO EQUIPMENTS_RAW_MATERIALS (EQUIPMENTS_EQUIPMENT, RAW_MATERIAL_NAME, AMOUNT) VALUES ('Ion Beam', 'Alloy', 2)",
        "INSERT INTO RAW_MATERIALS_REFINES_FROM (RAW_MATERIAL_NAME, REFINES_FROM, AMOUNT) VALUES ('Alloy', 'Ore', 4)",
        "INSERT INTO RAW_MATERIALS_ITEMS (RAW_MATERIAL_NAME, ITEM_NAME, AMOUNT) VALUES ('Alloy', 'Crate', 1)",
        "INSERT INTO COMPONENTS_RAW_MATERIALS (COMPONENTS_COMPONENT, RAW_MATERIAL, AMOUNT) VALUES ('Coil', 'Alloy', 1)",
        "INSERT INTO COMPONENTS_EQUIPMENTS (COMPONENT_NAME, EQUIPMENT_NAME, AMOUNT) VALUES ('Coil', 'Spark Gun', 2)",
        "INSERT INTO COMPONENTS_UPGRADE_FROM (COMPONENT_NAME, UPGRADE_FROM, AMOUNT) VALUES ('Coil', 'Old Coil', 1)",
        "INSERT INTO COMPONENTS_ITEMS (COMPONENT_NAME, ITEM_NAME, AMOUNT) VALUES ('Coil', 'Crate', 5)",
    };
}

// "key | text | image" per node, in the order added.
QStringList dump(const TreeNodeList& nodes) {
    QStringList out;
    for (const TreeNodeList::Node& n : nodes.nodes())
        out << n.key + " | " + n.text + " | " + QString::number(n.image);
    return out;
}

void compareLines(const QStringList& actual, const QStringList& expected) {
    for (int i = 0; i < qMin(actual.size(), expected.size()); ++i)
        QCOMPARE(actual.at(i), expected.at(i));
    QCOMPARE(actual.size(), expected.size());
}
} // namespace

void TestBuildTree::init() {
    QString error;
    QVERIFY2(f.setUp(false, &error), qPrintable(error));
    QVERIFY2(f.exec(recipe(), &error), qPrintable(error));
}

void TestBuildTree::cleanup() { f.tearDown(); }

void TestBuildTree::equipmentTree() {
    TreeNodeList nodes;
    bool recurse = true;
    BuildEquipTree("Ion Beam", "Ion Beam", nodes, recurse);
    compareLines(dump(nodes), {
        "Ion Beam|Equip:Old Beam | Old Beam (L3 Beam) (Upgrade) | 1",
        "Ion Beam|Comp:Coil | Coil (L2) x3 | 2",
        "Ion Beam|Comp:Coil|RawMat:Alloy | Alloy (L3) | 3",
        "Ion Beam|Comp:Coil|RawMat:Alloy|RawMat:Ore | Ore (L1) x4 | 5",
        "Ion Beam|Comp:Coil|RawMat:Alloy|Item:Crate | Crate (L1) | 4",
        "Ion Beam|Comp:Coil|Equip:Spark Gun | Spark Gun (L6 Projectile) x2 | 1",
        // the level of an upgrade source is the built component's
        "Ion Beam|Comp:Coil|Comp:Old Coil | Old Coil (L2) | 2",
        "Ion Beam|Comp:Coil|Item:Crate | Crate (L1) x5 | 4",
        "Ion Beam|Comp:Lens | Lens (L4) | 2",
        "Ion Beam|Item:Crate | Crate (L1) x2 | 4",
        "Ion Beam|RawMat:Alloy | Alloy (L3) x2 | 3",
        "Ion Beam|RawMat:Alloy|RawMat:Ore | Ore (L1) x4 | 5",
        "Ion Beam|RawMat:Alloy|Item:Crate | Crate (L1) | 4",
        "Ion Beam|RawMat:Ore | Ore (L1) | 5",
    });
    for (const TreeNodeList::Node& n : nodes.nodes())
        QVERIFY2(n.key.startsWith(n.parentKey + "|"), qPrintable(n.key));
}

void TestBuildTree::withoutRecurse() {
    TreeNodeList nodes;
    bool recurse = false;
    BuildEquipTree("Ion Beam", "Ion Beam", nodes, recurse);
    QCOMPARE(nodes.size(), 6);
    for (const TreeNodeList::Node& n : nodes.nodes())
        QCOMPARE(n.parentKey, QString("Ion Beam"));
}

void TestBuildTree::componentTree() {
    TreeNodeList nodes;
    bool recurse = true;
    BuildCompTree("Coil", "Coil", nodes, recurse);
    compareLines(dump(nodes), {
        "Coil|RawMat:Alloy | Alloy (L3) | 3",
        "Coil|RawMat:Alloy|RawMat:Ore | Ore (L1) x4 | 5",
        "Coil|RawMat:Alloy|Item:Crate | Crate (L1) | 4",
        "Coil|Equip:Spark Gun | Spark Gun (L6 Projectile) x2 | 1",
        "Coil|Comp:Old Coil | Old Coil (L2) | 2",
        "Coil|Item:Crate | Crate (L1) x5 | 4",
    });
}

void TestBuildTree::rawMaterialTree() {
    TreeNodeList nodes;
    bool recurse = true;
    BuildRawMatTree("Alloy", "Alloy", nodes, recurse);
    compareLines(dump(nodes), {"Alloy|RawMat:Ore | Ore (L1) x4 | 5", "Alloy|Item:Crate | Crate (L1) | 4"});
}

void TestBuildTree::noRecipe() {
    TreeNodeList nodes;
    bool recurse = true;
    BuildEquipTree("Spark Gun", "Spark Gun", nodes, recurse);
    QCOMPARE(nodes.size(), 0);
    BuildEquipTree("Nobody", "Nobody", nodes, recurse);
    QCOMPARE(nodes.size(), 0);
}

void TestBuildTree::sameComponentTwice() {
    // Twin Beam and Ion Beam both use Coil: under a common root each gets its own node.
    TreeNodeList nodes;
    bool recurse = true;
    nodes.addNode(QString(), "All", "All", 0);
    nodes.addNode("All", "All|Equip:Ion Beam", "Ion Beam", 1);
    BuildEquipTree("All|Equip:Ion Beam", "Ion Beam", nodes, recurse);
    nodes.addNode("All", "All|Equip:Twin Beam", "Twin Beam", 1);
    BuildEquipTree("All|Equip:Twin Beam", "Twin Beam", nodes, recurse);
    QVERIFY(nodes.indexOf("All|Equip:Ion Beam|Comp:Coil") >= 0);
    QVERIFY(nodes.indexOf("All|Equip:Twin Beam|Comp:Coil") >= 0);
    QCOMPARE(nodes.at(nodes.indexOf("All|Equip:Twin Beam|Comp:Coil")).text, QString("Coil (L2)"));
    QCOMPARE(nodes.at(nodes.indexOf("All|Equip:Twin Beam|Comp:Lens")).text, QString("Lens (L4) x2"));
}

void TestBuildTree::quotedNames() {
    QString error;
    QVERIFY2(f.exec({"INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, TYPE, LVL) VALUES ('Hunter''s Lance', 'beam', 8)",
                     "INSERT INTO COMPONENTS (COMPONENT_NAME, LVL) VALUES ('Smith''s Coil', 3)",
                     "INSERT INTO EQUIPMENTS_COMPONENTS (EQUIPMENTS_EQUIPMENT, COMPONENTS_COMPONENT, AMOUNT) "
                     "VALUES ('Hunter''s Lance', 'Smith''s Coil', 2)",
                     "INSERT INTO COMPONENTS_RAW_MATERIALS (COMPONENTS_COMPONENT, RAW_MATERIAL, AMOUNT) "
                     "VALUES ('Smith''s Coil', 'Ore', 7)"},
                    &error),
             qPrintable(error));
    TreeNodeList nodes;
    bool recurse = true;
    BuildEquipTree("Hunter's Lance", "Hunter's Lance", nodes, recurse);
    compareLines(dump(nodes), {"Hunter's Lance|Comp:Smith's Coil | Smith's Coil (L3) x2 | 2",
                               "Hunter's Lance|Comp:Smith's Coil|RawMat:Ore | Ore (L1) x7 | 5"});
}

void TestBuildTree::isRefined_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("refined");
    QTest::newRow("refined from ore and an item") << "Alloy" << true;
    QTest::newRow("plain ore") << "Ore" << false;
    QTest::newRow("unknown") << "Nothing" << false;
}

void TestBuildTree::isRefined() {
    QFETCH(QString, name);
    QFETCH(bool, refined);
    QCOMPARE(IsRefined(name), refined);
    QString error;
    QVERIFY(f.exec({"INSERT INTO RAW_MATERIALS_ITEMS (RAW_MATERIAL_NAME, ITEM_NAME, AMOUNT) VALUES ('Ore', 'Crate', 1)"}, &error));
    QVERIFY2(IsRefined("Ore"), "made from an item only is refined too");
}

void TestBuildTree::clipboard_data() {
    QTest::addColumn<QStringList>("paths");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QString>("text");
    QTest::newRow("root, child, grandchild") << QStringList{"Root", "Root\\Child", "Root\\Child\\Grand"}
                                             << QStringList{"Root", "Child", "Grand"} << "Root\r\n\tChild\r\n\t\tGrand\r\n";
    QTest::newRow("siblings") << QStringList{"R", "R\\A", "R\\B", "R\\A\\C"} << QStringList{"R", "A", "B", "C"}
                              << "R\r\n\tA\r\n\tB\r\n\t\tC\r\n";
    // A text holding "\" counts as a deeper level: the depth is taken from the full path.
    QTest::newRow("backslash in a text") << QStringList{"R", "R\\A\\B"} << QStringList{"R", "A\\B"}
                                         << "R\r\n\t\tA\\B\r\n";
}

void TestBuildTree::clipboard() {
    QFETCH(QStringList, paths);
    QFETCH(QStringList, texts);
    QFETCH(QString, text);
    QList<QPair<QString, QString>> lines;
    for (int i = 0; i < paths.size(); ++i)
        lines.append({paths.at(i), texts.at(i)});
    QCOMPARE(TreeClipboardText(lines), text);

    // The same through a node list, whose full paths are built from the texts.
    TreeNodeList nodes;
    nodes.addNode(QString(), "k0", texts.at(0), 0);
    for (int i = 1; i < paths.size(); ++i) {
        const QString parentPath = paths.at(i).left(paths.at(i).size() - texts.at(i).size() - 1);
        const int parent = int(paths.indexOf(parentPath));
        nodes.addNode(parent < 0 ? "k0" : "k" + QString::number(parent), "k" + QString::number(i), texts.at(i), 0);
    }
    for (int i = 0; i < paths.size(); ++i)
        QCOMPARE(nodes.fullPath(i), paths.at(i));
    QCOMPARE(TreeClipboardText(nodes), text);
}

void TestBuildTree::cycleStops() {
    QString error;
    db().close();
    QVERIFY2(AddRecipeCycle(f.databaseFile(), RecipeCycle(), &error), qPrintable(error));
    db().open("Provider=VOSK.SQLite;Data Source=" + f.databaseFile() + ";");
    TreeNodeList nodes;
    bool recurse = true;
    nodes.addNode(QString(), "Cycle Engine", "Cycle Engine", buildimg::Equipment);
    long number = 0;
    try {
        BuildEquipTree("Cycle Engine", "Cycle Engine", nodes, recurse);
    } catch (const VbError& e) {
        number = e.number;
        QCOMPARE(e.description, QString("Out of stack space"));
    }
    QCOMPARE(number, 28L);
    QVERIFY2(nodes.size() > maxBuildDepth, "the nodes added before the error stay");
    // the builder is usable again afterwards
    TreeNodeList again;
    BuildEquipTree("Ion Beam", "Ion Beam", again, recurse);
    QCOMPARE(again.size(), 14);

    TreeNodeList raws;
    number = 0;
    try {
        BuildRawMatTree("Cycle Ore A", "Cycle Ore A", raws, recurse);
    } catch (const VbError& e) {
        number = e.number;
    }
    QCOMPARE(number, 28L);
    QCOMPARE(raws.size(), maxBuildDepth);
}

void TestBuildTree::largeTree() {
    QString error;
    db().close();
    QVERIFY2(GenerateBuildTree(f.databaseFile(), "Giant Hull", 10000, 4, &error), qPrintable(error));
    db().open("Provider=VOSK.SQLite;Data Source=" + f.databaseFile() + ";");
    TreeNodeList nodes;
    bool recurse = true;
    nodes.addNode(QString(), "Giant Hull", "Giant Hull", buildimg::Equipment);
    BuildEquipTree("Giant Hull", "Giant Hull", nodes, recurse);
    QCOMPARE(nodes.size(), 10000);
    const QString text = TreeClipboardText(nodes);
    QCOMPARE(text.count("\r\n"), nodes.size());
}

QTEST_GUILESS_MAIN(TestBuildTree)
#include "tst_buildtree.moc"
