// The main window driven offscreen over the sample database: categories and their filters, the rows
// each choice lists, the status panels, and records with quotes or NULLs in their columns.
#include "app/frmmain.h"
#include "app/liststatements.h"
#include "core/settings.h"
#include "data/database.h"
#include "lists/listmodel.h"
#include "mainwindow_fixture.h"
#include "views/modmain.h"

#include <QComboBox>
#include <QTest>
#include <QTreeView>

class TestMainWindow : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void shellCaptionPanelsAndLists();
    void eachCategoryListsItsRows_data();
    void eachCategoryListsItsRows();
    void equipmentTypeLevelAndClass();
    void customFieldsInUse();
    void componentTypesAndSubtypes();
    void unknownComponentTypeIncludesNone();
    void mobBands_data();
    void mobBands();
    void rawMaterialsChecked();
    void filterValuesWithQuotes();
    void emptyList();
    void nullColumns_data();
    void nullColumns();
    void refreshKeepsSelectedRow();
    void refreshErrorIsReported();
    void screenshots();

private:
    frmMain& open();
    void choose(QComboBox* box, const QString& text);
    int rowOf(const QString& name) const;
    QStringList column(const QString& name) const;

    MainWindowFixture fx;
    std::unique_ptr<frmMain> w;
};

void TestMainWindow::initTestCase() {
    QString error;
    QVERIFY2(fx.setUp(&error), qPrintable(error));
}

void TestMainWindow::cleanupTestCase() { fx.tearDown(); }

// Records the tests add all have names starting "Zz "; a failed test must not leave them behind.
static void removeTestRecords() {
    for (const char* t : {"WEAPON_STATS", "AMO_STATS", "EQUIPMENT_CLASS", "EQUIPMENTS"})
        db().execute(QString("DELETE FROM %1 WHERE %2 LIKE 'Zz %'")
                         .arg(t, QByteArray(t) == "EQUIPMENT_CLASS" ? "EQUIPMENTS_EQUIPMENT" : "EQUIPMENT_NAME"));
    db().execute("DELETE FROM COMPONENTS WHERE COMPONENT_NAME LIKE 'Zz %'");
    db().execute("DELETE FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME LIKE 'Zz %'");
    db().execute("DELETE FROM ITEMS WHERE ITEM_NAME LIKE 'Zz %'");
    db().execute("DELETE FROM MOB_STATS WHERE MOB_NAME LIKE 'Zz %'");
    db().execute("DELETE FROM MOBS WHERE MOB_NAME LIKE 'Zz %'");
}

void TestMainWindow::init() {
    removeTestRecords();
    DeleteAllSettings();
    fx.prompt().clear();
}

void TestMainWindow::cleanup() {
    w.reset();
    QVERIFY2(fx.prompt().count() == 0 || QTest::currentTestFailed() ||
                 QByteArray(QTest::currentTestFunction()) == "refreshErrorIsReported",
             qPrintable("unexpected message: " + fx.prompt().last().text));
}

frmMain& TestMainWindow::open() {
    w.reset();
    w = std::make_unique<frmMain>();
    return *w;
}

void TestMainWindow::choose(QComboBox* box, const QString& text) {
    const int i = box->findText(text);
    QVERIFY2(i >= 0, qPrintable(box->objectName() + " has no " + text));
    box->setCurrentIndex(i);
}

int TestMainWindow::rowOf(const QString& name) const {
    for (int r = 0; r < w->model()->rowCount(); ++r)
        if (w->model()->name(r) == name)
            return r;
    return -1;
}

QStringList TestMainWindow::column(const QString& name) const {
    QStringList values;
    const int c = w->model()->columnIndex(name);
    for (int r = 0; c >= 0 && r < w->model()->rowCount(); ++r)
        values << w->model()->text(r, c);
    return values;
}

