// The generated worlds of the benchmark and the database tool that writes every kind of file.
#include "data/sampledata.h"
#include "data/schema.h"
#include "data/synthetic.h"
#include "tst_sampledata_db.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

class TestSynthetic : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void rowsOfEveryKindInTurn();
    void buildTreeHasExactlyTheNodes_data();
    void buildTreeHasExactlyTheNodes();
    void badInputWritesNothing();
    void recipeCycleIsACycle();
    void toolWritesEachKindAndRefusesBadArguments();

private:
    int run(const QStringList& args, QString* err = nullptr) {
        QProcess p;
        p.start(QStringLiteral(VOSK_MAKEDB), args);
        p.waitForFinished(120000);
        if (err) *err = QString::fromLocal8Bit(p.readAllStandardError());
        return p.exitCode();
    }
    QTemporaryDir m_dir;
};

void TestSynthetic::rowsOfEveryKindInTurn() {
    const QString a = m_dir.filePath("a.vosk"), b = m_dir.filePath("b.vosk");
    SyntheticCounts counts;
    QVERIFY(GenerateSynthetic(a, 803, nullptr, &counts));
    QVERIFY(GenerateSynthetic(b, 803));
    RawDb db(a), other(b);
    for (const QString& t : schema::tableNames()) { // the same file every time, every table but the player's filled
        QCOMPARE(other.rows("SELECT * FROM \"" + t + '"'), db.rows("SELECT * FROM \"" + t + '"'));
        QVERIFY2(t == "CHARACTERS" || db.count(t) > 0, qPrintable(t));
    }
    QCOMPARE(db.count("EQUIPMENTS"), counts.equipment);
    QCOMPARE(db.count("MOBS"), counts.mobs);
    // Types in turn (803 = 100 of each and 3 more): beams, missiles and projectiles share the weapon table.
    QCOMPARE(db.count("WEAPON_STATS"), 303);
    QCOMPARE(db.count("REACTOR_STATS"), 100);
    QCOMPARE(db.count("AMO_STATS"), 100);
    QCOMPARE(db.scalar("SELECT count(*) FROM EQUIPMENTS WHERE TYPE = 'Device'").toInt(), 100);
    QCOMPARE(db.scalar("SELECT count(*) FROM AMO_STATS WHERE EQUIPMENT_NAME NOT IN (SELECT EQUIPMENT_NAME FROM EQUIPMENTS)").toInt(), 0);
    for (const QString& r : db.column("SELECT RAW_MATERIAL_NAME FROM RAW_MATERIALS LIMIT 50")) QVERIFY(!walkBuildTree(db, "R", r).cycle);
}

void TestSynthetic::buildTreeHasExactlyTheNodes_data() {
    QTest::addColumn<int>("nodes");
    QTest::addColumn<int>("fanOut");
    QTest::newRow("root alone") << 1 << 4;
    QTest::newRow("a chain") << 12 << 1;
    QTest::newRow("uneven last level") << 50 << 3;
}

void TestSynthetic::buildTreeHasExactlyTheNodes() {
    QFETCH(int, nodes);
    QFETCH(int, fanOut);
    const QString file = m_dir.filePath(QString("tree-%1.vosk").arg(nodes));
    QVERIFY(CreateDatabase(file));
    QString error;
    QVERIFY2(GenerateBuildTree(file, "Deep Engine", nodes, fanOut, &error), qPrintable(error));
    RawDb db(file);
    const TreeWalk w = walkBuildTree(db, "E", "Deep Engine");
    QVERIFY(!w.cycle);
    QCOMPARE(w.nodes, qint64(nodes));
    QCOMPARE(db.count("ENGINE_STATS"), 1); // the root is a complete engine
    QCOMPARE(db.count("COMPONENTS") + db.count("RAW_MATERIALS"), qint64(nodes - 1));
    if (nodes > 20) // deep trees go through every recipe kind the build view follows
        for (const char* t : {"EQUIPMENTS_COMPONENTS", "COMPONENTS_UPGRADE_FROM", "COMPONENTS_RAW_MATERIALS", "RAW_MATERIALS_REFINES_FROM"})
            QVERIFY2(db.count(t) > 0, t);
}

