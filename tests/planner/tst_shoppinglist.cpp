// The shopping list over the hand-worked recipe world with its stations, mines and MOBs: the groups,
// the texts of where and what from, costs and warnings, the exports, what is written and kept; and
// its window: targets found by name, quantities, ticks and owned quantities written at once, choices
// per line, the plan kept between sessions.
#include "core/childwindows.h"
#include "core/settings.h"
#include "data/database.h"
#include "planner/frmshoppinglist.h"
#include "planner/plannerstore.h"
#include "planner/shoppingexport.h"
#include "planner/shoppinglist.h"
#include "planner/shoppingmodels.h"
#include "views/recipeworld.h"
#include "viewsfixture.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QFile>
#include <QLineEdit>
#include <QSpinBox>
#include <QTableView>
#include <QTest>
#include <QTreeView>
#include <sqlite3.h>

using namespace planner;
using bom::Kind;

namespace {
const QList<bom::Target> kTwoCannons = {{{Kind::Equipment, "Pulse Cannon"}, 2}};

ShoppingList listFor(const QList<bom::Target>& targets, const bom::Options& options = bom::Options()) {
    bom::RecipeBook book;
    QList<bom::Ref> roots;
    for (const bom::Target& t : targets)
        roots << t.ref;
    book.load(roots);
    const bom::Plan plan = bom::Expand(book, targets, options);
    SourceBook sources;
    QList<bom::Ref> records;
    for (const bom::Line& l : plan.lines)
        records << book.at(l.record).ref();
    sources.load(records);
    return BuildShoppingList(book, plan, sources, targets);
}

const ShoppingLine* find(const ShoppingList& list, const QString& name) {
    for (const ShoppingLine& l : list.lines)
        if (l.ref.name == name)
            return &l;
    return nullptr;
}

ShoppingListModel* listModel(frmShoppingList* w) {
    return static_cast<ShoppingListModel*>(w->lstShopping->model());
}

// "name: to get" for every line of the window's list, in its order.
QStringList lines(frmShoppingList* w) {
    QStringList out;
    for (const ShoppingLine& l : w->session().list().lines)
        out << l.ref.name + ": " + QString::number(l.toGet);
    return out;
}

qint64 toGet(frmShoppingList* w, const QString& name) {
    const ShoppingLine* l = find(w->session().list(), name);
    return l ? l->toGet : -1;
}
} // namespace

