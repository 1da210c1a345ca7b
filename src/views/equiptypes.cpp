#include "views/equiptypes.h"

#include "data/errorreport.h"
#include "data/quotes.h"
#include "data/recordset.h"

#include <QStringList>

namespace {
// The words EQUIPMENTS.TYPE holds, by index; the display word is the same with a capital.
const char* const kTypeWords[] = {"beam",   "missile", "projectile", "reactor", "engine",
                                  "shield", "device",  "ammunition", "all"};
const char* const kDisplayWords[] = {"Beam",   "Missile", "Projectile", "Reactor", "Engine",
                                     "Shield", "Device",  "Ammunition", "All"};
} // namespace

int Enumerate(const QString& typeText, bool noRecurse) {
    const QString lower = typeText.toLower();
    for (int i = 0; i <= equip::All; ++i)
        if (lower == QLatin1String(kTypeWords[i]))
            return i;
    if (!noRecurse) {
        // "Heavy Shield" and the like are known by their last word.
        const int blank = typeText.lastIndexOf(QLatin1Char(' '));
        if (blank >= 0)
            return Enumerate(typeText.mid(blank + 1).trimmed(), true);
    }
    // An unknown type reads as a beam; the lists and views rely on that.
    return equip::Beam;
}

QString DeEnumerate(int index) {
    if (index < 0 || index > equip::All)
        return QString();
    return QString::fromLatin1(kDisplayWords[index]);
}

QString GetStatTable(const QString& typeText) {
    const QString t = typeText.toLower();
    if (t == QLatin1String("beam") || t == QLatin1String("missile") || t == QLatin1String("projectile"))
        return QStringLiteral("WEAPON_STATS");
    if (t == QLatin1String("reactor"))
        return QStringLiteral("REACTOR_STATS");
    if (t == QLatin1String("engine"))
        return QStringLiteral("ENGINE_STATS");
    if (t == QLatin1String("shield"))
        return QStringLiteral("SHIELD_STATS");
    if (t == QLatin1String("ammunition"))
        return QStringLiteral("AMO_STATS");
    return QString();
}

int FindType(const QString& equipmentName) {
    try {
        Recordset rs;
        rs.open("SELECT TYPE FROM EQUIPMENTS WHERE EQUIPMENT_NAME = '" + FixQuotes(equipmentName) + "'");
        if (rs.eof())
            throw NoCurrentRecord();
        const QString type = rs.value(0).toString();
        rs.close();
        return Enumerate(type);
    } catch (const VbError& e) {
        // Reported here; the caller goes on with a beam, as for any unknown type.
        ReportDBError(e, QStringLiteral("FindType"), QStringLiteral("Module modMain"));
    }
    return equip::Beam;
}

