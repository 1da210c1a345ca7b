#pragma once
// The equipment detail view: one equipment with its statistics, ammunition, buy locations, allowed
// classes, blueprint, the MOBs that drop it and its specials. Read-only, filled once when opened.
#include <QList>
#include <QWidget>

class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;
class QToolButton;
class QTreeWidget;
class TreeWidgetSink;

class frmEquipment : public QWidget {
    Q_OBJECT
public:
    static constexpr int StatSlots = 9;

    explicit frmEquipment(QWidget* parent = nullptr);
    ~frmEquipment() override;

    // Fills the window (the steps of ViewEquipDetails after the caption check). Throws on a failed
    // statement or a missing record; what was filled before stays.
    void load(const QString& name, int typeIndex, const QString& typeName);
    QString equipmentName() const { return m_name; }
    // True once the record's own row was read, so that a later failure leaves a useful window.
    bool headerLoaded() const { return m_headerLoaded; }

    void PopulateMOBs(const QString& name);

    // Controls the rest of the program and the tests address by name.
    QLabel* lblType = nullptr;
    QTabWidget* tabEquipment = nullptr;
    QLineEdit* txtSpecData[StatSlots] = {};
    QLabel* lblSpecData[StatSlots] = {};
    QListWidget* lstAmmo = nullptr;
    QListWidget* lstBuyLocations = nullptr;
    QListWidget* lstAllowed = nullptr;
    QTreeWidget* treBlueprint = nullptr;
    QTreeWidget* treMOBs = nullptr;
    QTreeWidget* treSpecials = nullptr;
    QLineEdit *txtAmmoName = nullptr, *txtAmmoDamage = nullptr, *txtAmmoRange = nullptr,
              *txtAmmoManeuverability = nullptr, *txtDamagePerSecond = nullptr, *txtAmmoEfficiency = nullptr;
    QLabel *lblAmmoRange = nullptr, *lblAmmoManeuverability = nullptr;
    QLineEdit *txtManufacturer = nullptr, *txtQuality = nullptr, *txtLastUpdated = nullptr,
              *txtPurchasePrice = nullptr, *txtManufFee = nullptr, *txtPMPrice = nullptr, *txtSRP = nullptr;
    QLineEdit* txtCustom[3] = {};
    QLabel* lblCustom[3] = {};
    QPlainTextEdit* txtComments = nullptr;
    QPushButton *cmdEdit = nullptr, *cmdPrint = nullptr, *cmdClose = nullptr;
    QToolButton* tbAmmoView = nullptr;

    void lstAmmo_Click();

private:
    void buildLayout();
    QWidget* attributesPage();
    QWidget* pricesPage();
    QWidget* commentsPage();
    QWidget* otherPage();
    QWidget* ammoPage();
    QWidget* specialsPage();
    void fillHeader(class Recordset& rs);
    void fillStatistics(class Recordset& rs);
    void fillAmmoList();
    void fillSpecials();
    void setTooltips();
    void cmdEdit_Click();
    void cmdPrint_Click();

    QString m_name;
    int m_type = 0;
    QString m_typeName;
    bool m_headerLoaded = false;
    QLabel* m_icon = nullptr;
    QLabel* m_title = nullptr;
    QWidget* m_statsPanel = nullptr;
    QWidget* m_ammoPage = nullptr;
    QWidget* m_specialsPage = nullptr;
    TreeWidgetSink* m_blueprint = nullptr;
    TreeWidgetSink* m_mobs = nullptr;
};
