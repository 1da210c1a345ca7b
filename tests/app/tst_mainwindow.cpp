// The main window over the sample database in a temporary program folder (load, filters, ticks, settings).
#include "app/frmmain.h"
#include "app/mainsettings.h"
#include "core/programfolder.h"
#include "core/scriptedprompt.h"
#include "core/settings.h"
#include "core/tooltip.h"
#include "data/database.h"
#include "data/recordset.h"
#include "data/sampledata.h"
#include "data/schema.h"
#include "lists/frmfind.h"
#include "lists/listmodel.h"
#include "viewsfixture.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QScopeGuard>
#include <QScrollBar>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>

namespace {
// Records the text a label shows each time it is painted.
struct PaintedTexts : QObject {
    QStringList texts;
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint)
            if (auto* label = qobject_cast<QLabel*>(watched))
                texts << label->text();
        return false;
    }
};
} // namespace

class TestMainWindow : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() {
        QVERIFY(m_dir.isValid());
        IsolateSettings(m_dir.path());
        setProgramFolder(m_dir.path());
        QFile ini(iniPath());
        QVERIFY(ini.open(QIODevice::WriteOnly) &&
                ini.write("[Main]\nDATA=Pick a category\n[COLORS]\nUPDATED=12582912\nPERSONAL=32768\n") > 0);
        ini.close();
        // A small plain picture as the list's background: what it covers is easy to tell.
        QVERIFY(QDir(m_dir.path()).mkpath("images/IMAGE"));
        QImage picture(64, 48, QImage::Format_RGB32);
        picture.fill(QColor(0, 0, 255));
        QVERIFY(picture.save(m_dir.filePath("images/IMAGE/BG_VOSK.GIF"), "PNG"));
        QString error;
        QVERIFY2(CreateDatabase(databasePath(), &error) && FillSampleData(databasePath(), &error),
                 qPrintable(error));
    }
    void init() {
        DeleteAllSettings();
        m_prompt.clear();
        if (!db().isOpen())
            db().open("Provider=VOSK.SQLite;Data Source=" + databasePath() + ";");
    }
    void cleanup() {
        w.reset();
        for (const char* t : {"COMPONENTS WHERE COMPONENT_NAME", "ITEMS WHERE ITEM_NAME",
                              "MOB_STATS WHERE MOB_NAME", "MOBS WHERE MOB_NAME"})
            db().execute(QString("DELETE FROM %1 LIKE 'Zz %'").arg(t));
    }

    void filtersListRowsAndTicksAreWritten() {
        db().execute("INSERT INTO COMPONENTS (COMPONENT_NAME, LVL) VALUES ('Zz Untyped Part', 2)");
        db().execute("INSERT INTO ITEMS (ITEM_NAME, LVL, CHECK) VALUES ('Zz Captain''s Log', 1, FALSE)");
        for (int cl : {5, 45, 46, 50, 51}) {
            db().execute(QString("INSERT INTO MOBS (MOB_NAME) VALUES ('Zz Mob %1')").arg(cl));
            db().execute(
                QString("INSERT INTO MOB_STATS (MOB_NAME, COMBAT_LEVEL) VALUES ('Zz Mob %1', %1)").arg(cl));
        }
        frmMain& m = open();
        QCOMPARE(m.windowTitle(), QString("VOSK v%1.%2.%3")
                                      .arg(VOSK_VERSION_MAJOR)
                                      .arg(VOSK_VERSION_MINOR)
                                      .arg(VOSK_VERSION_REVISION));
        QCOMPARE(m.panelText("ItemCount"), "Items: " + QString::number(count("SELECT * FROM EQUIPMENTS")));
        QCOMPARE(m.panelText("Interaction"), "Game Interaction: Disabled");
        QCOMPARE(TipText(m.cmbData), "Pick a category");
        const QStringList flags = {"CHECK", "PERSONAL_DB", "UPDATED", "SUBMITTED", "UNIQUE_FLAG", "PIC_ID"};
        for (int c = 0; c < m.model()->columnCount(); ++c)
            QVERIFY2(!flags.contains(m.model()->columnName(c)), qPrintable(m.model()->columnName(c)));
        // A component without a type is listed under "Unknown" and shows that word.
        QVERIFY(choose(m.cmbData, "Components"));
        QVERIFY(m.cmbCompType->isVisibleTo(&m) && !m.cmbEquipType->isVisibleTo(&m));
        QVERIFY(choose(m.cmbCompType, "Unknown"));
        QCOMPARE(m.model()->rowCount(),
                 count("SELECT * FROM COMPONENTS WHERE TYPE IS NULL OR TYPE = 'Unknown'"));
        QCOMPARE(m.model()->text(rowOf("Zz Untyped Part"), m.model()->columnIndex("TYPE")), "Unknown");
        // The bands filter on the combat level; the list shows three times that as the overall level.
        QVERIFY(choose(m.cmbData, "MOBs"));
        QVERIFY(choose(m.cmbCL, "46-50"));
        QVERIFY(rowOf("Zz Mob 46") >= 0 && rowOf("Zz Mob 50") >= 0 && rowOf("Zz Mob 45") < 0 &&
                rowOf("Zz Mob 51") < 0);
        QVERIFY(choose(m.cmbCL, "0-5"));
        QCOMPARE(m.model()->text(rowOf("Zz Mob 5"), m.model()->columnIndex("OVERALL_LEVEL")), "15");
        // A tick is written at once, a name with a quote included; the tick filter then lists the row.
        const QString readBack = "SELECT CHECK FROM ITEMS WHERE ITEM_NAME = 'Zz Captain''s Log'";
        QVERIFY(choose(m.cmbData, "Items"));
        QVERIFY(choose(m.cmbLevel, "1"));
        QVERIFY(m.model()->setData(m.model()->index(rowOf("Zz Captain's Log"), 0), Qt::Checked,
                                   Qt::CheckStateRole));
        QCOMPARE(scalar(readBack).toBool(), true);
        QVERIFY(choose(m.cmbChecked, "Checked"));
        QCOMPARE(m.model()->rowCount(), count("SELECT * FROM ITEMS WHERE LVL = 1 AND CHECK = TRUE"));
        QCOMPARE(m.panelText("ItemCount"), "Items: " + QString::number(m.model()->rowCount()));
        QCOMPARE(m.panelText("Status"), "Ready");
        QVERIFY(m.model()->setData(m.model()->index(rowOf("Zz Captain's Log"), 0), Qt::Unchecked,
                                   Qt::CheckStateRole));
        QCOMPARE(scalar(readBack).toBool(), false);
        QCOMPARE(m_prompt.count(), 0);
    }

    void emptyTableAndNullRowsListQuietly() {
        // Stations emptied inside a transaction that is rolled back afterwards; a MOB whose every listed
        // column but its name is NULL.
        db().execute("INSERT INTO MOBS (MOB_NAME) VALUES ('Zz Blank')");
        db().execute("INSERT INTO MOB_STATS (MOB_NAME) VALUES ('Zz Blank')");
        frmMain& m = open();
        QVERIFY(choose(m.cmbData, "MOBs"));
        const int blank = rowOf("Zz Blank");
        QVERIFY(blank >= 0);
        for (int c = 1; c < m.model()->columnCount(); ++c)
            QCOMPARE(m.model()->text(blank, c), m.model()->columnName(c) == "TYPE" ? "Unknown" : "");
        db().beginTrans();
        const auto rollBack = qScopeGuard([] {
            if (db().inTransaction())
                db().rollbackTrans();
        });
        db().execute("DELETE FROM STATION_TERMINALS");
        db().execute("DELETE FROM STATIONS");
        QVERIFY(choose(m.cmbData, "Stations"));
        QCOMPARE(m.model()->rowCount(), 0);
        QVERIFY(m.model()->columnCount() > 0);
        QCOMPARE(m.panelText("ItemCount"), "Items: 0");
        QCOMPARE(m.panelText("Status"), "Ready");
        QCOMPARE(m_prompt.count(), 0);
    }

    void failedTickIsReportedAndUndone() {
        frmMain& m = open();
        QVERIFY(choose(m.cmbData, "Items"));
        const bool before = m.model()->isChecked(0);
        // The table goes away behind the list's back: the tick write fails and the tick is undone.
        db().execute("ALTER TABLE ITEMS RENAME TO ITEMS_AWAY");
        const auto putBack = qScopeGuard([] { quietly("ALTER TABLE ITEMS_AWAY RENAME TO ITEMS"); });
        m.model()->setData(m.model()->index(0, 0), before ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
        QCOMPARE(m.model()->isChecked(0), before);
        QFile log(errorLogPath());
        QVERIFY(log.open(QIODevice::ReadOnly) &&
                log.readAll().contains("in procedure lstItems_ItemCheck of Form frmMain"));
        QCOMPARE(m_prompt.count(), 1);
    }

    void recordMenuBoxes_data() {
        QTest::addColumn<QString>("category");
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("text");
        QTest::newRow("copy") << "Stations"
                              << "mnuEditCopy"
                              << "Sorry Support for Copying Stations has not been implemented.";
        QTest::newRow("rename") << "Stations"
                                << "mnuPopupRename"
                                << "Sorry Support for Renaming Stations has not been implemented.";
        QTest::newRow("delete") << "Items"
                                << "mnuEditDelete"
                                << "Are you sure you want to delete '%1' ?";
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
        m_prompt.queueButton(vb::No);
        m.menuEntry(entry)->trigger();
        QCOMPARE(m_prompt.count(), 1);
        QCOMPARE(m_prompt.last().text, QString(text).replace("%1", m.model()->name(0)));
        QCOMPARE(m_prompt.last().title, category == "Items" ? "Delete?" : "Can Not Rename");
        QCOMPARE(m_prompt.last().style, category == "Items" ? 36 : 16);
        QCOMPARE(handled, 0); // Stations are not copied or renamed; No deletes nothing
        m.menuEntry(category == "Items" ? "mnuPopupDelete" : entry)
            ->trigger(); // Yes hands over to the delete
        QCOMPARE(handled, category == "Items" ? 1 : 0);
    }

    void settingsRoundTripThroughExit() {
        {
            frmMain& m = open();
            m.show();
            QVERIFY(choose(m.cmbData, "Components"));
            QVERIFY(choose(m.cmbCompType, "Power Cell"));
            QVERIFY(choose(m.cmbSubType, "Fuel Cell"));
            QVERIFY(choose(m.cmbLevel, "3"));
            QVERIFY(choose(m.cmbChecked, "Not Checked"));
            QVERIFY(choose(m.cmbEquipType, "Shield"));
            QVERIFY(choose(m.cmbCL, "46-50"));
            QVERIFY(choose(m.cmbRace, "Trader"));
            m.menuEntry("mnuFileExit")->trigger(); // closing saves, then goes through ShutDown
            QVERIFY(!m.isVisible() && !db().isOpen());
        }
        QCOMPARE(GetSetting("Settings", "path"), QDir::toNativeSeparators(programFolder()));
        db().open("Provider=VOSK.SQLite;Data Source=" + databasePath() + ";");
        SaveSetting("Options", "VLInteractOn", "True");
        frmMain& m = open();
        QCOMPARE(m.panelText("Interaction"), "Game Interaction: Enabled");
        QCOMPARE(m.category(), "Components");
        QCOMPARE(
            QStringList({m.cmbCompType->currentText(), m.cmbSubType->currentText(), m.cmbLevel->currentText(),
                         m.cmbChecked->currentText(), m.cmbEquipType->currentText(), m.cmbCL->currentText(),
                         m.cmbRace->currentText()}),
            QStringList({"Power Cell", "Fuel Cell", "3", "Not Checked", "Shield", "46-50", "Trader"}));
        QCOMPARE(m.model()->rowCount(), count("SELECT * FROM COMPONENTS WHERE TYPE = 'Power Cell' AND "
                                              "SUBTYPE = 'Fuel Cell' AND LVL = 3 AND CHECK = FALSE"));
        // Saved choices the lists no longer offer fall back to "All" without a message.
        SaveSetting("Settings", "Data", "Sectors");
        SaveSetting("Settings", "Level", "x; DROP TABLE ITEMS");
        frmMain& again = open();
        QCOMPARE(again.category(), "Equipment");
        QCOMPARE(again.cmbLevel->currentText(), "All");
        QCOMPARE(m_prompt.count(), 0);
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
            // The statistics columns come after every column before them in the statement, wherever
            // those were moved.
            QCOMPARE(placeOf("DAMAGE"), m.model()->columnIndex("DAMAGE"));
            header()->resizeSection(m.model()->columnIndex("MANUFACTURER"), 150);
            header()->resizeSection(m.model()->columnIndex("DAMAGE"), 90);
            m.lstItems->header()->sectionClicked(m.model()->columnIndex("DAMAGE"));
            const QString firstByDamage = m.model()->name(0);
            QVERIFY(choose(m.cmbEquipType, "All"));
            QCOMPARE(widthOf("MANUFACTURER"), 211); // the type's layout went to the type
            QVERIFY(!m.model()->isSorted() || m.model()->sortKey() < 0);
            QVERIFY(!header()->isSortIndicatorShown());
            QVERIFY(choose(m.cmbEquipType, "Beam"));
            QCOMPARE(widthOf("MANUFACTURER"), 150);
            QCOMPARE(widthOf("DAMAGE"), 90);
            QCOMPARE(m.model()->name(0), firstByDamage);
            QCOMPARE(m.model()->columnName(m.model()->sortKey()), QString("DAMAGE"));
            QVERIFY(choose(m.cmbEquipType, "Shield")); // leaves the Beam layout in the store
        }
        frmMain& again = open();
        QVERIFY(choose(again.cmbEquipType, "Beam"));
        QCOMPARE(widthOf("MANUFACTURER"), 150);
        QCOMPARE(placeOf("LAST_UPDATED"), 1);
        QCOMPARE(again.model()->columnName(again.model()->sortKey()), QString("DAMAGE"));
        QCOMPARE(m_prompt.count(), 0);
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

    // The first start makes the window and its columns fit the screen with every column in sight; a
    // later start keeps the size the user left.
    void firstStartShowsEveryColumn() {
        frmMain& m = open();
        m.show();
        QVERIFY(QTest::qWaitForWindowExposed(&m));
        QVERIFY(m.model()->columnCount() > 8);
        int right = 0;
        for (int c = 0; c < m.model()->columnCount(); ++c)
            if (!header()->isSectionHidden(c))
                right = qMax(right, header()->sectionViewportPosition(c) + header()->sectionSize(c));
        QVERIFY2(right <= m.lstItems->viewport()->width(),
                 qPrintable(QString("%1 > %2").arg(right).arg(m.lstItems->viewport()->width())));
        QVERIFY2(m.width() <= m.screen()->availableGeometry().width(),
                 qPrintable(QString("%1 > %2, minimum %3")
                                .arg(m.width())
                                .arg(m.screen()->availableGeometry().width())
                                .arg(m.minimumSizeHint().width())));
        m.resize(m.width() - 50, m.height() - 40);
        const QSize left = m.size();
        m.SaveSettings();
        frmMain& again = open();
        QCOMPARE(again.size(), left);
    }

    // A header click on a list never sorted before shows the arrow of the order it gave.
    void sortArrowFromTheFirstClick() {
        frmMain& m = open();
        m.show();
        QVERIFY(QTest::qWaitForWindowExposed(&m));
        QVERIFY(!header()->isSortIndicatorShown());
        const int level = m.model()->columnIndex("LVL");
        QTest::mouseClick(header()->viewport(), Qt::LeftButton, {},
                          QPoint(header()->sectionViewportPosition(level) + 5, header()->height() / 2));
        QCOMPARE(m.model()->sortKey(), level);
        QVERIFY(header()->isSortIndicatorShown());
        QCOMPARE(header()->sortIndicatorSection(), level);
        QCOMPARE(header()->sortIndicatorOrder(),
                 m.model()->sortOrder() == ListModel::Ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
    }

    // The status bar says what the row colours mean, in those colours, where rows can carry them.
    void legendOfTheRowColours() {
        frmMain& m = open();
        auto* legend = m.statBar->findChild<QLabel*>("Legend");
        QVERIFY(legend);
        QVERIFY(!legend->isHidden());
        QVERIFY(legend->text().contains("Changed by you") && legend->text().contains("Added by you"));
        QVERIFY2(legend->text().contains("#0000c0") && legend->text().contains("#008000"),
                 qPrintable(legend->text())); // the colours of the settings file
        QVERIFY(!legend->toolTip().isEmpty());
        QVERIFY(choose(m.cmbData, "Stations")); // station rows are never coloured
        QVERIFY(legend->isHidden());
        QVERIFY(choose(m.cmbData, "MOBs"));
        QVERIFY(!legend->isHidden());
    }

    // The background picture covers the whole list, however much larger than the picture it is.
    void backgroundCoversTheList() {
        frmMain& m = open();
        m.resize(1000, 700);
        m.show();
        QVERIFY(QTest::qWaitForWindowExposed(&m));
        QVERIFY(m.backgroundShown());
        QVERIFY(choose(m.cmbData, "Stations"));
        const QImage shot = m.lstItems->viewport()->grab().toImage();
        const QColor base = m.lstItems->viewport()->palette().color(QPalette::Base);
        // Below the rows, at the four corners and the middle: the picture, never the bare list.
        const int bottom = shot.height() - 5, right = shot.width() - 5;
        for (const QPoint& at : {QPoint(5, bottom), QPoint(right, bottom), QPoint(shot.width() / 2, bottom),
                                 QPoint(5, shot.height() * 3 / 4), QPoint(right, shot.height() * 3 / 4)}) {
            const QColor seen = shot.pixelColor(at);
            QVERIFY2(seen.blue() > seen.red() + 40 && seen != base,
                     qPrintable(QString("%1,%2: %3").arg(at.x()).arg(at.y()).arg(seen.name())));
        }
        m.setBackgroundShown(false);
        QCOMPARE(m.lstItems->viewport()->grab().toImage().pixelColor(5, bottom), base);
    }

    // "Refreshing Grid" and "Finding..." reach the screen although the work follows at once.
    void statusIsPaintedBeforeTheWork() {
        frmMain& m = open();
        m.show();
        QVERIFY(QTest::qWaitForWindowExposed(&m));
        auto* status = m.statBar->findChild<QLabel*>("Status");
        QVERIFY(status);
        PaintedTexts painted;
        status->installEventFilter(&painted);
        m.RefreshGrid();
        QVERIFY2(painted.texts.contains("Refreshing Grid"), qPrintable(painted.texts.join('|')));
        m.mnuEditFind_Click();
        frmFind* find = m.findDialog();
        QVERIFY(find);
        find->txtSearchText->setText("Mk");
        find->FindItem();
        QVERIFY2(painted.texts.contains("Finding..."), qPrintable(painted.texts.join('|')));
        QCOMPARE(m.panelText("Status"), "Ready");
        find->close();
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
        if (i < 0) {
            qWarning("%s has no %s", qPrintable(box->objectName()), qPrintable(text));
            return false;
        }
        box->setCurrentIndex(i);
        return true;
    }
    int rowOf(const QString& name) const {
        for (int r = 0; r < w->model()->rowCount(); ++r)
            if (w->model()->name(r) == name)
                return r;
        return -1;
    }
    static QVariant scalar(const QString& sql) {
        Recordset rs;
        rs.open(sql);
        return rs.eof() ? QVariant() : rs.value(0);
    }
    static int count(const QString& sql) { return scalar("SELECT COUNT(*) FROM (" + sql + ")").toInt(); }
    // A statement run on the way out of a test: a failure is logged, never thrown.
    static void quietly(const QString& sql) {
        try {
            db().execute(sql);
        } catch (const VbError& e) {
            qWarning("%s: %s", qPrintable(sql), qPrintable(e.description));
        }
    }
    QHeaderView* header() const { return w->lstItems->header(); }
    int widthOf(const QString& column) const {
        return header()->sectionSize(w->model()->columnIndex(column));
    }
    int placeOf(const QString& column) const {
        return header()->visualIndex(w->model()->columnIndex(column));
    }

    QTemporaryDir m_dir;
    ScriptedPrompt m_prompt;
    std::unique_ptr<frmMain> w;
};

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
