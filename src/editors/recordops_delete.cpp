// Removing a record's link rows, kind by kind, and the equipment deletion with its statistics row.
#include "editors/recordops.h"
#include "editors/recordops_p.h"

#include "data/database.h"
#include "data/errorreport.h"
#include "data/quotes.h"
#include "views/equiptypes.h"

namespace recordops {

bool supported(const QString& kind) {
    return kind == Equipment || kind == Components || kind == RawMaterials || kind == Items || kind == MOBs;
}

QStringList relationshipDeletes(const QString& kind, const QString& name) {
    const QString n = FixQuotes(name);
    auto where = [&n](const char* head) { return QLatin1String(head) + n + QLatin1Char('\''); };
    // The two ends of a self-referencing table.
    auto both = [&n](const char* head, const char* second) {
        return QLatin1String(head) + n + QLatin1String(second) + n + QLatin1Char('\'');
    };
    if (kind == Components)
        return {where("DELETE FROM BUY_COMPONENT_LOCATIONS WHERE COMPONENTS_COMPONENT = '"),
                where("DELETE FROM EQUIPMENTS_COMPONENTS WHERE COMPONENTS_COMPONENT = '"),
                where("DELETE FROM COMPONENTS_RAW_MATERIALS WHERE COMPONENTS_COMPONENT ='"),
                where("DELETE FROM MOB_COMP_DROP WHERE COMPONENT_NAME = '"),
                where("DELETE FROM COMPONENTS_ITEMS WHERE COMPONENT_NAME = '"),
                both("DELETE FROM COMPONENTS_UPGRADE_FROM WHERE COMPONENT_NAME = '", "' OR UPGRADE_FROM = '"),
                where("DELETE FROM COMPONENTS_EQUIPMENTS WHERE COMPONENT_NAME = '")};
    if (kind == Equipment)
        return {where("DELETE FROM EQUIPMENT_CLASS WHERE EQUIPMENTS_EQUIPMENT = '"),
                where("DELETE FROM BUY_EQUIPMENT_LOCATION WHERE EQUIPMENTS_EQUIPMENT = '"),
                where("DELETE FROM EQUIPMENTS_COMPONENTS WHERE EQUIPMENTS_EQUIPMENT = '"),
                where("DELETE FROM EQUIP_SPECIALS WHERE EQUIPMENT_NAME = '"),
                where("DELETE FROM EQUIPMENTS_ITEMS WHERE EQUIPMENTS_EQUIPMENT = '"),
                where("DELETE FROM EQUIPMENTS_RAW_MATERIALS WHERE EQUIPMENTS_EQUIPMENT = '"),
                where("DELETE FROM MOB_EQUIP_DROP WHERE EQUIPMENT_NAME = '"),
                both("DELETE FROM EQUIPMENTS_UPGRADE_FROM WHERE EQUIPMENT_NAME = '", "' OR UPGRADE_FROM = '"),
                where("DELETE FROM COMPONENTS_EQUIPMENTS WHERE EQUIPMENT_NAME = '")};
    if (kind == Items)
        return {where("DELETE FROM BUY_ITEM_LOCATIONS WHERE ITEM_NAME = '"),
                where("DELETE FROM EQUIPMENTS_ITEMS WHERE ITEM_NAME = '"),
                where("DELETE FROM MOB_ITEM_DROP WHERE ITEM_NAME = '"),
                where("DELETE FROM COMPONENTS_ITEMS WHERE ITEM_NAME = '"),
                where("DELETE FROM RAW_MATERIALS_ITEMS WHERE ITEM_NAME = '")};
    if (kind == MOBs)
        return {where("DELETE FROM MOBS_LOCATION WHERE MOB_NAME = '"),
                where("DELETE FROM MOB_ATTACK_TYPE WHERE MOB_NAME = '"),
                where("DELETE FROM MOB_COMP_DROP WHERE MOB_NAME = '"),
                where("DELETE FROM MOB_EQUIP_DROP WHERE MOB_NAME = '"),
                where("DELETE FROM MOB_ITEM_DROP WHERE MOB_NAME = '"),
                where("DELETE FROM MOB_RAW_MAT_DROP WHERE MOB_NAME = '"),
                where("DELETE FROM MOB_RESISTANCE WHERE MOB_NAME = '"),
                where("DELETE FROM MOB_WEAKNESS WHERE MOB_NAME = '")};
    if (kind == RawMaterials)
        return {where("DELETE FROM BUY_RAW_MATERIAL_LOCATIONS WHERE RAW_MATERIAL = '"),
                where("DELETE FROM COMPONENTS_RAW_MATERIALS WHERE RAW_MATERIAL = '"),
                where("DELETE FROM MINE_LOCATIONS WHERE RAW_MATERIAL = '"),
                where("DELETE FROM EQUIPMENTS_RAW_MATERIALS WHERE RAW_MATERIAL_NAME = '"),
                where("DELETE FROM MOB_RAW_MAT_DROP WHERE RAW_MATERIAL_NAME = '"),
                both("DELETE FROM RAW_MATERIALS_REFINES_FROM WHERE RAW_MATERIAL_NAME = '",
                     "' OR REFINES_FROM = '"),
                where("DELETE FROM RAW_MATERIALS_ITEMS WHERE RAW_MATERIAL_NAME = '")};
    return {};
}

// Runs a list of statements as one step of a routine: all of them, or (with the routine's own
// transaction) none.
bool runAll(const QStringList& statements, const QString& procedure) {
    ChangeScope scope;
    try {
        for (const QString& sql : statements)
            db().execute(sql);
        scope.commit();
        return true;
    } catch (const VbError& e) {
        scope.rollback();
        ReportDBError(e, procedure, ModuleName);
    } catch (const std::exception& e) {
        scope.rollback();
        ReportDBError(e, procedure, ModuleName);
    }
    return false;
}

} // namespace recordops

