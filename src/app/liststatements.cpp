#include "app/liststatements.h"

#include "data/quotes.h"
#include "views/equiptypes.h"

namespace {
// A statement being built, with whether it has its WHERE yet, so that no filter has to guess.
struct Statement {
    QString sql;
    bool where = false;

    void add(const QString& condition) {
        sql += where ? QStringLiteral(" AND ") : QStringLiteral(" WHERE ");
        sql += condition;
        where = true;
    }
};

bool isAll(const QString& s) {
    return s.isEmpty() || s == allEntry();
}

QString equipmentStatement(const ListFilters& f) {
    const int type = isAll(f.equipType) ? int(equip::All) : Enumerate(f.equipType);
    // The list needs the tick and colour flags; pictures stay out of it (the list shows no icons)
    // and the custom columns only when the database uses them.
    QString sql = GetSQL(type, true, false, false, f.customFields,
                         isAll(f.race) ? QString() : FixQuotes(f.race), false);
    if (!isAll(f.level))
        sql += QStringLiteral(" AND EQUIPMENTS.LVL = ") + f.level;
    if (!isAll(f.equipType))
        sql += QStringLiteral(" AND EQUIPMENTS.TYPE = '") + FixQuotes(f.equipType) + QLatin1Char('\'');
    return sql;
}

Statement componentStatement(const ListFilters& f) {
    Statement st;
    if (isAll(f.compType)) {
        st.sql = QStringLiteral("SELECT * FROM COMPONENTS");
    } else if (f.compType == QLatin1String("Unknown")) {
        st.sql = QStringLiteral("SELECT * FROM COMPONENTS WHERE (TYPE IS NULL OR TYPE = '") +
                 FixQuotes(f.compType) + QStringLiteral("')");
        st.where = true;
    } else {
        st.sql = QStringLiteral("SELECT * FROM COMPONENTS WHERE TYPE = '") + FixQuotes(f.compType) +
                 QLatin1Char('\'');
        st.where = true;
    }
    if (!isAll(f.subType) && f.subType != QLatin1String("Unknown") && f.subType != QLatin1String("N/A"))
        st.add(QStringLiteral("SUBTYPE = '") + FixQuotes(f.subType) + QLatin1Char('\''));
    if (!isAll(f.level))
        st.add(QStringLiteral("LVL = ") + f.level);
    return st;
}

QString withLevel(QString sql, const ListFilters& f) {
    if (!isAll(f.level))
        sql += QStringLiteral(" WHERE LVL = ") + f.level;
    return sql;
}
} // namespace

QStringList Categories() {
    return {listcat::Equipment, listcat::Components, listcat::RawMaterials,
            listcat::Stations,  listcat::MOBs,       listcat::Items};
}

QStringList CheckedChoices() {
    return {allEntry(), QStringLiteral("Checked"), QStringLiteral("Not Checked")};
}

QStringList CombatBands() {
    return {allEntry(),
            QStringLiteral("0-5"),
            QStringLiteral("6-10"),
            QStringLiteral("11-15"),
            QStringLiteral("16-20"),
            QStringLiteral("21-25"),
            QStringLiteral("26-30"),
            QStringLiteral("31-35"),
            QStringLiteral("36-40"),
            QStringLiteral("41-45"),
            QStringLiteral("46-50"),
            QStringLiteral("51+")};
}

QStringList EquipTypeChoices() {
    QStringList list{allEntry()};
    for (int i = equip::Beam; i <= equip::Ammunition; ++i)
        list << DeEnumerate(i);
    return list;
}

QString CombatBandCondition(const QString& band) {
    if (band == QLatin1String("51+"))
        return QStringLiteral("MOB_STATS.COMBAT_LEVEL >= 51");
    const int dash = band.indexOf(QLatin1Char('-'));
    if (dash <= 0 || !CombatBands().contains(band))
        return {};
    return QStringLiteral("MOB_STATS.COMBAT_LEVEL >= ") + band.left(dash) +
           QStringLiteral(" AND MOB_STATS.COMBAT_LEVEL <= ") + band.mid(dash + 1);
}

bool HasWhereClause(const QString& sql) {
    bool inLiteral = false;
    const int n = int(sql.size());
    for (int i = 0; i < n; ++i) {
        const QChar c = sql.at(i);
        if (c == QLatin1Char('\'')) {
            inLiteral = !inLiteral; // a doubled quote toggles twice and stays inside
            continue;
        }
        if (inLiteral || (c != QLatin1Char('W') && c != QLatin1Char('w')))
            continue;
        if (i > 0 && (sql.at(i - 1).isLetterOrNumber() || sql.at(i - 1) == QLatin1Char('_')))
            continue;
        if (sql.mid(i, 5).compare(QLatin1String("WHERE"), Qt::CaseInsensitive) != 0)
            continue;
        if (i + 5 < n && (sql.at(i + 5).isLetterOrNumber() || sql.at(i + 5) == QLatin1Char('_')))
            continue;
        return true;
    }
    return false;
}

QString AppendCondition(const QString& sql, const QString& condition) {
    return sql + (HasWhereClause(sql) ? QStringLiteral(" AND ") : QStringLiteral(" WHERE ")) + condition;
}

QString AddTickFilter(const QString& sql, const QString& checked) {
    if (checked == QLatin1String("Checked"))
        return AppendCondition(sql, QStringLiteral("CHECK = TRUE"));
    if (checked == QLatin1String("Not Checked"))
        return AppendCondition(sql, QStringLiteral("CHECK = FALSE"));
    return sql;
}

