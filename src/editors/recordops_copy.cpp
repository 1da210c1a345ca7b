// Copying a record with its link rows, and renaming as a copy followed by a deletion.
#include "editors/recordops.h"
#include "editors/recordops_p.h"

#include "core/clock.h"
#include "data/errorreport.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "views/equiptypes.h"

#include <QVariant>
#include <functional>

namespace recordops {

QList<LinkEnd> copyList(const QString& kind) {
    if (kind == Components)
        return {{"COMPONENTS_COMPONENT", "BUY_COMPONENT_LOCATIONS"},
                {"COMPONENTS_COMPONENT", "EQUIPMENTS_COMPONENTS"},
                {"COMPONENTS_COMPONENT", "COMPONENTS_RAW_MATERIALS"},
                {"COMPONENT_NAME", "MOB_COMP_DROP"},
                {"COMPONENT_NAME", "COMPONENTS_ITEMS"},
                {"UPGRADE_FROM", "COMPONENTS_UPGRADE_FROM"},
                {"COMPONENT_NAME", "COMPONENTS_UPGRADE_FROM"},
                {"COMPONENT_NAME", "COMPONENTS_EQUIPMENTS"}};
    if (kind == Equipment)
        return {{"EQUIPMENTS_EQUIPMENT", "EQUIPMENT_CLASS"},
                {"EQUIPMENTS_EQUIPMENT", "BUY_EQUIPMENT_LOCATION"},
                {"EQUIPMENTS_EQUIPMENT", "EQUIPMENTS_COMPONENTS"},
                {"EQUIPMENT_NAME", "EQUIP_SPECIALS"},
                {"EQUIPMENTS_EQUIPMENT", "EQUIPMENTS_ITEMS"},
                {"EQUIPMENTS_EQUIPMENT", "EQUIPMENTS_RAW_MATERIALS"},
                {"EQUIPMENT_NAME", "MOB_EQUIP_DROP"},
                {"UPGRADE_FROM", "EQUIPMENTS_UPGRADE_FROM"},
                {"EQUIPMENT_NAME", "EQUIPMENTS_UPGRADE_FROM"},
                {"EQUIPMENT_NAME", "COMPONENTS_EQUIPMENTS"}};
    if (kind == Items)
        return {{"ITEM_NAME", "EQUIPMENTS_ITEMS"},
                {"ITEM_NAME", "MOB_ITEM_DROP"},
                {"ITEM_NAME", "BUY_ITEM_LOCATIONS"},
                {"ITEM_NAME", "COMPONENTS_ITEMS"},
                {"ITEM_NAME", "RAW_MATERIALS_ITEMS"}};
    if (kind == MOBs)
        return {{"MOB_NAME", "MOBS_LOCATION"},  {"MOB_NAME", "MOB_ATTACK_TYPE"},
                {"MOB_NAME", "MOB_COMP_DROP"},  {"MOB_NAME", "MOB_EQUIP_DROP"},
                {"MOB_NAME", "MOB_ITEM_DROP"},  {"MOB_NAME", "MOB_RAW_MAT_DROP"},
                {"MOB_NAME", "MOB_RESISTANCE"}, {"MOB_NAME", "MOB_WEAKNESS"}};
    if (kind == RawMaterials)
        return {{"RAW_MATERIAL", "BUY_RAW_MATERIAL_LOCATIONS"},
                {"RAW_MATERIAL_NAME", "EQUIPMENTS_RAW_MATERIALS"},
                {"RAW_MATERIAL", "COMPONENTS_RAW_MATERIALS"},
                {"RAW_MATERIAL", "MINE_LOCATIONS"},
                {"RAW_MATERIAL_NAME", "MOB_RAW_MAT_DROP"},
                {"REFINES_FROM", "RAW_MATERIALS_REFINES_FROM"},
                {"RAW_MATERIAL_NAME", "RAW_MATERIALS_REFINES_FROM"},
                {"RAW_MATERIAL_NAME", "RAW_MATERIALS_ITEMS"}};
    return {};
}

namespace {

// The record's own row (for equipment and MOBs a join with its statistics row) written again under
// the new name. Every field whose base column is the kind's name column takes the new name, so the
// statistics row of a join follows the record.
void copyRecordRow(const QString& query, const QString& nameColumn, const QString& newName) {
    Recordset rs;
    rs.open(query, db(), Recordset::Dynamic);
    if (rs.eof())
        throw NoCurrentRecord();
    const int fields = rs.fieldCount();
    QList<QVariant> values(fields);
    for (int i = 0; i < fields; ++i)
        values[i] = rs.value(i);
    rs.addNew();
    for (int i = 0; i < fields; ++i) {
        const QString base = rs.baseColumnName(i);
        if (base.isEmpty()) // a computed column has nowhere to go
            continue;
        rs.setValue(i, base.compare(nameColumn, Qt::CaseInsensitive) == 0 ? QVariant(newName) : values[i]);
    }
    rs.setValue(QStringLiteral("PERSONAL_DB"), true);
    rs.setValue(QStringLiteral("UPDATED"), true);
    rs.setValue(QStringLiteral("LAST_UPDATED"), Now());
    rs.update();
    rs.close();
}

bool copyKind(const QString& kind, const QString& procedure, const QString& query, const QString& nameColumn,
              const QString& oldName, const QString& newName, bool withLinks) {
    ChangeScope scope;
    try {
        copyRecordRow(query, nameColumn, newName);
    } catch (const VbError& e) {
        scope.rollback();
        ReportDBError(e, procedure, ModuleName);
        return false;
    } catch (const std::exception& e) {
        scope.rollback();
        ReportDBError(e, procedure, ModuleName);
        return false;
    }
    if (withLinks)
        for (const LinkEnd& end : copyList(kind))
            if (!CopyRows(end.table, end.keyColumn, oldName, newName))
                return false;
    scope.commit();
    return true;
}

QString quoted(const QString& name) {
    return FixQuotes(name) + QLatin1Char('\'');
}

// Removes the old record once its copy exists: its link rows with the kind's own deletion routine,
// then the record itself.
bool renameKind(const QString& kind, const QString& procedure, const QString& oldName,
                const std::function<bool()>& copy, const QStringList& deletes) {
    ChangeScope scope;
    if (!copy() || !deleteRelationships(kind, oldName) || !runAll(deletes, procedure))
        return false;
    scope.commit();
    return true;
}

} // namespace
} // namespace recordops

