#pragma once
// The shopping list window: targets on top (found by name as you type, a quantity each), below them
// everything the targets take, grouped by how each is had (bought, mined, refined, built, looted,
// unknown source) with where and for how much, each line ticked off as it is obtained; and the
// expansion tree that shows why each line is there. Copy as text, save as CSV, print.
#include "core/vberror.h"
#include "planner/shoppingsession.h"

#include <QWidget>
#include <functional>

class QCheckBox;
class QCompleter;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QSpinBox;
class QStringListModel;
class QTabWidget;
class QTableView;
class QTimer;
class QTreeView;

namespace planner {
class ExpansionTreeModel;
class ShoppingListModel;
class TargetsModel;
} // namespace planner

class frmShoppingList : public QWidget {
    Q_OBJECT
public:
    static QString caption() { return QStringLiteral("Shopping List"); }

    explicit frmShoppingList(QWidget* parent = nullptr);
    ~frmShoppingList() override;

    planner::ShoppingSession& session() { return m_session; }
    // Adds to the targets (the quantity adds to one already there) and works the list out.
    void addTarget(const bom::Ref& ref, qint64 quantity = 1);
    // Works the list out again (reading what changed in the database); errors are reported.
    void refreshList();
    // The search box's matches for a text: "Name — Kind", at most a few of each kind.
    QStringList findRecords(const QString& text) const;

    // The texts of the exports, as the commands write them.
    QString listText() const;
    QString listCsv() const;
    QString listHtml() const;

    QLineEdit* txtAddTarget = nullptr;
    QSpinBox* spnQuantity = nullptr;
    QPushButton* cmdAdd = nullptr;
    QTableView* tblTargets = nullptr;
    QPushButton *cmdRemove = nullptr, *cmdClear = nullptr;
    QCheckBox *chkBuildIntermediates = nullptr, *chkCountHave = nullptr;
    QTabWidget* tabShopping = nullptr;
    QTreeView* lstShopping = nullptr;
    QTreeView* treExpansion = nullptr;
    QLabel* lblTotals = nullptr;
    QLabel* lblWarnings = nullptr;
    QPushButton *cmdCopy = nullptr, *cmdSaveCsv = nullptr, *cmdPrint = nullptr, *cmdClose = nullptr;

    void cmdAdd_Click();
    void cmdRemove_Click();
    void cmdClear_Click();
    void mnuCopyText_Click();
    void mnuSaveCsv_Click();
    void mnuPrint_Click(bool toPdf);
    // The record of the current line of the list or the tree opened in its view, or its build view.
    void openCurrent(bool buildView);
    // Build (true) or obtain (false) the current line's record from now on; nullopt: as the rule says.
    void chooseCurrent(std::optional<bool> build);

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void buildLayout();
    QWidget* targetsBox();
    void buildMenus();
    void showList();
    void targetsChanged();
    bom::Ref currentRef() const;
    void reportError(const VbError& e, const QString& procedure);

    planner::ShoppingSession m_session;
    planner::TargetsModel* m_targets = nullptr;
    planner::ShoppingListModel* m_list = nullptr;
    planner::ExpansionTreeModel* m_tree = nullptr;
    QCompleter* m_completer = nullptr;
    QStringListModel* m_matches = nullptr;
    QTimer* m_search = nullptr;
    QMenu* m_popup = nullptr;
};

// Opens the shopping list (brings it forward when it is open already) and returns it.
frmShoppingList* ShowShoppingList();
// Adds a record to the shopping list, opening it: kind is a category or kind word.
void AddToShoppingList(const QString& kind, const QString& name);
// The shopping list while it is open, else nullptr.
frmShoppingList* OpenShoppingList();
// Told of every tick the shopping list writes (category word, name, new state), so that the main
// list can show it.
void SetShoppingCheckHook(
    std::function<void(const QString& category, const QString& name, bool checked)> hook);

// Prints the list's document, or writes it as PDF to a file the player chooses.
void PrintShoppingList(const QString& title, const QString& html, QWidget* parent, bool toPdf);
