#include "data/sampledata.h"
#include "data/schema.h"
#include "tst_sampledata_db.h"

#include <QDateTime>
#include <QTemporaryDir>
#include <QTest>

class TestSampleData : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void enoughRecords();
    void everyEquipmentTypeWithItsStatistics_data();
    void everyEquipmentTypeWithItsStatistics();
    void everyLookupFilled_data();
    void everyLookupFilled();
    void orderedListsInTableOrder();
    void lookupValuesTheDesignNames();
    void recordsUseExistingLookupValues_data();
    void recordsUseExistingLookupValues();
    void relationshipsPointToRecords_data();
    void relationshipsPointToRecords();
    void oddCasesTheWindowsMustShow_data();
    void oddCasesTheWindowsMustShow();
    void placesAndNavTypes();
    void recipesAreDeepAndFreeOfCycles();
    void valuesInRange();
    void sameDataEveryTime();
    void secondFillChangesNothing();
    void missingFileIsRefused();

private:
    QTemporaryDir m_dir;
    QString m_file;
};

void TestSampleData::initTestCase()
{
    m_file = m_dir.filePath("sample.vosk");
    QString error;
    QVERIFY2(CreateDatabase(m_file, &error), qPrintable(error));
    QVERIFY2(FillSampleData(m_file, &error), qPrintable(error));
}

void TestSampleData::enoughRecords()
{
    RawDb db(m_file);
    qint64 total = 0;
    for (const char* t : {"EQUIPMENTS", "COMPONENTS", "RAW_MATERIALS", "ITEMS", "MOBS", "STATIONS"}) {
        QVERIFY2(db.count(t) >= 10, t);
        total += db.count(t);
    }
    QVERIFY(total >= 300);
    QCOMPARE(db.count("MOB_STATS"), db.count("MOBS"));
    QVERIFY(db.count("CHARACTERS") >= 1);
}

void TestSampleData::everyEquipmentTypeWithItsStatistics_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("stats");
    QTest::newRow("beam") << "beam" << "WEAPON_STATS";
    QTest::newRow("missile") << "missile" << "WEAPON_STATS";
    QTest::newRow("projectile") << "projectile" << "WEAPON_STATS";
    QTest::newRow("reactor") << "reactor" << "REACTOR_STATS";
    QTest::newRow("engine") << "engine" << "ENGINE_STATS";
    QTest::newRow("shield") << "shield" << "SHIELD_STATS";
    QTest::newRow("device") << "device" << "";
    QTest::newRow("ammunition") << "ammunition" << "AMO_STATS";
}

void TestSampleData::everyEquipmentTypeWithItsStatistics()
{
    QFETCH(QString, type);
    QFETCH(QString, stats);
    RawDb db(m_file);
    // The kind is the type's last word, in any case ("Heavy Shield" is a shield).
    const QString ofType = "(lower(TYPE) = ?1 OR lower(TYPE) LIKE '% ' || ?1)";
    const qint64 n = db.scalar("SELECT count(*) FROM EQUIPMENTS WHERE " + ofType, {type}).toLongLong();
    QVERIFY2(n >= 4, qPrintable(type));
    for (const char* t : {"WEAPON_STATS", "REACTOR_STATS", "ENGINE_STATS", "SHIELD_STATS", "AMO_STATS"}) {
        const qint64 rows = db.scalar(QStringLiteral("SELECT count(*) FROM EQUIPMENTS E JOIN %1 S ON S.EQUIPMENT_NAME = E.EQUIPMENT_NAME "
                                                     "WHERE ").arg(t) + ofType, {type}).toLongLong();
        QCOMPARE(rows, stats == QLatin1String(t) ? n : 0);
    }
    // No statistics row without its equipment.
    if (!stats.isEmpty())
        QCOMPARE(db.scalar(QStringLiteral("SELECT count(*) FROM %1 WHERE EQUIPMENT_NAME NOT IN (SELECT EQUIPMENT_NAME FROM EQUIPMENTS)").arg(stats)).toInt(), 0);
}

