// The property list without its widget: editors and limits from the column kinds, the checks of a
// typed value, the changed flag, help texts and writing the changed rows (a cleared value as NULL).
#include "core/inifile.h"
#include "core/programfolder.h"
#include "data/recordset.h"
#include "editors/propertylist.h"
#include "viewsfixture.h"

#include <QTest>

namespace {
const QString Beam = "SELECT * FROM EQUIPMENTS INNER JOIN WEAPON_STATS ON EQUIPMENTS.EQUIPMENT_NAME = "
                     "WEAPON_STATS.EQUIPMENT_NAME WHERE EQUIPMENTS.EQUIPMENT_NAME = '";
} // namespace

class TestPropertyList : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString e;
        QVERIFY2(f.setUp(true, &e), qPrintable(e));
        m_name = f.scalar("SELECT EQUIPMENT_NAME FROM WEAPON_STATS ORDER BY EQUIPMENT_NAME").toString();
    }
    void cleanup() { f.tearDown(); }

    void fieldsTakeTheirEditorFromTheColumn_data() {
        QTest::addColumn<QString>("field");
        QTest::addColumn<int>("editor");
        QTest::addColumn<QString>("good");
        QTest::addColumn<QString>("bad");
        const auto row = [](const char* tag, const QString& field, PropertyEditor editor, const QString& good,
                            const QString& bad) {
            QTest::newRow(tag) << field << int(editor) << good << bad;
        };
        row("32-bit whole", "LVL", PropertyEditor::Whole, "-2147483648", "2147483648");
        row("16-bit whole", "QUALITY", PropertyEditor::Whole, "32767", "32768");
        row("whole, not a number", "PRICE", PropertyEditor::Whole, "+12", "12.5");
        row("double", "DELAY", PropertyEditor::Decimal, "-0.25", "fast");
        row("yes/no", "UNIQUE_FLAG", PropertyEditor::YesNo, "true", "maybe");
        row("date", "LAST_UPDATED", PropertyEditor::Date, "2026-02-28", "2026-02-30");
        row("text of 100", "MANUFACTURER", PropertyEditor::Text, QString(100, 'x'), QString(101, 'x'));
        row("memo", "COMMENTS", PropertyEditor::Text, QString(5000, 'x'), "");
    }
    void fieldsTakeTheirEditorFromTheColumn() {
        QFETCH(QString, field);
        QFETCH(int, editor);
        QFETCH(QString, good);
        QFETCH(QString, bad);
        Recordset rs;
        rs.open(Beam + m_name + "'");
        PropertyList p;
        p.addCategory("General", "General");
        p.addField("General", rs, field);
        const int i = p.indexOf(field);
        QCOMPARE(int(p.at(i).editor), editor);
        QCOMPARE(p.checkValue(i, good), QString());
        QCOMPARE(p.checkValue(i, ""), QString()); // every value may be cleared
        if (!bad.isEmpty())
            QVERIFY(!p.checkValue(i, bad).isEmpty());
        QVERIFY(!p.at(i).changed());
    }

    void editsSetTheChangedFlagAndKeepTheChoicesSpelling() {
        Recordset rs;
        rs.open(Beam + m_name + "'");
        PropertyList p;
        p.addCategory("General", "General");
        p.addField("General", rs, "LVL");
        p.addField("General", rs, "UNIQUE_FLAG");
        p.addField("General", rs, "LAST_UPDATED");
        PropertyRow& type = p.addField("General", rs, "TYPE");
        type.editor = PropertyEditor::Choice;
        type.choices = {"Beam", "Missile"};
        p.addCategory("Other", "Other");
        p.addField("Other", rs, "MANUFACTURER").readOnly = true;
        // Category rows stay first in their group; a row added later joins its own group.
        p.addField("General", rs, "PRICE");
        QCOMPARE(p.indexOf("PRICE"), 5);
        QVERIFY(p.at(0).isCategory() && !p.at(0).changed());

        QList<int> told;
        p.onChanged = [&told](int i) { told << i; };
        const QString level = p.value("LVL");
        QVERIFY(p.setValue("LVL", QString::number(level.toInt() + 1)));
        QVERIFY(p.row("LVL")->changed());
        QVERIFY(p.setValue("LVL", level)); // back to what was read: unchanged again
        QVERIFY(!p.row("LVL")->changed());
        QCOMPARE(told, QList<int>({1, 1}));
        QVERIFY(p.setValue("UNIQUE_FLAG", "TRUE"));
        QCOMPARE(p.value("UNIQUE_FLAG"), QString("Yes"));
        QVERIFY(p.setValue("TYPE", "missile"));
        QCOMPARE(p.value("TYPE"), QString("Missile"));
        QVERIFY(!p.setValue("TYPE", "Torpedo"));
        QVERIFY(p.setValue("LAST_UPDATED", "2026-03-01"));
        QCOMPARE(p.value("LAST_UPDATED"), QString("2026-03-01 00:00:00"));
        QVERIFY(!p.setValue("MANUFACTURER", "Anyone")); // read-only
        QCOMPARE(p.changedKeys(), QStringList({"UNIQUE_FLAG", "LAST_UPDATED", "TYPE"}));
        p.markSaved();
        QVERIFY(!p.anyChanged());
    }

    void priceWords_data() {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("shown");
        const auto row = [](const char* tag, PriceWords kind, const QString& value, const QString& shown) {
            QTest::newRow(tag) << int(kind) << value << shown;
        };
        row("loot only", PriceWords::Price, "-1", "Loot Only");
        row("not manufacturable", PriceWords::Cost, "-7", "Not Manufacturable");
        row("no price words", PriceWords::None, "-1", "-1");
        row("empty", PriceWords::Price, "", "");
    }
    void priceWords() {
        QFETCH(int, kind);
        QFETCH(QString, value);
        QFETCH(QString, shown);
        QCOMPARE(PriceDisplay(value, PriceWords(kind)), shown);
        // Every word the pop-up menu offers writes a number that reads back as that word.
        for (const auto& choice : PriceChoices(PriceWords(kind)))
            QCOMPARE(PriceDisplay(choice.second, PriceWords(kind)), choice.first);
    }

private:
    ViewsFixture f;
    QString m_name;
};

QTEST_GUILESS_MAIN(TestPropertyList)
#include "tst_propertylist.moc"
