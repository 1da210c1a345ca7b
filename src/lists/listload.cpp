// Reading a result set into the list: at once (load), or in slices from the event loop (startLoad) so
// that a window showing a long list paints its first rows at once and stays responsive while the rest
// comes in.
#include "lists/listmodel_p.h"
#include "lists/namematch.h"

#include "core/progress.h"
#include "core/vberror.h"
#include "data/recordset.h"

#include <QElapsedTimer>
#include <QTimer>
#include <sqlite3.h>

using liststore::Cell;
using liststore::Column;
using liststore::Display;

namespace {
// The first slice shows the first screenful; the later ones leave the event loop free often enough
// that the window never seems to hang.
qint64 FirstSliceNs = 10'000'000;
qint64 SliceNs = 25'000'000;
qint64 ShowEveryNs = 250'000'000;
} // namespace

void ListModel::setSliceBudget(qint64 firstNs, qint64 laterNs, qint64 showEveryNs) {
    FirstSliceNs = firstNs;
    SliceNs = laterNs;
    ShowEveryNs = showEveryNs;
}

namespace {
bool isFlagColumn(const QString& name) {
    return name == QLatin1String("CHECK") || name == QLatin1String("PERSONAL_DB") ||
           name == QLatin1String("UPDATED") || name == QLatin1String("SUBMITTED") ||
           name == QLatin1String("UNIQUE_FLAG") || name == QLatin1String("PIC_ID");
}

// Price columns by their names: the purchase prices of every category and the equipment's fee.
liststore::PriceKind priceKind(const QString& field, FieldKind kind) {
    if (!isNumeric(kind))
        return liststore::PriceKind::None;
    if (field == QLatin1String("PRICE") || field == QLatin1String("PURCHASE_PRICE"))
        return liststore::PriceKind::Purchase;
    if (field == QLatin1String("MANUFACTURING_FEE") || field == QLatin1String("COST_TO_MANUFACTURE"))
        return liststore::PriceKind::ManufactureFee;
    return liststore::PriceKind::None;
}

// The field name without a table prefix, upper-cased, as the flag and special columns are known.
QString plainName(const QString& field) {
    const qsizetype dot = field.lastIndexOf(QLatin1Char('.'));
    return (dot >= 0 ? field.mid(dot + 1) : field).toUpper();
}
} // namespace

// What a load keeps between its slices: where each list column is read from, and the flag columns.
struct ListModel::Impl::Load {
    std::unique_ptr<Recordset> owned; // a load in slices owns its result set
    Recordset* rs = nullptr;
    std::vector<int> source;
    int checkField = -1, updatedField = -1, personalField = -1;
    QElapsedTimer sinceShown; // since the view last heard of new rows
};

ListModel::Impl::Impl() = default;
ListModel::Impl::~Impl() = default;

std::unique_ptr<ListModel::Impl> ListModel::Impl::emptyKeepingSort() const {
    auto fresh = std::make_unique<Impl>();
    fresh->sortKey = sortKey;
    fresh->sortOrder = sortOrder;
    fresh->sorted = sorted;
    fresh->nameFilter = nameFilter;
    return fresh;
}

void ListModel::clear() {
    beginResetModel();
    replaceImpl(d->emptyKeepingSort());
    endResetModel();
}

void ListModel::Impl::prepare(Recordset& rs, const ListColors& rowColors) {
    colors = rowColors;
    loading = std::make_unique<Load>();
    Load& l = *loading;
    l.rs = &rs;
    // Which result column feeds which list column, and which give the row's flags.
    const int fields = rs.fieldCount();
    for (int i = 0; i < fields; ++i) {
        const QString field = plainName(rs.fieldName(i));
        if (isFlagColumn(field)) {
            if (field == QLatin1String("CHECK"))
                l.checkField = i;
            else if (field == QLatin1String("UPDATED"))
                l.updatedField = i;
            else if (field == QLatin1String("PERSONAL_DB"))
                l.personalField = i;
            continue;
        }
        Column c;
        c.name = rs.fieldName(i);
        c.header = c.name;
        c.kind = rs.fieldKind(i);
        if (isNumeric(c.kind))
            c.tag = NumberTag;
        else if (c.kind == FieldKind::Date)
            c.tag = DateTag;
        c.display = c.kind == FieldKind::Boolean                    ? Display::YesNo
                    : (isText(c.kind) || c.kind == FieldKind::Date) ? Display::Plain
                                                                    : Display::Numbers;
        c.naForMinusOne = field == QLatin1String("MANEUVERABILITY") || field == QLatin1String("AMMO_RANGE");
        c.unknownIfEmpty = field == QLatin1String("TYPE") || field == QLatin1String("SUBTYPE");
        c.price = priceKind(field, c.kind);
        cols.push_back(std::move(c));
        l.source.push_back(i);
    }
    colourFlags = l.updatedField >= 0 || l.personalField >= 0;
}

