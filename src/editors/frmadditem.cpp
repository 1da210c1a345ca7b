#include "editors/frmadditem.h"

#include "core/clock.h"
#include "data/errorreport.h"
#include "data/quotes.h"
#include "editors/editorparts.h"
#include "editors/frmpicselect.h"
#include "editors/gridroutines.h"
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
#include <QVBoxLayout>

namespace {
// The item editor's error reports have always named the form without the word "Form".
const QString Container = QStringLiteral("frmAddItem");
const QString Kind = QStringLiteral("Items");
} // namespace

frmAddItem::frmAddItem(QWidget* parent) : EditorWindow(QStringLiteral("frmAddItem"), Kind, parent) {
    auto* top = new QVBoxLayout(this);
    top->addLayout(NewViewHeader(this, m_icon, m_title, m_typeLine));
    m_typeLine->setText(QStringLiteral("Item"));

    tabMain = new QTabWidget(this);
    tabMain->setObjectName(QStringLiteral("tabMain"));
    tabMain->addTab(buildGeneral(), QStringLiteral("General"));
    tabMain->addTab(NewGridTabs(item::grids(), {"ubgManuEquip", "ubgManuComps", "ubgManuRawMats"}),
                    QStringLiteral("Used In"));
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

    ubgMOBs = grid(QStringLiteral("ubgMOBs"));
    ubgManuEquip = grid(QStringLiteral("ubgManuEquip"));
    ubgManuComps = grid(QStringLiteral("ubgManuComps"));
    ubgManuRawMats = grid(QStringLiteral("ubgManuRawMats"));
    connect(buy.change, &QPushButton::clicked, this, &frmAddItem::cmdBuyLocations_Click);

    const struct {
        QWidget* widget;
        const char* key;
    } tips[] = {{txtName, "NAME"},
                {cmbLevel, "LEVEL"},
                {txtPrice, "PRICE"},
                {m_pictureButton, "PICTURE"},
                {lstBuyLocations, "BUY_LOCATIONS"},
                {txtComments, "COMMENTS"},
                {cmdSave, "SAVE"},
                {cmdCancel, "CANCEL"}};
    for (const auto& t : tips)
        SetTip(t.widget,
               GetToolTip(QStringLiteral("ADD_ITEM"), QLatin1String(t.key), QStringLiteral("item")));
    resize(640, 520);
}

QWidget* frmAddItem::buildGeneral() {
    auto* page = new QWidget;
    auto* col = new QVBoxLayout(page);
    auto* form = new QFormLayout;
    txtName = NewNameBox(page);
    cmbLevel = NewLevelBox(page);
    const PriceField price =
        NewPriceField(page, QStringLiteral("txtPrice"), QStringLiteral("lblPriceWord"), PriceWords::Price);
    txtPrice = price.box;
    lblPriceWord = price.word;
    m_pictureButton = NewPictureButton(page);
    auto* picture = new QHBoxLayout;
    picture->addWidget(m_pictureButton);
    picture->addStretch();
    form->addRow(BuddyLabel(tr("&Name:"), txtName, page), txtName);
    form->addRow(BuddyLabel(tr("&Level:"), cmbLevel, page), cmbLevel);
    form->addRow(BuddyLabel(tr("&Price:"), txtPrice, page), price.row);
    form->addRow(BuddyLabel(tr("P&icture:"), m_pictureButton, page), picture);
    col->addLayout(form);

    auto* box = new QGroupBox(item::grid(QStringLiteral("ubgMOBs")).caption, page);
    auto* inner = new QVBoxLayout(box);
    inner->addWidget(new UBGrid(QStringLiteral("ubgMOBs"), box));
    col->addWidget(box, 1);

    connect(txtName, &QLineEdit::textChanged, this, [this](const QString& t) { m_title->setText(t); });
    connect(m_pictureButton, &QPushButton::clicked, this, &frmAddItem::cmdPicture_Click);
    return page;
}

UBGrid* frmAddItem::grid(const QString& widgetName) const {
    return findChild<UBGrid*>(widgetName);
}

