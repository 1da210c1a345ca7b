#include "views/whereused.h"

#include "data/recordset.h"
#include "views/batchquery.h"

#include <QSet>

#include <algorithm>

namespace bom {

namespace {
const char* const kRecordTables[KindCount] = {"EQUIPMENTS", "COMPONENTS", "RAW_MATERIALS", "ITEMS"};
const char* const kNameColumns[KindCount] = {"EQUIPMENT_NAME", "COMPONENT_NAME", "RAW_MATERIAL_NAME",
                                             "ITEM_NAME"};

struct Node {
    Ref ref;
    bool found = false;
    int level = 0;
    QList<QPair<int, qint64>> users; // (node that uses this one, amount it takes of it)
};

class Upwards {
public:
    std::vector<Node> nodes;
    QHash<Ref, int> index;
    QStringList pending[KindCount];

    int add(const Ref& ref) {
        const auto it = index.constFind(ref);
        if (it != index.constEnd())
            return it.value();
        const int i = int(nodes.size());
        nodes.push_back({ref, false, 0, {}});
        index.insert(ref, i);
        pending[int(ref.kind)].append(ref.name);
        return i;
    }

    // The recipes that call for the records of one kind, with the row of the record made.
    void readUsers(Kind kind, const QStringList& names) {
        for (const RecipeTable& t : RecipeTables()) {
            if (t.child != kind)
                continue;
            const QString made = QStringLiteral("R.") + QLatin1String(t.madeColumn);
            const QString ingredient = QStringLiteral("R.") + QLatin1String(t.ingredientColumn);
            const QString sql =
                QStringLiteral(
                    "SELECT %1, %2, R.AMOUNT, M.%3, M.LVL FROM %4 AS R LEFT JOIN %5 AS M ON M.%3 = %1 "
                    "WHERE %2 IN ")
                    .arg(made, ingredient, QLatin1String(kNameColumns[int(t.kind)]), QLatin1String(t.table),
                         QLatin1String(kRecordTables[int(t.kind)]));
            ForEachRowIn(sql, names, QStringLiteral(" ORDER BY ") + made, [&](const Recordset& rs) {
                const QString user = RowText(rs, 0);
                const auto child = index.constFind(Ref{kind, RowText(rs, 1)});
                if (user.isEmpty() || child == index.constEnd())
                    return;
                const int c = child.value();
                const int u = add({t.kind, user});
                if (!RowText(rs, 3).isEmpty()) {
                    nodes[size_t(u)].found = true;
                    nodes[size_t(u)].ref.name = RowText(rs, 3);
                    nodes[size_t(u)].level = int(RowNumber(rs, 4));
                }
                const qint64 amount = qMax<qint64>(1, RowNumber(rs, 2));
                nodes[size_t(c)].users.append({u, amount});
            });
        }
    }
};

qint64 cappedProduct(qint64 a, qint64 b, bool* overflow) {
    if (a == 0 || b == 0)
        return 0;
    if (a > MaxQuantity / b) {
        *overflow = true;
        return MaxQuantity;
    }
    return a * b;
}
} // namespace

int WhereUsedResult::directCount() const {
    return int(std::count_if(uses.begin(), uses.end(), [](const Use& u) { return u.steps == 1; }));
}

WhereUsedResult WhereUsed(const Ref& ref) {
    WhereUsedResult result;
    Upwards up;
    up.add(ref);
    {
        ReadingTransaction reading;
        for (bool any = true; any;) {
            any = false;
            for (int k = 0; k < KindCount; ++k) {
                if (up.pending[k].isEmpty())
                    continue;
                any = true;
                up.readUsers(Kind(k), std::exchange(up.pending[k], {}));
            }
        }
    }

    // Depth first upwards: users after all they use, the step that closes a cycle left out.
    const size_t n = up.nodes.size();
    std::vector<quint8> state(n, 0);
    std::vector<int> postorder;
    QSet<quint64> cut;
    struct Frame {
        int node;
        int next;
    };
    std::vector<Frame> stack{{0, 0}};
    state[0] = 1;
    while (!stack.empty()) {
        Frame& f = stack.back();
        const Node& node = up.nodes[size_t(f.node)];
        if (f.next >= node.users.size()) {
            state[size_t(f.node)] = 2;
            postorder.push_back(f.node);
            stack.pop_back();
            continue;
        }
        const int step = f.next++;
        const int user = node.users.at(step).first;
        if (state[size_t(user)] == 1) {
            cut.insert((quint64(uint32_t(f.node)) << 32) | uint32_t(step));
            QList<Ref> cycle;
            size_t from = stack.size();
            while (from > 0 && stack[from - 1].node != user)
                --from;
            for (size_t k = from - 1; k < stack.size(); ++k)
                cycle.prepend(up.nodes[size_t(stack[k].node)].ref); // made first, as recipes read
            result.cycles.append(cycle);
        } else if (state[size_t(user)] == 0) {
            state[size_t(user)] = 1;
            stack.push_back({user, 0});
        }
    }
    // The shortest chain to each, counted afresh: the rounds of reading mix kinds, not lengths.
    std::vector<int> steps(n, -1);
    steps[0] = 0;
    std::vector<int> queue{0};
    for (size_t q = 0; q < queue.size(); ++q)
        for (const auto& [user, amount] : up.nodes[size_t(queue[q])].users)
            if (steps[size_t(user)] < 0) {
                steps[size_t(user)] = steps[size_t(queue[q])] + 1;
                queue.push_back(user);
            }

    std::vector<qint64> perUnit(n, 0);
    perUnit[0] = 1;
    for (auto it = postorder.rbegin(); it != postorder.rend(); ++it) {
        const Node& node = up.nodes[size_t(*it)];
        for (int step = 0; step < node.users.size(); ++step) {
            if (cut.contains((quint64(uint32_t(*it)) << 32) | uint32_t(step)))
                continue;
            const auto [user, amount] = node.users.at(step);
            const qint64 sum =
                perUnit[size_t(user)] + cappedProduct(perUnit[size_t(*it)], amount, &result.overflow);
            if (sum > MaxQuantity)
                result.overflow = true;
            perUnit[size_t(user)] = qMin(MaxQuantity, sum);
        }
    }
    for (size_t i = 1; i < n; ++i) {
        const Node& node = up.nodes[i];
        result.uses.append({node.ref, node.found, node.level, steps[i], perUnit[i], node.users.isEmpty()});
    }
    std::sort(result.uses.begin(), result.uses.end(), [](const Use& a, const Use& b) {
        if (a.steps != b.steps)
            return a.steps < b.steps;
        const int byName = a.ref.name.compare(b.ref.name, Qt::CaseInsensitive);
        return byName != 0 ? byName < 0 : a.ref.kind < b.ref.kind;
    });
    return result;
}

} // namespace bom
