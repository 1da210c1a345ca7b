#include "data/database.h"
#include "data/recordset.h"
#include "enginedb.h"

#include <QTest>
#include <sqlite3.h>

class TestDatabase : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void opensAndReportsState();
    void refusesWhatIsNotADatabase_data();
    void refusesWhatIsNotADatabase();
    void executeCountsRows();
    void errorRecordsFromTheEngine_data();
    void errorRecordsFromTheEngine();
    void secondStatementIsNotRun();
    void transactions();
    void errorRecordsOutliveRollbackUntilNextCommand();
    void nestedBeginIsAnError();
    void commitWithoutBeginIsAnError();
    void statementInUseIsNotHandedOutAgain();
    void statementsAreReusedByShape();
    void readerAtTheEndGivesItsStatementBack();
    void foreignKeysOnWhenSchemaUsesThem();
    void closeWithOpenReaderIsSafe();

private:
    QTemporaryDir* m_dir = nullptr;
    QString m_path;
    Database m_cn;
};

void TestDatabase::init() {
    m_dir = new QTemporaryDir;
    m_path = enginedb::create(*m_dir);
    QVERIFY(!m_path.isEmpty());
    m_cn.open(enginedb::connectionFor(m_path));
}

void TestDatabase::cleanup() {
    m_cn.close();
    delete m_dir;
    m_dir = nullptr;
}

void TestDatabase::opensAndReportsState() {
    QVERIFY(m_cn.isOpen());
    QCOMPARE(m_cn.state(), int(Database::StateOpen));
    QCOMPARE(m_cn.fileName(), m_path);
    QCOMPARE(m_cn.connectionString(), enginedb::connectionFor(m_path));
    m_cn.close();
    QCOMPARE(m_cn.state(), int(Database::StateClosed));
    // The prefix is the provider's business; only the data source counts.
    m_cn.open("Provider=Microsoft.Jet.OLEDB.4.0;Persist Security Info=False;data source=" + m_path + ";");
    QVERIFY(m_cn.isOpen());
    m_cn.open("Data Source=\"" + m_path + "\"");
    QCOMPARE(m_cn.fileName(), m_path);
}

void TestDatabase::refusesWhatIsNotADatabase_data() {
    QTest::addColumn<QByteArray>("content"); // empty: no file at all
    QTest::addColumn<bool>("create");
    QTest::newRow("missing file") << QByteArray() << false;
    QTest::newRow("empty file") << QByteArray() << true;
    QTest::newRow("text file") << QByteArray("this is not a database\n") << true;
    QTest::newRow("damaged header") << QByteArray("SQLite format 3\0garbage", 24) << true;
}

void TestDatabase::refusesWhatIsNotADatabase() {
    QFETCH(QByteArray, content);
    QFETCH(bool, create);
    const QString file = m_dir->filePath("other.vosk");
    if (create) {
        QFile f(file);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(content);
    }
    Database cn;
    bool threw = false;
    try {
        cn.open(enginedb::connectionFor(file));
    } catch (const VbError& e) {
        threw = true;
        QCOMPARE(e.number, hr::Fail);
        QCOMPARE(cn.errors().size(), 1);
        QCOMPARE(cn.errors().first().Description, e.description);
        QCOMPARE(cn.errors().first().Source, QStringLiteral("VOSK SQLite Provider"));
        QVERIFY(!e.description.isEmpty());
    }
    QVERIFY(threw);
    QVERIFY(!cn.isOpen());
    // Nothing was created or changed.
    QCOMPARE(QFileInfo::exists(file), create);
    if (create) {
        QFile f(file);
        QVERIFY(f.open(QIODevice::ReadOnly));
        QCOMPARE(f.readAll(), content);
    }
}

void TestDatabase::executeCountsRows() {
    QCOMPARE(m_cn.execute("UPDATE EQUIPMENTS SET UPDATED = TRUE WHERE TYPE = 'Ammunition'"), 2L);
    QCOMPARE(m_cn.execute("DELETE FROM CLASSES WHERE CLASS_NAME = 'Nobody'"), 0L);
    QCOMPARE(m_cn.execute("INSERT INTO CHARACTERS (CHARACTER_NAME) VALUES ('O''Brien')"), 1L);
    Recordset rs;
    rs.open("SELECT CHARACTER_NAME FROM CHARACTERS WHERE CHARACTER_NAME = 'O''Brien'", m_cn);
    QCOMPARE(rs.value(0).toString(), QStringLiteral("O'Brien"));
}

