// The equipment editor's window: its tabs, pages and buttons. Loading, the type of a new record, the
// lists' pick dialogs and the save are in frmaddequip_load.cpp.
#include "editors/frmaddequip.h"

#include "core/imagestore.h"
#include "editors/lookups.h"
#include "editors/propertylistwidget.h"
#include "editors/ubgrid.h"
#include "views/equiptypes.h"
#include "views/modmain.h"
#include "views/viewwidgets.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSplitter>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {
const QString Kind = QStringLiteral("Equipment");

QLabel* introLabel(QWidget* parent, const QString& text = QString()) {
    auto* l = new QLabel(text, parent);
    l->setWordWrap(true);
    return l;
}
} // namespace

frmAddEquip::frmAddEquip(QWidget* parent) : EditorWindow(QStringLiteral("frmAddEquip"), Kind, parent) {
    auto* top = new QVBoxLayout(this);
    QHBoxLayout* head = NewViewHeader(this, m_icon, lblTitle, lblType);
    lblTitle->setObjectName(QStringLiteral("lblTitle"));
    cmdPicture = new QPushButton(this);
    cmdPicture->setObjectName(QStringLiteral("cmdPicture"));
    cmdPicture->setIconSize(QSize(32, 32));
    head->addWidget(cmdPicture, 0, Qt::AlignVCenter);
    top->addLayout(head);

    tabMain = new QTabWidget(this);
    tabMain->setObjectName(QStringLiteral("tabMain"));
    tabMain->addTab(buildGeneral(), tr("General"));
    tabMain->addTab(gridTabs(tabBlueprint, m_blueprintIntro, QStringLiteral("tabBlueprint"),
                             {"ubgBlueEquip", "ubgBlueComps", "ubgBlueRawMats", "ubgBlueItems"}),
                    tr("Blueprint"));
    tabMain->addTab(gridTabs(tabManufacturing, m_manufacturingIntro, QStringLiteral("tabManufacturing"),
                             {"ubgManuEquip", "ubgManuComps"}),
                    tr("Manufacturing"));
    txtComments = new QPlainTextEdit(this);
    txtComments->setObjectName(QStringLiteral("txtComments"));
    txtComments->setTabChangesFocus(true);
    tabMain->addTab(txtComments, tr("Comments"));
    tabMain->addTab(listPage(lstBuyLocations, QStringLiteral("lstBuyLocations"), cmdBuyLocations,
                             QStringLiteral("cmdBuyLocations"), tr("Stations that sell it.")),
                    tr("Where to Buy"));
    auto* mobs = new QWidget;
    auto* mobsCol = new QVBoxLayout(mobs);
    mobsCol->addWidget(introLabel(mobs, tr("MOBs that drop it, and how often.")));
    mobsCol->addWidget(new UBGrid(QStringLiteral("ubgMOBs"), mobs), 1);
    tabMain->addTab(mobs, tr("MOBs"));
    tabMain->addTab(listPage(lstAllowed, QStringLiteral("lstAllowed"), cmdAllowed,
                             QStringLiteral("cmdAllowed"), tr("Ship classes that may fit it.")),
                    tr("Allowed to Use"));
    top->addWidget(tabMain, 1);
    top->addLayout(buttonRow());

    ubgBlueEquip = grid(QStringLiteral("ubgBlueEquip"));
    ubgBlueComps = grid(QStringLiteral("ubgBlueComps"));
    ubgBlueRawMats = grid(QStringLiteral("ubgBlueRawMats"));
    ubgBlueItems = grid(QStringLiteral("ubgBlueItems"));
    ubgManuEquip = grid(QStringLiteral("ubgManuEquip"));
    ubgManuComps = grid(QStringLiteral("ubgManuComps"));
    ubgMOBs = grid(QStringLiteral("ubgMOBs"));
    ubgSpecials = grid(QStringLiteral("ubgSpecials"));
    ubgSpecials->setLookup(
        1, lookup::specials(),
        equipedit::grid(QStringLiteral("ubgSpecials")).dropDowns.first().section(QLatin1Char('|'), 0, 0));

    connect(cmdPicture, &QPushButton::clicked, this, &frmAddEquip::cmdPicture_Click);
    connect(cmdBuyLocations, &QPushButton::clicked, this, &frmAddEquip::cmdBuyLocations_Click);
    connect(cmdAllowed, &QPushButton::clicked, this, &frmAddEquip::cmdAllowed_Click);
    connect(lstBuyLocations, &QListWidget::itemDoubleClicked, this, &frmAddEquip::cmdBuyLocations_Click);
    connect(lstAllowed, &QListWidget::itemDoubleClicked, this, &frmAddEquip::cmdAllowed_Click);
    connect(prpList, &PropertyListWidget::valueChanged, this, &frmAddEquip::propertyChanged);
    setTips();
    resize(780, 720);
}

