#include "maps/frmmap.h"

#include "core/childwindows.h"
#include "core/prompt.h"
#include "core/settings.h"
#include "data/errorreport.h"
#include "maps/ctlmap.h"
#include "maps/frmaddlocation.h"
#include "maps/locationedit.h"
#include "maps/mapgrid.h"
#include "maps/navicons.h"
#include "views/openviews.h"
#include "views/viewwidgets.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMap>
#include <QMenu>
#include <QPushButton>
#include <QSplitter>
#include <QTextBrowser>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <cmath>

namespace {
const QString kForm = QStringLiteral("Form frmMap");
const QString kSettingSection = QStringLiteral("Settings");
const QString kSettingSector = QStringLiteral("MapSector");

// Rows that sort their coordinate columns as numbers.
class LocationItem : public QTreeWidgetItem {
public:
    using QTreeWidgetItem::QTreeWidgetItem;
    bool operator<(const QTreeWidgetItem& other) const override {
        const int column = treeWidget() ? treeWidget()->sortColumn() : 0;
        if (column >= 2)
            return data(column, Qt::UserRole).toDouble() < other.data(column, Qt::UserRole).toDouble();
        return text(column).compare(other.text(column), Qt::CaseInsensitive) < 0;
    }
};

QLabel* statusLabel(QWidget* parent, const QString& objectName) {
    auto* l = new QLabel(parent);
    l->setObjectName(objectName);
    return l;
}
} // namespace

