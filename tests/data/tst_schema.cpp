#include "data/schema.h"
#include "tst_sampledata_db.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

// The layout every other part of the program is written against, copied from the design (with the
// column types everyone agreed on), not read from the schema code.
static const QList<QPair<QString, QString>> kExpected = {
    {"EQUIPMENTS", "EQUIPMENT_NAME V, TYPE V, MANUFACTURER V, LVL I, COMMENTS M, PRICE I, QUALITY S, UNIQUE_FLAG B, "
                   "COST_TO_MANUFACTURE I, LAST_UPDATED D, CHECK B, PERSONAL_DB B, UPDATED B, SUBMITTED B, PIC_ID I, "
                   "CUSTOM_01 V, CUSTOM_02 V, CUSTOM_03 V"},
    {"COMPONENTS", "COMPONENT_NAME V, LVL I, PRICE I, COMMENTS M, PERSONAL_DB B, TYPE V, SUBTYPE V, PIC_ID I, "
                   "LAST_UPDATED D, CHECK B, UPDATED B, SUBMITTED B"},
    {"RAW_MATERIALS", "RAW_MATERIAL_NAME V, LVL I, PRICE I, COMMENTS M, CHECK B, PERSONAL_DB B, UPDATED B, SUBMITTED B, "
                      "LAST_UPDATED D, PIC_ID I"},
    {"ITEMS", "ITEM_NAME V, LVL I, PRICE I, COMMENTS M, CHECK B, PERSONAL_DB B, UPDATED B, SUBMITTED B, LAST_UPDATED D, PIC_ID I"},
    {"MOBS", "MOB_NAME V, TYPE V, FACTION V, COMMENTS M, CHECK B, PERSONAL_DB B, UPDATED B, SUBMITTED B, LAST_UPDATED D"},
    {"MOB_STATS", "MOB_NAME V, COMBAT_LEVEL I, SHIELD I, HULL I, MASS I, SIGNATURE I, SCAN_RANGE I, AGGRO_RANGE I, "
                  "BRAVERY V, AGGRESSIVENESS V, ALTRUISM V, INTELIGENCE V, BOSS B"},
    {"STATIONS", "STATION_NAME V, SECTORS_SECTOR V, COMMENTS M, CHECK B, PERSONAL_DB B, UPDATED B, LAST_UPDATED D"},
    {"CHARACTERS", "CHARACTER_NAME V"},
    {"WEAPON_STATS", "EQUIPMENT_NAME V, DAMAGE I, DAMAGE_TYPE V, DELAY F, ENERGY_USE F, RANGE I, ROUNDS I, AMO_TYPE V"},
    {"ENGINE_STATS", "EQUIPMENT_NAME V, WARP I, DRAIN F, THRUST I, SIGNATURE I"},
    {"REACTOR_STATS", "EQUIPMENT_NAME V, ENERGY I, RECHARGE_RATE F"},
    {"SHIELD_STATS", "EQUIPMENT_NAME V, COVERAGE I, REGEN_RATE F"},
    {"AMO_STATS", "EQUIPMENT_NAME V, DAMAGE I, DAMAGE_TYPE V, AMO_TYPE V, STACK_SIZE I, RANGE I, MANEUVERABILITY F"},
    {"EQUIPMENTS_COMPONENTS", "EQUIPMENTS_EQUIPMENT V, COMPONENTS_COMPONENT V, AMOUNT I"},
    {"EQUIPMENTS_RAW_MATERIALS", "EQUIPMENTS_EQUIPMENT V, RAW_MATERIAL_NAME V, AMOUNT I"},
    {"EQUIPMENTS_ITEMS", "EQUIPMENTS_EQUIPMENT V, ITEM_NAME V, AMOUNT I"},
    {"EQUIPMENTS_UPGRADE_FROM", "EQUIPMENT_NAME V, UPGRADE_FROM V, AMOUNT I"},
    {"COMPONENTS_RAW_MATERIALS", "COMPONENTS_COMPONENT V, RAW_MATERIAL V, AMOUNT I"},
    {"COMPONENTS_EQUIPMENTS", "COMPONENT_NAME V, EQUIPMENT_NAME V, AMOUNT I"},
    {"COMPONENTS_ITEMS", "COMPONENT_NAME V, ITEM_NAME V, AMOUNT I"},
    {"COMPONENTS_UPGRADE_FROM", "COMPONENT_NAME V, UPGRADE_FROM V, AMOUNT I"},
    {"RAW_MATERIALS_REFINES_FROM", "RAW_MATERIAL_NAME V, REFINES_FROM V, AMOUNT I"},
    {"RAW_MATERIALS_ITEMS", "RAW_MATERIAL_NAME V, ITEM_NAME V, AMOUNT I"},
    {"EQUIPMENT_CLASS", "EQUIPMENTS_EQUIPMENT V, CLASS_NAME V"},
    {"EQUIP_SPECIALS", "EQUIPMENT_NAME V, SPECIAL V, AMOUNT F, UNITS V, ENERGY_USE F, RANGE I, DURATION I, SHUNT I"},
    {"BUY_EQUIPMENT_LOCATION", "EQUIPMENTS_EQUIPMENT V, STATIONS_STATION V"},
    {"BUY_COMPONENT_LOCATIONS", "COMPONENTS_COMPONENT V, STATIONS_STATION V"},
    {"BUY_RAW_MATERIAL_LOCATIONS", "RAW_MATERIAL V, STATIONS_STATION V"},
    {"BUY_ITEM_LOCATIONS", "ITEM_NAME V, STATIONS_STATION V"},
    {"MINE_LOCATIONS", "RAW_MATERIAL V, SECTORS_SECTOR V"},
    {"MOB_EQUIP_DROP", "MOB_NAME V, EQUIPMENT_NAME V, DROP_FREQUENCY V"},
    {"MOB_COMP_DROP", "MOB_NAME V, COMPONENT_NAME V, DROP_FREQUENCY V"},
    {"MOB_RAW_MAT_DROP", "MOB_NAME V, RAW_MATERIAL_NAME V, DROP_FREQUENCY V"},
    {"MOB_ITEM_DROP", "MOB_NAME V, ITEM_NAME V, DROP_FREQUENCY V"},
    {"MOBS_LOCATION", "MOB_NAME V, SECTOR_NAME V, NAV_POINT V, SPAWN_RATE V"},
    {"MOB_ATTACK_TYPE", "MOB_NAME V, ATTACK_TYPE V, AMOUNT I"},
    {"MOB_RESISTANCE", "MOB_NAME V, RESISTANCE V, AMOUNT I"},
    {"MOB_WEAKNESS", "MOB_NAME V, WEAKNESS V, AMOUNT I"},
    {"STATION_TERMINALS", "STATION_NAME V, TERMINAL_TYPE V"},
    {"SYSTEMS", "SYSTEM_NAME V"},
    {"SECTORS", "SECTOR_NAME V, SYSTEM_SYSTEM_NAME V"},
    {"NAV_POINTS", "NAV_POINT_NAME V, SECTOR_NAME V, COMMENTS M, X_POINT F, Y_POINT F, NAV_TYPE V"},
    {"CLASSES", "CLASS_NAME V"},
    {"COMPONENT_TYPES", "COMPONENT_TYPE V"},
    {"COMPONENT_TYPE_SUBTYPE", "COMPONENT_TYPE V, COMPONENT_SUBTYPE V"},
    {"DAMAGE_TYPE", "DAMAGE_TYPE V"},
    {"LAUNCH_TYPES", "LAUNCH_TYPE V"},
    {"AMO_TYPES", "AMO_TYPE V, LAUNCH_TYPE V"},
    {"MANUFACTURER", "MANUFACTURER_NAME V"},
    {"SPECIALS", "SPECIAL V"},
    {"MOB_TYPES", "MOB_TYPE V"},
    {"FACTIONS", "FACTION V"},
    {"DROP_FREQUENCY", "FREQUENCY V"},
    {"SPAWN_RATE", "SPAWN_RATE V"},
    {"NAV_TYPES", "NAV_TYPE V"},
    {"DB_VERSION", "VERSION I"},
    {"DB_OPTIONS", "CUSTOM_FIELDS_ON B, FIELD_01_CAPTION V, FIELD_02_CAPTION V, FIELD_03_CAPTION V"},
};