void TestSampleData::everyLookupFilled_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<int>("atLeast");
    for (const char* t : {"CLASSES", "COMPONENT_TYPES", "COMPONENT_TYPE_SUBTYPE", "DAMAGE_TYPE", "AMO_TYPES", "MANUFACTURER",
                          "SPECIALS", "MOB_TYPES", "FACTIONS"})
        QTest::newRow(t) << t << 3;
    QTest::newRow("LAUNCH_TYPES") << "LAUNCH_TYPES" << 2;
    QTest::newRow("DROP_FREQUENCY") << "DROP_FREQUENCY" << 5;
    QTest::newRow("SPAWN_RATE") << "SPAWN_RATE" << 5;
    QTest::newRow("NAV_TYPES") << "NAV_TYPES" << 9;
    QTest::newRow("SYSTEMS") << "SYSTEMS" << 3;
    QTest::newRow("SECTORS") << "SECTORS" << 6;
    QTest::newRow("STATION_TERMINALS") << "STATION_TERMINALS" << 12;
}

void TestSampleData::everyLookupFilled()
{
    QFETCH(QString, table);
    QFETCH(int, atLeast);
    RawDb db(m_file);
    QVERIFY(db.count(table) >= atLeast);
}

void TestSampleData::orderedListsInTableOrder()
{
    RawDb db(m_file);
    QCOMPARE(db.column("SELECT FREQUENCY FROM DROP_FREQUENCY"),
             QStringList({"Very Rare", "Rare", "Normal", "Frequent", "Very Frequent"}));
    QCOMPARE(db.column("SELECT SPAWN_RATE FROM SPAWN_RATE"), QStringList({"Very Slow", "Slow", "Average", "Fast", "Very Fast"}));
    QCOMPARE(db.column("SELECT NAV_TYPE FROM NAV_TYPES"),
             QStringList({"Asteroid", "Gate", "Navigation Point", "Planet", "Satellite", "Ship", "Ship Yard", "Station", "Weft"}));
}

void TestSampleData::lookupValuesTheDesignNames()
{
    RawDb db(m_file);
    QCOMPARE(db.column("SELECT LAUNCH_TYPE FROM LAUNCH_TYPES ORDER BY LAUNCH_TYPE"), QStringList({"Missile", "Projectile"}));
    QCOMPARE(db.column("SELECT DISTINCT LAUNCH_TYPE FROM AMO_TYPES ORDER BY LAUNCH_TYPE"), QStringList({"Missile", "Projectile"}));
    QCOMPARE(db.scalar("SELECT count(*) FROM MOB_TYPES WHERE MOB_TYPE = 'Organic'").toInt(), 1);
    QCOMPARE(db.scalar("SELECT count(*) FROM FACTIONS WHERE FACTION = 'Unknown'").toInt(), 1);
    QCOMPARE(db.scalar("SELECT count(*) FROM COMPONENT_TYPES WHERE COMPONENT_TYPE = 'Unknown'").toInt(), 1);
    // Some types have subtypes and some have none (the list shows "N/A" for those).
    QVERIFY(db.scalar("SELECT count(DISTINCT COMPONENT_TYPE) FROM COMPONENT_TYPE_SUBTYPE").toInt() >= 2);
    QVERIFY(db.scalar("SELECT count(*) FROM COMPONENT_TYPES WHERE COMPONENT_TYPE NOT IN (SELECT COMPONENT_TYPE FROM COMPONENT_TYPE_SUBTYPE)").toInt() >= 2);
    QCOMPARE(db.scalar("SELECT count(*) FROM COMPONENT_TYPE_SUBTYPE WHERE COMPONENT_TYPE NOT IN (SELECT COMPONENT_TYPE FROM COMPONENT_TYPES)").toInt(), 0);
}

