#include "editors/frmaddrawmaterials.h"

#include "core/clock.h"
#include "data/errorreport.h"
#include "editors/editorparts.h"
#include "editors/ubgrid.h"
#include "views/viewwidgets.h"

#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>

namespace {
const QString Container = QStringLiteral("Form frmAddRawMaterials");
const QString Kind = QStringLiteral("Raw Materials");
} // namespace

// Unlike the later editors, this one's box and tab titles have never carried their counts.
frmAddRawMaterials::frmAddRawMaterials(QWidget* parent)
    : CatalogueEditor(QStringLiteral("frmAddRawMaterials"), Kind, Container, QStringLiteral("Raw Material"),
                      rawmat::grids(), parent) {
    const QList<GridDef>& defs = rawmat::grids();
    tabMain->addTab(buildGeneral(), QStringLiteral("General"));
    tabMain->addTab(buildLocations(), QStringLiteral("Locations"));
    tabMain->addTab(NewGridTabs(defs, {"ubgBlueRawMats", "ubgBlueItems"}, false),
                    QStringLiteral("Refined From"));
    tabMain->addTab(NewGridTabs(defs, {"ubgManuComps", "ubgManuEquip", "ubgManuRawMats"}, false),
                    QStringLiteral("Used In"));
    finishTabs();

    ubgManuComps = grid(QStringLiteral("ubgManuComps"));
    ubgManuEquip = grid(QStringLiteral("ubgManuEquip"));
    ubgManuRawMats = grid(QStringLiteral("ubgManuRawMats"));
    ubgBlueRawMats = grid(QStringLiteral("ubgBlueRawMats"));
    ubgBlueItems = grid(QStringLiteral("ubgBlueItems"));

    setTips(QStringLiteral("ADD_RAW_MATERIALS"), QStringLiteral("raw material"),
            {{txtName, "NAME"},
             {cmbLevel, "LEVEL"},
             {txtPrice, "PRICE"},
             {m_pictureButton, "PICTURE"},
             {lstBuyLocations, "BUY_LOCATIONS"},
             {lstMineLocations, "MINE_LOCATIONS"},
             {txtComments, "COMMENTS"},
             {cmdSave, "SAVE"},
             {cmdCancel, "CANCEL"}});
    resize(660, 540);
}

QWidget* frmAddRawMaterials::buildLocations() {
    auto* page = new QWidget;
    auto* row = new QHBoxLayout(page);
    const PickListBox buy = NewPickListBox(page, tr("Bought At"), QStringLiteral("lstBuyLocations"),
                                           QStringLiteral("cmdBuyLocations"), false);
    const PickListBox mine = NewPickListBox(page, tr("Mined In"), QStringLiteral("lstMineLocations"),
                                            QStringLiteral("cmdMineLocations"), false);
    // The two buttons share a page, so each has an Alt key of its own.
    mine.change->setText(tr("Chan&ge..."));
    row->addWidget(buy.box, 1);
    row->addWidget(mine.box, 1);
    lstBuyLocations = buy.list;
    lstMineLocations = mine.list;
    addSavedList(lstBuyLocations, &rawmat::buyLocationsSql, QStringLiteral("BUY_RAW_MATERIAL_LOCATIONS"),
                 QStringLiteral("RAW_MATERIAL"), QStringLiteral("STATIONS_STATION"));
    addSavedList(lstMineLocations, &rawmat::mineLocationsSql, QStringLiteral("MINE_LOCATIONS"),
                 QStringLiteral("RAW_MATERIAL"), QStringLiteral("SECTORS_SECTOR"));
    connect(buy.change, &QPushButton::clicked, this, &frmAddRawMaterials::cmdBuyLocations_Click);
    connect(mine.change, &QPushButton::clicked, this, &frmAddRawMaterials::cmdMineLocations_Click);
    return page;
}

bool frmAddRawMaterials::load(const QString& name) {
    rawmat::Fields loaded;
    try {
        loaded = readRecord(QStringLiteral("Add Raw Material"), name, &rawmat::readRecord);
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("Form_Load"), Container);
        return false;
    }
    showRecord(loaded);
    return true;
}

void frmAddRawMaterials::cmdMineLocations_Click() {
    PickInto(lstMineLocations, QStringLiteral("Sectors"), rawmat::allSectorsSql(),
             QStringLiteral("cmdMineLocations_Click"), Container);
}

SavePlan frmAddRawMaterials::savePlan() {
    const rawmat::Fields f = fields();
    SavePlan plan = planSave(rawmat::writeOrder(), f.name);
    // The statements take the level and the price as typed: neither may be empty.
    plan.checkInput = [f] { return CheckRecordInput(f.name, {f.name, f.price, f.level}); };
    // The UPDATE stamps the record as changed: it runs only when something of it did change.
    plan.writeRecord = WriteByStatement(
        isNew(), recordChanged(), [f] { return rawmat::insertSql(f, Now()); },
        [f] { return rawmat::updateSql(f, Now()); });
    return plan;
}

void OpenRawMaterialEditor(const QString& name) {
    EditorWindow::open<frmAddRawMaterials>(EditorWindow::caption(QStringLiteral("Add Raw Material"), name),
                                           name);
}
