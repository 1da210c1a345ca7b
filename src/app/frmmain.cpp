// The main window's shell: the load sequence, the widgets, the status bar panels, the background
// picture and closing.
#include "app/frmmain_p.h"

#include "app/listsearch.h"
#include "app/mainsettings.h"
#include "app/modmain_app.h"
#include "app/wiring.h"
#include "core/childwindows.h"
#include "core/gamecursor.h"
#include "core/imagestore.h"
#include "core/inifile.h"
#include "core/settings.h"
#include "core/tooltip.h"
#include "lists/frmfind.h"
#include "lists/listmodel.h"
#include "lists/listviewsort.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QStatusBar>
#include <QVBoxLayout>

namespace {
frmMain*& currentMain() {
    static frmMain* w = nullptr;
    return w;
}

#define VOSK_STR2(x) #x
#define VOSK_STR(x) VOSK_STR2(x)
const char* const VersionText =
    VOSK_STR(VOSK_VERSION_MAJOR) "." VOSK_STR(VOSK_VERSION_MINOR) "." VOSK_STR(VOSK_VERSION_REVISION);
} // namespace

frmMain* mainWindow() {
    return currentMain();
}

frmMain::frmMain(QWidget* parent) : QMainWindow(parent), d(new Impl(this)) {
    currentMain() = this;
    SetOwnerWindow(this);
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QStringLiteral("VOSK v") + QLatin1String(VersionText));
    buildWidgets();
    buildMenus();

    d->sorter = new ListViewSort(this);
    d->sorter->setListView(lstItems);
    SaveProgramPath();

    {
        SuspendRefresh hold(d->suspend);
        cmbData->addItems(Categories());
        fillFilterLists();
        setToolTips();
        setInteractionPanel(opt::flag(opt::VLInteractOn));
        setBackgroundShown(opt::flag(opt::Background));
        ApplyGameCursor(opt::flag(opt::DisplayVLNCursor));
        LoadSettings();
    }
    const bool firstStart = LoadWindowPlace().geometry.isEmpty();
    cmbData_Click();
    if (firstStart)
        fitWindowToColumns();
    WireMainWindow(*this);
}

frmMain::~frmMain() {
    if (currentMain() == this) {
        currentMain() = nullptr;
        SetOwnerWindow(nullptr);
    }
    delete d;
}

void frmMain::buildWidgets() {
    auto* central = new QWidget(this);
    auto* column = new QVBoxLayout(central);
    column->setContentsMargins(4, 4, 4, 0);
    auto* filters = new QHBoxLayout;
    filters->setSpacing(10);

    auto addFilter = [&](QComboBox*& box, const char* name, const QString& caption, int width) {
        auto* holder = new QWidget(central);
        auto* row = new QHBoxLayout(holder);
        row->setContentsMargins(0, 0, 0, 0);
        row->setSpacing(4);
        auto* label = new QLabel(caption, holder);
        box = new QComboBox(holder);
        box->setObjectName(QLatin1String(name));
        box->setMinimumWidth(width);
        box->setSizeAdjustPolicy(QComboBox::AdjustToContents);
        label->setBuddy(box);
        row->addWidget(label);
        row->addWidget(box);
        filters->addWidget(holder);
        d->filterBoxes.insert(box, holder);
    };
    addFilter(cmbData, "cmbData", tr("&Category:"), 120);
    addFilter(cmbEquipType, "cmbEquipType", tr("&Type:"), 100);
    addFilter(cmbCompType, "cmbCompType", tr("&Type:"), 110);
    addFilter(cmbSubType, "cmbSubType", tr("S&ubtype:"), 100);
    addFilter(cmbCL, "cmbCL", tr("Combat &Level:"), 70);
    addFilter(cmbLevel, "cmbLevel", tr("&Level:"), 60);
    // Mnemonics are unique among the captions shown together and the menu bar's titles.
    addFilter(cmbRace, "cmbRace", tr("Cla&ss:"), 100);
    addFilter(cmbChecked, "cmbChecked", tr("Sh&ow:"), 100);
    filters->addStretch(1);
    column->addLayout(filters);
    // The name search has a row of its own: beside the filters the window would not fit a small screen.
    auto* searchRow = new QHBoxLayout;
    txtSearch = NewListSearchBox(central, searchRow);
    txtSearch->setMaximumWidth(txtSearch->minimumWidth() * 2);
    searchRow->addStretch(1);
    column->addLayout(searchRow);

    d->model = new ListModel(this);
    auto* list = new ItemListView(central);
    lstItems = list;
    lstItems->setObjectName(QStringLiteral("lstItems"));
    lstItems->setModel(d->model);
    lstItems->setSelectionMode(QAbstractItemView::SingleSelection);
    lstItems->setSelectionBehavior(QAbstractItemView::SelectRows);
    lstItems->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lstItems->setContextMenuPolicy(Qt::CustomContextMenu);
    lstItems->header()->setSectionsMovable(true);
    lstItems->header()->setStretchLastSection(false);
    column->addWidget(lstItems, 1);
    setCentralWidget(central);

    statBar = statusBar();
    statBar->setObjectName(QStringLiteral("statBar"));
    statBar->setSizeGripEnabled(true);
    for (const char* key : {"Status", "ItemCount", "LoadTime", "Interaction"}) {
        auto* panel = new QLabel(statBar);
        panel->setObjectName(QLatin1String(key));
        panel->setFrameStyle(QFrame::Panel | QFrame::Sunken);
        panel->setMinimumWidth(110);
        statBar->addPermanentWidget(panel, QByteArray(key) == "Status" ? 1 : 0);
        d->panels.insert(QLatin1String(key), panel);
    }
    // What the row colours mean, in the colours themselves (filled in with the list's colours).
    auto* legend = new QLabel(statBar);
    legend->setObjectName(QStringLiteral("Legend"));
    legend->setTextFormat(Qt::RichText);
    statBar->insertPermanentWidget(1, legend);
    d->panels.insert(QStringLiteral("Legend"), legend);
    setPanelText(QStringLiteral("Status"), QStringLiteral("Ready"));
    resize(960, 600);

    connect(d->model, &ListModel::checkToggled, this, &frmMain::lstItems_ItemCheck);
    connect(d->model, &ListModel::loadProgress, this, [this] { showLoadProgress(); });
    connect(d->model, &ListModel::loadFinished, this, [this] {
        // A list read in one go is finished inside RefreshGrid, which does the rest itself.
        if (!d->refreshing)
            listLoaded();
    });
    AttachListSearch(txtSearch, lstItems, d->model, [this](int shown) {
        setPanelText(QStringLiteral("ItemCount"), QStringLiteral("Items: ") + QString::number(shown));
    });
    connect(lstItems, &QAbstractItemView::doubleClicked, this, [this] { lstItems_DblClick(); });
    for (QComboBox* box : {cmbEquipType, cmbLevel, cmbChecked, cmbSubType, cmbCL, cmbRace})
        connect(box, &QComboBox::currentIndexChanged, this, [this] { filter_Click(); });
    connect(cmbData, &QComboBox::currentIndexChanged, this, [this] { cmbData_Click(); });
    connect(cmbCompType, &QComboBox::currentIndexChanged, this, [this] { cmbCompType_Click(); });
}

