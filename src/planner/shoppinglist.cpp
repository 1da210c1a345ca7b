#include "planner/shoppinglist.h"

#include "views/modmain.h"

#include <algorithm>

namespace planner {

namespace {
using bom::Kind;

const char* const kGroupTitles[GroupCount] = {"Bought", "Mined",  "Refined",
                                              "Built",  "Looted", "Unknown Source"};

Group groupOf(const bom::Record& r, const bom::Line& line, const Sources& s) {
    if (line.built)
        return r.kind == Kind::RawMaterial ? Group::Refined : Group::Built;
    // A price of "Loot Only" says where to look first, whatever stations are recorded.
    if (r.price == -1 && !s.drops.isEmpty())
        return Group::Looted;
    if (!s.stations.isEmpty())
        return Group::Bought;
    if (!s.mines.isEmpty())
        return Group::Mined;
    if (!s.drops.isEmpty())
        return Group::Looted;
    return Group::Unknown;
}

qint64 cappedProduct(qint64 a, qint64 b) {
    if (a <= 0 || b <= 0)
        return 0;
    return a > bom::MaxQuantity / b ? bom::MaxQuantity : a * b;
}

QString joined(const QStringList& parts) {
    return parts.join(QStringLiteral("; "));
}

QString stationsText(const Sources& s) {
    QStringList parts;
    for (const Station& st : s.stations)
        parts << StationText(st);
    return joined(parts);
}

QString minesText(const Sources& s) {
    QStringList parts;
    for (const Place& p : s.mines)
        parts << PlaceText(p);
    return joined(parts);
}

QString dropsText(const Sources& s) {
    QStringList parts;
    for (const Drop& d : s.drops)
        parts << DropText(d);
    return joined(parts);
}

// "3 × Refined Ferrite + 1 × Cobalt Ore each": one of it, made from its recipe.
QString recipeText(const bom::RecipeBook& book, const bom::Record& r) {
    QStringList parts;
    QHash<int, qint64> amounts;
    QList<int> order;
    for (const bom::Ingredient& in : r.ingredients) {
        if (!amounts.contains(in.record))
            order << in.record;
        amounts[in.record] += in.amount;
    }
    for (const int i : order)
        parts << QuantityText(amounts.value(i)) + QStringLiteral(" \u00d7 ") + book.at(i).name;
    return parts.join(QStringLiteral(" + ")) + QStringLiteral(" each");
}

// Other ways of having it than its group's: a refined ore that is also sold, a bought one also mined.
QString otherWaysText(Group group, const Sources& s) {
    QStringList parts;
    if (group != Group::Bought && !s.stations.isEmpty())
        parts << QStringLiteral("sold at ") + stationsText(s);
    if (group != Group::Mined && !s.mines.isEmpty())
        parts << QStringLiteral("mined in ") + minesText(s);
    if (group != Group::Looted && !s.drops.isEmpty())
        parts << QStringLiteral("dropped by ") + dropsText(s);
    return parts.join(QStringLiteral(" | "));
}

// "Barrel ×3, Core ×2": the records of the plan that call for it, and how many one of each takes.
QString usedInText(const bom::RecipeBook& book, const bom::Line& line) {
    QStringList parts;
    for (const int user : line.usedBy) {
        qint64 amount = 0;
        for (const bom::Ingredient& in : book.at(user).ingredients)
            if (in.record == line.record)
                amount += in.amount;
        parts << book.at(user).name + QStringLiteral(" \u00d7") + QuantityText(amount);
    }
    std::sort(parts.begin(), parts.end(),
              [](const QString& a, const QString& b) { return a.compare(b, Qt::CaseInsensitive) < 0; });
    return parts.join(QStringLiteral(", "));
}
} // namespace

QString GroupTitle(Group group) {
    return QLatin1String(kGroupTitles[int(group)]);
}

QString QuantityText(qint64 value) {
    return FormatWhole(value);
}

ShoppingList BuildShoppingList(const bom::RecipeBook& book, const bom::Plan& plan, const SourceBook& sources,
                               const QList<bom::Target>& targets) {
    ShoppingList list;
    QStringList missing, notManufacturable;
    for (const bom::Line& l : plan.lines) {
        const bom::Record& r = book.at(l.record);
        const Sources& s = sources.of(r.ref());
        ShoppingLine line;
        line.record = l.record;
        line.ref = r.ref();
        line.group = groupOf(r, l, s);
        line.target = l.ordered > 0;
        line.found = r.found;
        line.level = r.level;
        line.ordered = l.ordered;
        line.needed = l.needed;
        line.have = l.have;
        line.toGet = l.toGet();
        line.owned = r.owned;
        line.checked = r.checked;

        const bool builtEquipment = line.group == Group::Built && r.kind == Kind::Equipment;
        if (builtEquipment) {
            line.priceText = PriceText(FormatWhole(r.fee), true);
            line.costKnown = r.fee > 0;
            if (r.fee < 0 && line.toGet > 0)
                notManufacturable << r.name;
        } else if (line.group != Group::Built && line.group != Group::Refined && r.found) {
            line.priceText = PriceText(FormatWhole(r.price), false);
            line.costKnown = line.group == Group::Bought && r.price > 0;
        }
        if (line.costKnown)
            line.cost = cappedProduct(line.toGet, builtEquipment ? r.fee : r.price);

        switch (line.group) {
        case Group::Bought:
            line.where = stationsText(s);
            break;
        case Group::Mined:
            line.where = minesText(s);
            break;
        case Group::Looted:
            line.where = dropsText(s);
            break;
        case Group::Refined:
        case Group::Built:
            line.where = recipeText(book, r);
            break;
        case Group::Unknown:
            line.where = r.found ? QStringLiteral("No station, sector or MOB is recorded for it")
                                 : QStringLiteral("Not in the database");
            break;
        }
        line.otherWays = otherWaysText(line.group, s);
        line.usedIn = usedInText(book, l);
        QStringList forTargets;
        for (size_t t = 0; t < l.targets.size() && t < size_t(targets.size()); ++t) {
            const int target = book.indexOf(targets[qsizetype(t)].ref);
            if (l.targets[t] && target >= 0 && !forTargets.contains(book.at(target).name))
                forTargets << book.at(target).name;
        }
        line.forTargets = forTargets.join(QStringLiteral(", "));
        if (!r.found)
            missing << r.name + QStringLiteral(" (") + bom::kindWord(r.kind) + u')';
        list.lines.append(line);
    }
    std::stable_sort(list.lines.begin(), list.lines.end(), [](const ShoppingLine& a, const ShoppingLine& b) {
        if (a.group != b.group)
            return a.group < b.group;
        const int byName = a.ref.name.compare(b.ref.name, Qt::CaseInsensitive);
        return byName != 0 ? byName < 0 : a.ref.kind < b.ref.kind;
    });
    for (const ShoppingLine& line : list.lines) {
        GroupTotal& g = list.groups[int(line.group)];
        ++g.lines;
        if (line.costKnown)
            g.cost = qMin(bom::MaxQuantity, g.cost + line.cost);
        else if (line.toGet > 0 && line.group == Group::Bought)
            ++g.unpriced;
        if (line.group == Group::Built && line.costKnown)
            list.fees = qMin(bom::MaxQuantity, list.fees + line.cost);
    }
    list.totalCost = list.groups[int(Group::Bought)].cost;
    list.unpriced = list.groups[int(Group::Bought)].unpriced;

    for (const bom::Cycle& c : plan.cycles)
        list.warnings << QStringLiteral("A recipe contains itself: %1. That step is not followed.")
                             .arg(bom::CycleText(book, c));
    if (plan.overflow)
        list.warnings << QStringLiteral("Some totals are too large to count; they are held at %1.")
                             .arg(QuantityText(bom::MaxQuantity));
    if (!missing.isEmpty())
        list.warnings << QStringLiteral("Named in a recipe but not in the database: %1.")
                             .arg(missing.join(QStringLiteral(", ")));
    for (const QString& n : notManufacturable)
        list.warnings << QStringLiteral("%1 is marked Not Manufacturable.").arg(n);
    return list;
}

} // namespace planner