void TestDatabase::errorRecordsFromTheEngine_data() {
    QTest::addColumn<QString>("sql");
    QTest::addColumn<long>("number");
    QTest::addColumn<long>("native");
    QTest::addColumn<QString>("sqlState");
    QTest::addColumn<QString>("descriptionStart");
    QTest::newRow("unknown column") << "UPDATE RAW_MATERIALS SET LVL = abc WHERE RAW_MATERIAL_NAME = 'Ore'"
                                    << hr::MissingValue << long(SQLITE_ERROR) << "42S22" << "no such column: abc";
    QTest::newRow("unknown table") << "DELETE FROM NOWHERE" << hr::Fail << long(SQLITE_ERROR) << "42S02"
                                   << "no such table: NOWHERE";
    QTest::newRow("syntax") << "SELEC 1" << hr::Fail << long(SQLITE_ERROR) << "42000" << "near \"SELEC\"";
    QTest::newRow("duplicate name ignoring case")
        << "INSERT INTO ITEMS (ITEM_NAME) VALUES ('CRYSTAL')" << hr::Fail << long(SQLITE_CONSTRAINT_UNIQUE) << "23000"
        << "UNIQUE constraint failed: ITEMS.ITEM_NAME";
    QTest::newRow("missing name") << "INSERT INTO ITEMS (LVL) VALUES (1)" << hr::Fail
                                  << long(SQLITE_CONSTRAINT_NOTNULL) << "23000" << "NOT NULL constraint failed";
    QTest::newRow("named check") << "UPDATE EQUIPMENTS SET LVL = 'high' WHERE EQUIPMENT_NAME = 'Ember Beam'"
                                 << hr::MissingValue << long(SQLITE_CONSTRAINT_CHECK) << "23000"
                                 << "CHECK constraint failed: INVALID_EQUIPMENTS_LVL";
    QTest::newRow("too large check") << "UPDATE EQUIPMENTS SET EQUIPMENT_NAME = '" + QString(120, 'x') + "' WHERE "
                                        "EQUIPMENT_NAME = 'Ember Beam'"
                                     << hr::Fail << long(SQLITE_CONSTRAINT_CHECK) << "23000"
                                     << "CHECK constraint failed: TOO_LARGE_EQUIPMENTS_EQUIPMENT_NAME";
    QTest::newRow("trigger refusal") << "DELETE FROM DAMAGE_TYPE WHERE DAMAGE_TYPE = 'Heat'" << hr::Fail
                                     << long(SQLITE_CONSTRAINT_TRIGGER) << "23000"
                                     << "DAMAGE_TYPE value is in use by MOB_ATTACK_TYPE";
}

void TestDatabase::errorRecordsFromTheEngine() {
    QFETCH(QString, sql);
    QFETCH(long, number);
    QFETCH(long, native);
    QFETCH(QString, sqlState);
    QFETCH(QString, descriptionStart);
    try {
        m_cn.execute(sql);
        QFAIL("no error");
    } catch (const VbError& e) {
        QCOMPARE(e.number, number);
        QCOMPARE(m_cn.errors().size(), 1);
        const ErrorRecord& r = m_cn.errors().first();
        QCOMPARE(r.Number, number);
        QCOMPARE(r.NativeError, native);
        QCOMPARE(r.SQLState, sqlState);
        QCOMPARE(r.Source, QStringLiteral("VOSK SQLite Provider"));
        QVERIFY2(r.Description.startsWith(descriptionStart), qPrintable(r.Description));
        QCOMPARE(e.description, r.Description);
        QVERIFY(r.HelpFile.isEmpty());
    }
    // A later success leaves the records for the reporter to clear; clearErrors empties them.
    m_cn.clearErrors();
    QVERIFY(m_cn.errors().isEmpty());
}

void TestDatabase::secondStatementIsNotRun() {
    try {
        m_cn.execute("DELETE FROM CLASSES; DELETE FROM CHARACTERS");
        QFAIL("no error");
    } catch (const VbError& e) {
        QCOMPARE(e.description, QStringLiteral("Characters found after end of SQL statement."));
        QCOMPARE(m_cn.errors().size(), 1);
    }
    Recordset rs;
    rs.open("SELECT COUNT(*) FROM CLASSES", m_cn);
    QCOMPARE(rs.intValue(0), 2); // not even the first statement ran
}

void TestDatabase::transactions() {
    QVERIFY(!m_cn.inTransaction());
    m_cn.beginTrans();
    QVERIFY(m_cn.inTransaction());
    m_cn.execute("DELETE FROM CLASSES");
    m_cn.rollbackTrans();
    QVERIFY(!m_cn.inTransaction());
    Recordset rs;
    rs.open("SELECT COUNT(*) FROM CLASSES", m_cn);
    QCOMPARE(rs.intValue(0), 2);
    rs.close();
    m_cn.beginTrans();
    m_cn.execute("DELETE FROM CLASSES WHERE CLASS_NAME = 'Hauler'");
    m_cn.commitTrans();
    rs.open("SELECT COUNT(*) FROM CLASSES", m_cn);
    QCOMPARE(rs.intValue(0), 1);
}

