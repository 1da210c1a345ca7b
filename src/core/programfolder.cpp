#include "core/programfolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QStringList>

namespace {
QString& folderRef() {
    static QString folder;
    return folder;
}
} // namespace

QString programFolder() {
    QString& f = folderRef();
    if (f.isEmpty()) {
        const QString env = qEnvironmentVariable("VOSK_HOME");
        if (!env.isEmpty())
            f = QDir::cleanPath(env);
        else if (QCoreApplication::instance())
            f = QCoreApplication::applicationDirPath();
        else
            f = QDir::currentPath();
    }
    return f;
}

void setProgramFolder(const QString& folder) {
    folderRef() = QDir::cleanPath(folder);
}

void initProgramFolder(const QStringList& arguments) {
    for (int i = 0; i < arguments.size(); ++i) {
        const QString& a = arguments.at(i);
        if (a == QLatin1String("--folder") && i + 1 < arguments.size()) {
            setProgramFolder(QDir(arguments.at(i + 1)).absolutePath());
            return;
        }
        if (a.startsWith(QLatin1String("--folder="))) {
            setProgramFolder(QDir(a.mid(9)).absolutePath());
            return;
        }
    }
    folderRef().clear();
    programFolder();
}

QString databasePath() {
    return programFolder() + QDir::separator() + QStringLiteral("data.vosk");
}
QString iniPath() {
    return programFolder() + QDir::separator() + QStringLiteral("VOSK.ini");
}
QString errorLogPath() {
    return programFolder() + QStringLiteral("/errors.log");
}
