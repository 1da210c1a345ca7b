#include "planner/frmshoppinglist.h"

#include "core/childwindows.h"
#include "core/prompt.h"
#include "data/errorreport.h"
#include "data/recordset.h"
#include "planner/shoppingexport.h"
#include "planner/shoppingmodels.h"
#include "views/modmain.h"
#include "views/viewwidgets.h"

#include <QAction>
#include <QCheckBox>
#include <QCloseEvent>
#include <QCompleter>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>
#include <QSplitter>
#include <QStringListModel>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>
#include <QTreeView>
#include <QVBoxLayout>

namespace {
const QString kForm = QStringLiteral("Form frmShoppingList");
const QString kDash = QStringLiteral(" \u2014 ");

QPointer<frmShoppingList>& current() {
    static QPointer<frmShoppingList> w;
    return w;
}

std::function<void(const QString&, const QString&, bool)>& checkHook() {
    static std::function<void(const QString&, const QString&, bool)> hook;
    return hook;
}
} // namespace

frmShoppingList::frmShoppingList(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("frmShoppingList"));
    PrepareViewWindow(this);
    setWindowTitle(caption());
    m_session.restore();
    m_targets = new planner::TargetsModel(m_session, this);
    m_list = new planner::ShoppingListModel(m_session, this);
    m_tree = new planner::ExpansionTreeModel(m_session, this);
    m_list->setErrorHandler(
        [this](const VbError& e, const QString& procedure) { reportError(e, procedure); });
    buildLayout();
    buildMenus();
    resize(1100, 720);
    refreshList();
}

frmShoppingList::~frmShoppingList() = default;

QWidget* frmShoppingList::targetsBox() {
    auto* box = new QGroupBox(tr("Targets"), this);
    auto* col = new QVBoxLayout(box);
    auto* find = new QHBoxLayout;
    auto* label = new QLabel(tr("Fin&d:"), box);
    txtAddTarget = new QLineEdit(box);
    txtAddTarget->setObjectName(QStringLiteral("txtAddTarget"));
    txtAddTarget->setPlaceholderText(tr("type part of a name: equipment, component, raw material or item"));
    txtAddTarget->setClearButtonEnabled(true);
    label->setBuddy(txtAddTarget);
    spnQuantity = new QSpinBox(box);
    spnQuantity->setObjectName(QStringLiteral("spnQuantity"));
    spnQuantity->setRange(1, 1000000);
    spnQuantity->setPrefix(QStringLiteral("\u00d7 "));
    cmdAdd = new QPushButton(tr("&Add"), box);
    cmdAdd->setObjectName(QStringLiteral("cmdAdd"));
    find->addWidget(label);
    find->addWidget(txtAddTarget, 1);
    find->addWidget(spnQuantity);
    find->addWidget(cmdAdd);
    col->addLayout(find);

    tblTargets = new QTableView(box);
    tblTargets->setObjectName(QStringLiteral("tblTargets"));
    tblTargets->setModel(m_targets);
    tblTargets->setSelectionBehavior(QAbstractItemView::SelectRows);
    tblTargets->setSelectionMode(QAbstractItemView::SingleSelection);
    tblTargets->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                                QAbstractItemView::AnyKeyPressed);
    tblTargets->verticalHeader()->hide();
    tblTargets->verticalHeader()->setDefaultSectionSize(tblTargets->fontMetrics().height() + 8);
    tblTargets->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    tblTargets->horizontalHeader()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    tblTargets->horizontalHeader()->setSectionResizeMode(2, QHeaderView::ResizeToContents);
    col->addWidget(tblTargets, 1);

    auto* row = new QHBoxLayout;
    chkBuildIntermediates = new QCheckBox(tr("&Build intermediate parts (otherwise buy them)"), box);
    chkBuildIntermediates->setObjectName(QStringLiteral("chkBuildIntermediates"));
    chkBuildIntermediates->setChecked(m_session.buildIntermediates());
    chkCountHave = new QCheckBox(tr("Count what I &have"), box);
    chkCountHave->setObjectName(QStringLiteral("chkCountHave"));
    chkCountHave->setChecked(m_session.countHave());
    chkCountHave->setToolTip(
        tr("Take off what you have (ticked lines, and the quantities in the Have column) "
           "before working out what it is made of"));
    cmdRemove = new QPushButton(tr("&Remove"), box);
    cmdRemove->setObjectName(QStringLiteral("cmdRemove"));
    cmdClear = new QPushButton(tr("C&lear"), box);
    cmdClear->setObjectName(QStringLiteral("cmdClear"));
    row->addWidget(chkBuildIntermediates);
    row->addWidget(chkCountHave);
    row->addStretch(1);
    row->addWidget(cmdRemove);
    row->addWidget(cmdClear);
    col->addLayout(row);
    return box;
}

