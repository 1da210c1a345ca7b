#pragma once
// The progress window: a small window owned by the main window with a caption, a line saying what is
// being done, a bar and, for operations that may be stopped, a Cancel button. Updates let pending
// window messages run, so the program keeps drawing while the work goes on in the same thread.
#include "core/progress.h"

#include <QDialog>

class QLabel;
class QProgressBar;
class QPushButton;

class frmProgress : public QDialog {
    Q_OBJECT
public:
    frmProgress(const QString& caption, bool cancellable, QWidget* parent = nullptr);

    QLabel* lblCaption = nullptr;
    QLabel* lblStep = nullptr;
    QProgressBar* prgBar = nullptr;
    QPushButton* cmdCancel = nullptr;

    bool cancelled() const { return m_cancelled; }

    // The Progress of an operation shown in this window; the window closes when it is destroyed.
    class Reporter;

protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override;

private:
    bool m_cancelled = false;
};

// Makes every StartProgress show the progress window (owned by OwnerWindow()).
void InstallProgressWindow();
