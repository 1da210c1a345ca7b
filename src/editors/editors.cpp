#include "editors/editors.h"

#include "editors/frmaddcomponent.h"
#include "editors/frmaddequip.h"
#include "editors/frmadditem.h"
#include "editors/frmaddmob.h"
#include "editors/frmaddrawmaterials.h"
#include "editors/frmaddstation.h"

const QList<EditorKind>& editorKinds() {
    static const QList<EditorKind> kinds = {
        // The equipment editor (frmAddEquip).
        {QStringLiteral("Equipment"), QStringLiteral("mnuAddEquip"), &OpenEquipmentEditor},

        // The component editor (frmAddComponent).
        {QStringLiteral("Components"), QStringLiteral("mnuAddComps"), &OpenComponentEditor},

        // The raw material editor (frmAddRawMaterials).
        {QStringLiteral("Raw Materials"), QStringLiteral("mnuAddRawMaterial"), &OpenRawMaterialEditor},

        // The item editor (frmAddItem).
        {QStringLiteral("Items"), QStringLiteral("mnuAddItem"), &OpenItemEditor},

        // The MOB editor (frmAddMob).
        {QStringLiteral("MOBs"), QStringLiteral("mnuAddMob"), &OpenMobEditor},

        // The station editor (frmAddStation).
        {QStringLiteral("Stations"), QStringLiteral("mnuAddStation"), &OpenStationEditor},
    };
    return kinds;
}

bool HasEditor(const QString& kind) {
    for (const EditorKind& k : editorKinds())
        if (k.kind == kind)
            return k.open != nullptr;
    return false;
}

void OpenEditor(const QString& kind, const QString& name) {
    for (const EditorKind& k : editorKinds())
        if (k.kind == kind && k.open)
            k.open(name);
}
