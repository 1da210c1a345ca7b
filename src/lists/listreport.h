#pragma once
// The main list printed as a report: a title block (the category and its filters), the columns the
// user chose in the order chosen, the rows as the list shows them (filtered and sorted), the column
// headers repeated at the top of every page, and "Page n of N" at the foot.
//
// The layout is worked out without painting: each page is a list of placed texts and rules, so what
// goes where can be checked directly; painting only draws those items onto a printer or PDF file.
#include <QFont>
#include <QFontMetricsF>
#include <QList>
#include <QRectF>
#include <QString>

class ListModel;
class Progress;
class QPagedPaintDevice;
class QPaintDevice;
class QPainter;

struct ListReportPlan {
    // The tick of a row, printed as a column of its own ("Yes" or empty) when it is chosen.
    static constexpr int TickColumn = -1;

    QString title;      // first line of the title block, e.g. "Equipment"
    QString subtitle;   // the filters as a line of text; may be empty
    QList<int> columns; // model columns (or TickColumn) in print order
    QString printedOn;  // the date at the foot of every page
};

// One thing drawn on a page, in device units of the page's printable area.
struct ReportItem {
    enum Kind { Title, Subtitle, RunningHead, Header, Cell, Footer, PageNumber, Rule, Shade };
    Kind kind;
    QRectF rect;
    QString text; // empty for rules and shades
    bool rightAligned = false;
};

struct ReportPage {
    int firstRow = 0; // view rows firstRow .. firstRow + rowCount - 1
    int rowCount = 0;
};

class ListReportLayout {
public:
    // Lays the report out for pages of the device's printable size (QPagedPaintDevice::pageLayout)
    // with fonts measured for the device.
    ListReportLayout(const ListModel& model, const ListReportPlan& plan, QPagedPaintDevice& device);
    // The same for a page of the given size on any device (the size in that device's units).
    ListReportLayout(const ListModel& model, const ListReportPlan& plan, QPaintDevice& device,
                     const QSizeF& page);

    int pageCount() const { return int(m_pages.size()); }
    const QList<ReportPage>& pages() const { return m_pages; }
    // Column widths in print order; they never add up to more than the page's width.
    const QList<double>& columnWidths() const { return m_widths; }
    // True when the columns had to be narrowed (long texts end in "...") to fit the page across.
    bool narrowed() const { return m_narrowed; }
    // Every item of one page (0-based).
    QList<ReportItem> pageItems(int page) const;
    // Draws one page onto a painter that is already active on the device.
    void paintPage(QPainter& painter, int page) const;

private:
    struct Face {
        QFont font;
        QFontMetricsF metrics;
        explicit Face(const QFont& f, QPaintDevice& device);
    };
    void layOut(const QSizeF& page);
    const Face& faceOf(ReportItem::Kind kind) const;
    QString cellText(int row, int printColumn) const;

    const ListModel& m_model;
    ListReportPlan m_plan;
    QSizeF m_page;
    QList<double> m_widths;
    QList<bool> m_right;
    QList<QString> m_headers;
    QList<ReportPage> m_pages;
    bool m_narrowed = false;
    Face m_title, m_subtitle, m_body, m_bold, m_foot;
    double m_titleBlock = 0, m_runningBlock = 0, m_headerHeight = 0, m_rowHeight = 0, m_footerBlock = 0,
           m_padding = 0;
};

// Paints the whole report onto the device, a page at a time, reporting each page to progress (may be
// null). False when painting could not start (a file that cannot be written, a printer error).
bool PaintListReport(const ListModel& model, const ListReportPlan& plan, QPagedPaintDevice& device,
                     Progress* progress = nullptr);

// The caption of a printed column: the list's header text, or "Ticked" for the tick.
QString ReportColumnCaption(const ListModel& model, int column);

// Whether the columns fit across a page of that size and orientation without being narrowed (the
// column chooser proposes landscape when they fit only that way).
bool ListReportFitsAcross(const ListModel& model, const ListReportPlan& plan, bool landscape);
// The number of pages the report takes on such a page.
int ListReportPageCount(const ListModel& model, const ListReportPlan& plan, bool landscape);
