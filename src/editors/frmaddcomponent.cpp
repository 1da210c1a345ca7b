#include "editors/frmaddcomponent.h"

#include "core/clock.h"
#include "data/database.h"
#include "data/errorreport.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "editors/editorparts.h"
#include "editors/frmlisteditdialog.h"
#include "editors/frmpicselect.h"
#include "editors/gridroutines.h"
#include "editors/lookups.h"
#include "editors/recordsql.h"
#include "editors/ubgrid.h"
#include "views/viewwidgets.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

namespace {
const QString Container = QStringLiteral("Form frmAddComponent");
const QString Kind = QStringLiteral("Components");

QToolButton* listButton(QWidget* parent, const QString& name, const QString& tip) {
    auto* b = new QToolButton(parent);
    b->setObjectName(name);
    b->setText(QStringLiteral("..."));
    b->setToolTip(tip);
    b->setFocusPolicy(Qt::StrongFocus);
    return b;
}

// Fills a choice list: an empty first entry (no value), the choices, and the value to show even when
// the list lacks it, in its own spelling, so that a record is never changed by being shown.
void fillChoices(QComboBox* box, const QStringList& choices, const QString& keep, bool keepAlways) {
    const QSignalBlocker quiet(box);
    box->clear();
    box->addItem(QString());
    box->addItems(choices);
    int at = box->findText(keep, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (at < 0 && keepAlways && !keep.isEmpty()) {
        box->addItem(keep);
        at = box->count() - 1;
    }
    box->setCurrentIndex(qMax(0, at));
}
} // namespace

frmAddComponent::frmAddComponent(QWidget* parent)
    : CatalogueEditor(QStringLiteral("frmAddComponent"), Kind, Container, QStringLiteral("Component"),
                      comp::grids(), parent) {
    const QList<GridDef>& defs = comp::grids();
    tabMain->addTab(buildGeneral([this](QWidget* page, QFormLayout* form) { addTypeRows(page, form); },
                                 [this](QWidget* page, QFormLayout* form) { addFeeRow(page, form); }),
                    QStringLiteral("General"));
    tabMain->addTab(NewGridTabs(defs, {"ubgBlueRawMats", "ubgBlueItems", "ubgBlueComps", "ubgBlueEquip"}),
                    QStringLiteral("Blueprint"));
    tabMain->addTab(NewGridTabs(defs, {"ubgManuEquip", "ubgManuComps"}), QStringLiteral("Used In"));
    tabMain->addTab(buildBuyPage(&comp::buyLocationsSql, QStringLiteral("BUY_COMPONENT_LOCATIONS"),
                                 QStringLiteral("COMPONENTS_COMPONENT")),
                    QStringLiteral("Where to Buy"));
    finishTabs();

    ubgManuEquip = grid(QStringLiteral("ubgManuEquip"));
    ubgManuComps = grid(QStringLiteral("ubgManuComps"));
    ubgBlueEquip = grid(QStringLiteral("ubgBlueEquip"));
    ubgBlueComps = grid(QStringLiteral("ubgBlueComps"));
    ubgBlueRawMats = grid(QStringLiteral("ubgBlueRawMats"));
    ubgBlueItems = grid(QStringLiteral("ubgBlueItems"));

    setTips(QStringLiteral("ADD_COMPONENT"), QStringLiteral("component"),
            {{txtName, "NAME"},
             {cmbLevel, "LEVEL"},
             {cmbType, "TYPE"},
             {cmbSubType, "SUBTYPE"},
             {txtPrice, "PRICE"},
             {txtManufPrice, "MANUFACTURING_FEE"},
             {m_pictureButton, "PICTURE"},
             {lstBuyLocations, "BUY_LOCATIONS"},
             {txtComments, "COMMENTS"},
             {cmdSave, "SAVE"},
             {cmdCancel, "CANCEL"}});
    resize(680, 560);
}

void frmAddComponent::addTypeRows(QWidget* page, QFormLayout* form) {
    cmbType = new QComboBox(page);
    cmbType->setObjectName(QStringLiteral("cmbType"));
    cmbType->setMinimumContentsLength(18);
    cmdEditTypes = listButton(page, QStringLiteral("cmdEditTypes"), tr("Edit the list of component types"));
    auto* type = new QHBoxLayout;
    type->addWidget(cmbType);
    type->addWidget(cmdEditTypes);
    type->addStretch();
    cmbSubType = new QComboBox(page);
    cmbSubType->setObjectName(QStringLiteral("cmbSubType"));
    cmbSubType->setMinimumContentsLength(18);
    cmdEditSubTypes = listButton(page, QStringLiteral("cmdEditSubTypes"),
                                 tr("Edit the list of subtypes of the chosen type"));
    auto* subtype = new QHBoxLayout;
    subtype->addWidget(cmbSubType);
    subtype->addWidget(cmdEditSubTypes);
    subtype->addStretch();
    form->addRow(BuddyLabel(tr("&Type:"), cmbType, page), type);
    form->addRow(BuddyLabel(tr("S&ubtype:"), cmbSubType, page), subtype);

    connect(cmbType, &QComboBox::currentIndexChanged, this, &frmAddComponent::cmbType_Click);
    connect(cmdEditTypes, &QToolButton::clicked, this, &frmAddComponent::cmdEditTypes_Click);
    connect(cmdEditSubTypes, &QToolButton::clicked, this, &frmAddComponent::cmdEditSubTypes_Click);
}

void frmAddComponent::addFeeRow(QWidget* page, QFormLayout* form) {
    const PriceField fee = NewPriceField(page, QStringLiteral("txtManufPrice"),
                                         QStringLiteral("lblManufWord"), PriceWords::Cost);
    txtManufPrice = fee.box;
    lblManufWord = fee.word;
    m_feeNote = new QLabel(tr("Set once the component has been saved"), page);
    m_feeNote->setObjectName(QStringLiteral("lblFeeNote"));
    m_feeNote->setEnabled(false);
    fee.row->insertWidget(1, m_feeNote);
    form->addRow(BuddyLabel(tr("&Manufacturing Fee:"), txtManufPrice, page), fee.row);
}

bool frmAddComponent::load(const QString& name) {
    try {
        m_loaded = readRecord(QStringLiteral("Add Component"), name, &comp::readRecord);
        fillTypes(m_loaded.type, true);
        fillSubtypes(m_loaded.subtype, true);
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("Form_Load"), Container);
        return false;
    }
    txtManufPrice->setText(m_loaded.cost);
    // A new component is written without its fee: the box opens once the component exists.
    txtManufPrice->setEnabled(!isNew());
    m_feeNote->setVisible(isNew());
    if (!isNew())
        m_typeLine->setText(QStringLiteral("Level ") + m_loaded.level + QLatin1Char(' ') +
                            (m_loaded.type.isEmpty() ? QString() : m_loaded.type + QLatin1Char(' ')) +
                            QStringLiteral("Component"));
    showRecord(m_loaded);
    return true;
}

