// Figures of list printing: laying out and painting the main list as a report into a PDF, for a
// list of 10,000 equipment rows (about 200 pages) with the columns the list shows.
#include "benchutil.h"
#include "figures.h"
#include "listbench.h"

#include "data/database.h"
#include "lists/listmodel.h"
#include "lists/listreport.h"

#include <QBuffer>
#include <QPdfWriter>

namespace {

void printFigures(const bench::Context& ctx) {
    using namespace bench;
    QString error;
    const QString file = ensureDatabase(ctx.dataFolder, 10000, true, &error);
    if (file.isEmpty()) {
        info(QStringLiteral("print: no database (") + error + u')', 0, QString());
        return;
    }
    openDatabase(file);
    ListModel model;
    fillList(model, equipmentListSql());
    ListReportPlan plan;
    plan.title = QStringLiteral("Equipment");
    plan.printedOn = QStringLiteral("Printed 2024-05-01 10:00:00");
    for (int c = 0; c < std::min(8, model.columnCount()); ++c)
        plan.columns << c;

    int pages = 0;
    const Timing layout = medianSeconds(ctx.runs, [&] {
        QBuffer sink;
        sink.open(QIODevice::WriteOnly);
        QPdfWriter writer(&sink);
        pages = ListReportLayout(model, plan, writer).pageCount();
    });
    report(QStringLiteral("print: laying out 10,000 rows"), layout, 0.5);
    qint64 bytes = 0;
    const Timing paint = medianSeconds(ctx.runs, [&] {
        QBuffer sink;
        sink.open(QIODevice::WriteOnly);
        {
            QPdfWriter writer(&sink);
            PaintListReport(model, plan, writer);
        }
        bytes = sink.size();
    });
    report(QStringLiteral("print: 10,000 rows into a PDF (%1 pages)").arg(pages), paint, 3.0);
    info(QStringLiteral("print: PDF size"), double(bytes) / 1024.0 / 1024.0, QStringLiteral("MB"));
    db().close();
}

} // namespace

VOSK_BENCH_FIGURES("print", printFigures);
