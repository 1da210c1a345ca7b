// vosk-makedb --create FILE | --sample FILE | --synthetic N FILE | --tree NODES ROOT FILE
//             [--cycle] [--force]
// Exit codes: 0 done, 1 bad arguments, 2 the file exists, 3 the database could not be written.
#include "data/backup.h"
#include "data/sampledata.h"
#include "data/schema.h"
#include "data/synthetic.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <cstdio>

namespace {

enum Exit { Done = 0, BadArguments = 1, FileExists = 2, WriteFailed = 3 };

void say(FILE* to, const QString& text) {
    std::fprintf(to, "%s\n", text.toLocal8Bit().constData());
}

int usage(const QString& problem) {
    if (!problem.isEmpty())
        say(stderr, QStringLiteral("vosk-makedb: ") + problem);
    say(stderr,
        QStringLiteral(
            "Usage: vosk-makedb [--force] --create FILE         a new, empty database (version %1)\n"
            "       vosk-makedb [--force] --sample FILE         a new database with the sample world\n"
            "       vosk-makedb [--force] --synthetic N FILE    a new database with N equipment rows\n"
            "       vosk-makedb [--force] --tree NODES ROOT FILE\n"
            "                                                   a new sample database plus an equipment ROOT\n"
            "                                                   whose build tree has NODES nodes\n"
            "Add --cycle to any of them to add self-made recipes (for testing the build trees).\n"
            "An existing FILE is only replaced with --force.")
            .arg(schema::Version));
    return BadArguments;
}

bool positiveNumber(const QString& text, qint64* n) {
    bool ok = false;
    *n = text.toLongLong(&ok);
    return ok && *n > 0;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QStringList args = app.arguments().mid(1);
    const bool force = args.removeAll(QStringLiteral("--force")) > 0;
    const bool cycle = args.removeAll(QStringLiteral("--cycle")) > 0;
    if (args.isEmpty())
        return usage(QString());

    const QString mode = args.takeFirst();
    qint64 count = 0;
    QString root;
    if (mode == QLatin1String("--create") || mode == QLatin1String("--sample")) {
        if (args.size() != 1)
            return usage(QStringLiteral("%1 takes one file name.").arg(mode));
    } else if (mode == QLatin1String("--synthetic")) {
        if (args.size() != 2)
            return usage(QStringLiteral("--synthetic takes a count and a file name."));
        if (!positiveNumber(args.takeFirst(), &count))
            return usage(QStringLiteral("The equipment count must be a whole number above 0."));
    } else if (mode == QLatin1String("--tree")) {
        if (args.size() != 3)
            return usage(QStringLiteral("--tree takes a node count, a root name and a file name."));
        if (!positiveNumber(args.takeFirst(), &count) || count > 10000000)
            return usage(QStringLiteral("The node count must be a whole number from 1 to 10000000."));
        root = args.takeFirst();
        if (root.trimmed().isEmpty())
            return usage(QStringLiteral("The root name must not be empty."));
    } else {
        return usage(QStringLiteral("Unknown option \"%1\".").arg(mode));
    }
    const QString file = args.takeFirst();

    auto refuseExisting = [&file] {
        say(stderr,
            QStringLiteral("vosk-makedb: \"%1\" already exists; use --force to replace it.").arg(file));
        return FileExists;
    };
    if (QFileInfo::exists(file) && !force)
        return refuseExisting();

    // The database is built under a temporary name beside the file and renamed into place only when
    // complete: stopped at any moment, the tool leaves the file as it was (or absent), never a
    // valid-looking but unfinished database. An existing file is replaced only by that rename.
    const QString building = file + QStringLiteral(".making");
    QFile::remove(building);
    QString error;
    bool ok = false;
    if (mode == QLatin1String("--synthetic")) {
        SyntheticCounts written;
        ok = GenerateSynthetic(building, count, &error, &written);
        if (ok)
            say(stdout,
                QStringLiteral("Wrote %1 equipment, %2 components, %3 raw materials, %4 items, %5 MOBs.")
                    .arg(written.equipment)
                    .arg(written.components)
                    .arg(written.rawMaterials)
                    .arg(written.items)
                    .arg(written.mobs));
    } else {
        ok = CreateDatabase(building, &error);
        if (ok && mode != QLatin1String("--create"))
            ok = FillSampleData(building, &error);
        if (ok && mode == QLatin1String("--tree"))
            ok = GenerateBuildTree(building, root, int(count), 4, &error);
    }
    if (ok && cycle)
        ok = AddRecipeCycle(building, RecipeCycle(), &error);
    if (ok && QFileInfo::exists(file) && !force) { // made by someone else meanwhile
        QFile::remove(building);
        return refuseExisting();
    }
    ok = ok && SyncFile(building, &error) && ReplaceFile(building, file, &error);

    if (!ok) {
        QFile::remove(building); // never leave a half-made database behind
        say(stderr, QStringLiteral("vosk-makedb: ") + error);
        return WriteFailed;
    }
    say(stdout, QStringLiteral("Created \"%1\".").arg(file));
    return Done;
}
