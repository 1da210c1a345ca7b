#include "data/sampledata.h"
#include "data/schema.h"
#include "tst_sampledata_db.h"

#include <QTemporaryDir>
#include <QTest>

class TestSampleData : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void enoughOfEveryKind();
    void valuesPointToRecordsAndLookups();
    void oddCasesTheWindowsMustShow_data();
    void oddCasesTheWindowsMustShow();
    void recipesAreDeepAndFreeOfCycles();
    void sameDataEveryTimeAndFilledOnce();

private:
    QTemporaryDir m_dir;
    QString m_file;
};

void TestSampleData::initTestCase() {
    m_file = m_dir.filePath("sample.vosk");
    QString error;
    QVERIFY2(CreateDatabase(m_file, &error), qPrintable(error));
    QVERIFY2(FillSampleData(m_file, &error), qPrintable(error));
}

void TestSampleData::enoughOfEveryKind() {
    RawDb db(m_file);
    for (const char* t : {"EQUIPMENTS", "COMPONENTS", "RAW_MATERIALS", "ITEMS", "MOBS", "STATIONS"}) QVERIFY2(db.count(t) >= 10, t);
    QCOMPARE(db.count("MOB_STATS"), db.count("MOBS"));
    // The kind is the type's last word, in any case ("Heavy Shield" is a shield); each has its statistics.
    const QStringList stats{"WEAPON_STATS", "WEAPON_STATS", "WEAPON_STATS", "REACTOR_STATS", "ENGINE_STATS", "SHIELD_STATS", "", "AMO_STATS"};
    const QStringList kinds{"beam", "missile", "projectile", "reactor", "engine", "shield", "device", "ammunition"};
    for (int k = 0; k < kinds.size(); ++k) {
        const QString ofKind = "FROM EQUIPMENTS E WHERE (lower(TYPE) = ?1 OR lower(TYPE) LIKE '% ' || ?1)";
        const qint64 n = db.scalar("SELECT count(*) " + ofKind, {kinds[k]}).toLongLong();
        QVERIFY2(n >= 4, qPrintable(kinds[k]));
        for (const QString t : {"WEAPON_STATS", "REACTOR_STATS", "ENGINE_STATS", "SHIELD_STATS", "AMO_STATS"})
            QCOMPARE(db.scalar(QString("SELECT count(*) %1 AND EXISTS (SELECT 1 FROM %2 S WHERE S.EQUIPMENT_NAME = E.EQUIPMENT_NAME)")
                                   .arg(ofKind, t), {kinds[k]}).toLongLong(), t == stats[k] ? n : 0);
    }
    QCOMPARE(db.column("SELECT FREQUENCY FROM DROP_FREQUENCY"), QStringList({"Very Rare", "Rare", "Normal", "Frequent", "Very Frequent"}));
    QCOMPARE(db.column("SELECT SPAWN_RATE FROM SPAWN_RATE"), QStringList({"Very Slow", "Slow", "Average", "Fast", "Very Fast"}));
    QCOMPARE(db.column("SELECT LAUNCH_TYPE FROM LAUNCH_TYPES ORDER BY 1"), QStringList({"Missile", "Projectile"}));
}

// Every relation row names an existing record and every record an existing lookup value.
void TestSampleData::valuesPointToRecordsAndLookups() {
    const char* const links[][3] = {
        {"EQUIPMENTS_COMPONENTS", "COMPONENTS_COMPONENT", "COMPONENTS.COMPONENT_NAME"}, {"EQUIPMENTS_ITEMS", "ITEM_NAME", "ITEMS.ITEM_NAME"},
        {"EQUIPMENTS_UPGRADE_FROM", "UPGRADE_FROM", "EQUIPMENTS.EQUIPMENT_NAME"}, {"COMPONENTS_EQUIPMENTS", "EQUIPMENT_NAME", "EQUIPMENTS.EQUIPMENT_NAME"},
        {"RAW_MATERIALS_REFINES_FROM", "REFINES_FROM", "RAW_MATERIALS.RAW_MATERIAL_NAME"}, {"BUY_ITEM_LOCATIONS", "STATIONS_STATION", "STATIONS.STATION_NAME"},
        {"MOB_RAW_MAT_DROP", "RAW_MATERIAL_NAME", "RAW_MATERIALS.RAW_MATERIAL_NAME"}, {"MOBS_LOCATION", "SECTOR_NAME", "SECTORS.SECTOR_NAME"},
        {"SECTORS", "SYSTEM_SYSTEM_NAME", "SYSTEMS.SYSTEM_NAME"}, {"STATION_TERMINALS", "STATION_NAME", "STATIONS.STATION_NAME"},
        {"EQUIPMENTS", "MANUFACTURER", "MANUFACTURER.MANUFACTURER_NAME"}, {"AMO_STATS", "AMO_TYPE", "AMO_TYPES.AMO_TYPE"},
        {"MOB_WEAKNESS", "WEAKNESS", "DAMAGE_TYPE.DAMAGE_TYPE"}, {"NAV_POINTS", "NAV_TYPE", "NAV_TYPES.NAV_TYPE"},
        {"MOBS", "TYPE", "MOB_TYPES.MOB_TYPE"}, {"EQUIPMENT_CLASS", "CLASS_NAME", "CLASSES.CLASS_NAME"}};
    RawDb db(m_file);
    for (const auto& l : links) {
        const QString target = l[2];
        QVERIFY2(db.count(l[0]) > 0, l[0]);
        QCOMPARE(db.scalar(QString("SELECT count(*) FROM %1 WHERE %2 NOT IN (SELECT %4 FROM %3)")
                               .arg(l[0], l[1], target.section('.', 0, 0), target.section('.', 1))).toInt(), 0);
    }
    QCOMPARE(db.scalar("SELECT count(*) FROM COMPONENTS C WHERE SUBTYPE IS NOT NULL AND NOT EXISTS (SELECT 1 FROM "
                       "COMPONENT_TYPE_SUBTYPE S WHERE S.COMPONENT_TYPE = C.TYPE AND S.COMPONENT_SUBTYPE = C.SUBTYPE)").toInt(), 0);
}

