#include "icons.h"

#include <QPainter>
#include <QPainterPath>
#include <QRandomGenerator>
#include <QtMath>
#include <array>

namespace icons {
namespace {

constexpr std::array<int, 8> Hues = {0, 28, 50, 110, 175, 210, 265, 315};

struct Ink {
    QColor base, light, dark;
};

Ink inkFor(int colour) {
    const int hue = Hues[size_t(colour % int(Hues.size()))];
    const QColor base = QColor::fromHsv(hue, 190, 220);
    return {base, base.lighter(150), base.darker(220)};
}

QLinearGradient shade(QPointF from, QPointF to, const Ink& ink) {
    QLinearGradient g(from, to);
    g.setColorAt(0, ink.light);
    g.setColorAt(0.5, ink.base);
    g.setColorAt(1, ink.dark);
    return g;
}

QPen outline(const Ink& ink) {
    return QPen(ink.dark.darker(160), 1);
}

void tile(QPainter& p) {
    QLinearGradient g(0, 0, 0, Size);
    g.setColorAt(0, QColor(58, 64, 78));
    g.setColorAt(1, QColor(22, 25, 33));
    p.setPen(QPen(QColor(96, 104, 122), 1));
    p.setBrush(g);
    p.drawRoundedRect(QRectF(0.5, 0.5, Size - 1, Size - 1), 4, 4);
}

void module(QPainter& p, const Ink& ink, QRandomGenerator&) {
    p.setPen(outline(ink));
    p.setBrush(shade({6, 6}, {26, 26}, ink));
    p.drawRoundedRect(QRectF(5.5, 7.5, 21, 17), 2, 2);
    p.setPen(QPen(ink.dark, 1));
    p.drawLine(QPointF(9, 12.5), QPointF(23, 12.5));
    p.drawLine(QPointF(9, 16.5), QPointF(23, 16.5));
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(120, 255, 140));
    p.drawEllipse(QPointF(10, 21), 1.6, 1.6);
    p.setBrush(QColor(255, 200, 60));
    p.drawEllipse(QPointF(14.5, 21), 1.6, 1.6);
}

void crystal(QPainter& p, const Ink& ink, QRandomGenerator& rng) {
    const double lean = rng.bounded(5) - 2;
    QPolygonF body{{16 + lean, 3}, {24, 11}, {22, 27}, {10, 27}, {8, 11}};
    p.setPen(outline(ink));
    p.setBrush(shade({8, 3}, {24, 27}, ink));
    p.drawPolygon(body);
    p.setPen(QPen(ink.light, 1));
    p.drawLine(QPointF(16 + lean, 3), QPointF(16, 27));
    p.drawLine(QPointF(8, 11), QPointF(16, 15));
    p.drawLine(QPointF(24, 11), QPointF(16, 15));
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(255, 255, 255, 150));
    p.drawPolygon(QPolygonF{{11, 12}, {14, 8}, {14, 18}});
}

void canister(QPainter& p, const Ink& ink, QRandomGenerator&) {
    p.setPen(outline(ink));
    p.setBrush(shade({9, 0}, {23, 0}, ink));
    p.drawRoundedRect(QRectF(9.5, 6.5, 13, 21), 3, 3);
    p.setBrush(QColor(170, 175, 185));
    p.drawRect(QRectF(11.5, 3.5, 9, 4));
    p.setBrush(QColor(235, 235, 240));
    p.drawRect(QRectF(9.5, 14.5, 13, 5));
    p.setPen(QPen(ink.dark, 1));
    p.drawLine(QPointF(12, 17), QPointF(20, 17));
}

