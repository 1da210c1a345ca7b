#pragma once
// The places of the map as the database holds them: systems, their sectors, a sector's navigation
// points, and what is found at a point (the stations of that name and the MOBs that spawn there).
// Readers throw VbError for the window's handler to report.
#include "maps/navtypes.h"

#include <QList>
#include <QRectF>
#include <QString>
#include <QStringList>

struct NavPoint {
    QString name;
    QString sector;
    QString type; // the NAV_TYPE word as stored
    NavKind kind = NavKind::Unknown;
    double x = 0;
    double y = 0;
    QString comments;
};

// The chooser's entry for sectors whose system is missing or not in SYSTEMS.
inline const QString NoSystem = QStringLiteral("(No System)");

// The systems by name; NoSystem last when some sector belongs to none.
QStringList MapSystems();
// The sectors of a system by name (NoSystem: the sectors of no known system).
QStringList MapSectors(const QString& system);
// The system a sector is filed under in the choosers: NoSystem for a sector of no known system,
// empty for a sector that is not in SECTORS.
QString SystemOfSector(const QString& sector);
// The NAV_TYPES words in table order.
QStringList MapNavTypes();

// A sector's navigation points, ordered by name.
QList<NavPoint> LoadSector(const QString& sector);
// The smallest rectangle holding every point (a null rectangle for none).
QRectF PointBounds(const QList<NavPoint>& points);

struct Spawn {
    QString mob;
    QString rate;
};
struct PointDetails {
    QStringList stations; // stations of the sector named as the point
    QList<Spawn> spawns;  // MOBs spawning at the point, by name
};
PointDetails ReadPointDetails(const QString& sector, const QString& navPoint);

// The details of a point as rich text: name, type, position, comments, stations, spawning MOBs with
// their rates. With links, stations and MOBs are anchors "station:NAME" and "mob:NAME".
QString PointDetailsHtml(const NavPoint& p, const PointDetails& d, bool links = false);
// The anchor of a link in that text back to its kind ("station", "mob") and name.
bool ParseDetailsLink(const QString& href, QString* kind, QString* name);
