#pragma once
// Printing a record window's document through the program's one print path (printer, preview, or a
// PDF file the user chooses when no printer is installed).
#include <QString>

class QWidget;

void PrintHtml(const QString& title, const QString& html, QWidget* parent);
