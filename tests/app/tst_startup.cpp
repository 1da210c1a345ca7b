// Start-up and shutdown: the single-instance lock, the database file checks, the schema version
// check, the splash and preloading, ShutDown, and the character check.
#include "app/frmsplash.h"
#include "app/modinit.h"
#include "app/modmain_app.h"
#include "app/singleinstance.h"
#include "core/imagestore.h"
#include "core/programfolder.h"
#include "core/scriptedprompt.h"
#include "core/settings.h"
#include "data/database.h"
#include "data/recordset.h"
#include "data/schema.h"
#include "views/childwindows.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLockFile>
#include <QPointer>
#include <QProgressBar>
#include <QTemporaryDir>
#include <QTest>
#include <filesystem>
#include <memory>

namespace fs = std::filesystem;

class TestStartup : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void connectionTextUnscramblesTheProvider();
    void unscrambleIsItsOwnInverse_data();
    void unscrambleIsItsOwnInverse();

    void secondInstanceShowsOnlyTheBox();
    void missingDatabaseIsReportedAndNotCreated();
    void fileThatIsNotADatabaseIsReported();
    void readOnlyDatabaseAsks_data();
    void readOnlyDatabaseAsks();
    void schemaVersion_data();
    void schemaVersion();
    void versionCheckErrorIsReportedAsModMain();

    void withoutPreloadingNothingIsLoadedAndTheSplashWaits();
    void preloadFetchesEveryIndexUpToTheCount();
    void shutDownClosesConnectionWindowsAndLock();
    void shutDownUnloadsEveryKindOfWindow();

    void checkCharactersWithACharacterAsksNothing();
    void checkCharactersLoopsOnEmptyAnswers();
    void checkCharactersNoShutsDown();
    void checkCharactersKeepsAQuote();

private:
    void makeDatabase(const QList<int>& versions = {6});
    void runSql(const QString& sql);
    QStringList characters();
    int visibleWindows() const;
    static void flushDeletes();

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<ScriptedPrompt> m_prompt;
    QTemporaryDir m_home;
    QPointer<QWidget> m_main;
    int m_mainMade = 0;
};

const QString RunVOSKFailure = QStringLiteral(") in procedure RunVOSK of Module modInit");

void TestStartup::initTestCase() {
    // The settings store and the instance lock of the user running the tests stay untouched.
    QVERIFY(m_home.isValid());
    qputenv("XDG_CONFIG_HOME", m_home.filePath("config").toLocal8Bit());
    qputenv("HOME", m_home.path().toLocal8Bit());
    setInstanceLockPath(m_home.filePath("VOSK.instance.lock"));
    setWindowUnloader(&UnloadAllWindows);
    setMainWindowFactory([this] {
        ++m_mainMade;
        auto* w = new QWidget;
        w->setWindowTitle("stand-in main window");
        m_main = w;
        return w;
    });
}

void TestStartup::init() {
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    setProgramFolder(m_folder->path());
    ImageStore::instance().release();
    DeleteAllSettings();
    m_prompt = std::make_unique<ScriptedPrompt>();
    m_mainMade = 0;
    setPreloadObserver({});
}

void TestStartup::cleanup() {
    ShutDown();
    flushDeletes();
    QCOMPARE(visibleWindows(), 0);
    m_prompt.reset();
    m_folder.reset();
}

void TestStartup::flushDeletes() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

int TestStartup::visibleWindows() const {
    int n = 0;
    for (QWidget* w : QApplication::topLevelWidgets())
        n += w->isVisible() ? 1 : 0;
    return n;
}

void TestStartup::makeDatabase(const QList<int>& versions) {
    QString error;
    QVERIFY2(CreateDatabase(databasePath(), &error), qPrintable(error));
    runSql("DELETE FROM DB_VERSION");
    for (int v : versions)
        runSql(QString("INSERT INTO DB_VERSION (VERSION) VALUES (%1)").arg(v));
}

void TestStartup::runSql(const QString& sql) {
    Database other;
    other.open("Data Source=" + databasePath() + ";");
    other.execute(sql);
}

QStringList TestStartup::characters() {
    QStringList names;
    Recordset rs;
    rs.open("SELECT CHARACTER_NAME FROM CHARACTERS");
    for (; !rs.eof(); rs.moveNext())
        names << rs.value(0).toString();
    return names;
}

