#include "listfixture.h"

#include "core/vberror.h"

#include <QFont>
#include <QSignalSpy>
#include <QTest>

class TestListModel : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cellTexts_data();
    void cellTexts();
    void flagColumnsGiveTicksAndColours();
    void columnTags();
    void computedColumnIsNumeric();
    void tickingEmitsAndSetCheckedDoesNot();
    void boldMarks();
    void manyRowsReadBackExactly();
    void mixedValuesInOneColumn();
    void failedReadLeavesEmptyModel();
    void vbColours_data();
    void vbColours();
};

void TestListModel::cellTexts_data() {
    QTest::addColumn<QString>("column"); // the value column's name
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("literal");
    QTest::addColumn<QString>("shown");
    QTest::newRow("whole grouped") << "VAL" << "INTEGER" << "1234567" << "1,234,567";
    QTest::newRow("whole zero") << "VAL" << "INTEGER" << "0" << "0";
    QTest::newRow("whole negative") << "VAL" << "INTEGER" << "-1234" << "-1,234";
    QTest::newRow("small whole") << "VAL" << "SMALLINT" << "999" << "999";
    QTest::newRow("fraction rounded") << "VAL" << "DOUBLE" << "3.14159" << "3.14";
    QTest::newRow("fraction one decimal") << "VAL" << "DOUBLE" << "2.5" << "2.5";
    QTest::newRow("fraction whole value") << "VAL" << "DOUBLE" << "1500" << "1500";
    QTest::newRow("single") << "VAL" << "FLOAT" << "0.125" << "0.12";
    QTest::newRow("currency") << "VAL" << "CURRENCY" << "19.999" << "20";
    QTest::newRow("maneuverability -1") << "MANEUVERABILITY" << "INTEGER" << "-1" << "N/A";
    QTest::newRow("maneuverability 5") << "MANEUVERABILITY" << "INTEGER" << "5" << "5";
    QTest::newRow("ammo range -1 double") << "AMMO_RANGE" << "DOUBLE" << "-1" << "N/A";
    QTest::newRow("ammo range -2") << "AMMO_RANGE" << "INTEGER" << "-2" << "-2";
    QTest::newRow("other column -1") << "VAL" << "INTEGER" << "-1" << "-1";
    QTest::newRow("type empty") << "TYPE" << "VARCHAR(50)" << "''" << "Unknown";
    QTest::newRow("type null") << "TYPE" << "VARCHAR(50)" << "NULL" << "Unknown";
    QTest::newRow("type set") << "TYPE" << "VARCHAR(50)" << "'Beam'" << "Beam";
    QTest::newRow("subtype null") << "SUBTYPE" << "VARCHAR(50)" << "NULL" << "Unknown";
    QTest::newRow("text null") << "VAL" << "VARCHAR(50)" << "NULL" << "";
    QTest::newRow("text empty stays empty") << "VAL" << "VARCHAR(50)" << "''" << "";
    QTest::newRow("number null") << "VAL" << "INTEGER" << "NULL" << "";
    QTest::newRow("memo") << "VAL" << "TEXT" << "'a long comment'" << "a long comment";
    QTest::newRow("non-ascii") << "VAL" << "VARCHAR(50)" << "'Übergröße Ω'" << "Übergröße Ω";
    QTest::newRow("yes") << "VAL" << "BOOLEAN" << "1" << "True";
    QTest::newRow("no") << "VAL" << "BOOLEAN" << "0" << "False";
    QTest::newRow("date as stored") << "VAL" << "DATETIME" << "'2024-03-15 10:20:30'" << "2024-03-15 10:20:30";
    QTest::newRow("digits in a text column") << "VAL" << "VARCHAR(50)" << "'1234567'" << "1234567";
}

void TestListModel::cellTexts() {
    QFETCH(QString, column);
    QFETCH(QString, type);
    QFETCH(QString, literal);
    QFETCH(QString, shown);
    ListDb db({QStringLiteral("CREATE TABLE T (NAME VARCHAR(50), %1 %2)").arg(column, type),
               QStringLiteral("INSERT INTO T VALUES ('x', %1)").arg(literal)});
    QVERIFY2(db.ok(), qPrintable(db.error()));
    ListModel m;
    db.load(m, QStringLiteral("SELECT * FROM T"));
    QCOMPARE(m.rowCount(), 1);
    QCOMPARE(m.columnCount(), 2);
    QCOMPARE(m.text(0, 1), shown);
    QCOMPARE(m.data(m.index(0, 1)).toString(), shown);
    QCOMPARE(m.name(0), QStringLiteral("x"));
}

