#include "editors/editors.h"

#include "editors/frmaddrawmaterials.h"

const QList<EditorKind>& editorKinds() {
    static const QList<EditorKind> kinds = {
        // The equipment editor (frmAddEquip).
        {QStringLiteral("Equipment"), QStringLiteral("mnuAddEquip"), nullptr},

        // The component editor (frmAddComponent).
        {QStringLiteral("Components"), QStringLiteral("mnuAddComps"), nullptr},

        // The raw material editor (frmAddRawMaterials).
        {QStringLiteral("Raw Materials"), QStringLiteral("mnuAddRawMaterial"), &OpenRawMaterialEditor},

        // The item editor (frmAddItem).
        {QStringLiteral("Items"), QStringLiteral("mnuAddItem"), nullptr},

        // The MOB editor (frmAddMob).
        {QStringLiteral("MOBs"), QString(), nullptr},
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
