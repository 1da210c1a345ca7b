#include "data/database.h"
#include "data/recordset.h"
#include "enginedb.h"

#include <QTest>
#include <sqlite3.h>

Q_DECLARE_METATYPE(FieldKind)

class TestRecordset : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void forwardOnlyWalksToTheEnd();
    void emptyResultIsBofAndEof();
    void readingAtTheEndIsAnError();
    void forwardOnlyCannotGoBack();
    void fieldKindsAndSizes_data();
    void fieldKindsAndSizes();
    void computedKindWhenFirstValueIsNull();
    void baseColumnsAndAliases();
    void typedReadsAndNulls();
    void joinedNamesAreQualified();
    void unknownFieldName();
    void failedOpenLeavesItClosed();
    void dynamicChangesOneTable();
    void dynamicRewritesRelationRows();
    void dynamicAddsAndChangesEquipmentWithStats();
    void dynamicAddsAndChangesMobAcrossTwoTables();
    void dynamicDeletesJoinedRecord();
    void failedUpdateWritesNothing();
    void wrongKindOfValueIsRefused_data();
    void wrongKindOfValueIsRefused();
    void valuesAreConvertedToTheColumnKind();
    void computedFieldCannotBeSet();
    void newRowWithNoValuesIsStillWritten();
    void forwardOnlyIsReadOnly();

private:
    long count(const QString& sql);
    QTemporaryDir* m_dir = nullptr;
    Database m_cn;
};

void TestRecordset::init() {
    m_dir = new QTemporaryDir;
    const QString path = enginedb::create(*m_dir);
    QVERIFY(!path.isEmpty());
    m_cn.open(enginedb::connectionFor(path));
}

void TestRecordset::cleanup() {
    m_cn.close();
    delete m_dir;
}

long TestRecordset::count(const QString& sql) {
    Recordset rs;
    rs.open(sql, m_cn);
    return long(rs.intValue(0));
}

void TestRecordset::forwardOnlyWalksToTheEnd() {
    Recordset rs;
    rs.open("SELECT COMPONENT_NAME FROM COMPONENTS ORDER BY COMPONENT_NAME", m_cn);
    QVERIFY(rs.isOpen());
    QVERIFY(!rs.bof());
    QStringList names;
    while (!rs.eof()) {
        names << rs.value(0).toString();
        rs.moveNext();
    }
    QCOMPARE(names, (QStringList{"Coil", "Lens"}));
    QCOMPARE(rs.recordCount(), -1L);
    rs.close();
    QVERIFY(!rs.isOpen());
    QVERIFY(rs.eof());
}

void TestRecordset::emptyResultIsBofAndEof() {
    for (auto cursor : {Recordset::ForwardOnly, Recordset::Dynamic}) {
        Recordset rs;
        rs.open("SELECT * FROM ITEMS WHERE ITEM_NAME = 'none'", m_cn, cursor);
        QVERIFY(rs.eof());
        QVERIFY(rs.bof());
        QCOMPARE(rs.fieldCount(), 9);
    }
}

void TestRecordset::readingAtTheEndIsAnError() {
    Recordset rs;
    rs.open("SELECT * FROM ITEMS WHERE ITEM_NAME = 'none'", m_cn);
    try {
        rs.value("ITEM_NAME");
        QFAIL("no error");
    } catch (const VbError& e) {
        QCOMPARE(e.number, 3021L);
        QCOMPARE(e.description, QStringLiteral("Either BOF or EOF is True, or the current record has been deleted. "
                                               "Requested operation requires a current record."));
    }
    QVERIFY(m_cn.errors().isEmpty()); // not a database error: the reporter shows it as a run-time error
    QVERIFY_THROWS_EXCEPTION(VbError, rs.moveNext());
}

void TestRecordset::forwardOnlyCannotGoBack() {
    Recordset rs;
    rs.open("SELECT COMPONENT_NAME FROM COMPONENTS ORDER BY COMPONENT_NAME", m_cn);
    rs.moveFirst(); // still on the first row: allowed
    rs.moveNext();
    QVERIFY_THROWS_EXCEPTION(VbError, rs.moveFirst());
}

