// The map control as a player works it: the wheel zooms around the pointer, a drag pans, the scroll
// bars and keys move the view, a click selects the point under the pointer, and each point is drawn
// where its coordinates say.
#include "core/scriptedprompt.h"
#include "maps/ctlmap.h"

#include <QApplication>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <cmath>

namespace {
NavPoint pointAt(const QString& name, const QString& type, double x, double y) {
    NavPoint p;
    p.name = name;
    p.sector = "Test Reach";
    p.type = type;
    p.kind = NavKindOf(type);
    p.x = x;
    p.y = y;
    return p;
}

bool near(QPointF a, QPointF b, double eps = 1e-6) {
    return std::fabs(a.x() - b.x()) <= eps && std::fabs(a.y() - b.y()) <= eps;
}

void sendMouse(QWidget* w, QEvent::Type type, QPointF pos, Qt::MouseButtons buttons = Qt::LeftButton) {
    QMouseEvent e(type, pos, w->mapToGlobal(pos), type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                  type == QEvent::MouseButtonRelease ? Qt::NoButton : buttons, Qt::NoModifier);
    QApplication::sendEvent(w, &e);
}
void click(QWidget* w, QPointF pos) {
    sendMouse(w, QEvent::MouseButtonPress, pos);
    sendMouse(w, QEvent::MouseButtonRelease, pos);
}
void wheel(QWidget* w, QPointF pos, int delta) {
    QWheelEvent e(pos, w->mapToGlobal(pos), QPoint(), QPoint(0, delta), Qt::NoButton, Qt::NoModifier,
                  Qt::NoScrollPhase, false);
    QApplication::sendEvent(w, &e);
}
} // namespace

class TestCtlMap : public QObject {
    Q_OBJECT
private:
    std::unique_ptr<ctlMap> map;
    ScriptedPrompt prompt; // the control reports through the prompt service; nothing is expected

    QPointF screenOf(const QString& name) {
        const NavPoint& p = map->points().at(map->indexOf(name));
        return map->view().toScreen(QPointF(p.x, p.y));
    }

private Q_SLOTS:
    void init() {
        map = std::make_unique<ctlMap>();
        map->resize(900, 700);
        map->setPoints("Test Reach", {pointAt("Harrow Station", "Station", 1200, -300),
                                      pointAt("Gate North", "Gate", -4000, 5000),
                                      pointAt("Ore Field", "Asteroid", 3000, -4500),
                                      pointAt("Strange Thing", "Moon", -2500, -1500)});
        map->show();
        QVERIFY(QTest::qWaitForWindowExposed(map.get()));
    }
    void cleanup() {
        map.reset();
        QCOMPARE(prompt.count(), 0);
    }

    // The map opens on the whole sector, each point in sight with its name placed beside it.
    void opensShowingEveryPointWhereItIs() {
        QCOMPARE(qRound(map->zoomPercent()), 100);
        QVERIFY(map->selected().isEmpty());
        for (const NavPoint& p : map->points()) {
            QVERIFY2(map->view().visibleWorld().contains(QPointF(p.x, p.y)), qPrintable(p.name));
            const QRectF box = map->labelBox(map->indexOf(p.name));
            QVERIFY2(!box.isNull(), qPrintable(p.name));
            QVERIFY(QLineF(box.center(), screenOf(p.name)).length() <
                    box.width() / 2 + map->markerSize() + 10);
        }
    }

    // The arithmetic is the view's; here, that the wheel and the buttons reach it within the limits.
    void wheelZoomsAroundThePointerWithinLimits() {
        const QPointF pointer(250, 180);
        const QPointF under = map->view().toWorld(pointer);
        wheel(map->viewport(), pointer, 240);
        QVERIFY(map->zoomPercent() > 140 && near(map->view().toWorld(pointer), under));
        for (int i = 0; i < 100; ++i)
            map->zoomOut();
        QVERIFY(map->zoomPercent() >= 25 - 1e-6);
        for (int i = 0; i < 200; ++i)
            map->zoomIn();
        QVERIFY(map->zoomPercent() <= 40000 + 1e-6);
        map->fitToSector();
        QCOMPARE(qRound(map->zoomPercent()), 100);
    }

