#include "views/openviews.h"

namespace {
EditorOpener g_editorOpener = nullptr;
EditorAvailable g_editorAvailable = nullptr;
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
