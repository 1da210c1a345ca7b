// The kept sort of a list that has just loaded, run on another thread: sorting a million names takes
// longer than a window may stand still. The columns do not change once the last row is in, and
// nothing else sorts until this sort is applied (a sort chosen meanwhile is only noted, and done
// when this one ends), so the thread reads the list while the window shows it.
#include "lists/listmodel_p.h"
#include "lists/namematch.h"

#include <QThread>
#include <QTimer>

struct ListModel::Background {
    int key = -1;
    int order = ListModel::Ascending;
    std::vector<uint32_t> base;   // every row, in the order shown before
    std::vector<uint32_t> result; // the same rows sorted
    std::unique_ptr<QThread> thread;
    std::unique_ptr<Impl> keptAlive; // the list it sorts, once the model has moved on to another
};

ListModel::ListModel(QObject* parent) : QAbstractTableModel(parent), d(new Impl), m_slicer(new QTimer(this)) {
    m_slicer->setSingleShot(true);
    m_slicer->setInterval(0);
    connect(m_slicer, &QTimer::timeout, this, &ListModel::loadSlice);
}

ListModel::~ListModel() {
    // A sort still running on another thread reads a list this model owns.
    if (m_background)
        m_background->thread->wait();
    for (const auto& b : m_abandoned)
        b->thread->wait();
}

void ListModel::startBackgroundSort() {
    auto bg = std::make_unique<Background>();
    bg->key = d->sortKey;
    bg->order = d->sortOrder;
    bg->base = d->nameFilter.isEmpty() ? d->order : d->all;
    Background* b = bg.get();
    const Impl* list = d.get();
    b->thread.reset(QThread::create([b, list] { b->result = list->sortRows(b->key, b->order, b->base); }));
    connect(b->thread.get(), &QThread::finished, this, [this, b] { backgroundSortDone(b); });
    m_background = std::move(bg);
    b->thread->start();
}

void ListModel::backgroundSortDone(Background* done) {
    if (m_background.get() != done) { // its list was replaced meanwhile
        std::erase_if(m_abandoned, [done](const std::unique_ptr<Background>& b) { return b.get() == done; });
        return;
    }
    const std::unique_ptr<Background> bg = std::move(m_background);
    bg->thread->wait();
    if (d->nameFilter.isEmpty()) {
        d->all = {};
        showOrder(std::move(bg->result));
    } else {
        std::vector<uint32_t> shown = d->matching(bg->result, NameMatcher(d->nameFilter));
        d->all = std::move(bg->result);
        showOrder(std::move(shown));
    }
    // A sort chosen meanwhile follows, as it would have followed this one had it been quick.
    if (d->sorted && (d->sortKey != bg->key || d->sortOrder != bg->order))
        setSort(d->sortKey, d->sortOrder);
    Q_EMIT loadFinished();
}

void ListModel::replaceImpl(std::unique_ptr<Impl> next) {
    m_slicer->stop();
    if (m_background) {
        // The thread cannot be stopped: it keeps the list it reads until it ends, and its result
        // is dropped.
        m_background->keptAlive = std::move(d);
        m_abandoned.push_back(std::move(m_background));
    }
    d = std::move(next);
}
