#include "data/synthetic.h"
bool GenerateSynthetic(const QString&, qint64, QString* error, SyntheticCounts*) { if (error) *error = "not yet"; return false; }
bool GenerateSynthetic(sqlite3*, qint64, QString* error, SyntheticCounts*) { if (error) *error = "not yet"; return false; }
bool GenerateBuildTree(const QString&, const QString&, int, int, QString* error) { if (error) *error = "not yet"; return false; }
bool GenerateBuildTree(sqlite3*, const QString&, int, int, QString* error) { if (error) *error = "not yet"; return false; }
bool AddRecipeCycle(const QString&, const RecipeCycle&, QString* error) { if (error) *error = "not yet"; return false; }
bool AddRecipeCycle(sqlite3*, const RecipeCycle&, QString* error) { if (error) *error = "not yet"; return false; }