void TestSynthetic::badInputWritesNothing() {
    const QString file = m_dir.filePath("bad.vosk");
    QVERIFY(GenerateBuildTree(m_dir.filePath("nowhere.vosk"), "Root", 5) == false);
    QVERIFY(CreateDatabase(file) && GenerateBuildTree(file, "Existing Engine", 1));
    QString error;
    for (const auto& [root, nodes, fanOut] : {std::tuple{"Root", 0, 4}, {"Root", 10, 0}, {"  ", 10, 4}, {"Existing Engine", 10, 4}}) {
        QVERIFY(!GenerateBuildTree(file, root, nodes, fanOut, &error));
        QVERIFY(!error.isEmpty());
    }
    QVERIFY(!GenerateBuildTree(file, QString(95, 'r'), 10));
    RawDb db(file);
    QCOMPARE(db.count("EQUIPMENTS") + db.count("COMPONENTS"), 1);
    QVERIFY(!GenerateSynthetic(file, 10, &error)); // an existing file is not overwritten
    QVERIFY(error.contains("already exists"));
    QVERIFY(!GenerateSynthetic(m_dir.filePath("negative.vosk"), -1));
    QVERIFY(!QFile::exists(m_dir.filePath("negative.vosk")));
}

void TestSynthetic::recipeCycleIsACycle() {
    const QString file = m_dir.filePath("cycle.vosk");
    QVERIFY(CreateDatabase(file) && FillSampleData(file));
    const RecipeCycle names;
    QVERIFY(AddRecipeCycle(file, names));
    RawDb db(file);
    const TreeWalk e = walkBuildTree(db, "E", names.equipment);
    QVERIFY(e.cycle && e.cyclePath.contains(names.componentB.toLower()));
    QVERIFY(walkBuildTree(db, "R", names.rawA).cycle);
    QVERIFY(!walkBuildTree(db, "E", "Hunter's Lance Mk IV").cycle); // the rest of the world stays acyclic
    QVERIFY(!AddRecipeCycle(file, names)); // refused as a whole the second time
    QCOMPARE(db.scalar("SELECT count(*) FROM COMPONENTS_UPGRADE_FROM WHERE COMPONENT_NAME LIKE 'Cycle%'").toInt(), 2);
}

void TestSynthetic::toolWritesEachKindAndRefusesBadArguments() {
    QString err;
    for (const auto& [args, message] : {std::pair{QStringList{"--sampel", "x.vosk"}, "Unknown option \"--sampel\""},
                                        {QStringList{"--sample", "a", "b"}, "--sample takes one file name."},
                                        {QStringList{"--synthetic", "0", "x.vosk"}, "whole number above 0"}}) {
        QCOMPARE(run(args, &err), 1);
        QVERIFY2(err.contains(message), qPrintable(err));
    }
    QVERIFY(!QFile::exists("x.vosk"));
    const QString file = m_dir.filePath("tool.vosk");
    for (const auto& [args, equipment] : {std::pair{QStringList{"--synthetic", "80"}, 80}, {QStringList{"--tree", "30", "Deep Drive"}, 145}}) {
        QCOMPARE(run(QStringList{"--force"} + args + QStringList{file}, &err), 0);
        QCOMPARE(RawDb(file).count("EQUIPMENTS"), equipment);
    }
    QCOMPARE(run({"--create", file}, &err), 2);
    QVERIFY(err.contains("already exists; use --force"));
    QCOMPARE(run({"--tree", "10", "Hunter's Lance Mk I", m_dir.filePath("failed.vosk")}, &err), 3); // root taken by the sample world
    QVERIFY(!QFile::exists(m_dir.filePath("failed.vosk")));
}

QTEST_GUILESS_MAIN(TestSynthetic)
#include "tst_sampledata_synthetic.moc"
