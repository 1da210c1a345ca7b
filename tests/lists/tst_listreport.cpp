// The printed list: pages, repeated headers, page numbers, column widths and order, and the PDF it makes.
#include "listfixture.h"

#include "lists/listreport.h"

#include <QBuffer>
#include <QFile>
#include <QPdfWriter>
#include <QTemporaryDir>
#include <QTest>

namespace {
// A list of n rows: names "Part 0000".., a level, a price and a comment; every third row ticked.
QStringList rowsTable(int n, const QString& comment = QStringLiteral("plain"), int offset = 0) {
    QStringList s{"CREATE TABLE T (NAME VARCHAR(50), LVL INTEGER, PRICE DOUBLE, COMMENTS VARCHAR(255), "
                  "\"CHECK\" BOOLEAN)",
                  "BEGIN"};
    for (int i = 0; i < n; ++i)
        s << QStringLiteral("INSERT INTO T VALUES ('Part %1', %2, %3, '%4', %5)")
                 .arg(i + offset, 4, 10, QLatin1Char('0'))
                 .arg(i % 50)
                 .arg(QString::number(1000.5 * i, 'f', 1))
                 .arg(comment)
                 .arg(i % 3 == 0 ? 1 : 0);
    return s << QStringLiteral("COMMIT");
}

ListReportPlan plan(const QList<int>& columns) {
    ListReportPlan s;
    s.title = QStringLiteral("Components");
    s.subtitle = QStringLiteral("Level: 3");
    s.columns = columns;
    s.printedOn = QStringLiteral("Printed 2024-05-01 10:00:00");
    return s;
}

// A PDF page of the given size, measured at print resolution; nothing is written.
struct Page {
    QBuffer sink;
    QPdfWriter writer{&sink};
    explicit Page(QPageLayout::Orientation o = QPageLayout::Portrait) {
        sink.open(QIODevice::WriteOnly);
        writer.setResolution(300);
        writer.setPageSize(QPageSize(QPageSize::A4));
        writer.setPageOrientation(o);
    }
};

QStringList texts(const QList<ReportItem>& items, ReportItem::Kind kind) {
    QStringList out;
    for (const ReportItem& i : items)
        if (i.kind == kind)
            out << i.text;
    return out;
}
} // namespace

class TestListReport : public QObject {
    Q_OBJECT
private Q_SLOTS:
    // Every row is printed once, in the list's order, pages filled up to the foot; the first page holds
    // fewer rows because of the title block.
    void pagesCoverEveryRowOnce_data() {
        QTest::addColumn<int>("rows");
        QTest::addColumn<int>("pages");
        for (const auto& [rows, pages] : {std::pair{0, 1}, {1, 1}, {700, 13}})
            QTest::addRow("%d rows", rows) << rows << pages;
    }
    void pagesCoverEveryRowOnce() {
        QFETCH(int, rows);
        QFETCH(int, pages);
        LOAD_LIST(m, "SELECT * FROM T ORDER BY NAME", rowsTable(rows));
        Page page;
        const ListReportLayout layout(m, plan({0, 1, 2}), page.writer);
        QCOMPARE(layout.pageCount(), pages);
        int next = 0;
        for (const ReportPage& p : layout.pages()) {
            QCOMPARE(p.firstRow, next);
            next += p.rowCount;
        }
        QCOMPARE(next, rows);
        // No row runs into the foot of its page.
        for (int p = 0; p < layout.pageCount(); ++p) {
            const QList<ReportItem> items = layout.pageItems(p);
            double footTop = 1e9, lowestCell = 0;
            for (const ReportItem& i : items) {
                if (i.kind == ReportItem::Footer)
                    footTop = i.rect.top();
                if (i.kind == ReportItem::Cell)
                    lowestCell = std::max(lowestCell, i.rect.bottom());
            }
            QVERIFY2(lowestCell < footTop, qPrintable(QString::number(p)));
        }
        if (rows == 0) { // an empty list says so
            QCOMPARE(texts(layout.pageItems(0), ReportItem::Cell), QStringList{"No records are listed."});
            QCOMPARE(texts(layout.pageItems(0), ReportItem::Subtitle), QStringList{"Level: 3    0 records"});
        }
    }

