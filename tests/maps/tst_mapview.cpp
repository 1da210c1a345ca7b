// The map's arithmetic: sector to screen and back, zooming around a screen point, panning, fitting a
// sector, the scroll bars over it and the marker size; the grid's steps, lines and labels, and the
// placing of names beside the points.
#include "maps/mapgrid.h"
#include "maps/maplabels.h"
#include "maps/mapview.h"
#include "maps/navtypes.h"

#include <QRandomGenerator>
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
        QTest::newRow("centre in the middle")
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
        QVERIFY(near(v.toScreen(world), screen));
        QVERIFY(near(v.toWorld(screen), world, 1e-6 * std::max(1.0, std::fabs(world.x()))));
        // What is visible is the viewport, half of it each way from the centre.
        const QRectF r = v.visibleWorld();
        QVERIFY(near(r.center(), centre, 1e-6 * std::max(1.0, std::fabs(centre.x()))));
        QVERIFY(std::fabs(r.width() - 800 / scale) < 1e-6 && std::fabs(r.height() - 600 / scale) < 1e-6);
        QVERIFY(near(v.toScreen(r).topLeft(), {0, 0}, 1e-4) &&
                near(v.toScreen(r).bottomRight(), {800, 600}, 1e-4));
    }

    void zoomKeepsThePointUnderThePointer_data() {
        QTest::addColumn<QPointF>("pointer");
        QTest::addColumn<double>("factor");
        QTest::newRow("in at a corner") << QPointF(10, 15) << 1.2;
        QTest::newRow("far in off the middle") << QPointF(650, 120) << 40.0;
    }
    void zoomKeepsThePointUnderThePointer() {
        QFETCH(QPointF, pointer);
        QFETCH(double, factor);
        MapView v = viewOf({800, 600}, {2500, -1300}, 0.05);
        const QPointF before = v.toWorld(pointer);
        QVERIFY(v.zoomAt(pointer, factor));
        QCOMPARE(v.scale(), 0.05 * factor);
        QVERIFY(near(v.toWorld(pointer), before));
        QVERIFY(v.zoomAt(pointer, 1 / factor)); // zooming back returns to the same view
        QVERIFY(near(v.centre(), {2500, -1300}));
    }

    void zoomStopsAtTheLimitsAndPanFollowsTheDrag() {
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
        for (double nonsense : {std::nan(""), -3.0, 0.0})
            QCOMPARE(v.setScale(nonsense), 1.0);
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
        const QRectF wide(-8000, -1000, 16000, 2000), tall(100, -9000, 50, 18000);
        QTest::newRow("wide") << wide << 0.0 << even << wide;
        QTest::newRow("tall") << tall << 0.0 << even << tall;
        QTest::newRow("one point, widened")
            << QRectF(300, 400, 0, 0) << 1000.0 << even << QRectF(-200, -100, 1000, 1000);
        QTest::newRow("a line, widened across")
            << QRectF(-500, 7, 1000, 0) << 200.0 << even << QRectF(-500, -93, 1000, 200);
        QTest::newRow("uneven margins, wide") << wide << 0.0 << uneven << wide;
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
        QVERIFY(inner.adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(onScreen));
        // It fills one of the directions, in the middle of the other.
        QVERIFY(std::fabs(onScreen.width() - inner.width()) < 1e-6 ||
                std::fabs(onScreen.height() - inner.height()) < 1e-6);
        QVERIFY(near(onScreen.center(), inner.center()));
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
        QVERIFY(h.minimum <= h.value && h.value <= h.maximum && vert.minimum <= vert.value &&
                vert.value <= vert.maximum);
        QVERIFY(h.page == 800 && vert.page == 600);
        // The bar's value leads back to the same centre (to the pixel); further down is smaller Y.
        QVERIFY(std::fabs(centreForHorizontal(v, h.value).x() - centre.x()) <= 1 / scale);
        QVERIFY(std::fabs(centreForVertical(v, vert.value).y() - centre.y()) <= 1 / scale);
        QVERIFY(centreForVertical(v, vert.value + 100).y() < centre.y());
        QVERIFY(centreForHorizontal(v, h.value + 100).x() > centre.x());
        // The ends of the bars reach half a viewport beyond the content (or the view, when it is further).
        auto at = [&](QPointF c) {
            MapView m = v;
            m.setCentre(c);
            return m.visibleWorld();
        };
        const double px = 1 / scale;
        QVERIFY(at(centreForHorizontal(v, h.minimum)).left() <=
                std::min(content.left() - 400 * px, v.visibleWorld().left()) + px);
        QVERIFY(at(centreForVertical(v, vert.minimum)).bottom() >=
                std::max(content.bottom() + 300 * px, v.visibleWorld().bottom()) - px);
        QVERIFY(at(centreForVertical(v, vert.maximum)).top() <=
                std::min(content.top() - 300 * px, v.visibleWorld().top()) + px);
    }

    void markerSizeFollowsTheCrowd() {
        const QRectF content(0, 0, 10000, 10000);
        QCOMPARE(MarkerSize(10, content, 0.05), 26.0);   // few points, far apart: largest
        QCOMPARE(MarkerSize(5000, content, 0.04), 12.0); // crowded: smallest
        QCOMPARE(MarkerSize(400, content, 0.08), 20.0);  // 500 units each, 40 px, half of it
        QCOMPARE(MarkerSize(0, content, 1.0), 26.0);
    }

    void niceSteps_data() {
        QTest::addColumn<double>("minimum");
        QTest::addColumn<double>("step");
        QTest::newRow("exact power") << 100.0 << 100.0;
        QTest::newRow("just above a power") << 101.0 << 200.0;
        QTest::newRow("to five") << 240.0 << 500.0;
        QTest::newRow("small") << 0.03 << 0.05;
        QTest::newRow("rounding of 0.3") << 0.1 * 3 << 0.5;
        QTest::newRow("nonsense") << -5.0 << 1.0;
    }
    void niceSteps() {
        QFETCH(double, minimum);
        QFETCH(double, step);
        QCOMPARE(NiceStep(minimum), step);
    }

    void gridCoversTheViewWithRoundLines_data() {
        QTest::addColumn<QPointF>("centre");
        QTest::addColumn<double>("scale");
        QTest::newRow("whole sector") << QPointF(0, 0) << 0.05;
        QTest::newRow("zoomed in far from 0") << QPointF(123456.7, -98765.4) << 7.3;
        QTest::newRow("fractions") << QPointF(0.5, 0.25) << 900.0;
    }
    void gridCoversTheViewWithRoundLines() {
        QFETCH(QPointF, centre);
        QFETCH(double, scale);
        MapView v;
        v.setViewport({1000, 700});
        v.setCentre(centre);
        v.setScale(scale);
        const Grid g = MakeGrid(v, 90, 14);
        QVERIFY(g.step * scale >= 90 && g.step * scale < 90 * 2.5 + 1e-9);
        QVERIFY(g.minor == g.step || g.minor * scale >= 14);
        const QRectF r = v.visibleWorld();
        for (const auto& [lines, lo, hi] :
             {std::tuple{g.vertical, r.left(), r.right()}, std::tuple{g.horizontal, r.top(), r.bottom()}}) {
            QVERIFY(!lines.isEmpty());
            QVERIFY(lines.first().value < lo + g.minor && lines.last().value > hi - g.minor);
            int labelled = 0;
            for (int i = 0; i < lines.size(); ++i) {
                const GridLine& l = lines.at(i);
                QVERIFY(l.value >= lo - 1e-9 * std::fabs(lo) - 1e-12 &&
                        l.value <= hi + 1e-9 * std::fabs(hi) + 1e-12);
                if (i > 0)
                    QVERIFY(std::fabs(l.value - lines.at(i - 1).value - g.minor) < g.minor * 1e-6);
                // Labelled lines fall on whole multiples of the step; the axis is the line through 0.
                const double k = l.value / g.step;
                QCOMPARE(l.labelled, std::fabs(k - std::round(k)) < 1e-6);
                QCOMPARE(l.axis, std::fabs(l.value) < g.minor * 1e-6);
                labelled += l.labelled;
            }
            QVERIFY(labelled >= 2);
        }
    }

    void labelAndCoordinateTexts() {
        const QList<std::tuple<double, double, QString>> grid = {{2000, 500, "2000"},
                                                                 {-1500, 500, "-1500"},
                                                                 {0.3, 0.1, "0.3"},
                                                                 {-0.05, 0.05, "-0.05"},
                                                                 {-1e-12, 0.1, "0.0"}}; // no minus zero
        for (const auto& [value, step, text] : grid)
            QCOMPARE(GridLabel(value, step), text);
        const QList<std::pair<double, QString>> coordinates = {
            {1250, "1250"}, {-340.5, "-340.5"}, {12.3456, "12.35"}, {-0.001, "0"}};
        for (const auto& [value, text] : coordinates)
            QCOMPARE(CoordinateText(value), text);
    }

    void aNameGoesRightUnlessANeighbourIsThere() {
        const LabelRequest r{QPointF(100, 100), 10, QSizeF(60, 14), 0};
        const QRectF alone = PlaceLabels({r}).first();
        QCOMPARE(alone, LabelCandidates(r).first());
        QVERIFY(alone.left() > 110 && std::fabs(alone.center().y() - 100) < 1e-9);
        // A second marker just right of the first takes the right-hand place away.
        const LabelRequest a{QPointF(100, 100), 10, QSizeF(60, 14), 5};
        const LabelRequest b{QPointF(140, 100), 10, QSizeF(60, 14), 1};
        const QList<QRectF> placed = PlaceLabels({a, b});
        QCOMPARE(placed.at(0), LabelCandidates(a).at(1)); // left
        QCOMPARE(placed.at(1), LabelCandidates(b).at(0)); // right
    }

    void importantNamesWinAndNothingOverlaps() {
        // A crowd of points: no name covers another name or any other point's marker, and where
        // room runs out the less important names are the ones left out.
        QRandomGenerator rng(42);
        QList<LabelRequest> requests;
        for (int i = 0; i < 600; ++i) {
            LabelRequest r;
            r.anchor = QPointF(rng.bounded(800.0), rng.bounded(600.0));
            r.radius = 8;
            r.size = QSizeF(30 + rng.bounded(60), 14);
            r.priority = i % 10 == 0 ? 8 : 1;
            requests << r;
        }
        const QList<QRectF> placed = PlaceLabels(requests);
        int important = 0, importantPlaced = 0, otherPlaced = 0;
        for (int i = 0; i < placed.size(); ++i) {
            const bool high = requests.at(i).priority == 8;
            important += high;
            if (placed.at(i).isNull())
                continue;
            (high ? importantPlaced : otherPlaced)++;
            for (int j = 0; j < placed.size(); ++j) {
                if (j == i)
                    continue;
                const QPointF a = requests.at(j).anchor;
                const QRectF marker(a.x() - 8, a.y() - 8, 16, 16);
                QVERIFY2(!placed.at(i).intersects(marker),
                         qPrintable(QString("name %1 covers marker %2").arg(i).arg(j)));
                if (j > i && !placed.at(j).isNull())
                    QVERIFY2(!placed.at(i).intersects(placed.at(j)),
                             qPrintable(QString("names %1 and %2").arg(i).arg(j)));
            }
        }
        QVERIFY(otherPlaced > 0);
        QVERIFY(double(importantPlaced) / important > double(otherPlaced) / (placed.size() - important));
    }

    void boundsKeepNamesInsideWhileThereIsRoom() {
        const QRectF bounds(0, 0, 800, 600);
        const LabelRequest nearRightEdge{QPointF(790, 300), 6, QSizeF(80, 14), 0};
        // Hemmed in: markers on its left and above and below it, the edge on its right.
        const LabelRequest cornered{QPointF(790, 100), 6, QSizeF(80, 14), 0};
        QList<LabelRequest> requests{nearRightEdge, cornered};
        for (const QPointF& p :
             {QPointF(740, 100), QPointF(790, 80), QPointF(790, 120), QPointF(750, 80), QPointF(750, 120)})
            requests << LabelRequest{p, 6, QSizeF(), 0};
        const QList<QRectF> placed = PlaceLabels(requests, 3, bounds);
        QVERIFY(!placed.at(0).isNull());
        QVERIFY(bounds.contains(placed.at(0))); // it went to the left
        QVERIFY(!placed.at(1).isNull());        // no room inside: outside rather than nowhere
        QVERIFY(!bounds.contains(placed.at(1)));
        QCOMPARE(placed.at(1), LabelCandidates(cornered).first());
    }

    void kindsAndPriorities() {
        const QStringList words = NavTypeWords();
        QCOMPARE(words.size(), 9);
        for (const QString& w : words) {
            QCOMPARE(NavTypeWord(NavKindOf(w)), w);
            QCOMPARE(NavKindOf(w.toUpper() + "  "), NavKindOf(w));
            QVERIFY(LabelPriority(NavKindOf(w)) > LabelPriority(NavKind::Unknown));
        }
        QCOMPARE(NavKindOf("Moon"), NavKind::Unknown);
        QVERIFY(LabelPriority(NavKind::Station) > LabelPriority(NavKind::Asteroid));
    }
};

QTEST_GUILESS_MAIN(TestMapView)
#include "tst_mapview.moc"