void TestSampleData::recordsUseExistingLookupValues_data()
{
    QTest::addColumn<QString>("sql"); // counts values outside their list
    QTest::newRow("manufacturer") << "SELECT count(*) FROM EQUIPMENTS WHERE MANUFACTURER NOT IN (SELECT MANUFACTURER_NAME FROM MANUFACTURER)";
    QTest::newRow("component type") << "SELECT count(*) FROM COMPONENTS WHERE TYPE NOT IN (SELECT COMPONENT_TYPE FROM COMPONENT_TYPES)";
    QTest::newRow("component subtype") << "SELECT count(*) FROM COMPONENTS C WHERE SUBTYPE IS NOT NULL AND NOT EXISTS "
                                          "(SELECT 1 FROM COMPONENT_TYPE_SUBTYPE S WHERE S.COMPONENT_TYPE = C.TYPE AND S.COMPONENT_SUBTYPE = C.SUBTYPE)";
    QTest::newRow("weapon damage type") << "SELECT count(*) FROM WEAPON_STATS WHERE DAMAGE_TYPE NOT IN (SELECT DAMAGE_TYPE FROM DAMAGE_TYPE)";
    QTest::newRow("launcher ammunition") << "SELECT count(*) FROM WEAPON_STATS WHERE AMO_TYPE NOT IN (SELECT AMO_TYPE FROM AMO_TYPES)";
    QTest::newRow("ammunition type") << "SELECT count(*) FROM AMO_STATS WHERE AMO_TYPE IS NULL OR AMO_TYPE NOT IN (SELECT AMO_TYPE FROM AMO_TYPES)";
    QTest::newRow("missile launchers fire missiles") << "SELECT count(*) FROM WEAPON_STATS W JOIN EQUIPMENTS E ON E.EQUIPMENT_NAME = W.EQUIPMENT_NAME "
                                                        "JOIN AMO_TYPES A ON A.AMO_TYPE = W.AMO_TYPE WHERE lower(E.TYPE) LIKE '%missile' AND A.LAUNCH_TYPE <> 'Missile'";
    QTest::newRow("beams need no ammunition") << "SELECT count(*) FROM WEAPON_STATS W JOIN EQUIPMENTS E ON E.EQUIPMENT_NAME = W.EQUIPMENT_NAME "
                                                 "WHERE lower(E.TYPE) LIKE '%beam' AND W.AMO_TYPE IS NOT NULL";
    QTest::newRow("specials") << "SELECT count(*) FROM EQUIP_SPECIALS WHERE SPECIAL NOT IN (SELECT SPECIAL FROM SPECIALS)";
    QTest::newRow("classes") << "SELECT count(*) FROM EQUIPMENT_CLASS WHERE CLASS_NAME NOT IN (SELECT CLASS_NAME FROM CLASSES)";
    QTest::newRow("mob types") << "SELECT count(*) FROM MOBS WHERE TYPE NOT IN (SELECT MOB_TYPE FROM MOB_TYPES)";
    QTest::newRow("factions") << "SELECT count(*) FROM MOBS WHERE FACTION NOT IN (SELECT FACTION FROM FACTIONS)";
    QTest::newRow("tactics") << "SELECT (SELECT count(*) FROM MOB_ATTACK_TYPE WHERE ATTACK_TYPE NOT IN (SELECT DAMAGE_TYPE FROM DAMAGE_TYPE)) + "
                                "(SELECT count(*) FROM MOB_RESISTANCE WHERE RESISTANCE NOT IN (SELECT DAMAGE_TYPE FROM DAMAGE_TYPE)) + "
                                "(SELECT count(*) FROM MOB_WEAKNESS WHERE WEAKNESS NOT IN (SELECT DAMAGE_TYPE FROM DAMAGE_TYPE))";
    QTest::newRow("nav types") << "SELECT count(*) FROM NAV_POINTS WHERE NAV_TYPE NOT IN (SELECT NAV_TYPE FROM NAV_TYPES)";
    QTest::newRow("temperaments") << "SELECT count(*) FROM MOB_STATS WHERE BRAVERY NOT IN ('Very Low','Low','Average','High','Very High') "
                                     "OR AGGRESSIVENESS NOT IN ('Very Low','Low','Average','High','Very High') "
                                     "OR ALTRUISM NOT IN ('Very Low','Low','Average','High','Very High') "
                                     "OR INTELIGENCE NOT IN ('Very Low','Low','Average','High','Very High')";
}

