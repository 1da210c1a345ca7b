#pragma once
// The child-window manager: every record window registers itself under its caption; a request for a
// caption that is already open brings that window forward instead of opening another.
#include <QString>

class QWidget;

// True when a window with that caption is open; it is brought to the front.
bool CheckWindow(const QString& caption);
// Registers a window for as long as it lives (it is removed when destroyed).
void RegisterChildWindow(QWidget* window);
QWidget* FindChildWindow(const QString& caption);
// Closes every registered window (shutdown).
void CloseChildWindows();

// The window that owns new record and editor windows: the main window while it exists, registered by
// the main window itself so that nothing below the application needs to know it. nullptr without one.
void SetOwnerWindow(QWidget* owner);
QWidget* OwnerWindow();
