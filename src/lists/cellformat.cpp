#include "lists/cellformat.h"

#include <cfenv>
#include <cmath>

namespace {
void setLatin1(QString& out, const char* text, int len) {
    out.resize(len);
    QChar* dst = out.data();
    for (int i = 0; i < len; ++i)
        dst[i] = QLatin1Char(text[i]);
}

// Writes the grouped digits right-aligned ending at end; returns where they start.
char* groupedDigits(quint64 v, char* end, bool grouping) {
    char* p = end;
    int digits = 0;
    do {
        if (grouping && digits > 0 && digits % 3 == 0)
            *--p = ',';
        *--p = char('0' + v % 10);
        v /= 10;
        ++digits;
    } while (v != 0);
    return p;
}
} // namespace

void FormatWholeNumberInto(qint64 value, QString& out) {
    char buf[32];
    char* end = buf + sizeof buf;
    const bool negative = value < 0;
    char* p = groupedDigits(negative ? quint64(0) - quint64(value) : quint64(value), end, true);
    if (negative)
        *--p = '-';
    setLatin1(out, p, int(end - p));
}

QString FormatWholeNumber(qint64 value) {
    QString s;
    FormatWholeNumberInto(value, s);
    return s;
}

double RoundTo2(double value) {
    // nearbyint rounds halves to even under the default rounding mode.
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

void FormatFractionNumberInto(double value, QString& out) {
    const double r = RoundTo2(value);
    if (!(std::fabs(r) < 1e13)) {
        out = VbNumberText(r);
        return;
    }
    // Below 1e13 a value rounded to cents has at most 15 significant digits, so writing the cents
    // out gives exactly the digits the 15-digit conversion gives, without its cost.
    const qint64 cents = std::llround(r * 100.0);
    const quint64 a = cents < 0 ? quint64(-cents) : quint64(cents);
    char buf[32];
    char* end = buf + sizeof buf;
    char* p = end;
    const unsigned frac = unsigned(a % 100);
    if (frac != 0) {
        if (frac % 10 != 0)
            *--p = char('0' + frac % 10);
        *--p = char('0' + frac / 10);
        *--p = '.';
    }
    p = groupedDigits(a / 100, p, false);
    if (cents < 0)
        *--p = '-';
    setLatin1(out, p, int(end - p));
}

QString FormatFractionNumber(double value) {
    QString s;
    FormatFractionNumberInto(value, s);
    return s;
}

QString PriceWord(double value, bool manufactureFee) {
    if (manufactureFee) {
        if (value < 0)
            return QStringLiteral("Not Manufacturable");
        return value == 0 ? QStringLiteral("Unknown") : QString();
    }
    const double whole = std::round(value);
    if (whole == -2)
        return QStringLiteral("Mission Reward");
    if (whole == -1)
        return QStringLiteral("Loot Only");
    if (whole == 0)
        return QStringLiteral("Unknown");
    return QString();
}
