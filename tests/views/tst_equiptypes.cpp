// The type index helpers and the equipment query builder: each type's statement and each switch,
// written out in full.
#include "views/equiptypes.h"

#include <QTest>

class TestEquipTypes : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void enumerate_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("noRecurse");
        QTest::addColumn<int>("index");
        QTest::newRow("any case") << "MiSSile" << false << 1;
        QTest::newRow("ammunition") << "ammunition" << false << 7;
        QTest::newRow("two words") << "Heavy Shield" << false << 5;
        QTest::newRow("three words") << "Very Heavy Reactor" << false << 3;
        QTest::newRow("last word padded") << "Heavy  Engine " << false << 0; // last blank is the trailing one
        QTest::newRow("two words, no recurse") << "Heavy Shield" << true << 0;
        QTest::newRow("unknown two words") << "Plasma Cannon" << false << 0;
        QTest::newRow("empty") << "" << false << 0;
        QTest::newRow("leading blank kept") << " shield" << true << 0;
    }
    void enumerate() {
        QFETCH(QString, text);
        QFETCH(bool, noRecurse);
        QFETCH(int, index);
        QCOMPARE(Enumerate(text, noRecurse), index);
    }
    void deEnumerate_data() {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("word");
        const char* words[] = {"Beam",   "Missile", "Projectile", "Reactor", "Engine",
                               "Shield", "Device",  "Ammunition", "All"};
        for (int i = 0; i < 9; ++i)
            QTest::newRow(words[i]) << i << QString::fromLatin1(words[i]);
        QTest::newRow("9") << 9 << QString();
        QTest::newRow("-1") << -1 << QString();
    }
    void deEnumerate() {
        QFETCH(int, index);
        QFETCH(QString, word);
        QCOMPARE(DeEnumerate(index), word);
        if (!word.isEmpty())
            QCOMPARE(Enumerate(word), index); // the display word goes back to its index
    }
    void statTable_data() {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("table");
        QTest::newRow("beam") << "BEAM"
                              << "WEAPON_STATS";
        QTest::newRow("reactor") << "reactor"
                                 << "REACTOR_STATS";
        QTest::newRow("ammunition") << "Ammunition"
                                    << "AMO_STATS";
        QTest::newRow("device") << "device"
                                << "";
        QTest::newRow("unknown") << "Heavy Shield"
                                 << "";
    }
    void statTable() {
        QFETCH(QString, type);
        QFETCH(QString, table);
        QCOMPARE(GetStatTable(type), table);
    }
    // Every type once and every switch once, written out whole as the views and the lists send them.
    void wholeStatements_data() {
        QTest::addColumn<QString>("actual");
        QTest::addColumn<QString>("expected");
        QTest::newRow("beam view")
            << GetSQL(0, false, false, true, true, QString(), false)
            << "SELECT EQUIPMENTS.EQUIPMENT_NAME, EQUIPMENTS.TYPE, EQUIPMENTS.MANUFACTURER, EQUIPMENTS.LVL, EQUIPMENTS.COMMENTS, EQUIPMENTS.PRICE AS PURCHASE_PRICE, EQUIPMENTS.QUALITY, EQUIPMENTS.UNIQUE_FLAG, EQUIPMENTS.COST_TO_MANUFACTURE AS MANUFACTURING_FEE, EQUIPMENTS.LAST_UPDATED, EQUIPMENTS.PIC_ID, EQUIPMENTS.CUSTOM_01, EQUIPMENTS.CUSTOM_02, EQUIPMENTS.CUSTOM_03, WEAPON_STATS.DAMAGE, WEAPON_STATS.DAMAGE_TYPE, WEAPON_STATS.DELAY, WEAPON_STATS.ENERGY_USE, WEAPON_STATS.RANGE , (WEAPON_STATS.DAMAGE/WEAPON_STATS.DELAY) AS DAMAGE_PER_SECOND, (WEAPON_STATS.DAMAGE/WEAPON_STATS.ENERGY_USE) AS EFFICIENCY FROM EQUIPMENTS, WEAPON_STATS WHERE EQUIPMENTS.EQUIPMENT_NAME = WEAPON_STATS.EQUIPMENT_NAME ";
        QTest::newRow("device list")
            << GetSQL(6, true, false, false, false, QString(), false)
            << "SELECT EQUIPMENTS.EQUIPMENT_NAME, EQUIPMENTS.TYPE, EQUIPMENTS.MANUFACTURER, EQUIPMENTS.LVL, EQUIPMENTS.COMMENTS, EQUIPMENTS.PRICE AS PURCHASE_PRICE, EQUIPMENTS.QUALITY, EQUIPMENTS.UNIQUE_FLAG, EQUIPMENTS.COST_TO_MANUFACTURE AS MANUFACTURING_FEE, EQUIPMENTS.LAST_UPDATED, EQUIPMENTS.CHECK, EQUIPMENTS.PERSONAL_DB, EQUIPMENTS.UPDATED FROM EQUIPMENTS WHERE EQUIPMENTS.EQUIPMENT_NAME = EQUIPMENTS.EQUIPMENT_NAME ";
        QTest::newRow("missile by class")
            << GetSQL(1, false, false, false, false, "Scout", false)
            << "SELECT EQUIPMENTS.EQUIPMENT_NAME, EQUIPMENTS.TYPE, EQUIPMENTS.MANUFACTURER, EQUIPMENTS.LVL, EQUIPMENTS.COMMENTS, EQUIPMENTS.PRICE AS PURCHASE_PRICE, EQUIPMENTS.QUALITY, EQUIPMENTS.UNIQUE_FLAG, EQUIPMENTS.COST_TO_MANUFACTURE AS MANUFACTURING_FEE, EQUIPMENTS.LAST_UPDATED, WEAPON_STATS.ENERGY_USE, WEAPON_STATS.DELAY , WEAPON_STATS.ROUNDS, WEAPON_STATS.AMO_TYPE FROM EQUIPMENTS, WEAPON_STATS , EQUIPMENT_CLASS WHERE EQUIPMENTS.EQUIPMENT_NAME = WEAPON_STATS.EQUIPMENT_NAME  AND EQUIPMENTS.EQUIPMENT_NAME = EQUIPMENT_CLASS.EQUIPMENTS_EQUIPMENT AND EQUIPMENT_CLASS.CLASS_NAME = 'Scout' ";
        QTest::newRow("projectile stat name")
            << GetSQL(2, false, true, false, false, QString(), false)
            << "SELECT EQUIPMENTS.EQUIPMENT_NAME, EQUIPMENTS.TYPE, EQUIPMENTS.MANUFACTURER, EQUIPMENTS.LVL, EQUIPMENTS.COMMENTS, EQUIPMENTS.PRICE AS PURCHASE_PRICE, EQUIPMENTS.QUALITY, EQUIPMENTS.UNIQUE_FLAG, EQUIPMENTS.COST_TO_MANUFACTURE AS MANUFACTURING_FEE, EQUIPMENTS.LAST_UPDATED, WEAPON_STATS.ENERGY_USE, WEAPON_STATS.DELAY , WEAPON_STATS.RANGE, WEAPON_STATS.ROUNDS, WEAPON_STATS.AMO_TYPE , WEAPON_STATS.EQUIPMENT_NAME AS STAT_NAME FROM EQUIPMENTS, WEAPON_STATS WHERE EQUIPMENTS.EQUIPMENT_NAME = WEAPON_STATS.EQUIPMENT_NAME ";
        QTest::newRow("reactor")
            << GetSQL(3, false, false, false, false, QString(), false)
            << "SELECT EQUIPMENTS.EQUIPMENT_NAME, EQUIPMENTS.TYPE, EQUIPMENTS.MANUFACTURER, EQUIPMENTS.LVL, EQUIPMENTS.COMMENTS, EQUIPMENTS.PRICE AS PURCHASE_PRICE, EQUIPMENTS.QUALITY, EQUIPMENTS.UNIQUE_FLAG, EQUIPMENTS.COST_TO_MANUFACTURE AS MANUFACTURING_FEE, EQUIPMENTS.LAST_UPDATED, REACTOR_STATS.ENERGY, REACTOR_STATS.RECHARGE_RATE , (REACTOR_STATS.ENERGY/REACTOR_STATS.RECHARGE_RATE) AS RECHARGE_TIME FROM EQUIPMENTS, REACTOR_STATS WHERE EQUIPMENTS.EQUIPMENT_NAME = REACTOR_STATS.EQUIPMENT_NAME ";
        QTest::newRow("engine stat name")
            << GetSQL(4, false, true, false, false, QString(), false)
            << "SELECT EQUIPMENTS.EQUIPMENT_NAME, EQUIPMENTS.TYPE, EQUIPMENTS.MANUFACTURER, EQUIPMENTS.LVL, EQUIPMENTS.COMMENTS, EQUIPMENTS.PRICE AS PURCHASE_PRICE, EQUIPMENTS.QUALITY, EQUIPMENTS.UNIQUE_FLAG, EQUIPMENTS.COST_TO_MANUFACTURE AS MANUFACTURING_FEE, EQUIPMENTS.LAST_UPDATED, ENGINE_STATS.WARP, ENGINE_STATS.DRAIN, ENGINE_STATS.THRUST, ENGINE_STATS.SIGNATURE , ENGINE_STATS.EQUIPMENT_NAME AS STAT_NAME FROM EQUIPMENTS, ENGINE_STATS WHERE EQUIPMENTS.EQUIPMENT_NAME = ENGINE_STATS.EQUIPMENT_NAME ";
        QTest::newRow("shield")
            << GetSQL(5, false, false, false, false, QString(), false)
            << "SELECT EQUIPMENTS.EQUIPMENT_NAME, EQUIPMENTS.TYPE, EQUIPMENTS.MANUFACTURER, EQUIPMENTS.LVL, EQUIPMENTS.COMMENTS, EQUIPMENTS.PRICE AS PURCHASE_PRICE, EQUIPMENTS.QUALITY, EQUIPMENTS.UNIQUE_FLAG, EQUIPMENTS.COST_TO_MANUFACTURE AS MANUFACTURING_FEE, EQUIPMENTS.LAST_UPDATED, SHIELD_STATS.COVERAGE, SHIELD_STATS.REGEN_RATE , (SHIELD_STATS.COVERAGE/SHIELD_STATS.REGEN_RATE) AS REGENERATE_TIME FROM EQUIPMENTS, SHIELD_STATS WHERE EQUIPMENTS.EQUIPMENT_NAME = SHIELD_STATS.EQUIPMENT_NAME ";
        QTest::newRow("ammunition view")
            << GetSQL(7, false, false, false, false, QString(), false)
            << "SELECT EQUIPMENTS.EQUIPMENT_NAME, EQUIPMENTS.TYPE, EQUIPMENTS.MANUFACTURER, EQUIPMENTS.LVL, EQUIPMENTS.COMMENTS, EQUIPMENTS.PRICE AS PURCHASE_PRICE, EQUIPMENTS.QUALITY, EQUIPMENTS.UNIQUE_FLAG, EQUIPMENTS.COST_TO_MANUFACTURE AS MANUFACTURING_FEE, EQUIPMENTS.LAST_UPDATED, AMO_STATS.DAMAGE, AMO_STATS.DAMAGE_TYPE, AMO_TYPES.LAUNCH_TYPE, AMO_STATS.AMO_TYPE AS AMO_TYPE_AMO, AMO_STATS.STACK_SIZE, IIF(AMO_TYPES.LAUNCH_TYPE = 'Missile', AMO_STATS.RANGE, -1) AS AMMO_RANGE, IIF(AMO_TYPES.LAUNCH_TYPE = 'Missile', AMO_STATS.MANEUVERABILITY, -1) AS MANEUVERABILITY , IIF(EQUIPMENTS.PRICE=0,0,(AMO_STATS.DAMAGE/EQUIPMENTS.PRICE)) AS DAMAGE_PER_CREDIT FROM EQUIPMENTS, AMO_STATS, AMO_TYPES WHERE EQUIPMENTS.EQUIPMENT_NAME = AMO_STATS.EQUIPMENT_NAME AND AMO_STATS.AMO_TYPE = AMO_TYPES.AMO_TYPE ";
        QTest::newRow("ammunition plain")
            << GetSQL(7, false, false, false, false, QString(), true)
            << "SELECT EQUIPMENTS.EQUIPMENT_NAME, EQUIPMENTS.TYPE, EQUIPMENTS.MANUFACTURER, EQUIPMENTS.LVL, EQUIPMENTS.COMMENTS, EQUIPMENTS.PRICE AS PURCHASE_PRICE, EQUIPMENTS.QUALITY, EQUIPMENTS.UNIQUE_FLAG, EQUIPMENTS.COST_TO_MANUFACTURE AS MANUFACTURING_FEE, EQUIPMENTS.LAST_UPDATED, AMO_STATS.DAMAGE, AMO_STATS.DAMAGE_TYPE, AMO_STATS.AMO_TYPE AS AMO_TYPE_AMO, AMO_STATS.STACK_SIZE, AMO_STATS.RANGE AS AMMO_RANGE, AMO_STATS.MANEUVERABILITY , IIF(EQUIPMENTS.PRICE=0,0,(AMO_STATS.DAMAGE/EQUIPMENTS.PRICE)) AS DAMAGE_PER_CREDIT FROM EQUIPMENTS, AMO_STATS WHERE EQUIPMENTS.EQUIPMENT_NAME = AMO_STATS.EQUIPMENT_NAME ";
        QTest::newRow("class unquoted")
            << GetSQL(8, false, false, false, false, "Sky's", false).section(" AND ", 2)
            << "EQUIPMENT_CLASS.CLASS_NAME = 'Sky's' ";
        QTest::newRow("not a type") << GetSQL(12, false, false, false, false, QString(), false)
                                    << "FROM EQUIPMENTS";
    }
    void wholeStatements() {
        QFETCH(QString, actual);
        QFETCH(QString, expected);
        QCOMPARE(actual, expected);
    }
};

QTEST_GUILESS_MAIN(TestEquipTypes)
#include "tst_equiptypes.moc"