void TestListModel::flagColumnsGiveTicksAndColours() {
    ListDb db({"CREATE TABLE E (EQUIPMENT_NAME VARCHAR(50), LVL INTEGER, \"CHECK\" BOOLEAN, PERSONAL_DB BOOLEAN, "
               "UPDATED BOOLEAN, SUBMITTED BOOLEAN, UNIQUE_FLAG BOOLEAN, PIC_ID INTEGER)",
               "INSERT INTO E VALUES ('plain', 1, 0, 0, 0, 1, 1, 7)",
               "INSERT INTO E VALUES ('ticked', 2, 1, 0, 0, 0, 0, 7)",
               "INSERT INTO E VALUES ('updated', 3, 0, 0, 1, 0, 0, 7)",
               "INSERT INTO E VALUES ('personal', 4, 0, 1, 0, 0, 0, 7)",
               "INSERT INTO E VALUES ('both', 5, 1, 1, 1, 0, 0, 7)",
               "INSERT INTO E VALUES ('nulls', 6, NULL, NULL, NULL, NULL, NULL, NULL)"});
    QVERIFY2(db.ok(), qPrintable(db.error()));
    ListModel m;
    const ListColors colors{QColor(Qt::red), QColor(Qt::blue)};
    db.load(m, QStringLiteral("SELECT * FROM E"), colors);
    QCOMPARE(m.columnCount(), 2); // the six flag columns are never shown
    QCOMPARE(m.columnName(0), QStringLiteral("EQUIPMENT_NAME"));
    QCOMPARE(m.columnName(1), QStringLiteral("LVL"));
    QCOMPARE(m.headerData(1, Qt::Horizontal).toString(), QStringLiteral("LVL"));
    QCOMPARE(m.columnIndex(QStringLiteral("PIC_ID")), -1);
    const QList<bool> ticked{false, true, false, false, true, false};
    for (int r = 0; r < 6; ++r) {
        QCOMPARE(m.isChecked(r), ticked[r]);
        QCOMPARE(m.data(m.index(r, 0), Qt::CheckStateRole).toInt(), int(ticked[r] ? Qt::Checked : Qt::Unchecked));
        QVERIFY(!m.data(m.index(r, 1), Qt::CheckStateRole).isValid());
    }
    QVERIFY(!m.data(m.index(0, 0), Qt::ForegroundRole).isValid());
    QCOMPARE(m.data(m.index(2, 1), Qt::ForegroundRole).value<QColor>(), QColor(Qt::red));
    QCOMPARE(m.data(m.index(3, 0), Qt::ForegroundRole).value<QColor>(), QColor(Qt::blue));
    QCOMPARE(m.data(m.index(4, 0), Qt::ForegroundRole).value<QColor>(), QColor(Qt::blue)); // personal wins
    QVERIFY(m.isUpdated(4) && m.isPersonal(4) && !m.isUpdated(3));
    QVERIFY(!m.data(m.index(5, 0), Qt::ForegroundRole).isValid());
    QVERIFY(m.flags(m.index(0, 0)) & Qt::ItemIsUserCheckable);
    QVERIFY(!(m.flags(m.index(0, 1)) & Qt::ItemIsUserCheckable));

    // Without colours from the settings file the view's own colour stays.
    db.load(m, QStringLiteral("SELECT * FROM E"));
    QVERIFY(!m.data(m.index(4, 0), Qt::ForegroundRole).isValid());
}