void TestMainWindow::shellCaptionPanelsAndLists() {
    frmMain& m = open();
    QCOMPARE(m.windowTitle(), QString("VOSK v%1.%2.%3").arg(VOSK_VERSION_MAJOR).arg(VOSK_VERSION_MINOR)
                                  .arg(VOSK_VERSION_REVISION));
    QCOMPARE(mainWindow(), &m);
    QCOMPARE(m.panelText("Status"), "Ready");
    QVERIFY(m.panelText("ItemCount").startsWith("Items: "));
    QVERIFY(m.panelText("LoadTime").endsWith(" Seconds"));
    QCOMPARE(m.panelText("Interaction"), "Game Interaction: Disabled");

    QStringList data;
    for (int i = 0; i < m.cmbData->count(); ++i)
        data << m.cmbData->itemText(i);
    QCOMPARE(data, Categories());
    QCOMPARE(m.category(), "Equipment");
    QCOMPARE(m.cmbRace->count(), 1 + fx.count("SELECT CLASS_NAME FROM CLASSES"));
    QCOMPARE(m.cmbRace->itemText(0), "All");
    QCOMPARE(m.cmbCompType->count(), 1 + fx.count("SELECT COMPONENT_TYPE FROM COMPONENT_TYPES"));
    QCOMPARE(m.cmbCompType->itemText(1), "Actuator"); // in alphabetical order
    QCOMPARE(m.cmbCL->count(), 12);
    QCOMPARE(m.cmbChecked->count(), 3);
    QCOMPARE(m.cmbEquipType->count(), 9);
    QCOMPARE(m.cmbEquipType->itemText(8), "Ammunition");
    QVERIFY(m.cmbLevel->count() >= LevelFloor + 1);
    QCOMPARE(m.cmbLevel->itemText(0), "All");
    QCOMPARE(m.cmbData->toolTip(), "Pick a category");
    QCOMPARE(m.cmbRace->toolTip(), "Pick a class");

    // Interaction panel follows the option at load.
    SaveSetting("Options", "VLInteractOn", "True");
    QCOMPARE(open().panelText("Interaction"), "Game Interaction: Enabled");
}

void TestMainWindow::eachCategoryListsItsRows_data() {
    QTest::addColumn<QString>("category");
    QTest::addColumn<QString>("countSql");
    QTest::addColumn<QStringList>("shown");
    QTest::addColumn<QString>("firstColumn");
    const QString joinMobs = "SELECT MOBS.MOB_NAME FROM MOBS, MOB_STATS WHERE MOBS.MOB_NAME = MOB_STATS.MOB_NAME";
    QTest::newRow("Equipment") << "Equipment" << "SELECT EQUIPMENT_NAME FROM EQUIPMENTS"
                               << QStringList{"cmbEquipType", "cmbLevel", "cmbRace", "cmbChecked"} << "EQUIPMENT_NAME";
    QTest::newRow("Components") << "Components" << "SELECT COMPONENT_NAME FROM COMPONENTS"
                                << QStringList{"cmbCompType", "cmbSubType", "cmbLevel", "cmbChecked"}
                                << "COMPONENT_NAME";
    QTest::newRow("Raw Materials") << "Raw Materials" << "SELECT RAW_MATERIAL_NAME FROM RAW_MATERIALS"
                                   << QStringList{"cmbLevel", "cmbChecked"} << "RAW_MATERIAL_NAME";
    QTest::newRow("Stations") << "Stations"
                              << "SELECT STATION_NAME FROM STATIONS, SECTORS WHERE SECTOR_NAME = SECTORS_SECTOR"
                              << QStringList{"cmbChecked"} << "STATION_NAME";
    QTest::newRow("MOBs") << "MOBs" << joinMobs << QStringList{"cmbCL", "cmbChecked"} << "MOB_NAME";
    QTest::newRow("Items") << "Items" << "SELECT ITEM_NAME FROM ITEMS" << QStringList{"cmbLevel", "cmbChecked"}
                           << "ITEM_NAME";
}

