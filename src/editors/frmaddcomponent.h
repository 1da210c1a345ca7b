#pragma once
// The component editor: a new component ("Add Component") or an existing one ("Edit: " + name).
// General: name, level, type and subtype (their lists can be edited from here), price and
// manufacturing fee (pop-up menus write the reserved numbers), picture, and the MOBs that drop it;
// Blueprint: the equipment, components, raw materials and items it is built from; Used In: the
// equipment and components built with it; Where to Buy: the stations that sell it; Comments.
//
// The manufacturing fee is only written when an existing component is saved, so it is offered once
// the component exists: a new component's fee box stays disabled and says so.
#include "editors/components.h"
#include "editors/editorwindow.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;
class QToolButton;
class UBGrid;

class frmAddComponent : public EditorWindow {
    Q_OBJECT
public:
    explicit frmAddComponent(QWidget* parent = nullptr);

    // Fills the window from the record (empty name: a new one). False after reporting a failure.
    bool load(const QString& name);

    UBGrid* grid(const QString& widgetName) const;
    // The record as the widgets hold it now.
    comp::Fields fields() const;
    void setPicture(qint32 picture);

    QTabWidget* tabMain = nullptr;
    QLineEdit* txtName = nullptr;
    QComboBox* cmbLevel = nullptr;
    QComboBox *cmbType = nullptr, *cmbSubType = nullptr;
    QToolButton *cmdEditTypes = nullptr, *cmdEditSubTypes = nullptr;
    QLineEdit *txtPrice = nullptr, *txtManufPrice = nullptr;
    QLabel *lblPriceWord = nullptr, *lblManufWord = nullptr;
    QPlainTextEdit* txtComments = nullptr;
    QListWidget* lstBuyLocations = nullptr;
    UBGrid *ubgManuEquip = nullptr, *ubgManuComps = nullptr, *ubgMOBs = nullptr;
    UBGrid *ubgBlueEquip = nullptr, *ubgBlueComps = nullptr, *ubgBlueRawMats = nullptr,
           *ubgBlueItems = nullptr;

    void cmdPicture_Click();
    void cmdBuyLocations_Click();
    // The subtypes follow the type chosen; a subtype the new type also has is kept.
    void cmbType_Click();
    void cmdEditTypes_Click();
    void cmdEditSubTypes_Click();

protected:
    SavePlan savePlan() override;
    QString savedName() const override;
    bool hasChanges() const override;

private:
    QWidget* buildGeneral();
    void fillTypes(const QString& keep, bool keepAlways);
    void fillSubtypes(const QString& keep, bool keepAlways);
    bool recordChanged() const;

    comp::Fields m_loaded;
    qint32 m_picture = 0;
    QString m_loadedBuy;
    QLabel* m_icon = nullptr;
    QLabel* m_title = nullptr;
    QLabel* m_typeLine = nullptr;
    QLabel* m_feeNote = nullptr;
    QPushButton* m_pictureButton = nullptr;
};

// Opens the component editor on a record (an empty name: a new component).
void OpenComponentEditor(const QString& name);
