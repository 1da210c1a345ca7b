#include "appchild.h"
#include "benchutil.h"
#include "stats.h"

#include "app/frmmain.h"
#include "app/itemlistview.h"
#include "app/liststatements.h"
#include "app/mainsettings.h"
#include "app/modinit.h"
#include "app/qtprompt.h"
#include "app/singleinstance.h"
#include "core/frmprogress.h"
#include "core/programfolder.h"
#include "lists/listmodel.h"

#include <QApplication>
#include <QBasicTimer>
#include <QComboBox>
#include <QDir>
#include <QHeaderView>
#include <QLabel>
#include <QTimer>
#include <QTimerEvent>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace bench {

namespace {

void print(const char* key, double wall, double cpu = std::nan("")) {
    const QByteArray line = childLine(QLatin1String(key), wall, cpu);
    std::fwrite(line.constData(), 1, size_t(line.size()), stdout);
    std::fflush(stdout);
}

// A benchmark run has nobody to answer a box: the question is printed and the run ends.
class UnattendedPrompt : public QtPrompt {
public:
    int msgBox(const QString& text, int, const QString& title) override { stop(title, text); }
    QString inputBox(const QString& prompt, const QString& title, const QString&, bool*) override {
        stop(title, prompt);
    }

private:
    [[noreturn]] static void stop(const QString& title, const QString& text) {
        std::fprintf(stderr, "the program asked \"%s\": %s\n", qPrintable(title), qPrintable(text));
        std::_Exit(4);
    }
};

// The longest time without a processed event, told by a 1 ms timer: its ticks count as events the
// main window could take only while no modal window holds the input. Each gap is measured by the wall
// clock and by the CPU time the program spent in it: on a shared machine the wall clock also counts
// the time the others had the processor.
class GapMeter : public QObject {
public:
    struct Gap {
        double wall = 0;
        double cpu = 0;
        void widen(double w, double c) {
            wall = std::max(wall, w);
            cpu = std::max(cpu, c);
        }
    };
    void start() {
        m_last = m_lastAny = {monotonicSeconds(), processCpuSeconds()};
        m_freeze = m_stall = Gap();
        m_timer.start(1, Qt::PreciseTimer, this);
    }
    void stop() {
        tick(true);
        m_timer.stop();
    }
    Gap freeze() const { return m_freeze; }
    Gap stall() const { return m_stall; }

protected:
    void timerEvent(QTimerEvent* event) override {
        if (event->timerId() != m_timer.timerId())
            return QObject::timerEvent(event);
        tick(false);
    }

private:
    struct Stamp {
        double wall = 0;
        double cpu = 0;
    };
    void tick(bool last) {
        const Stamp now{monotonicSeconds(), processCpuSeconds()};
        m_stall.widen(now.wall - m_lastAny.wall, now.cpu - m_lastAny.cpu);
        m_lastAny = now;
        if (!last && QApplication::activeModalWidget())
            return;
        m_freeze.widen(now.wall - m_last.wall, now.cpu - m_last.cpu);
        m_last = now;
    }

    QBasicTimer m_timer;
    Stamp m_last, m_lastAny;
    Gap m_freeze, m_stall;
};

// Follows the program from its start through one category switch, step by step as the paints of the
// list and the model's loadFinished come in.
class StartWatch : public QObject {
public:
    explicit StartWatch(double launch) : m_launch(launch) {}

    void attach(frmMain* window) {
        m_window = window;
        m_model = window->model();
        m_viewport = window->lstItems->viewport();
        m_status = window->findChild<QLabel*>(QStringLiteral("Status"));
        connect(m_model, &ListModel::loadFinished, this, &StartWatch::loaded);
    }
    void painted(QObject* receiver) {
        if (m_phase == Phase::Back && receiver == m_status &&
            m_status->text() == QLatin1String("Refreshing Grid"))
            m_statusShown = true;
        if (m_phase == Phase::Done || receiver != m_viewport || m_model->rowCount() == 0 || !screenful())
            return;
        const double now = monotonicSeconds();
        if (m_phase == Phase::Start) {
            print(FirstScreen, now - m_launch, processCpuSeconds());
            m_phase = Phase::Loading;
            m_gaps.start();
            if (!m_model->isLoading()) // the list was whole before it was shown
                loaded();
        } else if (m_phase == Phase::ToSmall && !isEquipment() && !m_model->isLoading()) {
            m_phase = Phase::Idle;
            QTimer::singleShot(300, this, &StartWatch::switchBack);
        } else if (m_phase == Phase::Back && isEquipment()) {
            print(SwitchScreen, now - m_switched, processCpuSeconds() - m_switchCpu);
            m_phase = Phase::BackLoading;
            if (!m_model->isLoading())
                loaded();
        }
    }
    bool finished() const { return m_phase == Phase::Done; }

private:
    enum class Phase { Start, Loading, Idle, ToSmall, Back, BackLoading, Done };

