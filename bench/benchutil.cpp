#include "benchutil.h"

#include <QFile>

#include <cstdio>

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