frmMap::frmMap(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("frmMap"));
    PrepareViewWindow(this);
    setWindowTitle(QStringLiteral("Sector Map"));
    auto* top = new QVBoxLayout(this);

    auto* choosers = new QHBoxLayout;
    cmbSystem = new QComboBox(this);
    cmbSystem->setObjectName(QStringLiteral("cmbSystem"));
    cmbSystem->setMinimumContentsLength(16);
    cmbSector = new QComboBox(this);
    cmbSector->setObjectName(QStringLiteral("cmbSector"));
    cmbSector->setMinimumContentsLength(20);
    auto* systemLabel = new QLabel(QStringLiteral("S&ystem:"), this);
    systemLabel->setBuddy(cmbSystem);
    auto* sectorLabel = new QLabel(QStringLiteral("Sec&tor:"), this);
    sectorLabel->setBuddy(cmbSector);
    choosers->addWidget(systemLabel);
    choosers->addWidget(cmbSystem);
    choosers->addSpacing(10);
    choosers->addWidget(sectorLabel);
    choosers->addWidget(cmbSector);
    choosers->addStretch(1);
    cmdAdd = AddButton(choosers, this, QStringLiteral("&Add Location..."), QStringLiteral("cmdAdd"));
    cmdEdit = AddButton(choosers, this, QStringLiteral("&Edit..."), QStringLiteral("cmdEdit"));
    cmdDelete = AddButton(choosers, this, QStringLiteral("&Delete"), QStringLiteral("cmdDelete"));
    top->addLayout(choosers);

    auto* split = new QSplitter(Qt::Horizontal, this);
    map = new ctlMap(split);
    auto* side = new QSplitter(Qt::Vertical, split);
    lstLocations = new QTreeWidget(side);
    lstLocations->setObjectName(QStringLiteral("lstLocations"));
    lstLocations->setHeaderLabels(
        {QStringLiteral("Location"), QStringLiteral("Type"), QStringLiteral("X"), QStringLiteral("Y")});
    lstLocations->setRootIsDecorated(false);
    lstLocations->setUniformRowHeights(true);
    lstLocations->setSortingEnabled(true);
    lstLocations->sortByColumn(0, Qt::AscendingOrder);
    lstLocations->setIconSize(QSize(18, 18));
    lstLocations->header()->setStretchLastSection(false);
    lstLocations->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    for (int c = 1; c < 4; ++c)
        lstLocations->header()->setSectionResizeMode(c, QHeaderView::ResizeToContents);
    txtDetails = new QTextBrowser(side);
    txtDetails->setObjectName(QStringLiteral("txtDetails"));
    txtDetails->setOpenLinks(false);
    side->addWidget(lstLocations);
    side->addWidget(txtDetails);
    side->setStretchFactor(0, 3);
    side->setStretchFactor(1, 2);
    split->addWidget(map);
    split->addWidget(side);
    split->setStretchFactor(0, 1);
    split->setStretchFactor(1, 0);
    split->setSizes({760, 340});
    top->addWidget(split, 1);

    auto* foot = new QHBoxLayout;
    lblCount = statusLabel(this, QStringLiteral("lblCount"));
    lblPointer = statusLabel(this, QStringLiteral("lblPointer"));
    lblPointer->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("X -0000000, Y -0000000")));
    lblZoom = statusLabel(this, QStringLiteral("lblZoom"));
    lblNotice = statusLabel(this, QStringLiteral("lblNotice"));
    foot->addWidget(lblCount);
    foot->addSpacing(16);
    foot->addWidget(lblPointer);
    foot->addSpacing(16);
    foot->addWidget(lblZoom);
    foot->addSpacing(16);
    foot->addWidget(lblNotice, 1);
    cmdClose = AddButton(foot, this, QStringLiteral("&Close"), QStringLiteral("cmdClose"));
    top->addLayout(foot);

    connect(cmbSystem, &QComboBox::currentIndexChanged, this, [this] {
        if (!m_filling)
            cmbSystem_Click();
    });
    connect(cmbSector, &QComboBox::currentIndexChanged, this, [this] {
        if (!m_filling)
            cmbSector_Click();
    });
    connect(cmdAdd, &QPushButton::clicked, this, &frmMap::cmdAdd_Click);
    connect(cmdEdit, &QPushButton::clicked, this, &frmMap::cmdEdit_Click);
    connect(cmdDelete, &QPushButton::clicked, this, &frmMap::cmdDelete_Click);
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);

    connect(map, &ctlMap::selectionChanged, this, [this](const QString& name) {
        selectInList(name);
        showDetails();
        updateButtons();
    });
    connect(map, &ctlMap::pointActivated, this, &frmMap::cmdEdit_Click);
    connect(map, &ctlMap::deleteRequested, this, &frmMap::cmdDelete_Click);
    connect(map, &ctlMap::placeRequested, this, [this](const QPointF& world) {
        if (m_form && m_form->sector().compare(sector(), Qt::CaseInsensitive) == 0)
            m_form->setPosition(world);
    });
    connect(map, &ctlMap::contextMenuRequested, this, &frmMap::showContextMenu);
    connect(map, &ctlMap::pointerMoved, this, [this](const QPointF& world, bool inside) {
        lblPointer->setText(
            inside ? QStringLiteral("X %1, Y %2")
                         .arg(CoordinateText(std::round(world.x())), CoordinateText(std::round(world.y())))
                   : QString());
    });
    connect(map, &ctlMap::viewChanged, this,
            [this] { lblZoom->setText(QStringLiteral("Zoom %1%").arg(qRound(map->zoomPercent()))); });
    connect(lstLocations, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        if (m_filling || !item)
            return;
        const QString name = item->text(0);
        map->setSelected(name);
        const int i = map->indexOf(name);
        if (i >= 0) {
            const QPointF at(map->points().at(i).x, map->points().at(i).y);
            if (!map->view().visibleWorld().contains(at))
                map->centreOnWorld(at);
        }
    });
    connect(lstLocations, &QTreeWidget::itemDoubleClicked, this,
            [this](QTreeWidgetItem* item) { map->centreOn(item->text(0)); });
    connect(txtDetails, &QTextBrowser::anchorClicked, this,
            [this](const QUrl& url) { openDetailsLink(url.toString(QUrl::FullyEncoded)); });

    fillSystems();
    updateButtons();
    resize(1120, 720);
}

frmMap::~frmMap() {
    // The form goes first, without telling a map that is already half gone.
    if (m_form) {
        disconnect(m_form, nullptr, this, nullptr);
        delete m_form;
    }
}

frmAddLocation* frmMap::locationForm() const {
    return m_form;
}

QString frmMap::sector() const {
    return map->sector();
}

void frmMap::fillSystems() {
    m_filling = true;
    cmbSystem->clear();
    try {
        cmbSystem->addItems(MapSystems());
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("fillSystems"), kForm);
    }
    m_filling = false;
}

void frmMap::fillSectors(const QString& system) {
    m_filling = true;
    cmbSector->clear();
    try {
        cmbSector->addItems(MapSectors(system));
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("fillSectors"), kForm);
    }
    m_filling = false;
}

void frmMap::cmbSystem_Click() {
    fillSectors(cmbSystem->currentText());
    if (cmbSector->count() > 0)
        loadSector(cmbSector->currentText());
}

void frmMap::cmbSector_Click() {
    if (!cmbSector->currentText().isEmpty())
        loadSector(cmbSector->currentText());
}

