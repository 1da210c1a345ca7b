// The grid's steps, lines and labels, and the placing of names beside the points.
#include "maps/mapgrid.h"
#include "maps/maplabels.h"
#include "maps/mapview.h"
#include "maps/navtypes.h"

#include <QRandomGenerator>
#include <QTest>

#include <cmath>

class TestMapLabels : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void niceSteps_data() {
        QTest::addColumn<double>("minimum");
        QTest::addColumn<double>("step");
        QTest::newRow("exact power") << 100.0 << 100.0;
        QTest::newRow("just above a power") << 101.0 << 200.0;
        QTest::newRow("to five") << 240.0 << 500.0;
        QTest::newRow("to the next power") << 501.0 << 1000.0;
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

    void labelTexts_data() {
        QTest::addColumn<double>("value");
        QTest::addColumn<double>("step");
        QTest::addColumn<QString>("text");
        QTest::newRow("whole") << 2000.0 << 500.0 << "2000";
        QTest::newRow("negative") << -1500.0 << 500.0 << "-1500";
        QTest::newRow("tenths") << 0.3 << 0.1 << "0.3";
        QTest::newRow("hundredths") << -0.05 << 0.05 << "-0.05";
        QTest::newRow("no minus zero") << -1e-12 << 0.1 << "0.0";
    }
    void labelTexts() {
        QFETCH(double, value);
        QFETCH(double, step);
        QFETCH(QString, text);
        QCOMPARE(GridLabel(value, step), text);
    }

    void coordinateTexts_data() {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("whole") << 1250.0 << "1250";
        QTest::newRow("one decimal") << -340.5 << "-340.5";
        QTest::newRow("rounded to two") << 12.3456 << "12.35";
        QTest::newRow("tiny negative") << -0.001 << "0";
    }
    void coordinateTexts() {
        QFETCH(double, value);
        QFETCH(QString, text);
        QCOMPARE(CoordinateText(value), text);
    }

    void aLonePointHasItsNameOnTheRight() {
        LabelRequest r{QPointF(100, 100), 10, QSizeF(60, 14), 0};
        const QList<QRectF> placed = PlaceLabels({r});
        QCOMPARE(placed.first(), LabelCandidates(r).first());
        QVERIFY(placed.first().left() > 110 && std::fabs(placed.first().center().y() - 100) < 1e-9);
    }

    void aNeighbourPushesTheNameElsewhere() {
        // A second marker just right of the first takes the right-hand place away.
        const LabelRequest a{QPointF(100, 100), 10, QSizeF(60, 14), 5};
        const LabelRequest b{QPointF(140, 100), 10, QSizeF(60, 14), 1};
        const QList<QRectF> placed = PlaceLabels({a, b});
        QVERIFY(!placed.at(0).isNull() && !placed.at(1).isNull());
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

QTEST_GUILESS_MAIN(TestMapLabels)
#include "tst_maplabels.moc"
