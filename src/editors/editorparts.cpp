#include "editors/editorparts.h"

#include "core/imagestore.h"
#include "data/errorreport.h"
#include "editors/frmlistdialog.h"
#include "editors/ubgrid.h"
#include "views/viewwidgets.h"

#include <QAbstractItemModel>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QTabWidget>
#include <QVBoxLayout>
#include <memory>

QLineEdit* NewNameBox(QWidget* parent) {
    auto* box = new QLineEdit(parent);
    box->setObjectName(QStringLiteral("txtName"));
    box->setMaxLength(100);
    return box;
}

QComboBox* NewLevelBox(QWidget* parent) {
    auto* box = new QComboBox(parent);
    box->setObjectName(QStringLiteral("cmbLevel"));
    box->setEditable(true);
    box->setValidator(new QIntValidator(0, 9999, box));
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setMaximumWidth(120);
    return box;
}

void FillLevels(QComboBox* box, const QString& level) {
    box->clear();
    for (int i = 1; i <= qMax(60, level.toInt()); ++i)
        box->addItem(QString::number(i));
    box->setEditText(level);
}

PriceField NewPriceField(QWidget* parent, const QString& boxName, const QString& wordName, PriceWords kind) {
    PriceField f;
    f.box = new QLineEdit(parent);
    f.box->setObjectName(boxName);
    static const QRegularExpression whole(QStringLiteral("-?[0-9]{0,10}"));
    f.box->setValidator(new QRegularExpressionValidator(whole, f.box));
    f.box->setAlignment(Qt::AlignRight);
    f.box->setMaximumWidth(120);
    f.box->setContextMenuPolicy(Qt::CustomContextMenu);
    f.word = new QLabel(parent);
    f.word->setObjectName(wordName);
    f.row = new QHBoxLayout;
    f.row->addWidget(f.box);
    f.row->addWidget(f.word, 1);
    QLineEdit* box = f.box;
    QLabel* word = f.word;
    QObject::connect(box, &QLineEdit::textChanged, word, [word, kind](const QString& text) {
        const QString typed = text.trimmed();
        const QString shown = PriceDisplay(typed, kind);
        word->setText(!typed.isEmpty() && shown != typed ? shown : QString());
    });
    QObject::connect(box, &QWidget::customContextMenuRequested, box, [box, kind](const QPoint& pos) {
        std::unique_ptr<QMenu> menu(box->createStandardContextMenu());
        menu->addSeparator();
        for (const auto& choice : PriceChoices(kind)) {
            const QString number = choice.second;
            menu->addAction(choice.first, box, [box, number] { box->setText(number); });
        }
        menu->exec(box->mapToGlobal(pos));
    });
    return f;
}

QPushButton* NewPictureButton(QWidget* parent) {
    auto* b = new QPushButton(parent);
    b->setObjectName(QStringLiteral("cmdPicture"));
    b->setIconSize(QSize(32, 32));
    return b;
}

void ShowPicture(QPushButton* button, QLabel* headIcon, qint32 picture) {
    const QPixmap icon = QPixmap::fromImage(GetItemIcon(picture));
    headIcon->setPixmap(icon);
    button->setIcon(QIcon(icon));
    button->setText(QStringLiteral(" No. ") + QString::number(picture) + QStringLiteral("..."));
}

namespace {
// A box or tab widget that shows the number of rows of models it watches. It stops listening as soon
// as it starts going away: the models belong to its children, which may still announce their last
// rows while they are taken down.
template <typename Widget> class Counting : public Widget {
public:
    using Widget::Widget;
    ~Counting() override {
        for (QAbstractItemModel* m : std::as_const(m_watched))
            QObject::disconnect(m, nullptr, this, nullptr);
    }
    template <typename Show> void watch(QAbstractItemModel* model, Show show) {
        m_watched.append(model);
        QObject::connect(model, &QAbstractItemModel::rowsInserted, this, show);
        QObject::connect(model, &QAbstractItemModel::rowsRemoved, this, show);
        QObject::connect(model, &QAbstractItemModel::modelReset, this, show);
        QObject::connect(model, &QAbstractItemModel::layoutChanged, this, show);
        show();
    }

private:
    QList<QAbstractItemModel*> m_watched;
};

QString withCount(const QString& caption, int rows) {
    return rows > 0 ? caption + QStringLiteral(" (") + QString::number(rows) + QLatin1Char(')') : caption;
}
} // namespace

PickListBox NewPickListBox(QWidget* parent, const QString& title, const QString& listName,
                           const QString& buttonName, bool counted) {
    PickListBox p;
    auto* box = new Counting<QGroupBox>(title, parent);
    p.box = box;
    auto* col = new QVBoxLayout(box);
    p.list = NewList(box, listName);
    p.change = new QPushButton(QObject::tr("C&hange..."), box);
    p.change->setObjectName(buttonName);
    col->addWidget(p.list, 1);
    col->addWidget(p.change, 0, Qt::AlignRight);
    QPushButton* change = p.change;
    QObject::connect(p.list, &QListWidget::itemDoubleClicked, change, [change] { change->click(); });
    QListWidget* list = p.list;
    if (counted)
        box->watch(list->model(), [box, list, title] { box->setTitle(withCount(title, list->count())); });
    return p;
}

void PickInto(QListWidget* list, const QString& kind, const QString& sql, const QString& procedure,
              const QString& container) {
    try {
        DisplayListDialog(kind, ChoicesFrom(sql), list);
    } catch (const VbError& e) {
        ReportDBError(e, procedure, container);
    }
}

QTabWidget* NewGridTabs(const QList<GridDef>& defs, const QStringList& widgets, bool counted) {
    auto* tabs = new Counting<QTabWidget>;
    tabs->setDocumentMode(true);
    for (const QString& w : widgets)
        for (const GridDef& d : defs)
            if (d.widget == w) {
                auto* grid = new UBGrid(w, tabs);
                const int at = tabs->addTab(grid, d.caption);
                const QString caption = d.caption;
                if (counted)
                    tabs->watch(grid->model(), [tabs, at, grid, caption] {
                        tabs->setTabText(at, withCount(caption, grid->grid().lastDataRow()));
                    });
            }
    return tabs;
}

QPlainTextEdit* NewCommentsBox(QWidget* parent) {
    auto* box = new QPlainTextEdit(parent);
    box->setObjectName(QStringLiteral("txtComments"));
    box->setTabChangesFocus(true);
    return box;
}

QLabel* BuddyLabel(const QString& text, QWidget* buddy, QWidget* parent) {
    auto* l = new QLabel(text, parent);
    l->setBuddy(buddy);
    return l;
}
