// The game channel on a temporary game folder over the sample world: starting, polling, the two
// commands and their pages, compared whole.
#include "gamefolder.h"
#include "viewsfixture.h"

#include "core/inifile.h"
#include "core/programfolder.h"
#include "data/database.h"
#include "data/synthetic.h"
#include "game/buildtext.h"
#include "game/caplog.h"
#include "game/vlinterface.h"
#include "views/buildtree.h"
#include "views/modmain.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

namespace {
const QString CrLf = caplog::CrLf;

QStringList usage(bool search, const QString& command) {
    const QString name = search ? "EquipmentName" : "Equipment_Name";
    return {"The command entered contains invalid parameters or the wrong number of parameters.",
            search ? "The correct usage for the SearchEquipment command is: "
                   : "The correct usage for the BuildView Command is: ",
            (search ? "SearchEquipment " : "BuildView ") + name,
            "There can only be one space between the SearchEquipment and " + name + ". If " + name +
                " contains any spaces, please replace them with underscores (_)",
            "",
            "Invalid Command Usage: ",
            command};
}

QList<int> range(int from, int to) {
    QList<int> r;
    for (int p = from; p <= to; ++p)
        r << p;
    return r;
}
} // namespace

class TestVLInterface : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString error;
        QVERIFY2(m_fixture.setUp(true, &error) && m_game.setUp(&error), qPrintable(error));
        qputenv("WINEPREFIX", QFile::encodeName(m_game.winePrefix()));
        m_channel = std::make_unique<clsVLInterface>();
        m_beeps = m_clock = 0;
        m_channel->setBeep([this] { ++m_beeps; });
    }
    void cleanup() {
        m_channel.reset();
        qunsetenv("WINEPREFIX");
        m_fixture.tearDown();
    }

    void startFindsCharactersAndWritesTheirPages() {
        for (int p : {953, 960, 999, 1000, 951})
            QVERIFY(writeBytes(m_game.page(0, p), freshPage({"stale"})));
        QVERIFY(QFile::setPermissions(m_game.page(0, 960), QFileDevice::ReadOwner));
        m_channel->setVlNFolder(m_game.game());
        QCOMPARE(m_channel->timerInterval(), 0); // interaction is still off
        QVERIFY(!QFileInfo::exists(m_game.page(0, 950)));
        start();
        QCOMPARE(m_channel->timerInterval(), 250);
        const QString version =
            QString("%1.%2.%3").arg(VOSK_VERSION_MAJOR).arg(VOSK_VERSION_MINOR).arg(VOSK_VERSION_REVISION);
        for (int c = 0; c < 2; ++c) {
            QCOMPARE(readBytes(m_game.page(c, 950)),
                     freshPage({"Welcome to VOSK v" + version, "Current Supported Commands & Syntax", "",
                                "1. SearchEquipment Name_of_Equipment", "", "2. BuildView Name_of_Equipment",
                                "", "Name_of_Equipment May be a partial or complete equipment name and",
                                "MAY NOT contain spaces. Please use an underscore in place of a space."}));
            QCOMPARE(readBytes(m_game.page(c, 952)),
                     freshPage({"Processing, please press next once you hear a tone."}));
        }
        // 953 to 999 go, except a read-only page; the command page and pages past 999 stay.
        QCOMPARE(m_game.answerPages(0), QList<int>({960, 1000}));
        QVERIFY(QFileInfo::exists(m_game.page(0, 951)));
        // The option goes to the Windows folder under the bare name; the game's own files are untouched.
        for (const char* f : {"player12_options.ini", "Player7_Options.INI"}) {
            QCOMPARE(readBytes(m_game.wineWindows() + "/" + f),
                     QByteArray("[INT-017]\r\nOptionValue=950\r\n"));
            QCOMPARE(readBytes(m_game.output() + "/" + f), QByteArray("[INT-001]\r\nOptionValue=1\r\n"));
        }
        QCOMPARE(QDir(m_game.wineWindows()).entryList(QDir::Files).size(), 2);

        // A folder that is not there, has no output folder or no character leaves the channel as it was.
        QTemporaryDir other;
        QVERIFY(QDir().mkpath(other.filePath("empty")) &&
                QDir().mkpath(other.filePath("decoys/data/CLIENT/output")) &&
                writeBytes(other.filePath("decoys/data/CLIENT/output/player_options.ini"), "x"));
        for (const char* folder : {"missing", "empty", "decoys"}) {
            m_channel->setVlNFolder(other.filePath(folder));
            QCOMPARE(m_channel->logStems(), GameFolder::stems());
            QCOMPARE(m_channel->timerInterval(), 250);
        }
        run("Fly");
        QCOMPARE(shownText(m_game.page(0, 953)), QString("Fly is an Invalid Command!"));
        // Without a Windows folder the options write is skipped and nothing is made.
        QVERIFY(QDir(m_game.wineWindows()).removeRecursively());
        start();
        QVERIFY(!QFileInfo::exists(m_game.wineWindows()));
        m_channel->setInteractWithGame(false);
        QCOMPARE(m_channel->timerInterval(), 0);
    }

    void pollAnswersOnlyNewerCommands() {
        m_game.typeCommand(0, "Fly", 10); // typed before the channel started
        start();
        const QString page = m_game.page(0, 951);
        for (int seconds : {10, 10, 5}) { // first sighting, the same time, an older time: none is run
            m_game.setModified(page, seconds);
            m_channel->m_oTimer_ThatTime();
        }
        QVERIFY(!QFileInfo::exists(m_game.page(0, 953)));
        QCOMPARE(m_beeps, 0);
        m_game.setModified(page, 6);
        m_channel->m_oTimer_ThatTime();
        QCOMPARE(shownText(m_game.page(0, 953)), QString("Fly is an Invalid Command!"));
        QCOMPARE(m_beeps, 1);
        // The second character's command is answered on its own pages.
        run("Run", 1);
        QCOMPARE(shownText(m_game.page(1, 953)), QString("Run is an Invalid Command!"));
        QCOMPARE(shownText(m_game.page(0, 953)), QString("Fly is an Invalid Command!"));
        // A restart forgets the times: the next sighting is a first one again.
        m_channel->setVlNFolder(m_game.game());
        m_game.typeCommand(1, "Swim", 100);
        m_channel->m_oTimer_ThatTime();
        QVERIFY(!QFileInfo::exists(m_game.page(1, 953)));
        QVERIFY(QFile::remove(m_game.page(1, 951))); // a page that went away is not looked at
        m_channel->m_oTimer_ThatTime();
        QCOMPARE(m_beeps, 2);
    }

    void commandsAnswerOnTheirPages_data() {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QStringList>("answer"); // page 953 as written; empty: not written
        QTest::addColumn<bool>("cleared");       // 953 to 999 deleted before the answer
        QTest::addColumn<QList<int>>("pages");   // the pages from 954 there afterwards
        const QList<int> untouched = {954, 990}, none, four = range(954, 957);
        const auto hits = [](const QString& keyword, const QString& name) {
            QStringList lines = {"4 Records Found searching for " + keyword, ""};
            for (const char* mk : {"I", "II", "III", "IV"})
                lines << QString("%1. %2 Mk %3, Page %4")
                             .arg(lines.size() - 1)
                             .arg(name, mk)
                             .arg(952 + lines.size());
            return lines << "";
        };
        const QStringList invalid = {"Invalid Search Keyword!"};
        const auto row = [](const char* name, const QString& command, const QStringList& answer, bool cleared,
                            const QList<int>& pages) {
            QTest::newRow(name) << command << answer << cleared << pages;
        };
        row("command word in any case, words after the keyword ignored", "searchequipment Sunspear and more",
            hits("Sunspear", "Sunspear"), true, four);
        row("underscores match blanks, shown as blanks", "SearchEquipment ray_proj",
            hits("ray proj", "Ray Projector"), true, four);
        row("two-character keyword", "SearchEquipment ab", invalid, true, none);
        row("double space: the keyword is empty", "SearchEquipment  Sunspear", invalid, true, none);
        row("build view keyword too short", "BuildView Mk", invalid, true, none);
        row("nothing found", "SearchEquipment zzzz", {"Search for zzzz returned 0 results."}, true, none);
        row("no keyword: usage, 954 on left alone", "SearchEquipment", usage(true, "SearchEquipment"), false,
            untouched);
        row("build view usage, blanks around trimmed", "  buildview  ", usage(false, "buildview"), false,
            untouched);
        row("unknown word as typed, 953 to 999 deleted", "Fly me to the moon", {"Fly is an Invalid Command!"},
            true, none);
        row("blank command: nothing", "   ", {}, false, untouched);
    }
    void commandsAnswerOnTheirPages() {
        QFETCH(QString, command);
        QFETCH(QStringList, answer);
        QFETCH(bool, cleared);
        QFETCH(QList<int>, pages);
        start();
        QStringList stale;
        for (int i = 0; i < 12; ++i)
            stale << QString("stale line %1").arg(i);
        const QByteArray before = freshPage(stale);
        QVERIFY(writeBytes(m_game.page(0, 953), before) && writeBytes(m_game.page(0, 954), "[x]") &&
                writeBytes(m_game.page(0, 990), "[x]"));
        m_game.typeCommand(0, command, 1);
        m_channel->m_oTimer_ThatTime(); // first sighting: not run
        QCOMPARE(readBytes(m_game.page(0, 953)), before);
        m_game.typeCommand(0, command, 2);
        m_channel->m_oTimer_ThatTime();
        QCOMPARE(m_beeps, 1);
        // A page written over without being cleared keeps the line sections past its new count.
        QByteArray expected = cleared ? freshPage(answer) : before;
        if (!cleared && !answer.isEmpty())
            expected = freshPage(answer + stale.mid(answer.size()))
                           .replace("LINES=12", "LINES=" + QByteArray::number(answer.size()));
        QCOMPARE(QString::fromLatin1(readBytes(m_game.page(0, 953))), QString::fromLatin1(expected));
        QCOMPARE(m_game.answerPages(0), pages);
        QVERIFY(!QFileInfo::exists(m_game.page(1, 953)));
        QCOMPARE(m_fixture.prompt().count(), 0);
    }

    void searchWritesDetailPages() {
        CustomFields custom;
        custom.on = true;
        custom.caption[0] = "Where Seen";
        setCustomFields(custom);
        start();
        run("SearchEquipment Hunter's_lance_mk_I");
        QCOMPARE(
            shownText(m_game.page(0, 953)).section(CrLf, 0, 2),
            QString(
                "4 Records Found searching for Hunter's lance mk I\r\n\r\n1. Hunter's Lance Mk I, Page 954"));
        const QStringList detail = shownText(m_game.page(0, 954)).split(CrLf);
        QCOMPARE(detail.mid(0, 2), QStringList({"Equipment Name :\tHunter's Lance Mk I", "Type :\tBeam"}));
        QCOMPARE(detail.filter(QRegularExpression("^Damage Per Second :\t[0-9.]+$")).size(), 1);
        // Only the custom field with a caption is shown, under its caption.
        const QStringList custom1 = detail.filter(QRegularExpression("^(Where Seen :(\t.*)?|.*Custom.*)$"));
        QCOMPARE(custom1, QStringList({detail[10]}));
        QVERIFY(detail[10].startsWith("Where Seen :"));
        // The specials in name order, each column with its label.
        const int s = int(detail.indexOf("---==Special 1==---"));
        QVERIFY(s > 0);
        QCOMPARE(detail.mid(s + 1, 3),
                 QStringList({".   Special : Energy Siphon", ".   Amount : -3", ".   Units : points"}));
        QVERIFY(detail[s + 4].startsWith(".   Energy Use : ") && detail[s + 7].startsWith(".   Shunt : "));
        QCOMPARE(detail.mid(s + 8, 3),
                 QStringList({"---==Special 2==---", ".   Special : Overcharge", ".   Amount : 12.345"}));
        // At most 25 hits, on pages 954 to 978.
        run("SearchEquipment _Mk_");
        const QStringList index = shownText(m_game.page(0, 953)).split(CrLf);
        QCOMPARE(index.first(), QString("25 Records Found searching for  Mk")); // the reader trims the line
        QVERIFY(index.value(26).startsWith("25. ") && index.value(26).endsWith(", Page 978"));
        QCOMPARE(m_game.answerPages(0), range(954, 978));
    }

    void buildViewWalksTheUpgradeChain() {
        exec({"INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, TYPE, LVL) VALUES ('Zz Lance Mk I', 'Beam', 5), "
              "('Zz Lance Mk II', 'Beam', 12)",
              "INSERT INTO COMPONENTS (COMPONENT_NAME, LVL) VALUES ('Zz Coil', 3), ('Zz Wire', 1)",
              "INSERT INTO RAW_MATERIALS (RAW_MATERIAL_NAME, LVL) VALUES ('Zz Ore', 2), ('Zz Rock', 1)",
              "INSERT INTO ITEMS (ITEM_NAME, LVL) VALUES ('Zz Chip', 4), ('Zz Dust', 1)",
              "INSERT INTO EQUIPMENTS_UPGRADE_FROM VALUES ('Zz Lance Mk II', 'Zz Lance Mk I', 1)",
              "INSERT INTO EQUIPMENTS_COMPONENTS VALUES ('Zz Lance Mk II', 'Zz Coil', 2)",
              "INSERT INTO EQUIPMENTS_RAW_MATERIALS VALUES ('Zz Lance Mk II', 'Zz Ore', 6)",
              "INSERT INTO EQUIPMENTS_ITEMS VALUES ('Zz Lance Mk II', 'Zz Chip', 1)",
              "INSERT INTO COMPONENTS_EQUIPMENTS VALUES ('Zz Coil', 'Zz Lance Mk I', 1)",
              "INSERT INTO COMPONENTS_UPGRADE_FROM VALUES ('Zz Coil', 'Zz Wire', 3)",
              "INSERT INTO COMPONENTS_RAW_MATERIALS VALUES ('Zz Coil', 'Zz Ore', 1)",
              "INSERT INTO COMPONENTS_ITEMS VALUES ('Zz Coil', 'Zz Chip', 5)",
              "INSERT INTO RAW_MATERIALS_REFINES_FROM VALUES ('Zz Ore', 'Zz Rock', 4)",
              "INSERT INTO RAW_MATERIALS_ITEMS VALUES ('Zz Rock', 'Zz Dust', 1)"});
        start();
        run("BuildView zz_lance");
        const QString plain =
            "UPGRADE FROM:\r\n\r\nCOMPONENTS REQUIRED:\r\n\r\nRAW MATERIALS REQUIRED:\r\n\r\n"
            "ITEMS REQUIRED:\r\n\r\n";
        // The chain goes on to what Mk II is upgraded from, on the next page.
        const QStringList expected = {
            "2 Records found searching for zz lance\r\n\r\n1. Zz Lance Mk I, Page 954\r\n"
            "2. Zz Lance Mk II, Page 955\r\n",
            "BUILD INFORMATION FOR: Zz Lance Mk I\r\n\r\n" + plain,
            "BUILD INFORMATION FOR: Zz Lance Mk II\r\n\r\nUPGRADE FROM:\r\n.    Lvl 5 Zz Lance Mk I\r\n\r\n"
            "COMPONENTS REQUIRED:\r\n.    Lvl 3 Zz Coil (2)\r\n.        Lvl 5 Zz Lance Mk I\r\n"
            ".        Lvl 1 Zz Wire (3)\r\n.        Lvl 2 Zz Ore\r\n.            Lvl 1 Zz Rock (4)\r\n"
            ".                Lvl 1 Zz Dust\r\n.        Lvl 4 Zz Chip (5)\r\n\r\n"
            "RAW MATERIALS REQUIRED:\r\n.    Lvl 2 Zz Ore (6)\r\n.        Lvl 1 Zz Rock (4)\r\n"
            ".            Lvl 1 Zz Dust\r\n\r\nITEMS REQUIRED:\r\n.    Lvl 4 Zz Chip\r\n\r\n",
            "BUILD INFORMATION FOR: Zz Lance Mk I\r\n\r\n" + plain};
        for (int p = 0; p < expected.size(); ++p)
            QCOMPARE(shownText(m_game.page(0, 953 + p)), expected[p]);
        QCOMPARE(m_game.answerPages(0), range(954, 956));
        // The writers' check mode: names run together, or the no-records word.
        BuildTextWriter w;
        QCOMPARE(w.GetComps("Zz Coil", 0, buildtext::Components, true), QString("Zz Wire"));
    }

    void longBuildTextsSpreadOverPages() {
        QString error;
        const int nodes = 90;
        db().close();
        QVERIFY2(GenerateBuildTree(m_fixture.databaseFile(), "Zz Paged Engine", nodes, 4, &error),
                 qPrintable(error));
        db().open("Provider=VOSK.SQLite;Data Source=" + m_fixture.databaseFile() + ";");
        exec({"INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, TYPE, LVL) VALUES ('Zz Paged Extra', 'Device', 1)"});
        start();
        run("BuildView Zz_Paged");
        const QList<int> pages = m_game.answerPages(0);
        const int extra = pages.last();
        QVERIFY(
            shownText(m_game.page(0, 953)).endsWith(QString("2. Zz Paged Extra, Page %1\r\n").arg(extra)));
        QVERIFY2(extra >= 957, "the long text should need three pages at least");
        QCOMPARE(pages, range(954, extra));
        // Each full page passed 1024 characters with its last line only; together they are the whole text.
        QStringList all;
        for (int p = 954; p < extra; ++p) {
            const QString text = shownText(m_game.page(0, p));
            QStringList lines = text.split(CrLf);
            QCOMPARE(lines.takeLast(), QString()); // every page ends with a line end
            if (p + 1 < extra)
                QVERIFY(text.size() > 1024 && text.size() - lines.last().size() - 2 <= 1024);
            all += lines;
        }
        QCOMPARE(all.first(), QString("BUILD INFORMATION FOR: Zz Paged Engine"));
        QCOMPARE(all.filter(QRegularExpression("^\\. {4,}Lvl ")).size(), nodes - 1);
        QCOMPARE(all.mid(all.size() - 3), QStringList({"ITEMS REQUIRED:", "", ""}));
    }

    void cyclicRecipesAnswerWithWhatWasBuilt() {
        QString error;
        QVERIFY2(m_fixture.addRecipeCycle(&error), qPrintable(error));
        exec(
            {"INSERT INTO EQUIPMENTS_RAW_MATERIALS VALUES ('Cycle Engine', 'Cycle Ore A', 1)",
             "INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, TYPE, LVL) VALUES ('Zz Loop A', 'Device', 1), "
             "('Zz Loop B', 'Device', 2)",
             "INSERT INTO EQUIPMENTS_UPGRADE_FROM VALUES ('Zz Loop A', 'Zz Loop B', 1), ('Zz Loop B', 'Zz Loop A', 1)"});
        start();
        run("BuildView Cycle_Engine");
        // Down to the build view's bound, then the answer goes on with its next part.
        QStringList all;
        for (int p : m_game.answerPages(0))
            all += shownText(m_game.page(0, p)).split(CrLf);
        const QStringList coils = all.filter(QRegularExpression("^\\. +Lvl [89] Cycle Coil [AB]$"));
        QCOMPARE(coils.size(), maxBuildDepth + 1);
        QCOMPARE(coils.last(), "." + QString(4 * (maxBuildDepth + 1), ' ') + "Lvl 8 Cycle Coil A");
        QCOMPARE(all.filter(QRegularExpression("^\\. +Lvl [34] Cycle Ore [AB]( \\(2\\))?$")).size(),
                 maxBuildDepth + 1);
        QVERIFY(all.contains("ITEMS REQUIRED:"));
        // Logged once for each part that ran into the bound, by the writer called one level too deep.
        const QString log = QString::fromLatin1(readBytes(errorLogPath()));
        QCOMPARE(log.count("Error 28 (Out of stack space) in procedure "), 2);
        QCOMPARE(
            log.count("Error 28 (Out of stack space) in procedure GetEquip of Class Module clsVLInterface"),
            1);
        // An upgrade chain that comes back to itself ends where it started.
        run("BuildView Zz_Loop_A");
        QCOMPARE(m_game.answerPages(0, caplog::LastPage), range(954, 955));
        QVERIFY(shownText(m_game.page(0, 955)).startsWith("BUILD INFORMATION FOR: Zz Loop B\r\n"));
        QCOMPARE(QString::fromLatin1(readBytes(errorLogPath()))
                     .count("procedure DisplayBuildView of Class Module clsVLInterface"),
                 1);
        QCOMPARE(m_fixture.prompt().count(), 0);
    }

    void brokenCommandPagesAreHarmless_data() {
        QTest::addColumn<QByteArray>("page");     // the command page's bytes; "<folder>" makes it a folder
        QTest::addColumn<QByteArray>("expected"); // page 953 afterwards; empty: not written
        QRandomGenerator random(951);
        QByteArray junk(10 * 1024 * 1024, Qt::Uninitialized);
        for (char& c : junk)
            c = char(random.bounded(256));
        junk.replace('[', '(');
        QTest::newRow("10 MB of junk") << junk << QByteArray();
        QTest::newRow("junk after the command line")
            << "[LINE-0000]\r\nTEXT=Fly\r\n" + junk << freshPage({"Fly is an Invalid Command!"});
        QTest::newRow("no line section") << QByteArray("[NUM_LINES]\r\nLINES=1\r\n") << QByteArray();
        QTest::newRow("longer than the reader's buffer")
            << "[LINE-0000]\r\nTEXT=" + QByteArray(600, 'Q')
            << freshPage({QString(511, 'Q') + " is an Invalid Command!"});
        QTest::newRow("UTF-8 is read as the game's code page")
            << QByteArray("[LINE-0000]\r\nTEXT=SearchEquipment Caf\xC3\xA9s\r\n")
            << QByteArray(
                   "[NUM_LINES]\r\nLINES=1\r\n[LINE-0000]\r\nTEXT=Search for Caf\xC3\xA9s returned 0 results.\r\n");
        QTest::newRow("gone or unreadable at the read") << QByteArray("<folder>") << QByteArray();
    }
    void brokenCommandPagesAreHarmless() {
        QFETCH(QByteArray, page);
        QFETCH(QByteArray, expected);
        start();
        const QString file = m_game.page(0, 951);
        m_game.typeCommand(0, "seen", 1);
        m_channel->m_oTimer_ThatTime();
        QVERIFY(page == "<folder>" ? QFile::remove(file) && QDir().mkpath(file) : writeBytes(file, page));
        m_game.setModified(file, 2);
        m_channel->m_oTimer_ThatTime();
        QCOMPARE(m_beeps, 1);
        QCOMPARE(readBytes(m_game.page(0, 953)), expected);
        QCOMPARE(m_channel->timerInterval(), 250);
        QCOMPARE(m_fixture.prompt().count(), 0);
    }

    void pageWritersKeepStaleLines() {
        start();
        const QString file = m_game.page(1, 960);
        m_channel->WriteCapLogFile("one\r\ntwo\r\nthree", 1, 960);
        m_channel->WriteCapLogFile("uno", 1, 960);
        m_channel->AppendCapLogFile("    dos", 1, 960); // after the count, the stale line past it kept
        QCOMPARE(readBytes(file),
                 QByteArray("[NUM_LINES]\r\nLINES=2\r\n[LINE-0000]\r\nTEXT=uno\r\n[LINE-0001]\r\n"
                            "TEXT=    dos\r\n[LINE-0002]\r\nTEXT=three\r\n"));
        m_channel->WriteCapLogFile(QString(), 1, 960);
        QCOMPARE(ReadProfileString(file, "NUM_LINES", "LINES"), QString("0"));
        m_game.typeCommand(1, "  SearchEquipment Sunspear  ", 1);
        QCOMPARE(m_channel->ReadCapLog("1", 0), QString("SearchEquipment Sunspear"));
        for (const auto& [character, line] : {std::pair{"1", 1}, {"2", 0}, {"x", 0}})
            QCOMPARE(m_channel->ReadCapLog(character, line), QString());
        QCOMPARE(m_channel->GetCapLogPath(5, 960), QString()); // no such character: nothing written
        // A read-only answer page is neither deleted nor written.
        QVERIFY(writeBytes(m_game.page(0, 953), "[kept]") &&
                QFile::setPermissions(m_game.page(0, 953), QFileDevice::ReadOwner));
        run("Fly");
        QCOMPARE(readBytes(m_game.page(0, 953)), QByteArray("[kept]"));
    }

private:
    void start() {
        m_channel->setVlNFolder(m_game.game());
        m_channel->setInteractWithGame(true);
        QCOMPARE(m_channel->logStems(), GameFolder::stems());
    }
    // Types the command on the character's page after an earlier one was seen, and polls once.
    void run(const QString& command, int character = 0) {
        m_game.typeCommand(character, QStringLiteral("seen before"), ++m_clock);
        m_channel->m_oTimer_ThatTime();
        m_game.typeCommand(character, command, ++m_clock);
        m_channel->m_oTimer_ThatTime();
    }
    void exec(const QStringList& statements) {
        QString error;
        QVERIFY2(m_fixture.exec(statements, &error), qPrintable(error));
    }

    ViewsFixture m_fixture;
    GameFolder m_game;
    std::unique_ptr<clsVLInterface> m_channel;
    int m_beeps = 0;
    int m_clock = 0;
};

QTEST_GUILESS_MAIN(TestVLInterface)
#include "tst_vlinterface.moc"
