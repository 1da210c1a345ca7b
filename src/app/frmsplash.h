#pragma once
// The splash window: the splash picture with a progress bar for the preloading of the item icons.
#include <QWidget>

class QLabel;
class QProgressBar;

class frmSplash : public QWidget {
    Q_OBJECT
public:
    // The owner is the main window; the splash is a window of its own, centred on the screen. When the
    // owner is shown while the splash is still up (no preloading), the splash closes itself.
    explicit frmSplash(QWidget* owner);
    ~frmSplash() override;

    QProgressBar* progressBar() const { return prgLoad; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLabel* imgSplash = nullptr;
    QLabel* lblVersion = nullptr;
    QProgressBar* prgLoad = nullptr;
};

// The splash while it is loaded, else nullptr.
frmSplash* splashWindow();
