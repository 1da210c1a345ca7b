// Kill tests: a child process deletes, copies and renames records with many link rows, or restores
// backups over the database, or builds a database with vosk-makedb, and is killed with SIGKILL at
// random moments. After every kill the database must pass SQLite's integrity check and hold every
// record whole or not at all (record ops), be the old or the new database intact (restore), or be the
// old file or a complete new one (vosk-makedb).
#include "core/programfolder.h"
#include "core/scriptedprompt.h"
#include "data/backup.h"
#include "data/database.h"
#include "data/sampledata.h"
#include "data/schema.h"
#include "data/synthetic.h"
#include "editors/recordops.h"
#include "editors/recordworld.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <cstdio>

namespace {

const QStringList Kinds = {"Equipment", "Components", "Raw Materials", "Items", "MOBs"};
constexpr int LinksPerPlace = 12; // link rows at each place a record's name is held
constexpr int Kills = 60;

void openDb(const QString& path) {
    db().open("Provider=VOSK.SQLite;Data Source=" + path + ";");
}

void useFolder(const QString& folder) {
    for (auto format : {QSettings::NativeFormat, QSettings::IniFormat})
        QSettings::setPath(format, QSettings::UserScope, folder + "/settings");
    setProgramFolder(folder);
}

void say(const char* line) {
    std::printf("%s\n", line);
    std::fflush(stdout);
}

QStringList operated(const QString& kind) {
    const world::Place main = world::recordTables(kind).first();
    Recordset rs;
    rs.open("SELECT " + main.column + " FROM " + main.table + " WHERE " + main.column +
            " LIKE 'Kill %' ORDER BY " + main.column);
    QStringList out;
    for (; !rs.eof(); rs.moveNext())
        out << rs.value(0).toString();
    return out;
}

// The child: record operations chosen by the seed, or restores of the two backups in turn, until it
// is killed. Every box is answered by the scripted prompt.
int child(const QString& what, const QString& folder, quint32 seed) {
    useFolder(folder);
    ScriptedPrompt prompt;
    openDb(databasePath());
    QRandomGenerator rng(seed);
    say("ready");
    for (int n = 0;; ++n) {
        if (what == "--child-restore") {
            if (!RestoreDB(folder + (n % 2 ? "/b.bak" : "/a.bak")))
                return 3;
            say("op");
            continue;
        }
        const QString kind = Kinds.at(rng.bounded(int(Kinds.size())));
        const QStringList names = operated(kind);
        const QString fresh = QString("Kill %1's s%2 n%3").arg(kind).arg(seed).arg(n);
        const int roll = names.size() < 3 ? 0 : names.size() > 6 ? 2 : rng.bounded(3);
        const QString name = names.isEmpty() ? QString() : names.at(rng.bounded(int(names.size())));
        if (roll == 0 && !name.isEmpty())
            CopyRecord(kind, name, fresh);
        else if (roll == 1)
            RenameRecord(kind, name, fresh);
        else if (roll == 2)
            DeleteRecord(kind, name);
        prompt.clear();
        say("op");
    }
}

// Starts a child, waits until it is ready, lets it work for a random time and kills it. Returns the
// number of operations it finished, -1 when it did not start.
int runAndKill(const QStringList& args, int minMs, int maxMs) {
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QCoreApplication::applicationFilePath(), args);
    QByteArray out;
    while (!out.contains("ready\n") && child.waitForReadyRead(10000))
        out += child.readAllStandardOutput();
    if (!out.contains("ready\n"))
        return -1;
    QTest::qWait(QRandomGenerator::global()->bounded(minMs, maxMs));
    child.kill(); // SIGKILL
    child.waitForFinished(10000);
    return int((out + child.readAllStandardOutput()).count("op\n"));
}

// Rows at a place that name an operated record that does not exist: an orphan.
long orphans(const QString& kind, const world::Place& p) {
    const world::Place main = world::recordTables(kind).first();
    return world::count("SELECT COUNT(*) FROM " + p.table + " WHERE " + p.column + " LIKE 'Kill %' AND " +
                        p.column + " NOT IN (SELECT " + main.column + " FROM " + main.table + ")");
}

