#pragma once
// Records with link rows at every place their name can be held, for the delete, copy and rename tests
// and the kill tests. Where a kind's name can be held is written down here from the database layout
// (which relationship column joins which kind), independently of the routines under test.
#include "data/database.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "data/schema.h"

#include <QHash>
#include <QString>
#include <QStringList>

namespace world {

struct Place {
    QString table;
    QString column;
};

inline QList<Place> placesOf(const QString& kind) {
    static const QHash<QString, QString> places{
        {"Components",
         "BUY_COMPONENT_LOCATIONS.COMPONENTS_COMPONENT EQUIPMENTS_COMPONENTS.COMPONENTS_COMPONENT "
         "COMPONENTS_RAW_MATERIALS.COMPONENTS_COMPONENT COMPONENTS_EQUIPMENTS.COMPONENT_NAME "
         "COMPONENTS_ITEMS.COMPONENT_NAME COMPONENTS_UPGRADE_FROM.COMPONENT_NAME "
         "COMPONENTS_UPGRADE_FROM.UPGRADE_FROM MOB_COMP_DROP.COMPONENT_NAME"},
        {"Equipment",
         "EQUIPMENTS_COMPONENTS.EQUIPMENTS_EQUIPMENT EQUIPMENTS_RAW_MATERIALS.EQUIPMENTS_EQUIPMENT "
         "EQUIPMENTS_ITEMS.EQUIPMENTS_EQUIPMENT EQUIPMENTS_UPGRADE_FROM.EQUIPMENT_NAME "
         "EQUIPMENTS_UPGRADE_FROM.UPGRADE_FROM COMPONENTS_EQUIPMENTS.EQUIPMENT_NAME "
         "EQUIPMENT_CLASS.EQUIPMENTS_EQUIPMENT EQUIP_SPECIALS.EQUIPMENT_NAME "
         "BUY_EQUIPMENT_LOCATION.EQUIPMENTS_EQUIPMENT MOB_EQUIP_DROP.EQUIPMENT_NAME"},
        {"Raw Materials",
         "EQUIPMENTS_RAW_MATERIALS.RAW_MATERIAL_NAME COMPONENTS_RAW_MATERIALS.RAW_MATERIAL "
         "RAW_MATERIALS_REFINES_FROM.RAW_MATERIAL_NAME RAW_MATERIALS_REFINES_FROM.REFINES_FROM "
         "RAW_MATERIALS_ITEMS.RAW_MATERIAL_NAME BUY_RAW_MATERIAL_LOCATIONS.RAW_MATERIAL "
         "MINE_LOCATIONS.RAW_MATERIAL MOB_RAW_MAT_DROP.RAW_MATERIAL_NAME"},
        {"Items", "EQUIPMENTS_ITEMS.ITEM_NAME COMPONENTS_ITEMS.ITEM_NAME RAW_MATERIALS_ITEMS.ITEM_NAME "
                  "BUY_ITEM_LOCATIONS.ITEM_NAME MOB_ITEM_DROP.ITEM_NAME"},
        {"MOBs",
         "MOB_EQUIP_DROP.MOB_NAME MOB_COMP_DROP.MOB_NAME MOB_RAW_MAT_DROP.MOB_NAME MOB_ITEM_DROP.MOB_NAME "
         "MOBS_LOCATION.MOB_NAME MOB_ATTACK_TYPE.MOB_NAME MOB_RESISTANCE.MOB_NAME MOB_WEAKNESS.MOB_NAME"}};
    QList<Place> out;
    for (const QString& p : places.value(kind).split(QLatin1Char(' '), Qt::SkipEmptyParts))
        out << Place{p.section(QLatin1Char('.'), 0, 0), p.section(QLatin1Char('.'), 1)};
    return out;
}

// The tables that hold the record itself, with their name column (the main table first).
inline QList<Place> recordTables(const QString& kind, const QString& statTable = QString()) {
    if (kind == QLatin1String("Components"))
        return {{"COMPONENTS", "COMPONENT_NAME"}};
    if (kind == QLatin1String("Raw Materials"))
        return {{"RAW_MATERIALS", "RAW_MATERIAL_NAME"}};
    if (kind == QLatin1String("Items"))
        return {{"ITEMS", "ITEM_NAME"}};
    if (kind == QLatin1String("MOBs"))
        return {{"MOBS", "MOB_NAME"}, {"MOB_STATS", "MOB_NAME"}};
    if (statTable.isEmpty())
        return {{"EQUIPMENTS", "EQUIPMENT_NAME"}};
    return {{"EQUIPMENTS", "EQUIPMENT_NAME"}, {statTable, "EQUIPMENT_NAME"}};
}

inline QString lit(const QString& text) {
    return QLatin1Char('\'') + FixQuotes(text) + QLatin1Char('\'');
}

inline long count(const QString& sql) {
    Recordset rs;
    rs.open(sql);
    return rs.eof() ? 0 : long(rs.value(0).toLongLong());
}

inline long rowsAt(const Place& p, const QString& name) {
    return count(QStringLiteral("SELECT COUNT(*) FROM ") + p.table + QStringLiteral(" WHERE ") + p.column +
                 QStringLiteral(" = ") + lit(name));
}

// Adds rowsPerPlace link rows at each place of the kind; the other columns hold anchor names (names
// of no record this test touches) and small numbers.
inline void addLinks(const QString& kind, const QString& name, int rowsPerPlace,
                     const QString& anchor = "Anchor") {
    for (const Place& p : placesOf(kind)) {
        const schema::Table* t = schema::findTable(p.table);
        for (int i = 0; i < rowsPerPlace; ++i) {
            QStringList cols, values;
            for (const schema::Column& c : t->columns) {
                cols << c.name;
                if (c.name == p.column)
                    values << lit(name);
                else if (schema::textSize(c.type) > 0 || c.type == QLatin1String("TEXT"))
                    values << lit(QStringLiteral("%1 %2 %3").arg(anchor).arg(i).arg(c.name.left(12)));
                else
                    values << QString::number(i + 2);
            }
            db().execute(QStringLiteral("INSERT INTO ") + p.table + QStringLiteral(" (") +
                         cols.join(QStringLiteral(", ")) + QStringLiteral(") VALUES (") +
                         values.join(QStringLiteral(", ")) + QLatin1Char(')'));
        }
    }
}

// The statistics table of an equipment type word, as the database layout assigns them.
inline QString statTableOf(const QString& type) {
    static const QHash<QString, QString> tables{{"beam", "WEAPON_STATS"},       {"missile", "WEAPON_STATS"},
                                                {"projectile", "WEAPON_STATS"}, {"reactor", "REACTOR_STATS"},
                                                {"engine", "ENGINE_STATS"},     {"shield", "SHIELD_STATS"},
                                                {"ammunition", "AMO_STATS"}};
    return tables.value(type.toLower());
}

// Adds the record (for equipment of the given type word, with its statistics row; for a MOB with its
// MOB_STATS row) and its link rows.
inline void addRecord(const QString& kind, const QString& name, int rowsPerPlace,
                      const QString& type = "Beam") {
    const QString n = lit(name);
    if (kind == QLatin1String("Components")) {
        db().execute(
            "INSERT INTO COMPONENTS (COMPONENT_NAME, LVL, PRICE, COMMENTS, TYPE, SUBTYPE, PIC_ID, CHECK) "
            "VALUES (" +
            n + ", 4, 120, 'A part''s notes', 'Power Cell', 'Fuel Cell', 3, TRUE)");
    } else if (kind == QLatin1String("Raw Materials")) {
        db().execute("INSERT INTO RAW_MATERIALS (RAW_MATERIAL_NAME, LVL, PRICE, COMMENTS, PIC_ID) VALUES (" +
                     n + ", 2, 15, 'dusty', 5)");
    } else if (kind == QLatin1String("Items")) {
        db().execute("INSERT INTO ITEMS (ITEM_NAME, LVL, PRICE, COMMENTS, PIC_ID) VALUES (" + n +
                     ", 6, 70, 'shiny', 8)");
    } else if (kind == QLatin1String("MOBs")) {
        db().execute("INSERT INTO MOBS (MOB_NAME, TYPE, FACTION, COMMENTS) VALUES (" + n +
                     ", 'Organic', 'Unknown', 'bites')");
        db().execute("INSERT INTO MOB_STATS (MOB_NAME, COMBAT_LEVEL, SHIELD, HULL, BRAVERY, BOSS) VALUES (" +
                     n + ", 12, 300, 400, 'High', TRUE)");
    } else {
        db().execute(
            "INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, TYPE, MANUFACTURER, LVL, COMMENTS, PRICE, QUALITY, "
            "UNIQUE_FLAG, COST_TO_MANUFACTURE, PIC_ID, CUSTOM_01) VALUES (" +
            n + ", " + lit(type) + ", 'Maker', 9, 'hums', 1500, 85, TRUE, 200, 11, 'mine')");
        const QString stats = statTableOf(type);
        if (stats == QLatin1String("WEAPON_STATS"))
            db().execute("INSERT INTO WEAPON_STATS VALUES (" + n + ", 40, 'Heat', 2, 5, 900, 3, 'Rocket')");
        else if (stats == QLatin1String("REACTOR_STATS"))
            db().execute("INSERT INTO REACTOR_STATS VALUES (" + n + ", 500, 25)");
        else if (stats == QLatin1String("ENGINE_STATS"))
            db().execute("INSERT INTO ENGINE_STATS VALUES (" + n + ", 300, 6, 50, 12)");
        else if (stats == QLatin1String("SHIELD_STATS"))
            db().execute("INSERT INTO SHIELD_STATS VALUES (" + n + ", 800, 40)");
        else if (stats == QLatin1String("AMO_STATS"))
            db().execute("INSERT INTO AMO_STATS VALUES (" + n + ", 60, 'Heat', 'Rocket', 20, 3000, 1.5)");
    }
    addLinks(kind, name, rowsPerPlace);
}

// The number of link rows at each place of the kind that hold the name.
inline QList<long> linkCounts(const QString& kind, const QString& name) {
    QList<long> out;
    for (const Place& p : placesOf(kind))
        out << rowsAt(p, name);
    return out;
}

// The number of tables among recordTables() that hold a row of that name.
inline int recordRows(const QString& kind, const QString& name, const QString& statTable = QString()) {
    int n = 0;
    for (const Place& p : recordTables(kind, statTable))
        n += rowsAt(p, name) > 0 ? 1 : 0;
    return n;
}

// Every row of every table, in a fixed order: two equal dumps mean an unchanged database.
inline QString dump() {
    QString out;
    for (const schema::Table& t : schema::tables()) {
        QStringList order;
        for (int i = 1; i <= t.columns.size(); ++i)
            order << QString::number(i);
        Recordset rs;
        rs.open(QStringLiteral("SELECT * FROM ") + t.name + QStringLiteral(" ORDER BY ") +
                order.join(QLatin1Char(',')));
        out += t.name + QLatin1Char('\n');
        for (; !rs.eof(); rs.moveNext()) {
            for (int i = 0; i < rs.fieldCount(); ++i)
                out += (rs.isNull(i) ? QStringLiteral("NULL") : rs.value(i).toString()) + QLatin1Char('|');
            out += QLatin1Char('\n');
        }
    }
    return out;
}

} // namespace world
