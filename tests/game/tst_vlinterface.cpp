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

QStringList staleLines(int n) {
    QStringList lines;
    for (int i = 0; i < n; ++i)
        lines << QStringLiteral("stale line %1").arg(i);
    return lines;
}

QStringList usage(int kind, const QString& command) {
    QStringList lines = {
        "The command entered contains invalid parameters or the wrong number of parameters."};
    if (kind == 1)
        lines
            << "The correct usage for the SearchEquipment command is: "
            << "SearchEquipment EquipmentName"
            << "There can only be one space between the SearchEquipment and EquipmentName. If EquipmentName "
               "contains any spaces, please replace them with underscores (_)";
    else
        lines
            << "The correct usage for the BuildView Command is: "
            << "BuildView Equipment_Name"
            << "There can only be one space between the SearchEquipment and Equipment_Name. If Equipment_Name "
               "contains any spaces, please replace them with underscores (_)";
    return lines << ""
                 << "Invalid Command Usage: " << command;
}

// The pages from 954 that exist, up to `last` (past 999 for build views that run on).
QList<int> answerPages(const GameFolder& g, int character, int last = caplog::LastPage + 300) {
    QList<int> pages;
    for (int p = caplog::AnswerPage + 1; p <= last; ++p)
        if (QFileInfo::exists(g.page(character, p)))
            pages << p;
    return pages;
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
    void init();
    void cleanup();

    void startFindsCharactersAndWritesTheirPages();
    void startLeavesTheChannelAsItWas_data();
    void startLeavesTheChannelAsItWas();
    void pollAnswersOnlyNewerCommands();
    void commandsAnswerOnTheirPages_data();
    void commandsAnswerOnTheirPages();
    void searchWritesDetailPages();
    void buildViewWalksTheUpgradeChain();
    void longBuildTextsSpreadOverPages();
    void cyclicRecipesAnswerWithWhatWasBuilt();
    void brokenCommandPagesAreHarmless_data();
    void brokenCommandPagesAreHarmless();
    void pageWritersKeepStaleLines();

private:
    void start();
    // Types the command on character c's page after an earlier one was seen, and polls once.
    void run(const QString& command, int character = 0);
    QString errorLog() const { return QString::fromLatin1(readBytes(errorLogPath())); }

    ViewsFixture m_fixture;
    GameFolder m_game;
    std::unique_ptr<clsVLInterface> m_channel;
    int m_beeps = 0;
    int m_clock = 0;
    QByteArray m_oldPrefix;
};

void TestVLInterface::init() {
    QString error;
    QVERIFY2(m_fixture.setUp(true, &error), qPrintable(error));
    QVERIFY2(m_game.setUp(&error), qPrintable(error));
    m_oldPrefix = qgetenv("WINEPREFIX");
    qputenv("WINEPREFIX", QFile::encodeName(m_game.winePrefix()));
    m_channel = std::make_unique<clsVLInterface>();
    m_beeps = 0;
    m_clock = 0;
    m_channel->setBeep([this] { ++m_beeps; });
}

void TestVLInterface::cleanup() {
    m_channel.reset();
    qputenv("WINEPREFIX", m_oldPrefix);
    m_fixture.tearDown();
}

void TestVLInterface::start() {
    m_channel->setVlNFolder(m_game.game());
    m_channel->setInteractWithGame(true);
    QCOMPARE(m_channel->logStems(), GameFolder::stems());
}

void TestVLInterface::run(const QString& command, int character) {
    m_game.typeCommand(character, QStringLiteral("seen before"), ++m_clock);
    m_channel->m_oTimer_ThatTime();
    m_game.typeCommand(character, command, ++m_clock);
    m_channel->m_oTimer_ThatTime();
}

