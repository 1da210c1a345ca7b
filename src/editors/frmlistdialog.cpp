#include "editors/frmlistdialog.h"

#include "core/childwindows.h"
#include "views/modmain.h"
#include "views/viewwidgets.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
// Keeps each list in alphabetical order, letter case aside, as the values came from the database.
void insertSorted(QListWidget* list, const QString& text) {
    int at = 0;
    while (at < list->count() && list->item(at)->text().compare(text, Qt::CaseInsensitive) < 0)
        ++at;
    list->insertItem(at, text);
}

QStringList texts(const QListWidget* list) {
    QStringList out;
    for (int i = 0; i < list->count(); ++i)
        out.append(list->item(i)->text());
    return out;
}

QPushButton* button(QWidget* parent, const QString& caption, const QString& name) {
    auto* b = new QPushButton(caption, parent);
    b->setObjectName(name);
    return b;
}
} // namespace

frmListDialog::frmListDialog(const QString& kind, const QStringList& available, const QStringList& selected,
                             QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("frmListDialog"));
    setWindowTitle(QStringLiteral("Select available ") + kind);
    auto* grid = new QGridLayout(this);
    lblAvailable = new QLabel(QStringLiteral("Available ") + kind + QLatin1Char(':'), this);
    lblSelected = new QLabel(QStringLiteral("Selected ") + kind + QLatin1Char(':'), this);
    lstAvailable = NewList(this, QStringLiteral("lstAvailable"));
    lstSelected = NewList(this, QStringLiteral("lstSelected"));
    for (QListWidget* l : {lstAvailable, lstSelected})
        l->setSelectionMode(QAbstractItemView::ExtendedSelection);
    lblAvailable->setBuddy(lstAvailable);
    lblSelected->setBuddy(lstSelected);

    cmdAdd = button(this, QStringLiteral("&Add >"), QStringLiteral("cmdAdd"));
    cmdAddAll = button(this, QStringLiteral("Add A&ll >>"), QStringLiteral("cmdAddAll"));
    cmdRemove = button(this, QStringLiteral("< &Remove"), QStringLiteral("cmdRemove"));
    cmdRemoveAll = button(this, QStringLiteral("<< Remove All"), QStringLiteral("cmdRemoveAll"));
    auto* middle = new QVBoxLayout;
    middle->addStretch();
    for (QPushButton* b : {cmdAdd, cmdAddAll, cmdRemove, cmdRemoveAll})
        middle->addWidget(b);
    middle->addStretch();

    cmdOK = button(this, QStringLiteral("OK"), QStringLiteral("cmdOK"));
    cmdCancel = button(this, QStringLiteral("Cancel"), QStringLiteral("cmdCancel"));
    cmdOK->setDefault(true);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch();
    bottom->addWidget(cmdOK);
    bottom->addWidget(cmdCancel);

    grid->addWidget(lblAvailable, 0, 0);
    grid->addWidget(lblSelected, 0, 2);
    grid->addWidget(lstAvailable, 1, 0);
    grid->addLayout(middle, 1, 1);
    grid->addWidget(lstSelected, 1, 2);
    grid->addLayout(bottom, 2, 0, 1, 3);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(2, 1);

    for (const QString& v : selected)
        lstSelected->addItem(v);
    for (const QString& v : available)
        if (!selected.contains(v, Qt::CaseInsensitive))
            lstAvailable->addItem(v);

    const struct {
        QWidget* widget;
        const char* key;
    } tips[] = {{lstAvailable, "AVAILABLE_LIST"},
                {lstSelected, "SELECTED_LIST"},
                {cmdAdd, "ADD"},
                {cmdAddAll, "ADD_ALL"},
                {cmdRemove, "REMOVE"},
                {cmdRemoveAll, "REMOVE_ALL"},
                {cmdCancel, "CANCEL"},
                {cmdOK, "OK"}};
    for (const auto& t : tips)
        SetTip(t.widget, GetToolTip(QStringLiteral("LIST_DIALOG"), QLatin1String(t.key), kind));

    connect(cmdAdd, &QPushButton::clicked, this, &frmListDialog::cmdAdd_Click);
    connect(cmdAddAll, &QPushButton::clicked, this, &frmListDialog::cmdAddAll_Click);
    connect(cmdRemove, &QPushButton::clicked, this, &frmListDialog::cmdRemove_Click);
    connect(cmdRemoveAll, &QPushButton::clicked, this, &frmListDialog::cmdRemoveAll_Click);
    connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(lstAvailable, &QListWidget::itemDoubleClicked, this, &frmListDialog::cmdAdd_Click);
    connect(lstSelected, &QListWidget::itemDoubleClicked, this, &frmListDialog::cmdRemove_Click);
    for (QListWidget* l : {lstAvailable, lstSelected})
        connect(l, &QListWidget::itemSelectionChanged, this, &frmListDialog::updateButtons);
    updateButtons();
    resize(520, 380);
}

