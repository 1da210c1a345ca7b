// The MOB trees and the trees of the other record views on a small database made here: group order,
// keys, texts, frequency pictures and the "No Records Found" rules.
#include "views/mobtrees.h"
#include "views/recordtrees.h"
#include "viewsfixture.h"

#include <QMap>
#include <QTest>
#include <functional>

namespace {
// "parent > key | text | picture [| note]" per node, in the order added.
QStringList dump(const TreeNodeList& nodes) {
    QStringList out;
    for (const TreeNodeList::Node& n : nodes.nodes())
        out << n.parentKey + " > " + n.key + " | " + n.text + " | " + QString::number(n.image) +
                   (n.note.isEmpty() ? QString() : " | " + n.note);
    return out;
}

const QMap<QString, std::function<void(const QString&, TreeNodeList&)>> populate = {
    {"tactical", PopulateTacticalTree},
    {"spawn", PopulateSpawnTree},
    {"loot", PopulateLootTree},
    {"equipment drops", [](const QString& n, TreeNodeList& t) { PopulateMOBs(DropKind::Equipment, n, t); }},
    {"component drops", [](const QString& n, TreeNodeList& t) { PopulateMOBs(DropKind::Component, n, t); }},
    {"raw drops", [](const QString& n, TreeNodeList& t) { PopulateMOBs(DropKind::RawMaterial, n, t); }},
    {"item drops", [](const QString& n, TreeNodeList& t) { PopulateMOBs(DropKind::Item, n, t); }},
    {"component used in",
     [](const QString& n, TreeNodeList& t) { PopulateUsedIn(RecordKind::Component, n, t); }},
    {"raw used in", [](const QString& n, TreeNodeList& t) { PopulateUsedIn(RecordKind::RawMaterial, n, t); }},
    {"item used in", [](const QString& n, TreeNodeList& t) { PopulateUsedIn(RecordKind::Item, n, t); }},
    {"station", PopulateStationSells},
};
const QString none = " > No Records Found | No Records Found | 0";
} // namespace

