#include "listfixture.h"
#include "lists/listviewsort.h"
#include "lists/sortkeys.h"

#include <QRandomGenerator>
#include <QTest>
#include <QtWidgets>

namespace {
// n rows of table T(NAME, N, F, D, S) from a seeded generator: numbers with NULLs and dashes, fractions,
// dates with invalid ones and many ties, texts differing in case, accents and common prefixes.
QStringList mixedRows(int n, quint32 seed) {
    QRandomGenerator rng(seed);
    QStringList s{"CREATE TABLE T (NAME VARCHAR(50), N INTEGER, F DOUBLE, D DATETIME, S VARCHAR(80))",
                  "BEGIN"};
    static const char* const stems[] = {
        "Synthetic Beam ", "synthetic BEAM ", "Synthetic Beam Mk", "Ärger ", "", "x"};
    for (int i = 0; i < n; ++i) {
        const QString number = i % 97 == 0   ? QStringLiteral("NULL")
                               : i % 89 == 0 ? QStringLiteral("'-'")
                                             : QString::number(rng.bounded(2001) - 1000);
        const QString fraction = i % 83 == 0 ? QStringLiteral("NULL")
                                             : QString::number((rng.bounded(200001) - 100000) / 7.0, 'g', 17);
        const int y = 2000 + rng.bounded(3), mo = 1 + rng.bounded(12), d = 1 + rng.bounded(28),
                  h = rng.bounded(24), mi = rng.bounded(2), se = rng.bounded(2);
        const QString date = i % 79 == 0
                                 ? QStringLiteral("'later'")
                                 : QString::asprintf("'%d-%02d-%02d %02d:%02d:%02d'", y, mo, d, h, mi, se);
        const QString text = QString::fromUtf8(stems[rng.bounded(6)]) +
                             (i % 5 == 0 ? QString() : QString::number(rng.bounded(300)));
        s << QStringLiteral("INSERT INTO T VALUES ('r%1', %2, %3, %4, '%5')")
                 .arg(i)
                 .arg(number, fraction, date, text);
    }
    s << "COMMIT";
    return s;
}
} // namespace

class TestListSort : public QObject {
    Q_OBJECT
private Q_SLOTS:
    // Per row a function (InvertDigits, NumberSortText, ParseListNumber giving the value or "false",
    // DateSortText giving "" for no date and checked against DateSortKey too), its input and the text it
    // gives.
    void keyTexts_data() {
        QTest::addColumn<QString>("fn");
        QTest::addColumn<QString>("in");
        QTest::addColumn<QString>("out");
        const QString z30(30, QLatin1Char('0')), n30(30, QLatin1Char('9'));
        auto row = [](const char* tag, const char* fn, const QString& in, const QString& out) {
            QTest::newRow(tag) << QString(fn) << in << out;
        };
        row("invert", "invert", "&-0123456789.5e+x", "& 9876543210.4e+x");
        row("number ten", "number", "10", z30.left(28) + "10." + z30);
        row("number minus one", "number", "-1", "&" + n30.left(29) + "8." + n30);
        row("number: 31 digits kept", "number", "1E+30", "1" + z30 + "." + z30);
        row("parse negative grouped", "parse", "-1,234", "-1234");
        row("parse dash", "parse", "-", "false");
        row("parse trailing junk", "parse", "12abc", "false");
        row("parse exponent without digits", "parse", "1e", "false");
        row("date as stored", "date", "2023-12-31 23:59:59", "20231231235959");
        row("date: no such day", "date", "2023-02-29 10:00:00", "");
        row("date iso T, minutes", "date", "2024-03-15T14:20", "20240315142000");
        row("date us pm", "date", "3/5/2024 2:04:05 PM", "20240305140405");
        row("date us 12 am", "date", "3/5/2024 12:00:00 AM", "20240305000000");
        row("date us two-digit year", "date", "1/2/99", "19990102000000");
        row("date: time alone", "date", "10:20", "18991230102000");
        row("date: month 13", "date", "13/1/2024", "");
        row("date: trailing junk", "date", "2024-01-01 x", "");
    }

    void keyTexts() {
        QFETCH(QString, fn);
        QFETCH(QString, in);
        QFETCH(QString, out);
        double v = -99;
        const QString got = fn == "invert"   ? InvertDigits(in)
                            : fn == "number" ? NumberSortText(in)
                            : fn == "parse"  ? (ParseListNumber(in, &v) ? QString::number(v) : "false")
                                             : DateSortText(in);
        QCOMPARE(got, out);
        if (fn == "date") {
            const QByteArray latin1 = in.toLatin1();
            QCOMPARE(DateSortKey(in), out.isEmpty() ? -1 : out.toLongLong());
            QCOMPARE(DateSortKey(QLatin1StringView(latin1)), out.isEmpty() ? -1 : out.toLongLong());
        }
    }

