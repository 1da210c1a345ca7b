#include "core/frmprogress.h"

#include "core/childwindows.h"

#include <QApplication>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

frmProgress::frmProgress(const QString& caption, bool cancellable, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmProgress"));
    setWindowTitle(caption);
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
    setWindowModality(Qt::ApplicationModal);
    auto* column = new QVBoxLayout(this);
    lblCaption = new QLabel(caption, this);
    lblCaption->setObjectName(QStringLiteral("lblCaption"));
    QFont bold = lblCaption->font();
    bold.setBold(true);
    lblCaption->setFont(bold);
    lblStep = new QLabel(this);
    lblStep->setObjectName(QStringLiteral("lblStep"));
    prgBar = new QProgressBar(this);
    prgBar->setObjectName(QStringLiteral("prgBar"));
    prgBar->setRange(0, 0);
    prgBar->setMinimumWidth(320);
    column->addWidget(lblCaption);
    column->addWidget(lblStep);
    column->addWidget(prgBar);
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    cmdCancel = new QPushButton(tr("&Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    cmdCancel->setVisible(cancellable);
    row->addWidget(cmdCancel);
    column->addLayout(row);
    connect(cmdCancel, &QPushButton::clicked, this, [this] {
        m_cancelled = true;
        cmdCancel->setEnabled(false);
        lblStep->setText(tr("Stopping..."));
    });
}

void frmProgress::closeEvent(QCloseEvent* event) {
    // Only the operation ends the window; closing it by hand is a request to stop.
    if (cmdCancel->isVisible())
        cmdCancel->click();
    event->ignore();
}

void frmProgress::reject() {
    if (cmdCancel->isVisible())
        cmdCancel->click();
}

class frmProgress::Reporter : public Progress {
public:
    Reporter(const QString& caption, bool cancellable, int showAfterMs)
        : m_window(new frmProgress(caption, cancellable, OwnerWindow())), m_showAfter(showAfterMs) {
        m_window->setAttribute(Qt::WA_DeleteOnClose, false);
        m_started.start();
        pump(true);
    }
    ~Reporter() override { delete m_window.data(); }

    void setRange(qint64 total) override {
        if (!m_window)
            return;
        m_total = total;
        m_window->prgBar->setRange(0, total > 0 ? 1000 : 0);
        pump(true);
    }
    void setValue(qint64 done) override {
        m_done = done;
        if (!m_window || m_total <= 0)
            return pump(false);
        // The bar counts in thousandths, so that any number of steps fits its int range.
        m_window->prgBar->setValue(int(std::min<qint64>(1000, done * 1000 / m_total)));
        pump(false);
    }
    void setText(const QString& text) override {
        if (!m_window)
            return;
        m_window->lblStep->setText(text);
        pump(true);
    }
    bool wasCancelled() const override { return m_window && m_window->cancelled(); }

private:
    // Lets the window draw and the Cancel button be clicked (the window is modal, so no other window
    // takes input meanwhile); for value updates at most every 50 ms, so that a loop of a million steps
    // is not slowed down by drawing.
    void pump(bool now) {
        if (!now && m_pumped.isValid() && m_pumped.elapsed() < 50)
            return;
        m_pumped.start();
        if (m_window && m_window->isHidden() && m_started.elapsed() >= m_showAfter) {
            m_window->show();
            m_window->raise();
        }
        if (m_window && !m_window->isHidden())
            QApplication::processEvents();
    }

    QPointer<frmProgress> m_window;
    qint64 m_total = 0;
    int m_showAfter = 0;
    QElapsedTimer m_started, m_pumped;
};

void InstallProgressWindow() {
    setProgressFactory(
        [](const QString& caption, bool cancellable, int showAfterMs) -> std::unique_ptr<Progress> {
            return std::make_unique<frmProgress::Reporter>(caption, cancellable, showAfterMs);
        });
}
