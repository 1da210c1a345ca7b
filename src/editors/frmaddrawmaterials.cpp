#include "editors/frmaddrawmaterials.h"

#include "core/clock.h"
#include "core/imagestore.h"
#include "core/prompt.h"
#include "data/database.h"
#include "data/errorreport.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "editors/frmlistdialog.h"
#include "editors/frmpicselect.h"
#include "editors/gridroutines.h"
#include "editors/propertylist.h"
#include "editors/ubgrid.h"
#include "views/viewwidgets.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {
const QString Container = QStringLiteral("Form frmAddRawMaterials");
const QString Kind = QStringLiteral("Raw Materials");

QPushButton* changeButton(QWidget* parent, const QString& name) {
    auto* b = new QPushButton(QStringLiteral("C&hange..."), parent);
    b->setObjectName(name);
    return b;
}
} // namespace

frmAddRawMaterials::frmAddRawMaterials(QWidget* parent)
    : EditorWindow(QStringLiteral("frmAddRawMaterials"), Kind, parent) {
    auto* top = new QVBoxLayout(this);
    QLabel* type = nullptr;
    top->addLayout(NewViewHeader(this, m_icon, m_title, type));
    type->setText(QStringLiteral("Raw Material"));

    tabMain = new QTabWidget(this);
    tabMain->setObjectName(QStringLiteral("tabMain"));
    tabMain->addTab(buildGeneral(), QStringLiteral("General"));
    tabMain->addTab(buildLocations(), QStringLiteral("Locations"));
    tabMain->addTab(gridPage({"ubgBlueRawMats", "ubgBlueItems"}), QStringLiteral("Refined From"));
    tabMain->addTab(gridPage({"ubgManuComps", "ubgManuEquip", "ubgManuRawMats"}), QStringLiteral("Used In"));
    txtComments = new QPlainTextEdit(this);
    txtComments->setObjectName(QStringLiteral("txtComments"));
    txtComments->setTabChangesFocus(true);
    tabMain->addTab(txtComments, QStringLiteral("Comments"));
    top->addWidget(tabMain, 1);
    top->addLayout(buttonRow());

    ubgMOBs = grid(QStringLiteral("ubgMOBs"));
    ubgManuComps = grid(QStringLiteral("ubgManuComps"));
    ubgManuEquip = grid(QStringLiteral("ubgManuEquip"));
    ubgManuRawMats = grid(QStringLiteral("ubgManuRawMats"));
    ubgBlueRawMats = grid(QStringLiteral("ubgBlueRawMats"));
    ubgBlueItems = grid(QStringLiteral("ubgBlueItems"));

    const struct {
        QWidget* widget;
        const char* key;
    } tips[] = {{txtName, "NAME"},
                {cmbLevel, "LEVEL"},
                {txtPrice, "PRICE"},
                {m_pictureButton, "PICTURE"},
                {lstBuyLocations, "BUY_LOCATIONS"},
                {lstMineLocations, "MINE_LOCATIONS"},
                {txtComments, "COMMENTS"},
                {cmdSave, "SAVE"},
                {cmdCancel, "CANCEL"}};
    for (const auto& t : tips)
        SetTip(t.widget, GetToolTip(QStringLiteral("ADD_RAW_MATERIALS"), QLatin1String(t.key),
                                    QStringLiteral("raw material")));
    resize(660, 540);
}

