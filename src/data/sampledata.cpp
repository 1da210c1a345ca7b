#include "data/sampledata.h"
bool FillSampleData(sqlite3*, QString* error) { if (error) *error = "not yet"; return false; }
bool FillSampleData(const QString&, QString* error) { if (error) *error = "not yet"; return false; }
bool FillLookups(sqlite3*, QString* error) { if (error) *error = "not yet"; return false; }
