#include "planner/shoppingmodels.h"

#include "views/buildtree.h"
#include "views/treeimages.h"

#include <QBrush>
#include <QFont>
#include <QPalette>

namespace planner {

namespace {
QVariant dimmed() {
    return QBrush(QPalette().color(QPalette::Disabled, QPalette::Text));
}

constexpr Qt::Alignment kNumber = Qt::AlignRight | Qt::AlignVCenter;
} // namespace

QString LinkText(bom::Link link) {
    switch (link) {
    case bom::Link::UpgradeFrom:
        return QStringLiteral("upgraded from");
    case bom::Link::Component:
        return QStringLiteral("component");
    case bom::Link::Item:
        return QStringLiteral("item");
    case bom::Link::RawMaterial:
        return QStringLiteral("raw material");
    case bom::Link::Equipment:
        return QStringLiteral("equipment");
    case bom::Link::RefinedFrom:
        return QStringLiteral("refined from");
    }
    return QString();
}

// --- Targets ---------------------------------------------------------------------------------------

TargetsModel::TargetsModel(ShoppingSession& session, QObject* parent)
    : QAbstractTableModel(parent), m_session(session) {}

int TargetsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_session.targets().size());
}

int TargetsModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant TargetsModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= m_session.targets().size())
        return QVariant();
    const bom::Target& t = m_session.targets().at(index.row());
    const int i = m_session.book().indexOf(t.ref);
    const QString name = i >= 0 ? m_session.book().at(i).name : t.ref.name;
    switch (role) {
    case Qt::DisplayRole:
        if (index.column() == Name)
            return name;
        if (index.column() == Kind)
            return bom::kindWord(t.ref.kind);
        return QuantityText(t.quantity);
    case Qt::EditRole:
        return index.column() == Quantity ? QVariant(t.quantity) : QVariant();
    case Qt::DecorationRole:
        return index.column() == Name ? QVariant(BuildTreeIcon(t.ref.kind)) : QVariant();
    case Qt::TextAlignmentRole:
        return index.column() == Quantity ? QVariant(kNumber) : QVariant();
    case Qt::ToolTipRole:
        if (i >= 0 && !m_session.book().at(i).found)
            return tr("Not in the database");
        return index.column() == Quantity ? tr("How many to make; type a number or use + and -") : QVariant();
    default:
        return QVariant();
    }
}

QVariant TargetsModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QVariant();
    static const char* const titles[] = {"Target", "Kind", "Quantity"};
    return section >= 0 && section < ColumnCount ? tr(titles[section]) : QVariant();
}

Qt::ItemFlags TargetsModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    if (index.column() == Quantity)
        f |= Qt::ItemIsEditable;
    return f;
}

bool TargetsModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || !index.isValid() || index.column() != Quantity)
        return false;
    bool ok = false;
    const qint64 quantity = value.toString().remove(u',').trimmed().toLongLong(&ok);
    if (!ok || quantity < 1)
        return false; // the quantity stays as it was
    m_session.setQuantity(index.row(), quantity);
    Q_EMIT dataChanged(index, index);
    Q_EMIT quantityChanged();
    return true;
}

void TargetsModel::reload() {
    beginResetModel();
    endResetModel();
}

// --- The list ----------------------------------------------------------------------------------------

ShoppingListModel::ShoppingListModel(ShoppingSession& session, QObject* parent)
    : QAbstractItemModel(parent), m_session(session) {
    reload();
}

void ShoppingListModel::reload() {
    beginResetModel();
    m_list = m_session.list();
    m_groups.clear();
    m_linesOf.clear();
    for (int g = 0; g < GroupCount; ++g) {
        QList<int> lines;
        for (qsizetype l = 0; l < m_list.lines.size(); ++l)
            if (int(m_list.lines[l].group) == g)
                lines << int(l);
        if (lines.isEmpty())
            continue;
        m_groups << Group(g);
        m_linesOf << lines;
    }
    endResetModel();
}

