#include "game/buildtext.h"

#include "core/clock.h"
#include "core/programfolder.h"
#include "core/vberror.h"
#include "data/database.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "views/buildtree.h"
#include "views/modmain.h"

#include <QFile>
#include <QList>

namespace {
struct Row {
    QString level, name, amount;
};

// Read whole and closed before anything below is written, so that deeper levels reuse the
// connection's prepared statements.
QList<Row> readRows(const QString& sql) {
    QList<Row> rows;
    Recordset rs;
    rs.open(sql);
    for (; !rs.eof(); rs.moveNext())
        rows.append({NzString(rs.value(0)), NzString(rs.value(1)), NzString(rs.value(2))});
    rs.close();
    return rows;
}

QString lineOf(const Row& r, int depth) {
    return QLatin1Char('.') + QString(4 * (depth + 1), QLatin1Char(' ')) + QStringLiteral("Lvl ") + r.level +
           QLatin1Char(' ') + r.name + r.amount + QStringLiteral("\r\n");
}

// The statement of a writer for its parent kind; empty where the writer has none.
QString statementOf(int writer, const QString& name, const QString& kind) {
    const QString n = FixQuotes(name);
    const bool equipment = kind == buildtext::Equipment;
    const bool components = kind == buildtext::Components;
    const bool raw = kind == buildtext::RawMaterials;
    switch (writer) {
    case 0: // GetEquip
        if (equipment)
            return "SELECT EQUIPMENTS.LVL, EQUIPMENTS_UPGRADE_FROM.UPGRADE_FROM, IIF(AMOUNT > 1, ' (' & AMOUNT & ')') AS AMOUNT FROM EQUIPMENTS, EQUIPMENTS_UPGRADE_FROM WHERE EQUIPMENTS_UPGRADE_FROM.EQUIPMENT_NAME = '" +
                   n +
                   "' AND EQUIPMENTS.EQUIPMENT_NAME = EQUIPMENTS_UPGRADE_FROM.UPGRADE_FROM ORDER BY EQUIPMENTS_UPGRADE_FROM.UPGRADE_FROM";
        if (components)
            return "SELECT EQUIPMENTS.LVL, COMPONENTS_EQUIPMENTS.EQUIPMENT_NAME, IIF(AMOUNT > 1, ' (' & AMOUNT & ')') AS AMOUNT FROM EQUIPMENTS, COMPONENTS_EQUIPMENTS WHERE COMPONENTS_EQUIPMENTS.COMPONENT_NAME = '" +
                   n +
                   "' AND EQUIPMENTS.EQUIPMENT_NAME = COMPONENTS_EQUIPMENTS.EQUIPMENT_NAME ORDER BY COMPONENTS_EQUIPMENTS.EQUIPMENT_NAME";
        break;
    case 1: // GetComps
        if (equipment)
            return "SELECT COMPONENTS.LVL, EQUIPMENTS_COMPONENTS.COMPONENTS_COMPONENT, IIF(EQUIPMENTS_COMPONENTS.AMOUNT > 1, ' (' & EQUIPMENTS_COMPONENTS.AMOUNT & ')',) FROM EQUIPMENTS_COMPONENTS, COMPONENTS WHERE EQUIPMENTS_COMPONENTS.EQUIPMENTS_EQUIPMENT = '" +
                   n +
                   "' AND EQUIPMENTS_COMPONENTS.COMPONENTS_COMPONENT = COMPONENTS.COMPONENT_NAME ORDER BY COMPONENTS_COMPONENT";
        if (components)
            return "SELECT COMPONENTS.LVL, COMPONENTS_UPGRADE_FROM.UPGRADE_FROM, IIF(COMPONENTS_UPGRADE_FROM.AMOUNT > 1, ' (' & COMPONENTS_UPGRADE_FROM.AMOUNT & ')') FROM COMPONENTS_UPGRADE_FROM, COMPONENTS WHERE COMPONENTS_UPGRADE_FROM.COMPONENT_NAME = '" +
                   n +
                   "' AND COMPONENTS_UPGRADE_FROM.UPGRADE_FROM = COMPONENTS.COMPONENT_NAME ORDER BY UPGRADE_FROM";
        break;
    case 2: // GetRawMat
        if (equipment)
            return "SELECT RAW_MATERIALS.LVL, EQUIPMENTS_RAW_MATERIALS.RAW_MATERIAL_NAME, IIF(EQUIPMENTS_RAW_MATERIALS.AMOUNT > 1, ' (' & EQUIPMENTS_RAW_MATERIALS.AMOUNT & ')') FROM EQUIPMENTS_RAW_MATERIALS, RAW_MATERIALS WHERE EQUIPMENTS_RAW_MATERIALS.EQUIPMENTS_EQUIPMENT = '" +
                   n +
                   "' AND EQUIPMENTS_RAW_MATERIALS.RAW_MATERIAL_NAME = RAW_MATERIALS.RAW_MATERIAL_NAME ORDER BY EQUIPMENTS_RAW_MATERIALS.RAW_MATERIAL_NAME";
        if (components)
            return "SELECT RAW_MATERIALS.LVL, COMPONENTS_RAW_MATERIALS.RAW_MATERIAL, IIF(COMPONENTS_RAW_MATERIALS.AMOUNT > 1, ' (' & COMPONENTS_RAW_MATERIALS.AMOUNT & ')') FROM COMPONENTS_RAW_MATERIALS, RAW_MATERIALS WHERE COMPONENTS_COMPONENT = '" +
                   n +
                   "' AND RAW_MATERIALS.RAW_MATERIAL_NAME = COMPONENTS_RAW_MATERIALS.RAW_MATERIAL ORDER BY RAW_MATERIAL";
        if (raw)
            return "SELECT RAW_MATERIALS.LVL, RAW_MATERIALS_REFINES_FROM.REFINES_FROM, IIF(RAW_MATERIALS_REFINES_FROM.AMOUNT > 1, ' (' & RAW_MATERIALS_REFINES_FROM.AMOUNT & ')') FROM RAW_MATERIALS_REFINES_FROM, RAW_MATERIALS WHERE RAW_MATERIALS_REFINES_FROM.RAW_MATERIAL_NAME = '" +
                   n +
                   "' AND RAW_MATERIALS.RAW_MATERIAL_NAME = RAW_MATERIALS_REFINES_FROM.REFINES_FROM ORDER BY RAW_MATERIALS_REFINES_FROM.REFINES_FROM";
        break;
    case 3: // GetItems
        if (equipment)
            return "SELECT ITEMS.LVL, EQUIPMENTS_ITEMS.ITEM_NAME, IIF(EQUIPMENTS_ITEMS.AMOUNT > 1, ' (' & EQUIPMENTS_ITEMS.AMOUNT & ')') FROM EQUIPMENTS_ITEMS, ITEMS WHERE EQUIPMENTS_ITEMS.EQUIPMENTS_EQUIPMENT = '" +
                   n +
                   "' AND EQUIPMENTS_ITEMS.ITEM_NAME = ITEMS.ITEM_NAME ORDER BY EQUIPMENTS_ITEMS.ITEM_NAME";
        if (components)
            return "SELECT ITEMS.LVL, COMPONENTS_ITEMS.ITEM_NAME, IIF(COMPONENTS_ITEMS.AMOUNT > 1, ' (' & COMPONENTS_ITEMS.AMOUNT & ')') FROM COMPONENTS_ITEMS, ITEMS WHERE COMPONENTS_ITEMS.COMPONENT_NAME = '" +
                   n +
                   "' AND COMPONENTS_ITEMS.ITEM_NAME = ITEMS.ITEM_NAME ORDER BY COMPONENTS_ITEMS.ITEM_NAME";
        if (raw)
            return "SELECT ITEMS.LVL, RAW_MATERIALS_ITEMS.ITEM_NAME, IIF(RAW_MATERIALS_ITEMS.AMOUNT > 1, ' (' & RAW_MATERIALS_ITEMS.AMOUNT & ')') FROM RAW_MATERIALS_ITEMS, ITEMS WHERE RAW_MATERIALS_ITEMS.RAW_MATERIAL_NAME = '" +
                   n +
                   "' AND RAW_MATERIALS_ITEMS.ITEM_NAME = ITEMS.ITEM_NAME ORDER BY RAW_MATERIALS_ITEMS.ITEM_NAME";
        break;
    }
    return {};
}

const char* const WriterNames[] = {"GetEquip", "GetComps", "GetRawMat", "GetItems"};
} // namespace

