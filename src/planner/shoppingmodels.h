#pragma once
// The item models of the shopping-list window over a ShoppingSession: the targets (quantity editable),
// the list grouped by source (tick and owned quantity editable, each written at once), and the
// expansion tree (filled as it is opened). Edits that fail are handed to the error handler and leave
// the data as it was.
#include "core/vberror.h"
#include "planner/shoppingsession.h"

#include <QAbstractItemModel>
#include <QAbstractTableModel>
#include <functional>

namespace planner {

class TargetsModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Name, Kind, Quantity, ColumnCount };
    explicit TargetsModel(ShoppingSession& session, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

    // The session's targets changed: shows them again.
    void reload();

Q_SIGNALS:
    void quantityChanged();

private:
    ShoppingSession& m_session;
};

class ShoppingListModel : public QAbstractItemModel {
    Q_OBJECT
public:
    enum Column { Name, ToGet, Have, Need, Price, Cost, Where, OtherWays, UsedIn, For, ColumnCount };
    // The line behind an index (for the window's commands); -1 for a group row.
    static constexpr int LineRole = Qt::UserRole + 1;

    explicit ShoppingListModel(ShoppingSession& session, QObject* parent = nullptr);

    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    // Qt::CheckStateRole on the name ticks the record; Qt::EditRole on Have records how many the
    // player has. Both write at once and work the list out again.
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

    // The session's list changed: shows it again.
    void reload();
    // The line at an index, or nullptr for a group row.
    const ShoppingLine* line(const QModelIndex& index) const;
    // The index of the record's line, column 0; invalid when it is not listed.
    QModelIndex indexOf(const bom::Ref& ref) const;
    // Groups that have lines, in order.
    const QList<Group>& groups() const { return m_groups; }

    // Where a failed write goes (the window reports it under the procedure named).
    using ErrorHandler = std::function<void(const VbError& error, const QString& procedure)>;
    void setErrorHandler(ErrorHandler handler) { m_onError = std::move(handler); }

Q_SIGNALS:
    // The session was worked out again after an edit.
    void reworked();
    // A record's tick was written (category word, name, new state).
    void checkWritten(const QString& category, const QString& name, bool checked);

private:
    ShoppingSession& m_session;
    ErrorHandler m_onError;
    ShoppingList m_list; // as shown: the session may already be a step ahead
    QList<Group> m_groups;
    QList<QList<int>> m_linesOf; // per group row: indexes into the list's lines
};

class ExpansionTreeModel : public QAbstractItemModel {
    Q_OBJECT
public:
    enum Column { Name, Quantity, Covered, Kind, How, ColumnCount };
    explicit ExpansionTreeModel(ShoppingSession& session, QObject* parent = nullptr);

    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    void reload();
    const bom::TreeNode* node(const QModelIndex& index) const;
    const bom::RecipeBook& book() const { return *m_book; }

private:
    ShoppingSession& m_session;
    std::shared_ptr<const bom::RecipeBook> m_book;
    std::shared_ptr<const bom::ExpansionTree> m_tree;
};

// "component", "upgraded from", "refined from": how a tree node enters its parent's recipe.
QString LinkText(bom::Link link);

} // namespace planner
