#pragma once
// The sample world: a small, deterministic data set written for this project (every name invented),
// with every lookup filled and at least one record of every kind the windows show, including the odd
// cases they must cope with (names with an apostrophe, prices -1/-2/0, negative manufacturing fees,
// empty component types, a drop frequency in lower case, a spawn rate outside the list).
#include <QString>

struct sqlite3;

// Fills an open database that has the empty version-6 layout. One transaction: on failure nothing is
// written and *error says why.
bool FillSampleData(sqlite3* db, QString* error = nullptr);
// Opens an existing database file (made by CreateDatabase) and fills it.
bool FillSampleData(const QString& path, QString* error = nullptr);

namespace sample {
// Words of the ordered lists, in table order.
extern const char* const DropFrequencies[5]; // "Very Rare" .. "Very Frequent"
extern const char* const SpawnRates[5];      // "Very Slow" .. "Very Fast"
extern const char* const Temperaments[5];    // "Very Low" .. "Very High"
extern const char* const NavTypes[9];
} // namespace sample
