#include "stats.h"

#include <algorithm>
#include <cmath>

namespace bench {

Summary summarize(std::vector<double> values) {
    values.erase(std::remove_if(values.begin(), values.end(), [](double v) { return std::isnan(v); }),
                 values.end());
    Summary s;
    if (values.empty())
        return s;
    std::sort(values.begin(), values.end());
    const size_t n = values.size();
    s.count = int(n);
    s.median = n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
    s.low = values.front();
    s.high = values.back();
    return s;
}

Summary pairedRatios(const std::vector<double>& measured, const std::vector<double>& limit) {
    std::vector<double> ratios;
    const size_t pairs = std::min(measured.size(), limit.size());
    for (size_t i = 0; i < pairs; ++i)
        if (!std::isnan(measured[i]) && !std::isnan(limit[i]) && measured[i] >= 0 && limit[i] > 0)
            ratios.push_back(measured[i] / limit[i]);
    return summarize(std::move(ratios));
}

namespace {
bool readNumber(const QByteArray& text, double* value) {
    if (text == "-") {
        *value = std::numeric_limits<double>::quiet_NaN();
        return true;
    }
    bool ok = false;
    *value = text.toDouble(&ok);
    return ok && std::isfinite(*value);
}
} // namespace

ChildReport parseChildReport(const QByteArray& output, QStringList* problems) {
    ChildReport report;
    for (const QByteArray& raw : output.split('\n')) {
        const QByteArray line = raw.trimmed();
        if (!line.startsWith("@ "))
            continue;
        const QList<QByteArray> parts = line.mid(2).simplified().split(' ');
        ChildSample sample;
        const bool ok = parts.size() == 3 && !parts[0].isEmpty() && readNumber(parts[1], &sample.wall) &&
                        readNumber(parts[2], &sample.cpu) && !std::isnan(sample.wall);
        if (!ok) {
            if (problems)
                problems->append(QString::fromUtf8(line));
            continue;
        }
        report.insert(QString::fromUtf8(parts[0]), sample);
    }
    return report;
}

QByteArray childLine(const QString& key, double wall, double cpu) {
    QByteArray line = "@ " + key.toUtf8() + ' ' + QByteArray::number(wall, 'f', 6) + ' ';
    line += std::isnan(cpu) ? QByteArray("-") : QByteArray::number(cpu, 'f', 6);
    return line + '\n';
}

void addChildReport(ChildRuns& runs, const ChildReport& report) {
    for (auto it = report.cbegin(); it != report.cend(); ++it) {
        runs.wall[it.key()].push_back(it->wall);
        runs.cpu[it.key()].push_back(it->cpu);
    }
}

} // namespace bench
