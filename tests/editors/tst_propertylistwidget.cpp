// The property list on screen: rows under their categories, the editor that opens for each kind of
// row, a refused value explained and not taken, Delete clearing a value, changed values in bold, the
// help pane, and price words shown for the reserved numbers.
#include "core/scriptedprompt.h"
#include "editors/propertylistwidget.h"
#include "editortests.h"

#include <QApplication>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTreeWidget>

class TestPropertyListWidget : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        w = std::make_unique<PropertyListWidget>("prpList");
        PropertyList& p = w->list();
        p.addCategory("General", "General");
        PropertyRow& level = p.addRow("General", "LVL", "Level", PropertyEditor::Whole);
        level.ranged = true;
        level.minimum = 1;
        level.maximum = 60;
        level.help = "The level.";
        p.addRow("General", "TYPE", "Type", PropertyEditor::Choice).choices = {"Beam", "Missile"};
        p.addRow("General", "UNIQUE_FLAG", "Unique", PropertyEditor::YesNo);
        p.addRow("General", "LAST_UPDATED", "Last Updated", PropertyEditor::Date);
        p.addCategory("Prices", "Prices");
        p.addRow("Prices", "PRICE", "Price", PropertyEditor::Whole).price = PriceWords::Price;
        p.addRow("Prices", "COST_TO_MANUFACTURE", "Cost", PropertyEditor::Whole).price = PriceWords::Cost;
        p.addRow("Prices", "QUALITY", "Quality", PropertyEditor::Whole).readOnly = true;
        for (const char* kv :
             {"LVL=12", "TYPE=Beam", "UNIQUE_FLAG=", "PRICE=-1", "COST_TO_MANUFACTURE=-5", "QUALITY=90"})
            p.load(QString(kv).section('=', 0, 0), QString(kv).section('=', 1));
        w->rebuild();
        w->resize(360, 400);
        w->show();
        QVERIFY(QTest::qWaitForWindowExposed(w.get()));
        m_prompt.clear();
    }
    void cleanup() { w.reset(); }

    void rowsSitUnderTheirCategories() {
        QTreeWidget* t = w->tree();
        QCOMPARE(t->topLevelItemCount(), 2);
        QCOMPARE(t->topLevelItem(0)->text(0), QString("General"));
        QCOMPARE(t->topLevelItem(0)->childCount(), 4);
        QCOMPARE(t->topLevelItem(1)->child(0)->text(0), QString("Price"));
        QVERIFY(t->topLevelItem(1)->isExpanded());
        QCOMPARE(w->shownValue("PRICE"), QString("Loot Only"));
        QCOMPARE(w->shownValue("COST_TO_MANUFACTURE"), QString("Not Manufacturable"));
        t->setCurrentItem(w->itemFor("LVL"));
        QVERIFY(w->helpPane()->text().contains("The level."));
    }

    // Started on the caption, the edit goes to the value; a read-only row opens nothing.
    void eachKindOfRowOpensItsEditor() {
        QTreeWidget* t = w->tree();
        for (const QString kind : {"LVL=QLineEdit", "TYPE=QComboBox", "UNIQUE_FLAG=QComboBox",
                                   "LAST_UPDATED=QDateTimeEdit", "QUALITY="}) {
            t->setCurrentItem(w->itemFor(kind.section('=', 0, 0)), 0);
            QTest::keyClick(t, Qt::Key_F2);
            QWidget* open = openEditorIn<QWidget>(t);
            QCOMPARE(kind.section('=', 0, 0) + "=" + (open ? open->metaObject()->className() : ""), kind);
            QTest::keyClick(open ? open : t, Qt::Key_Escape);
        }
    }

    void typedValuesAreCheckedAndChangesShowBold() {
        QTreeWidget* t = w->tree();
        t->setCurrentItem(w->itemFor("LVL"), 1);
        QTest::keyClick(t, Qt::Key_F2);
        auto* line = openEditorIn<QLineEdit>(t);
        QVERIFY(line);
        line->selectAll();
        QTest::keyClicks(line, "61");
        QTest::keyClick(line, Qt::Key_Return);
        QTRY_COMPARE(m_prompt.count(), 1);
        QCOMPARE(m_prompt.last().text, QString("Level must be between 1 and 60."));
        QCOMPARE(w->list().value("LVL"), QString("12"));
        QVERIFY(!w->itemFor("LVL")->font(1).bold());
        QVERIFY(w->editValue("LVL", "20"));
        QVERIFY(w->itemFor("LVL")->font(1).bold());
        QVERIFY(w->editValue("TYPE", "missile"));
        QCOMPARE(w->shownValue("TYPE"), QString("Missile"));
    }

    void deleteClearsAValue() {
        QTreeWidget* t = w->tree();
        t->setCurrentItem(w->itemFor("PRICE"));
        QTest::keyClick(t, Qt::Key_Delete);
        QCOMPARE(w->list().value("PRICE"), QString());
        QVERIFY(w->list().row("PRICE")->changed());
        // A read-only row keeps its value.
        t->setCurrentItem(w->itemFor("QUALITY"));
        QTest::keyClick(t, Qt::Key_Delete);
        QCOMPARE(w->list().value("QUALITY"), QString("90"));
        QCOMPARE(m_prompt.count(), 0);
    }

private:
    std::unique_ptr<PropertyListWidget> w;
    ScriptedPrompt m_prompt;
};

QTEST_MAIN(TestPropertyListWidget)
#include "tst_propertylistwidget.moc"
