#pragma once
// Figures beyond the main list's: each part of the program that has a speed goal registers its own
// figure group from its own source file, and vosk-bench runs every group that --only names (all of
// them by default) after the list figures. Widgets can be used: the program runs a QApplication
// (offscreen when there is no display).
#include <QString>

namespace bench {

struct Context {
    QString dataFolder; // the folder of the synthetic databases (ensureDatabase)
    int runs = 5;       // timed runs per figure (medianSeconds)
};

using FigureGroup = void (*)(const Context&);

// Registers a group under a name for --only; returns true so it can initialise a static.
bool registerFigures(const char* name, FigureGroup group);

// The groups registered, in the order of their names.
struct NamedGroup {
    QString name;
    FigureGroup group;
};
QList<NamedGroup> registeredFigures();

} // namespace bench

// In a figure file: VOSK_BENCH_FIGURES("map", mapFigures);
#define VOSK_BENCH_FIGURES(name, fn)                                                                         \
    static const bool vosk_bench_registered_##fn = bench::registerFigures(name, fn)