QWidget* frmAddRawMaterials::buildGeneral() {
    auto* page = new QWidget;
    auto* col = new QVBoxLayout(page);
    auto* form = new QFormLayout;
    txtName = new QLineEdit(page);
    txtName->setObjectName(QStringLiteral("txtName"));
    txtName->setMaxLength(100);
    cmbLevel = new QComboBox(page);
    cmbLevel->setObjectName(QStringLiteral("cmbLevel"));
    cmbLevel->setEditable(true);
    cmbLevel->setValidator(new QIntValidator(0, 9999, cmbLevel));
    cmbLevel->setInsertPolicy(QComboBox::NoInsert);
    cmbLevel->setMaximumWidth(120);
    txtPrice = new QLineEdit(page);
    txtPrice->setObjectName(QStringLiteral("txtPrice"));
    static const QRegularExpression whole(QStringLiteral("-?[0-9]{0,10}"));
    txtPrice->setValidator(new QRegularExpressionValidator(whole, txtPrice));
    txtPrice->setAlignment(Qt::AlignRight);
    txtPrice->setMaximumWidth(120);
    txtPrice->setContextMenuPolicy(Qt::CustomContextMenu);
    lblPriceWord = new QLabel(page);
    lblPriceWord->setObjectName(QStringLiteral("lblPriceWord"));
    auto* price = new QHBoxLayout;
    price->addWidget(txtPrice);
    price->addWidget(lblPriceWord, 1);
    m_pictureButton = new QPushButton(page);
    m_pictureButton->setObjectName(QStringLiteral("cmdPicture"));
    m_pictureButton->setIconSize(QSize(32, 32));
    auto* picture = new QHBoxLayout;
    picture->addWidget(m_pictureButton);
    picture->addStretch();
    auto label = [page](const QString& text, QWidget* buddy) {
        auto* l = new QLabel(text, page);
        l->setBuddy(buddy);
        return l;
    };
    form->addRow(label(tr("&Name:"), txtName), txtName);
    form->addRow(label(tr("&Level:"), cmbLevel), cmbLevel);
    form->addRow(label(tr("&Price:"), txtPrice), price);
    form->addRow(label(tr("P&icture:"), m_pictureButton), picture);
    col->addLayout(form);

    auto* box = new QGroupBox(rawmat::grid(QStringLiteral("ubgMOBs")).caption, page);
    auto* inner = new QVBoxLayout(box);
    inner->addWidget(new UBGrid(QStringLiteral("ubgMOBs"), box));
    col->addWidget(box, 1);

    connect(txtPrice, &QLineEdit::textChanged, this, &frmAddRawMaterials::showPriceWord);
    connect(txtName, &QLineEdit::textChanged, this, [this](const QString& t) { m_title->setText(t); });
    connect(m_pictureButton, &QPushButton::clicked, this, &frmAddRawMaterials::cmdPicture_Click);
    connect(txtPrice, &QWidget::customContextMenuRequested, this, [this](const QPoint& pos) {
        std::unique_ptr<QMenu> menu(txtPrice->createStandardContextMenu());
        menu->addSeparator();
        for (const auto& choice : PriceChoices(PriceWords::Price)) {
            const QString number = choice.second;
            menu->addAction(choice.first, this, [this, number] { txtPrice->setText(number); });
        }
        menu->exec(txtPrice->mapToGlobal(pos));
    });
    return page;
}

QWidget* frmAddRawMaterials::buildLocations() {
    auto* page = new QWidget;
    auto* row = new QHBoxLayout(page);
    auto addList = [&](const QString& title, const QString& listName, const QString& buttonName) {
        auto* box = new QGroupBox(title, page);
        auto* col = new QVBoxLayout(box);
        QListWidget* list = NewList(box, listName);
        QPushButton* change = changeButton(box, buttonName);
        col->addWidget(list, 1);
        col->addWidget(change, 0, Qt::AlignRight);
        row->addWidget(box, 1);
        return std::make_pair(list, change);
    };
    auto buy = addList(tr("Bought At"), QStringLiteral("lstBuyLocations"), QStringLiteral("cmdBuyLocations"));
    auto mine =
        addList(tr("Mined In"), QStringLiteral("lstMineLocations"), QStringLiteral("cmdMineLocations"));
    lstBuyLocations = buy.first;
    lstMineLocations = mine.first;
    connect(buy.second, &QPushButton::clicked, this, &frmAddRawMaterials::cmdBuyLocations_Click);
    connect(mine.second, &QPushButton::clicked, this, &frmAddRawMaterials::cmdMineLocations_Click);
    connect(lstBuyLocations, &QListWidget::itemDoubleClicked, this,
            &frmAddRawMaterials::cmdBuyLocations_Click);
    connect(lstMineLocations, &QListWidget::itemDoubleClicked, this,
            &frmAddRawMaterials::cmdMineLocations_Click);
    return page;
}

