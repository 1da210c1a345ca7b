#include "core/gamecursor.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QWidget>

namespace {

// Sets the pointer on each window as it is shown, so windows opened later have it too.
class WindowCursor : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Show && watched->isWidgetType()) {
            auto* w = static_cast<QWidget*>(watched);
            if (w->isWindow())
                w->setCursor(GameCursor());
        }
        return false;
    }
};

WindowCursor*& filter() {
    static WindowCursor* f = nullptr;
    return f;
}

} // namespace

QCursor GameCursor() {
    static const QCursor cursor = [] {
        QPixmap pix(32, 32);
        pix.fill(Qt::transparent);
        QPainter p(&pix);
        p.setRenderHint(QPainter::Antialiasing);
        QPainterPath arrow;
        arrow.moveTo(2, 2);
        arrow.lineTo(2, 24);
        arrow.lineTo(8, 18);
        arrow.lineTo(13, 28);
        arrow.lineTo(17, 26);
        arrow.lineTo(12, 16);
        arrow.lineTo(20, 16);
        arrow.closeSubpath();
        p.setPen(QPen(QColor(90, 220, 255, 110), 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        p.drawPath(arrow);
        QLinearGradient gold(2, 2, 16, 26);
        gold.setColorAt(0, QColor(255, 236, 150));
        gold.setColorAt(1, QColor(205, 150, 40));
        p.setBrush(gold);
        p.setPen(QPen(QColor(40, 30, 10), 1.2));
        p.drawPath(arrow);
        return QCursor(pix, 2, 2);
    }();
    return cursor;
}

void ApplyGameCursor(bool on) {
    if (on == GameCursorShown())
        return;
    if (on) {
        filter() = new WindowCursor(qApp);
        qApp->installEventFilter(filter());
    } else {
        delete filter();
        filter() = nullptr;
    }
    for (QWidget* w : QApplication::topLevelWidgets()) {
        if (on)
            w->setCursor(GameCursor());
        else
            w->unsetCursor();
    }
}

bool GameCursorShown() {
    return filter() != nullptr;
}