QString GetSQL(int typeIndex, bool withMarks, bool statNameOnly, bool withPicture, bool withCustom,
               const QString& className, bool plainAmmunition) {
    QString sel = QStringLiteral(
        "SELECT EQUIPMENTS.EQUIPMENT_NAME, EQUIPMENTS.TYPE, EQUIPMENTS.MANUFACTURER, EQUIPMENTS.LVL, "
        "EQUIPMENTS.COMMENTS, EQUIPMENTS.PRICE AS PURCHASE_PRICE, EQUIPMENTS.QUALITY, "
        "EQUIPMENTS.UNIQUE_FLAG, EQUIPMENTS.COST_TO_MANUFACTURE AS MANUFACTURING_FEE, "
        "EQUIPMENTS.LAST_UPDATED");
    QString from = QStringLiteral("FROM EQUIPMENTS");
    QString where;

    if (withMarks)
        sel += QLatin1String(", EQUIPMENTS.CHECK, EQUIPMENTS.PERSONAL_DB, EQUIPMENTS.UPDATED");
    if (withPicture)
        sel += QLatin1String(", EQUIPMENTS.PIC_ID");
    if (withCustom)
        sel += QLatin1String(", EQUIPMENTS.CUSTOM_01, EQUIPMENTS.CUSTOM_02, EQUIPMENTS.CUSTOM_03");

    const QString weaponFrom = QStringLiteral(", WEAPON_STATS ");
    const QString weaponWhere =
        QStringLiteral("WHERE EQUIPMENTS.EQUIPMENT_NAME = WEAPON_STATS.EQUIPMENT_NAME ");
    switch (typeIndex) {
    case equip::Beam:
        sel += QLatin1String(", WEAPON_STATS.DAMAGE, WEAPON_STATS.DAMAGE_TYPE, WEAPON_STATS.DELAY, "
                             "WEAPON_STATS.ENERGY_USE, WEAPON_STATS.RANGE ");
        from += weaponFrom;
        where = weaponWhere;
        if (!statNameOnly)
            sel += QLatin1String(", (WEAPON_STATS.DAMAGE/WEAPON_STATS.DELAY) AS DAMAGE_PER_SECOND, "
                                 "(WEAPON_STATS.DAMAGE/WEAPON_STATS.ENERGY_USE) AS EFFICIENCY ");
        else
            sel += QLatin1String(", WEAPON_STATS.EQUIPMENT_NAME AS STAT_NAME ");
        break;
    case equip::Missile:
    case equip::Projectile:
        // Launchers carry no computed column: their damage is in the ammunition they fire.
        if (typeIndex == equip::Missile)
            sel += QLatin1String(", WEAPON_STATS.ENERGY_USE, WEAPON_STATS.DELAY , WEAPON_STATS.ROUNDS, "
                                 "WEAPON_STATS.AMO_TYPE ");
        else
            sel += QLatin1String(", WEAPON_STATS.ENERGY_USE, WEAPON_STATS.DELAY , WEAPON_STATS.RANGE, "
                                 "WEAPON_STATS.ROUNDS, WEAPON_STATS.AMO_TYPE ");
        from += weaponFrom;
        where = weaponWhere;
        if (statNameOnly)
            sel += QLatin1String(", WEAPON_STATS.EQUIPMENT_NAME AS STAT_NAME ");
        break;
    case equip::Reactor:
        sel += QLatin1String(", REACTOR_STATS.ENERGY, REACTOR_STATS.RECHARGE_RATE ");
        from += QLatin1String(", REACTOR_STATS ");
        where = QStringLiteral("WHERE EQUIPMENTS.EQUIPMENT_NAME = REACTOR_STATS.EQUIPMENT_NAME ");
        sel += statNameOnly
                   ? QLatin1String(", REACTOR_STATS.EQUIPMENT_NAME AS STAT_NAME ")
                   : QLatin1String(", (REACTOR_STATS.ENERGY/REACTOR_STATS.RECHARGE_RATE) AS RECHARGE_TIME ");
        break;
    case equip::Engine:
        sel += QLatin1String(
            ", ENGINE_STATS.WARP, ENGINE_STATS.DRAIN, ENGINE_STATS.THRUST, ENGINE_STATS.SIGNATURE ");
        from += QLatin1String(", ENGINE_STATS ");
        where = QStringLiteral("WHERE EQUIPMENTS.EQUIPMENT_NAME = ENGINE_STATS.EQUIPMENT_NAME ");
        sel += statNameOnly ? QLatin1String(", ENGINE_STATS.EQUIPMENT_NAME AS STAT_NAME ")
                            : QLatin1String(", (ENGINE_STATS.WARP/ENGINE_STATS.DRAIN) AS EFFICIENCY ");
        break;
    case equip::Shield:
        sel += QLatin1String(", SHIELD_STATS.COVERAGE, SHIELD_STATS.REGEN_RATE ");
        from += QLatin1String(", SHIELD_STATS ");
        where = QStringLiteral("WHERE EQUIPMENTS.EQUIPMENT_NAME = SHIELD_STATS.EQUIPMENT_NAME ");
        sel += statNameOnly
                   ? QLatin1String(", SHIELD_STATS.EQUIPMENT_NAME AS STAT_NAME ")
                   : QLatin1String(", (SHIELD_STATS.COVERAGE/SHIELD_STATS.REGEN_RATE) AS REGENERATE_TIME ");
        break;
    case equip::Device:
    case equip::All:
        sel += QLatin1Char(' ');
        from += QLatin1Char(' ');
        // Always true, so that every further condition can begin with " AND ".
        where = QStringLiteral("WHERE EQUIPMENTS.EQUIPMENT_NAME = EQUIPMENTS.EQUIPMENT_NAME ");
        break;
    case equip::Ammunition:
        if (!plainAmmunition) {
            sel += QLatin1String(
                ", AMO_STATS.DAMAGE, AMO_STATS.DAMAGE_TYPE, AMO_TYPES.LAUNCH_TYPE, AMO_STATS.AMO_TYPE AS "
                "AMO_TYPE_AMO, AMO_STATS.STACK_SIZE, IIF(AMO_TYPES.LAUNCH_TYPE = 'Missile', AMO_STATS.RANGE, "
                "-1) AS AMMO_RANGE, IIF(AMO_TYPES.LAUNCH_TYPE = 'Missile', AMO_STATS.MANEUVERABILITY, -1) AS "
                "MANEUVERABILITY ");
            from += QLatin1String(", AMO_STATS, AMO_TYPES ");
            where = QStringLiteral("WHERE EQUIPMENTS.EQUIPMENT_NAME = AMO_STATS.EQUIPMENT_NAME AND "
                                   "AMO_STATS.AMO_TYPE = AMO_TYPES.AMO_TYPE ");
        } else {
            sel += QLatin1String(
                ", AMO_STATS.DAMAGE, AMO_STATS.DAMAGE_TYPE, AMO_STATS.AMO_TYPE AS AMO_TYPE_AMO, "
                "AMO_STATS.STACK_SIZE, AMO_STATS.RANGE AS AMMO_RANGE, AMO_STATS.MANEUVERABILITY ");
            from += QLatin1String(", AMO_STATS ");
            where = QStringLiteral("WHERE EQUIPMENTS.EQUIPMENT_NAME = AMO_STATS.EQUIPMENT_NAME ");
        }
        sel +=
            statNameOnly
                ? QLatin1String(", AMO_STATS.EQUIPMENT_NAME AS STAT_NAME ")
                : QLatin1String(
                      ", IIF(EQUIPMENTS.PRICE=0,0,(AMO_STATS.DAMAGE/EQUIPMENTS.PRICE)) AS DAMAGE_PER_CREDIT ");
        break;
    default:
        // Not a type: the statement is left unusable and the caller's error report shows it.
        sel.clear();
        break;
    }

    if (!className.isEmpty()) {
        // The class comes from the class list itself and goes in as it is.
        from += QLatin1String(", EQUIPMENT_CLASS ");
        where += " AND EQUIPMENTS.EQUIPMENT_NAME = EQUIPMENT_CLASS.EQUIPMENTS_EQUIPMENT AND "
                 "EQUIPMENT_CLASS.CLASS_NAME = '" +
                 className + "' ";
    }
    return sel + from + where;
}
