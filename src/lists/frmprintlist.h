#pragma once
// Print Filtered List: the user picks the report's title, the columns and their order, and the page
// orientation; the list is then printed as it is filtered and sorted (through the preview when the
// option "PrintPreview" is on, to a PDF file of the user's choosing when no printer is installed).
#include "lists/listreport.h"

#include <QDialog>

class QHeaderView;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPushButton;
class QRadioButton;

class frmPrintList : public QDialog {
    Q_OBJECT
public:
    // header: the list's header, whose visual order and hidden columns the choice starts from (may be
    // null: model order, every column). key: what the choice is remembered under (the category).
    frmPrintList(const ListModel& model, const QHeaderView* header, const QString& title,
                 const QString& subtitle, const QString& key, QWidget* parent = nullptr);

    // The report as chosen now.
    ListReportPlan plan() const;
    bool landscape() const;
    // Checks the choice, remembers it and prints; the dialog closes unless the user has to choose
    // again (no column ticked, or a very long print not confirmed).
    void cmdPrint_Click();

    QLineEdit* txtTitle = nullptr;
    QLineEdit* txtSubtitle = nullptr;
    QListWidget* lstColumns = nullptr;
    QPushButton* cmdUp = nullptr;
    QPushButton* cmdDown = nullptr;
    QPushButton* cmdAll = nullptr;
    QPushButton* cmdNone = nullptr;
    QRadioButton* optPortrait = nullptr;
    QRadioButton* optLandscape = nullptr;
    QLabel* lblPages = nullptr;
    QPushButton* cmdPrint = nullptr;
    QPushButton* cmdCancel = nullptr;

private:
    void fillColumns(const QHeaderView* header);
    void moveCurrent(int by);
    void updatePages();
    void remember() const;

    const ListModel& m_model;
    QString m_key;
};

// Opens the dialog over the main list (modal). The caller has checked that the list has rows.
void PrintFilteredList(const ListModel& model, const QHeaderView* header, const QString& title,
                       const QString& subtitle, const QString& key, QWidget* parent);
