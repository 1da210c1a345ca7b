// The type index helpers and the equipment query builder: every type and switch combination against
// the statement texts written out in full.
#include "core/vberror.h"
#include "viewsfixture.h"
#include "views/equiptypes.h"

#include <QTest>

class TestEquipTypes : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void enumerate_data();
    void enumerate();
    void deEnumerate_data();
    void deEnumerate();
    void statTable_data();
    void statTable();
    void getSQL_data();
    void getSQL();
    void wholeStatements_data();
    void wholeStatements();
    void findType_data();
    void findType();
};

void TestEquipTypes::enumerate_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("noRecurse");
    QTest::addColumn<int>("index");
    QTest::newRow("beam") << "beam" << false << 0;
    QTest::newRow("Missile any case") << "MiSSile" << false << 1;
    QTest::newRow("projectile") << "Projectile" << false << 2;
    QTest::newRow("reactor") << "reactor" << false << 3;
    QTest::newRow("engine") << "ENGINE" << false << 4;
    QTest::newRow("shield") << "shield" << false << 5;
    QTest::newRow("device") << "Device" << false << 6;
    QTest::newRow("ammunition") << "ammunition" << false << 7;
    QTest::newRow("all") << "All" << false << 8;
    QTest::newRow("two words") << "Heavy Shield" << false << 5;
    QTest::newRow("three words") << "Very Heavy Reactor" << false << 3;
    QTest::newRow("last word padded") << "Heavy  Engine " << false << 0; // last blank is the trailing one
    QTest::newRow("two words, no recurse") << "Heavy Shield" << true << 0;
    QTest::newRow("unknown") << "Cannon" << false << 0;
    QTest::newRow("unknown two words") << "Plasma Cannon" << false << 0;
    QTest::newRow("empty") << "" << false << 0;
    QTest::newRow("leading blank kept") << " shield" << true << 0;
}

void TestEquipTypes::enumerate() {
    QFETCH(QString, text);
    QFETCH(bool, noRecurse);
    QFETCH(int, index);
    QCOMPARE(Enumerate(text, noRecurse), index);
}

void TestEquipTypes::deEnumerate_data() {
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("word");
    const char* words[] = {"Beam", "Missile", "Projectile", "Reactor", "Engine",
                           "Shield", "Device", "Ammunition", "All"};
    for (int i = 0; i < 9; ++i)
        QTest::newRow(words[i]) << i << QString::fromLatin1(words[i]);
    QTest::newRow("9") << 9 << QString();
    QTest::newRow("-1") << -1 << QString();
}

void TestEquipTypes::deEnumerate() {
    QFETCH(int, index);
    QFETCH(QString, word);
    QCOMPARE(DeEnumerate(index), word);
    if (!word.isEmpty())
        QCOMPARE(Enumerate(word), index); // the display word goes back to its index
}

void TestEquipTypes::statTable_data() {
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("table");
    QTest::newRow("beam") << "BEAM" << "WEAPON_STATS";
    QTest::newRow("missile") << "missile" << "WEAPON_STATS";
    QTest::newRow("projectile") << "Projectile" << "WEAPON_STATS";
    QTest::newRow("reactor") << "reactor" << "REACTOR_STATS";
    QTest::newRow("engine") << "Engine" << "ENGINE_STATS";
    QTest::newRow("shield") << "shield" << "SHIELD_STATS";
    QTest::newRow("ammunition") << "Ammunition" << "AMO_STATS";
    QTest::newRow("device") << "device" << "";
    QTest::newRow("all") << "all" << "";
    QTest::newRow("unknown") << "Heavy Shield" << "";
}

void TestEquipTypes::statTable() {
    QFETCH(QString, type);
    QFETCH(QString, table);
    QCOMPARE(GetStatTable(type), table);
}

