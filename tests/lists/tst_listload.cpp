// The list read in slices: between slices the rows read so far are a consistent list (ticks, filter,
// sort), and once the last row is in the list is the one a load at once gives.
#include "listfixture.h"

#include "data/database.h"
#include "data/recordset.h"

#include <QAbstractItemModelTester>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTest>

namespace {
constexpr int Rows = 2000;

// Names that sort differently from their position, a number column, a tick on every seventh row.
QStringList bigTable() {
    QStringList s{
        QStringLiteral("CREATE TABLE B (NAME VARCHAR(50), NUM INTEGER, \"CHECK\" BOOLEAN)"),
        QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
                       "INSERT INTO B SELECT printf('%s %04d', CASE i % 3 WHEN 0 THEN 'Élan' "
                       "WHEN 1 THEN 'beam' ELSE 'Zeta' END, (i * 7919) % %2), (i * 31) % 97, "
                       "i % 7 = 0 FROM n")
            .arg(Rows - 1)
            .arg(Rows)};
    return s;
}

const QString Sql = QStringLiteral("SELECT NAME, NUM, CHECK FROM B");

std::unique_ptr<Recordset> opened() {
    auto rs = std::make_unique<Recordset>();
    rs->open(Sql);
    return rs;
}

// Every row as "name|num|tick", in view order.
QStringList contents(const ListModel& m) {
    QStringList out;
    for (int r = 0; r < m.rowCount(); ++r)
        out << m.text(r, 0) + u'|' + m.text(r, 1) + u'|' + (m.isChecked(r) ? u'x' : u'-');
    return out;
}

bool waitForLoad(ListModel& m) {
    QSignalSpy finished(&m, &ListModel::loadFinished);
    return !m.isLoading() || finished.wait(20000);
}
} // namespace

