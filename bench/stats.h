#pragma once
// The arithmetic of the benchmark's figures, kept apart from the timing so that it can be checked on
// its own: the median and spread of repeated runs, the ratio of runs taken in pairs, and the report a
// child process prints.
#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

#include <limits>
#include <vector>

namespace bench {

// A figure over several runs: its median and the lowest and highest run, so that a reader sees how
// steady it is. count 0: no run gave a value (median, low and high are then NaN).
struct Summary {
    double median = std::numeric_limits<double>::quiet_NaN();
    double low = std::numeric_limits<double>::quiet_NaN();
    double high = std::numeric_limits<double>::quiet_NaN();
    int count = 0;
};

// NaN values (a run that gave no value) are left out.
Summary summarize(std::vector<double> values);

// Two figures measured in turns (limit, measured, limit, measured, ...): the ratio of each measured
// run to the limit run of its own pair, summarised. Comparing runs of the same moment keeps a slow
// spell of a shared machine from landing on one side only. Pairs with a missing or non-positive value
// are left out; values beyond the shorter list have no partner and are left out too.
Summary pairedRatios(const std::vector<double>& measured, const std::vector<double>& limit);

// What a child process measured: one value by the wall clock and, where it has one, by the CPU.
struct ChildSample {
    double wall = std::numeric_limits<double>::quiet_NaN();
    double cpu = std::numeric_limits<double>::quiet_NaN();
};
using ChildReport = QMap<QString, ChildSample>;

// The child prints its figures as lines "@ key wall cpu" (cpu "-" when it has none) among whatever
// else the program writes. Reads those lines; a line that starts with "@ " but cannot be read is
// named in problems and left out. A key given twice keeps its last value.
ChildReport parseChildReport(const QByteArray& output, QStringList* problems = nullptr);
// The line the child prints for one figure (NaN cpu printed as "-").
QByteArray childLine(const QString& key, double wall, double cpu);

// The same figure of several child runs, one list a key: the wall values and the CPU values of every
// run that printed the key, in run order.
struct ChildRuns {
    QMap<QString, std::vector<double>> wall;
    QMap<QString, std::vector<double>> cpu;
};
void addChildReport(ChildRuns& runs, const ChildReport& report);

} // namespace bench
