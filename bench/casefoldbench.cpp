// The cost of the one case folding: text sorted and names looked up under the collation VOSK_NOCASE,
// LIKE over every name, and Find All over texts that are not ASCII (every character folded the long
// way). Beside each, the same work done by the engine's built-in ASCII rules, for comparison.
#include "benchutil.h"
#include "figures.h"
#include "listbench.h"

#include "data/database.h"
#include "data/recordset.h"
#include "lists/finditem.h"
#include "lists/listmodel.h"

#include <QStringList>
#include <cstdio>
#include <sqlite3.h>

namespace {

using namespace bench;

// Steps a statement to its end on the shared connection; returns the rows.
qint64 stepAll(const char* sql) {
    sqlite3_stmt* st = nullptr;
    qint64 rows = 0;
    if (sqlite3_prepare_v2(db().handle(), sql, -1, &st, nullptr) == SQLITE_OK)
        while (sqlite3_step(st) == SQLITE_ROW)
            ++rows;
    sqlite3_finalize(st);
    return rows;
}

void caseFoldFigures(const Context& c) {
    QString error;
    const QString file = ensureDatabase(c.dataFolder, 100000, false, &error);
    if (file.isEmpty()) {
        std::printf("casefold: cannot make the database: %s\n", qPrintable(error));
        return;
    }
    openDatabase(file);
    qint64 rows = 0;
    // COMMENTS has no index: every row is sorted by comparing texts.
    const Timing sorted = medianSeconds(c.runs, [&] {
        rows = stepAll("SELECT COMMENTS, EQUIPMENT_NAME FROM EQUIPMENTS ORDER BY COMMENTS, EQUIPMENT_NAME");
    });
    info(QStringLiteral("ORDER BY two text columns under VOSK_NOCASE, %1 rows").arg(rows), sorted);
    const Timing ascii = medianSeconds(c.runs, [&] {
        rows = stepAll("SELECT COMMENTS, EQUIPMENT_NAME FROM EQUIPMENTS ORDER BY COMMENTS COLLATE NOCASE, "
                       "EQUIPMENT_NAME COLLATE NOCASE");
    });
    info(QStringLiteral("    the same under the built-in NOCASE"), ascii);

    QStringList names;
    {
        Recordset rs;
        rs.open(QStringLiteral("SELECT EQUIPMENT_NAME FROM EQUIPMENTS"));
        for (int i = 0; !rs.eof() && i < 100000; rs.moveNext(), ++i)
            if (i % 10 == 0)
                names << rs.textValue(0).toUpper();
    }
    const Timing lookups = medianSeconds(c.runs, [&] {
        for (const QString& n : std::as_const(names)) {
            Recordset rs;
            rs.open(QStringLiteral("SELECT LVL FROM EQUIPMENTS WHERE EQUIPMENT_NAME = '") + n + u'\'');
        }
    });
    info(QStringLiteral("%1 lookups by name in another case (Recordset, index)").arg(names.size()), lookups);

    const Timing like = medianSeconds(c.runs, [&] {
        rows = stepAll("SELECT EQUIPMENT_NAME FROM EQUIPMENTS WHERE EQUIPMENT_NAME LIKE '%zzÉ%'");
    });
    info(QStringLiteral("LIKE '%...%' over every name, no match"), like);
    const Timing glob = medianSeconds(c.runs, [&] {
        rows = stepAll("SELECT EQUIPMENT_NAME FROM EQUIPMENTS WHERE EQUIPMENT_NAME GLOB '*zzÉ*'");
    });
    info(QStringLiteral("    the built-in GLOB, with case, for comparison"), glob);

    // Find All over ten columns where every text holds letters beyond ASCII.
    ListModel model;
    fillList(model,
             QStringLiteral(
                 "SELECT 'Écl ' & EQUIPMENT_NAME, 'Σ ' & TYPE, 'Ü ' & MANUFACTURER, LVL, 'ñ ' & COMMENTS, "
                 "PRICE, 'Ø ' & QUALITY, COST_TO_MANUFACTURE, LAST_UPDATED, 'Ж ' & PIC_ID FROM EQUIPMENTS"));
    const Timing find = medianSeconds(
        c.runs, [&] { UberFindItem(QStringLiteral("no such thing"), 1, model, true, false, false, true); },
        [&] { model.clearBold(); });
    report(
        QStringLiteral("Find All, no match, %1 rows x 10 cols of texts beyond ASCII").arg(model.rowCount()),
        find, 0.25);
    db().close();
}

} // namespace

VOSK_BENCH_FIGURES("casefold", caseFoldFigures);