void TestRecordset::fieldKindsAndSizes_data() {
    QTest::addColumn<QString>("field");
    QTest::addColumn<FieldKind>("kind");
    QTest::addColumn<int>("size");
    QTest::newRow("varchar") << "EQUIPMENT_NAME" << FieldKind::Text << 100;
    QTest::newRow("varchar 50") << "TYPE" << FieldKind::Text << 50;
    QTest::newRow("memo") << "COMMENTS" << FieldKind::Memo << 536870910;
    QTest::newRow("integer") << "LVL" << FieldKind::Long << 4;
    QTest::newRow("smallint") << "QUALITY" << FieldKind::Integer16 << 2;
    QTest::newRow("boolean") << "CHECK" << FieldKind::Boolean << 2;
    QTest::newRow("date") << "LAST_UPDATED" << FieldKind::Date << 8;
    QTest::newRow("double") << "DELAY" << FieldKind::Double << 8;
    QTest::newRow("single") << "ENERGY_USE" << FieldKind::Single << 4;
    QTest::newRow("computed fraction") << "DAMAGE_PER_SECOND" << FieldKind::Double << 8;
    QTest::newRow("computed whole") << "TWICE" << FieldKind::Long << 4;
    QTest::newRow("computed text") << "LABEL" << FieldKind::Text << 255;
}

void TestRecordset::fieldKindsAndSizes() {
    QFETCH(QString, field);
    QFETCH(FieldKind, kind);
    QFETCH(int, size);
    for (auto cursor : {Recordset::ForwardOnly, Recordset::Dynamic}) {
        Recordset rs;
        rs.open("SELECT EQUIPMENTS.*, WEAPON_STATS.DELAY, WEAPON_STATS.ENERGY_USE, (WEAPON_STATS.DAMAGE/WEAPON_STATS.DELAY) "
                "AS DAMAGE_PER_SECOND, EQUIPMENTS.LVL * 2 AS TWICE, 'L' & EQUIPMENTS.LVL AS LABEL FROM EQUIPMENTS, "
                "WEAPON_STATS WHERE EQUIPMENTS.EQUIPMENT_NAME = WEAPON_STATS.EQUIPMENT_NAME ORDER BY EQUIPMENTS.LVL",
                m_cn, cursor);
        const int i = rs.fieldIndex(field);
        QVERIFY(i >= 0);
        QCOMPARE(rs.fieldKind(i), kind);
        QCOMPARE(rs.definedSize(i), size);
    }
}

// A zero delay makes the first damage per second NULL: the column is still a fraction.
void TestRecordset::computedKindWhenFirstValueIsNull() {
    for (const char* where : {"EQUIPMENT_NAME = 'Ember Beam'", "EQUIPMENT_NAME = 'none'"}) {
        Recordset rs;
        rs.open(QStringLiteral("SELECT EQUIPMENT_NAME, (DAMAGE/DELAY) AS DAMAGE_PER_SECOND, IIF(ROUNDS > 1, ' x' & ROUNDS) "
                               "AS R, LVL_LESS FROM (SELECT *, NULL AS LVL_LESS FROM WEAPON_STATS) WHERE ") + where,
                m_cn);
        QCOMPARE(rs.fieldKind(1), FieldKind::Double);
        QCOMPARE(rs.fieldKind(2), FieldKind::Text);
        QCOMPARE(rs.definedSize(2), 255);
        QCOMPARE(rs.fieldKind(3), FieldKind::Empty); // nothing to tell
    }
}

