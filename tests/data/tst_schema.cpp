#include "data/recordset.h"
#include "data/schema.h"
#include "enginedb.h"
#include "tst_sampledata_db.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

// The layout every other part of the program is written against, with the column kinds everyone
// agreed on (V text of a size, M memo, I whole, S 16-bit, F fraction, B yes/no, D date), written out
// here rather than read from the schema code.
static const char* const kLayout = // ~: the flags of a record; a column without a kind is V
    "EQUIPMENTS(EQUIPMENT_NAME, TYPE, MANUFACTURER, LVL I, COMMENTS M, PRICE I, QUALITY S, UNIQUE_FLAG B, "
    "COST_TO_MANUFACTURE I, LAST_UPDATED D, CHECK B, PERSONAL_DB B, UPDATED B, SUBMITTED B, PIC_ID I, "
    "CUSTOM_01, CUSTOM_02, CUSTOM_03) COMPONENTS(COMPONENT_NAME, LVL I, PRICE I, COMMENTS M, PERSONAL_DB B, "
    "TYPE, SUBTYPE, PIC_ID I, LAST_UPDATED D, CHECK B, UPDATED B, SUBMITTED B, COST_TO_MANUFACTURE I) "
    "RAW_MATERIALS(RAW_MATERIAL_NAME, LVL I, PRICE I, COMMENTS M, ~, PIC_ID I) ITEMS(ITEM_NAME, LVL I, "
    "PRICE I, COMMENTS M, ~, PIC_ID I) MOBS(MOB_NAME, TYPE, FACTION, COMMENTS M, ~) MOB_STATS(MOB_NAME, "
    "COMBAT_LEVEL I, SHIELD I, HULL I, MASS I, SIGNATURE I, SCAN_RANGE I, AGGRO_RANGE I, BRAVERY, "
    "AGGRESSIVENESS, ALTRUISM, INTELIGENCE, BOSS B) STATIONS(STATION_NAME, SECTORS_SECTOR, COMMENTS M, "
    "CHECK B, PERSONAL_DB B, UPDATED B, LAST_UPDATED D) CHARACTERS(CHARACTER_NAME) "
    "WEAPON_STATS(EQUIPMENT_NAME, DAMAGE I, DAMAGE_TYPE, DELAY F, ENERGY_USE F, RANGE I, ROUNDS I, "
    "AMO_TYPE) ENGINE_STATS(EQUIPMENT_NAME, WARP I, DRAIN F, THRUST I, SIGNATURE I) "
    "REACTOR_STATS(EQUIPMENT_NAME, ENERGY I, RECHARGE_RATE F) SHIELD_STATS(EQUIPMENT_NAME, COVERAGE I, "
    "REGEN_RATE F) AMO_STATS(EQUIPMENT_NAME, DAMAGE I, DAMAGE_TYPE, AMO_TYPE, STACK_SIZE I, RANGE I, "
    "MANEUVERABILITY F) EQUIPMENTS_COMPONENTS(EQUIPMENTS_EQUIPMENT, COMPONENTS_COMPONENT, AMOUNT I) "
    "EQUIPMENTS_RAW_MATERIALS(EQUIPMENTS_EQUIPMENT, RAW_MATERIAL_NAME, AMOUNT I) "
    "EQUIPMENTS_ITEMS(EQUIPMENTS_EQUIPMENT, ITEM_NAME, AMOUNT I) EQUIPMENTS_UPGRADE_FROM(EQUIPMENT_NAME, "
    "UPGRADE_FROM, AMOUNT I) COMPONENTS_RAW_MATERIALS(COMPONENTS_COMPONENT, RAW_MATERIAL, AMOUNT I) "
    "COMPONENTS_EQUIPMENTS(COMPONENT_NAME, EQUIPMENT_NAME, AMOUNT I) COMPONENTS_ITEMS(COMPONENT_NAME, "
    "ITEM_NAME, AMOUNT I) COMPONENTS_UPGRADE_FROM(COMPONENT_NAME, UPGRADE_FROM, AMOUNT I) "
    "RAW_MATERIALS_REFINES_FROM(RAW_MATERIAL_NAME, REFINES_FROM, AMOUNT I) "
    "RAW_MATERIALS_ITEMS(RAW_MATERIAL_NAME, ITEM_NAME, AMOUNT I) EQUIPMENT_CLASS(EQUIPMENTS_EQUIPMENT, "
    "CLASS_NAME) EQUIP_SPECIALS(EQUIPMENT_NAME, SPECIAL, AMOUNT F, UNITS, ENERGY_USE F, RANGE I, DURATION "
    "I, SHUNT I) BUY_EQUIPMENT_LOCATION(EQUIPMENTS_EQUIPMENT, STATIONS_STATION) "
    "BUY_COMPONENT_LOCATIONS(COMPONENTS_COMPONENT, STATIONS_STATION) "
    "BUY_RAW_MATERIAL_LOCATIONS(RAW_MATERIAL, STATIONS_STATION) BUY_ITEM_LOCATIONS(ITEM_NAME, "
    "STATIONS_STATION) MINE_LOCATIONS(RAW_MATERIAL, SECTORS_SECTOR) MOB_EQUIP_DROP(MOB_NAME, "
    "EQUIPMENT_NAME, DROP_FREQUENCY) MOB_COMP_DROP(MOB_NAME, COMPONENT_NAME, DROP_FREQUENCY) "
    "MOB_RAW_MAT_DROP(MOB_NAME, RAW_MATERIAL_NAME, DROP_FREQUENCY) MOB_ITEM_DROP(MOB_NAME, ITEM_NAME, "
    "DROP_FREQUENCY) MOBS_LOCATION(MOB_NAME, SECTOR_NAME, NAV_POINT, SPAWN_RATE) MOB_ATTACK_TYPE(MOB_NAME, "
    "ATTACK_TYPE, AMOUNT I) MOB_RESISTANCE(MOB_NAME, RESISTANCE, AMOUNT I) MOB_WEAKNESS(MOB_NAME, WEAKNESS, "
    "AMOUNT I) STATION_TERMINALS(STATION_NAME, TERMINAL_TYPE) SYSTEMS(SYSTEM_NAME) SECTORS(SECTOR_NAME, "
    "SYSTEM_SYSTEM_NAME) NAV_POINTS(NAV_POINT_NAME, SECTOR_NAME, COMMENTS M, X_POINT F, Y_POINT F, "
    "NAV_TYPE) CLASSES(CLASS_NAME) COMPONENT_TYPES(COMPONENT_TYPE) COMPONENT_TYPE_SUBTYPE(COMPONENT_TYPE, "
    "COMPONENT_SUBTYPE) DAMAGE_TYPE(DAMAGE_TYPE) LAUNCH_TYPES(LAUNCH_TYPE) AMO_TYPES(AMO_TYPE, LAUNCH_TYPE) "
    "MANUFACTURER(MANUFACTURER_NAME) SPECIALS(SPECIAL) MOB_TYPES(MOB_TYPE) FACTIONS(FACTION) "
    "DROP_FREQUENCY(FREQUENCY) SPAWN_RATE(SPAWN_RATE) NAV_TYPES(NAV_TYPE) DB_VERSION(VERSION I) "
    "DB_OPTIONS(CUSTOM_FIELDS_ON B, FIELD_01_CAPTION, FIELD_02_CAPTION, FIELD_03_CAPTION)";

