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
#include <QDir>
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

QString connectionFor(const QString& path) {
    return "Provider=VOSK.SQLite;Data Source=" + path + ";";
}

void useFolder(const QString& folder) {
    for (auto format : {QSettings::NativeFormat, QSettings::IniFormat})
        QSettings::setPath(format, QSettings::UserScope, folder + "/settings");
    setProgramFolder(folder);
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

// The child: record operations until it is killed. Every box is answered by the scripted prompt.
int childRecordOps(const QString& folder, quint32 seed) {
    useFolder(folder);
    ScriptedPrompt prompt;
    db().open(connectionFor(databasePath()));
    QRandomGenerator rng(seed);
    std::printf("ready\n");
    std::fflush(stdout);
    for (int n = 0;; ++n) {
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
        std::printf("op\n");
        std::fflush(stdout);
    }
}

// The child: restores the two backups in turn until it is killed.
int childRestore(const QString& folder) {
    useFolder(folder);
    ScriptedPrompt prompt;
    db().open(connectionFor(databasePath()));
    std::printf("ready\n");
    std::fflush(stdout);
    for (int n = 0;; ++n) {
        if (!RestoreDB(folder + (n % 2 ? "/b.bak" : "/a.bak")))
            return 3;
        std::printf("op\n");
        std::fflush(stdout);
    }
}

// Starts a child, waits until it is ready, lets it work for a random time and kills it. Returns the
// number of operations it finished.
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
    out += child.readAllStandardOutput();
    return int(out.count("op\n"));
}

// Rows at a place that name an operated record that does not exist: an orphan.
long orphans(const QString& kind, const world::Place& p) {
    const world::Place main = world::recordTables(kind).first();
    return world::count("SELECT COUNT(*) FROM " + p.table + " WHERE " + p.column + " LIKE 'Kill %' AND " +
                        p.column + " NOT IN (SELECT " + main.column + " FROM " + main.table + ")");
}

} // namespace

