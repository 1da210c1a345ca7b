#pragma once
// The component, raw-material, item and station views: one window class, laid out by kind. Each shows
// the record's fields and icon, where it is bought (stations) or mined (sectors), its build tree, what
// it is used in and the MOBs that drop it; a station shows its sector, system, terminals and what it
// sells. Read-only, filled once when opened.
#include <QWidget>

class QFormLayout;
class QLabel;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;
class QTreeWidget;
class Recordset;
class TreeWidgetSink;

class frmRecordView : public QWidget {
    Q_OBJECT
public:
    enum Kind { Component, RawMaterial, Item, Station };

    frmRecordView(Kind kind, QWidget* parent = nullptr);
    ~frmRecordView() override;

    // "Component: Name" and the like: the window's identity.
    static QString captionFor(Kind kind, const QString& name);
    // Fills the window; throws on a failed statement or a missing record, keeping what was filled.
    void load(const QString& name);
    bool headerLoaded() const { return m_headerLoaded; }

    QLabel* lblType = nullptr;
    QTabWidget* tabRecord = nullptr;
    QListWidget* lstBuyLocations = nullptr;  // stations that sell it
    QListWidget* lstMineLocations = nullptr; // raw materials: sectors where it is mined
    QListWidget* lstTerminals = nullptr;     // stations
    QTreeWidget* treBlueprint = nullptr;
    QTreeWidget* treUsedIn = nullptr; // for a station: what it sells
    QTreeWidget* treMOBs = nullptr;
    QPlainTextEdit* txtComments = nullptr;
    QPushButton *cmdEdit = nullptr, *cmdBuildView = nullptr, *cmdClose = nullptr;
    QPushButton* cmdMap = nullptr; // stations: the sector's map, centred on the station

    // The caption and value of the field rows, in order, for tests and printing.
    QList<QPair<QString, QString>> fields() const;

private:
    QString formName() const;
    QString procedureName() const;
    void addField(const QString& caption, const QString& value);
    void addRemainingColumns(Recordset& rs, const QStringList& skip);
    void loadComponent(Recordset& rs);
    void loadRawMaterial(Recordset& rs);
    void loadItem(Recordset& rs);
    void loadStation(Recordset& rs);
    void PopulateMOBs(const QString& name);

    Kind m_kind;
    QString m_name;
    QString m_sector; // stations
    bool m_headerLoaded = false;
    QLabel* m_icon = nullptr;
    QLabel* m_title = nullptr;
    QFormLayout* m_form = nullptr;
    QList<QPair<QString, QString>> m_fields;
    TreeWidgetSink *m_blueprint = nullptr, *m_usedIn = nullptr, *m_mobs = nullptr;
};
