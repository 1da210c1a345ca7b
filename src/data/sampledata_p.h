#pragma once
// Shared state of the sample world while it is written: the names made so far, so that later
// records (recipes, drops, locations) only refer to records that exist, and always to earlier ones,
// which keeps the recipes free of cycles.
#include "data/sampledata_writer.h"

#include <QDateTime>
#include <QPair>
#include <QRandomGenerator>
#include <QStringList>

struct SampleWorld {
    explicit SampleWorld(RowWriter& writer) : w(writer), rng(20261121) {}

    RowWriter& w;
    QRandomGenerator rng;

    QStringList sectors;
    QList<QPair<QString, QString>> navPoints; // sector, nav point
    QStringList stations;
    QStringList rawMaterials;    // in order of refinement: sources come first
    QStringList items;
    QStringList plainEquipment;  // equipment built only from materials: components may use it
    QStringList components;      // in order: upgrade sources and parts come first
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
void addMaterials(SampleWorld& s);   // raw materials and items
void addComponents(SampleWorld& s);
void addEquipment(SampleWorld& s);
void addMobs(SampleWorld& s);

// One EQUIPMENTS row with generated prices, flags and picture (no statistics, recipes or specials).
void writeEquipment(SampleWorld& s, const QString& name, const QString& type, int level);