void chip(QPainter& p, const Ink& ink, QRandomGenerator&) {
    p.setPen(QPen(QColor(200, 190, 120), 1.2));
    for (int i = 0; i < 4; ++i) {
        const double t = 10.5 + i * 3.7;
        p.drawLine(QPointF(t, 5), QPointF(t, 9));
        p.drawLine(QPointF(t, 23), QPointF(t, 27));
        p.drawLine(QPointF(5, t), QPointF(9, t));
        p.drawLine(QPointF(23, t), QPointF(27, t));
    }
    p.setPen(outline(ink));
    p.setBrush(shade({8, 8}, {24, 24}, ink));
    p.drawRect(QRectF(8.5, 8.5, 15, 15));
    p.setPen(Qt::NoPen);
    p.setBrush(ink.dark);
    p.drawRect(QRectF(12, 12, 8, 8));
    p.setBrush(ink.light);
    p.drawEllipse(QPointF(11, 11), 1, 1);
}

void ore(QPainter& p, const Ink& ink, QRandomGenerator& rng) {
    QPolygonF lump;
    const int corners = 9;
    for (int i = 0; i < corners; ++i) {
        const double a = 2 * M_PI * i / corners;
        const double r = 9 + rng.bounded(40) / 10.0;
        lump << QPointF(16 + r * std::cos(a), 17 + r * 0.8 * std::sin(a));
    }
    p.setPen(QPen(QColor(30, 26, 22), 1));
    QLinearGradient rock(6, 6, 26, 28);
    rock.setColorAt(0, QColor(150, 138, 120));
    rock.setColorAt(1, QColor(62, 55, 48));
    p.setBrush(rock);
    p.drawPolygon(lump);
    p.setPen(Qt::NoPen);
    p.setBrush(ink.light);
    for (int i = 0; i < 6; ++i)
        p.drawEllipse(QPointF(10 + rng.bounded(13), 12 + rng.bounded(10)), 1.4, 1.2);
}

void missile(QPainter& p, const Ink& ink, QRandomGenerator&) {
    p.save();
    p.translate(16, 16);
    p.rotate(-45);
    p.setPen(outline(ink));
    p.setBrush(QColor(200, 204, 212));
    p.drawPolygon(QPolygonF{{-10, -3}, {-14, -7}, {-14, 7}, {-10, 3}});
    p.setBrush(shade({0, -4}, {0, 4}, ink));
    QPainterPath body;
    body.moveTo(-11, -3.5);
    body.lineTo(7, -3.5);
    body.quadTo(14, 0, 7, 3.5);
    body.lineTo(-11, 3.5);
    body.closeSubpath();
    p.drawPath(body);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(255, 170, 40));
    p.drawPolygon(QPolygonF{{-11, -2}, {-15, 0}, {-11, 2}});
    p.restore();
}

void shield(QPainter& p, const Ink& ink, QRandomGenerator&) {
    QPainterPath s;
    s.moveTo(16, 4);
    s.lineTo(26, 8);
    s.quadTo(26, 22, 16, 28);
    s.quadTo(6, 22, 6, 8);
    s.closeSubpath();
    p.setPen(outline(ink));
    p.setBrush(shade({6, 4}, {26, 28}, ink));
    p.drawPath(s);
    p.setPen(QPen(ink.light, 1.5));
    p.setBrush(Qt::NoBrush);
    p.drawLine(QPointF(16, 8), QPointF(16, 24));
    p.drawLine(QPointF(10, 13), QPointF(22, 13));
}

void reactor(QPainter& p, const Ink& ink, QRandomGenerator&) {
    p.setPen(QPen(QColor(150, 156, 168), 2.5));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(QPointF(16, 16), 10.5, 10.5);
    QRadialGradient glow(QPointF(16, 16), 8);
    glow.setColorAt(0, Qt::white);
    glow.setColorAt(0.35, ink.light);
    glow.setColorAt(1, ink.dark);
    p.setPen(Qt::NoPen);
    p.setBrush(glow);
    p.drawEllipse(QPointF(16, 16), 7.5, 7.5);
    p.setBrush(QColor(150, 156, 168));
    for (int i = 0; i < 4; ++i) {
        const double a = M_PI / 4 + i * M_PI / 2;
        p.drawEllipse(QPointF(16 + 10.5 * std::cos(a), 16 + 10.5 * std::sin(a)), 2, 2);
    }
}

