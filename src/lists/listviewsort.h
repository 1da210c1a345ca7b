#pragma once
// clsListViewSort: click-to-sort columns for a list view over a ListModel. A click on a column header
// sorts by that column (toggling the order on every click) with the column's tag deciding how.
#include <QAbstractItemView>
#include <QHeaderView>
#include <QObject>
#include <QPointer>

class ListModel;

class ListViewSort : public QObject {
    Q_OBJECT
public:
    explicit ListViewSort(QObject* parent = nullptr);
    // Attaches to a QTreeView or QTableView showing a ListModel; nullptr detaches.
    void setListView(QAbstractItemView* view);
    QAbstractItemView* listView() const { return m_view; }

    // The column-click: sorts, shows the sort indicator, and shows the top of the new order, or the
    // current row when it is the one the user changed last (ListModel::changedRow).
    void columnClick(int column);

private:
    ListModel* model() const;
    QPointer<QAbstractItemView> m_view;
    QPointer<QHeaderView> m_header;
};
