#include "views/whereusedpanel.h"

#include "data/errorreport.h"
#include "views/buildtree.h"
#include "views/modmain.h"
#include "views/shoppinghook.h"
#include "views/treeimages.h"
#include "views/viewnav.h"
#include "views/whereused.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
constexpr int KindRole = Qt::UserRole;

QString count(int n, const char* one, const char* many) {
    return QString::number(n) + QLatin1Char(' ') + QLatin1String(n == 1 ? one : many);
}
} // namespace

WhereUsedPanel::WhereUsedPanel(bom::Kind kind, const QString& name, QWidget* parent)
    : QWidget(parent), m_kind(kind), m_name(name) {
    setObjectName(QStringLiteral("fraWhereUsed"));
    auto* col = new QVBoxLayout(this);
    lblSummary = new QLabel(this);
    lblSummary->setObjectName(QStringLiteral("lblWhereUsed"));
    lblSummary->setWordWrap(true);
    col->addWidget(lblSummary);
    treWhereUsed = new QTreeWidget(this);
    treWhereUsed->setObjectName(QStringLiteral("treWhereUsed"));
    treWhereUsed->setHeaderLabels({tr("Used In"), tr("Kind"), tr("Per One"), tr("Steps")});
    treWhereUsed->setRootIsDecorated(true);
    treWhereUsed->setUniformRowHeights(true);
    treWhereUsed->header()->setStretchLastSection(false);
    treWhereUsed->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    for (int c = 1; c < 4; ++c)
        treWhereUsed->header()->setSectionResizeMode(c, QHeaderView::ResizeToContents);
    treWhereUsed->headerItem()->setToolTip(
        2, tr("How many of this record one of it takes, through every recipe"));
    treWhereUsed->headerItem()->setToolTip(3, tr("Recipes between the two: 1 means it is used directly"));
    col->addWidget(treWhereUsed, 1);
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    cmdAddToList = new QPushButton(tr("Add to &Shopping List"), this);
    cmdAddToList->setObjectName(QStringLiteral("cmdAddToList"));
    cmdAddToList->setVisible(shoppingListAdder() != nullptr);
    row->addWidget(cmdAddToList);
    col->addLayout(row);

    connect(cmdAddToList, &QPushButton::clicked, this, [this] {
        if (ShoppingListAdder add = shoppingListAdder())
            add(bom::categoryOf(m_kind), m_name);
    });
    connect(treWhereUsed, &QTreeWidget::itemActivated, this, [](QTreeWidgetItem* item, int) {
        const QString word = item->data(0, KindRole).toString();
        if (word.isEmpty())
            return;
        try {
            OpenRecord(word, item->text(0));
        } catch (const VbError& e) {
            ReportDBError(e, QStringLiteral("treWhereUsed_DblClick"), QStringLiteral("Form frmWhereUsed"));
        }
    });
}

void WhereUsedPanel::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    load();
}

void WhereUsedPanel::load() {
    if (m_loaded)
        return;
    m_loaded = true;
    bom::WhereUsedResult r;
    try {
        r = bom::WhereUsed({m_kind, m_name});
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("WhereUsed"), QStringLiteral("Form frmWhereUsed"));
        lblSummary->setText(tr("Where it is used could not be read."));
        return;
    }
    const int direct = r.directCount();
    const int ends =
        int(std::count_if(r.uses.begin(), r.uses.end(), [](const bom::Use& u) { return u.endProduct; }));
    if (r.uses.isEmpty()) {
        lblSummary->setText(tr("No recipe calls for %1.").arg(m_name));
    } else {
        lblSummary->setText(tr("Used directly in %1; %2 in all, up the chains, of which %3 (marked \u2605) "
                               "nothing else uses.")
                                .arg(count(direct, "recipe", "recipes"),
                                     count(int(r.uses.size()), "record needs it", "records need it"),
                                     QString::number(ends)));
    }
    if (!r.cycles.isEmpty()) {
        QStringList names;
        for (const bom::Ref& c : r.cycles.first())
            names << c.name;
        lblSummary->setText(lblSummary->text() + QLatin1Char('\n') +
                            tr("A recipe contains itself (%1): that chain is not followed.")
                                .arg(names.join(QStringLiteral(" \u2192 "))));
    }
    auto* directly = new QTreeWidgetItem(treWhereUsed, {tr("Directly")});
    auto* chains = new QTreeWidgetItem(treWhereUsed, {tr("Through other recipes")});
    QFont bold = directly->font(0);
    bold.setBold(true);
    for (QTreeWidgetItem* group : {directly, chains})
        group->setFont(0, bold);
    for (const bom::Use& u : r.uses) {
        auto* item = new QTreeWidgetItem(u.steps == 1 ? directly : chains);
        item->setText(0, u.ref.name);
        item->setData(0, KindRole, bom::kindWord(u.ref.kind));
        item->setIcon(0, BuildTreeIcon(u.ref.kind));
        item->setText(1, bom::kindWord(u.ref.kind) + (u.endProduct ? QStringLiteral(" \u2605") : QString()));
        item->setText(2, FormatWhole(u.perUnit));
        item->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
        item->setText(3, QString::number(u.steps));
        item->setTextAlignment(3, Qt::AlignRight | Qt::AlignVCenter);
        if (!u.found)
            item->setToolTip(0, tr("A recipe names it, but it is not in the database."));
    }
    for (QTreeWidgetItem* group : {directly, chains}) {
        group->setText(0, group->text(0) + QStringLiteral(" (%1)").arg(group->childCount()));
        group->setFirstColumnSpanned(true);
        group->setExpanded(true);
        group->setHidden(group->childCount() == 0);
    }
}

WhereUsedPanel* AddWhereUsedTab(QTabWidget* tabs, bom::Kind kind, const QString& name) {
    auto* panel = new WhereUsedPanel(kind, name);
    tabs->addTab(panel, QObject::tr("Where Used"));
    return panel;
}
