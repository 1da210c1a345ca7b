#include "app/listsearch.h"

#include "lists/listmodel.h"

#include <QAbstractItemView>
#include <QBoxLayout>
#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

namespace {
// Escape empties the box, Down and Enter carry on in the list with the first row shown chosen.
class SearchKeys : public QObject {
public:
    SearchKeys(QLineEdit* box, QAbstractItemView* list) : QObject(box), m_box(box), m_list(list) {}
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched != m_box || event->type() != QEvent::KeyPress)
            return false;
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Escape && !m_box->text().isEmpty()) {
            m_box->clear();
            return true;
        }
        if (key == Qt::Key_Down || key == Qt::Key_Return || key == Qt::Key_Enter) {
            QAbstractItemModel* model = m_list->model();
            if (model && model->rowCount() > 0) {
                if (!m_list->currentIndex().isValid())
                    m_list->setCurrentIndex(model->index(0, 0));
                m_list->setFocus(Qt::TabFocusReason);
                return true;
            }
        }
        return false;
    }

private:
    QLineEdit* m_box;
    QAbstractItemView* m_list;
};
} // namespace

QLineEdit* NewListSearchBox(QWidget* parent, QBoxLayout* row) {
    auto* label = new QLabel(QObject::tr("&Name:"), parent);
    auto* box = new QLineEdit(parent);
    box->setObjectName(QStringLiteral("txtSearch"));
    box->setPlaceholderText(QObject::tr("type to narrow the list"));
    box->setClearButtonEnabled(true);
    box->setMinimumWidth(box->fontMetrics().horizontalAdvance(QStringLiteral("type to narrow the list")) +
                         40);
    box->setToolTip(QObject::tr("Shows only the rows whose name contains this text, in any case.\n"
                                "Esc clears it; Down or Enter goes to the list."));
    label->setBuddy(box);
    row->addWidget(label);
    row->addWidget(box);
    return box;
}

void AttachListSearch(QLineEdit* box, QAbstractItemView* list, ListModel* model,
                      std::function<void(int shown)> shown) {
    box->installEventFilter(new SearchKeys(box, list));
    QObject::connect(box, &QLineEdit::textChanged, model, [model, list, shown](const QString& text) {
        model->setNameFilter(text);
        // The chosen row stays in sight while it is shown; otherwise the narrowed list starts at its top.
        if (list->currentIndex().isValid())
            list->scrollTo(list->currentIndex());
        else
            list->scrollToTop();
        if (shown)
            shown(model->rowCount());
    });
}
