// The game channel's figures: one poll tick over 50 characters (the channel looks every 250 ms, so a
// tick must stay far below that to leave the window free), and the time from a command being seen to
// its answer being on the pages, over the sample world.
#include "benchutil.h"
#include "figures.h"

#include "core/inifile.h"
#include "core/programfolder.h"
#include "data/database.h"
#include "data/sampledata.h"
#include "data/schema.h"
#include "game/caplog.h"
#include "game/vlinterface.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <chrono>
#include <cstdio>
#include <filesystem>

namespace {

constexpr int Characters = 50;
constexpr int TicksPerRun = 1000;

bool writeFile(const QString& file, const QByteArray& bytes) {
    QFile f(file);
    return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(bytes) == bytes.size();
}

// Writes the command page as the game would and dates it one second later than the last one.
void typeCommand(const QString& page, const QString& command) {
    static auto when = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
    when += std::chrono::seconds(1);
    writeFile(page, "[NUM_LINES]\r\nLINES=1\r\n[LINE-0000]\r\nTEXT=" + profile::encode(command) + "\r\n");
    std::filesystem::last_write_time(QFile::encodeName(page).toStdString(), when);
}

void gameFigures(const bench::Context& context) {
    QTemporaryDir dir;
    const QString output = dir.filePath(QStringLiteral("Velmora/Data/client/output"));
    QDir().mkpath(output);
    QDir().mkpath(dir.filePath(QStringLiteral("wine/drive_c/windows")));
    qputenv("WINEPREFIX", QFile::encodeName(dir.filePath(QStringLiteral("wine"))));
    setProgramFolder(dir.path());
    for (int c = 0; c < Characters; ++c)
        writeFile(output + QStringLiteral("/player%1_options.ini").arg(c + 1),
                  "[INT-001]\r\nOptionValue=1\r\n");
    QString error;
    if (!CreateDatabase(databasePath(), &error) || !FillSampleData(databasePath(), &error)) {
        std::printf("game: cannot make the sample world: %s\n", qPrintable(error));
        return;
    }
    db().open(QStringLiteral("Provider=VOSK.SQLite;Data Source=") + databasePath() + QLatin1Char(';'));

    clsVLInterface channel;
    channel.setVlNFolder(dir.filePath(QStringLiteral("Velmora")));
    channel.setInteractWithGame(true);
    bench::info(QStringLiteral("game: characters found"), channel.logStems().size(), QStringLiteral(""));
    // Every character has a command page that has been seen: the ordinary quiet tick.
    for (int c = 0; c < Characters; ++c)
        typeCommand(channel.GetCapLogPath(c, caplog::CommandPage), QStringLiteral("seen"));
    channel.m_oTimer_ThatTime();
    const bench::Timing quiet = bench::medianSeconds(context.runs, [&] {
        for (int i = 0; i < TicksPerRun; ++i)
            channel.m_oTimer_ThatTime();
    });
    // Milliseconds a tick: seconds would print as 0.0000.
    bench::report(QStringLiteral("game: poll tick, %1 characters, nothing new [cpu]").arg(Characters),
                  quiet.cpu * 1000 / TicksPerRun, QStringLiteral("ms"), 1.0);
    bench::info(QStringLiteral("    the same by the wall clock"), quiet.wall * 1000 / TicksPerRun,
                QStringLiteral("ms"));

    const QString page = channel.GetCapLogPath(0, caplog::CommandPage);
    const struct {
        const char* what;
        const char* command;
    } commands[] = {{"SearchEquipment, 4 hits with detail pages", "SearchEquipment Sunspear"},
                    {"SearchEquipment, 25 hits with detail pages", "SearchEquipment _Mk_"},
                    {"BuildView, 4 equipment down the upgrade chain", "BuildView Sunspear_Mk_IV"},
                    {"BuildView, 10 hits and their chains", "BuildView _Mk_I"},
                    {"unknown command (953 to 999 deleted)", "Fly"}};
    for (const auto& c : commands) {
        const bench::Timing t = bench::medianSeconds(
            context.runs, [&] { channel.m_oTimer_ThatTime(); },
            [&] { typeCommand(page, QString::fromLatin1(c.command)); });
        bench::report(QStringLiteral("game: answer, %1").arg(QLatin1String(c.what)), t, 0.1);
    }
    db().close();
    qunsetenv("WINEPREFIX");
}

} // namespace

VOSK_BENCH_FIGURES("game", gameFigures);
