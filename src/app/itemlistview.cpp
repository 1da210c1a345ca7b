#include "app/itemlistview.h"

#include <QEvent>
#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QtMath>

namespace {
// A list marks its current record by the selected row; a table would also frame the one cell.
class RowDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyleOptionViewItem plain(option);
        plain.state &= ~QStyle::State_HasFocus;
        QStyledItemDelegate::paint(painter, plain, index);
    }
};
} // namespace

ItemListView::ItemListView(QWidget* parent) : QTableView(parent) {
    setItemDelegate(new RowDelegate(this));
    setShowGrid(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    // Fitting a column to its texts measures the rows in sight and this many more: enough to size
    // it well, few enough that a list of a million rows opens at once.
    horizontalHeader()->setResizeContentsPrecision(250);
    fitRowHeight();
}

void ItemListView::fitRowHeight() {
    // A line of text or the tick box, whichever is taller, with a little air: the rows of a list.
    const int box = style()->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, this);
    verticalHeader()->setDefaultSectionSize(qMax(fontMetrics().height(), box) + 4);
}

void ItemListView::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        fitRowHeight();
}

void ItemListView::setBackgroundPicture(const QImage& picture) {
    m_picture = picture;
    m_scaled = QImage();
    viewport()->update();
}

void ItemListView::paintEvent(QPaintEvent* event) {
    if (!m_picture.isNull()) {
        // Painted first, below the rows, anchored in the lower right corner so that its bright
        // part stays clear of the names in the first columns. A viewport larger than the picture
        // gets it enlarged to cover it all: no edge and no bare strip beside it.
        const QRect area = viewport()->rect();
        const double scale = qMax(
            1.0, qMax(double(area.width()) / m_picture.width(), double(area.height()) / m_picture.height()));
        const QSize size(qCeil(m_picture.width() * scale), qCeil(m_picture.height() * scale));
        if (m_scaled.size() != size)
            m_scaled = scale == 1.0 ? m_picture
                                    : m_picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        QPainter p(viewport());
        p.setOpacity(0.35);
        p.drawImage(area.right() - size.width() + 1, area.bottom() - size.height() + 1, m_scaled);
    }
    QTableView::paintEvent(event);
}

void ItemListView::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    if (!m_picture.isNull())
        viewport()->update();
}

QModelIndex ItemListView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    switch (action) {
    case MoveHome:
    case MoveEnd:
        return QTableView::moveCursor(action, modifiers | Qt::ControlModifier);
    case MoveLeft:
    case MoveRight: {
        QScrollBar* bar = horizontalScrollBar();
        bar->setValue(bar->value() + (action == MoveLeft ? -1 : 1) * bar->singleStep() * 3);
        return currentIndex();
    }
    default:
        return QTableView::moveCursor(action, modifiers);
    }
}