void TestMainWindow::eachCategoryListsItsRows() {
    QFETCH(QString, category);
    QFETCH(QString, countSql);
    QFETCH(QStringList, shown);
    QFETCH(QString, firstColumn);
    frmMain& m = open();
    if (category == "Equipment")
        choose(m.cmbData, "Stations"); // so that choosing Equipment is a change
    choose(m.cmbData, category);
    const long rows = fx.count(countSql);
    QVERIFY(rows > 0);
    QCOMPARE(m.model()->rowCount(), int(rows));
    QCOMPARE(m.panelText("ItemCount"), "Items: " + QString::number(rows));
    QCOMPARE(m.panelText("Status"), "Ready");
    QVERIFY(m.panelText("LoadTime").endsWith(" Seconds"));
    QCOMPARE(m.model()->columnName(0), firstColumn);
    for (int c = 0; c < m.model()->columnCount(); ++c)
        QVERIFY2(!QStringList({"CHECK", "PERSONAL_DB", "UPDATED", "SUBMITTED", "UNIQUE_FLAG", "PIC_ID"})
                      .contains(m.model()->columnName(c)),
                 qPrintable(m.model()->columnName(c)));
    for (QComboBox* box : {m.cmbEquipType, m.cmbLevel, m.cmbChecked, m.cmbCompType, m.cmbSubType, m.cmbCL, m.cmbRace})
        QCOMPARE(box->isVisibleTo(&m), shown.contains(box->objectName()));
    QVERIFY(m.menuEntry("mnuEditFind")->isEnabled());
}

void TestMainWindow::equipmentTypeLevelAndClass() {
    frmMain& m = open();
    choose(m.cmbEquipType, "Beam");
    const long beams = fx.count("SELECT EQUIPMENTS.EQUIPMENT_NAME FROM EQUIPMENTS, WEAPON_STATS WHERE "
                                "EQUIPMENTS.EQUIPMENT_NAME = WEAPON_STATS.EQUIPMENT_NAME AND EQUIPMENTS.TYPE = 'Beam'");
    QVERIFY(beams > 0);
    QCOMPARE(m.model()->rowCount(), int(beams));
    QVERIFY(m.model()->columnIndex("DAMAGE_PER_SECOND") > 0);
    for (const QString& t : column("TYPE"))
        QCOMPARE(t, "Beam");

    const QString level = column("LVL").value(0);
    choose(m.cmbLevel, level);
    QVERIFY(m.model()->rowCount() > 0);
    for (const QString& l : column("LVL"))
        QCOMPARE(l, level);

    choose(m.cmbEquipType, "All");
    choose(m.cmbLevel, "All");
    choose(m.cmbRace, "Scout");
    QCOMPARE(m.model()->rowCount(),
             int(fx.count("SELECT EQUIPMENTS_EQUIPMENT FROM EQUIPMENT_CLASS WHERE CLASS_NAME = 'Scout'")));
}

void TestMainWindow::customFieldsInUse() {
    CustomFields fields;
    fields.on = true;
    fields.caption[0] = "Where Found";
    setCustomFields(fields);
    frmMain& m = open();
    const int c1 = m.model()->columnIndex("CUSTOM_01");
    const int c2 = m.model()->columnIndex("CUSTOM_02");
    QVERIFY(c1 > 0 && c2 > 0);
    QCOMPARE(m.model()->headerData(c1, Qt::Horizontal).toString(), "Where Found");
    QVERIFY(!m.lstItems->isColumnHidden(c1));
    QVERIFY(m.lstItems->isColumnHidden(c2));
    setCustomFields(CustomFields{});
    m.RefreshGrid();
    QCOMPARE(m.model()->columnIndex("CUSTOM_01"), -1);
    for (int c = 0; c < m.model()->columnCount(); ++c)
        QVERIFY(!m.lstItems->isColumnHidden(c));
}

void TestMainWindow::componentTypesAndSubtypes() {
    frmMain& m = open();
    choose(m.cmbData, "Components");
    QVERIFY(!m.cmbSubType->isEnabled());
    choose(m.cmbCompType, "Optics");
    QVERIFY(m.cmbSubType->isEnabled());
    QCOMPARE(m.cmbSubType->count(), 3);
    QCOMPARE(m.cmbSubType->itemText(0), "All");
    QCOMPARE(m.cmbSubType->itemText(1), "Emitter Crystal");
    QCOMPARE(m.model()->rowCount(), int(fx.count("SELECT COMPONENT_NAME FROM COMPONENTS WHERE TYPE = 'Optics'")));
    choose(m.cmbSubType, "Lens");
    QCOMPARE(m.model()->rowCount(),
             int(fx.count("SELECT COMPONENT_NAME FROM COMPONENTS WHERE TYPE = 'Optics' AND SUBTYPE = 'Lens'")));
    for (const QString& s : column("SUBTYPE"))
        QCOMPARE(s, "Lens");
    // A type without subtypes offers only "N/A", which filters nothing.
    choose(m.cmbCompType, "Casing");
    QCOMPARE(m.cmbSubType->count(), 1);
    QCOMPARE(m.cmbSubType->currentText(), "N/A");
    QVERIFY(!m.cmbSubType->isEnabled());
    QCOMPARE(m.model()->rowCount(), int(fx.count("SELECT COMPONENT_NAME FROM COMPONENTS WHERE TYPE = 'Casing'")));
}

