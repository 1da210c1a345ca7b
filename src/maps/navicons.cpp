#include "maps/navicons.h"

#include <QFont>
#include <QHash>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

#include <cmath>

namespace {
// Every picture is drawn in a box from -1 to 1 with the outline in this colour, which keeps the
// shapes apart from both the dark map and a light list.
const QColor kOutline(14, 18, 28, 230);
constexpr double kPi = 3.14159265358979323846;

QPen outline(double width = 0.09) {
    QPen pen(kOutline, width);
    pen.setJoinStyle(Qt::RoundJoin);
    pen.setCapStyle(Qt::RoundCap);
    return pen;
}

QRadialGradient sphere(const QColor& light, const QColor& mid, const QColor& dark, double r) {
    QRadialGradient g(QPointF(-0.35 * r, -0.4 * r), 1.3 * r, QPointF(-0.45 * r, -0.5 * r));
    g.setColorAt(0, light);
    g.setColorAt(0.45, mid);
    g.setColorAt(1, dark);
    return g;
}

void asteroid(QPainter& p) {
    const QPointF rock[] = {{-0.05, -0.78}, {0.45, -0.66}, {0.74, -0.2},  {0.62, 0.42},  {0.18, 0.76},
                            {-0.42, 0.7},   {-0.8, 0.28},  {-0.76, -0.3}, {-0.45, -0.62}};
    QPainterPath body;
    body.moveTo(rock[0]);
    for (const QPointF& pt : rock)
        body.lineTo(pt);
    body.closeSubpath();
    p.setPen(outline());
    p.setBrush(sphere(QColor(0xc9, 0xb2, 0x92), QColor(0x8d, 0x74, 0x5a), QColor(0x4e, 0x3e, 0x30), 0.8));
    p.drawPath(body);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x5a, 0x47, 0x37, 200));
    p.drawEllipse(QPointF(0.16, -0.18), 0.2, 0.17);
    p.drawEllipse(QPointF(-0.34, 0.3), 0.14, 0.12);
    p.drawEllipse(QPointF(0.3, 0.4), 0.09, 0.08);
    p.setPen(outline(0.07));
    p.setBrush(QColor(0x9a, 0x82, 0x68));
    p.drawEllipse(QPointF(0.8, -0.78), 0.16, 0.14);
}

void gate(QPainter& p) {
    QRadialGradient glow(QPointF(0, 0), 0.62);
    glow.setColorAt(0, QColor(190, 255, 255, 230));
    glow.setColorAt(0.6, QColor(80, 220, 255, 120));
    glow.setColorAt(1, QColor(40, 160, 220, 0));
    p.setPen(Qt::NoPen);
    p.setBrush(glow);
    p.drawEllipse(QPointF(0, 0), 0.62, 0.62);
    QPainterPath ring;
    ring.addEllipse(QPointF(0, 0), 0.92, 0.92);
    ring.addEllipse(QPointF(0, 0), 0.6, 0.6);
    QRadialGradient metal(QPointF(-0.3, -0.3), 1.3);
    metal.setColorAt(0, QColor(0x9c, 0xf3, 0xff));
    metal.setColorAt(0.5, QColor(0x2c, 0xb5, 0xd2));
    metal.setColorAt(1, QColor(0x11, 0x5a, 0x78));
    p.setPen(outline());
    p.setBrush(metal);
    p.drawPath(ring);
    // Four clamps on the ring.
    p.setBrush(QColor(0x0f, 0x3d, 0x52));
    for (int i = 0; i < 4; ++i) {
        p.save();
        p.rotate(45 + 90 * i);
        p.drawRoundedRect(QRectF(-0.11, -0.98, 0.22, 0.4), 0.05, 0.05);
        p.restore();
    }
}