void frmShoppingList::buildLayout() {
    auto* top = new QVBoxLayout(this);
    auto* split = new QSplitter(Qt::Vertical, this);
    split->addWidget(targetsBox());

    auto* lower = new QWidget(split);
    auto* lowerCol = new QVBoxLayout(lower);
    lowerCol->setContentsMargins(0, 0, 0, 0);
    tabShopping = new QTabWidget(lower);
    tabShopping->setObjectName(QStringLiteral("tabShopping"));
    lstShopping = new QTreeView(tabShopping);
    lstShopping->setObjectName(QStringLiteral("lstShopping"));
    lstShopping->setModel(m_list);
    lstShopping->setUniformRowHeights(true);
    lstShopping->setAlternatingRowColors(true);
    lstShopping->setAllColumnsShowFocus(true);
    lstShopping->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    lstShopping->setContextMenuPolicy(Qt::CustomContextMenu);
    lstShopping->header()->setStretchLastSection(false);
    tabShopping->addTab(lstShopping, tr("Shopping L&ist"));
    treExpansion = new QTreeView(tabShopping);
    treExpansion->setObjectName(QStringLiteral("treExpansion"));
    treExpansion->setModel(m_tree);
    treExpansion->setUniformRowHeights(true);
    treExpansion->setContextMenuPolicy(Qt::CustomContextMenu);
    treExpansion->header()->setStretchLastSection(false);
    treExpansion->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    tabShopping->addTab(treExpansion, tr("Build &Tree"));
    lowerCol->addWidget(tabShopping, 1);

    lblTotals = new QLabel(lower);
    lblTotals->setObjectName(QStringLiteral("lblTotals"));
    lblTotals->setTextInteractionFlags(Qt::TextSelectableByMouse);
    lowerCol->addWidget(lblTotals);
    lblWarnings = new QLabel(lower);
    lblWarnings->setObjectName(QStringLiteral("lblWarnings"));
    lblWarnings->setWordWrap(true);
    lblWarnings->setStyleSheet(QStringLiteral("color: #a00000;"));
    lowerCol->addWidget(lblWarnings);
    split->addWidget(lower);
    split->setStretchFactor(0, 1);
    split->setStretchFactor(1, 4);
    split->setSizes({190, 560});
    top->addWidget(split, 1);

    QHBoxLayout* buttons = NewButtonRow();
    cmdCopy = AddButton(buttons, this, tr("&Copy as Text"), QStringLiteral("cmdCopy"));
    cmdSaveCsv = AddButton(buttons, this, tr("&Save as CSV..."), QStringLiteral("cmdSaveCsv"));
    cmdPrint = AddButton(buttons, this, tr("&Print..."), QStringLiteral("cmdPrint"));
    cmdClose = AddButton(buttons, this, tr("Cl&ose"), QStringLiteral("cmdClose"));
    top->addLayout(buttons);

    // Typing in the box looks the name up after a short pause, so a fast typist waits for nothing.
    m_matches = new QStringListModel(this);
    m_completer = new QCompleter(m_matches, this);
    m_completer->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    m_completer->setMaxVisibleItems(12);
    txtAddTarget->setCompleter(m_completer);
    m_search = new QTimer(this);
    m_search->setSingleShot(true);
    m_search->setInterval(150);
    connect(txtAddTarget, &QLineEdit::textEdited, m_search, qOverload<>(&QTimer::start));
    connect(m_search, &QTimer::timeout, this, [this] {
        m_matches->setStringList(findRecords(txtAddTarget->text()));
        if (!m_matches->stringList().isEmpty())
            m_completer->complete();
    });
    connect(m_completer, qOverload<const QString&>(&QCompleter::activated), this,
            [this](const QString& text) {
                txtAddTarget->setText(text);
                cmdAdd_Click();
            });
    connect(txtAddTarget, &QLineEdit::returnPressed, this, &frmShoppingList::cmdAdd_Click);
    connect(cmdAdd, &QPushButton::clicked, this, &frmShoppingList::cmdAdd_Click);
    connect(cmdRemove, &QPushButton::clicked, this, &frmShoppingList::cmdRemove_Click);
    connect(cmdClear, &QPushButton::clicked, this, &frmShoppingList::cmdClear_Click);
    connect(m_targets, &planner::TargetsModel::quantityChanged, this, &frmShoppingList::targetsChanged);
    connect(chkBuildIntermediates, &QCheckBox::toggled, this, [this](bool on) {
        m_session.setBuildIntermediates(on);
        targetsChanged();
    });
    connect(chkCountHave, &QCheckBox::toggled, this, [this](bool on) {
        m_session.setCountHave(on);
        targetsChanged();
    });
    connect(m_list, &planner::ShoppingListModel::reworked, this, &frmShoppingList::showList);
    connect(m_list, &planner::ShoppingListModel::checkWritten, this,
            [](const QString& category, const QString& name, bool checked) {
                if (checkHook())
                    checkHook()(category, name, checked);
            });
    connect(lstShopping, &QAbstractItemView::activated, this, [this](const QModelIndex& i) {
        if (i.column() != planner::ShoppingListModel::Have && m_list->line(i))
            openCurrent(false);
    });
    connect(treExpansion, &QAbstractItemView::activated, this, [this] { openCurrent(false); });
    connect(cmdCopy, &QPushButton::clicked, this, &frmShoppingList::mnuCopyText_Click);
    connect(cmdSaveCsv, &QPushButton::clicked, this, &frmShoppingList::mnuSaveCsv_Click);
    connect(cmdPrint, &QPushButton::clicked, this, [this] { mnuPrint_Click(false); });
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
}