bool makedb(const QStringList& args, int ms = 60000) {
    QProcess tool;
    tool.start(VOSK_MAKEDB, args);
    return tool.waitForFinished(ms) && tool.exitCode() == 0;
}

} // namespace

class TestKill : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
        useFolder(m_dir->path());
    }

    void recordOpsAreAllOrNothing() {
        QString error;
        QVERIFY2(CreateDatabase(databasePath(), &error), qPrintable(error));
        openDb(databasePath());
        db().beginTrans();
        for (const QString& kind : Kinds)
            for (int i = 0; i < 4; ++i)
                world::addRecord(kind, QString("Kill %1's first %2").arg(kind).arg(i), LinksPerPlace);
        // An equipment that another upgrades from cannot be copied: keep the copies coming.
        db().execute("DELETE FROM EQUIPMENTS_UPGRADE_FROM WHERE UPGRADE_FROM LIKE 'Kill %'");
        db().commitTrans();
        db().close();
        int ops = 0, midChange = 0;
        for (int k = 0; k < Kills; ++k) {
            const int done =
                runAndKill({"--child-recordops", m_dir->path(), QString::number(1000 + k)}, 20, 400);
            QVERIFY2(done >= 0, "the child did not start");
            ops += done;
            // A journal left behind is a change the kill interrupted; opening rolls it back.
            midChange += QFile(databasePath() + "-journal").size() > 0 ? 1 : 0;
            openDb(databasePath());
            QCOMPARE(CheckRestorable(databasePath()), QString()); // the integrity check too
            for (const QString& kind : Kinds) {
                const QList<world::Place> places = world::placesOf(kind);
                QList<long> expected(places.size(), LinksPerPlace);
                for (int p = 0; p < places.size(); ++p)
                    if (places[p].table == "EQUIPMENTS_UPGRADE_FROM" && places[p].column == "UPGRADE_FROM")
                        expected[p] = 0;
                for (const QString& name : operated(kind)) {
                    QVERIFY2(world::linkCounts(kind, name) == expected, qPrintable("half a record: " + name));
                    QCOMPARE(world::recordRows(kind, name, kind == "Equipment" ? "WEAPON_STATS" : ""),
                             kind == "Equipment" || kind == "MOBs" ? 2 : 1);
                }
                for (const world::Place& p : places)
                    QVERIFY2(orphans(kind, p) == 0, qPrintable("orphan rows in " + p.table + "." + p.column));
            }
            QCOMPARE(orphans("Equipment", {"WEAPON_STATS", "EQUIPMENT_NAME"}), 0L);
            QCOMPARE(orphans("MOBs", {"MOB_STATS", "MOB_NAME"}), 0L);
            db().close();
        }
        qInfo("record ops: %d kills, %d landed in the middle of a change, %d operations completed", Kills,
              midChange, ops);
        QVERIFY(ops > 0);
        QVERIFY(midChange > 0); // the kills did land inside changes
    }

    void restoreLeavesOldOrNew() {
        QString error;
        // Two backups big enough for the copy to take a while, and the database they replace.
        for (const QString which : {"a", "b"}) {
            QVERIFY2(GenerateSynthetic(m_dir->filePath(which + ".bak"), 3000, &error), qPrintable(error));
            openDb(m_dir->filePath(which + ".bak"));
            db().execute("INSERT INTO CHARACTERS (CHARACTER_NAME) VALUES ('Backup " + which + "')");
            db().close();
        }
        QVERIFY2(CreateDatabase(databasePath(), &error), qPrintable(error));
        openDb(databasePath());
        db().execute("INSERT INTO CHARACTERS (CHARACTER_NAME) VALUES ('Original')");
        db().close();
        int ops = 0, midRestore = 0;
        QSet<QString> seen;
        for (int k = 0; k < Kills; ++k) {
            const int done = runAndKill({"--child-restore", m_dir->path(), "0"}, 5, 300);
            QVERIFY2(done >= 0, "the child did not start");
            ops += done;
            midRestore +=
                QFile::exists(databasePath() + ".restoring") || QFile::exists(databasePath() + ".temp");
            QCOMPARE(CheckRestorable(databasePath()), QString());
            openDb(databasePath());
            Recordset rs;
            rs.open("SELECT CHARACTER_NAME FROM CHARACTERS");
            const QString who = rs.eof() ? QString() : rs.value(0).toString();
            rs.close();
            QVERIFY2(who == "Original" || who == "Backup a" || who == "Backup b", qPrintable(who));
            seen.insert(who);
            db().close();
            // The next start clears what the stopped restore left beside the whole database.
            CleanRestoreLeftovers(databasePath());
            for (const char* left : {".restoring", ".restoring.part", ".temp", ".temp.part"})
                QVERIFY2(!QFile::exists(databasePath() + left), left);
            QCOMPARE(CheckRestorable(databasePath()), QString());
        }
        qInfo("restore: %d kills, %d landed during a restore's copies, %d restores completed", Kills,
              midRestore, ops);
        QVERIFY(midRestore > 0);
        QVERIFY(seen.size() >= 2);
        // A safety copy beside a database that is not whole may be all the player has: it stays.
        QVERIFY(QFile::copy(databasePath(), databasePath() + ".temp"));
        QFile broken(databasePath());
        QVERIFY(broken.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
                broken.write("not a database") > 0);
        broken.close();
        CleanRestoreLeftovers(databasePath());
        QVERIFY(QFile::exists(databasePath() + ".temp"));
    }

    // vosk-makedb stopped while it builds never leaves a database that looks whole but is not: the
    // file is the one that was there before, or the complete new one.
    void makedbLeavesOldOrComplete() {
        const QString file = m_dir->filePath("made.vosk");
        QVERIFY(makedb({"--sample", file}));
        const auto rows = [&file] {
            openDb(file);
            const long n = world::count("SELECT COUNT(*) FROM EQUIPMENTS");
            db().close();
            return n;
        };
        const long sampleRows = rows();
        // The kill moments are spread over how long a build takes on this machine, so a fast machine
        // is stopped mid-build as often as a slow one; the world grows until a build takes a while.
        int equipment = 8000;
        qint64 buildMs = 0;
        for (;;) {
            QElapsedTimer timer;
            timer.start();
            QVERIFY(makedb({"--force", "--synthetic", QString::number(equipment), file}, 120000));
            buildMs = timer.elapsed();
            QVERIFY(makedb({"--force", "--sample", file}));
            if (buildMs >= 400 || equipment >= 256000)
                break;
            equipment *= 2;
        }
        int killed = 0, complete = 0;
        for (int k = 0; k < 12; ++k) {
            QProcess tool;
            tool.start(VOSK_MAKEDB, {"--force", "--synthetic", QString::number(equipment), file});
            QVERIFY(tool.waitForStarted());
            if (!tool.waitForFinished(
                    QRandomGenerator::global()->bounded(int(buildMs / 20) + 1, int(buildMs * 6 / 5) + 2))) {
                tool.kill();
                tool.waitForFinished(10000);
                ++killed;
            }
            QCOMPARE(CheckRestorable(file), QString());
            const long n = rows();
            QVERIFY2(n == sampleRows || n == equipment, qPrintable(QString::number(n)));
            if (n == equipment) { // back to the sample for the next round
                ++complete;
                QVERIFY(makedb({"--force", "--sample", file}));
            }
        }
        qInfo("vosk-makedb: %d equipment in %lld ms; 12 runs, %d killed while building, %d finished",
              equipment, buildMs, killed, complete);
        QVERIFY(killed > 0);
    }

private:
    std::unique_ptr<QTemporaryDir> m_dir;
};

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() >= 4 && args.at(1).startsWith("--child-"))
        return child(args.at(1), args.at(2), args.at(3).toUInt());
    TestKill test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_kill.moc"
