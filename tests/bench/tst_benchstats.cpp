#include "stats.h"

#include <QTest>

#include <cmath>

using namespace bench;

namespace {
const double NaN = std::nan("");
using Values = std::vector<double>;
} // namespace

Q_DECLARE_METATYPE(Values)

class TestBenchStats : public QObject {
    Q_OBJECT
private Q_SLOTS:
    // Runs in the order they came (unsorted), and the median, lowest and highest run they give.
    void summary_data() {
        QTest::addColumn<Values>("runs");
        QTest::addColumn<int>("count");
        QTest::addColumn<double>("median");
        QTest::addColumn<double>("low");
        QTest::addColumn<double>("high");
        QTest::newRow("odd count: the middle run")
            << Values{0.9, 0.1, 0.5, 0.3, 0.7} << 5 << 0.5 << 0.1 << 0.9;
        QTest::newRow("even count: the mean of the two middle runs")
            << Values{4.0, 1.0, 3.0, 2.0} << 4 << 2.5 << 1.0 << 4.0;
        QTest::newRow("one run") << Values{0.25} << 1 << 0.25 << 0.25 << 0.25;
        QTest::newRow("a run without a value is left out")
            << Values{NaN, 3.0, 1.0, NaN} << 2 << 2.0 << 1.0 << 3.0;
    }
    void summary() {
        QFETCH(Values, runs);
        QFETCH(int, count);
        QFETCH(double, median);
        QFETCH(double, low);
        QFETCH(double, high);
        const Summary s = summarize(runs);
        QCOMPARE(s.count, count);
        QCOMPARE(s.median, median);
        QCOMPARE(s.low, low);
        QCOMPARE(s.high, high);
    }

    void noRuns() {
        for (const Values& runs : {Values{}, Values{NaN, NaN}}) {
            const Summary s = summarize(runs);
            QCOMPARE(s.count, 0);
            QVERIFY(std::isnan(s.median) && std::isnan(s.low) && std::isnan(s.high));
        }
    }

    // Measured and limit runs taken in turns, and the ratios that must come of them.
    void pairedRatios_data() {
        QTest::addColumn<Values>("measured");
        QTest::addColumn<Values>("limit");
        QTest::addColumn<int>("count");
        QTest::addColumn<double>("median");
        QTest::addColumn<double>("low");
        QTest::addColumn<double>("high");
        // A slow spell slows both runs of a pair: each pair says 1.2, while the medians of the two
        // lists apart (2.4 / 1.0) would say 2.4.
        QTest::newRow("each run against its own partner")
            << Values{1.2, 1.2, 2.4, 3.6, 6.0} << Values{1.0, 1.0, 2.0, 3.0, 5.0} << 5 << 1.2 << 1.2 << 1.2;
        QTest::newRow("pairs stay in run order")
            << Values{2.0, 1.0, 3.0} << Values{1.0, 2.0, 1.0} << 3 << 2.0 << 0.5 << 3.0;
        QTest::newRow("a pair with a missing or zero limit is left out")
            << Values{1.0, 2.0, 3.0, 4.0} << Values{NaN, 0.0, 2.0, 2.0} << 2 << 1.75 << 1.5 << 2.0;
        QTest::newRow("a pair with a missing measured run is left out")
            << Values{NaN, 3.0} << Values{1.0, 2.0} << 1 << 1.5 << 1.5 << 1.5;
        QTest::newRow("runs beyond the shorter list have no partner")
            << Values{2.0, 4.0, 100.0} << Values{1.0, 2.0} << 2 << 2.0 << 2.0 << 2.0;
    }
    void pairedRatios() {
        QFETCH(Values, measured);
        QFETCH(Values, limit);
        QFETCH(int, count);
        QFETCH(double, median);
        QFETCH(double, low);
        QFETCH(double, high);
        const Summary s = bench::pairedRatios(measured, limit);
        QCOMPARE(s.count, count);
        QCOMPARE(s.median, median);
        QCOMPARE(s.low, low);
        QCOMPARE(s.high, high);
    }

    // What the child printed, among the program's own output, and what the parent reads from it.
    void childReport_data() {
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<QStringList>("keys");
        QTest::addColumn<Values>("walls");
        QTest::addColumn<Values>("cpus");
        QTest::addColumn<int>("problems");
        QTest::newRow("figures among other lines")
            << QByteArray(
                   "Qt says something\n@ first-screen 0.412 0.300\nmore @ text\n@ start-freeze 0.05 -\n")
            << QStringList{"first-screen", "start-freeze"} << Values{0.412, 0.05} << Values{0.3, NaN} << 0;
        QTest::newRow("spaces and a missing last newline")
            << QByteArray("  @  rows   1000000   -  ") << QStringList{"rows"} << Values{1e6} << Values{NaN}
            << 0;
        QTest::newRow("a key printed twice keeps its last value")
            << QByteArray("@ whole 1 1\n@ whole 2 3\n") << QStringList{"whole"} << Values{2.0} << Values{3.0}
            << 0;
        QTest::newRow("unreadable lines are named, not read")
            << QByteArray(
                   "@ cut-short 0.5\n@ word 0.5 fast\n@ nowall - 0.1\n@ inf inf 1\n@ ok 1 2\n@ extra 1 2 3\n")
            << QStringList{"ok"} << Values{1.0} << Values{2.0} << 5;
        QTest::newRow("a line must start with the marker and a space")
            << QByteArray("@first 1 1\n# @ second 1 1\n") << QStringList{} << Values{} << Values{} << 0;
    }
    void childReport() {
        QFETCH(QByteArray, output);
        QFETCH(QStringList, keys);
        QFETCH(Values, walls);
        QFETCH(Values, cpus);
        QFETCH(int, problems);
        QStringList found;
        const ChildReport report = parseChildReport(output, &found);
        QCOMPARE(report.keys(), keys);
        for (qsizetype i = 0; i < keys.size(); ++i) {
            const ChildSample s = report.value(keys[i]);
            QCOMPARE(s.wall, walls[size_t(i)]);
            if (std::isnan(cpus[size_t(i)]))
                QVERIFY(std::isnan(s.cpu));
            else
                QCOMPARE(s.cpu, cpus[size_t(i)]);
        }
        QCOMPARE(found.size(), problems);
    }

    // What the child writes, the parent reads back, and runs that lack a key do not shift the others.
    void childRunsCollected() {
        const QByteArray first =
            childLine(QStringLiteral("screen"), 0.5, 0.25) + childLine(QStringLiteral("gap"), 1.5, NaN);
        const QByteArray second = childLine(QStringLiteral("screen"), 0.75, 0.5);
        ChildRuns runs;
        addChildReport(runs, parseChildReport(first));
        addChildReport(runs, parseChildReport("noise\n" + second));
        QCOMPARE(runs.wall.value(QStringLiteral("screen")), (Values{0.5, 0.75}));
        QCOMPARE(runs.cpu.value(QStringLiteral("screen")), (Values{0.25, 0.5}));
        QCOMPARE(runs.wall.value(QStringLiteral("gap")), (Values{1.5}));
        QCOMPARE(summarize(runs.cpu.value(QStringLiteral("gap"))).count, 0);
    }
};

QTEST_APPLESS_MAIN(TestBenchStats)
#include "tst_benchstats.moc"
