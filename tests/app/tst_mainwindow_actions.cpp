// What the main window does with the database and the settings: ticks written at once (and undone
// when the write fails), settings kept between runs, and the menu entries.
#include "app/frmmain.h"
#include "app/mainsettings.h"
#include "core/inifile.h"
#include "core/programfolder.h"
#include "core/settings.h"
#include "data/database.h"
#include "lists/frmfind.h"
#include "lists/listmodel.h"
#include "mainwindow_fixture.h"
#include "views/openviews.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <QTreeView>
#include <QUrl>

namespace {
QStringList editorCalls;
void recordEditor(const QString& kind, const QString& name) { editorCalls << kind + "|" + name; }
} // namespace

class TestMainWindowActions : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void tickWritesAtOnce_data();
    void tickWritesAtOnce();
    void tickNameWithQuote();
    void failedTickIsReportedAndUndone();
    void settingsRoundTrip();
    void savedChoiceNoLongerOffered();
    void columnLayoutPerCategory();
    void laterEntriesDisabledUntilHandled();
    void copyAndRenameOfStations_data();
    void copyAndRenameOfStations();
    void deleteAsksFirst();
    void handlerErrorsAreReported();
    void doubleClickEditorOrView();
    void helpLinksAndAbout();
    void findOpensOverTheList();
    void backgroundFollowsOption();
    void exitClosesAndSaves();

private:
    frmMain& open();
    void choose(QComboBox* box, const QString& text);
    MainWindowFixture fx;
    std::unique_ptr<frmMain> w;
};

void TestMainWindowActions::initTestCase() {
    QString error;
    QVERIFY2(fx.setUp(&error), qPrintable(error));
}

void TestMainWindowActions::cleanupTestCase() { fx.tearDown(); }

void TestMainWindowActions::init() {
    DeleteAllSettings();
    fx.prompt().clear();
    editorCalls.clear();
}

void TestMainWindowActions::cleanup() {
    w.reset();
    setEditorOpener(nullptr);
    frmMain::setUrlOpener({});
}

frmMain& TestMainWindowActions::open() {
    w.reset();
    w = std::make_unique<frmMain>();
    return *w;
}

void TestMainWindowActions::choose(QComboBox* box, const QString& text) {
    const int i = box->findText(text);
    QVERIFY2(i >= 0, qPrintable(box->objectName() + " has no " + text));
    box->setCurrentIndex(i);
}

void TestMainWindowActions::tickWritesAtOnce_data() {
    QTest::addColumn<QString>("category");
    QTest::addColumn<QString>("readBack"); // %1 is the quoted name
    QTest::newRow("Equipment") << "Equipment" << "SELECT CHECK FROM EQUIPMENTS WHERE EQUIPMENT_NAME = '%1'";
    QTest::newRow("Components") << "Components" << "SELECT CHECK FROM COMPONENTS WHERE COMPONENT_NAME = '%1'";
    QTest::newRow("Raw Materials") << "Raw Materials"
                                   << "SELECT CHECK FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME = '%1'";
    QTest::newRow("Stations") << "Stations" << "SELECT CHECK FROM STATIONS WHERE STATION_NAME = '%1'";
    QTest::newRow("MOBs") << "MOBs" << "SELECT CHECK FROM MOBS WHERE MOB_NAME = '%1'";
    QTest::newRow("Items") << "Items" << "SELECT CHECK FROM ITEMS WHERE ITEM_NAME = '%1'";
}

void TestMainWindowActions::tickWritesAtOnce() {
    QFETCH(QString, category);
    QFETCH(QString, readBack);
    frmMain& m = open();
    choose(m.cmbData, category == "Equipment" ? "Items" : category);
    choose(m.cmbData, category);
    ListModel* model = m.model();
    QVERIFY(model->rowCount() > 1);
    const int row = 1;
    const QString name = model->name(row);
    const QString sql = readBack.arg(QString(name).replace("'", "''"));
    const bool before = model->isChecked(row);
    QCOMPARE(fx.scalar(sql).toBool(), before);

    QVERIFY(model->setData(model->index(row, 0), before ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole));
    QCOMPARE(fx.scalar(sql).toBool(), !before);
    QCOMPARE(model->isChecked(row), !before);
    QVERIFY(model->setData(model->index(row, 0), before ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole));
    QCOMPARE(fx.scalar(sql).toBool(), before);
    QCOMPARE(fx.prompt().count(), 0);
}