void TestMainWindow::unknownComponentTypeIncludesNone() {
    db().execute("INSERT INTO COMPONENTS (COMPONENT_NAME, LVL) VALUES ('Zz Untyped Part', 2)");
    db().execute("INSERT INTO COMPONENTS (COMPONENT_NAME, TYPE, LVL) VALUES ('Zz Unknown Part', 'Unknown', 2)");
    frmMain& m = open();
    choose(m.cmbData, "Components");
    choose(m.cmbCompType, "Unknown");
    QVERIFY(rowOf("Zz Untyped Part") >= 0);
    QVERIFY(rowOf("Zz Unknown Part") >= 0);
    QCOMPARE(m.model()->text(rowOf("Zz Untyped Part"), m.model()->columnIndex("TYPE")), "Unknown");
    QCOMPARE(m.model()->rowCount(),
             int(fx.count("SELECT COMPONENT_NAME FROM COMPONENTS WHERE TYPE IS NULL OR TYPE = 'Unknown'")));
}

void TestMainWindow::mobBands_data() {
    QTest::addColumn<QString>("band");
    QTest::addColumn<QStringList>("in");
    QTest::addColumn<QStringList>("out");
    QTest::newRow("0-5") << "0-5" << QStringList{"Zz Mob 5"} << QStringList{"Zz Mob 46", "Zz Mob 6"};
    QTest::newRow("6-10") << "6-10" << QStringList{"Zz Mob 6"} << QStringList{"Zz Mob 5"};
    QTest::newRow("46-50") << "46-50" << QStringList{"Zz Mob 46", "Zz Mob 50"} << QStringList{"Zz Mob 51", "Zz Mob 45"};
    QTest::newRow("51+") << "51+" << QStringList{"Zz Mob 51", "Zz Mob 90"} << QStringList{"Zz Mob 50"};
    QTest::newRow("All") << "All" << QStringList{"Zz Mob 5", "Zz Mob 51"} << QStringList{};
}

void TestMainWindow::mobBands() {
    QFETCH(QString, band);
    QFETCH(QStringList, in);
    QFETCH(QStringList, out);
    for (int cl : {5, 6, 45, 46, 50, 51, 90}) {
        db().execute(QString("INSERT INTO MOBS (MOB_NAME) VALUES ('Zz Mob %1')").arg(cl));
        db().execute(QString("INSERT INTO MOB_STATS (MOB_NAME, COMBAT_LEVEL) VALUES ('Zz Mob %1', %1)").arg(cl));
    }
    frmMain& m = open();
    choose(m.cmbData, "MOBs");
    choose(m.cmbCL, band);
    for (const QString& n : in)
        QVERIFY2(rowOf(n) >= 0, qPrintable(n));
    for (const QString& n : out)
        QVERIFY2(rowOf(n) < 0, qPrintable(n));
    if (rowOf("Zz Mob 5") >= 0) // the list shows the overall level, three times the combat level
        QCOMPARE(m.model()->text(rowOf("Zz Mob 5"), m.model()->columnIndex("OVERALL_LEVEL")), "15");
}

