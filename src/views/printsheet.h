#pragma once
// Printing a document: straight to the default printer, or through a preview when the option
// "PrintPreview" is on. Without a printer the user is told so and nothing is printed.
#include <QString>

class QWidget;

void PrintHtml(const QString& title, const QString& html, QWidget* parent);
