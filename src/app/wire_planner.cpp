// The shopping list.
#include "app/frmmain.h"
#include "app/wiring.h"

void wirePlanner(frmMain& w) {
    Q_UNUSED(w);
}