QStringList frmShoppingList::findRecords(const QString& text) const {
    const QString t = text.trimmed();
    QStringList found;
    if (t.isEmpty())
        return found;
    static const char* const tables[][2] = {{"EQUIPMENTS", "EQUIPMENT_NAME"},
                                            {"COMPONENTS", "COMPONENT_NAME"},
                                            {"RAW_MATERIALS", "RAW_MATERIAL_NAME"},
                                            {"ITEMS", "ITEM_NAME"}};
    QString pattern = t;
    pattern.replace(u'\'', QStringLiteral("''"));
    try {
        for (int k = 0; k < bom::KindCount; ++k) {
            Recordset rs;
            rs.open(QStringLiteral("SELECT TOP 8 %2 FROM %1 WHERE %2 LIKE '%%3%' ORDER BY %2")
                        .arg(QLatin1String(tables[k][0]), QLatin1String(tables[k][1]), pattern));
            for (; !rs.eof(); rs.moveNext())
                found << NzString(rs.value(0)) + kDash + bom::kindWord(bom::Kind(k));
        }
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("txtAddTarget_Change"), kForm);
    }
    return found;
}

void frmShoppingList::cmdAdd_Click() {
    const QString text = txtAddTarget->text().trimmed();
    if (text.isEmpty())
        return;
    // "Name — Kind" from the list of matches, or a name typed in full.
    bom::Ref ref;
    const qsizetype dash = text.lastIndexOf(kDash);
    bom::Kind kind;
    if (dash > 0 && bom::kindOfWord(text.mid(dash + kDash.size()), &kind)) {
        ref = {kind, text.left(dash)};
    } else {
        const QStringList matches = findRecords(text);
        QStringList exact;
        for (const QString& m : matches)
            if (m.section(kDash, 0, 0).compare(text, Qt::CaseInsensitive) == 0)
                exact << m;
        const QStringList& pick = exact.isEmpty() ? matches : exact;
        if (pick.size() != 1) {
            MsgBox(pick.isEmpty()
                       ? tr("No equipment, component, raw material or item is named like '%1'.").arg(text)
                       : tr("Several records are named like '%1': choose one from the list.").arg(text),
                   vb::OKOnly + vb::Information, caption());
            if (!pick.isEmpty()) {
                m_matches->setStringList(pick);
                m_completer->complete();
            }
            return;
        }
        const QString& m = pick.first();
        bom::kindOfWord(m.section(kDash, 1), &kind);
        ref = {kind, m.section(kDash, 0, 0)};
    }
    addTarget(ref, spnQuantity->value());
    txtAddTarget->clear();
    spnQuantity->setValue(1);
}

