// vosk-bench: how fast the main list loads, sorts and finds at 10,000 to 1,000,000 rows, how much
// memory a loaded list takes, how fast a 10,000-node build tree is built, and how the program itself
// starts and switches categories on 1,000,000 rows. Every figure is the median of several runs after
// a warm-up run, printed with the lowest and highest run and its goal.
//
//   vosk-bench [--data DIR] [--runs N] [--sizes 10000,100000,1000000] [--only fill,find,sort,tree,memory,...]
//
// The figure groups of the other parts (figures.h) follow the list's; --only names them too.
#include "appchild.h"
#include "benchutil.h"
#include "figures.h"
#include "listbench.h"
#include "listfigures.h"

#include "data/database.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>

#include <cstdio>
#include <cstring>

using namespace bench;

int main(int argc, char** argv) {
    // Some figures draw windows: without a display they draw offscreen.
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
        qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // The program as a player starts it makes its own application object: nothing before it.
    if (argc > 1 && std::strcmp(argv[1], "--app-child") == 0)
        return appChild(argc, argv);
    QApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption dataOpt(
        QStringLiteral("data"), QStringLiteral("Folder of the synthetic databases."), QStringLiteral("dir"),
        QDir::temp().filePath(QStringLiteral("vosk-bench-data")));
    const QCommandLineOption runsOpt(QStringLiteral("runs"),
                                     QStringLiteral("Timed runs per figure (median)."), QStringLiteral("n"),
                                     QStringLiteral("5"));
    const QCommandLineOption sizesOpt(QStringLiteral("sizes"), QStringLiteral("Equipment rows per database."),
                                      QStringLiteral("list"), QStringLiteral("10000,100000,1000000"));
    const QCommandLineOption childOpt(QStringLiteral("memory-child"), QStringLiteral("(internal)"),
                                      QStringLiteral("file"));
    const QCommandLineOption shownOpt(QStringLiteral("memory-shown"), QStringLiteral("(internal)"));
    const QStringList listGroups = {QStringLiteral("fill"), QStringLiteral("find"), QStringLiteral("sort"),
                                    QStringLiteral("tree"), QStringLiteral("memory")};
    QStringList groups = listGroups;
    for (const NamedGroup& g : registeredFigures())
        groups.append(g.name);
    const QCommandLineOption onlyOpt(QStringLiteral("only"),
                                     QStringLiteral("Only these figures: ") + groups.join(u',') + u'.',
                                     QStringLiteral("list"), groups.join(u','));
    parser.addOptions({dataOpt, runsOpt, sizesOpt, childOpt, shownOpt, onlyOpt});
    parser.process(app);
    try {
        if (parser.isSet(childOpt))
            return memoryChild(parser.value(childOpt), parser.isSet(shownOpt));

        const int runs = qMax(5, parser.value(runsOpt).toInt());
        const QStringList only = parser.value(onlyOpt).split(QLatin1Char(','));
        std::printf(
            "vosk-bench: medians of %d runs after a warm-up, [lowest..highest of the runs]; the goals "
            "are judged by the CPU time of this program, the wall clock is shown below it\n",
            runs);
        QString largest;
        const bool listFigures = std::any_of(listGroups.begin(), listGroups.end(),
                                             [&](const QString& g) { return only.contains(g); });
        const QStringList sizes =
            listFigures ? parser.value(sizesOpt).split(QLatin1Char(','), Qt::SkipEmptyParts) : QStringList();
        for (const QString& s : sizes) {
            const qint64 size = s.toLongLong();
            QString error;
            const QString file = ensureDatabase(parser.value(dataOpt), size, size == 10000, &error);
            if (file.isEmpty()) {
                std::printf("cannot make the %lld-row database: %s\n", size, qPrintable(error));
                return 1;
            }
            std::printf("--- %lld equipment rows\n", size);
            openDatabase(file);
            if (only.contains(QLatin1String("fill")))
                fillFigures(size, runs);
            if (size == 100000 && only.contains(QLatin1String("find")))
                findFigures(runs);
            if (size == 1000000 && only.contains(QLatin1String("sort")))
                sortFigures(runs);
            if (size == 1000000 && only.contains(QLatin1String("memory")))
                largest = file;
            if (size == 10000 && only.contains(QLatin1String("tree")))
                treeFigure(runs);
            db().close();
        }
        if (!largest.isEmpty())
            memoryFigure(largest);
        const Context context{parser.value(dataOpt), runs};
        for (const NamedGroup& g : registeredFigures()) {
            if (!only.contains(g.name))
                continue;
            std::printf("--- %s\n", qPrintable(g.name));
            g.group(context);
        }
    } catch (const VbError& e) {
        std::printf("database error %ld: %s\n", e.number, qPrintable(e.description));
        return 1;
    }
    return 0;
}
