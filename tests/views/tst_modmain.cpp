// The shared view texts: captions, price words, whole numbers, node texts back to names, the specials
// tree texts, tooltips, and the null-safe readers. The type index helpers and the equipment query
// builder: each type's statement and each switch, written out in full.
#include "core/programfolder.h"
#include "core/settings.h"
#include "core/vberror.h"
#include "views/equiptypes.h"
#include "views/modmain.h"
#include "viewsfixture.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <functional>

class TestModMain : public QObject {
    Q_OBJECT
    QTemporaryDir m_dir;

private Q_SLOTS:
    void initTestCase() {
        IsolateSettings(m_dir.path());
        setProgramFolder(m_dir.path());
        QFile ini(m_dir.filePath("VOSK.ini"));
        QVERIFY(ini.open(QIODevice::WriteOnly));
        ini.write("[BEAM]\nDAMAGE=Damage of one ### shot\n"
                  "[VIEW_EQUIPMENT]\nSRP=Suggested price with %%% markup\\nper unit\nPLAIN=No marks here\n");
        ini.close();
        CustomFields cf;
        cf.on = true;
        cf.caption[0] = "Faction";
        cf.caption[1] = "my_note";
        setCustomFields(cf);
    }

    void texts_data() {
        QTest::addColumn<QString>("what");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QString>("expected");
        auto row = [](const char* what, const char* text, const QVariant& value, const char* expected) {
            QTest::addRow("%s %s %s", what, text, qPrintable(value.toString()))
                << what << text << value << QString::fromUtf8(expected);
        };
        row("field", "DAMAGE_PER_SECOND", {}, "Damage Per Second");
        row("field", "UNIQUE_FLAG", {}, "Unique");
        row("field", "AMO_TYPE", {}, "Ammunition  Type"); // "Ammunition_" and the underscore after it
        row("field", "AMMO_RANGE", {}, "Ammo Range");
        row("field", "energy_USE", {}, "Energy Use");
        row("field", "CUSTOM_01", {}, "Faction");
        row("field", "CUSTOM_02", {}, "My Note");
        row("price", "-2", {}, "Mission Reward");
        row("price", "-1", {}, "Loot Only");
        row("price", "0", {}, "Unknown");
        row("price", "1,250,000", {}, "1,250,000");
        row("fee", "-1", {}, "Not Manufacturable");
        row("fee", "0", {}, "Unknown");
        row("whole", "", 1234567, "1,234,567");
        row("whole", "", -1234, "-1,234");
        row("node", "Ion Coil (L12) x3", {}, "Ion Coil");
        row("node", "Ion Beam (L4 Beam) x2", {}, "Ion Beam");
        // An upgrade source keeps its level bracket: it does not resolve to a record.
        row("node", "Ion Beam (L4 Beam) (Upgrade)", {}, "Ion Beam (L4 Beam)");
        row("node", "(Odd)", {}, "(Odd)");
        row("special|%", "Shield Boost", 12.345, "Shield Boost +12.35%");
        row("special|points", "Drain", -3, "Drain -3 Points");
        row("special|%", "Cloak", 0, "Cloak");
        row("special|light years", "Warp", 2.5, "Warp +2.5 Light Years");
        row("detail", "ENERGY_USE", 5, "Energy Use: 5");
        row("detail", "SHUNT", 0, "");
        row("detail", "SHUNT", {}, "");
    }
    void texts() {
        QFETCH(QString, what);
        QFETCH(QString, text);
        QFETCH(QVariant, value);
        QFETCH(QString, expected);
        const QString actual = what == "field"                    ? FormatFieldName(text)
                               : what == "price" || what == "fee" ? PriceText(text, what == "fee")
                               : what == "whole"                  ? FormatWhole(value.toLongLong())
                               : what == "node"                   ? RemoveExtra(text)
                               : what == "detail"                 ? SpecialDetailText(text, value)
                                                  : SpecialText(text, value, what.section('|', 1));
        QCOMPARE(actual, expected);
    }

    void toolTips() {
        const QList<QStringList> rows = {
            {"1", "beam", "DAMAGE", "Heavy_Beam", "Damage of one HeavyBeam shot"},
            {"1.155", "VIEW_EQUIPMENT", "SRP", "", "Suggested price with 15.5% markup\r\nper unit"},
            {"1", "VIEW_EQUIPMENT", "PLAIN", "x", "No marks here"},
            {"1", "VIEW_EQUIPMENT", "NOPE", "x", ""}};
        for (const QStringList& r : rows) {
            opt::save(opt::Markup, r[0]);
            QCOMPARE(GetToolTip(r[1], r[2], r[3]), r[4]);
        }
    }

