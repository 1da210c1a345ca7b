#pragma once
// Pieces shared by the statements and grid lists of the component, item and station editors.
#include "editors/griddef.h"

#include <QList>
#include <QString>

// A number as typed, or NULL when the box is empty (a bare "LVL = ," would not run).
QString SqlNumber(const QString& typed);
// A text between single quotes, quote-doubled; NULL when it is empty.
QString SqlText(const QString& text);
// True for an empty box or a whole number as the boxes take it: digits after an optional minus sign.
bool IsWholeNumberText(const QString& typed);
// The grid of the list with the widget's name (the first one when there is none).
const GridDef& FindGridDef(const QList<GridDef>& defs, const QString& widget);
