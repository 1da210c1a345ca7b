#include "benchutil.h"

#include <QFile>

#include <cstdio>
#include <ctime>

namespace bench {

qint64 residentBytes() {
    QFile f(QStringLiteral("/proc/self/status"));
    if (!f.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : f.readAll().split('\n')) {
        if (line.startsWith("VmRSS:")) {
            const QList<QByteArray> parts = line.simplified().split(' ');
            return parts.size() >= 2 ? parts[1].toLongLong() * 1024 : 0;
        }
    }
    return 0;
}

double threadCpuSeconds() {
    timespec ts{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
    return double(ts.tv_sec) + double(ts.tv_nsec) / 1e9;
}

void report(const QString& what, const Timing& t, double goal) {
    report(what + QStringLiteral(" [cpu]"), t.cpu, QStringLiteral("s"), goal);
    info(QStringLiteral("    the same by the wall clock"), t.wall, QStringLiteral("s"));
}

void info(const QString& what, const Timing& t) {
    std::printf("%-58s %10.4f s  (wall %.4f s)\n", qPrintable(what + QStringLiteral(" [cpu]")), t.cpu,
                t.wall);
    std::fflush(stdout);
}

void report(const QString& what, double value, const QString& unit, double goal) {
    std::printf("%-58s %10.4f %-6s goal <= %-8g ratio %5.2f  %s\n", qPrintable(what), value, qPrintable(unit),
                goal, value / goal, value <= goal ? "MET" : "MISSED");
    std::fflush(stdout);
}

void info(const QString& what, double value, const QString& unit) {
    std::printf("%-58s %10.4f %s\n", qPrintable(what), value, qPrintable(unit));
    std::fflush(stdout);
}

} // namespace bench
