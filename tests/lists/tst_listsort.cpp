#include "listfixture.h"
#include "lists/listviewsort.h"
#include "lists/sortkeys.h"

#include <QApplication>
#include <QHeaderView>
#include <QTest>
#include <QTreeView>

class TestListSort : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void numbersAscending();
    void clicksToggleEvenAcrossColumns();
    void cellsKeepTheirTexts();
    void groupedAndFractionNumbers();
    void notApplicableSortsFirst();
    void hugeNumbersLoseTheirPlace();
    void datesInvalidFirst();
    void textWithoutCaseAndStable();
    void longCommonPrefixes();
    void restoredSortAppliesAndReloadKeepsIt();
    void selectionFollowsTheRecord();
    void headerClickSorts();
    void largeListMatchesTheKeyTexts_data();
    void largeListMatchesTheKeyTexts();
};

namespace {
QStringList names(const ListModel& m) {
    QStringList out;
    for (int r = 0; r < m.rowCount(); ++r)
        out << m.name(r);
    return out;
}
QStringList column(const ListModel& m, int col) {
    QStringList out;
    for (int r = 0; r < m.rowCount(); ++r)
        out << m.text(r, col);
    return out;
}
} // namespace

void TestListSort::numbersAscending() {
    ListDb db(valueTable(QStringLiteral("INTEGER"), {"10", "9", "-1", "-20", "'-'"}));
    QVERIFY2(db.ok(), qPrintable(db.error()));
    ListModel m;
    db.load(m, QStringLiteral("SELECT * FROM T"));
    QCOMPARE(m.columnTag(1), QStringLiteral("NUMBER"));
    m.setSort(1, ListModel::Ascending);
    QCOMPARE(column(m, 1), (QStringList{"-", "-20", "-1", "9", "10"}));
    m.setSort(1, ListModel::Descending);
    QCOMPARE(column(m, 1), (QStringList{"10", "9", "-1", "-20", "-"}));
}

void TestListSort::clicksToggleEvenAcrossColumns() {
    ListDb db({"CREATE TABLE T (NAME VARCHAR(50), A INTEGER, B INTEGER)", "INSERT INTO T VALUES ('x', 2, 1)",
               "INSERT INTO T VALUES ('y', 1, 3)", "INSERT INTO T VALUES ('z', 3, 2)"});
    QVERIFY2(db.ok(), qPrintable(db.error()));
    ListModel m;
    db.load(m, QStringLiteral("SELECT * FROM T"));
    QCOMPARE(m.sortKey(), -1);
    QVERIFY(!m.isSorted());
    // The list starts ascending, so the first click gives descending.
    m.sortByColumn(1);
    QCOMPARE(m.sortKey(), 1);
    QCOMPARE(m.sortOrder(), int(ListModel::Descending));
    QCOMPARE(names(m), (QStringList{"z", "x", "y"}));
    m.sortByColumn(1);
    QCOMPARE(m.sortOrder(), int(ListModel::Ascending));
    QCOMPARE(names(m), (QStringList{"y", "x", "z"}));
    // Another column: the order toggles again rather than starting afresh.
    m.sortByColumn(2);
    QCOMPARE(m.sortKey(), 2);
    QCOMPARE(m.sortOrder(), int(ListModel::Descending));
    QCOMPARE(names(m), (QStringList{"y", "z", "x"}));
    m.sortByColumn(0);
    QCOMPARE(m.sortOrder(), int(ListModel::Ascending));
    QCOMPARE(names(m), (QStringList{"x", "y", "z"}));
    m.sortByColumn(7); // no such column: nothing changes
    QCOMPARE(m.sortKey(), 0);
}

