#include "editors/propertylistwidget.h"

#include "core/clock.h"
#include "core/prompt.h"
#include "core/vberror.h"
#include "data/errorreport.h"
#include "editors/frmlisteditdialog.h"

#include <QComboBox>
#include <QDateTimeEdit>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QRegularExpressionValidator>
#include <QStyledItemDelegate>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>

namespace {
constexpr int RowRole = Qt::UserRole + 1;
const char* const DateFormat = "yyyy-MM-dd hh:mm:ss";

// Rows are chosen whole; an edit started anywhere on a row edits its value.
class PropertyTree : public QTreeWidget {
public:
    using QTreeWidget::QTreeWidget;

protected:
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override {
        if (index.isValid() && index.column() == 0)
            return QTreeWidget::edit(index.siblingAtColumn(1), trigger, event);
        return QTreeWidget::edit(index, trigger, event);
    }
};

class PropertyDelegate : public QStyledItemDelegate {
public:
    explicit PropertyDelegate(PropertyListWidget* owner) : QStyledItemDelegate(owner), m_owner(owner) {}

    const PropertyRow* rowOf(const QModelIndex& index) const {
        const int i = index.siblingAtColumn(0).data(RowRole).toInt();
        return i >= 0 && i < m_owner->list().count() ? &m_owner->list().at(i) : nullptr;
    }

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override {
        const PropertyRow* r = rowOf(index);
        if (!r || r->readOnly || r->isCategory() || index.column() != 1)
            return nullptr;
        switch (r->editor) {
        case PropertyEditor::YesNo:
        case PropertyEditor::Choice: {
            auto* box = new QComboBox(parent);
            box->setObjectName(QStringLiteral("propertyChoice"));
            box->addItems(r->editor == PropertyEditor::YesNo
                              ? QStringList{QStringLiteral("Yes"), QStringLiteral("No")}
                              : r->choices);
            box->setEditable(r->editor == PropertyEditor::Choice && !r->choicesOnly);
            auto* self = const_cast<PropertyDelegate*>(this);
            connect(box, &QComboBox::activated, self, [self, box](int) {
                Q_EMIT self->commitData(box);
                Q_EMIT self->closeEditor(box, QAbstractItemDelegate::NoHint);
            });
            return box;
        }
        case PropertyEditor::Date: {
            auto* date = new QDateTimeEdit(parent);
            date->setObjectName(QStringLiteral("propertyDate"));
            date->setDisplayFormat(QLatin1String(DateFormat));
            date->setCalendarPopup(true);
            return date;
        }
        default: {
            auto* line = new QLineEdit(parent);
            line->setObjectName(QStringLiteral("propertyText"));
            line->setFrame(false);
            if (r->editor == PropertyEditor::Whole) {
                static const QRegularExpression whole(QStringLiteral("[-+]?[0-9]*"));
                line->setValidator(new QRegularExpressionValidator(whole, line));
                line->setAlignment(Qt::AlignRight);
            } else if (r->editor == PropertyEditor::Decimal) {
                static const QRegularExpression number(QStringLiteral("[-+]?[0-9]*([.,][0-9]*)?"));
                line->setValidator(new QRegularExpressionValidator(number, line));
                line->setAlignment(Qt::AlignRight);
            } else if (r->maxLength > 0) {
                line->setMaxLength(r->maxLength);
            }
            return line;
        }
        }
        return nullptr;
    }

    void setEditorData(QWidget* editor, const QModelIndex& index) const override {
        const PropertyRow* r = rowOf(index);
        if (!r)
            return;
        if (auto* box = qobject_cast<QComboBox*>(editor)) {
            const int at = box->findText(r->value, Qt::MatchFixedString);
            if (at >= 0)
                box->setCurrentIndex(at);
            else if (box->isEditable())
                box->setEditText(r->value);
        } else if (auto* date = qobject_cast<QDateTimeEdit*>(editor)) {
            const QDateTime d = QDateTime::fromString(r->value, QLatin1String(DateFormat));
            date->setDateTime(d.isValid() ? d : Now());
        } else if (auto* line = qobject_cast<QLineEdit*>(editor)) {
            line->setText(r->value);
            line->selectAll();
        }
    }