static QList<QPair<QString, QStringList>> expectedTables() {
    QList<QPair<QString, QStringList>> out;
    static const QRegularExpression table("(\\w+)\\(([^)]*)\\)");
    for (const auto& m : table.globalMatch(
             QString(kLayout).replace("~", "CHECK B, PERSONAL_DB B, UPDATED B, SUBMITTED B, LAST_UPDATED D")))
        for (QString& c : out.emplaceBack(m.captured(1), m.captured(2).split(", ")).second)
            c += c.contains(' ') ? "" : " V";
    return out;
}

// Every lookup value and the record column that holds it (the subtype, which is in use only under
// its own type, has a test of its own).
static const char* const kLookupUses = // LOOKUP.KEY>RECORD.COLUMN
    "CLASSES.CLASS_NAME>EQUIPMENT_CLASS.CLASS_NAME COMPONENT_TYPES.COMPONENT_TYPE>COMPONENTS.TYPE "
    "COMPONENT_TYPES.COMPONENT_TYPE>COMPONENT_TYPE_SUBTYPE.COMPONENT_TYPE "
    "DAMAGE_TYPE.DAMAGE_TYPE>WEAPON_STATS.DAMAGE_TYPE DAMAGE_TYPE.DAMAGE_TYPE>AMO_STATS.DAMAGE_TYPE "
    "DAMAGE_TYPE.DAMAGE_TYPE>MOB_ATTACK_TYPE.ATTACK_TYPE DAMAGE_TYPE.DAMAGE_TYPE>MOB_RESISTANCE.RESISTANCE "
    "DAMAGE_TYPE.DAMAGE_TYPE>MOB_WEAKNESS.WEAKNESS LAUNCH_TYPES.LAUNCH_TYPE>AMO_TYPES.LAUNCH_TYPE "
    "AMO_TYPES.AMO_TYPE>WEAPON_STATS.AMO_TYPE AMO_TYPES.AMO_TYPE>AMO_STATS.AMO_TYPE "
    "MANUFACTURER.MANUFACTURER_NAME>EQUIPMENTS.MANUFACTURER SPECIALS.SPECIAL>EQUIP_SPECIALS.SPECIAL "
    "MOB_TYPES.MOB_TYPE>MOBS.TYPE FACTIONS.FACTION>MOBS.FACTION "
    "DROP_FREQUENCY.FREQUENCY>MOB_EQUIP_DROP.DROP_FREQUENCY "
    "DROP_FREQUENCY.FREQUENCY>MOB_COMP_DROP.DROP_FREQUENCY "
    "DROP_FREQUENCY.FREQUENCY>MOB_RAW_MAT_DROP.DROP_FREQUENCY "
    "DROP_FREQUENCY.FREQUENCY>MOB_ITEM_DROP.DROP_FREQUENCY SPAWN_RATE.SPAWN_RATE>MOBS_LOCATION.SPAWN_RATE "
    "NAV_TYPES.NAV_TYPE>NAV_POINTS.NAV_TYPE";

