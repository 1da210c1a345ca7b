#include "benchutil.h"

#include <QElapsedTimer>
#include <QFile>

#include <cmath>
#include <cstdio>
#include <ctime>

namespace bench {

namespace {
qint64 statusBytes(const char* key) {
    QFile f(QStringLiteral("/proc/self/status"));
    if (!f.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : f.readAll().split('\n')) {
        if (line.startsWith(key)) {
            const QList<QByteArray> parts = line.simplified().split(' ');
            return parts.size() >= 2 ? parts[1].toLongLong() * 1024 : 0;
        }
    }
    return 0;
}

double clockSeconds(clockid_t clock) {
    timespec ts{};
    clock_gettime(clock, &ts);
    return double(ts.tv_sec) + double(ts.tv_nsec) / 1e9;
}

// "0.1234 s  [0.1200..0.1300 of 5]": the median, then the lowest and highest run.
QString withSpread(const Summary& s, const QString& unit) {
    if (s.count == 0)
        return QStringLiteral("       n/a");
    QString text = QString::asprintf("%10.4f %-6s", s.median, qPrintable(unit));
    if (s.count > 1)
        text += QString::asprintf(" [%.4f..%.4f of %d]", s.low, s.high, s.count);
    return text;
}

void printLine(const QString& what, const QString& value, const QString& tail = QString()) {
    QString line = QStringLiteral("%1 %2 %3").arg(what, -70).arg(value, -40).arg(tail);
    while (line.endsWith(QLatin1Char(' ')))
        line.chop(1);
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}

QString verdict(double value, double goal) {
    if (std::isnan(value))
        return QString::asprintf("goal <= %-6g  NOT MEASURED", goal);
    return QString::asprintf("goal <= %-6g ratio %5.2f  %s", goal, value / goal,
                             value <= goal ? "MET" : "MISSED");
}
} // namespace

qint64 residentBytes() {
    return statusBytes("VmRSS:");
}

qint64 peakResidentBytes() {
    return statusBytes("VmHWM:");
}

double processCpuSeconds() {
    return clockSeconds(CLOCK_PROCESS_CPUTIME_ID);
}

double monotonicSeconds() {
    return clockSeconds(CLOCK_MONOTONIC);
}

Timing timingOf(const std::vector<double>& cpu, const std::vector<double>& wall) {
    Timing t;
    t.cpuRuns = summarize(cpu);
    t.wallRuns = summarize(wall);
    t.cpu = t.cpuRuns.median;
    t.wall = t.wallRuns.median;
    return t;
}

void timeOnce(const std::function<void()>& body, std::vector<double>& cpu, std::vector<double>& wall) {
    QElapsedTimer t;
    const double c0 = processCpuSeconds();
    t.start();
    body();
    const double w = double(t.nsecsElapsed()) / 1e9;
    cpu.push_back(processCpuSeconds() - c0);
    wall.push_back(w);
}

Timing medianSeconds(int runs, const std::function<void()>& body, const std::function<void()>& setup) {
    const Interleaved r = interleavedSeconds(runs, {{body, setup}});
    return r.timings.front();
}

Interleaved interleavedSeconds(int runs, const std::vector<Turn>& turns) {
    Interleaved r;
    r.cpu.resize(turns.size());
    r.wall.resize(turns.size());
    for (int i = 0; i <= runs; ++i) {
        for (size_t k = 0; k < turns.size(); ++k) {
            if (turns[k].setup)
                turns[k].setup();
            timeOnce(turns[k].body, r.cpu[k], r.wall[k]);
        }
    }
    for (size_t k = 0; k < turns.size(); ++k) {
        // The first turn warmed the caches up.
        r.cpu[k].erase(r.cpu[k].begin());
        r.wall[k].erase(r.wall[k].begin());
        r.timings.push_back(timingOf(r.cpu[k], r.wall[k]));
    }
    return r;
}

void report(const QString& what, const Timing& t, double goal) {
    report(what + QStringLiteral(" [cpu]"), t.cpuRuns, QStringLiteral("s"), goal);
    info(QStringLiteral("    the same by the wall clock"), t.wallRuns, QStringLiteral("s"));
}

void info(const QString& what, const Timing& t) {
    info(what + QStringLiteral(" [cpu]"), t.cpuRuns, QStringLiteral("s"));
    info(QStringLiteral("    the same by the wall clock"), t.wallRuns, QStringLiteral("s"));
}

void report(const QString& what, const Summary& s, const QString& unit, double goal) {
    printLine(what, withSpread(s, unit), verdict(s.median, goal));
}

void info(const QString& what, const Summary& s, const QString& unit) {
    printLine(what, withSpread(s, unit));
}

void report(const QString& what, double value, const QString& unit, double goal) {
    printLine(what, QString::asprintf("%10.4f %-6s", value, qPrintable(unit)), verdict(value, goal));
}

void info(const QString& what, double value, const QString& unit) {
    printLine(what, QString::asprintf("%10.4f %s", value, qPrintable(unit)));
}

} // namespace bench