namespace {
const QString kBase = QStringLiteral(
    "SELECT EQUIPMENTS.EQUIPMENT_NAME, EQUIPMENTS.TYPE, EQUIPMENTS.MANUFACTURER, EQUIPMENTS.LVL, "
    "EQUIPMENTS.COMMENTS, EQUIPMENTS.PRICE AS PURCHASE_PRICE, EQUIPMENTS.QUALITY, EQUIPMENTS.UNIQUE_FLAG, "
    "EQUIPMENTS.COST_TO_MANUFACTURE AS MANUFACTURING_FEE, EQUIPMENTS.LAST_UPDATED");

struct TypeText {
    QString stats, computed, statName, from, where;
};

// The pieces each type adds, as the statement has always been written.
TypeText typeText(int index, bool plain) {
    const QString wFrom = ", WEAPON_STATS ";
    const QString wWhere = "WHERE EQUIPMENTS.EQUIPMENT_NAME = WEAPON_STATS.EQUIPMENT_NAME ";
    const QString wName = ", WEAPON_STATS.EQUIPMENT_NAME AS STAT_NAME ";
    switch (index) {
    case 0:
        return {", WEAPON_STATS.DAMAGE, WEAPON_STATS.DAMAGE_TYPE, WEAPON_STATS.DELAY, WEAPON_STATS.ENERGY_USE, WEAPON_STATS.RANGE ",
                ", (WEAPON_STATS.DAMAGE/WEAPON_STATS.DELAY) AS DAMAGE_PER_SECOND, (WEAPON_STATS.DAMAGE/WEAPON_STATS.ENERGY_USE) AS EFFICIENCY ",
                wName, wFrom, wWhere};
    case 1:
        return {", WEAPON_STATS.ENERGY_USE, WEAPON_STATS.DELAY , WEAPON_STATS.ROUNDS, WEAPON_STATS.AMO_TYPE ", "", wName, wFrom, wWhere};
    case 2:
        return {", WEAPON_STATS.ENERGY_USE, WEAPON_STATS.DELAY , WEAPON_STATS.RANGE, WEAPON_STATS.ROUNDS, WEAPON_STATS.AMO_TYPE ",
                "", wName, wFrom, wWhere};
    case 3:
        return {", REACTOR_STATS.ENERGY, REACTOR_STATS.RECHARGE_RATE ",
                ", (REACTOR_STATS.ENERGY/REACTOR_STATS.RECHARGE_RATE) AS RECHARGE_TIME ",
                ", REACTOR_STATS.EQUIPMENT_NAME AS STAT_NAME ", ", REACTOR_STATS ",
                "WHERE EQUIPMENTS.EQUIPMENT_NAME = REACTOR_STATS.EQUIPMENT_NAME "};
    case 4:
        return {", ENGINE_STATS.WARP, ENGINE_STATS.DRAIN, ENGINE_STATS.THRUST, ENGINE_STATS.SIGNATURE ",
                ", (ENGINE_STATS.WARP/ENGINE_STATS.DRAIN) AS EFFICIENCY ",
                ", ENGINE_STATS.EQUIPMENT_NAME AS STAT_NAME ", ", ENGINE_STATS ",
                "WHERE EQUIPMENTS.EQUIPMENT_NAME = ENGINE_STATS.EQUIPMENT_NAME "};
    case 5:
        return {", SHIELD_STATS.COVERAGE, SHIELD_STATS.REGEN_RATE ",
                ", (SHIELD_STATS.COVERAGE/SHIELD_STATS.REGEN_RATE) AS REGENERATE_TIME ",
                ", SHIELD_STATS.EQUIPMENT_NAME AS STAT_NAME ", ", SHIELD_STATS ",
                "WHERE EQUIPMENTS.EQUIPMENT_NAME = SHIELD_STATS.EQUIPMENT_NAME "};
    case 6:
    case 8:
        return {" ", "", "", " ", "WHERE EQUIPMENTS.EQUIPMENT_NAME = EQUIPMENTS.EQUIPMENT_NAME "};
    case 7:
        if (!plain)
            return {", AMO_STATS.DAMAGE, AMO_STATS.DAMAGE_TYPE, AMO_TYPES.LAUNCH_TYPE, AMO_STATS.AMO_TYPE AS AMO_TYPE_AMO, AMO_STATS.STACK_SIZE, IIF(AMO_TYPES.LAUNCH_TYPE = 'Missile', AMO_STATS.RANGE, -1) AS AMMO_RANGE, IIF(AMO_TYPES.LAUNCH_TYPE = 'Missile', AMO_STATS.MANEUVERABILITY, -1) AS MANEUVERABILITY ",
                    ", IIF(EQUIPMENTS.PRICE=0,0,(AMO_STATS.DAMAGE/EQUIPMENTS.PRICE)) AS DAMAGE_PER_CREDIT ",
                    ", AMO_STATS.EQUIPMENT_NAME AS STAT_NAME ", ", AMO_STATS, AMO_TYPES ",
                    "WHERE EQUIPMENTS.EQUIPMENT_NAME = AMO_STATS.EQUIPMENT_NAME AND AMO_STATS.AMO_TYPE = AMO_TYPES.AMO_TYPE "};
        return {", AMO_STATS.DAMAGE, AMO_STATS.DAMAGE_TYPE, AMO_STATS.AMO_TYPE AS AMO_TYPE_AMO, AMO_STATS.STACK_SIZE, AMO_STATS.RANGE AS AMMO_RANGE, AMO_STATS.MANEUVERABILITY ",
                ", IIF(EQUIPMENTS.PRICE=0,0,(AMO_STATS.DAMAGE/EQUIPMENTS.PRICE)) AS DAMAGE_PER_CREDIT ",
                ", AMO_STATS.EQUIPMENT_NAME AS STAT_NAME ", ", AMO_STATS ",
                "WHERE EQUIPMENTS.EQUIPMENT_NAME = AMO_STATS.EQUIPMENT_NAME "};
    }
    return {};
}
} // namespace