void TestRecordset::baseColumnsAndAliases() {
    Recordset rs;
    rs.open("SELECT EQUIPMENTS.PRICE AS PURCHASE_PRICE, WEAPON_STATS.EQUIPMENT_NAME AS STAT_NAME, "
            "EQUIPMENTS.LVL * 3 AS L3 FROM EQUIPMENTS, WEAPON_STATS WHERE EQUIPMENTS.EQUIPMENT_NAME = "
            "WEAPON_STATS.EQUIPMENT_NAME",
            m_cn);
    QCOMPARE(rs.fieldName(0), QStringLiteral("PURCHASE_PRICE"));
    QCOMPARE(rs.baseColumnName(0), QStringLiteral("PRICE"));
    QCOMPARE(rs.baseTableName(0), QStringLiteral("EQUIPMENTS"));
    QCOMPARE(rs.fieldName(1), QStringLiteral("STAT_NAME"));
    QCOMPARE(rs.baseColumnName(1), QStringLiteral("EQUIPMENT_NAME"));
    QCOMPARE(rs.baseTableName(1), QStringLiteral("WEAPON_STATS"));
    QCOMPARE(rs.baseColumnName(2), QString());
    rs.close();
    rs.open("SELECT ITEM_NAME, IIF(LVL > 1, ' x' & LVL), COUNT(*) FROM ITEMS", m_cn);
    QCOMPARE(rs.fieldName(0), QStringLiteral("ITEM_NAME"));
    QCOMPARE(rs.fieldName(1), QStringLiteral("Expr1001")); // not the translated text
    QCOMPARE(rs.fieldName(2), QStringLiteral("Expr1002"));
    rs.close();
    rs.open("SELECT EQUIPMENTS.PRICE AS PURCHASE_PRICE, WEAPON_STATS.EQUIPMENT_NAME AS STAT_NAME, "
            "EQUIPMENTS.LVL * 3 AS L3 FROM EQUIPMENTS, WEAPON_STATS WHERE EQUIPMENTS.EQUIPMENT_NAME = "
            "WEAPON_STATS.EQUIPMENT_NAME",
            m_cn);
    QCOMPARE(rs.fieldIndex("purchase_price"), 0); // names are found without regard to case
    QCOMPARE(rs.fieldIndex("EQUIPMENTS.PRICE"), 0);
    QCOMPARE(rs.fieldIndex("WEAPON_STATS.EQUIPMENT_NAME"), 1);
}

void TestRecordset::typedReadsAndNulls() {
    Recordset rs;
    rs.open("SELECT EQUIPMENT_NAME, LVL, CHECK, LAST_UPDATED, COMMENTS, PRICE FROM EQUIPMENTS WHERE "
            "EQUIPMENT_NAME = 'Hunter''s Lance'",
            m_cn);
    QCOMPARE(rs.storageClass(0), SQLITE_TEXT);
    QCOMPARE(rs.textValue(0), QStringLiteral("Hunter's Lance"));
    QCOMPARE(rs.storageClass(1), SQLITE_INTEGER);
    QCOMPARE(rs.intValue(1), 3);
    QCOMPARE(rs.doubleValue(1), 3.0);
    QCOMPARE(rs.value("CHECK"), QVariant(true)); // a yes/no field reads as a Boolean
    QCOMPARE(rs.value(3).toString(), QStringLiteral("2026-01-02 03:04:05"));
    QVERIFY(rs.isNull(4));
    QCOMPARE(rs.storageClass(4), SQLITE_NULL);
    QVERIFY(rs.value(4).isNull());
    QCOMPARE(rs.textValue(4), QString());
    QVERIFY(rs.textUtf8(4).isEmpty());
    QCOMPARE(rs.textUtf8(0), QByteArrayView("Hunter's Lance"));
    QCOMPARE(rs.textUtf8(1), QByteArrayView("3"));
    QCOMPARE(rs.value(5), QVariant(1200));
}