using namespace recordops;

bool CopyRows(const QString& table, const QString& keyColumn, const QString& oldName,
              const QString& newName) {
    ChangeScope scope;
    try {
        Recordset rs;
        rs.open(QStringLiteral("SELECT * FROM ") + table + QStringLiteral(" WHERE ") + keyColumn +
                    QStringLiteral(" = '") + quoted(oldName),
                db(), Recordset::Dynamic);
        // The rows are read before any is added, so that a new row is never copied again.
        QList<QList<QVariant>> rows;
        for (; !rs.eof(); rs.moveNext()) {
            QList<QVariant> row(rs.fieldCount());
            for (int i = 0; i < rs.fieldCount(); ++i)
                row[i] = rs.value(i);
            rows.append(row);
        }
        const int key = rs.fieldIndex(keyColumn);
        for (const QList<QVariant>& row : std::as_const(rows)) {
            rs.addNew();
            for (int i = 0; i < row.size(); ++i)
                rs.setValue(i, i == key ? QVariant(newName) : row[i]);
            rs.update();
        }
        rs.close();
        scope.commit();
        return true;
    } catch (const VbError& e) {
        scope.rollback();
        ReportDBError(e, QStringLiteral("CopyRows"), ModuleName);
    } catch (const std::exception& e) {
        scope.rollback();
        ReportDBError(e, QStringLiteral("CopyRows"), ModuleName);
    }
    return false;
}

