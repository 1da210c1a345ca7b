#include "lists/frmfind.h"
#include "lists/cellformat.h"
#include "lists/finditem.h"
#include "lists/listmodel.h"

#include "core/childwindows.h"
#include "core/prompt.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTreeView>
#include <QVBoxLayout>

namespace {
// A search never widens a column past this, so that a long comment keeps the other columns in sight.
constexpr int WidestFittedColumn = 320;

// Bold text is wider than plain: the columns grow to fit their marked cells, never shrink.
void widenToFit(QAbstractItemView* list) {
    QHeaderView* header = nullptr;
    if (auto* tree = qobject_cast<QTreeView*>(list))
        header = tree->header();
    else if (auto* table = qobject_cast<QTableView*>(list))
        header = table->horizontalHeader();
    if (!header)
        return;
    for (int c = 0; c < header->count(); ++c) {
        if (header->isSectionHidden(c))
            continue;
        const int now = header->sectionSize(c);
        const int wanted = qMin(list->sizeHintForColumn(c), qMax(now, WidestFittedColumn));
        if (wanted > now)
            header->resizeSection(c, wanted);
    }
}
} // namespace

frmFind::frmFind(QAbstractItemView* list, ListModel* model, FindStatus* status, QWidget* parent)
    : QDialog(parent), m_list(list), m_model(model), m_status(status) {
    setObjectName(QStringLiteral("frmFind"));
    setWindowTitle(QStringLiteral("Find..."));

    lblFindWhat = new QLabel(QStringLiteral("Find What:"), this);
    lblFindWhat->setObjectName(QStringLiteral("lblFindWhat"));
    txtSearchText = new QLineEdit(this);
    txtSearchText->setObjectName(QStringLiteral("txtSearchText"));
    lblFindWhat->setBuddy(txtSearchText);

    fraDirection = new QGroupBox(QStringLiteral("Direction"), this);
    fraDirection->setObjectName(QStringLiteral("fraDirection"));
    optUp = new QRadioButton(QStringLiteral("Up"), fraDirection);
    optUp->setObjectName(QStringLiteral("optUp"));
    optDown = new QRadioButton(QStringLiteral("Down"), fraDirection);
    optDown->setObjectName(QStringLiteral("optDown"));
    optDown->setChecked(true);
    auto* dirLayout = new QHBoxLayout(fraDirection);
    dirLayout->addWidget(optUp);
    dirLayout->addWidget(optDown);

    chkMatchCase = new QCheckBox(QStringLiteral("Match Case"), this);
    chkMatchCase->setObjectName(QStringLiteral("chkMatchCase"));
    chkNamesOnly = new QCheckBox(QStringLiteral("Search Names Only"), this);
    chkNamesOnly->setObjectName(QStringLiteral("chkNamesOnly"));
    chkMarkAll = new QCheckBox(QStringLiteral("Mark All"), this);
    chkMarkAll->setObjectName(QStringLiteral("chkMarkAll"));

    cmdFindNext = new QPushButton(QStringLiteral("&Find Next"), this);
    cmdFindNext->setObjectName(QStringLiteral("cmdFindNext"));
    cmdFindNext->setDefault(true);
    cmdFindNext->setEnabled(false);
    cmdCancel = new QPushButton(QStringLiteral("&Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));

    auto* grid = new QGridLayout(this);
    grid->addWidget(lblFindWhat, 0, 0);
    grid->addWidget(txtSearchText, 0, 1, 1, 2);
    grid->addWidget(cmdFindNext, 0, 3);
    auto* checks = new QVBoxLayout;
    checks->addWidget(chkMatchCase);
    checks->addWidget(chkNamesOnly);
    checks->addWidget(chkMarkAll);
    grid->addLayout(checks, 1, 0, 1, 2);
    grid->addWidget(fraDirection, 1, 2);
    grid->addWidget(cmdCancel, 1, 3, Qt::AlignTop);

    connect(chkMarkAll, &QCheckBox::toggled, this, [this] { chkMarkAll_Click(); });
    connect(txtSearchText, &QLineEdit::textChanged, this, [this] { txtSearchText_Change(); });
    connect(cmdFindNext, &QPushButton::clicked, this, [this] { cmdFindNext_Click(); });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::close);

    RegisterChildWindow(this);
}

frmFind::~frmFind() = default;

void frmFind::chkMarkAll_Click() {
    const bool all = chkMarkAll->isChecked();
    cmdFindNext->setText(all ? QStringLiteral("Find All") : QStringLiteral("Find Next"));
    fraDirection->setEnabled(!all);
}

void frmFind::txtSearchText_Change() {
    cmdFindNext->setEnabled(!txtSearchText->text().isEmpty());
}

void frmFind::cmdFindNext_Click() {
    FindItem();
    if (cmdFindNext->text() == QLatin1String("Find All"))
        close();
}

int frmFind::FindItem() {
    if (!m_list || !m_model)
        return -1;
    QElapsedTimer timer;
    timer.start();
    if (m_status)
        m_status->setStatus(QStringLiteral("Finding..."));
    const bool markAll = chkMarkAll->isChecked();

    // The selected row's position (1-based); with nothing selected the search starts at the top.
    int selected = 0;
    if (QItemSelectionModel* sel = m_list->selectionModel()) {
        const QModelIndexList rows = sel->selectedRows();
        if (!rows.isEmpty())
            selected = rows.first().row() + 1;
    }
    const bool down = optDown->isChecked() || !optUp->isChecked();
    const int found = UberFindItem(txtSearchText->text(), selected + 1, *m_model, down,
                                   chkNamesOnly->isChecked(), chkMatchCase->isChecked(), markAll);
    if (found == 0) {
        MsgBox(QStringLiteral("The search critiria was not found"), vb::Information,
               QStringLiteral("Not Found"));
    } else {
        const QModelIndex index = m_model->index(found - 1, 0);
        m_list->scrollTo(index);
        if (QItemSelectionModel* sel = m_list->selectionModel())
            sel->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        if (markAll)
            widenToFit(m_list);
    }
    if (m_status) {
        m_status->setStatus(QStringLiteral("Ready"));
        m_status->setLoadTime(FormatFractionNumber(double(timer.nsecsElapsed()) / 1e9) +
                              QStringLiteral(" Seconds"));
    }
    return found == 0 ? -1 : found - 1;
}