    void dragPansWithThePointer() {
        const QPointF grab(400, 350), drop(520, 290);
        const QPointF grabbed = map->view().toWorld(grab);
        sendMouse(map->viewport(), QEvent::MouseButtonPress, grab);
        for (int step = 1; step <= 4; ++step)
            sendMouse(map->viewport(), QEvent::MouseMove, grab + (drop - grab) * step / 4.0);
        sendMouse(map->viewport(), QEvent::MouseButtonRelease, drop);
        QVERIFY(near(map->view().toScreen(grabbed), drop));
        QVERIFY(map->selected().isEmpty()); // a drag is not a click
    }

    void scrollBarsAndKeysMoveTheView() {
        const QPointF centre = map->view().centre();
        map->horizontalScrollBar()->setValue(map->horizontalScrollBar()->value() + 100);
        QVERIFY(std::fabs(map->view().centre().x() - (centre.x() + 100 / map->view().scale())) <
                1 / map->view().scale());
        map->verticalScrollBar()->setValue(map->verticalScrollBar()->value() + 50);
        QVERIFY(map->view().centre().y() < centre.y()); // down the bar is down the map: smaller Y
        map->setFocus();
        QTest::keyClick(map.get(), Qt::Key_0);
        QVERIFY(near(map->view().centre(), centre));
        QTest::keyClick(map.get(), Qt::Key_Right);
        QVERIFY(map->view().centre().x() > centre.x());
        const double scale = map->view().scale();
        QTest::keyClick(map.get(), Qt::Key_Plus);
        QVERIFY(map->view().scale() > scale);
        // The bars follow the view however it moved.
        QCOMPARE(map->horizontalScrollBar()->value(),
                 horizontalScroll(map->view(), map->contentRect()).value);
    }

    void clicksSelectActivateAndPlace() {
        QSignalSpy selected(map.get(), &ctlMap::selectionChanged);
        QSignalSpy activated(map.get(), &ctlMap::pointActivated);
        const QPointF at = screenOf("Ore Field") + QPointF(3, -2);
        QCOMPARE(map->pointAt(at), map->indexOf("Ore Field"));
        click(map->viewport(), at);
        QCOMPARE(map->selected(), QString("Ore Field"));
        QCOMPARE(selected.size(), 1);
        sendMouse(map->viewport(), QEvent::MouseButtonDblClick, at);
        QCOMPARE(activated.size(), 1);
        QCOMPARE(activated.first().first().toString(), QString("Ore Field"));
        // A click on empty space clears the selection.
        const QPointF empty = map->view().toScreen(QPointF(-6000, -6000));
        QCOMPARE(map->pointAt(empty), -1);
        click(map->viewport(), empty);
        QVERIFY(map->selected().isEmpty());
        // While placing, a click (even on a point) reports its position and selects nothing.
        QSignalSpy placed(map.get(), &ctlMap::placeRequested);
        map->setPlacing(true);
        click(map->viewport(), screenOf("Harrow Station"));
        QCOMPARE(placed.size(), 1);
        QVERIFY(near(placed.first().first().toPointF(), QPointF(1200, -300)));
        QVERIFY(map->selected().isEmpty());
    }

    void centringAndSizes() {
        QVERIFY(map->centreOn("ore field"));
        QCOMPARE(map->selected(), QString("Ore Field"));
        QVERIFY(near(map->view().centre(), QPointF(3000, -4500)));
        QVERIFY(map->zoomPercent() >= 200 - 1e-6);
        QVERIFY(!map->centreOn("Nowhere"));
        // A map filled before it is shown fits (or centres) once it has its real size.
        ctlMap late;
        late.setPoints("Test Reach", map->points());
        QVERIFY(late.centreOn("Gate North"));
        late.resize(640, 480);
        late.show();
        QVERIFY(QTest::qWaitForWindowExposed(&late));
        QVERIFY(near(late.view().centre(), QPointF(-4000, 5000)));
        QCOMPARE(late.view().viewport(), QSizeF(late.viewport()->size()));
        late.setPoints("Test Reach", map->points());
        QVERIFY(late.view().visibleWorld().contains(QRectF(-4000, -4500, 7000, 9500)));
        // An empty sector still has a map.
        map->setPoints("Empty Reach", {});
        QVERIFY(map->view().visibleWorld().contains(QRectF(-5000, -5000, 10000, 10000)));
        QCOMPARE(map->pointAt(QPointF(100, 100)), -1);
        map->viewport()->grab(); // draws without points
    }
};

QTEST_MAIN(TestCtlMap)
#include "tst_ctlmap.moc"
