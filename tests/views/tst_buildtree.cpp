// The build trees on a small recipe database made here: keys, texts, pictures and depth-first order;
// the clipboard text; recipes that contain themselves.
#include "data/database.h"
#include "views/buildtree.h"
#include "views/modmain.h"
#include "viewsfixture.h"

#include <QTest>

namespace {
QStringList recipe() {
    return {
        "INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, TYPE, LVL) VALUES ('Ion Beam', 'beam', 5), ('Old Beam', 'Heavy Beam', 3), "
        "('Spark Gun', 'projectile', 6), ('Twin Beam', 'beam', 7), ('Hunter''s Lance', 'beam', 8)",
        "INSERT INTO EQUIPMENTS_UPGRADE_FROM (EQUIPMENT_NAME, UPGRADE_FROM, AMOUNT) VALUES ('Ion Beam', 'Old Beam', 1)",
        "INSERT INTO COMPONENTS (COMPONENT_NAME, LVL) VALUES ('Coil', 2), ('Lens', 4), ('Old Coil', 9), ('Smith''s Coil', 3)",
        "INSERT INTO EQUIPMENTS_COMPONENTS (EQUIPMENTS_EQUIPMENT, COMPONENTS_COMPONENT, AMOUNT) VALUES ('Ion Beam', 'Lens', 1), "
        "('Ion Beam', 'Coil', 3), ('Twin Beam', 'Coil', 1), ('Twin Beam', 'Lens', 2), ('Hunter''s Lance', 'Smith''s Coil', 2)",
        "INSERT INTO ITEMS (ITEM_NAME, LVL) VALUES ('Crate', 1)",
        "INSERT INTO EQUIPMENTS_ITEMS (EQUIPMENTS_EQUIPMENT, ITEM_NAME, AMOUNT) VALUES ('Ion Beam', 'Crate', 2)",
        "INSERT INTO RAW_MATERIALS (RAW_MATERIAL_NAME, LVL) VALUES ('Ore', 1), ('Alloy', 3)",
        "INSERT INTO EQUIPMENTS_RAW_MATERIALS (EQUIPMENTS_EQUIPMENT, RAW_MATERIAL_NAME, AMOUNT) VALUES ('Ion Beam', 'Ore', 1), "
        "('Ion Beam', 'Alloy', 2)",
        "INSERT INTO RAW_MATERIALS_REFINES_FROM (RAW_MATERIAL_NAME, REFINES_FROM, AMOUNT) VALUES ('Alloy', 'Ore', 4)",
        "INSERT INTO RAW_MATERIALS_ITEMS (RAW_MATERIAL_NAME, ITEM_NAME, AMOUNT) VALUES ('Alloy', 'Crate', 1)",
        "INSERT INTO COMPONENTS_RAW_MATERIALS (COMPONENTS_COMPONENT, RAW_MATERIAL, AMOUNT) VALUES ('Coil', 'Alloy', 1), "
        "('Smith''s Coil', 'Ore', 7)",
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
} // namespace

class TestBuildTree : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString error;
        QVERIFY2(f.setUp(false, &error), qPrintable(error));
        QVERIFY2(f.exec(recipe(), &error), qPrintable(error));
    }
    void cleanup() { f.tearDown(); }
    void trees_data() {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("root");
        QTest::addColumn<QStringList>("lines");
        const QStringList alloy = {"|RawMat:Ore | Ore (L1) x4 | 5", "|Item:Crate | Crate (L1) | 4"};
        const QStringList coil = {"|RawMat:Alloy | Alloy (L3) | 3",
                                  "|RawMat:Alloy|RawMat:Ore | Ore (L1) x4 | 5",
                                  "|RawMat:Alloy|Item:Crate | Crate (L1) | 4",
                                  "|Equip:Spark Gun | Spark Gun (L6 Projectile) x2 | 1",
                                  "|Comp:Old Coil | Old Coil (L2) | 2", // the built component's level
                                  "|Item:Crate | Crate (L1) x5 | 4"};
        auto under = [](const QString& key, const QStringList& lines) {
            QStringList out;
            for (const QString& l : lines)
                out << key + l;
            return out;
        };
        auto row = [](const char* tag, const char* kind, const char* root, const QStringList& lines) {
            QTest::newRow(tag) << QString(kind) << QString(root) << lines;
        };
        row("equipment", "Equip", "Ion Beam",
            QStringList{"Ion Beam|Equip:Old Beam | Old Beam (L3 Beam) (Upgrade) | 1",
                        "Ion Beam|Comp:Coil | Coil (L2) x3 | 2"} +
                under("Ion Beam|Comp:Coil", coil) +
                QStringList{"Ion Beam|Comp:Lens | Lens (L4) | 2", "Ion Beam|Item:Crate | Crate (L1) x2 | 4",
                            "Ion Beam|RawMat:Alloy | Alloy (L3) x2 | 3"} +
                under("Ion Beam|RawMat:Alloy", alloy) + QStringList{"Ion Beam|RawMat:Ore | Ore (L1) | 5"});
        row("component", "Comp", "Coil", under("Coil", coil));
        row("raw material", "RawMat", "Alloy", under("Alloy", alloy));
        row("no recipe", "Equip", "Spark Gun", {});
        row("unknown", "Equip", "Nobody", {});
        row("quoted names", "Equip", "Hunter's Lance",
            {"Hunter's Lance|Comp:Smith's Coil | Smith's Coil (L3) x2 | 2",
             "Hunter's Lance|Comp:Smith's Coil|RawMat:Ore | Ore (L1) x7 | 5"});
    }
    void trees() {
        QFETCH(QString, kind);
        QFETCH(QString, root);
        QFETCH(QStringList, lines);
        TreeNodeList nodes;
        bool recurse = true;
        if (kind == "Equip")
            BuildEquipTree(root, root, nodes, recurse);
        else if (kind == "Comp")
            BuildCompTree(root, root, nodes, recurse);
        else
            BuildRawMatTree(root, root, nodes, recurse);
        QCOMPARE(dump(nodes), lines);
        for (const TreeNodeList::Node& n : nodes.nodes())
            QVERIFY2(n.key.startsWith(n.parentKey + "|"), qPrintable(n.key));
    }
    void withoutRecurseAndTwiceUnderOneRoot() {
        TreeNodeList flat;
        bool recurse = false;
        BuildEquipTree("Ion Beam", "Ion Beam", flat, recurse);
        QCOMPARE(flat.size(), 6);
        for (const TreeNodeList::Node& n : flat.nodes())
            QCOMPARE(n.parentKey, QString("Ion Beam"));
        // Twin Beam and Ion Beam both use Coil: under a common root each gets its own node.
        TreeNodeList nodes;
        recurse = true;
        nodes.addNode(QString(), "All", "All", 0);
        for (const QString beam : {"Ion Beam", "Twin Beam"}) {
            nodes.addNode("All", "All|Equip:" + beam, beam, 1);
            BuildEquipTree("All|Equip:" + beam, beam, nodes, recurse);
        }
        QVERIFY(nodes.indexOf("All|Equip:Ion Beam|Comp:Coil") >= 0);
        QCOMPARE(nodes.at(nodes.indexOf("All|Equip:Twin Beam|Comp:Coil")).text, QString("Coil (L2)"));
        QCOMPARE(nodes.at(nodes.indexOf("All|Equip:Twin Beam|Comp:Lens")).text, QString("Lens (L4) x2"));
    }
    void isRefined() {
        QVERIFY(IsRefined("Alloy") && !IsRefined("Ore") && !IsRefined("Nothing"));
        QString error;
        QVERIFY(f.exec(
            {"INSERT INTO RAW_MATERIALS_ITEMS (RAW_MATERIAL_NAME, ITEM_NAME, AMOUNT) VALUES ('Ore', 'Crate', 1)"},
            &error));
        QVERIFY2(IsRefined("Ore"), "made from an item only is refined too");
    }
    void clipboard() {
        QCOMPARE(
            TreeClipboardText({{"Root", "Root"}, {"Root\\Child", "Child"}, {"Root\\Child\\Grand", "Grand"}}),
            QString("Root\r\n\tChild\r\n\t\tGrand\r\n"));
        // A text holding "\" counts as a deeper level: the depth is taken from the full path.
        QCOMPARE(TreeClipboardText({{"R", "R"}, {"R\\A\\B", "A\\B"}}), QString("R\r\n\t\tA\\B\r\n"));
        // A node list gives its full paths, and so its clipboard text, from the texts up to the root.
        TreeNodeList nodes;
        nodes.addNode(QString(), "R", "Root", 0);
        nodes.addNode("R", "R|C", "Child", 0);
        nodes.addNode("R|C", "R|C|G", "Grand", 0);
        nodes.addNode("R", "R|D", "Dog", 0);
        QCOMPARE(nodes.fullPath(2), QString("Root\\Child\\Grand"));
        QCOMPARE(TreeClipboardText(nodes), QString("Root\r\n\tChild\r\n\t\tGrand\r\n\tDog\r\n"));
    }
    void cycleStops() {
        QString error;
        QVERIFY2(f.addRecipeCycle(&error), qPrintable(error));
        auto failure = [](auto build) {
            try {
                build();
            } catch (const VbError& e) {
                return QString::number(e.number) + " " + e.description;
            }
            return QString();
        };
        TreeNodeList nodes, again, raws;
        bool recurse = true;
        nodes.addNode(QString(), "Cycle Engine", "Cycle Engine", buildimg::Equipment);
        QCOMPARE(failure([&] { BuildEquipTree("Cycle Engine", "Cycle Engine", nodes, recurse); }),
                 QString("28 Out of stack space"));
        QVERIFY2(nodes.size() > maxBuildDepth, "the nodes added before the error stay");
        BuildEquipTree("Ion Beam", "Ion Beam", again, recurse); // usable again afterwards
        QCOMPARE(again.size(), 14);
        QCOMPARE(failure([&] { BuildRawMatTree("Cycle Ore A", "Cycle Ore A", raws, recurse); }),
                 QString("28 Out of stack space"));
        QCOMPARE(raws.size(), maxBuildDepth);
    }

private:
    ViewsFixture f;
};

QTEST_GUILESS_MAIN(TestBuildTree)
#include "tst_buildtree.moc"