QModelIndex ShoppingListModel::index(int row, int column, const QModelIndex& parent) const {
    if (column < 0 || column >= ColumnCount || row < 0)
        return QModelIndex();
    if (!parent.isValid())
        return row < m_groups.size() ? createIndex(row, column, quintptr(0)) : QModelIndex();
    if (parent.internalId() != 0 || parent.row() >= m_linesOf.size() || row >= m_linesOf[parent.row()].size())
        return QModelIndex();
    return createIndex(row, column, quintptr(parent.row() + 1));
}

QModelIndex ShoppingListModel::parent(const QModelIndex& child) const {
    if (!child.isValid() || child.internalId() == 0)
        return QModelIndex();
    return createIndex(int(child.internalId() - 1), 0, quintptr(0));
}

int ShoppingListModel::rowCount(const QModelIndex& parent) const {
    if (!parent.isValid())
        return int(m_groups.size());
    if (parent.internalId() != 0 || parent.column() != 0)
        return 0;
    return int(m_linesOf.value(parent.row()).size());
}

int ShoppingListModel::columnCount(const QModelIndex&) const {
    return ColumnCount;
}

const ShoppingLine* ShoppingListModel::line(const QModelIndex& index) const {
    if (!index.isValid() || index.internalId() == 0)
        return nullptr;
    const int group = int(index.internalId() - 1);
    if (group >= m_linesOf.size() || index.row() >= m_linesOf[group].size())
        return nullptr;
    return &m_list.lines.at(m_linesOf[group].at(index.row()));
}

QModelIndex ShoppingListModel::indexOf(const bom::Ref& ref) const {
    for (qsizetype g = 0; g < m_linesOf.size(); ++g)
        for (qsizetype r = 0; r < m_linesOf[g].size(); ++r)
            if (m_list.lines.at(m_linesOf[g][r]).ref == ref)
                return createIndex(int(r), 0, quintptr(g + 1));
    return QModelIndex();
}

QVariant ShoppingListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return QVariant();
    if (index.internalId() == 0) { // a group row
        if (index.row() >= m_groups.size())
            return QVariant();
        const Group g = m_groups.at(index.row());
        const GroupTotal& total = m_list.groups[int(g)];
        switch (role) {
        case Qt::DisplayRole:
            if (index.column() == Name)
                return GroupTitle(g) + QStringLiteral(" (%1)").arg(total.lines);
            if (index.column() == Cost && total.cost > 0)
                return QuantityText(total.cost);
            return QVariant();
        case Qt::FontRole: {
            QFont bold;
            bold.setBold(true);
            return bold;
        }
        case Qt::TextAlignmentRole:
            return index.column() == Cost ? QVariant(kNumber) : QVariant();
        case LineRole:
            return -1;
        default:
            return QVariant();
        }
    }
    const ShoppingLine* l = line(index);
    if (!l)
        return QVariant();
    const bool done = l->checked || l->toGet == 0;
    switch (role) {
    case Qt::DisplayRole:
        switch (Column(index.column())) {
        case Name:
            return l->ref.name;
        case ToGet:
            return QuantityText(l->toGet);
        case Have:
            if (l->checked)
                return tr("all");
            return l->owned > 0 ? QuantityText(l->owned) : QString();
        case Need:
            return QuantityText(l->ordered + l->needed);
        case Price:
            return l->priceText;
        case Cost:
            return l->costKnown ? QuantityText(l->cost) : QString();
        case Where:
            return l->where;
        case OtherWays:
            return l->otherWays;
        case UsedIn:
            return l->target && l->usedIn.isEmpty() ? tr("(target)") : l->usedIn;
        case For:
            return l->forTargets;
        case ColumnCount:
            break;
        }
        return QVariant();
    case Qt::EditRole:
        return index.column() == Have ? QVariant(l->owned) : data(index, Qt::DisplayRole);
    case Qt::CheckStateRole:
        return index.column() == Name ? QVariant(l->checked ? Qt::Checked : Qt::Unchecked) : QVariant();
    case Qt::DecorationRole:
        return index.column() == Name ? QVariant(BuildTreeIcon(l->ref.kind)) : QVariant();
    case Qt::TextAlignmentRole:
        return index.column() >= ToGet && index.column() <= Cost ? QVariant(kNumber) : QVariant();
    case Qt::ForegroundRole:
        return done ? dimmed() : QVariant();
    case Qt::FontRole: {
        if (!l->checked && !l->target)
            return QVariant();
        QFont f;
        f.setStrikeOut(l->checked && index.column() == Name);
        f.setItalic(l->target && index.column() == Name);
        return f;
    }
    case Qt::ToolTipRole:
        switch (Column(index.column())) {
        case Name:
            return QStringLiteral("%1 %2, level %3%4%5")
                .arg(bom::kindWord(l->ref.kind), l->ref.name)
                .arg(l->level)
                .arg(l->found ? QString() : tr("; not in the database"),
                     l->target ? tr("; a target") : QString());
        case Have:
            return tr("How many you have (tick the line when you have all you need)");
        case Where:
        case OtherWays:
        case UsedIn:
        case For:
            return data(index, Qt::DisplayRole);
        default:
            return QVariant();
        }
    case LineRole:
        return m_linesOf[int(index.internalId() - 1)].at(index.row());
    default:
        return QVariant();
    }
}

