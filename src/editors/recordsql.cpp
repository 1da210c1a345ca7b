#include "editors/recordsql.h"

#include "data/quotes.h"

#include <QRegularExpression>

QString SqlNumber(const QString& typed) {
    return typed.isEmpty() ? QStringLiteral("NULL") : typed;
}

QString SqlText(const QString& text) {
    return text.isEmpty() ? QStringLiteral("NULL") : QLatin1Char('\'') + FixQuotes(text) + QLatin1Char('\'');
}

bool IsWholeNumberText(const QString& typed) {
    static const QRegularExpression whole(QStringLiteral("\\A(-?[0-9]+)?\\z"));
    return whole.match(typed).hasMatch();
}

const GridDef& FindGridDef(const QList<GridDef>& defs, const QString& widget) {
    for (const GridDef& g : defs)
        if (g.widget == widget)
            return g;
    return defs.first();
}
