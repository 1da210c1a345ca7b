// The component and station editors' figures, on the sample world grown for them: a component whose
// seven grids hold 100 rows each, opened and saved with every amount edited; and a station that sells
// 5,000 records of each kind, opened, one list offered in the pick dialog, and saved with one record
// taken off every list (the four buy-location lists rewritten in the save's transaction).
#include "benchutil.h"
#include "figures.h"
#include "sampleworld.h"

#include "core/childwindows.h"
#include "core/programfolder.h"
#include "data/database.h"
#include "data/sampledata.h"
#include "data/schema.h"
#include "editors/editors.h"
#include "editors/frmaddcomponent.h"
#include "editors/frmaddstation.h"
#include "editors/frmlistdialog.h"
#include "editors/gridroutines.h"
#include "editors/ubgrid.h"

#include <QApplication>
#include <QListWidget>
#include <QTemporaryDir>
#include <QTimer>

namespace bench {
namespace {

const QString Part = QStringLiteral("Bench Part");
const QString Station = QStringLiteral("Bench Station");
constexpr int GridRows = 100;
constexpr int Sold = 5000;

QString numbered(const char* prefix, int i) {
    return QStringLiteral("%1 %2").arg(QLatin1String(prefix)).arg(i, 5, 10, QLatin1Char('0'));
}

void fill() {
    db().beginTrans();
    db().execute(QStringLiteral("INSERT INTO COMPONENTS (COMPONENT_NAME, LVL, PRICE) VALUES ('") + Part +
                 QStringLiteral("', 3, 40)"));
    // Every grid of the component: the link table, the name's column, the other column, the amount.
    const char* const links[][4] = {
        {"EQUIPMENTS_COMPONENTS", "COMPONENTS_COMPONENT", "EQUIPMENTS_EQUIPMENT", "AMOUNT"},
        {"COMPONENTS_UPGRADE_FROM", "UPGRADE_FROM", "COMPONENT_NAME", "AMOUNT"},
        {"MOB_COMP_DROP", "COMPONENT_NAME", "MOB_NAME", "DROP_FREQUENCY"},
        {"COMPONENTS_EQUIPMENTS", "COMPONENT_NAME", "EQUIPMENT_NAME", "AMOUNT"},
        {"COMPONENTS_UPGRADE_FROM", "COMPONENT_NAME", "UPGRADE_FROM", "AMOUNT"},
        {"COMPONENTS_RAW_MATERIALS", "COMPONENTS_COMPONENT", "RAW_MATERIAL", "AMOUNT"},
        {"COMPONENTS_ITEMS", "COMPONENT_NAME", "ITEM_NAME", "AMOUNT"}};
    int n = 0;
    for (const auto& l : links)
        for (int i = 0; i < GridRows; ++i, ++n)
            db().execute(QStringLiteral("INSERT INTO %1 (%2, %3, %4) VALUES ('%5', '%6', '%7')")
                             .arg(QLatin1String(l[0]), QLatin1String(l[1]), QLatin1String(l[2]),
                                  QLatin1String(l[3]), Part, numbered("Link", n),
                                  QLatin1String(l[3]) == QLatin1String("AMOUNT") ? QStringLiteral("1")
                                                                                 : QStringLiteral("Rare")));

    db().execute(QStringLiteral("INSERT INTO STATIONS (STATION_NAME, SECTORS_SECTOR) VALUES ('") + Station +
                 QStringLiteral("', 'Aldra Prime')"));
    for (const station::Sells& s : station::sells())
        for (int i = 0; i < Sold; ++i)
            db().execute(QStringLiteral("INSERT INTO ") + s.table + QStringLiteral(" (") +
                         station::StationColumn + QStringLiteral(", ") + s.valueColumn +
                         QStringLiteral(") VALUES ('") + Station + QStringLiteral("', '") +
                         numbered("Ware", i) + QStringLiteral("')"));
    // The pick dialog offers every equipment: as many as the station sells, and some more.
    for (int i = 0; i < 2 * Sold; ++i)
        db().execute(QStringLiteral("INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, TYPE, LVL) VALUES ('") +
                     numbered("Ware", i) + QStringLiteral("', 'beam', 1)"));
    db().commitTrans();
}

void componentFigures(const Context& context) {
    const Timing open = medianSeconds(context.runs, [] {
        auto* w = OpenRecordEditor<frmAddComponent>(QStringLiteral("Components"), Part);
        w->close();
        QApplication::processEvents();
    });
    report(QStringLiteral("Open the component editor with seven grids of %1 rows").arg(GridRows), open, 0.25);

    int amount = 1;
    frmAddComponent* w = nullptr;
    bool saved = true;
    const Timing save = medianSeconds(
        context.runs,
        [&] {
            for (const GridDef& def : comp::grids()) {
                GridModel& g = w->grid(def.widget)->grid();
                const int col = def.widget == QLatin1String("ubgMOBs") ? 0 : 2;
                for (int r = 1; col && r <= g.lastDataRow(); ++r)
                    g.userEdit(r, col, QString::number(amount));
            }
            saved = saved && w->cmdSave_Click() == SaveResult::Saved;
        },
        [&] {
            QApplication::processEvents();
            w = OpenRecordEditor<frmAddComponent>(QStringLiteral("Components"), Part);
            ++amount;
        });
    QApplication::processEvents();
    report(QStringLiteral("Edit every amount of six of those grids and save%1").arg(saved ? "" : " (FAILED)"),
           save, 0.5);
}

void stationFigures(const Context& context) {
    const Timing open = medianSeconds(context.runs, [] {
        auto* w = OpenRecordEditor<frmAddStation>(QStringLiteral("Stations"), Station);
        w->close();
        QApplication::processEvents();
    });
    report(QStringLiteral("Open the station editor selling %1 records of each kind").arg(Sold), open, 0.25);

    frmAddStation* w = OpenRecordEditor<frmAddStation>(QStringLiteral("Stations"), Station);
    const Timing pick = medianSeconds(context.runs, [w] {
        // The dialog shows and is closed as soon as it is up.
        QTimer::singleShot(0, [] {
            if (auto* d = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
                d->reject();
        });
        w->cmdSells_Click(QStringLiteral("lstSellsEquipment"));
    });
    report(QStringLiteral("Show the pick dialog: %1 equipment sold of %2").arg(Sold).arg(2 * Sold), pick,
           0.5);
    const Timing addAll = medianSeconds(context.runs, [w] {
        QTimer::singleShot(0, [] {
            if (auto* d = qobject_cast<frmListDialog*>(QApplication::activeModalWidget())) {
                d->cmdAddAll_Click();
                d->reject();
            }
        });
        w->cmdSells_Click(QStringLiteral("lstSellsEquipment"));
    });
    report(QStringLiteral("The same with Add All: %1 more moved beside them").arg(Sold), addAll, 0.5);
    w->close();
    QApplication::processEvents();

    bool saved = true;
    const Timing save = medianSeconds(
        context.runs, [&] { saved = saved && w->cmdSave_Click() == SaveResult::Saved; },
        [&] {
            QApplication::processEvents();
            w = OpenRecordEditor<frmAddStation>(QStringLiteral("Stations"), Station);
            for (const station::Sells& s : station::sells())
                delete w->sellsList(s.widget)->takeItem(0);
        });
    QApplication::processEvents();
    report(QStringLiteral("Take one record off each list and save (some %1 rows written again)%2")
               .arg(4 * Sold)
               .arg(saved ? "" : " (FAILED)"),
           save, 1.0);
}

void recordEditorFigures(const Context& context) {
    const SampleWorld world("record editors");
    if (!world.ok())
        return;
    fill();
    componentFigures(context);
    stationFigures(context);
}

} // namespace

VOSK_BENCH_FIGURES("record-editors", recordEditorFigures);

} // namespace bench
