#pragma once
// The child side of the start-up figures:
//
//   vosk-bench --app-child --folder DIR --launch SECONDS [--seed-name-sort]
//
// starts the program as its own main() does, on the program folder DIR (with Equipment as the
// starting category), and prints what it measures as "@ key wall cpu" lines (stats.h). SECONDS is the
// monotonic clock when the parent launched this process, so that loading the libraries counts. The
// parent sets XDG_CONFIG_HOME, so that the settings read and written are its own.

namespace bench {

// The keys the child prints: wall seconds from launch and CPU seconds of the process so far...
inline constexpr const char* FirstScreen = "first-screen"; // ...at the first screenful of rows painted
inline constexpr const char* WholeList = "whole-list";     // ...when the list had every row
// The longest the main window went without processing an event it could take (Freeze), and without
// processing any event (Stall, a modal window's included), from the first screenful until the list
// was whole: the longest such gap by the wall clock, and the most CPU time spent in one.
inline constexpr const char* StartFreeze = "start-freeze";
inline constexpr const char* StartStall = "start-stall";
inline constexpr const char* Rows = "rows"; // the rows of the whole list, as the wall value
// The category switch back to Equipment from a small list, timed from the switch: the first
// screenful painted and the whole list (wall and CPU), then the freeze and the stall until whole.
inline constexpr const char* SwitchScreen = "switch-screen";
inline constexpr const char* SwitchWhole = "switch-whole";
inline constexpr const char* SwitchFreeze = "switch-freeze";
inline constexpr const char* SwitchStall = "switch-stall";
// 1 when the status bar painted "Refreshing Grid" during the switch, else 0 (as the wall value).
inline constexpr const char* SwitchStatus = "switch-status";

int appChild(int argc, char** argv);

} // namespace bench
