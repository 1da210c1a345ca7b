// The charts of the sample sectors: each sector laid out as a player would find it, with a planet
// and its moon, the station and yard near the planet, gates at the edge towards the neighbouring
// sectors, an asteroid belt with its named rocks, beacons, and now and then a wreck or a weft. The
// first sector has a crowded belt, so that the map has names to keep apart. The charting runs after
// the rest of the world and draws from its own generator, so that every other record stays as the
// world's generator made it.
#include "data/sampledata_p.h"

#include <QHash>
#include <QPointF>
#include <QtMath>

#include <cmath>

namespace {

const QStringList rockNames = {"Cinder Rock",   "The Shoals",   "Gristle Rocks", "Hollow Tooth",
                               "Tarrow's Knot", "Greywash",     "The Anvils",    "Split Stone",
                               "Miner's Rest",  "Quiet Scree",  "Black Harrow",  "Ember Drift",
                               "Old Quarry",    "The Needles",  "Salt Cairn",    "Windless Reef",
                               "Corvid Rocks",  "Mallet Stone", "Thornback",     "The Cradle"};
const QStringList rockNotes = {"Ore-bearing rock; miners work the sunward face.",
                               "Loose scree, slow going for large hulls.", "Rich in metals, poor in cover.",
                               "Pirates wait in the shadow of the larger rocks.",
                               "Mostly ice; worth a look with a refinery nearby."};
const QStringList markerNames = {"Marker Alpha", "Marker Beta", "Marker Gamma", "Marker Delta"};

struct Chart {
    QRandomGenerator rng;
    explicit Chart(int sector) : rng(quint32(7100 + sector * 31)) {}
    double real(double lo, double hi) { return lo + (hi - lo) * rng.generateDouble(); }
    int whole(int lo, int hi) { return lo + int(rng.bounded(hi - lo + 1)); }
    QPointF polar(const QPointF& from, double r, double angle) {
        return {std::round(from.x() + r * std::cos(angle)), std::round(from.y() + r * std::sin(angle))};
    }
};

QString q(const QString& text) {
    return QLatin1Char('\'') + QString(text).replace(QLatin1Char('\''), QStringLiteral("''")) +
           QLatin1Char('\'');
}

// The nav points that the world already placed in a sector, by name, with their types.
QList<QPair<QString, QString>> pointsOf(sqlite3* db, const QString& sector) {
    QList<QPair<QString, QString>> out;
    sqlite3_stmt* st = nullptr;
    if (sqlite3_prepare_v2(
            db, "SELECT NAV_POINT_NAME, NAV_TYPE FROM NAV_POINTS WHERE SECTOR_NAME = ?1 ORDER BY rowid", -1,
            &st, nullptr) != SQLITE_OK)
        return out;
    const QByteArray s = sector.toUtf8();
    sqlite3_bind_text(st, 1, s.constData(), int(s.size()), SQLITE_TRANSIENT);
    while (sqlite3_step(st) == SQLITE_ROW)
        out.append({QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 0))),
                    QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 1)))});
    sqlite3_finalize(st);
    return out;
}

void move(SampleWorld& s, const QString& sector, const QString& name, const QPointF& at) {
    s.w.exec(QStringLiteral("UPDATE NAV_POINTS SET X_POINT = %1, Y_POINT = %2 WHERE SECTOR_NAME = %3 AND "
                            "NAV_POINT_NAME = %4")
                 .arg(at.x())
                 .arg(at.y())
                 .arg(q(sector), q(name)));
}

void add(SampleWorld& s, const QString& sector, const QString& name, const char* type, const QPointF& at,
         const QString& comment) {
    s.w.insert("NAV_POINTS", "NAV_POINT_NAME,SECTOR_NAME,COMMENTS,X_POINT,Y_POINT,NAV_TYPE",
               {name, sector, comment.isEmpty() ? QVariant() : QVariant(comment), at.x(), at.y(),
                QString::fromLatin1(type)});
}

