#include "listfixture.h"
#include "mixedtexts.h"

#include "data/recordset.h"
#include "lists/listviewsort.h"
#include "lists/sortkeys.h"

#include <QRandomGenerator>
#include <QScopeGuard>
#include <QSignalSpy>
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
        // Beyond ASCII: each text by its case-folded code points, the same rules as for ASCII.
        const QString latin = "'émile'|'Zoe'|'Élan'|'elan'|'Ørsted'|'örn'|'Šárka'|'sarka'";
        row("Latin with diacritics, mixed case", "VAL VARCHAR(50)", latin, asc, "37120546");
        row("Latin with diacritics, descending", "VAL VARCHAR(50)", latin, desc, "64502173");
        // Final sigma folds to sigma: three spellings of one word tie and keep their order.
        const QString greek = "'ΣΟΦΟΣ'|'αλφα'|'σοφος'|'Σοφός'|'σοφοσ'|'Άλφα'";
        row("Greek, final sigma", "VAL VARCHAR(50)", greek, asc, "510243");
        row("Greek, final sigma, descending", "VAL VARCHAR(50)", greek, desc, "302415");
        // Code point order: a Deseret letter (beyond the BMP) after a fullwidth one, though UTF-16
        // would put its surrogates first.
        const QString scripts = QStringLiteral("'%1b'|'Ａ'|'星舰'|'Звезда'|'%2a'|'ЗВЕЗДА'")
                                    .arg(QString::fromUcs4(U"\U00010400"), QString::fromUcs4(U"\U00010428"));
        row("Cyrillic, CJK, fullwidth, beyond the BMP", "VAL VARCHAR(50)", scripts, asc, "352140");
        row("Cyrillic, CJK, fullwidth, beyond the BMP, descending", "VAL VARCHAR(50)", scripts, desc,
            "041235");
        // The Kelvin sign folds to k and long s to s; sharp s stays one letter after every s.
        row("Kelvin sign, sharp and long s", "VAL VARCHAR(50)",
            "'\u212Aelvin'|'straße'|'STRASSE'|'kelvin'|'ſtrasse'|'ẞ'", asc, "032415");
        // Empty texts and NULLs alike first; a text before the longer ones it begins.
        const QString prefixes = "'abc'|''|'AB'|NULL|'a'|'ab '|'A'";
        row("prefixes of each other, empty and NULL", "VAL VARCHAR(50)", prefixes, asc, "1346250");
        row("prefixes of each other, descending", "VAL VARCHAR(50)", prefixes, desc, "0524613");
        // A column without a declared type holds texts, whole numbers and fractions: all by their
        // shown texts.
        row("texts and numbers in one text column", "VAL", "'b'|10|'a'|9|2.5|NULL", asc, "514320");
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

    // Thousands of names from mixed alphabets (repeats, prefixes of each other, empty texts and
    // NULLs among them) come out as a plain stable sort of the view order by folded code points
    // orders them, in both directions, also while the name filter hides some.
    void mixedAlphabetsAsAPlainSort_data() {
        QTest::addColumn<int>("order");
        QTest::addColumn<QString>("filter");
        for (int order : {int(ListModel::Ascending), int(ListModel::Descending)})
            for (const char* filter : {"", "a"})
                QTest::addRow("order %d, filter '%s'", order, filter) << order << QString::fromUtf8(filter);
    }
    void mixedAlphabetsAsAPlainSort() {
        QFETCH(int, order);
        QFETCH(QString, filter);
        LOAD_LIST(m, QStringLiteral("SELECT VAL, N FROM T"), mixedTable(3000, 1312));
        m.setSort(1, ListModel::Descending); // some other order to start from
        m.setNameFilter(filter);
        const std::vector<int> before = sourceRows(m);
        m.setSort(0, order);
        QCOMPARE(sourceRows(m), plainSort(m, before, 0, order));
        m.setNameFilter(QString()); // the rows the filter hid are in order too
        QCOMPARE(m.rowCount(), 3000);
        for (int r = 1; r < m.rowCount(); ++r) {
            const std::string a = mixedtexts::folded(m.text(r - 1, 0)), b = mixedtexts::folded(m.text(r, 0));
            QVERIFY2(order == ListModel::Ascending ? a <= b : b <= a, qPrintable(QString::number(r)));
        }
    }

    // Sorting a column again, in either direction, after others: the same order a first sort gives.
    // The keys of the two columns sorted last are kept, 4 bytes a row each, and a reload drops them.
    void keptKeysAcrossSorts() {
        LOAD_LIST(m, QStringLiteral("SELECT VAL, N, D FROM T"), mixedTable(2000, 77));
        const qint64 bare = m.memoryUsed();
        const int rows = m.rowCount();
        struct Step {
            int col, order;
            qint64 keptBytes;
        };
        const Step steps[] = {{0, 0, 4}, {1, 1, 8}, {0, 1, 8}, {2, 0, 8}, {1, 0, 8}, {0, 0, 8}, {0, 1, 8}};
        for (const Step& step : steps) {
            const std::vector<int> before = sourceRows(m);
            m.setSort(step.col, step.order);
            QCOMPARE(sourceRows(m), plainSort(m, before, step.col, step.order));
            QCOMPARE(m.memoryUsed() - bare, step.keptBytes * rows);
        }
        // Reloaded, the list is sorted again by its kept sort: that column's keys alone.
        m_db.load(m, QStringLiteral("SELECT VAL, N, D FROM T"));
        QCOMPARE(m.memoryUsed() - bare, 4 * rows);
    }

    // A column sorted as text and then tagged as a number sorts by value: its keys are made afresh.
    void retaggedColumnSortsByItsNewKind() {
        LOAD_LIST(m, QStringLiteral("SELECT * FROM T"),
                  valueTable(QStringLiteral("VAL VARCHAR(9)"), {"'10'", "'9'", "'100'", "'-1'"}));
        m.setSort(1, ListModel::Ascending);
        QCOMPARE(column(m, 1), (QStringList{"-1", "10", "100", "9"}));
        m.setColumnTag(1, ListModel::NumberTag);
        m.setSort(1, ListModel::Ascending);
        QCOMPARE(column(m, 1), (QStringList{"-1", "9", "10", "100"}));
        m.setColumnTag(1, QString());
        m.setSort(1, ListModel::Descending);
        QCOMPARE(column(m, 1), (QStringList{"9", "100", "10", "-1"}));
    }

    // A list read in slices: the user sorts while rows still come in (the kept keys extended with the
    // rows read since, each time), and the list is sorted once more after the last row.
    void sortsWhileRowsComeIn() {
        ListModel::setSliceBudget(0, 0, 0); // 256 rows a slice, each shown at once
        const auto restore =
            qScopeGuard([] { ListModel::setSliceBudget(10'000'000, 25'000'000, 250'000'000); });
        const QString sql = QStringLiteral("SELECT VAL, N FROM T");
        LOAD_LIST(m, sql, mixedTable(3000, 2024));
        struct Click {
            int afterRows, col, order;
        };
        // Early clicks merge many new rows into few old values, late ones few new rows into many.
        const Click clicks[] = {{512, 0, 0},  {1024, 1, 1}, {1280, 0, 1},
                                {2048, 0, 0}, {2560, 0, 1}, {2816, 0, 0}};
        size_t next = 0;
        QString failure;
        std::vector<int> lastShown; // the view order after each slice
        connect(&m, &ListModel::loadProgress, this, [&](qint64 read) {
            if (next < std::size(clicks) && read >= clicks[next].afterRows && failure.isEmpty()) {
                const Click c = clicks[next++];
                const std::vector<int> before = sourceRows(m);
                m.setSort(c.col, c.order);
                if (sourceRows(m) != plainSort(m, before, c.col, c.order))
                    failure = QStringLiteral("after %1 rows").arg(read);
            }
            lastShown = sourceRows(m);
        });
        auto rs = std::make_unique<Recordset>();
        rs->open(sql);
        QSignalSpy finished(&m, &ListModel::loadFinished);
        m.startLoad(std::move(rs), ListColors());
        QVERIFY(finished.wait(20000));
        QVERIFY2(failure.isEmpty(), qPrintable(failure));
        QCOMPARE(next, std::size(clicks));
        QCOMPARE(m.rowCount(), 3000);
        // The last click's sort over every row, stable against the rows as they were shown.
        QCOMPARE(sourceRows(m), plainSort(m, lastShown, 0, ListModel::Ascending));
    }

