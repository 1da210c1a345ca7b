// Print Filtered List.
#include "app/frmmain.h"
#include "app/wiring.h"

void wirePrinting(frmMain& w) {
    Q_UNUSED(w);
}