// Lookup values and the record columns that use them (the design's "a X.Y" references).
static const QList<QStringList> kLookupUses = {
    {"CLASSES", "CLASS_NAME", "EQUIPMENT_CLASS", "CLASS_NAME"},
    {"COMPONENT_TYPES", "COMPONENT_TYPE", "COMPONENTS", "TYPE"},
    {"DAMAGE_TYPE", "DAMAGE_TYPE", "WEAPON_STATS", "DAMAGE_TYPE"},
    {"DAMAGE_TYPE", "DAMAGE_TYPE", "AMO_STATS", "DAMAGE_TYPE"},
    {"DAMAGE_TYPE", "DAMAGE_TYPE", "MOB_ATTACK_TYPE", "ATTACK_TYPE"},
    {"DAMAGE_TYPE", "DAMAGE_TYPE", "MOB_RESISTANCE", "RESISTANCE"},
    {"DAMAGE_TYPE", "DAMAGE_TYPE", "MOB_WEAKNESS", "WEAKNESS"},
    {"LAUNCH_TYPES", "LAUNCH_TYPE", "AMO_TYPES", "LAUNCH_TYPE"},
    {"AMO_TYPES", "AMO_TYPE", "WEAPON_STATS", "AMO_TYPE"},
    {"AMO_TYPES", "AMO_TYPE", "AMO_STATS", "AMO_TYPE"},
    {"MANUFACTURER", "MANUFACTURER_NAME", "EQUIPMENTS", "MANUFACTURER"},
    {"SPECIALS", "SPECIAL", "EQUIP_SPECIALS", "SPECIAL"},
    {"MOB_TYPES", "MOB_TYPE", "MOBS", "TYPE"},
    {"FACTIONS", "FACTION", "MOBS", "FACTION"},
    {"DROP_FREQUENCY", "FREQUENCY", "MOB_EQUIP_DROP", "DROP_FREQUENCY"},
    {"DROP_FREQUENCY", "FREQUENCY", "MOB_COMP_DROP", "DROP_FREQUENCY"},
    {"DROP_FREQUENCY", "FREQUENCY", "MOB_RAW_MAT_DROP", "DROP_FREQUENCY"},
    {"DROP_FREQUENCY", "FREQUENCY", "MOB_ITEM_DROP", "DROP_FREQUENCY"},
    {"SPAWN_RATE", "SPAWN_RATE", "MOBS_LOCATION", "SPAWN_RATE"},
    {"NAV_TYPES", "NAV_TYPE", "NAV_POINTS", "NAV_TYPE"},
};

