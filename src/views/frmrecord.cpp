#include "views/frmrecord.h"

#include "core/childwindows.h"
#include "core/imagestore.h"
#include "data/errorreport.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "views/mobtrees.h"
#include "views/openviews.h"
#include "views/recordtrees.h"
#include "views/viewnav.h"
#include "views/viewwidgets.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
const char* const kWords[] = {"Component", "Raw Material", "Item", "Station"};
const char* const kForms[] = {"frmComponent", "frmRawMaterial", "frmItem", "frmStation"};
const char* const kEditorKinds[] = {"Components", "Raw Materials", "Items", ""};

QListWidget* listBox(QWidget* page, QHBoxLayout* row, const QString& title, const QString& objectName) {
    auto* box = new QGroupBox(title, page);
    auto* col = new QVBoxLayout(box);
    QListWidget* list = NewList(box, objectName);
    col->addWidget(list);
    row->addWidget(box, 1);
    return list;
}

} // namespace

QString frmRecordView::captionFor(Kind kind, const QString& name) {
    return QLatin1String(kWords[kind]) + QLatin1String(": ") + name;
}

QString frmRecordView::formName() const {
    return QStringLiteral("Form ") + QLatin1String(kForms[m_kind]);
}

QString frmRecordView::procedureName() const {
    static const char* const procs[] = {"ViewComponent", "ViewRawMaterial", "ViewItem", "ViewStation"};
    return QLatin1String(procs[m_kind]);
}

frmRecordView::frmRecordView(Kind kind, QWidget* parent) : QWidget(parent), m_kind(kind) {
    setObjectName(QLatin1String(kForms[kind]));
    PrepareViewWindow(this);
    auto* top = new QVBoxLayout(this);
    top->addLayout(NewViewHeader(this, m_icon, m_title, lblType));

    tabRecord = new QTabWidget(this);
    tabRecord->setObjectName(QStringLiteral("tabRecord"));
    auto* attributes = new QWidget;
    m_form = new QFormLayout(attributes);
    tabRecord->addTab(attributes, QStringLiteral("Attributes"));
    tabRecord->addTab(NewCommentsPage(txtComments), QStringLiteral("Comments"));

    const QString form = formName();
    auto* places = new QWidget;
    auto* row = new QHBoxLayout(places);
    if (kind == Station) {
        lstTerminals = listBox(places, row, QStringLiteral("Terminals"), QStringLiteral("lstTerminals"));
        tabRecord->addTab(places, QStringLiteral("Terminals"));
        tabRecord->addTab(NewTreePage(treUsedIn, QStringLiteral("treSells")), QStringLiteral("Sells"));
        m_usedIn = new TreeWidgetSink(treUsedIn, false);
        AttachMarkerTreeCommands(treUsedIn, QStringLiteral("treSells"), form);
    } else {
        lstBuyLocations =
            listBox(places, row, QStringLiteral("Bought At"), QStringLiteral("lstBuyLocations"));
        AttachListOpener(lstBuyLocations, QStringLiteral("Station"),
                         QStringLiteral("lstBuyLocations_DblClick"), form);
        if (kind == RawMaterial)
            lstMineLocations =
                listBox(places, row, QStringLiteral("Mined In"), QStringLiteral("lstMineLocations"));
        tabRecord->addTab(places, QStringLiteral("Locations"));
        if (kind != Item) {
            tabRecord->addTab(NewTreePage(treBlueprint, QStringLiteral("treBlueprint")),
                              kind == RawMaterial ? QStringLiteral("Refined From")
                                                  : QStringLiteral("Blueprint"));
            m_blueprint = new TreeWidgetSink(treBlueprint, false);
            AttachBuildTreeCommands(treBlueprint, QStringLiteral("treBlueprint"), form);
        }
        tabRecord->addTab(NewTreePage(treUsedIn, QStringLiteral("treUsedIn")), QStringLiteral("Used In"));
        m_usedIn = new TreeWidgetSink(treUsedIn, false);
        AttachMarkerTreeCommands(treUsedIn, QStringLiteral("treUsedIn"), form);
        tabRecord->addTab(NewTreePage(treMOBs, QStringLiteral("treMOBs")), QStringLiteral("Dropped By"));
        m_mobs = new TreeWidgetSink(treMOBs, true);
        connect(treMOBs, &QTreeWidget::itemDoubleClicked, this, [](QTreeWidgetItem* item, int) {
            QTreeWidgetItem* topItem = item->parent() ? item->parent() : item;
            if (NodeImage(topItem) != 0)
                ViewMOBInfo(topItem->text(0));
        });
    }
    top->addWidget(tabRecord, 1);

    QHBoxLayout* buttons = NewButtonRow();
    cmdBuildView = AddButton(buttons, this, QStringLiteral("&Build View"), QStringLiteral("cmdBuildView"));
    cmdBuildView->setVisible(kind == Component || kind == RawMaterial);
    cmdMap = AddButton(buttons, this, QStringLiteral("Show on &Map"), QStringLiteral("cmdMap"));
    cmdMap->setVisible(kind == Station);
    cmdMap->setEnabled(mapOpener() != nullptr);
    cmdEdit = AddButton(buttons, this, QStringLiteral("&Edit"), QStringLiteral("cmdEdit"));
    cmdEdit->setVisible(kind != Station);
    cmdEdit->setEnabled(CanEdit(QLatin1String(kEditorKinds[kind])));
    cmdClose = AddButton(buttons, this, QStringLiteral("&Close"), QStringLiteral("cmdClose"));
    top->addLayout(buttons);
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
    connect(cmdEdit, &QPushButton::clicked, this, [this] {
        if (EditorOpener open = editorOpener())
            open(QLatin1String(kEditorKinds[m_kind]), m_name);
    });
    connect(cmdMap, &QPushButton::clicked, this, [this] {
        if (MapOpener open = mapOpener())
            open(m_sector, m_name);
    });
    connect(cmdBuildView, &QPushButton::clicked, this, [this] {
        ShowBuildView(m_name,
                      m_kind == Component ? QStringLiteral("Components") : QStringLiteral("Raw Materials"));
    });
    resize(600, 440);
}

