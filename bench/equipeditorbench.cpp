// The equipment editor's figures: a beam whose eight grids all hold rows (50 in each), with every
// class and station in its lists, opened in its editor; and one amount changed in every grid and the
// record saved (each grid's link rows deleted and written again, the upgrade sources twice).
#include "benchutil.h"
#include "figures.h"
#include "sampleworld.h"

#include "core/childwindows.h"
#include "core/programfolder.h"
#include "data/database.h"
#include "data/sampledata.h"
#include "data/schema.h"
#include "editors/editors.h"
#include "editors/equipment.h"
#include "editors/frmaddequip.h"
#include "editors/ubgrid.h"

#include <QApplication>
#include <QTemporaryDir>

namespace bench {
namespace {

const QString Beam = QStringLiteral("Bench Lance");
constexpr int Rows = 50;

frmAddEquip* openEditor() {
    return OpenRecordEditor<frmAddEquip>(QStringLiteral("Equipment"), Beam);
}

void fill() {
    db().execute(
        QStringLiteral("INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, TYPE, LVL, PRICE, QUALITY) VALUES ('") +
        Beam + QStringLiteral("', 'Beam', 20, 900, 90)"));
    db().execute(
        QStringLiteral("INSERT INTO WEAPON_STATS (EQUIPMENT_NAME, DAMAGE, DAMAGE_TYPE, DELAY, ENERGY_USE, "
                       "RANGE) VALUES ('") +
        Beam + QStringLiteral("', 80, 'Ion', 1.5, 6, 2000)"));
    db().execute(QStringLiteral("INSERT INTO EQUIPMENT_CLASS (EQUIPMENTS_EQUIPMENT, CLASS_NAME) SELECT '") +
                 Beam + QStringLiteral("', CLASS_NAME FROM CLASSES"));
    db().execute(QStringLiteral("INSERT INTO BUY_EQUIPMENT_LOCATION (EQUIPMENTS_EQUIPMENT, STATIONS_STATION) "
                                "SELECT '") +
                 Beam + QStringLiteral("', STATION_NAME FROM STATIONS"));
    // One link row a grid row: (table, the record's column, the other name's column, a third column).
    const struct {
        const char* table;
        const char* key;
        const char* other;
        const char* third;
        const char* value;
    } links[] = {{"EQUIPMENTS_UPGRADE_FROM", "EQUIPMENT_NAME", "UPGRADE_FROM", "AMOUNT", "1"},
                 {"EQUIPMENTS_COMPONENTS", "EQUIPMENTS_EQUIPMENT", "COMPONENTS_COMPONENT", "AMOUNT", "2"},
                 {"EQUIPMENTS_RAW_MATERIALS", "EQUIPMENTS_EQUIPMENT", "RAW_MATERIAL_NAME", "AMOUNT", "3"},
                 {"EQUIPMENTS_ITEMS", "EQUIPMENTS_EQUIPMENT", "ITEM_NAME", "AMOUNT", "4"},
                 {"EQUIPMENTS_UPGRADE_FROM", "UPGRADE_FROM", "EQUIPMENT_NAME", "AMOUNT", "5"},
                 {"COMPONENTS_EQUIPMENTS", "EQUIPMENT_NAME", "COMPONENT_NAME", "AMOUNT", "6"},
                 {"MOB_EQUIP_DROP", "EQUIPMENT_NAME", "MOB_NAME", "DROP_FREQUENCY", "'Rare'"}};
    for (const auto& l : links)
        for (int i = 0; i < Rows; ++i)
            db().execute(QStringLiteral("INSERT INTO %1 (%2, %3, %4) VALUES ('%5', 'Bench %3 %6', %7)")
                             .arg(QLatin1String(l.table), QLatin1String(l.key), QLatin1String(l.other),
                                  QLatin1String(l.third), Beam)
                             .arg(i, 3, 10, QLatin1Char('0'))
                             .arg(QLatin1String(l.value)));
    for (int i = 0; i < Rows; ++i)
        db().execute(
            QStringLiteral("INSERT INTO EQUIP_SPECIALS (EQUIPMENT_NAME, SPECIAL, AMOUNT, UNITS, RANGE) "
                           "VALUES ('%1', 'Bench Special %2', 5, '%', 100)")
                .arg(Beam)
                .arg(i, 3, 10, QLatin1Char('0')));
}

void equipEditorFigures(const Context& context) {
    const SampleWorld world("equipment editor");
    if (!world.ok())
        return;
    fill();

    const Timing open = medianSeconds(context.runs, [] {
        frmAddEquip* w = openEditor();
        w->close();
        QApplication::processEvents();
    });
    report(
        QStringLiteral("Open the equipment editor on a beam with its 8 grids of %1 rows each and full lists")
            .arg(Rows),
        open, 0.2);

    int amount = 1;
    frmAddEquip* w = nullptr;
    bool saved = true;
    const Timing save = medianSeconds(
        context.runs,
        [&] {
            for (const GridDef& def : equipedit::grids()) {
                GridModel& g = w->grid(def.widget)->grid();
                if (def.widget != QLatin1String("ubgMOBs"))
                    g.userEdit(1, 2, QString::number(amount));
            }
            saved = saved && w->cmdSave_Click() == SaveResult::Saved;
        },
        [&] {
            QApplication::processEvents();
            w = openEditor();
            ++amount;
        });
    QApplication::processEvents();
    info(QStringLiteral("Change an amount in 7 of its grids and save%1").arg(saved ? "" : " (FAILED)"), save);
}

} // namespace

VOSK_BENCH_FIGURES("equipment-editor", equipEditorFigures);

} // namespace bench