void TestSampleData::recordsUseExistingLookupValues()
{
    QFETCH(QString, sql);
    RawDb db(m_file);
    QCOMPARE(db.scalar(sql).toInt(), 0);
}

void TestSampleData::relationshipsPointToRecords_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("target"); // "TABLE.COLUMN"
    const QList<QStringList> links = {
        {"EQUIPMENTS_COMPONENTS", "EQUIPMENTS_EQUIPMENT", "EQUIPMENTS.EQUIPMENT_NAME"},
        {"EQUIPMENTS_COMPONENTS", "COMPONENTS_COMPONENT", "COMPONENTS.COMPONENT_NAME"},
        {"EQUIPMENTS_RAW_MATERIALS", "RAW_MATERIAL_NAME", "RAW_MATERIALS.RAW_MATERIAL_NAME"},
        {"EQUIPMENTS_ITEMS", "ITEM_NAME", "ITEMS.ITEM_NAME"},
        {"EQUIPMENTS_UPGRADE_FROM", "UPGRADE_FROM", "EQUIPMENTS.EQUIPMENT_NAME"},
        {"COMPONENTS_RAW_MATERIALS", "RAW_MATERIAL", "RAW_MATERIALS.RAW_MATERIAL_NAME"},
        {"COMPONENTS_EQUIPMENTS", "EQUIPMENT_NAME", "EQUIPMENTS.EQUIPMENT_NAME"},
        {"COMPONENTS_ITEMS", "ITEM_NAME", "ITEMS.ITEM_NAME"},
        {"COMPONENTS_UPGRADE_FROM", "UPGRADE_FROM", "COMPONENTS.COMPONENT_NAME"},
        {"RAW_MATERIALS_REFINES_FROM", "REFINES_FROM", "RAW_MATERIALS.RAW_MATERIAL_NAME"},
        {"RAW_MATERIALS_ITEMS", "ITEM_NAME", "ITEMS.ITEM_NAME"},
        {"BUY_EQUIPMENT_LOCATION", "STATIONS_STATION", "STATIONS.STATION_NAME"},
        {"BUY_COMPONENT_LOCATIONS", "COMPONENTS_COMPONENT", "COMPONENTS.COMPONENT_NAME"},
        {"BUY_RAW_MATERIAL_LOCATIONS", "RAW_MATERIAL", "RAW_MATERIALS.RAW_MATERIAL_NAME"},
        {"BUY_ITEM_LOCATIONS", "STATIONS_STATION", "STATIONS.STATION_NAME"},
        {"MINE_LOCATIONS", "SECTORS_SECTOR", "SECTORS.SECTOR_NAME"},
        {"MOB_EQUIP_DROP", "EQUIPMENT_NAME", "EQUIPMENTS.EQUIPMENT_NAME"},
        {"MOB_COMP_DROP", "COMPONENT_NAME", "COMPONENTS.COMPONENT_NAME"},
        {"MOB_RAW_MAT_DROP", "RAW_MATERIAL_NAME", "RAW_MATERIALS.RAW_MATERIAL_NAME"},
        {"MOB_ITEM_DROP", "ITEM_NAME", "ITEMS.ITEM_NAME"},
        {"MOBS_LOCATION", "SECTOR_NAME", "SECTORS.SECTOR_NAME"},
        {"MOB_ATTACK_TYPE", "MOB_NAME", "MOBS.MOB_NAME"},
        {"STATIONS", "SECTORS_SECTOR", "SECTORS.SECTOR_NAME"},
        {"SECTORS", "SYSTEM_SYSTEM_NAME", "SYSTEMS.SYSTEM_NAME"},
        {"NAV_POINTS", "SECTOR_NAME", "SECTORS.SECTOR_NAME"},
        {"STATION_TERMINALS", "STATION_NAME", "STATIONS.STATION_NAME"},
    };
    for (const QStringList& l : links) QTest::newRow(qPrintable(l.at(0) + "." + l.at(1))) << l.at(0) << l.at(1) << l.at(2);
}

