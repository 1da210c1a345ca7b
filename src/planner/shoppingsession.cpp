#include "planner/shoppingsession.h"

#include "planner/shoppingexport.h"

namespace planner {

int ShoppingSession::addTarget(const bom::Ref& ref, qint64 quantity) {
    for (qsizetype i = 0; i < m_plan.targets.size(); ++i)
        if (m_plan.targets[i].ref == ref) {
            m_plan.targets[i].quantity =
                qMin(bom::MaxQuantity, m_plan.targets[i].quantity + qMax<qint64>(1, quantity));
            return int(i);
        }
    m_plan.targets.append({ref, qBound<qint64>(1, quantity, bom::MaxQuantity)});
    return int(m_plan.targets.size() - 1);
}

void ShoppingSession::setQuantity(int index, qint64 quantity) {
    if (index >= 0 && index < m_plan.targets.size())
        m_plan.targets[index].quantity = qBound<qint64>(1, quantity, bom::MaxQuantity);
}

void ShoppingSession::removeTarget(int index) {
    if (index >= 0 && index < m_plan.targets.size())
        m_plan.targets.removeAt(index);
}

void ShoppingSession::clearTargets() {
    m_plan.targets.clear();
}

void ShoppingSession::setBuildIntermediates(bool on) {
    m_plan.buildIntermediates = on;
}

void ShoppingSession::setCountHave(bool on) {
    m_plan.countHave = on;
}

void ShoppingSession::setChoice(const bom::Ref& ref, std::optional<bool> build) {
    if (build)
        m_plan.build.insert(ref, *build);
    else
        m_plan.build.remove(ref);
}

std::optional<bool> ShoppingSession::choice(const bom::Ref& ref) const {
    const auto it = m_plan.build.constFind(ref);
    return it == m_plan.build.constEnd() ? std::nullopt : std::optional<bool>(it.value());
}

bom::Options ShoppingSession::options() const {
    bom::Options o;
    o.buildIntermediates = m_plan.buildIntermediates;
    o.countHave = m_plan.countHave;
    o.build = m_plan.build;
    return o;
}

bool ShoppingSession::stale() const {
    return !(CurrentDataStamp() == m_stamp);
}

void ShoppingSession::refresh() {
    // What is read goes into new books first, so that a failure leaves the list as it was.
    const bool reread = m_dirty || stale();
    QList<bom::Ref> roots;
    for (const bom::Target& t : m_plan.targets)
        if (reread || m_book->indexOf(t.ref) < 0)
            roots << t.ref;
    std::shared_ptr<bom::RecipeBook> book = m_book;
    SourceBook sources;
    if (!reread)
        sources = m_sources;
    if (reread || !roots.isEmpty()) {
        book = reread ? std::make_shared<bom::RecipeBook>() : std::make_shared<bom::RecipeBook>(*m_book);
        book->load(roots);
    }
    bom::Plan totals = bom::Expand(*book, m_plan.targets, options());
    QList<bom::Ref> records;
    for (const bom::Line& l : totals.lines)
        records << book->at(l.record).ref();
    sources.load(records);

    m_book = std::move(book);
    m_sources = std::move(sources);
    m_stamp = CurrentDataStamp();
    m_totals = std::move(totals);
    m_dirty = false;
    rework();
}

void ShoppingSession::rework() {
    m_list = BuildShoppingList(*m_book, m_totals, m_sources, m_plan.targets);
    m_tree = std::make_shared<const bom::ExpansionTree>(
        bom::ExpandTree(*m_book, m_plan.targets, options(), MaxTreeNodes));
    if (m_tree->truncated)
        m_list.warnings << QStringLiteral(
                               "The build tree has more than %1 branches: only the first are shown. "
                               "The list itself is whole.")
                               .arg(QuantityText(MaxTreeNodes));
}

bom::RecipeBook& ShoppingSession::ownBook() {
    if (m_book.use_count() > 1) // a model still shows the old one
        m_book = std::make_shared<bom::RecipeBook>(*m_book);
    return *m_book;
}

void ShoppingSession::setChecked(const bom::Ref& ref, bool checked) {
    const bool current = !stale();
    WriteCheck(ref, checked);
    if (const int i = m_book->indexOf(ref); i >= 0)
        ownBook().setChecked(i, checked);
    if (current) // the only change since reading is this one, and the books know it
        m_stamp = CurrentDataStamp();
    refresh();
}

void ShoppingSession::setOwned(const bom::Ref& ref, qint64 quantity) {
    const bool current = !stale();
    WriteOwned(ref, quantity);
    if (const int i = m_book->indexOf(ref); i >= 0)
        ownBook().setOwned(i, qMax<qint64>(0, quantity));
    if (current)
        m_stamp = CurrentDataStamp();
    refresh();
}

QString ShoppingSession::title() const {
    return TargetsText(m_plan.targets, *m_book);
}

} // namespace planner