void TestRecordset::joinedNamesAreQualified() {
    for (auto cursor : {Recordset::ForwardOnly, Recordset::Dynamic}) {
        Recordset rs;
        rs.open("SELECT * FROM MOBS INNER JOIN MOB_STATS ON MOBS.MOB_NAME = MOB_STATS.MOB_NAME WHERE "
                "MOB_STATS.MOB_NAME = 'Void Eel'",
                m_cn, cursor);
        QCOMPARE(rs.fieldName(0), QStringLiteral("MOBS.MOB_NAME"));
        const int statsName = rs.fieldIndex("MOB_STATS.MOB_NAME");
        QVERIFY(statsName > 0);
        QCOMPARE(rs.fieldName(statsName), QStringLiteral("MOB_STATS.MOB_NAME"));
        QCOMPARE(rs.fieldIndex("MOB_NAME"), 0); // the plain name finds the first
        QCOMPARE(rs.value("MOB_STATS.MOB_NAME").toString(), QStringLiteral("Void Eel"));
        QCOMPARE(rs.value("COMBAT_LEVEL").toInt(), 7);
        QCOMPARE(rs.value("BRAVERY").toString(), QStringLiteral("High"));
        QCOMPARE(rs.fieldName(rs.fieldIndex("FACTION")), QStringLiteral("FACTION"));
    }
}

void TestRecordset::unknownFieldName() {
    Recordset rs;
    rs.open("SELECT * FROM ITEMS", m_cn);
    QCOMPARE(rs.fieldIndex("NOPE"), -1);
    try {
        rs.value("NOPE");
        QFAIL("no error");
    } catch (const VbError& e) {
        QCOMPARE(e.number, 3265L);
        QCOMPARE(e.description, QStringLiteral("Item cannot be found in the collection corresponding to the "
                                               "requested name or ordinal."));
    }
    QVERIFY_THROWS_EXCEPTION(VbError, rs.value(99));
}

void TestRecordset::failedOpenLeavesItClosed() {
    Recordset rs;
    try {
        rs.open("SELECT NOPE FROM ITEMS", m_cn);
        QFAIL("no error");
    } catch (const VbError& e) {
        QCOMPARE(e.number, hr::MissingValue);
    }
    QVERIFY(!rs.isOpen());
    QVERIFY(rs.eof());
    QCOMPARE(m_cn.errors().size(), 1);
    Database closed;
    QVERIFY_THROWS_EXCEPTION(VbError, rs.open("SELECT * FROM ITEMS", closed));
    QVERIFY(!rs.isOpen());
    QCOMPARE(closed.errors().first().Description, QStringLiteral("The database is not open."));
}

void TestRecordset::dynamicChangesOneTable() {
    Recordset rs;
    rs.open("SELECT * FROM ITEMS WHERE ITEM_NAME = 'Crystal'", m_cn, Recordset::Dynamic);
    QCOMPARE(rs.recordCount(), 1L);
    rs.setValue("LVL", 9);
    rs.setValue("COMMENTS", "shiny");
    QCOMPARE(rs.value("LVL").toInt(), 9); // the changed value reads back before the update
    rs.update();
    rs.close();
    QCOMPARE(count("SELECT LVL FROM ITEMS WHERE ITEM_NAME = 'Crystal'"), 9L);
    Recordset check;
    check.open("SELECT COMMENTS FROM ITEMS WHERE ITEM_NAME = 'Crystal'", m_cn);
    QCOMPARE(check.value(0).toString(), QStringLiteral("shiny"));
}

