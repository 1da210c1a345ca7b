#include "core/printjob.h"

#include "core/prompt.h"
#include "core/settings.h"

#include <QDialog>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPrinterInfo>
#include <QPushButton>
#include <QVBoxLayout>

namespace printjob {
namespace {
std::function<bool()>& printerCheck() {
    static std::function<bool()> check;
    return check;
}
std::function<void(QWidget*)>& previewHook() {
    static std::function<void(QWidget*)> hook;
    return hook;
}
} // namespace

bool printerInstalled() {
    if (printerCheck())
        return printerCheck()();
    return !QPrinterInfo::defaultPrinter().isNull() || !QPrinterInfo::availablePrinters().isEmpty();
}

void setPrinterCheck(std::function<bool()> check) {
    printerCheck() = std::move(check);
}

void setPreviewHook(std::function<void(QWidget*)> hook) {
    previewHook() = std::move(hook);
}

QString proposedPdfName(const QString& title) {
    QString name;
    for (const QChar c : title) {
        if (c.unicode() < 32 || QStringLiteral("\\/:*?\"<>|").contains(c))
            continue;
        name += c;
    }
    name = name.simplified();
    while (name.endsWith(QLatin1Char('.')))
        name.chop(1);
    return (name.isEmpty() ? QStringLiteral("VOSK") : name) + QStringLiteral(".pdf");
}

QString choosePdfFile(const QString& title) {
    QString file = prompts().saveFile(QStringLiteral("No printer is installed: save as a PDF file"),
                                      QStringLiteral("PDF Files (*.pdf)|*.pdf"), proposedPdfName(title));
    if (!file.isEmpty() && QFileInfo(file).suffix().isEmpty())
        file += QStringLiteral(".pdf");
    return file;
}

} // namespace printjob

namespace {

void setUp(QPrinter& printer, const PrintRequest& request) {
    printer.setDocName(request.title);
    printer.setCreator(appTitle());
    printer.setPageOrientation(request.landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
}

// Prints to the printer, or to a PDF file the user chooses when there is none.
PrintOutcome output(const PrintRequest& request) {
    if (printjob::printerInstalled()) {
        QPrinter printer(QPrinter::HighResolution);
        setUp(printer, request);
        if (request.paint(printer))
            return PrintOutcome::Printed;
        MsgBox(QStringLiteral("The document could not be printed. Please check the printer."),
               vb::Exclamation, QStringLiteral("Print"));
        return PrintOutcome::Failed;
    }
    const QString file = printjob::choosePdfFile(request.title);
    if (file.isEmpty())
        return PrintOutcome::Cancelled;
    // A folder that cannot be written is found out before anything is painted.
    QFile probe(file);
    bool writable = probe.open(QIODevice::WriteOnly);
    probe.close();
    if (writable) {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(file);
        setUp(printer, request);
        writable = request.paint(printer);
        if (writable)
            return PrintOutcome::SavedPdf;
    }
    MsgBox(QStringLiteral("The file ") + QDir::toNativeSeparators(file) +
               QStringLiteral(" could not be written. Please choose another folder."),
           vb::Exclamation, QStringLiteral("Print"));
    return PrintOutcome::Failed;
}

// The preview: the pages as they will print, with page turning and zoom; its Print button prints,
// or offers the PDF file when no printer is installed.
class PreviewDialog : public QDialog {
public:
    PreviewDialog(const PrintRequest& request, QWidget* parent) : QDialog(parent), m_request(request) {
        setObjectName(QStringLiteral("frmPrintPreview"));
        setWindowTitle(QStringLiteral("Print Preview - ") + request.title);
        m_printer.setResolution(96);
        setUp(m_printer, request);
        auto* column = new QVBoxLayout(this);
        auto* bar = new QHBoxLayout;
        auto button = [&](const QString& caption, const char* name) {
            auto* b = new QPushButton(caption, this);
            b->setObjectName(QLatin1String(name));
            b->setAutoDefault(false);
            bar->addWidget(b);
            return b;
        };
        cmdPrint = button(printjob::printerInstalled() ? QStringLiteral("&Print...")
                                                       : QStringLiteral("&Save as PDF..."),
                          "cmdPrint");
        QPushButton* previous = button(QStringLiteral("< Pre&vious"), "cmdPrevious");
        QPushButton* next = button(QStringLiteral("&Next >"), "cmdNext");
        QPushButton* fit = button(QStringLiteral("&Whole Page"), "cmdFit");
        QPushButton* zoomIn = button(QStringLiteral("Zoom &In"), "cmdZoomIn");
        QPushButton* zoomOut = button(QStringLiteral("Zoom &Out"), "cmdZoomOut");
        lblPage = new QLabel(this);
        lblPage->setObjectName(QStringLiteral("lblPage"));
        bar->addSpacing(12);
        bar->addWidget(lblPage);
        bar->addStretch(1);
        QPushButton* close = button(QStringLiteral("&Close"), "cmdClose");
        column->addLayout(bar);
        preview = new QPrintPreviewWidget(&m_printer, this);
        preview->setObjectName(QStringLiteral("pvwPages"));
        column->addWidget(preview, 1);
        resize(820, 900);

        connect(preview, &QPrintPreviewWidget::paintRequested, this,
                [this](QPrinter* p) { m_request.paint(*p); });
        connect(preview, &QPrintPreviewWidget::previewChanged, this, [this] { showPage(); });
        connect(previous, &QPushButton::clicked, this,
                [this] { preview->setCurrentPage(preview->currentPage() - 1); });
        connect(next, &QPushButton::clicked, this,
                [this] { preview->setCurrentPage(preview->currentPage() + 1); });
        connect(fit, &QPushButton::clicked, preview, &QPrintPreviewWidget::fitInView);
        connect(zoomIn, &QPushButton::clicked, this, [this] { preview->zoomIn(); });
        connect(zoomOut, &QPushButton::clicked, this, [this] { preview->zoomOut(); });
        connect(close, &QPushButton::clicked, this, &QDialog::reject);
        connect(cmdPrint, &QPushButton::clicked, this, [this] {
            outcome = output(m_request);
            if (outcome != PrintOutcome::Cancelled)
                accept();
        });
    }

    void showPage() {
        lblPage->setText(
            QStringLiteral("Page %1 of %2").arg(preview->currentPage()).arg(preview->pageCount()));
    }

    QPushButton* cmdPrint = nullptr;
    QLabel* lblPage = nullptr;
    QPrintPreviewWidget* preview = nullptr;
    PrintOutcome outcome = PrintOutcome::Cancelled;

private:
    PrintRequest m_request;
    QPrinter m_printer;
};

} // namespace

PrintOutcome PrintDocumentWith(const PrintRequest& request, QWidget* parent) {
    if (!opt::flag(opt::PrintPreview))
        return output(request);
    PreviewDialog preview(request, parent);
    preview.preview->updatePreview();
    preview.preview->fitInView();
    preview.showPage();
    if (printjob::previewHook())
        printjob::previewHook()(&preview);
    preview.exec();
    return preview.outcome;
}
