#pragma once
// The component editor: a new component ("Add Component") or an existing one ("Edit: " + name).
// General: name, level, type and subtype (their lists can be edited from here), price and
// manufacturing fee (pop-up menus write the reserved numbers), picture, and the MOBs that drop it;
// Blueprint: the equipment, components, raw materials and items it is built from; Used In: the
// equipment and components built with it; Where to Buy: the stations that sell it; Comments.
//
// The manufacturing fee is only written when an existing component is saved, so it is offered once
// the component exists: a new component's fee box stays disabled and says so.
#include "editors/catalogueeditor.h"
#include "editors/components.h"

class QToolButton;

class frmAddComponent : public CatalogueEditor {
    Q_OBJECT
public:
    explicit frmAddComponent(QWidget* parent = nullptr);

    // Fills the window from the record (empty name: a new one). False after reporting a failure.
    bool load(const QString& name);

    // The record as the widgets hold it now.
    comp::Fields fields() const;

    QComboBox *cmbType = nullptr, *cmbSubType = nullptr;
    QToolButton *cmdEditTypes = nullptr, *cmdEditSubTypes = nullptr;
    QLineEdit* txtManufPrice = nullptr;
    QLabel* lblManufWord = nullptr;
    UBGrid *ubgManuEquip = nullptr, *ubgManuComps = nullptr;
    UBGrid *ubgBlueEquip = nullptr, *ubgBlueComps = nullptr, *ubgBlueRawMats = nullptr,
           *ubgBlueItems = nullptr;

    // The subtypes follow the type chosen; a subtype the new type also has is kept.
    void cmbType_Click();
    void cmdEditTypes_Click();
    void cmdEditSubTypes_Click();

protected:
    SavePlan savePlan() override;
    bool recordChanged() const override;

private:
    void addTypeRows(QWidget* page, QFormLayout* form);
    void addFeeRow(QWidget* page, QFormLayout* form);
    void fillTypes(const QString& keep, bool keepAlways);
    void fillSubtypes(const QString& keep, bool keepAlways);

    comp::Fields m_loaded;
    QLabel* m_feeNote = nullptr;
};

// Opens the component editor on a record (an empty name: a new component).
void OpenComponentEditor(const QString& name);
