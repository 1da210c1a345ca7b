#include "core/clock.h"
#include "core/programfolder.h"
#include "core/scriptedprompt.h"
#include "core/settings.h"
#include "data/database.h"
#include "data/errorreport.h"
#include "data/recordset.h"
#include "enginedb.h"

#include <QSettings>
#include <QTest>
#include <sqlite3.h>

class TestErrorReport : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void databaseErrorsBecomeShortMessages_data();
    void databaseErrorsBecomeShortMessages();
    void engineCodesWithoutConstraintName_data();
    void engineCodesWithoutConstraintName();
    void otherDatabaseErrorShowsItsText();
    void twoRecordsInOneBox();
    void saveHandlerRollsBackThenReports();
    void runTimeErrorWithoutBugReport();
    void runTimeErrorOpensBugReportWhenAsked();
    void otherExceptionsAreError5();
    void logGetsOneLinePerReport();
    void describesErrorRecordsForEditors();

private:
    QStringList logLines() const;
    QTemporaryDir m_settings;
    QTemporaryDir* m_dir = nullptr;
    ScriptedPrompt* m_prompt = nullptr;
};

void TestErrorReport::initTestCase() {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_settings.path());
    setClock([] { return QDateTime(QDate(2026, 11, 21), QTime(21, 5, 9)); });
}

void TestErrorReport::init() {
    m_dir = new QTemporaryDir;
    setProgramFolder(m_dir->path());
    db().open(enginedb::connectionFor(enginedb::create(*m_dir)));
    m_prompt = new ScriptedPrompt;
    opt::saveFlag(opt::ReportErrorMessages, false);
    setBugReportOpener({});
}

void TestErrorReport::cleanup() {
    delete m_prompt;
    db().close();
    delete m_dir;
}

