// Find and the database agree on what "without regard to case" means: a name the database takes
// for the same record under = and LIKE is found by Find, and one it tells apart is not.
#include "data/database.h"
#include "data/recordset.h"
#include "data/schema.h"
#include "lists/finditem.h"
#include "lists/listmodel.h"

#include <QTemporaryDir>
#include <QTest>

class TestFindFolding : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() {
        QString error;
        QVERIFY2(CreateDatabase(m_dir.filePath("data.vosk"), &error), qPrintable(error));
        db().open("Provider=VOSK.SQLite;Data Source=" + m_dir.filePath("data.vosk") + ";");
    }
    void cleanupTestCase() { db().close(); }
    void cleanup() { db().execute("DELETE FROM ITEMS"); }

    void sqlAndFindAgree_data() {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("same");
        auto row = [](const char* tag, const char* stored, const char* typed, bool same) {
            QTest::newRow(tag) << QString::fromUtf8(stored) << QString::fromUtf8(typed) << same;
        };
        row("ascii", "Iron Slug", "iron SLUG", true);
        row("latin", "Éclair", "éCLAIR", true);
        row("final sigma", "ΣΟΦΟΣ", "σοφος", true);
        row("kelvin sign", "\u212Aelvin Coil", "kelvin coil", true);
        row("long s", "\u017Ftar Dust", "STAR DUST", true);
        row("beyond the BMP", "\U00010400 Relic", "\U00010428 RELIC", true);
        row("dotless i is its own letter", "\u0131ron", "IRON", false);
        row("sharp s is not ss", "Straße", "STRASSE", false);
        row("accents count", "Eclair", "Éclair", false);
    }

    void sqlAndFindAgree() {
        QFETCH(QString, stored);
        QFETCH(QString, typed);
        QFETCH(bool, same);
        db().execute("INSERT INTO ITEMS (ITEM_NAME) VALUES ('Decoy'), ('" + stored + "')");
        QCOMPARE(count("SELECT COUNT(*) FROM ITEMS WHERE ITEM_NAME = '" + typed + "'"), int(same));
        QCOMPARE(count("SELECT COUNT(*) FROM ITEMS WHERE ITEM_NAME LIKE '%" + typed + "%'"), int(same));
        ListModel model;
        Recordset rs;
        rs.open("SELECT ITEM_NAME, LVL FROM ITEMS ORDER BY ITEM_NAME DESC");
        model.load(rs, ListColors());
        QCOMPARE(model.rowCount(), 2);
        const int found = UberFindItem(typed, 1, model, true, true, false, false);
        QCOMPARE(found > 0, same);
        if (same)
            QCOMPARE(model.name(found - 1), stored);
        QCOMPARE(UberFindItem(typed, 1, model, true, true, true, false), 0); // with case: only as stored
        QCOMPARE(UberFindItem(stored, 1, model, true, true, true, false) > 0, true);
    }

private:
    static int count(const QString& sql) {
        Recordset rs;
        rs.open(sql);
        return int(rs.intValue(0));
    }
    QTemporaryDir m_dir;
};

QTEST_MAIN(TestFindFolding)
#include "tst_findfolding.moc"