static const QStringList kMainTables = {"EQUIPMENTS", "COMPONENTS", "RAW_MATERIALS", "ITEMS", "MOBS", "STATIONS",
                                        "CHARACTERS", "SYSTEMS", "SECTORS"};

class TestSchema : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void everyTableAndColumnOfTheDesign_data();
    void everyTableAndColumnOfTheDesign();
    void noTablesBeyondTheDesign();
    void publishedListMatchesTheFile();
    void versionAndOptions();
    void namesAreUniqueWithoutRegardToCase_data();
    void namesAreUniqueWithoutRegardToCase();
    void textSortsWithoutRegardToCase();
    void constraintNamesTellTheSituation_data();
    void constraintNamesTellTheSituation();
    void everyColumnGuardsItsKind();
    void lookupInUseCannotBeDeletedOrRenamed_data();
    void lookupInUseCannotBeDeletedOrRenamed();
    void subtypeInUseOnlyUnderItsType();
    void orderedListsKeepTableOrder_data();
    void orderedListsKeepTableOrder();
    void relationshipsMayPointNowhere();
    void navPointsUniquePerSector();
    void buildTreeLookupsUseAnIndex_data();
    void buildTreeLookupsUseAnIndex();
    void createRefusesExistingFileAndBadFolder();

private:
    QTemporaryDir m_dir;
    QString m_template;
    QString m_file;
    int m_n = 0;
};

void TestSchema::initTestCase()
{
    m_template = m_dir.filePath(QStringLiteral("template.vosk"));
    QString error;
    QVERIFY2(CreateDatabase(m_template, &error), qPrintable(error));
}

// Each test gets its own copy of one new database.
void TestSchema::init()
{
    m_file = m_dir.filePath(QStringLiteral("db%1.vosk").arg(++m_n));
    QVERIFY(QFile::copy(m_template, m_file));
}

static QString kindOf(const QString& declared)
{
    if (declared.startsWith(QLatin1String("VARCHAR("))) return QStringLiteral("V");
    static const QHash<QString, QString> kinds = {{"INTEGER", "I"}, {"SMALLINT", "S"}, {"FLOAT", "F"}, {"DOUBLE", "F"},
                                                 {"CURRENCY", "C"}, {"TEXT", "M"}, {"BOOLEAN", "B"}, {"DATETIME", "D"}};
    return kinds.value(declared, QStringLiteral("?") + declared);
}

void TestSchema::everyTableAndColumnOfTheDesign_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("columns");
    for (const auto& t : kExpected) QTest::newRow(qPrintable(t.first)) << t.first << t.second;
}

void TestSchema::everyTableAndColumnOfTheDesign()
{
    QFETCH(QString, table);
    QFETCH(QString, columns);
    RawDb db(m_file);
    const auto info = db.rows(QStringLiteral("SELECT name, type FROM pragma_table_info(?)"), {table});
    QVERIFY2(!info.isEmpty(), qPrintable(table + " is missing"));
    QHash<QString, QString> declared;
    for (const auto& r : info) declared.insert(r.at(0).toString(), r.at(1).toString());
    for (const QString& column : columns.split(QStringLiteral(", "))) {
        const QString name = column.section(QLatin1Char(' '), 0, 0);
        const QString kind = column.section(QLatin1Char(' '), 1, 1);
        QVERIFY2(declared.contains(name), qPrintable(table + "." + name + " is missing"));
        QCOMPARE(kindOf(declared.value(name)), kind);
    }
    // Extra columns would show up in the SELECT * lists.
    QCOMPARE(info.size(), columns.split(QStringLiteral(", ")).size());
}

