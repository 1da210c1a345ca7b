// Help Topics, Read Me, About and Submit a Bug.
#include "app/frmmain.h"
#include "app/wiring.h"

void wireHelp(frmMain& w) {
    Q_UNUSED(w);
}
