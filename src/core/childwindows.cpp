#include "core/childwindows.h"

#include <QList>
#include <QPointer>
#include <QWidget>

namespace {
QPointer<QWidget>& owner() {
    static QPointer<QWidget> window;
    return window;
}

QList<QPointer<QWidget>>& windows() {
    static QList<QPointer<QWidget>> list;
    return list;
}
} // namespace

void RegisterChildWindow(QWidget* window) {
    auto& list = windows();
    list.removeAll(nullptr);
    if (!list.contains(window))
        list.append(window);
}

QWidget* FindChildWindow(const QString& caption) {
    for (const QPointer<QWidget>& w : windows())
        if (w && w->windowTitle() == caption)
            return w;
    return nullptr;
}

bool CheckWindow(const QString& caption) {
    QWidget* w = FindChildWindow(caption);
    if (!w)
        return false;
    if (w->isMinimized())
        w->showNormal();
    w->raise();
    w->activateWindow();
    return true;
}

void CloseChildWindows() {
    const QList<QPointer<QWidget>> copy = windows();
    for (const QPointer<QWidget>& w : copy)
        if (w)
            w->close();
    windows().clear();
}

void SetOwnerWindow(QWidget* window) {
    owner() = window;
}

QWidget* OwnerWindow() {
    return owner();
}