class TestMobTrees : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString error;
        QVERIFY2(f.setUp(false, &error), qPrintable(error));
        QVERIFY2(
            f.exec(
                {
                    "INSERT INTO MOBS (MOB_NAME, TYPE, FACTION) VALUES ('Raider', 'Drone', 'Pirates'), ('Ghost', 'Wraith', NULL)",
                    "INSERT INTO MOB_RESISTANCE (MOB_NAME, RESISTANCE, AMOUNT) VALUES ('Raider', 'Heat', 20), ('Raider', 'Cold', 5)",
                    "INSERT INTO MOB_WEAKNESS (MOB_NAME, WEAKNESS, AMOUNT) VALUES ('Raider', 'Ion', 15)",
                    "INSERT INTO MOB_ATTACK_TYPE (MOB_NAME, ATTACK_TYPE, AMOUNT) VALUES ('Ghost', 'Plasma', 40)",
                    "INSERT INTO MOBS_LOCATION (MOB_NAME, SECTOR_NAME, NAV_POINT, SPAWN_RATE) VALUES ('Raider', 'Sector B', 'Gate', "
                    "'Very Slow'), ('Raider', 'Sector A', 'Rock', 'Fast'), ('Raider', 'Sector A', 'Belt', 'Sometimes')",
                    "INSERT INTO MOB_EQUIP_DROP (MOB_NAME, EQUIPMENT_NAME, DROP_FREQUENCY) VALUES ('Raider', 'Ion Beam', 'Rare'), "
                    "('Raider', 'Lost Gun', 'rare'), ('Ghost', 'Ion Beam', 'Very Frequent')",
                    "INSERT INTO MOB_RAW_MAT_DROP (MOB_NAME, RAW_MATERIAL_NAME, DROP_FREQUENCY) VALUES ('Raider', 'Ore', 'Normal'), "
                    "('Raider', 'Alloy', 'Frequent')",
                    "INSERT INTO MOB_COMP_DROP (MOB_NAME, COMPONENT_NAME, DROP_FREQUENCY) VALUES ('Ghost', 'Coil', 'Seldom')",
                    "INSERT INTO EQUIPMENTS_COMPONENTS (EQUIPMENTS_EQUIPMENT, COMPONENTS_COMPONENT, AMOUNT) VALUES ('Ion Beam', 'Coil', 2)",
                    "INSERT INTO COMPONENTS_UPGRADE_FROM (COMPONENT_NAME, UPGRADE_FROM, AMOUNT) VALUES ('Big Coil', 'Coil', 1)",
                    "INSERT INTO RAW_MATERIALS_REFINES_FROM (RAW_MATERIAL_NAME, REFINES_FROM, AMOUNT) VALUES ('Alloy', 'Ore', 2)",
                    "INSERT INTO COMPONENTS_RAW_MATERIALS (COMPONENTS_COMPONENT, RAW_MATERIAL, AMOUNT) VALUES ('Coil', 'Ore', 1)",
                    "INSERT INTO BUY_EQUIPMENT_LOCATION (EQUIPMENTS_EQUIPMENT, STATIONS_STATION) VALUES ('Ion Beam', 'Port Kell')",
                    "INSERT INTO BUY_ITEM_LOCATIONS (ITEM_NAME, STATIONS_STATION) VALUES ('Crate', 'Port Kell')",
                },
                &error),
            qPrintable(error));
    }
    void cleanup() { f.tearDown(); }
    void trees_data() {
        QTest::addColumn<QString>("tree");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("lines");
        auto row = [](const char* tag, const char* tree, const char* name, const QStringList& lines) {
            QTest::newRow(tag) << QString(tree) << QString(name) << lines;
        };
        row("tactical, no attack types", "tactical", "Raider",
            {" > Attack Types | Attack Types | 10",
             "Attack Types > Attack Types|Attack:No Records Found | No Records Found | 0",
             " > Resistances | Resistances | 10", "Resistances > Resistances|Resist:Cold | Cold 5% | 0",
             "Resistances > Resistances|Resist:Heat | Heat 20% | 0", " > Weaknesses | Weaknesses | 10",
             "Weaknesses > Weaknesses|Weak:Ion | Ion 15% | 0"});
        row("tactical, attack types only", "tactical", "Ghost",
            {" > Attack Types | Attack Types | 10",
             "Attack Types > Attack Types|Attack:Plasma | Plasma 40 Units | 0",
             " > Resistances | Resistances | 10",
             "Resistances > Resistances|Resist:No Records Found | No Records Found | 0",
             " > Weaknesses | Weaknesses | 10",
             "Weaknesses > Weaknesses|Weak:No Records Found | No Records Found | 0"});
        row("no spawn places", "spawn", "Ghost", {none});
        row("loot", "loot", "Raider", // "rare" in lower case is left out
            {" > Equipment | Equipment | 10",
             "Equipment > Equipment|Equip:Ion Beam | Ion Beam | 6 | Drop Rate: Rare",
             " > Components | Components | 10",
             "Components > Components|No Records Found | No Records Found | 0",
             " > Raw Materials | Raw Materials | 10",
             "Raw Materials > Raw Materials|RawMat:Alloy | Alloy | 8 | Drop Rate: Frequent",
             "Raw Materials > Raw Materials|RawMat:Ore | Ore | 7 | Drop Rate: Normal",
             " > Items | Items | 10", "Items > Items|+No Records Found | No Records Found | 0"});
        row("equipment drops", "equipment drops", "Ion Beam",
            {" > Ghost | Ghost | 12", "Ghost > Ghost| | Drop Rate: Very Frequent | 9",
             " > Raider | Raider | 12", "Raider > Raider| | Drop Rate: Rare | 6"});
        // The drop list of a record shows the frequency as stored, whatever it is.
        row("drop word as stored", "equipment drops", "Lost Gun",
            {" > Raider | Raider | 12", "Raider > Raider| | Drop Rate: rare | 0"});
        row("component drops", "component drops", "Coil",
            {" > Ghost | Ghost | 12", "Ghost > Ghost| | Drop Rate: Seldom | 0"});
        row("raw material drops", "raw drops", "Alloy",
            {" > Raider | Raider | 12", "Raider > Raider| | Drop Rate: Frequent | 8"});
        row("no drops", "item drops", "Crate", {none});
        row("component used in", "component used in", "Coil",
            {" > Equipment | Equipment | 10", "Equipment > Equipment|Equip:Ion Beam | Ion Beam | 1",
             " > Components | Components | 10", "Components > Components|Comp:Big Coil | Big Coil | 2"});
        row("raw material used in", "raw used in", "Ore",
            {" > Components | Components | 10", "Components > Components|Comp:Coil | Coil | 2",
             " > Raw Materials | Raw Materials | 10",
             "Raw Materials > Raw Materials|RawMat:Alloy | Alloy | 3"});
        row("used nowhere", "item used in", "Crate", {none});
        row("station sells", "station", "Port Kell",
            {" > Equipment | Equipment | 10", "Equipment > Equipment|Equip:Ion Beam | Ion Beam | 1",
             " > Items | Items | 10", "Items > Items|Item:Crate | Crate | 4"});
    }
    void trees() {
        QFETCH(QString, tree);
        QFETCH(QString, name);
        QFETCH(QStringList, lines);
        TreeNodeList nodes;
        populate[tree](name, nodes);
        QCOMPARE(dump(nodes), lines);
    }
    void lootGroupOfUnknownFrequenciesStaysEmpty() {
        TreeNodeList ghost;
        PopulateLootTree("Ghost", ghost);
        QVERIFY(ghost.indexOf("Components") >= 0);
        QCOMPARE(ghost.indexOf("Components|No Records Found") + ghost.indexOf("Components|Comp:Coil"), -2);
    }
    void spawn() {
        TreeNodeList nodes;
        PopulateSpawnTree("Raider", nodes);
        const QStringList lines = dump(nodes);
        // Two nav points of one sector hang under one sector node; an unknown rate keeps its node.
        QCOMPARE(lines.size(), 5);
        QCOMPARE(lines.at(0), QString(" > Sector A | Sector A | 11"));
        QVERIFY(lines.mid(1, 2).contains("Sector A > Sector A|Nav:Rock | Rock | 8 | Spawn Rate: Fast"));
        QVERIFY(lines.mid(1, 2).contains("Sector A > Sector A|Nav:Belt | Belt | 0 | Spawn Rate: Sometimes"));
        QCOMPARE(lines.mid(3),
                 (QStringList{" > Sector B | Sector B | 11",
                              "Sector B > Sector B|Nav:Gate | Gate | 5 | Spawn Rate: Very Slow"}));
    }

private:
    ViewsFixture f;
};

QTEST_GUILESS_MAIN(TestMobTrees)
#include "tst_mobtrees.moc"