void TestSchema::noTablesBeyondTheDesign()
{
    RawDb db(m_file);
    QStringList tables = db.column("SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite%' ORDER BY name");
    QStringList expected;
    for (const auto& t : kExpected) expected << t.first;
    expected.sort();
    QCOMPARE(tables, expected);
}

void TestSchema::publishedListMatchesTheFile()
{
    RawDb db(m_file);
    QCOMPARE(schema::tableNames().size(), kExpected.size());
    for (const schema::Table& t : schema::tables()) {
        QStringList inFile;
        for (const auto& r : db.rows("SELECT name, type FROM pragma_table_info(?)", {t.name}))
            inFile << r.at(0).toString() + " " + r.at(1).toString();
        QStringList published;
        for (const schema::Column& c : t.columns) published << c.name + " " + c.type;
        QCOMPARE(inFile, published);
    }
    QCOMPARE(schema::columnNames("mob_stats").value(11), QStringLiteral("INTELIGENCE"));
    QVERIFY(schema::columnNames("NO_SUCH_TABLE").isEmpty());
    QCOMPARE(schema::textSize("VARCHAR(50)"), 50);
    QCOMPARE(schema::textSize("TEXT"), 0);
}

void TestSchema::versionAndOptions()
{
    RawDb db(m_file);
    QCOMPARE(db.scalar("SELECT max(VERSION) FROM DB_VERSION").toInt(), 6);
    QCOMPARE(db.count("DB_VERSION"), 1);
    const auto options = db.rows("SELECT CUSTOM_FIELDS_ON, FIELD_01_CAPTION FROM DB_OPTIONS");
    QCOMPARE(options.size(), 1);
    QCOMPARE(options.first().at(0).toInt(), 0);
    // Every other table starts empty.
    for (const auto& t : kExpected)
        if (t.first != QLatin1String("DB_VERSION") && t.first != QLatin1String("DB_OPTIONS")) QCOMPARE(db.count(t.first), 0);
}

void TestSchema::namesAreUniqueWithoutRegardToCase_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("column");
    for (const QString& t : kMainTables) QTest::newRow(qPrintable(t)) << t << schema::columnNames(t).first();
    for (const auto& t : kExpected) {
        if (!t.second.contains(QLatin1Char(',')) && !kMainTables.contains(t.first) && t.first != QLatin1String("DB_VERSION"))
            QTest::newRow(qPrintable(t.first)) << t.first << t.second.section(QLatin1Char(' '), 0, 0);
    }
    QTest::newRow("AMO_TYPES") << "AMO_TYPES" << "AMO_TYPE";
    QTest::newRow("MOB_STATS") << "MOB_STATS" << "MOB_NAME";
    QTest::newRow("WEAPON_STATS") << "WEAPON_STATS" << "EQUIPMENT_NAME";
}

void TestSchema::namesAreUniqueWithoutRegardToCase()
{
    QFETCH(QString, table);
    QFETCH(QString, column);
    RawDb db(m_file);
    const QString insert = QStringLiteral("INSERT INTO \"%1\" (\"%2\") VALUES (?)").arg(table, column);
    QVERIFY2(db.exec(insert, {"Hunter's Lance"}), qPrintable(db.error()));
    QVERIFY(!db.exec(insert, {"HUNTER'S LANCE"}));
    QCOMPARE(db.extendedCode(), SQLITE_CONSTRAINT_UNIQUE);
    QVERIFY(db.exec(insert, {"Hunter's Lance 2"}));
    // And found again in any case.
    QCOMPARE(db.scalar(QStringLiteral("SELECT count(*) FROM \"%1\" WHERE \"%2\" = ?").arg(table, column), {"hunter's lance"}).toInt(), 1);
}

void TestSchema::textSortsWithoutRegardToCase()
{
    RawDb db(m_file);
    for (const char* n : {"cherry", "Banana", "apple"}) QVERIFY(db.exec("INSERT INTO ITEMS (ITEM_NAME) VALUES (?)", {n}));
    QCOMPARE(db.column("SELECT ITEM_NAME FROM ITEMS ORDER BY ITEM_NAME"), QStringList({"apple", "Banana", "cherry"}));
    QVERIFY(db.exec("INSERT INTO EQUIPMENT_CLASS (EQUIPMENTS_EQUIPMENT, CLASS_NAME) VALUES ('x', 'Warrior')"));
    QCOMPARE(db.scalar("SELECT count(*) FROM EQUIPMENT_CLASS WHERE CLASS_NAME = 'WARRIOR'").toInt(), 1);
}

