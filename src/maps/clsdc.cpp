#include "maps/clsdc.h"

#include "maps/mapview.h"
#include "maps/navicons.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPixmap>
#include <QRadialGradient>
#include <QStaticText>

#include <cmath>

clsDC::clsDC(QPainter& painter, double devicePixelRatio) : m_p(painter), m_dpr(devicePixelRatio) {}

int clsDC::bandHeight(const QFont& font) {
    return int(std::ceil(QFontMetricsF(font).height())) + 6;
}

void clsDC::fillBackground(const QRectF& rect) {
    // Deep space, a shade lighter in the middle so that the eye settles there. The gradient is worked
    // out once for a size and pixel density and then copied: Qt spreads a gradient fill over helper
    // threads, which costs far more in all than copying the finished picture.
    static QPixmap cache;
    const QSize device = (rect.size() * m_dpr).toSize();
    if (cache.size() != device || cache.devicePixelRatio() != m_dpr) {
        cache = QPixmap(device);
        cache.setDevicePixelRatio(m_dpr);
        QPainter p(&cache);
        const QRectF r(QPointF(0, 0), rect.size());
        QRadialGradient g(r.center(), std::hypot(r.width(), r.height()) / 1.6);
        g.setColorAt(0, mapcolours::Space.lighter(118));
        g.setColorAt(1, mapcolours::SpaceEdge);
        p.fillRect(r, g);
    }
    m_p.drawPixmap(rect.topLeft(), cache);
}

void clsDC::drawGrid(const Grid& grid, const MapView& view) {
    const QSizeF vp = view.viewport();
    // Each line is one device pixel, set on the pixel grid, as a filled rectangle (the fastest way
    // Qt has to put it there).
    const double px = 1 / m_dpr;
    auto snap = [this](double v) { return std::floor(v * m_dpr) / m_dpr; };
    for (int pass = 0; pass < 3; ++pass) {
        const QColor colour = pass == 0   ? mapcolours::MinorLine
                              : pass == 1 ? mapcolours::MajorLine
                                          : mapcolours::AxisLine;
        for (const GridLine& l : grid.vertical)
            if (int(l.axis ? 2 : l.labelled ? 1 : 0) == pass)
                m_p.fillRect(QRectF(snap(view.toScreen(QPointF(l.value, 0)).x()), 0, px, vp.height()),
                             colour);
        for (const GridLine& l : grid.horizontal)
            if (int(l.axis ? 2 : l.labelled ? 1 : 0) == pass)
                m_p.fillRect(QRectF(0, snap(view.toScreen(QPointF(0, l.value)).y()), vp.width(), px), colour);
    }
}

void clsDC::drawGridLabels(const Grid& grid, const MapView& view, const QFont& font) {
    const QFontMetricsF fm(font);
    const double band = bandHeight(font);
    const QSizeF vp = view.viewport();
    QStringList yTexts;
    double leftWidth = fm.horizontalAdvance(QStringLiteral("-0000")) + 10;
    for (const GridLine& l : grid.horizontal)
        if (l.labelled)
            leftWidth = std::max(leftWidth, fm.horizontalAdvance(GridLabel(l.value, grid.step)) + 10);

    m_p.save();
    m_p.setRenderHint(QPainter::Antialiasing, false);
    m_p.fillRect(QRectF(0, 0, vp.width(), band), mapcolours::Band);
    m_p.fillRect(QRectF(0, band, leftWidth, vp.height() - band), mapcolours::Band);
    m_p.setPen(QPen(mapcolours::MajorLine, 0));
    m_p.drawLine(QPointF(0, band - 0.5), QPointF(vp.width(), band - 0.5));
    m_p.drawLine(QPointF(leftWidth - 0.5, band), QPointF(leftWidth - 0.5, vp.height()));
    m_p.setFont(font);
    m_p.setPen(mapcolours::BandText);
    for (const GridLine& l : grid.vertical) {
        if (!l.labelled)
            continue;
        const double x = view.toScreen(QPointF(l.value, 0)).x();
        const QString text = GridLabel(l.value, grid.step);
        const double w = fm.horizontalAdvance(text);
        if (x - w / 2 < leftWidth + 2)
            continue;
        m_p.drawLine(QPointF(x, band - 4), QPointF(x, band));
        m_p.drawText(QRectF(x - w / 2 - 2, 1, w + 4, band - 4), Qt::AlignCenter, text);
    }
    for (const GridLine& l : grid.horizontal) {
        if (!l.labelled)
            continue;
        const double y = view.toScreen(QPointF(0, l.value)).y();
        if (y - fm.height() / 2 < band + 2)
            continue;
        m_p.drawLine(QPointF(leftWidth - 4, y), QPointF(leftWidth, y));
        m_p.drawText(QRectF(2, y - fm.height() / 2, leftWidth - 8, fm.height()),
                     Qt::AlignRight | Qt::AlignVCenter, GridLabel(l.value, grid.step));
    }
    // The corner says which way the axes run.
    m_p.drawText(QRectF(0, 0, leftWidth, band), Qt::AlignCenter, QStringLiteral("X / Y"));
    m_p.restore();
}

