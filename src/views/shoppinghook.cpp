#include "views/shoppinghook.h"

namespace {
ShoppingListAdder g_adder = nullptr;
}

void setShoppingListAdder(ShoppingListAdder adder) {
    g_adder = adder;
}

ShoppingListAdder shoppingListAdder() {
    return g_adder;
}
