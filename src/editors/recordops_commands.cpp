// The main window's Delete, Copy and Rename, each as one transaction.
#include "editors/recordops.h"
#include "editors/recordops_p.h"

#include "core/prompt.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "views/equiptypes.h"

#include <QRandomGenerator>

using namespace recordops;

namespace {

QString quotedName(const QString& name) {
    return FixQuotes(name) + QLatin1Char('\'');
}

bool deleteOne(const QString& kind, const QString& name) {
    if (kind == Equipment)
        return DeleteEquipment(name, DeEnumerate(FindType(name)));
    QStringList deletes;
    if (kind == Components)
        deletes << QStringLiteral("DELETE FROM COMPONENTS WHERE COMPONENT_NAME = '") + quotedName(name);
    else if (kind == RawMaterials)
        deletes << QStringLiteral("DELETE FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME = '") + quotedName(name);
    else if (kind == Items)
        deletes << QStringLiteral("DELETE FROM ITEMS WHERE ITEM_NAME = '") + quotedName(name);
    else if (kind == MOBs)
        deletes << QStringLiteral("DELETE FROM MOB_STATS WHERE MOB_NAME = '") + quotedName(name)
                << QStringLiteral("DELETE FROM MOBS WHERE MOB_NAME = '") + quotedName(name);
    else
        return false;
    if (!deleteRelationships(kind, name))
        return false;
    // The record's own rows belong to the command: a failure goes to its handler's report.
    for (const QString& sql : std::as_const(deletes))
        db().execute(sql);
    return true;
}

bool renameOne(const QString& kind, const QString& oldName, const QString& newName) {
    if (kind == Equipment)
        return RenameEquipment(oldName, newName, FindType(oldName));
    if (kind == Components)
        return RenameComponent(oldName, newName);
    if (kind == RawMaterials)
        return RenameRawMaterial(oldName, newName);
    if (kind == Items)
        return RenameItem(oldName, newName);
    if (kind == MOBs)
        return RenameMOB(oldName, newName);
    return false;
}

// The table and name column of a kind's main record.
std::pair<QString, QString> mainTable(const QString& kind) {
    if (kind == Equipment)
        return {QStringLiteral("EQUIPMENTS"), QStringLiteral("EQUIPMENT_NAME")};
    if (kind == Components)
        return {QStringLiteral("COMPONENTS"), QStringLiteral("COMPONENT_NAME")};
    if (kind == RawMaterials)
        return {QStringLiteral("RAW_MATERIALS"), QStringLiteral("RAW_MATERIAL_NAME")};
    if (kind == Items)
        return {QStringLiteral("ITEMS"), QStringLiteral("ITEM_NAME")};
    return {QStringLiteral("MOBS"), QStringLiteral("MOB_NAME")};
}

// A name no record of the kind has, for a rename that only changes letter case.
QString unusedName(const QString& kind) {
    const auto [table, column] = mainTable(kind);
    for (;;) {
        const QString name =
            QStringLiteral("~VOSK rename %1").arg(QRandomGenerator::global()->generate() & 0xffffff, 6, 16);
        Recordset rs;
        rs.open(QStringLiteral("SELECT ") + column + QStringLiteral(" FROM ") + table +
                QStringLiteral(" WHERE ") + column + QStringLiteral(" = '") + quotedName(name));
        if (rs.eof())
            return name;
    }
}

} // namespace

bool DeleteRecord(const QString& kind, const QString& name) {
    if (!supported(kind))
        return false;
    ChangeScope scope;
    if (!deleteOne(kind, name))
        return false;
    scope.commit();
    return true;
}

bool CopyRecord(const QString& kind, const QString& oldName, const QString& newName) {
    if (!supported(kind) || newName == oldName)
        return false;
    ChangeScope scope;
    bool done = false;
    if (kind == Equipment) {
        Recordset rs;
        rs.open(QStringLiteral("SELECT EQUIPMENT_NAME FROM EQUIPMENTS_UPGRADE_FROM WHERE UPGRADE_FROM = '") +
                quotedName(oldName));
        if (!rs.eof()) {
            MsgBox(QStringLiteral("Cannot upgrade ") + oldName +
                       QStringLiteral(" because it is required to upgrade ") + rs.value(0).toString(),
                   vb::Critical, QStringLiteral("Cannot Copy"));
            return false;
        }
        rs.close();
        done = CopyEquipment(oldName, newName, FindType(oldName), true);
    } else if (kind == Components) {
        done = CopyComponent(oldName, newName, true);
    } else if (kind == RawMaterials) {
        done = CopyRawMaterial(oldName, newName, true);
    } else if (kind == Items) {
        done = CopyItem(oldName, newName, true);
    } else {
        done = CopyMOB(oldName, newName, true);
    }
    if (!done)
        return false;
    scope.commit();
    if (kind == Equipment)
        MsgBox(QStringLiteral("'") + oldName + QStringLiteral("' has been copied to '") + newName +
                   QStringLiteral("'."),
               vb::Information, QStringLiteral("Copy Complete"));
    return true;
}

bool RenameRecord(const QString& kind, const QString& oldName, const QString& newName) {
    if (!supported(kind) || newName == oldName)
        return false;
    ChangeScope scope;
    bool done = false;
    if (newName.compare(oldName, Qt::CaseInsensitive) == 0) {
        // The new name is the old one to the unique index: step aside through a name nobody has.
        const QString aside = unusedName(kind);
        done = renameOne(kind, oldName, aside) && renameOne(kind, aside, newName);
    } else {
        done = renameOne(kind, oldName, newName);
    }
    if (!done)
        return false;
    scope.commit();
    return true;
}

NameRefusal CheckNewName(const QString& name) {
    if (name.trimmed().isEmpty())
        return {QStringLiteral("Please enter a valid name"), QStringLiteral("Invalid Name")};
    if (!ValidName(name))
        return {QStringLiteral("Names cannot contain a double single-quote! Please change name to continue."),
                QStringLiteral("Invalid name")};
    return {};
}