    void setModelData(QWidget* editor, QAbstractItemModel*, const QModelIndex& index) const override {
        const PropertyRow* r = rowOf(index);
        if (!r)
            return;
        QString text;
        if (auto* box = qobject_cast<QComboBox*>(editor))
            text = box->currentText();
        else if (auto* date = qobject_cast<QDateTimeEdit*>(editor))
            text = date->dateTime().toString(QLatin1String(DateFormat));
        else if (auto* line = qobject_cast<QLineEdit*>(editor))
            text = line->text();
        m_owner->editValue(r->key, text);
    }

private:
    PropertyListWidget* m_owner;
};
} // namespace

PropertyListWidget::PropertyListWidget(const QString& name, QWidget* parent) : QWidget(parent) {
    setObjectName(name);
    auto* col = new QVBoxLayout(this);
    col->setContentsMargins(0, 0, 0, 0);
    m_tree = new PropertyTree(this);
    m_tree->setObjectName(name + QStringLiteral("Rows"));
    m_tree->setColumnCount(2);
    m_tree->setHeaderLabels({QStringLiteral("Property"), QStringLiteral("Value")});
    m_tree->setRootIsDecorated(true);
    m_tree->setAlternatingRowColors(true);
    m_tree->setUniformRowHeights(true);
    m_tree->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked |
                            QAbstractItemView::EditKeyPressed | QAbstractItemView::AnyKeyPressed);
    m_tree->setItemDelegateForColumn(1, new PropertyDelegate(this));
    m_tree->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    m_tree->header()->setStretchLastSection(true);
    m_tree->setContextMenuPolicy(Qt::CustomContextMenu);
    m_tree->installEventFilter(this);
    m_help = new QLabel(this);
    m_help->setObjectName(name + QStringLiteral("Help"));
    m_help->setWordWrap(true);
    m_help->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    m_help->setFrameShape(QFrame::StyledPanel);
    m_help->setMinimumHeight(fontMetrics().height() * 4 + 8);
    m_help->setTextFormat(Qt::RichText);
    col->addWidget(m_tree, 1);
    col->addWidget(m_help);
    connect(m_tree, &QTreeWidget::currentItemChanged, this, &PropertyListWidget::showHelp);
    connect(m_tree, &QWidget::customContextMenuRequested, this, &PropertyListWidget::popupMenu);
    m_list.onChanged = [this](int index) { showRow(index); };
}

PropertyListWidget::~PropertyListWidget() {
    // An editor still open would hand its value over as the tree goes; nobody reads it any more.
    m_dying = true;
    m_list.onChanged = nullptr;
    delete m_tree;
    m_tree = nullptr;
}

void PropertyListWidget::rebuild() {
    m_tree->clear();
    QTreeWidgetItem* category = nullptr;
    QFont bold = m_tree->font();
    bold.setBold(true);
    for (int i = 0; i < m_list.count(); ++i) {
        const PropertyRow& r = m_list.at(i);
        QTreeWidgetItem* item = nullptr;
        if (r.isCategory()) {
            item = new QTreeWidgetItem(m_tree);
            item->setFirstColumnSpanned(true);
            item->setFont(0, bold);
            item->setBackground(0, palette().button());
            item->setFlags(Qt::ItemIsEnabled);
            category = item;
        } else {
            item = category && r.parent == m_list.at(category->data(0, RowRole).toInt()).key
                       ? new QTreeWidgetItem(category)
                       : new QTreeWidgetItem(m_tree);
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable |
                           (r.readOnly ? Qt::NoItemFlags : Qt::ItemIsEditable));
        }
        item->setData(0, RowRole, i);
        item->setText(0, r.caption);
        showRow(i);
    }
    m_tree->expandAll();
}

QTreeWidgetItem* PropertyListWidget::itemFor(const QString& key) const {
    const int i = m_list.indexOf(key);
    for (QTreeWidgetItemIterator it(m_tree); *it; ++it)
        if ((*it)->data(0, RowRole).toInt() == i)
            return *it;
    return nullptr;
}

