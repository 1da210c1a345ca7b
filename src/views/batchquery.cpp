#include "views/batchquery.h"

#include "core/casefold.h"

#include "data/database.h"
#include "data/quotes.h"
#include "data/recordset.h"

#include <sqlite3.h>

namespace {
// Batch lengths: a short list for the few names of a small plan, longer ones for big trees.
constexpr int kLengths[] = {1, 8, 64, 512};
} // namespace

void ForEachRowIn(const QString& head, const QStringList& names, const QString& tail,
                  const std::function<void(const Recordset& rs)>& row) {
    constexpr int longest = kLengths[std::size(kLengths) - 1];
    for (qsizetype from = 0; from < names.size(); from += longest) {
        const int count = int(qMin<qsizetype>(longest, names.size() - from));
        int length = longest;
        for (const int l : kLengths)
            if (l >= count) {
                length = l;
                break;
            }
        QString sql = head;
        sql.reserve(head.size() + tail.size() + length * 24);
        sql += QLatin1Char('(');
        for (int i = 0; i < length; ++i) {
            // Short batches repeat their last name: the statement keeps its shape.
            const QString& name = names.at(from + qMin(i, count - 1));
            if (i)
                sql += QLatin1String(", ");
            sql += QLatin1Char('\'');
            sql += name.contains(QLatin1Char('\'')) ? FixQuotes(name) : name;
            sql += QLatin1Char('\'');
        }
        sql += QLatin1Char(')') + tail;
        Recordset rs;
        rs.open(sql);
        for (; !rs.eof(); rs.moveNext())
            row(rs);
    }
}

QString RowText(const Recordset& rs, int column) {
    return rs.storageClass(column) == SQLITE_NULL ? QString() : rs.textValue(column);
}

qint64 RowNumber(const Recordset& rs, int column) {
    switch (rs.storageClass(column)) {
    case SQLITE_INTEGER:
        return rs.intValue(column);
    case SQLITE_FLOAT:
        return qint64(rs.doubleValue(column));
    case SQLITE_TEXT:
        return rs.textValue(column).trimmed().toLongLong();
    default:
        return 0;
    }
}

ReadingTransaction::ReadingTransaction() : m_mine(db().isOpen() && !db().inTransaction()) {
    if (m_mine)
        db().beginTrans();
}

ReadingTransaction::~ReadingTransaction() {
    if (!m_mine || !db().inTransaction())
        return;
    try {
        db().commitTrans(); // nothing was written
    } catch (const VbError&) {
        db().clearErrors();
    }
}

QString NameKey(const QString& name) {
    return FoldCase(name);
}

namespace {
bool hasSurrogates(const QString& text) {
    for (const QChar c : text)
        if (c.isSurrogate())
            return true;
    return false;
}
} // namespace

bool SameName(const QString& a, const QString& b) {
    if (a.size() != b.size())
        return false;
    const QChar* p = a.constData();
    const QChar* q = b.constData();
    for (qsizetype i = 0; i < a.size(); ++i) {
        if (p[i].isSurrogate() || q[i].isSurrogate())
            return FoldCase(a) == FoldCase(b); // letters beyond the first plane fold as pairs
        if (FoldCase(p[i].unicode()) != FoldCase(q[i].unicode()))
            return false;
    }
    return true;
}

size_t NameHash(const QString& name, size_t seed) {
    quint64 h = quint64(seed) ^ 0x9E3779B97F4A7C15ull;
    const QString folded = hasSurrogates(name) ? FoldCase(name) : QString();
    for (const QChar c : folded.isNull() ? name : folded)
        h = (h ^ FoldCase(c.unicode())) * 0x100000001B3ull;
    // Names differ mostly at their ends: mix every bit into the low ones the table uses.
    h ^= h >> 33;
    h *= 0xFF51AFD7ED558CCDull;
    h ^= h >> 33;
    return size_t(h);
}

DataStamp CurrentDataStamp() {
    DataStamp stamp;
    sqlite3* h = db().handle();
    if (!h)
        return stamp;
    stamp.connection = h;
    stamp.file = db().fileName();
    stamp.changes = sqlite3_total_changes64(h);
    sqlite3_file_control(h, "main", SQLITE_FCNTL_DATA_VERSION, &stamp.version);
    return stamp;
}