    void order_data() {
        QTest::addColumn<QString>("column"); // declaration of the value column
        QTest::addColumn<QString>("values"); // SQL literals, split at "|"
        QTest::addColumn<int>("order");
        QTest::addColumn<QString>("names"); // the rows in sorted order
        const int asc = ListModel::Ascending, desc = ListModel::Descending;
        auto row = [](const char* tag, const char* column, const QString& values, int order,
                      const char* names) {
            QTest::newRow(tag) << QString(column) << values << order << QString(names);
        };
        row("numbers, dash first", "VAL INTEGER", "10|9|-1|-20|'-'", asc, "43210");
        // -0.004 is shown as 0 and sorts as the 0 it shows.
        row("fractions", "VAL DOUBLE", "1234.5|999|-0.004|0.5|-1000000|12", asc, "423510");
        row("N/A among the empty cells", "MANEUVERABILITY INTEGER", "4|-1|-2|NULL", asc, "1320");
        row("prices by value", "PRICE INTEGER", "5|-1|0|-2|12", asc, "31204"); // as the prices they stand for
        // More than 30 integer digits overflow the fixed-width key: 1E+31 sorts by its first 30 digits.
        row("huge numbers", "VAL DOUBLE", "1e31|2e30|5|'x'|-7", asc, "34201");
        const QString dates = "'2024-03-15 10:00:00'|'someday'|'2023-12-31 23:59:59'|NULL|"
                              "'3/15/2024 9:30:00 AM'|'2024-03-15 10:00:00'";
        row("dates, invalid first", "VAL DATETIME", dates, asc, "132405");
        row("dates descending, ties stable", "VAL DATETIME", dates, desc, "054213");
        row("texts without case, ties stable", "VAL VARCHAR(50)",
            "'banana'|'Apple'|'apple'|'Cherry'|'APPLE'|NULL|'Äpfel'|'b'", asc, "51247036");
        QStringList prefixed;
        for (const char* s : {"0010", "0002", "00010", "0001", "", "A", "a0", "0002"})
            prefixed << QStringLiteral("'Synthetic Equipment Beam %1'").arg(QLatin1String(s));
        row("long common prefixes", "VAL VARCHAR(80)", prefixed.join('|'), asc, "43217056");
    }

    void order() {
        QFETCH(QString, column);
        QFETCH(QString, values);
        QFETCH(int, order);
        QFETCH(QString, names); // row numbers, one digit each
        LOAD_LIST(m, QStringLiteral("SELECT * FROM T"), valueTable(column, values.split(QLatin1Char('|'))));
        auto sortedTexts = [&] {
            QStringList l = rowTexts(m, 1);
            l.sort();
            return l;
        };
        const QStringList before = sortedTexts();
        m.setSort(1, order);
        QCOMPARE(::names(m).join(QString()).remove(QLatin1Char('r')), names);
        QCOMPARE(sortedTexts(), before); // every cell keeps its text
    }

    void restoredSortAppliesAndReloadKeepsIt() {
        ListDb db(valueTable(QStringLiteral("VAL INTEGER"), {"3", "1", "2"}));
        QVERIFY2(db.ok(), qPrintable(db.error()));
        ListModel m;
        m.setSort(1, ListModel::Descending); // restored before any rows exist
        db.load(m, QStringLiteral("SELECT * FROM T"));
        QCOMPARE(column(m, 1), (QStringList{"3", "2", "1"}));
        QPersistentModelIndex kept(m.index(0, 1)); // r0, value 3: a selection follows its record
        m.setSort(1, ListModel::Ascending);        // a restore does not toggle
        QCOMPARE(column(m, 1), (QStringList{"1", "2", "3"}));
        QCOMPARE(kept.row(), 2);
        db.load(m, QStringLiteral("SELECT * FROM T"));
        QCOMPARE(column(m, 1), (QStringList{"1", "2", "3"}));
        QVERIFY(m.sourceRow(0) == 1 && m.viewRow(0) == 2);
        // Forgetting the sort: the next load keeps the statement's order.
        m.setSort(-1, ListModel::Ascending);
        db.load(m, QStringLiteral("SELECT * FROM T"));
        QCOMPARE(column(m, 1), (QStringList{"3", "1", "2"}));
    }

