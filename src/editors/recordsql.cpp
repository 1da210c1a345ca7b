#include "editors/recordsql.h"

#include "data/quotes.h"
#include "data/recordset.h"
#include "views/modmain.h"

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

PricedFields ReadPricedFields(const Recordset& rs, const QString& nameColumn) {
    PricedFields f;
    f.name = NzString(rs.value(nameColumn));
    f.level = NzString(rs.value(QStringLiteral("LVL")));
    f.price = NzString(rs.value(QStringLiteral("PRICE")));
    f.comments = NzString(rs.value(QStringLiteral("COMMENTS")));
    f.picture = NzLong(rs.value(QStringLiteral("PIC_ID")));
    return f;
}

QString RecordSql(const QString& table, const QString& nameColumn, const QString& name) {
    return QStringLiteral("SELECT * FROM ") + table + QStringLiteral(" WHERE ") + nameColumn +
           QStringLiteral(" = '") + FixQuotes(name) + QLatin1Char('\'');
}

void OpenStoredRecord(Recordset& rs, const QString& table, const QString& nameColumn, const QString& name) {
    rs.open(RecordSql(table, nameColumn, name));
    if (rs.eof())
        throw NoCurrentRecord();
}