void frmShoppingList::addTarget(const bom::Ref& ref, qint64 quantity) {
    const int row = m_session.addTarget(ref, quantity);
    m_targets->reload();
    tblTargets->selectRow(row);
    targetsChanged();
}

void frmShoppingList::cmdRemove_Click() {
    const QModelIndex i = tblTargets->currentIndex();
    if (!i.isValid())
        return;
    m_session.removeTarget(i.row());
    m_targets->reload();
    tblTargets->selectRow(qMin(i.row(), int(m_session.targets().size()) - 1));
    targetsChanged();
}

void frmShoppingList::cmdClear_Click() {
    if (m_session.targets().isEmpty())
        return;
    if (MsgBox(tr("Remove every target from the shopping list?"), vb::YesNo + vb::Question, caption()) !=
        vb::Yes)
        return;
    m_session.clearTargets();
    m_targets->reload();
    targetsChanged();
}

void frmShoppingList::targetsChanged() {
    m_session.save();
    refreshList();
}

void frmShoppingList::refreshList() {
    try {
        m_session.refresh();
    } catch (const VbError& e) {
        reportError(e, QStringLiteral("RefreshList"));
    }
    m_list->reload();
    m_tree->reload();
    m_targets->reload();
    showList();
}

void frmShoppingList::showList() {
    lstShopping->expandAll();
    lstShopping->header()->setSectionResizeMode(QHeaderView::Interactive);
    for (int c = 0; c < planner::ShoppingListModel::ColumnCount; ++c)
        lstShopping->resizeColumnToContents(c);
    const int fontWidth = fontMetrics().averageCharWidth();
    for (int c = planner::ShoppingListModel::Where; c < planner::ShoppingListModel::ColumnCount; ++c)
        lstShopping->setColumnWidth(c, qMin(lstShopping->columnWidth(c), fontWidth * 60));
    if (m_tree->rowCount() <= 20)
        for (int r = 0; r < m_tree->rowCount(); ++r)
            treExpansion->expand(m_tree->index(r, 0));

    const planner::ShoppingList& list = m_session.list();
    int toDo = 0;
    for (const planner::ShoppingLine& l : list.lines)
        toDo += !l.checked && l.toGet > 0;
    QString totals = tr("To buy: %1 credits").arg(planner::QuantityText(list.totalCost));
    if (list.unpriced > 0)
        totals += list.unpriced == 1 ? tr(" (1 line without a price)")
                                     : tr(" (%1 lines without a price)").arg(list.unpriced);
    if (list.fees > 0)
        totals += tr("  \u00b7  manufacturing fees: %1 credits").arg(planner::QuantityText(list.fees));
    totals += tr("  \u00b7  %1 of %2 lines still to get").arg(toDo).arg(list.lines.size());
    lblTotals->setText(m_session.targets().isEmpty() ? tr("Add a target to see what it takes.") : totals);
    lblWarnings->setText(list.warnings.join(u'\n'));
    lblWarnings->setVisible(!list.warnings.isEmpty());
    setWindowTitle(m_session.targets().isEmpty() ? caption()
                                                 : caption() + QStringLiteral(": ") + m_session.title());
}

void frmShoppingList::reportError(const VbError& e, const QString& procedure) {
    ReportDBError(e, procedure, kForm);
}

void frmShoppingList::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    // Coming back from the main list or an editor: what changed there shows here.
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && m_session.stale())
        refreshList();
}

void frmShoppingList::closeEvent(QCloseEvent* event) {
    m_session.save();
    event->accept();
}

void SetShoppingCheckHook(
    std::function<void(const QString& category, const QString& name, bool checked)> hook) {
    checkHook() = std::move(hook);
}

frmShoppingList* OpenShoppingList() {
    return current();
}

frmShoppingList* ShowShoppingList() {
    if (current()) {
        current()->show();
        current()->raise();
        current()->activateWindow();
        return current();
    }
    auto* frm = new frmShoppingList(ViewOwner());
    current() = frm;
    RegisterChildWindow(frm);
    frm->show();
    return frm;
}

void AddToShoppingList(const QString& kind, const QString& name) {
    bom::Kind k;
    if (name.isEmpty() || !bom::kindOfWord(kind, &k))
        return;
    ShowShoppingList()->addTarget({k, name});
}
