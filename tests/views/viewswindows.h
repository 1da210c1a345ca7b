#pragma once
// What the window tests share: closing the record windows between tests, and counting the visible
// top-level windows of one caption (a second request must not open a second window).
#include "core/childwindows.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

// Closes the record windows and deletes them at once (they delete themselves on close, later), so
// that nothing of a test is left alive for the next one, or at exit.
inline void closeViews() {
    CloseChildWindows();
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->isVisible())
            w->close();
    QApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

inline int visibleWindows(const QString& title, const QString& objectName = QString()) {
    int n = 0;
    for (QWidget* w : QApplication::topLevelWidgets())
        n += w->isVisible() && w->windowTitle() == title &&
             (objectName.isEmpty() || w->objectName() == objectName);
    return n;
}
