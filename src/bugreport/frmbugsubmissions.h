#pragma once
// The bug report window: the user's name, address, the kind of problem, what happened and how to make
// it happen again, with the facts of the machine filled in; Send checks the report and mails it.
#include "bugreport/bugmessage.h"

#include <QWidget>

class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

class frmBugSubmissions : public QWidget {
    Q_OBJECT
public:
    explicit frmBugSubmissions(QWidget* parent = nullptr);
    ~frmBugSubmissions() override; // the unload: the name and address are remembered

    // The report as filled in now.
    BugReport report() const;
    void cmdSend_Click();

    QLabel* lblName = nullptr;
    QLabel* lblEMail = nullptr;
    QLabel* lblType = nullptr;
    QLabel* lblDescription = nullptr;
    QLineEdit* txtName = nullptr;
    QLineEdit* txtEMail = nullptr;
    QComboBox* cmbType = nullptr;
    QPlainTextEdit* txtDescription = nullptr;
    QPlainTextEdit* txtStepsToRecreate = nullptr;
    QLineEdit* txtErrorCodes = nullptr;
    QLineEdit* txtOSInfo = nullptr;
    QLineEdit* txtCPU = nullptr;
    QLineEdit* txtRAM = nullptr;
    QLineEdit* txtFreeMem = nullptr;
    QLineEdit* txtADOVer = nullptr;
    QPushButton* cmdSend = nullptr;
    QPushButton* cmdCancel = nullptr;

private:
    void Form_Load();
};

// Opens the bug report window (one at a time, owned by the main window) without waiting for it. A
// description or error number given fills those fields when the window has no description yet.
frmBugSubmissions* OpenBugSubmissions(const QString& description = QString(),
                                      const QString& number = QString());
