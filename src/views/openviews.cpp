#include "views/openviews.h"

namespace {
EditorOpener g_editorOpener = nullptr;
MapOpener g_mapOpener = nullptr;
} // namespace

void setEditorOpener(EditorOpener opener) {
    g_editorOpener = opener;
}
EditorOpener editorOpener() {
    return g_editorOpener;
}

void setMapOpener(MapOpener opener) {
    g_mapOpener = opener;
}
MapOpener mapOpener() {
    return g_mapOpener;
}
