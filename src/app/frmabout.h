#pragma once
// The about box: version, database path and record counts, the Qt and SQLite versions, the licence.
#include <QDialog>

class QLabel;
class QPlainTextEdit;
class QPushButton;
class QTableWidget;

class frmAbout : public QDialog {
    Q_OBJECT
public:
    explicit frmAbout(QWidget* parent = nullptr);

    QLabel* lblTitle = nullptr;
    QLabel* lblDatabase = nullptr;
    QTableWidget* lstCounts = nullptr;
    QLabel* lblVersions = nullptr;
    QPlainTextEdit* txtLicence = nullptr;
    QPushButton* cmdOK = nullptr;
};
