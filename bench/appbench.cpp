// The program as a player meets it, on 1,000,000 equipment records: started from nothing to the
// first screenful of the list, how long the window stays deaf while the rest of the list comes in, and
// a category switch back to the large list. Each run is a fresh process of this program in the child
// mode of appchild.h, on a copy of the synthetic database in a program folder of its own, with
// settings of its own; once as the player left it, once with the list saved sorted by name.
#include "appchild.h"
#include "benchutil.h"
#include "figures.h"
#include "listbench.h"
#include "stats.h"

#include "data/database.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

namespace {

using namespace bench;

struct StartCase {
    QString title;     // printed before each figure of the case
    QStringList extra; // arguments of the child
    QString settings;  // its XDG_CONFIG_HOME
    ChildRuns runs;
    int failed = 0;
};

// One start of the program; its figures, or none when it failed (the reason printed).
ChildReport runChild(const QString& folder, const StartCase& c) {
    QProcess child;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("XDG_CONFIG_HOME"), c.settings);
    env.insert(QStringLiteral("XDG_CACHE_HOME"), c.settings + QStringLiteral("/cache"));
    env.insert(QStringLiteral("XDG_DATA_HOME"), c.settings + QStringLiteral("/data"));
    env.remove(QStringLiteral("VOSK_HOME"));
    child.setProcessEnvironment(env);
    child.setProgram(QCoreApplication::applicationFilePath());
    const double launch = monotonicSeconds();
    child.setArguments(QStringList{QStringLiteral("--app-child"), QStringLiteral("--folder"), folder,
                                   QStringLiteral("--launch"), QString::number(launch, 'f', 6)} +
                       c.extra);
    child.start();
    const bool ended = child.waitForFinished(300000);
    if (!ended)
        child.kill();
    QStringList problems;
    const ChildReport report = parseChildReport(child.readAllStandardOutput(), &problems);
    if (!ended || child.exitStatus() != QProcess::NormalExit || child.exitCode() != 0 ||
        !problems.isEmpty()) {
        std::printf("app: a start of the program failed (exit %d): %s%s\n", child.exitCode(),
                    child.readAllStandardError().trimmed().right(400).constData(),
                    qPrintable(problems.join(QStringLiteral("; "))));
        return {};
    }
    return report;
}

Timing timingOf(const ChildRuns& runs, const char* key) {
    return bench::timingOf(runs.cpu.value(QLatin1String(key)), runs.wall.value(QLatin1String(key)));
}
Summary wallOf(const ChildRuns& runs, const char* key) {
    return summarize(runs.wall.value(QLatin1String(key)));
}

// The time from the first screenful to the whole list in each run.
Summary restOf(const ChildRuns& runs, const char* first, const char* whole) {
    const std::vector<double> a = runs.wall.value(QLatin1String(first));
    const std::vector<double> b = runs.wall.value(QLatin1String(whole));
    std::vector<double> rest;
    for (size_t i = 0; i < std::min(a.size(), b.size()); ++i)
        rest.push_back(b[i] - a[i]);
    return summarize(rest);
}

void printCase(const StartCase& c) {
    const ChildRuns& r = c.runs;
    const Summary rows = wallOf(r, Rows);
    std::printf("%s: %d runs measured, %d failed, %.0f rows\n", qPrintable(c.title), rows.count, c.failed,
                rows.count ? rows.median : 0.0);
    const QString stall = QStringLiteral("    longest stall, a modal window's events counted as taken");
    report(QStringLiteral("program start to the first screenful of the list painted"),
           timingOf(r, FirstScreen), 0.4);
    info(QStringLiteral("    from then until the whole list is in [wall]"), restOf(r, FirstScreen, WholeList),
         QStringLiteral("s"));
    report(QStringLiteral("    the window's longest freeze meanwhile"), timingOf(r, StartFreeze), 0.1);
    info(stall + QStringLiteral(" [wall]"), wallOf(r, StartStall), QStringLiteral("s"));
    info(QStringLiteral("program start to the whole list"), timingOf(r, WholeList));
    report(QStringLiteral("switch back from Stations to the first screenful painted"),
           timingOf(r, SwitchScreen), 0.4);
    info(QStringLiteral("    from then until the whole list is in [wall]"),
         restOf(r, SwitchScreen, SwitchWhole), QStringLiteral("s"));
    report(QStringLiteral("    the window's longest freeze from the switch on"), timingOf(r, SwitchFreeze),
           0.1);
    info(stall + QStringLiteral(" [wall]"), wallOf(r, SwitchStall), QStringLiteral("s"));
    info(QStringLiteral("switch back to the whole list"), timingOf(r, SwitchWhole));
    const std::vector<double> status = r.wall.value(QLatin1String(SwitchStatus));
    std::printf("    the status bar painted \"Refreshing Grid\" in %d of %d switches\n",
                int(std::count(status.begin(), status.end(), 1.0)), int(status.size()));
}

void appFigures(const Context& context) {
    QString error;
    const QString file = ensureDatabase(context.dataFolder, 1000000, false, &error);
    if (!file.isEmpty()) {
        // A file the program has opened once: what it adds to an older file is then in the copy, as in
        // a returning player's.
        openDatabase(file);
        db().close();
    }
    QTemporaryDir root;
    const QString folder = root.filePath(QStringLiteral("program"));
    // Start-up may write beside the database (its journal, the error log, the lock): the program gets
    // a copy of its own, so that the synthetic file stays as the other figures expect it.
    if (file.isEmpty() || !root.isValid() || !QDir().mkpath(folder) ||
        !QFile::copy(file, QDir(folder).filePath(QStringLiteral("data.vosk")))) {
        std::printf("app: no program folder with the 1000000-row database (%s)\n", qPrintable(error));
        return;
    }
    // The settings file a build installs beside the program (colours, tips), when this build has one.
    QFile::copy(QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("VOSK.ini")),
                QDir(folder).filePath(QStringLiteral("VOSK.ini")));
    std::vector<StartCase> cases(2);
    cases[0].title = QStringLiteral("app: started as the player left it");
    cases[0].settings = root.filePath(QStringLiteral("settings-plain"));
    cases[1].title = QStringLiteral("app: started with the list saved sorted by name");
    cases[1].extra = QStringList{QStringLiteral("--seed-name-sort")};
    cases[1].settings = root.filePath(QStringLiteral("settings-sorted"));
    // The first start of each case is its warm-up: a first start with no settings yet, after which
    // the program has saved its window and columns as a returning player's are.
    for (int i = 0; i <= context.runs; ++i) {
        for (StartCase& c : cases) {
            const ChildReport report = runChild(folder, c);
            if (report.isEmpty())
                ++c.failed;
            else if (i > 0)
                addChildReport(c.runs, report);
        }
    }
    for (const StartCase& c : cases)
        printCase(c);
}

} // namespace

VOSK_BENCH_FIGURES("app", appFigures);
