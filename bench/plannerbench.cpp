// The shopping list's figures: expanding a target whose full build tree has 100,000 nodes, and the
// main window's search box narrowing the filled list of 1,000,000 rows at a key press.
#include "benchutil.h"
#include "figures.h"
#include "listbench.h"

#include "data/database.h"
#include "data/synthetic.h"
#include "lists/listmodel.h"
#include "views/billofmaterials.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>

#include <cstdio>

using namespace bench;

namespace {

const QString kRoot = QStringLiteral("Bench Plan Engine");
constexpr int kTreeNodes = 100000;

// A 10,000-equipment world with one engine whose full tree has 100,000 nodes.
QString planDatabase(const QString& dir, QString* error) {
    QDir().mkpath(dir);
    const QString file = QDir(dir).filePath(QStringLiteral("planner-tree-%1.vosk").arg(kTreeNodes));
    if (QFileInfo::exists(file))
        return file;
    const QString part = file + QStringLiteral(".part");
    QFile::remove(part);
    if (!GenerateSynthetic(part, 10000, error) || !GenerateBuildTree(part, kRoot, kTreeNodes, 4, error))
        return QString();
    QFile::rename(part, file);
    return file;
}

void expansionFigures(const Context& c) {
    QString error;
    const QString file = planDatabase(c.dataFolder, &error);
    if (file.isEmpty()) {
        std::printf("cannot make the planner database: %s\n", qPrintable(error));
        return;
    }
    openDatabase(file);
    const QList<bom::Target> targets = {{{bom::Kind::Equipment, kRoot}, 2}};
    bom::RecipeBook book;
    bom::Plan plan;
    // The window reads the recipes once and expands again in memory whenever the targets, the
    // options or what the player has change; it reads them again only when the database changed.
    const Timing cold = medianSeconds(c.runs, [&] {
        book.clear();
        book.load({targets.first().ref});
        plan = bom::Expand(book, targets, bom::Options());
    });
    const Timing warm = medianSeconds(c.runs, [&] { plan = bom::Expand(book, targets, bom::Options()); });
    report(QStringLiteral("expand %1 nodes, recipes in memory: totals").arg(book.size()), warm, 0.2);
    info(QStringLiteral("expand %1 nodes, reading the recipes first").arg(book.size()), cold);
    bom::ExpansionTree tree;
    const Timing treeTime =
        medianSeconds(c.runs, [&] { tree = bom::ExpandTree(book, targets, bom::Options()); });
    info(QStringLiteral("expansion tree, %1 nodes").arg(tree.nodes.size()), treeTime);
    db().close();
}

void searchFigures(const Context& c) {
    QString error;
    const QString file = ensureDatabase(c.dataFolder, 1000000, false, &error);
    if (file.isEmpty()) {
        std::printf("cannot make the 1,000,000-row database: %s\n", qPrintable(error));
        return;
    }
    openDatabase(file);
    ListModel model;
    fillList(model, equipmentListSql());
    const QString rows = QStringLiteral("%1 rows").arg(model.rowCount());
    // Each key press as the box hands it over: from the filter before to the one typed now.
    auto key = [&](const QString& before, const QString& now) {
        return medianSeconds(
            c.runs, [&] { model.setNameFilter(now); }, [&] { model.setNameFilter(before); });
    };
    report(QStringLiteral("search: first key \"b\", %1").arg(rows), key(QString(), QStringLiteral("b")),
           0.05);
    report(QStringLiteral("search: next key \"be\" narrows"), key(QStringLiteral("b"), QStringLiteral("be")),
           0.05);
    report(QStringLiteral("search: \"0042\" typed over \"beam\" (every row)"),
           key(QStringLiteral("beam"), QStringLiteral("0042")), 0.05);
    report(QStringLiteral("search: non-ASCII \"\u00fc\", no row has it"),
           key(QString(), QStringLiteral("\u00fc")), 0.05);
    report(QStringLiteral("search: cleared, every row back"), key(QStringLiteral("b"), QString()), 0.05);
    info(QStringLiteral("    rows shown for \"b\""), double([&] {
             model.setNameFilter(QStringLiteral("b"));
             return model.rowCount();
         }()),
         QStringLiteral("rows"));

    // The same keys with the main window's list view attached, laying its rows out again as on screen.
    ItemListView view;
    view.setModel(&model);
    view.resize(900, 600);
    view.show();
    auto shown = [&](const QString& before, const QString& now) {
        return medianSeconds(
            c.runs,
            [&] {
                model.setNameFilter(now);
                view.doItemsLayout();
                QCoreApplication::processEvents();
            },
            [&] {
                model.setNameFilter(before);
                view.doItemsLayout();
                QCoreApplication::processEvents();
            });
    };
    info(QStringLiteral("search with the view: first key \"b\""), shown(QString(), QStringLiteral("b")));
    info(QStringLiteral("search with the view: cleared"), shown(QStringLiteral("b"), QString()));
    db().close();
}

void plannerFigures(const Context& c) {
    expansionFigures(c);
    searchFigures(c);
}

} // namespace

VOSK_BENCH_FIGURES("planner", plannerFigures);