// A save handler rolls back first and reports afterwards: the records must still be there.
void TestDatabase::errorRecordsOutliveRollbackUntilNextCommand() {
    m_cn.beginTrans();
    QVERIFY_THROWS_EXCEPTION(VbError, m_cn.execute("INSERT INTO CLASSES (CLASS_NAME) VALUES ('Fighter')"));
    m_cn.rollbackTrans();
    QCOMPARE(m_cn.errors().size(), 1);
    QCOMPARE(m_cn.errors().first().NativeError, long(SQLITE_CONSTRAINT_UNIQUE));
    m_cn.execute("UPDATE CLASSES SET CLASS_NAME = 'Fighter' WHERE CLASS_NAME = 'Fighter'");
    QVERIFY(m_cn.errors().isEmpty());
    QVERIFY_THROWS_EXCEPTION(VbError, m_cn.execute("DELETE FROM NOWHERE"));
    Recordset rs;
    rs.open("SELECT * FROM CLASSES", m_cn);
    QVERIFY(m_cn.errors().isEmpty());
}

void TestDatabase::nestedBeginIsAnError() {
    m_cn.beginTrans();
    QVERIFY_THROWS_EXCEPTION(VbError, m_cn.beginTrans());
    QCOMPARE(m_cn.errors().size(), 1);
    QVERIFY(m_cn.inTransaction()); // the outer one is untouched
    m_cn.rollbackTrans();
}

void TestDatabase::commitWithoutBeginIsAnError() {
    QVERIFY_THROWS_EXCEPTION(VbError, m_cn.commitTrans());
    QVERIFY_THROWS_EXCEPTION(VbError, m_cn.rollbackTrans());
}

// The build trees run the same query inside the loop over its own results.
void TestDatabase::statementInUseIsNotHandedOutAgain() {
    const QString q = "SELECT REFINES_FROM FROM RAW_MATERIALS_REFINES_FROM WHERE RAW_MATERIAL_NAME = '%1'";
    Recordset outer;
    outer.open(q.arg("Metal"), m_cn);
    QVERIFY(!outer.eof());
    {
        Recordset inner;
        inner.open(q.arg("Metal"), m_cn);
        QCOMPARE(inner.value(0).toString(), QStringLiteral("Ore"));
        inner.moveNext();
        QVERIFY(inner.eof());
    }
    QCOMPARE(outer.value(0).toString(), QStringLiteral("Ore")); // the outer row was not disturbed
    outer.moveNext();
    QVERIFY(outer.eof());
}

void TestDatabase::statementsAreReusedByShape() {
    sqlite3_stmt* a = m_cn.acquire("SELECT LVL FROM ITEMS WHERE ITEM_NAME = 'Crystal'");
    m_cn.release(a);
    sqlite3_stmt* b = m_cn.acquire("SELECT LVL FROM ITEMS WHERE ITEM_NAME = 'Other''s'");
    QCOMPARE(b, a);
    sqlite3_stmt* c = m_cn.acquire("SELECT LVL FROM ITEMS WHERE ITEM_NAME = 'Crystal'");
    QVERIFY(c != b);
    // Each carries its own bound name.
    QCOMPARE(sqlite3_step(b), SQLITE_DONE);
    QCOMPARE(sqlite3_step(c), SQLITE_ROW);
    QCOMPARE(sqlite3_column_int(c, 0), 4);
    m_cn.release(b);
    m_cn.release(c);
}

void TestDatabase::readerAtTheEndGivesItsStatementBack() {
    const QString q = "SELECT COMPONENT_NAME FROM COMPONENTS WHERE LVL > 0";
    sqlite3_stmt* p = m_cn.acquire(q);
    m_cn.release(p);
    Recordset rs;
    rs.open(q, m_cn); // takes p
    sqlite3_stmt* other = m_cn.acquire(q);
    QVERIFY(other != p);
    m_cn.release(other);
    while (!rs.eof())
        rs.moveNext();
    sqlite3_stmt* again = m_cn.acquire(q);
    QVERIFY(again == p || again == other); // the finished reader's statement is free again
    sqlite3_stmt* more = m_cn.acquire(q);
    QVERIFY(more == p || more == other);
    m_cn.release(again);
    m_cn.release(more);
}

void TestDatabase::foreignKeysOnWhenSchemaUsesThem() {
    sqlite3_stmt* st = m_cn.acquireShape("PRAGMA foreign_keys");
    QCOMPARE(sqlite3_step(st), SQLITE_ROW);
    QCOMPARE(sqlite3_column_int(st, 0), 0);
    m_cn.release(st);
    m_cn.close();
    QTemporaryDir dir;
    const QString path = enginedb::create(dir, "CREATE TABLE KIDS (NAME VARCHAR(10) REFERENCES CLASSES(CLASS_NAME));");
    m_cn.open(enginedb::connectionFor(path));
    QVERIFY_THROWS_EXCEPTION(VbError, m_cn.execute("INSERT INTO KIDS (NAME) VALUES ('Nobody')"));
    QCOMPARE(m_cn.errors().first().NativeError, long(SQLITE_CONSTRAINT_FOREIGNKEY));
}

void TestDatabase::closeWithOpenReaderIsSafe() {
    Recordset rs;
    rs.open("SELECT * FROM EQUIPMENTS", m_cn);
    m_cn.close();
    rs.close(); // finalizes its statement on the closed connection
    m_cn.open(enginedb::connectionFor(m_path));
    QVERIFY(m_cn.isOpen());
}

QTEST_GUILESS_MAIN(TestDatabase)
#include "tst_database.moc"
