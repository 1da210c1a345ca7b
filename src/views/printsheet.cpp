#include "views/printsheet.h"

#include "core/prompt.h"
#include "core/settings.h"

#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QTextDocument>

void PrintHtml(const QString& title, const QString& html, QWidget* parent) {
    QTextDocument doc;
    doc.setHtml(html);
    if (opt::flag(opt::PrintPreview)) {
        QPrinter printer(QPrinter::HighResolution);
        printer.setDocName(title);
        QPrintPreviewDialog preview(&printer, parent);
        preview.setWindowTitle(title);
        QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview,
                         [&doc](QPrinter* p) { doc.print(p); });
        preview.exec();
        return;
    }
    if (QPrinterInfo::defaultPrinter().isNull() && QPrinterInfo::availablePrinters().isEmpty()) {
        MsgBox(QStringLiteral("No printer is installed. Please install a printer to print."), vb::Exclamation,
               QStringLiteral("Print"));
        return;
    }
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(title);
    doc.print(&printer);
}
