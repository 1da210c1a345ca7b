// The sample world, the generated worlds of the benchmark, and the database tool that writes them all.
#include "data/sampledata.h"
#include "data/schema.h"
#include "data/synthetic.h"
#include "tst_sampledata_db.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

class TestSampleData : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() {
        m_file = m_dir.filePath("sample.vosk");
        QString error;
        QVERIFY2(CreateDatabase(m_file, &error), qPrintable(error));
        QVERIFY2(FillSampleData(m_file, &error), qPrintable(error));
    }
    void recipesAreDeepAndFreeOfCycles() {
        RawDb db(m_file);
        qint64 deepest = 0;
        for (const QString& e : db.column("SELECT EQUIPMENT_NAME FROM EQUIPMENTS")) {
            const TreeWalk w = walkBuildTree(db, "E", e);
            QVERIFY2(!w.cycle, qPrintable(w.cyclePath));
            deepest = qMax(deepest, w.nodes);
        }
        QVERIFY(deepest >= 20);
    }
    void sameDataEveryTimeAndFilledOnce() {
        const QString second = m_dir.filePath("again.vosk");
        QVERIFY(CreateDatabase(second) && FillSampleData(second));
        RawDb a(m_file), b(second);
        for (const QString& t : schema::tableNames())
            QCOMPARE(b.rows("SELECT * FROM \"" + t + '"'), a.rows("SELECT * FROM \"" + t + '"'));
        QString error;
        QVERIFY(!FillSampleData(second, &error)); // a second fill is refused as a whole
        QVERIFY2(error.contains("UNIQUE"), qPrintable(error));
        QCOMPARE(b.count("EQUIPMENTS"), a.count("EQUIPMENTS"));
        QVERIFY(!FillSampleData(m_dir.filePath("missing.vosk"), &error));
        QVERIFY(error.contains("does not exist"));
        QVERIFY(!QFile::exists(m_dir.filePath("missing.vosk")));
    }
    void rowsOfEveryKindInTurn() {
        const QString a = m_dir.filePath("a.vosk"), b = m_dir.filePath("b.vosk");
        SyntheticCounts counts;
        QVERIFY(GenerateSynthetic(a, 803, nullptr, &counts));
        QVERIFY(GenerateSynthetic(b, 803));
        RawDb db(a), other(b);
        for (const QString& t : schema::tableNames()) { // the same every time, all but the player's filled
            QCOMPARE(other.rows("SELECT * FROM \"" + t + '"'), db.rows("SELECT * FROM \"" + t + '"'));
            QVERIFY2(t == "CHARACTERS" || db.count(t) > 0, qPrintable(t));
        }
        // Types in turn (803 = 100 of each and 3 more): beams, missiles and projectiles share a table.
        QCOMPARE(db.count("WEAPON_STATS"), 303);
        QCOMPARE(db.count("AMO_STATS"), 100);
    }
    void buildTreeHasExactlyTheNodes_data() {
        QTest::addColumn<int>("nodes");
        QTest::addColumn<int>("fanOut");
        QTest::newRow("root alone") << 1 << 4;
        QTest::newRow("a chain") << 12 << 1;
        QTest::newRow("uneven last level") << 50 << 3;
    }
    void buildTreeHasExactlyTheNodes() {
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
            for (const char* t : {"EQUIPMENTS_COMPONENTS", "COMPONENTS_UPGRADE_FROM",
                                  "COMPONENTS_RAW_MATERIALS", "RAW_MATERIALS_REFINES_FROM"})
                QVERIFY2(db.count(t) > 0, t);
    }
    void badInputWritesNothing() {
        const QString file = m_dir.filePath("bad.vosk");
        QVERIFY(CreateDatabase(file) && GenerateBuildTree(file, "Existing Engine", 1));
        QString error;
        for (const auto& [root, nodes, fanOut] :
             {std::tuple{"Root", 0, 4}, {"Root", 10, 0}, {"  ", 10, 4}, {"Existing Engine", 10, 4}})
            QVERIFY(!GenerateBuildTree(file, root, nodes, fanOut, &error) && !error.isEmpty());
        QCOMPARE(RawDb(file).count("COMPONENTS"), 0);
        QVERIFY(!GenerateSynthetic(file, 10, &error)); // an existing file is not overwritten
        QVERIFY(error.contains("already exists"));
        QVERIFY(!GenerateSynthetic(m_dir.filePath("negative.vosk"), -1) &&
                !QFile::exists(m_dir.filePath("negative.vosk")));
    }
    void recipeCycleIsACycle() {
        const QString file = m_dir.filePath("cycle.vosk");
        QVERIFY(CreateDatabase(file) && FillSampleData(file));
        const RecipeCycle names;
        QVERIFY(AddRecipeCycle(file, names));
        RawDb db(file);
        const TreeWalk e = walkBuildTree(db, "E", names.equipment);
        QVERIFY(e.cycle && e.cyclePath.contains(names.componentB.toLower()));
        QVERIFY(!walkBuildTree(db, "E", "Hunter's Lance Mk IV").cycle); // the rest of the world stays acyclic
        QVERIFY(!AddRecipeCycle(file, names));                          // refused the second time
    }
    void toolWritesEachKindAndRefusesBadArguments() {
        QString err;
        for (const auto& [args, message] :
             {std::pair{QStringList{"--sampel", "x.vosk"}, "Unknown option \"--sampel\""},
              {QStringList{"--synthetic", "0", "x.vosk"}, "whole number above 0"}}) {
            QCOMPARE(run(args, &err), 1);
            QVERIFY2(err.contains(message), qPrintable(err));
        }
        QVERIFY(!QFile::exists("x.vosk"));
        const QString file = m_dir.filePath("tool.vosk");
        for (const auto& [args, equipment] : {std::pair{QStringList{"--synthetic", "80"}, 80},
                                              {QStringList{"--tree", "30", "Deep Drive"}, 145}}) {
            QCOMPARE(run(QStringList{"--force"} + args + QStringList{file}, &err), 0);
            QCOMPARE(RawDb(file).count("EQUIPMENTS"), equipment);
        }
        QCOMPARE(run({"--create", file}, &err), 2);
        QVERIFY(err.contains("already exists; use --force"));
        QCOMPARE(run({"--force", "--sample", file}, &err), 0);
        QCOMPARE(run({"--tree", "10", "Hunter's Lance Mk I", m_dir.filePath("failed.vosk")}, &err),
                 3); // root taken by the sample world
        QVERIFY(!QFile::exists(m_dir.filePath("failed.vosk")));
    }

private:
    // The tool's exit code; -1 when it did not start or did not end by itself.
    int run(const QStringList& args, QString* err = nullptr) {
        QProcess p;
        p.start(QStringLiteral(VOSK_MAKEDB), args);
        const bool ran = p.waitForFinished(120000) && p.exitStatus() == QProcess::NormalExit;
        if (err)
            *err = QString::fromLocal8Bit(p.readAllStandardError());
        return ran ? p.exitCode() : -1;
    }
    QTemporaryDir m_dir;
    QString m_file;
};

QTEST_GUILESS_MAIN(TestSampleData)
#include "tst_sampledata.moc"
