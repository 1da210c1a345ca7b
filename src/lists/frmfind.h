#pragma once
// The find dialog over the main list.
#include "lists/listmodel.h"

#include <QAbstractItemView>
#include <QDialog>
#include <QPointer>

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class FindStatus;

class frmFind : public QDialog {
    Q_OBJECT
public:
    // The list view shows the model; status gets "Finding...", "Ready" and the time taken (may be null).
    frmFind(QAbstractItemView* list, ListModel* model, FindStatus* status, QWidget* parent = nullptr);
    ~frmFind() override;

    // The dialog's search with its current settings (cmdFindNext); returns the found view row or -1.
    int FindItem();

    QLabel* lblFindWhat = nullptr;
    QLineEdit* txtSearchText = nullptr;
    QGroupBox* fraDirection = nullptr;
    QRadioButton* optUp = nullptr;
    QRadioButton* optDown = nullptr;
    QCheckBox* chkMatchCase = nullptr;
    QCheckBox* chkNamesOnly = nullptr;
    QCheckBox* chkMarkAll = nullptr;
    QPushButton* cmdFindNext = nullptr;
    QPushButton* cmdCancel = nullptr;

private:
    void chkMarkAll_Click();
    void txtSearchText_Change();
    void cmdFindNext_Click();

    QPointer<QAbstractItemView> m_list;
    QPointer<ListModel> m_model;
    FindStatus* m_status = nullptr;
};