QWidget* frmAddEquip::buildGeneral() {
    auto* split = new QSplitter(Qt::Vertical);
    split->setChildrenCollapsible(false);
    prpList = new PropertyListWidget(QStringLiteral("prpList"), split);
    auto* box = new QGroupBox(tr("Specials"), split);
    auto* inner = new QVBoxLayout(box);
    inner->addWidget(new UBGrid(QStringLiteral("ubgSpecials"), box));
    split->addWidget(prpList);
    split->addWidget(box);
    split->setStretchFactor(0, 3);
    split->setStretchFactor(1, 1);
    split->setSizes({460, 170});
    return split;
}

QWidget* frmAddEquip::gridTabs(QTabWidget*& tabs, QLabel*& intro, const QString& name,
                               const QStringList& widgets) {
    auto* page = new QWidget;
    auto* col = new QVBoxLayout(page);
    intro = introLabel(page);
    col->addWidget(intro);
    tabs = new QTabWidget(page);
    tabs->setObjectName(name);
    tabs->setDocumentMode(true);
    for (const QString& w : widgets)
        tabs->addTab(new UBGrid(w, tabs), equipedit::grid(w).caption);
    col->addWidget(tabs, 1);
    return page;
}

QWidget* frmAddEquip::listPage(QListWidget*& list, const QString& listName, QPushButton*& button,
                               const QString& buttonName, const QString& intro) {
    auto* page = new QWidget;
    auto* col = new QVBoxLayout(page);
    col->addWidget(introLabel(page, intro));
    list = NewList(page, listName);
    col->addWidget(list, 1);
    button = new QPushButton(tr("C&hange..."), page);
    button->setObjectName(buttonName);
    col->addWidget(button, 0, Qt::AlignRight);
    return page;
}

void frmAddEquip::setTips() {
    EditorWindow::setTips(QStringLiteral("EDIT_EQUIPMENT"), QStringLiteral("equipment"),
                          {{cmdPicture, "PICTURE"},
                           {prpList, "PROPERTIES"},
                           {ubgSpecials, "SPECIALS"},
                           {tabBlueprint, "BLUEPRINT"},
                           {tabManufacturing, "MANUFACTURING"},
                           {txtComments, "COMMENTS"},
                           {lstBuyLocations, "BUY_LOCATIONS"},
                           {cmdBuyLocations, "BUY_CHANGE"},
                           {ubgMOBs, "MOBS"},
                           {lstAllowed, "ALLOWED"},
                           {cmdAllowed, "ALLOWED_CHANGE"},
                           {cmdSave, "SAVE"},
                           {cmdCancel, "CANCEL"}});
}

void frmAddEquip::setPicture(qint32 picture) {
    m_picture = picture;
    const QPixmap icon = QPixmap::fromImage(GetItemIcon(picture));
    m_icon->setPixmap(icon);
    cmdPicture->setIcon(QIcon(icon));
    cmdPicture->setText(tr(" P&icture No. %1...").arg(picture));
}

// The title follows the name as it is typed; the blueprint pages say whose parts they list.
void frmAddEquip::showTitle() {
    const QString name = prpList->list().value(QStringLiteral("EQUIPMENT_NAME"));
    lblTitle->setText(name.isEmpty() && isNew() ? QStringLiteral("New ") + DeEnumerate(m_type) : name);
    const QString who = name.isEmpty() ? tr("the new equipment") : name;
    m_blueprintIntro->setText(tr("What %1 is built or upgraded from, and how many of each.").arg(who));
    m_manufacturingIntro->setText(
        tr("What is built or upgraded from %1, and how many of it each needs.").arg(who));
}
