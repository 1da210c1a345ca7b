#include "views/frmequipment.h"

#include "data/errorreport.h"
#include "views/equiptypes.h"
#include "views/openviews.h"
#include "views/printsheet.h"
#include "views/propertysheet.h"
#include "views/viewnav.h"
#include "views/viewwidgets.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
const QString kForm = QStringLiteral("Form frmEquipment");

QLineEdit* labelled(QFormLayout* form, QWidget* parent, const QString& caption, const QString& objectName,
                    QLabel** label = nullptr) {
    QLineEdit* box = NewBox(parent, objectName);
    auto* l = new QLabel(caption, parent);
    l->setObjectName(QString(objectName).replace(0, 3, QStringLiteral("lbl")));
    form->addRow(l, box);
    if (label)
        *label = l;
    return box;
}

// A caption and box that stay hidden until a record fills them ("txt<name>_<i>", "lbl<name>_<i>").
QLineEdit* hiddenRow(QFormLayout* form, QWidget* parent, const QString& name, int i, QLabel*& label) {
    QLineEdit* box = labelled(form, parent, QString(), QStringLiteral("txt%1_%2").arg(name).arg(i), &label);
    box->setVisible(false);
    label->setVisible(false);
    return box;
}

QToolButton* toolButton(QWidget* parent, const QString& text, const QString& objectName) {
    auto* b = new QToolButton(parent);
    b->setText(text);
    b->setObjectName(objectName);
    b->setAutoRaise(false);
    return b;
}
} // namespace

frmEquipment::frmEquipment(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("frmEquipment"));
    PrepareViewWindow(this);
    buildLayout();
    resize(620, 470);
}

frmEquipment::~frmEquipment() {
    delete m_blueprint;
    delete m_mobs;
}

void frmEquipment::buildLayout() {
    auto* top = new QVBoxLayout(this);
    top->addLayout(NewViewHeader(this, m_icon, m_title, lblType));

    tabEquipment = new QTabWidget(this);
    tabEquipment->setObjectName(QStringLiteral("tabEquipment"));
    tabEquipment->addTab(attributesPage(), QStringLiteral("Attributes"));
    tabEquipment->addTab(pricesPage(), QStringLiteral("Prices"));
    tabEquipment->addTab(commentsPage(), QStringLiteral("Comments"));
    tabEquipment->addTab(otherPage(), QStringLiteral("Other"));
    m_ammoPage = ammoPage();
    m_specialsPage = specialsPage();
    top->addWidget(tabEquipment, 1);

    QHBoxLayout* buttons = NewButtonRow();
    cmdEdit = AddButton(buttons, this, QStringLiteral("&Edit"), QStringLiteral("cmdEdit"));
    cmdPrint = AddButton(buttons, this, QStringLiteral("&Print"), QStringLiteral("cmdPrint"));
    cmdClose = AddButton(buttons, this, QStringLiteral("&Close"), QStringLiteral("cmdClose"));
    top->addLayout(buttons);

    cmdEdit->setEnabled(CanEdit(QStringLiteral("Equipment")));
    connect(cmdEdit, &QPushButton::clicked, this, &frmEquipment::cmdEdit_Click);
    connect(cmdPrint, &QPushButton::clicked, this, &frmEquipment::cmdPrint_Click);
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
}

QWidget* frmEquipment::attributesPage() {
    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("fraPanels_0"));
    auto* row = new QHBoxLayout(page);
    auto* left = new QFormLayout;
    txtManufacturer =
        labelled(left, page, QStringLiteral("Manufacturer:"), QStringLiteral("txtManufacturer"));
    txtQuality = labelled(left, page, QStringLiteral("Quality:"), QStringLiteral("txtQuality"));
    txtLastUpdated = labelled(left, page, QStringLiteral("Last Updated:"), QStringLiteral("txtLastUpdated"));
    for (int i = 0; i < 3; ++i)
        txtCustom[i] = hiddenRow(left, page, QStringLiteral("Custom"), i, lblCustom[i]);
    row->addLayout(left, 1);

    auto* stats = new QGroupBox(QStringLiteral("Statistics"), page);
    stats->setObjectName(QStringLiteral("fraStats"));
    m_statsPanel = stats;
    auto* grid = new QFormLayout(stats);
    for (int k = 0; k < StatSlots; ++k) {
        txtSpecData[k] = hiddenRow(grid, stats, QStringLiteral("SpecData"), k, lblSpecData[k]);
        txtSpecData[k]->setAlignment(Qt::AlignRight);
    }
    row->addWidget(stats, 1);
    return page;
}