QWidget* frmAddRawMaterials::gridPage(const QStringList& widgets) {
    auto* tabs = new QTabWidget;
    tabs->setDocumentMode(true);
    for (const QString& w : widgets)
        tabs->addTab(new UBGrid(w, tabs), rawmat::grid(w).caption);
    return tabs;
}

UBGrid* frmAddRawMaterials::grid(const QString& widgetName) const {
    return findChild<UBGrid*>(widgetName);
}

QStringList frmAddRawMaterials::listEntries(const QListWidget* list) const {
    QStringList out;
    for (int i = 0; i < list->count(); ++i)
        out.append(list->item(i)->text());
    return out;
}

bool frmAddRawMaterials::load(const QString& name) {
    try {
        if (name.isEmpty()) {
            setWindowTitle(QStringLiteral("Add Raw Material"));
            m_loaded = rawmat::Fields();
            m_loaded.level = QStringLiteral("1");
        } else {
            m_loaded = rawmat::readRecord(name);
            setWindowTitle(QStringLiteral("Edit: ") + m_loaded.name);
            setRecordName(m_loaded.name);
            // The name identifies the record being changed; renaming is the main window's Rename.
            txtName->setReadOnly(true);
            FillList(lstBuyLocations, rawmat::buyLocationsSql(m_loaded.name));
            FillList(lstMineLocations, rawmat::mineLocationsSql(m_loaded.name));
        }
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("Form_Load"), Container);
        return false;
    }
    m_loadedBuy = JoinedEntries(listEntries(lstBuyLocations));
    m_loadedMine = JoinedEntries(listEntries(lstMineLocations));

    const int level = m_loaded.level.toInt();
    for (int i = 1; i <= qMax(60, level); ++i)
        cmbLevel->addItem(QString::number(i));
    txtName->setText(m_loaded.name);
    m_title->setText(m_loaded.name);
    cmbLevel->setEditText(m_loaded.level);
    txtPrice->setText(m_loaded.price);
    txtComments->setPlainText(m_loaded.comments);
    setPicture(m_loaded.picture);
    showPriceWord();

    const QString quoted = FixQuotes(m_loaded.name);
    for (const GridDef& def : rawmat::grids())
        PopulateGrid(grid(def.widget)->grid(), def.queries(quoted), true);
    return true;
}

rawmat::Fields frmAddRawMaterials::fields() const {
    rawmat::Fields f;
    f.name = txtName->text().trimmed();
    f.level = cmbLevel->currentText().trimmed();
    f.price = txtPrice->text().trimmed();
    f.comments = txtComments->toPlainText();
    f.picture = m_picture;
    return f;
}

void frmAddRawMaterials::setPicture(qint32 picture) {
    m_picture = picture;
    const QPixmap icon = QPixmap::fromImage(GetItemIcon(picture));
    m_icon->setPixmap(icon);
    m_pictureButton->setIcon(QIcon(icon));
    m_pictureButton->setText(QStringLiteral(" No. ") + QString::number(picture) + QStringLiteral("..."));
}

void frmAddRawMaterials::showPriceWord() {
    const QString price = txtPrice->text().trimmed();
    const QString word = PriceDisplay(price, PriceWords::Price);
    lblPriceWord->setText(!price.isEmpty() && word != price ? word : QString());
}

void frmAddRawMaterials::cmdPicture_Click() {
    const long chosen = DisplayItemIconDialogbox(m_picture, this);
    if (chosen >= 0)
        setPicture(qint32(chosen));
}

void frmAddRawMaterials::pickList(QListWidget* list, const QString& kind, const QString& sql,
                                  const QString& procedure) {
    try {
        DisplayListDialog(kind, ChoicesFrom(sql), list);
    } catch (const VbError& e) {
        ReportDBError(e, procedure, Container);
    }
}