QStringList TestErrorReport::logLines() const {
    QFile f(errorLogPath());
    if (!f.open(QIODevice::ReadOnly))
        return {};
    QStringList lines = QString::fromLatin1(f.readAll()).split('\n');
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

// Each of the four situations, caused by a real statement on the schema's named constraints.
void TestErrorReport::databaseErrorsBecomeShortMessages_data() {
    QTest::addColumn<QString>("sql");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");
    const QString tooLarge = "One or more of the values entered is too large";
    const QString empty = "One or more of the values entered must not be empty";
    const QString duplicate = "The name of the item you entered already exists, please rename this item";
    const QString invalid = "One or more of the values entered is invalid";
    QTest::newRow("text longer than its size") << "INSERT INTO EQUIPMENTS (EQUIPMENT_NAME) VALUES ('" +
                                                      QString(101, 'x') + "')"
                                               << "Too Large" << tooLarge;
    QTest::newRow("name missing") << "INSERT INTO EQUIPMENTS (TYPE) VALUES ('Beam')" << "Empty Data" << empty;
    QTest::newRow("name empty") << "INSERT INTO EQUIPMENTS (EQUIPMENT_NAME) VALUES ('')" << "Empty Data" << empty;
    QTest::newRow("duplicate name") << "INSERT INTO EQUIPMENTS (EQUIPMENT_NAME) VALUES ('ember beam')"
                                    << "Duplicate Record" << duplicate;
    QTest::newRow("text in a number column") << "UPDATE EQUIPMENTS SET LVL = 'x' WHERE EQUIPMENT_NAME = 'Ember Beam'"
                                             << "Invalid Values" << invalid;
    QTest::newRow("unquoted word: no such column")
        << "UPDATE EQUIPMENTS SET LVL = abc WHERE EQUIPMENT_NAME = 'Ember Beam'" << "Invalid Values" << invalid;
}

void TestErrorReport::databaseErrorsBecomeShortMessages() {
    QFETCH(QString, sql);
    QFETCH(QString, title);
    QFETCH(QString, text);
    try {
        db().execute(sql);
        QFAIL("no error");
    } catch (const VbError& e) {
        ReportDBError(e, "cmdSave_Click", "Form frmAddEquip");
    }
    QCOMPARE(m_prompt->count(), 1);
    QCOMPARE(m_prompt->last().text, text);
    QCOMPARE(m_prompt->last().title, title);
    QCOMPARE(m_prompt->last().style, 64);
    QVERIFY(db().errors().isEmpty());
    QCOMPARE(logLines().size(), 1);
}

void TestErrorReport::engineCodesWithoutConstraintName_data() {
    QTest::addColumn<long>("native");
    QTest::addColumn<long>("number");
    QTest::addColumn<QString>("title");
    QTest::newRow("string or blob too big") << long(SQLITE_TOOBIG) << hr::Fail << "Too Large";
    QTest::newRow("primary key") << long(SQLITE_CONSTRAINT_PRIMARYKEY) << hr::Fail << "Duplicate Record";
    QTest::newRow("datatype mismatch") << long(SQLITE_MISMATCH) << hr::MissingValue << "Invalid Values";
}

void TestErrorReport::engineCodesWithoutConstraintName() {
    QFETCH(long, native);
    QFETCH(long, number);
    QFETCH(QString, title);
    ErrorRecord r = Database::makeRecord(int(native), QString::fromUtf8(sqlite3_errstr(int(native))));
    QCOMPARE(r.Number, number);
    db().addError(r);
    ReportDBError(VbError(r.Number, r.Description), "P", "Module modMain");
    QCOMPARE(m_prompt->last().title, title);
    QCOMPARE(m_prompt->last().style, 64);
}

void TestErrorReport::otherDatabaseErrorShowsItsText() {
    try {
        db().execute("SELEC 1");
        QFAIL("no error");
    } catch (const VbError& e) {
        ReportDBError(e, "RefreshGrid", "Form frmMain");
    }
    QCOMPARE(m_prompt->last().text, QStringLiteral("Database Error: -2147467259(near \"SELEC\": syntax error)\r\n"
                                                   "in procedure RefreshGrid of Form frmMain"));
    QCOMPARE(m_prompt->last().title, QStringLiteral("VOSK"));
    QCOMPARE(m_prompt->last().style, 0);
    QCOMPARE(logLines(), QStringList{"Error -2147467259 (near \"SELEC\": syntax error) in procedure RefreshGrid of "
                                     "Form frmMain 2026-11-21 21:05:09"});
}

void TestErrorReport::twoRecordsInOneBox() {
    db().addError(Database::makeRecord(SQLITE_CONSTRAINT_UNIQUE, "UNIQUE constraint failed: ITEMS.ITEM_NAME"));
    db().addError(Database::makeRecord(SQLITE_ERROR, "no such column: abc"));
    ReportDBError(VbError(hr::Fail, "UNIQUE constraint failed: ITEMS.ITEM_NAME"), "cmdSave_Click", "Form frmAddItem");
    QCOMPARE(m_prompt->count(), 1);
    QCOMPARE(m_prompt->last().text,
             QStringLiteral("The following database errors have occureind: \r\n"
                            "Error -2147467259 (UNIQUE constraint failed: ITEMS.ITEM_NAME)\r\n"
                            "Error -2147217904 (no such column: abc)\r\n"
                            " in procedure cmdSave_Click of Form frmAddItem"));
    QCOMPARE(m_prompt->last().style, 0);
    QCOMPARE(m_prompt->last().title, QStringLiteral("VOSK"));
    QVERIFY(db().errors().isEmpty());
}

void TestErrorReport::saveHandlerRollsBackThenReports() {
    db().beginTrans();
    QString lines;
    try {
        db().execute("UPDATE EQUIPMENTS SET UPDATED = TRUE WHERE EQUIPMENT_NAME = 'Ember Beam'");
        db().execute("INSERT INTO EQUIPMENTS (EQUIPMENT_NAME) VALUES ('Hunter''s Lance')");
        QFAIL("no error");
    } catch (const VbError& e) {
        lines = DescribeErrorRecords();
        db().rollbackTrans();
        ReportDBError(e, "cmdSave_Click", "Form frmAddEquip");
    }
    QVERIFY(lines.startsWith("Error #-2147467259\r (Source: VOSK SQLite Provider)\r (SQL State: 23000)\r"));
    QCOMPARE(m_prompt->last().title, QStringLiteral("Duplicate Record"));
    QVERIFY(!db().inTransaction());
    Recordset rs;
    rs.open("SELECT COUNT(*) FROM EQUIPMENTS WHERE UPDATED = TRUE");
    QCOMPARE(rs.intValue(0), 0); // the first write of the save was rolled back too
}

void TestErrorReport::runTimeErrorWithoutBugReport() {
    int opened = 0;
    setBugReportOpener([&](const QString&, const QString&) { ++opened; });
    ReportDBError(VbError(3021, "No current record."), "ViewEquipDetails", "Module modMain");
    QCOMPARE(m_prompt->last().text,
             QStringLiteral("Error 3021 (No current record.)  procedure ViewEquipDetails of Module modMain"));
    QCOMPARE(m_prompt->last().style, 0);
    QCOMPARE(opened, 0);
}

void TestErrorReport::runTimeErrorOpensBugReportWhenAsked() {
    opt::saveFlag(opt::ReportErrorMessages, true);
    QString description, number;
    setBugReportOpener([&](const QString& d, const QString& n) {
        description = d;
        number = n;
    });
    ReportDBError(VbError(53, "File not found"), "LoadPage", "Class Module clsVLInterface");
    QCOMPARE(m_prompt->count(), 1);
    QCOMPARE(description, QStringLiteral("File not found >procedure LoadPage of Class Module clsVLInterface"));
    QCOMPARE(number, QStringLiteral("53"));
    // A database error never opens it.
    description.clear();
    db().addError(Database::makeRecord(SQLITE_ERROR, "no such table: X"));
    ReportDBError(VbError(hr::Fail, "no such table: X"), "P", "Form frmMain");
    QVERIFY(description.isEmpty());
}

void TestErrorReport::otherExceptionsAreError5() {
    ReportDBError(std::runtime_error("bad thing"), "Load", "Form frmMain");
    QCOMPARE(m_prompt->last().text, QStringLiteral("Error 5 (bad thing)  procedure Load of Form frmMain"));
    // A VbError passed as a std::exception keeps its number.
    const VbError e(94, "Invalid use of Null");
    ReportDBError(static_cast<const std::exception&>(e), "Load", "Form frmMain");
    QCOMPARE(m_prompt->last().text, QStringLiteral("Error 94 (Invalid use of Null)  procedure Load of Form frmMain"));
}

void TestErrorReport::logGetsOneLinePerReport() {
    QVERIFY(!QFile::exists(errorLogPath()));
    ReportDBError(VbError(5, "first"), "A", "Form frmA");
    QVERIFY(QFile::exists(errorLogPath())); // created on first use
    db().addError(Database::makeRecord(SQLITE_CONSTRAINT_UNIQUE, "UNIQUE constraint failed: ITEMS.ITEM_NAME"));
    ReportDBError(VbError(hr::Fail, "UNIQUE constraint failed: ITEMS.ITEM_NAME"), "cmdSave_Click", "Form frmAddItem");
    db().addError(Database::makeRecord(SQLITE_ERROR, "x"));
    db().addError(Database::makeRecord(SQLITE_ERROR, "y"));
    ReportDBError(VbError(hr::Fail, "x"), "B", "Module modMain");
    QCOMPARE(logLines(), (QStringList{
                             "Error 5 (first) in procedure A of Form frmA 2026-11-21 21:05:09",
                             "Error -2147467259 (UNIQUE constraint failed: ITEMS.ITEM_NAME) in procedure cmdSave_Click "
                             "of Form frmAddItem 2026-11-21 21:05:09",
                             "Error -2147467259 (x) in procedure B of Module modMain 2026-11-21 21:05:09",
                         }));
    QCOMPARE(m_prompt->count(), 3);
}

void TestErrorReport::describesErrorRecordsForEditors() {
    db().addError(Database::makeRecord(SQLITE_CONSTRAINT_NOTNULL, "NOT NULL constraint failed: ITEMS.ITEM_NAME"));
    ErrorRecord withHelp = Database::makeRecord(SQLITE_ERROR, "x");
    withHelp.HelpFile = "vosk.hlp";
    withHelp.HelpContext = 12;
    db().addError(withHelp);
    QCOMPARE(DescribeErrorRecords(), QStringLiteral("Error #-2147467259\r"
                                                    " (Source: VOSK SQLite Provider)\r"
                                                    " (SQL State: 23000)\r"
                                                    " (NativeError: 1299)\r"
                                                    " No Help file available\r"
                                                    "Error #-2147467259\r"
                                                    " (Source: VOSK SQLite Provider)\r"
                                                    " (SQL State: 42000)\r"
                                                    " (NativeError: 1)\r"
                                                    " (HelpFile: vosk.hlp)\r"
                                                    " (HelpContext: 12)\r"));
    db().clearErrors();
}

QTEST_GUILESS_MAIN(TestErrorReport)
#include "tst_errorreport.moc"
