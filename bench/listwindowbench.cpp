// Figures of the main list as a window shows it: Find All from the find dialog, which after marking
// the cells widens the columns to their bold texts, and a header click, which sorts and then shows
// the top of the new order. Both on 100,000 equipment rows in a list view on screen.
#include "benchutil.h"
#include "figures.h"
#include "listbench.h"

#include "core/scriptedprompt.h"
#include "data/database.h"
#include "lists/frmfind.h"
#include "lists/listmodel.h"
#include "lists/listviewsort.h"

#include <QApplication>
#include <QCheckBox>
#include <QHeaderView>
#include <QLineEdit>

#include <cstdio>

namespace {

void listWindowFigures(const bench::Context& context) {
    using namespace bench;
    QString error;
    const QString file = ensureDatabase(context.dataFolder, 100000, false, &error);
    if (file.isEmpty()) {
        std::printf("cannot make the 100000-row database: %s\n", qPrintable(error));
        return;
    }
    openDatabase(file);
    ScriptedPrompt prompt; // a search that finds nothing answers its box without a screen
    ListModel model;
    fillList(model, equipmentListSql());
    ItemListView view; // the main window's own list view
    view.setModel(&model);
    view.setSelectionBehavior(QAbstractItemView::SelectRows);
    view.header()->setStretchLastSection(false);
    view.resize(1280, 800);
    view.show();
    QApplication::processEvents();
    // Each run starts as the user would: nothing marked or selected, columns fitted to plain text.
    auto fitted = [&] {
        model.clearBold();
        view.selectionModel()->clear();
        for (int c = 0; c < model.columnCount(); ++c)
            view.resizeColumnToContents(c);
    };
    fitted();

    frmFind find(&view, &model, nullptr);
    find.chkMarkAll->setChecked(true);
    find.txtSearchText->setText(QStringLiteral("beam 00??1"));
    const Timing all = medianSeconds(
        context.runs, [&] { find.FindItem(); }, fitted);
    report(QStringLiteral("Find All from the dialog, marking and widening, %1 rows x %2 cols")
               .arg(model.rowCount())
               .arg(model.columnCount()),
           all, 0.25);

    ListViewSort sorter;
    sorter.setListView(&view);
    const int price = model.columnIndex(QStringLiteral("PURCHASE_PRICE"));
    const Timing click = medianSeconds(context.runs, [&] { sorter.columnClick(price); });
    report(QStringLiteral("header click on a price column (sort, arrow, top shown), %1 rows")
               .arg(model.rowCount()),
           click, 0.3);
    view.close();
    db().close();
}

} // namespace

VOSK_BENCH_FIGURES("listwindow", listWindowFigures);
