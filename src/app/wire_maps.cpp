// Sector Maps, and the views' links to a map.
#include "app/frmmain.h"
#include "app/wiring.h"

void wireMaps(frmMain& w) {
    Q_UNUSED(w);
}