QWidget* frmEquipment::pricesPage() {
    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("fraPanels_1"));
    auto* row = new QHBoxLayout(page);
    auto* form = new QFormLayout;
    txtPurchasePrice =
        labelled(form, page, QStringLiteral("Purchase Price:"), QStringLiteral("txtPurchasePrice"));
    txtManufFee = labelled(form, page, QStringLiteral("Manufacturing Fee:"), QStringLiteral("txtManufFee"));
    txtPMPrice = labelled(form, page, QStringLiteral("Player Made Price:"), QStringLiteral("txtPMPrice"));
    txtSRP = labelled(form, page, QStringLiteral("Suggested Retail Price:"), QStringLiteral("txtSRP"));
    for (QLineEdit* box : {txtPurchasePrice, txtManufFee, txtPMPrice, txtSRP})
        box->setAlignment(Qt::AlignRight);
    row->addLayout(form, 1);

    auto* buy = new QGroupBox(QStringLiteral("Buy Locations"), page);
    auto* col = new QVBoxLayout(buy);
    auto* bar = new QHBoxLayout;
    bar->setObjectName(QStringLiteral("tbBuyLocations"));
    QToolButton* view =
        toolButton(buy, QStringLiteral("View Station"), QStringLiteral("tbBuyLocations_View"));
    bar->addWidget(view);
    bar->addStretch(1);
    col->addLayout(bar);
    lstBuyLocations = NewList(buy, QStringLiteral("lstBuyLocations"));
    col->addWidget(lstBuyLocations);
    row->addWidget(buy, 1);
    AttachListOpener(lstBuyLocations, QStringLiteral("Station"), QStringLiteral("lstBuyLocations_DblClick"),
                     kForm);
    connect(view, &QToolButton::clicked, this, [this] {
        if (QListWidgetItem* item = lstBuyLocations->currentItem())
            Q_EMIT lstBuyLocations->itemDoubleClicked(item);
    });
    return page;
}

QWidget* frmEquipment::commentsPage() {
    QWidget* page = NewCommentsPage(txtComments);
    page->setObjectName(QStringLiteral("fraPanels_2"));
    return page;
}

QWidget* frmEquipment::otherPage() {
    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("fraPanels_3"));
    auto* grid = new QGridLayout(page);

    auto* allowed = new QGroupBox(QStringLiteral("Allowed Classes"), page);
    auto* a = new QVBoxLayout(allowed);
    lstAllowed = NewList(allowed, QStringLiteral("lstAllowed"));
    a->addWidget(lstAllowed);
    grid->addWidget(allowed, 0, 0);

    auto* mobs = new QGroupBox(QStringLiteral("Dropped By"), page);
    auto* m = new QVBoxLayout(mobs);
    treMOBs = NewTree(mobs, QStringLiteral("treMOBs"));
    m->addWidget(treMOBs);
    grid->addWidget(mobs, 1, 0);
    m_mobs = new TreeWidgetSink(treMOBs, true);
    connect(treMOBs, &QTreeWidget::itemDoubleClicked, this, [](QTreeWidgetItem* item, int) {
        QTreeWidgetItem* top = item->parent() ? item->parent() : item;
        if (NodeImage(top) != 0)
            ViewMOBInfo(top->text(0));
    });

    auto* blueprint = new QGroupBox(QStringLiteral("Blueprint"), page);
    auto* b = new QVBoxLayout(blueprint);
    auto* bar = new QHBoxLayout;
    bar->setObjectName(QStringLiteral("tbComps"));
    QToolButton* details =
        toolButton(blueprint, QStringLiteral("Detailed View"), QStringLiteral("tbComps_Details"));
    QToolButton* build =
        toolButton(blueprint, QStringLiteral("Build View"), QStringLiteral("tbComps_BuildView"));
    bar->addWidget(details);
    bar->addWidget(build);
    bar->addStretch(1);
    b->addLayout(bar);
    treBlueprint = NewTree(blueprint, QStringLiteral("treBlueprint"));
    b->addWidget(treBlueprint);
    grid->addWidget(blueprint, 0, 1, 2, 1);
    grid->setColumnStretch(1, 2);
    grid->setColumnStretch(0, 1);
    m_blueprint = new TreeWidgetSink(treBlueprint, false);
    AttachBuildTreeCommands(treBlueprint, QStringLiteral("treBlueprint"), kForm);
    connect(details, &QToolButton::clicked, this, [this] {
        if (QTreeWidgetItem* item = treBlueprint->currentItem())
            Q_EMIT treBlueprint->itemDoubleClicked(item, 0);
    });
    connect(build, &QToolButton::clicked, this, [this] {
        QTreeWidgetItem* item = treBlueprint->currentItem();
        if (!item)
            return;
        try {
            OpenBuildViewOfNode(item->text(0), NodeImage(item));
        } catch (const VbError& e) {
            ReportDBError(e, QStringLiteral("mnuPopupBuildview_Click"), kForm);
        }
    });
    return page;
}

