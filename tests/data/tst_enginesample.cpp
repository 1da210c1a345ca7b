// The engine over the real schema and the sample data set: the schema's constraint names reach the
// reporter as the four situations, and the editors' ways of writing through result sets work on the
// real tables.
#include "core/clock.h"
#include "core/programfolder.h"
#include "core/scriptedprompt.h"
#include "data/database.h"
#include "data/errorreport.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "data/sampledata.h"
#include "data/schema.h"

#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

class TestEngineSample : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void constraintsReachTheReporter_data();
    void constraintsReachTheReporter();
    void lookupInUseIsTold();
    void newMobAcrossBothTables();
    void ammunitionChangesLeaveTheLookupAlone();
    void gridSaveRewritesRelationRows();
    void copyRecordByBaseColumns();
    void newItemThroughResultSet();

private:
    QString first(const QString& sql);
    long number(const QString& sql);
    QTemporaryDir m_settings;
    QString m_master; // the sample database, made once and copied for each test
    QTemporaryDir* m_dir = nullptr;
};

void TestEngineSample::initTestCase() {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_settings.path());
    m_master = m_settings.filePath("master.vosk");
    QString error;
    QVERIFY2(CreateDatabase(m_master, &error), qPrintable(error));
    QVERIFY2(FillSampleData(m_master, &error), qPrintable(error));
}

void TestEngineSample::init() {
    m_dir = new QTemporaryDir;
    setProgramFolder(m_dir->path());
    const QString path = m_dir->filePath("data.vosk");
    QVERIFY(QFile::copy(m_master, path));
    QFile(path).setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    db().open("Provider=VOSK.SQLite;Data Source=" + path + ";");
}

void TestEngineSample::cleanup() {
    db().close();
    delete m_dir;
}

QString TestEngineSample::first(const QString& sql) {
    Recordset rs;
    rs.open(sql);
    return rs.eof() ? QString() : rs.value(0).toString();
}

long TestEngineSample::number(const QString& sql) {
    Recordset rs;
    rs.open(sql);
    return long(rs.intValue(0));
}

void TestEngineSample::constraintsReachTheReporter_data() {
    QTest::addColumn<QString>("sql");
    QTest::addColumn<QString>("title");
    QTest::newRow("name too long") << "INSERT INTO COMPONENTS (COMPONENT_NAME) VALUES ('" + QString(300, 'n') + "')"
                                   << "Too Large";
    QTest::newRow("16-bit number out of range") << "UPDATE EQUIPMENTS SET QUALITY = 70000" << "Too Large";
    QTest::newRow("name missing") << "INSERT INTO RAW_MATERIALS (LVL) VALUES (1)" << "Empty Data";
    QTest::newRow("name empty") << "INSERT INTO ITEMS (ITEM_NAME) VALUES ('')" << "Empty Data";
    QTest::newRow("name taken in other case") << "INSERT INTO MOBS (MOB_NAME) VALUES (UPPER((SELECT MIN(MOB_NAME) FROM MOBS)))"
                                              << "Duplicate Record";
    QTest::newRow("text in a number") << "UPDATE COMPONENTS SET LVL = 'high'" << "Invalid Values";
    QTest::newRow("yes/no other than 0 and 1") << "UPDATE ITEMS SET CHECK = 7" << "Invalid Values";
}

void TestEngineSample::constraintsReachTheReporter() {
    QFETCH(QString, sql);
    QFETCH(QString, title);
    ScriptedPrompt prompt;
    try {
        db().execute(sql);
        QFAIL("no error");
    } catch (const VbError& e) {
        ReportDBError(e, "cmdSave_Click", "Form frmAddComp");
    }
    QCOMPARE(prompt.count(), 1);
    QCOMPARE(prompt.last().title, title);
    QCOMPARE(prompt.last().style, 64);
}

void TestEngineSample::lookupInUseIsTold() {
    const QString used = first("SELECT ATTACK_TYPE FROM MOB_ATTACK_TYPE");
    QVERIFY(!used.isEmpty());
    try {
        db().execute("DELETE FROM DAMAGE_TYPE WHERE DAMAGE_TYPE = '" + FixQuotes(used) + "'");
        QFAIL("no error");
    } catch (const VbError&) {
        QCOMPARE(classifyError(db().errors().first()), DBErrorKind::InUse);
    }
    db().clearErrors();
    QCOMPARE(number("SELECT COUNT(*) FROM DAMAGE_TYPE WHERE DAMAGE_TYPE = '" + FixQuotes(used) + "'"), 1L);
}

