#pragma once
// The sector map window: choose a system and one of its sectors, see its locations on the map and in
// a list beside it with what is found at the one selected, and add, change or delete locations. One
// map window serves the whole program; asking for another sector shows it there.
#include <QPointF>
#include <QPointer>
#include <QWidget>

class QComboBox;
class QLabel;
class QPushButton;
class QTextBrowser;
class QTreeWidget;
class ctlMap;
class frmAddLocation;

class frmMap : public QWidget {
    Q_OBJECT
public:
    explicit frmMap(QWidget* parent = nullptr);
    ~frmMap() override;

    // Shows a sector, the choosers following it; centred on navPoint when one is named. A sector that
    // is not in the database is refused with a box. Reports its errors; false when nothing was shown.
    // Taken by value: the names may come from the map's own points, which are read again here.
    bool showSector(QString sector, QString navPoint = QString());
    QString sector() const;

    void cmbSystem_Click();
    void cmbSector_Click();
    void cmdAdd_Click();
    void cmdEdit_Click();
    void cmdDelete_Click();
    // The location form at a position of the map (the map's "Add Location Here").
    void addLocationAt(const QPointF& world);
    // The open location form, if any.
    frmAddLocation* locationForm() const;

    QComboBox* cmbSystem = nullptr;
    QComboBox* cmbSector = nullptr;
    ctlMap* map = nullptr;
    QTreeWidget* lstLocations = nullptr;
    QTextBrowser* txtDetails = nullptr;
    QPushButton *cmdAdd = nullptr, *cmdEdit = nullptr, *cmdDelete = nullptr, *cmdClose = nullptr;
    QLabel* lblCount = nullptr;
    QLabel* lblPointer = nullptr;
    QLabel* lblZoom = nullptr;
    QLabel* lblNotice = nullptr;

private:
    void fillSystems();
    void fillSectors(const QString& system);
    bool loadSector(const QString& sector);
    void fillList();
    void showDetails();
    void selectInList(const QString& name);
    // Makes the location form; while one is open it is brought forward instead and false comes back.
    bool openForm();
    void formClosed();
    void updateButtons();
    void showContextMenu(const QPointF& world, const QString& pointName, const QPoint& globalPos);
    void openDetailsLink(const QString& href);

    QPointer<frmAddLocation> m_form;
    bool m_filling = false;
};

// Opens the map window, or brings it forward, on a sector (the one last shown, or the first, when
// none is named), centred on a navigation point when one is named.
void OpenMap(const QString& sector = QString(), const QString& navPoint = QString());
// The map window while it is open, else nullptr.
frmMap* MapWindow();