void TestVLInterface::startFindsCharactersAndWritesTheirPages() {
    for (int p : {953, 960, 999, 1000, 951})
        QVERIFY(writeBytes(m_game.page(0, p), freshPage({"stale"})));
    QVERIFY(QFile::setPermissions(m_game.page(0, 960), QFileDevice::ReadOwner));

    m_channel->setVlNFolder(m_game.game());
    QCOMPARE(m_channel->timerInterval(), 0); // interaction is still off
    QVERIFY(!QFileInfo::exists(m_game.page(0, 950)));
    m_channel->setInteractWithGame(true);
    QCOMPARE(m_channel->logStems(), GameFolder::stems());
    QCOMPARE(m_channel->timerInterval(), 250);

    const QString version =
        QStringLiteral("%1.%2.%3").arg(VOSK_VERSION_MAJOR).arg(VOSK_VERSION_MINOR).arg(VOSK_VERSION_REVISION);
    for (int c = 0; c < 2; ++c) {
        QCOMPARE(readBytes(m_game.page(c, 950)),
                 freshPage({"Welcome to VOSK v" + version, "Current Supported Commands & Syntax", "",
                            "1. SearchEquipment Name_of_Equipment", "", "2. BuildView Name_of_Equipment", "",
                            "Name_of_Equipment May be a partial or complete equipment name and",
                            "MAY NOT contain spaces. Please use an underscore in place of a space."}));
        QCOMPARE(readBytes(m_game.page(c, 952)),
                 freshPage({"Processing, please press next once you hear a tone."}));
    }
    // 953 to 999 go, except a read-only page; the command page and pages past 999 stay.
    QCOMPARE(answerPages(m_game, 0), QList<int>({960, 1000}));
    QVERIFY(QFileInfo::exists(m_game.page(0, 951)));
    // The options setting goes to the Windows folder under the bare name; the game's files are untouched.
    for (const char* f : {"player12_options.ini", "Player7_Options.INI"}) {
        QCOMPARE(readBytes(m_game.wineWindows() + "/" + f), QByteArray("[INT-017]\r\nOptionValue=950\r\n"));
        QCOMPARE(readBytes(m_game.output() + "/" + f), QByteArray("[INT-001]\r\nOptionValue=1\r\n"));
    }
    QCOMPARE(QDir(m_game.wineWindows()).entryList(QDir::Files).size(), 2);

    m_channel->setInteractWithGame(false);
    QCOMPARE(m_channel->timerInterval(), 0);
}

void TestVLInterface::startLeavesTheChannelAsItWas_data() {
    QTest::addColumn<QString>("folder");
    QTest::newRow("the folder is not there") << "missing";
    QTest::newRow("no output folder") << "empty";
    QTest::newRow("no character in the output folder") << "decoys";
}

void TestVLInterface::startLeavesTheChannelAsItWas() {
    QFETCH(QString, folder);
    start();
    QTemporaryDir other;
    const QString base = other.filePath("game");
    QDir().mkpath(base);
    if (folder == "decoys") {
        QDir().mkpath(base + "/data/CLIENT/output");
        writeBytes(base + "/data/CLIENT/output/player_options.ini", "x");
    }
    m_channel->setVlNFolder(folder == "missing" ? other.filePath("nowhere") : base);
    QCOMPARE(m_channel->logStems(), GameFolder::stems());
    QCOMPARE(m_channel->timerInterval(), 250);
    // The old characters are still served.
    run("Fly");
    QCOMPARE(shownText(m_game.page(0, 953)), QString("Fly is an Invalid Command!"));
    // Without a Windows folder the options write is skipped and nothing is made.
    QVERIFY(QDir(m_game.wineWindows()).removeRecursively());
    m_channel->setVlNFolder(m_game.game());
    QCOMPARE(m_channel->logStems(), GameFolder::stems());
    QVERIFY(!QFileInfo::exists(m_game.wineWindows()));
}

