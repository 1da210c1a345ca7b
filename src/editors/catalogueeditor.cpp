#include "editors/catalogueeditor.h"

#include "data/quotes.h"
#include "editors/editorparts.h"
#include "editors/frmpicselect.h"
#include "editors/gridroutines.h"
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

CatalogueEditor::CatalogueEditor(const QString& objectName, const QString& kind, const QString& container,
                                 const QString& typeWord, const QList<GridDef>& grids, QWidget* parent)
    : EditorWindow(objectName, kind, parent), m_container(container), m_grids(grids) {
    m_top = new QVBoxLayout(this);
    m_top->addLayout(NewViewHeader(this, m_icon, m_title, m_typeLine));
    m_typeLine->setText(typeWord);
    tabMain = new QTabWidget(this);
    tabMain->setObjectName(QStringLiteral("tabMain"));
}

QWidget* CatalogueEditor::buildGeneral(const Rows& afterLevel, const Rows& afterPrice) {
    auto* page = new QWidget;
    auto* col = new QVBoxLayout(page);
    auto* form = new QFormLayout;
    txtName = NewNameBox(page);
    cmbLevel = NewLevelBox(page);
    form->addRow(BuddyLabel(tr("&Name:"), txtName, page), txtName);
    form->addRow(BuddyLabel(tr("&Level:"), cmbLevel, page), cmbLevel);
    if (afterLevel)
        afterLevel(page, form);
    const PriceField price =
        NewPriceField(page, QStringLiteral("txtPrice"), QStringLiteral("lblPriceWord"), PriceWords::Price);
    txtPrice = price.box;
    lblPriceWord = price.word;
    form->addRow(BuddyLabel(tr("&Price:"), txtPrice, page), price.row);
    if (afterPrice)
        afterPrice(page, form);
    m_pictureButton = NewPictureButton(page);
    auto* picture = new QHBoxLayout;
    picture->addWidget(m_pictureButton);
    picture->addStretch();
    form->addRow(BuddyLabel(tr("P&icture:"), m_pictureButton, page), picture);
    col->addLayout(form);

    auto* box = new QGroupBox(FindGridDef(m_grids, QStringLiteral("ubgMOBs")).caption, page);
    auto* inner = new QVBoxLayout(box);
    ubgMOBs = new UBGrid(QStringLiteral("ubgMOBs"), box);
    inner->addWidget(ubgMOBs);
    col->addWidget(box, 1);

    connect(txtName, &QLineEdit::textChanged, this, [this](const QString& t) { m_title->setText(t); });
    connect(m_pictureButton, &QPushButton::clicked, this, &CatalogueEditor::cmdPicture_Click);
    return page;
}

QWidget* CatalogueEditor::buildBuyPage(const LoadSql& loadSql, const QString& table,
                                       const QString& keyColumn) {
    auto* page = new QWidget;
    auto* row = new QHBoxLayout(page);
    const PickListBox buy = NewPickListBox(page, tr("Bought At"), QStringLiteral("lstBuyLocations"),
                                           QStringLiteral("cmdBuyLocations"));
    row->addWidget(buy.box);
    lstBuyLocations = buy.list;
    addSavedList(lstBuyLocations, loadSql, table, keyColumn, QStringLiteral("STATIONS_STATION"));
    connect(buy.change, &QPushButton::clicked, this, &CatalogueEditor::cmdBuyLocations_Click);
    return page;
}

void CatalogueEditor::finishTabs() {
    txtComments = NewCommentsBox(this);
    tabMain->addTab(txtComments, QStringLiteral("Comments"));
    m_top->addWidget(tabMain, 1);
    m_top->addLayout(buttonRow());
}

void CatalogueEditor::addSavedList(QListWidget* list, const LoadSql& loadSql, const QString& table,
                                   const QString& keyColumn, const QString& valueColumn) {
    m_lists.append({list, loadSql, table, keyColumn, valueColumn, QString()});
}

void CatalogueEditor::openRecord(const QString& newCaption, const QString& storedName) {
    showCaption(newCaption, storedName);
    if (storedName.isEmpty())
        return;
    // The name identifies the record being changed; renaming is the main window's Rename.
    txtName->setReadOnly(true);
    for (const SavedList& l : std::as_const(m_lists))
        FillList(l.list, l.loadSql(storedName));
}

void CatalogueEditor::showRecord(const PricedFields& loaded) {
    m_loadedFields = loaded;
    for (SavedList& l : m_lists)
        l.loaded = JoinedEntries(listEntries(l.list));
    txtName->setText(loaded.name);
    m_title->setText(loaded.name);
    FillLevels(cmbLevel, loaded.level);
    txtPrice->setText(loaded.price);
    txtComments->setPlainText(loaded.comments);
    setPicture(loaded.picture);
    populateGrids(m_grids, loaded.name);
}

void CatalogueEditor::setPicture(qint32 picture) {
    m_picture = picture;
    ShowPicture(m_pictureButton, m_icon, picture);
}

void CatalogueEditor::cmdPicture_Click() {
    const long chosen = DisplayItemIconDialogbox(m_picture, this);
    if (chosen >= 0)
        setPicture(qint32(chosen));
}

void CatalogueEditor::cmdBuyLocations_Click() {
    PickInto(lstBuyLocations, QStringLiteral("Stations"),
             QStringLiteral("SELECT STATION_NAME FROM STATIONS ORDER BY STATION_NAME"),
             QStringLiteral("cmdBuyLocations_Click"), m_container);
}

PricedFields CatalogueEditor::pricedFields() const {
    PricedFields f;
    f.name = txtName->text().trimmed();
    f.level = cmbLevel->currentText().trimmed();
    f.price = txtPrice->text().trimmed();
    f.comments = txtComments->toPlainText();
    f.picture = m_picture;
    return f;
}

bool CatalogueEditor::recordChanged() const {
    const PricedFields f = pricedFields();
    return f.level != m_loadedFields.level || f.price != m_loadedFields.price ||
           f.comments != m_loadedFields.comments || f.picture != m_loadedFields.picture ||
           (isNew() && !f.name.isEmpty());
}

bool CatalogueEditor::hasChanges() const {
    if (recordChanged())
        return true;
    for (const SavedList& l : m_lists)
        if (JoinedEntries(listEntries(l.list)) != l.loaded)
            return true;
    return gridsChanged(m_grids);
}

QString CatalogueEditor::savedName() const {
    return txtName->text().trimmed();
}

SavePlan CatalogueEditor::planSave(const QStringList& writeOrder, const QString& name) const {
    SavePlan plan;
    plan.container = m_container;
    plan.validate = gridChecks(m_grids);
    const QString quoted = FixQuotes(name);
    for (const QString& w : writeOrder) {
        const auto list = std::find_if(m_lists.cbegin(), m_lists.cend(),
                                       [&w](const SavedList& l) { return l.list->objectName() == w; });
        if (list != m_lists.cend())
            plan.writes.append(SaveStep::forList(listEntries(list->list), list->loaded, list->table,
                                                 list->keyColumn, list->valueColumn, quoted));
        else
            plan.writes.append(gridWrite(FindGridDef(m_grids, w), name));
    }
    return plan;
}
