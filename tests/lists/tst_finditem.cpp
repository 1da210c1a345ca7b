#include "listfixture.h"
#include "lists/finditem.h"

#include <QSignalSpy>
#include <QTest>

class TestFindItem : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void steps_data();
    void steps();
    void markAllMarksRowsAndCells();
    void earlierMarksStay();
    void namesOnlySkipsOtherColumns();
    void followsTheSortedOrder();
    void emptyList();

private:
    std::unique_ptr<ListDb> m_db;
    ListModel m_model;
};

// Rows (1-based): 1 Alpha Beam | Beam | 100, 2 Beta Shield | Shield | 250, 3 Gamma Beam | Beam | 7,
// 4 Delta Engine | Engine | 1,500, 5 beta reactor | Reactor | 25.
void TestFindItem::init() {
    m_db = std::make_unique<ListDb>(QStringList{
        "CREATE TABLE E (EQUIPMENT_NAME VARCHAR(50), TYPE VARCHAR(20), PRICE INTEGER)",
        "INSERT INTO E VALUES ('Alpha Beam', 'Beam', 100)", "INSERT INTO E VALUES ('Beta Shield', 'Shield', 250)",
        "INSERT INTO E VALUES ('Gamma Beam', 'Beam', 7)", "INSERT INTO E VALUES ('Delta Engine', 'Engine', 1500)",
        "INSERT INTO E VALUES ('beta reactor', 'Reactor', 25)"});
    QVERIFY2(m_db->ok(), qPrintable(m_db->error()));
    m_db->load(m_model, QStringLiteral("SELECT * FROM E"));
}

void TestFindItem::cleanup() {
    m_model.clear();
    m_db.reset();
}

void TestFindItem::steps_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("start");
    QTest::addColumn<bool>("down");
    QTest::addColumn<bool>("namesOnly");
    QTest::addColumn<bool>("matchCase");
    QTest::addColumn<int>("found");
    QTest::newRow("down from the top") << "Beam" << 1 << true << false << false << 1;
    QTest::newRow("down from below the selection") << "Beam" << 2 << true << false << false << 3;
    QTest::newRow("down past the last match") << "Beam" << 4 << true << false << false << 0;
    QTest::newRow("down from the last row: no wrap") << "Alpha" << 6 << true << false << false << 0;
    QTest::newRow("up starts above the selection") << "Beam" << 4 << false << false << false << 1;
    QTest::newRow("up from row 4 finds 3") << "Beam" << 5 << false << false << false << 3;
    QTest::newRow("up with the first row selected") << "Alpha" << 2 << false << false << false << 0;
    QTest::newRow("without case") << "BETA" << 1 << true << false << false << 2;
    QTest::newRow("with case") << "beta" << 1 << true << false << true << 5;
    QTest::newRow("with case misses") << "BETA" << 1 << true << false << true << 0;
    QTest::newRow("another column") << "Reactor" << 1 << true << false << true << 5;
    QTest::newRow("number as shown") << "1,5" << 1 << true << false << false << 4;
    QTest::newRow("star wildcard") << "G*Beam" << 1 << true << false << false << 3;
    QTest::newRow("question wildcard") << "Be?a" << 1 << true << false << false << 2;
    QTest::newRow("digit wildcard") << "2#0" << 1 << true << false << false << 2;
    QTest::newRow("list wildcard") << "[DG]" << 1 << true << true << true << 3;
    QTest::newRow("unclosed bracket finds nothing") << "[Beam" << 1 << true << false << false << 0;
    QTest::newRow("names only still finds names") << "Shield" << 1 << true << true << false << 2;
    QTest::newRow("names only finds nothing") << "Reactor" << 1 << true << true << true << 0;
    QTest::newRow("start beyond the list") << "Beam" << 9 << false << false << false << 0;
    QTest::newRow("start at zero") << "Beam" << 0 << true << false << false << 0;
}