void TestEquipTypes::getSQL_data() {
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("marks");
    QTest::addColumn<bool>("statName");
    QTest::addColumn<bool>("picture");
    QTest::addColumn<bool>("custom");
    QTest::addColumn<QString>("className");
    QTest::addColumn<bool>("plain");
    QTest::addColumn<QString>("expected");
    for (int index = 0; index <= 9; ++index)
        for (int bits = 0; bits < 64; ++bits) {
            const bool marks = bits & 1, statName = bits & 2, picture = bits & 4, custom = bits & 8,
                       withClass = bits & 16, plain = bits & 32;
            const QString className = withClass ? QStringLiteral("Fighter") : QString();
            QString sel = kBase, from = "FROM EQUIPMENTS", where;
            if (marks)
                sel += ", EQUIPMENTS.CHECK, EQUIPMENTS.PERSONAL_DB, EQUIPMENTS.UPDATED";
            if (picture)
                sel += ", EQUIPMENTS.PIC_ID";
            if (custom)
                sel += ", EQUIPMENTS.CUSTOM_01, EQUIPMENTS.CUSTOM_02, EQUIPMENTS.CUSTOM_03";
            if (index == 9) {
                sel.clear();
            } else {
                const TypeText t = typeText(index, plain);
                sel += t.stats + (statName ? t.statName : t.computed);
                from += t.from;
                where = t.where;
            }
            if (withClass) {
                from += ", EQUIPMENT_CLASS ";
                where += " AND EQUIPMENTS.EQUIPMENT_NAME = EQUIPMENT_CLASS.EQUIPMENTS_EQUIPMENT AND "
                         "EQUIPMENT_CLASS.CLASS_NAME = 'Fighter' ";
            }
            QTest::addRow("type %d bits %d", index, bits)
                << index << marks << statName << picture << custom << className << plain << sel + from + where;
        }
}

void TestEquipTypes::getSQL() {
    QFETCH(int, index);
    QFETCH(bool, marks);
    QFETCH(bool, statName);
    QFETCH(bool, picture);
    QFETCH(bool, custom);
    QFETCH(QString, className);
    QFETCH(bool, plain);
    QFETCH(QString, expected);
    QCOMPARE(GetSQL(index, marks, statName, picture, custom, className, plain), expected);
}