void TestStartup::connectionTextUnscramblesTheProvider() {
    const QString prefix = ProviderPrefix();
    QVERIFY(prefix.startsWith("Provider="));
    QVERIFY(prefix.endsWith(";"));
    QVERIFY(!prefix.contains("Data Source", Qt::CaseInsensitive));
    QCOMPARE(ConnectionText(), prefix + "Data Source=" + m_folder->path() + QDir::separator() + "data.vosk;");
}

void TestStartup::unscrambleIsItsOwnInverse_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("plain") << QString("Provider=X;");
    QTest::newRow("latin-1") << QString::fromLatin1("\xe9t\xe9 \xff");
    QTest::newRow("beyond latin-1 kept") << QString::fromUtf8("Ж");
}

void TestStartup::unscrambleIsItsOwnInverse() {
    QFETCH(QString, text);
    const QString once = Unscramble(text);
    QCOMPARE(once.size(), text.size());
    QCOMPARE(Unscramble(once), text);
    for (qsizetype i = 0; i < text.size(); ++i)
        if (text.at(i).unicode() < 256)
            QVERIFY(once.at(i) != text.at(i));
}

void TestStartup::secondInstanceShowsOnlyTheBox() {
    makeDatabase();
    QLockFile other(instanceLockPath());
    QVERIFY(other.tryLock(0));
    RunVOSK();
    QCOMPARE(m_prompt->count(), 1);
    QCOMPARE(m_prompt->last().text, QString("VOSK is already running\r\nOnly one instance may be used at a time"));
    QCOMPARE(m_prompt->last().title, QString("VOSK is Already Running"));
    QCOMPARE(m_prompt->last().style, 64);
    QVERIFY(!db().isOpen());
    QCOMPARE(m_mainMade, 0);
    QCOMPARE(visibleWindows(), 0);
}

void TestStartup::missingDatabaseIsReportedAndNotCreated() {
    RunVOSK();
    QCOMPARE(m_prompt->count(), 1);
    QCOMPARE(m_prompt->last().text, "Error 53 (File not found" + RunVOSKFailure);
    QCOMPARE(m_prompt->last().title, QString("VOSK"));
    QCOMPARE(m_prompt->last().style, 0);
    QVERIFY(!QFile::exists(databasePath()));
    QVERIFY(!db().isOpen());
    QCOMPARE(m_mainMade, 0);
}

void TestStartup::fileThatIsNotADatabaseIsReported() {
    QFile f(databasePath());
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write("this is a letter, not a database\n");
    f.close();
    RunVOSK();
    QCOMPARE(m_prompt->count(), 1);
    const QString text = m_prompt->last().text;
    QVERIFY2(text.startsWith("Error ") && text.endsWith(RunVOSKFailure), qPrintable(text));
    QVERIFY2(text.contains("not a database"), qPrintable(text));
    QVERIFY(!db().isOpen());
    QCOMPARE(m_mainMade, 0);
    QCOMPARE(f.size(), qint64(33)); // left as it was
}

void TestStartup::readOnlyDatabaseAsks_data() {
    QTest::addColumn<int>("answer");
    QTest::addColumn<int>("modeBefore");
    QTest::addColumn<int>("modeAfter");
    QTest::newRow("yes gives write back, keeps group and other bits") << int(vb::Yes) << 0454 << 0654;
    QTest::newRow("yes keeps the set-group-id bit") << int(vb::Yes) << 02444 << 02644;
    QTest::newRow("no leaves the file and goes on") << int(vb::No) << 0444 << 0444;
}

void TestStartup::readOnlyDatabaseAsks() {
    QFETCH(int, answer);
    QFETCH(int, modeBefore);
    QFETCH(int, modeAfter);
    makeDatabase();
    const fs::path file(databasePath().toStdString());
    fs::permissions(file, fs::perms(modeBefore), fs::perm_options::replace);
    m_prompt->queueButton(answer);
    RunVOSK();
    const auto mode = int(fs::status(file).permissions() & fs::perms::mask);
    fs::permissions(file, fs::perms(0644), fs::perm_options::replace);
    QVERIFY(m_prompt->count() >= 1);
    const auto asked = m_prompt->calls().first();
    QCOMPARE(asked.text, QString("The database file is currently set to read-only. Running VOSK with a read-only "
                                 "database could cause potential problems.\r\nWould you like to remove the "
                                 "read-only attribute from the file?"));
    QCOMPARE(asked.title, QString("Read-Only Database"));
    QCOMPARE(asked.style, 36);
    QCOMPARE(QString::number(mode, 8), QString::number(modeAfter, 8));
    // Either way start-up carries on to the main window.
    QCOMPARE(m_prompt->count(), 1);
    QVERIFY(db().isOpen());
    QVERIFY(m_main && m_main->isVisible());
}

