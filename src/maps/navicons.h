#pragma once
// The pictures of the nine kinds of navigation point, drawn as vector shapes so that they are sharp
// at any size and on any screen: an asteroid, a jump gate, a navigation beacon, a ringed planet, a
// moon on its orbit, a ship, a ship yard, a station and the swirl of a weft; a question mark for a
// type the map does not know.
#include "maps/navtypes.h"

#include <QIcon>
#include <QPixmap>

class QPainter;
class QPointF;

// Draws the picture centred on centre, size pixels across.
void DrawNavPicture(QPainter& p, NavKind kind, const QPointF& centre, double size);
// The picture rendered for a screen: size logical pixels at the device pixel ratio, kept in a cache.
QPixmap NavPixmap(NavKind kind, int size, double devicePixelRatio);
// The picture as an icon for lists and choosers (several sizes).
QIcon NavIcon(NavKind kind);
