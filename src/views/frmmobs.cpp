#include "views/frmmobs.h"

#include "core/childwindows.h"
#include "data/errorreport.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "views/mobtrees.h"
#include "views/openviews.h"
#include "views/viewnav.h"
#include "views/viewwidgets.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
const QString kTrees = QStringLiteral("Module frmMOBs");

QLineEdit* row(QFormLayout* form, QWidget* parent, const QString& caption, const QString& objectName) {
    QLineEdit* box = NewBox(parent, objectName);
    box->setAlignment(Qt::AlignRight);
    form->addRow(caption, box);
    return box;
}
} // namespace

frmMOBs::frmMOBs(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("frmMOBs"));
    PrepareViewWindow(this);
    auto* top = new QVBoxLayout(this);
    lblName = NewTitleLabel(this);
    lblType = new QLabel(this);
    lblType->setObjectName(QStringLiteral("lblType"));
    top->addWidget(lblName);
    top->addWidget(lblType);

    tabMOBData = new QTabWidget(this);
    tabMOBData->setObjectName(QStringLiteral("tabMOBData"));

    auto* attributes = new QWidget;
    auto* cols = new QHBoxLayout(attributes);
    auto* combat = new QGroupBox(QStringLiteral("Combat"), attributes);
    auto* cf = new QFormLayout(combat);
    txtFaction = row(cf, combat, QStringLiteral("Faction:"), QStringLiteral("txtFaction"));
    txtFaction->setAlignment(Qt::AlignLeft);
    txtLevel = row(cf, combat, QStringLiteral("Combat Level:"), QStringLiteral("txtLevel"));
    txtShield = row(cf, combat, QStringLiteral("Shield:"), QStringLiteral("txtShield"));
    txtHull = row(cf, combat, QStringLiteral("Hull:"), QStringLiteral("txtHull"));
    txtMass = row(cf, combat, QStringLiteral("Mass:"), QStringLiteral("txtMass"));
    txtSignature = row(cf, combat, QStringLiteral("Signature:"), QStringLiteral("txtSignature"));
    txtScanRange = row(cf, combat, QStringLiteral("Scan Range:"), QStringLiteral("txtScanRange"));
    txtAggroRange = row(cf, combat, QStringLiteral("Aggro Range:"), QStringLiteral("txtAggroRange"));
    cols->addWidget(combat, 1);
    auto* temper = new QGroupBox(QStringLiteral("Temperament"), attributes);
    auto* tf = new QFormLayout(temper);
    txtBravery = row(tf, temper, QStringLiteral("Bravery:"), QStringLiteral("txtBravery"));
    txtAggressiveness =
        row(tf, temper, QStringLiteral("Aggressiveness:"), QStringLiteral("txtAggressiveness"));
    txtAltruism = row(tf, temper, QStringLiteral("Altruism:"), QStringLiteral("txtAltruism"));
    txtInteligence = row(tf, temper, QStringLiteral("Intelligence:"), QStringLiteral("txtInteligence"));
    txtLastUpdated = row(tf, temper, QStringLiteral("Last Updated:"), QStringLiteral("txtLastUpdated"));
    txtLastUpdated->setAlignment(Qt::AlignLeft);
    txtLastUpdated->setMinimumWidth(
        txtLastUpdated->fontMetrics().horizontalAdvance(QStringLiteral("0000-00-00 00:00:00 ")) + 12);
    cols->addWidget(temper, 1);
    tabMOBData->addTab(attributes, QStringLiteral("Attributes"));

    tabMOBData->addTab(NewCommentsPage(txtComments), QStringLiteral("Comments"));

    tabMOBData->addTab(NewTreePage(treTactical, QStringLiteral("treTactical")),
                       QStringLiteral("Tactical Info"));
    tabMOBData->addTab(NewTreePage(treSpawn, QStringLiteral("treSpawn")), QStringLiteral("Spawn Locations"));
    tabMOBData->addTab(NewTreePage(treLoot, QStringLiteral("treLoot")), QStringLiteral("Loot Drops"));
    top->addWidget(tabMOBData, 1);
    m_tactical = new TreeWidgetSink(treTactical, true);
    m_spawn = new TreeWidgetSink(treSpawn, true);
    m_loot = new TreeWidgetSink(treLoot, true);
    AttachMarkerTreeCommands(treLoot, QStringLiteral("treLoot"), kTrees);
    // A sector of the spawn tree opens its map; a nav point opens it centred there.
    connect(treSpawn, &QTreeWidget::itemDoubleClicked, this, [](QTreeWidgetItem* item, int) {
        const MapOpener open = mapOpener();
        const QString key = NodeKey(item);
        const int nav = int(key.indexOf(QLatin1String("|Nav:")));
        if (open && (nav > 0 || NodeImage(item) == mobimg::Sector))
            open(nav > 0 ? key.left(nav) : key, nav > 0 ? key.mid(nav + 5) : QString());
    });

    QHBoxLayout* buttons = NewButtonRow();
    cmdEdit = AddButton(buttons, this, QStringLiteral("&Edit"), QStringLiteral("cmdEdit"));
    cmdEdit->setEnabled(CanEdit(QStringLiteral("MOBs")));
    cmdClose = AddButton(buttons, this, QStringLiteral("&Close"), QStringLiteral("cmdClose"));
    top->addLayout(buttons);
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
    connect(cmdEdit, &QPushButton::clicked, this, [this] {
        if (EditorOpener open = editorOpener())
            open(QStringLiteral("MOBs"), m_name);
    });
    resize(520, 420);
}

