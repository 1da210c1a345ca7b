// The MOB trees and the trees of the other record views on a small database made here: group order,
// keys, texts, frequency pictures and the "No Records Found" rules.
#include "viewsfixture.h"
#include "views/mobtrees.h"
#include "views/recordtrees.h"

#include <QTest>

class TestMobTrees : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void frequencyImages_data();
    void frequencyImages();
    void tactical();
    void tacticalEmpty();
    void spawn();
    void spawnEmpty();
    void loot();
    void dropsOfEquipment();
    void noDrops();
    void usedIn();
    void stationSells();
    void typeLine_data();
    void typeLine();

private:
    ViewsFixture f;
};

namespace {
QStringList dump(const TreeNodeList& nodes) {
    QStringList out;
    for (const TreeNodeList::Node& n : nodes.nodes())
        out << n.parentKey + " > " + n.key + " | " + n.text + " | " + QString::number(n.image);
    return out;
}

void compareLines(const QStringList& actual, const QStringList& expected) {
    for (int i = 0; i < qMin(actual.size(), expected.size()); ++i)
        QCOMPARE(actual.at(i), expected.at(i));
    QCOMPARE(actual.size(), expected.size());
}
} // namespace

void TestMobTrees::init() {
    QString error;
    QVERIFY2(f.setUp(false, &error), qPrintable(error));
    QVERIFY2(f.exec({
        "INSERT INTO MOBS (MOB_NAME, TYPE, FACTION) VALUES ('Raider', 'Drone', 'Pirates')",
        "INSERT INTO MOBS (MOB_NAME, TYPE) VALUES ('Ghost', 'Wraith')",
        "INSERT INTO MOB_RESISTANCE (MOB_NAME, RESISTANCE, AMOUNT) VALUES ('Raider', 'Heat', 20)",
        "INSERT INTO MOB_RESISTANCE (MOB_NAME, RESISTANCE, AMOUNT) VALUES ('Raider', 'Cold', 5)",
        "INSERT INTO MOB_WEAKNESS (MOB_NAME, WEAKNESS, AMOUNT) VALUES ('Raider', 'Ion', 15)",
        "INSERT INTO MOBS_LOCATION (MOB_NAME, SECTOR_NAME, NAV_POINT, SPAWN_RATE) VALUES ('Raider', 'Sector B', 'Gate', 'Very Slow')",
        "INSERT INTO MOBS_LOCATION (MOB_NAME, SECTOR_NAME, NAV_POINT, SPAWN_RATE) VALUES ('Raider', 'Sector A', 'Rock', 'Fast')",
        "INSERT INTO MOBS_LOCATION (MOB_NAME, SECTOR_NAME, NAV_POINT, SPAWN_RATE) VALUES ('Raider', 'Sector A', 'Belt', 'Sometimes')",
        "INSERT INTO MOB_EQUIP_DROP (MOB_NAME, EQUIPMENT_NAME, DROP_FREQUENCY) VALUES ('Raider', 'Ion Beam', 'Rare')",
        "INSERT INTO MOB_EQUIP_DROP (MOB_NAME, EQUIPMENT_NAME, DROP_FREQUENCY) VALUES ('Raider', 'Lost Gun', 'rare')",
        "INSERT INTO MOB_EQUIP_DROP (MOB_NAME, EQUIPMENT_NAME, DROP_FREQUENCY) VALUES ('Ghost', 'Ion Beam', 'Very Frequent')",
        "INSERT INTO MOB_RAW_MAT_DROP (MOB_NAME, RAW_MATERIAL_NAME, DROP_FREQUENCY) VALUES ('Raider', 'Ore', 'Normal')",
        "INSERT INTO MOB_RAW_MAT_DROP (MOB_NAME, RAW_MATERIAL_NAME, DROP_FREQUENCY) VALUES ('Raider', 'Alloy', 'Frequent')",
        "INSERT INTO MOB_COMP_DROP (MOB_NAME, COMPONENT_NAME, DROP_FREQUENCY) VALUES ('Ghost', 'Coil', 'Seldom')",
    }, &error), qPrintable(error));
}

void TestMobTrees::cleanup() { f.tearDown(); }

