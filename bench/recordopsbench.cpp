// Figures of delete, copy, rename, backup and restore on the 100,000-equipment database: the record
// commands must feel instant, a backup or restore of a large database must not keep the player waiting.
#include "benchutil.h"
#include "figures.h"
#include "listbench.h"

#include "core/programfolder.h"
#include "core/scriptedprompt.h"
#include "data/backup.h"
#include "data/database.h"
#include "data/recordset.h"
#include "editors/recordops.h"

#include <QFile>
#include <QTemporaryDir>
#include <cstdio>

namespace {

bool exists(const QString& name) {
    Recordset rs;
    rs.open("SELECT EQUIPMENT_NAME FROM EQUIPMENTS WHERE EQUIPMENT_NAME = '" + name + "'");
    return !rs.eof();
}

void recordOpsFigures(const bench::Context& ctx) {
    QString error;
    const QString source = bench::ensureDatabase(ctx.dataFolder, 100000, false, &error);
    QTemporaryDir dir;
    if (source.isEmpty() || !dir.isValid()) {
        std::printf("recordops: no database (%s)\n", qPrintable(error));
        return;
    }
    setProgramFolder(dir.path());
    QFile::copy(source, databasePath());
    ScriptedPrompt prompt; // answers every box
    bench::openDatabase(databasePath());
    // The equipment with the most components that nothing upgrades from.
    QString name;
    {
        Recordset rs;
        rs.open(
            "SELECT EQUIPMENTS_EQUIPMENT FROM EQUIPMENTS_COMPONENTS WHERE EQUIPMENTS_EQUIPMENT NOT IN (SELECT "
            "UPGRADE_FROM FROM EQUIPMENTS_UPGRADE_FROM) GROUP BY EQUIPMENTS_EQUIPMENT ORDER BY COUNT(*) DESC");
        name = rs.eof() ? QString() : rs.value(0).toString();
    }
    const QString copy = QStringLiteral("Bench Copy"), renamed = QStringLiteral("Bench Renamed");
    std::printf("recordops: 100,000 equipment, on \"%s\"\n", qPrintable(name));
    using bench::medianSeconds;
    bench::report("copy of an equipment with its links",
                  medianSeconds(
                      ctx.runs, [&] { CopyRecord("Equipment", name, copy); },
                      [&] {
                          if (exists(copy))
                              DeleteRecord("Equipment", copy);
                      }),
                  0.1);
    bench::report("delete of an equipment with its links",
                  medianSeconds(
                      ctx.runs, [&] { DeleteRecord("Equipment", copy); },
                      [&] {
                          if (!exists(copy))
                              CopyRecord("Equipment", name, copy);
                      }),
                  0.1);
    bench::report("rename of an equipment with its links",
                  medianSeconds(
                      ctx.runs, [&] { RenameRecord("Equipment", name, renamed); },
                      [&] {
                          if (exists(renamed))
                              RenameRecord("Equipment", renamed, name);
                      }),
                  0.2);
    const QString backup = dir.filePath("bench.bak");
    bench::report("backup of the database", medianSeconds(ctx.runs, [&] { BackUpDB(backup); }), 2.0);
    bench::report("restore check of a backup", medianSeconds(ctx.runs, [&] { CheckRestorable(backup); }),
                  3.0);
    bench::report("restore of a backup", medianSeconds(ctx.runs, [&] { RestoreDB(backup); }), 5.0);
    db().close();
}

} // namespace

VOSK_BENCH_FIGURES("recordops", recordOpsFigures);
