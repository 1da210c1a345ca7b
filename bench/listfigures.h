#pragma once
// The main list's figure groups, run per database size by main.cpp on the open database.
#include <QString>

namespace bench {

// The whole list loaded into a list view on screen and loaded plainly, each against the bare
// statement loop, all three taken in turns; judged at 1,000,000 rows.
void fillFigures(qint64 size, int runs);
// Find All and Find Next over 10 columns.
void findFigures(int runs);
// Header clicks on a list view on screen: name, number and date columns, the first sort after a load,
// the name sorted again, and a second click on the same header.
void sortFigures(int runs);
// The build tree of 10,000 nodes.
void treeFigure(int runs);
// The memory of the loaded list, measured in fresh processes of this program.
void memoryFigure(const QString& file);

} // namespace bench
