#include "lists/listmodel.h"
#include "lists/cellformat.h"
#include "lists/listmodel_p.h"
#include "lists/namematch.h"

#include "core/vberror.h"

#include <QFont>
#include <sqlite3.h>

#include <cmath>

using liststore::Cell;
using liststore::Column;
using liststore::Display;
using liststore::PriceKind;

QColor colorFromVbColor(qint64 vbColor) {
    if (vbColor < 0 || vbColor > 0xFFFFFF)
        return QColor();
    return QColor(int(vbColor & 0xFF), int((vbColor >> 8) & 0xFF), int((vbColor >> 16) & 0xFF));
}

QColor colorFromVbColorText(const QString& text) {
    const QString t = text.trimmed();
    bool ok = false;
    qint64 v = 0;
    if (t.startsWith(QLatin1String("&H"), Qt::CaseInsensitive)) {
        QString hex = t.mid(2);
        if (hex.endsWith(QLatin1Char('&')))
            hex.chop(1);
        v = hex.toLongLong(&ok, 16);
    } else if (t.startsWith(QLatin1String("0x"), Qt::CaseInsensitive)) {
        v = t.mid(2).toLongLong(&ok, 16);
    } else {
        v = t.toLongLong(&ok, 10);
    }
    return ok ? colorFromVbColor(v) : QColor();
}

namespace {
bool priceWordInto(const Column& c, double v, QString& out) {
    const QString word = PriceWord(v, c.price == PriceKind::ManufactureFee);
    if (word.isEmpty())
        return false;
    out = word;
    return true;
}
} // namespace

void ListModel::Impl::cellText(size_t src, int col, QString& out) const {
    const Column& c = cols[size_t(col)];
    switch (c.cellClass(src)) {
    case Cell::Null:
        out.clear();
        return;
    case Cell::Text:
        liststore::decodeInto(c.textAt(src), out);
        return;
    case Cell::Int: {
        const qint64 v = c.intAt(src);
        if (c.price != PriceKind::None && v <= 0 && priceWordInto(c, double(v), out))
            return;
        if (c.display == Display::YesNo)
            out = v ? QStringLiteral("True") : QStringLiteral("False");
        else if (c.naForMinusOne && v == -1)
            out = QStringLiteral("N/A");
        else if (c.display == Display::Plain)
            out = QString::number(v);
        else
            FormatWholeNumberInto(v, out);
        return;
    }
    case Cell::Real: {
        const double v = c.realAt(src);
        if (c.price != PriceKind::None && v < 0.5 && priceWordInto(c, v, out))
            return;
        if (c.display == Display::YesNo)
            out = v != 0.0 ? QStringLiteral("True") : QStringLiteral("False");
        else if (c.naForMinusOne && v == -1.0)
            out = QStringLiteral("N/A");
        else if (c.display == Display::Plain)
            out = VbNumberText(v);
        else if (isWholeNumber(c.kind) && v == std::trunc(v) && std::fabs(v) < 9.0e18)
            FormatWholeNumberInto(qint64(v), out);
        else
            FormatFractionNumberInto(v, out);
        return;
    }
    }
}

namespace {
// Figures line up on their last digit; texts, dates and Yes/No read from the left.
QVariant alignment(const Column& c) {
    const bool number = c.tag == ListModel::NumberTag && c.display != Display::YesNo;
    return QVariant::fromValue(
        Qt::Alignment(number ? Qt::AlignRight | Qt::AlignVCenter : Qt::AlignLeft | Qt::AlignVCenter));
}
} // namespace

uint32_t ListModel::Impl::viewOf(uint32_t src) const {
    if (inverse.size() != rows) { // cleared whenever the order changes
        inverse.assign(rows, Hidden);
        for (size_t i = 0; i < order.size(); ++i)
            inverse[order[i]] = uint32_t(i);
    }
    return inverse[src];
}

int ListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(d->shown());
}

int ListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(d->cols.size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || size_t(index.row()) >= d->shown() || size_t(index.column()) >= d->cols.size())
        return QVariant();
    const size_t src = d->order[size_t(index.row())];
    switch (role) {
    case Qt::DisplayRole: {
        QString s;
        d->cellText(src, index.column(), s);
        return s;
    }
    case Qt::CheckStateRole:
        if (index.column() != 0)
            return QVariant();
        return (d->flags[src] & listflags::Checked) ? Qt::Checked : Qt::Unchecked;
    case Qt::ForegroundRole: {
        const uint8_t f = d->flags[src];
        if ((f & listflags::Personal) && d->colors.personal.isValid())
            return d->colors.personal;
        if ((f & listflags::Updated) && d->colors.updated.isValid())
            return d->colors.updated;
        return QVariant();
    }
    case Qt::TextAlignmentRole:
        return alignment(d->cols[size_t(index.column())]);
    case Qt::FontRole: {
        if (!isBold(index.row(), index.column()))
            return QVariant();
        QFont bold;
        bold.setBold(true);
        return bold;
    }
    default:
        return QVariant();
    }
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || size_t(section) >= d->cols.size())
        return QVariant();
    if (role == Qt::DisplayRole)
        return d->cols[size_t(section)].header;
    if (role == Qt::TextAlignmentRole)
        return alignment(d->cols[size_t(section)]);
    return QVariant();
}

Qt::ItemFlags ListModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    if (index.column() == 0)
        f |= Qt::ItemIsUserCheckable;
    return f;
}

bool ListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || !index.isValid() || index.column() != 0 ||
        size_t(index.row()) >= d->shown())
        return false;
    const bool checked = value.toInt() == Qt::Checked;
    if (checked == isChecked(index.row()))
        return true;
    setChecked(index.row(), checked);
    markChanged(index.row());
    Q_EMIT checkToggled(index.row(), name(index.row()), checked);
    return true;
}

QString ListModel::columnName(int col) const {
    return col >= 0 && size_t(col) < d->cols.size() ? d->cols[size_t(col)].name : QString();
}

QString ListModel::columnTag(int col) const {
    return col >= 0 && size_t(col) < d->cols.size() ? d->cols[size_t(col)].tag : QString();
}

void ListModel::setColumnTag(int col, const QString& tag) {
    if (col >= 0 && size_t(col) < d->cols.size())
        d->cols[size_t(col)].tag = tag;
}

void ListModel::setHeaderText(int col, const QString& text) {
    if (col < 0 || size_t(col) >= d->cols.size())
        return;
    d->cols[size_t(col)].header = text;
    Q_EMIT headerDataChanged(Qt::Horizontal, col, col);
}

int ListModel::columnIndex(const QString& name) const {
    for (size_t c = 0; c < d->cols.size(); ++c)
        if (d->cols[c].name.compare(name, Qt::CaseInsensitive) == 0)
            return int(c);
    return -1;
}

QString ListModel::name(int row) const {
    return text(row, 0);
}

QString ListModel::text(int row, int col) const {
    QString s;
    cellText(row, col, s);
    return s;
}

void ListModel::cellText(int row, int col, QString& out) const {
    if (row < 0 || size_t(row) >= d->shown() || col < 0 || size_t(col) >= d->cols.size()) {
        out.clear();
        return;
    }
    d->cellText(d->order[size_t(row)], col, out);
}

bool ListModel::isChecked(int row) const {
    return row >= 0 && size_t(row) < d->shown() && (d->flags[d->order[size_t(row)]] & listflags::Checked);
}

void ListModel::setChecked(int row, bool checked) {
    if (row < 0 || size_t(row) >= d->shown())
        return;
    uint8_t& f = d->flags[d->order[size_t(row)]];
    f = checked ? (f | listflags::Checked) : (f & ~listflags::Checked);
    const QModelIndex i = index(row, 0);
    Q_EMIT dataChanged(i, i, {Qt::CheckStateRole});
}

void ListModel::markChanged(int row) {
    d->changed = row >= 0 && size_t(row) < d->rows ? qint64(d->order[size_t(row)]) : -1;
}

int ListModel::changedRow() const {
    return d->changed >= 0 && size_t(d->changed) < d->rows ? int(d->viewOf(uint32_t(d->changed))) : -1;
}

bool ListModel::hasColourFlags() const {
    return d->colourFlags;
}

bool ListModel::isUpdated(int row) const {
    return row >= 0 && size_t(row) < d->shown() && (d->flags[d->order[size_t(row)]] & listflags::Updated);
}

bool ListModel::isPersonal(int row) const {
    return row >= 0 && size_t(row) < d->shown() && (d->flags[d->order[size_t(row)]] & listflags::Personal);
}

qint64 ListModel::memoryUsed() const {
    size_t bytes =
        d->flags.bytes() + (d->order.capacity() + d->all.capacity()) * 4 + d->inverse.capacity() * 4;
    for (const Column& c : d->cols)
        bytes += c.bytes();
    for (const auto& b : d->cellBold)
        bytes += b.capacity() * 8;
    bytes += d->keptRanks.bytes();
    return qint64(bytes);
}
