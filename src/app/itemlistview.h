#pragma once
// The record list: a flat table in report style (no grid, no row numbers, whole rows selected) that
// can paint the program's background picture behind its rows. A table keeps no item per row, so a
// list of a million records costs the view nothing when rows come in or are reordered.
#include <QImage>
#include <QTableView>

class ItemListView : public QTableView {
public:
    explicit ItemListView(QWidget* parent = nullptr);
    // The column header (the list has no row header).
    QHeaderView* header() const { return horizontalHeader(); }
    void setBackgroundPicture(const QImage& picture);
    const QImage& backgroundPicture() const { return m_picture; }

protected:
    void paintEvent(QPaintEvent* event) override;
    // The picture stays put while the rows scroll over it, so a scroll repaints the whole viewport
    // instead of moving the pixels already shown.
    void scrollContentsBy(int dx, int dy) override;
    // Keys move between records, as in a list: Home and End go to the first and last record, Left
    // and Right scroll the columns.
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void changeEvent(QEvent* event) override;

private:
    void fitRowHeight();
    QImage m_picture;
    QImage m_scaled; // the picture at the size the viewport last needed
};
