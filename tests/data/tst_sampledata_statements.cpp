// The sample database read through the program's own connection: the statements of the windows run
// on it as written, and each column reads back with the kind its declared type promises.
#include "data/database.h"
#include "data/recordset.h"
#include "data/sampledata.h"
#include "data/schema.h"

#include <QTemporaryDir>
#include <QTest>

class TestSampleStatements : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void statementsFindRows_data();
    void statementsFindRows();
    void columnsReadBackTheirKind_data();
    void columnsReadBackTheirKind();
    void listsComeInTableOrder();
    void tickIsWrittenBack();
    void duplicateNameFailsAsAConstraint();

private:
    QTemporaryDir m_dir;
    Database m_cn;
};

void TestSampleStatements::initTestCase()
{
    const QString file = m_dir.filePath("data.vosk");
    QString error;
    QVERIFY2(CreateDatabase(file, &error), qPrintable(error));
    QVERIFY2(FillSampleData(file, &error), qPrintable(error));
    m_cn.open("Provider=VOSK;Data Source=" + file + ";");
    QVERIFY(m_cn.isOpen());
}

void TestSampleStatements::cleanupTestCase() { m_cn.close(); }

void TestSampleStatements::statementsFindRows_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<int>("atLeast");
    QTest::newRow("version") << "SELECT VERSION FROM DB_VERSION" << 1;
    QTest::newRow("options") << "SELECT * FROM DB_OPTIONS" << 1;
    QTest::newRow("MOB list") << "SELECT MOBS.MOB_NAME, MOBS.UPDATED, MOBS.PERSONAL_DB, MOBS.CHECK, MOB_STATS.COMBAT_LEVEL, "
                                 "(MOB_STATS.COMBAT_LEVEL * 3) AS OVERALL_LEVEL, MOB_STATS.SHIELD, MOB_STATS.HULL, MOB_STATS.MASS, "
                                 "MOB_STATS.SIGNATURE, MOB_STATS.SCAN_RANGE, MOB_STATS.AGGRO_RANGE, MOBS.TYPE, MOBS.FACTION, "
                                 "MOBS.COMMENTS, MOBS.LAST_UPDATED FROM MOBS, MOB_STATS WHERE MOBS.MOB_NAME = MOB_STATS.MOB_NAME "
                                 "AND MOB_STATS.COMBAT_LEVEL >= 0 AND MOB_STATS.COMBAT_LEVEL <= 5" << 1;
    QTest::newRow("station list") << "SELECT STATIONS.STATION_NAME, STATIONS.SECTORS_SECTOR, SECTORS.SYSTEM_SYSTEM_NAME AS SYSTEM_NAME, "
                                     "STATIONS.CHECK FROM SECTORS INNER JOIN STATIONS ON SECTORS.SECTOR_NAME = STATIONS.SECTORS_SECTOR" << 12;
    QTest::newRow("unknown components") << "SELECT * FROM COMPONENTS WHERE (TYPE IS NULL OR TYPE = 'Unknown')" << 2;
    QTest::newRow("raw material list") << "SELECT RAW_MATERIAL_NAME, LVL, PRICE, COMMENTS, CHECK, PERSONAL_DB, UPDATED, SUBMITTED, "
                                          "LAST_UPDATED FROM RAW_MATERIALS WHERE CHECK = TRUE" << 1;
    QTest::newRow("beam list") << "SELECT EQUIPMENTS.EQUIPMENT_NAME, EQUIPMENTS.TYPE, EQUIPMENTS.PRICE AS PURCHASE_PRICE, "
                                  "WEAPON_STATS.DAMAGE, WEAPON_STATS.DELAY, WEAPON_STATS.RANGE , (WEAPON_STATS.DAMAGE/WEAPON_STATS.DELAY) "
                                  "AS DAMAGE_PER_SECOND FROM EQUIPMENTS, WEAPON_STATS WHERE EQUIPMENTS.EQUIPMENT_NAME = "
                                  "WEAPON_STATS.EQUIPMENT_NAME  AND EQUIPMENTS.TYPE = 'Beam'" << 4;
    QTest::newRow("ammunition") << "SELECT EQUIPMENTS.EQUIPMENT_NAME, AMO_STATS.DAMAGE, AMO_TYPES.LAUNCH_TYPE, AMO_STATS.AMO_TYPE AS "
                                   "AMO_TYPE_AMO, IIF(AMO_TYPES.LAUNCH_TYPE = 'Missile', AMO_STATS.RANGE, -1) AS AMMO_RANGE, "
                                   "IIF(EQUIPMENTS.PRICE=0,0,(AMO_STATS.DAMAGE/EQUIPMENTS.PRICE)) AS DAMAGE_PER_CREDIT FROM EQUIPMENTS, "
                                   "AMO_STATS, AMO_TYPES WHERE EQUIPMENTS.EQUIPMENT_NAME = AMO_STATS.EQUIPMENT_NAME AND "
                                   "AMO_STATS.AMO_TYPE = AMO_TYPES.AMO_TYPE" << 24;
    QTest::newRow("class filter") << "SELECT EQUIPMENTS.EQUIPMENT_NAME FROM EQUIPMENTS , EQUIPMENT_CLASS WHERE EQUIPMENTS.EQUIPMENT_NAME = "
                                     "EQUIPMENTS.EQUIPMENT_NAME  AND EQUIPMENTS.EQUIPMENT_NAME = EQUIPMENT_CLASS.EQUIPMENTS_EQUIPMENT AND "
                                     "EQUIPMENT_CLASS.CLASS_NAME = 'Warrior' " << 5;
    QTest::newRow("build components") << "SELECT EQUIPMENTS_COMPONENTS.COMPONENTS_COMPONENT, COMPONENTS.LVL, "
                                         "IIF(EQUIPMENTS_COMPONENTS.AMOUNT>1,' x' & EQUIPMENTS_COMPONENTS.AMOUNT,'') FROM "
                                         "EQUIPMENTS_COMPONENTS, COMPONENTS WHERE EQUIPMENTS_COMPONENTS.EQUIPMENTS_EQUIPMENT = "
                                         "'Hunter''s Lance Mk II' AND EQUIPMENTS_COMPONENTS.COMPONENTS_COMPONENT = COMPONENTS.COMPONENT_NAME "
                                         "ORDER BY COMPONENTS_COMPONENT" << 1;
    QTest::newRow("upgrade source") << "SELECT EQUIPMENTS_UPGRADE_FROM.UPGRADE_FROM, LVL FROM EQUIPMENTS_UPGRADE_FROM, EQUIPMENTS WHERE "
                                       "EQUIPMENTS_UPGRADE_FROM.EQUIPMENT_NAME = 'Hunter''s Lance Mk II' AND EQUIPMENTS.EQUIPMENT_NAME = "
                                       "EQUIPMENTS_UPGRADE_FROM.UPGRADE_FROM ORDER BY EQUIPMENTS_UPGRADE_FROM.UPGRADE_FROM" << 1;
    QTest::newRow("refined level") << "SELECT (SELECT LVL FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME = 'Refined Ferrite') AS LVL, "
                                      "IIF(RAW_MATERIALS_REFINES_FROM.AMOUNT > 1, ' x' & RAW_MATERIALS_REFINES_FROM.AMOUNT) AS AMOUNT "
                                      "FROM RAW_MATERIALS_REFINES_FROM WHERE RAW_MATERIAL_NAME = 'Pure Ferrite' AND REFINES_FROM = 'Refined Ferrite'" << 1;
    QTest::newRow("MOB view") << "SELECT * FROM MOBS INNER JOIN MOB_STATS ON MOBS.MOB_NAME = MOB_STATS.MOB_NAME WHERE "
                                 "MOB_STATS.MOB_NAME = 'Brother Kell''s Wraith'" << 1;
    QTest::newRow("specials") << "SELECT SPECIAL, AMOUNT, UNITS, ENERGY_USE, RANGE, DURATION, SHUNT FROM EQUIP_SPECIALS WHERE "
                                 "EQUIPMENT_NAME ='Hunter''s Lance Mk I' ORDER BY SPECIAL" << 2;
    QTest::newRow("nav points") << "SELECT * FROM NAV_POINTS WHERE SECTOR_NAME = 'Aldra Prime'" << 4;
    QTest::newRow("subtypes") << "SELECT COMPONENT_SUBTYPE FROM COMPONENT_TYPE_SUBTYPE WHERE COMPONENT_TYPE = 'Optics' ORDER BY COMPONENT_SUBTYPE" << 2;
}

