#pragma once
// Where the names go beside the points. Each name tries the places a reader looks first (right of
// the point, then left, above, below, then the corners) and takes the first that covers no other
// point's marker and no name placed before it; a name with no free place is left out rather than
// written over another. More important points are placed first.
#include <QList>
#include <QRectF>
#include <QSizeF>

struct LabelRequest {
    QPointF anchor;    // the marker's centre
    double radius = 0; // half the marker's size
    QSizeF size;       // of the name's box
    int priority = 0;  // higher first; equal priorities keep their order
};

// The box of each request's name, or a null QRectF where it was left out. The boxes and markers
// lie in one plane (pixels at one scale); bounds, when valid, is the area names are kept inside
// while they find room there.
QList<QRectF> PlaceLabels(const QList<LabelRequest>& requests, double gap = 3,
                          const QRectF& bounds = QRectF());

// The candidate boxes of one name in the order they are tried.
QList<QRectF> LabelCandidates(const LabelRequest& request, double gap = 3);