void TestMainWindowActions::tickNameWithQuote() {
    db().execute("INSERT INTO ITEMS (ITEM_NAME, LVL, CHECK) VALUES ('Zz Captain''s Log', 1, FALSE)");
    frmMain& m = open();
    choose(m.cmbData, "Items");
    int row = -1;
    for (int r = 0; r < m.model()->rowCount(); ++r)
        if (m.model()->name(r) == "Zz Captain's Log")
            row = r;
    QVERIFY(row >= 0);
    QVERIFY(m.model()->setData(m.model()->index(row, 0), Qt::Checked, Qt::CheckStateRole));
    QCOMPARE(fx.scalar("SELECT CHECK FROM ITEMS WHERE ITEM_NAME = 'Zz Captain''s Log'").toBool(), true);
    QCOMPARE(fx.prompt().count(), 0);
    db().execute("DELETE FROM ITEMS WHERE ITEM_NAME = 'Zz Captain''s Log'");
}

void TestMainWindowActions::failedTickIsReportedAndUndone() {
    frmMain& m = open();
    choose(m.cmbData, "Items");
    const QString name = m.model()->name(0);
    const bool before = m.model()->isChecked(0);
    // The record goes away behind the list's back under a name the write cannot reach: the table
    // is renamed, so the UPDATE fails.
    db().execute("ALTER TABLE ITEMS RENAME TO ITEMS_AWAY");
    m.model()->setData(m.model()->index(0, 0), before ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
    db().execute("ALTER TABLE ITEMS_AWAY RENAME TO ITEMS");
    QCOMPARE(m.model()->isChecked(0), before);
    QVERIFY(fx.prompt().count() >= 1);
    const QStringList log = fx.errorLog();
    QVERIFY(!log.isEmpty());
    QVERIFY2(log.last().contains("lstItems_ItemCheck") && log.last().contains("Form frmMain"), qPrintable(log.last()));
    QCOMPARE(fx.scalar("SELECT CHECK FROM ITEMS WHERE ITEM_NAME = '" + QString(name).replace("'", "''") + "'").toBool(),
             before);
}

void TestMainWindowActions::settingsRoundTrip() {
    {
        frmMain& m = open();
        choose(m.cmbData, "Components");
        choose(m.cmbCompType, "Power Cell");
        choose(m.cmbSubType, "Fuel Cell");
        choose(m.cmbLevel, "3");
        choose(m.cmbChecked, "Not Checked");
        choose(m.cmbEquipType, "Shield");
        choose(m.cmbCL, "46-50");
        choose(m.cmbRace, "Trader");
        m.SaveSettings();
    }
    QCOMPARE(GetSetting("Settings", "path"), QDir::toNativeSeparators(programFolder()));
    frmMain& m = open();
    QCOMPARE(m.category(), "Components");
    QCOMPARE(m.cmbCompType->currentText(), "Power Cell");
    QCOMPARE(m.cmbSubType->currentText(), "Fuel Cell");
    QCOMPARE(m.cmbLevel->currentText(), "3");
    QCOMPARE(m.cmbChecked->currentText(), "Not Checked");
    QCOMPARE(m.cmbEquipType->currentText(), "Shield");
    QCOMPARE(m.cmbCL->currentText(), "46-50");
    QCOMPARE(m.cmbRace->currentText(), "Trader");
    QVERIFY(m.cmbCompType->isVisibleTo(&m));
    QVERIFY(!m.cmbEquipType->isVisibleTo(&m));
    // The list shows what the restored filters say.
    QCOMPARE(m.model()->rowCount(),
             int(fx.count("SELECT COMPONENT_NAME FROM COMPONENTS WHERE TYPE = 'Power Cell' AND SUBTYPE = 'Fuel Cell' "
                          "AND LVL = 3 AND CHECK = FALSE")));
}

void TestMainWindowActions::savedChoiceNoLongerOffered() {
    SaveSetting("Settings", "Data", "Sectors");
    SaveSetting("Settings", "CompType", "Gone Type");
    SaveSetting("Settings", "Level", "x; DROP TABLE ITEMS");
    SaveSetting("Settings", "WindowState", "7");
    frmMain& m = open();
    QCOMPARE(m.category(), "Equipment");
    QCOMPARE(m.cmbCompType->currentText(), "All");
    QCOMPARE(m.cmbLevel->currentText(), "All");
    QVERIFY(m.model()->rowCount() > 0);
    QCOMPARE(fx.prompt().count(), 0);
}

void TestMainWindowActions::columnLayoutPerCategory() {
    {
        frmMain& m = open();
        choose(m.cmbData, "Items");
        QVERIFY(m.model()->columnCount() >= 3);
        m.model()->sortByColumn(1);
        m.model()->sortByColumn(1);
        m.model()->sortByColumn(1);
        const int order = m.model()->sortOrder();
        m.lstItems->header()->resizeSection(0, 211);
        m.lstItems->header()->moveSection(2, 0);
        choose(m.cmbData, "Raw Materials"); // leaving the category keeps its layout
        m.lstItems->header()->resizeSection(0, 177);
        m.SaveColumnInfo();
        const ColumnLayout items = LoadColumnLayout("Items");
        QCOMPARE(items.widths.value(0), 211);
        QCOMPARE(items.sortKey, 1);
        QCOMPARE(items.sortOrder, order);
        QCOMPARE(order, 1); // three clicks: the order toggles from ascending each time
        QCOMPARE(LoadColumnLayout("Raw Materials").widths.value(0), 177);
        m.SaveSettings();
    }
    frmMain& m = open();
    QCOMPARE(m.category(), "Raw Materials");
    QCOMPARE(m.lstItems->header()->sectionSize(0), 177);
    QVERIFY(!m.model()->isSorted() || m.model()->sortKey() < 0);
    choose(m.cmbData, "Items");
    QCOMPARE(m.lstItems->header()->sectionSize(0), 211);
    QCOMPARE(m.lstItems->header()->visualIndex(2), 0);
    QCOMPARE(m.model()->sortKey(), 1);
    QCOMPARE(m.model()->sortOrder(), 1);
    QVERIFY(m.model()->isSorted());
    // The rows come sorted: the second column descends.
    const int rows = m.model()->rowCount();
    QVERIFY(rows > 2);
    QVERIFY(m.model()->text(0, 1).toInt() >= m.model()->text(rows - 1, 1).toInt());
    // Back to a category that was never sorted: its rows come unsorted, not by Items' column.
    choose(m.cmbData, "Raw Materials");
    QVERIFY(!m.model()->isSorted() || m.model()->sortKey() < 0);
    QVERIFY(!m.lstItems->header()->isSortIndicatorShown());
}

void TestMainWindowActions::laterEntriesDisabledUntilHandled() {
    frmMain& m = open();
    const QStringList all = {"mnuAddEquip", "mnuAddComps", "mnuAddRawMaterial", "mnuAddItem", "mnuEditEditItem",
                             "mnuPopupEditItem", "mnuPopupView", "mnuEditDelete", "mnuPopupDelete", "mnuEditCopy",
                             "mnuPopupCopy", "mnuEditRename", "mnuPopupRename", "mnuEditFind", "mnuPopupFind",
                             "mnuViewBuidView", "mnuPopupBuildview", "mnuViewMaps", "mnuViewRefresh",
                             "mnuPrintPrintFilteredList", "mnuFileBackupDB", "mnuFileRestoreDB", "mnuFileOptions",
                             "mnuFileExit", "mnuHelpHelp", "mnuHelpReadMe", "mnuHelpForum", "mnuHelpWebsite",
                             "mnuHelpSubmitBug", "mnuHelpAbout"};
    for (const QString& n : all)
        QVERIFY2(m.menuEntry(n), qPrintable(n));
    QCOMPARE(m.menuEntry("mnuAddEquip")->text(), "Add &Equipment");
    m.lstItems->setCurrentIndex(m.model()->index(0, 0));
    for (const char* n : {"mnuAddEquip", "mnuFileOptions", "mnuFileBackupDB", "mnuViewMaps", "mnuHelpSubmitBug",
                          "mnuPrintPrintFilteredList", "mnuEditDelete", "mnuEditEditItem", "mnuEditCopy",
                          "mnuHelpHelp"})
        QVERIFY2(!m.menuEntry(n)->isEnabled(), n);
    for (const char* n : {"mnuViewRefresh", "mnuEditFind", "mnuPopupView", "mnuViewBuidView", "mnuHelpAbout"})
        QVERIFY2(m.menuEntry(n)->isEnabled(), n);

    int options = 0, copies = 0;
    m.setMenuHandler("mnuFileOptions", [&] { ++options; });
    m.setMenuHandler("mnuEditCopy", [&] { ++copies; });
    QVERIFY(m.menuEntry("mnuFileOptions")->isEnabled());
    m.menuEntry("mnuFileOptions")->trigger();
    QCOMPARE(options, 1);
    QVERIFY(m.menuEntry("mnuPopupCopy")->isEnabled());
    m.menuEntry("mnuPopupCopy")->trigger();
    QCOMPARE(copies, 1);
    setEditorOpener(recordEditor);
    choose(m.cmbData, "Items");
    m.lstItems->setCurrentIndex(m.model()->index(0, 0));
    m.mnuPopup->aboutToShow();
    QVERIFY(m.menuEntry("mnuEditEditItem")->isEnabled());
    QVERIFY(!m.menuEntry("mnuViewBuidView")->isEnabled()); // items have no build view
}

void TestMainWindowActions::copyAndRenameOfStations_data() {
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("text");
    QTest::newRow("copy") << "mnuEditCopy" << "Sorry Support for Copying Stations has not been implemented.";
    QTest::newRow("popup copy") << "mnuPopupCopy" << "Sorry Support for Copying Stations has not been implemented.";
    QTest::newRow("rename") << "mnuEditRename" << "Sorry Support for Renaming Stations has not been implemented.";
    QTest::newRow("popup rename") << "mnuPopupRename"
                                  << "Sorry Support for Renaming Stations has not been implemented.";
}

void TestMainWindowActions::copyAndRenameOfStations() {
    QFETCH(QString, entry);
    QFETCH(QString, text);
    frmMain& m = open();
    choose(m.cmbData, "Stations");
    m.lstItems->setCurrentIndex(m.model()->index(0, 0));
    m.mnuPopup->aboutToShow();
    QVERIFY(m.menuEntry(entry)->isEnabled());
    m.menuEntry(entry)->trigger();
    QCOMPARE(fx.prompt().count(), 1);
    QCOMPARE(fx.prompt().last().text, text);
    QCOMPARE(fx.prompt().last().title, "Can Not Rename");
}

void TestMainWindowActions::deleteAsksFirst() {
    frmMain& m = open();
    choose(m.cmbData, "Items");
    m.lstItems->setCurrentIndex(m.model()->index(0, 0));
    QVERIFY(!m.menuEntry("mnuEditDelete")->isEnabled());
    QStringList deleted;
    m.setMenuHandler("mnuEditDelete", [&] { deleted << m.category() + "|" + m.selectedName(); });
    QVERIFY(m.menuEntry("mnuEditDelete")->isEnabled());
    QVERIFY(m.menuEntry("mnuPopupDelete")->isEnabled());
    const QString name = m.model()->name(0);

    fx.prompt().queueButton(7); // No
    m.menuEntry("mnuEditDelete")->trigger();
    QVERIFY(deleted.isEmpty());
    QCOMPARE(fx.prompt().last().text, "Are you sure you want to delete '" + name + "' ?");
    QCOMPARE(fx.prompt().last().title, "Delete?");
    QCOMPARE(fx.prompt().last().style, 36);

    fx.prompt().queueButton(6); // Yes
    m.menuEntry("mnuPopupDelete")->trigger();
    QCOMPARE(deleted, QStringList{"Items|" + name});
}

void TestMainWindowActions::handlerErrorsAreReported() {
    frmMain& m = open();
    choose(m.cmbData, "Items");
    m.lstItems->setCurrentIndex(m.model()->index(0, 0));
    m.setMenuHandler("mnuEditRename", [] { throw VbError(5, "Invalid procedure call"); });
    m.setMenuHandler("mnuFileOptions", [] { throw VbError(5, "Invalid procedure call"); });
    m.menuEntry("mnuPopupRename")->trigger();
    QVERIFY2(fx.errorLog().last().contains("mnuEditRename_Click") && !fx.errorLog().last().contains("Form frmMain") &&
                 fx.errorLog().last().contains("frmMain"),
             qPrintable(fx.errorLog().last()));
    m.menuEntry("mnuFileOptions")->trigger();
    QVERIFY2(fx.errorLog().last().contains("mnuFileOptions_Click") && fx.errorLog().last().contains("Form frmMain"),
             qPrintable(fx.errorLog().last()));
}

void TestMainWindowActions::doubleClickEditorOrView() {
    setEditorOpener(recordEditor);
    SaveSetting("Options", "DoubleClickEvent", "1");
    frmMain& m = open();
    choose(m.cmbData, "Components");
    m.lstItems->setCurrentIndex(m.model()->index(2, 0));
    m.lstItems_DblClick();
    QCOMPARE(editorCalls, QStringList{"Components|" + m.model()->name(2)});
    m.menuEntry("mnuEditEditItem")->trigger();
    QCOMPARE(editorCalls.size(), 2);
    // Option 0 opens the view; the editor is not asked.
    SaveSetting("Options", "DoubleClickEvent", "0");
    editorCalls.clear();
    const QString name = m.model()->name(2);
    auto viewOf = [&] {
        for (QWidget* t : QApplication::topLevelWidgets())
            if (t != &m && t->windowTitle().contains(name))
                return t;
        return static_cast<QWidget*>(nullptr);
    };
    QVERIFY(!viewOf());
    m.lstItems_DblClick();
    QVERIFY(editorCalls.isEmpty());
    QWidget* view = viewOf();
    QVERIFY2(view, "no window shows the component");
    delete view;
    // Without an editor installed, option 1 falls back to the view.
    setEditorOpener(nullptr);
    SaveSetting("Options", "DoubleClickEvent", "1");
    m.lstItems_DblClick();
    view = viewOf();
    QVERIFY(view);
    delete view;
    setEditorOpener(recordEditor);
    // Nothing selected: nothing opens.
    m.lstItems->selectionModel()->clear();
    SaveSetting("Options", "DoubleClickEvent", "1");
    m.lstItems_DblClick();
    QVERIFY(editorCalls.isEmpty());
}

void TestMainWindowActions::helpLinksAndAbout() {
    QList<QUrl> opened;
    frmMain::setUrlOpener([&](const QUrl& u) { opened << u; return true; });
    frmMain& m = open();
    m.menuEntry("mnuHelpForum")->trigger();
    m.menuEntry("mnuHelpWebsite")->trigger();
    QCOMPARE(opened, (QList<QUrl>{QUrl("https://forum.example.org/vosk"), QUrl("https://vosk.example.org/")}));
    QCOMPARE(fx.prompt().count(), 0);

    QVERIFY(WriteIni(iniPath(), "ZEL", "URL", ""));
    m.menuEntry("mnuHelpWebsite")->trigger();
    QCOMPARE(opened.size(), 2);
    QCOMPARE(fx.prompt().count(), 1);
    QVERIFY(fx.prompt().last().text.contains("[ZEL]"));
    QVERIFY(WriteIni(iniPath(), "ZEL", "URL", "https://vosk.example.org/"));

    m.menuEntry("mnuHelpAbout")->trigger();
    QCOMPARE(fx.prompt().last().title, "About VOSK");
    QVERIFY(fx.prompt().last().text.startsWith(m.windowTitle()));
    QCOMPARE(fx.prompt().last().style, 64);
}

void TestMainWindowActions::findOpensOverTheList() {
    frmMain& m = open();
    choose(m.cmbData, "Items");
    const QString target = m.model()->name(m.model()->rowCount() - 1);
    m.menuEntry("mnuEditFind")->trigger();
    frmFind* f = m.findDialog();
    QVERIFY(f);
    m.menuEntry("mnuPopupFind")->trigger();
    QCOMPARE(m.findDialog(), f); // one dialog, brought forward
    f->txtSearchText->setText(target);
    m.lstItems->setCurrentIndex(m.model()->index(0, 0));
    const int found = f->FindItem();
    QCOMPARE(m.model()->name(found), target);
    QCOMPARE(m.panelText("Status"), "Ready");
    QVERIFY(m.panelText("LoadTime").endsWith(" Seconds"));
    f->close();
}

void TestMainWindowActions::backgroundFollowsOption() {
    SaveSetting("Options", "Background", "False");
    QVERIFY(!open().backgroundShown());
    SaveSetting("Options", "Background", "True");
    frmMain& m = open();
    if (!QFile::exists(programFolder() + "/images/IMAGE/BG_VOSK.GIF"))
        QSKIP("the pictures are not drawn in this build");
    QVERIFY(m.backgroundShown());
    m.setBackgroundShown(false);
    QVERIFY(!m.backgroundShown());
}

void TestMainWindowActions::exitClosesAndSaves() {
    frmMain& m = open();
    m.show();
    choose(m.cmbData, "MOBs");
    choose(m.cmbCL, "51+");
    m.menuEntry("mnuFileExit")->trigger();
    QVERIFY(!m.isVisible());
    QVERIFY(!db().isOpen()); // closing the main window went through ShutDown
    QCOMPARE(LoadCategory(), "MOBs");
    QCOMPARE(LoadFilters().combatBand, "51+");
}

QTEST_MAIN(TestMainWindowActions)
#include "tst_mainwindow_actions.moc"
