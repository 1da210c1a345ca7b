// vosk-bench: how fast the main list fills, sorts and finds at 10,000 to 1,000,000 rows, how much
// memory a filled list takes, and how fast a 10,000-node build tree is built. Every figure is the
// median of several runs after a warm-up run, printed with its goal.
//
//   vosk-bench [--data DIR] [--runs N] [--sizes 10000,100000,1000000] [--only fill,find,sort,tree,memory,...]
//
// The figure groups of the other parts (figures.h) follow the list's; --only names them too.
#include "benchutil.h"
#include "figures.h"
#include "listbench.h"

#include "data/database.h"
#include "lists/finditem.h"
#include "lists/listmodel.h"
#include "views/buildtree.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QProcess>

#include <cstdio>

using namespace bench;

namespace {

struct CountingSink : TreeNodeSink {
    int nodes = 0;
    void addNode(const QString&, const QString&, const QString&, int) override { ++nodes; }
};

// Ten columns of every kind the list shows: names, repeated texts, whole numbers, a fraction, dates.
QString findSql() {
    return QStringLiteral(
        "SELECT EQUIPMENT_NAME, TYPE, MANUFACTURER, LVL, COMMENTS, PRICE AS PURCHASE_PRICE, QUALITY, "
        "COST_TO_MANUFACTURE AS MANUFACTURING_FEE, LAST_UPDATED, (PRICE/LVL) AS PRICE_PER_LEVEL FROM EQUIPMENTS");
}

void fillFigures(qint64 size, int runs) {
    const QString sql = equipmentListSql();
    qint64 rows = 0;
    const Timing bare = medianSeconds(runs, [&] { rows = bareLoop(sql); });
    ListModel model;
    const Timing fill = medianSeconds(runs, [&] { fillList(model, sql); });
    info(QStringLiteral("limit: bare statement loop, %1 rows").arg(rows), bare);
    info(QStringLiteral("fill: GetSQL list into ListModel, %1 rows x %2 cols")
             .arg(model.rowCount())
             .arg(model.columnCount()),
         fill);
    const QString ratio = QStringLiteral("fill / limit at %1 rows").arg(size);
    if (size == 100000)
        report(ratio + QStringLiteral(" [cpu]"), fill.cpu / bare.cpu, QStringLiteral("x"), 1.5);
    else
        info(ratio + QStringLiteral(" [cpu]"), fill.cpu / bare.cpu, QStringLiteral("x"));
    info(ratio + QStringLiteral(" [wall]"), fill.wall / bare.wall, QStringLiteral("x"));
}

void findFigures(int runs) {
    ListModel model;
    fillList(model, findSql());
    const QString what = QStringLiteral("%1 rows x %2 cols").arg(model.rowCount()).arg(model.columnCount());
    int found = -1;
    const Timing none = medianSeconds(
        runs,
        [&] { found = UberFindItem(QStringLiteral("no such thing"), 1, model, true, false, false, true); },
        [&] { model.clearBold(); });
    report(QStringLiteral("Find All, no match (every cell), %1").arg(what), none, 0.25);
    const Timing some = medianSeconds(
        runs, [&] { found = UberFindItem(QStringLiteral("beam 00??1"), 1, model, true, false, false, true); },
        [&] { model.clearBold(); });
    report(QStringLiteral("Find All, wildcard matching some rows, %1").arg(what), some, 0.25);
    const Timing names = medianSeconds(
        runs, [&] { found = UberFindItem(QStringLiteral("zzz"), 1, model, true, true, true, false); });
    info(QStringLiteral("Find Next, names only, no match, %1").arg(what), names);
}

void sortFigures(int runs) {
    ListModel model;
    fillList(model, equipmentListSql());
    const int name = 0;
    const int number = model.columnIndex(QStringLiteral("PURCHASE_PRICE"));
    const int date = model.columnIndex(QStringLiteral("LAST_UPDATED"));
    const QString rows = QStringLiteral("%1 rows").arg(model.rowCount());
    // Each timed sort starts from the order another column gave.
    const Timing byNumber = medianSeconds(
        runs, [&] { model.setSort(number, ListModel::Ascending); },
        [&] { model.setSort(name, ListModel::Descending); });
    report(QStringLiteral("sort number column (PURCHASE_PRICE), %1").arg(rows), byNumber, 0.3);
    const Timing byDate = medianSeconds(
        runs, [&] { model.setSort(date, ListModel::Ascending); },
        [&] { model.setSort(number, ListModel::Descending); });
    report(QStringLiteral("sort date column (LAST_UPDATED), %1").arg(rows), byDate, 0.3);
    const Timing byText = medianSeconds(
        runs, [&] { model.setSort(name, ListModel::Ascending); },
        [&] { model.setSort(number, ListModel::Descending); });
    report(QStringLiteral("sort text column (EQUIPMENT_NAME), %1").arg(rows), byText, 1.0);
}

void treeFigure(int runs) {
    int nodes = 0;
    const Timing t = medianSeconds(runs, [&] {
        CountingSink sink;
        bool recurse = true;
        BuildEquipTree(treeRoot(), treeRoot(), sink, recurse);
        nodes = sink.nodes;
    });
    report(QStringLiteral("build tree, %1 nodes (BuildEquipTree)").arg(nodes), t, 0.3);
}

void memoryFigure(const QString& file) {
    // A fresh process, so that nothing measured before has touched its heap.
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--memory-child"), file});
    if (!child.waitForFinished(600000) || child.exitCode() != 0) {
        std::printf("memory: the measuring process failed: %s\n", child.readAllStandardError().constData());
        return;
    }
    const QList<QByteArray> v = child.readAllStandardOutput().trimmed().split(' ');
    if (v.size() != 5)
        return;
    const double cells = v[0].toDouble() * v[1].toDouble();
    const double grown = v[3].toDouble() - v[2].toDouble();
    info(QStringLiteral("memory: rows x cols of the list"), cells, QStringLiteral("cells"));
    report(QStringLiteral("memory of the filled list (VmRSS growth) per cell"), grown / cells,
           QStringLiteral("bytes"), 40);
    info(QStringLiteral("memory: storage the model counts, per cell"), v[4].toDouble() / cells,
         QStringLiteral("bytes"));
}

} // namespace

int main(int argc, char** argv) {
    // Some figures draw windows: without a display they draw offscreen.
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
        qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
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
    QStringList groups = {QStringLiteral("fill"), QStringLiteral("find"), QStringLiteral("sort"),
                          QStringLiteral("tree"), QStringLiteral("memory")};
    for (const NamedGroup& g : registeredFigures())
        groups.append(g.name);
    const QCommandLineOption onlyOpt(QStringLiteral("only"),
                                     QStringLiteral("Only these figures: ") + groups.join(u',') + u'.',
                                     QStringLiteral("list"), groups.join(u','));
    parser.addOptions({dataOpt, runsOpt, sizesOpt, childOpt, onlyOpt});
    parser.process(app);
    try {
        if (parser.isSet(childOpt))
            return memoryChild(parser.value(childOpt));

        const int runs = qMax(5, parser.value(runsOpt).toInt());
        const QStringList only = parser.value(onlyOpt).split(QLatin1Char(','));
        std::printf("vosk-bench: medians of %d runs after a warm-up\n", runs);
        QString largest;
        const bool listFigures = std::any_of(groups.begin(), groups.begin() + 5,
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