void TestListModel::columnTags() {
    ListDb db({"CREATE TABLE C (NAME VARCHAR(50), A INTEGER, B SMALLINT, C DOUBLE, D FLOAT, E CURRENCY, "
               "F DATETIME, G TEXT, H BOOLEAN)",
               "INSERT INTO C VALUES ('n', 1, 2, 3, 4, 5, '2024-01-01', 'g', 1)"});
    QVERIFY2(db.ok(), qPrintable(db.error()));
    ListModel m;
    db.load(m, QStringLiteral("SELECT * FROM C"));
    const QStringList expected{"", "NUMBER", "NUMBER", "NUMBER", "NUMBER", "NUMBER", "DATE", "", ""};
    QCOMPARE(m.columnCount(), expected.size());
    for (int c = 0; c < m.columnCount(); ++c)
        QCOMPARE(m.columnTag(c), expected[c]);
    m.setColumnTag(1, QStringLiteral("DATE"));
    QCOMPARE(m.columnTag(1), QStringLiteral("DATE"));
    m.setHeaderText(1, QStringLiteral("Level"));
    QCOMPARE(m.headerData(1, Qt::Horizontal).toString(), QStringLiteral("Level"));
    QCOMPARE(m.columnName(1), QStringLiteral("A"));
}

void TestListModel::computedColumnIsNumeric() {
    ListDb db({"CREATE TABLE W (NAME VARCHAR(50), DAMAGE INTEGER, DELAY INTEGER)",
               "INSERT INTO W VALUES ('a', 10, 3)", "INSERT INTO W VALUES ('b', 9, 0)",
               "INSERT INTO W VALUES ('c', 10, 4)"});
    QVERIFY2(db.ok(), qPrintable(db.error()));
    ListModel m;
    db.load(m, QStringLiteral("SELECT NAME, (DAMAGE/DELAY) AS DPS FROM W"));
    QCOMPARE(m.columnTag(1), QStringLiteral("NUMBER"));
    QCOMPARE(m.text(0, 1), QStringLiteral("3.33"));
    QCOMPARE(m.text(1, 1), QString()); // division by zero gives NULL
    QCOMPARE(m.text(2, 1), QStringLiteral("2.5"));
}

void TestListModel::tickingEmitsAndSetCheckedDoesNot() {
    ListDb db(valueTable(QStringLiteral("INTEGER"), {"1", "2", "3"}));
    QVERIFY2(db.ok(), qPrintable(db.error()));
    ListModel m;
    db.load(m, QStringLiteral("SELECT * FROM T"));
    QSignalSpy toggled(&m, &ListModel::checkToggled);
    QSignalSpy changed(&m, &ListModel::dataChanged);
    QVERIFY(m.setData(m.index(1, 0), Qt::Checked, Qt::CheckStateRole));
    QCOMPARE(toggled.size(), 1);
    QCOMPARE(toggled[0][0].toInt(), 1);
    QCOMPARE(toggled[0][1].toString(), QStringLiteral("r1"));
    QCOMPARE(toggled[0][2].toBool(), true);
    QVERIFY(m.isChecked(1));
    // The window undoes a failed write without another toggle.
    m.setChecked(1, false);
    QCOMPARE(toggled.size(), 1);
    QVERIFY(!m.isChecked(1));
    QVERIFY(changed.size() >= 2);
    // Only the first column carries the box, and only the check role is editable.
    QVERIFY(!m.setData(m.index(1, 1), Qt::Checked, Qt::CheckStateRole));
    QVERIFY(!m.setData(m.index(1, 0), QStringLiteral("x"), Qt::EditRole));
    QCOMPARE(toggled.size(), 1);
}

void TestListModel::boldMarks() {
    ListDb db(valueTable(QStringLiteral("INTEGER"), {"30", "10", "20"}));
    QVERIFY2(db.ok(), qPrintable(db.error()));
    ListModel m;
    db.load(m, QStringLiteral("SELECT * FROM T"));
    m.setBold(0, 1);    // r0's value
    m.setRowBold(2);    // r2 whole row
    QVERIFY(m.isBold(0, 1) && !m.isBold(0, 0));
    QVERIFY(m.isBold(2, 0) && m.isBold(2, 1) && m.isRowBold(2) && !m.isCellBold(2, 1));
    QVERIFY(m.data(m.index(0, 1), Qt::FontRole).value<QFont>().bold());
    QVERIFY(!m.data(m.index(1, 1), Qt::FontRole).isValid());
    // The marks belong to the records, not to the positions.
    m.setSort(1, ListModel::Ascending);
    QCOMPARE(rowTexts(m, 1), (QStringList{"r1=10", "r2=20", "r0=30"}));
    QVERIFY(m.isBold(2, 1) && !m.isBold(2, 0));
    QVERIFY(m.isRowBold(1) && !m.isBold(0, 1));
    m.clearBold();
    for (int r = 0; r < 3; ++r)
        QVERIFY(!m.isBold(r, 0) && !m.isBold(r, 1));
}

