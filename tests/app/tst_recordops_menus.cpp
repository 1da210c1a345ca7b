// Delete, Copy, Rename, Backup and Restore from the main window's menus over the sample world: the
// list is refreshed and shows the result selected.
#include "app/frmmain.h"
#include "app/wiring.h"
#include "core/programfolder.h"
#include "core/scriptedprompt.h"
#include "core/settings.h"
#include "data/database.h"
#include "data/recordset.h"
#include "data/sampledata.h"
#include "data/schema.h"
#include "editors/frmrename.h"
#include "lists/listmodel.h"
#include "viewsfixture.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeView>

class TestRecordOpsMenus : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() {
        QVERIFY(m_dir.isValid());
        IsolateSettings(m_dir.path());
        setProgramFolder(m_dir.path());
        QString error;
        QVERIFY2(CreateDatabase(databasePath(), &error) && FillSampleData(databasePath(), &error),
                 qPrintable(error));
        db().open("Provider=VOSK.SQLite;Data Source=" + databasePath() + ";");
    }
    void init() {
        DeleteAllSettings();
        m_prompt.clear();
        w = std::make_unique<frmMain>();
        wireRecordOps(*w);
    }
    void cleanup() { w.reset(); }

    void copyAndRenameShowTheResultSelected_data() {
        QTest::addColumn<QString>("category");
        QTest::addColumn<QString>("entry");
        // A record of each kind that no equipment upgrades from (those cannot be copied).
        const QString pick =
            "SELECT %2 FROM %1 WHERE %2 NOT IN (SELECT UPGRADE_FROM FROM EQUIPMENTS_UPGRADE_FROM) "
            "ORDER BY %2";
        const QList<QStringList> kinds = {{"Equipment", "EQUIPMENTS", "EQUIPMENT_NAME"},
                                          {"Components", "COMPONENTS", "COMPONENT_NAME"},
                                          {"Raw Materials", "RAW_MATERIALS", "RAW_MATERIAL_NAME"},
                                          {"Items", "ITEMS", "ITEM_NAME"},
                                          {"MOBs", "MOBS", "MOB_NAME"}};
        QTest::addColumn<QString>("query");
        for (const QStringList& k : kinds)
            for (const char* entry : {"mnuEditCopy", "mnuPopupRename"})
                QTest::addRow("%s %s", entry, qPrintable(k[0]))
                    << k[0] << QString(entry) << pick.arg(k[1], k[2]);
    }
    void copyAndRenameShowTheResultSelected() {
        QFETCH(QString, category);
        QFETCH(QString, entry);
        QFETCH(QString, query);
        QVERIFY(choose(category));
        const QString old = scalar(query).toString();
        QVERIFY(select(old));
        const QString renamed = old + (entry == "mnuEditCopy" ? " Mk II" : " Renamed");
        answerRename(renamed);
        QVERIFY(w->menuEntry(entry)->isEnabled());
        w->menuEntry(entry)->trigger();
        QCOMPARE(w->selectedName(), renamed);
        QCOMPARE(rowOf(old) >= 0, entry == "mnuEditCopy");
        // Only the equipment copy says so.
        QCOMPARE(m_prompt.count(), category == "Equipment" && entry == "mnuEditCopy" ? 1 : 0);
    }

    void refusedCopyKeepsTheSelection() {
        QVERIFY(choose("Equipment"));
        const QString source =
            scalar("SELECT UPGRADE_FROM FROM EQUIPMENTS_UPGRADE_FROM WHERE UPGRADE_FROM IN "
                   "(SELECT EQUIPMENT_NAME FROM EQUIPMENTS)")
                .toString();
        QVERIFY(select(source));
        const int rows = w->model()->rowCount();
        answerRename(source + " Copy");
        w->menuEntry("mnuPopupCopy")->trigger();
        QCOMPARE(m_prompt.count(), 1);
        QCOMPARE(m_prompt.last().title, QString("Cannot Copy"));
        QCOMPARE(w->model()->rowCount(), rows);
        QCOMPARE(w->selectedName(), source);
    }

    void deleteRemovesTheRow() {
        QVERIFY(choose("Items"));
        const QString name = w->model()->name(0);
        QVERIFY(select(name));
        w->menuEntry("mnuEditDelete")->trigger(); // the scripted answer to "Are you sure" is Yes
        QCOMPARE(m_prompt.last().title, QString("Delete?"));
        QCOMPARE(rowOf(name), -1);
        QCOMPARE(
            scalar("SELECT COUNT(*) FROM ITEMS WHERE ITEM_NAME = '" + QString(name).replace("'", "''") + "'")
                .toInt(),
            0);
    }

    void backupThenRestoreFromTheFileMenu() {
        QVERIFY(choose("Raw Materials"));
        const QString name = w->model()->name(0);
        const QString backup = m_dir.filePath("menu.bak");
        QVERIFY(w->menuEntry("mnuFileBackupDB")->isEnabled() &&
                w->menuEntry("mnuFileRestoreDB")->isEnabled());
        // A component type the window has not listed yet: the restore fills the filter lists again.
        db().execute("INSERT INTO COMPONENT_TYPES (COMPONENT_TYPE) VALUES ('Restored Type')");
        m_prompt.queueText(backup);
        w->menuEntry("mnuFileBackupDB")->trigger();
        QVERIFY(QFile::exists(backup));
        QVERIFY(select(name));
        w->menuEntry("mnuPopupDelete")->trigger();
        QCOMPARE(rowOf(name), -1);
        m_prompt.queueText(backup);
        w->menuEntry("mnuFileRestoreDB")->trigger();
        QVERIFY(db().isOpen());
        QVERIFY(rowOf(name) >= 0); // the list shows the restored database
        QVERIFY(w->cmbCompType->findText("Restored Type") >= 0);
        QCOMPARE(w->cmbData->currentText(), QString("Raw Materials"));
        QVERIFY(!QFile::exists(databasePath() + ".temp"));
    }

private:
    // False when the list does not offer the category (the caller's QVERIFY stops the test there).
    bool choose(const QString& category) {
        const int i = w->cmbData->findText(category);
        if (i >= 0)
            w->cmbData->setCurrentIndex(i);
        return i >= 0;
    }
    int rowOf(const QString& name) const {
        for (int r = 0; r < w->model()->rowCount(); ++r)
            if (w->model()->name(r) == name)
                return r;
        return -1;
    }
    bool select(const QString& name) {
        const int row = rowOf(name);
        if (row < 0)
            return false;
        w->lstItems->setCurrentIndex(w->model()->index(row, 0));
        w->mnuPopup->aboutToShow();
        return w->selectedName() == name;
    }
    // Types the name into the new-name dialog once it is up, and presses OK.
    void answerRename(const QString& name) {
        QTimer::singleShot(0, [name] {
            auto* d = qobject_cast<frmRename*>(QApplication::activeModalWidget());
            if (!d) { // the caller finds the name unchanged
                qWarning("no new-name dialog is up");
                return;
            }
            d->txtName->setText(name);
            d->cmdOK->click();
        });
    }
    static QVariant scalar(const QString& sql) {
        Recordset rs;
        rs.open(sql);
        return rs.eof() ? QVariant() : rs.value(0);
    }

    QTemporaryDir m_dir;
    ScriptedPrompt m_prompt;
    std::unique_ptr<frmMain> w;
};

QTEST_MAIN(TestRecordOpsMenus)
#include "tst_recordops_menus.moc"