void TestSampleData::relationshipsPointToRecords()
{
    QFETCH(QString, table);
    QFETCH(QString, column);
    QFETCH(QString, target);
    RawDb db(m_file);
    QVERIFY2(db.count(table) > 0, qPrintable(table + " is empty"));
    const QString sql = QStringLiteral("SELECT count(*) FROM %1 WHERE %2 NOT IN (SELECT %4 FROM %3)")
                            .arg(table, column, target.section('.', 0, 0), target.section('.', 1, 1));
    QCOMPARE(db.scalar(sql).toInt(), 0);
}

void TestSampleData::oddCasesTheWindowsMustShow_data()
{
    QTest::addColumn<QString>("sql"); // must count at least one row
    QTest::newRow("equipment with an apostrophe") << "SELECT count(*) FROM EQUIPMENTS WHERE EQUIPMENT_NAME = 'Hunter''s Lance Mk I'";
    QTest::newRow("component with an apostrophe") << "SELECT count(*) FROM COMPONENTS WHERE COMPONENT_NAME LIKE '%''%'";
    QTest::newRow("raw material with an apostrophe") << "SELECT count(*) FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME LIKE '%''%'";
    QTest::newRow("item with an apostrophe") << "SELECT count(*) FROM ITEMS WHERE ITEM_NAME LIKE '%''%'";
    QTest::newRow("MOB with an apostrophe") << "SELECT count(*) FROM MOBS WHERE MOB_NAME LIKE '%''%'";
    QTest::newRow("station with an apostrophe") << "SELECT count(*) FROM STATIONS WHERE STATION_NAME LIKE '%''%'";
    QTest::newRow("two-word type Heavy Shield") << "SELECT count(*) FROM EQUIPMENTS WHERE TYPE = 'Heavy Shield'";
    QTest::newRow("lower-case type") << "SELECT count(*) FROM EQUIPMENTS WHERE TYPE = 'engine' COLLATE BINARY";
    QTest::newRow("price -1") << "SELECT count(*) FROM EQUIPMENTS WHERE PRICE = -1";
    QTest::newRow("price -2") << "SELECT count(*) FROM EQUIPMENTS WHERE PRICE = -2";
    QTest::newRow("price 0") << "SELECT count(*) FROM EQUIPMENTS WHERE PRICE = 0";
    QTest::newRow("free ammunition") << "SELECT count(*) FROM EQUIPMENTS E JOIN AMO_STATS A ON A.EQUIPMENT_NAME = E.EQUIPMENT_NAME WHERE E.PRICE = 0";
    QTest::newRow("fee -1") << "SELECT count(*) FROM EQUIPMENTS WHERE COST_TO_MANUFACTURE = -1";
    QTest::newRow("fee -5") << "SELECT count(*) FROM EQUIPMENTS WHERE COST_TO_MANUFACTURE = -5";
    QTest::newRow("component prices -1/-2/0") << "SELECT count(DISTINCT PRICE) = 3 FROM COMPONENTS WHERE PRICE IN (-1, -2, 0)";
    QTest::newRow("item prices -1/-2/0") << "SELECT count(DISTINCT PRICE) = 3 FROM ITEMS WHERE PRICE IN (-1, -2, 0)";
    QTest::newRow("unique equipment") << "SELECT count(*) FROM EQUIPMENTS WHERE UNIQUE_FLAG = 1";
    QTest::newRow("component without type") << "SELECT count(*) FROM COMPONENTS WHERE TYPE IS NULL";
    QTest::newRow("component typed Unknown") << "SELECT count(*) FROM COMPONENTS WHERE TYPE = 'Unknown'";
    QTest::newRow("component with subtype") << "SELECT count(*) FROM COMPONENTS WHERE SUBTYPE IS NOT NULL";
    QTest::newRow("special 12.345 %") << "SELECT count(*) FROM EQUIP_SPECIALS WHERE AMOUNT = 12.345 AND UNITS = '%'";
    QTest::newRow("special -3 points") << "SELECT count(*) FROM EQUIP_SPECIALS WHERE AMOUNT = -3 AND UNITS = 'points'";
    QTest::newRow("special amount 0") << "SELECT count(*) FROM EQUIP_SPECIALS WHERE AMOUNT = 0";
    QTest::newRow("special in words") << "SELECT count(*) FROM EQUIP_SPECIALS WHERE UNITS LIKE '% %'";
    QTest::newRow("special shunt 0 or null") << "SELECT count(*) FROM EQUIP_SPECIALS WHERE SHUNT IS NULL OR SHUNT = 0";
    QTest::newRow("special with details") << "SELECT count(*) FROM EQUIP_SPECIALS WHERE SHUNT > 0 AND DURATION > 0";
    QTest::newRow("boss") << "SELECT count(*) FROM MOB_STATS WHERE BOSS = 1";
    QTest::newRow("null temperament") << "SELECT count(*) FROM MOB_STATS WHERE BRAVERY IS NULL";
    QTest::newRow("null faction") << "SELECT count(*) FROM MOBS WHERE FACTION IS NULL";
    QTest::newRow("MOB without attacks") << "SELECT count(*) FROM MOBS WHERE MOB_NAME NOT IN (SELECT MOB_NAME FROM MOB_ATTACK_TYPE)";
    QTest::newRow("MOB at level 5 or below") << "SELECT count(*) FROM MOB_STATS WHERE COMBAT_LEVEL <= 5";
    QTest::newRow("MOB at 51 or above") << "SELECT count(*) FROM MOB_STATS WHERE COMBAT_LEVEL >= 51";
    QTest::newRow("lower-case drops") << "SELECT (SELECT count(*) FROM MOB_EQUIP_DROP WHERE DROP_FREQUENCY IN ('rare','very frequent') COLLATE BINARY) + "
                                         "(SELECT count(*) FROM MOB_ITEM_DROP WHERE DROP_FREQUENCY IN ('rare','very frequent') COLLATE BINARY) + "
                                         "(SELECT count(*) FROM MOB_COMP_DROP WHERE DROP_FREQUENCY IN ('rare','very frequent') COLLATE BINARY) + "
                                         "(SELECT count(*) FROM MOB_RAW_MAT_DROP WHERE DROP_FREQUENCY IN ('rare','very frequent') COLLATE BINARY)";
    QTest::newRow("spawn rate outside the list") << "SELECT count(*) FROM MOBS_LOCATION WHERE SPAWN_RATE NOT IN (SELECT SPAWN_RATE FROM SPAWN_RATE)";
    QTest::newRow("two nav points in one sector") << "SELECT count(*) FROM (SELECT MOB_NAME FROM MOBS_LOCATION GROUP BY MOB_NAME, SECTOR_NAME HAVING count(*) > 1)";
    QTest::newRow("MOB without spawn") << "SELECT count(*) FROM MOBS WHERE MOB_NAME NOT IN (SELECT MOB_NAME FROM MOBS_LOCATION)";
    QTest::newRow("equipment upgrade") << "SELECT count(*) FROM EQUIPMENTS_UPGRADE_FROM";
    QTest::newRow("component upgrade") << "SELECT count(*) FROM COMPONENTS_UPGRADE_FROM";
    QTest::newRow("component built from equipment") << "SELECT count(*) FROM COMPONENTS_EQUIPMENTS";
    QTest::newRow("raw material from items") << "SELECT count(*) FROM RAW_MATERIALS_ITEMS";
    QTest::newRow("amount above 1") << "SELECT count(*) FROM EQUIPMENTS_COMPONENTS WHERE AMOUNT > 1";
    QTest::newRow("amount of 1") << "SELECT count(*) FROM EQUIPMENTS_COMPONENTS WHERE AMOUNT = 1";
    QTest::newRow("equipment without recipe") << "SELECT count(*) FROM EQUIPMENTS WHERE EQUIPMENT_NAME NOT IN (SELECT EQUIPMENTS_EQUIPMENT FROM EQUIPMENTS_COMPONENTS "
                                                 "UNION SELECT EQUIPMENTS_EQUIPMENT FROM EQUIPMENTS_RAW_MATERIALS UNION SELECT EQUIPMENTS_EQUIPMENT FROM EQUIPMENTS_ITEMS "
                                                 "UNION SELECT EQUIPMENT_NAME FROM EQUIPMENTS_UPGRADE_FROM)";
    QTest::newRow("equipment without class") << "SELECT count(*) FROM EQUIPMENTS WHERE EQUIPMENT_NAME NOT IN (SELECT EQUIPMENTS_EQUIPMENT FROM EQUIPMENT_CLASS)";
    QTest::newRow("equipment in two classes") << "SELECT count(*) FROM (SELECT 1 FROM EQUIPMENT_CLASS GROUP BY EQUIPMENTS_EQUIPMENT HAVING count(*) > 1)";
    QTest::newRow("ticked") << "SELECT count(*) FROM EQUIPMENTS WHERE \"CHECK\" = 1";
    QTest::newRow("personal") << "SELECT (SELECT count(*) FROM EQUIPMENTS WHERE PERSONAL_DB = 1) * (SELECT count(*) FROM MOBS WHERE PERSONAL_DB = 1)";
    QTest::newRow("updated") << "SELECT count(*) FROM RAW_MATERIALS WHERE UPDATED = 1";
    QTest::newRow("submitted") << "SELECT count(*) FROM RAW_MATERIALS WHERE SUBMITTED = 1";
    QTest::newRow("custom field") << "SELECT count(*) FROM EQUIPMENTS WHERE CUSTOM_01 IS NOT NULL";
}

