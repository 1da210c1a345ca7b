// The editors' figures: a raw material whose "Used In: Components" grid holds 200 rows, opened in its
// editor, every amount edited through the grid and the record saved (the grid's 200 link rows deleted
// and written again inside the save's transaction).
#include "benchutil.h"
#include "figures.h"
#include "sampleworld.h"

#include "core/childwindows.h"
#include "core/programfolder.h"
#include "data/database.h"
#include "data/sampledata.h"
#include "data/schema.h"
#include "editors/editors.h"
#include "editors/frmaddrawmaterials.h"
#include "editors/gridroutines.h"
#include "editors/ubgrid.h"

#include <QApplication>
#include <QTemporaryDir>

namespace bench {
namespace {

const QString Material = QStringLiteral("Bench Ore");
constexpr int Rows = 200;

frmAddRawMaterials* openEditor() {
    return OpenRecordEditor<frmAddRawMaterials>(QStringLiteral("Raw Materials"), Material);
}

void editorFigures(const Context& context) {
    const SampleWorld world("editors");
    if (!world.ok())
        return;
    db().execute(QStringLiteral("INSERT INTO RAW_MATERIALS (RAW_MATERIAL_NAME, LVL, PRICE) VALUES ('") +
                 Material + QStringLiteral("', 3, 40)"));
    for (int i = 0; i < Rows; ++i)
        db().execute(
            QStringLiteral("INSERT INTO COMPONENTS_RAW_MATERIALS (COMPONENTS_COMPONENT, RAW_MATERIAL, "
                           "AMOUNT) VALUES ('Bench Part %1', '%2', 1)")
                .arg(i, 3, 10, QLatin1Char('0'))
                .arg(Material));

    const Timing open = medianSeconds(context.runs, [] {
        frmAddRawMaterials* w = openEditor();
        w->close();
        QApplication::processEvents();
    });
    info(QStringLiteral("Open the raw material editor with a %1-row grid").arg(Rows), open);

    int amount = 1;
    frmAddRawMaterials* w = nullptr;
    bool saved = true;
    const Timing save = medianSeconds(
        context.runs,
        [&] {
            GridModel& g = w->ubgManuComps->grid();
            for (int r = 1; r <= g.lastDataRow(); ++r)
                g.userEdit(r, 2, QString::number(amount));
            saved = saved && w->cmdSave_Click() == SaveResult::Saved;
        },
        [&] {
            QApplication::processEvents();
            w = openEditor();
            ++amount;
        });
    QApplication::processEvents();
    report(QStringLiteral("Edit every amount of a %1-row grid and save%2")
               .arg(Rows)
               .arg(saved ? "" : " (FAILED)"),
           save, 0.25);
}

} // namespace

VOSK_BENCH_FIGURES("editors", editorFigures);

} // namespace bench
