#pragma once
// Timing and memory helpers of the benchmark: medians and spreads over repeated runs after a warm-up,
// runs of two figures taken in turns, and the resident memory of this process.
#include "stats.h"

#include <QString>

#include <functional>
#include <vector>

namespace bench {

// The CPU time this process has used, in seconds, over all its threads. On a machine shared with
// other work the wall clock measures the others too; the CPU time measures only this program.
double processCpuSeconds();
// The monotonic clock, in seconds (the same clock in every process of the machine).
double monotonicSeconds();

// A timed figure over several runs, by the CPU time (what the goals are judged by) and by the wall
// clock: cpu and wall are the medians, cpuRuns and wallRuns tell the spread.
struct Timing {
    double cpu = 0;
    double wall = 0;
    Summary cpuRuns;
    Summary wallRuns;
};
Timing timingOf(const std::vector<double>& cpu, const std::vector<double>& wall);

// The times of one run of body, appended to cpu and wall.
void timeOnce(const std::function<void()>& body, std::vector<double>& cpu, std::vector<double>& wall);

// Runs setup (untimed) and body (timed) once to warm up, then runs times.
Timing medianSeconds(int runs, const std::function<void()>& body,
                     const std::function<void()>& setup = nullptr);

// Two or more figures measured in turns in one loop (a, b, c, a, b, c, ...), after one warm-up turn,
// so that a slow spell of the machine falls on all of them alike. Each body has its own untimed setup.
struct Turn {
    std::function<void()> body;
    std::function<void()> setup;
};
struct Interleaved {
    std::vector<Timing> timings;
    std::vector<std::vector<double>> cpu;  // per figure, per run
    std::vector<std::vector<double>> wall; // per figure, per run
};
Interleaved interleavedSeconds(int runs, const std::vector<Turn>& turns);

// VmRSS and VmHWM of this process in bytes (0 when they cannot be read).
qint64 residentBytes();
qint64 peakResidentBytes();

// One printed figure: value against its goal (lower is better for every figure here).
void report(const QString& what, double value, const QString& unit, double goal);
void info(const QString& what, double value, const QString& unit);
// The same over several runs: the median, with the lowest and highest run beside it.
void report(const QString& what, const Summary& s, const QString& unit, double goal);
void info(const QString& what, const Summary& s, const QString& unit);
// A timed figure: CPU seconds against the goal, the wall clock on the line below; both with spread.
void report(const QString& what, const Timing& t, double goal);
void info(const QString& what, const Timing& t);

} // namespace bench
