#include "views/openviews.h"

namespace {
EditorOpener g_editorOpener = nullptr;
EditorAvailable g_editorAvailable = nullptr;
MapOpener g_mapOpener = nullptr;
} // namespace

void setEditorOpener(EditorOpener opener) {
    g_editorOpener = opener;
}
EditorOpener editorOpener() {
    return g_editorOpener;
}

void setEditorAvailable(EditorAvailable available) {
    g_editorAvailable = available;
}

bool CanEdit(const QString& kind) {
    return g_editorOpener != nullptr && (g_editorAvailable == nullptr || g_editorAvailable(kind));
}

void setMapOpener(MapOpener opener) {
    g_mapOpener = opener;
}
MapOpener mapOpener() {
    return g_mapOpener;
}