void TestVLInterface::pollAnswersOnlyNewerCommands() {
    m_game.typeCommand(0, "Fly", 10); // typed before the channel started
    start();
    m_channel->m_oTimer_ThatTime();
    QVERIFY(!QFileInfo::exists(m_game.page(0, 953)));
    QCOMPARE(m_beeps, 0);
    m_game.setModified(m_game.page(0, 951), 10); // the same time again
    m_channel->m_oTimer_ThatTime();
    m_game.setModified(m_game.page(0, 951), 5); // an older time is remembered, not answered
    m_channel->m_oTimer_ThatTime();
    QVERIFY(!QFileInfo::exists(m_game.page(0, 953)));
    m_game.setModified(m_game.page(0, 951), 6);
    m_channel->m_oTimer_ThatTime();
    QCOMPARE(shownText(m_game.page(0, 953)), QString("Fly is an Invalid Command!"));
    QCOMPARE(m_beeps, 1);
    QCOMPARE(m_channel->timerInterval(), 250);

    // The second character's command is answered on its own pages.
    m_game.typeCommand(1, "Walk", 1);
    m_channel->m_oTimer_ThatTime();
    m_game.typeCommand(1, "Run", 2);
    m_channel->m_oTimer_ThatTime();
    QCOMPARE(shownText(m_game.page(1, 953)), QString("Run is an Invalid Command!"));
    QCOMPARE(shownText(m_game.page(0, 953)), QString("Fly is an Invalid Command!"));
    QCOMPARE(m_beeps, 2);

    // A restart forgets the times: the next sighting is a first one again.
    m_channel->setVlNFolder(m_game.game());
    QVERIFY(!QFileInfo::exists(m_game.page(1, 953)));
    m_game.typeCommand(1, "Swim", 3);
    m_channel->m_oTimer_ThatTime();
    QVERIFY(!QFileInfo::exists(m_game.page(1, 953)));
    // A command page that goes away is simply not looked at.
    QVERIFY(QFile::remove(m_game.page(1, 951)));
    m_channel->m_oTimer_ThatTime();
    QCOMPARE(m_beeps, 2);
}

void TestVLInterface::commandsAnswerOnTheirPages_data() {
    QTest::addColumn<QString>("command");
    QTest::addColumn<QStringList>("answer"); // page 953 as shown; empty: not written
    QTest::addColumn<bool>("cleared");       // 953 to 999 deleted before the answer
    QTest::addColumn<QList<int>>("pages");   // the pages from 954 there afterwards
    const QList<int> untouched = {954, 990};
    const QStringList sunspear = {"4 Records Found searching for Sunspear",
                                  "",
                                  "1. Sunspear Mk I, Page 954",
                                  "2. Sunspear Mk II, Page 955",
                                  "3. Sunspear Mk III, Page 956",
                                  "4. Sunspear Mk IV, Page 957",
                                  ""};
    QTest::newRow("command word in any case")
        << "searchequipment Sunspear" << sunspear << true << range(954, 957);
    QTest::newRow("words after the keyword are ignored")
        << "SEARCHEQUIPMENT Sunspear and more words" << sunspear << true << range(954, 957);
    QTest::newRow("underscores match blanks, shown as blanks")
        << "SearchEquipment ray_proj"
        << QStringList{"4 Records Found searching for ray proj",
                       "",
                       "1. Ray Projector Mk I, Page 954",
                       "2. Ray Projector Mk II, Page 955",
                       "3. Ray Projector Mk III, Page 956",
                       "4. Ray Projector Mk IV, Page 957",
                       ""}
        << true << range(954, 957);
    QTest::newRow("two-character keyword")
        << "SearchEquipment ab" << QStringList{"Invalid Search Keyword!"} << true << QList<int>();
    QTest::newRow("double space makes the keyword empty")
        << "SearchEquipment  Sunspear" << QStringList{"Invalid Search Keyword!"} << true << QList<int>();
    QTest::newRow("nothing found") << "SearchEquipment zzzz"
                                   << QStringList{"Search for zzzz returned 0 results."} << true
                                   << QList<int>();
    QTest::newRow("build view keyword too short")
        << "BuildView Mk" << QStringList{"Invalid Search Keyword!"} << true << QList<int>();
    QTest::newRow("no keyword: usage, 954 on left alone")
        << "SearchEquipment" << usage(1, "SearchEquipment") << false << untouched;
    QTest::newRow("build view usage, blanks around trimmed")
        << "  buildview  " << usage(2, "buildview") << false << untouched;
    QTest::newRow("unknown word as typed, 953 to 999 deleted")
        << "Fly me to the moon" << QStringList{"Fly is an Invalid Command!"} << true << QList<int>();
    QTest::newRow("blank command: nothing") << "   " << QStringList() << false << untouched;
}