void clsDC::drawMarker(NavKind kind, const QPointF& centre, int size) {
    const QPixmap pm = NavPixmap(kind, size, m_dpr);
    m_p.drawPixmap(QPointF(centre.x() - size / 2.0, centre.y() - size / 2.0), pm);
}

void clsDC::drawLabel(const QRectF& box, const QString& text, const QStaticText* prepared, bool strong) {
    m_p.setPen(Qt::NoPen);
    m_p.setBrush(strong ? QColor(0x14, 0x2a, 0x4a, 225) : mapcolours::LabelBack);
    m_p.drawRoundedRect(box, 3, 3);
    m_p.setPen(strong ? mapcolours::Selection : mapcolours::LabelText);
    if (prepared) {
        const QSizeF s = prepared->size();
        m_p.drawStaticText(
            QPointF(box.left() + (box.width() - s.width()) / 2, box.top() + (box.height() - s.height()) / 2),
            *prepared);
    } else {
        m_p.drawText(box, Qt::AlignCenter, text);
    }
}

void clsDC::drawRing(const QPointF& centre, double radius, bool selection) {
    m_p.save();
    m_p.setRenderHint(QPainter::Antialiasing);
    m_p.setBrush(Qt::NoBrush);
    if (selection) {
        m_p.setPen(QPen(QColor(0, 0, 0, 160), 4.5));
        m_p.drawEllipse(centre, radius, radius);
        m_p.setPen(QPen(mapcolours::Selection, 2.2));
        m_p.drawEllipse(centre, radius, radius);
    } else {
        QColor glow = mapcolours::Hover;
        glow.setAlpha(150);
        m_p.setPen(QPen(glow, 2));
        m_p.drawEllipse(centre, radius, radius);
    }
    m_p.restore();
}

void clsDC::drawGhost(NavKind kind, const QPointF& centre, int size) {
    m_p.save();
    m_p.setOpacity(0.75);
    drawMarker(kind, centre, size);
    m_p.setOpacity(1);
    m_p.setRenderHint(QPainter::Antialiasing);
    QPen pen(mapcolours::Selection, 1.6, Qt::DashLine);
    m_p.setPen(pen);
    m_p.setBrush(Qt::NoBrush);
    const double r = size * 0.5 + 6;
    m_p.drawEllipse(centre, r, r);
    m_p.drawLine(QPointF(centre.x() - r - 6, centre.y()), QPointF(centre.x() - r + 3, centre.y()));
    m_p.drawLine(QPointF(centre.x() + r - 3, centre.y()), QPointF(centre.x() + r + 6, centre.y()));
    m_p.drawLine(QPointF(centre.x(), centre.y() - r - 6), QPointF(centre.x(), centre.y() - r + 3));
    m_p.drawLine(QPointF(centre.x(), centre.y() + r - 3), QPointF(centre.x(), centre.y() + r + 6));
    m_p.restore();
}

void clsDC::drawScaleBar(const MapView& view, const QFont& font) {
    const double length = NiceStep(110 / view.scale());
    const double px = length * view.scale();
    const QFontMetricsF fm(font);
    const QSizeF vp = view.viewport();
    const QString text = CoordinateText(length) + QStringLiteral(" units");
    const double x = vp.width() - px - 18, y = vp.height() - fm.height() - 16;
    m_p.save();
    m_p.setRenderHint(QPainter::Antialiasing, false);
    m_p.fillRect(QRectF(x - 8, y - 8, px + 16, fm.height() + 20), mapcolours::Band);
    m_p.setPen(QPen(mapcolours::BandText, 2));
    m_p.drawLine(QPointF(x, y), QPointF(x + px, y));
    m_p.drawLine(QPointF(x, y - 4), QPointF(x, y + 4));
    m_p.drawLine(QPointF(x + px, y - 4), QPointF(x + px, y + 4));
    m_p.setFont(font);
    m_p.drawText(QRectF(x - 8, y + 3, px + 16, fm.height() + 2), Qt::AlignCenter, text);
    m_p.restore();
}

void clsDC::drawNotice(const QRectF& rect, const QString& text, const QFont& font) {
    m_p.save();
    m_p.setFont(font);
    const QFontMetricsF fm(font);
    const QRectF textBox = fm.boundingRect(rect, Qt::AlignCenter | Qt::TextWordWrap, text);
    m_p.setPen(Qt::NoPen);
    m_p.setBrush(mapcolours::Band);
    m_p.setRenderHint(QPainter::Antialiasing);
    m_p.drawRoundedRect(textBox.adjusted(-14, -10, 14, 10), 6, 6);
    m_p.setPen(mapcolours::BandText);
    m_p.drawText(rect, Qt::AlignCenter | Qt::TextWordWrap, text);
    m_p.restore();
}
