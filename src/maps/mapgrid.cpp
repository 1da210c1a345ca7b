#include "maps/mapgrid.h"

#include "maps/mapview.h"

#include <cmath>

double NiceStep(double minimum) {
    if (!(minimum > 0) || !std::isfinite(minimum))
        return 1;
    const double power = std::pow(10.0, std::floor(std::log10(minimum)));
    for (double m : {1.0, 2.0, 5.0, 10.0}) {
        // A little slack so that 0.3 / 0.1 rounding does not skip a step.
        if (m * power >= minimum * (1 - 1e-9))
            return m * power;
    }
    return 10 * power;
}

namespace {
// The multiple of the step nearest to value, so that lines fall exactly on round numbers.
double snap(double value, double step) {
    return std::round(value / step) * step;
}

QList<GridLine> linesOver(double from, double to, double step, double minor) {
    QList<GridLine> out;
    if (!(minor > 0))
        return out;
    const double first = std::ceil(from / minor) * minor;
    const int per = int(std::lround(step / minor));
    // Counting from a whole index keeps the labelled lines exact however far from 0 the view is.
    const long long start = std::llround(first / minor);
    for (long long i = start;; ++i) {
        const double v = snap(double(i) * minor, minor);
        if (v > to + minor * 1e-9)
            break;
        const bool labelled = per <= 1 || i % per == 0;
        out.append({v, labelled, i == 0});
        if (out.size() > 2000) // a safety net: the spacing rules never need this many
            break;
    }
    return out;
}
} // namespace

Grid MakeGrid(const MapView& view, double labelSpacing, double minorSpacing) {
    Grid g;
    const double s = view.scale();
    g.step = NiceStep(labelSpacing / s);
    // Fifths of a 1 or 2 step, halves of a 5 step: round numbers either way.
    const double mantissa = g.step / std::pow(10.0, std::floor(std::log10(g.step) + 1e-9));
    const double minor = g.step / (std::lround(mantissa) == 5 ? 2 : 5);
    g.minor = minor * s >= minorSpacing ? minor : g.step;
    const QRectF r = view.visibleWorld();
    g.vertical = linesOver(r.left(), r.right(), g.step, g.minor);
    g.horizontal = linesOver(r.top(), r.bottom(), g.step, g.minor);
    return g;
}

QString GridLabel(double value, double step) {
    int decimals = 0;
    if (step < 1)
        decimals = int(std::ceil(-std::log10(step) - 1e-9));
    QString text = QString::number(value, 'f', decimals);
    if (text.startsWith(QLatin1Char('-')) && QString(text).remove(QLatin1Char('-')).toDouble() == 0)
        text.remove(0, 1);
    return text;
}

QString CoordinateText(double value) {
    QString text = QString::number(value, 'f', 2);
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    if (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    if (text == QLatin1String("-0"))
        text = QStringLiteral("0");
    return text;
}
