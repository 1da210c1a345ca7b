// The grid routines over the widget-free grid model: filling, sizing, checking, fingerprints, saving
// grids and lists, the "(None)" row removal and the rules of the MOB locations grid.
#include "data/database.h"
#include "data/recordset.h"
#include "data/sampledata.h"
#include "editors/gridmodel.h"
#include "editors/gridroutines.h"
#include "editortests.h"
#include "viewsfixture.h"

#include <QTest>
#include <sqlite3.h>

namespace {
const QString Drops = "SELECT MOB_NAME, DROP_FREQUENCY FROM MOB_RAW_MAT_DROP WHERE RAW_MATERIAL_NAME = '";

} // namespace

class TestGridRoutines : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString e;
        QVERIFY2(f.setUp(true, &e), qPrintable(e));
    }
    void cleanup() { f.tearDown(); }

    void populateFillsColumnsRowsAndLists() {
        const QString ore =
            f.scalar("SELECT RAW_MATERIAL_NAME FROM MOB_RAW_MAT_DROP ORDER BY RAW_MATERIAL_NAME").toString();
        GridModel g("ubgMOBs");
        QVERIFY(PopulateGrid(g,
                             {Drops + ore + "' ORDER BY MOB_NAME",
                              "SELECT MOB_NAME FROM MOBS ORDER BY MOB_NAME|1",
                              "SELECT FREQUENCY FROM DROP_FREQUENCY|2"},
                             true));
        QCOMPARE(g.cols(), 3);
        QCOMPARE(g.lastDataRow(),
                 f.scalar("SELECT COUNT(*) FROM MOB_RAW_MAT_DROP WHERE RAW_MATERIAL_NAME = '" + ore + "'")
                     .toInt());
        QVERIFY(g.allowAdd() && g.isEntryRow(g.rows() - 1));
        QCOMPARE(g.header(1) + "|" + g.header(2), QString("Mob Name|Drop Frequency"));
        // The first column's list starts with "(None)"; a second column's list does not, in table order.
        QCOMPARE(g.listDisplays(1).first(), NoneEntry);
        QCOMPARE(g.listDisplays(1).size(), f.scalar("SELECT COUNT(*) FROM MOBS").toInt() + 1);
        QCOMPARE(g.listDisplays(2).first(), QString(sample::DropFrequencies[0]));
        // The fingerprint of what was loaded is the tag; the grid is unchanged.
        QCOMPARE(g.tag(), GridFingerprint(g));
        QVERIFY(!GridChanged(g));
    }

    void numericColumnKinds() {
        QCOMPARE(
            sqlite3_exec(db().handle(),
                         "CREATE TABLE KINDS (L INTEGER, S SMALLINT, F FLOAT, D DOUBLE, C CURRENCY, "
                         "T VARCHAR(10), B BOOLEAN); INSERT INTO KINDS VALUES (1, 2, 3.5, 4.5, 5, 'six', 1)",
                         nullptr, nullptr, nullptr),
            SQLITE_OK);
        GridModel g;
        QVERIFY(PopulateGrid(g, {"SELECT L, S, F, D, C, T, B FROM KINDS"}, true));
        QString numeric;
        for (int c = 1; c <= 7; ++c)
            numeric += g.colNumeric(c) ? 'n' : '-';
        QCOMPARE(numeric, QString("n-nn---")); // 32-bit whole, single and double only
    }

    void failedQueryLocksTheGrid() {
        GridModel g;
        QVERIFY(!PopulateGrid(g, {"SELECT NOTHING FROM NOWHERE"}, true));
        QCOMPARE(f.prompt().count(), 1);
        QVERIFY(f.prompt().last().text.endsWith("procedure PopulateGrid of Module modMain"));
        QVERIFY(g.locked() && !GridChanged(g) && !g.beginUserEdit(1, 1));
    }

    void fingerprintIgnoresTheEntryRowAndSurvivesAddThenRemove() {
        GridModel g;
        InstallStandardEdits(g);
        QVERIFY(PopulateGrid(g, {Drops + "Nothing Here'"}, true));
        QCOMPARE(g.lastDataRow(), 0);
        QCOMPARE(g.tag(), QString());
        g.userEdit(1, 1, "Some Mob"); // typing into the entry row makes it a data row
        QCOMPARE(g.lastDataRow(), 1);
        QVERIFY(g.isEntryRow(2));
        QCOMPARE(GridFingerprint(g), QString("Some Mob||~"));
        QVERIFY(GridChanged(g));
        g.userEdit(1, 2, "Rare");
        QCOMPARE(GridFingerprint(g), QString("Some Mob|Rare|~"));
        g.userEdit(1, 1, NoneEntry); // the after-edit rule removes the row
        QCOMPARE(g.lastDataRow(), 0);
        QVERIFY(!GridChanged(g));
        // "(None)" in another column is a value like any other.
        fillGrid(g, {"Name", "Amount"}, {{"Iron", "1"}, {"Gold", "2"}});
        g.userEdit(1, 2, NoneEntry);
        QCOMPARE(g.lastDataRow(), 2);
    }

    void validate_data() {
        QTest::addColumn<QString>("grid");
        QTest::addColumn<QList<QStringList>>("rows");
        QTest::addColumn<QString>("message"); // empty: valid
        QTest::addColumn<int>("style");
        QTest::newRow("complete rows")
            << "ubgMOBs" << QList<QStringList>{{"Iron", "1"}, {"Gold", "2"}} << "" << 0;
        QTest::newRow("duplicate in another letter case")
            << "ubgMOBs" << QList<QStringList>{{"Iron", "1"}, {"Gold", "1"}, {"iron", "2"}}
            << "Test List:\r\nThe value 'iron' appears more than once in the Name list, please remove one"
            << int(vb::Exclamation);
        QTest::newRow("empty cell names header, row and column")
            << "ubgMOBs" << QList<QStringList>{{"Iron", "1"}, {"Gold", ""}}
            << "Test List:\r\nPlease specify an entry for Amount\r\nRow: 2,  Column: 2"
            << int(vb::Information);
        QTest::newRow("empty first cell is empty, not a duplicate")
            << "ubgMOBs" << QList<QStringList>{{"", "1"}, {"", "2"}}
            << "Test List:\r\nPlease specify an entry for Name\r\nRow: 1,  Column: 1" << int(vb::Information);
        QTest::newRow("same sector at two nav points")
            << "ubgLocations" << QList<QStringList>{{"Aster", "Gate", "Slow"}, {"Aster", "Dock", "Slow"}}
            << "" << 0;
        QTest::newRow("same sector and nav point in another case")
            << "ubgLocations" << QList<QStringList>{{"Aster", "Gate", "Slow"}, {"ASTER", "gate", "Fast"}}
            << "Test List:\r\nThe Sector ASTER already has an entry for Nav Point gate"
            << int(vb::Exclamation);
        QTest::newRow("other grids compare the first column only")
            << "ubgOther" << QList<QStringList>{{"Aster", "Gate", "Slow"}, {"Aster", "Dock", "Slow"}}
            << "Test List:\r\nThe value 'Aster' appears more than once in the Name list, please remove one"
            << int(vb::Exclamation);
    }
    void validate() {
        QFETCH(QString, grid);
        QFETCH(QList<QStringList>, rows);
        QFETCH(QString, message);
        QFETCH(int, style);
        GridModel g(grid);
        fillGrid(g,
                 rows.first().size() == 2 ? QStringList{"Name", "Amount"}
                                          : QStringList{"Name", "Nav Point", "Spawn Rate"},
                 rows, true); // the empty entry row is never checked
        QCOMPARE(ValidateGrid(g, "Test List"), message.isEmpty());
        QCOMPARE(f.prompt().count(), message.isEmpty() ? 0 : 1);
        if (!message.isEmpty()) {
            QCOMPARE(f.prompt().last().text, message);
            QCOMPARE(f.prompt().last().title, QString("Test List Error"));
            QCOMPARE(f.prompt().last().style, style);
        }
    }

    void saveRewritesTheRecordsRows() {
        const QString save = "SELECT MOB_NAME, DROP_FREQUENCY, RAW_MATERIAL_NAME FROM MOB_RAW_MAT_DROP WHERE "
                             "RAW_MATERIAL_NAME = 'Ferrite Ore'";
        QVERIFY2(f.exec({"DELETE FROM MOB_RAW_MAT_DROP WHERE RAW_MATERIAL_NAME = 'Ferrite Ore'",
                         "INSERT INTO MOB_RAW_MAT_DROP (MOB_NAME, RAW_MATERIAL_NAME, DROP_FREQUENCY) VALUES "
                         "('Old Mob', 'Ferrite Ore', 'Rare')"},
                        &m_error),
                 qPrintable(m_error));
        const int others = f.scalar("SELECT COUNT(*) FROM MOB_RAW_MAT_DROP").toInt() - 1;
        GridModel g;
        fillGrid(g, {"Mob Name", "Drop Frequency"}, {{"Pirate's Ghost", "Very Rare"}, {"Hive Queen", ""}});
        QVERIFY(SaveUBGrid(g, save, "RAW_MATERIAL_NAME", "Ferrite Ore"));
        // Cell texts are values: one quote is stored as one; an empty cell stays NULL.
        Recordset rs;
        rs.open(save + " ORDER BY MOB_NAME");
        QStringList stored;
        for (; !rs.eof(); rs.moveNext())
            stored << rs.value(0).toString() + "|" +
                          (rs.isNull(1) ? QString("NULL") : rs.value(1).toString());
        rs.close();
        QCOMPARE(stored, QStringList({"Hive Queen|NULL", "Pirate's Ghost|Very Rare"}));
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM MOB_RAW_MAT_DROP").toInt(), others + 2);
        // A grid whose rows were all removed deletes the record's rows and inserts none.
        GridModel empty;
        fillGrid(empty, {"Mob Name", "Drop Frequency"}, {});
        QVERIFY(SaveUBGrid(empty, save, "RAW_MATERIAL_NAME", "Ferrite Ore"));
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM MOB_RAW_MAT_DROP").toInt(), others);
        QCOMPARE(f.prompt().count(), 0);
    }

    void updateListReplacesTheEntries() {
        QVERIFY2(
            f.exec(
                {"DELETE FROM MINE_LOCATIONS WHERE RAW_MATERIAL = 'Miner''s Gold'",
                 "INSERT INTO MINE_LOCATIONS (RAW_MATERIAL, SECTORS_SECTOR) VALUES ('Miner''s Gold', 'Old')"},
                &m_error),
            qPrintable(m_error));
        QVERIFY(UpdateList({"Kell's Reach", "Aster"}, "MINE_LOCATIONS", "RAW_MATERIAL", "SECTORS_SECTOR",
                           "Miner''s Gold"));
        Recordset rs;
        rs.open("SELECT SECTORS_SECTOR FROM MINE_LOCATIONS WHERE RAW_MATERIAL = 'Miner''s Gold' ORDER BY 1");
        QStringList got;
        for (; !rs.eof(); rs.moveNext())
            got << rs.value(0).toString();
        QCOMPARE(got, QStringList({"Aster", "Kell's Reach"}));
        // A failure is reported under the routine's name.
        QVERIFY(!UpdateList({"x"}, "NO_SUCH_TABLE", "A", "B", "k"));
        QVERIFY(f.prompt().last().text.endsWith("procedure UpdateList of Module modMain"));
    }

    void locationRules() {
        const QString sector = f.scalar("SELECT SECTOR_NAME FROM NAV_POINTS ORDER BY SECTOR_NAME").toString();
        const int points =
            f.scalar("SELECT COUNT(*) FROM NAV_POINTS WHERE SECTOR_NAME = '" + sector + "'").toInt();
        GridModel g("ubgLocations");
        InstallLocationRules(g, "Form frmAddMob");
        fillGrid(g, {"Sector Name", "Nav Point", "Spawn Rate"}, {{"", "", "Slow"}});
        g.addListItem(2, "Stale", "Stale");
        // No sector yet: the nav point cannot be edited.
        QVERIFY(!g.beginUserEdit(1, 2));
        QCOMPARE(f.prompt().last().text, QString("Please set the Sector first."));
        QVERIFY(g.list(2).isEmpty());
        // Choosing a sector rebuilds the nav-point list and empties the row's nav point.
        g.setText(1, 2, "Leftover");
        g.userEdit(1, 1, sector);
        QCOMPARE(g.text(1, 2), QString());
        QCOMPARE(g.listDisplays(2).size(), points + 1);
        QCOMPARE(g.listDisplays(2).first(), NoneEntry);
        QVERIFY(g.beginUserEdit(1, 2));
        QCOMPARE(g.listDisplays(2).size(), points + 1);
        g.userEdit(1, 2, g.listDisplays(2).at(1));
        // Leaving the sector as it was keeps the nav point.
        g.userEdit(1, 1, sector);
        QCOMPARE(g.text(1, 2), g.listDisplays(2).at(1));
        // "(None)" in the sector column removes the row.
        g.userEdit(1, 1, NoneEntry);
        QCOMPARE(g.lastDataRow(), 0);
        QCOMPARE(f.prompt().count(), 1);
    }

private:
    ViewsFixture f;
    QString m_error;
};

QTEST_GUILESS_MAIN(TestGridRoutines)
#include "tst_gridroutines.moc"
