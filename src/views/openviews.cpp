#include "views/openviews.h"

namespace {
EditorOpener g_editorOpener = nullptr;
}

void setEditorOpener(EditorOpener opener) {
    g_editorOpener = opener;
}
EditorOpener editorOpener() {
    return g_editorOpener;
}
