#pragma once
// The station editor: a new station ("Add Station") or an existing one ("Edit: " + name). General:
// name, the sector it is in (its system shown beside it), the terminals found there; Sells: the
// equipment, components, raw materials and items it sells, each list changed through the pick
// dialog; Comments. A station needs a sector: the station list joins stations to their sectors.
#include "editors/editorwindow.h"
#include "editors/stations.h"

#include <QHash>

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QTabWidget;
class UBGrid;

class frmAddStation : public EditorWindow {
    Q_OBJECT
public:
    explicit frmAddStation(QWidget* parent = nullptr);

    // Fills the window from the record (empty name: a new one). False after reporting a failure.
    bool load(const QString& name);

    station::Fields fields() const;
    // The list of what the station sells of a kind, by its widget name ("lstSellsItems").
    QListWidget* sellsList(const QString& widget) const;

    QTabWidget* tabMain = nullptr;
    QLineEdit* txtName = nullptr;
    QComboBox* cmbSector = nullptr;
    QLabel* lblSystem = nullptr;
    QPlainTextEdit* txtComments = nullptr;
    UBGrid* ubgTerminals = nullptr;

    // Shows the pick dialog for one kind of record sold (its list's widget name).
    void cmdSells_Click(const QString& widget);

protected:
    SavePlan savePlan() override;
    QString savedName() const override;
    bool hasChanges() const override;

private:
    QWidget* buildGeneral();
    QWidget* buildSells();
    void showSystem();
    bool recordChanged() const;

    station::Fields m_loaded;
    QHash<QString, QString> m_loadedSells; // widget -> joined entries at load
    QHash<QString, QString> m_systems;     // sector -> system
    QLabel* m_icon = nullptr;
    QLabel* m_title = nullptr;
    QLabel* m_typeLine = nullptr;
};

// Opens the station editor on a record (an empty name: a new station).
void OpenStationEditor(const QString& name);
