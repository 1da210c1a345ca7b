#include "views/treeimages.h"

#include "views/buildtree.h"
#include "views/mobtrees.h"

#include <QHash>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace {
QPixmap canvas() {
    QPixmap pm(16, 16);
    pm.fill(Qt::transparent);
    return pm;
}

// A cog-like module with a blue core.
QPixmap equipment() {
    QPixmap pm = canvas();
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(60, 64, 72), 1));
    p.setBrush(QColor(150, 158, 170));
    for (int i = 0; i < 4; ++i) {
        p.save();
        p.translate(8, 8);
        p.rotate(45.0 * i);
        p.drawRect(QRectF(-1.5, -7.5, 3, 15));
        p.restore();
    }
    p.drawEllipse(QRectF(2.5, 2.5, 11, 11));
    p.setBrush(QColor(40, 120, 220));
    p.drawEllipse(QRectF(5.5, 5.5, 5, 5));
    return pm;
}

// A green circuit chip with pins.
QPixmap component() {
    QPixmap pm = canvas();
    QPainter p(&pm);
    p.setPen(QColor(150, 150, 150));
    for (int x = 4; x <= 11; x += 3) {
        p.drawLine(x, 1, x, 3);
        p.drawLine(x, 12, x, 14);
    }
    p.setPen(QColor(20, 80, 30));
    p.setBrush(QColor(40, 150, 60));
    p.drawRect(2, 3, 11, 9);
    p.setPen(QColor(200, 230, 120));
    p.drawLine(4, 6, 8, 6);
    p.drawLine(8, 6, 8, 9);
    p.drawLine(8, 9, 11, 9);
    return pm;
}

// A faceted crystal: refined material.
QPixmap refined() {
    QPixmap pm = canvas();
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    QPainterPath path;
    path.moveTo(8, 1);
    path.lineTo(14, 6);
    path.lineTo(8, 15);
    path.lineTo(2, 6);
    path.closeSubpath();
    p.setPen(QPen(QColor(150, 70, 0), 1));
    p.setBrush(QColor(245, 150, 30));
    p.drawPath(path);
    p.setPen(QColor(255, 220, 150));
    p.drawLine(QPointF(2, 6), QPointF(14, 6));
    p.drawLine(QPointF(8, 1), QPointF(6, 6));
    p.drawLine(QPointF(6, 6), QPointF(8, 15));
    return pm;
}

// A closed crate.
QPixmap item() {
    QPixmap pm = canvas();
    QPainter p(&pm);
    p.setPen(QColor(90, 55, 20));
    p.setBrush(QColor(190, 130, 60));
    p.drawRect(2, 4, 12, 10);
    p.setBrush(QColor(215, 160, 90));
    p.drawRect(1, 2, 14, 3);
    p.drawLine(8, 5, 8, 13);
    return pm;
}

// A rough lump of ore with specks.
QPixmap ore() {
    QPixmap pm = canvas();
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    QPolygonF lump({QPointF(3, 5), QPointF(7, 2), QPointF(12, 3), QPointF(15, 8), QPointF(12, 14),
                    QPointF(5, 14), QPointF(1, 10)});
    p.setPen(QPen(QColor(50, 50, 55), 1));
    p.setBrush(QColor(120, 118, 112));
    p.drawPolygon(lump);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(200, 200, 80));
    p.drawEllipse(QRectF(5, 6, 2, 2));
    p.drawEllipse(QRectF(10, 9, 2, 2));
    p.drawEllipse(QRectF(8, 4, 1.5, 1.5));
    return pm;
}

// Rising bars, filled up to the step: 1 (very rare, red) to 5 (very frequent, green).
QPixmap scale(int step) {
    static const QColor colours[] = {QColor(200, 40, 40), QColor(230, 120, 30), QColor(220, 200, 40),
                                     QColor(130, 200, 50), QColor(40, 170, 60)};
    QPixmap pm = canvas();
    QPainter p(&pm);
    for (int i = 0; i < 5; ++i) {
        const int h = 3 + i * 3;
        const QRect bar(1 + i * 3, 15 - h, 2, h);
        if (i < step)
            p.fillRect(bar, colours[step - 1]);
        else
            p.fillRect(bar, QColor(200, 200, 200));
    }
    return pm;
}

QPixmap folder() {
    QPixmap pm = canvas();
    QPainter p(&pm);
    p.setPen(QColor(140, 100, 20));
    p.setBrush(QColor(235, 195, 80));
    p.drawRect(1, 3, 6, 3);
    p.setBrush(QColor(250, 215, 100));
    p.drawRect(1, 5, 14, 9);
    return pm;
}

// A ringed planet.
QPixmap sector() {
    QPixmap pm = canvas();
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(70, 110, 200));
    p.drawEllipse(QRectF(4, 4, 8, 8));
    p.setPen(QPen(QColor(210, 210, 160), 1.2));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(QRectF(0.8, 6, 14.4, 4));
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(70, 110, 200));
    p.drawChord(QRectF(4, 4, 8, 8), 0, 180 * 16);
    return pm;
}

// A hostile ship: a red arrowhead.
QPixmap mob() {
    QPixmap pm = canvas();
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    QPolygonF ship({QPointF(8, 1), QPointF(14, 14), QPointF(8, 10), QPointF(2, 14)});
    p.setPen(QPen(QColor(110, 10, 10), 1));
    p.setBrush(QColor(215, 45, 40));
    p.drawPolygon(ship);
    return pm;
}

QIcon make(int image, bool mobTree) {
    if (!mobTree) {
        switch (image) {
        case buildimg::Equipment:
            return QIcon(equipment());
        case buildimg::Component:
            return QIcon(component());
        case buildimg::RefinedRawMaterial:
            return QIcon(refined());
        case buildimg::Item:
            return QIcon(item());
        case buildimg::RawMaterial:
            return QIcon(ore());
        default:
            break;
        }
    } else if (image >= mobimg::VeryRare && image <= mobimg::VeryFrequent) {
        return QIcon(scale(image - mobimg::VeryRare + 1));
    }
    // Groups, sectors and MOBs look the same in every tree.
    switch (image) {
    case mobimg::Group:
        return QIcon(folder());
    case mobimg::Sector:
        return QIcon(sector());
    case mobimg::Mob:
        return QIcon(mob());
    default:
        return QIcon();
    }
}
} // namespace

QIcon TreeIcon(int image, bool mobTree) {
    static QHash<int, QIcon> cache;
    const int key = image + (mobTree ? 1000 : 0);
    auto it = cache.find(key);
    if (it == cache.end())
        it = cache.insert(key, make(image, mobTree));
    return *it;
}

QIcon BuildTreeIcon(int image) {
    return TreeIcon(image, false);
}
QIcon MobTreeIcon(int image) {
    return TreeIcon(image, true);
}

QIcon BuildTreeIcon(bom::Kind kind) {
    switch (kind) {
    case bom::Kind::Equipment:
        return BuildTreeIcon(buildimg::Equipment);
    case bom::Kind::Component:
        return BuildTreeIcon(buildimg::Component);
    case bom::Kind::RawMaterial:
        return BuildTreeIcon(buildimg::RawMaterial);
    case bom::Kind::Item:
        return BuildTreeIcon(buildimg::Item);
    }
    return BuildTreeIcon(buildimg::None);
}
