// VOSK starts from its start procedure, not from a window: RunVOSK decides whether a window shows.
#include "app/frmmain.h"
#include "app/modinit.h"
#include "app/qtprompt.h"
#include "core/frmprogress.h"
#include "core/programfolder.h"

#include <QApplication>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("VOSK"));
    initProgramFolder(QApplication::arguments());

    QtPrompt prompt;
    setPrompts(&prompt);
    InstallProgressWindow();
    setMainWindowFactory([] { return static_cast<QWidget*>(new frmMain); });

    const int result = ExecVOSK();
    setPrompts(nullptr);
    return result;
}
