#pragma once
// The game's mouse cursor ("DisplayVLNCursor"): a pointer in the game's colours on every window of the
// program while the option is on. Controls that have a pointer of their own (the text beam of an edit
// box, a splitter's arrows) keep it.
#include <QCursor>

// The pointer itself, drawn here: a gold arrow with a dark rim and a cyan glow, hot spot at its tip.
QCursor GameCursor();
// Switches the pointer on or off for the windows already open and for every window opened later.
void ApplyGameCursor(bool on);
bool GameCursorShown();
