#pragma once
// The start-up checks and the way out that the main window shares with start-up.
#include <functional>

// True when the newest schema version recorded in DB_VERSION is the one this program reads (6).
bool CheckDBComp();
// Closes the connection, releases the shared objects and unloads every window.
void ShutDown();
// Makes sure at least one game character is recorded, asking the user for a name until one is given
// (frmMain::CheckCharacters calls this).
void CheckCharacters();

// The window layer installs how every window is unloaded; ShutDown calls it last.
void setWindowUnloader(std::function<void()> unloader);

namespace modmain {
constexpr long SchemaVersion = 6;
}
