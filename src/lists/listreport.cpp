#include "lists/listreport.h"

#include "core/progress.h"
#include "lists/listmodel.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {
// Type sizes in points: the title, the filter line, the table, the foot of the page.
constexpr double TitlePoints = 15, SubtitlePoints = 10, BodyPoints = 9, FootPoints = 8;
// Rows measured for the column widths: every row of an ordinary list; for a very long one the first
// rows and an even spread of the rest, so that the widths come quickly and still fit nearly all texts.
constexpr int MeasureAll = 3000, MeasureHead = 1000, MeasureSpread = 2000;

QFont sized(double points, bool bold = false, bool italic = false) {
    QFont f;
    f.setPointSizeF(points);
    f.setBold(bold);
    f.setItalic(italic);
    // Widths measured for the page must be the widths printed: no hinting towards the screen's grid.
    f.setHintingPreference(QFont::PreferNoHinting);
    return f;
}

QSizeF printableSize(QPagedPaintDevice& device) {
    return device.pageLayout().paintRectPixels(device.logicalDpiX()).size();
}

// Widths that fit `available`: narrow columns keep their natural width, the wide ones share what is
// left equally (so one long comment column cannot push every other column off the page).
QList<double> shareWidths(const QList<double>& natural, double available) {
    QList<int> order(natural.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&](int a, int b) { return natural[a] < natural[b]; });
    QList<double> out = natural;
    double left = available;
    qsizetype remaining = natural.size();
    for (int i : order) {
        out[i] = std::min(natural[i], left / double(remaining));
        left -= out[i];
        --remaining;
    }
    return out;
}

// The same, but every column first gets room for its header (when all headers fit), so that what a
// column holds can always be read; only the space beyond the headers is shared.
QList<double> fitWidths(const QList<double>& natural, const QList<double>& headers, double available,
                        bool* narrowed) {
    const double total = std::accumulate(natural.begin(), natural.end(), 0.0);
    *narrowed = total > available;
    if (!*narrowed)
        return natural;
    QList<double> floors(natural.size()), extra(natural.size());
    for (qsizetype i = 0; i < natural.size(); ++i) {
        floors[i] = std::min(natural[i], headers[i]);
        extra[i] = natural[i] - floors[i];
    }
    const double floorTotal = std::accumulate(floors.begin(), floors.end(), 0.0);
    if (floorTotal > available)
        return shareWidths(natural, available);
    QList<double> out = shareWidths(extra, available - floorTotal);
    for (qsizetype i = 0; i < out.size(); ++i)
        out[i] += floors[i];
    return out;
}
} // namespace

ListReportLayout::Face::Face(const QFont& f, QPaintDevice& device) : font(f), metrics(f, &device) {}

ListReportLayout::ListReportLayout(const ListModel& model, const ListReportPlan& plan,
                                   QPagedPaintDevice& device)
    : ListReportLayout(model, plan, device, printableSize(device)) {}

ListReportLayout::ListReportLayout(const ListModel& model, const ListReportPlan& plan, QPaintDevice& device,
                                   const QSizeF& page)
    : m_model(model), m_plan(plan), m_title(sized(TitlePoints, true), device),
      m_subtitle(sized(SubtitlePoints), device), m_body(sized(BodyPoints), device),
      m_bold(sized(BodyPoints, true), device), m_foot(sized(FootPoints, false, true), device) {
    layOut(page);
}

QString ReportColumnCaption(const ListModel& model, int column) {
    if (column == ListReportPlan::TickColumn)
        return QStringLiteral("Ticked");
    return model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
}

QString ListReportLayout::cellText(int row, int printColumn) const {
    const int column = m_plan.columns[printColumn];
    if (column == ListReportPlan::TickColumn)
        return m_model.isChecked(row) ? QStringLiteral("Yes") : QString();
    return m_model.text(row, column);
}

