#pragma once
// Start-up: one copy only, a writable database file, the shared connection, the schema check, the
// splash while the item icons are warmed, then the main window.
#include <QString>
#include <functional>

class QWidget;

// The start-up sequence. When it returns with a window showing, the program runs; otherwise it ends.
void RunVOSK();
// RunVOSK, then the event loop for as long as a window it showed is open. Returns the loop's exit code
// (0 when start-up showed no window).
int ExecVOSK();

// What the start-up message adds when the database file is missing or cannot be opened: the full
// path looked for and how to make a database there. fileExists: a file is there but is no database.
QString MissingDatabaseHelp(const QString& path, bool fileExists);

// Character i of the result is character i of the text with its code exclusive-or the fixed key
// (the routine is its own inverse).
QString Unscramble(const QString& text);
// The provider part of the connection text, unscrambled; it ends where "Data Source=" follows.
QString ProviderPrefix();
// The provider prefix, "Data Source=", the database path and ";".
QString ConnectionText();

// How the main window is made: constructing it loads it (settings read, lists filled) without showing
// it. main() installs the real window; tests install a stand-in.
void setMainWindowFactory(std::function<QWidget*()> factory);

// Called with every index the preload loop fetches (tests watch the loop through it).
void setPreloadObserver(std::function<void(long index)> observer);

// Closes every child window, then every remaining top-level window (ShutDown's last step).
void UnloadAllWindows();