void TestStartup::schemaVersion_data() {
    QTest::addColumn<QList<int>>("versions");
    QTest::addColumn<bool>("compatible");
    QTest::newRow("6") << QList<int>{6} << true;
    QTest::newRow("5 and 6: only the newest counts") << QList<int>{5, 6} << true;
    QTest::newRow("5") << QList<int>{5} << false;
    QTest::newRow("7") << QList<int>{7} << false;
    QTest::newRow("6 and 7") << QList<int>{6, 7} << false;
    QTest::newRow("empty table") << QList<int>{} << false;
}

void TestStartup::schemaVersion() {
    QFETCH(QList<int>, versions);
    QFETCH(bool, compatible);
    makeDatabase(versions);
    RunVOSK();
    if (compatible) {
        QCOMPARE(m_prompt->count(), 0);
        QVERIFY(db().isOpen());
        QCOMPARE(m_mainMade, 1);
        QVERIFY(m_main && m_main->isVisible());
        QVERIFY(CheckDBComp());
        return;
    }
    QCOMPARE(m_prompt->count(), 1);
    QCOMPARE(m_prompt->last().text,
             QString("The database is not compatible with the VOSK program.\r\n"
                     "If you are using a previous database, please be sure you have upgraded it using the DB "
                     "Upgrade tool.\r\nIf this problem persists, please contact VOSK Support."));
    QCOMPARE(m_prompt->last().title, QString("Incompatible Database"));
    QCOMPARE(m_prompt->last().style, 64);
    QVERIFY(!db().isOpen()); // ShutDown has run
    QCOMPARE(m_mainMade, 0);
    QCOMPARE(visibleWindows(), 0);
}

void TestStartup::versionCheckErrorIsReportedAsModMain() {
    makeDatabase();
    runSql("DROP TABLE DB_VERSION");
    db().open(ConnectionText());
    QVERIFY(!CheckDBComp());
    QCOMPARE(m_prompt->count(), 1);
    QFile log(errorLogPath());
    QVERIFY(log.open(QIODevice::ReadOnly));
    const QString line = QString::fromUtf8(log.readAll());
    QVERIFY2(line.contains("CheckDBComp") && line.contains("Module modMain"), qPrintable(line));
}

void TestStartup::withoutPreloadingNothingIsLoadedAndTheSplashWaits() {
    makeDatabase();
    int fetched = 0;
    setPreloadObserver([&](long) { ++fetched; });
    RunVOSK();
    QCOMPARE(fetched, 0);
    QVERIFY(m_main && m_main->isVisible());
    // RunVOSK leaves the splash to close itself once the main window is up.
    QPointer<frmSplash> splash = splashWindow();
    QVERIFY(splash);
    QCOMPARE(splash->parentWidget(), m_main.data());
    flushDeletes();
    QVERIFY(!splash || !splash->isVisible());
}

void TestStartup::preloadFetchesEveryIndexUpToTheCount() {
    makeDatabase();
    QDir().mkpath(programFolder() + "/images/ITEM_ICON");
    QImage icon(8, 8, QImage::Format_RGB32);
    icon.fill(Qt::red);
    for (int i = 0; i < 4; ++i)
        QVERIFY(icon.save(programFolder() + QString("/images/ITEM_ICON/%1.gif").arg(i), "PNG"));
    opt::saveFlag(opt::PreloadImages, true);

    QList<long> indices;
    int maximum = -1, lastValue = -1;
    bool mainShownDuringLoop = false;
    setPreloadObserver([&](long i) {
        indices << i;
        if (frmSplash* s = splashWindow()) {
            maximum = s->progressBar()->maximum();
            lastValue = s->progressBar()->value();
        }
        mainShownDuringLoop = mainShownDuringLoop || (m_main && m_main->isVisible());
    });
    RunVOSK();
    QCOMPARE(indices, (QList<long>{0, 1, 2, 3, 4}));
    QCOMPARE(maximum, 4);
    QCOMPARE(lastValue, 3); // the bar is set after each fetch
    QVERIFY(!mainShownDuringLoop);
    QVERIFY(!splashWindow() || !splashWindow()->isVisible());
    QVERIFY(m_main && m_main->isVisible());
    QVERIFY(!GetItemIcon(2).isNull());
}