void TestVLInterface::commandsAnswerOnTheirPages() {
    QFETCH(QString, command);
    QFETCH(QStringList, answer);
    QFETCH(bool, cleared);
    QFETCH(QList<int>, pages);
    start();
    const QStringList stale = staleLines(12);
    QVERIFY(writeBytes(m_game.page(0, 953), freshPage(stale)));
    QVERIFY(writeBytes(m_game.page(0, 954), freshPage({"stale"})));
    QVERIFY(writeBytes(m_game.page(0, 990), freshPage({"stale"})));
    const QByteArray before = readBytes(m_game.page(0, 953));

    m_game.typeCommand(0, command, 1);
    m_channel->m_oTimer_ThatTime(); // first sighting: not run
    QCOMPARE(readBytes(m_game.page(0, 953)), before);
    QCOMPARE(m_beeps, 0);
    m_game.typeCommand(0, command, 2);
    m_channel->m_oTimer_ThatTime();
    QCOMPARE(m_beeps, 1);

    QByteArray expected = before;
    if (cleared) {
        expected = freshPage(answer);
    } else if (!answer.isEmpty()) {
        // A shorter page keeps the line sections of the longer one it replaced.
        expected = freshPage(answer + stale.mid(answer.size()));
        expected.replace("LINES=12", "LINES=" + QByteArray::number(answer.size()));
    }
    QCOMPARE(QString::fromLatin1(readBytes(m_game.page(0, 953))), QString::fromLatin1(expected));
    QCOMPARE(answerPages(m_game, 0), pages);
    QVERIFY(!QFileInfo::exists(m_game.page(1, 953)));
    QCOMPARE(m_fixture.prompt().count(), 0);
}

void TestVLInterface::searchWritesDetailPages() {
    CustomFields custom;
    custom.on = true;
    custom.caption[0] = "Where Seen";
    setCustomFields(custom);
    start();
    run("SearchEquipment Hunter's_lance_mk_I");
    QCOMPARE(
        shownText(m_game.page(0, 953)).section(CrLf, 0, 2),
        QString("4 Records Found searching for Hunter's lance mk I\r\n\r\n1. Hunter's Lance Mk I, Page 954"));
    const QStringList detail = shownText(m_game.page(0, 954)).split(CrLf);
    QCOMPARE(detail.first(), QString("Equipment Name :\tHunter's Lance Mk I"));
    QVERIFY(detail.contains("Type :\tBeam"));
    QVERIFY(detail.filter(QRegularExpression("^Damage Per Second :\t[0-9.]+$")).size() == 1);
    // Only the custom field with a caption is shown, under its caption.
    QCOMPARE(detail.filter(QRegularExpression("^Where Seen :(\t.*)?$")).size(), 1);
    QCOMPARE(detail.filter("Custom").size(), 0);
    // The specials, in name order, each column with its label.
    const int s = int(detail.indexOf("---==Special 1==---"));
    QVERIFY(s > 0);
    QCOMPARE(detail.mid(s, 9),
             QStringList({"---==Special 1==---", ".   Special : Energy Siphon", ".   Amount : -3",
                          ".   Units : points", detail.value(s + 4), detail.value(s + 5), detail.value(s + 6),
                          detail.value(s + 7), "---==Special 2==---"}));
    QVERIFY(detail.value(s + 4).startsWith(".   Energy Use : "));
    QVERIFY(detail.value(s + 7).startsWith(".   Shunt : "));
    QCOMPARE(detail.value(s + 10), QString(".   Amount : 12.345"));
    QCOMPARE(detail.last(), QString());

    // At most 25 hits, on pages 954 to 978.
    run("SearchEquipment _Mk_");
    const QStringList index = shownText(m_game.page(0, 953)).split(CrLf);
    QCOMPARE(index.first(), QString("25 Records Found searching for  Mk")); // the reader trims the line
    QVERIFY(index.value(26).startsWith("25. ") && index.value(26).endsWith(", Page 978"));
    QCOMPARE(answerPages(m_game, 0), range(954, 978));
    QCOMPARE(m_fixture.prompt().count(), 0);
}