// The grid save: delete every row, update, move next; then add the new rows.
void TestRecordset::dynamicRewritesRelationRows() {
    Recordset rs;
    rs.open("SELECT COMPONENTS_COMPONENT, AMOUNT, EQUIPMENTS_EQUIPMENT FROM EQUIPMENTS_COMPONENTS WHERE "
            "EQUIPMENTS_EQUIPMENT = 'Hunter''s Lance' ORDER BY COMPONENTS_COMPONENT",
            m_cn, Recordset::Dynamic);
    QCOMPARE(rs.recordCount(), 2L);
    rs.moveFirst();
    while (!rs.eof()) {
        rs.deleteCurrent();
        rs.update();
        rs.moveNext();
    }
    QCOMPARE(count("SELECT COUNT(*) FROM EQUIPMENTS_COMPONENTS"), 0L);
    rs.addNew();
    rs.setValue("EQUIPMENTS_EQUIPMENT", "Hunter's Lance");
    rs.setValue("COMPONENTS_COMPONENT", "Gear");
    rs.setValue("AMOUNT", "5");
    rs.update();
    rs.addNew();
    rs.setValue("EQUIPMENTS_EQUIPMENT", "Hunter's Lance");
    rs.setValue("COMPONENTS_COMPONENT", "Lens"); // AMOUNT left empty: NULL
    rs.update();
    rs.close();
    Recordset back;
    back.open("SELECT COMPONENTS_COMPONENT, AMOUNT FROM EQUIPMENTS_COMPONENTS ORDER BY COMPONENTS_COMPONENT", m_cn);
    QCOMPARE(back.value(0).toString(), QStringLiteral("Gear"));
    QCOMPARE(back.storageClass(1), SQLITE_INTEGER); // "5" was stored as a number
    QCOMPARE(back.intValue(1), 5);
    back.moveNext();
    QCOMPARE(back.value(0).toString(), QStringLiteral("Lens"));
    QVERIFY(back.isNull(1));
}

// The equipment editor: GetSQL's query for a beam with the statistics table's name as STAT_NAME.
static const char* const kBeamQuery =
    "SELECT EQUIPMENTS.EQUIPMENT_NAME, EQUIPMENTS.TYPE, EQUIPMENTS.LVL, EQUIPMENTS.PRICE AS PURCHASE_PRICE, "
    "EQUIPMENTS.LAST_UPDATED, EQUIPMENTS.PERSONAL_DB, EQUIPMENTS.UPDATED, WEAPON_STATS.DAMAGE, WEAPON_STATS.DELAY, "
    "WEAPON_STATS.RANGE , WEAPON_STATS.EQUIPMENT_NAME AS STAT_NAME FROM EQUIPMENTS, WEAPON_STATS WHERE "
    "EQUIPMENTS.EQUIPMENT_NAME = WEAPON_STATS.EQUIPMENT_NAME  AND EQUIPMENTS.EQUIPMENT_NAME = '%1'";

void TestRecordset::dynamicAddsAndChangesEquipmentWithStats() {
    Recordset rs;
    rs.open(QString(kBeamQuery).arg("Nova''s Edge"), m_cn, Recordset::Dynamic);
    QVERIFY(rs.eof());
    rs.addNew();
    rs.setValue("TYPE", "Beam");
    rs.setValue("PERSONAL_DB", true);
    rs.setValue("STAT_NAME", "Nova's Edge");
    rs.setValue("EQUIPMENT_NAME", "Nova's Edge");
    rs.setValue("DAMAGE", "12");
    rs.setValue("RANGE", 700);
    rs.setValue("UPDATED", true);
    rs.setValue("LAST_UPDATED", QDateTime(QDate(2026, 11, 21), QTime(20, 1, 2)));
    rs.update();
    QVERIFY(!rs.eof());
    rs.setValue("PURCHASE_PRICE", 450); // change the row just added: by its rowids
    rs.setValue("DELAY", 1.5);
    rs.update();
    rs.close();

    Recordset back;
    back.open(QString(kBeamQuery).arg("nova''s edge"), m_cn);
    QVERIFY(!back.eof());
    QCOMPARE(back.value("STAT_NAME").toString(), QStringLiteral("Nova's Edge"));
    QCOMPARE(back.value("PURCHASE_PRICE").toInt(), 450);
    QCOMPARE(back.value("DAMAGE").toInt(), 12);
    QCOMPARE(back.value("DELAY").toDouble(), 1.5);
    QCOMPARE(back.value("RANGE").toInt(), 700);
    QCOMPARE(back.value("PERSONAL_DB"), QVariant(true));
    QCOMPARE(back.value("LAST_UPDATED").toString(), QStringLiteral("2026-11-21 20:01:02"));
    QCOMPARE(count("SELECT COUNT(*) FROM WEAPON_STATS"), 3L);
}

