#pragma once
// The coordinate grid: round steps (1, 2 or 5 times a power of ten) chosen so that the labelled lines
// stay a comfortable distance apart at any zoom, the fainter lines between them, and the texts of
// their labels.
#include <QList>
#include <QString>

class MapView;

// The smallest round step that is at least minimum (a positive number).
double NiceStep(double minimum);

struct GridLine {
    double value;  // the X or Y of the line
    bool labelled; // a main line, with its coordinate written at the edge
    bool axis;     // the line through 0
};

struct Grid {
    double step = 0;            // between labelled lines
    double minor = 0;           // between all lines; equals step when the fainter lines would crowd
    QList<GridLine> vertical;   // lines of constant X, left to right
    QList<GridLine> horizontal; // lines of constant Y, bottom to top
};

// The lines crossing the visible part of the sector: labelled lines at least labelSpacing pixels apart,
// fainter ones between them when they would be at least minorSpacing pixels apart.
Grid MakeGrid(const MapView& view, double labelSpacing = 90, double minorSpacing = 14);

// A coordinate as a grid label: as many decimals as the step needs, no "-0".
QString GridLabel(double value, double step);
// A coordinate as the map writes it elsewhere (hover texts, the pointer readout): at most two
// decimals, trailing zeros dropped.
QString CoordinateText(double value);