void TestVLInterface::buildViewWalksTheUpgradeChain() {
    QString error;
    QVERIFY2(m_fixture.exec(
                 {"INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, TYPE, LVL) VALUES ('Zz Lance Mk I', 'Beam', 5)",
                  "INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, TYPE, LVL) VALUES ('Zz Lance Mk II', 'Beam', 12)",
                  "INSERT INTO COMPONENTS (COMPONENT_NAME, LVL) VALUES ('Zz Coil', 3)",
                  "INSERT INTO COMPONENTS (COMPONENT_NAME, LVL) VALUES ('Zz Wire', 1)",
                  "INSERT INTO RAW_MATERIALS (RAW_MATERIAL_NAME, LVL) VALUES ('Zz Ore', 2)",
                  "INSERT INTO RAW_MATERIALS (RAW_MATERIAL_NAME, LVL) VALUES ('Zz Rock', 1)",
                  "INSERT INTO ITEMS (ITEM_NAME, LVL) VALUES ('Zz Chip', 4)",
                  "INSERT INTO ITEMS (ITEM_NAME, LVL) VALUES ('Zz Dust', 1)",
                  "INSERT INTO EQUIPMENTS_UPGRADE_FROM VALUES ('Zz Lance Mk II', 'Zz Lance Mk I', 1)",
                  "INSERT INTO EQUIPMENTS_COMPONENTS VALUES ('Zz Lance Mk II', 'Zz Coil', 2)",
                  "INSERT INTO EQUIPMENTS_RAW_MATERIALS VALUES ('Zz Lance Mk II', 'Zz Ore', 6)",
                  "INSERT INTO EQUIPMENTS_ITEMS VALUES ('Zz Lance Mk II', 'Zz Chip', 1)",
                  "INSERT INTO COMPONENTS_EQUIPMENTS VALUES ('Zz Coil', 'Zz Lance Mk I', 1)",
                  "INSERT INTO COMPONENTS_UPGRADE_FROM VALUES ('Zz Coil', 'Zz Wire', 3)",
                  "INSERT INTO COMPONENTS_RAW_MATERIALS VALUES ('Zz Coil', 'Zz Ore', 1)",
                  "INSERT INTO COMPONENTS_ITEMS VALUES ('Zz Coil', 'Zz Chip', 5)",
                  "INSERT INTO RAW_MATERIALS_REFINES_FROM VALUES ('Zz Ore', 'Zz Rock', 4)",
                  "INSERT INTO RAW_MATERIALS_ITEMS VALUES ('Zz Rock', 'Zz Dust', 1)"},
                 &error),
             qPrintable(error));
    start();
    run("BuildView zz_lance");
    QCOMPARE(shownText(m_game.page(0, 953)),
             QString("2 Records found searching for zz lance\r\n\r\n1. Zz Lance Mk I, Page 954\r\n"
                     "2. Zz Lance Mk II, Page 955\r\n"));
    const QString plain = "UPGRADE FROM:\r\n\r\nCOMPONENTS REQUIRED:\r\n\r\nRAW MATERIALS REQUIRED:\r\n\r\n"
                          "ITEMS REQUIRED:\r\n\r\n";
    QCOMPARE(shownText(m_game.page(0, 954)), "BUILD INFORMATION FOR: Zz Lance Mk I\r\n\r\n" + plain);
    QCOMPARE(shownText(m_game.page(0, 955)), QString("BUILD INFORMATION FOR: Zz Lance Mk II\r\n\r\n"
                                                     "UPGRADE FROM:\r\n"
                                                     ".    Lvl 5 Zz Lance Mk I\r\n\r\n"
                                                     "COMPONENTS REQUIRED:\r\n"
                                                     ".    Lvl 3 Zz Coil (2)\r\n"
                                                     ".        Lvl 5 Zz Lance Mk I\r\n"
                                                     ".        Lvl 1 Zz Wire (3)\r\n"
                                                     ".        Lvl 2 Zz Ore\r\n"
                                                     ".            Lvl 1 Zz Rock (4)\r\n"
                                                     ".                Lvl 1 Zz Dust\r\n"
                                                     ".        Lvl 4 Zz Chip (5)\r\n\r\n"
                                                     "RAW MATERIALS REQUIRED:\r\n"
                                                     ".    Lvl 2 Zz Ore (6)\r\n"
                                                     ".        Lvl 1 Zz Rock (4)\r\n"
                                                     ".            Lvl 1 Zz Dust\r\n\r\n"
                                                     "ITEMS REQUIRED:\r\n"
                                                     ".    Lvl 4 Zz Chip\r\n\r\n"));
    // The chain goes on to what Mk II is upgraded from, on the next page.
    QCOMPARE(shownText(m_game.page(0, 956)), "BUILD INFORMATION FOR: Zz Lance Mk I\r\n\r\n" + plain);
    QCOMPARE(answerPages(m_game, 0), range(954, 956));

    // The writers' check mode: names run together, or the no-records word.
    BuildTextWriter w;
    QCOMPARE(w.GetComps("Zz Coil", 0, buildtext::Components, true), QString("Zz Wire"));
    QCOMPARE(w.GetEquip("Zz Lance Mk I", 0, buildtext::Equipment, true), buildtext::NoRecords);
    QCOMPARE(w.GetEquip("Zz Ore", 0, buildtext::RawMaterials, true), buildtext::NoRecords);
    QCOMPARE(w.GetEquip("Zz Ore", 0, buildtext::RawMaterials), QString());
}

