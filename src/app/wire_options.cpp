// Options and the game channel.
#include "app/frmmain.h"
#include "app/wiring.h"

void wireOptions(frmMain& w) {
    Q_UNUSED(w);
}
