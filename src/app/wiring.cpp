#include "app/wiring.h"

void WireMainWindow(frmMain& w) {
    wireEditors(w);
    wireRecordOps(w);
    wireOptions(w);
    wireMaps(w);
    wirePrinting(w);
    wireHelp(w);
    wirePlanner(w);
}
