#include "figures.h"

#include <QList>
#include <algorithm>

namespace bench {
namespace {
QList<NamedGroup>& groups() {
    static QList<NamedGroup> list;
    return list;
}
} // namespace

bool registerFigures(const char* name, FigureGroup group) {
    groups().append({QString::fromLatin1(name), group});
    return true;
}

QList<NamedGroup> registeredFigures() {
    QList<NamedGroup> list = groups();
    std::sort(list.begin(), list.end(),
              [](const NamedGroup& a, const NamedGroup& b) { return a.name < b.name; });
    return list;
}

} // namespace bench
