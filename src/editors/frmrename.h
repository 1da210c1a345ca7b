#pragma once
// The dialog that asks for a record's new name (Copy and Rename). OK with an empty name, or with a
// name that holds two single quotes together, is refused with a message and the dialog stays open.
#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;

class frmRename : public QDialog {
    Q_OBJECT
public:
    // caption: the window title ("Copy", "Rename"); oldName is shown and offered as the start text.
    frmRename(const QString& caption, const QString& oldName, QWidget* owner = nullptr);

    // The name as accepted (blanks at either end removed); empty until OK succeeds.
    QString newName() const { return m_name; }

    // Shows the dialog and waits; returns the accepted name, or an empty text when cancelled.
    static QString Ask(const QString& caption, const QString& oldName, QWidget* owner = nullptr);

    QLabel* lblPrompt = nullptr;
    QLineEdit* txtName = nullptr;
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdCancel = nullptr;

    void cmdOK_Click();

private:
    QString m_name;
};