// A few statements written out whole, as the view and the list send them.
void TestEquipTypes::wholeStatements_data() {
    QTest::addColumn<QString>("actual");
    QTest::addColumn<QString>("expected");
    QTest::newRow("beam view") << GetSQL(0, false, false, true, true, QString(), false)
        << "SELECT EQUIPMENTS.EQUIPMENT_NAME, EQUIPMENTS.TYPE, EQUIPMENTS.MANUFACTURER, EQUIPMENTS.LVL, EQUIPMENTS.COMMENTS, EQUIPMENTS.PRICE AS PURCHASE_PRICE, EQUIPMENTS.QUALITY, EQUIPMENTS.UNIQUE_FLAG, EQUIPMENTS.COST_TO_MANUFACTURE AS MANUFACTURING_FEE, EQUIPMENTS.LAST_UPDATED, EQUIPMENTS.PIC_ID, EQUIPMENTS.CUSTOM_01, EQUIPMENTS.CUSTOM_02, EQUIPMENTS.CUSTOM_03, WEAPON_STATS.DAMAGE, WEAPON_STATS.DAMAGE_TYPE, WEAPON_STATS.DELAY, WEAPON_STATS.ENERGY_USE, WEAPON_STATS.RANGE , (WEAPON_STATS.DAMAGE/WEAPON_STATS.DELAY) AS DAMAGE_PER_SECOND, (WEAPON_STATS.DAMAGE/WEAPON_STATS.ENERGY_USE) AS EFFICIENCY FROM EQUIPMENTS, WEAPON_STATS WHERE EQUIPMENTS.EQUIPMENT_NAME = WEAPON_STATS.EQUIPMENT_NAME ";
    QTest::newRow("device list") << GetSQL(6, true, false, false, false, QString(), false)
        << "SELECT EQUIPMENTS.EQUIPMENT_NAME, EQUIPMENTS.TYPE, EQUIPMENTS.MANUFACTURER, EQUIPMENTS.LVL, EQUIPMENTS.COMMENTS, EQUIPMENTS.PRICE AS PURCHASE_PRICE, EQUIPMENTS.QUALITY, EQUIPMENTS.UNIQUE_FLAG, EQUIPMENTS.COST_TO_MANUFACTURE AS MANUFACTURING_FEE, EQUIPMENTS.LAST_UPDATED, EQUIPMENTS.CHECK, EQUIPMENTS.PERSONAL_DB, EQUIPMENTS.UPDATED FROM EQUIPMENTS WHERE EQUIPMENTS.EQUIPMENT_NAME = EQUIPMENTS.EQUIPMENT_NAME ";
    QTest::newRow("missile by class") << GetSQL(1, false, false, false, false, "Scout", false)
        << "SELECT EQUIPMENTS.EQUIPMENT_NAME, EQUIPMENTS.TYPE, EQUIPMENTS.MANUFACTURER, EQUIPMENTS.LVL, EQUIPMENTS.COMMENTS, EQUIPMENTS.PRICE AS PURCHASE_PRICE, EQUIPMENTS.QUALITY, EQUIPMENTS.UNIQUE_FLAG, EQUIPMENTS.COST_TO_MANUFACTURE AS MANUFACTURING_FEE, EQUIPMENTS.LAST_UPDATED, WEAPON_STATS.ENERGY_USE, WEAPON_STATS.DELAY , WEAPON_STATS.ROUNDS, WEAPON_STATS.AMO_TYPE FROM EQUIPMENTS, WEAPON_STATS , EQUIPMENT_CLASS WHERE EQUIPMENTS.EQUIPMENT_NAME = WEAPON_STATS.EQUIPMENT_NAME  AND EQUIPMENTS.EQUIPMENT_NAME = EQUIPMENT_CLASS.EQUIPMENTS_EQUIPMENT AND EQUIPMENT_CLASS.CLASS_NAME = 'Scout' ";
    QTest::newRow("class unquoted") << GetSQL(8, false, false, false, false, "Sky's", false).section(" AND ", 2)
        << "EQUIPMENT_CLASS.CLASS_NAME = 'Sky's' ";
    QTest::newRow("not a type") << GetSQL(12, false, false, false, false, QString(), false) << "FROM EQUIPMENTS";
}

void TestEquipTypes::wholeStatements() {
    QFETCH(QString, actual);
    QFETCH(QString, expected);
    QCOMPARE(actual, expected);
}

// The type of a stored equipment, by its last word when it has two.
void TestEquipTypes::findType_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("index");
    QTest::addColumn<long>("error");
    QTest::newRow("beam with an apostrophe") << "Hunter's Lance Mk I" << 0 << 0L;
    QTest::newRow("two-word projectile") << "Mass Driver Mk II" << 2 << 0L;
    QTest::newRow("two-word shield") << "Bulwark Mk I" << 5 << 0L;
    QTest::newRow("lower-case engine") << "Afterburner Mk I" << 4 << 0L;
    QTest::newRow("ammunition") << "Standard Flechette" << 7 << 0L;
    QTest::newRow("device") << "Cloak Emitter Mk I" << 6 << 0L;
    QTest::newRow("missing") << "No Such Thing" << 0 << 3021L;
}

void TestEquipTypes::findType() {
    QFETCH(QString, name);
    QFETCH(int, index);
    QFETCH(long, error);
    ViewsFixture f;
    QString why;
    QVERIFY2(f.setUp(true, &why), qPrintable(why));
    QCOMPARE(FindType(name), index);
    if (error) {
        QCOMPARE(f.prompt().count(), 1);
        QVERIFY2(f.prompt().last().text.startsWith("Error " + QString::number(error) + " ("), qPrintable(f.prompt().last().text));
        QVERIFY(f.prompt().last().text.endsWith("  procedure FindType of Module modMain"));
    } else {
        QCOMPARE(f.prompt().count(), 0);
    }
    f.tearDown();
}

QTEST_GUILESS_MAIN(TestEquipTypes)
#include "tst_equiptypes.moc"
