#include "app/mainsettings.h"

#include "core/programfolder.h"
#include "core/settings.h"

#include <QDir>

namespace {
const QString& S() {
    return mainkey::Section;
}

QString load(const QString& key) {
    return GetSetting(S(), key, allEntry());
}

QString layoutSection(const QString& category) {
    return QStringLiteral("Columns/") + category;
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

void SaveColumnLayout(const QString& category, const ColumnLayout& layout) {
    const QString sec = layoutSection(category);
    SaveSetting(sec, QStringLiteral("ColumnOrder"), joinNumbers(layout.order));
    SaveSetting(sec, QStringLiteral("ColumnWidths"), joinNumbers(layout.widths));
    SaveSetting(sec, QStringLiteral("SortKey"), QString::number(layout.sortKey));
    SaveSetting(sec, QStringLiteral("SortOrder"), QString::number(layout.sortOrder));
}

ColumnLayout LoadColumnLayout(const QString& category) {
    const QString sec = layoutSection(category);
    ColumnLayout l;
    l.order = splitNumbers(GetSetting(sec, QStringLiteral("ColumnOrder")));
    l.widths = splitNumbers(GetSetting(sec, QStringLiteral("ColumnWidths")));
    bool ok = false;
    l.sortKey = GetSetting(sec, QStringLiteral("SortKey"), QStringLiteral("-1")).toInt(&ok);
    if (!ok || l.sortKey < -1)
        l.sortKey = -1;
    l.sortOrder = GetSetting(sec, QStringLiteral("SortOrder"), QStringLiteral("0")).toInt() == 1 ? 1 : 0;
    return l;
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