class TestListLoad : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() { ListModel::setSliceBudget(0, 0, 0); } // 256 rows a slice, each shown at once
    void cleanup() { ListModel::setSliceBudget(10'000'000, 25'000'000, 250'000'000); }

    void inSlicesEndsAsAtOnce_data() {
        QTest::addColumn<int>("sortKey"); // -1: none
        QTest::addColumn<int>("sortOrder");
        QTest::addColumn<QString>("filter");
        QTest::newRow("statement order") << -1 << 0 << QString();
        QTest::newRow("kept number sort, descending") << 1 << int(ListModel::Descending) << QString();
        QTest::newRow("kept name sort") << 0 << int(ListModel::Ascending) << QString();
        QTest::newRow("name filter") << -1 << 0 << QStringLiteral("ÉLAN 1");
        QTest::newRow("filter and sort") << 1 << int(ListModel::Ascending) << QStringLiteral("beam");
    }
    void inSlicesEndsAsAtOnce() {
        QFETCH(int, sortKey);
        QFETCH(int, sortOrder);
        QFETCH(QString, filter);
        LOAD_LIST(expected, Sql, bigTable());
        expected.setSort(sortKey, sortOrder);
        expected.setNameFilter(filter);

        ListModel m;
        QAbstractItemModelTester tester(&m, QAbstractItemModelTester::FailureReportingMode::QtTest);
        m.load(*opened(), ListColors()); // columns known, so that the kept sort has its column
        m.setSort(sortKey, sortOrder);
        m.setNameFilter(filter);
        QSignalSpy progress(&m, &ListModel::loadProgress);
        m.startLoad(opened(), ListColors());
        QVERIFY(m.isLoading());
        QCOMPARE(m.loadedRowCount(), 256);
        QVERIFY(waitForLoad(m));
        QVERIFY(!m.isLoading());
        QVERIFY(progress.size() >= Rows / 256);
        QCOMPARE(progress.last().first().toLongLong(), qint64(Rows));
        QCOMPARE(m.loadedRowCount(), Rows);
        QCOMPARE(contents(m), contents(expected));
        QCOMPARE(m.loadError().number, 0L);
    }

    void rowsReadSoFarCanBeSortedTickedAndFiltered() {
        LOAD_LIST(expected, Sql, bigTable());
        expected.setSort(1, ListModel::Descending);
        ListModel m;
        QAbstractItemModelTester tester(&m, QAbstractItemModelTester::FailureReportingMode::QtTest);
        m.startLoad(opened(), ListColors());
        QSignalSpy progress(&m, &ListModel::loadProgress);
        QVERIFY(progress.wait());
        // Mid-load: sort what is there, tick its first row, narrow and widen the names.
        m.setSort(1, ListModel::Descending);
        const int before = m.rowCount();
        QVERIFY(before > 256 && before < Rows);
        QVERIFY(m.isLoading());
        const QString ticked = m.name(0);
        m.setChecked(0, !m.isChecked(0));
        m.setNameFilter(QStringLiteral("zeta"));
        m.setNameFilter(QString());
        QVERIFY(waitForLoad(m));
        // The sort chosen during the load holds for the whole list; the tick stayed with its record.
        QStringList want = contents(expected);
        for (QString& row : want)
            if (row.startsWith(ticked + u'|'))
                row.back() = row.back() == u'x' ? u'-' : u'x';
        QCOMPARE(contents(m), want);
    }

    // After the last row the kept sort runs on another thread; what the user does meanwhile wins.
    void whileTheWholeListIsSorted_data() {
        QTest::addColumn<QString>("meanwhile");
        QTest::newRow("another column chosen") << "sort";
        QTest::newRow("names narrowed") << "filter";
        QTest::newRow("list cleared") << "clear";
        QTest::newRow("list read again") << "reload";
    }
    void whileTheWholeListIsSorted() {
        QFETCH(QString, meanwhile);
        LOAD_LIST(expected, Sql, bigTable());
        ListModel m;
        m.load(*opened(), ListColors());
        m.setSort(0, ListModel::Ascending);
        bool acted = false;
        connect(&m, &ListModel::loadProgress, &m, [&](qint64 rows) {
            if (rows < Rows || acted)
                return;
            acted = true; // the last slice is in and the sort has started
            QVERIFY(m.isLoading());
            if (meanwhile == "sort")
                m.setSort(1, ListModel::Descending);
            else if (meanwhile == "filter")
                m.setNameFilter(QStringLiteral("zeta"));
            else if (meanwhile == "clear")
                m.clear();
            else
                m.startLoad(opened(), ListColors());
        });
        m.startLoad(opened(), ListColors());
        QTRY_VERIFY(acted);
        QTRY_VERIFY(!m.isLoading());
        QTest::qWait(50); // the dropped sort, if any, ends without touching the list
        expected.setSort(0, ListModel::Ascending);
        if (meanwhile == "sort") // after the kept sort, as a click just after a quick one would be
            expected.setSort(1, ListModel::Descending);
        if (meanwhile == "filter")
            expected.setNameFilter(QStringLiteral("zeta"));
        QCOMPARE(contents(m), meanwhile == "clear" ? QStringList() : contents(expected));
        QVERIFY(!m.isLoading());
    }

    void aNewLoadOrAClearDropsTheOneUnderWay() {
        LOAD_LIST(small, QStringLiteral("SELECT NAME FROM B WHERE NUM = 5"), bigTable());
        const QStringList fives = names(small);
        ListModel m;
        m.startLoad(opened(), ListColors());
        QVERIFY(m.isLoading());
        auto rs = std::make_unique<Recordset>();
        rs->open(QStringLiteral("SELECT NAME FROM B WHERE NUM = 5"));
        m.startLoad(std::move(rs), ListColors());
        QVERIFY(waitForLoad(m));
        QTest::qWait(50); // no slice of the dropped load comes after
        QCOMPARE(names(m), fives);

        m.startLoad(opened(), ListColors());
        m.clear();
        QVERIFY(!m.isLoading());
        QTest::qWait(50);
        QCOMPARE(m.rowCount(), 0);
    }

    void aClosedConnectionEndsTheLoadWithAnError() {
        LOAD_LIST(expected, Sql, bigTable());
        ListModel m;
        m.startLoad(opened(), ListColors());
        QVERIFY(m.isLoading());
        const int shown = m.rowCount();
        const QString file = db().fileName();
        auto reopen =
            qScopeGuard([&] { db().open(QStringLiteral("Provider=x;Data Source=") + file + u';'); });
        db().close(); // as a restore does
        QVERIFY(waitForLoad(m));
        QCOMPARE(m.loadError().number, long(vberr::ObjectClosed));
        // The rows read before stay (with the one the statement stood on when it closed); no row after.
        QVERIFY(m.rowCount() == shown || m.rowCount() == shown + 1);
        QCOMPARE(contents(m), contents(expected).mid(0, m.rowCount()));
    }
};

QTEST_GUILESS_MAIN(TestListLoad)
#include "tst_listload.moc"
