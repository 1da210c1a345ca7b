// Options and the game channel.
#include "app/frmmain.h"
#include "app/frmoptions.h"
#include "app/wiring.h"
#include "core/settings.h"
#include "game/vlinterface.h"

#include <QApplication>

void wireOptions(frmMain& w) {
    // The channel lives as long as the main window: it stops before the connection is closed.
    auto* channel = new clsVLInterface(&w);
    channel->setBeep([] { QApplication::beep(); });
    setGameChannel(channel);
    // The folder first, so that switching on never writes into the logs of another folder.
    channel->setVlNFolder(opt::text(opt::VLPath));
    channel->setInteractWithGame(opt::flag(opt::VLInteractOn));

    w.setMenuHandler(QStringLiteral("mnuFileOptions"), [&w] {
        frmOptions options(&w);
        options.exec();
    });
}