void beacon(QPainter& p) {
    const QColor green(0x6b, 0xf0, 0x8a);
    QPen tick(green, 0.13);
    tick.setCapStyle(Qt::RoundCap);
    p.setBrush(Qt::NoBrush);
    for (const QLineF& l : {QLineF(0, -0.95, 0, -0.62), QLineF(0, 0.62, 0, 0.95), QLineF(-0.95, 0, -0.62, 0),
                            QLineF(0.62, 0, 0.95, 0)}) {
        p.setPen(QPen(kOutline, 0.25, Qt::SolidLine, Qt::RoundCap));
        p.drawLine(l);
        p.setPen(tick);
        p.drawLine(l);
    }
    QPainterPath diamond;
    diamond.moveTo(0, -0.6);
    diamond.lineTo(0.6, 0);
    diamond.lineTo(0, 0.6);
    diamond.lineTo(-0.6, 0);
    diamond.closeSubpath();
    p.setPen(QPen(kOutline, 0.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.drawPath(diamond);
    p.setPen(QPen(green, 0.16, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(QColor(0x14, 0x40, 0x22, 200));
    p.drawPath(diamond);
    p.setPen(outline(0.06));
    p.setBrush(QColor(0xd8, 0xff, 0xe0));
    p.drawEllipse(QPointF(0, 0), 0.17, 0.17);
}

void planet(QPainter& p) {
    const QColor ringColour(0xf1, 0xd7, 0x9a);
    auto ringPath = [] {
        QPainterPath r;
        r.addEllipse(QPointF(0, 0), 0.98, 0.3);
        r.addEllipse(QPointF(0, 0), 0.74, 0.19);
        return r;
    };
    p.save();
    p.rotate(-20);
    // The far half of the ring first, then the globe, then the near half over it.
    p.setClipRect(QRectF(-1.2, -1.2, 2.4, 1.2));
    p.setPen(outline(0.06));
    p.setBrush(ringColour.darker(115));
    p.drawPath(ringPath());
    p.setClipping(false);
    p.restore();

    p.setPen(outline());
    p.setBrush(sphere(QColor(0xa8, 0xe4, 0xff), QColor(0x3a, 0x86, 0xd6), QColor(0x12, 0x33, 0x6e), 0.64));
    p.drawEllipse(QPointF(0, 0), 0.64, 0.64);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x7f, 0xd6, 0x9a, 150)); // a continent
    QPainterPath land;
    land.moveTo(-0.35, -0.2);
    land.cubicTo(-0.1, -0.45, 0.2, -0.2, 0.1, 0.05);
    land.cubicTo(0.0, 0.25, -0.3, 0.2, -0.35, -0.2);
    p.drawPath(land);

    p.save();
    p.rotate(-20);
    p.setClipRect(QRectF(-1.2, 0, 2.4, 1.2));
    p.setPen(outline(0.06));
    p.setBrush(ringColour);
    p.drawPath(ringPath());
    p.restore();
}

void moon(QPainter& p) {
    QPen orbit(QColor(0xc8, 0xd4, 0xe6, 210), 0.08, Qt::SolidLine, Qt::RoundCap);
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(kOutline, 0.16));
    p.drawArc(QRectF(-0.92, -0.92, 1.84, 1.84), 200 * 16, 250 * 16);
    p.setPen(orbit);
    p.drawArc(QRectF(-0.92, -0.92, 1.84, 1.84), 200 * 16, 250 * 16);
    const QPointF c(0.28, -0.28);
    p.setPen(outline(0.08));
    p.setBrush(sphere(QColor(0xf4, 0xf4, 0xf0), QColor(0xb4, 0xb9, 0xc0), QColor(0x5c, 0x62, 0x6c), 0.5));
    p.save();
    p.translate(c);
    p.drawEllipse(QPointF(0, 0), 0.5, 0.5);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x80, 0x86, 0x90, 170));
    p.drawEllipse(QPointF(0.12, 0.1), 0.13, 0.12);
    p.drawEllipse(QPointF(-0.18, -0.05), 0.08, 0.08);
    p.drawEllipse(QPointF(0.05, -0.25), 0.07, 0.06);
    p.restore();
    // The body it circles, hinted at the orbit's far side.
    p.setPen(outline(0.06));
    p.setBrush(QColor(0x8a, 0x9c, 0xb8));
    p.drawEllipse(QPointF(-0.62, 0.62), 0.13, 0.13);
}

QPainterPath hull(double scale) {
    QPainterPath s;
    s.moveTo(0, -0.95 * scale);
    s.lineTo(0.62 * scale, 0.62 * scale);
    s.lineTo(0.16 * scale, 0.38 * scale);
    s.lineTo(0, 0.55 * scale);
    s.lineTo(-0.16 * scale, 0.38 * scale);
    s.lineTo(-0.62 * scale, 0.62 * scale);
    s.closeSubpath();
    return s;
}

