#include "maps/navtypes.h"

namespace {
const char* const kWords[] = {"Asteroid", "Gate",      "Navigation Point", "Planet", "Satellite",
                              "Ship",     "Ship Yard", "Station",          "Weft"};
}

NavKind NavKindOf(const QString& navType) {
    const QString t = navType.trimmed();
    for (int i = 0; i < 9; ++i)
        if (t.compare(QLatin1String(kWords[i]), Qt::CaseInsensitive) == 0)
            return NavKind(i);
    return NavKind::Unknown;
}

QString NavTypeWord(NavKind kind) {
    const int i = int(kind);
    return i >= 0 && i < 9 ? QString::fromLatin1(kWords[i]) : QString();
}

QStringList NavTypeWords() {
    QStringList words;
    for (const char* w : kWords)
        words << QString::fromLatin1(w);
    return words;
}

int LabelPriority(NavKind kind) {
    switch (kind) {
    case NavKind::Station:
    case NavKind::Gate:
        return 8;
    case NavKind::Planet:
        return 7;
    case NavKind::ShipYard:
        return 6;
    case NavKind::Weft:
        return 5;
    case NavKind::NavigationPoint:
        return 4;
    case NavKind::Satellite:
        return 3;
    case NavKind::Ship:
        return 2;
    case NavKind::Asteroid:
        return 1;
    case NavKind::Unknown:
        break;
    }
    return 0;
}