void TestMainWindow::rawMaterialsChecked() {
    db().execute("UPDATE RAW_MATERIALS SET CHECK = FALSE");
    const QString first = fx.scalar("SELECT RAW_MATERIAL_NAME FROM RAW_MATERIALS ORDER BY RAW_MATERIAL_NAME").toString();
    const QString level = fx.scalar("SELECT LVL FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME = '" + first + "'").toString();
    db().execute("UPDATE RAW_MATERIALS SET CHECK = TRUE WHERE RAW_MATERIAL_NAME = '" + first + "'");
    frmMain& m = open();
    choose(m.cmbData, "Raw Materials");
    choose(m.cmbChecked, "Checked");
    QCOMPARE(m.model()->rowCount(), 1);
    QCOMPARE(m.model()->name(0), first);
    QVERIFY(m.model()->isChecked(0));
    choose(m.cmbLevel, level);
    QCOMPARE(m.model()->rowCount(), 1);
    choose(m.cmbChecked, "Not Checked");
    QCOMPARE(m.model()->rowCount(),
             int(fx.count("SELECT RAW_MATERIAL_NAME FROM RAW_MATERIALS WHERE LVL = " + level)) - 1);
    QVERIFY(rowOf(first) < 0);
    db().execute("UPDATE RAW_MATERIALS SET CHECK = FALSE");
}

void TestMainWindow::filterValuesWithQuotes() {
    db().execute("INSERT INTO COMPONENT_TYPES (COMPONENT_TYPE) VALUES ('Pilot''s Kit')");
    db().execute("INSERT INTO COMPONENT_TYPE_SUBTYPE (COMPONENT_TYPE, COMPONENT_SUBTYPE) VALUES ('Pilot''s Kit', "
                 "'O''Neil Pack')");
    db().execute("INSERT INTO COMPONENTS (COMPONENT_NAME, TYPE, SUBTYPE) VALUES ('Zz Kit''s Part', 'Pilot''s Kit', "
                 "'O''Neil Pack')");
    db().execute("INSERT INTO CLASSES (CLASS_NAME) VALUES ('Mercs'' Guild')");
    const QString equipment = fx.scalar("SELECT EQUIPMENT_NAME FROM EQUIPMENTS WHERE TYPE = 'Device'").toString();
    db().execute("INSERT INTO EQUIPMENT_CLASS (EQUIPMENTS_EQUIPMENT, CLASS_NAME) VALUES ('" + equipment +
                 "', 'Mercs'' Guild')");
    frmMain& m = open();
    choose(m.cmbRace, "Mercs' Guild");
    QCOMPARE(m.model()->rowCount(), 1);
    QCOMPARE(m.model()->name(0), equipment);
    choose(m.cmbData, "Components");
    choose(m.cmbCompType, "Pilot's Kit");
    choose(m.cmbSubType, "O'Neil Pack");
    QCOMPARE(m.model()->rowCount(), 1);
    QCOMPARE(m.model()->name(0), "Zz Kit's Part");

    db().execute("DELETE FROM EQUIPMENT_CLASS WHERE CLASS_NAME = 'Mercs'' Guild'");
}

void TestMainWindow::emptyList() {
    db().execute("UPDATE STATIONS SET CHECK = FALSE");
    frmMain& m = open();
    choose(m.cmbData, "Stations");
    choose(m.cmbChecked, "Checked");
    QCOMPARE(m.model()->rowCount(), 0);
    QCOMPARE(m.panelText("ItemCount"), "Items: 0");
    QCOMPARE(m.panelText("Status"), "Ready");
    QVERIFY(!m.menuEntry("mnuEditFind")->isEnabled());
    QVERIFY(!m.menuEntry("mnuPopupView")->isEnabled());
}

void TestMainWindow::nullColumns_data() {
    QTest::addColumn<QString>("category");
    QTest::addColumn<QStringList>("inserts");
    QTest::addColumn<QString>("name");
    QTest::newRow("equipment") << "Equipment"
                               << QStringList{"INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, TYPE) VALUES ('Zz Bare', 'Beam')",
                                              "INSERT INTO WEAPON_STATS (EQUIPMENT_NAME) VALUES ('Zz Bare')"}
                               << "Zz Bare";
    QTest::newRow("ammunition") << "Equipment"
                                << QStringList{"INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, TYPE) VALUES ('Zz Bare', "
                                               "'Ammunition')",
                                               "INSERT INTO AMO_STATS (EQUIPMENT_NAME, AMO_TYPE) VALUES ('Zz Bare', "
                                               "'Seeker')"}
                                << "Zz Bare";
    QTest::newRow("component") << "Components"
                               << QStringList{"INSERT INTO COMPONENTS (COMPONENT_NAME) VALUES ('Zz Bare')"} << "Zz Bare";
    QTest::newRow("raw material") << "Raw Materials"
                                  << QStringList{"INSERT INTO RAW_MATERIALS (RAW_MATERIAL_NAME) VALUES ('Zz Bare')"}
                                  << "Zz Bare";
    QTest::newRow("item") << "Items" << QStringList{"INSERT INTO ITEMS (ITEM_NAME) VALUES ('Zz Bare')"} << "Zz Bare";
    QTest::newRow("mob") << "MOBs"
                         << QStringList{"INSERT INTO MOBS (MOB_NAME) VALUES ('Zz Bare')",
                                        "INSERT INTO MOB_STATS (MOB_NAME) VALUES ('Zz Bare')"}
                         << "Zz Bare";
}