void TestSchema::constraintNamesTellTheSituation_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<QString>("constraint"); // empty: the statement must succeed
    QTest::addColumn<int>("code");
    const int check = SQLITE_CONSTRAINT_CHECK;
    const QString long101 = QString(101, QLatin1Char('x'));
    QTest::newRow("name of 100 fits") << "INSERT INTO EQUIPMENTS (EQUIPMENT_NAME) VALUES ('" + QString(100, 'x') + "')" << "" << 0;
    QTest::newRow("name of 101") << "INSERT INTO EQUIPMENTS (EQUIPMENT_NAME) VALUES ('" + long101 + "')"
                                 << "TOO_LARGE_EQUIPMENTS_EQUIPMENT_NAME" << check;
    QTest::newRow("link name of 101") << "INSERT INTO EQUIPMENTS_COMPONENTS (EQUIPMENTS_EQUIPMENT) VALUES ('" + long101 + "')"
                                      << "TOO_LARGE_EQUIPMENTS_COMPONENTS_EQUIPMENTS_EQUIPMENT" << check;
    QTest::newRow("smallint 32767 fits") << "INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, QUALITY) VALUES ('a', 32767)" << "" << 0;
    QTest::newRow("smallint 32768") << "INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, QUALITY) VALUES ('a', 32768)"
                                    << "TOO_LARGE_EQUIPMENTS_QUALITY" << check;
    QTest::newRow("smallint -32769") << "INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, QUALITY) VALUES ('a', -32769)"
                                     << "TOO_LARGE_EQUIPMENTS_QUALITY" << check;
    QTest::newRow("long 2147483647 fits") << "INSERT INTO ITEMS (ITEM_NAME, PRICE) VALUES ('a', 2147483647)" << "" << 0;
    QTest::newRow("long 2147483648") << "INSERT INTO ITEMS (ITEM_NAME, PRICE) VALUES ('a', 2147483648)"
                                     << "TOO_LARGE_ITEMS_PRICE" << check;
    QTest::newRow("long 1e20") << "INSERT INTO ITEMS (ITEM_NAME, LVL) VALUES ('a', 1e20)" << "TOO_LARGE_ITEMS_LVL" << check;
    QTest::newRow("price codes fit") << "INSERT INTO ITEMS (ITEM_NAME, PRICE) VALUES ('a', -2)" << "" << 0;
    QTest::newRow("empty name") << "INSERT INTO MOBS (MOB_NAME) VALUES ('')" << "EMPTY_MOBS_MOB_NAME" << check;
    QTest::newRow("empty lookup") << "INSERT INTO FACTIONS (FACTION) VALUES ('')" << "EMPTY_FACTIONS_FACTION" << check;
    QTest::newRow("missing name") << "INSERT INTO MOBS (TYPE) VALUES ('Organic')" << "" << int(SQLITE_CONSTRAINT_NOTNULL);
    QTest::newRow("text in a whole number") << "INSERT INTO COMPONENTS (COMPONENT_NAME, LVL) VALUES ('a', 'ten')"
                                            << "INVALID_COMPONENTS_LVL" << check;
    QTest::newRow("number as text is a number") << "INSERT INTO COMPONENTS (COMPONENT_NAME, LVL) VALUES ('a', '10')" << "" << 0;
    QTest::newRow("fraction in a whole number") << "INSERT INTO COMPONENTS (COMPONENT_NAME, LVL) VALUES ('a', 2.5)"
                                                << "INVALID_COMPONENTS_LVL" << check;
    QTest::newRow("text in a double") << "INSERT INTO SHIELD_STATS (EQUIPMENT_NAME, REGEN_RATE) VALUES ('a', 'fast')"
                                      << "INVALID_SHIELD_STATS_REGEN_RATE" << check;
    QTest::newRow("fraction in a double") << "INSERT INTO SHIELD_STATS (EQUIPMENT_NAME, REGEN_RATE) VALUES ('a', 2.5)" << "" << 0;
    QTest::newRow("text in a single") << "INSERT INTO AMO_STATS (EQUIPMENT_NAME, MANEUVERABILITY) VALUES ('a', 'x')"
                                      << "INVALID_AMO_STATS_MANEUVERABILITY" << check;
    QTest::newRow("yes/no 2") << "INSERT INTO ITEMS (ITEM_NAME, \"CHECK\") VALUES ('a', 2)" << "INVALID_ITEMS_CHECK" << check;
    QTest::newRow("yes/no -1") << "INSERT INTO ITEMS (ITEM_NAME, \"CHECK\") VALUES ('a', -1)" << "INVALID_ITEMS_CHECK" << check;
    QTest::newRow("yes/no text") << "INSERT INTO MOB_STATS (MOB_NAME, BOSS) VALUES ('a', 'yes')" << "INVALID_MOB_STATS_BOSS" << check;
    QTest::newRow("yes/no TRUE") << "INSERT INTO ITEMS (ITEM_NAME, \"CHECK\") VALUES ('a', TRUE)" << "" << 0;
    QTest::newRow("yes/no NULL") << "INSERT INTO ITEMS (ITEM_NAME, UPDATED) VALUES ('a', NULL)" << "" << 0;
    QTest::newRow("date text") << "INSERT INTO ITEMS (ITEM_NAME, LAST_UPDATED) VALUES ('a', '2026-11-21 10:00:00')" << "" << 0;
}

