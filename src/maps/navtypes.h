#pragma once
// The nine kinds of navigation point, each with its own picture on the map, and how much each matters
// when names compete for room (a station's or a gate's name is kept before an asteroid's).
#include <QString>
#include <QStringList>

enum class NavKind {
    Asteroid,
    Gate,
    NavigationPoint,
    Planet,
    Satellite,
    Ship,
    ShipYard,
    Station,
    Weft,
    Unknown
};

// The kind of a NAV_TYPE word, compared without regard to case; Unknown for any other word.
NavKind NavKindOf(const QString& navType);
// The word of a kind as NAV_TYPES holds it ("Ship Yard"); empty for Unknown.
QString NavTypeWord(NavKind kind);
// The nine words in NAV_TYPES' order.
QStringList NavTypeWords();
// Higher names are placed first.
int LabelPriority(NavKind kind);
