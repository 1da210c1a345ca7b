#include "editors/ubgrid.h"

#include "core/vberror.h"
#include "data/errorreport.h"
#include "editors/frmlisteditdialog.h"
#include "editors/gridroutines.h"
#include "editors/propertylist.h"

#include <QAbstractTableModel>
#include <QComboBox>
#include <QCompleter>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QRegularExpressionValidator>
#include <QStyledItemDelegate>

// The grid as Qt's views see it: data rows and columns only; the header row and the fixed column
// become the headers.
class GridItemModel : public QAbstractTableModel, public GridListener {
public:
    GridItemModel(GridModel& grid, QObject* parent) : QAbstractTableModel(parent), m_grid(grid) {
        m_grid.setListener(this);
    }
    ~GridItemModel() override { m_grid.setListener(nullptr); }

    std::function<void()> onLayout;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override {
        return parent.isValid() ? 0 : m_grid.rows() - 1;
    }
    int columnCount(const QModelIndex& parent = QModelIndex()) const override {
        return parent.isValid() ? 0 : m_grid.cols() - 1;
    }
    QVariant data(const QModelIndex& index, int role) const override {
        const int r = index.row() + 1, c = index.column() + 1;
        if (!index.isValid() || r >= m_grid.rows() || c >= m_grid.cols())
            return QVariant();
        if (role == Qt::DisplayRole || role == Qt::EditRole)
            return m_grid.text(r, c);
        if (role == Qt::TextAlignmentRole)
            return QVariant::fromValue((m_grid.colNumeric(c) ? Qt::AlignRight : Qt::AlignLeft) |
                                       Qt::AlignVCenter);
        return QVariant();
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (role != Qt::DisplayRole)
            return QAbstractTableModel::headerData(section, orientation, role);
        if (orientation == Qt::Horizontal)
            return m_grid.header(section + 1);
        const int r = section + 1;
        if (m_grid.isEntryRow(r))
            return QStringLiteral("*");
        const QString fixed = m_grid.text(r, 0);
        return fixed.isEmpty() ? QString::number(r) : fixed;
    }
    Qt::ItemFlags flags(const QModelIndex& index) const override {
        Qt::ItemFlags f = QAbstractTableModel::flags(index);
        if (index.isValid() && !m_grid.locked())
            f |= Qt::ItemIsEditable;
        return f;
    }
    bool setData(const QModelIndex& index, const QVariant& value, int role) override {
        if (!index.isValid() || role != Qt::EditRole)
            return false;
        m_grid.userEdit(index.row() + 1, index.column() + 1, value.toString());
        return true;
    }

    void gridAboutToReset() override { beginResetModel(); }
    void gridReset() override {
        endResetModel();
        if (onLayout)
            onLayout();
    }
    void gridAboutToInsertRows(int first, int last) override { beginInsertRows({}, first - 1, last - 1); }
    void gridRowsInserted() override {
        endInsertRows();
        // The row numbers below the new row, and the entry row's mark, move.
        Q_EMIT headerDataChanged(Qt::Vertical, 0, rowCount() - 1);
    }
    void gridAboutToRemoveRows(int first, int last) override { beginRemoveRows({}, first - 1, last - 1); }
    void gridRowsRemoved() override {
        endRemoveRows();
        Q_EMIT headerDataChanged(Qt::Vertical, 0, rowCount() - 1);
    }
    void gridCellChanged(int row, int col) override {
        const QModelIndex i = index(row - 1, col - 1);
        Q_EMIT dataChanged(i, i);
    }
    void gridLayoutChanged() override {
        Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
        if (onLayout)
            onLayout();
    }

private:
    GridModel& m_grid;
};

namespace {

// Text cells get a line edit, numeric cells a right-aligned one that takes only numbers, cells of a
// column with a list an editable drop-down whose choice is taken at once.
class GridDelegate : public QStyledItemDelegate {
public:
    GridDelegate(GridModel& grid, QObject* parent) : QStyledItemDelegate(parent), m_grid(grid) {}

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                          const QModelIndex& index) const override {
        const int c = index.column() + 1;
        const QStringList choices = m_grid.listDisplays(c);
        if (!choices.isEmpty()) {
            auto* box = new QComboBox(parent);
            box->setObjectName(QStringLiteral("gridDropDown"));
            box->setEditable(true);
            box->setInsertPolicy(QComboBox::NoInsert);
            box->addItems(choices);
            box->setMaxVisibleItems(16);
            box->completer()->setCaseSensitivity(Qt::CaseInsensitive);
            box->completer()->setCompletionMode(QCompleter::InlineCompletion);
            auto* self = const_cast<GridDelegate*>(this);
            connect(box, &QComboBox::activated, self, [self, box](int) {
                Q_EMIT self->commitData(box);
                Q_EMIT self->closeEditor(box, QAbstractItemDelegate::NoHint);
            });
            return box;
        }
        auto* line = new QLineEdit(parent);
        line->setObjectName(QStringLiteral("gridEditor"));
        line->setFrame(false);
        if (m_grid.colNumeric(c)) {
            line->setAlignment(Qt::AlignRight);
            static const QRegularExpression number(QStringLiteral("-?[0-9]*([.,][0-9]*)?"));
            line->setValidator(new QRegularExpressionValidator(number, line));
        }
        return line;
    }
    void setEditorData(QWidget* editor, const QModelIndex& index) const override {
        const QString text = index.data(Qt::EditRole).toString();
        if (auto* box = qobject_cast<QComboBox*>(editor)) {
            const int at = box->findText(text, Qt::MatchFixedString);
            if (at >= 0)
                box->setCurrentIndex(at);
            box->setEditText(text);
            box->lineEdit()->selectAll();
        } else if (auto* line = qobject_cast<QLineEdit*>(editor)) {
            line->setText(text);
        }
    }
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override {
        QString text;
        if (auto* box = qobject_cast<QComboBox*>(editor))
            text = box->currentText();
        else if (auto* line = qobject_cast<QLineEdit*>(editor))
            text = line->text();
        model->setData(index, text.trimmed(), Qt::EditRole);
    }

private:
    GridModel& m_grid;
};

} // namespace