bool frmAddItem::load(const QString& name) {
    try {
        if (name.isEmpty()) {
            setWindowTitle(QStringLiteral("Add Item"));
            m_loaded = item::Fields();
            m_loaded.level = QStringLiteral("1");
        } else {
            m_loaded = item::readRecord(name);
            setWindowTitle(QStringLiteral("Edit: ") + m_loaded.name);
            setRecordName(m_loaded.name);
            // The name identifies the record being changed; renaming is the main window's Rename.
            txtName->setReadOnly(true);
            FillList(lstBuyLocations, item::buyLocationsSql(m_loaded.name));
            m_typeLine->setText(QStringLiteral("Level ") + m_loaded.level + QStringLiteral(" Item"));
        }
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("Form_Load"), Container);
        return false;
    }
    m_loadedBuy = JoinedEntries(ListEntries(lstBuyLocations));
    txtName->setText(m_loaded.name);
    m_title->setText(m_loaded.name);
    FillLevels(cmbLevel, m_loaded.level);
    txtPrice->setText(m_loaded.price);
    txtComments->setPlainText(m_loaded.comments);
    setPicture(m_loaded.picture);

    const QString quoted = FixQuotes(m_loaded.name);
    for (const GridDef& def : item::grids())
        PopulateGrid(grid(def.widget)->grid(), def.queries(quoted), true);
    return true;
}

item::Fields frmAddItem::fields() const {
    item::Fields f;
    f.name = txtName->text().trimmed();
    f.level = cmbLevel->currentText().trimmed();
    f.price = txtPrice->text().trimmed();
    f.comments = txtComments->toPlainText();
    f.picture = m_picture;
    return f;
}

void frmAddItem::setPicture(qint32 picture) {
    m_picture = picture;
    ShowPicture(m_pictureButton, m_icon, picture);
}

void frmAddItem::cmdPicture_Click() {
    const long chosen = DisplayItemIconDialogbox(m_picture, this);
    if (chosen >= 0)
        setPicture(qint32(chosen));
}

void frmAddItem::cmdBuyLocations_Click() {
    PickInto(lstBuyLocations, QStringLiteral("Stations"),
             QStringLiteral("SELECT STATION_NAME FROM STATIONS ORDER BY STATION_NAME"),
             QStringLiteral("cmdBuyLocations_Click"), Container);
}

bool frmAddItem::recordChanged() const {
    const item::Fields f = fields();
    return f.level != m_loaded.level || f.price != m_loaded.price || f.comments != m_loaded.comments ||
           f.picture != m_loaded.picture || (isNew() && !f.name.isEmpty());
}

bool frmAddItem::hasChanges() const {
    if (recordChanged() || JoinedEntries(ListEntries(lstBuyLocations)) != m_loadedBuy)
        return true;
    for (const GridDef& def : item::grids())
        if (GridChanged(grid(def.widget)->grid()))
            return true;
    return false;
}

QString frmAddItem::savedName() const {
    return fields().name;
}

SavePlan frmAddItem::savePlan() {
    const item::Fields f = fields();
    SavePlan plan;
    plan.container = Container;
    for (const GridDef& def : item::grids())
        plan.validate.append({&grid(def.widget)->grid(), def.listName});
    plan.checkInput = [f] {
        if (f.name.isEmpty()) {
            ShowEmptyData();
            return false;
        }
        if (!ValidName(f.name)) {
            ShowInvalidName();
            return false;
        }
        if (!IsWholeNumberText(f.level) || !IsWholeNumberText(f.price)) {
            ShowInvalidValues();
            return false;
        }
        return true;
    };
    const bool adding = isNew();
    const bool fieldsChanged = recordChanged();
    plan.writeRecord = [f, adding, fieldsChanged](bool relationsChanged) {
        // The record is stamped UPDATED whenever it is written: only when something of it changed.
        if (!adding && !fieldsChanged && !relationsChanged)
            return false;
        item::writeRecord(f, adding, Now());
        return true;
    };
    for (const QString& w : item::writeOrder()) {
        if (w == QLatin1String("lstBuyLocations")) {
            plan.writes.append(SaveStep::forList(
                ListEntries(lstBuyLocations), m_loadedBuy, QStringLiteral("BUY_ITEM_LOCATIONS"),
                QStringLiteral("ITEM_NAME"), QStringLiteral("STATIONS_STATION"), FixQuotes(f.name)));
        } else {
            const GridDef& def = item::grid(w);
            plan.writes.append(
                SaveStep::forGrid(grid(w)->grid(), def.save(FixQuotes(f.name)), def.keyColumn, f.name));
        }
    }
    return plan;
}

void OpenItemEditor(const QString& name) {
    const QString caption = name.isEmpty() ? QStringLiteral("Add Item") : QStringLiteral("Edit: ") + name;
    EditorWindow::open<frmAddItem>(caption, name);
}
