#include "scenes.h"

#include <QFont>
#include <QPainter>
#include <QPainterPath>
#include <QRandomGenerator>
#include <QtMath>

namespace scenes {
namespace {

void nebula(QPainter& p, QRandomGenerator& rng, const QRectF& area, const QList<QColor>& tints, int clouds) {
    p.setPen(Qt::NoPen);
    for (int i = 0; i < clouds; ++i) {
        const QPointF c(area.left() + rng.bounded(int(area.width())),
                        area.top() + rng.bounded(int(area.height())));
        const double r = 80 + rng.bounded(220);
        QColor tint = tints.at(int(rng.bounded(int(tints.size()))));
        QRadialGradient g(c, r);
        g.setColorAt(0, tint);
        tint.setAlpha(0);
        g.setColorAt(1, tint);
        p.setBrush(g);
        p.drawEllipse(c, r, r * (0.5 + rng.bounded(50) / 100.0));
    }
}

void stars(QPainter& p, QRandomGenerator& rng, const QSize& size, int count, const QColor& colour,
           double maxRadius) {
    p.setPen(Qt::NoPen);
    for (int i = 0; i < count; ++i) {
        QColor c = colour;
        c.setAlpha(60 + int(rng.bounded(196)));
        p.setBrush(c);
        const double r = 0.4 + maxRadius * std::pow(rng.generateDouble(), 4);
        p.drawEllipse(QPointF(rng.bounded(size.width()), rng.bounded(size.height())), r, r);
    }
}

void planet(QPainter& p, QPointF centre, double radius, QColor lit, QColor dark, QColor ringColour) {
    // The ring's far half is drawn before the planet, its near half after it.
    auto ringHalf = [&](int startDegrees) {
        p.save();
        p.translate(centre);
        p.rotate(-18);
        p.setBrush(Qt::NoBrush);
        QColor c = ringColour;
        p.setPen(QPen(c, radius * 0.07, Qt::SolidLine, Qt::FlatCap));
        p.drawArc(QRectF(-radius * 1.75, -radius * 0.38, radius * 3.5, radius * 0.76), startDegrees * 16,
                  180 * 16);
        c.setAlpha(c.alpha() / 2);
        p.setPen(QPen(c, radius * 0.12, Qt::SolidLine, Qt::FlatCap));
        p.drawArc(QRectF(-radius * 1.5, -radius * 0.31, radius * 3.0, radius * 0.62), startDegrees * 16,
                  180 * 16);
        p.restore();
    };
    ringHalf(0);
    QRadialGradient body(centre + QPointF(-radius * 0.45, -radius * 0.45), radius * 1.6);
    body.setColorAt(0, lit);
    body.setColorAt(1, dark);
    p.setPen(Qt::NoPen);
    p.setBrush(body);
    p.drawEllipse(centre, radius, radius);
    ringHalf(180);
}

} // namespace

QImage background() {
    const QSize size(1280, 1024);
    QImage img(size, QImage::Format_RGB32);
    QLinearGradient base(0, 0, size.width(), size.height());
    base.setColorAt(0, QColor(250, 251, 253));
    base.setColorAt(1, QColor(236, 240, 247));
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    p.fillRect(img.rect(), base);
    QRandomGenerator rng(20260);
    nebula(p, rng, QRectF(0, 0, size.width(), size.height()),
           {QColor(180, 200, 240, 40), QColor(220, 190, 235, 34), QColor(180, 225, 225, 34)}, 14);
    stars(p, rng, size, 900, QColor(120, 130, 160), 1.6);
    planet(p, QPointF(size.width() - 260, size.height() - 230), 150, QColor(236, 238, 246),
           QColor(200, 208, 226), QColor(170, 182, 210, 90));
    planet(p, QPointF(230, 190), 38, QColor(242, 236, 236), QColor(214, 204, 208), QColor(0, 0, 0, 0));
    return img;
}

QImage splash() {
    const QSize size(480, 300);
    QImage img(size, QImage::Format_RGB32);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);
    QLinearGradient space(0, 0, 0, size.height());
    space.setColorAt(0, QColor(6, 8, 22));
    space.setColorAt(1, QColor(18, 14, 40));
    p.fillRect(img.rect(), space);
    QRandomGenerator rng(7151);
    nebula(p, rng, QRectF(0, 0, size.width(), size.height()),
           {QColor(70, 40, 140, 70), QColor(20, 90, 150, 60), QColor(150, 40, 110, 50)}, 9);
    stars(p, rng, size, 260, QColor(230, 235, 255), 1.4);
    planet(p, QPointF(390, 220), 70, QColor(120, 160, 230), QColor(12, 18, 50), QColor(170, 190, 240, 150));

    QFont title(QStringLiteral("DejaVu Sans"), 10, QFont::Bold);
    title.setPixelSize(86);
    title.setLetterSpacing(QFont::AbsoluteSpacing, 6);
    QPainterPath word;
    word.addText(QPointF(36, 130), title, QStringLiteral("VOSK"));
    QLinearGradient metal(0, 60, 0, 132);
    metal.setColorAt(0, QColor(255, 255, 255));
    metal.setColorAt(0.55, QColor(170, 200, 255));
    metal.setColorAt(1, QColor(90, 120, 200));
    p.setPen(QPen(QColor(20, 30, 80), 2));
    p.setBrush(metal);
    p.drawPath(word);

    QFont sub(QStringLiteral("DejaVu Sans"), 10);
    sub.setPixelSize(17);
    p.setFont(sub);
    p.setPen(QColor(200, 210, 240));
    p.drawText(QPointF(40, 162), QStringLiteral("The Velmora equipment database"));
    p.setPen(QPen(QColor(120, 140, 220, 160), 1));
    p.drawLine(QPointF(40, 174), QPointF(300, 174));
    return img;
}

} // namespace scenes
