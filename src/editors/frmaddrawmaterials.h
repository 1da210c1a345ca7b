#pragma once
// The raw material editor: a new raw material ("Add Raw Material") or an existing one ("Edit: " +
// name). General: name, level, price (its pop-up menu writes the reserved prices), picture, and the
// MOBs that drop it; Locations: the stations that sell it and the sectors where it is mined;
// Refined From: the raw materials and items it is made from; Used In: the components, equipment and
// raw materials made from it; Comments.
#include "editors/catalogueeditor.h"
#include "editors/rawmaterials.h"

class frmAddRawMaterials : public CatalogueEditor {
    Q_OBJECT
public:
    explicit frmAddRawMaterials(QWidget* parent = nullptr);

    // Fills the window from the record (empty name: a new one). False after reporting a failure.
    bool load(const QString& name);

    // The record as the widgets hold it now.
    rawmat::Fields fields() const { return pricedFields(); }

    QListWidget* lstMineLocations = nullptr;
    UBGrid *ubgManuComps = nullptr, *ubgManuEquip = nullptr, *ubgManuRawMats = nullptr;
    UBGrid *ubgBlueRawMats = nullptr, *ubgBlueItems = nullptr;

    void cmdMineLocations_Click();

protected:
    SavePlan savePlan() override;

private:
    QWidget* buildLocations();
};

// Opens the raw material editor on a record (an empty name: a new raw material).
void OpenRawMaterialEditor(const QString& name);
