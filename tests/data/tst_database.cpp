// The shared connection: opening, error records, transactions, the statement cache, and the quoting
// rule that makes user text safe inside SQL literals.
#include "data/database.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "enginedb.h"

#include <QTest>
#include <sqlite3.h>

class TestDatabase : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void opensByDataSourceOnly();
    void refusesWhatIsNotADatabase();
    void errorRecordsFromTheEngine_data();
    void errorRecordsFromTheEngine();
    void secondStatementIsNotRun();
    void transactions();
    void closingRollsBackAnOpenTransaction();
    void sameQueryInsideItsOwnLoop();
    void statementsGoBackWhateverHappens();
    void fixQuotes_data();
    void fixQuotes();

private:
    long count(const QString& sql) { return enginedb::count(sql, m_cn); }
    // Prepared statements of the connection that are still stepping (not given back to the pool).
    int busyStatements() const {
        int busy = 0;
        for (sqlite3_stmt* st = sqlite3_next_stmt(m_cn.handle(), nullptr); st;
             st = sqlite3_next_stmt(m_cn.handle(), st))
            busy += sqlite3_stmt_busy(st) ? 1 : 0;
        return busy;
    }
    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_path;
    Database m_cn;
};

void TestDatabase::init() {
    m_dir = std::make_unique<QTemporaryDir>();
    m_path = enginedb::create(*m_dir);
    QVERIFY(!m_path.isEmpty());
    m_cn.open(enginedb::connectionFor(m_path));
}

void TestDatabase::cleanup() {
    m_cn.close();
    m_dir.reset();
}

void TestDatabase::opensByDataSourceOnly() {
    m_cn.close();
    QCOMPARE(m_cn.state(), int(Database::StateClosed));
    m_cn.open("Provider=Microsoft.Jet.OLEDB.4.0;Persist Security Info=False;data source=" + m_path + ";");
    QVERIFY(m_cn.isOpen());
    m_cn.open("Data Source=\"" + m_path + "\"");
    QCOMPARE(m_cn.fileName(), m_path);
}

void TestDatabase::refusesWhatIsNotADatabase() {
    const QString file = m_dir->filePath("other.vosk");
    for (const QByteArray& content :
         {QByteArray(), QByteArray("SQLite format 3\0garbage", 24)}) { // missing, damaged
        QFile f(file);
        QVERIFY(content.isEmpty() || (f.open(QIODevice::WriteOnly) && f.write(content) && f.flush()));
        Database cn;
        QVERIFY_THROWS_EXCEPTION(VbError, cn.open(enginedb::connectionFor(file)));
        QVERIFY(!cn.isOpen());
        QCOMPARE(cn.errors().first().Source, QStringLiteral("VOSK SQLite Provider"));
        QCOMPARE(QFileInfo::exists(file), !content.isEmpty()); // nothing created or changed
        QCOMPARE(QFileInfo(file).size(), content.size());
    }
}

void TestDatabase::errorRecordsFromTheEngine_data() {
    QTest::addColumn<QString>("sql");
    QTest::addColumn<long>("number");
    QTest::addColumn<long>("native");
    QTest::addColumn<QString>("sqlState");
    QTest::addColumn<QString>("descriptionStart");
    QTest::newRow("unknown column") << "UPDATE RAW_MATERIALS SET LVL = abc" << hr::MissingValue
                                    << long(SQLITE_ERROR) << "42S22"
                                    << "no such column: abc";
    QTest::newRow("syntax") << "SELEC 1" << hr::Fail << long(SQLITE_ERROR) << "42000"
                            << "near \"SELEC\"";
    QTest::newRow("duplicate name ignoring case") << "INSERT INTO ITEMS (ITEM_NAME) VALUES ('CRYSTAL')"
                                                  << hr::Fail << long(SQLITE_CONSTRAINT_UNIQUE) << "23000"
                                                  << "UNIQUE constraint failed: ITEMS.ITEM_NAME";
    QTest::newRow("named check") << "UPDATE EQUIPMENTS SET LVL = 'high'" << hr::MissingValue
                                 << long(SQLITE_CONSTRAINT_CHECK) << "23000"
                                 << "CHECK constraint failed: INVALID_EQUIPMENTS_LVL";
    QTest::newRow("trigger refusal") << "DELETE FROM CLASSES WHERE CLASS_NAME = 'Fighter'" << hr::Fail
                                     << long(SQLITE_CONSTRAINT_TRIGGER) << "23000"
                                     << "CLASSES value is in use by EQUIPMENT_CLASS";
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
        QVERIFY2(r.Description.startsWith(descriptionStart), qPrintable(r.Description));
        QCOMPARE(e.description, r.Description);
    }
    m_cn.clearErrors();
    QVERIFY(m_cn.errors().isEmpty());
}

void TestDatabase::secondStatementIsNotRun() {
    QVERIFY_THROWS_EXCEPTION(VbError, m_cn.execute("DELETE FROM CLASSES; DELETE FROM CHARACTERS"));
    QCOMPARE(m_cn.errors().first().Description,
             QStringLiteral("Characters found after end of SQL statement."));
    QCOMPARE(count("SELECT COUNT(*) FROM CLASSES"), 2L); // not even the first statement ran
}

