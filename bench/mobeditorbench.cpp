// The MOB editor's figures: a MOB whose eight grids hold 100 rows each (attack types, resistances and
// weaknesses by made-up damage types, 100 spawn locations, 100 drops of each kind), opened in its
// editor; then a property and one cell of every grid edited and the MOB saved, which rewrites the
// record over its two tables and all 800 link rows inside the save's transaction.
#include "benchutil.h"
#include "figures.h"
#include "sampleworld.h"

#include "core/childwindows.h"
#include "core/programfolder.h"
#include "data/database.h"
#include "data/sampledata.h"
#include "data/schema.h"
#include "editors/editors.h"
#include "editors/frmaddmob.h"
#include "editors/propertylistwidget.h"
#include "editors/ubgrid.h"

#include <QApplication>
#include <QTemporaryDir>

namespace bench {
namespace {

const QString Mob = QStringLiteral("Bench Behemoth");
constexpr int Rows = 100;

frmAddMob* openEditor() {
    return OpenRecordEditor<frmAddMob>(QStringLiteral("MOBs"), Mob);
}

void fill() {
    db().execute(QStringLiteral("INSERT INTO MOBS (MOB_NAME, TYPE, FACTION) VALUES ('") + Mob +
                 QStringLiteral("', 'Organic', 'Unknown')"));
    db().execute(QStringLiteral("INSERT INTO MOB_STATS (MOB_NAME, COMBAT_LEVEL, HULL) VALUES ('") + Mob +
                 QStringLiteral("', 30, 5000)"));
    const struct {
        const char* table;
        const char* columns;
        const char* values; // %1 the row number, %2 the MOB
    } grids[] = {
        {"MOB_ATTACK_TYPE", "MOB_NAME, ATTACK_TYPE, AMOUNT", "'%2', 'Damage %1', 10"},
        {"MOB_RESISTANCE", "MOB_NAME, RESISTANCE, AMOUNT", "'%2', 'Damage %1', 20"},
        {"MOB_WEAKNESS", "MOB_NAME, WEAKNESS, AMOUNT", "'%2', 'Damage %1', 30"},
        {"MOBS_LOCATION", "MOB_NAME, SECTOR_NAME, NAV_POINT, SPAWN_RATE",
         "'%2', 'Sector %1', 'Nav %1', 'Fast'"},
        {"MOB_EQUIP_DROP", "MOB_NAME, EQUIPMENT_NAME, DROP_FREQUENCY", "'%2', 'Gear %1', 'Rare'"},
        {"MOB_COMP_DROP", "MOB_NAME, COMPONENT_NAME, DROP_FREQUENCY", "'%2', 'Part %1', 'Rare'"},
        {"MOB_RAW_MAT_DROP", "MOB_NAME, RAW_MATERIAL_NAME, DROP_FREQUENCY", "'%2', 'Ore %1', 'Rare'"},
        {"MOB_ITEM_DROP", "MOB_NAME, ITEM_NAME, DROP_FREQUENCY", "'%2', 'Trinket %1', 'Rare'"},
    };
    for (const auto& g : grids)
        for (int i = 0; i < Rows; ++i)
            db().execute(QStringLiteral("INSERT INTO %1 (%2) VALUES (")
                             .arg(QLatin1String(g.table), QLatin1String(g.columns)) +
                         QString::fromLatin1(g.values).arg(i, 3, 10, QLatin1Char('0')).arg(Mob) +
                         QLatin1Char(')'));
}

void mobEditorFigures(const Context& context) {
    const SampleWorld world("mob-editor");
    if (!world.ok())
        return;
    fill();

    const Timing open = medianSeconds(context.runs, [] {
        frmAddMob* w = openEditor();
        w->close();
        QApplication::processEvents();
    });
    report(QStringLiteral("Open the MOB editor with eight %1-row grids").arg(Rows), open, 0.25);

    int hull = 5000;
    frmAddMob* w = nullptr;
    bool saved = true;
    const Timing save = medianSeconds(
        context.runs,
        [&] {
            saved = saved && w->prpMOB->editValue(QStringLiteral("HULL"), QString::number(hull));
            for (const GridDef& def : mob::grids()) {
                GridModel& g = w->grid(def.widget)->grid();
                // The last column of the first row: an amount, a spawn rate or a frequency.
                const int col = g.cols() - 1;
                g.userEdit(1, col,
                           col == 2 && g.colNumeric(2)
                               ? QString::number(hull % 97)
                               : (hull % 2 ? QStringLiteral("Slow") : QStringLiteral("Normal")));
            }
            saved = saved && w->cmdSave_Click() == SaveResult::Saved;
        },
        [&] {
            QApplication::processEvents();
            w = openEditor();
            ++hull;
        });
    QApplication::processEvents();
    report(QStringLiteral("Edit the MOB and one row of each of its eight %1-row grids, and save%2")
               .arg(Rows)
               .arg(saved ? "" : " (FAILED)"),
           save, 0.25);
}

} // namespace

VOSK_BENCH_FIGURES("mob-editor", mobEditorFigures);

} // namespace bench
