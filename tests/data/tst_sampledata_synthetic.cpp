#include "data/sampledata.h"
#include "data/schema.h"
#include "data/synthetic.h"
#include "tst_sampledata_db.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class TestSynthetic : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void rowCounts_data();
    void rowCounts();
    void everyKindPresentAndConsistent();
    void sameFileEveryTime();
    void refusesExistingFileAndNegativeCount();
    void buildTreeHasExactlyTheNodes_data();
    void buildTreeHasExactlyTheNodes();
    void buildTreeBesideTheSampleWorld();
    void buildTreeBadInputWritesNothing_data();
    void buildTreeBadInputWritesNothing();
    void recipeCycleIsACycle();

private:
    QString freshFile(const QString& name) { return m_dir.filePath(name); }
    QTemporaryDir m_dir;
};

void TestSynthetic::rowCounts_data()
{
    QTest::addColumn<qint64>("equipment");
    QTest::newRow("none") << qint64(0);
    QTest::newRow("one of each type") << qint64(8);
    QTest::newRow("a few thousand") << qint64(4003);
}

void TestSynthetic::rowCounts()
{
    QFETCH(qint64, equipment);
    const QString file = freshFile(QStringLiteral("rows%1.vosk").arg(equipment));
    SyntheticCounts counts;
    QString error;
    QVERIFY2(GenerateSynthetic(file, equipment, &error, &counts), qPrintable(error));
    RawDb db(file);
    QCOMPARE(db.count("EQUIPMENTS"), equipment);
    QCOMPARE(counts.equipment, equipment);
    QCOMPARE(db.count("COMPONENTS"), counts.components);
    QCOMPARE(db.count("RAW_MATERIALS"), counts.rawMaterials);
    QCOMPARE(db.count("ITEMS"), counts.items);
    QCOMPARE(db.count("MOBS"), counts.mobs);
    QCOMPARE(db.count("STATIONS"), counts.stations);
    // Types in turn: beams, missiles and projectiles share the weapon table; devices have none.
    auto ofType = [&](int t) { return equipment / 8 + (equipment % 8 > t ? 1 : 0); };
    QCOMPARE(db.count("WEAPON_STATS"), ofType(0) + ofType(1) + ofType(2));
    QCOMPARE(db.count("REACTOR_STATS"), ofType(3));
    QCOMPARE(db.count("ENGINE_STATS"), ofType(4));
    QCOMPARE(db.count("SHIELD_STATS"), ofType(5));
    QCOMPARE(db.count("AMO_STATS"), ofType(7));
    QCOMPARE(db.scalar("SELECT count(*) FROM EQUIPMENTS WHERE TYPE = 'Device'").toLongLong(), ofType(6));
    QCOMPARE(db.count("EQUIPMENT_CLASS"), equipment);
    QCOMPARE(db.scalar("SELECT max(VERSION) FROM DB_VERSION").toInt(), 6);
}

void TestSynthetic::everyKindPresentAndConsistent()
{
    const QString file = freshFile("kinds.vosk");
    QVERIFY(GenerateSynthetic(file, 2000));
    RawDb db(file);
    for (const schema::Table& t : schema::tables()) {
        if (t.name == QLatin1String("CHARACTERS")) continue; // a generated world has no player
        QVERIFY2(db.count(t.name) > 0, qPrintable(t.name + " is empty"));
    }
    // Names stay within their size and every statistics row has its equipment.
    QCOMPARE(db.scalar("SELECT max(length(EQUIPMENT_NAME)) <= 100 FROM EQUIPMENTS").toInt(), 1);
    for (const char* t : {"WEAPON_STATS", "REACTOR_STATS", "ENGINE_STATS", "SHIELD_STATS", "AMO_STATS"})
        QCOMPARE(db.scalar(QStringLiteral("SELECT count(*) FROM %1 WHERE EQUIPMENT_NAME NOT IN (SELECT EQUIPMENT_NAME FROM EQUIPMENTS)").arg(t)).toInt(), 0);
    QCOMPARE(db.scalar("SELECT count(*) FROM MOB_STATS WHERE MOB_NAME NOT IN (SELECT MOB_NAME FROM MOBS)").toInt(), 0);
    QCOMPARE(db.scalar("SELECT count(*) FROM MOB_EQUIP_DROP WHERE EQUIPMENT_NAME NOT IN (SELECT EQUIPMENT_NAME FROM EQUIPMENTS)").toInt(), 0);
    QCOMPARE(db.scalar("SELECT count(*) FROM EQUIPMENTS_COMPONENTS WHERE COMPONENTS_COMPONENT NOT IN (SELECT COMPONENT_NAME FROM COMPONENTS)").toInt(), 0);
    QCOMPARE(db.column("SELECT FREQUENCY FROM DROP_FREQUENCY").value(0), QStringLiteral("Very Rare"));
    // Generated refining never loops.
    for (const QString& r : db.column("SELECT RAW_MATERIAL_NAME FROM RAW_MATERIALS LIMIT 50"))
        QVERIFY(!walkBuildTree(db, "R", r).cycle);
}

void TestSynthetic::sameFileEveryTime()
{
    const QString a = freshFile("same-a.vosk"), b = freshFile("same-b.vosk");
    QVERIFY(GenerateSynthetic(a, 300));
    QVERIFY(GenerateSynthetic(b, 300));
    RawDb da(a), dbb(b);
    for (const QString& t : schema::tableNames()) {
        const QString sql = QStringLiteral("SELECT * FROM \"%1\"").arg(t);
        QCOMPARE(dbb.rows(sql), da.rows(sql));
    }
}

