#pragma once
// The shopping list: the totals of a plan grouped by how each record is had. A record made from its
// recipe in the plan is Refined (raw materials) or Built (the rest); any other is Bought when a station
// sells it, else Mined when a sector yields it, else Looted when a MOB drops it, else of Unknown
// source; except that a record priced "Loot Only" that a MOB drops is Looted. Each line says where (the
// stations with sectors and systems, the sectors, the MOBs with their drop frequency and spawn sectors, or
// what it is made from), what it costs where a price is known, and what in the plan calls for it.
#include "planner/sources.h"
#include "views/billofmaterials.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace planner {

enum class Group { Bought, Mined, Refined, Built, Looted, Unknown };
inline constexpr int GroupCount = 6;
// "Bought", "Mined", "Refined", "Built", "Looted", "Unknown Source".
QString GroupTitle(Group group);

struct ShoppingLine {
    int record = -1; // in the recipe book
    bom::Ref ref;
    Group group = Group::Unknown;
    bool target = false;
    bool found = true; // a row of its own table exists
    int level = 0;
    qint64 ordered = 0, needed = 0, have = 0, toGet = 0;
    qint64 owned = 0;
    bool checked = false;
    QString priceText; // the price words for -2/-1/0; for built equipment the manufacturing fee
    qint64 cost = 0;   // the price (or fee) times toGet, when it is a price
    bool costKnown = false;
    QString where;     // the sources of its group, or what one of it is made from
    QString otherWays; // the ways of having it that its group does not show
    QString usedIn;    // the records of the plan that call for it, with the amount each takes
    QString forTargets;
};

struct GroupTotal {
    int lines = 0;
    qint64 cost = 0;
    int unpriced = 0; // lines still to get without a price
};

struct ShoppingList {
    QList<ShoppingLine> lines; // by group, then by name
    GroupTotal groups[GroupCount];
    qint64 totalCost = 0; // what the bought lines cost, where their price is known
    int unpriced = 0;     // bought lines still to get without a price
    qint64 fees = 0;      // manufacturing fees of the equipment built
    QStringList warnings; // cycles, totals held at the limit, records missing, equipment not manufacturable
};

ShoppingList BuildShoppingList(const bom::RecipeBook& book, const bom::Plan& plan, const SourceBook& sources,
                               const QList<bom::Target>& targets);

// A quantity or sum of credits as the list shows it: "1,234".
QString QuantityText(qint64 value);

} // namespace planner
