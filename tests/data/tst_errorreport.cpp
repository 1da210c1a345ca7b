#include "core/clock.h"
#include "core/programfolder.h"
#include "core/scriptedprompt.h"
#include "core/settings.h"
#include "data/database.h"
#include "data/errorreport.h"
#include "data/recordset.h"
#include "enginedb.h"
#include "isolatedsettings.h"

#include <QScopeGuard>
#include <QTest>
#include <sqlite3.h>

class TestErrorReport : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() {
        setClock([] { return QDateTime(QDate(2026, 11, 21), QTime(21, 5, 9)); });
    }
    void cleanupTestCase() { setClock({}); }
    void init() {
        m_dir = std::make_unique<QTemporaryDir>();
        setProgramFolder(m_dir->path());
        db().open(enginedb::connectionFor(enginedb::create(*m_dir)));
        m_prompt = std::make_unique<ScriptedPrompt>();
        opt::saveFlag(opt::ReportErrorMessages, false);
        setBugReportOpener({});
    }
    void cleanup() {
        m_prompt.reset();
        db().close();
        m_dir.reset();
    }
    // Each of the four situations, from a real statement on the named constraints or from the bare
    // engine code where no constraint names it.
    void databaseErrorsBecomeShortMessages_data() {
        QTest::addColumn<QString>("sql");
        QTest::addColumn<int>("native"); // used when sql is empty
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("text");
        const QString tooLarge = "One or more of the values entered is too large";
        const QString empty = "One or more of the values entered must not be empty";
        const QString duplicate = "The name of the item you entered already exists, please rename this item";
        const QString invalid = "One or more of the values entered is invalid";
        auto row = [](const char* tag, const QString& sql, int native, const char* title,
                      const QString& text) { QTest::newRow(tag) << sql << native << QString(title) << text; };
        row("text longer than its size",
            "INSERT INTO EQUIPMENTS (EQUIPMENT_NAME) VALUES ('" + QString(101, 'x') + "')", 0, "Too Large",
            tooLarge);
        row("string too big", "", SQLITE_TOOBIG, "Too Large", tooLarge);
        row("name missing", "INSERT INTO EQUIPMENTS (TYPE) VALUES ('Beam')", 0, "Empty Data", empty);
        row("name empty", "INSERT INTO EQUIPMENTS (EQUIPMENT_NAME) VALUES ('')", 0, "Empty Data", empty);
        row("duplicate name", "INSERT INTO EQUIPMENTS (EQUIPMENT_NAME) VALUES ('ember beam')", 0,
            "Duplicate Record", duplicate);
        row("primary key", "", SQLITE_CONSTRAINT_PRIMARYKEY, "Duplicate Record", duplicate);
        row("text in a number column", "UPDATE EQUIPMENTS SET LVL = 'x'", 0, "Invalid Values", invalid);
        row("unquoted word: no such column", "UPDATE EQUIPMENTS SET LVL = abc", 0, "Invalid Values", invalid);
        row("datatype mismatch", "", SQLITE_MISMATCH, "Invalid Values", invalid);
        row("raw parameter text", "UPDATE ITEMS SET LVL = :lvl", 0, "Invalid Values", invalid);
        // Situations without a short message of their own show the engine's text, with the place.
        const QString other =
            "Database Error: -2147467259(%1)\r\nin procedure cmdSave_Click of Form frmAddEquip";
        row("syntax", "SELEC 1", 0, "VOSK", other.arg("near \"SELEC\": syntax error"));
        row("NUL outside a literal",
            "DELETE FROM CLASSES" + QString(QChar(0)) + " WHERE CLASS_NAME = 'Hauler'", 0, "VOSK",
            other.arg("Invalid character in SQL statement: a NUL outside a quoted text."));
    }
    void databaseErrorsBecomeShortMessages() {
        QFETCH(QString, sql);
        QFETCH(int, native);
        QFETCH(QString, title);
        QFETCH(QString, text);
        QVERIFY(!QFile::exists(errorLogPath())); // the log is created on first use
        try {
            if (sql.isEmpty()) {
                const ErrorRecord r = Database::makeRecord(native, QString::fromUtf8(sqlite3_errstr(native)));
                db().addError(r);
                throw VbError(r.Number, r.Description);
            }
            db().execute(sql);
            QFAIL("no error");
        } catch (const VbError& e) {
            ReportDBError(e, "cmdSave_Click", "Form frmAddEquip");
        }
        QCOMPARE(m_prompt->count(), 1);
        QCOMPARE(m_prompt->last().text, text);
        QCOMPARE(m_prompt->last().title, title);
        QCOMPARE(m_prompt->last().style, title == "VOSK" ? 0 : 64);
        QVERIFY(db().errors().isEmpty());
        QCOMPARE(logLines().size(), 1);
    }
    // The log is opened for appending: what is there stays, and each report adds exactly one line.
    void everyReportAppendsOneLine() {
        QFile log(errorLogPath());
        QVERIFY(log.open(QIODevice::WriteOnly) &&
                log.write("Error 1 (earlier) in procedure P of Form frmMain\n") > 0);
        log.close();
        ReportDBError(VbError(53, "File not found"), "LoadPage", "Class Module clsVLInterface");
        db().addError(
            Database::makeRecord(SQLITE_CONSTRAINT_UNIQUE, "UNIQUE constraint failed: ITEMS.ITEM_NAME"));
        ReportDBError(VbError(hr::Fail, "UNIQUE constraint failed: ITEMS.ITEM_NAME"), "cmdSave_Click",
                      "Form frmAddItem");
        QCOMPARE(
            logLines(),
            QStringList({"Error 1 (earlier) in procedure P of Form frmMain",
                         "Error 53 (File not found) in procedure LoadPage of Class Module clsVLInterface "
                         "2026-11-21 21:05:09",
                         "Error -2147467259 (UNIQUE constraint failed: ITEMS.ITEM_NAME) in procedure "
                         "cmdSave_Click of Form frmAddItem 2026-11-21 21:05:09"}));
    }
    // A save handler lists the records before it rolls back, rolls back, then reports them in one box
    // and one log line.
    void saveHandlerRollsBackThenReports() {
        db().beginTrans();
        QString lines;
        try {
            db().execute("UPDATE EQUIPMENTS SET UPDATED = TRUE WHERE EQUIPMENT_NAME = 'Ember Beam'");
            db().execute("INSERT INTO EQUIPMENTS (EQUIPMENT_NAME) VALUES ('Hunter''s Lance')");
            QFAIL("no error");
        } catch (const VbError& e) {
            ErrorRecord withHelp = Database::makeRecord(SQLITE_ERROR, "no such column: abc");
            withHelp.HelpFile = "vosk.hlp";
            withHelp.HelpContext = 12;
            db().addError(withHelp);
            lines = DescribeErrorRecords();
            db().rollbackTrans();
            ReportDBError(e, "cmdSave_Click", "Form frmAddEquip");
        }
        QCOMPARE(lines,
                 QStringLiteral("Error #-2147467259\r (Source: VOSK SQLite Provider)\r (SQL State: 23000)\r"
                                " (NativeError: 2067)\r No Help file available\r"
                                "Error #-2147217904\r (Source: VOSK SQLite Provider)\r (SQL State: 42S22)\r"
                                " (NativeError: 1)\r (HelpFile: vosk.hlp)\r (HelpContext: 12)\r"));
        QCOMPARE(m_prompt->count(), 1);
        QCOMPARE(m_prompt->last().text,
                 QStringLiteral("The following database errors have occureind: \r\n"
                                "Error -2147467259 (UNIQUE constraint failed: EQUIPMENTS.EQUIPMENT_NAME)\r\n"
                                "Error -2147217904 (no such column: abc)\r\n"
                                " in procedure cmdSave_Click of Form frmAddEquip"));
        QCOMPARE(m_prompt->last().style, 0);
        QCOMPARE(m_prompt->last().title, QStringLiteral("VOSK"));
        QCOMPARE(logLines(),
                 QStringList{"Error -2147467259 (UNIQUE constraint failed: EQUIPMENTS.EQUIPMENT_NAME) in "
                             "procedure cmdSave_Click of Form frmAddEquip 2026-11-21 21:05:09"});
        QVERIFY(db().errors().isEmpty());
        QVERIFY(!db().inTransaction());
        Recordset rs;
        rs.open("SELECT COUNT(*) FROM EQUIPMENTS WHERE UPDATED = TRUE");
        QCOMPARE(rs.intValue(0), 0); // the first write of the save was rolled back too
    }
    void runTimeErrorsAndTheBugReport() {
        QString description, number;
        setBugReportOpener([&](const QString& d, const QString& n) { description = d, number = n; });
        const auto forget = qScopeGuard([] { setBugReportOpener({}); }); // it refers to this function's texts
        ReportDBError(VbError(3021, "No current record."), "ViewEquipDetails", "Module modMain");
        QCOMPARE(
            m_prompt->last().text,
            QStringLiteral("Error 3021 (No current record.)  procedure ViewEquipDetails of Module modMain"));
        QCOMPARE(m_prompt->last().style, 0);
        QVERIFY(number.isEmpty()); // ReportErrorMessages is off
        ReportDBError(std::runtime_error("bad thing"), "Load", "Form frmMain");
        QCOMPARE(m_prompt->last().text,
                 QStringLiteral("Error 5 (bad thing)  procedure Load of Form frmMain"));

        opt::saveFlag(opt::ReportErrorMessages, true);
        const VbError e(53, "File not found"); // keeps its number when caught as a std::exception
        ReportDBError(static_cast<const std::exception&>(e), "LoadPage", "Class Module clsVLInterface");
        QCOMPARE(description,
                 QStringLiteral("File not found >procedure LoadPage of Class Module clsVLInterface"));
        QCOMPARE(number, QStringLiteral("53"));
        description.clear(); // a database error never opens it
        db().addError(Database::makeRecord(SQLITE_ERROR, "no such table: X"));
        ReportDBError(VbError(hr::Fail, "no such table: X"), "P", "Form frmMain");
        QVERIFY(description.isEmpty());
        QCOMPARE(m_prompt->count(), 4);
    }

private:
    QStringList logLines() const {
        QFile f(errorLogPath());
        if (!f.open(QIODevice::ReadOnly))
            return {};
        return QString::fromLatin1(f.readAll()).split('\n', Qt::SkipEmptyParts);
    }
    IsolatedSettings m_settings;
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<ScriptedPrompt> m_prompt;
};

QTEST_GUILESS_MAIN(TestErrorReport)
#include "tst_errorreport.moc"
