#include "data/quotes.h"

QString FixQuotes(const QString& text) {
    // Text that already holds two quotes together is taken as quoted already.
    if (text.contains(QLatin1String("''")))
        return text;
    QString out = text;
    out.replace(u'\'', QLatin1String("''"));
    return out;
}

bool ValidName(const QString& name) {
    return !name.contains(QLatin1String("''"));
}
