#pragma once
// Large made-up databases for the benchmark and for tests of deep or broken recipes. Names are
// generated ("Élan Beam 0000001", "Synthetic Ore 0000123"), values are drawn from a fixed seed, so the
// same call gives the same file.
#include <QString>

struct sqlite3;

struct SyntheticCounts {
    qint64 equipment = 0; // EQUIPMENTS rows (each with its statistics row, devices have none)
    qint64 components = 0;
    qint64 rawMaterials = 0;
    qint64 items = 0;
    qint64 mobs = 0;
    qint64 stations = 0;
};

// Creates a new database at path (refuses an existing file) holding equipmentCount equipment rows of
// every type in turn, with their statistics, classes, buy locations and recipes, plus components, raw
// materials, items, MOBs with drops and places in proportion (at least a few of each). One
// transaction, prepared inserts. *counts receives what was written.
bool GenerateSynthetic(const QString& path, qint64 equipmentCount, QString* error = nullptr,
                       SyntheticCounts* counts = nullptr);
// The same on an open database with the empty version-6 layout (lookups are filled here).
bool GenerateSynthetic(sqlite3* db, qint64 equipmentCount, QString* error = nullptr,
                       SyntheticCounts* counts = nullptr);

// Adds to an existing database an equipment rootName (an engine) whose full build tree, as the build
// view expands it, has exactly nodeCount nodes counting the root: each node has up to fanOut children,
// components for the first levels (EQUIPMENTS_COMPONENTS, then COMPONENTS_UPGRADE_FROM), raw
// materials refined from raw materials below (COMPONENTS_RAW_MATERIALS, RAW_MATERIALS_REFINES_FROM).
// Every name is new (rootName followed by " Part " and a number), so the tree has no repeats.
bool GenerateBuildTree(const QString& path, const QString& rootName, int nodeCount, int fanOut = 4,
                       QString* error = nullptr);
bool GenerateBuildTree(sqlite3* db, const QString& rootName, int nodeCount, int fanOut = 4,
                       QString* error = nullptr);

// Adds recipes that are made from themselves, for the tests that the build trees stop with an error:
// an equipment built from a component that upgrades from a second component that upgrades from the
// first, and two raw materials each refined from the other.
struct RecipeCycle {
    QString equipment = QStringLiteral("Cycle Engine");
    QString componentA = QStringLiteral("Cycle Coil A");
    QString componentB = QStringLiteral("Cycle Coil B");
    QString rawA = QStringLiteral("Cycle Ore A");
    QString rawB = QStringLiteral("Cycle Ore B");
};
bool AddRecipeCycle(const QString& path, const RecipeCycle& names = RecipeCycle(), QString* error = nullptr);
bool AddRecipeCycle(sqlite3* db, const RecipeCycle& names = RecipeCycle(), QString* error = nullptr);