QStringList frmListDialog::selectedValues() const {
    return texts(lstSelected);
}

QStringList frmListDialog::availableValues() const {
    return texts(lstAvailable);
}

void frmListDialog::move(QListWidget* from, QListWidget* to, bool all) {
    QStringList moving;
    for (int i = from->count() - 1; i >= 0; --i) {
        if (all || from->item(i)->isSelected()) {
            moving.prepend(from->item(i)->text());
            delete from->takeItem(i);
        }
    }
    for (const QString& v : moving)
        insertSorted(to, v);
    to->clearSelection();
    for (int i = 0; i < to->count(); ++i)
        if (moving.contains(to->item(i)->text()))
            to->item(i)->setSelected(true);
    updateButtons();
}

void frmListDialog::cmdAdd_Click() {
    move(lstAvailable, lstSelected, false);
}

void frmListDialog::cmdAddAll_Click() {
    move(lstAvailable, lstSelected, true);
}

void frmListDialog::cmdRemove_Click() {
    move(lstSelected, lstAvailable, false);
}

void frmListDialog::cmdRemoveAll_Click() {
    move(lstSelected, lstAvailable, true);
}

void frmListDialog::updateButtons() {
    cmdAdd->setEnabled(!lstAvailable->selectedItems().isEmpty());
    cmdAddAll->setEnabled(lstAvailable->count() > 0);
    cmdRemove->setEnabled(!lstSelected->selectedItems().isEmpty());
    cmdRemoveAll->setEnabled(lstSelected->count() > 0);
}

bool DisplayListDialog(const QString& kind, const QStringList& available, QListWidget* selected) {
    if (!selected)
        return false;
    frmListDialog dialog(kind, available, texts(selected), selected->window());
    if (dialog.exec() != QDialog::Accepted)
        return false;
    selected->clear();
    selected->addItems(dialog.selectedValues());
    return true;
}

frmCheckListDialog::frmCheckListDialog(const QString& title, const QString& caption,
                                       const QStringList& values, const QStringList& checked, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("frmCheckListDialog"));
    setWindowTitle(title);
    auto* col = new QVBoxLayout(this);
    auto* label = new QLabel(caption, this);
    lstValues = NewList(this, QStringLiteral("lstValues"));
    label->setBuddy(lstValues);
    for (const QString& v : values) {
        auto* item = new QListWidgetItem(v, lstValues);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(checked.contains(v, Qt::CaseInsensitive) ? Qt::Checked : Qt::Unchecked);
    }
    cmdAll = button(this, QStringLiteral("Check &All"), QStringLiteral("cmdAll"));
    cmdNone = button(this, QStringLiteral("Check &None"), QStringLiteral("cmdNone"));
    cmdOK = button(this, QStringLiteral("OK"), QStringLiteral("cmdOK"));
    cmdCancel = button(this, QStringLiteral("Cancel"), QStringLiteral("cmdCancel"));
    cmdOK->setDefault(true);
    auto* row = new QHBoxLayout;
    row->addWidget(cmdAll);
    row->addWidget(cmdNone);
    row->addStretch();
    row->addWidget(cmdOK);
    row->addWidget(cmdCancel);
    col->addWidget(label);
    col->addWidget(lstValues, 1);
    col->addLayout(row);
    auto setAll = [this](Qt::CheckState s) {
        for (int i = 0; i < lstValues->count(); ++i)
            lstValues->item(i)->setCheckState(s);
    };
    connect(cmdAll, &QPushButton::clicked, this, [setAll] { setAll(Qt::Checked); });
    connect(cmdNone, &QPushButton::clicked, this, [setAll] { setAll(Qt::Unchecked); });
    connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    resize(320, 380);
}

QStringList frmCheckListDialog::checkedValues() const {
    QStringList out;
    for (int i = 0; i < lstValues->count(); ++i)
        if (lstValues->item(i)->checkState() == Qt::Checked)
            out.append(lstValues->item(i)->text());
    return out;
}

bool DisplayCheckListDialog(const QString& title, const QString& caption, const QStringList& values,
                            QStringList* checked, QWidget* parent) {
    frmCheckListDialog dialog(title, caption, values, checked ? *checked : QStringList(),
                              parent ? parent : OwnerWindow());
    if (dialog.exec() != QDialog::Accepted)
        return false;
    if (checked)
        *checked = dialog.checkedValues();
    return true;
}
