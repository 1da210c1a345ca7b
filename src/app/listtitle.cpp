#include "app/listtitle.h"

QString ListFilterText(const ListFilters& f) {
    QStringList parts;
    auto add = [&](const char* caption, const QString& value) {
        if (!value.isEmpty() && value != allEntry() && value != QLatin1String("N/A"))
            parts << QLatin1String(caption) + QStringLiteral(": ") + value;
    };
    add("Type", f.equipType);
    add("Type", f.compType);
    add("Subtype", f.subType);
    add("Level", f.level);
    add("Combat level", f.combatBand);
    add("Class", f.race);
    if (f.checked == QLatin1String("Checked"))
        parts << QStringLiteral("Checked only");
    else if (f.checked == QLatin1String("Not Checked"))
        parts << QStringLiteral("Not checked only");
    return parts.join(QStringLiteral(", "));
}