void ship(QPainter& p) {
    p.save();
    p.rotate(35);
    QRadialGradient flame(QPointF(0, 0.68), 0.32);
    flame.setColorAt(0, QColor(255, 240, 180, 255));
    flame.setColorAt(0.5, QColor(255, 150, 40, 200));
    flame.setColorAt(1, QColor(255, 90, 0, 0));
    p.setPen(Qt::NoPen);
    p.setBrush(flame);
    p.drawEllipse(QPointF(0, 0.7), 0.3, 0.32);
    QLinearGradient metal(QPointF(-0.6, 0), QPointF(0.6, 0));
    metal.setColorAt(0, QColor(0xf2, 0xf6, 0xfb));
    metal.setColorAt(1, QColor(0x7d, 0x8f, 0xa8));
    p.setPen(outline());
    p.setBrush(metal);
    p.drawPath(hull(1.0));
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x3d, 0xa5, 0xff));
    p.drawEllipse(QPointF(0, -0.25), 0.1, 0.18); // the cockpit
    p.restore();
}

void shipYard(QPainter& p) {
    const QColor amber(0xf4, 0xb9, 0x42);
    p.setPen(outline(0.08));
    p.setBrush(amber);
    const QRectF left(-0.92, -0.85, 0.26, 1.7), right(0.66, -0.85, 0.26, 1.7);
    p.drawRect(left);
    p.drawRect(right);
    p.drawRect(QRectF(-0.92, 0.6, 1.84, 0.25));
    // Lattice in the girders.
    p.setPen(QPen(QColor(0x7a, 0x52, 0x10), 0.06));
    for (const QRectF& g : {left, right})
        for (double y = -0.85; y < 0.55; y += 0.35) {
            p.drawLine(QPointF(g.left(), y), QPointF(g.right(), y + 0.35));
            p.drawLine(QPointF(g.right(), y), QPointF(g.left(), y + 0.35));
        }
    // A ship in the dock.
    QLinearGradient metal(QPointF(-0.4, 0), QPointF(0.4, 0));
    metal.setColorAt(0, QColor(0xe6, 0xec, 0xf4));
    metal.setColorAt(1, QColor(0x88, 0x98, 0xae));
    p.setPen(outline(0.08));
    p.setBrush(metal);
    p.save();
    p.translate(0, -0.08);
    p.drawPath(hull(0.6));
    p.restore();
}

void station(QPainter& p) {
    const QColor gold(0xff, 0xd1, 0x66);
    // Spokes, the ring, the hub, and two panels.
    p.setPen(QPen(kOutline, 0.26, Qt::SolidLine, Qt::RoundCap));
    for (int i = 0; i < 4; ++i)
        p.drawLine(QLineF(QPointF(0, 0), QPointF(0.7 * std::cos(i * kPi / 2 + kPi / 4),
                                                 0.7 * std::sin(i * kPi / 2 + kPi / 4))));
    p.setPen(QPen(gold.darker(130), 0.12, Qt::SolidLine, Qt::RoundCap));
    for (int i = 0; i < 4; ++i)
        p.drawLine(QLineF(QPointF(0, 0), QPointF(0.7 * std::cos(i * kPi / 2 + kPi / 4),
                                                 0.7 * std::sin(i * kPi / 2 + kPi / 4))));
    QPainterPath ring;
    ring.addEllipse(QPointF(0, 0), 0.86, 0.86);
    ring.addEllipse(QPointF(0, 0), 0.64, 0.64);
    p.setPen(outline(0.08));
    p.setBrush(gold);
    p.drawPath(ring);
    p.setBrush(QColor(0x4a, 0x6f, 0xc8));
    p.drawRect(QRectF(-0.2, -1.0, 0.4, 0.26));
    p.drawRect(QRectF(-0.2, 0.74, 0.4, 0.26));
    p.setBrush(sphere(QColor(0xff, 0xfb, 0xe8), QColor(0xff, 0xe0, 0x8a), QColor(0xb8, 0x86, 0x20), 0.34));
    p.drawEllipse(QPointF(0, 0), 0.34, 0.34);
}