    // Rows down to the bottom of the list, or every row there is.
    bool screenful() const {
        return !m_model->isLoading() ||
               m_window->lstItems->indexAt(QPoint(1, m_viewport->height() - 2)).isValid();
    }
    bool isEquipment() const { return m_model->columnCount() > 0 && m_model->columnName(0) == m_firstColumn; }

    void loaded() {
        if (m_phase == Phase::Loading) {
            print(WholeList, monotonicSeconds() - m_launch, processCpuSeconds());
            m_gaps.stop();
            print(StartFreeze, m_gaps.freeze().wall, m_gaps.freeze().cpu);
            print(StartStall, m_gaps.stall().wall, m_gaps.stall().cpu);
            print(Rows, m_model->rowCount());
            m_firstColumn = m_model->columnName(0);
            m_phase = Phase::Idle;
            QTimer::singleShot(300, this, &StartWatch::switchAway);
        } else if (m_phase == Phase::BackLoading) {
            print(SwitchWhole, monotonicSeconds() - m_switched, processCpuSeconds() - m_switchCpu);
            m_gaps.stop();
            print(SwitchFreeze, m_gaps.freeze().wall, m_gaps.freeze().cpu);
            print(SwitchStall, m_gaps.stall().wall, m_gaps.stall().cpu);
            print(SwitchStatus, m_statusShown ? 1 : 0);
            m_phase = Phase::Done;
            QTimer::singleShot(0, m_window, [this] { m_window->close(); });
        }
    }
    // A small category: the list it shows first is the one the switch comes back from.
    void switchAway() {
        m_phase = Phase::ToSmall;
        m_window->cmbData->setCurrentIndex(m_window->cmbData->findText(listcat::Stations));
    }
    // As a choice in the box is handled: the switch runs in this event, then the loop goes on.
    void switchBack() {
        m_phase = Phase::Back;
        m_switched = monotonicSeconds();
        m_switchCpu = processCpuSeconds();
        m_gaps.start();
        m_window->cmbData->setCurrentIndex(m_window->cmbData->findText(listcat::Equipment));
    }

    double m_launch;
    frmMain* m_window = nullptr;
    ListModel* m_model = nullptr;
    QWidget* m_viewport = nullptr;
    QLabel* m_status = nullptr;
    bool m_statusShown = false;
    Phase m_phase = Phase::Start;
    QString m_firstColumn;
    GapMeter m_gaps;
    double m_switched = 0, m_switchCpu = 0;
};

// Sees every paint after it is done.
class WatchedApplication : public QApplication {
public:
    using QApplication::QApplication;
    StartWatch* watch = nullptr;
    bool notify(QObject* receiver, QEvent* event) override {
        const bool paint = event->type() == QEvent::Paint;
        const bool result = QApplication::notify(receiver, event);
        if (paint && watch)
            watch->painted(receiver);
        return result;
    }
};

QString argument(const QStringList& args, const QString& name) {
    const qsizetype i = args.indexOf(name);
    return i >= 0 && i + 1 < args.size() ? args.at(i + 1) : QString();
}

} // namespace

int appChild(int argc, char** argv) {
    WatchedApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("VOSK"));
    const QStringList args = QApplication::arguments();
    initProgramFolder(args);
    bool known = false;
    const double launch = argument(args, QStringLiteral("--launch")).toDouble(&known);
    if (!known) {
        std::fprintf(stderr, "--app-child needs --launch SECONDS\n");
        return 2;
    }
    // A copy of the program the developer runs meanwhile keeps its own lock.
    setInstanceLockPath(QDir(programFolder()).filePath(QStringLiteral("VOSK.instance.lock")));
    SaveCategory(listcat::Equipment);
    if (args.contains(QStringLiteral("--seed-name-sort"))) {
        const QString key = ColumnLayoutKey(listcat::Equipment, allEntry());
        ColumnLayout layout = LoadColumnLayout(key);
        layout.sortColumn = QStringLiteral("EQUIPMENT_NAME");
        layout.sortKey = 0;
        layout.sortOrder = 0;
        SaveColumnLayout(key, layout);
    }

    UnattendedPrompt prompt;
    setPrompts(&prompt);
    InstallProgressWindow();
    StartWatch watch(launch);
    app.watch = &watch;
    setMainWindowFactory([&watch] {
        auto* window = new frmMain;
        watch.attach(window);
        return static_cast<QWidget*>(window);
    });
    QTimer::singleShot(240000, [] {
        std::fprintf(stderr, "the program did not get through the start and the switch in 240 s\n");
        std::_Exit(3);
    });

    const int result = ExecVOSK();
    app.watch = nullptr;
    setPrompts(nullptr);
    return watch.finished() ? result : 2;
}

} // namespace bench