void engine(QPainter& p, const Ink& ink, QRandomGenerator&) {
    QLinearGradient flame(0, 20, 0, 30);
    flame.setColorAt(0, QColor(255, 255, 220));
    flame.setColorAt(0.4, ink.light);
    flame.setColorAt(1, QColor(0, 0, 0, 0));
    p.setPen(Qt::NoPen);
    p.setBrush(flame);
    p.drawPolygon(QPolygonF{{10, 20}, {22, 20}, {16, 31}});
    p.setPen(QPen(QColor(40, 42, 50), 1));
    QLinearGradient metal(8, 0, 24, 0);
    metal.setColorAt(0, QColor(110, 114, 124));
    metal.setColorAt(0.4, QColor(220, 224, 232));
    metal.setColorAt(1, QColor(80, 84, 94));
    p.setBrush(metal);
    p.drawPolygon(QPolygonF{{12.5, 4.5}, {19.5, 4.5}, {23.5, 20.5}, {8.5, 20.5}});
    p.setBrush(shade({8, 0}, {24, 0}, ink));
    p.drawRect(QRectF(11.5, 8.5, 9, 4));
}

void beam(QPainter& p, const Ink& ink, QRandomGenerator&) {
    p.setPen(QPen(QColor(40, 42, 50), 1));
    QLinearGradient metal(0, 12, 0, 22);
    metal.setColorAt(0, QColor(210, 214, 222));
    metal.setColorAt(1, QColor(80, 84, 94));
    p.setBrush(metal);
    p.drawRect(QRectF(4.5, 13.5, 15, 7));
    p.drawRect(QRectF(7.5, 11.5, 5, 11));
    QRadialGradient lens(QPointF(22, 17), 8);
    lens.setColorAt(0, Qt::white);
    lens.setColorAt(0.3, ink.light);
    lens.setColorAt(1, QColor(0, 0, 0, 0));
    p.setPen(Qt::NoPen);
    p.setBrush(lens);
    p.drawEllipse(QPointF(22, 17), 8, 8);
    p.setPen(QPen(ink.light, 2));
    p.drawLine(QPointF(22, 17), QPointF(30, 17));
}

void ammo(QPainter& p, const Ink& ink, QRandomGenerator&) {
    for (int i = 0; i < 3; ++i) {
        const double x = 7.5 + i * 6.5;
        p.setPen(QPen(QColor(60, 50, 20), 1));
        QLinearGradient brass(x, 0, x + 5, 0);
        brass.setColorAt(0, QColor(250, 225, 130));
        brass.setColorAt(1, QColor(150, 110, 30));
        p.setBrush(brass);
        p.drawRect(QRectF(x, 14.5, 5, 13));
        p.setBrush(shade({x, 0}, {x + 5, 0}, ink));
        QPainterPath tip;
        tip.moveTo(x, 14.5);
        tip.lineTo(x, 10);
        tip.quadTo(x + 2.5, 3, x + 5, 10);
        tip.lineTo(x + 5, 14.5);
        tip.closeSubpath();
        p.drawPath(tip);
    }
}

void battery(QPainter& p, const Ink& ink, QRandomGenerator& rng) {
    p.setPen(QPen(QColor(30, 32, 40), 1));
    p.setBrush(QColor(190, 194, 204));
    p.drawRect(QRectF(13.5, 4.5, 5, 3));
    p.setBrush(QColor(45, 48, 58));
    p.drawRoundedRect(QRectF(8.5, 7.5, 15, 21), 2, 2);
    const int bars = 2 + int(rng.bounded(3));
    p.setPen(Qt::NoPen);
    p.setBrush(ink.light);
    for (int i = 0; i < bars; ++i)
        p.drawRect(QRectF(11, 24 - i * 4.5, 10, 3));
}