static const QString kMob = "SELECT * FROM MOBS INNER JOIN MOB_STATS ON MOBS.MOB_NAME = MOB_STATS.MOB_NAME WHERE "
                            "MOB_STATS.MOB_NAME = '%1'";

void TestEngineSample::newMobAcrossBothTables() {
    setClock([] { return QDateTime(QDate(2026, 11, 21), QTime(9, 0)); });
    db().beginTrans();
    Recordset rs;
    rs.open(kMob.arg("New MOB"), db(), Recordset::Dynamic);
    QVERIFY(rs.eof());
    rs.addNew();
    rs.setValue("PERSONAL_DB", true);
    rs.setValue("UPDATED", true);
    rs.setValue("LAST_UPDATED", Now());
    rs.setValue("MOB_STATS.MOB_NAME", "New MOB");
    rs.setValue("MOBS.MOB_NAME", "New MOB");
    rs.setValue("TYPE", "Organic");
    rs.setValue("FACTION", "Unknown");
    rs.setValue("BRAVERY", "Average");
    rs.setValue("COMBAT_LEVEL", "4");
    rs.update();
    rs.close();
    db().commitTrans();
    setClock({});
    QCOMPARE(first("SELECT LAST_UPDATED FROM MOBS WHERE MOB_NAME = 'New MOB'"), QStringLiteral("2026-11-21 09:00:00"));
    QCOMPARE(number("SELECT COMBAT_LEVEL FROM MOB_STATS WHERE MOB_NAME = 'New MOB'"), 4L);
    QCOMPARE(first("SELECT BRAVERY FROM MOB_STATS WHERE MOB_NAME = 'new mob'"), QStringLiteral("Average"));
    QCOMPARE(number("SELECT COUNT(*) FROM MOBS, MOB_STATS WHERE MOBS.MOB_NAME = MOB_STATS.MOB_NAME AND "
                    "MOBS.PERSONAL_DB = TRUE AND MOBS.MOB_NAME = 'New MOB'"),
             1L);
}

void TestEngineSample::ammunitionChangesLeaveTheLookupAlone() {
    const QString name = first("SELECT EQUIPMENT_NAME FROM AMO_STATS ORDER BY EQUIPMENT_NAME");
    const long lookups = number("SELECT COUNT(*) FROM AMO_TYPES");
    Recordset rs;
    rs.open("SELECT EQUIPMENTS.EQUIPMENT_NAME, EQUIPMENTS.TYPE, EQUIPMENTS.PRICE AS PURCHASE_PRICE, AMO_STATS.DAMAGE, "
            "AMO_TYPES.LAUNCH_TYPE, AMO_STATS.AMO_TYPE AS AMO_TYPE_AMO, AMO_STATS.STACK_SIZE, "
            "IIF(AMO_TYPES.LAUNCH_TYPE = 'Missile', AMO_STATS.RANGE, -1) AS AMMO_RANGE , AMO_STATS.EQUIPMENT_NAME AS "
            "STAT_NAME FROM EQUIPMENTS, AMO_STATS, AMO_TYPES WHERE EQUIPMENTS.EQUIPMENT_NAME = AMO_STATS.EQUIPMENT_NAME "
            "AND AMO_STATS.AMO_TYPE = AMO_TYPES.AMO_TYPE  AND EQUIPMENTS.EQUIPMENT_NAME = '" + FixQuotes(name) + "'",
            db(), Recordset::Dynamic);
    QCOMPARE(rs.recordCount(), 1L);
    QVERIFY(rs.baseColumnName(rs.fieldIndex("AMMO_RANGE")).isEmpty());
    rs.setValue("DAMAGE", 123);
    rs.setValue("PURCHASE_PRICE", "77");
    rs.setValue("STACK_SIZE", 5);
    rs.update();
    rs.close();
    QCOMPARE(number("SELECT DAMAGE FROM AMO_STATS WHERE EQUIPMENT_NAME = '" + FixQuotes(name) + "'"), 123L);
    QCOMPARE(number("SELECT PRICE FROM EQUIPMENTS WHERE EQUIPMENT_NAME = '" + FixQuotes(name) + "'"), 77L);
    QCOMPARE(number("SELECT COUNT(*) FROM AMO_TYPES"), lookups);
}