void TestSchema::constraintNamesTellTheSituation()
{
    QFETCH(QString, sql);
    QFETCH(QString, constraint);
    QFETCH(int, code);
    RawDb db(m_file);
    const bool ok = db.exec(sql);
    if (code == 0) {
        QVERIFY2(ok, qPrintable(db.error()));
        return;
    }
    QVERIFY(!ok);
    QCOMPARE(db.extendedCode(), code);
    if (!constraint.isEmpty()) QCOMPARE(db.error(), QStringLiteral("CHECK constraint failed: ") + constraint);
}

// Every column of every table refuses what does not fit its kind under the right name; checked
// over the whole file so that a column added later without its guard is caught.
void TestSchema::everyColumnGuardsItsKind()
{
    RawDb db(m_file);
    int checked = 0;
    for (const auto& t : kExpected) {
        const auto info = db.rows("SELECT name, type, \"notnull\" FROM pragma_table_info(?)", {t.first});
        for (const auto& col : info) {
            const QString name = col.at(0).toString();
            const QString type = col.at(1).toString();
            // Fill the required columns with fitting values, then spoil the one under test.
            QStringList names;
            QVariantList values;
            for (const auto& other : info) {
                if (other.at(2).toInt() && other.at(0).toString() != name) {
                    names << "\"" + other.at(0).toString() + "\"";
                    values << QStringLiteral("ok");
                }
            }
            QVariant bad;
            QString expected;
            const QString tag = t.first + "_" + name;
            if (type.startsWith(QLatin1String("VARCHAR("))) {
                bad = QString(schema::textSize(type) + 1, QLatin1Char('w'));
                expected = "TOO_LARGE_" + tag;
            } else if (type == QLatin1String("INTEGER") || type == QLatin1String("SMALLINT")) {
                bad = QStringLiteral("many");
                expected = "INVALID_" + tag;
            } else if (type == QLatin1String("FLOAT") || type == QLatin1String("DOUBLE")) {
                bad = QStringLiteral("slow");
                expected = "INVALID_" + tag;
            } else if (type == QLatin1String("BOOLEAN")) {
                bad = 3;
                expected = "INVALID_" + tag;
            } else {
                continue; // memo and date columns take any text
            }
            names << "\"" + name + "\"";
            values << bad;
            QStringList marks;
            for (int i = 0; i < values.size(); ++i) marks << "?";
            const QString sql = QStringLiteral("INSERT INTO \"%1\" (%2) VALUES (%3)").arg(t.first, names.join(','), marks.join(','));
            QVERIFY2(!db.exec(sql, values), qPrintable(tag + " took a bad value"));
            QCOMPARE(db.error(), QStringLiteral("CHECK constraint failed: ") + expected);
            ++checked;
        }
    }
    QVERIFY2(checked > 150, qPrintable(QString::number(checked)));
}

void TestSchema::lookupInUseCannotBeDeletedOrRenamed_data()
{
    QTest::addColumn<QStringList>("use");
    for (const QStringList& u : kLookupUses) QTest::newRow(qPrintable(u.at(0) + " in " + u.at(2) + "." + u.at(3))) << u;
}