void LogChannelError(const std::exception& error, const QString& procedure) {
    long number = 5;
    QString description = QString::fromLocal8Bit(error.what());
    if (const auto* vb = dynamic_cast<const VbError*>(&error)) {
        number = vb->number;
        description = vb->description;
    }
    QFile log(errorLogPath());
    if (log.open(QIODevice::WriteOnly | QIODevice::Append))
        log.write((QStringLiteral("Error ") + QString::number(number) + QStringLiteral(" (") + description +
                   QStringLiteral(") in procedure ") + procedure +
                   QStringLiteral(" of Class Module clsVLInterface ") + generalDate(Now()))
                      .toLatin1() +
                  '\n');
    db().clearErrors();
}

QString BuildTextWriter::GetEquip(const QString& name, int depth, const QString& parentKind, bool check) {
    return write(Writer::Equip, name, depth, parentKind, check);
}

QString BuildTextWriter::GetComps(const QString& name, int depth, const QString& parentKind, bool check) {
    return write(Writer::Comps, name, depth, parentKind, check);
}

QString BuildTextWriter::GetRawMat(const QString& name, int depth, const QString& parentKind, bool check) {
    return write(Writer::RawMat, name, depth, parentKind, check);
}

QString BuildTextWriter::GetItems(const QString& name, int depth, const QString& parentKind, bool check) {
    return write(Writer::Items, name, depth, parentKind, check);
}

QString BuildTextWriter::write(Writer which, const QString& name, int depth, const QString& parentKind,
                               bool check) {
    // A text begins at depth 0: an earlier text's stop does not reach this one.
    if (depth == 0)
        m_stopped = false;
    const int w = int(which);
    QString out;
    try {
        if (depth > maxBuildDepth)
            throw VbError(vberr::OutOfStackSpace, QStringLiteral("Out of stack space"));
        const QString sql = statementOf(w, name, parentKind);
        const QList<Row> rows = sql.isEmpty() ? QList<Row>() : readRows(sql);
        if (rows.isEmpty())
            return check ? buildtext::NoRecords : QString();
        for (const Row& r : rows) {
            if (check) {
                out += r.name;
                continue;
            }
            out += lineOf(r, depth);
            if (which == Writer::Comps) {
                for (Writer below : {Writer::Equip, Writer::Comps, Writer::RawMat, Writer::Items}) {
                    out += write(below, r.name, depth + 1, buildtext::Components, false);
                    if (m_stopped)
                        return out;
                }
            } else if (which == Writer::RawMat) {
                for (Writer below : {Writer::RawMat, Writer::Items}) {
                    out += write(below, r.name, depth + 1, buildtext::RawMaterials, false);
                    if (m_stopped)
                        return out;
                }
            }
        }
    } catch (const std::exception& e) {
        LogChannelError(e, QLatin1String(WriterNames[w]));
        m_stopped = true;
    }
    return out;
}