void TestListModel::manyRowsReadBackExactly() {
    // Enough rows to cross the storage chunks and to make the table of equal texts give up.
    const int n = 70000;
    ListDb db({"CREATE TABLE B (NAME VARCHAR(50), TYPE VARCHAR(20), LVL INTEGER, COMMENTS TEXT)",
               QStringLiteral("WITH RECURSIVE k(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM k WHERE i < %1) "
                              "INSERT INTO B SELECT 'Item ' || i, CASE i %% 3 WHEN 0 THEN 'Beam' WHEN 1 THEN '' "
                              "ELSE 'Shield' END, i * 7, CASE WHEN i %% 5 = 0 THEN NULL ELSE "
                              "printf('comment number %%d with some words', i) END FROM k")
                   .arg(n - 1)
                   .replace(QLatin1String("%%"), QLatin1String("%"))});
    QVERIFY2(db.ok(), qPrintable(db.error()));
    ListModel m;
    db.load(m, QStringLiteral("SELECT * FROM B"));
    QCOMPARE(m.rowCount(), n);
    for (int i = 0; i < n; i += 997) {
        QCOMPARE(m.name(i), QStringLiteral("Item %1").arg(i));
        QCOMPARE(m.text(i, 1), QStringList({"Beam", "Unknown", "Shield"})[i % 3]);
        QCOMPARE(m.text(i, 2), QLocale(QLocale::English).toString(qint64(i) * 7));
        QCOMPARE(m.text(i, 3), i % 5 == 0 ? QString() : QStringLiteral("comment number %1 with some words").arg(i));
    }
    QCOMPARE(m.name(n - 1), QStringLiteral("Item %1").arg(n - 1));
    QVERIFY(m.memoryUsed() < qint64(n) * 4 * 40);
}

void TestListModel::mixedValuesInOneColumn() {
    // The engine keeps whatever is written: a number column may hold text and NULL between numbers.
    ListDb db(valueTable(QStringLiteral("INTEGER"), {"NULL", "1500", "'abc'", "2.75", "NULL", "-3"}));
    QVERIFY2(db.ok(), qPrintable(db.error()));
    ListModel m;
    db.load(m, QStringLiteral("SELECT * FROM T"));
    QCOMPARE(rowTexts(m, 1), (QStringList{"r0=", "r1=1,500", "r2=abc", "r3=2.75", "r4=", "r5=-3"}));
}

void TestListModel::failedReadLeavesEmptyModel() {
    ListDb db(valueTable(QStringLiteral("INTEGER"), {"1", "2"}));
    QVERIFY2(db.ok(), qPrintable(db.error()));
    ListModel m;
    db.load(m, QStringLiteral("SELECT * FROM T"));
    QCOMPARE(m.rowCount(), 2);
    bool thrown = false;
    try {
        db.load(m, QStringLiteral("SELECT * FROM NO_SUCH_TABLE"));
    } catch (const VbError&) {
        thrown = true;
    }
    QVERIFY(thrown);
    // The statement failed before the list was touched: the old rows stay as they were.
    QCOMPARE(m.rowCount(), 2);
    m.clear();
    QCOMPARE(m.rowCount(), 0);
    QCOMPARE(m.columnCount(), 0);
}

void TestListModel::vbColours_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QColor>("color");
    QTest::newRow("red decimal") << "255" << QColor(255, 0, 0);
    QTest::newRow("blue decimal") << "16711680" << QColor(0, 0, 255);
    QTest::newRow("green hex") << "&H00FF00" << QColor(0, 255, 0);
    QTest::newRow("hex with trailing &") << "&H80&" << QColor(128, 0, 0);
    QTest::newRow("mixed") << "0x102030" << QColor(0x30, 0x20, 0x10);
    QTest::newRow("empty") << "" << QColor();
    QTest::newRow("words") << "red" << QColor();
    QTest::newRow("system colour") << "-2147483640" << QColor();
}

void TestListModel::vbColours() {
    QFETCH(QString, text);
    QFETCH(QColor, color);
    QCOMPARE(colorFromVbColorText(text), color);
}

QTEST_GUILESS_MAIN(TestListModel)
#include "tst_listmodel.moc"