void TestSampleData::oddCasesTheWindowsMustShow()
{
    QFETCH(QString, sql);
    RawDb db(m_file);
    QVERIFY2(db.scalar(sql).toInt() >= 1, qPrintable(db.error()));
}

void TestSampleData::placesAndNavTypes()
{
    RawDb db(m_file);
    // Every nav type is on some map, and every station is a nav point of its own sector.
    QCOMPARE(db.scalar("SELECT count(DISTINCT NAV_TYPE) FROM NAV_POINTS").toInt(), 9);
    QCOMPARE(db.scalar("SELECT count(*) FROM STATIONS S WHERE NOT EXISTS (SELECT 1 FROM NAV_POINTS N WHERE N.SECTOR_NAME = S.SECTORS_SECTOR "
                       "AND N.NAV_POINT_NAME = S.STATION_NAME)").toInt(), 0);
    QCOMPARE(db.scalar("SELECT count(*) FROM MOBS_LOCATION L WHERE NOT EXISTS (SELECT 1 FROM NAV_POINTS N WHERE N.SECTOR_NAME = L.SECTOR_NAME "
                       "AND N.NAV_POINT_NAME = L.NAV_POINT)").toInt(), 0);
    QCOMPARE(db.scalar("SELECT count(*) FROM NAV_POINTS WHERE abs(X_POINT) > 5100 OR abs(Y_POINT) > 5100").toInt(), 0);
    QVERIFY(db.scalar("SELECT count(*) FROM NAV_POINTS WHERE X_POINT <> round(X_POINT)").toInt() > 0);
    QVERIFY(db.scalar("SELECT min(n) FROM (SELECT count(*) AS n FROM NAV_POINTS GROUP BY SECTOR_NAME)").toInt() >= 4);
}

