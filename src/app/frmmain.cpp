// The main window's shell: the load sequence, the widgets, the status bar panels, the background
// picture and closing.
#include "app/frmmain_p.h"

#include "app/mainsettings.h"
#include "app/modmain_app.h"
#include "app/wiring.h"
#include "core/childwindows.h"
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
#include <QPainter>
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

void ItemListView::setBackgroundPicture(const QImage& picture) {
    m_picture = picture;
    viewport()->update();
}

void ItemListView::paintEvent(QPaintEvent* event) {
    if (!m_picture.isNull()) {
        // Painted first, below the rows: the picture sits in the lower right corner so that it
        // stays clear of the names in the first columns.
        QPainter p(viewport());
        const QRect area = viewport()->rect();
        p.setOpacity(0.35);
        p.drawImage(area.right() - m_picture.width() + 1, area.bottom() - m_picture.height() + 1, m_picture);
    }
    QTreeView::paintEvent(event);
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
        LoadSettings();
    }
    cmbData_Click();
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
    addFilter(cmbRace, "cmbRace", tr("Cl&ass:"), 100);
    addFilter(cmbChecked, "cmbChecked", tr("S&how:"), 100);
    filters->addStretch(1);
    column->addLayout(filters);

    d->model = new ListModel(this);
    auto* list = new ItemListView(central);
    lstItems = list;
    lstItems->setObjectName(QStringLiteral("lstItems"));
    lstItems->setModel(d->model);
    lstItems->setRootIsDecorated(false);
    lstItems->setItemsExpandable(false);
    lstItems->setUniformRowHeights(true);
    lstItems->setAllColumnsShowFocus(true);
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
    setPanelText(QStringLiteral("Status"), QStringLiteral("Ready"));
    resize(960, 600);

    connect(d->model, &ListModel::checkToggled, this, &frmMain::lstItems_ItemCheck);
    connect(lstItems, &QAbstractItemView::doubleClicked, this, [this] { lstItems_DblClick(); });
    for (QComboBox* box : {cmbEquipType, cmbLevel, cmbChecked, cmbSubType, cmbCL, cmbRace})
        connect(box, &QComboBox::currentIndexChanged, this, [this] { filter_Click(); });
    connect(cmbData, &QComboBox::currentIndexChanged, this, [this] { cmbData_Click(); });
    connect(cmbCompType, &QComboBox::currentIndexChanged, this, [this] { cmbCompType_Click(); });
}

void frmMain::setToolTips() {
    if (!opt::flag(opt::Tooltips))
        return;
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