namespace {
// The cells of the current row, straight from the engine's statement (the common case: a forward-only
// result set) or through the result set.
struct StatementCells {
    sqlite3_stmt* st;
    int type(int i) const { return sqlite3_column_type(st, i); }
    qint64 whole(int i) const { return sqlite3_column_int64(st, i); }
    double fraction(int i) const { return sqlite3_column_double(st, i); }
    QByteArrayView text(int i) const {
        return {reinterpret_cast<const char*>(sqlite3_column_text(st, i)), sqlite3_column_bytes(st, i)};
    }
    // A text column's cell: no text (nullptr) for NULL. Any other value reads as its text, which is
    // how a text column shows it anyway.
    const char* textOrNull(int i, qsizetype* len) const {
        const char* t = reinterpret_cast<const char*>(sqlite3_column_text(st, i));
        *len = t ? sqlite3_column_bytes(st, i) : 0;
        return t;
    }
};

struct RecordsetCells {
    const Recordset& rs;
    int type(int i) const { return rs.storageClass(i); }
    qint64 whole(int i) const { return rs.intValue(i); }
    double fraction(int i) const { return rs.doubleValue(i); }
    QByteArrayView text(int i) const { return rs.textUtf8(i); }
    const char* textOrNull(int i, qsizetype* len) const {
        if (rs.storageClass(i) == SQLITE_NULL)
            return nullptr;
        const QByteArrayView t = rs.textUtf8(i);
        *len = t.size();
        return t.data() ? t.data() : "";
    }
};

template <typename Cells> bool readFlag(const Cells& cells, int i) {
    switch (cells.type(i)) {
    case SQLITE_INTEGER:
        return cells.whole(i) != 0;
    case SQLITE_FLOAT:
        return cells.fraction(i) != 0.0;
    case SQLITE_NULL:
        return false;
    default: {
        const QByteArrayView v = cells.text(i);
        const QString t = QString::fromUtf8(v.data(), v.size()).trimmed();
        return t.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0 ||
               t.compare(QLatin1String("Yes"), Qt::CaseInsensitive) == 0 || t == QLatin1String("1") ||
               t == QLatin1String("-1");
    }
    }
}

template <typename Cells>
void readRow(const Cells& cells, const std::vector<int>& source, const std::vector<uint8_t>& textual,
             std::vector<Column>& cols) {
    static const QString unknown = QStringLiteral("Unknown");
    const size_t ncols = cols.size();
    for (size_t c = 0; c < ncols; ++c) {
        Column& col = cols[c];
        const int i = source[c];
        if (textual[c]) {
            qsizetype len = 0;
            if (const char* t = cells.textOrNull(i, &len); t && !(len == 0 && col.unknownIfEmpty))
                col.appendUtf8(t, size_t(len));
            else if (col.unknownIfEmpty)
                col.appendText(unknown);
            else
                col.appendNull();
            continue;
        }
        switch (cells.type(i)) {
        case SQLITE_INTEGER:
            col.appendInt(cells.whole(i));
            break;
        case SQLITE_FLOAT:
            col.appendReal(cells.fraction(i));
            break;
        case SQLITE_NULL:
            if (col.unknownIfEmpty)
                col.appendText(unknown);
            else
                col.appendNull();
            break;
        default: {
            const QByteArrayView t = cells.text(i);
            if (col.unknownIfEmpty && t.isEmpty())
                col.appendText(unknown);
            else
                col.appendUtf8(t.data(), size_t(t.size()));
        }
        }
    }
}
} // namespace

bool ListModel::Impl::readRows(qint64 budgetNs, Progress* progress) {
    Load& l = *loading;
    Recordset& rs = *l.rs;
    std::vector<uint8_t> textual(cols.size());
    for (size_t c = 0; c < cols.size(); ++c)
        textual[c] = isText(cols[c].kind);
    QElapsedTimer clock;
    clock.start();
    for (size_t read = 0; !rs.eof(); rs.moveNext(), ++read) {
        // The clock is read every few hundred rows: often enough to keep a slice near its budget,
        // and every slice reads some.
        if (budgetNs >= 0 && read > 0 && (read & 255) == 0 && clock.nsecsElapsed() >= budgetNs)
            return false;
        auto readAll = [&](const auto& cells) {
            uint8_t f = 0;
            if (l.checkField >= 0 && readFlag(cells, l.checkField))
                f |= listflags::Checked;
            if (l.updatedField >= 0 && readFlag(cells, l.updatedField))
                f |= listflags::Updated;
            if (l.personalField >= 0 && readFlag(cells, l.personalField))
                f |= listflags::Personal;
            flags.push_back(f);
            readRow(cells, l.source, textual, cols);
        };
        if (sqlite3_stmt* st = rs.currentStatement())
            readAll(StatementCells{st});
        else
            readAll(RecordsetCells{rs});
        ++rows;
        if (progress && (rows & 4095) == 0)
            progress->setValue(qint64(rows));
    }
    return true;
}

