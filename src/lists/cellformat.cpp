#include "lists/cellformat.h"

#include <cfenv>
#include <cmath>

QString FormatWholeNumber(qint64 value) {
    // Built from the right in a small buffer: the list formats many cells, and this stays allocation-
    // light (one QString).
    char buf[32];
    int pos = int(sizeof buf);
    const bool negative = value < 0;
    quint64 v = negative ? quint64(0) - quint64(value) : quint64(value);
    int digits = 0;
    do {
        if (digits > 0 && digits % 3 == 0)
            buf[--pos] = ',';
        buf[--pos] = char('0' + v % 10);
        v /= 10;
        ++digits;
    } while (v != 0);
    if (negative)
        buf[--pos] = '-';
    return QString::fromLatin1(buf + pos, int(sizeof buf) - pos);
}

double RoundTo2(double value) {
    // nearbyint rounds halves to even under the default rounding mode, which is what Round did.
    const double r = std::nearbyint(value * 100.0) / 100.0;
    return r == 0.0 ? 0.0 : r; // no "-0"
}

QString VbNumberText(double value) {
    if (value == 0.0 || !std::isfinite(value))
        return value == 0.0 ? QStringLiteral("0") : QString::number(value);
    QString s = QString::number(value, 'g', 15);
    const qsizetype e = s.indexOf(QLatin1Char('e'));
    if (e >= 0) {
        // "1e+16" -> "1E+16", "1e-05" -> "1E-05" as CStr wrote them.
        s[e] = QLatin1Char('E');
    }
    return s;
}

QString FormatFractionNumber(double value) { return VbNumberText(RoundTo2(value)); }