frmRecordView::~frmRecordView() {
    delete m_blueprint;
    delete m_usedIn;
    delete m_mobs;
}

QList<QPair<QString, QString>> frmRecordView::fields() const {
    return m_fields;
}

void frmRecordView::addField(const QString& caption, const QString& value) {
    QLineEdit* box = NewBox(this, QStringLiteral("txtField_%1").arg(m_fields.size()));
    box->setText(value);
    box->setCursorPosition(0);
    m_form->addRow(caption + ":", box);
    m_fields.append({caption, value});
}

void frmRecordView::addRemainingColumns(Recordset& rs, const QStringList& skip) {
    for (int i = 0; i < rs.fieldCount(); ++i) {
        const QString column = rs.fieldName(i);
        if (skip.contains(column, Qt::CaseInsensitive))
            continue;
        const FieldKind kind = rs.fieldKind(i);
        QString value;
        if (column.compare(QLatin1String("PRICE"), Qt::CaseInsensitive) == 0)
            value = PriceText(FormatWhole(NzLong(rs.value(i))), false);
        else if (kind == FieldKind::Boolean)
            value = NzBool(rs.value(i)) ? QStringLiteral("Yes") : QStringLiteral("No");
        else if (isWholeNumber(kind))
            value = FormatWhole(NzLong(rs.value(i)));
        else if (isFraction(kind))
            value = RoundText(NzDouble(rs.value(i)));
        else
            value = NzString(rs.value(i));
        addField(FormatFieldName(column), value);
    }
}

