// Sector Maps, and the views' links to a map.
#include "app/frmmain.h"
#include "app/wiring.h"
#include "maps/frmmap.h"
#include "views/openviews.h"

namespace {
void openMapAt(const QString& sector, const QString& navPoint) {
    OpenMap(sector, navPoint);
}
} // namespace

void wireMaps(frmMain& w) {
    w.setMenuHandler(QStringLiteral("mnuViewMaps"), [] { OpenMap(); });
    setMapOpener(&openMapAt);
}
