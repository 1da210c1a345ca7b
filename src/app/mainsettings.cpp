#include "app/mainsettings.h"

#include "core/programfolder.h"
#include "core/settings.h"

#include <QDir>

#include <algorithm>

namespace {
const QString& S() {
    return mainkey::Section;
}

QString load(const QString& key) {
    return GetSetting(S(), key, allEntry());
}

QString layoutSection(const QString& key) {
    return QStringLiteral("Columns/") + key;
}
} // namespace

void SaveCategory(const QString& category) {
    SaveSetting(S(), QStringLiteral("Data"), category);
}

QString LoadCategory() {
    return GetSetting(S(), QStringLiteral("Data"), listcat::Equipment);
}

void SaveFilters(const ListFilters& f) {
    SaveSetting(S(), QStringLiteral("EquipType"), f.equipType);
    SaveSetting(S(), QStringLiteral("Level"), f.level);
    SaveSetting(S(), QStringLiteral("Checked"), f.checked);
    SaveSetting(S(), QStringLiteral("CompType"), f.compType);
    SaveSetting(S(), QStringLiteral("SubType"), f.subType);
    SaveSetting(S(), QStringLiteral("CL"), f.combatBand);
    SaveSetting(S(), QStringLiteral("Race"), f.race);
}

ListFilters LoadFilters() {
    ListFilters f;
    f.equipType = load(QStringLiteral("EquipType"));
    f.level = load(QStringLiteral("Level"));
    f.checked = load(QStringLiteral("Checked"));
    f.compType = load(QStringLiteral("CompType"));
    f.subType = load(QStringLiteral("SubType"));
    f.combatBand = load(QStringLiteral("CL"));
    f.race = load(QStringLiteral("Race"));
    return f;
}

void SaveWindowPlace(const MainWindowPlace& p) {
    SaveSetting(S(), QStringLiteral("WindowState"), QString::number(p.windowState));
    SaveSetting(S(), QStringLiteral("Geometry"), QString::fromLatin1(p.geometry.toBase64()));
}

MainWindowPlace LoadWindowPlace() {
    MainWindowPlace p;
    p.windowState = GetSetting(S(), QStringLiteral("WindowState"), QStringLiteral("0")).toInt();
    if (p.windowState < 0 || p.windowState > 2)
        p.windowState = 0;
    p.geometry = QByteArray::fromBase64(GetSetting(S(), QStringLiteral("Geometry")).toLatin1());
    return p;
}

int ColumnLayout::width(const QString& column) const {
    const qsizetype i = order.indexOf(column);
    return i >= 0 && i < widths.size() ? widths.at(i) : 0;
}

QString ColumnLayoutKey(const QString& category, const QString& equipType) {
    if (category == listcat::Equipment && !equipType.isEmpty() && equipType != allEntry())
        return category + QLatin1Char('/') + equipType;
    return category;
}

void SaveColumnLayout(const QString& key, const ColumnLayout& layout) {
    const QString sec = layoutSection(key);
    SaveSetting(sec, QStringLiteral("ColumnOrder"), layout.order.join(QLatin1Char(',')));
    SaveSetting(sec, QStringLiteral("ColumnWidths"), joinNumbers(layout.widths));
    SaveSetting(sec, QStringLiteral("SortColumn"), layout.sortColumn);
    SaveSetting(sec, QStringLiteral("SortKey"), QString::number(layout.sortKey));
    SaveSetting(sec, QStringLiteral("SortOrder"), QString::number(layout.sortOrder));
}

ColumnLayout LoadColumnLayout(const QString& key) {
    const QString sec = layoutSection(key);
    ColumnLayout l;
    const QString order = GetSetting(sec, QStringLiteral("ColumnOrder")).trimmed();
    if (!order.isEmpty())
        l.order = order.split(QLatin1Char(','));
    l.widths = splitNumbers(GetSetting(sec, QStringLiteral("ColumnWidths")));
    if (l.widths.size() != l.order.size())
        l.widths.clear();
    l.sortColumn = GetSetting(sec, QStringLiteral("SortColumn")).trimmed();
    bool ok = false;
    l.sortKey = GetSetting(sec, QStringLiteral("SortKey"), QStringLiteral("-1")).toInt(&ok);
    if (!ok || l.sortKey < -1)
        l.sortKey = -1;
    l.sortOrder = GetSetting(sec, QStringLiteral("SortOrder"), QStringLiteral("0")).toInt() == 1 ? 1 : 0;
    return l;
}

QList<int> VisualOrder(const QStringList& columns, const QStringList& savedOrder) {
    QList<int> order;
    for (const QString& name : savedOrder) {
        const int c = int(columns.indexOf(name));
        if (c >= 0 && !order.contains(c))
            order << c;
    }
    for (int c = 0; c < int(columns.size()); ++c) {
        if (order.contains(c))
            continue;
        qsizetype at = 0;
        for (qsizetype i = 0; i < order.size(); ++i)
            if (order.at(i) < c)
                at = i + 1;
        order.insert(at, c);
    }
    return order;
}

QList<int> FitWidths(const QList<int>& widths, int budget, int minimum) {
    int total = 0;
    for (int w : widths)
        total += w;
    if (total <= budget)
        return widths;
    // The largest cap under which the capped widths fit: walk up the widths from the narrowest,
    // each one either fits under an even share of what is left, or the share is the cap.
    QList<int> sorted = widths;
    std::sort(sorted.begin(), sorted.end());
    int below = 0;
    int cap = minimum;
    for (qsizetype i = 0; i < sorted.size(); ++i) {
        const int share = (budget - below) / int(sorted.size() - i);
        if (share <= sorted.at(i)) {
            cap = qMax(minimum, share);
            break;
        }
        below += sorted.at(i);
    }
    QList<int> out;
    out.reserve(widths.size());
    for (int w : widths)
        out << qMin(w, cap);
    return out;
}

void SaveProgramPath() {
    SaveSetting(S(), QStringLiteral("path"), QDir::toNativeSeparators(programFolder()));
}

QString joinNumbers(const QList<int>& list) {
    QStringList parts;
    for (int v : list)
        parts << QString::number(v);
    return parts.join(QLatin1Char(','));
}

QList<int> splitNumbers(const QString& text) {
    QList<int> list;
    if (text.trimmed().isEmpty())
        return list;
    for (const QString& part : text.split(QLatin1Char(','))) {
        bool ok = false;
        const int v = part.trimmed().toInt(&ok);
        if (!ok)
            return {};
        list << v;
    }
    return list;
}
