// Every editor over the whole sample world: each record opens without a box, and saving it unchanged
// writes nothing at all (UPDATED and LAST_UPDATED stay as they were). A new editor adds its kind to
// the tables below; everyEditorIsSwept fails until it does. Then what every editor does alike: a
// missing record reported, a record deleted while open not written back.
#include "editorfixture.h"

class TestEditorSweep : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString e;
        QVERIFY2(f.setUp(&e), qPrintable(e));
    }
    void cleanup() { f.tearDown(); }

    void everyRecordOpensAndSavesUnchanged_data() {
        QTest::addColumn<QString>("names"); // the kind's records, by name
        QTest::newRow("Equipment") << "SELECT EQUIPMENT_NAME FROM EQUIPMENTS ORDER BY EQUIPMENT_NAME";
        QTest::newRow("Raw Materials")
            << "SELECT RAW_MATERIAL_NAME FROM RAW_MATERIALS ORDER BY RAW_MATERIAL_NAME";
        QTest::newRow("MOBs") << "SELECT MOB_NAME FROM MOBS ORDER BY MOB_NAME";
        QTest::newRow("Components") << "SELECT COMPONENT_NAME FROM COMPONENTS ORDER BY COMPONENT_NAME";
        QTest::newRow("Items") << "SELECT ITEM_NAME FROM ITEMS ORDER BY ITEM_NAME";
        QTest::newRow("Stations") << "SELECT STATION_NAME FROM STATIONS ORDER BY STATION_NAME";
    }
    void everyRecordOpensAndSavesUnchanged() {
        QFETCH(QString, names);
        const QString kind = QTest::currentDataTag();
        const QStringList all = rows(names);
        QVERIFY(all.size() > 10);
        for (const QString& name : all) {
            OpenEditor(kind, name);
            auto* w = qobject_cast<EditorWindow*>(FindChildWindow("Edit: " + name));
            QVERIFY2(w, qPrintable(name));
            QVERIFY2(f.prompt().count() == 0, qPrintable(name + ": " + f.prompt().last().text));
            const int before = changes();
            QCOMPARE(w->cmdSave_Click(), SaveResult::Unchanged);
            QVERIFY2(changes() == before, qPrintable(name));
            QCOMPARE(f.prompt().count(), 0);
            QApplication::processEvents();
            QVERIFY2(!FindChildWindow("Edit: " + name), qPrintable(name));
        }
        seen << kind;
    }

    void everyEditorIsSwept() {
        for (const EditorKind& k : editorKinds())
            if (k.open)
                QVERIFY2(seen.contains(k.kind), qPrintable(k.kind + " has an editor but no row above"));
    }

    void aMissingRecordIsReportedOnce_data() { editors(); }
    void aMissingRecordIsReportedOnce() {
        QFETCH(QString, loadReport);
        OpenEditor(QTest::currentDataTag(), "Nothing Here");
        QCOMPARE(f.prompt().count(), 1);
        QVERIFY2(f.prompt().last().text.endsWith(loadReport), qPrintable(f.prompt().last().text));
        QVERIFY(!FindChildWindow("Edit: Nothing Here"));
    }

    // Neither the record nor its link rows come back.
    void aRecordDeletedWhileOpenIsNotWrittenBack_data() { editors(); }
    void aRecordDeletedWhileOpenIsNotWrittenBack() {
        QFETCH(QString, name);
        QFETCH(QStringList, remove);
        QFETCH(QString, grid);
        QFETCH(QStringList, cells);
        QFETCH(QString, links);
        QFETCH(QString, saveReport);
        const int before = f.scalar(links.arg(lit(name))).toInt();
        // Unchanged, a window closes without a question; a second request brings it forward.
        auto* w = open(name);
        QVERIFY(w && w->close());
        QCOMPARE(f.prompt().count(), 0);
        QApplication::processEvents();
        w = open(name);
        QVERIFY(w);
        QCOMPARE(open(name), w);
        for (const QString& s : remove)
            f.run({s.arg(lit(name))});
        addRow(w->findChild<UBGrid*>(grid), cells);
        QCOMPARE(w->cmdSave_Click(), SaveResult::Failed);
        QVERIFY2(f.prompt().last().text.endsWith(saveReport), qPrintable(f.prompt().last().text));
        QCOMPARE(f.scalar(links.arg(lit(name))).toInt(), before);
        const int at = changes(); // nothing of the record came back to be deleted again
        for (const QString& s : remove)
            f.run({s.arg(lit(name))});
        QCOMPARE(changes(), at);
        QVERIFY(!db().inTransaction());
    }