bool frmMap::showSector(QString sectorName, QString navPoint) {
    QString system;
    try {
        system = SystemOfSector(sectorName);
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("showSector"), kForm);
        return false;
    }
    if (system.isEmpty()) {
        MsgBox("The sector '" + sectorName + "' is not in the database, so there is no map of it.",
               vb::Information, QStringLiteral("Sector Maps"));
        return false;
    }
    fillSystems();
    m_filling = true;
    cmbSystem->setCurrentIndex(cmbSystem->findText(system, Qt::MatchFixedString));
    m_filling = false;
    fillSectors(system);
    m_filling = true;
    cmbSector->setCurrentIndex(cmbSector->findText(sectorName, Qt::MatchFixedString));
    m_filling = false;
    if (!loadSector(cmbSector->currentIndex() >= 0 ? cmbSector->currentText() : sectorName))
        return false;
    if (!navPoint.isEmpty() && !map->centreOn(navPoint))
        lblNotice->setText("'" + navPoint + "' is not charted in " + sector() + ".");
    return true;
}

bool frmMap::loadSector(const QString& sectorName) {
    const bool same = sectorName.compare(sector(), Qt::CaseInsensitive) == 0;
    try {
        map->LoadSector(sectorName, same);
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("LoadSector"), kForm);
        return false;
    }
    setWindowTitle(QStringLiteral("Sector Map: ") + sectorName);
    lblNotice->clear();
    fillList();
    showDetails();
    updateButtons();
    SaveSetting(kSettingSection, kSettingSector, sectorName);
    if (m_form)
        Q_EMIT m_form->placementChanged();
    return true;
}

void frmMap::fillList() {
    m_filling = true;
    lstLocations->setSortingEnabled(false);
    lstLocations->clear();
    QList<QTreeWidgetItem*> items;
    items.reserve(map->points().size());
    for (const NavPoint& p : map->points()) {
        auto* item = new LocationItem(QStringList{p.name, p.type, CoordinateText(p.x), CoordinateText(p.y)});
        item->setIcon(0, NavIcon(p.kind));
        item->setData(2, Qt::UserRole, p.x);
        item->setData(3, Qt::UserRole, p.y);
        item->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
        item->setTextAlignment(3, Qt::AlignRight | Qt::AlignVCenter);
        if (!p.comments.isEmpty())
            item->setToolTip(0, p.comments);
        items.append(item);
    }
    lstLocations->addTopLevelItems(items);
    lstLocations->setSortingEnabled(true);
    m_filling = false;
    const int n = int(map->points().size());
    lblCount->setText(n == 1 ? QStringLiteral("1 location") : QStringLiteral("%1 locations").arg(n));
    selectInList(map->selected());
}

void frmMap::selectInList(const QString& name) {
    m_filling = true;
    QTreeWidgetItem* found = nullptr;
    if (!name.isEmpty()) {
        const auto hits = lstLocations->findItems(name, Qt::MatchFixedString, 0);
        if (!hits.isEmpty())
            found = hits.first();
    }
    lstLocations->setCurrentItem(found);
    if (found)
        lstLocations->scrollToItem(found);
    else
        lstLocations->clearSelection();
    m_filling = false;
}

void frmMap::showDetails() {
    const int i = map->indexOf(map->selected());
    if (i >= 0) {
        txtDetails->setHtml(map->detailsHtml(i, true));
        return;
    }
    // Nothing selected: what the sector holds, and how to work with the map.
    QMap<QString, int> kinds;
    for (const NavPoint& p : map->points())
        ++kinds[p.type.isEmpty() ? QStringLiteral("No type") : p.type];
    QString html = QStringLiteral("<b>%1</b><br>").arg(sector().toHtmlEscaped());
    if (cmbSystem->currentIndex() >= 0)
        html += QStringLiteral("System: %1<br>").arg(cmbSystem->currentText().toHtmlEscaped());
    for (auto it = kinds.cbegin(); it != kinds.cend(); ++it)
        html += QStringLiteral("%1: %2<br>").arg(it.key().toHtmlEscaped()).arg(it.value());
    html += QStringLiteral(
        "<p>Select a location on the map or in the list to see what is there. Rest the pointer on a "
        "location for a summary; drag to pan, use the wheel to zoom. Right-click the map to add a "
        "location where you clicked.</p>");
    txtDetails->setHtml(html);
}

void frmMap::updateButtons() {
    const bool chosen = !map->selected().isEmpty();
    cmdAdd->setEnabled(!sector().isEmpty());
    cmdEdit->setEnabled(chosen);
    cmdDelete->setEnabled(chosen);
}