void TestMainWindow::nullColumns() {
    QFETCH(QString, category);
    QFETCH(QStringList, inserts);
    QFETCH(QString, name);
    for (const QString& sql : inserts)
        db().execute(sql);
    frmMain& m = open();
    choose(m.cmbData, category);
    if (category == "Equipment")
        choose(m.cmbEquipType, inserts.first().contains("Ammunition") ? "Ammunition" : "Beam");
    const int row = rowOf(name);
    QVERIFY(row >= 0);
    QVERIFY(!m.model()->isChecked(row));
    // Every cell of the row is made (none may fail); a missing type reads "Unknown".
    for (int c = 1; c < m.model()->columnCount(); ++c) {
        const QString col = m.model()->columnName(c);
        const QString text = m.model()->text(row, c);
        if ((col == "TYPE" || col == "SUBTYPE") && category != "Equipment")
            QCOMPARE(text, "Unknown");
    }
}

void TestMainWindow::refreshKeepsSelectedRow() {
    frmMain& m = open();
    choose(m.cmbData, "Items");
    QVERIFY(m.model()->rowCount() > 4);
    m.lstItems->setCurrentIndex(m.model()->index(3, 0));
    const QString name = m.selectedName();
    QCOMPARE(name, m.model()->name(3));
    m.menuEntry("mnuViewRefresh")->trigger();
    QCOMPARE(m.lstItems->currentIndex().row(), 3);
    QCOMPARE(m.selectedName(), name);
}

void TestMainWindow::refreshErrorIsReported() {
    frmMain& m = open();
    choose(m.cmbData, "Items");
    db().execute("ALTER TABLE ITEMS RENAME TO ITEMS_AWAY");
    fx.prompt().clear();
    m.RefreshGrid();
    db().execute("ALTER TABLE ITEMS_AWAY RENAME TO ITEMS");
    QVERIFY(fx.prompt().count() >= 1);
    QCOMPARE(m.panelText("Status"), "Ready");
    QCOMPARE(m.model()->rowCount(), 0);
    const QStringList log = fx.errorLog();
    QVERIFY(!log.isEmpty());
    QVERIFY2(log.last().contains("RefreshGrid") && log.last().contains("Form frmMain"), qPrintable(log.last()));
    fx.prompt().clear();
    m.RefreshGrid();
    QVERIFY(m.model()->rowCount() > 0);
}

// Pictures of the window for a person to look at: only when VOSK_SCREENSHOT_DIR names a folder.
void TestMainWindow::screenshots() {
    const QString dir = qEnvironmentVariable("VOSK_SCREENSHOT_DIR");
    if (dir.isEmpty())
        QSKIP("VOSK_SCREENSHOT_DIR not set");
    frmMain& m = open();
    m.resize(1100, 640);
    m.show();
    QVERIFY(QTest::qWaitForWindowExposed(&m));
    const QStringList names = {"equipment", "components", "rawmaterials", "stations", "mobs", "items"};
    for (int i = 0; i < names.size(); ++i) {
        m.cmbData->setCurrentIndex(i);
        if (i == 0)
            choose(m.cmbEquipType, "Beam");
        if (i == 1)
            choose(m.cmbCompType, "Optics");
        m.lstItems->setCurrentIndex(m.model()->index(1, 0));
        QTest::qWait(50);
        QVERIFY(m.grab().save(dir + "/main-" + names.at(i) + ".png"));
    }
}

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