void TestSchema::lookupInUseCannotBeDeletedOrRenamed()
{
    QFETCH(QStringList, use);
    const QString lookup = use.at(0), key = use.at(1), user = use.at(2), column = use.at(3);
    RawDb db(m_file);
    QVERIFY(db.exec(QStringLiteral("INSERT INTO \"%1\" (\"%2\") VALUES ('Zed'), ('Spare')").arg(lookup, key)));
    // The using table's own key, if it has one, must be filled.
    const QString userKey = schema::columnNames(user).first();
    const QString insertUse = userKey == column
        ? QStringLiteral("INSERT INTO \"%1\" (\"%2\") VALUES ('zed')").arg(user, column)
        : QStringLiteral("INSERT INTO \"%1\" (\"%2\", \"%3\") VALUES ('someone', 'zed')").arg(user, userKey, column);
    QVERIFY2(db.exec(insertUse), qPrintable(db.error()));

    const QString message = QStringLiteral("%1 value is in use by %2").arg(lookup, user);
    QVERIFY(!db.exec(QStringLiteral("DELETE FROM \"%1\" WHERE \"%2\" = 'Zed'").arg(lookup, key)));
    QCOMPARE(db.error(), message);
    QVERIFY(!db.exec(QStringLiteral("UPDATE \"%1\" SET \"%2\" = 'Other' WHERE \"%2\" = 'Zed'").arg(lookup, key)));
    QCOMPARE(db.error(), message);
    QCOMPARE(db.scalar(QStringLiteral("SELECT count(*) FROM \"%1\" WHERE \"%2\" = 'Zed'").arg(lookup, key)).toInt(), 1);

    // A value nobody uses goes; once the record lets go, so does the other.
    QVERIFY2(db.exec(QStringLiteral("DELETE FROM \"%1\" WHERE \"%2\" = 'Spare'").arg(lookup, key)), qPrintable(db.error()));
    QVERIFY(db.exec(QStringLiteral("DELETE FROM \"%1\"").arg(user)));
    QVERIFY2(db.exec(QStringLiteral("UPDATE \"%1\" SET \"%2\" = 'Other' WHERE \"%2\" = 'Zed'").arg(lookup, key)), qPrintable(db.error()));
    QVERIFY2(db.exec(QStringLiteral("DELETE FROM \"%1\" WHERE \"%2\" = 'Other'").arg(lookup, key)), qPrintable(db.error()));
}

void TestSchema::subtypeInUseOnlyUnderItsType()
{
    RawDb db(m_file);
    QVERIFY(db.exec("INSERT INTO COMPONENT_TYPES (COMPONENT_TYPE) VALUES ('Optics'), ('Circuitry')"));
    QVERIFY(db.exec("INSERT INTO COMPONENT_TYPE_SUBTYPE (COMPONENT_TYPE, COMPONENT_SUBTYPE) VALUES ('Optics', 'Lens'), ('Circuitry', 'Lens')"));
    QVERIFY(db.exec("INSERT INTO COMPONENTS (COMPONENT_NAME, TYPE, SUBTYPE) VALUES ('Basic Lens', 'Optics', 'Lens')"));
    QVERIFY2(db.exec("DELETE FROM COMPONENT_TYPE_SUBTYPE WHERE COMPONENT_TYPE = 'Circuitry'"), qPrintable(db.error()));
    QVERIFY(!db.exec("DELETE FROM COMPONENT_TYPE_SUBTYPE WHERE COMPONENT_TYPE = 'Optics'"));
    QCOMPARE(db.error(), QStringLiteral("COMPONENT_TYPE_SUBTYPE value is in use by COMPONENTS"));
    // A type with subtypes listed is in use by them.
    QVERIFY(!db.exec("DELETE FROM COMPONENT_TYPES WHERE COMPONENT_TYPE = 'Optics'"));
    QVERIFY(db.exec("INSERT INTO COMPONENT_TYPE_SUBTYPE (COMPONENT_TYPE, COMPONENT_SUBTYPE) VALUES ('Optics', 'Prism')"));
    QVERIFY(!db.exec("INSERT INTO COMPONENT_TYPE_SUBTYPE (COMPONENT_TYPE, COMPONENT_SUBTYPE) VALUES ('optics', 'PRISM')"));
    QCOMPARE(db.extendedCode(), SQLITE_CONSTRAINT_UNIQUE);
}

void TestSchema::orderedListsKeepTableOrder_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("column");
    QTest::newRow("drop frequency") << "DROP_FREQUENCY" << "FREQUENCY";
    QTest::newRow("spawn rate") << "SPAWN_RATE" << "SPAWN_RATE";
    QTest::newRow("nav types") << "NAV_TYPES" << "NAV_TYPE";
}

void TestSchema::orderedListsKeepTableOrder()
{
    QFETCH(QString, table);
    QFETCH(QString, column);
    RawDb db(m_file);
    QStringList written;
    for (int i = 0; i < 300; ++i) written << QStringLiteral("%1 word %2").arg(QChar('Z' - i % 26)).arg(i);
    for (const QString& w : written)
        QVERIFY(db.exec(QStringLiteral("INSERT INTO \"%1\" (\"%2\") VALUES (?)").arg(table, column), {w}));
    QVERIFY(db.exec("ANALYZE"));
    QCOMPARE(db.column(QStringLiteral("SELECT %1 FROM %2").arg(column, table)), written);
    QVERIFY(!db.exec(QStringLiteral("INSERT INTO \"%1\" (\"%2\") VALUES (?)").arg(table, column), {written.first().toLower()}));
    QCOMPARE(db.extendedCode(), SQLITE_CONSTRAINT_UNIQUE);
}

