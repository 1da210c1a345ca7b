#include "lists/frmprintlist.h"

#include "core/clock.h"
#include "core/inifile.h"
#include "core/printjob.h"
#include "core/progress.h"
#include "core/prompt.h"
#include "core/settings.h"
#include "core/tooltip.h"
#include "lists/listmodel.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPrinter>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {
const QString Section = QStringLiteral("PrintList");
const QString Caption = QStringLiteral("Print Filtered List");
// How the tick is kept among the remembered column names (no result column is named so).
const QString TickName = QStringLiteral("(Ticked)");
constexpr int ColumnRole = Qt::UserRole;
// Above this many pages the user is asked first; above the other the pages are counted in the
// progress window.
constexpr int AskAbovePages = 50, ProgressAbovePages = 5;

QString columnKey(const ListModel& model, int column) {
    return column == ListReportPlan::TickColumn ? TickName : model.columnName(column);
}
} // namespace

frmPrintList::frmPrintList(const ListModel& model, const QHeaderView* header, const QString& title,
                           const QString& subtitle, const QString& key, QWidget* parent)
    : QDialog(parent), m_model(model), m_key(key) {
    setObjectName(QStringLiteral("frmPrintList"));
    setWindowTitle(Caption);

    auto* grid = new QGridLayout(this);
    auto addBox = [&](QLineEdit*& box, const char* name, const QString& caption, const QString& text,
                      int row) {
        auto* label = new QLabel(caption, this);
        box = new QLineEdit(text, this);
        box->setObjectName(QLatin1String(name));
        label->setBuddy(box);
        grid->addWidget(label, row, 0);
        grid->addWidget(box, row, 1, 1, 2);
    };
    addBox(txtTitle, "txtTitle", tr("&Title:"), title, 0);
    addBox(txtSubtitle, "txtSubtitle", tr("&Filters:"), subtitle, 1);

    auto* columnsLabel = new QLabel(tr("C&olumns to print, in this order:"), this);
    lstColumns = new QListWidget(this);
    lstColumns->setObjectName(QStringLiteral("lstColumns"));
    lstColumns->setMinimumHeight(220);
    columnsLabel->setBuddy(lstColumns);
    grid->addWidget(columnsLabel, 2, 0, 1, 3);
    grid->addWidget(lstColumns, 3, 0, 1, 2);
    auto* moves = new QVBoxLayout;
    auto button = [&](QPushButton*& b, const QString& text, const char* name) {
        b = new QPushButton(text, this);
        b->setObjectName(QLatin1String(name));
        b->setAutoDefault(false);
        moves->addWidget(b);
    };
    button(cmdUp, tr("Move &Up"), "cmdUp");
    button(cmdDown, tr("Move &Down"), "cmdDown");
    moves->addSpacing(8);
    button(cmdAll, tr("&All"), "cmdAll");
    button(cmdNone, tr("&None"), "cmdNone");
    moves->addStretch(1);
    grid->addLayout(moves, 3, 2);

    auto* orientation = new QGroupBox(tr("Paper"), this);
    auto* orientationRow = new QHBoxLayout(orientation);
    optPortrait = new QRadioButton(tr("&Portrait"), orientation);
    optPortrait->setObjectName(QStringLiteral("optPortrait"));
    optLandscape = new QRadioButton(tr("&Landscape"), orientation);
    optLandscape->setObjectName(QStringLiteral("optLandscape"));
    orientationRow->addWidget(optPortrait);
    orientationRow->addWidget(optLandscape);
    orientationRow->addStretch(1);
    grid->addWidget(orientation, 4, 0, 1, 3);

    lblPages = new QLabel(this);
    lblPages->setObjectName(QStringLiteral("lblPages"));
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(lblPages, 1);
    cmdPrint = new QPushButton(opt::flag(opt::PrintPreview) ? tr("&Preview...") : tr("&Print..."), this);
    cmdPrint->setObjectName(QStringLiteral("cmdPrint"));
    cmdPrint->setDefault(true);
    cmdCancel = new QPushButton(tr("&Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    buttons->addWidget(cmdPrint);
    buttons->addWidget(cmdCancel);
    grid->addLayout(buttons, 5, 0, 1, 3);
    grid->setColumnStretch(1, 1);

    const QString tips = QStringLiteral("PRINT_LIST");
    SetTip(txtTitle, ReadVoskIni(tips, QStringLiteral("TITLE")));
    SetTip(txtSubtitle, ReadVoskIni(tips, QStringLiteral("FILTERS")));
    SetTip(lstColumns, ReadVoskIni(tips, QStringLiteral("COLUMNS")));
    SetTip(optLandscape, ReadVoskIni(tips, QStringLiteral("LANDSCAPE")));
    SetTip(cmdPrint, ReadVoskIni(tips, QStringLiteral("PRINT")));

    fillColumns(header);
    const QString savedOrientation = GetSetting(Section, m_key + QStringLiteral("/Landscape"));
    const bool wide = savedOrientation.isEmpty() ? !ListReportFitsAcross(m_model, plan(), false) &&
                                                       ListReportFitsAcross(m_model, plan(), true)
                                                 : textBool(savedOrientation);
    (wide ? optLandscape : optPortrait)->setChecked(true);
    updatePages();

    connect(cmdUp, &QPushButton::clicked, this, [this] { moveCurrent(-1); });
    connect(cmdDown, &QPushButton::clicked, this, [this] { moveCurrent(1); });
    for (QPushButton* b : {cmdAll, cmdNone})
        connect(b, &QPushButton::clicked, this, [this, b] {
            for (int i = 0; i < lstColumns->count(); ++i)
                lstColumns->item(i)->setCheckState(b == cmdAll ? Qt::Checked : Qt::Unchecked);
        });
    connect(lstColumns, &QListWidget::itemChanged, this, [this] { updatePages(); });
    connect(optLandscape, &QRadioButton::toggled, this, [this] { updatePages(); });
    connect(cmdPrint, &QPushButton::clicked, this, [this] { cmdPrint_Click(); });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmPrintList::fillColumns(const QHeaderView* header) {
    // The list's own order first (as the user arranged it), with the columns it shows ticked.
    QList<int> order;
    QList<int> shown;
    for (int visual = 0; visual < m_model.columnCount(); ++visual) {
        const int column = header ? header->logicalIndex(visual) : visual;
        if (column < 0)
            continue;
        order.append(column);
        if (!header || !header->isSectionHidden(column))
            shown.append(column);
    }
    order.append(ListReportPlan::TickColumn);

    // A choice remembered for this category wins, for the columns the list still has.
    const QStringList saved =
        GetSetting(Section, m_key + QStringLiteral("/Columns")).split(QLatin1Char(','), Qt::SkipEmptyParts);
    QList<int> chosen;
    for (const QString& name : saved)
        for (int column : order)
            if (columnKey(m_model, column) == name && !chosen.contains(column))
                chosen.append(column);
    if (chosen.isEmpty())
        chosen = shown;
    QList<int> listed = chosen;
    for (int column : order)
        if (!listed.contains(column))
            listed.append(column);

    const QSignalBlocker hold(lstColumns);
    for (int column : listed) {
        auto* item = new QListWidgetItem(ReportColumnCaption(m_model, column), lstColumns);
        item->setData(ColumnRole, column);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(chosen.contains(column) ? Qt::Checked : Qt::Unchecked);
    }
    lstColumns->setCurrentRow(0);
}

ListReportPlan frmPrintList::plan() const {
    ListReportPlan s;
    s.title = txtTitle->text().trimmed();
    s.subtitle = txtSubtitle->text().trimmed();
    s.printedOn = QStringLiteral("Printed ") + generalDate(Now());
    for (int i = 0; i < lstColumns->count(); ++i)
        if (lstColumns->item(i)->checkState() == Qt::Checked)
            s.columns.append(lstColumns->item(i)->data(ColumnRole).toInt());
    return s;
}

bool frmPrintList::landscape() const {
    return optLandscape->isChecked();
}

void frmPrintList::moveCurrent(int by) {
    const int row = lstColumns->currentRow();
    const int to = row + by;
    if (row < 0 || to < 0 || to >= lstColumns->count())
        return;
    const QSignalBlocker hold(lstColumns);
    QListWidgetItem* item = lstColumns->takeItem(row);
    lstColumns->insertItem(to, item);
    lstColumns->setCurrentRow(to);
    updatePages();
}

void frmPrintList::updatePages() {
    const ListReportPlan s = plan();
    if (s.columns.isEmpty()) {
        lblPages->setText(tr("No column chosen"));
        return;
    }
    const int pages = ListReportPageCount(m_model, s, landscape());
    lblPages->setText(pages == 1 ? tr("1 page") : tr("About %L1 pages").arg(pages));
}

void frmPrintList::remember() const {
    QStringList names;
    for (int column : plan().columns)
        names << columnKey(m_model, column);
    SaveSetting(Section, m_key + QStringLiteral("/Columns"), names.join(QLatin1Char(',')));
    SaveSetting(Section, m_key + QStringLiteral("/Landscape"), boolText(landscape()));
}

void frmPrintList::cmdPrint_Click() {
    const ListReportPlan s = plan();
    if (s.columns.isEmpty()) {
        MsgBox(QStringLiteral("Please tick at least one column to print."), vb::Exclamation, Caption);
        return;
    }
    remember();
    const int pages = ListReportPageCount(m_model, s, landscape());
    if (pages > AskAbovePages &&
        MsgBox(QStringLiteral("The list takes about %L1 pages. Do you want to print all of them?").arg(pages),
               vb::YesNo + vb::Question, Caption) != vb::Yes)
        return;

    PrintRequest request;
    request.title = s.title.isEmpty() ? Caption : s.title;
    request.landscape = landscape();
    const ListModel* model = &m_model;
    request.paint = [model, s, pages](QPrinter& printer) {
        std::unique_ptr<Progress> progress;
        if (pages > ProgressAbovePages)
            progress = StartProgress(QStringLiteral("Printing the list"));
        return PaintListReport(*model, s, printer, progress.get());
    };
    hide();
    PrintDocumentWith(request, parentWidget());
    accept();
}

void PrintFilteredList(const ListModel& model, const QHeaderView* header, const QString& title,
                       const QString& subtitle, const QString& key, QWidget* parent) {
    frmPrintList dialog(model, header, title, subtitle, key, parent);
    dialog.exec();
}