void gear(QPainter& p, const Ink& ink, QRandomGenerator&) {
    QPainterPath g;
    const int teeth = 8;
    for (int i = 0; i < teeth * 2; ++i) {
        const double a = M_PI * i / teeth;
        const double r = (i % 2 == 0) ? 12 : 9;
        const QPointF a1(16 + r * std::cos(a - 0.18), 16 + r * std::sin(a - 0.18));
        const QPointF a2(16 + r * std::cos(a + 0.18), 16 + r * std::sin(a + 0.18));
        if (i == 0)
            g.moveTo(a1);
        else
            g.lineTo(a1);
        g.lineTo(a2);
    }
    g.closeSubpath();
    QPainterPath hole;
    hole.addEllipse(QPointF(16, 16), 4, 4);
    p.setPen(outline(ink));
    p.setBrush(shade({4, 4}, {28, 28}, ink));
    p.drawPath(g.subtracted(hole));
}

void disk(QPainter& p, const Ink& ink, QRandomGenerator&) {
    QConicalGradient sheen(QPointF(16, 16), 30);
    sheen.setColorAt(0, ink.light);
    sheen.setColorAt(0.25, ink.dark);
    sheen.setColorAt(0.5, ink.light);
    sheen.setColorAt(0.75, ink.dark);
    sheen.setColorAt(1, ink.light);
    p.setPen(outline(ink));
    p.setBrush(sheen);
    p.drawEllipse(QPointF(16, 16), 12, 12);
    p.setBrush(QColor(30, 32, 40));
    p.drawEllipse(QPointF(16, 16), 3.5, 3.5);
}

void ring(QPainter& p, const Ink& ink, QRandomGenerator&) {
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(ink.dark, 7));
    p.drawEllipse(QPointF(16, 17), 9, 6);
    p.setPen(QPen(ink.base, 4.5));
    p.drawEllipse(QPointF(16, 17), 9, 6);
    p.setPen(QPen(ink.light, 1.5));
    p.drawArc(QRectF(7, 11, 18, 12), 30 * 16, 120 * 16);
    p.setPen(Qt::NoPen);
    p.setBrush(Qt::white);
    p.drawEllipse(QPointF(16, 11), 2.5, 2.5);
}

void crate(QPainter& p, const Ink& ink, QRandomGenerator&) {
    QPolygonF top{{16, 5}, {27, 10}, {16, 15}, {5, 10}};
    QPolygonF left{{5, 10}, {16, 15}, {16, 28}, {5, 23}};
    QPolygonF right{{16, 15}, {27, 10}, {27, 23}, {16, 28}};
    p.setPen(outline(ink));
    p.setBrush(ink.light);
    p.drawPolygon(top);
    p.setBrush(ink.base);
    p.drawPolygon(left);
    p.setBrush(ink.dark);
    p.drawPolygon(right);
    p.setPen(QPen(QColor(230, 230, 230, 160), 1));
    p.drawLine(QPointF(5, 16.5), QPointF(16, 21.5));
    p.drawLine(QPointF(16, 21.5), QPointF(27, 16.5));
}

using Painter = void (*)(QPainter&, const Ink&, QRandomGenerator&);
constexpr std::array<Painter, 16> Families = {module, crystal, canister, chip, ore,  missile,
                                              shield, reactor, engine,   beam, ammo, battery,
                                              gear,   disk,    ring,     crate};

} // namespace

int familyCount() {
    return int(Families.size());
}
int colourCount() {
    return int(Hues.size());
}

QImage draw(int index) {
    QImage img(Size, Size, QImage::Format_ARGB32_Premultiplied);
    img.fill(QColor(12, 14, 20));
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    tile(p);
    QRandomGenerator rng(quint32(index) * 2654435761u + 7);
    const int family = index % familyCount();
    const int colour = index / familyCount();
    Families[size_t(family)](p, inkFor(colour), rng);
    p.end();
    return img;
}

} // namespace icons