static const char* const kMobQuery = "SELECT * FROM MOBS INNER JOIN MOB_STATS ON MOBS.MOB_NAME = MOB_STATS.MOB_NAME "
                                     "WHERE MOB_STATS.MOB_NAME = '%1'";

void TestRecordset::dynamicAddsAndChangesMobAcrossTwoTables() {
    Recordset rs;
    rs.open(QString(kMobQuery).arg("New MOB"), m_cn, Recordset::Dynamic);
    rs.addNew();
    rs.setValue("PERSONAL_DB", true);
    rs.setValue("MOB_STATS.MOB_NAME", "New MOB");
    rs.setValue("MOBS.MOB_NAME", "New MOB");
    rs.setValue("COMBAT_LEVEL", 12);
    rs.setValue("FACTION", "Unknown");
    rs.update();
    rs.close();
    QCOMPARE(count("SELECT COUNT(*) FROM MOBS WHERE MOB_NAME = 'New MOB' AND PERSONAL_DB = TRUE"), 1L);
    QCOMPARE(count("SELECT COMBAT_LEVEL FROM MOB_STATS WHERE MOB_NAME = 'New MOB'"), 12L);

    rs.open(QString(kMobQuery).arg("Void Eel"), m_cn, Recordset::Dynamic);
    QCOMPARE(rs.value("BOSS"), QVariant(true));
    rs.setValue("COMMENTS", "changed");
    rs.setValue("HULL", 250);
    rs.update();
    QCOMPARE(rs.value("HULL").toInt(), 250);
    rs.close();
    QCOMPARE(count("SELECT HULL FROM MOB_STATS WHERE MOB_NAME = 'Void Eel'"), 250L);
    QCOMPARE(count("SELECT COUNT(*) FROM MOBS WHERE COMMENTS = 'changed'"), 1L);
    QCOMPARE(count("SELECT COUNT(*) FROM MOB_STATS"), 2L);
}

void TestRecordset::dynamicDeletesJoinedRecord() {
    Recordset rs;
    rs.open(QString(kMobQuery).arg("Void Eel"), m_cn, Recordset::Dynamic);
    rs.deleteCurrent();
    QVERIFY_THROWS_EXCEPTION(VbError, rs.value(0)); // the deleted row is gone
    rs.moveNext();
    QVERIFY(rs.eof());
    rs.close();
    QCOMPARE(count("SELECT COUNT(*) FROM MOBS"), 0L);
    QCOMPARE(count("SELECT COUNT(*) FROM MOB_STATS"), 0L);
}

// A new beam whose statistics row fails (duplicate STAT_NAME) leaves no EQUIPMENTS row behind.
void TestRecordset::failedUpdateWritesNothing() {
    m_cn.beginTrans();
    Recordset rs;
    rs.open(QString(kBeamQuery).arg("Twin"), m_cn, Recordset::Dynamic);
    rs.addNew();
    rs.setValue("EQUIPMENT_NAME", "Twin");
    rs.setValue("TYPE", "Beam");
    rs.setValue("STAT_NAME", "Ember Beam"); // already has a statistics row
    try {
        rs.update();
        QFAIL("no error");
    } catch (const VbError& e) {
        QCOMPARE(m_cn.errors().size(), 1);
        QCOMPARE(m_cn.errors().first().NativeError, long(SQLITE_CONSTRAINT_UNIQUE));
    }
    QVERIFY(m_cn.inTransaction()); // the caller's transaction is still there to roll back
    QCOMPARE(count("SELECT COUNT(*) FROM EQUIPMENTS WHERE EQUIPMENT_NAME = 'Twin'"), 0L);
    // Corrected, the same new row can still be written.
    rs.setValue("STAT_NAME", "Twin");
    rs.update();
    m_cn.commitTrans();
    QCOMPARE(count("SELECT COUNT(*) FROM WEAPON_STATS WHERE EQUIPMENT_NAME = 'Twin'"), 1L);
}