    void headerClicksToggleEvenAcrossColumns() {
        LOAD_LIST(m, QStringLiteral("SELECT * FROM T"),
                  "CREATE TABLE T (NAME VARCHAR(50), A INTEGER, B INTEGER)",
                  "INSERT INTO T VALUES ('x', 2, 1), ('y', 1, 3), ('z', 3, 2)");
        QTreeView view;
        view.setModel(&m);
        ListViewSort sorter;
        sorter.setListView(&view);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        QHeaderView* header = view.header();
        header->setSortIndicatorShown(false); // as an unsorted list starts
        auto click = [&](int col) {
            QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                              QPoint(header->sectionViewportPosition(col) + 5, header->height() / 2));
        };
        // The list starts ascending, so the first click gives descending; another column toggles again
        // rather than starting afresh. Each step: the column clicked, then the names in order.
        int expectedOrder = ListModel::Ascending;
        for (const QString step : {"1zxy", "1yxz", "2yzx", "0xyz"}) {
            const int col = step[0].digitValue();
            click(col);
            expectedOrder = 1 - expectedOrder;
            QCOMPARE(names(m).join(QString()), step.mid(1));
            QCOMPARE(m.sortKey(), col);
            QCOMPARE(m.sortOrder(), expectedOrder);
            QVERIFY(header->isSortIndicatorShown());
            QCOMPARE(header->sortIndicatorSection(), col);
            QCOMPARE(header->sortIndicatorOrder(), expectedOrder ? Qt::DescendingOrder : Qt::AscendingOrder);
        }
        QVERIFY(!QApplication::overrideCursor());
        m.sortByColumn(7); // no such column: nothing changes
        QCOMPARE(m.sortKey(), 0);
        sorter.setListView(nullptr);
        click(1);
        QCOMPARE(m.sortKey(), 0); // detached: clicks no longer sort
    }

    // After a sort the list shows the top of the new order, unless the selected row is the one the user
    // has just changed (ticked): then that row stays in sight.
    void sortShowsTheTopOrTheChangedRow() {
        QStringList values;
        for (int i = 0; i < 300; ++i)
            values << QString::number((i * 37) % 300);
        LOAD_LIST(m, QStringLiteral("SELECT * FROM T"), valueTable(QStringLiteral("VAL INTEGER"), values));
        QTreeView view;
        view.setModel(&m);
        view.resize(300, 200);
        ListViewSort sorter;
        sorter.setListView(&view);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        auto inSight = [&](const QModelIndex& i) {
            return view.viewport()->rect().intersects(view.visualRect(i));
        };
        view.setCurrentIndex(m.index(250, 0));
        view.scrollTo(view.currentIndex());
        QVERIFY(view.verticalScrollBar()->value() > 0);
        sorter.columnClick(1);
        QCOMPARE(view.verticalScrollBar()->value(), 0);
        QVERIFY(!inSight(view.currentIndex())); // selected, but no longer where the user looks

        view.setCurrentIndex(m.index(200, 0));
        QVERIFY(m.setData(view.currentIndex(), Qt::Checked, Qt::CheckStateRole));
        const QString ticked = m.name(view.currentIndex().row());
        sorter.columnClick(1);
        QCOMPARE(m.name(view.currentIndex().row()), ticked);
        QVERIFY(view.currentIndex().row() != 200 && inSight(view.currentIndex()));
    }

    void largeListMatchesTheKeyTexts_data() {
        QTest::addColumn<int>("col");
        QTest::addColumn<int>("order");
        for (int order : {int(ListModel::Ascending), int(ListModel::Descending)})
            for (int col : {1, 2, 3, 4})
                QTest::addRow("column %d order %d", col, order) << col << order;
    }

    // Thousands of rows with many equal keys: the order must be the order of the key texts (number and
    // date keys, texts without case), stable against the order before the sort.
    void largeListMatchesTheKeyTexts() {
        QFETCH(int, col);
        QFETCH(int, order);
        LOAD_LIST(m, QStringLiteral("SELECT * FROM T"), mixedRows(3000, 20240315));
        QCOMPARE(m.rowCount(), 3000);
        m.setSort(col == 4 ? 1 : 4, ListModel::Descending); // some other order to start from
        QHash<int, int> before;                             // stored row -> view position before the sort
        for (int r = 0; r < m.rowCount(); ++r)
            before.insert(m.sourceRow(r), r);
        m.setSort(col, order);
        auto key = [&](int row) {
            const QString t = m.text(row, col);
            return col <= 2 ? NumberSortText(t) : col == 3 ? DateSortText(t) : t.toCaseFolded();
        };
        int ties = 0;
        for (int r = 1; r < m.rowCount(); ++r) {
            const QString a = key(r - 1), b = key(r);
            if (a == b) {
                ++ties;
                QVERIFY2(before[m.sourceRow(r - 1)] < before[m.sourceRow(r)], qPrintable(QString::number(r)));
            } else {
                QVERIFY2(
                    order == ListModel::Ascending ? a < b : b < a,
                    qPrintable(
                        QStringLiteral("row %1: %2 / %3").arg(r).arg(m.text(r - 1, col), m.text(r, col))));
            }
        }
        QVERIFY(ties > 10);
    }
};

QTEST_MAIN(TestListSort)
#include "tst_listsort.moc"
