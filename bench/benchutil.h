#pragma once
// Timing and memory helpers of the benchmark: medians over repeated runs after a warm-up, and the
// resident memory of this process.
#include <QElapsedTimer>
#include <QString>

#include <algorithm>
#include <functional>
#include <vector>

namespace bench {

// Runs setup (untimed) and body (timed) once to warm up, then runs times; returns the median seconds.
inline double medianSeconds(int runs, const std::function<void()>& body,
                            const std::function<void()>& setup = nullptr) {
    std::vector<double> times;
    for (int i = 0; i <= runs; ++i) {
        if (setup)
            setup();
        QElapsedTimer t;
        t.start();
        body();
        const double s = double(t.nsecsElapsed()) / 1e9;
        if (i > 0)
            times.push_back(s);
    }
    std::sort(times.begin(), times.end());
    const size_t n = times.size();
    return n % 2 ? times[n / 2] : (times[n / 2 - 1] + times[n / 2]) / 2;
}

// VmRSS of this process in bytes (0 when it cannot be read).
qint64 residentBytes();

// One printed figure: value against its goal (lower is better for every figure here).
void report(const QString& what, double value, const QString& unit, double goal);
void info(const QString& what, double value, const QString& unit);

} // namespace bench
