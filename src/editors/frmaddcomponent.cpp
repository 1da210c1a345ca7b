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
    : EditorWindow(QStringLiteral("frmAddComponent"), Kind, parent) {
    auto* top = new QVBoxLayout(this);
    top->addLayout(NewViewHeader(this, m_icon, m_title, m_typeLine));
    m_typeLine->setText(QStringLiteral("Component"));

    const QList<GridDef>& defs = comp::grids();
    tabMain = new QTabWidget(this);
    tabMain->setObjectName(QStringLiteral("tabMain"));
    tabMain->addTab(buildGeneral(), QStringLiteral("General"));
    tabMain->addTab(NewGridTabs(defs, {"ubgBlueRawMats", "ubgBlueItems", "ubgBlueComps", "ubgBlueEquip"}),
                    QStringLiteral("Blueprint"));
    tabMain->addTab(NewGridTabs(defs, {"ubgManuEquip", "ubgManuComps"}), QStringLiteral("Used In"));
    auto* buyPage = new QWidget;
    auto* buyRow = new QHBoxLayout(buyPage);
    const PickListBox buy = NewPickListBox(buyPage, tr("Bought At"), QStringLiteral("lstBuyLocations"),
                                           QStringLiteral("cmdBuyLocations"));
    buyRow->addWidget(buy.box);
    lstBuyLocations = buy.list;
    tabMain->addTab(buyPage, QStringLiteral("Where to Buy"));
    txtComments = NewCommentsBox(this);
    tabMain->addTab(txtComments, QStringLiteral("Comments"));
    top->addWidget(tabMain, 1);
    top->addLayout(buttonRow());

    ubgManuEquip = grid(QStringLiteral("ubgManuEquip"));
    ubgManuComps = grid(QStringLiteral("ubgManuComps"));
    ubgMOBs = grid(QStringLiteral("ubgMOBs"));
    ubgBlueEquip = grid(QStringLiteral("ubgBlueEquip"));
    ubgBlueComps = grid(QStringLiteral("ubgBlueComps"));
    ubgBlueRawMats = grid(QStringLiteral("ubgBlueRawMats"));
    ubgBlueItems = grid(QStringLiteral("ubgBlueItems"));
    connect(buy.change, &QPushButton::clicked, this, &frmAddComponent::cmdBuyLocations_Click);

    const struct {
        QWidget* widget;
        const char* key;
    } tips[] = {{txtName, "NAME"},
                {cmbLevel, "LEVEL"},
                {cmbType, "TYPE"},
                {cmbSubType, "SUBTYPE"},
                {txtPrice, "PRICE"},
                {txtManufPrice, "MANUFACTURING_FEE"},
                {m_pictureButton, "PICTURE"},
                {lstBuyLocations, "BUY_LOCATIONS"},
                {txtComments, "COMMENTS"},
                {cmdSave, "SAVE"},
                {cmdCancel, "CANCEL"}};
    for (const auto& t : tips)
        SetTip(t.widget, GetToolTip(QStringLiteral("ADD_COMPONENT"), QLatin1String(t.key),
                                    QStringLiteral("component")));
    resize(680, 560);
}

