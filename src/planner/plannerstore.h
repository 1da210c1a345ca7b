#pragma once
// What the shopping list keeps: the ticks and owned quantities of records, written at once as the
// main list writes its ticks, and the plan itself (targets and choices), kept in the settings so that
// the list is there again the next time.
#include "views/billofmaterials.h"

namespace planner {

// Writes the record's CHECK flag with the main list's statement for its kind. Throws VbError.
void WriteCheck(const bom::Ref& ref, bool checked);
// How many of the record the player has; 0 (or less) forgets it. Throws VbError, with its own message
// when the database cannot take the owned-quantity table.
void WriteOwned(const bom::Ref& ref, qint64 quantity);

struct SavedPlan {
    QList<bom::Target> targets;
    bool buildIntermediates = true;
    bool countHave = true;
    QHash<bom::Ref, bool> build; // per record: build it (true) or obtain it (false)
};
SavedPlan LoadPlan();
void SavePlan(const SavedPlan& plan);

} // namespace planner
