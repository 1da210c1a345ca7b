#pragma once
// The shopping list as text to paste (a chat, a note), as CSV for a spreadsheet, and as HTML to print.
#include "planner/shoppinglist.h"

namespace planner {

// "2 × Pulse Cannon, 10 × Basic Logic Board": the targets as the list's title names them.
QString TargetsText(const QList<bom::Target>& targets, const bom::RecipeBook& book);

// Groups with their totals, one line per record: a box ("[x]" once obtained or covered), the quantity
// still to get, the name, the price and cost where known, where to get it. Lines end with CR LF.
QString ShoppingListText(const ShoppingList& list, const QString& targets);

// One row per line with a header row; numbers without grouping; fields quoted where they must be
// (RFC 4180), rows ended by CR LF.
QString ShoppingListCsv(const ShoppingList& list);

// A document to print: title, totals, warnings, then a table per group.
QString ShoppingListHtml(const ShoppingList& list, const QString& targets);

} // namespace planner