void frmMain::setToolTips() {
    const QList<QPair<QWidget*, const char*>> tips = {
        {lstItems, "EQUIPMENT_LIST"}, {cmbData, "DATA"},       {cmbEquipType, "EQUIP_TYPE"},
        {cmbLevel, "EQUIP_LEVEL"},    {cmbChecked, "CHECKED"}, {cmbCompType, "COMP_TYPE"},
        {cmbSubType, "SUB_TYPE"},     {cmbRace, "RACE"}};
    for (const auto& [widget, key] : tips)
        SetTip(widget, ReadVoskIni(QStringLiteral("Main"), QLatin1String(key)));
}

QString frmMain::panelText(const QString& key) const {
    QLabel* panel = d->panels.value(key);
    return panel ? panel->text() : QString();
}

void frmMain::setPanelText(const QString& key, const QString& text) {
    if (QLabel* panel = d->panels.value(key))
        panel->setText(text);
}

void frmMain::showStatus(const QString& text) {
    setPanelText(QStringLiteral("Status"), text);
    // Long work follows without a return to the event loop: the panel is painted now or never.
    if (QLabel* panel = d->panels.value(QStringLiteral("Status")); panel && panel->isVisible())
        panel->repaint();
}

void frmMain::showLegend(const QColor& updated, const QColor& personal) {
    QLabel* legend = d->panels.value(QStringLiteral("Legend"));
    if (!legend)
        return;
    QStringList parts;
    auto entry = [&parts](const QColor& colour, const QString& text) {
        if (colour.isValid())
            parts << QStringLiteral("<span style=\"color:%1\">&#9632; %2</span>").arg(colour.name(), text);
    };
    entry(updated, tr("Changed by you"));
    entry(personal, tr("Added by you"));
    legend->setText(parts.join(QStringLiteral("&nbsp;&nbsp;")));
    legend->setToolTip(tr("Row colours: records you have changed, and records you have added, in your "
                          "own copy of the data. A record you added keeps its colour when you change it."));
    legend->setVisible(!parts.isEmpty());
}

void frmMain::setInteractionPanel(bool on) {
    setPanelText(QStringLiteral("Interaction"), on ? QStringLiteral("Game Interaction: Enabled")
                                                   : QStringLiteral("Game Interaction: Disabled"));
}

void frmMain::setBackgroundShown(bool shown) {
    d->background = shown;
    auto* list = static_cast<ItemListView*>(lstItems);
    list->setBackgroundPicture(
        shown ? ImageStore::instance().picture(QStringLiteral("IMAGE"), QStringLiteral("BG_VOSK.GIF"))
              : QImage());
}

bool frmMain::backgroundShown() const {
    return d->background && !static_cast<ItemListView*>(lstItems)->backgroundPicture().isNull();
}

QString frmMain::category() const {
    return cmbData->currentText();
}

ListModel* frmMain::model() const {
    return d->model;
}

frmFind* frmMain::findDialog() const {
    return d->find;
}

QString frmMain::selectedName() const {
    const QModelIndex current = lstItems->currentIndex();
    if (!current.isValid() || !lstItems->selectionModel()->isRowSelected(current.row(), QModelIndex()))
        return {};
    return d->model->name(current.row());
}

void frmMain::closeEvent(QCloseEvent* event) {
    SaveColumnInfo();
    SaveSettings();
    if (d->find)
        d->find->close();
    event->accept();
    // Leaving the main window is leaving the program.
    ShutDown();
}

void frmMain::CheckCharacters() {
    ::CheckCharacters();
}