void TestSynthetic::refusesExistingFileAndNegativeCount()
{
    const QString file = freshFile("exists.vosk");
    QVERIFY(GenerateSynthetic(file, 10));
    QString error;
    QVERIFY(!GenerateSynthetic(file, 10, &error));
    QVERIFY(error.contains(QLatin1String("already exists")));
    RawDb db(file);
    QCOMPARE(db.count("EQUIPMENTS"), 10); // untouched

    const QString negative = freshFile("negative.vosk");
    error.clear();
    QVERIFY(!GenerateSynthetic(negative, -1, &error));
    QVERIFY(!error.isEmpty());
    QVERIFY(!QFile::exists(negative));
}

void TestSynthetic::buildTreeHasExactlyTheNodes_data()
{
    QTest::addColumn<int>("nodes");
    QTest::addColumn<int>("fanOut");
    QTest::newRow("root alone") << 1 << 4;
    QTest::newRow("root and one part") << 2 << 4;
    QTest::newRow("a chain") << 12 << 1;
    QTest::newRow("uneven last level") << 50 << 3;
    QTest::newRow("ten thousand") << 10000 << 4;
}

void TestSynthetic::buildTreeHasExactlyTheNodes()
{
    QFETCH(int, nodes);
    QFETCH(int, fanOut);
    const QString file = freshFile(QStringLiteral("tree-%1-%2.vosk").arg(nodes).arg(fanOut));
    QVERIFY(CreateDatabase(file));
    QString error;
    QVERIFY2(GenerateBuildTree(file, "Deep Engine", nodes, fanOut, &error), qPrintable(error));
    RawDb db(file);
    const TreeWalk w = walkBuildTree(db, "E", "Deep Engine");
    QVERIFY(!w.cycle);
    QCOMPARE(w.nodes, qint64(nodes));
    QCOMPARE(db.count("ENGINE_STATS"), 1); // the root is a complete engine
    QCOMPARE(db.count("COMPONENTS") + db.count("RAW_MATERIALS"), qint64(nodes - 1));
    if (nodes > 20) {
        // Deep trees go through every recipe kind the build view follows.
        for (const char* t : {"EQUIPMENTS_COMPONENTS", "COMPONENTS_UPGRADE_FROM", "COMPONENTS_RAW_MATERIALS", "RAW_MATERIALS_REFINES_FROM"})
            QVERIFY2(db.count(t) > 0, t);
    }
}

void TestSynthetic::buildTreeBesideTheSampleWorld()
{
    const QString file = freshFile("tree-sample.vosk");
    QVERIFY(CreateDatabase(file));
    QVERIFY(FillSampleData(file));
    QVERIFY(GenerateBuildTree(file, "Tyrant's Forge", 500));
    RawDb db(file);
    QCOMPARE(walkBuildTree(db, "E", "Tyrant's Forge").nodes, 500);
    // The sample records are not drawn into it.
    QCOMPARE(walkBuildTree(db, "E", "Hunter's Lance Mk I").cycle, false);
}

void TestSynthetic::buildTreeBadInputWritesNothing_data()
{
    QTest::addColumn<QString>("root");
    QTest::addColumn<int>("nodes");
    QTest::addColumn<int>("fanOut");
    QTest::newRow("no nodes") << "Root" << 0 << 4;
    QTest::newRow("no fan-out") << "Root" << 10 << 0;
    QTest::newRow("empty root") << "  " << 10 << 4;
    QTest::newRow("root too long") << QString(95, 'r') << 10 << 4;
    QTest::newRow("root exists") << "Existing Engine" << 10 << 4;
}

void TestSynthetic::buildTreeBadInputWritesNothing()
{
    QFETCH(QString, root);
    QFETCH(int, nodes);
    QFETCH(int, fanOut);
    const QString file = freshFile(QStringLiteral("bad-%1.vosk").arg(QTest::currentDataTag()).replace(' ', '-'));
    QVERIFY(CreateDatabase(file));
    QVERIFY(GenerateBuildTree(file, "Existing Engine", 1));
    QString error;
    QVERIFY(!GenerateBuildTree(file, root, nodes, fanOut, &error));
    QVERIFY(!error.isEmpty());
    RawDb db(file);
    QCOMPARE(db.count("EQUIPMENTS"), 1);
    QCOMPARE(db.count("COMPONENTS"), 0);

    QVERIFY(!GenerateBuildTree(freshFile("nowhere.vosk"), "Root", 5, 4, &error));
    QVERIFY(error.contains(QLatin1String("does not exist")));
}

void TestSynthetic::recipeCycleIsACycle()
{
    const QString file = freshFile("cycle.vosk");
    QVERIFY(CreateDatabase(file));
    QVERIFY(FillSampleData(file));
    const RecipeCycle names;
    QString error;
    QVERIFY2(AddRecipeCycle(file, names, &error), qPrintable(error));
    RawDb db(file);
    const TreeWalk e = walkBuildTree(db, "E", names.equipment);
    QVERIFY(e.cycle);
    QVERIFY(e.cyclePath.contains(names.componentB.toLower()));
    QVERIFY(walkBuildTree(db, "R", names.rawA).cycle);
    // The rest of the world stays acyclic.
    QVERIFY(!walkBuildTree(db, "E", "Hunter's Lance Mk IV").cycle);
    // Adding it twice is refused as a whole.
    QVERIFY(!AddRecipeCycle(file, names, &error));
    QCOMPARE(db.scalar("SELECT count(*) FROM COMPONENTS_UPGRADE_FROM WHERE COMPONENT_NAME LIKE 'Cycle%'").toInt(), 2);
}

QTEST_GUILESS_MAIN(TestSynthetic)
#include "tst_sampledata_synthetic.moc"