// Delete every row of the record's relation, then add the grid's rows, as the grid save does.
void TestEngineSample::gridSaveRewritesRelationRows() {
    const QString owner = first("SELECT EQUIPMENTS_EQUIPMENT FROM EQUIPMENTS_COMPONENTS ORDER BY EQUIPMENTS_EQUIPMENT");
    const long others = number("SELECT COUNT(*) FROM EQUIPMENTS_COMPONENTS WHERE EQUIPMENTS_EQUIPMENT <> '" +
                               FixQuotes(owner) + "'");
    db().beginTrans();
    Recordset rs;
    rs.open("SELECT COMPONENTS_COMPONENT, AMOUNT, EQUIPMENTS_EQUIPMENT FROM EQUIPMENTS_COMPONENTS WHERE "
            "EQUIPMENTS_EQUIPMENT = '" + FixQuotes(owner) + "' ORDER BY COMPONENTS_COMPONENT",
            db(), Recordset::Dynamic);
    QVERIFY(rs.recordCount() > 0);
    rs.moveFirst();
    while (!rs.eof()) {
        rs.deleteCurrent();
        rs.update();
        rs.moveNext();
    }
    const QStringList parts{"Part's One", "Part Two"};
    for (const QString& p : parts) {
        rs.addNew();
        rs.setValue("EQUIPMENTS_EQUIPMENT", owner);
        rs.setValue("COMPONENTS_COMPONENT", p);
        rs.setValue("AMOUNT", "2");
        rs.update();
    }
    rs.close();
    db().commitTrans();
    QCOMPARE(number("SELECT COUNT(*) FROM EQUIPMENTS_COMPONENTS WHERE EQUIPMENTS_EQUIPMENT = '" + FixQuotes(owner) +
                    "' AND AMOUNT = 2"),
             2L);
    QCOMPARE(number("SELECT COUNT(*) FROM EQUIPMENTS_COMPONENTS WHERE EQUIPMENTS_EQUIPMENT <> '" + FixQuotes(owner) +
                    "'"),
             others);
}

// A copy: every field of the old record into a new one, the name column (found by its base column)
// taking the new name.
void TestEngineSample::copyRecordByBaseColumns() {
    const QString old = first("SELECT COMPONENT_NAME FROM COMPONENTS WHERE PRICE > 0 ORDER BY COMPONENT_NAME");
    Recordset rs;
    rs.open("SELECT * FROM COMPONENTS WHERE COMPONENT_NAME = '" + FixQuotes(old) + "'", db(), Recordset::Dynamic);
    QList<QVariant> values;
    for (int i = 0; i < rs.fieldCount(); ++i)
        values << rs.value(i);
    rs.addNew();
    for (int i = 0; i < rs.fieldCount(); ++i) {
        if (rs.baseColumnName(i) == QLatin1String("COMPONENT_NAME"))
            rs.setValue(i, "Copy of " + old);
        else
            rs.setValue(i, values[i]);
    }
    rs.setValue("PERSONAL_DB", true);
    rs.update();
    rs.close();
    QCOMPARE(number("SELECT PRICE FROM COMPONENTS WHERE COMPONENT_NAME = '" + FixQuotes("Copy of " + old) + "'"),
             number("SELECT PRICE FROM COMPONENTS WHERE COMPONENT_NAME = '" + FixQuotes(old) + "'"));
}

void TestEngineSample::newItemThroughResultSet() {
    Recordset rs;
    rs.open("SELECT * FROM ITEMS WHERE ITEM_NAME = 'Gnome''s Hat'", db(), Recordset::Dynamic);
    rs.addNew();
    rs.setValue("PERSONAL_DB", true);
    rs.setValue("ITEM_NAME", "Gnome's Hat");
    rs.setValue("LVL", "3");
    rs.setValue("PRICE", "");
    rs.setValue("COMMENTS", "pointy");
    rs.setValue("PIC_ID", 12);
    rs.update();
    // A second item of the same name is refused and leaves nothing behind.
    rs.addNew();
    rs.setValue("ITEM_NAME", "GNOME'S HAT");
    QVERIFY_THROWS_EXCEPTION(VbError, rs.update());
    QCOMPARE(classifyError(db().errors().first()), DBErrorKind::Duplicate);
    rs.close();
    QCOMPARE(number("SELECT COUNT(*) FROM ITEMS WHERE ITEM_NAME = 'Gnome''s Hat' AND PRICE IS NULL AND PIC_ID = 12"), 1L);
}

QTEST_GUILESS_MAIN(TestEngineSample)
#include "tst_enginesample.moc"
