#pragma once
// The picture picker: every item icon in a grid, numbered; the chosen number becomes the record's
// PIC_ID.
//
//   const long pic = DisplayItemIconDialogbox(current, this);   // -1 when cancelled
#include <QDialog>

class QListWidget;
class QPushButton;

class frmPicSelect : public QDialog {
    Q_OBJECT
public:
    explicit frmPicSelect(long current, QWidget* parent = nullptr);
    // The picture chosen, -1 when none is.
    long picture() const;
    void select(long picture);

    QListWidget* lstIcons = nullptr;
    QPushButton *cmdOK = nullptr, *cmdCancel = nullptr;
};

long DisplayItemIconDialogbox(long current, QWidget* parent = nullptr);
