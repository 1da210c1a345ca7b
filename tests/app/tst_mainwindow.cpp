// The main window over the sample database in a temporary program folder: load, filters, the search
// box, ticks (and ticks that fail), the record menus' boxes, settings and column layouts, and the
// shopping list's entries.
#include "app/frmmain.h"
#include "app/mainsettings.h"
#include "core/childwindows.h"
#include "core/programfolder.h"
#include "core/settings.h"
#include "core/tooltip.h"
#include "data/database.h"
#include "lists/frmfind.h"
#include "lists/listmodel.h"
#include "planner/frmshoppinglist.h"
#include "planner/shoppingmodels.h"
#include "viewsfixture.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTest>
#include <QTreeView>
#include <sqlite3.h>

namespace {
// Records the text a label shows each time it is painted.
struct PaintedTexts : QObject {
    QStringList texts;
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (auto* label = qobject_cast<QLabel*>(watched); label && event->type() == QEvent::Paint)
            texts << label->text();
        return false;
    }
};

// A transaction rolled back at the end of the scope, whatever happened inside it.
auto transaction() {
    db().beginTrans();
    return qScopeGuard([] {
        if (db().inTransaction())
            db().rollbackTrans();
    });
}
} // namespace

class TestMainWindow : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString error;
        QVERIFY2(f.setUp(true, &error), qPrintable(error));
        QFile ini(iniPath());
        QVERIFY(ini.open(QIODevice::WriteOnly) &&
                ini.write("[Main]\nDATA=Pick a category\n[COLORS]\nUPDATED=12582912\nPERSONAL=32768\n") > 0);
    }
    void cleanup() {
        w.reset();
        CloseChildWindows();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        f.tearDown();
    }

    void filtersListRowsAndTicksAreWritten() {
        db().execute("INSERT INTO COMPONENTS (COMPONENT_NAME, LVL) VALUES ('Zz Untyped Part', 2)");
        db().execute("INSERT INTO ITEMS (ITEM_NAME, LVL, CHECK) VALUES ('Zz Captain''s Log', 1, FALSE)");
        db().execute("INSERT INTO MOBS (MOB_NAME) VALUES ('Zz Mob 46')");
        db().execute("INSERT INTO MOB_STATS (MOB_NAME, COMBAT_LEVEL) VALUES ('Zz Mob 46', 46)");
        frmMain& m = open();
        QCOMPARE(m.windowTitle(), QString("VOSK v%1.%2.%3")
                                      .arg(VOSK_VERSION_MAJOR)
                                      .arg(VOSK_VERSION_MINOR)
                                      .arg(VOSK_VERSION_REVISION));
        QCOMPARE(m.panelText("ItemCount"), "Items: " + QString::number(count("SELECT * FROM EQUIPMENTS")));
        QCOMPARE(m.panelText("Interaction"), "Game Interaction: Disabled");
        QCOMPARE(TipText(m.cmbData), "Pick a category");
        for (int c = 0; c < m.model()->columnCount(); ++c)
            QVERIFY2(!QStringList({"CHECK", "PERSONAL_DB", "UPDATED", "SUBMITTED", "UNIQUE_FLAG", "PIC_ID"})
                          .contains(m.model()->columnName(c)),
                     qPrintable(m.model()->columnName(c)));
        // A component without a type is listed under "Unknown" and shows that word.
        QVERIFY(choose(m.cmbData, "Components"));
        QVERIFY(m.cmbCompType->isVisibleTo(&m) && !m.cmbEquipType->isVisibleTo(&m));
        QVERIFY(choose(m.cmbCompType, "Unknown"));
        QCOMPARE(m.model()->rowCount(),
                 count("SELECT * FROM COMPONENTS WHERE TYPE IS NULL OR TYPE = 'Unknown'"));
        QCOMPARE(m.model()->text(rowOf("Zz Untyped Part"), m.model()->columnIndex("TYPE")), "Unknown");
        // The bands run on the database (their statements are checked whole elsewhere); the list shows
        // three times the combat level as the overall level.
        QVERIFY(choose(m.cmbData, "MOBs") && choose(m.cmbCL, "46-50") && rowOf("Zz Mob 46") >= 0);
        QCOMPARE(m.model()->text(rowOf("Zz Mob 46"), m.model()->columnIndex("OVERALL_LEVEL")), "138");
        // A tick is written at once, a name with a quote included; the tick filter then lists the row.
        const QString readBack = "SELECT CHECK FROM ITEMS WHERE ITEM_NAME = 'Zz Captain''s Log'";
        QVERIFY(choose(m.cmbData, "Items"));
        QVERIFY(choose(m.cmbLevel, "1"));
        QVERIFY(m.model()->setData(m.model()->index(rowOf("Zz Captain's Log"), 0), Qt::Checked,
                                   Qt::CheckStateRole));
        QCOMPARE(f.scalar(readBack).toBool(), true);
        QVERIFY(choose(m.cmbChecked, "Checked"));
        QCOMPARE(m.model()->rowCount(), count("SELECT * FROM ITEMS WHERE LVL = 1 AND CHECK = TRUE"));
        QCOMPARE(m.panelText("ItemCount"), "Items: " + QString::number(m.model()->rowCount()));
        QCOMPARE(m.panelText("Status"), "Ready");
        QVERIFY(m.model()->setData(m.model()->index(rowOf("Zz Captain's Log"), 0), Qt::Unchecked,
                                   Qt::CheckStateRole));
        QCOMPARE(f.scalar(readBack).toBool(), false);
        QCOMPARE(f.prompt().count(), 0);
    }

    void emptyTableAndNullRowsListQuietly() {
        // A MOB whose every listed column but its name is NULL; stations emptied inside a transaction.
        db().execute("INSERT INTO MOBS (MOB_NAME) VALUES ('Zz Blank')");
        db().execute("INSERT INTO MOB_STATS (MOB_NAME) VALUES ('Zz Blank')");
        frmMain& m = open();
        QVERIFY(choose(m.cmbData, "MOBs"));
        const int blank = rowOf("Zz Blank");
        QVERIFY(blank >= 0);
        for (int c = 1; c < m.model()->columnCount(); ++c)
            QCOMPARE(m.model()->text(blank, c), m.model()->columnName(c) == "TYPE" ? "Unknown" : "");
        const auto rollBack = transaction();
        db().execute("DELETE FROM STATION_TERMINALS");
        db().execute("DELETE FROM STATIONS");
        QVERIFY(choose(m.cmbData, "Stations"));
        QCOMPARE(m.model()->rowCount(), 0);
        QVERIFY(m.model()->columnCount() > 0);
        QCOMPARE(m.panelText("ItemCount"), "Items: 0");
        QCOMPARE(m.panelText("Status"), "Ready");
        QCOMPARE(f.prompt().count(), 0);
    }

    // A tick the database refuses or stores nowhere: the box goes back and the player is told.
    void failedTickIsReportedAndUndone_data() {
        QTest::addColumn<QString>("change"); // behind the list's back, %1 the quoted name; empty: two quotes
        QTest::addColumn<QString>("text");   // the box, %1 the name; empty: only where it came from
        const QString missing = "Error 3021 (The tick was not stored: no record named \"%1\" was found.)  "
                                "procedure lstItems_ItemCheck of Form frmMain";
        QTest::newRow("table gone") << "ALTER TABLE ITEMS RENAME TO ITEMS_AWAY"
                                    << "";
        QTest::newRow("deleted") << "DELETE FROM ITEMS WHERE ITEM_NAME = '%1'" << missing;
        // Stored before the database refused such names: the statement would tick every row.
        QTest::newRow("two quotes in a row")
            << ""
            << "Error 5 (The tick was not stored: the name \"%1\" holds two "
               "single quotes in a row.)  procedure lstItems_ItemCheck of Form "
               "frmMain";
    }
    void failedTickIsReportedAndUndone() {
        QFETCH(QString, change);
        QFETCH(QString, text);
        const auto rollBack = transaction();
        if (change.isEmpty()) {
            sqlite3_exec(db().handle(), "PRAGMA ignore_check_constraints = ON", nullptr, nullptr, nullptr);
            db().execute("INSERT INTO ITEMS (ITEM_NAME, LVL, CHECK) VALUES ('Zz x'' OR ''''=''', 1, FALSE)");
            sqlite3_exec(db().handle(), "PRAGMA ignore_check_constraints = OFF", nullptr, nullptr, nullptr);
        }
        frmMain& m = open();
        QVERIFY(choose(m.cmbData, "Items"));
        const int row = change.isEmpty() ? rowOf("Zz x' OR ''='") : 0;
        QVERIFY(row >= 0);
        const QString name = m.model()->name(row);
        const bool before = m.model()->isChecked(row);
        if (!change.isEmpty())
            db().execute(QString(change).replace("%1", QString(name).replace("'", "''")));
        const int ticked = change.contains("ALTER") ? 0 : count("SELECT * FROM ITEMS WHERE CHECK = TRUE");
        m.model()->setData(m.model()->index(row, 0), before ? Qt::Unchecked : Qt::Checked,
                           Qt::CheckStateRole);
        QCOMPARE(m.model()->isChecked(row), before);
        QCOMPARE(f.prompt().count(), 1);
        if (!text.isEmpty())
            QCOMPARE(f.prompt().last().text, text.arg(name));
        QFile log(errorLogPath());
        QVERIFY(log.open(QIODevice::ReadOnly) &&
                log.readAll().contains("in procedure lstItems_ItemCheck of Form frmMain"));
        if (!change.contains("ALTER"))
            QCOMPARE(count("SELECT * FROM ITEMS WHERE CHECK = TRUE"), ticked);
    }

    void recordMenuBoxes_data() {
        QTest::addColumn<QString>("category");
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("text");
        const auto row = [](const char* name, const char* category, const char* entry, const QString& text) {
            QTest::newRow(name) << QString(category) << QString(entry) << text;
        };
        row("copy", "Stations", "mnuEditCopy",
            "Sorry Support for Copying Stations has not been implemented.");
        row("rename", "Stations", "mnuPopupRename",
            "Sorry Support for Renaming Stations has not been implemented.");
        row("delete", "Items", "mnuEditDelete", "Are you sure you want to delete '%1' ?");
    }
    void recordMenuBoxes() {
        QFETCH(QString, category);
        QFETCH(QString, entry);
        QFETCH(QString, text);
        frmMain& m = open();
        QVERIFY(choose(m.cmbData, category));
        m.lstItems->setCurrentIndex(m.model()->index(0, 0));
        int handled = 0;
        for (const char* e : {"mnuEditCopy", "mnuEditRename", "mnuEditDelete"})
            m.setMenuHandler(e, [&] { ++handled; });
        m.mnuPopup->aboutToShow();
        f.prompt().queueButton(vb::No);
        m.menuEntry(entry)->trigger();
        QCOMPARE(f.prompt().count(), 1);
        QCOMPARE(f.prompt().last().text, QString(text).replace("%1", m.model()->name(0)));
        QCOMPARE(f.prompt().last().title, category == "Items" ? "Delete?" : "Can Not Rename");
        QCOMPARE(f.prompt().last().style, category == "Items" ? 36 : 16);
        QCOMPARE(handled, 0); // Stations are not copied or renamed; No deletes nothing
        m.menuEntry(category == "Items" ? "mnuPopupDelete" : entry)
            ->trigger(); // Yes hands over to the delete
        QCOMPARE(handled, category == "Items" ? 1 : 0);
    }

    void settingsRoundTripThroughExit() {
        const QList<QPair<QComboBox * frmMain::*, QString>> choices = {{&frmMain::cmbData, "Components"},
                                                                       {&frmMain::cmbCompType, "Power Cell"},
                                                                       {&frmMain::cmbSubType, "Fuel Cell"},
                                                                       {&frmMain::cmbLevel, "3"},
                                                                       {&frmMain::cmbChecked, "Not Checked"},
                                                                       {&frmMain::cmbEquipType, "Shield"},
                                                                       {&frmMain::cmbCL, "46-50"},
                                                                       {&frmMain::cmbRace, "Trader"}};
        {
            frmMain& m = open();
            m.show();
            for (const auto& [box, text] : choices)
                QVERIFY(choose(m.*box, text));
            m.menuEntry("mnuFileExit")->trigger(); // closing saves, then goes through ShutDown
            QVERIFY(!m.isVisible() && !db().isOpen());
        }
        QCOMPARE(GetSetting("Settings", "path"), QDir::toNativeSeparators(programFolder()));
        db().open("Provider=VOSK.SQLite;Data Source=" + databasePath() + ";");
        SaveSetting("Options", "VLInteractOn", "True");
        frmMain& m = open();
        QCOMPARE(m.panelText("Interaction"), "Game Interaction: Enabled");
        for (const auto& [box, text] : choices)
            QCOMPARE((m.*box)->currentText(), text);
        QCOMPARE(m.model()->rowCount(),
                 count("SELECT * FROM COMPONENTS WHERE TYPE = 'Power Cell' AND SUBTYPE = "
                       "'Fuel Cell' AND LVL = 3 AND CHECK = FALSE"));
        // Saved choices the lists no longer offer fall back to "All" without a message.
        SaveSetting("Settings", "Data", "Sectors");
        SaveSetting("Settings", "Level", "x; DROP TABLE ITEMS");
        frmMain& again = open();
        QCOMPARE(again.category(), "Equipment");
        QCOMPARE(again.cmbLevel->currentText(), "All");
        QCOMPARE(f.prompt().count(), 0);
    }

    // Each equipment type keeps its own layout; a type seen for the first time starts from the layout
    // of the whole equipment list, for the columns the two share.
    void columnLayoutPerTypeByName() {
        {
            frmMain& m = open();
            m.show();
            QVERIFY(QTest::qWaitForWindowExposed(&m));
            header()->moveSection(placeOf("LAST_UPDATED"), 1);
            header()->resizeSection(m.model()->columnIndex("MANUFACTURER"), 211);
            QVERIFY(choose(m.cmbEquipType, "Beam"));
            QCOMPARE(placeOf("LAST_UPDATED"), 1);
            QCOMPARE(widthOf("MANUFACTURER"), 211);
            header()->resizeSection(m.model()->columnIndex("MANUFACTURER"), 150);
            header()->resizeSection(m.model()->columnIndex("DAMAGE"), 90);
            m.lstItems->header()->sectionClicked(m.model()->columnIndex("DAMAGE"));
            const QString firstByDamage = m.model()->name(0);
            QVERIFY(choose(m.cmbEquipType, "All"));
            QCOMPARE(widthOf("MANUFACTURER"), 211); // the type's layout went to the type
            QVERIFY(!header()->isSortIndicatorShown());
            QVERIFY(choose(m.cmbEquipType, "Beam"));
            QCOMPARE(widthOf("MANUFACTURER"), 150);
            QCOMPARE(widthOf("DAMAGE"), 90);
            QCOMPARE(m.model()->name(0), firstByDamage);
            QVERIFY(choose(m.cmbEquipType, "Shield")); // leaves the Beam layout in the store
        }
        frmMain& again = open();
        QVERIFY(choose(again.cmbEquipType, "Beam"));
        QCOMPARE(widthOf("MANUFACTURER"), 150);
        QCOMPARE(placeOf("LAST_UPDATED"), 1);
        QCOMPARE(again.model()->columnName(again.model()->sortKey()), QString("DAMAGE"));
        QCOMPARE(f.prompt().count(), 0);
    }

    void visualOrder_data() {
        QTest::addColumn<QStringList>("columns");
        QTest::addColumn<QStringList>("saved");
        QTest::addColumn<QList<int>>("order");
        const QStringList base{"NAME", "TYPE", "LVL", "LAST_UPDATED"};
        QTest::newRow("nothing saved") << base << QStringList{} << QList<int>{0, 1, 2, 3};
        QTest::newRow("same columns moved")
            << base << QStringList{"LAST_UPDATED", "NAME", "LVL", "TYPE"} << QList<int>{3, 0, 2, 1};
        QTest::newRow("new columns follow their neighbour")
            << QStringList{"NAME", "TYPE", "DAMAGE", "RANGE", "LVL"} << QStringList{"LVL", "NAME", "TYPE"}
            << QList<int>{4, 0, 1, 2, 3};
        QTest::newRow("a moved neighbour does not pull new columns along")
            << QStringList{"NAME", "TYPE", "LAST_UPDATED", "DAMAGE"}
            << QStringList{"NAME", "LAST_UPDATED", "TYPE"} << QList<int>{0, 2, 1, 3};
        QTest::newRow("a new first column leads")
            << QStringList{"ID", "NAME", "TYPE"} << QStringList{"TYPE", "NAME"} << QList<int>{0, 2, 1};
        QTest::newRow("gone and unknown names are passed over")
            << base << QStringList{"GONE", "LVL", "LVL", "0", "NAME"} << QList<int>{2, 0, 1, 3};
    }
    void visualOrder() {
        QFETCH(QStringList, columns);
        QFETCH(QStringList, saved);
        QFETCH(QList<int>, order);
        QCOMPARE(VisualOrder(columns, saved), order);
    }

    void fitWidths_data() {
        QTest::addColumn<QList<int>>("widths");
        QTest::addColumn<int>("budget");
        QTest::addColumn<QList<int>>("fitted");
        QTest::newRow("room enough") << QList<int>{100, 200, 50} << 400 << QList<int>{100, 200, 50};
        QTest::newRow("the widest gives way") << QList<int>{100, 320, 50} << 300 << QList<int>{100, 150, 50};
        QTest::newRow("two wide share") << QList<int>{300, 80, 300} << 400 << QList<int>{160, 80, 160};
        QTest::newRow("never below the minimum") << QList<int>{300, 300} << 50 << QList<int>{40, 40};
    }
    void fitWidths() {
        QFETCH(QList<int>, widths);
        QFETCH(int, budget);
        QFETCH(QList<int>, fitted);
        QCOMPARE(FitWidths(widths, budget), fitted);
    }

    // A header click on a list never sorted shows the arrow of the order it gave; the status is painted
    // before the work; a later start keeps the size the user left.
    void sortArrowStatusAndSize() {
        frmMain& m = open();
        m.show();
        QVERIFY(QTest::qWaitForWindowExposed(&m));
        QVERIFY(!header()->isSortIndicatorShown());
        const int level = m.model()->columnIndex("LVL");
        QTest::mouseClick(header()->viewport(), Qt::LeftButton, {},
                          QPoint(header()->sectionViewportPosition(level) + 5, header()->height() / 2));
        QCOMPARE(m.model()->sortKey(), level);
        QCOMPARE(header()->sortIndicatorSection(), level);
        QCOMPARE(header()->sortIndicatorOrder(),
                 m.model()->sortOrder() == ListModel::Ascending ? Qt::AscendingOrder : Qt::DescendingOrder);

        PaintedTexts painted;
        m.statBar->findChild<QLabel*>("Status")->installEventFilter(&painted);
        m.RefreshGrid();
        m.mnuEditFind_Click();
        frmFind* find = m.findDialog();
        QVERIFY(find);
        find->txtSearchText->setText("Mk");
        find->FindItem();
        QVERIFY2(painted.texts.contains("Refreshing Grid") && painted.texts.contains("Finding..."),
                 qPrintable(painted.texts.join('|')));
        QCOMPARE(m.panelText("Status"), "Ready");
        find->close();

        m.resize(m.width() - 50, m.height() - 40);
        const QSize left = m.size();
        m.SaveSettings();
        QCOMPARE(open().size(), left);
    }

    // The legend of the row colours shows where rows can carry them, in the settings file's colours.
    void legendOfTheRowColours() {
        frmMain& m = open();
        auto* legend = m.statBar->findChild<QLabel*>("Legend");
        QVERIFY(legend && !legend->isHidden());
        QVERIFY2(legend->text().contains("Changed by you") && legend->text().contains("Added by you") &&
                     legend->text().contains("#0000c0") && legend->text().contains("#008000"),
                 qPrintable(legend->text()));
        QVERIFY(choose(m.cmbData, "MOBs"));
        QVERIFY(!legend->isHidden());
        QVERIFY(choose(m.cmbData, "Stations")); // station rows are never coloured
        QVERIFY(legend->isHidden());
    }

    // The search box narrows on top of the category and filters (the matching itself is the list's):
    // the count follows, a refresh keeps it, Escape empties it, Down goes on in the list, and another
    // category keeps the text.
    void searchBoxNarrowsOnTopOfTheFilters() {
        frmMain& m = open();
        QVERIFY(choose(m.cmbData, "Equipment") && choose(m.cmbLevel, "2"));
        m.show();
        QVERIFY(QTest::qWaitForWindowExposed(&m));
        const int every = m.model()->rowCount();
        m.txtSearch->setFocus();
        QTest::keyClicks(m.txtSearch, "mK i");
        const int expected = count("SELECT * FROM EQUIPMENTS WHERE LVL = 2 AND EQUIPMENT_NAME LIKE '%mk i%'");
        QVERIFY(expected > 0 && expected < every);
        QCOMPARE(m.model()->rowCount(), expected);
        QCOMPARE(m.panelText("ItemCount"), "Items: " + QString::number(expected));
        m.RefreshGrid();
        QCOMPARE(m.model()->rowCount(), expected);
        QTest::keyClick(m.txtSearch, Qt::Key_Escape);
        QVERIFY(m.txtSearch->text().isEmpty());
        QCOMPARE(m.model()->rowCount(), every);
        QCOMPARE(m.panelText("ItemCount"), "Items: " + QString::number(every));

        QVERIFY(choose(m.cmbData, "Components") && choose(m.cmbLevel, "All"));
        QTest::keyClicks(m.txtSearch, "basic");
        QTest::keyClick(m.txtSearch, Qt::Key_Down);
        QVERIFY(m.lstItems->hasFocus());
        QVERIFY(m.selectedName().startsWith("Basic"));
        QCOMPARE(m.selectedName(), m.model()->name(m.lstItems->currentIndex().row()));
        QVERIFY(choose(m.cmbData, "Items"));
        QCOMPARE(m.txtSearch->text(), QStringLiteral("basic"));
        QCOMPARE(m.panelText("ItemCount"), QStringLiteral("Items: 0"));
    }

    // The shopping list from the main window: open, add the selection, ticks going both ways.
    void theShoppingListFromTheMainWindow() {
        frmMain& m = open();
        QAction* add = m.menuEntry("mnuPopupAddToList");
        QVERIFY(add && m.menuEntry("mnuViewShoppingList") && m.menuEntry("mnuViewAddToList"));
        QVERIFY(choose(m.cmbData, "Stations"));
        m.lstItems->setCurrentIndex(m.model()->index(0, 0));
        m.mnuPopup->aboutToShow();
        QVERIFY(m.menuEntry("mnuViewShoppingList")->isEnabled() && !add->isEnabled());
        QVERIFY(choose(m.cmbData, "Components"));
        QTest::keyClicks(m.txtSearch, "Basic Logic Board");
        m.lstItems->setCurrentIndex(m.model()->index(0, 0));
        m.mnuPopup->aboutToShow();
        QVERIFY(add->isEnabled());
        add->trigger();
        frmShoppingList* list = OpenShoppingList();
        QVERIFY(list);
        QCOMPARE(list->session().targets().size(), 1);
        QCOMPARE(list->session().targets()[0].ref.name, QStringLiteral("Basic Logic Board"));

        db().execute("UPDATE COMPONENTS SET CHECK = FALSE WHERE COMPONENT_NAME = 'Basic Logic Board'");
        m.RefreshGrid();
        list->refreshList();
        auto* model = static_cast<planner::ShoppingListModel*>(list->lstShopping->model());
        QVERIFY(model->setData(model->indexOf({bom::Kind::Component, "Basic Logic Board"}), Qt::Checked,
                               Qt::CheckStateRole));
        QVERIFY(m.model()->isChecked(0));
        QVERIFY(m.model()->setData(m.model()->index(0, 0), Qt::Unchecked, Qt::CheckStateRole));
        for (const planner::ShoppingLine& l : list->session().list().lines)
            QVERIFY(l.ref.name != "Basic Logic Board" || !l.checked);
        QCOMPARE(f.prompt().count(), 0);
    }

    // A list longer than one slice: the window shows it growing, then "Ready"; work that waits for the
    // whole list runs once it is in, and a refresh before then drops it.
    void aLongListComesInWhileTheWindowAnswers() {
        {
            auto t = transaction();
            for (int i = 0; i < 1200; ++i)
                db().execute(
                    QString("INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, LVL) VALUES ('Zz Bulk %1', 3)").arg(i));
            db().commitTrans();
        }
        const int total = count("SELECT * FROM EQUIPMENTS");
        ListModel::setSliceBudget(0, 0, 0); // 256 rows a slice
        auto defaults = qScopeGuard([] { ListModel::setSliceBudget(10'000'000, 25'000'000, 250'000'000); });
        frmMain& m = open();
        QVERIFY(m.model()->isLoading());
        QCOMPARE(m.panelText("Status"), "Refreshing Grid");
        QVERIFY(m.model()->rowCount() < total);
        QStringList ran;
        m.whenListLoaded([&] { ran << "first"; });
        QSignalSpy finished(m.model(), &ListModel::loadFinished);
        QVERIFY(finished.wait());
        QCOMPARE(ran, QStringList{"first"});
        QCOMPARE(m.panelText("Status"), "Ready");
        QCOMPARE(m.panelText("ItemCount"), "Items: " + QString::number(total));
        QVERIFY(m.panelText("LoadTime").endsWith(" Seconds"));

        m.RefreshGrid();
        m.whenListLoaded([&] { ran << "dropped"; });
        m.RefreshGrid();
        m.whenListLoaded([&] { ran << "kept"; });
        QVERIFY(finished.wait());
        QTest::qWait(20);
        QCOMPARE(ran, (QStringList{"first", "kept"}));
        QCOMPARE(m.model()->rowCount(), total);
    }

private:
    frmMain& open() {
        w.reset();
        w = std::make_unique<frmMain>();
        return *w;
    }
    // False when the box does not offer the text (the caller's QVERIFY stops the test there).
    static bool choose(QComboBox* box, const QString& text) {
        const int i = box->findText(text);
        if (i < 0)
            qWarning("%s has no %s", qPrintable(box->objectName()), qPrintable(text));
        else
            box->setCurrentIndex(i);
        return i >= 0;
    }
    int rowOf(const QString& name) const {
        for (int r = 0; r < w->model()->rowCount(); ++r)
            if (w->model()->name(r) == name)
                return r;
        return -1;
    }
    QHeaderView* header() const { return w->lstItems->header(); }
    int widthOf(const QString& column) const {
        return header()->sectionSize(w->model()->columnIndex(column));
    }
    int placeOf(const QString& column) const {
        return header()->visualIndex(w->model()->columnIndex(column));
    }

    int count(const QString& sql) { return f.scalar("SELECT COUNT(*) FROM (" + sql + ")").toInt(); }
    ViewsFixture f;
    std::unique_ptr<frmMain> w;
};

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
