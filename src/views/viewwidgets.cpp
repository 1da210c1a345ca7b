#include "views/viewwidgets.h"

#include "core/childwindows.h"
#include "data/recordset.h"
#include "views/treeimages.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
constexpr int KeyRole = Qt::UserRole;
constexpr int ImageRole = Qt::UserRole + 1;
} // namespace

TreeWidgetSink::TreeWidgetSink(QTreeWidget* tree, bool mobTree) : m_tree(tree), m_mobTree(mobTree) {}

void TreeWidgetSink::addNode(const QString& parentKey, const QString& key, const QString& text, int image) {
    if (m_items.contains(key))
        throw VbError(35602, QStringLiteral("Key is not unique in collection"));
    QTreeWidgetItem* parent = parentKey.isEmpty() ? nullptr : m_items.value(parentKey);
    if (!parentKey.isEmpty() && !parent)
        throw VbError(35601, QStringLiteral("Element not found"));
    auto* item = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(m_tree);
    item->setText(0, text);
    item->setData(0, KeyRole, key);
    item->setData(0, ImageRole, image);
    if (image != 0)
        item->setIcon(0, TreeIcon(image, m_mobTree));
    item->setExpanded(true);
    if (parent)
        parent->setExpanded(true);
    m_items.insert(key, item);
    m_order.append(item);
}

QTreeWidgetItem* TreeWidgetSink::item(const QString& key) const {
    return m_items.value(key);
}

void TreeWidgetSink::clear() {
    m_tree->clear();
    m_items.clear();
    m_order.clear();
}

QString NodeKey(const QTreeWidgetItem* item) {
    return item ? item->data(0, KeyRole).toString() : QString();
}
int NodeImage(const QTreeWidgetItem* item) {
    return item ? item->data(0, ImageRole).toInt() : 0;
}

QString NodeFullPath(const QTreeWidgetItem* item) {
    QString path;
    for (const QTreeWidgetItem* i = item; i; i = i->parent())
        path = path.isEmpty() ? i->text(0) : i->text(0) + QLatin1Char('\\') + path;
    return path;
}

QString TreeWidgetClipboardText(const QList<QTreeWidgetItem*>& itemsInOrder) {
    QList<QPair<QString, QString>> lines;
    lines.reserve(itemsInOrder.size());
    for (const QTreeWidgetItem* i : itemsInOrder)
        lines.append({NodeFullPath(i), i->text(0)});
    return TreeClipboardText(lines);
}

void ListWidgetSink::addItem(const QString& text) {
    m_list->addItem(text);
}

void PopulateList(QListWidget* list, Recordset& rs) {
    ListWidgetSink sink(list);
    PopulateList(sink, rs);
}

void FillList(QListWidget* list, const QString& sql) {
    Recordset rs;
    rs.open(sql);
    PopulateList(list, rs);
    rs.close();
}

QTreeWidget* NewTree(QWidget* parent, const QString& objectName) {
    auto* tree = new QTreeWidget(parent);
    tree->setObjectName(objectName);
    tree->setHeaderHidden(true);
    tree->setColumnCount(1);
    tree->setUniformRowHeights(true);
    tree->setContextMenuPolicy(Qt::CustomContextMenu);
    tree->setExpandsOnDoubleClick(false);
    // Long recipe lines scroll sideways instead of being cut short.
    tree->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    tree->header()->setStretchLastSection(false);
    return tree;
}

QListWidget* NewList(QWidget* parent, const QString& objectName) {
    auto* list = new QListWidget(parent);
    list->setObjectName(objectName);
    return list;
}

QLineEdit* NewBox(QWidget* parent, const QString& objectName) {
    auto* box = new QLineEdit(parent);
    box->setObjectName(objectName);
    box->setReadOnly(true);
    return box;
}

QHBoxLayout* NewButtonRow() {
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    return row;
}

QPushButton* AddButton(QHBoxLayout* row, QWidget* parent, const QString& caption, const QString& objectName) {
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(objectName);
    row->addWidget(button);
    return button;
}

QWidget* NewTreePage(QTreeWidget*& tree, const QString& objectName) {
    auto* page = new QWidget;
    auto* col = new QVBoxLayout(page);
    tree = NewTree(page, objectName);
    col->addWidget(tree);
    return page;
}

QWidget* NewCommentsPage(QPlainTextEdit*& box) {
    auto* page = new QWidget;
    auto* col = new QVBoxLayout(page);
    box = new QPlainTextEdit(page);
    box->setObjectName(QStringLiteral("txtComments"));
    box->setReadOnly(true);
    col->addWidget(box);
    return page;
}

QLabel* NewTitleLabel(QWidget* parent) {
    auto* title = new QLabel(parent);
    title->setObjectName(QStringLiteral("lblName"));
    QFont big = title->font();
    big.setPointSizeF(big.pointSizeF() * 1.4);
    big.setBold(true);
    title->setFont(big);
    return title;
}

QHBoxLayout* NewViewHeader(QWidget* parent, QLabel*& icon, QLabel*& title, QLabel*& type) {
    auto* head = new QHBoxLayout;
    icon = new QLabel(parent);
    icon->setObjectName(QStringLiteral("imgIcon"));
    icon->setFixedSize(40, 40);
    icon->setAlignment(Qt::AlignCenter);
    icon->setFrameShape(QFrame::StyledPanel);
    head->addWidget(icon);
    auto* titles = new QVBoxLayout;
    title = NewTitleLabel(parent);
    type = new QLabel(parent);
    type->setObjectName(QStringLiteral("lblType"));
    titles->addWidget(title);
    titles->addWidget(type);
    head->addLayout(titles, 1);
    return head;
}

QWidget* ViewOwner() {
    return OwnerWindow();
}

void PrepareViewWindow(QWidget* window) {
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setWindowFlag(Qt::Window);
}