bool frmMap::openForm() {
    if (m_form) {
        m_form->raise();
        lblNotice->setText(QStringLiteral("Finish or cancel the open location form first."));
        return false;
    }
    m_form = new frmAddLocation(this);
    connect(m_form, &frmAddLocation::saved, this, [this](const QString& sectorName, const QString& name) {
        if (sectorName.compare(sector(), Qt::CaseInsensitive) == 0 && loadSector(sectorName)) {
            map->setSelected(name);
            const int i = map->indexOf(name);
            if (i >= 0 &&
                !map->view().visibleWorld().contains(QPointF(map->points().at(i).x, map->points().at(i).y)))
                map->centreOnWorld(QPointF(map->points().at(i).x, map->points().at(i).y));
        }
    });
    connect(m_form, &frmAddLocation::placementChanged, this, [this] {
        QPointF at;
        if (m_form && m_form->sector().compare(sector(), Qt::CaseInsensitive) == 0 &&
            m_form->currentPosition(&at))
            map->setGhost(at, m_form->currentKind());
        else
            map->clearGhost();
    });
    connect(m_form, &QObject::destroyed, this, &frmMap::formClosed);
    map->setPlacing(true);
    lblNotice->setText(QStringLiteral("Click the map to place the location."));
    return true;
}

void frmMap::formClosed() {
    map->setPlacing(false);
    map->clearGhost();
    lblNotice->clear();
}

void frmMap::addLocationAt(const QPointF& world) {
    if (sector().isEmpty())
        return;
    if (!openForm())
        return;
    m_form->startAdd(sector(), &world);
    m_form->show();
}

void frmMap::cmdAdd_Click() {
    if (sector().isEmpty())
        return;
    if (!openForm())
        return;
    m_form->startAdd(sector());
    m_form->show();
}

void frmMap::cmdEdit_Click() {
    const int i = map->indexOf(map->selected());
    if (i < 0)
        return;
    if (!openForm())
        return;
    m_form->startEdit(map->points().at(i));
    m_form->show();
    Q_EMIT m_form->placementChanged();
}

void frmMap::cmdDelete_Click() {
    const QString name = map->selected();
    if (name.isEmpty())
        return;
    bool deleted = false;
    try {
        deleted = DeleteLocation(sector(), name);
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("cmdDelete_Click"), kForm);
        return;
    }
    if (deleted)
        loadSector(sector());
}

void frmMap::showContextMenu(const QPointF& world, const QString& pointName, const QPoint& globalPos) {
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("mnuMap"));
    if (!pointName.isEmpty()) {
        menu.addAction(QStringLiteral("&Edit Location..."), this, &frmMap::cmdEdit_Click);
        menu.addAction(QStringLiteral("&Delete Location"), this, &frmMap::cmdDelete_Click);
    } else if (!sector().isEmpty()) {
        menu.addAction(QStringLiteral("&Add Location Here..."), this,
                       [this, world] { addLocationAt(world); });
    }
    menu.addSeparator();
    menu.addAction(QStringLiteral("&Centre Here"), this, [this, world] { map->centreOnWorld(world); });
    menu.addAction(QStringLiteral("Show the &Whole Sector"), map, &ctlMap::fitToSector);
    menu.exec(globalPos);
}

void frmMap::openDetailsLink(const QString& href) {
    QString kind, name;
    if (!ParseDetailsLink(href, &kind, &name))
        return;
    if (kind == QLatin1String("station"))
        ViewStation(name);
    else
        ViewMOBInfo(name);
}

namespace {
QPointer<frmMap>& theMap() {
    static QPointer<frmMap> window;
    return window;
}

// The sector shown last, while it still exists; else the first sector of the first system.
QString firstSector() {
    const QString last = GetSetting(QStringLiteral("Settings"), QStringLiteral("MapSector"));
    if (!last.isEmpty() && !SystemOfSector(last).isEmpty())
        return last;
    for (const QString& system : MapSystems()) {
        const QStringList sectors = MapSectors(system);
        if (!sectors.isEmpty())
            return sectors.first();
    }
    return QString();
}
} // namespace

frmMap* MapWindow() {
    return theMap();
}

void OpenMap(const QString& sector, const QString& navPoint) {
    QPointer<frmMap>& window = theMap();
    const bool fresh = !window;
    QString target = sector;
    if (target.isEmpty() && fresh) {
        try {
            target = firstSector();
        } catch (const VbError& e) {
            ReportDBError(e, QStringLiteral("OpenMap"), kForm);
            return;
        }
    }
    if (fresh) {
        window = new frmMap(ViewOwner());
        RegisterChildWindow(window);
    }
    if (!target.isEmpty() && !window->showSector(target, navPoint) && fresh) {
        delete window;
        return;
    }
    if (window->isMinimized())
        window->showNormal();
    window->show();
    window->raise();
    window->activateWindow();
}
