#include "maps/locations.h"

#include "data/quotes.h"
#include "data/recordset.h"
#include "maps/mapgrid.h"
#include "views/modmain.h"

#include <QUrl>

#include <algorithm>

namespace {
QStringList column(const QString& sql) {
    Recordset rs;
    rs.open(sql);
    QStringList out;
    for (; !rs.eof(); rs.moveNext())
        out << NzString(rs.value(0));
    return out;
}

// Sectors filed under no system: none named, or one that SYSTEMS does not hold.
const QString kOrphanSectors = QStringLiteral(
    "SELECT SECTOR_NAME FROM SECTORS WHERE SYSTEM_SYSTEM_NAME IS NULL OR SYSTEM_SYSTEM_NAME NOT IN "
    "(SELECT SYSTEM_NAME FROM SYSTEMS) ORDER BY SECTOR_NAME");
} // namespace

QStringList MapSystems() {
    QStringList systems = column(QStringLiteral("SELECT SYSTEM_NAME FROM SYSTEMS ORDER BY SYSTEM_NAME"));
    if (!column(kOrphanSectors).isEmpty())
        systems << NoSystem;
    return systems;
}

QStringList MapSectors(const QString& system) {
    if (system == NoSystem)
        return column(kOrphanSectors);
    return column("SELECT SECTOR_NAME FROM SECTORS WHERE SYSTEM_SYSTEM_NAME = '" + FixQuotes(system) +
                  "' ORDER BY SECTOR_NAME");
}

QString SystemOfSector(const QString& sector) {
    Recordset rs;
    rs.open("SELECT SYSTEM_SYSTEM_NAME FROM SECTORS WHERE SECTOR_NAME = '" + FixQuotes(sector) + "'");
    if (rs.eof())
        return QString();
    const QString system = NzString(rs.value(0));
    rs.close();
    if (system.isEmpty())
        return NoSystem;
    Recordset known;
    known.open("SELECT SYSTEM_NAME FROM SYSTEMS WHERE SYSTEM_NAME = '" + FixQuotes(system) + "'");
    return known.eof() ? NoSystem : NzString(known.value(0));
}

QStringList MapNavTypes() {
    return column(QStringLiteral("SELECT NAV_TYPE FROM NAV_TYPES"));
}

QList<NavPoint> LoadSector(const QString& sector) {
    Recordset rs;
    rs.open("SELECT * FROM NAV_POINTS WHERE SECTOR_NAME = '" + FixQuotes(sector) + "'");
    const int name = rs.fieldIndex(QStringLiteral("NAV_POINT_NAME"));
    const int sec = rs.fieldIndex(QStringLiteral("SECTOR_NAME"));
    const int type = rs.fieldIndex(QStringLiteral("NAV_TYPE"));
    const int x = rs.fieldIndex(QStringLiteral("X_POINT"));
    const int y = rs.fieldIndex(QStringLiteral("Y_POINT"));
    const int comments = rs.fieldIndex(QStringLiteral("COMMENTS"));
    QList<NavPoint> out;
    for (; !rs.eof(); rs.moveNext()) {
        NavPoint p;
        p.name = NzString(rs.value(name));
        p.sector = NzString(rs.value(sec));
        p.type = NzString(rs.value(type));
        p.kind = NavKindOf(p.type);
        p.x = NzDouble(rs.value(x));
        p.y = NzDouble(rs.value(y));
        p.comments = NzString(rs.value(comments));
        out.append(p);
    }
    std::stable_sort(out.begin(), out.end(), [](const NavPoint& a, const NavPoint& b) {
        return a.name.compare(b.name, Qt::CaseInsensitive) < 0;
    });
    return out;
}

QRectF PointBounds(const QList<NavPoint>& points) {
    if (points.isEmpty())
        return QRectF();
    double l = points.first().x, r = l, b = points.first().y, t = b;
    for (const NavPoint& p : points) {
        l = std::min(l, p.x);
        r = std::max(r, p.x);
        b = std::min(b, p.y);
        t = std::max(t, p.y);
    }
    return QRectF(l, b, r - l, t - b);
}

PointDetails ReadPointDetails(const QString& sector, const QString& navPoint) {
    PointDetails d;
    const QString s = FixQuotes(sector), n = FixQuotes(navPoint);
    d.stations = column("SELECT STATION_NAME FROM STATIONS WHERE SECTORS_SECTOR = '" + s +
                        "' AND STATION_NAME = '" + n + "' ORDER BY STATION_NAME");
    Recordset rs;
    rs.open("SELECT MOB_NAME, SPAWN_RATE FROM MOBS_LOCATION WHERE SECTOR_NAME = '" + s +
            "' AND NAV_POINT = '" + n + "' ORDER BY MOB_NAME");
    for (; !rs.eof(); rs.moveNext())
        d.spawns.append({NzString(rs.value(0)), NzString(rs.value(1))});
    return d;
}

namespace {
QString esc(const QString& s) {
    return s.toHtmlEscaped();
}

QString linked(const QString& kind, const QString& name, bool links) {
    if (!links)
        return esc(name);
    return QStringLiteral("<a href=\"%1:%2\">%3</a>")
        .arg(kind, QString::fromLatin1(QUrl::toPercentEncoding(name)), esc(name));
}
} // namespace

QString PointDetailsHtml(const NavPoint& p, const PointDetails& d, bool links) {
    QString html = QStringLiteral("<b>%1</b><br>").arg(esc(p.name));
    html += esc(p.type.isEmpty() ? QStringLiteral("No type") : p.type) + QStringLiteral("<br>");
    html += QStringLiteral("X %1, Y %2").arg(CoordinateText(p.x), CoordinateText(p.y));
    if (!p.comments.trimmed().isEmpty())
        html += QStringLiteral("<p>%1</p>").arg(esc(p.comments.trimmed()).replace(QLatin1Char('\n'), "<br>"));
    else
        html += QStringLiteral("<br>");
    if (!d.stations.isEmpty()) {
        QStringList names;
        for (const QString& st : d.stations)
            names << linked(QStringLiteral("station"), st, links);
        html += (d.stations.size() == 1 ? QStringLiteral("Station: ") : QStringLiteral("Stations: ")) +
                names.join(QStringLiteral(", ")) + QStringLiteral("<br>");
    }
    if (d.spawns.isEmpty()) {
        html += QStringLiteral("No MOBs spawn here.");
    } else {
        html += QStringLiteral("MOBs spawning here:<ul style=\"margin-top:0; margin-bottom:0\">");
        for (const Spawn& sp : d.spawns)
            html += QStringLiteral("<li>%1 &ndash; %2</li>")
                        .arg(linked(QStringLiteral("mob"), sp.mob, links),
                             esc(sp.rate.isEmpty() ? QStringLiteral("rate unknown") : sp.rate));
        html += QStringLiteral("</ul>");
    }
    return html;
}

bool ParseDetailsLink(const QString& href, QString* kind, QString* name) {
    const int colon = int(href.indexOf(QLatin1Char(':')));
    if (colon <= 0)
        return false;
    const QString k = href.left(colon);
    if (k != QLatin1String("station") && k != QLatin1String("mob"))
        return false;
    const QString n = QUrl::fromPercentEncoding(href.mid(colon + 1).toUtf8());
    if (n.isEmpty())
        return false;
    *kind = k;
    *name = n;
    return true;
}