class TestShoppingList : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString error;
        QVERIFY2(f.setUp(false, &error), qPrintable(error));
        exec(RecipeWorld() + RecipeWorldSources() +
             QStringList{"INSERT INTO COMPONENTS_ITEMS (COMPONENT_NAME, ITEM_NAME, AMOUNT) VALUES ('Tube', "
                         "'Ghost Gear', 1)",
                         "INSERT INTO ITEMS (ITEM_NAME) VALUES ('Coal Sack')"});
    }
    void cleanup() {
        CloseChildWindows();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        SetShoppingCheckHook(nullptr);
        f.tearDown();
    }

    void eachRecordInTheGroupOfHowItIsHad() {
        QStringList got;
        for (const ShoppingLine& l : listFor(kTwoCannons).lines)
            got << GroupTitle(l.group) + ": " + QuantityText(l.toGet) + " " + l.ref.name;
        QCOMPARE(got,
                 (QStringList{"Bought: 90 Iron", "Mined: 16 Coal", "Refined: 16 Steel", "Built: 4 Barrel",
                              "Built: 2 Core", "Built: 2 Pulse Cannon", "Built: 2 Spark Drill",
                              "Built: 4 Tube", "Looted: 2 Smith's Manual", "Unknown Source: 4 Ghost Gear"}));
    }

    void linesSayWhereAndForHowMuch_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("texts"); // price, cost, where, other ways, used in, for
        const auto row = [](const char* what, const QString& name, const QStringList& texts) {
            QTest::newRow(what) << name << texts;
        };
        row("bought, priced", "Iron",
            {"2", "180", "Far Post (Lone Reach)", "mined in Aldra Drift (Aldra); Lone Reach",
             "Core \u00d71, Pulse Cannon \u00d75, Spark Drill \u00d77, Steel \u00d73, Tube \u00d74",
             "Pulse Cannon"});
        row("mined, price unknown", "Coal",
            {"Unknown", "", "Aldra Drift (Aldra)", "", "Steel \u00d71", "Pulse Cannon"});
        row("refined from what", "Steel",
            {"", "", "1 \u00d7 Coal + 3 \u00d7 Iron each", "", "Barrel \u00d73, Core \u00d72",
             "Pulse Cannon"});
        row("built equipment: the manufacturing fee", "Spark Drill",
            {"20", "40", "7 \u00d7 Iron each", "sold at Kell's Anchorage (Aldra Drift, Aldra)",
             "Core \u00d71", "Pulse Cannon"});
        row("the target", "Pulse Cannon",
            {"450", "900", "2 \u00d7 Barrel + 1 \u00d7 Core + 1 \u00d7 Smith's Manual + 5 \u00d7 Iron each",
             "", "", "Pulse Cannon"});
        row("looted: the MOB and where it spawns", "Smith's Manual",
            {"Mission Reward", "", "Grey Wraith (Rare) in Aldra Drift, Lone Reach", "",
             "Pulse Cannon \u00d71", "Pulse Cannon"});
        row("not in the database", "Ghost Gear",
            {"", "", "Not in the database", "", "Tube \u00d71", "Pulse Cannon"});
    }
    void linesSayWhereAndForHowMuch() {
        QFETCH(QString, name);
        QFETCH(QStringList, texts);
        const ShoppingList list = listFor(kTwoCannons);
        const ShoppingLine* l = find(list, name);
        QVERIFY(l);
        QCOMPARE((QStringList{l->priceText, l->costKnown ? QuantityText(l->cost) : QString(), l->where,
                              l->otherWays, l->usedIn, l->forTargets}),
                 texts);
    }

    void totalsAndWarnings() {
        exec({"UPDATE EQUIPMENTS SET COST_TO_MANUFACTURE = -1 WHERE EQUIPMENT_NAME = 'Spark Drill'",
              "UPDATE RAW_MATERIALS SET PRICE = 0 WHERE RAW_MATERIAL_NAME = 'Iron'"});
        ShoppingList list = listFor(kTwoCannons);
        QCOMPARE(list.totalCost, qint64(0));
        QCOMPARE(list.unpriced, 1);       // Iron, bought, price unknown
        QCOMPARE(list.fees, qint64(900)); // the drill is not manufacturable: no fee counted
        QCOMPARE(list.groups[int(Group::Built)].lines, 5);
        QCOMPARE(list.warnings, (QStringList{"Named in a recipe but not in the database: Ghost Gear (Item).",
                                             "Spark Drill is marked Not Manufacturable."}));
        // Bought instead of built, the core's price of "Loot Only" is no cost; a MOB dropping it would
        // make it looted.
        bom::Options buy;
        buy.buildIntermediates = false;
        list = listFor(kTwoCannons, buy);
        QCOMPARE(find(list, "Core")->group, Group::Unknown);
        QCOMPARE(find(list, "Core")->priceText, QStringLiteral("Loot Only"));
        exec({"INSERT INTO MOB_COMP_DROP (MOB_NAME, COMPONENT_NAME, DROP_FREQUENCY) VALUES ('Grey Wraith', "
              "'Core', 'Normal')",
              "INSERT INTO BUY_COMPONENT_LOCATIONS (COMPONENTS_COMPONENT, STATIONS_STATION) VALUES ('Core', "
              "'Far Post'), ('Barrel', 'Far Post')"});
        list = listFor(kTwoCannons, buy);
        QCOMPARE(find(list, "Core")->group, Group::Looted);
        QCOMPARE(find(list, "Barrel")->group, Group::Bought);
        QCOMPARE(find(list, "Barrel")->cost, qint64(4 * 120));
        QCOMPARE(list.totalCost, qint64(4 * 120));
        // A ticked record shows what is had, and the lines below it go.
        exec({"UPDATE COMPONENTS SET CHECK = TRUE WHERE COMPONENT_NAME = 'Barrel'"});
        list = listFor(kTwoCannons);
        const ShoppingLine* barrel = find(list, "Barrel");
        QVERIFY(barrel && barrel->checked && barrel->toGet == 0 && barrel->have == 4);
        QVERIFY(!find(list, "Tube") && !find(list, "Ghost Gear"));
    }

    void exports() {
        exec({"UPDATE ITEMS SET ITEM_NAME = 'Manual, \"Smith''s\"' WHERE ITEM_NAME = 'Smith''s Manual'",
              "UPDATE EQUIPMENTS_ITEMS SET ITEM_NAME = 'Manual, \"Smith''s\"'",
              "UPDATE MOB_ITEM_DROP SET ITEM_NAME = 'Manual, \"Smith''s\"'",
              "UPDATE RAW_MATERIALS SET CHECK = TRUE WHERE RAW_MATERIAL_NAME = 'Coal'"});
        const ShoppingList list = listFor(kTwoCannons);
        const QStringList rows = ShoppingListCsv(list).split("\r\n");
        QCOMPARE(
            rows.first(),
            "Group,Name,Kind,Ordered,Needed,Have,To Get,Price,Cost,Where,Other Ways,Used In,For,Obtained");
        for (
            const char* row :
            {"Looted,\"Manual, \"\"Smith's\"\"\",Item,0,2,0,2,Mission Reward,,\"Grey Wraith (Rare) in Aldra Drift, "
             "Lone Reach\",,Pulse Cannon \u00d71,Pulse Cannon,No",
             "Mined,Coal,Raw Material,0,16,16,0,Unknown,,Aldra Drift (Aldra),,Steel \u00d71,Pulse Cannon,Yes"})
            QVERIFY2(rows.contains(row), row);
        QCOMPARE(rows.size(),
                 list.lines.size() + 2); // header, lines, and the empty text after the last CR LF

        const QString text = ShoppingListText(list, "2 \u00d7 Pulse Cannon");
        QVERIFY(text.startsWith(
            "Shopping list: 2 \u00d7 Pulse Cannon\r\nTotal to buy: 180 credits; manufacturing "
            "fees: 940 credits\r\n! Named in a recipe but not in the database: Ghost Gear "
            "(Item).\r\n"));
        QVERIFY(
            text.contains("\r\nBought (1) \u2014 180 credits\r\n  [ ] 90 \u00d7 Iron (Raw Material) \u2014 2 "
                          "each, 180 \u2014 Far Post (Lone Reach)\r\n"));
        QVERIFY(text.contains(
            "  [x] 0 \u00d7 Coal (Raw Material), have 16 of 16 \u2014 Unknown \u2014 Aldra Drift"));
        const QString html = ShoppingListHtml(list, "2 \u00d7 <Cannon>");
        QVERIFY(html.contains("&lt;Cannon&gt;") && html.contains("<h3>Built (5) \u2014 940 credits</h3>"));
        QCOMPARE(html.count("<tr>"), list.lines.size() + 6); // a header row per group
    }

    void ticksAndOwnedQuantitiesAreWritten() {
        const bom::Ref manual{Kind::Item, "Smith's Manual"};
        for (const auto& [kind, name, table] : {std::tuple{Kind::Equipment, "Spark Drill", "EQUIPMENTS"},
                                                {Kind::Component, "Tube", "COMPONENTS"},
                                                {Kind::RawMaterial, "Coal", "RAW_MATERIALS"},
                                                {Kind::Item, "Smith's Manual", "ITEMS"}}) {
            WriteCheck({kind, name}, true);
            QCOMPARE(f.scalar(QString("SELECT COUNT(*) FROM %1 WHERE CHECK = TRUE").arg(table)).toInt(), 1);
        }
        WriteCheck(manual, false);
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM ITEMS WHERE CHECK = TRUE").toInt(), 0);
        WriteOwned(manual, 3);
        WriteOwned(manual, 5); // the same row again
        WriteOwned({Kind::RawMaterial, "Smith's Manual"}, 7);
        QCOMPARE(
            f.scalar("SELECT QUANTITY FROM OWNED_QUANTITIES WHERE RECORD_KIND = 'Items' AND RECORD_NAME = "
                     "'smith''s manual'")
                .toInt(),
            5);
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM OWNED_QUANTITIES").toInt(), 2);
        WriteOwned(manual, 0);
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM OWNED_QUANTITIES").toInt(), 1);
    }

    void thePlanIsKept() {
        SavedPlan plan;
        plan.targets = {{{Kind::Equipment, "Hunter's Lance"}, 2}, {{Kind::RawMaterial, "Ore, Pure"}, 40}};
        plan.buildIntermediates = plan.countHave = false;
        plan.build.insert({Kind::Component, "Core"}, true);
        plan.build.insert({Kind::RawMaterial, "Steel"}, false);
        SavePlan(plan);
        const SavedPlan back = LoadPlan();
        QCOMPARE(back.targets.size(), 2);
        QVERIFY(back.targets[0].ref == plan.targets[0].ref && back.targets[1].ref == plan.targets[1].ref);
        QCOMPARE(back.targets[1].quantity, 40);
        QVERIFY(!back.buildIntermediates && !back.countHave);
        QCOMPARE(back.build, plan.build);
        // What a hand-edited settings store holds that makes no sense is left out.
        SaveSetting("ShoppingList", "Targets",
                    "Stations\tFar Post\t1\nItems\t\t3\nItems\tCrate\t-4\nJunk\nItems\tCrate\t2");
        QCOMPARE(LoadPlan().targets.size(), 1);
        // The window opens on the plan, and the main window's entry adds to it.
        SavePlan(SavedPlan());
        frmShoppingList* w = ShowShoppingList();
        w->addTarget({Kind::Equipment, "Pulse Cannon"}, 2);
        w->addTarget({Kind::Component, "Tube"}, 7);
        w->chkCountHave->setChecked(false);
        w->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!OpenShoppingList());
        AddToShoppingList("Raw Materials", "Coal");
        w = OpenShoppingList();
        QVERIFY(w);
        QCOMPARE(w->session().targets().size(), 3);
        QCOMPARE(w->session().targets()[1].quantity, 7);
        QVERIFY(!w->chkCountHave->isChecked());
        QCOMPARE(w->windowTitle(),
                 QStringLiteral("Shopping List: 2 \u00d7 Pulse Cannon, 7 \u00d7 Tube, 1 \u00d7 Coal"));
        AddToShoppingList("Stations", "Far Post"); // not something to make: nothing happens
        QCOMPARE(w->session().targets().size(), 3);
        QCOMPARE(ShowShoppingList(), w);
    }

    void findingTargetsByName_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("added"); // empty: nothing added, the message instead
        QTest::addColumn<QString>("message");
        const auto row = [](const char* name, const QString& typed, const char* added, const char* message) {
            QTest::newRow(name) << typed << QString(added) << QString(message);
        };
        row("one match", "cannon", "Pulse Cannon", "");
        row("exact name among several", "coal", "Coal", "");
        row("chosen from the matches", "Core \u2014 Component", "Core", "");
        row("a quote in the name", "smith's", "Smith's Manual", "");
        row("several", "r", "", "Several records are named like 'r': choose one from the list.");
        row("none", "Zyx", "", "No equipment, component, raw material or item is named like 'Zyx'.");
    }
    void findingTargetsByName() {
        QFETCH(QString, typed);
        QFETCH(QString, added);
        QFETCH(QString, message);
        frmShoppingList* w = ShowShoppingList();
        w->spnQuantity->setValue(3);
        w->txtAddTarget->setText(typed);
        QTest::keyClick(w->txtAddTarget, Qt::Key_Return);
        if (added.isEmpty()) {
            QVERIFY(w->session().targets().isEmpty());
            QCOMPARE(f.prompt().last().text, message);
            QCOMPARE(w->txtAddTarget->text(), typed); // kept, to be corrected
            return;
        }
        QCOMPARE(f.prompt().count(), 0);
        QCOMPARE(w->session().targets().size(), 1);
        QCOMPARE(w->session().book().at(w->session().book().indexOf(w->session().targets()[0].ref)).name,
                 added);
        QCOMPARE(w->session().targets()[0].quantity, 3);
        QVERIFY(w->txtAddTarget->text().isEmpty());
        QCOMPARE(w->spnQuantity->value(), 1);
        QCOMPARE(w->findRecords("IRON"), QStringList{"Iron \u2014 Raw Material"});
        QCOMPARE(w->findRecords("e"), (QStringList{"Pulse Cannon \u2014 Equipment", "Barrel \u2014 Component",
                                                   "Core \u2014 Component", "Tube \u2014 Component",
                                                   "Steel \u2014 Raw Material"}));
        QVERIFY(w->findRecords("  ").isEmpty());
    }

    void quantitiesAndTargetsRework() {
        frmShoppingList* w = ShowShoppingList();
        w->addTarget({Kind::Equipment, "Pulse Cannon"}, 1);
        QCOMPARE(toGet(w, "Iron"), 45);
        QAbstractItemModel* targets = w->tblTargets->model();
        QVERIFY(targets->setData(targets->index(0, 2), "4"));
        QCOMPARE(toGet(w, "Iron"), 180);
        QVERIFY(!targets->setData(targets->index(0, 2), "none")); // refused, kept
        QVERIFY(!targets->setData(targets->index(0, 2), "0"));
        QCOMPARE(w->session().targets()[0].quantity, 4);
        w->addTarget({Kind::RawMaterial, "iron"}, 5); // a second target
        w->addTarget({Kind::RawMaterial, "IRON"}, 5); // the same again adds up
        QCOMPARE(w->session().targets().size(), 2);
        QCOMPARE(toGet(w, "Iron"), 190);
        w->tblTargets->setCurrentIndex(targets->index(0, 0));
        w->cmdRemove_Click();
        QCOMPARE(lines(w), QStringList{"Iron: 10"});
        f.prompt().queueButton(vb::No);
        w->cmdClear_Click();
        QCOMPARE(w->session().targets().size(), 1);
        w->cmdClear_Click(); // Yes
        QVERIFY(w->session().targets().isEmpty() && w->session().list().lines.isEmpty());
    }

    void tickingALineWritesAtOnceAndTakesItsSubtreeOff() {
        QStringList told;
        SetShoppingCheckHook([&](const QString& c, const QString& n, bool on) {
            told << c + "/" + n + "/" + (on ? "on" : "off");
        });
        frmShoppingList* w = ShowShoppingList();
        w->addTarget({Kind::Equipment, "Pulse Cannon"}, 2);
        ShoppingListModel* m = listModel(w);
        const bom::Ref barrel{Kind::Component, "Barrel"};
        QVERIFY(m->setData(m->indexOf(barrel), Qt::Checked, Qt::CheckStateRole));
        QCOMPARE(f.scalar("SELECT CHECK FROM COMPONENTS WHERE COMPONENT_NAME = 'Barrel'").toBool(), true);
        QApplication::processEvents(); // the view shows the new list once the edit is done
        QVERIFY(!m->indexOf({Kind::Component, "Tube"}).isValid());
        QCOMPARE(toGet(w, "Iron"), 38);
        QCOMPARE(m->data(m->indexOf(barrel), Qt::CheckStateRole).toInt(), int(Qt::Checked));
        QCOMPARE(told, QStringList{"Components/Barrel/on"});
        // How many the player has: one barrel of four.
        QVERIFY(m->setData(m->indexOf(barrel), Qt::Unchecked, Qt::CheckStateRole));
        QApplication::processEvents();
        const auto have = [&] {
            const QModelIndex at = m->indexOf(barrel);
            return m->index(at.row(), ShoppingListModel::Have, at.parent());
        };
        QVERIFY(m->setData(have(), "1"));
        QApplication::processEvents();
        QCOMPARE(f.scalar("SELECT QUANTITY FROM OWNED_QUANTITIES WHERE RECORD_NAME = 'Barrel'").toInt(), 1);
        QCOMPARE(toGet(w, "Tube"), 3);
        QVERIFY(!m->setData(have(), "-2"));
        QVERIFY(m->setData(have(), ""));
        QApplication::processEvents();
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM OWNED_QUANTITIES").toInt(), 0);
        QCOMPARE(toGet(w, "Tube"), 4);
        // A write the database refuses is reported and changes nothing.
        QCOMPARE(sqlite3_exec(db().handle(),
                              "CREATE TRIGGER NO_TICKS BEFORE UPDATE ON COMPONENTS BEGIN SELECT RAISE(ABORT, "
                              "'ticks are locked'); END",
                              nullptr, nullptr, nullptr),
                 SQLITE_OK);
        QVERIFY(!m->setData(m->indexOf(barrel), Qt::Checked, Qt::CheckStateRole));
        QApplication::processEvents();
        QVERIFY(f.prompt().count() >= 1);
        QCOMPARE(f.scalar("SELECT CHECK FROM COMPONENTS WHERE COMPONENT_NAME = 'Barrel'").toBool(), false);
        QCOMPARE(toGet(w, "Tube"), 4);
        QVERIFY(QFile(f.path() + "/errors.log").exists());
    }

    void choicesAndOptions() {
        frmShoppingList* w = ShowShoppingList();
        w->addTarget({Kind::Equipment, "Pulse Cannon"}, 2);
        w->chkBuildIntermediates->setChecked(false);
        QCOMPARE(toGet(w, "Spark Drill"), -1);
        // The core built after all, from the line's pop-up menu.
        w->lstShopping->setCurrentIndex(listModel(w)->indexOf({Kind::Component, "Core"}));
        w->chooseCurrent(true);
        QCOMPARE(toGet(w, "Spark Drill"), 2);
        QCOMPARE(w->session().choice({Kind::Component, "core"}), std::optional<bool>(true));
        w->chooseCurrent(std::nullopt);
        QCOMPARE(toGet(w, "Spark Drill"), -1);
        w->chkBuildIntermediates->setChecked(true);
        exec({"UPDATE COMPONENTS SET CHECK = TRUE WHERE COMPONENT_NAME = 'Barrel'"});
        w->refreshList(); // changed elsewhere: read again
        QCOMPARE(toGet(w, "Tube"), -1);
        w->chkCountHave->setChecked(false);
        QCOMPARE(toGet(w, "Tube"), 4);
    }

    void windowExports() {
        frmShoppingList* w = ShowShoppingList();
        w->addTarget({Kind::Equipment, "Pulse Cannon"}, 2);
        w->mnuCopyText_Click();
        QCOMPARE(QApplication::clipboard()->text(), w->listText());
        const QString csv = f.path() + "/list.csv";
        f.prompt().queueText(csv);
        w->mnuSaveCsv_Click();
        QCOMPARE(f.prompt().last().text, QStringLiteral("Save Shopping List"));
        QFile file(csv);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("\xEF\xBB\xBF") + w->listCsv().toUtf8());
        f.prompt().queueText(QString()); // cancelled: nothing written
        w->mnuSaveCsv_Click();
        f.prompt().queueText(f.path() + "/no such folder/list.csv");
        w->mnuSaveCsv_Click();
        QVERIFY(f.prompt().last().text.startsWith("The shopping list could not be saved to"));
        const QString pdf = f.path() + "/list.pdf";
        f.prompt().queueText(pdf);
        w->mnuPrint_Click(true);
        QVERIFY(QFile(pdf).size() > 1000);
    }

private:
    void exec(const QStringList& statements) {
        QString error;
        QVERIFY2(f.exec(statements, &error), qPrintable(error));
    }
    ViewsFixture f;
};

QTEST_MAIN(TestShoppingList)
#include "tst_shoppinglist.moc"
