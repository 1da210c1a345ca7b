// The main window's search box over the sample world (narrowing on top of the category and filters,
// case folding, keys) and the shopping list's entries in the main window (open, add the selection,
// ticks going both ways).
#include "app/frmmain.h"
#include "core/childwindows.h"
#include "core/programfolder.h"
#include "core/scriptedprompt.h"
#include "core/settings.h"
#include "data/database.h"
#include "data/recordset.h"
#include "data/sampledata.h"
#include "data/schema.h"
#include "lists/listmodel.h"
#include "planner/frmshoppinglist.h"
#include "planner/shoppingmodels.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>

class TestMainSearch : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() {
        QVERIFY(m_dir.isValid());
        for (auto format : {QSettings::NativeFormat, QSettings::IniFormat})
            QSettings::setPath(format, QSettings::UserScope, m_dir.filePath("settings"));
        setProgramFolder(m_dir.path());
        QString error;
        QVERIFY2(CreateDatabase(databasePath(), &error) && FillSampleData(databasePath(), &error),
                 qPrintable(error));
        db().open("Provider=VOSK.SQLite;Data Source=" + databasePath() + ";");
        db().execute("INSERT INTO COMPONENTS (COMPONENT_NAME, LVL) VALUES ('Zz \u00dcberdruck Ventil', 3)");
    }
    void init() {
        DeleteAllSettings();
        m_prompt.clear();
        w = std::make_unique<frmMain>();
    }
    void cleanup() {
        w.reset();
        CloseChildWindows();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    void cleanupTestCase() { db().close(); }

    void theBoxNarrowsOnTopOfTheFilters_data() {
        QTest::addColumn<QString>("category");
        QTest::addColumn<QString>("level");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("sql"); // the rows that must show
        QTest::newRow("components") << "Components"
                                    << "All"
                                    << "LOGIC"
                                    << "SELECT COUNT(*) FROM COMPONENTS WHERE COMPONENT_NAME LIKE '%logic%'";
        QTest::newRow("with a level")
            << "Equipment"
            << "2"
            << "mk i"
            << "SELECT COUNT(*) FROM EQUIPMENTS WHERE LVL = 2 AND EQUIPMENT_NAME LIKE '%mk i%'";
        QTest::newRow("non-ASCII") << "Components"
                                   << "All"
                                   << "\u00fcBERDRUCK"
                                   << "SELECT 1";
        QTest::newRow("a quote")
            << "Raw Materials"
            << "All"
            << "r's g"
            << "SELECT COUNT(*) FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME LIKE '%r''s g%'";
    }
    void theBoxNarrowsOnTopOfTheFilters() {
        QFETCH(QString, category);
        QFETCH(QString, level);
        QFETCH(QString, typed);
        QFETCH(QString, sql);
        choose(w->cmbData, category);
        choose(w->cmbLevel, level);
        const int every = w->model()->rowCount();
        // Typed key by key where the test keyboard has the keys, so that every step narrows.
        bool ascii = true;
        for (const QChar c : typed)
            ascii = ascii && c.unicode() < 0x80;
        if (ascii)
            QTest::keyClicks(w->txtSearch, typed);
        else
            w->txtSearch->insert(typed);
        const int expected = scalar(sql).toInt();
        QVERIFY(expected > 0);
        QCOMPARE(w->model()->rowCount(), expected);
        for (int r = 0; r < w->model()->rowCount(); ++r)
            QVERIFY2(w->model()->name(r).toCaseFolded().contains(typed.toCaseFolded()),
                     qPrintable(w->model()->name(r)));
        QCOMPARE(w->panelText("ItemCount"), "Items: " + QString::number(expected));
        // A refresh keeps the box's narrowing; Escape shows every row again.
        w->RefreshGrid();
        QCOMPARE(w->model()->rowCount(), expected);
        QTest::keyClick(w->txtSearch, Qt::Key_Escape);
        QVERIFY(w->txtSearch->text().isEmpty());
        QCOMPARE(w->model()->rowCount(), every);
        QCOMPARE(w->panelText("ItemCount"), "Items: " + QString::number(every));
    }

    void keysAndCategories() {
        choose(w->cmbData, "Components");
        w->show();
        QVERIFY(QTest::qWaitForWindowExposed(w.get()));
        w->txtSearch->setFocus();
        QTest::keyClicks(w->txtSearch, "basic");
        QTest::keyClick(w->txtSearch, Qt::Key_Down);
        QVERIFY(w->lstItems->hasFocus());
        QVERIFY(w->model()->name(w->lstItems->currentIndex().row()).startsWith("Basic"));
        QCOMPARE(w->selectedName(), w->model()->name(w->lstItems->currentIndex().row()));
        // Another category keeps the text and narrows its own rows.
        choose(w->cmbData, "Items");
        QCOMPARE(w->txtSearch->text(), QStringLiteral("basic"));
        QCOMPARE(w->model()->rowCount(), 0);
        QCOMPARE(w->panelText("ItemCount"), QStringLiteral("Items: 0"));
    }

    void theShoppingListFromTheMainWindow() {
        QAction* open = w->menuEntry("mnuViewShoppingList");
        QAction* add = w->menuEntry("mnuPopupAddToList");
        QVERIFY(open && add && w->menuEntry("mnuViewAddToList"));
        choose(w->cmbData, "Stations");
        w->lstItems->setCurrentIndex(w->model()->index(0, 0));
        w->mnuPopup->aboutToShow();
        QVERIFY(open->isEnabled() && !add->isEnabled());
        choose(w->cmbData, "Components");
        QTest::keyClicks(w->txtSearch, "Basic Logic Board");
        w->lstItems->setCurrentIndex(w->model()->index(0, 0));
        w->mnuPopup->aboutToShow();
        QVERIFY(add->isEnabled());
        add->trigger();
        frmShoppingList* list = OpenShoppingList();
        QVERIFY(list);
        QCOMPARE(list->session().targets().size(), 1);
        QCOMPARE(list->session().targets()[0].ref.name, QStringLiteral("Basic Logic Board"));

        // A tick in the shopping list shows in the main list, and the other way round.
        db().execute("UPDATE COMPONENTS SET CHECK = FALSE WHERE COMPONENT_NAME = 'Basic Logic Board'");
        w->RefreshGrid();
        list->refreshList();
        auto* m = static_cast<planner::ShoppingListModel*>(list->lstShopping->model());
        const QModelIndex board = m->indexOf({bom::Kind::Component, "Basic Logic Board"});
        QVERIFY(m->setData(board, Qt::Checked, Qt::CheckStateRole));
        QVERIFY(w->model()->isChecked(0));
        QVERIFY(w->model()->setData(w->model()->index(0, 0), Qt::Unchecked, Qt::CheckStateRole));
        QCOMPARE(scalar("SELECT CHECK FROM COMPONENTS WHERE COMPONENT_NAME = 'Basic Logic Board'").toBool(),
                 false);
        int ticked = -1;
        for (const planner::ShoppingLine& l : list->session().list().lines)
            if (l.ref.name == "Basic Logic Board")
                ticked = l.checked;
        QCOMPARE(ticked, 0);
        QCOMPARE(m_prompt.count(), 0);
    }

private:
    static void choose(QComboBox* box, const QString& text) {
        QVERIFY2(box->findText(text) >= 0, qPrintable(box->objectName() + " has no " + text));
        box->setCurrentIndex(box->findText(text));
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

QTEST_MAIN(TestMainSearch)
#include "tst_mainsearch.moc"
