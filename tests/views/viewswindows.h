#pragma once
// What the window tests share: closing the record windows between tests, and counting the visible
// top-level windows of one caption (a second request must not open a second window).
#include "core/childwindows.h"

#include <QApplication>
#include <QWidget>

inline void closeViews() {
    CloseChildWindows();
    QApplication::processEvents();
}

inline int visibleWindows(const QString& title, const QString& objectName = QString()) {
    int n = 0;
    for (QWidget* w : QApplication::topLevelWidgets())
        n += w->isVisible() && w->windowTitle() == title &&
             (objectName.isEmpty() || w->objectName() == objectName);
    return n;
}