void frmRecordView::load(const QString& name) {
    m_name = name;
    m_title->setText(name);
    const QString q = FixQuotes(name);
    static const char* const rowSql[] = {"SELECT * FROM COMPONENTS WHERE COMPONENT_NAME = '",
                                         "SELECT * FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME = '",
                                         "SELECT * FROM ITEMS WHERE ITEM_NAME = '",
                                         "SELECT * FROM STATIONS WHERE STATION_NAME = '"};
    {
        Recordset rs;
        rs.open(QLatin1String(rowSql[m_kind]) + q + "'");
        if (rs.eof())
            throw NoCurrentRecord();
        switch (m_kind) {
        case Component:
            loadComponent(rs);
            break;
        case RawMaterial:
            loadRawMaterial(rs);
            break;
        case Item:
            loadItem(rs);
            break;
        case Station:
            loadStation(rs);
            break;
        }
        const int pic = rs.fieldIndex(QStringLiteral("PIC_ID"));
        if (pic >= 0)
            m_icon->setPixmap(QPixmap::fromImage(GetItemIcon(NzLong(rs.value(pic)))));
        else
            m_icon->setVisible(false); // stations have no picture
        const int comments = rs.fieldIndex(QStringLiteral("COMMENTS"));
        if (comments >= 0)
            txtComments->setPlainText(NzString(rs.value(comments)));
        m_headerLoaded = true;
    }
    setWindowTitle(captionFor(m_kind, name));

    bool recurse = true;
    switch (m_kind) {
    case Component:
        FillList(lstBuyLocations,
                 "SELECT STATIONS_STATION FROM BUY_COMPONENT_LOCATIONS WHERE COMPONENTS_COMPONENT = '" + q +
                     "' ORDER BY STATIONS_STATION");
        m_blueprint->addNode(QString(), name, name, buildimg::Component);
        BuildCompTree(name, name, *m_blueprint, recurse);
        PopulateUsedIn(RecordKind::Component, name, *m_usedIn);
        PopulateMOBs(name);
        break;
    case RawMaterial:
        FillList(lstBuyLocations,
                 "SELECT STATIONS_STATION FROM BUY_RAW_MATERIAL_LOCATIONS WHERE RAW_MATERIAL = '" + q +
                     "' ORDER BY STATIONS_STATION");
        FillList(lstMineLocations, "SELECT SECTORS_SECTOR FROM MINE_LOCATIONS WHERE RAW_MATERIAL = '" + q +
                                       "' ORDER BY SECTORS_SECTOR");
        m_blueprint->addNode(QString(), name, name,
                             IsRefined(name) ? buildimg::RefinedRawMaterial : buildimg::RawMaterial);
        BuildRawMatTree(name, name, *m_blueprint, recurse);
        PopulateUsedIn(RecordKind::RawMaterial, name, *m_usedIn);
        PopulateMOBs(name);
        break;
    case Item:
        FillList(lstBuyLocations, "SELECT STATIONS_STATION FROM BUY_ITEM_LOCATIONS WHERE ITEM_NAME = '" + q +
                                      "' ORDER BY STATIONS_STATION");
        PopulateUsedIn(RecordKind::Item, name, *m_usedIn);
        PopulateMOBs(name);
        break;
    case Station:
        FillList(lstTerminals, "SELECT TERMINAL_TYPE FROM STATION_TERMINALS WHERE STATION_NAME = '" + q +
                                   "' ORDER BY TERMINAL_TYPE");
        PopulateStationSells(name, *m_usedIn);
        break;
    }
}

void frmRecordView::loadComponent(Recordset& rs) {
    lblType->setText("Level " + NzString(rs.value(QStringLiteral("LVL"))) + " Component");
    addField(QStringLiteral("Level"), NzString(rs.value(QStringLiteral("LVL"))));
    addField(QStringLiteral("Type"), NzString(rs.value(QStringLiteral("TYPE")), QStringLiteral("Unknown")));
    addField(QStringLiteral("Subtype"), NzString(rs.value(QStringLiteral("SUBTYPE"))));
    addField(QStringLiteral("Price"),
             PriceText(FormatWhole(NzLong(rs.value(QStringLiteral("PRICE")))), false));
    addField(QStringLiteral("Last Updated"), NzString(rs.value(QStringLiteral("LAST_UPDATED"))));
}

