// Start-up checks (one copy, database file, schema version), splash and preload, ShutDown, CheckCharacters.
#include "app/frmsplash.h"
#include "app/modinit.h"
#include "app/modmain_app.h"
#include "app/singleinstance.h"
#include "core/childwindows.h"
#include "core/imagestore.h"
#include "core/programfolder.h"
#include "core/scriptedprompt.h"
#include "core/settings.h"
#include "data/database.h"
#include "data/recordset.h"
#include "data/schema.h"
#include "viewsfixture.h"

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

// A window whose close handler says no (an editor with unsaved changes, say).
struct StubbornWindow : QWidget {
    void closeEvent(QCloseEvent* e) override { e->ignore(); }
};

class TestStartup : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() {
        // The settings store and the instance lock of the user running the tests stay untouched.
        QVERIFY(m_home.isValid());
        IsolateSettings(m_home.path());
        qputenv("HOME", m_home.path().toLocal8Bit());
        setInstanceLockPath(m_home.filePath("VOSK.instance.lock"));
        setWindowUnloader(&UnloadAllWindows);
        setMainWindowFactory([this] {
            ++m_mainMade;
            return (m_main = new QWidget).data();
        });
    }
    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
        setProgramFolder(m_folder->path());
        ImageStore::instance().release();
        DeleteAllSettings();
        m_prompt = std::make_unique<ScriptedPrompt>();
        m_mainMade = 0;
        setPreloadObserver({});
    }
    void cleanup() {
        ShutDown();
        flushDeletes();
        for (QWidget* w : QApplication::topLevelWidgets())
            QVERIFY2(!w->isVisible(), qPrintable(w->windowTitle()));
        m_prompt.reset(); // before the next one takes over
    }
    void startUpChecks_data() {
        QTest::addColumn<QString>("setup"); // "lock": another copy runs, "none": no file, "letter", "empty"
        QTest::addColumn<QList<int>>("versions");
        QTest::addColumn<QString>("text"); // empty: start-up reaches the main window
        QTest::addColumn<QString>("title");
        QTest::addColumn<int>("style");
        const auto row = [](const char* name, const QString& setup, const QList<int>& versions,
                            const QString& text, const QString& title, int style) {
            QTest::newRow(name) << setup << versions << text << title << style;
        };
        const QString incompatible =
            "The database is not compatible with the VOSK program.\r\nIf you are using a "
            "previous database, please be sure you have upgraded it using the DB Upgrade "
            "tool.\r\nIf this problem persists, please contact VOSK Support.";
        row("second copy", "lock", {6}, "VOSK is already running\r\nOnly one instance may be used at a time",
            "VOSK is Already Running", 64);
        row("missing file, none made", "none", {},
            "Error 53 (File not found) in procedure RunVOSK of Module modInit", "VOSK", 0);
        row("not a database, left alone", "letter", {}, "Error ", "VOSK", 0);
        row("zero bytes, left alone", "empty", {}, "Error ", "VOSK", 0);
        row("version 6", "", {6}, "", "", 0);
        row("5 and 6: only the newest counts", "", {5, 6}, "", "", 0);
        row("version 5", "", {5}, incompatible, "Incompatible Database", 64);
        row("6 and 7", "", {6, 7}, incompatible, "Incompatible Database", 64);
        row("no version", "", {}, incompatible, "Incompatible Database", 64);
    }
    void startUpChecks() {
        QFETCH(QString, setup);
        QFETCH(QList<int>, versions);
        QFETCH(QString, text);
        QFETCH(QString, title);
        QFETCH(int, style);
        const QByteArray letter = "this is a letter, not a database\n";
        QFile file(databasePath());
        if (setup == "letter")
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(letter) == letter.size() && file.flush());
        else if (setup == "empty")
            QVERIFY(file.open(QIODevice::WriteOnly) && file.flush());
        else if (setup != "none")
            QVERIFY(makeDatabase(versions));
        QLockFile other(instanceLockPath());
        QVERIFY(setup != "lock" || other.tryLock(0));
        RunVOSK();
        QCOMPARE(db().isOpen(), text.isEmpty()); // a refused start has run ShutDown or opened nothing
        QCOMPARE(m_mainMade, text.isEmpty() ? 1 : 0);
        QCOMPARE(m_prompt->count(), text.isEmpty() ? 0 : 1);
        if (text.isEmpty()) {
            QVERIFY(m_main && m_main->isVisible());
            return;
        }
        const QString shown = m_prompt->last().text;
        // A database that cannot be found or opened is also named in full, with how to make one.
        const bool noDatabase = setup == "none" || setup == "letter" || setup == "empty";
        const QString help = noDatabase ? MissingDatabaseHelp(databasePath(), setup != "none") : QString();
        QVERIFY2(setup == "letter" || setup == "empty"
                     ? shown.startsWith(text) &&
                           shown.endsWith(" in procedure RunVOSK of Module modInit" + help)
                     : shown == text + help,
                 qPrintable(shown));
        if (noDatabase) {
            QVERIFY(help.contains(QDir::toNativeSeparators(databasePath())));
            QVERIFY(
                help.contains("vosk-makedb --sample \"" + QDir::toNativeSeparators(databasePath()) + "\""));
        }
        QCOMPARE(m_prompt->last().title, title);
        QCOMPARE(m_prompt->last().style, style);
        QCOMPARE(file.exists(), setup != "none");  // no database is created
        if (setup == "letter" || setup == "empty") // a foreign file is left as it was
            QCOMPARE(file.size(), qint64(setup == "letter" ? letter.size() : 0));
    }
    void readOnlyDatabaseAsks_data() {
        QTest::addColumn<int>("answer");
        QTest::addColumn<int>("modeBefore");
        QTest::addColumn<int>("modeAfter");
        QTest::newRow("yes: writable, other bits kept") << int(vb::Yes) << 02454 << 02654;
        QTest::newRow("no: left as it is") << int(vb::No) << 0444 << 0444;
    }
    void readOnlyDatabaseAsks() {
        QFETCH(int, answer);
        QFETCH(int, modeBefore);
        QFETCH(int, modeAfter);
        QVERIFY(makeDatabase());
        const fs::path file(databasePath().toStdString());
        fs::permissions(file, fs::perms(modeBefore), fs::perm_options::replace);
        m_prompt->queueButton(answer);
        RunVOSK();
        const auto mode = int(fs::status(file).permissions() & fs::perms::mask);
        QCOMPARE(m_prompt->count(), 1);
        QCOMPARE(m_prompt->last().text,
                 QString("The database file is currently set to read-only. Running VOSK with a "
                         "read-only database could cause potential problems.\r\nWould you like "
                         "to remove the read-only attribute from the file?"));
        QCOMPARE(m_prompt->last().title, QString("Read-Only Database"));
        QCOMPARE(m_prompt->last().style, 36);
        QCOMPARE(QString::number(mode, 8), QString::number(modeAfter, 8));
        QVERIFY(db().isOpen() && m_main && m_main->isVisible()); // either way start-up carries on
    }
    void preload_data() {
        QTest::addColumn<bool>("on");
        QTest::newRow("off: nothing fetched, the splash waits") << false;
        QTest::newRow("on: indices 0 to the count") << true;
    }
    void preload() {
        QFETCH(bool, on);
        QVERIFY(makeDatabase());
        QDir().mkpath(programFolder() + "/images/ITEM_ICON");
        for (int i = 0; i < 4; ++i)
            QVERIFY(QImage(8, 8, QImage::Format_RGB32)
                        .save(programFolder() + QString("/images/ITEM_ICON/%1.gif").arg(i), "PNG"));
        opt::saveFlag(opt::PreloadImages, on);
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
        QVERIFY(m_main && m_main->isVisible());
        QPointer<frmSplash> splash = splashWindow();
        if (!on) {
            QCOMPARE(indices, QList<long>());
            QVERIFY(splash); // RunVOSK leaves it to close itself once the main window is up
            QCOMPARE(splash->parentWidget(), m_main.data());
            flushDeletes();
            QVERIFY(!splash || !splash->isVisible());
            return;
        }
        QCOMPARE(indices, (QList<long>{0, 1, 2, 3, 4}));
        QCOMPARE(maximum, 4);
        QCOMPARE(lastValue, 3); // the bar is set after each fetch
        QVERIFY(!mainShownDuringLoop);
        QVERIFY(!splash || !splash->isVisible());
    }
    void shutDownClosesConnectionLockAndEveryWindow() {
        QVERIFY(makeDatabase());
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
        QVERIFY(!db().isOpen());
        flushDeletes();
        QVERIFY(!r && !hidden && !main); // unloaded, not just hidden
        QVERIFY(!stubborn.isVisible());  // hidden when it will not close
        QLockFile again(instanceLockPath());
        QVERIFY(again.tryLock(0));
    }
    void checkCharactersLoopsUntilANameOrNo() {
        QVERIFY(makeDatabase());
        db().open(ConnectionText());
        m_prompt->queueText("");
        m_prompt->queueButton(vb::Yes);
        m_prompt->queueText(""); // a cancelled box answers empty too
        m_prompt->queueButton(vb::Yes);
        m_prompt->queueText("Jack O'Neill");
        CheckCharacters();
        const auto& calls = m_prompt->calls();
        QCOMPARE(calls.size(), 5);
        for (int i = 0; i < 5; ++i) { // the name asked, then whether to try again
            QCOMPARE(calls[i].text,
                     i % 2 ? QString("The Character Name entered is invalid. VOSK cannot load without "
                                     "a valid character name. Would you like to try again?")
                           : QString("Please enter the name of your in-game character"));
            QCOMPARE(calls[i].title, QString(i % 2 ? "Invalid Character Name" : "Character Name"));
            QVERIFY(i % 2 ? calls[i].style == 36 : calls[i].extra.isEmpty());
        }
        Recordset rs;
        rs.open("SELECT CHARACTER_NAME FROM CHARACTERS");
        QCOMPARE(rs.value(0).toString(), QString("Jack O'Neill")); // the quote kept
        rs.close();
        QCOMPARE(GetSetting("Settings", "Character"), QString("Jack O'Neill"));
        CheckCharacters(); // a character is recorded now: nothing is asked
        QCOMPARE(m_prompt->count(), 5);
        // No to "try again" shuts the program down.
        db().execute("DELETE FROM CHARACTERS");
        m_prompt->queueText("");
        m_prompt->queueButton(vb::No);
        m_prompt->queueText("never asked");
        CheckCharacters();
        QCOMPARE(m_prompt->count(), 7);
        QVERIFY(!db().isOpen());
    }

private:
    static void flushDeletes() {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    // A database with these version rows; false (with the reason logged) when it cannot be made.
    static bool makeDatabase(const QList<int>& versions = {6}) {
        QString error;
        if (!CreateDatabase(databasePath(), &error)) {
            qWarning("%s", qPrintable(error));
            return false;
        }
        Database other;
        other.open("Data Source=" + databasePath() + ";");
        other.execute("DELETE FROM DB_VERSION");
        for (int v : versions)
            other.execute(QString("INSERT INTO DB_VERSION (VERSION) VALUES (%1)").arg(v));
        return true;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<ScriptedPrompt> m_prompt;
    QTemporaryDir m_home;
    QPointer<QWidget> m_main;
    int m_mainMade = 0;
};

QTEST_MAIN(TestStartup)
#include "tst_startup.moc"
