// The main window over the sample database in a temporary program folder (load, filters, ticks, settings).
#include "app/frmmain.h"
#include "core/programfolder.h"
#include "core/scriptedprompt.h"
#include "core/settings.h"
#include "core/tooltip.h"
#include "data/database.h"
#include "data/recordset.h"
#include "data/sampledata.h"
#include "data/schema.h"
#include "lists/listmodel.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QMenu>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>

class TestMainWindow : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() {
        QVERIFY(m_dir.isValid());
        // The settings store of this run lives in the temporary folder, never in the user's own.
        for (auto format : {QSettings::NativeFormat, QSettings::IniFormat})
            QSettings::setPath(format, QSettings::UserScope, m_dir.filePath("settings"));
        setProgramFolder(m_dir.path());
        QFile ini(iniPath());
        QVERIFY(ini.open(QIODevice::WriteOnly) && ini.write("[Main]\nDATA=Pick a category\n") > 0);
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
        choose(m.cmbData, "Components");
        QVERIFY(m.cmbCompType->isVisibleTo(&m) && !m.cmbEquipType->isVisibleTo(&m));
        choose(m.cmbCompType, "Unknown");
        QCOMPARE(m.model()->rowCount(),
                 count("SELECT * FROM COMPONENTS WHERE TYPE IS NULL OR TYPE = 'Unknown'"));
        QCOMPARE(m.model()->text(rowOf("Zz Untyped Part"), m.model()->columnIndex("TYPE")), "Unknown");
        // The bands filter on the combat level; the list shows three times that as the overall level.
        choose(m.cmbData, "MOBs");
        choose(m.cmbCL, "46-50");
        QVERIFY(rowOf("Zz Mob 46") >= 0 && rowOf("Zz Mob 50") >= 0 && rowOf("Zz Mob 45") < 0 &&
                rowOf("Zz Mob 51") < 0);
        choose(m.cmbCL, "0-5");
        QCOMPARE(m.model()->text(rowOf("Zz Mob 5"), m.model()->columnIndex("OVERALL_LEVEL")), "15");
        // A tick is written at once, a name with a quote included; the tick filter then lists the row.
        const QString readBack = "SELECT CHECK FROM ITEMS WHERE ITEM_NAME = 'Zz Captain''s Log'";
        choose(m.cmbData, "Items");
        choose(m.cmbLevel, "1");
        QVERIFY(m.model()->setData(m.model()->index(rowOf("Zz Captain's Log"), 0), Qt::Checked,
                                   Qt::CheckStateRole));
        QCOMPARE(scalar(readBack).toBool(), true);
        choose(m.cmbChecked, "Checked");
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
        choose(m.cmbData, "MOBs");
        const int blank = rowOf("Zz Blank");
        QVERIFY(blank >= 0);
        for (int c = 1; c < m.model()->columnCount(); ++c)
            QCOMPARE(m.model()->text(blank, c), m.model()->columnName(c) == "TYPE" ? "Unknown" : "");
        db().beginTrans();
        db().execute("DELETE FROM STATION_TERMINALS");
        db().execute("DELETE FROM STATIONS");
        choose(m.cmbData, "Stations");
        QCOMPARE(m.model()->rowCount(), 0);
        QVERIFY(m.model()->columnCount() > 0);
        QCOMPARE(m.panelText("ItemCount"), "Items: 0");
        QCOMPARE(m.panelText("Status"), "Ready");
        db().rollbackTrans();
        QCOMPARE(m_prompt.count(), 0);
    }

    void failedTickIsReportedAndUndone() {
        frmMain& m = open();
        choose(m.cmbData, "Items");
        const bool before = m.model()->isChecked(0);
        // The table goes away behind the list's back: the tick write fails and the tick is undone.
        db().execute("ALTER TABLE ITEMS RENAME TO ITEMS_AWAY");
        m.model()->setData(m.model()->index(0, 0), before ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
        QCOMPARE(m.model()->isChecked(0), before);
        QFile log(errorLogPath());
        QVERIFY(log.open(QIODevice::ReadOnly) &&
                log.readAll().contains("in procedure lstItems_ItemCheck of Form frmMain"));
        db().execute("ALTER TABLE ITEMS_AWAY RENAME TO ITEMS");
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
        choose(m.cmbData, category);
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
            choose(m.cmbData, "Components");
            choose(m.cmbCompType, "Power Cell");
            choose(m.cmbSubType, "Fuel Cell");
            choose(m.cmbLevel, "3");
            choose(m.cmbChecked, "Not Checked");
            choose(m.cmbEquipType, "Shield");
            choose(m.cmbCL, "46-50");
            choose(m.cmbRace, "Trader");
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

private:
    frmMain& open() {
        w.reset();
        w = std::make_unique<frmMain>();
        return *w;
    }
    static void choose(QComboBox* box, const QString& text) {
        QVERIFY2(box->findText(text) >= 0, qPrintable(box->objectName() + " has no " + text));
        box->setCurrentIndex(box->findText(text));
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

    QTemporaryDir m_dir;
    ScriptedPrompt m_prompt;
    std::unique_ptr<frmMain> w;
};

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