// A save handler rolls back first and reports afterwards: the error records must outlive the rollback.
void TestDatabase::transactions() {
    m_cn.beginTrans();
    QCOMPARE(m_cn.execute("DELETE FROM RAW_MATERIALS"), 2L);
    QVERIFY_THROWS_EXCEPTION(VbError, m_cn.beginTrans()); // they do not nest; the outer one stays
    QVERIFY(m_cn.inTransaction());
    QVERIFY_THROWS_EXCEPTION(VbError,
                             m_cn.execute("INSERT INTO CHARACTERS (CHARACTER_NAME) VALUES ('pilot')"));
    m_cn.rollbackTrans();
    QVERIFY(!m_cn.inTransaction());
    QCOMPARE(m_cn.errors().size(), 1);
    QCOMPARE(m_cn.errors().first().NativeError, long(SQLITE_CONSTRAINT_UNIQUE));
    QCOMPARE(m_cn.execute("UPDATE RAW_MATERIALS SET LVL = 1 WHERE LVL = 0"), 0L);
    QVERIFY(m_cn.errors().isEmpty()); // the next statement clears them
    QCOMPARE(count("SELECT COUNT(*) FROM RAW_MATERIALS"), 2L);
    m_cn.beginTrans();
    m_cn.execute("DELETE FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME = 'Ore'");
    m_cn.commitTrans();
    QCOMPARE(count("SELECT COUNT(*) FROM RAW_MATERIALS"), 1L);
    QVERIFY_THROWS_EXCEPTION(VbError, m_cn.commitTrans());
    QVERIFY_THROWS_EXCEPTION(VbError, m_cn.rollbackTrans());
}

void TestDatabase::closingRollsBackAnOpenTransaction() {
    m_cn.beginTrans();
    m_cn.execute("DELETE FROM RAW_MATERIALS");
    m_cn.close();
    m_cn.open(enginedb::connectionFor(m_path));
    QVERIFY(!m_cn.inTransaction());
    QCOMPARE(count("SELECT COUNT(*) FROM RAW_MATERIALS"), 2L);
}

// The build trees run the same query inside the loop over its own results, once the pool already
// holds a statement of that shape from an earlier reader.
void TestDatabase::sameQueryInsideItsOwnLoop() {
    const QString q = "SELECT REFINES_FROM FROM RAW_MATERIALS_REFINES_FROM WHERE RAW_MATERIAL_NAME = 'Metal'";
    QCOMPARE(count("SELECT COUNT(*) FROM (" + q + ")"), 1L);
    {
        Recordset earlier;
        earlier.open(q, m_cn);
    }
    Recordset outer;
    outer.open(q, m_cn);
    {
        Recordset inner;
        inner.open(q, m_cn);
        QCOMPARE(inner.value(0).toString(), QStringLiteral("Ore"));
    }
    QCOMPARE(outer.value(0).toString(), QStringLiteral("Ore")); // the outer row was not disturbed
    m_cn.close();                                               // with a reader still open
    outer.close();
    m_cn.open(enginedb::connectionFor(m_path));
    QVERIFY(m_cn.isOpen());
}

// A statement goes back to the pool however its reader or writer ends: done, failed, abandoned or
// moved the wrong way. One left stepping would keep the tables locked.
void TestDatabase::statementsGoBackWhateverHappens() {
    QVERIFY_THROWS_EXCEPTION(VbError, m_cn.execute("INSERT INTO CLASSES (CLASS_NAME) VALUES ('fighter')"));
    QVERIFY_THROWS_EXCEPTION(VbError, m_cn.execute("UPDATE EQUIPMENTS SET LVL = 'x'"));
    {
        Recordset rs;
        rs.open("SELECT CLASS_NAME FROM CLASSES", m_cn);
        QCOMPARE(busyStatements(), 1); // on its first row
        rs.moveNext();
        QVERIFY_THROWS_EXCEPTION(VbError, rs.moveFirst());
    }
    {
        Recordset rs;
        rs.open("SELECT ITEM_NAME, LVL FROM ITEMS", m_cn, Recordset::Dynamic);
        rs.setValue("ITEM_NAME", "");
        QVERIFY_THROWS_EXCEPTION(VbError, rs.update());
        QVERIFY_THROWS_EXCEPTION(VbError, rs.open("SELECT NOPE FROM ITEMS", m_cn));
    }
    QCOMPARE(busyStatements(), 0);
    QCOMPARE(m_cn.execute("DROP TABLE CHARACTERS"), 0L); // nothing holds the schema
}

// FixQuotes and ValidName, and the name through an INSERT and a SELECT on the connection.
void TestDatabase::fixQuotes_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("fixed");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<QString>("stored"); // empty: the statement fails
    QTest::newRow("no quote") << "Ember Beam"
                              << "Ember Beam" << true << "Ember Beam";
    QTest::newRow("one quote") << "O'Brien"
                               << "O''Brien" << true << "O'Brien";
    QTest::newRow("typed doubled") << "O''Brien"
                                   << "O''Brien" << false << "O'Brien";
    QTest::newRow("single and doubled elsewhere") << "a'b''c"
                                                  << "a'b''c" << false << "";
    QTest::newRow("two separate quotes, at the ends") << "'a'b'"
                                                      << "''a''b''" << true << "'a'b'";
}

void TestDatabase::fixQuotes() {
    QFETCH(QString, text);
    QFETCH(QString, fixed);
    QFETCH(bool, valid);
    QFETCH(QString, stored);
    QCOMPARE(FixQuotes(text), fixed);
    QCOMPARE(ValidName(text), valid);
    const QString insert = "INSERT INTO CHARACTERS (CHARACTER_NAME) VALUES ('" + FixQuotes(text) + "')";
    if (stored.isEmpty()) {
        QVERIFY_THROWS_EXCEPTION(VbError, m_cn.execute(insert));
        return;
    }
    m_cn.execute(insert);
    Recordset rs;
    rs.open("SELECT CHARACTER_NAME FROM CHARACTERS WHERE CHARACTER_NAME = '" + FixQuotes(text) + "'", m_cn);
    QCOMPARE(rs.value(0).toString(), stored);
}

QTEST_GUILESS_MAIN(TestDatabase)
#include "tst_database.moc"
