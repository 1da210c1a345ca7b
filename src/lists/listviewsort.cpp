#include "lists/listviewsort.h"
#include "lists/listmodel.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHeaderView>
#include <QTableView>
#include <QTreeView>

ListViewSort::ListViewSort(QObject* parent) : QObject(parent) {}

void ListViewSort::setListView(QAbstractItemView* view) {
    if (m_header)
        disconnect(m_header, nullptr, this, nullptr);
    m_view = view;
    m_header = nullptr;
    if (auto* tree = qobject_cast<QTreeView*>(view))
        m_header = tree->header();
    else if (auto* table = qobject_cast<QTableView*>(view))
        m_header = table->horizontalHeader();
    if (!m_header)
        return;
    m_header->setSectionsClickable(true);
    m_header->setSortIndicatorShown(true);
    connect(m_header, &QHeaderView::sectionClicked, this, &ListViewSort::columnClick);
}

ListModel* ListViewSort::model() const {
    return m_view ? qobject_cast<ListModel*>(m_view->model()) : nullptr;
}

void ListViewSort::columnClick(int column) {
    ListModel* list = model();
    if (!list || column < 0 || column >= list->columnCount())
        return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    m_view->setUpdatesEnabled(false);
    list->sortByColumn(column);
    if (m_header) {
        // The first click on a column may sort it descending, so the arrow is what tells the order.
        m_header->setSortIndicator(list->sortKey(), list->sortOrder() == ListModel::Ascending
                                                        ? Qt::AscendingOrder
                                                        : Qt::DescendingOrder);
        m_header->setSortIndicatorShown(true);
    }
    m_view->setUpdatesEnabled(true);
    // A new order is read from its top; only a row the user has just changed keeps the view on it.
    const QModelIndex current = m_view->currentIndex();
    if (current.isValid() && current.row() == list->changedRow())
        m_view->scrollTo(current);
    else
        m_view->scrollToTop();
    QApplication::restoreOverrideCursor();
}