void frmRecordView::loadRawMaterial(Recordset& rs) {
    const bool refined = IsRefined(m_name);
    lblType->setText("Level " + NzString(rs.value(QStringLiteral("LVL"))) +
                     (refined ? QStringLiteral(" Refined Raw Material") : QStringLiteral(" Raw Material")));
    addField(QStringLiteral("Level"), NzString(rs.value(QStringLiteral("LVL"))));
    addField(QStringLiteral("Price"),
             PriceText(FormatWhole(NzLong(rs.value(QStringLiteral("PRICE")))), false));
    addField(QStringLiteral("Refined"), refined ? QStringLiteral("Yes") : QStringLiteral("No"));
    addField(QStringLiteral("Last Updated"), NzString(rs.value(QStringLiteral("LAST_UPDATED"))));
}

void frmRecordView::loadItem(Recordset& rs) {
    lblType->setText("Level " + NzString(rs.value(QStringLiteral("LVL"))) + " Item");
    addRemainingColumns(rs,
                        {"ITEM_NAME", "CHECK", "PERSONAL_DB", "UPDATED", "SUBMITTED", "PIC_ID", "COMMENTS"});
}

void frmRecordView::loadStation(Recordset& rs) {
    const QString sector = NzString(rs.value(QStringLiteral("SECTORS_SECTOR")));
    m_sector = sector;
    QString system;
    {
        Recordset s;
        s.open("SELECT SYSTEM_SYSTEM_NAME FROM SECTORS WHERE SECTOR_NAME = '" + FixQuotes(sector) + "'");
        if (!s.eof())
            system = NzString(s.value(0));
    }
    lblType->setText(system.isEmpty() ? "Station in " + sector : "Station in " + sector + ", " + system);
    addField(QStringLiteral("Sector"), sector);
    addField(QStringLiteral("System"), system);
    addRemainingColumns(
        rs, {"STATION_NAME", "SECTORS_SECTOR", "CHECK", "PERSONAL_DB", "UPDATED", "PIC_ID", "COMMENTS"});
}

void frmRecordView::PopulateMOBs(const QString& name) {
    static const DropKind kinds[] = {DropKind::Component, DropKind::RawMaterial, DropKind::Item,
                                     DropKind::Item};
    try {
        m_mobs->clear();
        ::PopulateMOBs(kinds[m_kind], name, *m_mobs);
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("PopulateMOBs"), formName());
    }
}

namespace {
void openRecordView(frmRecordView::Kind kind, const QString& name, const QString& procedure) {
    if (CheckWindow(frmRecordView::captionFor(kind, name)))
        return;
    QPointer<frmRecordView> frm = new frmRecordView(kind, ViewOwner());
    try {
        frm->load(name);
    } catch (const VbError& e) {
        ReportDBError(e, procedure, QStringLiteral("Module modMain"));
    } catch (const std::exception& e) {
        ReportDBError(e, procedure, QStringLiteral("Module modMain"));
    }
    if (!frm)
        return;
    if (!frm->headerLoaded()) {
        delete frm;
        return;
    }
    frm->setWindowTitle(frmRecordView::captionFor(kind, name));
    RegisterChildWindow(frm);
    frm->show();
}
} // namespace

void ViewComponent(const QString& name) {
    openRecordView(frmRecordView::Component, name, QStringLiteral("ViewComponent"));
}
void ViewRawMaterial(const QString& name) {
    openRecordView(frmRecordView::RawMaterial, name, QStringLiteral("ViewRawMaterial"));
}
void ViewItem(const QString& name) {
    openRecordView(frmRecordView::Item, name, QStringLiteral("ViewItem"));
}
void ViewStation(const QString& name) {
    openRecordView(frmRecordView::Station, name, QStringLiteral("ViewStation"));
}