QVariant ShoppingListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal)
        return QVariant();
    static const char* const titles[] = {"Item", "To Get", "Have",       "Need",    "Price",
                                         "Cost", "Where",  "Other Ways", "Used In", "For"};
    static const char* const tips[] = {"Tick a line once you have all of it",
                                       "Still to buy, mine, loot or make",
                                       "How many you have (double-click to change)",
                                       "How many the plan takes in all",
                                       "Price of one (or, for equipment you build, the manufacturing fee)",
                                       "Price times the quantity still to get",
                                       "Where to get it, or what one is made from",
                                       "Other ways of having it",
                                       "What in the plan calls for it, and how many one takes",
                                       "The targets it is needed for"};
    if (section < 0 || section >= ColumnCount)
        return QVariant();
    if (role == Qt::DisplayRole)
        return tr(titles[section]);
    if (role == Qt::ToolTipRole)
        return tr(tips[section]);
    return QVariant();
}

Qt::ItemFlags ShoppingListModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (index.internalId() == 0)
        return f;
    f |= Qt::ItemNeverHasChildren;
    if (index.column() == Name)
        f |= Qt::ItemIsUserCheckable;
    if (index.column() == Have)
        f |= Qt::ItemIsEditable;
    return f;
}

bool ShoppingListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    const ShoppingLine* l = line(index);
    if (!l)
        return false;
    const bom::Ref ref = l->ref;
    try {
        if (role == Qt::CheckStateRole && index.column() == Name) {
            m_session.setChecked(ref, value.toInt() == Qt::Checked);
            Q_EMIT checkWritten(bom::categoryOf(ref.kind), ref.name, value.toInt() == Qt::Checked);
        } else if (role == Qt::EditRole && index.column() == Have) {
            bool ok = false;
            const QString text = value.toString().remove(u',').trimmed();
            const qint64 owned = text.isEmpty() ? 0 : text.toLongLong(&ok);
            if ((!ok && !text.isEmpty()) || owned < 0)
                return false; // what was there stays
            m_session.setOwned(ref, qMin(owned, bom::MaxQuantity));
        } else {
            return false;
        }
    } catch (const VbError& e) {
        if (m_onError)
            m_onError(e, role == Qt::CheckStateRole ? QStringLiteral("lstShopping_ItemCheck")
                                                    : QStringLiteral("lstShopping_AfterEdit"));
        return false;
    }
    // The view that made the edit may still hold the edited index: show the new list once it is done.
    QMetaObject::invokeMethod(
        this,
        [this] {
            reload();
            Q_EMIT reworked();
        },
        Qt::QueuedConnection);
    return true;
}

