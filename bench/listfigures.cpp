#include "listfigures.h"
#include "benchutil.h"
#include "listbench.h"

#include "lists/finditem.h"
#include "lists/listmodel.h"
#include "views/buildtree.h"

#include <QApplication>
#include <QProcess>

#include <cstdio>

namespace bench {

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

void ratioLines(const QString& what, const Interleaved& r, size_t measured, double goal) {
    const Summary cpu = pairedRatios(r.cpu[measured], r.cpu[0]);
    const Summary wall = pairedRatios(r.wall[measured], r.wall[0]);
    if (goal > 0)
        report(what + QStringLiteral(" [cpu]"), cpu, QStringLiteral("x"), goal);
    else
        info(what + QStringLiteral(" [cpu]"), cpu, QStringLiteral("x"));
    info(what + QStringLiteral(" [wall]"), wall, QStringLiteral("x"));
}

} // namespace

void fillFigures(qint64 size, int runs) {
    const QString sql = equipmentListSql();
    qint64 rows = 0;
    ShownList shown;
    ListModel plain;
    // Each load starts from an empty list: freeing the rows before belongs to a refresh, not to the
    // load that the bare loop is compared with.
    const Interleaved r = interleavedSeconds(runs, {{[&] { rows = bareLoop(sql); }, nullptr},
                                                    {[&] { loadShown(shown, sql); },
                                                     [&] {
                                                         shown.model.clear();
                                                         QApplication::processEvents();
                                                     }},
                                                    {[&] { fillList(plain, sql); }, [&] { plain.clear(); }}});
    const QString shape =
        QStringLiteral("%1 rows x %2 cols").arg(shown.model.rowCount()).arg(shown.model.columnCount());
    info(QStringLiteral("limit: bare statement loop, %1 rows").arg(rows), r.timings[0]);
    info(QStringLiteral("whole list into a shown list view, %1").arg(shape), r.timings[1]);
    info(QStringLiteral("plain ListModel::load, %1").arg(shape), r.timings[2]);
    ratioLines(QStringLiteral("whole list loaded / limit at %1 rows, per pair").arg(size), r, 1,
               size == 1000000 ? 1.3 : 0);
    ratioLines(QStringLiteral("plain load / limit at %1 rows, per pair").arg(size), r, 2, 0);
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
    const QString sql = equipmentListSql();
    ShownList list;
    ListModel& model = list.model;
    loadShown(list, sql);
    const int name = 0;
    const int number = model.columnIndex(QStringLiteral("PURCHASE_PRICE"));
    const int date = model.columnIndex(QStringLiteral("LAST_UPDATED"));
    // The timed part is what a header click costs the user: the sort, the view following the new
    // order, and the first screenful of it painted.
    auto click = [&](int column) {
        return [&list, column] {
            list.sorter.columnClick(column);
            paintShown(list);
        };
    };
    // Rows as a fresh load gives them (no sort keys kept from before), then ordered by another column
    // in descending order, so that the click sorts ascending from an order that is not its own.
    auto fresh = [&](int other) {
        return [&list, &sql, other] {
            list.model.setSort(-1, ListModel::Ascending);
            list.model.clear();
            loadShown(list, sql);
            list.model.setSort(other, ListModel::Descending);
            paintShown(list);
        };
    };
    auto from = [&](int other) {
        return [&list, other] {
            list.model.setSort(other, ListModel::Descending);
            paintShown(list);
        };
    };
    // In this order the second and third turns find the name column sorted once since the load.
    const Interleaved r = interleavedSeconds(runs, {{click(name), fresh(number)},
                                                    {click(name), from(number)},
                                                    {click(name), from(name)},
                                                    {click(number), fresh(date)},
                                                    {click(date), fresh(number)}});
    const QString rows = QStringLiteral("%1 rows").arg(model.rowCount());
    report(QStringLiteral("sort by name (accents, Greek), first after a load, %1").arg(rows), r.timings[0],
           0.1);
    report(QStringLiteral("sort by name again, after a number sort, %1").arg(rows), r.timings[1], 0.1);
    report(QStringLiteral("sort by name reversed (its header clicked again), %1").arg(rows), r.timings[2],
           0.1);
    report(QStringLiteral("sort by number (PURCHASE_PRICE), first after a load, %1").arg(rows), r.timings[3],
           0.1);
    report(QStringLiteral("sort by date (LAST_UPDATED), first after a load, %1").arg(rows), r.timings[4],
           0.1);
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

namespace {
// The child prints "rows cols rssBefore rssAfter modelBytes peakAfter"; empty when it failed.
QList<double> memoryChildRun(const QString& file, bool shown) {
    QProcess child;
    QStringList args = {QStringLiteral("--memory-child"), file};
    if (shown)
        args << QStringLiteral("--memory-shown");
    child.start(QCoreApplication::applicationFilePath(), args);
    if (!child.waitForFinished(600000) || child.exitStatus() != QProcess::NormalExit ||
        child.exitCode() != 0) {
        std::printf("memory: the measuring process failed: %s\n", child.readAllStandardError().constData());
        return {};
    }
    QList<double> values;
    for (const QByteArray& v : child.readAllStandardOutput().trimmed().split(' '))
        values << v.toDouble();
    if (values.size() != 6 || values[0] <= 0 || values[1] <= 0) {
        std::printf("memory: the measuring process printed no figures\n");
        return {};
    }
    return values;
}
} // namespace

void memoryFigure(const QString& file) {
    // Fresh processes, so that nothing measured before has touched their heaps.
    const QList<double> shown = memoryChildRun(file, true);
    const QList<double> plain = memoryChildRun(file, false);
    if (shown.isEmpty() || plain.isEmpty())
        return;
    const double cells = shown[0] * shown[1];
    info(QStringLiteral("memory: rows x cols of the list"), cells, QStringLiteral("cells"));
    report(QStringLiteral("memory of the list loaded in a shown list view, per cell"),
           (shown[3] - shown[2]) / cells, QStringLiteral("bytes"), 15);
    info(QStringLiteral("    its peak while loading (VmHWM over VmRSS before), per cell"),
         (shown[5] - shown[2]) / cells, QStringLiteral("bytes"));
    info(QStringLiteral("memory: the model alone (ListModel::load), per cell"), (plain[3] - plain[2]) / cells,
         QStringLiteral("bytes"));
    info(QStringLiteral("    its peak while loading, per cell"), (plain[5] - plain[2]) / cells,
         QStringLiteral("bytes"));
    info(QStringLiteral("memory: storage the model counts, per cell"), shown[4] / cells,
         QStringLiteral("bytes"));
}

} // namespace bench
