#pragma once
// The search box of the main window: on every key press the list shows only the rows whose name
// contains the text (without regard to case), on top of the category and filters chosen. Escape
// clears it; Down or Enter moves into the list.
#include <functional>

class QAbstractItemView;
class QBoxLayout;
class QLineEdit;
class QWidget;
class ListModel;

// Adds the caption and the box ("txtSearch") to the row of filters.
QLineEdit* NewListSearchBox(QWidget* parent, QBoxLayout* row);
// Narrows the model on every change of the box; shown is told the number of rows then shown.
void AttachListSearch(QLineEdit* box, QAbstractItemView* list, ListModel* model,
                      std::function<void(int shown)> shown);