    // The title block on the first page, a running head on the others, the headers and page number on
    // every page, the rows of each page in the list's (sorted) order.
    void everyPageHasHeadersAndItsNumber() {
        LOAD_LIST(m, "SELECT NAME, LVL, PRICE, \"CHECK\" FROM T", rowsTable(150));
        // Sorted by price, highest first: the report follows the list, not the table.
        m.sortByColumn(2);
        if (m.text(0, 2) != "149074.5")
            m.sortByColumn(2);
        Page page;
        const ListReportLayout layout(m, plan({2, 0, ListReportPlan::TickColumn}), page.writer);
        QCOMPARE(layout.pageCount(), 3);
        for (int p = 0; p < layout.pageCount(); ++p) {
            const QList<ReportItem> items = layout.pageItems(p);
            QCOMPARE(texts(items, ReportItem::Header), (QStringList{"PRICE", "NAME", "Ticked"}));
            QCOMPARE(texts(items, ReportItem::PageNumber), QStringList{QString("Page %1 of 3").arg(p + 1)});
            QCOMPARE(texts(items, ReportItem::Footer), QStringList{"Printed 2024-05-01 10:00:00"});
            QCOMPARE(texts(items, ReportItem::Title).size(), p == 0 ? 1 : 0);
            QCOMPARE(texts(items, ReportItem::RunningHead).size(), p == 0 ? 0 : 1);
            const QStringList cells = texts(items, ReportItem::Cell);
            const ReportPage& rows = layout.pages()[p];
            QCOMPARE(cells.size(), rows.rowCount * 3);
            for (int r = 0; r < rows.rowCount; ++r) {
                const int row = rows.firstRow + r;
                QCOMPARE(cells[3 * r], m.text(row, 2));
                QCOMPARE(cells[3 * r + 1], m.name(row));
                QCOMPARE(cells[3 * r + 2], m.isChecked(row) ? QString("Yes") : QString());
            }
        }
        const QList<ReportItem> first = layout.pageItems(0);
        QCOMPARE(texts(first, ReportItem::Title), QStringList{"Components"});
        QCOMPARE(texts(first, ReportItem::Subtitle), QStringList{"Level: 3    150 records"});
        QCOMPARE(texts(first, ReportItem::Cell).first(), QString("149074.5"));
        QCOMPARE(texts(layout.pageItems(1), ReportItem::RunningHead), QStringList{"Components - Level: 3"});
    }

    // Columns that fit keep their natural widths; when they do not, the narrow ones stay whole, the
    // wide ones share the rest, long texts are cut with an ellipsis and nothing passes the page's edge.
    void widthsFitThePage() {
        const QString longComment =
            QString("A very long comment about where this part is found ").repeated(6);
        LOAD_LIST(m, "SELECT NAME, LVL, COMMENTS FROM T", rowsTable(5, longComment));
        Page portrait;
        const ListReportLayout fitting(m, plan({0, 1}), portrait.writer);
        QVERIFY(!fitting.narrowed());
        const ListReportLayout cut(m, plan({0, 1, 2}), portrait.writer);
        QVERIFY(cut.narrowed());
        QCOMPARE(cut.columnWidths()[0], fitting.columnWidths()[0]);
        QCOMPARE(cut.columnWidths()[1], fitting.columnWidths()[1]);
        const QSizeF size = portrait.writer.pageLayout().paintRectPixels(300).size();
        double total = 0;
        for (double w : cut.columnWidths())
            total += w;
        QVERIFY(total <= size.width() + 0.5);
        // The headers keep their room: what a column holds can still be read.
        QCOMPARE(texts(cut.pageItems(0), ReportItem::Header), (QStringList{"NAME", "LVL", "COMMENTS"}));
        for (const ReportItem& i : cut.pageItems(0)) {
            QVERIFY(i.rect.right() <= size.width() + 0.5);
            if (i.kind == ReportItem::Cell && i.text.startsWith("A very long"))
                QVERIFY2(i.text.endsWith(QChar(0x2026)) && i.text.size() < longComment.size(),
                         qPrintable(i.text));
        }
    }

    // The report painted into a PDF file has the pages the layout counted; a file that cannot be
    // written is reported, not ignored.
    void paintsEveryPageIntoAPdf() {
        LOAD_LIST(m, "SELECT * FROM T", rowsTable(150));
        QTemporaryDir dir;
        const QString file = dir.filePath("list.pdf");
        int pages = 0;
        {
            QPdfWriter writer(file);
            writer.setPageSize(QPageSize(QPageSize::A4));
            pages = ListReportLayout(m, plan({0, 1, 2, 3}), writer).pageCount();
            QVERIFY(PaintListReport(m, plan({0, 1, 2, 3}), writer));
        }
        QFile pdf(file);
        QVERIFY(pdf.open(QIODevice::ReadOnly));
        const QByteArray data = pdf.readAll();
        QVERIFY(data.startsWith("%PDF"));
        QCOMPARE(int(data.count("/Type /Page\n")) + int(data.count("/Type /Page\r")) +
                     int(data.count("/Type /Page ")) + int(data.count("/Type /Page/")) +
                     int(data.count("/Type /Page>")),
                 pages);
        QPdfWriter nowhere(dir.filePath("missing/folder/list.pdf"));
        QVERIFY(!PaintListReport(m, plan({0}), nowhere));
    }
};

QTEST_MAIN(TestListReport)
#include "tst_listreport.moc"
