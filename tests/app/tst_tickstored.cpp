// A tick that stores nothing is a failed tick: the box goes back and the player is told, as for a
// tick the database refuses.
#include "app/frmmain.h"
#include "core/programfolder.h"
#include "core/scriptedprompt.h"
#include "data/database.h"
#include "data/recordset.h"
#include "data/sampledata.h"
#include "data/schema.h"
#include "isolatedsettings.h"
#include "lists/listmodel.h"

#include <QComboBox>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>
#include <sqlite3.h>

class TestTickStored : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() {
        QVERIFY(m_dir.isValid() && m_settings.isValid());
        setProgramFolder(m_dir.path());
        QString error;
        QVERIFY2(CreateDatabase(databasePath(), &error) && FillSampleData(databasePath(), &error),
                 qPrintable(error));
        db().open("Provider=VOSK.SQLite;Data Source=" + databasePath() + ";");
    }
    void cleanupTestCase() { db().close(); }

    // The record went away behind the list's back (deleted or renamed elsewhere): the UPDATE finds no
    // row. The same happens to a name the database cannot compare with what the list shows.
    void tickOfAMissingRecordIsReportedAndUndone_data() {
        QTest::addColumn<QString>("change");
        QTest::newRow("deleted") << "DELETE FROM ITEMS WHERE ITEM_NAME = '%1'";
        QTest::newRow("renamed") << "UPDATE ITEMS SET ITEM_NAME = 'Zz Elsewhere' WHERE ITEM_NAME = '%1'";
    }

    void tickOfAMissingRecordIsReportedAndUndone() {
        QFETCH(QString, change);
        frmMain w;
        w.cmbData->setCurrentIndex(w.cmbData->findText("Items"));
        ListModel& m = *w.model();
        QVERIFY(m.rowCount() > 0);
        const QString name = m.name(0);
        const bool before = m.isChecked(0);
        db().beginTrans();
        auto restore = qScopeGuard([] { db().rollbackTrans(); });
        db().execute(change.arg(QString(name).replace("'", "''")));
        m_prompt.clear();
        m.setData(m.index(0, 0), before ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
        QCOMPARE(m.isChecked(0), before);
        QCOMPARE(m_prompt.count(), 1);
        QCOMPARE(m_prompt.last().text, "Error 3021 (The tick was not stored: no record named \"" + name +
                                           "\" was found.)  procedure lstItems_ItemCheck of Form frmMain");
        QFile log(errorLogPath());
        QVERIFY(log.open(QIODevice::ReadOnly));
        QVERIFY(log.readAll().contains("in procedure lstItems_ItemCheck of Form frmMain"));
    }

    // A name that would end its literal early (stored before the database refused such names, here
    // with the check switched off) is not ticked: the statement would tick every row.
    void tickOfANameHoldingTwoQuotesIsRefused() {
        const QString name = "Zz x' OR ''='";
        sqlite3_exec(db().handle(), "PRAGMA ignore_check_constraints = ON", nullptr, nullptr, nullptr);
        db().execute("INSERT INTO ITEMS (ITEM_NAME, LVL, CHECK) VALUES ('Zz x'' OR ''''=''', 1, FALSE)");
        sqlite3_exec(db().handle(), "PRAGMA ignore_check_constraints = OFF", nullptr, nullptr, nullptr);
        auto remove = qScopeGuard([] { db().execute("DELETE FROM ITEMS WHERE ITEM_NAME LIKE 'Zz x%'"); });
        const long ticked = count("SELECT COUNT(*) FROM ITEMS WHERE CHECK = TRUE");
        frmMain w;
        w.cmbData->setCurrentIndex(w.cmbData->findText("Items"));
        ListModel& m = *w.model();
        int row = -1;
        for (int r = 0; r < m.rowCount(); ++r)
            if (m.name(r) == name)
                row = r;
        QVERIFY(row >= 0);
        m_prompt.clear();
        m.setData(m.index(row, 0), Qt::Checked, Qt::CheckStateRole);
        QVERIFY(!m.isChecked(row));
        QCOMPARE(m_prompt.last().text,
                 "Error 5 (The tick was not stored: the name \"" + name +
                     "\" holds two single quotes in a row.)  procedure lstItems_ItemCheck "
                     "of Form frmMain");
        QCOMPARE(count("SELECT COUNT(*) FROM ITEMS WHERE CHECK = TRUE"), ticked);
    }

private:
    static long count(const QString& sql) {
        Recordset rs;
        rs.open(sql);
        return long(rs.intValue(0));
    }
    IsolatedSettings m_settings;
    QTemporaryDir m_dir;
    ScriptedPrompt m_prompt;
};

QTEST_MAIN(TestTickStored)
#include "tst_tickstored.moc"