using namespace recordops;

bool recordops::deleteRelationships(const QString& kind, const QString& name) {
    if (kind == Components)
        return DeleteComponentRelationships(name);
    if (kind == Equipment)
        return DeleteEquipmentRelationships(name);
    if (kind == Items)
        return DeleteItemRelationships(name);
    if (kind == MOBs)
        return DeleteMOBRelationships(name);
    if (kind == RawMaterials)
        return DeleteRawMaterialRelationships(name);
    return false;
}

bool DeleteComponentRelationships(const QString& name) {
    return runAll(relationshipDeletes(Components, name), QStringLiteral("DeleteComponentRelationships"));
}

bool DeleteEquipmentRelationships(const QString& name) {
    const bool done =
        runAll(relationshipDeletes(Equipment, name), QStringLiteral("DeleteEquipmentRelationships"));
    // Prepared and never run: ammunition statistics go with the equipment deletion, like every
    // other type's statistics.
    [[maybe_unused]] const QString ammunition = QStringLiteral("DELETE FROM AMO_STATS WHERE EQUIPMENTS");
    return done;
}

bool DeleteItemRelationships(const QString& name) {
    return runAll(relationshipDeletes(Items, name), QStringLiteral("DeleteItemRelationships"));
}

bool DeleteMOBRelationships(const QString& name) {
    return runAll(relationshipDeletes(MOBs, name), QStringLiteral("DeleteItemRelationships"));
}

bool DeleteRawMaterialRelationships(const QString& name) {
    return runAll(relationshipDeletes(RawMaterials, name), QStringLiteral("DeleteRawMaterialRelationships"));
}

bool DeleteEquipment(const QString& name, const QString& typeText) {
    ChangeScope scope;
    if (!DeleteEquipmentRelationships(name))
        return false;
    QStringList statements;
    const QString n = FixQuotes(name);
    // Devices have no statistics table.
    if (typeText.compare(QLatin1String("Device"), Qt::CaseInsensitive) != 0) {
        // Read through the type index, so that a type word such as "Heavy Shield" finds its table.
        const QString stats = GetStatTable(DeEnumerate(Enumerate(typeText)));
        if (!stats.isEmpty())
            statements << QStringLiteral("DELETE FROM ") + stats +
                              QStringLiteral(" WHERE EQUIPMENT_NAME = '") + n + QLatin1Char('\'');
    }
    statements << QStringLiteral("DELETE FROM EQUIPMENTS WHERE EQUIPMENT_NAME = '") + n + QLatin1Char('\'');
    if (!runAll(statements, QStringLiteral("DeleteEquipment")))
        return false;
    scope.commit();
    return true;
}