void TestVLInterface::longBuildTextsSpreadOverPages() {
    QString error;
    const int nodes = 90;
    db().close();
    QVERIFY2(GenerateBuildTree(m_fixture.databaseFile(), "Zz Paged Engine", nodes, 4, &error),
             qPrintable(error));
    db().open("Provider=VOSK.SQLite;Data Source=" + m_fixture.databaseFile() + ";");
    QVERIFY2(
        m_fixture.exec(
            {"INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, TYPE, LVL) VALUES ('Zz Paged Extra', 'Device', 1)"},
            &error),
        qPrintable(error));
    start();
    run("BuildView Zz_Paged");
    const QStringList index = shownText(m_game.page(0, 953)).split(CrLf);
    QCOMPARE(index.value(0), QString("2 Records found searching for Zz Paged"));
    QCOMPARE(index.value(2), QString("1. Zz Paged Engine, Page 954"));
    const QList<int> pages = answerPages(m_game, 0);
    const int extra = pages.last();
    QCOMPARE(index.value(3), QString("2. Zz Paged Extra, Page %1").arg(extra));
    QVERIFY2(extra >= 957, "the long text should need three pages at least");
    QCOMPARE(pages, range(954, extra));

    // Each full page passed 1024 characters with its last line only; together they are the whole text.
    QStringList all;
    for (int p = 954; p < extra; ++p) {
        const QString text = shownText(m_game.page(0, p));
        QStringList lines = text.split(CrLf);
        QCOMPARE(lines.last(), QString()); // every page ends with a line end
        lines.removeLast();
        if (p + 1 < extra) {
            QVERIFY(text.size() > 1024);
            QVERIFY(text.size() - lines.last().size() - 2 <= 1024);
        }
        all += lines;
    }
    QCOMPARE(all.first(), QString("BUILD INFORMATION FOR: Zz Paged Engine"));
    QCOMPARE(all.filter(QRegularExpression("^\\. {4,}Lvl ")).size(), nodes - 1);
    QCOMPARE(all.mid(all.size() - 3), QStringList({"ITEMS REQUIRED:", "", ""}));
}