void TestListSort::cellsKeepTheirTexts() {
    ListDb db({"CREATE TABLE T (NAME VARCHAR(50), N INTEGER, D DATETIME, S VARCHAR(20))",
               "INSERT INTO T VALUES ('a', 1234, '2024-01-02', 'q')", "INSERT INTO T VALUES ('b', -5, 'soon', 'P')",
               "INSERT INTO T VALUES ('c', NULL, '1/2/2020', 'r')"});
    QVERIFY2(db.ok(), qPrintable(db.error()));
    ListModel m;
    db.load(m, QStringLiteral("SELECT * FROM T"));
    auto rows = [&] {
        QStringList out;
        for (int r = 0; r < m.rowCount(); ++r)
            out << m.name(r) + '|' + m.text(r, 1) + '|' + m.text(r, 2) + '|' + m.text(r, 3);
        out.sort();
        return out;
    };
    const QStringList before = rows();
    QCOMPARE(before, (QStringList{"a|1,234|2024-01-02|q", "b|-5|soon|P", "c||1/2/2020|r"}));
    for (int click = 0; click < 6; ++click) {
        m.sortByColumn(click % 4);
        QCOMPARE(rows(), before);
        QCOMPARE(m.columnTag(1), QStringLiteral("NUMBER"));
        QCOMPARE(m.columnTag(2), QStringLiteral("DATE"));
    }
}

void TestListSort::groupedAndFractionNumbers() {
    ListDb db(valueTable(QStringLiteral("DOUBLE"), {"1234.5", "999", "-0.004", "0.5", "-1000000", "12"}));
    QVERIFY2(db.ok(), qPrintable(db.error()));
    ListModel m;
    db.load(m, QStringLiteral("SELECT * FROM T"));
    m.setSort(1, ListModel::Ascending);
    // -0.004 is shown as 0 and sorts as the 0 it shows.
    QCOMPARE(column(m, 1), (QStringList{"-1000000", "0", "0.5", "12", "999", "1234.5"}));

    ListDb whole(valueTable(QStringLiteral("INTEGER"), {"1234567", "99999", "1000", "-1234", "0"}));
    QVERIFY2(whole.ok(), qPrintable(whole.error()));
    whole.load(m, QStringLiteral("SELECT * FROM T"));
    m.setSort(1, ListModel::Ascending);
    QCOMPARE(column(m, 1), (QStringList{"-1,234", "0", "1,000", "99,999", "1,234,567"}));
}

void TestListSort::notApplicableSortsFirst() {
    ListDb db({"CREATE TABLE A (NAME VARCHAR(50), MANEUVERABILITY INTEGER)", "INSERT INTO A VALUES ('a', 4)",
               "INSERT INTO A VALUES ('b', -1)", "INSERT INTO A VALUES ('c', -2)", "INSERT INTO A VALUES ('d', NULL)"});
    QVERIFY2(db.ok(), qPrintable(db.error()));
    ListModel m;
    db.load(m, QStringLiteral("SELECT * FROM A"));
    m.setSort(1, ListModel::Ascending);
    QCOMPARE(column(m, 1), (QStringList{"N/A", "", "-2", "4"}));
}

void TestListSort::hugeNumbersLoseTheirPlace() {
    // More than 30 integer digits overflow the fixed-width key: 1E+31 sorts by its first 30 digits.
    ListDb db(valueTable(QStringLiteral("DOUBLE"), {"1e31", "2e30", "5", "'x'", "-7"}));
    QVERIFY2(db.ok(), qPrintable(db.error()));
    ListModel m;
    db.load(m, QStringLiteral("SELECT * FROM T"));
    m.setSort(1, ListModel::Ascending);
    QCOMPARE(names(m), (QStringList{"r3", "r4", "r2", "r0", "r1"}));
}

void TestListSort::datesInvalidFirst() {
    ListDb db(valueTable(QStringLiteral("DATETIME"),
                         {"'2024-03-15 10:00:00'", "'someday'", "'2023-12-31 23:59:59'", "NULL",
                          "'3/15/2024 9:30:00 AM'", "'2024-03-15 10:00:00'"}));
    QVERIFY2(db.ok(), qPrintable(db.error()));
    ListModel m;
    db.load(m, QStringLiteral("SELECT * FROM T"));
    m.setSort(1, ListModel::Ascending);
    QCOMPARE(names(m), (QStringList{"r1", "r3", "r2", "r4", "r0", "r5"}));
    m.setSort(1, ListModel::Descending); // equal dates keep their order in both directions
    QCOMPARE(names(m), (QStringList{"r0", "r5", "r4", "r2", "r1", "r3"}));
}

