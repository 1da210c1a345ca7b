// The grid widget used from the keyboard: typing into the entry row, Enter in a drop-down, a typed value
// that is not in the list, Escape, Delete, "(None)", a before-edit hook that refuses, Tab out of the
// grid.
#include "core/scriptedprompt.h"
#include "editors/gridroutines.h"
#include "editors/ubgrid.h"
#include "editortests.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>

class TestUBGrid : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        m_window = std::make_unique<QWidget>();
        auto* col = new QVBoxLayout(m_window.get());
        m_before = new QLineEdit(m_window.get());
        g = new UBGrid("ubgMOBs", m_window.get());
        m_after = new QLineEdit(m_window.get());
        col->addWidget(m_before);
        col->addWidget(g);
        col->addWidget(m_after);
        fillGrid(g->grid(), {"Mob Name", "Amount"}, {{"Hive Queen", "2"}, {"Rock Mite", "5"}}, true);
        g->grid().setColNumeric(2, true);
        g->grid().addListItem(1, NoneEntry, NoneEntry);
        for (const char* mob : {"Hive Queen", "Rock Mite", "Void Wyrm"})
            g->grid().addListItem(1, mob, mob);
        m_window->resize(420, 300);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
        g->setFocus();
        m_prompt.clear();
    }
    void cleanup() { m_window.reset(); }

    void typingIntoTheEntryRowAddsARow() {
        g->setCurrentIndex(g->cellIndex(3, 2));
        QTest::keyClick(g, Qt::Key_7); // the key opens the editor and is its first character
        auto* line = openEditorIn<QLineEdit>(g);
        QVERIFY(line);
        QTest::keyClicks(line, "x5"); // a numeric cell takes no letters
        QTest::keyClick(line, Qt::Key_Return);
        QTRY_COMPARE(g->grid().text(3, 2), QString("75")); // the view commits once the key is handled
        QCOMPARE(g->grid().lastDataRow(), 3);
        QVERIFY(g->grid().isEntryRow(4));
        QCOMPARE(g->model()->headerData(3, Qt::Vertical).toString(), QString("*"));
    }

    void enterInADropDownAcceptsAndTypedValuesAreKept_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("stored");
        QTest::newRow("a value of the list, in another case") << "void wyrm"
                                                              << "Void Wyrm";
        QTest::newRow("a value not in the list") << "Ghost Moth"
                                                 << "Ghost Moth";
    }
    void enterInADropDownAcceptsAndTypedValuesAreKept() {
        QFETCH(QString, typed);
        QFETCH(QString, stored);
        g->setCurrentIndex(g->cellIndex(1, 1));
        QTest::keyClick(g, Qt::Key_F2);
        auto* box = openEditorIn<QComboBox>(g);
        QVERIFY(box && box->isEditable());
        QCOMPARE(box->currentText(), QString("Hive Queen"));
        QCOMPARE(box->itemText(0), NoneEntry);
        box->lineEdit()->clear();
        QTest::keyClicks(box->lineEdit(), typed);
        QTest::keyClick(box->lineEdit(), Qt::Key_Return);
        QTRY_COMPARE(g->grid().text(1, 1), stored);
        QVERIFY(!openEditorIn<QComboBox>(g));
    }

    void escapeCancelsAnEdit() {
        g->setCurrentIndex(g->cellIndex(2, 2));
        QTest::keyClick(g, Qt::Key_F2);
        auto* line = openEditorIn<QLineEdit>(g);
        QVERIFY(line);
        line->selectAll();
        QTest::keyClicks(line, "99");
        QTest::keyClick(line, Qt::Key_Escape);
        QCOMPARE(g->grid().text(2, 2), QString("5"));
    }

    void deleteAndNoneRemoveRows() {
        g->setCurrentIndex(g->cellIndex(1, 2));
        QTest::keyClick(g, Qt::Key_Delete);
        QCOMPARE(g->grid().lastDataRow(), 1);
        QCOMPARE(g->grid().text(1, 1), QString("Rock Mite"));
        // Delete on the entry row removes nothing.
        g->setCurrentIndex(g->cellIndex(2, 1));
        QTest::keyClick(g, Qt::Key_Delete);
        QCOMPARE(g->grid().lastDataRow(), 1);
        // "(None)" picked from the list removes the row at once.
        g->setCurrentIndex(g->cellIndex(1, 1));
        QTest::keyClick(g, Qt::Key_F2);
        auto* box = openEditorIn<QComboBox>(g);
        QVERIFY(box);
        box->setCurrentIndex(0);
        Q_EMIT box->activated(0);
        QCOMPARE(g->grid().lastDataRow(), 0);
        QApplication::processEvents();
        QVERIFY(!openEditorIn<QComboBox>(g));
    }

    void aRefusingHookOpensNoEditor() {
        int asked = 0;
        g->grid().beforeEdit = [&asked](GridModel&, int, int col, bool& cancel) {
            ++asked;
            cancel = col == 2;
        };
        g->setCurrentIndex(g->cellIndex(1, 2));
        QTest::keyClick(g, Qt::Key_F2);
        QVERIFY(!openEditorIn<QLineEdit>(g));
        QCOMPARE(asked, 1);
        // A plain click that only moves the cursor does not ask.
        QTest::mouseClick(g->viewport(), Qt::LeftButton, {}, g->visualRect(g->cellIndex(2, 1)).center());
        QCOMPARE(asked, 1);
        QTest::keyClick(g, Qt::Key_F2);
        QVERIFY(openEditorIn<QComboBox>(g));
        QCOMPARE(asked, 2);
    }

    void lockedGridsTakeNoEdits() {
        g->grid().setLocked(true);
        g->setCurrentIndex(g->cellIndex(1, 2));
        QTest::keyClick(g, Qt::Key_F2);
        QTest::keyClick(g, Qt::Key_Delete);
        QVERIFY(!openEditorIn<QLineEdit>(g));
        QCOMPARE(g->grid().lastDataRow(), 2);
    }

    void tabLeavesTheGrid() {
        QApplication::setActiveWindow(m_window.get());
        g->setFocus();
        g->setCurrentIndex(g->cellIndex(1, 1));
        QTest::keyClick(g, Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), m_after);
    }

private:
    std::unique_ptr<QWidget> m_window;
    UBGrid* g = nullptr;
    QLineEdit *m_before = nullptr, *m_after = nullptr;
    ScriptedPrompt m_prompt;
};

QTEST_MAIN(TestUBGrid)
#include "tst_ubgrid.moc"