void ListModel::Impl::finishColumns() {
    loading.reset(); // gives the statement back
    for (Column& c : cols) {
        c.finish();
        // A computed column takes its kind from its first value; when that was NULL, the values
        // themselves say whether it is numeric.
        if (c.kind == FieldKind::Empty) {
            const Cell u = c.uniformClass();
            if (u == Cell::Int || u == Cell::Real)
                c.tag = NumberTag;
        }
    }
}

void ListModel::Impl::showFirstRows() {
    shownUpTo = rows;
    if (loading)
        loading->sinceShown.start();
    order.resize(rows);
    for (size_t r = 0; r < rows; ++r)
        order[r] = uint32_t(r);
    if (sorted && sortKey >= 0 && size_t(sortKey) < cols.size())
        order = sortedOrder(sortKey, sortOrder);
    if (!nameFilter.isEmpty()) {
        all = std::move(order);
        order = matching(all, NameMatcher(nameFilter));
    }
}

void ListModel::load(Recordset& rs, const ListColors& colors, Progress* progress) {
    auto next = d->emptyKeepingSort();
    next->prepare(rs, colors);
    beginResetModel();
    try {
        next->readRows(-1, progress);
    } catch (...) {
        replaceImpl(d->emptyKeepingSort());
        endResetModel();
        throw;
    }
    next->finishColumns();
    next->showFirstRows();
    replaceImpl(std::move(next));
    endResetModel();
}

void ListModel::startLoad(std::unique_ptr<Recordset> rs, const ListColors& colors) {
    auto next = d->emptyKeepingSort();
    next->prepare(*rs, colors);
    next->loading->owned = std::move(rs);
    beginResetModel();
    bool done = false;
    try {
        done = next->readRows(FirstSliceNs, nullptr);
    } catch (const VbError& e) {
        next->loadError = {e.number, e.description};
        done = true;
    }
    if (done)
        next->finishColumns();
    next->showFirstRows();
    replaceImpl(std::move(next));
    endResetModel();
    Q_EMIT loadProgress(qint64(d->rows));
    if (done)
        Q_EMIT loadFinished();
    else
        m_slicer->start();
}

void ListModel::loadSlice() {
    if (!d->loading)
        return;
    bool done = false;
    try {
        done = d->readRows(SliceNs, nullptr);
    } catch (const VbError& e) {
        d->loadError = {e.number, e.description};
        done = true;
    }
    // The view hears of new rows a few times a second, not after every slice: each time it lays out
    // and paints again, which would cost as much as reading.
    if (done || d->loading->sinceShown.nsecsElapsed() >= ShowEveryNs)
        showReadRows();
    if (!done) {
        Q_EMIT loadProgress(qint64(d->rows));
        m_slicer->start();
        return;
    }
    d->finishColumns();
    if (d->sorted && d->sortKey >= 0 && size_t(d->sortKey) < d->cols.size() && d->rows > 1) {
        startBackgroundSort(); // loadFinished follows once its order is shown
        Q_EMIT loadProgress(qint64(d->rows));
        return;
    }
    Q_EMIT loadProgress(qint64(d->rows));
    Q_EMIT loadFinished();
}

void ListModel::showReadRows() {
    // The rows read since go below those shown (the name filter picks among them); a kept sort is
    // applied to the whole list once the last row is in.
    const size_t from = d->shownUpTo;
    d->shownUpTo = d->rows;
    if (d->loading)
        d->loading->sinceShown.start();
    std::vector<uint32_t> fresh(d->rows - from);
    for (size_t k = 0; k < fresh.size(); ++k)
        fresh[k] = uint32_t(from + k);
    if (!d->nameFilter.isEmpty()) {
        d->all.insert(d->all.end(), fresh.begin(), fresh.end());
        fresh = d->matching(fresh, NameMatcher(d->nameFilter));
    }
    if (fresh.empty())
        return;
    const int first = int(d->order.size());
    beginInsertRows(QModelIndex(), first, first + int(fresh.size()) - 1);
    d->order.insert(d->order.end(), fresh.begin(), fresh.end());
    d->inverse.clear();
    endInsertRows();
}

void ListModel::cancelLoad() {
    m_slicer->stop();
    if (!d->loading)
        return;
    showReadRows();
    d->finishColumns();
}

bool ListModel::isLoading() const {
    return d->loading != nullptr || m_background != nullptr;
}

ListModel::LoadError ListModel::loadError() const {
    return d->loadError;
}
