// The map's coordinate mapping: sector to screen and back, zooming around a screen point, panning,
// fitting a sector, the scroll bars over it and the marker size.
#include "maps/mapview.h"

#include <QTest>

#include <cmath>

namespace {
MapView viewOf(QSizeF size, QPointF centre, double scale) {
    MapView v;
    v.setViewport(size);
    v.setCentre(centre);
    v.setScale(scale);
    return v;
}

bool near(QPointF a, QPointF b, double eps = 1e-6) {
    return std::fabs(a.x() - b.x()) <= eps && std::fabs(a.y() - b.y()) <= eps;
}
} // namespace

class TestMapView : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void mapping_data() {
        QTest::addColumn<QPointF>("centre");
        QTest::addColumn<double>("scale");
        QTest::addColumn<QPointF>("world");
        QTest::addColumn<QPointF>("screen");
        // A 800 x 600 viewport: its middle is (400, 300).
        QTest::newRow("centre lands in the middle")
            << QPointF(120, -40) << 0.5 << QPointF(120, -40) << QPointF(400, 300);
        QTest::newRow("x grows to the right") << QPointF(0, 0) << 2.0 << QPointF(10, 0) << QPointF(420, 300);
        QTest::newRow("y grows upwards") << QPointF(0, 0) << 2.0 << QPointF(0, 10) << QPointF(400, 280);
        QTest::newRow("far from the origin")
            << QPointF(-1e6, 5e5) << 0.01 << QPointF(-1e6 + 1000, 5e5 - 2000) << QPointF(410, 320);
    }
    void mapping() {
        QFETCH(QPointF, centre);
        QFETCH(double, scale);
        QFETCH(QPointF, world);
        QFETCH(QPointF, screen);
        const MapView v = viewOf({800, 600}, centre, scale);
        QVERIFY2(near(v.toScreen(world), screen),
                 qPrintable(QString("%1,%2").arg(v.toScreen(world).x()).arg(v.toScreen(world).y())));
        QVERIFY(near(v.toWorld(screen), world, 1e-6 * std::max(1.0, std::fabs(world.x()))));
    }

    void visibleWorldIsTheViewport() {
        const MapView v = viewOf({800, 600}, {100, 200}, 0.5);
        const QRectF r = v.visibleWorld();
        QVERIFY(near(r.topLeft(), {100 - 800, 200 - 600}));
        QVERIFY(near(r.bottomRight(), {100 + 800, 200 + 600}));
        // The screen rectangle of what is visible is the viewport again.
        QVERIFY(near(v.toScreen(r).topLeft(), {0, 0}) && near(v.toScreen(r).bottomRight(), {800, 600}));
    }

    void zoomKeepsThePointUnderThePointer_data() {
        QTest::addColumn<QPointF>("pointer");
        QTest::addColumn<double>("factor");
        QTest::newRow("in at a corner") << QPointF(10, 15) << 1.2;
        QTest::newRow("out at a corner") << QPointF(790, 590) << 1 / 1.2;
        QTest::newRow("far in off the middle") << QPointF(650, 120) << 40.0;
        QTest::newRow("in at the middle") << QPointF(400, 300) << 3.0;
    }
    void zoomKeepsThePointUnderThePointer() {
        QFETCH(QPointF, pointer);
        QFETCH(double, factor);
        MapView v = viewOf({800, 600}, {2500, -1300}, 0.05);
        const QPointF before = v.toWorld(pointer);
        QVERIFY(v.zoomAt(pointer, factor));
        QCOMPARE(v.scale(), 0.05 * factor);
        QVERIFY(near(v.toWorld(pointer), before, 1e-6));
        // Zooming back the other way returns to the same view.
        QVERIFY(v.zoomAt(pointer, 1 / factor));
        QVERIFY(near(v.centre(), {2500, -1300}, 1e-6));
    }

    void zoomStopsAtTheLimits() {
        MapView v = viewOf({800, 600}, {0, 0}, 1);
        v.setScaleLimits(0.25, 4);
        const QPointF pointer(100, 100);
        const QPointF under = v.toWorld(pointer);
        for (int i = 0; i < 20; ++i)
            v.zoomAt(pointer, 2);
        QCOMPARE(v.scale(), 4.0);
        QVERIFY(!v.zoomAt(pointer, 2)); // nothing moves at the limit
        QVERIFY(near(v.toWorld(pointer), under, 1e-9));
        for (int i = 0; i < 20; ++i)
            v.zoomAt(pointer, 0.5);
        QCOMPARE(v.scale(), 0.25);
        QVERIFY(near(v.toWorld(pointer), under, 1e-9));
        // Limits that exclude the scale pull it in; nonsense scales are ignored.
        v.setScaleLimits(1, 2);
        QCOMPARE(v.scale(), 1.0);
        QCOMPARE(v.setScale(std::nan("")), 1.0);
        QCOMPARE(v.setScale(-3), 1.0);
        QCOMPARE(v.setScale(0), 1.0);
    }

    void panFollowsTheDrag() {
        MapView v = viewOf({800, 600}, {0, 0}, 2);
        const QPointF grabbed = v.toWorld({300, 200});
        v.panBy({50, -30}); // drag right and up
        QVERIFY(near(v.toScreen(grabbed), {350, 170}));
    }

    void fitShowsTheWholeRectangle_data() {
        QTest::addColumn<QRectF>("world");
        QTest::addColumn<double>("minExtent");
        QTest::addColumn<QMarginsF>("margins");
        QTest::addColumn<QRectF>("expected"); // what must be visible, in sector units
        const QMarginsF even(40, 40, 40, 40), uneven(70, 30, 180, 45);
        QTest::newRow("wide") << QRectF(-8000, -1000, 16000, 2000) << 0.0 << even
                              << QRectF(-8000, -1000, 16000, 2000);
        QTest::newRow("tall") << QRectF(100, -9000, 50, 18000) << 0.0 << even
                              << QRectF(100, -9000, 50, 18000);
        QTest::newRow("one point, widened")
            << QRectF(300, 400, 0, 0) << 1000.0 << even << QRectF(-200, -100, 1000, 1000);
        QTest::newRow("a line, widened across")
            << QRectF(-500, 7, 1000, 0) << 200.0 << even << QRectF(-500, -93, 1000, 200);
        QTest::newRow("uneven margins, wide")
            << QRectF(-8000, -1000, 16000, 2000) << 0.0 << uneven << QRectF(-8000, -1000, 16000, 2000);
        QTest::newRow("uneven margins, tall")
            << QRectF(100, -9000, 50, 18000) << 0.0 << uneven << QRectF(100, -9000, 50, 18000);
    }
    void fitShowsTheWholeRectangle() {
        QFETCH(QRectF, world);
        QFETCH(double, minExtent);
        QFETCH(QMarginsF, margins);
        QFETCH(QRectF, expected);
        MapView v;
        v.setViewport({800, 600});
        v.fit(world, margins, minExtent);
        const QRectF onScreen = v.toScreen(expected);
        const QRectF inner = QRectF(0, 0, 800, 600).marginsRemoved(margins);
        QVERIFY2(inner.adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(onScreen),
                 qPrintable(QString("%1 %2 %3 %4")
                                .arg(onScreen.left())
                                .arg(onScreen.top())
                                .arg(onScreen.right())
                                .arg(onScreen.bottom())));
        // It fills one of the directions, in the middle of the other.
        const bool fillsWidth = std::fabs(onScreen.width() - inner.width()) < 1e-6;
        QVERIFY(fillsWidth || std::fabs(onScreen.height() - inner.height()) < 1e-6);
        QVERIFY(near(onScreen.center(), inner.center(), 1e-6));
        QCOMPARE(MapView::fitScale({800, 600}, world, margins, minExtent), v.scale());
    }

    void scrollBarsStandForTheView_data() {
        QTest::addColumn<QPointF>("centre");
        QTest::addColumn<double>("scale");
        QTest::newRow("fitted") << QPointF(0, 0) << 0.05;
        QTest::newRow("zoomed in, off centre") << QPointF(3000, -2000) << 0.8;
        QTest::newRow("panned outside the content") << QPointF(-40000, 30000) << 0.05;
    }
    void scrollBarsStandForTheView() {
        QFETCH(QPointF, centre);
        QFETCH(double, scale);
        const QRectF content(-8000, -8000, 16000, 16000);
        const MapView v = viewOf({800, 600}, centre, scale);
        const ScrollAxis h = horizontalScroll(v, content), vert = verticalScroll(v, content);
        for (const ScrollAxis& a : {h, vert}) {
            QVERIFY(a.minimum <= a.value && a.value <= a.maximum);
        }
        QCOMPARE(h.page, 800);
        QCOMPARE(vert.page, 600);
        // The bar's value leads back to the same centre (to the pixel).
        QVERIFY(std::fabs(centreForHorizontal(v, h.value).x() - centre.x()) <= 1 / scale);
        QVERIFY(std::fabs(centreForVertical(v, vert.value).y() - centre.y()) <= 1 / scale);
        // The ends of the bars reach half a viewport beyond the content (or the view, when it is further).
        MapView left = v;
        left.setCentre(centreForHorizontal(v, h.minimum));
        QVERIFY(left.visibleWorld().left() <=
                std::min(content.left() - 400 / scale, v.visibleWorld().left()) + 1 / scale);
        MapView top = v;
        top.setCentre(centreForVertical(v, vert.minimum));
        QVERIFY(top.visibleWorld().bottom() >=
                std::max(content.bottom() + 300 / scale, v.visibleWorld().bottom()) - 1 / scale);
        MapView bottom = v;
        bottom.setCentre(centreForVertical(v, vert.maximum));
        QVERIFY(bottom.visibleWorld().top() <=
                std::min(content.top() - 300 / scale, v.visibleWorld().top()) + 1 / scale);
    }

    void scrollingDownShowsSmallerY() {
        const MapView v = viewOf({800, 600}, {0, 0}, 1);
        const ScrollAxis a = verticalScroll(v, QRectF(-1000, -1000, 2000, 2000));
        QVERIFY(centreForVertical(v, a.value + 100).y() < 0);
        QVERIFY(
            centreForHorizontal(v, horizontalScroll(v, QRectF(-1000, -1000, 2000, 2000)).value + 100).x() >
            0);
    }

    void markerSizeFollowsTheCrowd_data() {
        QTest::addColumn<int>("count");
        QTest::addColumn<double>("scale");
        QTest::addColumn<double>("expected");
        const QRectF content(0, 0, 10000, 10000);
        Q_UNUSED(content);
        QTest::newRow("few points, far apart: largest") << 10 << 0.05 << 26.0;
        QTest::newRow("crowded: smallest") << 5000 << 0.04 << 12.0;
        QTest::newRow("in between") << 400 << 0.08 << 20.0; // 500 units each, 40 px, half of it
        QTest::newRow("no points") << 0 << 1.0 << 26.0;
    }
    void markerSizeFollowsTheCrowd() {
        QFETCH(int, count);
        QFETCH(double, scale);
        QFETCH(double, expected);
        QCOMPARE(MarkerSize(count, QRectF(0, 0, 10000, 10000), scale), expected);
    }
};

QTEST_GUILESS_MAIN(TestMapView)
#include "tst_mapview.moc"
