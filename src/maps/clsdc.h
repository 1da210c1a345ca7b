#pragma once
// The map's drawing surface: one painter with the map's colours, and the few things the map draws
// again and again (the grid and its labels, markers, names on their backdrops, the selection, the
// scale bar). Everything is drawn in screen pixels; the caller decides what is visible.
#include "maps/mapgrid.h"
#include "maps/navtypes.h"

#include <QColor>
#include <QFont>
#include <QRectF>

class MapView;
class QPainter;
class QStaticText;

namespace mapcolours {
const QColor Space(0x0b, 0x12, 0x20);
const QColor SpaceEdge(0x05, 0x09, 0x12);
// The grid and the bands are opaque: blending a line down the whole map costs many times more than
// setting its pixels, so the line colours are worked out against the space behind them.
const QColor MinorLine(0x17, 0x23, 0x3a);
const QColor MajorLine(0x2b, 0x3f, 0x5e);
const QColor AxisLine(0x53, 0x72, 0x9d);
const QColor Band(0x07, 0x0c, 0x18);
const QColor BandText(0xa9, 0xbe, 0xdc);
const QColor LabelText(0xe8, 0xee, 0xf8);
const QColor LabelBack(0x08, 0x0d, 0x1a, 175);
const QColor Selection(0xff, 0xd8, 0x4a);
const QColor Hover(0x9f, 0xe6, 0xff);
} // namespace mapcolours

class clsDC {
public:
    clsDC(QPainter& painter, double devicePixelRatio);

    QPainter& painter() { return m_p; }

    void fillBackground(const QRectF& rect);
    void drawGrid(const Grid& grid, const MapView& view);
    // The coordinates of the labelled lines in bands along the top (X) and the left (Y) edges.
    void drawGridLabels(const Grid& grid, const MapView& view, const QFont& font);
    void drawMarker(NavKind kind, const QPointF& centre, int size);
    // A name on its backdrop; the text is drawn from a prepared static text when one is given.
    void drawLabel(const QRectF& box, const QString& text, const QStaticText* prepared, bool strong);
    // A ring around a marker: the selection (solid) or the point under the pointer (soft).
    void drawRing(const QPointF& centre, double radius, bool selection);
    // A marker drawn faintly with a dashed ring: where a location being placed will go.
    void drawGhost(NavKind kind, const QPointF& centre, int size);
    // A bar of a round length in the bottom left corner, with its length written under it.
    void drawScaleBar(const MapView& view, const QFont& font);
    // A line of advice in the middle of the map (an empty sector).
    void drawNotice(const QRectF& rect, const QString& text, const QFont& font);

    // The height of the bands that hold the grid's labels.
    static int bandHeight(const QFont& font);

private:
    QPainter& m_p;
    double m_dpr;
};
