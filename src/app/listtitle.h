#pragma once
// The title of the printed list: the filters in force, as a line of text.
#include "app/liststatements.h"

// "Type: Beam, Level: 12, Class: Terran, Checked only"; empty when nothing is filtered. Filters the
// category does not use are "All" in ListFilters and so never named.
QString ListFilterText(const ListFilters& filters);