private:
    // One record of each kind, the statements that delete it, a grid row it can take, and the
    // container its reports name.
    static void editors() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("remove");
        QTest::addColumn<QString>("grid");
        QTest::addColumn<QStringList>("cells");
        QTest::addColumn<QString>("links"); // counts the record's rows of that grid's table
        QTest::addColumn<QString>("loadReport");
        QTest::addColumn<QString>("saveReport");
        QTest::newRow("Components") << "Basic Navigator's Sextant"
                                    << QStringList{"DELETE FROM COMPONENTS WHERE COMPONENT_NAME = %1"}
                                    << "ubgMOBs" << QStringList{"Ashen Maw", "Rare"}
                                    << "SELECT COUNT(*) FROM MOB_COMP_DROP WHERE COMPONENT_NAME = %1"
                                    << "procedure Form_Load of Form frmAddComponent"
                                    << "procedure cmdSave_Click of Form frmAddComponent";
        QTest::newRow("Items") << "Smuggler's Ledger" << QStringList{"DELETE FROM ITEMS WHERE ITEM_NAME = %1"}
                               << "ubgManuRawMats" << QStringList{"Miner's Gold", "2"}
                               << "SELECT COUNT(*) FROM RAW_MATERIALS_ITEMS WHERE ITEM_NAME = %1"
                               << "procedure Form_Load of frmAddItem"
                               << "procedure cmdSave_Click of frmAddItem";
        QTest::newRow("Raw Materials")
            << "Miner's Gold" << QStringList{"DELETE FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME = %1"}
            << "ubgMOBs" << QStringList{"Hive Queen", "Rare"}
            << "SELECT COUNT(*) FROM MOB_RAW_MAT_DROP WHERE RAW_MATERIAL_NAME = %1"
            << "procedure Form_Load of Form frmAddRawMaterials"
            << "procedure cmdSave_Click of Form frmAddRawMaterials";
        QTest::newRow("MOBs") << "Brother Kell's Wraith"
                              << QStringList{"DELETE FROM MOB_STATS WHERE MOB_NAME = %1",
                                             "DELETE FROM MOBS WHERE MOB_NAME = %1"}
                              << "ubgItems" << QStringList{"Smuggler's Ledger", "Rare"}
                              << "SELECT COUNT(*) FROM MOB_ITEM_DROP WHERE MOB_NAME = %1"
                              << "procedure Form_Load of Form frmAddMob"
                              << "procedure cmdSave_Click of Form frmAddMob";
        QTest::newRow("Equipment") << "Sunspear Mk IV"
                                   << QStringList{"DELETE FROM EQUIPMENTS WHERE EQUIPMENT_NAME = %1"}
                                   << "ubgMOBs" << QStringList{"Brother Kell's Wraith", "Rare"}
                                   << "SELECT COUNT(*) FROM MOB_EQUIP_DROP WHERE EQUIPMENT_NAME = %1"
                                   << "procedure EditEquipment of Module modMain"
                                   << "procedure cmdSave_Click of Form frmAddEquip";
        QTest::newRow("Stations") << "Kell's Anchorage"
                                  << QStringList{"DELETE FROM STATIONS WHERE STATION_NAME = %1"}
                                  << "ubgTerminals" << QStringList{"Tailor"}
                                  << "SELECT COUNT(*) FROM STATION_TERMINALS WHERE STATION_NAME = %1"
                                  << "procedure Form_Load of Form frmAddStation"
                                  << "procedure cmdSave_Click of Form frmAddStation";
    }

    static EditorWindow* open(const QString& name) { return openEditor(QTest::currentDataTag(), name); }
    EditorFixture f;
    QStringList seen;
};

QTEST_MAIN(TestEditorSweep)
#include "tst_editorsweep.moc"