    void nzReaders() {
        QCOMPARE(NzString(QVariant()), QString());
        QCOMPARE(NzString(QVariant(2.0)), QString("2"));
        QCOMPARE(NzLong(QVariant(7.6)), 8);
        QCOMPARE(NzLong(QVariant("1,200")), 1200);
        QCOMPARE(NzDouble(QVariant(), 3.5), 3.5);
        QVERIFY(!NzBool(QVariant()) && NzBool(QVariant(-1)) && !NzBool(QVariant("False")));
        auto errorOf = [](const std::function<void()>& call) {
            try {
                call();
            } catch (const VbError& e) {
                return e.number;
            }
            return 0L;
        };
        QCOMPARE(errorOf([] { NzLong(QVariant("lots")); }), 13L); // type mismatch
        QCOMPARE(errorOf([] { NzLong(QVariant(3e10)); }), 6L);    // overflow
    }

    void enumerate_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("noRecurse");
        QTest::addColumn<int>("index");
        auto row = [](const char* text, bool noRecurse, int index) {
            QTest::addRow("'%s' %d", text, int(noRecurse)) << QString(text) << noRecurse << index;
        };
        row("MiSSile", false, 1);
        row("ammunition", false, 7);
        row("Heavy Shield", false, 5);
        row("Very Heavy Reactor", false, 3);
        row("Heavy  Engine ", false, 0); // the last blank is the trailing one
        row("Heavy Shield", true, 0);
        row("Plasma Cannon", false, 0);
        row("", false, 0);
        row(" shield", true, 0); // a leading blank is kept
    }
    void enumerate() {
        QFETCH(QString, text);
        QFETCH(bool, noRecurse);
        QFETCH(int, index);
        QCOMPARE(Enumerate(text, noRecurse), index);
    }
    void deEnumerateAndStatTable() {
        const QStringList words = {"Beam",   "Missile", "Projectile", "Reactor", "Engine",
                                   "Shield", "Device",  "Ammunition", "All"};
        for (int i = 0; i < words.size(); ++i) {
            QCOMPARE(DeEnumerate(i), words[i]);
            QCOMPARE(Enumerate(words[i]), i); // the display word goes back to its index
        }
        QCOMPARE(DeEnumerate(9) + DeEnumerate(-1), QString());
        const QList<QPair<QString, QString>> tables = {{"BEAM", "WEAPON_STATS"},
                                                       {"reactor", "REACTOR_STATS"},
                                                       {"Ammunition", "AMO_STATS"},
                                                       {"device", ""},
                                                       {"Heavy Shield", ""}};
        for (const auto& [type, table] : tables)
            QCOMPARE(GetStatTable(type), table);
    }
    // Every type once and every switch once, written out whole as the views and the lists send them.
    void wholeStatements_data() {
        QTest::addColumn<QString>("actual");
        QTest::addColumn<QString>("expected");
        const QString head =
            "SELECT EQUIPMENTS.EQUIPMENT_NAME, EQUIPMENTS.TYPE, EQUIPMENTS.MANUFACTURER, EQUIPMENTS.LVL, EQUIPMENTS.COMMENTS, EQUIPMENTS.PRICE AS PURCHASE_PRICE, EQUIPMENTS.QUALITY, EQUIPMENTS.UNIQUE_FLAG, EQUIPMENTS.COST_TO_MANUFACTURE AS MANUFACTURING_FEE, EQUIPMENTS.LAST_UPDATED, ";
        auto row = [&](const char* tag, const QString& actual, const char* rest) {
            QTest::newRow(tag) << actual << head + rest;
        };
        row("beam view", GetSQL(0, false, false, true, true, QString(), false),
            "EQUIPMENTS.PIC_ID, EQUIPMENTS.CUSTOM_01, EQUIPMENTS.CUSTOM_02, EQUIPMENTS.CUSTOM_03, WEAPON_STATS.DAMAGE, WEAPON_STATS.DAMAGE_TYPE, WEAPON_STATS.DELAY, WEAPON_STATS.ENERGY_USE, WEAPON_STATS.RANGE , (WEAPON_STATS.DAMAGE/WEAPON_STATS.DELAY) AS DAMAGE_PER_SECOND, (WEAPON_STATS.DAMAGE/WEAPON_STATS.ENERGY_USE) AS EFFICIENCY FROM EQUIPMENTS, WEAPON_STATS WHERE EQUIPMENTS.EQUIPMENT_NAME = WEAPON_STATS.EQUIPMENT_NAME ");
        row("device list", GetSQL(6, true, false, false, false, QString(), false),
            "EQUIPMENTS.CHECK, EQUIPMENTS.PERSONAL_DB, EQUIPMENTS.UPDATED FROM EQUIPMENTS WHERE EQUIPMENTS.EQUIPMENT_NAME = EQUIPMENTS.EQUIPMENT_NAME ");
        row("missile by class", GetSQL(1, false, false, false, false, "Scout", false),
            "WEAPON_STATS.ENERGY_USE, WEAPON_STATS.DELAY , WEAPON_STATS.ROUNDS, WEAPON_STATS.AMO_TYPE FROM EQUIPMENTS, WEAPON_STATS , EQUIPMENT_CLASS WHERE EQUIPMENTS.EQUIPMENT_NAME = WEAPON_STATS.EQUIPMENT_NAME  AND EQUIPMENTS.EQUIPMENT_NAME = EQUIPMENT_CLASS.EQUIPMENTS_EQUIPMENT AND EQUIPMENT_CLASS.CLASS_NAME = 'Scout' ");
        row("projectile stat name", GetSQL(2, false, true, false, false, QString(), false),
            "WEAPON_STATS.ENERGY_USE, WEAPON_STATS.DELAY , WEAPON_STATS.RANGE, WEAPON_STATS.ROUNDS, WEAPON_STATS.AMO_TYPE , WEAPON_STATS.EQUIPMENT_NAME AS STAT_NAME FROM EQUIPMENTS, WEAPON_STATS WHERE EQUIPMENTS.EQUIPMENT_NAME = WEAPON_STATS.EQUIPMENT_NAME ");
        row("reactor", GetSQL(3, false, false, false, false, QString(), false),
            "REACTOR_STATS.ENERGY, REACTOR_STATS.RECHARGE_RATE , (REACTOR_STATS.ENERGY/REACTOR_STATS.RECHARGE_RATE) AS RECHARGE_TIME FROM EQUIPMENTS, REACTOR_STATS WHERE EQUIPMENTS.EQUIPMENT_NAME = REACTOR_STATS.EQUIPMENT_NAME ");
        row("engine stat name", GetSQL(4, false, true, false, false, QString(), false),
            "ENGINE_STATS.WARP, ENGINE_STATS.DRAIN, ENGINE_STATS.THRUST, ENGINE_STATS.SIGNATURE , ENGINE_STATS.EQUIPMENT_NAME AS STAT_NAME FROM EQUIPMENTS, ENGINE_STATS WHERE EQUIPMENTS.EQUIPMENT_NAME = ENGINE_STATS.EQUIPMENT_NAME ");
        row("shield", GetSQL(5, false, false, false, false, QString(), false),
            "SHIELD_STATS.COVERAGE, SHIELD_STATS.REGEN_RATE , (SHIELD_STATS.COVERAGE/SHIELD_STATS.REGEN_RATE) AS REGENERATE_TIME FROM EQUIPMENTS, SHIELD_STATS WHERE EQUIPMENTS.EQUIPMENT_NAME = SHIELD_STATS.EQUIPMENT_NAME ");
        row("ammunition view", GetSQL(7, false, false, false, false, QString(), false),
            "AMO_STATS.DAMAGE, AMO_STATS.DAMAGE_TYPE, AMO_TYPES.LAUNCH_TYPE, AMO_STATS.AMO_TYPE AS AMO_TYPE_AMO, AMO_STATS.STACK_SIZE, IIF(AMO_TYPES.LAUNCH_TYPE = 'Missile', AMO_STATS.RANGE, -1) AS AMMO_RANGE, IIF(AMO_TYPES.LAUNCH_TYPE = 'Missile', AMO_STATS.MANEUVERABILITY, -1) AS MANEUVERABILITY , IIF(EQUIPMENTS.PRICE=0,0,(AMO_STATS.DAMAGE/EQUIPMENTS.PRICE)) AS DAMAGE_PER_CREDIT FROM EQUIPMENTS, AMO_STATS, AMO_TYPES WHERE EQUIPMENTS.EQUIPMENT_NAME = AMO_STATS.EQUIPMENT_NAME AND AMO_STATS.AMO_TYPE = AMO_TYPES.AMO_TYPE ");
        row("ammunition plain", GetSQL(7, false, false, false, false, QString(), true),
            "AMO_STATS.DAMAGE, AMO_STATS.DAMAGE_TYPE, AMO_STATS.AMO_TYPE AS AMO_TYPE_AMO, AMO_STATS.STACK_SIZE, AMO_STATS.RANGE AS AMMO_RANGE, AMO_STATS.MANEUVERABILITY , IIF(EQUIPMENTS.PRICE=0,0,(AMO_STATS.DAMAGE/EQUIPMENTS.PRICE)) AS DAMAGE_PER_CREDIT FROM EQUIPMENTS, AMO_STATS WHERE EQUIPMENTS.EQUIPMENT_NAME = AMO_STATS.EQUIPMENT_NAME ");
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

QTEST_GUILESS_MAIN(TestModMain)
#include "tst_modmain.moc"