void TestStartup::shutDownClosesConnectionWindowsAndLock() {
    makeDatabase();
    RunVOSK();
    QVERIFY(db().isOpen());
    QPointer<QWidget> main = m_main;
    QVERIFY(main && main->isVisible());
    ShutDown();
    QVERIFY(!db().isOpen());
    QVERIFY(!main || !main->isVisible());
    flushDeletes();
    QVERIFY(!main); // the main window is unloaded, not just hidden
    QLockFile again(instanceLockPath());
    QVERIFY(again.tryLock(0));
}

namespace {
// A window whose close handler says no (an editor with unsaved changes, say).
struct StubbornWindow : QWidget {
    void closeEvent(QCloseEvent* e) override { e->ignore(); }
};
} // namespace

void TestStartup::shutDownUnloadsEveryKindOfWindow() {
    makeDatabase();
    RunVOSK();
    auto* record = new QWidget;
    record->setAttribute(Qt::WA_DeleteOnClose);
    record->setWindowTitle("Equipment: Field Welder");
    RegisterChildWindow(record);
    record->show();
    auto* loadedNotShown = new QWidget;
    loadedNotShown->setAttribute(Qt::WA_DeleteOnClose);
    StubbornWindow stubborn;
    stubborn.show();
    QPointer<QWidget> r = record, hidden = loadedNotShown, main = m_main;
    ShutDown();
    flushDeletes();
    QVERIFY(!r);
    QVERIFY(!hidden);
    QVERIFY(!main);
    QVERIFY(!stubborn.isVisible()); // hidden when it will not close
    QVERIFY(!FindChildWindow("Equipment: Field Welder"));
}

void TestStartup::checkCharactersWithACharacterAsksNothing() {
    makeDatabase();
    runSql("INSERT INTO CHARACTERS (CHARACTER_NAME) VALUES ('Nyx')");
    db().open(ConnectionText());
    CheckCharacters();
    QCOMPARE(m_prompt->count(), 0);
    QCOMPARE(characters(), QStringList{"Nyx"});
}

void TestStartup::checkCharactersLoopsOnEmptyAnswers() {
    makeDatabase();
    db().open(ConnectionText());
    m_prompt->queueText("");
    m_prompt->queueButton(vb::Yes);
    m_prompt->queueText(""); // a cancelled box answers empty too
    m_prompt->queueButton(vb::Yes);
    m_prompt->queueText("Kestrel");
    CheckCharacters();
    const auto& calls = m_prompt->calls();
    QCOMPARE(calls.size(), 5);
    for (int i : {0, 2, 4}) {
        QCOMPARE(calls[i].kind, ScriptedPrompt::Kind::InputBox);
        QCOMPARE(calls[i].text, QString("Please enter the name of your in-game character"));
        QCOMPARE(calls[i].title, QString("Character Name"));
        QCOMPARE(calls[i].extra, QString());
    }
    for (int i : {1, 3}) {
        QCOMPARE(calls[i].kind, ScriptedPrompt::Kind::MsgBox);
        QCOMPARE(calls[i].text, QString("The Character Name entered is invalid. VOSK cannot load without a valid "
                                        "character name. Would you like to try again?"));
        QCOMPARE(calls[i].title, QString("Invalid Character Name"));
        QCOMPARE(calls[i].style, 36);
    }
    QCOMPARE(characters(), QStringList{"Kestrel"});
    QCOMPARE(GetSetting("Settings", "Character"), QString("Kestrel"));
}

void TestStartup::checkCharactersNoShutsDown() {
    makeDatabase();
    db().open(ConnectionText());
    auto* window = new QWidget;
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
    QPointer<QWidget> watch = window;
    m_prompt->queueText("");
    m_prompt->queueButton(vb::No);
    m_prompt->queueText("never asked");
    CheckCharacters();
    QCOMPARE(m_prompt->count(), 2);
    QVERIFY(!db().isOpen());
    flushDeletes();
    QVERIFY(!watch);
    QCOMPARE(GetSetting("Settings", "Character", "none"), QString("none"));
    db().open(ConnectionText());
    QCOMPARE(characters(), QStringList());
}

void TestStartup::checkCharactersKeepsAQuote() {
    makeDatabase();
    db().open(ConnectionText());
    m_prompt->queueText("Jack O'Neill");
    CheckCharacters();
    QCOMPARE(m_prompt->count(), 1);
    QCOMPARE(characters(), QStringList{"Jack O'Neill"});
    QCOMPARE(GetSetting("Settings", "Character"), QString("Jack O'Neill"));
}

QTEST_MAIN(TestStartup)
#include "tst_startup.moc"
