#pragma once
// Widget glue shared by the record windows: trees and lists filled through the sinks, node keys and
// paths, tooltips, read-only boxes, the owner of a new window.
#include "core/tooltip.h"
#include "views/buildtree.h"
#include "views/modmain.h"

#include <QList>
#include <QString>

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;
class QWidget;

// Adds nodes to a tree widget: every node expanded, the key and picture number kept on the item.
// A key given twice is refused as the tree control always refused it (run-time error 35602).
class TreeWidgetSink : public TreeNodeSink {
public:
    TreeWidgetSink(QTreeWidget* tree, bool mobTree);
    void addNode(const QString& parentKey, const QString& key, const QString& text, int image) override;
    QTreeWidgetItem* item(const QString& key) const;
    const QList<QTreeWidgetItem*>& itemsInOrder() const { return m_order; }
    void clear();

private:
    QTreeWidget* m_tree;
    bool m_mobTree;
    QHash<QString, QTreeWidgetItem*> m_items;
    QList<QTreeWidgetItem*> m_order;
};

QString NodeKey(const QTreeWidgetItem* item);
int NodeImage(const QTreeWidgetItem* item);
// The node texts from the top down joined by "\", as the tree control gives a node's full path.
QString NodeFullPath(const QTreeWidgetItem* item);
// The clipboard text of a tree, nodes in the order in which they were added.
QString TreeWidgetClipboardText(const QList<QTreeWidgetItem*>& itemsInOrder);

class ListWidgetSink : public ListSink {
public:
    explicit ListWidgetSink(QListWidget* list) : m_list(list) {}
    void addItem(const QString& text) override;

private:
    QListWidget* m_list;
};
// Fills a list widget with the first column of each row.
void PopulateList(QListWidget* list, Recordset& rs);
// Runs the statement and fills the list; throws on a failed statement.
void FillList(QListWidget* list, const QString& sql);

QTreeWidget* NewTree(QWidget* parent, const QString& objectName);
QListWidget* NewList(QWidget* parent, const QString& objectName);
QLineEdit* NewBox(QWidget* parent, const QString& objectName);
// The row of command buttons at the foot of a record window, and one named button added to it.
QHBoxLayout* NewButtonRow();
QPushButton* AddButton(QHBoxLayout* row, QWidget* parent, const QString& caption, const QString& objectName);
// A page holding nothing but a new tree.
QWidget* NewTreePage(QTreeWidget*& tree, const QString& objectName);
// A page holding nothing but the read-only comments box ("txtComments").
QWidget* NewCommentsPage(QPlainTextEdit*& box);
// The record's name in large bold type ("lblName").
QLabel* NewTitleLabel(QWidget* parent);
// The head of a record window: the record's picture ("imgIcon"), its name and its type line below it.
QHBoxLayout* NewViewHeader(QWidget* parent, QLabel*& icon, QLabel*& title, QLabel*& type);

// Record windows are owned by the main window when there is one, and are separate top-level windows.
QWidget* ViewOwner();
void PrepareViewWindow(QWidget* window);