QString PropertyListWidget::shownValue(const QString& key) const {
    const QTreeWidgetItem* item = itemFor(key);
    return item ? item->text(1) : QString();
}

void PropertyListWidget::showRow(int index) {
    if (index < 0 || index >= m_list.count())
        return;
    QTreeWidgetItem* item = nullptr;
    for (QTreeWidgetItemIterator it(m_tree); *it && !item; ++it)
        if ((*it)->data(0, RowRole).toInt() == index)
            item = *it;
    if (!item)
        return;
    const PropertyRow& r = m_list.at(index);
    if (r.isCategory())
        return;
    item->setText(1, PriceDisplay(r.value, r.price));
    QFont f = m_tree->font();
    f.setBold(r.changed());
    item->setFont(1, f);
    if (r.readOnly)
        item->setForeground(1, palette().brush(QPalette::Disabled, QPalette::Text));
    item->setToolTip(0, r.help);
    item->setToolTip(1, r.help);
    if (item == m_tree->currentItem())
        showHelp();
}

void PropertyListWidget::showHelp() {
    const QTreeWidgetItem* item = m_tree->currentItem();
    if (!item) {
        m_help->clear();
        return;
    }
    const PropertyRow& r = m_list.at(item->data(0, RowRole).toInt());
    QString help = r.help.toHtmlEscaped();
    help.replace(QLatin1String("\r\n"), QLatin1String("<br>"));
    m_help->setText(QStringLiteral("<b>") + r.caption.toHtmlEscaped() + QStringLiteral("</b><br>") + help);
}

bool PropertyListWidget::editValue(const QString& key, const QString& value) {
    if (m_dying)
        return false;
    const int i = m_list.indexOf(key);
    const QString why = m_list.checkValue(i, value);
    if (!why.isEmpty()) {
        MsgBox(why, vb::Exclamation, QStringLiteral("Invalid Value"));
        return false;
    }
    const QString before = m_list.at(i).value;
    m_list.setValue(i, value);
    if (m_list.at(i).value != before)
        Q_EMIT valueChanged(key);
    return true;
}

bool PropertyListWidget::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_tree && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete) {
        if (const QTreeWidgetItem* item = m_tree->currentItem()) {
            const PropertyRow& r = m_list.at(item->data(0, RowRole).toInt());
            if (!r.isCategory() && !r.readOnly)
                editValue(r.key, QString());
        }
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void PropertyListWidget::popupMenu(const QPoint& pos) {
    QTreeWidgetItem* item = m_tree->itemAt(pos);
    if (!item)
        return;
    m_tree->setCurrentItem(item);
    const PropertyRow r = m_list.at(item->data(0, RowRole).toInt());
    if (r.isCategory() || r.readOnly)
        return;
    QMenu menu(this);
    for (const auto& choice : PriceChoices(r.price)) {
        const QString key = r.key, number = choice.second;
        menu.addAction(choice.first, this, [this, key, number] { editValue(key, number); });
    }
    if (!menu.isEmpty())
        menu.addSeparator();
    const QString key = r.key;
    menu.addAction(tr("&Clear"), this, [this, key] { editValue(key, QString()); });
    if (!r.lookup.table.isEmpty()) {
        menu.addSeparator();
        menu.addAction(tr("&Edit the %1 List...").arg(r.lookup.kind), this, [this, key] { editLookup(key); });
    }
    menu.exec(m_tree->viewport()->mapToGlobal(pos));
}

void PropertyListWidget::editLookup(const QString& key) {
    PropertyRow* r = m_list.row(key);
    if (!r || r->lookup.table.isEmpty())
        return;
    const LookupTable lookup = r->lookup;
    DisplayListEditDialog(lookup, this);
    try {
        const QStringList values = lookup.values();
        if (PropertyRow* again = m_list.row(key))
            again->choices = values;
    } catch (const VbError& e) {
        ReportDBError(e, objectName() + QStringLiteral("_EditList"), QStringLiteral("Module modMain"));
    }
}
