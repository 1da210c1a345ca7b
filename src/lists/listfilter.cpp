// The search box's filter: the rows shown are those of every row (kept in `all`, in sort order)
// whose name contains the text. A text that extends the one before only narrows the rows shown, so
// typing a name letter by letter tests fewer rows at every key.
#include "lists/listmodel_p.h"
#include "lists/namematch.h"

using liststore::Cell;
using liststore::Column;

std::vector<uint32_t> ListModel::Impl::matching(const std::vector<uint32_t>& from,
                                                const NameMatcher& filter) const {
    std::vector<uint32_t> out;
    if (cols.empty())
        return out;
    const Column& names = cols.front();
    out.reserve(from.size() / 4);
    QString scratch;
    const bool ascii = names.asciiOnly;
    for (const uint32_t src : from) {
        const Cell c = names.cellClass(src);
        bool hit;
        if (c == Cell::Text) {
            hit = ascii ? filter.matchesAscii(names.textAt(src)) : filter.matchesUtf8(names.textAt(src));
        } else {
            cellText(src, 0, scratch);
            hit = filter.matches(scratch);
        }
        if (hit)
            out.push_back(src);
    }
    out.shrink_to_fit();
    return out;
}

std::vector<uint32_t> ListModel::Impl::sortedWithFilter(int col, int direction) {
    if (nameFilter.isEmpty())
        return sortedOrder(col, direction);
    std::swap(order, all);
    std::vector<uint32_t> sortedAll = sortedOrder(col, direction);
    std::swap(order, all);
    std::vector<uint64_t> shownBits(rows / 64 + 1, 0);
    for (const uint32_t src : order)
        shownBits[src / 64] |= uint64_t(1) << (src % 64);
    std::vector<uint32_t> next;
    next.reserve(order.size());
    for (const uint32_t src : sortedAll)
        if ((shownBits[src / 64] >> (src % 64)) & 1)
            next.push_back(src);
    all = std::move(sortedAll);
    return next;
}

void ListModel::setNameFilter(const QString& text) {
    if (text == d->nameFilter)
        return;
    const NameMatcher before(d->nameFilter);
    const NameMatcher after(text);
    if (after.folded() == before.folded()) { // only the case changed: the same rows
        d->nameFilter = text;
        return;
    }
    std::vector<uint32_t> next;
    if (after.isEmpty())
        next = std::move(d->all);
    else if (!before.isEmpty() && after.narrows(before))
        next = d->matching(d->order, after);
    else
        next = d->matching(before.isEmpty() ? d->order : d->all, after);

    Q_EMIT layoutAboutToBeChanged();
    const QModelIndexList was = persistentIndexList();
    std::vector<uint32_t> sources;
    sources.reserve(size_t(was.size()));
    for (const QModelIndex& i : was)
        sources.push_back(d->order[size_t(i.row())]);
    if (before.isEmpty())
        d->all = std::move(d->order);
    d->order = std::move(next);
    if (after.isEmpty())
        d->all = {};
    d->nameFilter = text;
    d->inverse.clear();
    QModelIndexList now;
    now.reserve(was.size());
    for (qsizetype k = 0; k < was.size(); ++k) {
        const uint32_t view = d->viewOf(sources[size_t(k)]);
        now.append(view == Impl::Hidden ? QModelIndex() : index(int(view), was[k].column()));
    }
    changePersistentIndexList(was, now);
    Q_EMIT layoutChanged();
}

QString ListModel::nameFilter() const {
    return d->nameFilter;
}

int ListModel::loadedRowCount() const {
    return int(d->rows);
}
