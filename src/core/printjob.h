#pragma once
// Every print of the program goes through here: to the printer, or through a preview first when the
// option "PrintPreview" is on. Where no printer is installed the user is offered a PDF file of their
// own choosing instead (through the prompt service); no file is ever written without that choice.
#include <QString>

#include <functional>

class QPrinter;
class QWidget;

// Paints the whole document onto the printer, starting new pages itself (QPrinter::newPage). It may
// be called more than once (the preview repaints). Returns false when painting failed.
using PaintDocument = std::function<bool(QPrinter& printer)>;

struct PrintRequest {
    QString title;       // the document's name; also proposes the PDF file's name
    PaintDocument paint; // the document
    bool landscape = false;
};

enum class PrintOutcome { Printed, SavedPdf, Cancelled, Failed };

// Prints as the options say. The preview is modal; its Print button prints (or offers the PDF file).
PrintOutcome PrintDocumentWith(const PrintRequest& request, QWidget* parent);

namespace printjob {
// Whether a printer is installed. Tests replace the answer; an empty function restores the system's.
bool printerInstalled();
void setPrinterCheck(std::function<bool()> check);
// Where the preview window is shown: tests look at it and close it. Called after the preview is
// built and before it runs; an empty function restores the default (nothing).
void setPreviewHook(std::function<void(QWidget* preview)> hook);
// The PDF file the user chose for a print without a printer: asks through the prompt service and
// adds ".pdf" when the name has no suffix. Empty when the user cancelled.
QString choosePdfFile(const QString& title);
// A file name proposed from a document's title: characters that no file system takes are dropped.
QString proposedPdfName(const QString& title);
} // namespace printjob