// --- The tree ----------------------------------------------------------------------------------------

ExpansionTreeModel::ExpansionTreeModel(ShoppingSession& session, QObject* parent)
    : QAbstractItemModel(parent), m_session(session) {
    reload();
}

void ExpansionTreeModel::reload() {
    beginResetModel();
    m_book = m_session.sharedBook();
    m_tree = m_session.sharedTree();
    endResetModel();
}

const bom::TreeNode* ExpansionTreeModel::node(const QModelIndex& index) const {
    if (!index.isValid() || !m_tree || index.internalId() == 0 || index.internalId() > m_tree->nodes.size())
        return nullptr;
    return &m_tree->nodes[size_t(index.internalId() - 1)];
}

QModelIndex ExpansionTreeModel::index(int row, int column, const QModelIndex& parent) const {
    if (!m_tree || row < 0 || column < 0 || column >= ColumnCount)
        return QModelIndex();
    if (!parent.isValid())
        return row < m_tree->roots.size() ? createIndex(row, column, quintptr(m_tree->roots[row] + 1))
                                          : QModelIndex();
    const bom::TreeNode* p = node(parent);
    if (!p || row >= p->childCount)
        return QModelIndex();
    return createIndex(row, column, quintptr(p->firstChild + row + 1));
}

QModelIndex ExpansionTreeModel::parent(const QModelIndex& child) const {
    const bom::TreeNode* n = node(child);
    if (!n || n->parent < 0)
        return QModelIndex();
    const bom::TreeNode& p = m_tree->nodes[size_t(n->parent)];
    return createIndex(p.row, 0, quintptr(n->parent + 1));
}

int ExpansionTreeModel::rowCount(const QModelIndex& parent) const {
    if (!m_tree)
        return 0;
    if (!parent.isValid())
        return int(m_tree->roots.size());
    if (parent.column() != 0)
        return 0;
    const bom::TreeNode* p = node(parent);
    return p ? p->childCount : 0;
}

int ExpansionTreeModel::columnCount(const QModelIndex&) const {
    return ColumnCount;
}

QVariant ExpansionTreeModel::data(const QModelIndex& index, int role) const {
    const bom::TreeNode* n = node(index);
    if (!n)
        return QVariant();
    const bom::Record& r = m_book->at(n->record);
    switch (role) {
    case Qt::DisplayRole:
        switch (Column(index.column())) {
        case Name:
            return r.name;
        case Quantity:
            return QuantityText(n->quantity);
        case Covered:
            return n->covered > 0 ? QuantityText(n->covered) : QString();
        case Kind:
            return bom::kindWord(r.kind);
        case How:
            if (n->target)
                return tr("target");
            if (n->cycle)
                return tr("%1 \u2014 made from itself, not followed").arg(LinkText(n->link));
            if (n->covered >= n->quantity)
                return tr("%1 \u2014 you have enough").arg(LinkText(n->link));
            if (r.hasRecipe() && !n->built)
                return tr("%1 \u2014 obtained, not built").arg(LinkText(n->link));
            return LinkText(n->link);
        case ColumnCount:
            break;
        }
        return QVariant();
    case Qt::DecorationRole:
        return index.column() == Name ? QVariant(BuildTreeIcon(r.kind)) : QVariant();
    case Qt::TextAlignmentRole:
        return index.column() == Quantity || index.column() == Covered ? QVariant(kNumber) : QVariant();
    case Qt::ForegroundRole:
        if (n->cycle)
            return QBrush(QColor(0xa0, 0, 0));
        return !n->target && n->covered >= n->quantity ? dimmed() : QVariant();
    case Qt::FontRole: {
        if (!n->target)
            return QVariant();
        QFont bold;
        bold.setBold(true);
        return bold;
    }
    default:
        return QVariant();
    }
}

QVariant ExpansionTreeModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= ColumnCount)
        return QVariant();
    static const char* const titles[] = {"Record", "Quantity", "You Have", "Kind", "How"};
    return tr(titles[section]);
}

} // namespace planner