void TestSampleData::recipesAreDeepAndFreeOfCycles()
{
    RawDb db(m_file);
    qint64 deepest = 0;
    for (const QString& e : db.column("SELECT EQUIPMENT_NAME FROM EQUIPMENTS")) {
        const TreeWalk w = walkBuildTree(db, "E", e);
        QVERIFY2(!w.cycle, qPrintable(w.cyclePath));
        deepest = qMax(deepest, w.nodes);
    }
    QVERIFY(deepest >= 20);
    for (const QString& c : db.column("SELECT COMPONENT_NAME FROM COMPONENTS"))
        QVERIFY(!walkBuildTree(db, "C", c).cycle);
    // Raw materials refined in several steps: a chain of at least three sources.
    const int depth = db.scalar("WITH RECURSIVE chain(name, depth) AS (SELECT RAW_MATERIAL_NAME, 0 FROM RAW_MATERIALS "
                                "UNION ALL SELECT R.REFINES_FROM, chain.depth + 1 FROM RAW_MATERIALS_REFINES_FROM R JOIN chain "
                                "ON R.RAW_MATERIAL_NAME = chain.name WHERE chain.depth < 20) SELECT max(depth) FROM chain").toInt();
    QVERIFY(depth >= 3);
    QVERIFY(depth < 20);
}

