#include "data/database.h"
#include "data/recordset.h"
#include "enginedb.h"

#include <QTest>
#include <functional>
#include <sqlite3.h>

Q_DECLARE_METATYPE(FieldKind)

static const char* const kBeam = // the equipment editor's query, the statistics row's name as STAT_NAME
    "SELECT EQUIPMENTS.EQUIPMENT_NAME, EQUIPMENTS.TYPE, EQUIPMENTS.LVL, EQUIPMENTS.PRICE AS PURCHASE_PRICE, "
    "EQUIPMENTS.LAST_UPDATED, EQUIPMENTS.PERSONAL_DB, EQUIPMENTS.UPDATED, WEAPON_STATS.DAMAGE, WEAPON_STATS.DELAY, "
    "WEAPON_STATS.RANGE , WEAPON_STATS.EQUIPMENT_NAME AS STAT_NAME FROM EQUIPMENTS, WEAPON_STATS WHERE "
    "EQUIPMENTS.EQUIPMENT_NAME = WEAPON_STATS.EQUIPMENT_NAME  AND EQUIPMENTS.EQUIPMENT_NAME = '%1'";
static const char* const kMob =
    "SELECT * FROM MOBS INNER JOIN MOB_STATS ON MOBS.MOB_NAME = MOB_STATS.MOB_NAME "
    "WHERE MOB_STATS.MOB_NAME = '%1'";

