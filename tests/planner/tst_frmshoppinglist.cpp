// The shopping-list window over the recipe world: finding and adding targets by name, quantities,
// ticking lines off and owned quantities written at once, choices per line, the plan kept between
// sessions, changes made elsewhere picked up, and the exports.
#include "core/childwindows.h"
#include "data/database.h"
#include "planner/frmshoppinglist.h"
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

using bom::Kind;

namespace {
planner::ShoppingListModel* listModel(frmShoppingList* w) {
    return static_cast<planner::ShoppingListModel*>(w->lstShopping->model());
}

// "name: to get" for every line, in the list's order.
QStringList lines(frmShoppingList* w) {
    QStringList out;
    for (const planner::ShoppingLine& l : w->session().list().lines)
        out << l.ref.name + ": " + QString::number(l.toGet);
    return out;
}

qint64 toGet(frmShoppingList* w, const QString& name) {
    for (const planner::ShoppingLine& l : w->session().list().lines)
        if (l.ref.name == name)
            return l.toGet;
    return -1;
}
} // namespace

class TestFrmShoppingList : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString error;
        QVERIFY2(f.setUp(false, &error), qPrintable(error));
        QVERIFY2(f.exec(RecipeWorld() + RecipeWorldSources() +
                            QStringList{"INSERT INTO ITEMS (ITEM_NAME) VALUES ('Coal Sack')"},
                        &error),
                 qPrintable(error));
    }
    void cleanup() {
        CloseChildWindows();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        SetShoppingCheckHook(nullptr);
        f.tearDown();
    }

    void findingTargetsByName_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("added"); // empty: nothing added
        QTest::addColumn<QString>("message");
        QTest::newRow("one match") << "cannon"
                                   << "Pulse Cannon"
                                   << "";
        QTest::newRow("exact name among several") << "coal"
                                                  << "Coal"
                                                  << "";
        QTest::newRow("chosen from the matches") << "Core \u2014 Component"
                                                 << "Core"
                                                 << "";
        QTest::newRow("a quote in the name") << "smith's"
                                             << "Smith's Manual"
                                             << "";
        QTest::newRow("several") << "r"
                                 << ""
                                 << "Several records are named like 'r': choose one from the list.";
        QTest::newRow("none") << "Zyx"
                              << ""
                              << "No equipment, component, raw material or item is named like 'Zyx'.";
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
    }

    void theMatchesOfTheSearchBox() {
        frmShoppingList* w = ShowShoppingList();
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
        planner::ShoppingListModel* m = listModel(w);
        const QModelIndex barrel = m->indexOf({Kind::Component, "Barrel"});
        QVERIFY(barrel.isValid());
        QVERIFY(m->setData(barrel, Qt::Checked, Qt::CheckStateRole));
        QCOMPARE(f.scalar("SELECT CHECK FROM COMPONENTS WHERE COMPONENT_NAME = 'Barrel'").toBool(), true);
        QApplication::processEvents(); // the view shows the new list once the edit is done
        QVERIFY(!m->indexOf({Kind::Component, "Tube"}).isValid());
        QCOMPARE(toGet(w, "Iron"), 38);
        QCOMPARE(m->data(m->indexOf({Kind::Component, "Barrel"}), Qt::CheckStateRole).toInt(),
                 int(Qt::Checked));
        QCOMPARE(told, QStringList{"Components/Barrel/on"});

        // How many the player has: one barrel of four.
        QVERIFY(m->setData(m->indexOf({Kind::Component, "Barrel"}), Qt::Unchecked, Qt::CheckStateRole));
        QApplication::processEvents();
        const QModelIndex have =
            m->index(m->indexOf({Kind::Component, "Barrel"}).row(), planner::ShoppingListModel::Have,
                     m->indexOf({Kind::Component, "Barrel"}).parent());
        QVERIFY(m->setData(have, "1"));
        QApplication::processEvents();
        QCOMPARE(f.scalar("SELECT QUANTITY FROM OWNED_QUANTITIES WHERE RECORD_NAME = 'Barrel'").toInt(), 1);
        QCOMPARE(toGet(w, "Tube"), 3);
        QVERIFY(!m->setData(m->index(have.row(), have.column(), have.parent()), "-2"));
        QVERIFY(m->setData(m->index(have.row(), have.column(), have.parent()), ""));
        QApplication::processEvents();
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM OWNED_QUANTITIES").toInt(), 0);
        QCOMPARE(toGet(w, "Tube"), 4);
    }

    void aWriteThatFailsIsReportedAndChangesNothing() {
        frmShoppingList* w = ShowShoppingList();
        w->addTarget({Kind::Equipment, "Pulse Cannon"}, 2);
        char* msg = nullptr;
        QCOMPARE(sqlite3_exec(db().handle(),
                              "CREATE TRIGGER NO_TICKS BEFORE UPDATE ON COMPONENTS BEGIN SELECT RAISE(ABORT, "
                              "'ticks are locked'); END",
                              nullptr, nullptr, &msg),
                 SQLITE_OK);
        planner::ShoppingListModel* m = listModel(w);
        QVERIFY(!m->setData(m->indexOf({Kind::Component, "Barrel"}), Qt::Checked, Qt::CheckStateRole));
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
        QCOMPARE(lines(w),
                 (QStringList{"Iron: 10", "Pulse Cannon: 2", "Smith's Manual: 2", "Barrel: 4", "Core: 2"}));
        // The core built after all, from the line's pop-up menu.
        w->lstShopping->setCurrentIndex(listModel(w)->indexOf({Kind::Component, "Core"}));
        w->chooseCurrent(true);
        QCOMPARE(toGet(w, "Spark Drill"), 2);
        QCOMPARE(w->session().choice({Kind::Component, "core"}), std::optional<bool>(true));
        w->chooseCurrent(std::nullopt);
        QCOMPARE(toGet(w, "Spark Drill"), -1);
        w->chkBuildIntermediates->setChecked(true);
        QString error;
        QVERIFY2(f.exec({"UPDATE COMPONENTS SET CHECK = TRUE WHERE COMPONENT_NAME = 'Barrel'"}, &error),
                 qPrintable(error));
        w->refreshList(); // changed elsewhere: read again
        QCOMPARE(toGet(w, "Tube"), -1);
        w->chkCountHave->setChecked(false);
        QCOMPARE(toGet(w, "Tube"), 4);
    }

    void thePlanIsThereNextTime() {
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

    void exports() {
        frmShoppingList* w = ShowShoppingList();
        w->addTarget({Kind::Equipment, "Pulse Cannon"}, 2);
        w->mnuCopyText_Click();
        QCOMPARE(QApplication::clipboard()->text(), w->listText());
        QVERIFY(w->listText().contains("90 \u00d7 Iron"));

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
        QVERIFY(w->listHtml().contains("<h3>Bought (1)"));
    }

private:
    ViewsFixture f;
};

QTEST_MAIN(TestFrmShoppingList)
#include "tst_frmshoppinglist.moc"
