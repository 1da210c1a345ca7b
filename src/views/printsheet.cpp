#include "views/printsheet.h"

#include "core/printjob.h"

#include <QPrinter>
#include <QTextDocument>

void PrintHtml(const QString& title, const QString& html, QWidget* parent) {
    PrintRequest request;
    request.title = title;
    request.paint = [html](QPrinter& printer) {
        QTextDocument doc;
        doc.setHtml(html);
        doc.print(&printer);
        return true;
    };
    PrintDocumentWith(request, parent);
}