void ListReportLayout::layOut(const QSizeF& page) {
    m_page = page;
    const int rows = m_model.rowCount();
    const int cols = int(m_plan.columns.size());
    m_padding = m_body.metrics.height() * 0.3;
    m_rowHeight = m_body.metrics.lineSpacing() * 1.3;
    m_headerHeight = m_bold.metrics.lineSpacing() * 1.5;
    m_titleBlock = m_title.metrics.lineSpacing() * 1.3 + m_subtitle.metrics.lineSpacing() * 1.2 +
                   m_body.metrics.lineSpacing() * 0.6;
    m_runningBlock = m_foot.metrics.lineSpacing() * 1.8;
    m_footerBlock = m_foot.metrics.lineSpacing() * 2.2;

    // Natural widths: the widest header or measured cell, padded on both sides.
    QList<double> natural(cols, 0.0), headers(cols, 0.0);
    for (int c = 0; c < cols; ++c) {
        const int column = m_plan.columns[c];
        m_headers.append(ReportColumnCaption(m_model, column));
        m_right.append(column != ListReportPlan::TickColumn &&
                       m_model.columnTag(column) == ListModel::NumberTag);
        natural[c] = m_bold.metrics.horizontalAdvance(m_headers[c]);
        headers[c] = std::ceil(natural[c] + 2 * m_padding);
    }
    auto measure = [&](int row) {
        for (int c = 0; c < cols; ++c)
            natural[c] = std::max(natural[c], m_body.metrics.horizontalAdvance(cellText(row, c)));
    };
    if (rows <= MeasureAll) {
        for (int r = 0; r < rows; ++r)
            measure(r);
    } else {
        for (int r = 0; r < MeasureHead; ++r)
            measure(r);
        const double step = double(rows - MeasureHead) / MeasureSpread;
        for (int i = 0; i < MeasureSpread; ++i)
            measure(MeasureHead + int(i * step));
    }
    for (double& w : natural)
        w = std::ceil(w + 2 * m_padding);
    m_widths = fitWidths(natural, headers, page.width(), &m_narrowed);

    // Rows per page: the first page carries the title block, the others a one-line running head.
    const double table = page.height() - m_headerHeight - m_footerBlock;
    const int firstRows = std::max(1, int((table - m_titleBlock) / m_rowHeight));
    const int laterRows = std::max(1, int((table - m_runningBlock) / m_rowHeight));
    int row = 0;
    m_pages.append({0, std::min(rows, firstRows)});
    row = m_pages.last().rowCount;
    while (row < rows) {
        m_pages.append({row, std::min(rows - row, laterRows)});
        row += m_pages.last().rowCount;
    }
}

QList<ReportItem> ListReportLayout::pageItems(int page) const {
    QList<ReportItem> items;
    if (page < 0 || page >= pageCount())
        return items;
    const double width = m_page.width();
    const double tableWidth = std::accumulate(m_widths.begin(), m_widths.end(), 0.0);
    auto text = [&](ReportItem::Kind kind, const QRectF& rect, const QString& s, bool right = false) {
        const QString shown = faceOf(kind).metrics.elidedText(s, Qt::ElideRight, rect.width());
        items.append({kind, rect, shown, right});
    };
    auto rule = [&](double y, double w) { items.append({ReportItem::Rule, QRectF(0, y, w, 0), QString()}); };

    double y = 0;
    if (page == 0) {
        const double titleLine = m_title.metrics.lineSpacing() * 1.3;
        text(ReportItem::Title, QRectF(0, 0, width, titleLine), m_plan.title);
        const int rows = m_model.rowCount();
        QString sub = rows == 1 ? QStringLiteral("1 record") : QStringLiteral("%L1 records").arg(rows);
        if (!m_plan.subtitle.isEmpty())
            sub = m_plan.subtitle + QStringLiteral("    ") + sub;
        text(ReportItem::Subtitle, QRectF(0, titleLine, width, m_subtitle.metrics.lineSpacing() * 1.2), sub);
        y = m_titleBlock;
    } else {
        QString head = m_plan.title;
        if (!m_plan.subtitle.isEmpty())
            head += QStringLiteral(" - ") + m_plan.subtitle;
        text(ReportItem::RunningHead, QRectF(0, 0, width, m_foot.metrics.lineSpacing() * 1.3), head);
        y = m_runningBlock;
    }

    // The column headers, on every page.
    items.append({ReportItem::Shade, QRectF(0, y, tableWidth, m_headerHeight), QString()});
    double x = 0;
    for (int c = 0; c < m_widths.size(); ++c) {
        text(ReportItem::Header, QRectF(x + m_padding, y, m_widths[c] - 2 * m_padding, m_headerHeight),
             m_headers[c], m_right[c]);
        x += m_widths[c];
    }
    y += m_headerHeight;
    rule(y, tableWidth);

    const ReportPage& p = m_pages[page];
    if (m_model.rowCount() == 0)
        text(ReportItem::Cell, QRectF(m_padding, y, width - 2 * m_padding, m_rowHeight),
             QStringLiteral("No records are listed."));
    for (int r = p.firstRow; r < p.firstRow + p.rowCount; ++r) {
        // Every other row lightly shaded, counted over the whole list so the pattern runs on.
        if (r % 2 == 1)
            items.append({ReportItem::Shade, QRectF(0, y, tableWidth, m_rowHeight), QString()});
        x = 0;
        for (int c = 0; c < m_widths.size(); ++c) {
            text(ReportItem::Cell, QRectF(x + m_padding, y, m_widths[c] - 2 * m_padding, m_rowHeight),
                 cellText(r, c), m_right[c]);
            x += m_widths[c];
        }
        y += m_rowHeight;
    }
    rule(y, tableWidth);

    // The foot: the date on the left, the page number on the right.
    const double footTop = m_page.height() - m_footerBlock;
    rule(footTop + m_foot.metrics.lineSpacing() * 0.6, width);
    const QRectF footLine(0, footTop + m_foot.metrics.lineSpacing() * 0.8, width,
                          m_foot.metrics.lineSpacing() * 1.3);
    text(ReportItem::Footer, footLine, m_plan.printedOn);
    text(ReportItem::PageNumber, footLine, QStringLiteral("Page %1 of %2").arg(page + 1).arg(pageCount()),
         true);
    return items;
}

