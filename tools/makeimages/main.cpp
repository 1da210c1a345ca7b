// vosk-makeimages <folder>: draws the item icons, the list background and the splash picture into
// <folder>/ITEM_ICON and <folder>/IMAGE as GIF files.
#include "gifwriter.h"
#include "icons.h"
#include "scenes.h"

#include <QDir>
#include <QGuiApplication>
#include <QTextStream>

int main(int argc, char** argv) {
    // Runs during the build, where there is no display.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QTextStream err(stderr);
    const QStringList args = app.arguments();
    if (args.size() < 2) {
        err << "usage: vosk-makeimages <images folder>\n";
        return 2;
    }
    const QDir root(args.at(1));
    const QString iconDir = root.filePath(QStringLiteral("ITEM_ICON"));
    const QString imageDir = root.filePath(QStringLiteral("IMAGE"));
    if (!QDir().mkpath(iconDir) || !QDir().mkpath(imageDir)) {
        err << "cannot create " << root.absolutePath() << "\n";
        return 1;
    }
    QString error;
    auto put = [&](const QImage& img, const QString& path, bool dither) {
        if (gif::write(img, path, dither, &error))
            return true;
        err << "cannot write " << path << ": " << error << "\n";
        return false;
    };
    for (int i = 0; i < icons::count(); ++i)
        if (!put(icons::draw(i), iconDir + QStringLiteral("/%1.gif").arg(i), false))
            return 1;
    if (!put(scenes::background(), imageDir + QStringLiteral("/BG_VOSK.GIF"), true) ||
        !put(scenes::splash(), imageDir + QStringLiteral("/SPLASH.GIF"), true))
        return 1;
    return 0;
}
