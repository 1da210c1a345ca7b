// Every editor over the whole sample world: each record opens without a box, and saving it unchanged
// writes nothing at all (UPDATED and LAST_UPDATED stay as they were). A new editor adds its kind to
// the table below; the last test fails until it does.
#include "core/childwindows.h"
#include "data/database.h"
#include "data/recordset.h"
#include "editors/editors.h"
#include "editors/editorwindow.h"
#include "viewsfixture.h"

#include <QApplication>
#include <QTest>
#include <sqlite3.h>

class TestEditorSweep : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() {
        QString e;
        QVERIFY2(f.setUp(true, &e), qPrintable(e));
    }
    void cleanupTestCase() {
        CloseChildWindows();
        QApplication::processEvents();
        f.tearDown();
    }

    void everyRecordOpensAndSavesUnchanged_data() {
        QTest::addColumn<QString>("names"); // the kind's records, by name
        QTest::newRow("Raw Materials")
            << "SELECT RAW_MATERIAL_NAME FROM RAW_MATERIALS ORDER BY RAW_MATERIAL_NAME";
    }
    void everyRecordOpensAndSavesUnchanged() {
        QFETCH(QString, names);
        const QString kind = QTest::currentDataTag();
        QStringList all;
        Recordset rs;
        rs.open(names);
        for (; !rs.eof(); rs.moveNext())
            all << rs.value(0).toString();
        rs.close();
        QVERIFY(all.size() > 10);
        for (const QString& name : std::as_const(all)) {
            OpenEditor(kind, name);
            auto* w = qobject_cast<EditorWindow*>(FindChildWindow("Edit: " + name));
            QVERIFY2(w, qPrintable(name));
            QVERIFY2(f.prompt().count() == 0, qPrintable(name + ": " + f.prompt().last().text));
            const int before = sqlite3_total_changes(db().handle());
            QCOMPARE(w->cmdSave_Click(), SaveResult::Unchanged);
            QVERIFY2(sqlite3_total_changes(db().handle()) == before, qPrintable(name));
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

private:
    ViewsFixture f;
    QStringList seen;
};

QTEST_MAIN(TestEditorSweep)
#include "tst_editorsweep.moc"