// An INSERT of one row that gives the column the SQL expression and every other required column 'ok'.
static QString insertOne(RawDb& db, const QString& table, const QString& column, const QString& expression) {
    QStringList names{'"' + column + '"'}, values{expression};
    for (const auto& other : db.rows("SELECT name FROM pragma_table_info(?) WHERE \"notnull\"", {table}))
        if (other[0] != column)
            names << '"' + other[0].toString() + '"', values << "'ok'";
    return QString("INSERT INTO \"%1\" (%2) VALUES (%3)").arg(table, names.join(','), values.join(','));
}

class TestSchema : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() {
        m_template = m_dir.filePath("template.vosk");
        QString error;
        QVERIFY2(CreateDatabase(m_template, &error), qPrintable(error));
    }
    void init() { // each test gets its own copy of one new database
        m_file = m_dir.filePath(QStringLiteral("db%1.vosk").arg(++m_n));
        QVERIFY(QFile::copy(m_template, m_file));
        QFile::setPermissions(m_file, QFile::ReadOwner | QFile::WriteOwner);
    }
    void cleanup() { db().close(); }
    void everyTableAndColumnOfTheLayout() {
        static const QHash<QString, QString> kinds = {{"INTEGER", "I"}, {"SMALLINT", "S"}, {"FLOAT", "F"},
                                                      {"DOUBLE", "F"},  {"TEXT", "M"},     {"BOOLEAN", "B"},
                                                      {"DATETIME", "D"}};
        RawDb db(m_file);
        QStringList names;
        for (const auto& [table, columns] : expectedTables()) {
            QStringList inFile; // extra columns would show up in the SELECT * lists
            for (const auto& r : db.rows("SELECT name, type FROM pragma_table_info(?)", {table}))
                inFile << r[0].toString() + ' ' +
                              (r[1].toString().startsWith("VARCHAR(") ? "V"
                                                                      : kinds.value(r[1].toString(), "?"));
            QCOMPARE(inFile, columns);
            names << table;
        }
        QCOMPARE(names.size(), 57);
        names.sort();
        QCOMPARE(
            db.column(
                "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite%' ORDER BY name"),
            names);
    }
    void namesAreUniqueWithoutRegardToCase_data() {
        QTest::addColumn<QString>("table");
        QTest::addColumn<QString>("column");
        const QStringList records =
            QString("EQUIPMENTS COMPONENTS RAW_MATERIALS ITEMS MOBS STATIONS SECTORS AMO_TYPES "
                    "MOB_STATS WEAPON_STATS")
                .split(' ');
        for (const auto& [table, columns] : expectedTables()) // record names and one-column lookups
            if ((columns.size() == 1 || records.contains(table)) && table != "DB_VERSION")
                QTest::newRow(qPrintable(table)) << table << columns.first().section(' ', 0, 0);
    }
    void namesAreUniqueWithoutRegardToCase() {
        QFETCH(QString, table);
        QFETCH(QString, column);
        RawDb db(m_file);
        const QString insert = QStringLiteral("INSERT INTO \"%1\" (\"%2\") VALUES (?)").arg(table, column);
        QVERIFY2(db.exec(insert, {"Hunter's Lance"}), qPrintable(db.error()));
        QVERIFY(!db.exec(insert, {"HUNTER'S LANCE"}));
        QCOMPARE(db.extendedCode(), SQLITE_CONSTRAINT_UNIQUE);
        QVERIFY(db.exec(insert, {"Éclair"}));
        QVERIFY(!db.exec(insert, {"éCLAIR"})); // beyond A-Z too
        QVERIFY(db.exec(insert, {"apple"}));
        QVERIFY(db.exec(insert, {"Banana"}));
        const QString select =
            QStringLiteral("SELECT \"%2\" FROM \"%1\" WHERE \"%2\" <> ? ORDER BY 1").arg(table, column);
        QCOMPARE(db.column(select, {"hunter's lance"}),
                 (QStringList{"apple", "Banana", "Éclair"})); // any case
    }
    void constraintNamesTellTheSituation_data() {
        QTest::addColumn<QString>("sql");
        QTest::addColumn<QString>("failure"); // empty: the statement must succeed
        auto row = [](const char* tag, const QString& sql, const QString& check = {}) {
            QTest::newRow(tag) << sql
                               << (check.isEmpty() || check.contains(' ')
                                       ? check
                                       : "CHECK constraint failed: " + check);
        };
        row("name of 100 fits",
            "INSERT INTO EQUIPMENTS (EQUIPMENT_NAME) VALUES ('" + QString(100, 'x') + "')");
        row("smallint range fits",
            "INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, QUALITY) VALUES ('a', 32767), ('b', -32768)");
        row("smallint 32768", "INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, QUALITY) VALUES ('a', 32768)",
            "TOO_LARGE_EQUIPMENTS_QUALITY");
        row("smallint -32769", "INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, QUALITY) VALUES ('a', -32769)",
            "TOO_LARGE_EQUIPMENTS_QUALITY");
        row("long range fits, price codes fit",
            "INSERT INTO ITEMS (ITEM_NAME, PRICE, LVL) VALUES ('a', 2147483647, -2), ('b', -2147483648, 0)");
        row("long 2147483648", "INSERT INTO ITEMS (ITEM_NAME, PRICE) VALUES ('a', 2147483648)",
            "TOO_LARGE_ITEMS_PRICE");
        row("empty name", "INSERT INTO MOBS (MOB_NAME) VALUES ('')", "EMPTY_MOBS_MOB_NAME");
        row("empty lookup", "INSERT INTO FACTIONS (FACTION) VALUES ('')", "EMPTY_FACTIONS_FACTION");
        row("missing name", "INSERT INTO MOBS (TYPE) VALUES ('Organic')",
            "NOT NULL constraint failed: MOBS.MOB_NAME");
        row("number as text is a number", "INSERT INTO COMPONENTS (COMPONENT_NAME, LVL) VALUES ('a', '10')");
        row("fraction in a whole number", "INSERT INTO COMPONENTS (COMPONENT_NAME, LVL) VALUES ('a', 2.5)",
            "INVALID_COMPONENTS_LVL");
        row("yes/no TRUE or NULL, a date",
            "INSERT INTO ITEMS (ITEM_NAME, \"CHECK\", UPDATED, LAST_UPDATED) VALUES ('a', TRUE, NULL, '2026-11-21 10:00:00')");
        row("the added fee, unknown or -1",
            "INSERT INTO COMPONENTS (COMPONENT_NAME, COST_TO_MANUFACTURE) VALUES ('a', NULL), "
            "('b', -1), ('c', 250)");
        row("the added fee beyond 32 bits",
            "INSERT INTO COMPONENTS (COMPONENT_NAME, COST_TO_MANUFACTURE) VALUES ('a', 3000000000)",
            "TOO_LARGE_COMPONENTS_COST_TO_MANUFACTURE");
    }
    void constraintNamesTellTheSituation() {
        QFETCH(QString, sql);
        QFETCH(QString, failure);
        RawDb db(m_file);
        QCOMPARE(db.exec(sql), failure.isEmpty());
        QCOMPARE(db.error(), failure);
    }
    // Every column of every table refuses what does not fit its kind under its own constraint name,
    // so that a column added later without its guard is caught.
    void everyColumnGuardsItsKind() {
        RawDb db(m_file);
        int checked = 0;
        for (const auto& t : expectedTables())
            for (const auto& col : db.rows("SELECT name, type FROM pragma_table_info(?)", {t.first})) {
                const QString name = col[0].toString(), type = col[1].toString(), tag = t.first + "_" + name;
                if (type == "TEXT" || type == "DATETIME")
                    continue; // memo and date columns take any text
                const bool text = type.startsWith("VARCHAR(");
                const QVariant spoilt = text ? QVariant(QString(schema::textSize(type) + 1, 'w'))
                                        : type == "BOOLEAN" ? QVariant(3)
                                                            : QVariant("many");
                QVERIFY2(!db.exec(insertOne(db, t.first, name, "?"), {spoilt}), qPrintable(tag));
                QCOMPARE(db.error(),
                         "CHECK constraint failed: " + QString(text ? "TOO_LARGE_" : "INVALID_") + tag);
                ++checked;
            }
        QVERIFY2(checked > 150, qPrintable(QString::number(checked)));
    }
    // A name that would end its literal once it comes back through FixQuotes, a blob, and bytes that are
    // not UTF-8 are refused by every name column (the 100- and 50-character texts), whoever writes them;
    // a single quote is a name's own.
    void nameColumnsRefuseWhatCannotComeBack_data() {
        QTest::addColumn<QString>("value"); // an SQL expression
        QTest::addColumn<bool>("stored");
        QTest::newRow("single quote") << "'Hunter''s Lance'" << true;
        QTest::newRow("two quotes in a row") << "'x'''' OR ''''='''" << false;
        QTest::newRow("typed doubled") << "'O''''Brien'" << false;
        QTest::newRow("blob") << "x'414243'" << false;
        QTest::newRow("latin-1 byte") << "CAST(x'4361669E' AS TEXT)" << false;
        QTest::newRow("utf-8") << "CAST(x'C3A9636C616972' AS TEXT)" << true;
    }
    void nameColumnsRefuseWhatCannotComeBack() {
        QFETCH(QString, value);
        QFETCH(bool, stored);
        RawDb db(m_file);
        QVERIFY(db.exec("BEGIN"));
        int columns = 0;
        for (const auto& t : expectedTables())
            for (const auto& c : db.rows("SELECT name, type FROM pragma_table_info(?)", {t.first})) {
                if (t.first == "DB_OPTIONS" || (c[1] != "VARCHAR(100)" && c[1] != "VARCHAR(50)"))
                    continue;
                const QString column = c[0].toString();
                QVERIFY(db.exec("SAVEPOINT one"));
                QVERIFY2(db.exec(insertOne(db, t.first, column, value)) == stored,
                         qPrintable(t.first + '.' + column + ": " + db.error()));
                if (!stored)
                    QCOMPARE(db.error(), "CHECK constraint failed: INVALID_" + t.first + '_' + column);
                QVERIFY(db.exec("ROLLBACK TO one") && db.exec("RELEASE one"));
                ++columns;
            }
        QVERIFY2(columns > 80, qPrintable(QString::number(columns)));
    }
    void lookupInUseCannotBeDeletedOrRenamed_data() {
        QTest::addColumn<QStringList>("use");
        for (const QString& u : QString(kLookupUses).split(' '))
            QTest::newRow(qPrintable(u)) << u.split(QRegularExpression("[.>]"));
    }
    void lookupInUseCannotBeDeletedOrRenamed() {
        QFETCH(QStringList, use);
        const QString lookup = use[0], key = use[1], user = use[2], column = use[3];
        RawDb db(m_file);
        QVERIFY(db.exec(QString("INSERT INTO \"%1\" (\"%2\") VALUES ('Zed'), ('Spare')").arg(lookup, key)));
        QVERIFY2(db.exec(insertOne(db, user, column, "'zed'")),
                 qPrintable(db.error())); // used in another case
        const QString message = QStringLiteral("%1 value is in use by %2").arg(lookup, user);
        const QString rename =
            QString("UPDATE \"%1\" SET \"%2\" = 'Other' WHERE \"%2\" = 'Zed'").arg(lookup, key);
        QVERIFY(!db.exec(QString("DELETE FROM \"%1\" WHERE \"%2\" = 'Zed'").arg(lookup, key)));
        QCOMPARE(db.error(), message);
        QVERIFY(!db.exec(rename));
        QCOMPARE(db.error(), message);
        QVERIFY(
            db.exec(QString("DELETE FROM \"%1\" WHERE \"%2\" = 'Spare'").arg(lookup, key))); // unused: goes
        QVERIFY(db.exec(QString("DELETE FROM \"%1\"").arg(user)));
        QVERIFY2(db.exec(rename), qPrintable(db.error())); // once the record lets go
    }
    void subtypeInUseOnlyUnderItsType() {
        RawDb db(m_file);
        QVERIFY(db.exec("INSERT INTO COMPONENT_TYPES (COMPONENT_TYPE) VALUES ('Optics'), ('Circuitry')"));
        QVERIFY(db.exec(
            "INSERT INTO COMPONENT_TYPE_SUBTYPE (COMPONENT_TYPE, COMPONENT_SUBTYPE) VALUES ('Optics', 'Lens'), "
            "('Circuitry', 'Lens')"));
        QVERIFY(db.exec(
            "INSERT INTO COMPONENTS (COMPONENT_NAME, TYPE, SUBTYPE) VALUES ('Basic Lens', 'Optics', 'Lens')"));
        QVERIFY2(db.exec("DELETE FROM COMPONENT_TYPE_SUBTYPE WHERE COMPONENT_TYPE = 'Circuitry'"),
                 qPrintable(db.error()));
        QVERIFY(!db.exec("DELETE FROM COMPONENT_TYPE_SUBTYPE WHERE COMPONENT_TYPE = 'Optics'"));
        QCOMPARE(db.error(), QStringLiteral("COMPONENT_TYPE_SUBTYPE value is in use by COMPONENTS"));
        QVERIFY(!db.exec(
            "DELETE FROM COMPONENT_TYPES WHERE COMPONENT_TYPE = 'Optics'")); // in use by its subtypes
        QVERIFY(!db.exec(
            "INSERT INTO COMPONENT_TYPE_SUBTYPE (COMPONENT_TYPE, COMPONENT_SUBTYPE) VALUES ('optics', 'LENS')"));
        QCOMPARE(db.extendedCode(), SQLITE_CONSTRAINT_UNIQUE);
    }
    void orderedListsKeepTableOrder() {
        RawDb db(m_file);
        QStringList written;
        for (int i = 0; i < 300; ++i)
            written << QStringLiteral("%1 word %2").arg(QChar('Z' - i % 26)).arg(i);
        for (const auto& [table, column] : {std::pair{"DROP_FREQUENCY", "FREQUENCY"},
                                            {"SPAWN_RATE", "SPAWN_RATE"},
                                            {"NAV_TYPES", "NAV_TYPE"}}) {
            QVERIFY(db.exec("BEGIN"));
            for (const QString& w : written)
                QVERIFY(db.exec(QString("INSERT INTO %1 (%2) VALUES (?)").arg(table, column), {w}));
            QVERIFY(db.exec("COMMIT") && db.exec("ANALYZE"));
            QCOMPARE(db.column(QString("SELECT %1 FROM %2").arg(column, table)), written);
        }
    }
    void relationshipsMayPointNowhere() {
        RawDb db(m_file);
        QVERIFY(db.exec(
            "INSERT INTO EQUIPMENTS_COMPONENTS (EQUIPMENTS_EQUIPMENT, COMPONENTS_COMPONENT, AMOUNT) VALUES "
            "('A', 'B', 2)"));
        QVERIFY(db.exec("INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, MANUFACTURER) VALUES ('A', 'Nobody Inc')"));
        // Renames rewrite relationship rows themselves: nothing cascades or blocks.
        QVERIFY(db.exec("UPDATE EQUIPMENTS SET EQUIPMENT_NAME = 'A2' WHERE EQUIPMENT_NAME = 'A'"));
        QCOMPARE(
            db.scalar("SELECT count(*) FROM EQUIPMENTS_COMPONENTS WHERE EQUIPMENTS_EQUIPMENT = 'A'").toInt(),
            1);
        const QString insert =
            "INSERT INTO NAV_POINTS (NAV_POINT_NAME, SECTOR_NAME, X_POINT, NAV_TYPE) VALUES (?, ?, 1.5, 'Gate')";
        QVERIFY(db.exec(insert, {"Gate West", "Aldra Prime"}));
        QVERIFY(db.exec(insert, {"Gate West", "Aldra Drift"})); // nav point names are unique per sector
        QVERIFY(!db.exec(insert, {"gate west", "ALDRA PRIME"}));
        QCOMPARE(db.extendedCode(), SQLITE_CONSTRAINT_UNIQUE);
    }
    void createRefusesExistingFileAndBadFolder() {
        QString error;
        QVERIFY(!CreateDatabase(m_file, &error));
        QVERIFY(error.contains("already exists"));
        RawDb db(m_file); // untouched: as new, only the version and the options row
        QCOMPARE(db.scalar("SELECT VERSION || count(*) || CUSTOM_FIELDS_ON FROM DB_VERSION, DB_OPTIONS"),
                 QStringLiteral("610"));
        const QString bad = m_dir.filePath("no/such/folder/data.vosk");
        QVERIFY(!CreateDatabase(bad, &error));
        QVERIFY(!QFile::exists(bad));
    }
    // A version-6 file written before the component's manufacturing fee existed gets it when it is opened,
    // keeping its rows, its version and the column's guard; a file that has it is not written.
    void anOlderFileGetsTheAddedColumnWhenOpened() {
        const auto schemaVersion = [this] { return RawDb(m_file).scalar("PRAGMA schema_version").toInt(); };
        const int untouched = schemaVersion();
        db().open(enginedb::connectionFor(m_file));
        db().close();
        QCOMPARE(schemaVersion(), untouched);
        {
            RawDb raw(m_file);
            QVERIFY2(raw.exec("ALTER TABLE COMPONENTS DROP COLUMN COST_TO_MANUFACTURE"),
                     qPrintable(raw.error()));
            QVERIFY(raw.exec(
                "INSERT INTO COMPONENTS (COMPONENT_NAME, LVL, PRICE) VALUES ('Gunner''s Sight', 4, 90)"));
        }
        db().open(enginedb::connectionFor(m_file));
        Recordset rs;
        rs.open("SELECT * FROM COMPONENTS WHERE COMPONENT_NAME = 'Gunner''s Sight'");
        QCOMPARE(rs.value("PRICE").toInt(), 90);
        QVERIFY(rs.value("COST_TO_MANUFACTURE").isNull());
        rs.close();
        db().execute(
            "UPDATE COMPONENTS SET COST_TO_MANUFACTURE = 35 WHERE COMPONENT_NAME = 'Gunner''s Sight'");
        db().close();
        RawDb raw(m_file);
        QCOMPARE(raw.scalar("SELECT MAX(VERSION) FROM DB_VERSION").toInt(), 6);
        QCOMPARE(raw.scalar("SELECT COST_TO_MANUFACTURE FROM COMPONENTS").toInt(), 35);
        QVERIFY(!raw.exec("UPDATE COMPONENTS SET COST_TO_MANUFACTURE = 'cheap'"));
        QVERIFY(raw.error().contains("INVALID_COMPONENTS_COST_TO_MANUFACTURE"));
        // Not part of the layout every version-6 file has, so that older backups still restore.
        for (const schema::Column& c : schema::findTable("COMPONENTS")->columns)
            QVERIFY(c.name != "COST_TO_MANUFACTURE");
    }
    void anOlderFileGetsTheLevelIndexesWhenOpened() {
        // How the engine finds the highest level: by reading every row, or through the index.
        const auto plan = [](RawDb& raw, const char* table) {
            QString text;
            for (const auto& r : raw.rows(QString("EXPLAIN QUERY PLAN SELECT MAX(LVL) FROM %1").arg(table)))
                text += r.last().toString();
            return text;
        };
        {
            RawDb raw(m_file);
            for (const char* table : {"EQUIPMENTS", "COMPONENTS", "RAW_MATERIALS", "ITEMS"})
                QVERIFY2(raw.exec(QString("DROP INDEX IX_%1_LVL").arg(table)), qPrintable(raw.error()));
            QVERIFY(!plan(raw, "EQUIPMENTS").contains("INDEX"));
        }
        db().open(enginedb::connectionFor(m_file));
        db().close();
        RawDb raw(m_file);
        for (const char* table : {"EQUIPMENTS", "COMPONENTS", "RAW_MATERIALS", "ITEMS"})
            QVERIFY2(plan(raw, table).contains(QString("IX_%1_LVL").arg(table)), table);
    }
    // A file of another version, one without the table, or one that cannot be written is left as it is
    // and still opens.
    void otherFilesAreLeftAsTheyAre_data() {
        QTest::addColumn<QString>("change");
        QTest::newRow("a version 5 file") << "UPDATE DB_VERSION SET VERSION = 5";
        QTest::newRow("no components table") << "DROP TABLE COMPONENTS";
        QTest::newRow("a read-only file") << "";
    }
    void otherFilesAreLeftAsTheyAre() {
        QFETCH(QString, change);
        {
            RawDb raw(m_file);
            QVERIFY(raw.exec("ALTER TABLE COMPONENTS DROP COLUMN COST_TO_MANUFACTURE"));
            QVERIFY2(change.isEmpty() || raw.exec(change), qPrintable(raw.error()));
        }
        const int version = RawDb(m_file).scalar("PRAGMA schema_version").toInt();
        if (change.isEmpty()) {
            QFile::setPermissions(m_file, QFile::ReadOwner);
            if (QFileInfo(m_file).isWritable())
                QSKIP("this user can write a read-only file");
        }
        db().open(enginedb::connectionFor(m_file));
        QVERIFY(db().isOpen());
        db().close();
        QCOMPARE(RawDb(m_file).scalar("PRAGMA schema_version").toInt(), version);
    }

private:
    QTemporaryDir m_dir;
    QString m_template, m_file;
    int m_n = 0;
};

QTEST_GUILESS_MAIN(TestSchema)
#include "tst_schema.moc"