void TestSampleData::valuesInRange()
{
    RawDb db(m_file);
    for (const char* t : {"EQUIPMENTS", "COMPONENTS", "RAW_MATERIALS", "ITEMS"}) {
        QCOMPARE(db.scalar(QStringLiteral("SELECT count(*) FROM %1 WHERE PIC_ID < 0 OR PIC_ID > 99 OR PIC_ID IS NULL").arg(t)).toInt(), 0);
        for (const QString& d : db.column(QStringLiteral("SELECT LAST_UPDATED FROM %1").arg(t)))
            QVERIFY2(QDateTime::fromString(d, "yyyy-MM-dd hh:mm:ss").isValid(), qPrintable(d));
    }
    QCOMPARE(db.scalar("SELECT count(*) FROM EQUIPMENTS WHERE QUALITY NOT BETWEEN 0 AND 100 OR LVL < 1").toInt(), 0);
    QCOMPARE(db.scalar("SELECT count(*) FROM WEAPON_STATS WHERE DELAY <= 0").toInt(), 0);
    QVERIFY(db.scalar("SELECT count(*) FROM WEAPON_STATS WHERE DELAY <> round(DELAY)").toInt() > 0);
    QCOMPARE(db.scalar("SELECT count(*) FROM AMO_STATS A JOIN AMO_TYPES T ON T.AMO_TYPE = A.AMO_TYPE "
                       "WHERE T.LAUNCH_TYPE = 'Missile' AND (A.RANGE IS NULL OR A.MANEUVERABILITY IS NULL)").toInt(), 0);
    QCOMPARE(db.scalar("SELECT count(*) FROM MOB_STATS WHERE COMBAT_LEVEL < 1").toInt(), 0);
}

void TestSampleData::sameDataEveryTime()
{
    const QString second = m_dir.filePath("again.vosk");
    QVERIFY(CreateDatabase(second));
    QVERIFY(FillSampleData(second));
    RawDb a(m_file), b(second);
    for (const schema::Table& t : schema::tables()) {
        const QString sql = QStringLiteral("SELECT * FROM \"%1\"").arg(t.name);
        QCOMPARE(b.rows(sql), a.rows(sql));
    }
}

void TestSampleData::secondFillChangesNothing()
{
    const QString file = m_dir.filePath("twice.vosk");
    QVERIFY(CreateDatabase(file));
    QVERIFY(FillSampleData(file));
    qint64 before = 0;
    {
        RawDb db(file);
        for (const QString& t : schema::tableNames()) before += db.count(t);
    }
    QString error;
    QVERIFY(!FillSampleData(file, &error));
    QVERIFY2(error.contains(QLatin1String("UNIQUE")), qPrintable(error));
    RawDb db(file);
    qint64 after = 0;
    for (const QString& t : schema::tableNames()) after += db.count(t);
    QCOMPARE(after, before);
}

void TestSampleData::missingFileIsRefused()
{
    QString error;
    const QString missing = m_dir.filePath("missing.vosk");
    QVERIFY(!FillSampleData(missing, &error));
    QVERIFY(error.contains(QLatin1String("does not exist")));
    QVERIFY(!QFile::exists(missing));
}

QTEST_GUILESS_MAIN(TestSampleData)
#include "tst_sampledata.moc"
