#include "views/billofmaterials.h"

#include "data/database.h"
#include "data/recordset.h"
#include "data/schema.h"
#include "views/batchquery.h"

#include <QSet>
#include <sqlite3.h>

#include <algorithm>

namespace bom {

namespace {
const char* const kCategories[KindCount] = {"Equipment", "Components", "Raw Materials", "Items"};
const char* const kWords[KindCount] = {"Equipment", "Component", "Raw Material", "Item"};

// In the build view's order: equipment by upgrade source, component, item, raw material; components
// by raw material, equipment, upgrade source, item; raw materials by source, item.
const RecipeTable kRecipes[] = {
    {Kind::Equipment, Kind::Equipment, Link::UpgradeFrom, "EQUIPMENTS_UPGRADE_FROM", "EQUIPMENT_NAME",
     "UPGRADE_FROM"},
    {Kind::Equipment, Kind::Component, Link::Component, "EQUIPMENTS_COMPONENTS", "EQUIPMENTS_EQUIPMENT",
     "COMPONENTS_COMPONENT"},
    {Kind::Equipment, Kind::Item, Link::Item, "EQUIPMENTS_ITEMS", "EQUIPMENTS_EQUIPMENT", "ITEM_NAME"},
    {Kind::Equipment, Kind::RawMaterial, Link::RawMaterial, "EQUIPMENTS_RAW_MATERIALS",
     "EQUIPMENTS_EQUIPMENT", "RAW_MATERIAL_NAME"},
    {Kind::Component, Kind::RawMaterial, Link::RawMaterial, "COMPONENTS_RAW_MATERIALS",
     "COMPONENTS_COMPONENT", "RAW_MATERIAL"},
    {Kind::Component, Kind::Equipment, Link::Equipment, "COMPONENTS_EQUIPMENTS", "COMPONENT_NAME",
     "EQUIPMENT_NAME"},
    {Kind::Component, Kind::Component, Link::UpgradeFrom, "COMPONENTS_UPGRADE_FROM", "COMPONENT_NAME",
     "UPGRADE_FROM"},
    {Kind::Component, Kind::Item, Link::Item, "COMPONENTS_ITEMS", "COMPONENT_NAME", "ITEM_NAME"},
    {Kind::RawMaterial, Kind::RawMaterial, Link::RefinedFrom, "RAW_MATERIALS_REFINES_FROM",
     "RAW_MATERIAL_NAME", "REFINES_FROM"},
    {Kind::RawMaterial, Kind::Item, Link::Item, "RAW_MATERIALS_ITEMS", "RAW_MATERIAL_NAME", "ITEM_NAME"},
};

// The owned-quantity table is added to a database the first time it is needed; a database that
// cannot take it (read-only) simply has no owned quantities.
bool ownedTableReady() {
    return db().handle() && schema::EnsureAddedTables(db().handle());
}

qint64 saturatingProduct(qint64 a, qint64 b, bool* overflow) {
    if (a == 0 || b == 0)
        return 0;
    if (a > MaxQuantity / b) {
        *overflow = true;
        return MaxQuantity;
    }
    return a * b;
}

qint64 saturatingSum(qint64 a, qint64 b, bool* overflow) {
    if (a > MaxQuantity - b) {
        *overflow = true;
        return MaxQuantity;
    }
    return a + b;
}
} // namespace

const QList<RecipeTable>& RecipeTables() {
    static const QList<RecipeTable> tables(std::begin(kRecipes), std::end(kRecipes));
    return tables;
}

QString categoryOf(Kind kind) {
    return QLatin1String(kCategories[int(kind)]);
}

QString kindWord(Kind kind) {
    return QLatin1String(kWords[int(kind)]);
}

bool kindOfWord(const QString& word, Kind* kind) {
    for (int k = 0; k < KindCount; ++k)
        if (word.compare(QLatin1String(kCategories[k]), Qt::CaseInsensitive) == 0 ||
            word.compare(QLatin1String(kWords[k]), Qt::CaseInsensitive) == 0) {
            if (kind)
                *kind = Kind(k);
            return true;
        }
    return false;
}

bool operator==(const Ref& a, const Ref& b) {
    return a.kind == b.kind && SameName(a.name, b.name);
}

size_t qHash(const Ref& ref, size_t seed) {
    return NameHash(ref.name, seed + size_t(ref.kind));
}

void RecipeBook::clear() {
    m_records.clear();
    m_index.clear();
    for (QStringList& p : m_pending)
        p.clear();
}

int RecipeBook::indexOf(const Ref& ref) const {
    return m_index.value(ref, -1);
}

int RecipeBook::add(Kind kind, const QString& name) {
    const Ref key{kind, name};
    const auto it = m_index.constFind(key);
    if (it != m_index.constEnd())
        return it.value();
    const int i = int(m_records.size());
    Record r;
    r.kind = kind;
    r.name = name;
    m_records.push_back(std::move(r));
    m_index.insert(key, i);
    m_pending[int(kind)].append(name);
    return i;
}

void RecipeBook::load(const QList<Ref>& roots) {
    for (const Ref& r : roots)
        if (!r.name.isEmpty())
            add(r.kind, r.name);
    const bool owned = ownedTableReady();
    ReadingTransaction reading;
    // The roots' own rows; every record found later comes with its row joined to the recipe row
    // that names it.
    for (int k = 0; k < KindCount; ++k) {
        QStringList names = m_pending[k];
        names.removeIf([&](const QString& n) { return at(indexOf({Kind(k), n})).found; });
        readRecords(Kind(k), names, owned);
    }
    // Breadth first: every round reads the recipes of the records found in the round before.
    for (bool any = true; any;) {
        any = false;
        for (int k = 0; k < KindCount; ++k) {
            if (m_pending[k].isEmpty())
                continue;
            any = true;
            readRecipes(Kind(k), std::exchange(m_pending[k], {}), owned);
        }
    }
}

namespace {
const char* const kRecordTables[KindCount] = {"EQUIPMENTS", "COMPONENTS", "RAW_MATERIALS", "ITEMS"};
const char* const kNameColumns[KindCount] = {"EQUIPMENT_NAME", "COMPONENT_NAME", "RAW_MATERIAL_NAME",
                                             "ITEM_NAME"};

// The columns of a record as the statements below read them, from the alias M (and O for the owned
// quantity): name, level, price, tick, fee, owned.
QString recordColumns(Kind kind, bool owned) {
    return QStringLiteral("M.%1, M.LVL, M.PRICE, M.CHECK, %2, %3")
        .arg(QLatin1String(kNameColumns[int(kind)]),
             kind == Kind::Equipment ? QStringLiteral("M.COST_TO_MANUFACTURE") : QStringLiteral("0"),
             owned ? QStringLiteral("O.QUANTITY") : QStringLiteral("0"));
}

// "T AS R LEFT JOIN <records> AS M ON M.<name> = R.<column>", with the owned quantities joined too.
QString joinRecords(const QString& from, Kind kind, const QString& nameColumn, bool owned) {
    QString sql = from + QStringLiteral(" LEFT JOIN %1 AS M ON M.%2 = %3")
                             .arg(QLatin1String(kRecordTables[int(kind)]),
                                  QLatin1String(kNameColumns[int(kind)]), nameColumn);
    if (owned)
        sql = QStringLiteral(
                  "(%1) LEFT JOIN OWNED_QUANTITIES AS O ON O.RECORD_KIND = '%2' AND O.RECORD_NAME = %3")
                  .arg(sql, categoryOf(kind), nameColumn);
    return sql;
}
} // namespace

void RecipeBook::setRecord(int i, const Recordset& rs, int first) {
    Record& r = m_records[size_t(i)];
    if (rs.storageClass(first) == SQLITE_NULL)
        return; // no row of its own
    r.found = true;
    r.name = RowText(rs, first); // as the record spells it
    r.level = int(RowNumber(rs, first + 1));
    r.price = RowNumber(rs, first + 2);
    r.checked = RowNumber(rs, first + 3) != 0;
    r.fee = RowNumber(rs, first + 4);
    r.owned = qMax<qint64>(0, RowNumber(rs, first + 5));
}

void RecipeBook::readRecords(Kind kind, const QStringList& names, bool owned) {
    if (names.isEmpty())
        return;
    const QString nameColumn = QStringLiteral("M.") + QLatin1String(kNameColumns[int(kind)]);
    const QString from = QLatin1String(kRecordTables[int(kind)]) + QStringLiteral(" AS M");
    const QString sql =
        QStringLiteral("SELECT ") + recordColumns(kind, owned) + QStringLiteral(" FROM ") +
        (owned ? QStringLiteral("%1 LEFT JOIN OWNED_QUANTITIES AS O ON O.RECORD_KIND = '%2' AND "
                                "O.RECORD_NAME = %3")
                     .arg(from, categoryOf(kind), nameColumn)
               : from) +
        QStringLiteral(" WHERE ") + nameColumn + QStringLiteral(" IN ");
    ForEachRowIn(sql, names, QString(), [&](const Recordset& rs) {
        const int i = indexOf({kind, RowText(rs, 0)});
        if (i >= 0)
            setRecord(i, rs, 0);
    });
}

void RecipeBook::readRecipes(Kind kind, const QStringList& names, bool owned) {
    for (const RecipeTable& t : kRecipes) {
        if (t.kind != kind)
            continue;
        const QString made = QStringLiteral("R.") + QLatin1String(t.madeColumn);
        const QString ingredient = QStringLiteral("R.") + QLatin1String(t.ingredientColumn);
        const QString sql = QStringLiteral("SELECT %1, %2, R.AMOUNT, %3 FROM %4 WHERE %1 IN ")
                                .arg(made, ingredient, recordColumns(t.child, owned),
                                     joinRecords(QLatin1String(t.table) + QStringLiteral(" AS R"), t.child,
                                                 ingredient, owned));
        ForEachRowIn(sql, names, QStringLiteral(" ORDER BY ") + ingredient, [&](const Recordset& rs) {
            const int maker = indexOf({kind, RowText(rs, 0)});
            const QString child = RowText(rs, 1);
            if (maker < 0 || child.isEmpty())
                return;
            const int before = size();
            const int c = add(t.child, child);
            if (c == before) // new: its row came with it
                setRecord(c, rs, 3);
            const qint64 amount = rs.storageClass(2) == SQLITE_NULL ? 1 : qMax<qint64>(1, RowNumber(rs, 2));
            m_records[size_t(maker)].ingredients.append({c, amount, t.link});
        });
    }
}

bool Builds(const Record& record, bool isTarget, const Options& options) {
    if (!record.hasRecipe())
        return false;
    const auto it = options.build.constFind(record.ref());
    if (it != options.build.constEnd())
        return it.value();
    return isTarget || options.buildIntermediates;
}

namespace {
// Depth first from the targets: the order in which every record comes after all that call for it,
// and the steps that close a cycle (made -> ingredient index), which are not followed.
struct Walk {
    std::vector<int> topological; // records, callers first
    QSet<quint64> cut;
    QList<Cycle> cycles;
};

quint64 stepKey(int made, int ingredient) {
    return (quint64(uint32_t(made)) << 32) | uint32_t(ingredient);
}

Walk walk(const RecipeBook& book, const QList<int>& roots, const std::vector<bool>& builds) {
    Walk w;
    std::vector<quint8> state(size_t(book.size()), 0); // 0 not seen, 1 on the path, 2 done
    std::vector<int> postorder;
    struct Frame {
        int record;
        int next;
    };
    std::vector<Frame> stack;
    QSet<QList<int>> seenCycles;
    for (const int root : roots) {
        if (state[size_t(root)] != 0)
            continue;
        stack.push_back({root, 0});
        state[size_t(root)] = 1;
        while (!stack.empty()) {
            Frame& f = stack.back();
            const Record& r = book.at(f.record);
            if (!builds[size_t(f.record)] || f.next >= r.ingredients.size()) {
                state[size_t(f.record)] = 2;
                postorder.push_back(f.record);
                stack.pop_back();
                continue;
            }
            const int step = f.next++;
            const int child = r.ingredients.at(step).record;
            if (state[size_t(child)] == 1) {
                w.cut.insert(stepKey(f.record, step));
                Cycle c;
                size_t from = stack.size();
                while (from > 0 && stack[from - 1].record != child)
                    --from;
                for (size_t k = from - 1; k < stack.size(); ++k)
                    c.records.append(stack[k].record);
                // The same cycle met from another side is named once.
                QList<int> canonical = c.records;
                std::sort(canonical.begin(), canonical.end());
                if (!seenCycles.contains(canonical)) {
                    seenCycles.insert(canonical);
                    w.cycles.append(c);
                }
                continue;
            }
            if (state[size_t(child)] == 0) {
                state[size_t(child)] = 1;
                stack.push_back({child, 0});
            }
        }
    }
    w.topological.assign(postorder.rbegin(), postorder.rend());
    return w;
}

std::vector<bool> buildFlags(const RecipeBook& book, const QList<Target>& targets, const Options& options,
                             QList<int>* roots) {
    std::vector<bool> isTarget(size_t(book.size()), false);
    for (const Target& t : targets) {
        const int i = book.indexOf(t.ref);
        if (i >= 0 && t.quantity > 0) {
            if (!isTarget[size_t(i)])
                roots->append(i);
            isTarget[size_t(i)] = true;
        }
    }
    std::vector<bool> builds(size_t(book.size()), false);
    for (int i = 0; i < book.size(); ++i)
        builds[size_t(i)] = Builds(book.at(i), isTarget[size_t(i)], options);
    return builds;
}

qint64 haveOf(const Record& r, const Options& options) {
    if (!options.countHave)
        return 0;
    return r.checked ? MaxQuantity : r.owned;
}
} // namespace

Plan Expand(const RecipeBook& book, const QList<Target>& targets, const Options& options) {
    Plan plan;
    QList<int> roots;
    const std::vector<bool> builds = buildFlags(book, targets, options, &roots);
    const Walk w = walk(book, roots, builds);
    plan.cycles = w.cycles;

    const size_t n = size_t(book.size());
    std::vector<qint64> ordered(n, 0), needed(n, 0);
    std::vector<int> lineOf(n, -1);
    const size_t targetCount = size_t(targets.size());
    for (qsizetype t = 0; t < targets.size(); ++t) {
        const int i = book.indexOf(targets[t].ref);
        if (i >= 0 && targets[t].quantity > 0)
            ordered[size_t(i)] = saturatingSum(ordered[size_t(i)], targets[t].quantity, &plan.overflow);
    }
    for (const int rec : w.topological) {
        const Record& r = book.at(rec);
        if (ordered[size_t(rec)] == 0 && needed[size_t(rec)] == 0)
            continue;
        if (lineOf[size_t(rec)] < 0) {
            lineOf[size_t(rec)] = int(plan.lines.size());
            Line line;
            line.record = rec;
            line.targets.assign(targetCount, false);
            plan.lines.append(line);
        }
        Line& line = plan.lines[lineOf[size_t(rec)]];
        line.ordered = ordered[size_t(rec)];
        line.needed = needed[size_t(rec)];
        line.have = qMin(line.needed, haveOf(r, options));
        line.built = builds[size_t(rec)];
        for (qsizetype t = 0; t < targets.size(); ++t)
            if (line.ordered > 0 && targets[t].ref == r.ref())
                line.targets[size_t(t)] = true;
        const qint64 make = line.toGet();
        if (!line.built || make <= 0)
            continue;
        for (int step = 0; step < r.ingredients.size(); ++step) {
            if (w.cut.contains(stepKey(rec, step)))
                continue;
            const Ingredient& in = r.ingredients.at(step);
            const size_t c = size_t(in.record);
            needed[c] =
                saturatingSum(needed[c], saturatingProduct(make, in.amount, &plan.overflow), &plan.overflow);
            if (lineOf[c] < 0) {
                lineOf[c] = int(plan.lines.size());
                Line child;
                child.record = in.record;
                child.targets.assign(targetCount, false);
                plan.lines.append(child);
            }
            Line& child = plan.lines[lineOf[c]];
            const Line& self = plan.lines[lineOf[size_t(rec)]];
            if (!child.usedBy.contains(rec))
                child.usedBy.append(rec);
            for (size_t t = 0; t < targetCount; ++t)
                if (self.targets[t])
                    child.targets[t] = true;
        }
    }
    for (qsizetype l = 0; l < plan.lines.size(); ++l)
        plan.lineIndex.insert(plan.lines[l].record, int(l));
    return plan;
}

QString CycleText(const RecipeBook& book, const Cycle& cycle) {
    QStringList parts;
    for (const int r : cycle.records)
        parts << book.at(r).name + QStringLiteral(" (") + kindWord(book.at(r).kind) + QLatin1Char(')');
    if (!cycle.records.isEmpty())
        parts << book.at(cycle.records.first()).name;
    return parts.join(QStringLiteral(" \u2192 "));
}

ExpansionTree ExpandTree(const RecipeBook& book, const QList<Target>& targets, const Options& options,
                         int maxNodes) {
    ExpansionTree tree;
    QList<int> roots;
    const std::vector<bool> builds = buildFlags(book, targets, options, &roots);
    std::vector<qint64> left(size_t(book.size()), 0);
    for (int i = 0; i < book.size(); ++i)
        left[size_t(i)] = haveOf(book.at(i), options);
    std::vector<int> onPath(size_t(book.size()), 0);

    // A node's demand is settled when it is reached: what the player has goes to the first uses.
    auto settle = [&](int node) {
        TreeNode& t = tree.nodes[size_t(node)];
        if (!t.target && !t.cycle) { // a step that closes a cycle is not taken: nothing goes to it
            t.covered = qMin(t.quantity, left[size_t(t.record)]);
            left[size_t(t.record)] -= t.covered;
        }
        t.built = builds[size_t(t.record)];
    };
    // Adds the children of a settled node, one per ingredient.
    auto expand = [&](int node) {
        const TreeNode t = tree.nodes[size_t(node)];
        const qint64 make = t.quantity - t.covered;
        if (!t.built || t.cycle || make <= 0)
            return;
        const Record& r = book.at(t.record);
        if (tree.nodes.size() + size_t(r.ingredients.size()) > size_t(maxNodes)) {
            tree.truncated = true;
            return;
        }
        tree.nodes[size_t(node)].firstChild = int(tree.nodes.size());
        tree.nodes[size_t(node)].childCount = int(r.ingredients.size());
        bool overflow = false;
        for (int k = 0; k < r.ingredients.size(); ++k) {
            const Ingredient& in = r.ingredients.at(k);
            TreeNode c;
            c.record = in.record;
            c.parent = node;
            c.row = k;
            c.link = in.link;
            c.quantity = saturatingProduct(make, in.amount, &overflow);
            c.cycle = onPath[size_t(in.record)] > 0;
            tree.nodes.push_back(c);
        }
    };

    struct Frame {
        int node;
        int next;
    };
    for (qsizetype t = 0; t < targets.size(); ++t) {
        const int rec = book.indexOf(targets[t].ref);
        if (rec < 0 || targets[t].quantity <= 0)
            continue;
        TreeNode root;
        root.record = rec;
        root.row = int(tree.roots.size());
        root.quantity = targets[t].quantity;
        root.target = true;
        const int rootNode = int(tree.nodes.size());
        tree.nodes.push_back(root);
        tree.roots.append(rootNode);
        std::vector<Frame> stack;
        settle(rootNode);
        ++onPath[size_t(rec)];
        expand(rootNode);
        stack.push_back({rootNode, 0});
        while (!stack.empty()) {
            Frame& f = stack.back();
            const TreeNode& parent = tree.nodes[size_t(f.node)];
            if (f.next >= parent.childCount) {
                --onPath[size_t(parent.record)];
                stack.pop_back();
                continue;
            }
            const int child = parent.firstChild + f.next++;
            settle(child);
            if (tree.nodes[size_t(child)].cycle)
                continue;
            ++onPath[size_t(tree.nodes[size_t(child)].record)];
            expand(child);
            stack.push_back({child, 0});
        }
    }
    return tree;
}

} // namespace bom