class TestRecordset : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        m_dir = std::make_unique<QTemporaryDir>();
        m_cn.open(enginedb::connectionFor(enginedb::create(*m_dir)));
    }
    void cleanup() {
        m_cn.close();
        m_dir.reset();
    }
    void forwardOnlyReads() {
        Recordset rs;
        rs.open("SELECT COMPONENT_NAME FROM COMPONENTS ORDER BY COMPONENT_NAME", m_cn);
        QStringList names;
        for (; !rs.eof(); rs.moveNext())
            names << rs.value(0).toString();
        QCOMPARE(names, (QStringList{"Coil", "Lens"}));
        QCOMPARE(rs.recordCount(), -1L);
        QVERIFY_THROWS_EXCEPTION(VbError, rs.moveFirst());
        m_cn.clearErrors();
        expectError([&] { rs.value(0); }, 3021,
                    "Either BOF or EOF is True, or the current record has been deleted. "
                    "Requested operation requires a current record.");
        QVERIFY(m_cn.errors().isEmpty()); // not a database error: reported as a run-time error
        rs.open("SELECT * FROM ITEMS", m_cn);
        QVERIFY_THROWS_EXCEPTION(VbError, rs.setValue("LVL", 3));
        QVERIFY_THROWS_EXCEPTION(VbError, rs.addNew());
        rs.open("SELECT * FROM ITEMS WHERE ITEM_NAME = 'none'", m_cn, Recordset::Dynamic);
        QVERIFY(rs.eof() && rs.bof());
        QCOMPARE(rs.fieldCount(), 10);
        // A failed open leaves it closed, with the connection's error records filled.
        QVERIFY_THROWS_EXCEPTION(VbError, rs.open("SELECT NOPE FROM ITEMS", m_cn));
        QVERIFY(!rs.isOpen() && rs.eof());
        QCOMPARE(m_cn.errors().first().Number, hr::MissingValue);
        Database closed;
        QVERIFY_THROWS_EXCEPTION(VbError, rs.open("SELECT * FROM ITEMS", closed));
        QCOMPARE(closed.errors().first().Description, QStringLiteral("The database is not open."));
    }
    void fieldKindsAndSizes_data() {
        QTest::addColumn<QString>("field");
        QTest::addColumn<FieldKind>("kind");
        QTest::addColumn<int>("size");
        auto row = [](const char* tag, const char* field, FieldKind kind, int size) {
            QTest::newRow(tag) << QString(field) << kind << size;
        };
        row("varchar", "EQUIPMENT_NAME", FieldKind::Text, 100);
        row("memo", "COMMENTS", FieldKind::Memo, 536870910);
        row("integer", "LVL", FieldKind::Long, 4);
        row("smallint", "QUALITY", FieldKind::Integer16, 2);
        row("boolean", "CHECK", FieldKind::Boolean, 2);
        row("date", "LAST_UPDATED", FieldKind::Date, 8);
        row("double", "DELAY", FieldKind::Double, 8);
        row("single, all NULL", "MANEUVERABILITY", FieldKind::Single, 4);
        row("computed fraction", "DAMAGE_PER_SECOND", FieldKind::Double, 8);
        row("computed text", "LABEL", FieldKind::Text, 255);
    }
    void fieldKindsAndSizes() {
        QFETCH(QString, field);
        QFETCH(FieldKind, kind);
        QFETCH(int, size);
        for (auto cursor : {Recordset::ForwardOnly, Recordset::Dynamic}) {
            Recordset rs;
            rs.open(
                "SELECT EQUIPMENTS.*, WEAPON_STATS.DELAY, (WEAPON_STATS.DAMAGE/WEAPON_STATS.DELAY) "
                "AS DAMAGE_PER_SECOND, 'L' & EQUIPMENTS.LVL AS LABEL, AMO_STATS.MANEUVERABILITY FROM "
                "EQUIPMENTS INNER JOIN WEAPON_STATS ON EQUIPMENTS.EQUIPMENT_NAME = WEAPON_STATS.EQUIPMENT_NAME LEFT JOIN AMO_STATS "
                "ON AMO_STATS.EQUIPMENT_NAME = EQUIPMENTS.EQUIPMENT_NAME ORDER BY EQUIPMENTS.LVL",
                m_cn, cursor);
            const int i = rs.fieldIndex(field);
            QCOMPARE(rs.fieldKind(i), kind);
            QCOMPARE(rs.definedSize(i), size);
        }
    }
    void fieldNamesAndValues() {
        Recordset rs;
        rs.open(
            "SELECT EQUIPMENTS.PRICE AS PURCHASE_PRICE, IIF(LVL > 1, ' x' & LVL), COUNT(*), CHECK, LAST_UPDATED, COMMENTS "
            "FROM EQUIPMENTS WHERE EQUIPMENT_NAME = 'Hunter''s Lance'",
            m_cn);
        QCOMPARE(rs.fieldName(0), QStringLiteral("PURCHASE_PRICE"));
        QCOMPARE(rs.baseColumnName(0), QStringLiteral("PRICE"));
        QCOMPARE(rs.baseTableName(0), QStringLiteral("EQUIPMENTS"));
        QCOMPARE(rs.fieldName(1), QStringLiteral("Expr1001")); // not the translated text
        QCOMPARE(rs.baseColumnName(1), QString());
        QCOMPARE(rs.fieldIndex("purchase_price"), 0); // without regard to case, or by base column
        QCOMPARE(rs.fieldIndex("EQUIPMENTS.PRICE"), 0);
        QCOMPARE(rs.value(0), QVariant(1200));
        QCOMPARE(rs.value("CHECK"), QVariant(true)); // a yes/no field reads as a Boolean
        QCOMPARE(rs.value(4).toString(), QStringLiteral("2026-01-02 03:04:05"));
        QVERIFY(rs.isNull(5) && rs.value(5).isNull() && rs.textValue(5).isNull() && rs.textUtf8(5).isEmpty());
        QCOMPARE(rs.fieldIndex("NOPE"), -1);
        expectError([&] { rs.value("NOPE"); }, 3265,
                    "Item cannot be found in the collection corresponding to the requested name or ordinal.");
        rs.open("SELECT (DAMAGE/DELAY) AS DPS FROM WEAPON_STATS WHERE EQUIPMENT_NAME = 'Ember Beam'", m_cn);
        QCOMPARE(rs.fieldKind(0), FieldKind::Double); // a fraction even when its first value is NULL
        rs.open(QString(kMob).arg("Void Eel"), m_cn); // SELECT * over a join qualifies shared names
        QCOMPARE(rs.fieldName(0), QStringLiteral("MOBS.MOB_NAME"));
        QCOMPARE(rs.fieldIndex("MOB_NAME"), 0);
        QCOMPARE(rs.value("BRAVERY").toString(), QStringLiteral("High"));
    }
    // The grid save: delete every row, update, move next; then add the grid's rows.
    void gridSaveRewritesRelationRows() {
        Recordset rs;
        rs.open("SELECT COMPONENTS_COMPONENT, AMOUNT, EQUIPMENTS_EQUIPMENT FROM EQUIPMENTS_COMPONENTS WHERE "
                "EQUIPMENTS_EQUIPMENT = 'Hunter''s Lance' ORDER BY COMPONENTS_COMPONENT",
                m_cn, Recordset::Dynamic);
        QCOMPARE(rs.recordCount(), 2L);
        for (rs.moveFirst(); !rs.eof(); rs.moveNext()) {
            rs.deleteCurrent();
            rs.update();
        }
        QCOMPARE(count("SELECT COUNT(*) FROM EQUIPMENTS_COMPONENTS"), 0L);
        for (const char* part : {"Gear", "Lens"}) {
            rs.addNew();
            rs.setValue("EQUIPMENTS_EQUIPMENT", "Hunter's Lance");
            rs.setValue("COMPONENTS_COMPONENT", part);
            if (part == QLatin1String("Gear"))
                rs.setValue("AMOUNT", "5"); // Lens: left empty, NULL
            rs.update();
        }
        rs.open(
            "SELECT COMPONENTS_COMPONENT, AMOUNT FROM EQUIPMENTS_COMPONENTS ORDER BY COMPONENTS_COMPONENT",
            m_cn);
        QCOMPARE(rs.storageClass(1), SQLITE_INTEGER); // "5" was stored as a number
        QCOMPARE(rs.intValue(1), 5);
        rs.moveNext();
        QCOMPARE(rs.value(0).toString(), QStringLiteral("Lens"));
        QVERIFY(rs.isNull(1));
    }
    // A new beam whose statistics row's name is taken: the failed write leaves nothing of that row
    // behind, keeps what the transaction wrote before it, and can be corrected; the row just added can
    // be changed again.
    void failedWriteUndoesOnlyItself() {
        m_cn.beginTrans();
        m_cn.execute("UPDATE EQUIPMENTS SET PRICE = 1 WHERE EQUIPMENT_NAME = 'Ember Beam'");
        Recordset rs;
        rs.open(QString(kBeam).arg("Nova''s Edge"), m_cn, Recordset::Dynamic);
        QVERIFY(rs.eof());
        rs.addNew();
        rs.setValue("EQUIPMENT_NAME", "Nova's Edge");
        rs.setValue("TYPE", "Beam");
        rs.setValue("STAT_NAME", "Ember Beam");
        rs.setValue("DAMAGE", "12");
        rs.setValue("LAST_UPDATED", QDateTime(QDate(2026, 11, 21), QTime(20, 1, 2)));
        QVERIFY_THROWS_EXCEPTION(VbError, rs.update());
        QCOMPARE(m_cn.errors().first().NativeError, long(SQLITE_CONSTRAINT_UNIQUE));
        QVERIFY(m_cn.inTransaction());
        QCOMPARE(count("SELECT COUNT(*) FROM EQUIPMENTS WHERE EQUIPMENT_NAME = 'Nova''s Edge'"), 0L);
        QCOMPARE(count("SELECT PRICE FROM EQUIPMENTS WHERE EQUIPMENT_NAME = 'Ember Beam'"), 1L);
        rs.setValue("STAT_NAME", "Nova's Edge");
        rs.update();
        rs.setValue("PURCHASE_PRICE", 450);
        rs.setValue("DELAY", 1.5);
        rs.update();
        rs.close();
        m_cn.commitTrans();
        rs.open(QString(kBeam).arg("nova''s edge"), m_cn);
        QCOMPARE(rs.value("PURCHASE_PRICE").toInt(), 450);
        QCOMPARE(rs.value("DAMAGE").toInt(), 12);
        QCOMPARE(rs.value("DELAY").toDouble(), 1.5);
        QCOMPARE(rs.value("LAST_UPDATED").toString(), QStringLiteral("2026-11-21 20:01:02"));
        QCOMPARE(count("SELECT PRICE FROM EQUIPMENTS WHERE EQUIPMENT_NAME = 'Ember Beam'"), 1L);
    }
    void mobAcrossTwoTables() {
        Recordset rs;
        rs.open(QString(kMob).arg("New MOB"), m_cn, Recordset::Dynamic);
        rs.addNew();
        rs.setValue("PERSONAL_DB", true);
        rs.setValue("MOB_STATS.MOB_NAME", "New MOB");
        rs.setValue("MOBS.MOB_NAME", "New MOB");
        rs.setValue("COMBAT_LEVEL", 12);
        rs.update();
        rs.close();
        QCOMPARE(
            count(
                "SELECT COMBAT_LEVEL FROM MOBS, MOB_STATS WHERE MOBS.MOB_NAME = 'New MOB' AND PERSONAL_DB = TRUE "
                "AND MOB_STATS.MOB_NAME = 'new mob'"),
            12L);
        rs.open(QString(kMob).arg("Void Eel"), m_cn, Recordset::Dynamic);
        rs.deleteCurrent();
        QVERIFY_THROWS_EXCEPTION(VbError, rs.value(0)); // the deleted row is gone
        QCOMPARE(count("SELECT (SELECT COUNT(*) FROM MOBS) + (SELECT COUNT(*) FROM MOB_STATS)"),
                 2L); // the new MOB
    }
    // Values are converted to the field's kind when set, or refused at once naming the field; NULL and
    // an empty text stay apart in a text field.
    void valuesConvertedOrRefused() {
        Recordset rs;
        rs.open(QString(kBeam).arg("Ember Beam"), m_cn, Recordset::Dynamic);
        for (const auto& [field, value] :
             {std::pair{"LVL", "ten"}, {"DELAY", "1.2.3"}, {"PERSONAL_DB", "maybe"}}) {
            QVERIFY_THROWS_EXCEPTION(VbError, rs.setValue(field, value));
            QVERIFY(m_cn.errors().first().Description.contains(field));
        }
        rs.setValue("LVL", "2.5"); // whole-number column: rounds half to even
        rs.setValue("PERSONAL_DB", "True");
        rs.setValue("UPDATED", -1); // Jet's True
        rs.setValue("DELAY", "");   // empty text in a number column is NULL
        rs.setValue("TYPE", QVariant());
        rs.update();
        QCOMPARE(rs.value("LVL"), QVariant(2));
        QVERIFY(rs.value("DELAY").isNull() && rs.value("TYPE").isNull());
        QCOMPARE(
            count("SELECT COUNT(*) FROM EQUIPMENTS WHERE UPDATED = TRUE AND PERSONAL_DB = 1 AND LVL = 2"),
            1L);
        rs.setValue("PERSONAL_DB", "no");
        rs.setValue("UPDATED", "Yes");
        rs.setValue("TYPE", QString(""));
        rs.update();
        QVERIFY(!rs.value("TYPE").isNull());
        rs.close();
        QCOMPARE(
            count(
                "SELECT COUNT(*) FROM EQUIPMENTS WHERE UPDATED = TRUE AND PERSONAL_DB = FALSE AND TYPE = ''"),
            1L);
        rs.open("SELECT ITEM_NAME, LVL * 2 AS TWICE FROM ITEMS", m_cn, Recordset::Dynamic);
        QVERIFY_THROWS_EXCEPTION(VbError, rs.setValue("TWICE", 3)); // a computed field
        rs.open("SELECT * FROM ITEMS WHERE ITEM_NAME = 'x'", m_cn, Recordset::Dynamic);
        rs.addNew(); // nothing set is no reason to drop the row silently: the table's rules decide
        QVERIFY_THROWS_EXCEPTION(VbError, rs.update());
        QCOMPARE(m_cn.errors().first().NativeError, long(SQLITE_CONSTRAINT_NOTNULL));
    }
    // A whole-number column rounds a fraction to the nearest whole number, halves to the even one, from
    // numbers and from text alike.
    void wholeNumbersRoundHalfToEven_data() {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<int>("stored");
        for (const auto& [v, whole] : {std::pair{2.5, 2}, {3.5, 4}, {-2.5, -2}, {2.49, 2}, {-2.51, -3}}) {
            QTest::newRow(qPrintable(QString::number(v))) << QVariant(v) << whole;
            QTest::newRow(qPrintable('"' + QString::number(v) + '"'))
                << QVariant(QString::number(v)) << whole;
        }
        QTest::newRow("yes") << QVariant(true) << 1;
    }
    void wholeNumbersRoundHalfToEven() {
        QFETCH(QVariant, value);
        QFETCH(int, stored);
        Recordset rs;
        rs.open("SELECT ITEM_NAME, LVL FROM ITEMS WHERE ITEM_NAME = 'Crystal'", m_cn, Recordset::Dynamic);
        rs.setValue("LVL", value);
        rs.update();
        QCOMPARE(rs.value("LVL"), QVariant(stored));
        rs.close();
        QCOMPARE(count("SELECT LVL FROM ITEMS WHERE ITEM_NAME = 'Crystal'"), long(stored));
    }
    // A changed row is written when the cursor leaves it, by moving on or back to the first row.
    void movingOffAChangedRowSavesIt() {
        Recordset rs;
        rs.open("SELECT RAW_MATERIAL_NAME, LVL FROM RAW_MATERIALS ORDER BY RAW_MATERIAL_NAME", m_cn,
                Recordset::Dynamic);
        rs.setValue("LVL", 8); // Metal
        rs.moveNext();
        rs.setValue("LVL", 9); // Ore
        rs.moveFirst();
        rs.addNew();
        rs.setValue("RAW_MATERIAL_NAME", "Dust");
        rs.moveFirst(); // the new row too
        QCOMPARE(count("SELECT SUM(LVL) FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME IN ('Metal', 'Ore')"),
                 17L);
        QCOMPARE(count("SELECT COUNT(*) FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME = 'Dust'"), 1L);
    }
    // Deleting a row of a join removes it from every table or from none.
    void deleteAcrossTablesIsAllOrNothing() {
        QCOMPARE(
            sqlite3_exec(
                m_cn.handle(),
                "CREATE TEMP TRIGGER KEEP_MOBS BEFORE DELETE ON MOBS BEGIN SELECT RAISE(ABORT, 'kept'); END",
                nullptr, nullptr, nullptr),
            SQLITE_OK);
        Recordset rs;
        rs.open(QString(kMob).arg("Void Eel"), m_cn, Recordset::Dynamic);
        QVERIFY_THROWS_EXCEPTION(VbError, rs.deleteCurrent());
        QCOMPARE(m_cn.errors().first().Description, QStringLiteral("kept"));
        QCOMPARE(count("SELECT (SELECT COUNT(*) FROM MOBS) + (SELECT COUNT(*) FROM MOB_STATS)"), 2L);
        QCOMPARE(rs.value("BRAVERY").toString(), QStringLiteral("High")); // still the current row
    }

private:
    long count(const QString& sql) { return enginedb::count(sql, m_cn); }
    static void expectError(const std::function<void()>& f, long number, const QString& text) {
        try {
            f();
            QFAIL("no error");
        } catch (const VbError& e) {
            QCOMPARE(e.number, number);
            QCOMPARE(e.description, text);
        }
    }
    std::unique_ptr<QTemporaryDir> m_dir;
    Database m_cn;
};

QTEST_GUILESS_MAIN(TestRecordset)
#include "tst_recordset.moc"
