// Delete, Copy, Rename, Backup and Restore.
#include "app/frmmain.h"
#include "app/wiring.h"

void wireRecordOps(frmMain& w) {
    Q_UNUSED(w);
}