void TestSampleData::oddCasesTheWindowsMustShow_data() {
    QTest::addColumn<QString>("sql"); // must count at least one row
    const char* const cases[][2] = {
        {"equipment with an apostrophe", "EQUIPMENTS WHERE EQUIPMENT_NAME = 'Hunter''s Lance Mk I'"},
        {"MOB with an apostrophe", "MOBS WHERE MOB_NAME LIKE '%''%'"},
        {"component without type", "COMPONENTS WHERE TYPE IS NULL"},
        {"component typed Unknown", "COMPONENTS WHERE TYPE = 'Unknown'"},
        {"lower-case type", "EQUIPMENTS WHERE TYPE = 'engine' COLLATE BINARY"},
        {"price -1, -2 and 0", "(SELECT DISTINCT PRICE FROM EQUIPMENTS WHERE PRICE IN (-1, -2, 0)) HAVING count(*) = 3"},
        {"free ammunition", "EQUIPMENTS E JOIN AMO_STATS A ON A.EQUIPMENT_NAME = E.EQUIPMENT_NAME WHERE E.PRICE = 0"},
        {"special of 12.345 %", "EQUIP_SPECIALS WHERE AMOUNT = 12.345 AND UNITS = '%'"},
        {"boss", "MOB_STATS WHERE BOSS = 1"}, {"null temperament", "MOB_STATS WHERE BRAVERY IS NULL"},
        {"MOB without attacks", "MOBS WHERE MOB_NAME NOT IN (SELECT MOB_NAME FROM MOB_ATTACK_TYPE)"},
        {"MOB at 51 or above", "MOB_STATS WHERE COMBAT_LEVEL >= 51"},
        {"amount above 1", "EQUIPMENTS_COMPONENTS WHERE AMOUNT > 1"},
        {"equipment in two classes", "(SELECT 1 FROM EQUIPMENT_CLASS GROUP BY EQUIPMENTS_EQUIPMENT HAVING count(*) > 1)"},
        {"submitted", "RAW_MATERIALS WHERE SUBMITTED = 1"},
        {"custom field", "EQUIPMENTS WHERE CUSTOM_01 IS NOT NULL"}};
    for (const auto& c : cases) QTest::newRow(c[0]) << QString("SELECT count(*) FROM ") + c[1];
}

void TestSampleData::oddCasesTheWindowsMustShow() {
    QFETCH(QString, sql);
    RawDb db(m_file);
    QVERIFY2(db.scalar(sql).toInt() >= 1, qPrintable(db.error()));
}

void TestSampleData::recipesAreDeepAndFreeOfCycles() {
    RawDb db(m_file);
    qint64 deepest = 0;
    for (const QString& e : db.column("SELECT EQUIPMENT_NAME FROM EQUIPMENTS")) {
        const TreeWalk w = walkBuildTree(db, "E", e);
        QVERIFY2(!w.cycle, qPrintable(w.cyclePath));
        deepest = qMax(deepest, w.nodes);
    }
    QVERIFY(deepest >= 20);
}

void TestSampleData::sameDataEveryTimeAndFilledOnce() {
    const QString second = m_dir.filePath("again.vosk");
    QVERIFY(CreateDatabase(second) && FillSampleData(second));
    RawDb a(m_file), b(second);
    for (const QString& t : schema::tableNames()) QCOMPARE(b.rows("SELECT * FROM \"" + t + '"'), a.rows("SELECT * FROM \"" + t + '"'));
    QString error;
    QVERIFY(!FillSampleData(second, &error)); // a second fill is refused as a whole
    QVERIFY2(error.contains("UNIQUE"), qPrintable(error));
    QCOMPARE(b.count("EQUIPMENTS"), a.count("EQUIPMENTS"));
    QVERIFY(!FillSampleData(m_dir.filePath("missing.vosk"), &error));
    QVERIFY(error.contains("does not exist"));
    QVERIFY(!QFile::exists(m_dir.filePath("missing.vosk")));
}

QTEST_GUILESS_MAIN(TestSampleData)
#include "tst_sampledata.moc"