QWidget* frmAddComponent::buildGeneral() {
    auto* page = new QWidget;
    auto* col = new QVBoxLayout(page);
    auto* form = new QFormLayout;
    txtName = NewNameBox(page);
    cmbLevel = NewLevelBox(page);

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

    const PriceField price =
        NewPriceField(page, QStringLiteral("txtPrice"), QStringLiteral("lblPriceWord"), PriceWords::Price);
    txtPrice = price.box;
    lblPriceWord = price.word;
    const PriceField fee = NewPriceField(page, QStringLiteral("txtManufPrice"),
                                         QStringLiteral("lblManufWord"), PriceWords::Cost);
    txtManufPrice = fee.box;
    lblManufWord = fee.word;
    m_feeNote = new QLabel(tr("Set once the component has been saved"), page);
    m_feeNote->setObjectName(QStringLiteral("lblFeeNote"));
    m_feeNote->setEnabled(false);
    fee.row->insertWidget(1, m_feeNote);

    m_pictureButton = NewPictureButton(page);
    auto* picture = new QHBoxLayout;
    picture->addWidget(m_pictureButton);
    picture->addStretch();

    form->addRow(BuddyLabel(tr("&Name:"), txtName, page), txtName);
    form->addRow(BuddyLabel(tr("&Level:"), cmbLevel, page), cmbLevel);
    form->addRow(BuddyLabel(tr("&Type:"), cmbType, page), type);
    form->addRow(BuddyLabel(tr("S&ubtype:"), cmbSubType, page), subtype);
    form->addRow(BuddyLabel(tr("&Price:"), txtPrice, page), price.row);
    form->addRow(BuddyLabel(tr("&Manufacturing Fee:"), txtManufPrice, page), fee.row);
    form->addRow(BuddyLabel(tr("P&icture:"), m_pictureButton, page), picture);
    col->addLayout(form);

    auto* box = new QGroupBox(comp::grid(QStringLiteral("ubgMOBs")).caption, page);
    auto* inner = new QVBoxLayout(box);
    inner->addWidget(new UBGrid(QStringLiteral("ubgMOBs"), box));
    col->addWidget(box, 1);

    connect(txtName, &QLineEdit::textChanged, this, [this](const QString& t) { m_title->setText(t); });
    connect(m_pictureButton, &QPushButton::clicked, this, &frmAddComponent::cmdPicture_Click);
    connect(cmbType, &QComboBox::currentIndexChanged, this, &frmAddComponent::cmbType_Click);
    connect(cmdEditTypes, &QToolButton::clicked, this, &frmAddComponent::cmdEditTypes_Click);
    connect(cmdEditSubTypes, &QToolButton::clicked, this, &frmAddComponent::cmdEditSubTypes_Click);
    return page;
}

UBGrid* frmAddComponent::grid(const QString& widgetName) const {
    return findChild<UBGrid*>(widgetName);
}

bool frmAddComponent::load(const QString& name) {
    try {
        if (name.isEmpty()) {
            setWindowTitle(QStringLiteral("Add Component"));
            m_loaded = comp::Fields();
            m_loaded.level = QStringLiteral("1");
        } else {
            m_loaded = comp::readRecord(name);
            setWindowTitle(QStringLiteral("Edit: ") + m_loaded.name);
            setRecordName(m_loaded.name);
            // The name identifies the record being changed; renaming is the main window's Rename.
            txtName->setReadOnly(true);
            FillList(lstBuyLocations, comp::buyLocationsSql(m_loaded.name));
        }
        fillTypes(m_loaded.type, true);
        fillSubtypes(m_loaded.subtype, true);
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("Form_Load"), Container);
        return false;
    }
    m_loadedBuy = JoinedEntries(ListEntries(lstBuyLocations));

    txtName->setText(m_loaded.name);
    m_title->setText(m_loaded.name);
    FillLevels(cmbLevel, m_loaded.level);
    txtPrice->setText(m_loaded.price);
    txtManufPrice->setText(m_loaded.cost);
    // A new component is written without its fee: the box opens once the component exists.
    txtManufPrice->setEnabled(!isNew());
    m_feeNote->setVisible(isNew());
    txtComments->setPlainText(m_loaded.comments);
    setPicture(m_loaded.picture);
    if (!isNew())
        m_typeLine->setText(QStringLiteral("Level ") + m_loaded.level + QLatin1Char(' ') +
                            (m_loaded.type.isEmpty() ? QString() : m_loaded.type + QLatin1Char(' ')) +
                            QStringLiteral("Component"));

    const QString quoted = FixQuotes(m_loaded.name);
    for (const GridDef& def : comp::grids())
        PopulateGrid(grid(def.widget)->grid(), def.queries(quoted), true);
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
    f.name = txtName->text().trimmed();
    f.level = cmbLevel->currentText().trimmed();
    f.price = txtPrice->text().trimmed();
    f.cost = txtManufPrice->text().trimmed();
    f.comments = txtComments->toPlainText();
    f.type = cmbType->currentText();
    f.subtype = cmbSubType->currentText();
    f.picture = m_picture;
    return f;
}

