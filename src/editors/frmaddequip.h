#pragma once
// The equipment editor: a new piece of equipment ("New: " + type) or an existing one ("Edit: " + name).
// General: the property list (name, type, manufacturer, level, quality, prices, the type's statistics,
// the custom fields) and the specials; Blueprint: the equipment, components, raw materials and items
// it is built from; Manufacturing: the equipment and components built from it; Comments; Where to
// Buy: the stations that sell it; MOBs: the MOBs that drop it; Allowed to Use: the classes that may
// fit it. The picture is chosen from the header.
#include "editors/editorwindow.h"
#include "editors/equipment.h"

#include <functional>

class QLabel;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;
class PropertyListWidget;
class UBGrid;

class frmAddEquip : public EditorWindow {
    Q_OBJECT
public:
    explicit frmAddEquip(QWidget* parent = nullptr);

    // Fills the window from the stored record, or for a new record of the type the application
    // proposes (setNewEquipmentType). False after reporting a failure.
    bool load(const QString& name);

    int equipmentType() const { return m_type; }
    qint32 picture() const { return m_picture; }
    void setPicture(qint32 picture);
    // A new record takes another type: the statistics rows follow, the values typed so far stay.
    void setType(int type);

    QTabWidget *tabMain = nullptr, *tabBlueprint = nullptr, *tabManufacturing = nullptr;
    PropertyListWidget* prpList = nullptr;
    QLabel *lblTitle = nullptr, *lblType = nullptr;
    QPlainTextEdit* txtComments = nullptr;
    QListWidget *lstBuyLocations = nullptr, *lstAllowed = nullptr;
    QPushButton *cmdPicture = nullptr, *cmdBuyLocations = nullptr, *cmdAllowed = nullptr;
    UBGrid *ubgBlueEquip = nullptr, *ubgBlueComps = nullptr, *ubgBlueRawMats = nullptr,
           *ubgBlueItems = nullptr;
    UBGrid *ubgManuEquip = nullptr, *ubgManuComps = nullptr, *ubgMOBs = nullptr, *ubgSpecials = nullptr;

    void cmdPicture_Click();
    void cmdBuyLocations_Click();
    void cmdAllowed_Click();

protected:
    SavePlan savePlan() override;
    QString savedName() const override;
    bool hasChanges() const override;

private:
    friend bool EditEquipment(frmAddEquip* w, const QString& name, int type);
    QWidget* buildGeneral();
    QWidget* gridTabs(QTabWidget*& tabs, QLabel*& intro, const QString& name, const QStringList& widgets);
    QWidget* listPage(QListWidget*& list, const QString& listName, QPushButton*& button,
                      const QString& buttonName, const QString& intro);
    void propertyChanged(const QString& key);
    void showTitle();
    void selectFirstEditableRow();
    void setTips();

    int m_type = 0;
    qint32 m_picture = 0, m_loadedPicture = 0;
    QString m_loadedComments;
    QString m_loadedClasses, m_loadedStations;
    QHash<QString, QString> m_loadedValues; // the property values as the window showed them first
    QLabel* m_icon = nullptr;
    QLabel *m_blueprintIntro = nullptr, *m_manufacturingIntro = nullptr;
};

// The loader: the record (or a blank one of the type) into the window, with its property rows,
// comments, picture, lists and grids, and the caption "Edit: " + name or "New: " + type. Errors are
// reported ("EditEquipment", "Module modMain"); false then.
bool EditEquipment(frmAddEquip* w, const QString& name, int type);

// Opens the equipment editor on a record (an empty name: a new piece of equipment).
void OpenEquipmentEditor(const QString& name);
// The type a new piece of equipment starts as (the main list's type filter); Beam without one or when
// it answers with no real type.
void setNewEquipmentType(std::function<int()> source);
int newEquipmentType();