UBGrid::UBGrid(const QString& name, QWidget* parent) : QTableView(parent), m_grid(name) {
    setObjectName(name);
    InstallStandardEdits(m_grid);
    m_grid.setCharWidth(fontMetrics().averageCharWidth());
    m_model = new GridItemModel(m_grid, this);
    m_model->onLayout = [this] { applyLayout(); };
    setModel(m_model);
    setItemDelegate(new GridDelegate(m_grid, this));
    setSelectionBehavior(QAbstractItemView::SelectItems);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked |
                    QAbstractItemView::EditKeyPressed | QAbstractItemView::AnyKeyPressed);
    setTabKeyNavigation(false);
    setAlternatingRowColors(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    horizontalHeader()->setStretchLastSection(false);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("000")) + 10);
    verticalHeader()->setDefaultAlignment(Qt::AlignCenter);
}

UBGrid::~UBGrid() {
    // The model goes before the grid it watches.
    delete m_model;
    m_model = nullptr;
}

QModelIndex UBGrid::cellIndex(int row, int col) const {
    return m_model->index(row - 1, col - 1);
}

void UBGrid::setLookup(int col, const LookupTable& lookup, const QString& listQuery) {
    m_lookups.insert(col, {lookup, listQuery});
}

void UBGrid::applyLayout() {
    for (int c = 1; c < m_grid.cols(); ++c)
        if (m_grid.colWidth(c) > 0)
            setColumnWidth(c - 1, m_grid.colWidth(c));
}

void UBGrid::format() {
    m_grid.setWidth(viewport()->width() + 10);
    FormatUBGrids(m_grid);
}

bool UBGrid::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
    // Ask the before-edit hook only when an editor would really open now; a click that merely selects,
    // or the click that starts a delayed edit, must not show its messages.
    const bool opens = index.isValid() && state() != EditingState && (index.flags() & Qt::ItemIsEditable) &&
                       trigger != SelectedClicked &&
                       (trigger == AllEditTriggers || (editTriggers() & trigger) != 0);
    if (opens && !m_grid.beginUserEdit(gridRow(index), gridCol(index)))
        return false;
    return QTableView::edit(index, trigger, event);
}

void UBGrid::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Delete && state() != EditingState && event->modifiers() == Qt::NoModifier) {
        removeCurrentRow();
        event->accept();
        return;
    }
    QTableView::keyPressEvent(event);
}

void UBGrid::removeCurrentRow() {
    const QModelIndex at = currentIndex();
    if (!at.isValid() || m_grid.isEntryRow(gridRow(at)))
        return;
    const int col = at.column();
    m_grid.removeRowByUser(gridRow(at));
    FormatUBGrids(m_grid);
    const int row = qMin(at.row(), m_model->rowCount() - 1);
    if (row >= 0)
        setCurrentIndex(m_model->index(row, col));
}

void UBGrid::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    format();
}

// The data area narrows when the vertical scroll bar appears: the columns follow it.
bool UBGrid::viewportEvent(QEvent* event) {
    const bool handled = QTableView::viewportEvent(event);
    if (event->type() == QEvent::Resize)
        format();
    return handled;
}

void UBGrid::showEvent(QShowEvent* event) {
    QTableView::showEvent(event);
    format();
}

void UBGrid::contextMenuEvent(QContextMenuEvent* event) {
    const QModelIndex at = indexAt(event->pos());
    if (at.isValid())
        setCurrentIndex(at);
    QMenu menu(this);
    QAction* remove = menu.addAction(tr("&Remove Row"));
    remove->setEnabled(at.isValid() && !m_grid.isEntryRow(gridRow(at)) && !m_grid.locked());
    connect(remove, &QAction::triggered, this, [this] { removeCurrentRow(); });
    const int col = at.isValid() ? gridCol(at) : -1;
    if (m_lookups.contains(col)) {
        menu.addSeparator();
        const Lookup& l = m_lookups[col];
        menu.addAction(tr("&Edit the %1 List...").arg(l.table.kind), this, [this, col] { editLookup(col); });
    }
    menu.exec(event->globalPos());
}

void UBGrid::editLookup(int col) {
    const Lookup l = m_lookups.value(col);
    DisplayListEditDialog(l.table, this);
    // The list offers what the table holds now; (None) stays first in a column-1 list.
    try {
        const QStringList values = ChoicesFrom(l.listQuery);
        m_grid.clearList(col);
        if (col == 1)
            m_grid.addListItem(col, NoneEntry, NoneEntry);
        for (const QString& v : values)
            m_grid.addListItem(col, v, v);
    } catch (const VbError& e) {
        ReportDBError(e, objectName() + QStringLiteral("_EditList"), QStringLiteral("Module modMain"));
    }
}
