#include "editors/frmaddmob.h"

#include "core/clock.h"
#include "data/errorreport.h"
#include "editors/lookups.h"
#include "editors/propertylistwidget.h"
#include "editors/ubgrid.h"
#include "views/mobtrees.h"
#include "views/viewwidgets.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {
QString tip(const QString& key) {
    return GetToolTip(QStringLiteral("ADD_MOBS"), key, QStringLiteral("MOB"));
}
} // namespace

frmAddMob::frmAddMob(QWidget* parent) : EditorWindow(QStringLiteral("frmAddMob"), mob::Kind, parent) {
    auto* top = new QVBoxLayout(this);
    lblName = NewTitleLabel(this);
    lblType = new QLabel(this);
    lblType->setObjectName(QStringLiteral("lblType"));
    top->addWidget(lblName);
    top->addWidget(lblType);

    auto* split = new QSplitter(Qt::Horizontal, this);
    split->setChildrenCollapsible(false);
    prpMOB = new PropertyListWidget(QStringLiteral("prpMOB"), split);
    tabMOB = new QTabWidget(split);
    tabMOB->setObjectName(QStringLiteral("tabMOB"));
    split->addWidget(prpMOB);
    split->addWidget(tabMOB);
    split->setStretchFactor(0, 0);
    split->setStretchFactor(1, 1);

    top->addWidget(split, 1);
    top->addLayout(buttonRow());

    m_edit.props = &prpMOB->list();
    for (const QString& tab : mob::tabs()) {
        const QString widget = mob::tabGrid(tab);
        if (widget.isEmpty()) {
            txtComments = new QPlainTextEdit(tabMOB);
            txtComments->setObjectName(QStringLiteral("txtComments"));
            txtComments->setTabChangesFocus(true);
            SetTip(txtComments, tip(QStringLiteral("COMMENTS")));
            tabMOB->addTab(txtComments, tab);
            continue;
        }
        auto* g = new UBGrid(widget, tabMOB);
        SetTip(g, tip(widget));
        tabMOB->addTab(g, tab);
        m_edit.grids.insert(widget, &g->grid());
    }
    ubgAttackTypes = grid(QStringLiteral("ubgAttackTypes"));
    ubgResistances = grid(QStringLiteral("ubgResistances"));
    ubgWeaknesses = grid(QStringLiteral("ubgWeaknesses"));
    ubgLocations = grid(QStringLiteral("ubgLocations"));
    ubgEquipment = grid(QStringLiteral("ubgEquipment"));
    ubgComponents = grid(QStringLiteral("ubgComponents"));
    ubgRawMaterials = grid(QStringLiteral("ubgRawMaterials"));
    ubgItems = grid(QStringLiteral("ubgItems"));
    const QString damageTypes = QStringLiteral("SELECT DAMAGE_TYPE FROM DAMAGE_TYPE ORDER BY DAMAGE_TYPE");
    for (UBGrid* g : {ubgAttackTypes, ubgResistances, ubgWeaknesses})
        g->setLookup(1, lookup::damageTypes(), damageTypes);

    SetTip(cmdSave, tip(QStringLiteral("SAVE")));
    SetTip(cmdCancel, tip(QStringLiteral("CANCEL")));
    connect(txtComments, &QPlainTextEdit::textChanged, this,
            [this] { m_edit.comments = txtComments->toPlainText(); });
    connect(prpMOB, &PropertyListWidget::valueChanged, this, [this] { showTitle(); });
    // Room for the list's longest caption and value, and for all nine tabs side by side.
    const int tabsWidth = qMax(700, tabMOB->tabBar()->sizeHint().width() + 16);
    split->setSizes({330, tabsWidth});
    resize(330 + tabsWidth + 40, 600);
}

bool frmAddMob::load(const QString& name) {
    try {
        mob::Load(m_edit, name);
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("Form_Load"), mob::Container);
        return false;
    }
    prpMOB->rebuild();
    {
        const QSignalBlocker quiet(txtComments);
        txtComments->setPlainText(m_edit.loadedComments);
    }
    showCaption(mob::NewCaption, m_edit.adding ? QString() : m_edit.name());
    showTitle();
    return true;
}

void frmAddMob::showTitle() {
    const PropertyList& p = prpMOB->list();
    lblName->setText(p.value(mob::NameKey));
    const QString level = p.value(QStringLiteral("COMBAT_LEVEL")), type = p.value(QStringLiteral("TYPE"));
    const bool boss = p.value(QStringLiteral("BOSS")) == QLatin1String("Yes");
    // A new MOB has no level yet: its type alone.
    lblType->setText(level.isEmpty() ? type + (boss ? QStringLiteral(" Boss") : QString())
                                     : MobTypeLine(level, type, boss));
}

SavePlan frmAddMob::savePlan() {
    return mob::PlanSave(m_edit, [] { return Now(); });
}

QString frmAddMob::savedName() const {
    return m_edit.name();
}

bool frmAddMob::hasChanges() const {
    return m_edit.hasChanges();
}

void OpenMobEditor(const QString& name) {
    EditorWindow::open<frmAddMob>(EditorWindow::caption(mob::NewCaption, name), name);
}
