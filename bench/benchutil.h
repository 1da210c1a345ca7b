#pragma once
// Timing and memory helpers of the benchmark: medians over repeated runs after a warm-up, and the
// resident memory of this process.
#include <QElapsedTimer>
#include <QString>

#include <algorithm>
#include <functional>
#include <vector>

namespace bench {

// The CPU time this thread has used, in seconds. On a machine shared with other work the wall
// clock measures the others too; the CPU time measures only this program.
double threadCpuSeconds();

// Median seconds of a figure: by the CPU time of this thread (what the goals are judged by) and by
// the wall clock.
struct Timing {
    double cpu = 0;
    double wall = 0;
};

// Runs setup (untimed) and body (timed) once to warm up, then runs times; returns the medians.
inline Timing medianSeconds(int runs, const std::function<void()>& body,
                            const std::function<void()>& setup = nullptr) {
    std::vector<double> cpu, wall;
    for (int i = 0; i <= runs; ++i) {
        if (setup)
            setup();
        QElapsedTimer t;
        const double c0 = threadCpuSeconds();
        t.start();
        body();
        const double w = double(t.nsecsElapsed()) / 1e9;
        const double c = threadCpuSeconds() - c0;
        if (i > 0) {
            cpu.push_back(c);
            wall.push_back(w);
        }
    }
    auto median = [](std::vector<double>& v) {
        std::sort(v.begin(), v.end());
        const size_t n = v.size();
        return n % 2 ? v[n / 2] : (v[n / 2 - 1] + v[n / 2]) / 2;
    };
    return {median(cpu), median(wall)};
}

// VmRSS of this process in bytes (0 when it cannot be read).
qint64 residentBytes();

// One printed figure: value against its goal (lower is better for every figure here).
void report(const QString& what, double value, const QString& unit, double goal);
void info(const QString& what, double value, const QString& unit);
// A timed figure: CPU seconds against the goal, the wall clock beside it.
void report(const QString& what, const Timing& t, double goal);
void info(const QString& what, const Timing& t);

} // namespace bench