void TestListSort::textWithoutCaseAndStable() {
    ListDb db(valueTable(QStringLiteral("VARCHAR(50)"),
                         {"'banana'", "'Apple'", "'apple'", "'Cherry'", "'APPLE'", "NULL", "'Äpfel'", "'b'"}));
    QVERIFY2(db.ok(), qPrintable(db.error()));
    ListModel m;
    db.load(m, QStringLiteral("SELECT * FROM T"));
    m.setSort(1, ListModel::Ascending);
    QCOMPARE(column(m, 1), (QStringList{"", "Apple", "apple", "APPLE", "b", "banana", "Cherry", "Äpfel"}));
    m.setSort(1, ListModel::Descending);
    QCOMPARE(column(m, 1), (QStringList{"Äpfel", "Cherry", "banana", "b", "Apple", "apple", "APPLE", ""}));
}

void TestListSort::longCommonPrefixes() {
    QStringList values;
    const QStringList suffixes{"0010", "0002", "00010", "0001", "", "A", "a0", "0002"};
    for (const QString& s : suffixes)
        values << "'Synthetic Equipment Beam " + s + "'";
    ListDb db(valueTable(QStringLiteral("VARCHAR(80)"), values));
    QVERIFY2(db.ok(), qPrintable(db.error()));
    ListModel m;
    db.load(m, QStringLiteral("SELECT * FROM T"));
    m.setSort(1, ListModel::Ascending);
    QStringList expected;
    for (const char* s : {"", "0001", "00010", "0002", "0002", "0010", "A", "a0"})
        expected << QStringLiteral("Synthetic Equipment Beam ") + s;
    QCOMPARE(column(m, 1), expected);
    QCOMPARE(names(m).mid(3, 2), (QStringList{"r1", "r7"}));
}

void TestListSort::restoredSortAppliesAndReloadKeepsIt() {
    ListDb db(valueTable(QStringLiteral("INTEGER"), {"3", "1", "2"}));
    QVERIFY2(db.ok(), qPrintable(db.error()));
    ListModel m;
    m.setSort(1, ListModel::Descending); // restored before any rows exist
    QCOMPARE(m.sortKey(), 1);
    db.load(m, QStringLiteral("SELECT * FROM T"));
    QCOMPARE(column(m, 1), (QStringList{"3", "2", "1"}));
    m.setSort(1, ListModel::Ascending); // a restore does not toggle
    QCOMPARE(column(m, 1), (QStringList{"1", "2", "3"}));
    QCOMPARE(m.sortOrder(), int(ListModel::Ascending));
    db.load(m, QStringLiteral("SELECT * FROM T"));
    QCOMPARE(column(m, 1), (QStringList{"1", "2", "3"}));
    QCOMPARE(m.sourceRow(0), 1);
    QCOMPARE(m.viewRow(1), 0);
    QCOMPARE(m.viewRow(0), 2);
    // Forgetting the sort: the next load keeps the statement's order.
    m.setSort(-1, ListModel::Ascending);
    QVERIFY(!m.isSorted());
    QCOMPARE(m.sortKey(), -1);
    db.load(m, QStringLiteral("SELECT * FROM T"));
    QCOMPARE(column(m, 1), (QStringList{"3", "1", "2"}));
}

void TestListSort::selectionFollowsTheRecord() {
    ListDb db(valueTable(QStringLiteral("INTEGER"), {"3", "1", "2"}));
    QVERIFY2(db.ok(), qPrintable(db.error()));
    ListModel m;
    db.load(m, QStringLiteral("SELECT * FROM T"));
    QPersistentModelIndex kept(m.index(0, 1)); // r0, value 3
    m.setSort(1, ListModel::Ascending);
    QCOMPARE(kept.row(), 2);
    QCOMPARE(kept.column(), 1);
    QCOMPARE(m.name(kept.row()), QStringLiteral("r0"));
}

void TestListSort::headerClickSorts() {
    ListDb db(valueTable(QStringLiteral("INTEGER"), {"10", "9", "-1", "-20", "'-'"}));
    QVERIFY2(db.ok(), qPrintable(db.error()));
    ListModel m;
    db.load(m, QStringLiteral("SELECT * FROM T"));
    QTreeView view;
    view.setRootIsDecorated(false);
    view.setUniformRowHeights(true);
    view.setModel(&m);
    ListViewSort sorter;
    sorter.setListView(&view);
    QCOMPARE(sorter.listView(), &view);
    view.resize(400, 300);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QHeaderView* header = view.header();
    const QPoint onValue(header->sectionViewportPosition(1) + 5, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, onValue);
    QCOMPARE(column(m, 1), (QStringList{"10", "9", "-1", "-20", "-"}));
    QCOMPARE(header->sortIndicatorSection(), 1);
    QCOMPARE(header->sortIndicatorOrder(), Qt::DescendingOrder);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, onValue);
    QCOMPARE(column(m, 1), (QStringList{"-", "-20", "-1", "9", "10"}));
    QCOMPARE(header->sortIndicatorOrder(), Qt::AscendingOrder);
    QVERIFY(!QApplication::overrideCursor());
    sorter.setListView(nullptr);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, onValue);
    QCOMPARE(m.sortOrder(), int(ListModel::Ascending)); // detached: clicks no longer sort
}