void TestMobTrees::frequencyImages_data() {
    QTest::addColumn<QString>("word");
    QTest::addColumn<int>("drop");
    QTest::addColumn<int>("spawn");
    QTest::newRow("Very Rare") << "Very Rare" << 5 << 0;
    QTest::newRow("Rare") << "Rare" << 6 << 0;
    QTest::newRow("Normal") << "Normal" << 7 << 0;
    QTest::newRow("Frequent") << "Frequent" << 8 << 0;
    QTest::newRow("Very Frequent") << "Very Frequent" << 9 << 0;
    QTest::newRow("Very Slow") << "Very Slow" << 0 << 5;
    QTest::newRow("Slow") << "Slow" << 0 << 6;
    QTest::newRow("Average") << "Average" << 0 << 7;
    QTest::newRow("Fast") << "Fast" << 0 << 8;
    QTest::newRow("Very Fast") << "Very Fast" << 0 << 9;
    QTest::newRow("lower case") << "rare" << 0 << 0;
    QTest::newRow("padded") << "Rare " << 0 << 0;
    QTest::newRow("empty") << "" << 0 << 0;
}

void TestMobTrees::frequencyImages() {
    QFETCH(QString, word);
    QFETCH(int, drop);
    QFETCH(int, spawn);
    QCOMPARE(DropFrequencyImage(word), drop);
    QCOMPARE(SpawnRateImage(word), spawn);
}

void TestMobTrees::tactical() {
    TreeNodeList nodes;
    PopulateTacticalTree("Raider", nodes);
    compareLines(dump(nodes), {
        " > Attack Types | Attack Types | 10",
        "Attack Types > Attack Types|Attack:No Records Found | No Records Found | 0",
        " > Resistances | Resistances | 10",
        "Resistances > Resistances|Resist:Cold | Cold 5% | 0",
        "Resistances > Resistances|Resist:Heat | Heat 20% | 0",
        " > Weaknesses | Weaknesses | 10",
        "Weaknesses > Weaknesses|Weak:Ion | Ion 15% | 0",
    });
}

void TestMobTrees::tacticalEmpty() {
    QString error;
    QVERIFY(f.exec({"INSERT INTO MOB_ATTACK_TYPE (MOB_NAME, ATTACK_TYPE, AMOUNT) VALUES ('Ghost', 'Plasma', 40)"}, &error));
    TreeNodeList nodes;
    PopulateTacticalTree("Ghost", nodes);
    compareLines(dump(nodes), {
        " > Attack Types | Attack Types | 10",
        "Attack Types > Attack Types|Attack:Plasma | Plasma 40 Units | 0",
        " > Resistances | Resistances | 10",
        "Resistances > Resistances|Resist:No Records Found | No Records Found | 0",
        " > Weaknesses | Weaknesses | 10",
        "Weaknesses > Weaknesses|Weak:No Records Found | No Records Found | 0",
    });
}

void TestMobTrees::spawn() {
    TreeNodeList nodes;
    PopulateSpawnTree("Raider", nodes);
    const QStringList lines = dump(nodes);
    // Two nav points of one sector hang under one sector node; an unknown rate keeps its node.
    QCOMPARE(lines.size(), 5);
    QCOMPARE(lines.at(0), QString(" > Sector A | Sector A | 11"));
    QVERIFY(lines.mid(1, 2).contains("Sector A > Sector A|Nav:Rock | Rock | 8"));
    QVERIFY(lines.mid(1, 2).contains("Sector A > Sector A|Nav:Belt | Belt | 0"));
    QCOMPARE(lines.at(3), QString(" > Sector B | Sector B | 11"));
    QCOMPARE(lines.at(4), QString("Sector B > Sector B|Nav:Gate | Gate | 5"));
}

void TestMobTrees::spawnEmpty() {
    TreeNodeList nodes;
    PopulateSpawnTree("Ghost", nodes);
    compareLines(dump(nodes), {" > No Records Found | No Records Found | 0"});
}

void TestMobTrees::loot() {
    TreeNodeList nodes;
    PopulateLootTree("Raider", nodes);
    compareLines(dump(nodes), {
        " > Equipment | Equipment | 10",
        "Equipment > Equipment|Equip:Ion Beam | Ion Beam | 6", // "rare" in lower case is left out
        " > Components | Components | 10",
        "Components > Components|No Records Found | No Records Found | 0",
        " > Raw Materials | Raw Materials | 10",
        "Raw Materials > Raw Materials|RawMat:Alloy | Alloy | 8",
        "Raw Materials > Raw Materials|RawMat:Ore | Ore | 7",
        " > Items | Items | 10",
        "Items > Items|+No Records Found | No Records Found | 0",
    });
    // A group whose only rows have unknown frequencies is left empty, without "No Records Found".
    TreeNodeList ghost;
    PopulateLootTree("Ghost", ghost);
    QVERIFY(ghost.indexOf("Components") >= 0);
    QCOMPARE(ghost.indexOf("Components|No Records Found"), -1);
    QCOMPARE(ghost.indexOf("Components|Comp:Coil"), -1);
}