void TestVLInterface::cyclicRecipesAnswerWithWhatWasBuilt() {
    QString error;
    QVERIFY2(m_fixture.addRecipeCycle(&error), qPrintable(error));
    QVERIFY2(m_fixture.exec(
                 {"INSERT INTO EQUIPMENTS_RAW_MATERIALS VALUES ('Cycle Engine', 'Cycle Ore A', 1)",
                  "INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, TYPE, LVL) VALUES ('Zz Loop A', 'Device', 1)",
                  "INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, TYPE, LVL) VALUES ('Zz Loop B', 'Device', 2)",
                  "INSERT INTO EQUIPMENTS_UPGRADE_FROM VALUES ('Zz Loop A', 'Zz Loop B', 1)",
                  "INSERT INTO EQUIPMENTS_UPGRADE_FROM VALUES ('Zz Loop B', 'Zz Loop A', 1)"},
                 &error),
             qPrintable(error));
    start();
    run("BuildView Cycle_Engine");
    QCOMPARE(shownText(m_game.page(0, 953)),
             QString("1 Records found searching for Cycle Engine\r\n\r\n1. Cycle Engine, Page 954\r\n"));
    QStringList all;
    for (int p : answerPages(m_game, 0))
        all += shownText(m_game.page(0, p)).split(CrLf);
    // Down to the build view's bound, then the text goes on with the next part of the answer.
    const QStringList coils = all.filter(QRegularExpression("^\\. +Lvl [89] Cycle Coil [AB]$"));
    QCOMPARE(coils.size(), maxBuildDepth + 1);
    QCOMPARE(coils.last(), "." + QString(4 * (maxBuildDepth + 1), ' ') + "Lvl 8 Cycle Coil A");
    QCOMPARE(all.filter(QRegularExpression("^\\. +Lvl [34] Cycle Ore [AB]( \\(2\\))?$")).size(),
             maxBuildDepth + 1);
    QVERIFY(all.contains("ITEMS REQUIRED:"));
    // Once for each part of the answer that ran into the bound: the writer called one level too deep
    // reports it (below a component, the first one called is GetEquip).
    const QString log = errorLog();
    QCOMPARE(log.count("Error 28 (Out of stack space) in procedure "), 2);
    QCOMPARE(log.count("Error 28 (Out of stack space) in procedure GetEquip of Class Module clsVLInterface"),
             1);
    QCOMPARE(log.count("Error 28 (Out of stack space) in procedure GetRawMat of Class Module clsVLInterface"),
             1);

    // An upgrade chain that comes back to itself ends where it started.
    run("BuildView Zz_Loop_A");
    QCOMPARE(shownText(m_game.page(0, 953)),
             QString("1 Records found searching for Zz Loop A\r\n\r\n1. Zz Loop A, Page 954\r\n"));
    QCOMPARE(answerPages(m_game, 0, caplog::LastPage), range(954, 955));
    QVERIFY(shownText(m_game.page(0, 955)).startsWith("BUILD INFORMATION FOR: Zz Loop B\r\n"));
    QCOMPARE(errorLog().count("Error 28 (Out of stack space) in procedure DisplayBuildView of Class Module "
                              "clsVLInterface"),
             1);
    QCOMPARE(m_fixture.prompt().count(), 0);
}

