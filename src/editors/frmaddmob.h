#pragma once
// The MOB editor: a new MOB ("New: MOB", named "New MOB" until the user names it) or an existing one
// ("Edit: " + name). The property list prpMOB holds its own fields, statistics, temperament and
// record flags; the tabs hold its comments and its eight grids: attack types, resistances,
// weaknesses, spawn locations, and the equipment, components, raw materials and items it drops.
// The damage-type grids offer the damage type list for editing, the type and faction rows their
// own lists.
#include "editors/editorwindow.h"
#include "editors/mobs.h"

class PropertyListWidget;
class QLabel;
class QPlainTextEdit;
class QTabWidget;
class UBGrid;

class frmAddMob : public EditorWindow {
    Q_OBJECT
public:
    explicit frmAddMob(QWidget* parent = nullptr);

    // The loader: fills the window from the MOB (empty name: a new one) and sets its caption.
    // False after reporting a failure.
    bool load(const QString& name);

    const mob::Edit& edit() const { return m_edit; }

    QLabel *lblName = nullptr, *lblType = nullptr;
    PropertyListWidget* prpMOB = nullptr;
    QTabWidget* tabMOB = nullptr;
    QPlainTextEdit* txtComments = nullptr;
    UBGrid *ubgAttackTypes = nullptr, *ubgResistances = nullptr, *ubgWeaknesses = nullptr,
           *ubgLocations = nullptr, *ubgEquipment = nullptr, *ubgComponents = nullptr,
           *ubgRawMaterials = nullptr, *ubgItems = nullptr;

protected:
    SavePlan savePlan() override;
    QString savedName() const override;
    bool hasChanges() const override;

private:
    void showTitle();

    mob::Edit m_edit;
};

// Opens the MOB editor on a MOB (an empty name: a new MOB).
void OpenMobEditor(const QString& name);