QWidget* frmEquipment::ammoPage() {
    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("fraPanels_4"));
    auto* row = new QHBoxLayout(page);
    auto* col = new QVBoxLayout;
    auto* bar = new QHBoxLayout;
    bar->setObjectName(QStringLiteral("tbAmmo"));
    tbAmmoView = toolButton(page, QStringLiteral("View Ammunition"), QStringLiteral("tbAmmo_View"));
    tbAmmoView->setEnabled(false);
    bar->addWidget(tbAmmoView);
    bar->addStretch(1);
    col->addLayout(bar);
    lstAmmo = NewList(page, QStringLiteral("lstAmmo"));
    col->addWidget(lstAmmo);
    row->addLayout(col, 1);

    auto* form = new QFormLayout;
    txtAmmoName = labelled(form, page, QStringLiteral("Ammunition:"), QStringLiteral("txtAmmoName"));
    txtAmmoDamage = labelled(form, page, QStringLiteral("Damage:"), QStringLiteral("txtAmmoDamage"));
    txtAmmoRange =
        labelled(form, page, QStringLiteral("Range:"), QStringLiteral("txtAmmoRange"), &lblAmmoRange);
    txtAmmoManeuverability = labelled(form, page, QStringLiteral("Maneuverability:"),
                                      QStringLiteral("txtAmmoManeuverability"), &lblAmmoManeuverability);
    txtDamagePerSecond =
        labelled(form, page, QStringLiteral("Damage Per Second:"), QStringLiteral("txtDamagePerSecond"));
    txtAmmoEfficiency =
        labelled(form, page, QStringLiteral("Efficiency:"), QStringLiteral("txtAmmoEfficiency"));
    row->addLayout(form, 1);

    auto openAmmo = [](QListWidgetItem* item) {
        if (item)
            ViewEquipDetails(item->text(), equip::Ammunition, DeEnumerate(equip::Ammunition));
    };
    connect(lstAmmo, &QListWidget::itemDoubleClicked, this, openAmmo);
    connect(tbAmmoView, &QToolButton::clicked, this, [this, openAmmo] { openAmmo(lstAmmo->currentItem()); });
    return page;
}

QWidget* frmEquipment::specialsPage() {
    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("fraPanels_5"));
    auto* col = new QVBoxLayout(page);
    treSpecials = NewTree(page, QStringLiteral("treSpecials"));
    col->addWidget(treSpecials);
    return page;
}

void frmEquipment::cmdEdit_Click() {
    if (EditorOpener open = editorOpener())
        open(QStringLiteral("Equipment"), m_name);
}

void frmEquipment::cmdPrint_Click() {
    try {
        const PropertySheet sheet = EquipmentPropertySheet(m_name, FindType(m_name));
        PrintHtml(windowTitle(), PropertySheetHtml(sheet), this);
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("cmdPrint_Click"), kForm);
    }
}
