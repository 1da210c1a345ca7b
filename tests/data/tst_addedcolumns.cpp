// Columns added to the version-6 layout later: a new database has them, guarded like every other
// column; an older version-6 file gets them when it is opened, keeping its rows and its version; a
// file of another version, or one that cannot be written, is left as it is and still opens.
#include "data/database.h"
#include "data/recordset.h"
#include "data/schema.h"
#include "tst_sampledata_db.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

namespace {
bool hasFee(const QString& file) {
    RawDb raw(file);
    return raw.scalar(
                  "SELECT COUNT(*) FROM pragma_table_info('COMPONENTS') WHERE name = 'COST_TO_MANUFACTURE'")
               .toInt() == 1;
}

void open(const QString& file) {
    db().open(QStringLiteral("Provider=VOSK.SQLite;Data Source=") + file + QLatin1Char(';'));
}
} // namespace

class TestAddedColumns : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() {
        m_template = m_dir.filePath("template.vosk");
        QString error;
        QVERIFY2(CreateDatabase(m_template, &error), qPrintable(error));
    }
    void init() {
        m_file = m_dir.filePath(QStringLiteral("db%1.vosk").arg(++m_n));
        QVERIFY(QFile::copy(m_template, m_file));
        QFile::setPermissions(m_file, QFile::ReadOwner | QFile::WriteOwner);
    }
    void cleanup() { db().close(); }

    void theListNamesTheFee() {
        QCOMPARE(schema::addedColumns().size(), 1);
        QCOMPARE(schema::addedColumns().first().table, QString("COMPONENTS"));
        QCOMPARE(schema::addedColumns().first().column.name, QString("COST_TO_MANUFACTURE"));
        // Not part of the layout every version-6 file has, so that older backups still restore.
        const schema::Table* components = schema::findTable("COMPONENTS");
        QVERIFY(components);
        for (const schema::Column& c : components->columns)
            QVERIFY(c.name != "COST_TO_MANUFACTURE");
    }

    void aNewDatabaseGuardsTheFeeLikeAnyNumber_data() {
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("failure"); // empty: stored
        QTest::newRow("a fee") << "250"
                               << "";
        QTest::newRow("not manufacturable") << "-1"
                                            << "";
        QTest::newRow("unknown") << "NULL"
                                 << "";
        QTest::newRow("text") << "'cheap'"
                              << "INVALID_COMPONENTS_COST_TO_MANUFACTURE";
        QTest::newRow("beyond 32 bits") << "3000000000"
                                        << "TOO_LARGE_COMPONENTS_COST_TO_MANUFACTURE";
    }
    void aNewDatabaseGuardsTheFeeLikeAnyNumber() {
        QFETCH(QString, value);
        QFETCH(QString, failure);
        RawDb raw(m_file);
        const bool ok = raw.exec(
            "INSERT INTO COMPONENTS (COMPONENT_NAME, COST_TO_MANUFACTURE) VALUES ('Gyro', " + value + ")");
        QCOMPARE(ok, failure.isEmpty());
        if (!ok)
            QVERIFY2(raw.error().contains(failure), qPrintable(raw.error()));
    }

    void anOlderFileGetsTheFeeWhenOpened() {
        {
            RawDb raw(m_file);
            QVERIFY2(raw.exec("ALTER TABLE COMPONENTS DROP COLUMN COST_TO_MANUFACTURE"),
                     qPrintable(raw.error()));
            QVERIFY(raw.exec(
                "INSERT INTO COMPONENTS (COMPONENT_NAME, LVL, PRICE) VALUES ('Gunner''s Sight', 4, 90)"));
        }
        QVERIFY(!hasFee(m_file));
        open(m_file);
        QVERIFY(hasFee(m_file));
        Recordset rs;
        rs.open("SELECT * FROM COMPONENTS WHERE COMPONENT_NAME = 'Gunner''s Sight'");
        QVERIFY(!rs.eof());
        QCOMPARE(rs.value("PRICE").toInt(), 90);
        QVERIFY(rs.value("COST_TO_MANUFACTURE").isNull());
        rs.close();
        db().execute(
            "UPDATE COMPONENTS SET COST_TO_MANUFACTURE = 35 WHERE COMPONENT_NAME = 'Gunner''s Sight'");
        db().close();
        RawDb raw(m_file);
        QCOMPARE(raw.scalar("SELECT MAX(VERSION) FROM DB_VERSION").toInt(), 6);
        QCOMPARE(raw.scalar("SELECT COST_TO_MANUFACTURE FROM COMPONENTS").toInt(), 35);
        // The added column carries the same guards as a new database's.
        QVERIFY(!raw.exec("UPDATE COMPONENTS SET COST_TO_MANUFACTURE = 'cheap'"));
        QVERIFY(raw.error().contains("INVALID_COMPONENTS_COST_TO_MANUFACTURE"));
    }

    void aFileThatHasTheFeeIsNotWritten() {
        const int version = RawDb(m_file).scalar("PRAGMA schema_version").toInt();
        open(m_file);
        db().close();
        QCOMPARE(RawDb(m_file).scalar("PRAGMA schema_version").toInt(), version);
    }

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
            if (!change.isEmpty())
                QVERIFY2(raw.exec(change), qPrintable(raw.error()));
        }
        const int version = RawDb(m_file).scalar("PRAGMA schema_version").toInt();
        if (change.isEmpty()) {
            QFile::setPermissions(m_file, QFile::ReadOwner);
            if (QFileInfo(m_file).isWritable())
                QSKIP("this user can write a read-only file");
        }
        open(m_file); // opens without a complaint
        QVERIFY(db().isOpen());
        db().close();
        QCOMPARE(RawDb(m_file).scalar("PRAGMA schema_version").toInt(), version);
    }

private:
    QTemporaryDir m_dir;
    QString m_template, m_file;
    int m_n = 0;
};

QTEST_MAIN(TestAddedColumns)
#include "tst_addedcolumns.moc"