void TestVLInterface::brokenCommandPagesAreHarmless_data() {
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
    QTest::newRow("a command longer than the reader's buffer")
        << "[LINE-0000]\r\nTEXT=" + QByteArray(600, 'Q')
        << freshPage({QString(511, 'Q') + " is an Invalid Command!"});
    QTest::newRow("UTF-8 text is read as the game's code page")
        << QByteArray("[LINE-0000]\r\nTEXT=SearchEquipment Caf\xC3\xA9s\r\n")
        << QByteArray(
               "[NUM_LINES]\r\nLINES=1\r\n[LINE-0000]\r\nTEXT=Search for Caf\xC3\xA9s returned 0 results.\r\n");
    QTest::newRow("the page is gone or unreadable at the read") << QByteArray("<folder>") << QByteArray();
}

void TestVLInterface::brokenCommandPagesAreHarmless() {
    QFETCH(QByteArray, page);
    QFETCH(QByteArray, expected);
    start();
    const QString file = m_game.page(0, 951);
    m_game.typeCommand(0, "seen", 1);
    m_channel->m_oTimer_ThatTime();
    if (page == "<folder>") {
        QVERIFY(QFile::remove(file) && QDir().mkpath(file));
    } else {
        QVERIFY(writeBytes(file, page));
    }
    m_game.setModified(file, 2);
    m_channel->m_oTimer_ThatTime();
    QCOMPARE(m_beeps, 1);
    QCOMPARE(readBytes(m_game.page(0, 953)), expected);
    QCOMPARE(m_channel->timerInterval(), 250);
    QCOMPARE(m_fixture.prompt().count(), 0);

    // A read-only answer page is neither deleted nor written.
    QVERIFY(writeBytes(m_game.page(0, 953), freshPage({"kept"})));
    QVERIFY(QFile::setPermissions(m_game.page(0, 953), QFileDevice::ReadOwner));
    m_game.typeCommand(0, "Fly", 3);
    m_channel->m_oTimer_ThatTime();
    QCOMPARE(readBytes(m_game.page(0, 953)), freshPage({"kept"}));
    QCOMPARE(m_beeps, 2);
}

void TestVLInterface::pageWritersKeepStaleLines() {
    start();
    const QString file = m_game.page(1, 960);
    m_channel->WriteCapLogFile("one\r\ntwo\r\nthree\r\nfour\r\nfive", 1, 960);
    m_channel->WriteCapLogFile("uno\r\n    dos", 1, 960);
    QCOMPARE(readBytes(file),
             QByteArray("[NUM_LINES]\r\nLINES=2\r\n[LINE-0000]\r\nTEXT=uno\r\n[LINE-0001]\r\n"
                        "TEXT=    dos\r\n[LINE-0002]\r\nTEXT=three\r\n[LINE-0003]\r\nTEXT=four\r\n"
                        "[LINE-0004]\r\nTEXT=five\r\n"));
    QCOMPARE(shownText(file),
             QString("uno\r\ndos")); // the reader drops the blanks: hence the build text's "."
    m_channel->AppendCapLogFile("tres\r\n", 1, 960);
    QCOMPARE(shownText(file), QString("uno\r\ndos\r\ntres\r\n"));
    QCOMPARE(ProfileFile(file).value("LINE-0004", "TEXT"), QString("five"));
    m_channel->WriteCapLogFile(QString(), 1, 960);
    QCOMPARE(ProfileFile(file).value("NUM_LINES", "LINES"), QString("0"));

    m_game.typeCommand(1, "  SearchEquipment Sunspear  ", 1);
    QCOMPARE(m_channel->ReadCapLog("1", 0), QString("SearchEquipment Sunspear"));
    QCOMPARE(m_channel->ReadCapLog("1", 1), QString());
    QCOMPARE(m_channel->ReadCapLog("2", 0), QString());
    QCOMPARE(m_channel->ReadCapLog("x", 0), QString());
    m_channel->WriteCapLogFile("nowhere", 5, 960); // no such character: nothing is written anywhere
    QCOMPARE(m_channel->GetCapLogPath(5, 960), QString());
}

QTEST_GUILESS_MAIN(TestVLInterface)
#include "tst_vlinterface.moc"