bool CopyComponent(const QString& oldName, const QString& newName, bool withLinks) {
    return copyKind(Components, QStringLiteral("CopyComponent"),
                    QStringLiteral("SELECT * FROM COMPONENTS WHERE COMPONENT_NAME = '") + quoted(oldName),
                    QStringLiteral("COMPONENT_NAME"), oldName, newName, withLinks);
}

bool CopyEquipment(const QString& oldName, const QString& newName, int typeIndex, bool withLinks) {
    // The query the editor writes through: every stored column of the record and of its statistics
    // row, the statistics row's own name as STAT_NAME, and ammunition without its launch type (which
    // belongs to the ammunition type, not to the record).
    const QString query = GetSQL(typeIndex, true, true, true, true, QString(), true) +
                          QStringLiteral(" AND EQUIPMENTS.EQUIPMENT_NAME = '") + quoted(oldName);
    return copyKind(Equipment, QStringLiteral("CopyEquipment"), query, QStringLiteral("EQUIPMENT_NAME"),
                    oldName, newName, withLinks);
}

bool CopyItem(const QString& oldName, const QString& newName, bool withLinks) {
    return copyKind(Items, QStringLiteral("CopyItem"),
                    QStringLiteral("SELECT * FROM ITEMS WHERE ITEM_NAME = '") + quoted(oldName),
                    QStringLiteral("ITEM_NAME"), oldName, newName, withLinks);
}

bool CopyMOB(const QString& oldName, const QString& newName, bool withLinks) {
    return copyKind(MOBs, QStringLiteral("CopyMOB"),
                    QStringLiteral("SELECT * FROM MOBS INNER JOIN MOB_STATS ON MOBS.MOB_NAME = "
                                   "MOB_STATS.MOB_NAME WHERE MOB_STATS.MOB_NAME = '") +
                        quoted(oldName),
                    QStringLiteral("MOB_NAME"), oldName, newName, withLinks);
}

bool CopyRawMaterial(const QString& oldName, const QString& newName, bool withLinks) {
    return copyKind(RawMaterials, QStringLiteral("CopyRawMaterial"),
                    QStringLiteral("SELECT * FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME = '") +
                        quoted(oldName),
                    QStringLiteral("RAW_MATERIAL_NAME"), oldName, newName, withLinks);
}

bool RenameComponent(const QString& oldName, const QString& newName) {
    return renameKind(Components, QStringLiteral("RenameComponent"), oldName,
                      [&] { return CopyComponent(oldName, newName); },
                      {QStringLiteral("DELETE FROM COMPONENTS WHERE COMPONENT_NAME = '") + quoted(oldName)});
}

bool RenameEquipment(const QString& oldName, const QString& newName, int typeIndex) {
    ChangeScope scope;
    if (!CopyEquipment(oldName, newName, typeIndex) || !DeleteEquipmentRelationships(oldName) ||
        !DeleteEquipment(oldName, DeEnumerate(typeIndex)))
        return false;
    scope.commit();
    return true;
}

bool RenameItem(const QString& oldName, const QString& newName) {
    return renameKind(Items, QStringLiteral("RenameItem"), oldName,
                      [&] { return CopyItem(oldName, newName); },
                      {QStringLiteral("DELETE FROM ITEMS WHERE ITEM_NAME = '") + quoted(oldName)});
}

bool RenameMOB(const QString& oldName, const QString& newName) {
    return renameKind(MOBs, QStringLiteral("RenameMOB"), oldName, [&] { return CopyMOB(oldName, newName); },
                      {QStringLiteral("DELETE FROM MOB_STATS WHERE MOB_NAME = '") + quoted(oldName),
                       QStringLiteral("DELETE FROM MOBS WHERE MOB_NAME = '") + quoted(oldName)});
}

bool RenameRawMaterial(const QString& oldName, const QString& newName) {
    return renameKind(
        RawMaterials, QStringLiteral("RenameRawMaterial"), oldName,
        [&] { return CopyRawMaterial(oldName, newName); },
        {QStringLiteral("DELETE FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME = '") + quoted(oldName)});
}