const ListReportLayout::Face& ListReportLayout::faceOf(ReportItem::Kind kind) const {
    switch (kind) {
    case ReportItem::Title:
        return m_title;
    case ReportItem::Subtitle:
        return m_subtitle;
    case ReportItem::Header:
        return m_bold;
    case ReportItem::RunningHead:
    case ReportItem::Footer:
    case ReportItem::PageNumber:
        return m_foot;
    default:
        return m_body;
    }
}

void ListReportLayout::paintPage(QPainter& painter, int page) const {
    const QColor ink(0, 0, 0), grey(90, 90, 90), shade(236, 238, 242);
    QPen line(QColor(120, 120, 120));
    line.setWidthF(std::max(1.0, painter.device()->logicalDpiX() / 200.0));
    for (const ReportItem& item : pageItems(page)) {
        switch (item.kind) {
        case ReportItem::Shade:
            painter.fillRect(item.rect, shade);
            break;
        case ReportItem::Rule:
            painter.setPen(line);
            painter.drawLine(item.rect.topLeft(), item.rect.topRight());
            break;
        default: {
            const bool quiet = item.kind == ReportItem::Subtitle || item.kind == ReportItem::RunningHead ||
                               item.kind == ReportItem::Footer || item.kind == ReportItem::PageNumber;
            painter.setPen(quiet ? grey : ink);
            painter.setFont(faceOf(item.kind).font);
            painter.drawText(item.rect,
                             Qt::AlignVCenter | (item.rightAligned ? Qt::AlignRight : Qt::AlignLeft),
                             item.text);
        }
        }
    }
}

bool PaintListReport(const ListModel& model, const ListReportPlan& plan, QPagedPaintDevice& device,
                     Progress* progress) {
    QPainter painter;
    if (!painter.begin(&device))
        return false;
    const ListReportLayout layout(model, plan, device);
    if (progress)
        progress->setRange(layout.pageCount());
    for (int page = 0; page < layout.pageCount(); ++page) {
        if (page > 0 && !device.newPage())
            return false;
        layout.paintPage(painter, page);
        if (progress)
            progress->setValue(page + 1);
    }
    return painter.end();
}

namespace {
// A page of the size the printer most likely has, measured at print resolution without printing.
template <typename F> auto onReferencePage(bool landscape, F f) {
    QBuffer sink;
    sink.open(QIODevice::WriteOnly);
    QPdfWriter writer(&sink);
    writer.setResolution(600);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageOrientation(landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
    return f(writer);
}
} // namespace

bool ListReportFitsAcross(const ListModel& model, const ListReportPlan& plan, bool landscape) {
    return onReferencePage(landscape,
                           [&](QPdfWriter& w) { return !ListReportLayout(model, plan, w).narrowed(); });
}

int ListReportPageCount(const ListModel& model, const ListReportPlan& plan, bool landscape) {
    return onReferencePage(landscape,
                           [&](QPdfWriter& w) { return ListReportLayout(model, plan, w).pageCount(); });
}
