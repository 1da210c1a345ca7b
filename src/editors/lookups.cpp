#include "editors/lookups.h"

#include "data/database.h"
#include "data/errorreport.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "views/modmain.h"

QString LookupTable::parentCondition() const {
    return parentColumn + QStringLiteral(" = '") + FixQuotes(parentValue) + QLatin1Char('\'');
}

QString LookupTable::fillSql() const {
    if (parentColumn.isEmpty())
        return QStringLiteral("SELECT ") + column + QStringLiteral(" FROM ") + table +
               QStringLiteral(" ORDER BY ") + column;
    return QStringLiteral("SELECT ") + column + QStringLiteral(" FROM ") + table + QStringLiteral(" WHERE ") +
           parentCondition() + QStringLiteral(" ORDER BY ") + column;
}

QString LookupTable::insertSql(const QString& value) const {
    if (parentColumn.isEmpty())
        return QStringLiteral("INSERT INTO ") + table + QStringLiteral(" (") + column +
               QStringLiteral(") VALUES ('") + FixQuotes(value) + QStringLiteral("')");
    return QStringLiteral("INSERT INTO ") + table + QStringLiteral(" (") + column + QLatin1Char(',') +
           parentColumn + QStringLiteral(") VALUES ('") + FixQuotes(value) + QStringLiteral("','") +
           FixQuotes(parentValue) + QStringLiteral("')");
}

QString LookupTable::deleteSql(const QString& value) const {
    const QString sql = QStringLiteral("DELETE FROM ") + table + QStringLiteral(" WHERE ") + column +
                        QStringLiteral(" = '") + FixQuotes(value);
    if (parentColumn.isEmpty())
        return sql + QLatin1Char('\'');
    return sql + QStringLiteral("' AND ") + parentCondition();
}

QStringList LookupTable::values() const {
    Recordset rs;
    rs.open(fillSql());
    return PopulateList(rs);
}

namespace lookup {
namespace {
LookupTable make(const char* kind, const char* table, const char* column, const char* parentColumn = "",
                 const QString& parentValue = QString()) {
    return {QLatin1String(kind), QLatin1String(table), QLatin1String(column), QLatin1String(parentColumn),
            parentValue};
}
} // namespace

LookupTable specials() {
    return make("Special", "SPECIALS", "SPECIAL");
}
LookupTable damageTypes() {
    return make("Damage Type", "DAMAGE_TYPE", "DAMAGE_TYPE");
}
LookupTable manufacturers() {
    return make("Manufacturer", "MANUFACTURER", "MANUFACTURER_NAME");
}
LookupTable componentTypes() {
    return make("Component Type", "COMPONENT_TYPES", "COMPONENT_TYPE");
}
LookupTable componentSubtypes(const QString& componentType) {
    return make("Component Subtype", "COMPONENT_TYPE_SUBTYPE", "COMPONENT_SUBTYPE", "COMPONENT_TYPE",
                componentType);
}
LookupTable ammunitionTypes(const QString& launchType) {
    return make("Ammunition Type", "AMO_TYPES", "AMO_TYPE", "LAUNCH_TYPE", launchType);
}
} // namespace lookup

LookupDelete DeleteLookupValue(const LookupTable& lookup, const QString& value, const QString& procedure,
                               const QString& container) {
    try {
        db().execute(lookup.deleteSql(value));
        return LookupDelete::Deleted;
    } catch (const VbError& e) {
        const QList<ErrorRecord> records = db().errors();
        if (records.size() == 1 && classifyError(records.first()) == DBErrorKind::InUse) {
            db().clearErrors();
            return LookupDelete::InUse;
        }
        ReportDBError(e, procedure, container);
        return LookupDelete::Failed;
    }
}