void weft(QPainter& p) {
    QRadialGradient haze(QPointF(0, 0), 0.95);
    haze.setColorAt(0, QColor(230, 170, 255, 200));
    haze.setColorAt(0.5, QColor(150, 70, 230, 110));
    haze.setColorAt(1, QColor(90, 20, 160, 0));
    p.setPen(Qt::NoPen);
    p.setBrush(haze);
    p.drawEllipse(QPointF(0, 0), 0.95, 0.95);
    p.setBrush(Qt::NoBrush);
    for (int arm = 0; arm < 3; ++arm) {
        QPainterPath s;
        const double start = arm * 2 * kPi / 3;
        for (int i = 0; i <= 24; ++i) {
            const double t = i / 24.0;
            const double r = 0.12 + 0.78 * t, a = start + 2.4 * t;
            const QPointF pt(r * std::cos(a), r * std::sin(a));
            if (i == 0)
                s.moveTo(pt);
            else
                s.lineTo(pt);
        }
        p.setPen(QPen(kOutline, 0.27, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        p.drawPath(s);
        p.setPen(QPen(QColor(0xd0, 0x8c, 0xff), 0.14, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        p.drawPath(s);
    }
    p.setPen(outline(0.06));
    p.setBrush(QColor(0xfb, 0xf0, 0xff));
    p.drawEllipse(QPointF(0, 0), 0.16, 0.16);
}

void unknown(QPainter& p) {
    p.setPen(outline());
    p.setBrush(QColor(0x9a, 0xa3, 0xb2));
    p.drawEllipse(QPointF(0, 0), 0.8, 0.8);
    QPainterPath mark;
    mark.moveTo(-0.28, -0.22);
    mark.cubicTo(-0.28, -0.62, 0.3, -0.62, 0.3, -0.26);
    mark.cubicTo(0.3, -0.02, 0.0, 0.0, 0.0, 0.22);
    p.setPen(QPen(QColor(0x1c, 0x22, 0x30), 0.16, Qt::SolidLine, Qt::RoundCap));
    p.setBrush(Qt::NoBrush);
    p.drawPath(mark);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x1c, 0x22, 0x30));
    p.drawEllipse(QPointF(0, 0.47), 0.1, 0.1);
}
} // namespace

void DrawNavPicture(QPainter& p, NavKind kind, const QPointF& centre, double size) {
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    p.translate(centre);
    p.scale(size / 2, size / 2);
    switch (kind) {
    case NavKind::Asteroid:
        asteroid(p);
        break;
    case NavKind::Gate:
        gate(p);
        break;
    case NavKind::NavigationPoint:
        beacon(p);
        break;
    case NavKind::Planet:
        planet(p);
        break;
    case NavKind::Satellite:
        moon(p);
        break;
    case NavKind::Ship:
        ship(p);
        break;
    case NavKind::ShipYard:
        shipYard(p);
        break;
    case NavKind::Station:
        station(p);
        break;
    case NavKind::Weft:
        weft(p);
        break;
    case NavKind::Unknown:
        unknown(p);
        break;
    }
    p.restore();
}

QPixmap NavPixmap(NavKind kind, int size, double devicePixelRatio) {
    static QHash<quint64, QPixmap> cache;
    const int device = std::max(1, int(std::lround(size * devicePixelRatio)));
    const quint64 key = (quint64(kind) << 40) | (quint64(device) << 8) | quint64(size & 0xff);
    const auto it = cache.constFind(key);
    if (it != cache.cend())
        return *it;
    QPixmap pm(device, device);
    pm.fill(Qt::transparent);
    {
        QPainter p(&pm);
        // A hair inside the edge, so that antialiased outlines are not cut.
        DrawNavPicture(p, kind, QPointF(device / 2.0, device / 2.0), device * 0.94);
    }
    pm.setDevicePixelRatio(double(device) / std::max(1, size));
    if (cache.size() > 400)
        cache.clear();
    cache.insert(key, pm);
    return pm;
}

QIcon NavIcon(NavKind kind) {
    QIcon icon;
    for (int s : {16, 20, 24, 32, 40, 48, 64})
        icon.addPixmap(NavPixmap(kind, s, 1.0));
    return icon;
}
