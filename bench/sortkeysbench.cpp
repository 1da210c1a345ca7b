// The main list's sort keys: the first sort of a column (its keys made: texts folded and ranked,
// numbers and dates read) and a repeated sort of it (the kept ranks reordered), on the 1,000,000-row
// equipment list whose names are half beyond ASCII, and on ASCII texts that share long prefixes.
#include "benchutil.h"
#include "figures.h"
#include "listbench.h"

#include "data/database.h"
#include "lists/listmodel.h"

#include <cstdio>

namespace {

using namespace bench;

// The list keeps the keys of the two columns sorted last: sorting two others first makes the next
// sort of a column its first.
void firstAndRepeated(const Context& c, ListModel& model, int col, int other1, int other2,
                      const QString& what, double goal) {
    const Timing first = medianSeconds(
        c.runs, [&] { model.setSort(col, ListModel::Ascending); },
        [&] {
            model.setSort(other1, ListModel::Descending);
            model.setSort(other2, ListModel::Descending);
        });
    report(QStringLiteral("first sort, %1").arg(what), first, goal);
    const Timing again = medianSeconds(
        c.runs, [&] { model.setSort(col, ListModel::Ascending); },
        [&] { model.setSort(col, ListModel::Descending); });
    report(QStringLiteral("repeated sort (other direction before), %1").arg(what), again, goal);
}

void sortKeyFigures(const Context& c) {
    QString error;
    const QString file = ensureDatabase(c.dataFolder, 1000000, false, &error);
    if (file.isEmpty()) {
        std::printf("sortkeys: cannot make the database: %s\n", qPrintable(error));
        return;
    }
    openDatabase(file);
    {
        ListModel model;
        fillList(model, equipmentListSql());
        const int name = 0;
        const int number = model.columnIndex(QStringLiteral("PURCHASE_PRICE"));
        const int date = model.columnIndex(QStringLiteral("LAST_UPDATED"));
        const int maker = model.columnIndex(QStringLiteral("MANUFACTURER"));
        const QString rows = QStringLiteral("%1 rows").arg(model.rowCount());
        const double unsorted = double(model.memoryUsed());
        firstAndRepeated(c, model, name, number, date,
                         QStringLiteral("names, half beyond ASCII, %1").arg(rows), 0.1);
        firstAndRepeated(c, model, number, name, date, QStringLiteral("number column, %1").arg(rows), 0.1);
        firstAndRepeated(c, model, date, name, number, QStringLiteral("date column, %1").arg(rows), 0.1);
        firstAndRepeated(c, model, maker, name, number, QStringLiteral("six makers' names, %1").arg(rows),
                         0.1);
        model.setSort(name, ListModel::Ascending);
        info(QStringLiteral("sort keys kept (two columns), per row"),
             (double(model.memoryUsed()) - unsorted) / model.rowCount(), QStringLiteral("bytes"));
    }
    {
        // Nearly every text distinct, the first 20 to 30 bytes shared by many.
        ListModel model;
        fillList(model, QStringLiteral("SELECT TYPE & ' ' & MANUFACTURER & ' ' & LAST_UPDATED & ' ' & PRICE, "
                                       "LVL, QUALITY FROM EQUIPMENTS"));
        firstAndRepeated(
            c, model, 0, 1, 2,
            QStringLiteral("ASCII texts with long shared prefixes, %1 rows").arg(model.rowCount()), 0.1);
    }
    db().close();
}

} // namespace

VOSK_BENCH_FIGURES("sortkeys", sortKeyFigures);
