#include "listfixture.h"

#include "core/progress.h"
#include "core/vberror.h"
#include "data/recordset.h"

#include <QFont>
#include <QSignalSpy>
#include <QTest>

#include <array>

class TestListModel : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cellTexts_data() {
        QTest::addColumn<QString>("column"); // declaration of the value column
        QTest::addColumn<QString>("literal");
        QTest::addColumn<QString>("shown");
        // The engine keeps whatever is written: a number column may hold text between numbers. Price
        // columns show the words the record views show for the coded prices.
        const QList<std::array<const char*, 3>> rows{
            {"VAL INTEGER", "1234567", "1,234,567"},
            {"VAL INTEGER", "-9223372036854775808", "-9,223,372,036,854,775,808"},
            {"VAL DOUBLE", "3.14159", "3.14"},
            {"VAL DOUBLE", "-0.001", "0"},
            {"VAL DOUBLE", "1e16", "1E+16"},
            {"VAL DOUBLE", "0.125", "0.12"},                        // ties to even
            {"VAL DOUBLE", "12345678901234.5", "12345678901234.5"}, // fractions are not grouped
            {"VAL CURRENCY", "19.999", "20"},
            {"MANEUVERABILITY INTEGER", "-1", "N/A"},
            {"VAL INTEGER", "-1", "-1"},
            {"TYPE VARCHAR(50)", "''", "Unknown"},
            {"VAL VARCHAR(50)", "''", ""},
            {"VAL INTEGER", "NULL", ""},
            {"VAL VARCHAR(50)", "'Übergröße Ω'", "Übergröße Ω"},
            {"VAL BOOLEAN", "1", "True"},
            {"VAL DATETIME", "'2024-03-15 10:20:30'", "2024-03-15 10:20:30"},
            {"VAL VARCHAR(50)", "'1234567'", "1234567"},
            {"VAL INTEGER", "'abc'", "abc"},
            {"VAL INTEGER", "2.75", "2.75"},
            {"PRICE INTEGER", "-2", "Mission Reward"},
            {"PRICE INTEGER", "-1", "Loot Only"},
            {"PURCHASE_PRICE INTEGER", "0", "Unknown"},
            {"PRICE INTEGER", "-3", "-3"},
            {"PRICE DOUBLE", "-1.2", "Loot Only"},
            {"MANUFACTURING_FEE DOUBLE", "-0.25", "Not Manufacturable"},
            {"COST_TO_MANUFACTURE INTEGER", "0", "Unknown"},
            {"MANUFACTURING_FEE INTEGER", "-1", "Not Manufacturable"},
            {"PRICE VARCHAR(50)", "'-1'", "-1"}, // a text column is no price column
            {"PRICE INTEGER", "NULL", ""}};
        for (const auto& [column, literal, shown] : rows)
            QTest::addRow("%s %s", column, literal) << column << literal << QString::fromUtf8(shown);
    }

    void cellTexts() {
        QFETCH(QString, column);
        QFETCH(QString, literal);
        QFETCH(QString, shown);
        LOAD_LIST(m, QStringLiteral("SELECT * FROM T"), valueTable(column, {literal}));
        QCOMPARE(rowTexts(m, 1), QStringList{"r0=" + shown});
        QCOMPARE(m.data(m.index(0, 1)).toString(), shown);
    }

    void flagColumnsGiveTicksAndColours() {
        LOAD_LIST(
            m, QStringLiteral("SELECT * FROM E"),
            "CREATE TABLE E (EQUIPMENT_NAME VARCHAR(50), LVL INTEGER, \"CHECK\" BOOLEAN, PERSONAL_DB BOOLEAN, "
            "UPDATED BOOLEAN, SUBMITTED BOOLEAN, UNIQUE_FLAG BOOLEAN, PIC_ID INTEGER)",
            "INSERT INTO E VALUES ('plain', 1, 0, 0, 0, 1, 1, 7), ('ticked', 2, 1, 0, 0, 0, 0, 7), "
            "('updated', 3, 0, 0, 1, 0, 0, 7), ('personal', 4, 0, 1, 0, 0, 0, 7), "
            "('both', 5, 1, 1, 1, 0, 0, 7), ('nulls', 6, NULL, NULL, NULL, NULL, NULL, NULL)");
        // Without colours from the settings file the view's own colour stays.
        QVERIFY(!m.data(m.index(4, 0), Qt::ForegroundRole).isValid());
        m_db.load(m, QStringLiteral("SELECT * FROM E"), ListColors{QColor(Qt::red), QColor(Qt::blue)});
        QCOMPARE(m.columnCount(), 2); // the six flag columns are never shown
        QCOMPARE(m.headerData(1, Qt::Horizontal).toString(), QStringLiteral("LVL"));
        const QColor none, red(Qt::red), blue(Qt::blue); // personal wins over updated
        const QList<std::pair<bool, QColor>> rows{{false, none}, {true, none}, {false, red},
                                                  {false, blue}, {true, blue}, {false, none}};
        for (int r = 0; r < 6; ++r) {
            QCOMPARE(m.data(m.index(r, 0), Qt::CheckStateRole).toInt(),
                     int(rows[r].first ? Qt::Checked : Qt::Unchecked));
            QCOMPARE(m.data(m.index(r, 1), Qt::ForegroundRole).value<QColor>(), rows[r].second);
            QVERIFY(!m.data(m.index(r, 1), Qt::CheckStateRole).isValid() &&
                    !(m.flags(m.index(r, 1)) & Qt::ItemIsUserCheckable));
        }
    }

    void columnTags() {
        LOAD_LIST(m, QStringLiteral("SELECT *, (A / I) AS Q FROM C"),
                  "CREATE TABLE C (NAME VARCHAR(50), A INTEGER, B SMALLINT, C DOUBLE, D FLOAT, E CURRENCY, "
                  "F DATETIME, G TEXT, H BOOLEAN, I INTEGER)",
                  "INSERT INTO C VALUES ('n', 1, 2, 3, 4, 5, '2024-01-01', 'g', 1, 0)",
                  "INSERT INTO C VALUES ('m', 10, 2, 3, 4, 5, '2024-01-01', 'g', 1, 3)");
        const QString n = ListModel::NumberTag;
        const QStringList expected{"", n, n, n, n, n, "DATE", "", "", n, n};
        QCOMPARE(m.columnCount(), expected.size());
        for (int c = 0; c < m.columnCount(); ++c)
            QCOMPARE(m.columnTag(c), expected[c]);
        // A computed column whose first value is NULL (division by zero) is still numeric.
        QCOMPARE(column(m, 10), (QStringList{"", "3.33"}));
        // Figures line up on the right, in the cells and the headers; texts, dates and Yes/No on the left.
        for (int c = 0; c < m.columnCount(); ++c) {
            const bool right = expected[c] == n;
            for (const QVariant& v : {m.data(m.index(0, c), Qt::TextAlignmentRole),
                                      m.headerData(c, Qt::Horizontal, Qt::TextAlignmentRole)})
                QVERIFY2(bool(v.value<Qt::Alignment>() & Qt::AlignRight) == right,
                         qPrintable(m.columnName(c)));
        }
    }

    void tickingEmitsAndSetCheckedDoesNot() {
        LOAD_LIST(m, QStringLiteral("SELECT * FROM T"), valueTable("VAL INTEGER", {"1", "2", "3"}));
        QSignalSpy toggled(&m, &ListModel::checkToggled);
        QVERIFY(m.setData(m.index(1, 0), Qt::Checked, Qt::CheckStateRole) && m.isChecked(1));
        m.setChecked(1, false); // how the window undoes a failed write: no second toggle
        QVERIFY(!m.isChecked(1));
        // Only the first column carries the box, and only the check role is editable.
        QVERIFY(!m.setData(m.index(1, 1), Qt::Checked, Qt::CheckStateRole));
        QVERIFY(!m.setData(m.index(1, 0), QStringLiteral("x"), Qt::EditRole));
        QCOMPARE(toggled, (QList<QVariantList>{{1, QStringLiteral("r1"), true}}));
        // The ticked record is the one the user changed last, wherever a sort puts it.
        QCOMPARE(m.changedRow(), 1);
        m.setSort(1, ListModel::Descending);
        QCOMPARE(m.name(m.changedRow()), QStringLiteral("r1"));
        m.setChecked(0, true);
        QCOMPARE(m.name(m.changedRow()), QStringLiteral("r1"));
        m_db.load(m, QStringLiteral("SELECT * FROM T"));
        QCOMPARE(m.changedRow(), -1);
    }

    void boldMarksFollowTheRecords() {
        LOAD_LIST(m, QStringLiteral("SELECT * FROM T"), valueTable("VAL INTEGER", {"30", "10", "20"}));
        m.setBold(0, 1); // r0's value
        m.setRowBold(2); // r2 whole row
        m.setSort(1, ListModel::Ascending);
        QCOMPARE(rowTexts(m, 1), (QStringList{"r1=10", "r2=20", "r0=30"}));
        QVERIFY(m.data(m.index(2, 1), Qt::FontRole).value<QFont>().bold() && !m.isBold(2, 0));
        QVERIFY(m.isBold(1, 0) && m.isBold(1, 1) && !m.isCellBold(1, 1));
        QVERIFY(!m.data(m.index(0, 1), Qt::FontRole).isValid());
        m.clearBold();
        QVERIFY(!m.isBold(1, 0) && !m.isBold(2, 1));
    }

    void manyRowsReadBackExactly() {
        // Enough rows to cross the storage chunks and to make the table of equal texts give up.
        const int n = 70000;
        LOAD_LIST(m, QStringLiteral("SELECT * FROM B"),
                  "CREATE TABLE B (NAME VARCHAR(50), TYPE VARCHAR(20), LVL INTEGER, COMMENTS TEXT)",
                  "WITH RECURSIVE k(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM k WHERE i < 69999) "
                  "INSERT INTO B SELECT 'Item ' || i, CASE i % 3 WHEN 0 THEN 'Beam' WHEN 1 THEN '' "
                  "ELSE 'Shield' END, i * 7, CASE WHEN i % 5 = 0 THEN NULL ELSE "
                  "printf('comment number %d with some words', i) END FROM k");
        QCOMPARE(m.rowCount(), n);
        for (int i = 0; i < n; i = i + 997 < n ? i + 997 : i + 1) { // across the chunks, then the last rows
            QCOMPARE(QStringList({m.name(i), m.text(i, 1), m.text(i, 2), m.text(i, 3)}),
                     QStringList(
                         {QStringLiteral("Item %1").arg(i), QStringList({"Beam", "Unknown", "Shield"})[i % 3],
                          QLocale(QLocale::English).toString(qint64(i) * 7),
                          i % 5 ? QStringLiteral("comment number %1 with some words").arg(i) : QString()}));
        }
        QVERIFY(m.memoryUsed() < qint64(n) * 4 * 40);
    }

    void failedReadKeepsTheRows() {
        LOAD_LIST(m, QStringLiteral("SELECT * FROM T"), valueTable("VAL INTEGER", {"1", "2"}));
        QVERIFY_THROWS_EXCEPTION(VbError, m_db.load(m, QStringLiteral("SELECT * FROM NO_SUCH_TABLE")));
        // The statement failed before the list was touched: the old rows stay as they were.
        QCOMPARE(rowTexts(m, 1), (QStringList{"r0=1", "r1=2"}));
        m.clear();
        QVERIFY(m.rowCount() == 0 && m.columnCount() == 0);
    }

    // A long load tells how far it has got, in steps of 4096 rows, without changing what is loaded.
    void loadReportsRowsRead() {
        struct Rows : SilentProgress {
            QList<qint64> seen;
            void setValue(qint64 done) override { seen << done; }
        } progress;
        ListDb db({"CREATE TABLE T (NAME VARCHAR(50), VAL INTEGER)",
                   "WITH RECURSIVE c(x) AS (SELECT 0 UNION ALL SELECT x + 1 FROM c WHERE x < 9999) "
                   "INSERT INTO T SELECT 'r' || x, x FROM c"});
        QVERIFY2(db.ok(), qPrintable(db.error()));
        ListModel m;
        Recordset rs;
        rs.open("SELECT * FROM T");
        m.load(rs, ListColors(), &progress);
        QCOMPARE(m.rowCount(), 10000);
        QCOMPARE(progress.seen, (QList<qint64>{4096, 8192}));
    }

    void vbColours() {
        QCOMPARE(colorFromVbColorText(QStringLiteral("255")), QColor(255, 0, 0));
        QCOMPARE(colorFromVbColorText(QStringLiteral("&H80&")), QColor(128, 0, 0));
        QCOMPARE(colorFromVbColorText(QStringLiteral("red")), QColor());
        QCOMPARE(colorFromVbColorText(QStringLiteral("-2147483640")), QColor()); // a system colour
    }
};

QTEST_GUILESS_MAIN(TestListModel)
#include "tst_listmodel.moc"