void frmAddComponent::fillTypes(const QString& keep, bool keepAlways) {
    fillChoices(cmbType, ChoicesFrom(comp::typesSql()), keep, keepAlways);
}

void frmAddComponent::fillSubtypes(const QString& keep, bool keepAlways) {
    const QString type = cmbType->currentText();
    fillChoices(cmbSubType, type.isEmpty() ? QStringList() : ChoicesFrom(comp::subtypesSql(type)), keep,
                keepAlways);
    cmbSubType->setEnabled(cmbSubType->count() > 1);
    cmdEditSubTypes->setEnabled(!type.isEmpty());
}

void frmAddComponent::cmbType_Click() {
    try {
        const QString subtype = cmbSubType->currentText();
        fillSubtypes(subtype, cmbType->currentText() == m_loaded.type && subtype == m_loaded.subtype);
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("cmbType_Click"), Container);
    }
}

void frmAddComponent::cmdEditTypes_Click() {
    if (!DisplayListEditDialog(lookup::componentTypes(), this))
        return;
    try {
        // The type shown stays while the table still has it (a type in use cannot be deleted); the
        // record's own type stays even when the table never had it.
        const QString type = cmbType->currentText();
        const QString subtype = cmbSubType->currentText();
        fillTypes(type, type == m_loaded.type);
        fillSubtypes(subtype, cmbType->currentText() == m_loaded.type && subtype == m_loaded.subtype);
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("cmdEditTypes_Click"), Container);
    }
}

void frmAddComponent::cmdEditSubTypes_Click() {
    const QString type = cmbType->currentText();
    if (type.isEmpty() || !DisplayListEditDialog(lookup::componentSubtypes(type), this))
        return;
    try {
        const QString subtype = cmbSubType->currentText();
        fillSubtypes(subtype, subtype == m_loaded.subtype && type == m_loaded.type);
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("cmdEditSubTypes_Click"), Container);
    }
}

comp::Fields frmAddComponent::fields() const {
    comp::Fields f;
    static_cast<PricedFields&>(f) = pricedFields();
    f.cost = txtManufPrice->text().trimmed();
    f.type = cmbType->currentText();
    f.subtype = cmbSubType->currentText();
    return f;
}

bool frmAddComponent::recordChanged() const {
    const comp::Fields f = fields();
    return CatalogueEditor::recordChanged() || f.cost != m_loaded.cost || f.type != m_loaded.type ||
           f.subtype != m_loaded.subtype;
}

SavePlan frmAddComponent::savePlan() {
    const comp::Fields f = fields();
    SavePlan plan = planSave(comp::writeOrder(), f.name);
    const bool adding = isNew();
    plan.checkInput = [f, adding] {
        // A new component's fee is not written, so it is not checked either.
        return CheckRecordInput(
            f.name, {f.name}, adding ? QStringList{f.level, f.price} : QStringList{f.level, f.price, f.cost});
    };
    // The UPDATE stamps the record as changed: it runs only when something of it did change.
    plan.writeRecord = WriteByStatement(
        adding, recordChanged(), [f] { return comp::insertSql(f, Now()); },
        [f] { return comp::updateSql(f, Now()); });
    return plan;
}

void OpenComponentEditor(const QString& name) {
    EditorWindow::open<frmAddComponent>(EditorWindow::caption(QStringLiteral("Add Component"), name), name);
}
