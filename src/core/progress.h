#pragma once
// Progress of a long operation (sending a bug report, a backup or restore, a large refresh, a long
// print). The operation asks for a Progress when it starts and reports through it; the window layer
// decides how that is shown (the progress window), and code run without windows reports to nobody.
#include <QString>
#include <QtGlobal>

#include <functional>
#include <memory>

class Progress {
public:
    virtual ~Progress() = default; // the operation is over: the progress goes away
    // The number of steps; 0 when the end is not known (the bar only shows that work goes on).
    virtual void setRange(qint64 total) = 0;
    virtual void setValue(qint64 done) = 0;
    // What is being done now, shown under the caption.
    virtual void setText(const QString& text) = 0;
    // True once the user asked to stop (only for operations that allow it).
    virtual bool wasCancelled() const = 0;

    void advance(qint64 by = 1) {
        m_done += by;
        setValue(m_done);
    }

protected:
    qint64 m_done = 0;
};

// Shows nothing and is never cancelled.
class SilentProgress : public Progress {
public:
    void setRange(qint64) override {}
    void setValue(qint64 done) override { m_done = done; }
    void setText(const QString&) override {}
    bool wasCancelled() const override { return false; }
};

// Starts the progress of an operation captioned caption ("Sending Bug Submission"). cancellable: the
// user may stop it. showAfterMs: shown only once the operation has lasted that long (a refresh that
// is quick should not flash a window). Never null.
std::unique_ptr<Progress> StartProgress(const QString& caption, bool cancellable = false,
                                        int showAfterMs = 0);

// The window layer installs how progress is shown; an empty factory restores the silent one.
using ProgressFactory =
    std::function<std::unique_ptr<Progress>(const QString& caption, bool cancellable, int showAfterMs)>;
void setProgressFactory(ProgressFactory factory);
