#pragma once
// Where "Add to Shopping List" in the record and build views leads. The shopping list sits above the
// views, so the application installs the way there; until then the views offer no such command.
// kind: "Equipment", "Components", "Raw Materials" or "Items" (the main list's category words).
#include <QString>

using ShoppingListAdder = void (*)(const QString& kind, const QString& name);
void setShoppingListAdder(ShoppingListAdder adder);
ShoppingListAdder shoppingListAdder();