QString ListStatement(const QString& category, const ListFilters& f) {
    QString sql;
    if (category == listcat::Equipment) {
        sql = equipmentStatement(f);
    } else if (category == listcat::Components) {
        sql = componentStatement(f).sql;
    } else if (category == listcat::RawMaterials) {
        sql = withLevel(QStringLiteral("SELECT RAW_MATERIAL_NAME, LVL, PRICE, COMMENTS, CHECK, PERSONAL_DB, "
                                       "UPDATED, SUBMITTED, LAST_UPDATED FROM RAW_MATERIALS"),
                        f);
    } else if (category == listcat::Stations) {
        sql = QStringLiteral("SELECT STATIONS.STATION_NAME, STATIONS.SECTORS_SECTOR, "
                             "SECTORS.SYSTEM_SYSTEM_NAME AS SYSTEM_NAME, STATIONS.CHECK FROM SECTORS "
                             "INNER JOIN STATIONS ON SECTORS.SECTOR_NAME = STATIONS.SECTORS_SECTOR");
    } else if (category == listcat::MOBs) {
        sql = QStringLiteral(
            "SELECT MOBS.MOB_NAME, MOBS.UPDATED, MOBS.PERSONAL_DB, MOBS.CHECK, MOB_STATS.COMBAT_LEVEL, "
            "(MOB_STATS.COMBAT_LEVEL * 3) AS OVERALL_LEVEL, MOB_STATS.SHIELD, MOB_STATS.HULL, "
            "MOB_STATS.MASS, MOB_STATS.SIGNATURE, MOB_STATS.SCAN_RANGE, MOB_STATS.AGGRO_RANGE, MOBS.TYPE, "
            "MOBS.FACTION, MOBS.COMMENTS, MOBS.LAST_UPDATED FROM MOBS, MOB_STATS WHERE MOBS.MOB_NAME = "
            "MOB_STATS.MOB_NAME");
        const QString band = CombatBandCondition(f.combatBand);
        if (!band.isEmpty())
            sql += QStringLiteral(" AND ") + band;
    } else if (category == listcat::Items) {
        sql = withLevel(QStringLiteral("SELECT * FROM ITEMS"), f);
    } else if (category == listcat::Characters) {
        sql = QStringLiteral("SELECT * FROM CHARACTERS");
    } else {
        return {};
    }
    return AddTickFilter(sql, f.checked);
}

QString CheckStatement(const QString& category, const QString& name, bool state) {
    const QString value = state ? QStringLiteral("TRUE") : QStringLiteral("FALSE");
    const QString quoted = FixQuotes(name);
    auto update = [&](const char* table, const char* key, const char* tail) {
        const QString t = QLatin1String(table);
        return QStringLiteral("UPDATE ") + t + QStringLiteral(" SET ") + t + QStringLiteral(".CHECK = ") +
               value + QStringLiteral(" WHERE ") + QLatin1String(key) + QStringLiteral(" = '") + quoted +
               QLatin1String(tail);
    };
    // Equipment and components end with a semicolon, the others without; both are one statement.
    if (category == listcat::Equipment)
        return update("EQUIPMENTS", "EQUIPMENT_NAME", "';");
    if (category == listcat::Components)
        return update("COMPONENTS", "COMPONENT_NAME", "';");
    if (category == listcat::RawMaterials)
        return update("RAW_MATERIALS", "RAW_MATERIAL_NAME", "'");
    if (category == listcat::Stations)
        return update("STATIONS", "STATION_NAME", "'");
    if (category == listcat::MOBs)
        return update("MOBS", "MOB_NAME", "'");
    if (category == listcat::Items)
        return update("ITEMS", "ITEM_NAME", "'");
    return {};
}

QString ClassListStatement() {
    return QStringLiteral("SELECT CLASS_NAME FROM CLASSES");
}

QString ComponentTypeListStatement() {
    return QStringLiteral("SELECT COMPONENT_TYPE FROM COMPONENT_TYPES ORDER BY COMPONENT_TYPE");
}

QString SubTypeListStatement(const QString& componentType) {
    return QStringLiteral("SELECT COMPONENT_SUBTYPE FROM COMPONENT_TYPE_SUBTYPE WHERE COMPONENT_TYPE = '") +
           FixQuotes(componentType) + QStringLiteral("' ORDER BY COMPONENT_SUBTYPE");
}

QStringList HighestLevelStatements() {
    QStringList list;
    for (const char* table : {"EQUIPMENTS", "COMPONENTS", "RAW_MATERIALS", "ITEMS"})
        list << QStringLiteral("SELECT MAX(LVL) AS MAX_LVL FROM ") + QLatin1String(table);
    return list;
}

QStringList LevelChoices(int highestInData) {
    QStringList list{allEntry()};
    const int top = qMax(LevelFloor, highestInData);
    for (int i = 1; i <= top; ++i)
        list << QString::number(i);
    return list;
}

FilterUse FiltersFor(const QString& category) {
    FilterUse u;
    if (category == listcat::Equipment) {
        u.equipType = u.level = u.race = true;
    } else if (category == listcat::Components) {
        u.compType = u.subType = u.level = true;
    } else if (category == listcat::RawMaterials || category == listcat::Items) {
        u.level = true;
    } else if (category == listcat::MOBs) {
        u.combatBand = true;
    } else if (category == listcat::Characters) {
        u.checked = false;
    }
    return u;
}