void TestRecordset::wrongKindOfValueIsRefused_data() {
    QTest::addColumn<QString>("field");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("text into whole number") << "LVL" << QVariant("ten");
    QTest::newRow("text into fraction") << "DELAY" << QVariant("1.2.3");
    QTest::newRow("text into yes/no") << "PERSONAL_DB" << QVariant("maybe");
}

void TestRecordset::wrongKindOfValueIsRefused() {
    QFETCH(QString, field);
    QFETCH(QVariant, value);
    Recordset rs;
    rs.open(QString(kBeamQuery).arg("Ember Beam"), m_cn, Recordset::Dynamic);
    try {
        rs.setValue(field, value);
        QFAIL("no error");
    } catch (const VbError& e) {
        QCOMPARE(e.number, hr::MissingValue);
        QCOMPARE(m_cn.errors().size(), 1);
        QVERIFY(e.description.contains(field));
    }
    rs.update(); // nothing pending: nothing written
    rs.close();
    QCOMPARE(count("SELECT LVL FROM EQUIPMENTS WHERE EQUIPMENT_NAME = 'Ember Beam'"), 5L);
}

void TestRecordset::valuesAreConvertedToTheColumnKind() {
    Recordset rs;
    rs.open(QString(kBeamQuery).arg("Ember Beam"), m_cn, Recordset::Dynamic);
    rs.setValue("LVL", "2.5");         // whole-number column: rounds half to even
    rs.setValue("PERSONAL_DB", "True");
    rs.setValue("UPDATED", -1);        // Jet's True
    rs.setValue("DELAY", "");          // empty text in a number column is NULL
    rs.update();
    QCOMPARE(rs.value("LVL"), QVariant(2));
    QCOMPARE(rs.value("PERSONAL_DB"), QVariant(true));
    QCOMPARE(rs.value("UPDATED"), QVariant(true));
    QVERIFY(rs.value("DELAY").isNull());
    rs.close();
    QCOMPARE(count("SELECT COUNT(*) FROM EQUIPMENTS WHERE UPDATED = TRUE AND PERSONAL_DB = 1 AND LVL = 2"), 1L);
}

void TestRecordset::computedFieldCannotBeSet() {
    Recordset rs;
    rs.open("SELECT ITEM_NAME, LVL * 2 AS TWICE FROM ITEMS", m_cn, Recordset::Dynamic);
    QVERIFY_THROWS_EXCEPTION(VbError, rs.setValue("TWICE", 3));
    QCOMPARE(m_cn.errors().size(), 1);
}

// Nothing set on a new row is no reason to drop it silently: the table's rules decide.
void TestRecordset::newRowWithNoValuesIsStillWritten() {
    Recordset rs;
    rs.open("SELECT * FROM ITEMS WHERE ITEM_NAME = 'x'", m_cn, Recordset::Dynamic);
    rs.addNew();
    QVERIFY_THROWS_EXCEPTION(VbError, rs.update());
    QCOMPARE(m_cn.errors().first().NativeError, long(SQLITE_CONSTRAINT_NOTNULL));
    rs.close();
    rs.open("SELECT * FROM DB_VERSION", m_cn, Recordset::Dynamic);
    rs.addNew();
    rs.update();
    rs.close();
    QCOMPARE(count("SELECT COUNT(*) FROM DB_VERSION WHERE VERSION IS NULL"), 1L);
}

void TestRecordset::forwardOnlyIsReadOnly() {
    Recordset rs;
    rs.open("SELECT * FROM ITEMS", m_cn);
    QVERIFY_THROWS_EXCEPTION(VbError, rs.setValue("LVL", 3));
    QVERIFY_THROWS_EXCEPTION(VbError, rs.addNew());
    QCOMPARE(count("SELECT LVL FROM ITEMS"), 4L);
}

QTEST_GUILESS_MAIN(TestRecordset)
#include "tst_recordset.moc"