void frmAddRawMaterials::cmdBuyLocations_Click() {
    pickList(lstBuyLocations, QStringLiteral("Stations"), rawmat::allStationsSql(),
             QStringLiteral("cmdBuyLocations_Click"));
}

void frmAddRawMaterials::cmdMineLocations_Click() {
    pickList(lstMineLocations, QStringLiteral("Sectors"), rawmat::allSectorsSql(),
             QStringLiteral("cmdMineLocations_Click"));
}

bool frmAddRawMaterials::recordChanged() const {
    const rawmat::Fields f = fields();
    return f.level != m_loaded.level || f.price != m_loaded.price || f.comments != m_loaded.comments ||
           f.picture != m_loaded.picture || (isNew() && !f.name.isEmpty());
}

bool frmAddRawMaterials::hasChanges() const {
    if (recordChanged() || JoinedEntries(listEntries(lstBuyLocations)) != m_loadedBuy ||
        JoinedEntries(listEntries(lstMineLocations)) != m_loadedMine)
        return true;
    for (const GridDef& def : rawmat::grids())
        if (GridChanged(grid(def.widget)->grid()))
            return true;
    return false;
}

QString frmAddRawMaterials::savedName() const {
    return fields().name;
}

SavePlan frmAddRawMaterials::savePlan() {
    const rawmat::Fields f = fields();
    const QString quoted = FixQuotes(f.name);
    SavePlan plan;
    plan.container = Container;
    for (const GridDef& def : rawmat::grids())
        plan.validate.append({&grid(def.widget)->grid(), def.listName});
    plan.checkInput = [f] {
        if (f.name.isEmpty() || f.price.isEmpty() || f.level.isEmpty()) {
            MsgBox(QStringLiteral("One or more of the values entered must not be empty"), vb::Information,
                   QStringLiteral("Empty Data"));
            return false;
        }
        if (!ValidName(f.name)) {
            MsgBox(
                QStringLiteral("Names cannot contain a double single-quote! Please change name to continue."),
                vb::Exclamation, QStringLiteral("Invalid name"));
            return false;
        }
        return true;
    };
    const bool adding = isNew();
    const bool fieldsChanged = recordChanged();
    plan.writeRecord = [f, adding, fieldsChanged](bool relationsChanged) {
        if (adding) {
            db().execute(rawmat::insertSql(f, Now()));
            return true;
        }
        // The UPDATE stamps the record as changed: it runs only when something of it did change.
        if (!fieldsChanged && !relationsChanged)
            return false;
        // A record deleted or renamed meanwhile must not get link rows that point nowhere.
        if (db().execute(rawmat::updateSql(f, Now())) == 0)
            throw NoCurrentRecord();
        return true;
    };
    for (const QString& w : rawmat::writeOrder()) {
        if (w == QLatin1String("lstBuyLocations")) {
            plan.writes.append(SaveStep::forList(
                listEntries(lstBuyLocations), m_loadedBuy, QStringLiteral("BUY_RAW_MATERIAL_LOCATIONS"),
                QStringLiteral("RAW_MATERIAL"), QStringLiteral("STATIONS_STATION"), quoted));
        } else if (w == QLatin1String("lstMineLocations")) {
            plan.writes.append(SaveStep::forList(
                listEntries(lstMineLocations), m_loadedMine, QStringLiteral("MINE_LOCATIONS"),
                QStringLiteral("RAW_MATERIAL"), QStringLiteral("SECTORS_SECTOR"), quoted));
        } else {
            const GridDef& def = rawmat::grid(w);
            plan.writes.append(SaveStep::forGrid(grid(w)->grid(), def.save(quoted), def.keyColumn, f.name));
        }
    }
    return plan;
}

void OpenRawMaterialEditor(const QString& name) {
    const QString caption =
        name.isEmpty() ? QStringLiteral("Add Raw Material") : QStringLiteral("Edit: ") + name;
    EditorWindow::open<frmAddRawMaterials>(caption, name);
}
