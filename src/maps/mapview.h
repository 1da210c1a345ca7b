#pragma once
// Where the sector's coordinates land on the screen. The map shows a window onto the sector: a world
// point at its centre and a scale in pixels per sector unit. X grows to the right and Y grows upwards,
// as on a chart, so screen rows run the other way. Zooming keeps the point under the pointer where it
// is; the scale stays between the limits that the map sets from the sector's size.
#include <QMarginsF>
#include <QPointF>
#include <QRectF>
#include <QSizeF>

class MapView {
public:
    QPointF toScreen(QPointF world) const;
    QPointF toWorld(QPointF screen) const;
    QRectF toScreen(const QRectF& world) const;
    // The part of the sector that the viewport shows.
    QRectF visibleWorld() const;

    void setViewport(QSizeF size); // keeps the centre
    QSizeF viewport() const { return m_viewport; }
    void setCentre(QPointF world) { m_centre = world; }
    QPointF centre() const { return m_centre; }
    // Sets the scale within the limits; returns the scale set.
    double setScale(double pixelsPerUnit);
    double scale() const { return m_scale; }
    void setScaleLimits(double minimum, double maximum);
    double minScale() const { return m_min; }
    double maxScale() const { return m_max; }

    // Multiplies the scale by factor (within the limits) keeping the world point under the screen
    // point still. Returns false when the scale was already at the limit.
    bool zoomAt(QPointF screen, double factor);
    // Moves the picture by a screen distance, as a drag of the map does.
    void panBy(QPointF screenDelta);
    // The scale and centre that show the whole rectangle inside the viewport less the margins (in
    // pixels); a rectangle smaller than minExtent units across is widened to it around its centre.
    // The scale is not clamped: the fitted scale is what the limits are set from.
    void fit(const QRectF& world, const QMarginsF& margins, double minExtent);
    static double fitScale(QSizeF viewport, const QRectF& world, const QMarginsF& margins, double minExtent);

private:
    QSizeF m_viewport{1, 1};
    QPointF m_centre;
    double m_scale = 1;
    double m_min = 1e-9;
    double m_max = 1e9;
};

// One scroll bar over the map: the whole extent that can be scrolled and the viewport's place in
// it, in pixels at the current scale. Vertical bars count from the top of the world (its largest Y).
struct ScrollAxis {
    int minimum = 0;
    int maximum = 0;
    int page = 0;
    int value = 0;
};
// The scrollable extent is the content widened by half a viewport on every side, and always holds
// what is visible now, so that the bars never jump the picture when they are set.
ScrollAxis horizontalScroll(const MapView& view, const QRectF& content);
ScrollAxis verticalScroll(const MapView& view, const QRectF& content);
// The centre that a bar's value stands for (the other coordinate kept).
QPointF centreForHorizontal(const MapView& view, int value);
QPointF centreForVertical(const MapView& view, int value);

// How many pixels across a point's marker is drawn: large where points stand far apart on the
// screen, smaller as they crowd (count points over content, a rectangle in sector units, at the
// scale), never below minimum or above maximum.
double MarkerSize(int count, const QRectF& content, double scale, double minimum = 12, double maximum = 26);
