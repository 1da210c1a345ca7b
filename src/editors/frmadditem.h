#pragma once
// The item editor: a new item ("Add Item") or an existing one ("Edit: " + name). General: name,
// level, price (its pop-up menu writes the reserved prices), picture, and the MOBs that drop it;
// Used In: the equipment, components and raw materials made with it; Where to Buy: the stations that
// sell it; Comments. The record is written through an updatable result set.
#include "editors/catalogueeditor.h"
#include "editors/items.h"

class frmAddItem : public CatalogueEditor {
    Q_OBJECT
public:
    explicit frmAddItem(QWidget* parent = nullptr);

    // Fills the window from the record (empty name: a new one). False after reporting a failure.
    bool load(const QString& name);

    item::Fields fields() const { return pricedFields(); }

    UBGrid *ubgManuEquip = nullptr, *ubgManuComps = nullptr, *ubgManuRawMats = nullptr;

protected:
    SavePlan savePlan() override;
};

// Opens the item editor on a record (an empty name: a new item).
void OpenItemEditor(const QString& name);