void TestListSort::largeListMatchesTheKeyTexts_data() {
    QTest::addColumn<int>("col");
    QTest::addColumn<int>("order");
    for (int order : {int(ListModel::Ascending), int(ListModel::Descending)}) {
        const char* dir = order == ListModel::Ascending ? "ascending" : "descending";
        QTest::addRow("numbers %s", dir) << 1 << order;
        QTest::addRow("fractions %s", dir) << 2 << order;
        QTest::addRow("dates %s", dir) << 3 << order;
        QTest::addRow("texts %s", dir) << 4 << order;
    }
}

// Thousands of rows with many equal keys: the order must be the one the old list gave by sorting the
// key texts (number and date keys, texts without case), stably against the order before the sort.
void TestListSort::largeListMatchesTheKeyTexts() {
    QFETCH(int, col);
    QFETCH(int, order);
    ListDb db({"CREATE TABLE T (NAME VARCHAR(50), N INTEGER, F DOUBLE, D DATETIME, S VARCHAR(80))",
               "WITH RECURSIVE k(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM k WHERE i < 2999) "
               "INSERT INTO T SELECT 'r' || i, "
               "CASE WHEN i % 97 = 0 THEN NULL WHEN i % 89 = 0 THEN '-' ELSE abs(random()) % 2001 - 1000 END, "
               "CASE WHEN i % 83 = 0 THEN NULL ELSE (abs(random()) % 200001 - 100000) / 7.0 END, "
               "CASE WHEN i % 79 = 0 THEN 'later' ELSE printf('%04d-%02d-%02d %02d:%02d:%02d', "
               "2000 + abs(random()) % 3, 1 + abs(random()) % 12, 1 + abs(random()) % 28, abs(random()) % 24, "
               "abs(random()) % 2, abs(random()) % 2) END, "
               "CASE abs(random()) % 6 WHEN 0 THEN 'Synthetic Beam ' WHEN 1 THEN 'synthetic BEAM ' "
               "WHEN 2 THEN 'Synthetic Beam Mk' WHEN 3 THEN 'Ärger ' WHEN 4 THEN '' ELSE 'x' END "
               "|| CASE WHEN i % 5 = 0 THEN '' ELSE abs(random()) % 300 END FROM k"});
    QVERIFY2(db.ok(), qPrintable(db.error()));
    ListModel m;
    db.load(m, QStringLiteral("SELECT * FROM T"));
    QCOMPARE(m.rowCount(), 3000);
    m.setSort(col == 4 ? 1 : 4, ListModel::Descending); // some other order to start from
    QHash<int, int> before; // stored row -> view position before the sort
    for (int r = 0; r < m.rowCount(); ++r)
        before.insert(m.sourceRow(r), r);
    m.setSort(col, order);
    auto key = [&](int row) {
        const QString t = m.text(row, col);
        if (col <= 2)
            return NumberSortText(t);
        if (col == 3)
            return DateSortText(t);
        return t.toCaseFolded();
    };
    int ties = 0;
    for (int r = 1; r < m.rowCount(); ++r) {
        const QString a = key(r - 1), b = key(r);
        if (a == b) {
            ++ties;
            QVERIFY2(before[m.sourceRow(r - 1)] < before[m.sourceRow(r)], qPrintable(QString::number(r)));
        } else {
            QVERIFY2(order == ListModel::Ascending ? a < b : b < a,
                     qPrintable(QStringLiteral("row %1: %2 / %3").arg(r).arg(m.text(r - 1, col), m.text(r, col))));
        }
    }
    QVERIFY(ties > 10);
}

QTEST_MAIN(TestListSort)
#include "tst_listsort.moc"
