#pragma once
// Shared state of the sample world while it is written: the names made so far, so that later
// records (recipes, drops, locations) only refer to records that exist, and always to earlier ones,
// which keeps the recipes free of cycles.
#include "data/sampledata_writer.h"
#include "data/schema.h"
#include "data/sqlfunctions.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QPair>
#include <QRandomGenerator>
#include <QStringList>
#include <sqlite3.h>

struct SampleWorld {
    explicit SampleWorld(RowWriter& writer) : w(writer), rng(20261121) {}

    RowWriter& w;
    QRandomGenerator rng;

    QStringList sectors;
    QList<QPair<QString, QString>> navPoints; // sector, nav point
    QStringList stations;
    QStringList rawMaterials; // in order of refinement: sources come first
    QStringList items;
    QStringList plainEquipment; // equipment built only from materials: components may use it
    QStringList components;     // in order: upgrade sources and parts come first
    QStringList equipment;
    QStringList mobs;

    int below(int n) { return n <= 0 ? 0 : int(rng.bounded(n)); }
    int between(int lo, int hi) { return lo + below(hi - lo + 1); }
    bool chance(int percent) { return below(100) < percent; }
    const QString& pick(const QStringList& from) { return from.at(below(int(from.size()))); }
    // Distinct picks, at most n, from the list (or from its first `upTo` entries).
    QStringList some(const QStringList& from, int n, int upTo = -1);
    // A LAST_UPDATED text within the last two years of the game's calendar.
    QString date();
    // Flags CHECK, PERSONAL_DB, UPDATED set on a few records.
    bool flag(int percent) { return chance(percent); }
};

void addLookups(RowWriter& w);
void addPlaces(SampleWorld& s);
void addMaterials(SampleWorld& s); // raw materials and items
void addComponents(SampleWorld& s);
void addEquipment(SampleWorld& s);
void addMobs(SampleWorld& s);
// Lays the sectors out on their maps and adds the rest of their charted places; runs last.
void chartPlaces(SampleWorld& s);

// One EQUIPMENTS row with generated prices, flags and picture (no statistics, recipes or specials).
void writeEquipment(SampleWorld& s, const QString& name, const QString& type, int level);

// Opens an existing file, or creates a new one first when create is set, and runs work on it.
template <typename Work>
inline bool withDatabase(const QString& path, bool create, QString* error, Work work) {
    if (create) {
        if (!CreateDatabase(path, error))
            return false;
    } else if (!QFileInfo::exists(path)) {
        if (error)
            *error = QStringLiteral("The database \"%1\" does not exist.").arg(path);
        return false;
    }
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) {
        if (error)
            *error =
                QStringLiteral("Cannot open \"%1\": %2").arg(path, QString::fromUtf8(sqlite3_errmsg(db)));
        sqlite3_close(db);
        return false;
    }
    RegisterSqlFunctions(db);
    const bool ok = work(db);
    sqlite3_close(db);
    if (!ok && create)
        QFile::remove(path);
    return ok;
}
