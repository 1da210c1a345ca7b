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
    void init() {
        m_dir = std::make_unique<QTemporaryDir>();
        m_path = enginedb::create(*m_dir);
        QVERIFY(!m_path.isEmpty());
        m_cn.open(enginedb::connectionFor(m_path));
    }
    void cleanup() {
        m_cn.close();
        m_dir.reset();
    }
    // Any provider text and any case of "Data Source" will do; a missing or damaged file is refused,
    // and neither created nor changed.
    void opensOnlyADatabaseByItsDataSource() {
        m_cn.open("Provider=Microsoft.Jet.OLEDB.4.0;Persist Security Info=False;data source=" + m_path + ";");
        QVERIFY(m_cn.isOpen());
        m_cn.open("Data Source=\"" + m_path + "\"");
        QCOMPARE(m_cn.fileName(), m_path);
        const QString file = m_dir->filePath("other.vosk");
        for (const QByteArray& content : {QByteArray(), QByteArray("SQLite format 3\0garbage", 24)}) {
            QFile f(file);
            QVERIFY(content.isEmpty() || (f.open(QIODevice::WriteOnly) && f.write(content) && f.flush()));
            Database cn;
            QVERIFY_THROWS_EXCEPTION(VbError, cn.open(enginedb::connectionFor(file)));
            QVERIFY(!cn.isOpen());
            QCOMPARE(cn.errors().first().Source, QStringLiteral("VOSK SQLite Provider"));
            QCOMPARE(QFileInfo(file).size(), content.size());
            QCOMPARE(QFileInfo::exists(file), !content.isEmpty());
        }
    }
    // What the save handlers list for the player: number, engine code, SQL state and the engine's text.
    void errorRecordsFromTheEngine_data() {
        QTest::addColumn<QString>("sql");
        QTest::addColumn<long>("number");
        QTest::addColumn<long>("native");
        QTest::addColumn<QString>("sqlState");
        QTest::addColumn<QString>("descriptionStart");
        auto row = [](const char* tag, const QString& sql, long number, int native, const char* state,
                      const char* text) {
            QTest::newRow(tag) << sql << number << long(native) << QString(state) << QString(text);
        };
        row("unknown column", "UPDATE RAW_MATERIALS SET LVL = abc", hr::MissingValue, SQLITE_ERROR, "42S22",
            "no such column: abc");
        row("unknown table", "DELETE FROM NOPE", hr::Fail, SQLITE_ERROR, "42S02", "no such table: NOPE");
        row("syntax", "SELEC 1", hr::Fail, SQLITE_ERROR, "42000", "near \"SELEC\"");
        row("duplicate name ignoring case", "INSERT INTO ITEMS (ITEM_NAME) VALUES ('CRYSTAL')", hr::Fail,
            SQLITE_CONSTRAINT_UNIQUE, "23000", "UNIQUE constraint failed: ITEMS.ITEM_NAME");
        row("named check", "UPDATE EQUIPMENTS SET LVL = 'high'", hr::MissingValue, SQLITE_CONSTRAINT_CHECK,
            "23000", "CHECK constraint failed: INVALID_EQUIPMENTS_LVL");
        row("trigger refusal", "DELETE FROM CLASSES WHERE CLASS_NAME = 'Fighter'", hr::Fail,
            SQLITE_CONSTRAINT_TRIGGER, "23000", "CLASSES value is in use by EQUIPMENT_CLASS");
    }
    void errorRecordsFromTheEngine() {
        QFETCH(QString, sql);
        QFETCH(long, number);
        QFETCH(long, native);
        QFETCH(QString, sqlState);
        QFETCH(QString, descriptionStart);
        try {
            m_cn.execute(sql);
            QFAIL("no error");
        } catch (const VbError& e) {
            QCOMPARE(m_cn.errors().size(), 1);
            const ErrorRecord& r = m_cn.errors().first();
            QCOMPARE(e.number, number);
            QCOMPARE(r.Number, number);
            QCOMPARE(r.NativeError, native);
            QCOMPARE(r.SQLState, sqlState);
            QVERIFY2(r.Description.startsWith(descriptionStart), qPrintable(r.Description));
            QCOMPARE(e.description, r.Description);
        }
    }
    // A save handler rolls back first and reports afterwards: the error records must outlive the
    // rollback. Transactions do not nest, and closing the connection rolls an open one back.
    void transactions() {
        m_cn.beginTrans();
        QCOMPARE(m_cn.execute("DELETE FROM RAW_MATERIALS"), 2L);
        QVERIFY_THROWS_EXCEPTION(VbError, m_cn.beginTrans());
        QCOMPARE(m_cn.errors().first().Description,
                 "A transaction is already open: transactions cannot be nested.");
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
        m_cn.beginTrans();
        m_cn.execute("DELETE FROM RAW_MATERIALS");
        m_cn.close();
        m_cn.open(enginedb::connectionFor(m_path));
        QVERIFY(!m_cn.inTransaction());
        QCOMPARE(count("SELECT COUNT(*) FROM RAW_MATERIALS"), 1L);
    }
    // A statement goes back to the pool however its reader or writer ends: done, failed, abandoned or
    // moved the wrong way (one left stepping would keep the tables locked). The build trees run the same
    // query inside the loop over its own results: the inner reader gets a statement of its own.
    void statementsGoBackWhateverHappens() {
        const QString q =
            "SELECT REFINES_FROM FROM RAW_MATERIALS_REFINES_FROM WHERE RAW_MATERIAL_NAME = 'Metal'";
        QCOMPARE(count("SELECT COUNT(*) FROM (" + q + ")"), 1L);
        {
            Recordset earlier; // the pool now holds a statement of this shape
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
        outer.close();
        QVERIFY_THROWS_EXCEPTION(VbError,
                                 m_cn.execute("INSERT INTO CLASSES (CLASS_NAME) VALUES ('fighter')"));
        QVERIFY_THROWS_EXCEPTION(VbError, m_cn.execute("UPDATE EQUIPMENTS SET LVL = 'x'"));
        {
            Recordset rs;
            rs.open("SELECT CLASS_NAME FROM CLASSES", m_cn);
            QCOMPARE(busyStatements(), 1); // on its first row
            rs.moveNext();
            QVERIFY_THROWS_EXCEPTION(VbError, rs.moveFirst());
            Recordset dyn;
            dyn.open("SELECT ITEM_NAME, LVL FROM ITEMS", m_cn, Recordset::Dynamic);
            dyn.setValue("ITEM_NAME", "");
            QVERIFY_THROWS_EXCEPTION(VbError, dyn.update());
            QVERIFY_THROWS_EXCEPTION(VbError, dyn.open("SELECT NOPE FROM ITEMS", m_cn));
        }
        QCOMPARE(busyStatements(), 0);
        QCOMPARE(m_cn.execute("DROP TABLE CHARACTERS"), 0L); // nothing holds the schema
        outer.open(q, m_cn);
        m_cn.close(); // with a reader still open
        outer.close();
    }
    // FixQuotes and ValidName, and the name through an INSERT and a SELECT on the connection.
    void fixQuotes_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("fixed");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<QString>("stored"); // empty: the statement fails
        auto row = [](const char* text, const char* fixed, bool valid, const char* stored) {
            QTest::newRow(text) << QString(text) << QString(fixed) << valid << QString(stored);
        };
        row("Ember Beam", "Ember Beam", true, "Ember Beam");
        row("O'Brien", "O''Brien", true, "O'Brien");
        row("O''Brien", "O''Brien", false, "O'Brien"); // typed doubled: taken as quoted already
        row("a'b''c", "a'b''c", false, "");
        row("'a'b'", "''a''b''", true, "'a'b'");
    }
    void fixQuotes() {
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
        rs.open("SELECT CHARACTER_NAME FROM CHARACTERS WHERE CHARACTER_NAME = '" + FixQuotes(text) + "'",
                m_cn);
        QCOMPARE(rs.value(0).toString(), stored);
    }

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

QTEST_GUILESS_MAIN(TestDatabase)
#include "tst_database.moc"
