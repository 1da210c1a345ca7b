#pragma once
#include <QString>

// Doubles every single quote for use inside a quoted SQL literal, unless the text already holds two
// single quotes together, in which case it is taken as quoted already and returned unchanged.
QString FixQuotes(const QString& text);
// False when the name holds two single quotes together: such a name cannot survive FixQuotes.
bool ValidName(const QString& name);