class TestKill : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void recordOpsAreAllOrNothing() {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        useFolder(dir.path());
        QString error;
        QVERIFY2(CreateDatabase(databasePath(), &error), qPrintable(error));
        db().open(connectionFor(databasePath()));
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
                runAndKill({"--child-recordops", dir.path(), QString::number(1000 + k)}, 20, 400);
            QVERIFY2(done >= 0, "the child did not start");
            ops += done;
            // A journal left behind is a change the kill interrupted; opening rolls it back.
            midChange += QFile(databasePath() + "-journal").size() > 0 ? 1 : 0;
            db().open(connectionFor(databasePath()));
            Recordset check;
            check.open("PRAGMA integrity_check");
            QCOMPARE(check.value(0).toString(), QString("ok"));
            check.close();
            for (const QString& kind : Kinds) {
                const QList<world::Place> places = world::placesOf(kind);
                for (const QString& name : operated(kind)) {
                    QList<long> expected(places.size(), LinksPerPlace);
                    for (int p = 0; p < places.size(); ++p)
                        if (places[p].table == "EQUIPMENTS_UPGRADE_FROM" &&
                            places[p].column == "UPGRADE_FROM")
                            expected[p] = 0;
                    QVERIFY2(world::linkCounts(kind, name) == expected, qPrintable("half a record: " + name));
                    const QString stats = kind == "Equipment" ? QString("WEAPON_STATS") : QString();
                    QCOMPARE(world::recordRows(kind, name, stats),
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
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        useFolder(dir.path());
        QString error;
        // Two backups big enough for the copy to take a while, and the database they replace.
        for (const char* which : {"a", "b"}) {
            const QString path = dir.filePath(QString(which) + ".bak");
            QVERIFY2(GenerateSynthetic(path, 3000, &error), qPrintable(error));
            db().open(connectionFor(path));
            db().execute(QString("INSERT INTO CHARACTERS (CHARACTER_NAME) VALUES ('Backup %1')").arg(which));
            db().close();
        }
        QVERIFY2(CreateDatabase(databasePath(), &error), qPrintable(error));
        db().open(connectionFor(databasePath()));
        db().execute("INSERT INTO CHARACTERS (CHARACTER_NAME) VALUES ('Original')");
        db().close();

        int ops = 0, midRestore = 0;
        QSet<QString> seen;
        for (int k = 0; k < Kills; ++k) {
            const int done = runAndKill({"--child-restore", dir.path()}, 5, 300);
            QVERIFY2(done >= 0, "the child did not start");
            ops += done;
            midRestore +=
                QFile::exists(databasePath() + ".restoring") || QFile::exists(databasePath() + ".temp");
            QCOMPARE(CheckRestorable(databasePath()), QString());
            db().open(connectionFor(databasePath()));
            const QString who = [] {
                Recordset rs;
                rs.open("SELECT CHARACTER_NAME FROM CHARACTERS");
                return rs.eof() ? QString() : rs.value(0).toString();
            }();
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
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString file = dir.filePath("made.vosk");
        QProcess first;
        first.start(VOSK_MAKEDB, {"--sample", file});
        QVERIFY(first.waitForFinished(60000) && first.exitCode() == 0);
        useFolder(dir.path());
        db().open(connectionFor(file));
        const long sampleRows = world::count("SELECT COUNT(*) FROM EQUIPMENTS");
        db().close();
        // The kill moments are spread over how long a build takes on this machine, so a fast machine
        // is stopped mid-build as often as a slow one; the world grows until a build takes a while.
        int Equipment = 8000;
        qint64 buildMs = 0;
        for (;;) {
            QElapsedTimer timer;
            timer.start();
            QProcess probe;
            probe.start(VOSK_MAKEDB, {"--force", "--synthetic", QString::number(Equipment), file});
            QVERIFY(probe.waitForFinished(120000) && probe.exitCode() == 0);
            buildMs = timer.elapsed();
            QProcess back;
            back.start(VOSK_MAKEDB, {"--force", "--sample", file});
            QVERIFY(back.waitForFinished(60000) && back.exitCode() == 0);
            if (buildMs >= 400 || Equipment >= 256000)
                break;
            Equipment *= 2;
        }
        int killed = 0, complete = 0;
        for (int k = 0; k < 12; ++k) {
            QProcess tool;
            tool.start(VOSK_MAKEDB, {"--force", "--synthetic", QString::number(Equipment), file});
            QVERIFY(tool.waitForStarted());
            const int at =
                QRandomGenerator::global()->bounded(int(buildMs / 20) + 1, int(buildMs * 6 / 5) + 2);
            const bool stopped = !tool.waitForFinished(at);
            if (stopped) {
                tool.kill();
                tool.waitForFinished(10000);
                ++killed;
            }
            QCOMPARE(CheckRestorable(file), QString());
            db().open(connectionFor(file));
            const long rows = world::count("SELECT COUNT(*) FROM EQUIPMENTS");
            db().close();
            QVERIFY2(rows == sampleRows || rows == Equipment, qPrintable(QString::number(rows)));
            complete += rows == Equipment ? 1 : 0;
            if (rows == Equipment) { // back to the sample for the next round
                QProcess again;
                again.start(VOSK_MAKEDB, {"--force", "--sample", file});
                QVERIFY(again.waitForFinished(60000) && again.exitCode() == 0);
            }
        }
        qInfo("vosk-makedb: %d equipment in %lld ms; 12 runs, %d killed while building, %d finished",
              Equipment, buildMs, killed, complete);
        QVERIFY(killed > 0);
    }
};

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() >= 4 && args.at(1) == "--child-recordops")
        return childRecordOps(args.at(2), args.at(3).toUInt());
    if (args.size() >= 3 && args.at(1) == "--child-restore")
        return childRestore(args.at(2));
    TestKill test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_kill.moc"