void chartSector(SampleWorld& s, int i) {
    const QString& sector = s.sectors.at(i);
    const int n = int(s.sectors.size());
    Chart c(i);
    // Gates point round the ring of sectors: the next one ahead, the one before behind.
    const double ahead = c.real(0, 2 * M_PI);
    const QPointF planet = c.polar({0, 0}, c.real(2200, 3600), c.real(0, 2 * M_PI));
    const QPointF station = c.polar(planet, c.real(1900, 2500), c.real(0, 2 * M_PI));
    const double beltAngle = ahead + M_PI / 2 + c.real(-0.6, 0.6);
    const double beltRadius = c.real(5200, 6000);
    const QPointF beltMiddle = c.polar({0, 0}, beltRadius, beltAngle);

    QList<QPointF> taken;
    for (const auto& [name, type] : pointsOf(s.w.db(), sector)) {
        QPointF at;
        if (type == QLatin1String("Planet"))
            at = planet;
        else if (type == QLatin1String("Satellite"))
            at = c.polar(planet, c.real(1000, 1300), c.real(0, 2 * M_PI));
        else if (type == QLatin1String("Station"))
            at = station;
        else if (type == QLatin1String("Ship Yard"))
            at = c.polar(station, c.real(800, 1100), c.real(0, 2 * M_PI));
        else if (type == QLatin1String("Gate"))
            at = c.polar({0, 0}, c.real(7000, 7600), ahead);
        else if (type == QLatin1String("Asteroid"))
            at = beltMiddle;
        else if (type == QLatin1String("Weft"))
            at = c.polar({0, 0}, c.real(6200, 7000), ahead + M_PI + c.real(-1.2, 1.2));
        else if (type == QLatin1String("Ship"))
            at = c.polar({0, 0}, c.real(3000, 6000), c.real(0, 2 * M_PI));
        else
            at = c.polar({0, 0}, c.real(4000, 5200), ahead + c.real(0.8, 2.4));
        move(s, sector, name, at);
        taken << at;
    }

    const QString previous = s.sectors.at((i + n - 1) % n);
    const QPointF back = c.polar({0, 0}, c.real(7000, 7600), ahead + M_PI + c.real(-0.5, 0.5));
    taken << back;
    add(s, sector, QStringLiteral("Gate to ") + previous, "Gate", back,
        QStringLiteral("Jump gate to %1.").arg(previous));

    // The belt: a few named rocks along its arc, many in the first sector.
    const int rocks = i == 0 ? 34 : c.whole(3, 6);
    QStringList used;
    for (int k = 0; k < rocks; ++k) {
        QString name;
        if (i == 0) {
            name = QStringLiteral("Aldra Belt %1").arg(k + 1, 2, 10, QLatin1Char('0'));
        } else {
            do
                name = rockNames.at(c.whole(0, int(rockNames.size()) - 1));
            while (used.contains(name));
            used << name;
        }
        const double spread = i == 0 ? 2 * M_PI * k / rocks + c.real(-0.05, 0.05) : c.real(-0.45, 0.45);
        const QPointF at = c.polar({0, 0}, beltRadius + c.real(-450, 450), (i == 0 ? 0 : beltAngle) + spread);
        taken << at;
        add(s, sector, name, "Asteroid", at,
            c.whole(0, 2) == 0 ? rockNotes.at(c.whole(0, int(rockNotes.size()) - 1)) : QString());
    }
    // Beacons stand in open space, away from everything else.
    const int markers = 1 + i % 3;
    for (int k = 0; k < markers; ++k) {
        QPointF at;
        for (int tries = 0; tries < 30; ++tries) {
            at = c.polar({0, 0}, c.real(1200, 6800), c.real(0, 2 * M_PI));
            bool clear = true;
            for (const QPointF& t : taken)
                clear = clear && std::hypot(t.x() - at.x(), t.y() - at.y()) >= 1200;
            if (clear)
                break;
        }
        taken << at;
        add(s, sector, markerNames.at(k), "Navigation Point", at, QStringLiteral("Survey beacon."));
    }
}

} // namespace

void chartPlaces(SampleWorld& s) {
    for (int i = 0; i < s.sectors.size(); ++i)
        chartSector(s, i);
}