frmMOBs::~frmMOBs() {
    delete m_tactical;
    delete m_spawn;
    delete m_loot;
}

void frmMOBs::loadFields(const QString& name) {
    m_name = name;
    Recordset rs;
    rs.open(
        "SELECT * FROM MOBS INNER JOIN MOB_STATS ON MOBS.MOB_NAME = MOB_STATS.MOB_NAME WHERE MOB_STATS.MOB_NAME = '" +
        FixQuotes(name) + "'");
    if (rs.eof())
        throw NoCurrentRecord();
    const QString mobName = NzString(rs.value(QStringLiteral("MOBS.MOB_NAME")));
    lblName->setText(mobName);
    setWindowTitle(mobName);
    lblType->setText(MobTypeLine(NzString(rs.value(QStringLiteral("COMBAT_LEVEL"))),
                                 NzString(rs.value(QStringLiteral("TYPE"))),
                                 NzBool(rs.value(QStringLiteral("BOSS")))));
    txtFaction->setText(NzString(rs.value(QStringLiteral("FACTION")), QStringLiteral("Unknown")));
    txtLevel->setText(NzString(rs.value(QStringLiteral("COMBAT_LEVEL"))));
    const std::pair<QLineEdit*, const char*> figures[] = {{txtShield, "SHIELD"},
                                                          {txtHull, "HULL"},
                                                          {txtMass, "MASS"},
                                                          {txtSignature, "SIGNATURE"},
                                                          {txtScanRange, "SCAN_RANGE"},
                                                          {txtAggroRange, "AGGRO_RANGE"}};
    for (const auto& [box, column] : figures)
        box->setText(NzString(rs.value(QLatin1String(column))));
    const std::pair<QLineEdit*, const char*> temperament[] = {{txtBravery, "BRAVERY"},
                                                              {txtAggressiveness, "AGGRESSIVENESS"},
                                                              {txtAltruism, "ALTRUISM"},
                                                              {txtInteligence, "INTELIGENCE"}};
    for (const auto& [box, column] : temperament)
        box->setText(NzString(rs.value(QLatin1String(column)), QStringLiteral("No Entry")));
    txtComments->setPlainText(NzString(rs.value(QStringLiteral("COMMENTS"))));
    txtLastUpdated->setText(NzString(rs.value(QStringLiteral("LAST_UPDATED"))));
}

void frmMOBs::PopulateTacticalTree(const QString& name) {
    try {
        ::PopulateTacticalTree(name, *m_tactical);
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("PopulateTacticalTree"), kTrees);
    }
}

void frmMOBs::PopulateSpawnTree(const QString& name) {
    try {
        ::PopulateSpawnTree(name, *m_spawn);
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("PopulateSpawnTree"), kTrees);
    }
}

void frmMOBs::PopulateLootTree(const QString& name) {
    try {
        ::PopulateLootTree(name, *m_loot);
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("PopulateLootTree"), kTrees);
    }
}

void ViewMOBInfo(const QString& name) {
    // Every request opens a window of its own, even for a MOB already shown.
    QPointer<frmMOBs> frm = new frmMOBs(ViewOwner());
    try {
        frm->loadFields(name);
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("ViewMOBInfo"), QStringLiteral("Module modMain"));
        delete frm;
        return;
    }
    frm->PopulateTacticalTree(name);
    frm->PopulateSpawnTree(name);
    frm->PopulateLootTree(name);
    RegisterChildWindow(frm);
    frm->show();
}