void TestSampleStatements::statementsFindRows()
{
    QFETCH(QString, sql);
    QFETCH(int, atLeast);
    Recordset rs;
    try {
        rs.open(sql, m_cn, Recordset::Dynamic);
    } catch (const VbError& e) {
        QFAIL(qPrintable(e.description));
    }
    QVERIFY2(rs.recordCount() >= atLeast, qPrintable(QString::number(rs.recordCount())));
}

void TestSampleStatements::columnsReadBackTheirKind_data()
{
    QTest::addColumn<QString>("column"); // TABLE.COLUMN
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("size"); // text size; -1: not checked
    QTest::newRow("name") << "EQUIPMENTS.EQUIPMENT_NAME" << int(FieldKind::Text) << 100;
    QTest::newRow("type") << "EQUIPMENTS.TYPE" << int(FieldKind::Text) << 50;
    QTest::newRow("custom") << "EQUIPMENTS.CUSTOM_01" << int(FieldKind::Text) << 255;
    QTest::newRow("comments") << "EQUIPMENTS.COMMENTS" << int(FieldKind::Memo) << -1;
    QTest::newRow("level") << "EQUIPMENTS.LVL" << int(FieldKind::Long) << -1;
    QTest::newRow("quality") << "EQUIPMENTS.QUALITY" << int(FieldKind::Integer16) << -1;
    QTest::newRow("flag") << "EQUIPMENTS.CHECK" << int(FieldKind::Boolean) << -1;
    QTest::newRow("date") << "EQUIPMENTS.LAST_UPDATED" << int(FieldKind::Date) << -1;
    QTest::newRow("delay") << "WEAPON_STATS.DELAY" << int(FieldKind::Double) << -1;
    QTest::newRow("maneuverability") << "AMO_STATS.MANEUVERABILITY" << int(FieldKind::Single) << -1;
    QTest::newRow("special amount") << "EQUIP_SPECIALS.AMOUNT" << int(FieldKind::Double) << -1;
    QTest::newRow("units") << "EQUIP_SPECIALS.UNITS" << int(FieldKind::Text) << 20;
    QTest::newRow("position") << "NAV_POINTS.X_POINT" << int(FieldKind::Double) << -1;
    QTest::newRow("boss") << "MOB_STATS.BOSS" << int(FieldKind::Boolean) << -1;
    QTest::newRow("temperament") << "MOB_STATS.INTELIGENCE" << int(FieldKind::Text) << 20;
}