private:
    // T(VAL, N, D): seeded random names from mixed alphabets (a few NULLs), numbers with many ties,
    // dates.
    static QStringList mixedTable(int n, quint32 seed) {
        QRandomGenerator rng(seed);
        QStringList s{"CREATE TABLE T (VAL VARCHAR(120), N INTEGER, D DATETIME)", "BEGIN"};
        for (int i = 0; i < n; ++i) {
            QString name = mixedtexts::randomText(rng);
            name.replace(QLatin1Char('\''), QLatin1String("''"));
            s << QStringLiteral("INSERT INTO T VALUES (%1, %2, '2024-%3-10 10:00:00')")
                     .arg(i % 101 == 0 ? QStringLiteral("NULL") : u'\'' + name + u'\'')
                     .arg(rng.bounded(50))
                     .arg(1 + rng.bounded(12), 2, 10, QLatin1Char('0'));
        }
        s << "COMMIT";
        return s;
    }

    static std::vector<int> sourceRows(const ListModel& m) {
        std::vector<int> out;
        for (int r = 0; r < m.rowCount(); ++r)
            out.push_back(m.sourceRow(r));
        return out;
    }

    // The stored rows of a view order stably sorted by a column: texts by their folded code points,
    // numbers and dates by their key texts.
    static std::vector<int> plainSort(const ListModel& m, std::vector<int> rows, int col, int order) {
        QHash<int, std::string> key;
        for (int r = 0; r < m.rowCount(); ++r) {
            const QString t = m.text(r, col);
            const QString tag = m.columnTag(col);
            key.insert(m.sourceRow(r), tag == ListModel::NumberTag ? NumberSortText(t).toStdString()
                                       : tag == ListModel::DateTag ? DateSortText(t).toStdString()
                                                                   : mixedtexts::folded(t));
        }
        std::stable_sort(rows.begin(), rows.end(), [&](int a, int b) {
            return order == ListModel::Ascending ? key[a] < key[b] : key[b] < key[a];
        });
        return rows;
    }
};

QTEST_MAIN(TestListSort)
#include "tst_listsort.moc"