void TestSchema::relationshipsMayPointNowhere()
{
    RawDb db(m_file);
    QVERIFY(db.exec("INSERT INTO MOBS_LOCATION (MOB_NAME, SECTOR_NAME, NAV_POINT, SPAWN_RATE) VALUES ('Ghost', 'Nowhere', 'Nothing', 'Sporadic')"));
    QVERIFY(db.exec("INSERT INTO EQUIPMENTS_COMPONENTS (EQUIPMENTS_EQUIPMENT, COMPONENTS_COMPONENT, AMOUNT) VALUES ('A', 'B', 2)"));
    QVERIFY(db.exec("INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, MANUFACTURER) VALUES ('A', 'Nobody Inc')"));
    for (const auto& t : kExpected)
        QCOMPARE(db.scalar("SELECT count(*) FROM pragma_foreign_key_list(?)", {t.first}).toInt(), 0);
    // Renames rewrite relationship rows themselves: nothing cascades or blocks.
    QVERIFY(db.exec("UPDATE EQUIPMENTS SET EQUIPMENT_NAME = 'A2' WHERE EQUIPMENT_NAME = 'A'"));
    QCOMPARE(db.scalar("SELECT count(*) FROM EQUIPMENTS_COMPONENTS WHERE EQUIPMENTS_EQUIPMENT = 'A'").toInt(), 1);
}

void TestSchema::navPointsUniquePerSector()
{
    RawDb db(m_file);
    const QString insert = "INSERT INTO NAV_POINTS (NAV_POINT_NAME, SECTOR_NAME, X_POINT, Y_POINT, NAV_TYPE) VALUES (?, ?, 1.5, -2.25, 'Gate')";
    QVERIFY(db.exec(insert, {"Gate West", "Aldra Prime"}));
    QVERIFY(db.exec(insert, {"Gate West", "Aldra Drift"}));
    QVERIFY(!db.exec(insert, {"gate west", "ALDRA PRIME"}));
    QCOMPARE(db.extendedCode(), SQLITE_CONSTRAINT_UNIQUE);
    QCOMPARE(db.scalar("SELECT X_POINT FROM NAV_POINTS LIMIT 1").toDouble(), 1.5);
}

void TestSchema::buildTreeLookupsUseAnIndex_data()
{
    QTest::addColumn<QString>("sql");
    QTest::newRow("equipment components") << "SELECT * FROM EQUIPMENTS_COMPONENTS WHERE EQUIPMENTS_EQUIPMENT = 'x'";
    QTest::newRow("component upgrades") << "SELECT * FROM COMPONENTS_UPGRADE_FROM WHERE COMPONENT_NAME = 'x'";
    QTest::newRow("refines") << "SELECT * FROM RAW_MATERIALS_REFINES_FROM WHERE RAW_MATERIAL_NAME = 'x'";
    QTest::newRow("drops by equipment") << "SELECT * FROM MOB_EQUIP_DROP WHERE EQUIPMENT_NAME = 'x'";
    QTest::newRow("record by name") << "SELECT * FROM COMPONENTS WHERE COMPONENT_NAME = 'x'";
    QTest::newRow("stats by name") << "SELECT * FROM AMO_STATS WHERE EQUIPMENT_NAME = 'x'";
}

void TestSchema::buildTreeLookupsUseAnIndex()
{
    QFETCH(QString, sql);
    RawDb db(m_file);
    const QString plan = db.column("EXPLAIN QUERY PLAN " + sql).join(' ');
    const auto detail = db.rows("EXPLAIN QUERY PLAN " + sql);
    QVERIFY(!detail.isEmpty());
    const QString text = detail.first().last().toString();
    QVERIFY2(text.contains(QLatin1String("USING INDEX")) || text.contains(QLatin1String("USING COVERING INDEX")), qPrintable(text + plan));
}

void TestSchema::createRefusesExistingFileAndBadFolder()
{
    QString error;
    QVERIFY(!CreateDatabase(m_file, &error));
    QVERIFY(error.contains(QLatin1String("already exists")));
    RawDb db(m_file); // the file is untouched
    QCOMPARE(db.scalar("SELECT VERSION FROM DB_VERSION").toInt(), 6);

    error.clear();
    const QString bad = m_dir.filePath("no/such/folder/data.vosk");
    QVERIFY(!CreateDatabase(bad, &error));
    QVERIFY(!error.isEmpty());
    QVERIFY(!QFile::exists(bad));
}

QTEST_GUILESS_MAIN(TestSchema)
#include "tst_schema.moc"
