#pragma once
// One shopping list as the window works with it: the targets and choices, the recipes read for them,
// and the totals, list and tree made from those. The recipes are read again only when the database
// changed or a target is new to them; a change of quantity, of a choice, a tick or an owned quantity
// made here is worked out again in memory.
#include "planner/plannerstore.h"
#include "planner/shoppinglist.h"
#include "views/batchquery.h"
#include "views/billofmaterials.h"

#include <memory>
#include <optional>

namespace planner {

class ShoppingSession {
public:
    // The tree shows this many uses at most; the totals have no such limit.
    static constexpr int MaxTreeNodes = 250000;

    const QList<bom::Target>& targets() const { return m_plan.targets; }
    // Adds the quantity to the target's, or a new target at the end. Returns its index.
    int addTarget(const bom::Ref& ref, qint64 quantity = 1);
    void setQuantity(int index, qint64 quantity);
    void removeTarget(int index);
    void clearTargets();

    bool buildIntermediates() const { return m_plan.buildIntermediates; }
    void setBuildIntermediates(bool on);
    bool countHave() const { return m_plan.countHave; }
    void setCountHave(bool on);
    // Per record: build it, obtain it, or (unset) follow the rule above.
    void setChoice(const bom::Ref& ref, std::optional<bool> build);
    std::optional<bool> choice(const bom::Ref& ref) const;

    // Works the list out again, reading what is needed first. Throws VbError; the list made before
    // stays as it was.
    void refresh();
    // True when the database changed since the recipes were read.
    bool stale() const;

    // Ticks the record (CHECK) or records how many the player has: written at once, then worked out
    // again. Throws VbError; nothing changes on a failed write.
    void setChecked(const bom::Ref& ref, bool checked);
    void setOwned(const bom::Ref& ref, qint64 quantity);

    void save() const { SavePlan(m_plan); }
    void restore() {
        m_plan = LoadPlan();
        m_dirty = true;
    }

    const bom::RecipeBook& book() const { return *m_book; }
    const bom::Plan& plan() const { return m_totals; }
    const ShoppingList& list() const { return m_list; }
    const bom::ExpansionTree& tree() const { return *m_tree; }
    // The same, to keep as they are while the session moves on (the window's models).
    std::shared_ptr<const bom::RecipeBook> sharedBook() const { return m_book; }
    std::shared_ptr<const bom::ExpansionTree> sharedTree() const { return m_tree; }
    // "2 × Pulse Cannon, 10 × Basic Logic Board".
    QString title() const;

private:
    bom::Options options() const;
    void rework();
    bom::RecipeBook& ownBook();
    SavedPlan m_plan;
    std::shared_ptr<bom::RecipeBook> m_book = std::make_shared<bom::RecipeBook>();
    SourceBook m_sources;
    DataStamp m_stamp;
    bom::Plan m_totals;
    ShoppingList m_list;
    std::shared_ptr<const bom::ExpansionTree> m_tree = std::make_shared<bom::ExpansionTree>();
    bool m_dirty = true;
};

} // namespace planner