void TestMobTrees::dropsOfEquipment() {
    TreeNodeList nodes;
    PopulateMOBs(DropKind::Equipment, "Ion Beam", nodes);
    compareLines(dump(nodes), {
        " > Ghost | Ghost | 12",
        "Ghost > Ghost| | Drop Rate: Very Frequent | 9",
        " > Raider | Raider | 12",
        "Raider > Raider| | Drop Rate: Rare | 6",
    });
    TreeNodeList lower;
    PopulateMOBs(DropKind::Equipment, "Lost Gun", lower);
    // The drop list of a record shows the frequency as stored, whatever it is.
    compareLines(dump(lower), {" > Raider | Raider | 12", "Raider > Raider| | Drop Rate: rare | 0"});
    TreeNodeList comp;
    PopulateMOBs(DropKind::Component, "Coil", comp);
    QCOMPARE(comp.size(), 2);
    TreeNodeList raw;
    PopulateMOBs(DropKind::RawMaterial, "Alloy", raw);
    QCOMPARE(raw.at(1).text, QString("Drop Rate: Frequent"));
}

void TestMobTrees::noDrops() {
    TreeNodeList nodes;
    PopulateMOBs(DropKind::Item, "Crate", nodes);
    compareLines(dump(nodes), {" > No Records Found | No Records Found | 0"});
}

void TestMobTrees::usedIn() {
    QString error;
    QVERIFY2(f.exec({"INSERT INTO EQUIPMENTS_COMPONENTS (EQUIPMENTS_EQUIPMENT, COMPONENTS_COMPONENT, AMOUNT) VALUES ('Ion Beam', 'Coil', 2)",
                     "INSERT INTO COMPONENTS_UPGRADE_FROM (COMPONENT_NAME, UPGRADE_FROM, AMOUNT) VALUES ('Big Coil', 'Coil', 1)",
                     "INSERT INTO RAW_MATERIALS_REFINES_FROM (RAW_MATERIAL_NAME, REFINES_FROM, AMOUNT) VALUES ('Alloy', 'Ore', 2)",
                     "INSERT INTO COMPONENTS_RAW_MATERIALS (COMPONENTS_COMPONENT, RAW_MATERIAL, AMOUNT) VALUES ('Coil', 'Ore', 1)"},
                    &error),
             qPrintable(error));
    TreeNodeList comp;
    PopulateUsedIn(RecordKind::Component, "Coil", comp);
    compareLines(dump(comp), {" > Equipment | Equipment | 10", "Equipment > Equipment|Equip:Ion Beam | Ion Beam | 1",
                              " > Components | Components | 10", "Components > Components|Comp:Big Coil | Big Coil | 2"});
    TreeNodeList ore;
    PopulateUsedIn(RecordKind::RawMaterial, "Ore", ore);
    compareLines(dump(ore), {" > Components | Components | 10", "Components > Components|Comp:Coil | Coil | 2",
                             " > Raw Materials | Raw Materials | 10",
                             "Raw Materials > Raw Materials|RawMat:Alloy | Alloy | 3"});
    TreeNodeList none;
    PopulateUsedIn(RecordKind::Item, "Crate", none);
    compareLines(dump(none), {" > No Records Found | No Records Found | 0"});
}

void TestMobTrees::stationSells() {
    QString error;
    QVERIFY2(f.exec({"INSERT INTO BUY_EQUIPMENT_LOCATION (EQUIPMENTS_EQUIPMENT, STATIONS_STATION) VALUES ('Ion Beam', 'Port Kell')",
                     "INSERT INTO BUY_ITEM_LOCATIONS (ITEM_NAME, STATIONS_STATION) VALUES ('Crate', 'Port Kell')"},
                    &error),
             qPrintable(error));
    TreeNodeList nodes;
    PopulateStationSells("Port Kell", nodes);
    compareLines(dump(nodes), {" > Equipment | Equipment | 10", "Equipment > Equipment|Equip:Ion Beam | Ion Beam | 1",
                               " > Items | Items | 10", "Items > Items|Item:Crate | Crate | 4"});
}

void TestMobTrees::typeLine_data() {
    QTest::addColumn<bool>("boss");
    QTest::addColumn<QString>("line");
    QTest::newRow("boss") << true << "Level 12 Drone Boss";
    QTest::newRow("not boss") << false << "Level 12 Drone";
}

void TestMobTrees::typeLine() {
    QFETCH(bool, boss);
    QFETCH(QString, line);
    QCOMPARE(MobTypeLine("12", "Drone", boss), line);
}

QTEST_GUILESS_MAIN(TestMobTrees)
#include "tst_mobtrees.moc"
