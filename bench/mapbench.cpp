// The sector map: how long one picture of a 5,000-point sector takes to draw, with the whole sector in
// view, while panning and while zooming (each zoom step places the names again), at normal and at
// double pixel density; and how long the sector takes to read. The goal is a frame within 16 ms.
#include "benchutil.h"
#include "figures.h"
#include "listbench.h"

#include "data/database.h"
#include "data/schema.h"
#include "data/sqlfunctions.h"
#include "maps/ctlmap.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QRandomGenerator>

#include <sqlite3.h>

#include <cmath>
#include <cstdio>
#include <functional>
#include <vector>

namespace {

constexpr int kPoints = 5000;
const QString kSector = QStringLiteral("Bench Sector");

// A sector of kPoints points of every kind spread over 20,000 units, with names as long as real ones.
QString ensureMapDatabase(const QString& dir, QString* error) {
    QDir().mkpath(dir);
    const QString file = QDir(dir).filePath(QStringLiteral("map-%1.vosk").arg(kPoints));
    if (QFileInfo::exists(file))
        return file;
    const QString part = file + QStringLiteral(".part");
    QFile::remove(part);
    if (!CreateDatabase(part, error))
        return QString();
    sqlite3* db = nullptr;
    sqlite3_open_v2(part.toUtf8().constData(), &db, SQLITE_OPEN_READWRITE, nullptr);
    RegisterSqlFunctions(db);
    sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
    sqlite3_stmt* st = nullptr;
    sqlite3_prepare_v2(
        db,
        "INSERT INTO NAV_POINTS (NAV_POINT_NAME, SECTOR_NAME, COMMENTS, X_POINT, Y_POINT, NAV_TYPE) "
        "VALUES (?1, ?2, ?3, ?4, ?5, ?6)",
        -1, &st, nullptr);
    const char* const types[] = {"Asteroid", "Gate",      "Navigation Point", "Planet", "Satellite",
                                 "Ship",     "Ship Yard", "Station",          "Weft"};
    QRandomGenerator rng(5000);
    const QByteArray sector = kSector.toUtf8();
    bool ok = st != nullptr;
    for (int i = 0; ok && i < kPoints; ++i) {
        const QByteArray name = QStringLiteral("Charted Place %1").arg(i, 4, 10, QLatin1Char('0')).toUtf8();
        sqlite3_bind_text(st, 1, name.constData(), int(name.size()), SQLITE_TRANSIENT);
        sqlite3_bind_text(st, 2, sector.constData(), int(sector.size()), SQLITE_TRANSIENT);
        sqlite3_bind_null(st, 3);
        sqlite3_bind_double(st, 4, std::round(rng.bounded(20000.0) - 10000));
        sqlite3_bind_double(st, 5, std::round(rng.bounded(20000.0) - 10000));
        sqlite3_bind_text(st, 6, types[rng.bounded(9)], -1, SQLITE_STATIC);
        ok = sqlite3_step(st) == SQLITE_DONE;
        sqlite3_reset(st);
    }
    sqlite3_finalize(st);
    sqlite3_exec(db, ok ? "COMMIT" : "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close(db);
    if (!ok) {
        *error = QStringLiteral("could not write the bench sector");
        return QString();
    }
    QFile::rename(part, file);
    return file;
}

// Qt's raster engine hands parts of large fills to helper threads: the frames are timed by the CPU
// time of the whole process, every thread of it (as every figure is), divided by the frames drawn.
bench::Timing medianProcessSeconds(int runs, const std::function<void()>& body, int frames = 1) {
    std::vector<double> cpu, wall;
    for (int i = 0; i <= runs; ++i) {
        bench::timeOnce(body, cpu, wall);
        if (i == 0) { // the warm-up
            cpu.clear();
            wall.clear();
        }
    }
    for (double& v : cpu)
        v /= frames;
    for (double& v : wall)
        v /= frames;
    return bench::timingOf(cpu, wall);
}

// Draws one picture of the map as the screen would get it.
void frame(ctlMap& map, QImage& target) {
    QPainter p(&target);
    map.viewport()->render(&p);
}

void mapFigures(const bench::Context& ctx) {
    QString error;
    const QString file = ensureMapDatabase(ctx.dataFolder, &error);
    if (file.isEmpty()) {
        std::printf("map figures skipped: %s\n", qPrintable(error));
        return;
    }
    bench::openDatabase(file);
    ctlMap map;
    map.resize(1280, 800);
    map.show();
    const bench::Timing load = bench::medianSeconds(ctx.runs, [&] { map.LoadSector(kSector); });
    bench::info(QStringLiteral("map: read a sector of %1 points and prepare it").arg(map.points().size()),
                load);
    map.fitToSector();

    QImage image(map.viewport()->size(), QImage::Format_ARGB32_Premultiplied);
    const bench::Timing whole = medianProcessSeconds(ctx.runs, [&] { frame(map, image); });
    bench::report(QStringLiteral("map: one frame, whole sector of %1 points in view").arg(kPoints), whole,
                  0.016);

    // Panning: the names keep their places, so a frame only moves them.
    constexpr int kFrames = 40;
    map.zoomIn();
    const bench::Timing pan = medianProcessSeconds(
        ctx.runs,
        [&] {
            for (int i = 0; i < kFrames; ++i) {
                map.panBy(QPointF(i < kFrames / 2 ? 9 : -9, 5));
                frame(map, image);
            }
        },
        kFrames);
    bench::report(QStringLiteral("map: one frame while panning, %1 points, 1.5x zoom").arg(kPoints), pan,
                  0.016);

    // Zooming: every step changes the scale, so the names are placed again each frame.
    const QPointF pointer(700, 380);
    const bench::Timing zoom = medianProcessSeconds(
        ctx.runs,
        [&] {
            for (int i = 0; i < kFrames; ++i) {
                map.zoomAt(pointer, i < kFrames / 2 ? 1.08 : 1 / 1.08);
                frame(map, image);
            }
        },
        kFrames);
    bench::report(QStringLiteral("map: one frame while zooming, %1 points, names placed anew").arg(kPoints),
                  zoom, 0.016);

    // A screen of twice the pixel density: the pictures are drawn at their device size.
    QImage sharp(map.viewport()->size() * 2, QImage::Format_ARGB32_Premultiplied);
    sharp.setDevicePixelRatio(2);
    map.fitToSector();
    const bench::Timing hidpi = medianProcessSeconds(ctx.runs, [&] { frame(map, sharp); });
    bench::info(QStringLiteral("map: one frame, whole sector, device pixel ratio 2"), hidpi);
    map.zoomIn();
    const bench::Timing hidpiPan = medianProcessSeconds(
        ctx.runs,
        [&] {
            for (int i = 0; i < kFrames; ++i) {
                map.panBy(QPointF(i < kFrames / 2 ? 9 : -9, 5));
                frame(map, sharp);
            }
        },
        kFrames);
    bench::info(QStringLiteral("map: one frame while panning at 1.5x, device pixel ratio 2"), hidpiPan);
    const bench::Timing hidpiZoom = medianProcessSeconds(
        ctx.runs,
        [&] {
            for (int i = 0; i < kFrames; ++i) {
                map.zoomAt(pointer, i < kFrames / 2 ? 1.08 : 1 / 1.08);
                frame(map, sharp);
            }
        },
        kFrames);
    bench::info(QStringLiteral("map: one frame while zooming from 1.5x, device pixel ratio 2"), hidpiZoom);
    db().close();
}

} // namespace

VOSK_BENCH_FIGURES("map", mapFigures);