void frmAddComponent::setPicture(qint32 picture) {
    m_picture = picture;
    ShowPicture(m_pictureButton, m_icon, picture);
}

void frmAddComponent::cmdPicture_Click() {
    const long chosen = DisplayItemIconDialogbox(m_picture, this);
    if (chosen >= 0)
        setPicture(qint32(chosen));
}

void frmAddComponent::cmdBuyLocations_Click() {
    PickInto(lstBuyLocations, QStringLiteral("Stations"),
             QStringLiteral("SELECT STATION_NAME FROM STATIONS ORDER BY STATION_NAME"),
             QStringLiteral("cmdBuyLocations_Click"), Container);
}

bool frmAddComponent::recordChanged() const {
    const comp::Fields f = fields();
    return f.level != m_loaded.level || f.price != m_loaded.price || f.cost != m_loaded.cost ||
           f.comments != m_loaded.comments || f.type != m_loaded.type || f.subtype != m_loaded.subtype ||
           f.picture != m_loaded.picture || (isNew() && !f.name.isEmpty());
}

bool frmAddComponent::hasChanges() const {
    if (recordChanged() || JoinedEntries(ListEntries(lstBuyLocations)) != m_loadedBuy)
        return true;
    for (const GridDef& def : comp::grids())
        if (GridChanged(grid(def.widget)->grid()))
            return true;
    return false;
}

QString frmAddComponent::savedName() const {
    return fields().name;
}

SavePlan frmAddComponent::savePlan() {
    const comp::Fields f = fields();
    SavePlan plan;
    plan.container = Container;
    for (const GridDef& def : comp::grids())
        plan.validate.append({&grid(def.widget)->grid(), def.listName});
    const bool adding = isNew();
    plan.checkInput = [f, adding] {
        if (f.name.isEmpty()) {
            ShowEmptyData();
            return false;
        }
        if (!ValidName(f.name)) {
            ShowInvalidName();
            return false;
        }
        if (!IsWholeNumberText(f.level) || !IsWholeNumberText(f.price) ||
            (!adding && !IsWholeNumberText(f.cost))) {
            ShowInvalidValues();
            return false;
        }
        return true;
    };
    const bool fieldsChanged = recordChanged();
    plan.writeRecord = [f, adding, fieldsChanged](bool relationsChanged) {
        if (adding) {
            db().execute(comp::insertSql(f, Now()));
            return true;
        }
        // The UPDATE stamps the record as changed: it runs only when something of it did change.
        if (!fieldsChanged && !relationsChanged)
            return false;
        // A record deleted or renamed meanwhile must not get link rows that point nowhere.
        if (db().execute(comp::updateSql(f, Now())) == 0)
            throw NoCurrentRecord();
        return true;
    };
    for (const QString& w : comp::writeOrder()) {
        if (w == QLatin1String("lstBuyLocations")) {
            plan.writes.append(SaveStep::forList(ListEntries(lstBuyLocations), m_loadedBuy,
                                                 QStringLiteral("BUY_COMPONENT_LOCATIONS"),
                                                 QStringLiteral("COMPONENTS_COMPONENT"),
                                                 QStringLiteral("STATIONS_STATION"), FixQuotes(f.name)));
        } else {
            const GridDef& def = comp::grid(w);
            plan.writes.append(
                SaveStep::forGrid(grid(w)->grid(), def.save(FixQuotes(f.name)), def.keyColumn, f.name));
        }
    }
    return plan;
}

void OpenComponentEditor(const QString& name) {
    const QString caption =
        name.isEmpty() ? QStringLiteral("Add Component") : QStringLiteral("Edit: ") + name;
    EditorWindow::open<frmAddComponent>(caption, name);
}