void TestFindItem::steps() {
    QFETCH(QString, text);
    QFETCH(int, start);
    QFETCH(bool, down);
    QFETCH(bool, namesOnly);
    QFETCH(bool, matchCase);
    QFETCH(int, found);
    QCOMPARE(UberFindItem(text, start, m_model, down, namesOnly, matchCase, false), found);
    // Stepping marks nothing.
    for (int r = 0; r < m_model.rowCount(); ++r)
        for (int c = 0; c < m_model.columnCount(); ++c)
            QVERIFY(!m_model.isBold(r, c));
}

void TestFindItem::markAllMarksRowsAndCells() {
    QSignalSpy changed(&m_model, &ListModel::dataChanged);
    // "Beam" is in the names of rows 1 and 3 and in the type of both: a name match marks the row and
    // leaves its other cells alone.
    QCOMPARE(UberFindItem(QStringLiteral("e"), 1, m_model, true, false, false, true), 5);
    QCOMPARE(changed.size(), 1); // one notification for the whole marking
    for (int r = 0; r < 5; ++r)
        QVERIFY(m_model.isRowBold(r)); // every name holds an "e"

    m_model.clearBold();
    QCOMPARE(UberFindItem(QStringLiteral("Beam"), 1, m_model, true, false, false, true), 3);
    QVERIFY(m_model.isRowBold(0) && m_model.isRowBold(2));
    QVERIFY(!m_model.isCellBold(0, 1)); // the row matched by name: its type is not tested
    QVERIFY(!m_model.isRowBold(1));

    m_model.clearBold();
    QCOMPARE(UberFindItem(QStringLiteral("5"), 1, m_model, true, false, false, true), 5);
    QVERIFY(m_model.isCellBold(1, 2) && m_model.isCellBold(3, 2) && m_model.isCellBold(4, 2));
    QVERIFY(!m_model.isCellBold(0, 2) && !m_model.isCellBold(2, 2));
    QVERIFY(!m_model.isRowBold(1) && !m_model.isCellBold(1, 1));
}

void TestFindItem::earlierMarksStay() {
    QCOMPARE(UberFindItem(QStringLiteral("Shield"), 1, m_model, true, false, false, true), 2);
    QCOMPARE(UberFindItem(QStringLiteral("Engine"), 1, m_model, true, false, false, true), 4);
    QVERIFY(m_model.isRowBold(1) && m_model.isRowBold(3));
    QCOMPARE(UberFindItem(QStringLiteral("nothing like it"), 1, m_model, true, false, false, true), 0);
    QVERIFY(m_model.isRowBold(1) && m_model.isRowBold(3));
}

void TestFindItem::namesOnlySkipsOtherColumns() {
    QCOMPARE(UberFindItem(QStringLiteral("Shield"), 1, m_model, true, true, false, true), 2);
    QCOMPARE(UberFindItem(QStringLiteral("250"), 1, m_model, true, true, false, true), 0);
    QVERIFY(!m_model.isCellBold(1, 2));
}

void TestFindItem::followsTheSortedOrder() {
    m_model.setSort(2, ListModel::Ascending); // by price: Gamma 7, beta reactor 25, Alpha 100, ...
    QCOMPARE(UberFindItem(QStringLiteral("Beam"), 1, m_model, true, false, false, false), 1);
    QCOMPARE(m_model.name(0), QStringLiteral("Gamma Beam"));
    QCOMPARE(UberFindItem(QStringLiteral("Beam"), 2, m_model, true, false, false, false), 3);
    QCOMPARE(m_model.name(2), QStringLiteral("Alpha Beam"));
}

void TestFindItem::emptyList() {
    ListModel empty;
    QCOMPARE(UberFindItem(QStringLiteral("x"), 1, empty, true, false, false, false), 0);
    QCOMPARE(UberFindItem(QString(), 1, empty, false, false, false, true), 0);
    // An empty search text matches every row ("**").
    QCOMPARE(UberFindItem(QString(), 1, m_model, true, false, false, false), 1);
}

QTEST_GUILESS_MAIN(TestFindItem)
#include "tst_finditem.moc"