void TestSampleStatements::columnsReadBackTheirKind()
{
    QFETCH(QString, column);
    QFETCH(int, kind);
    QFETCH(int, size);
    const QString table = column.section('.', 0, 0), name = column.section('.', 1, 1);
    Recordset rs;
    rs.open(QStringLiteral("SELECT %1 FROM %2").arg(column, table), m_cn);
    QCOMPARE(int(rs.fieldKind(0)), kind);
    if (size >= 0) QCOMPARE(rs.definedSize(0), size);
    QCOMPARE(rs.baseColumnName(0), name);
}

void TestSampleStatements::listsComeInTableOrder()
{
    Recordset rs;
    rs.open("SELECT FREQUENCY FROM DROP_FREQUENCY", m_cn);
    QStringList words;
    for (; !rs.eof(); rs.moveNext()) words << rs.value(0).toString();
    QCOMPARE(words, QStringList({"Very Rare", "Rare", "Normal", "Frequent", "Very Frequent"}));
    Recordset rates;
    rates.open("SELECT SPAWN_RATE FROM SPAWN_RATE", m_cn);
    QCOMPARE(rates.value(0).toString(), QStringLiteral("Very Slow"));
}

void TestSampleStatements::tickIsWrittenBack()
{
    QCOMPARE(m_cn.execute("UPDATE EQUIPMENTS SET EQUIPMENTS.CHECK = TRUE WHERE EQUIPMENT_NAME = 'Hunter''s Lance Mk III';"), 1L);
    Recordset rs;
    rs.open("SELECT CHECK FROM EQUIPMENTS WHERE EQUIPMENT_NAME = 'hunter''s lance mk iii'", m_cn);
    QVERIFY(!rs.eof());
    QCOMPARE(rs.value(0).toBool(), true);
}

void TestSampleStatements::duplicateNameFailsAsAConstraint()
{
    bool thrown = false;
    try {
        m_cn.execute("INSERT INTO CHARACTERS (CHARACTER_NAME) VALUES ('ORLA VENN')");
    } catch (const VbError&) {
        thrown = true;
    }
    QVERIFY(thrown);
    QCOMPARE(m_cn.errors().size(), 1);
    QCOMPARE(m_cn.errors().first().NativeError, 2067L); // SQLITE_CONSTRAINT_UNIQUE
    m_cn.clearErrors();
}

QTEST_GUILESS_MAIN(TestSampleStatements)
#include "tst_sampledata_statements.moc"
