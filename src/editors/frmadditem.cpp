#include "editors/frmadditem.h"

#include "core/clock.h"
#include "data/errorreport.h"
#include "editors/editorparts.h"
#include "editors/ubgrid.h"
#include "views/viewwidgets.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>

namespace {
// The item editor's error reports have always named the form without the word "Form".
const QString Container = QStringLiteral("frmAddItem");
const QString Kind = QStringLiteral("Items");
} // namespace

frmAddItem::frmAddItem(QWidget* parent)
    : CatalogueEditor(QStringLiteral("frmAddItem"), Kind, Container, QStringLiteral("Item"), item::grids(),
                      parent) {
    tabMain->addTab(buildGeneral(), QStringLiteral("General"));
    tabMain->addTab(NewGridTabs(item::grids(), {"ubgManuEquip", "ubgManuComps", "ubgManuRawMats"}),
                    QStringLiteral("Used In"));
    tabMain->addTab(buildBuyPage(&item::buyLocationsSql, QStringLiteral("BUY_ITEM_LOCATIONS"),
                                 QStringLiteral("ITEM_NAME")),
                    QStringLiteral("Where to Buy"));
    finishTabs();

    ubgManuEquip = grid(QStringLiteral("ubgManuEquip"));
    ubgManuComps = grid(QStringLiteral("ubgManuComps"));
    ubgManuRawMats = grid(QStringLiteral("ubgManuRawMats"));

    setTips(QStringLiteral("ADD_ITEM"), QStringLiteral("item"),
            {{txtName, "NAME"},
             {cmbLevel, "LEVEL"},
             {txtPrice, "PRICE"},
             {m_pictureButton, "PICTURE"},
             {lstBuyLocations, "BUY_LOCATIONS"},
             {txtComments, "COMMENTS"},
             {cmdSave, "SAVE"},
             {cmdCancel, "CANCEL"}});
    resize(640, 520);
}

bool frmAddItem::load(const QString& name) {
    item::Fields loaded;
    try {
        loaded = readRecord(QStringLiteral("Add Item"), name, &item::readRecord);
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("Form_Load"), Container);
        return false;
    }
    if (!isNew())
        m_typeLine->setText(QStringLiteral("Level ") + loaded.level + QStringLiteral(" Item"));
    showRecord(loaded);
    return true;
}

SavePlan frmAddItem::savePlan() {
    const item::Fields f = fields();
    SavePlan plan = planSave(item::writeOrder(), f.name);
    plan.checkInput = [f] { return CheckRecordInput(f.name, {f.name}, {f.level, f.price}); };
    const bool adding = isNew();
    // The record is stamped UPDATED whenever it is written: only when something of it changed.
    plan.writeRecord =
        WriteWhenChanged(adding, recordChanged(), [f, adding] { item::writeRecord(f, adding, Now()); });
    return plan;
}

void OpenItemEditor(const QString& name) {
    EditorWindow::open<frmAddItem>(EditorWindow::caption(QStringLiteral("Add Item"), name), name);
}
