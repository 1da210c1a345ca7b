#include "planner/plannerstore.h"

#include "core/settings.h"
#include "data/database.h"
#include "data/quotes.h"
#include "data/schema.h"

namespace planner {

namespace {
const QString kSection = QStringLiteral("ShoppingList");

QString quoted(const QString& name) {
    return QLatin1Char('\'') + FixQuotes(name) + QLatin1Char('\'');
}

// Lines of tab-separated fields: "kind, name, value" per record.
QString refLines(const QList<QPair<bom::Ref, QString>>& rows) {
    QStringList lines;
    for (const auto& [ref, value] : rows)
        lines << bom::categoryOf(ref.kind) + u'\t' + ref.name + u'\t' + value;
    return lines.join(u'\n');
}

QList<QPair<bom::Ref, QString>> readRefLines(const QString& text) {
    QList<QPair<bom::Ref, QString>> rows;
    for (const QString& line : text.split(u'\n', Qt::SkipEmptyParts)) {
        const QStringList f = line.split(u'\t');
        bom::Kind kind;
        if (f.size() == 3 && !f[1].isEmpty() && bom::kindOfWord(f[0], &kind))
            rows.append({{kind, f[1]}, f[2]});
    }
    return rows;
}
} // namespace

void WriteCheck(const bom::Ref& ref, bool checked) {
    const QString state = checked ? QStringLiteral("TRUE") : QStringLiteral("FALSE");
    const QString name = FixQuotes(ref.name);
    switch (ref.kind) {
    case bom::Kind::Equipment:
        db().execute("UPDATE EQUIPMENTS SET EQUIPMENTS.CHECK = " + state + " WHERE EQUIPMENT_NAME = '" +
                     name + "';");
        break;
    case bom::Kind::Component:
        db().execute("UPDATE COMPONENTS SET COMPONENTS.CHECK = " + state + " WHERE COMPONENT_NAME = '" +
                     name + "';");
        break;
    case bom::Kind::RawMaterial:
        db().execute("UPDATE RAW_MATERIALS SET RAW_MATERIALS.CHECK = " + state +
                     " WHERE RAW_MATERIAL_NAME = '" + name + "'");
        break;
    case bom::Kind::Item:
        db().execute("UPDATE ITEMS SET ITEMS.CHECK = " + state + " WHERE ITEM_NAME = '" + name + "'");
        break;
    }
}

void WriteOwned(const bom::Ref& ref, qint64 quantity) {
    QString why;
    if (!db().handle() || !schema::EnsureAddedTables(db().handle(), &why))
        throw VbError(vberr::PermissionDenied,
                      QStringLiteral("The quantities you have cannot be kept in this database: ") + why);
    const QString where = QStringLiteral(" WHERE RECORD_KIND = '") + bom::categoryOf(ref.kind) +
                          QStringLiteral("' AND RECORD_NAME = ") + quoted(ref.name);
    if (quantity <= 0) {
        db().execute(QStringLiteral("DELETE FROM OWNED_QUANTITIES") + where);
        return;
    }
    const QString amount = QString::number(quantity);
    if (db().execute(QStringLiteral("UPDATE OWNED_QUANTITIES SET QUANTITY = ") + amount + where) == 0)
        db().execute(
            QStringLiteral("INSERT INTO OWNED_QUANTITIES (RECORD_KIND, RECORD_NAME, QUANTITY) VALUES ('") +
            bom::categoryOf(ref.kind) + QStringLiteral("', ") + quoted(ref.name) + QStringLiteral(", ") +
            amount + u')');
}

SavedPlan LoadPlan() {
    SavedPlan plan;
    for (const auto& [ref, value] : readRefLines(GetSetting(kSection, QStringLiteral("Targets")))) {
        const qint64 quantity = value.toLongLong();
        if (quantity > 0)
            plan.targets.append({ref, qMin(quantity, bom::MaxQuantity)});
    }
    for (const auto& [ref, value] : readRefLines(GetSetting(kSection, QStringLiteral("Choices"))))
        plan.build.insert(ref, value == QLatin1String("Build"));
    plan.buildIntermediates =
        textBool(GetSetting(kSection, QStringLiteral("BuildIntermediates"), boolText(true)));
    plan.countHave = textBool(GetSetting(kSection, QStringLiteral("CountHave"), boolText(true)));
    return plan;
}

void SavePlan(const SavedPlan& plan) {
    QList<QPair<bom::Ref, QString>> targets, choices;
    for (const bom::Target& t : plan.targets)
        targets.append({t.ref, QString::number(t.quantity)});
    for (auto it = plan.build.constBegin(); it != plan.build.constEnd(); ++it)
        choices.append({it.key(), it.value() ? QStringLiteral("Build") : QStringLiteral("Buy")});
    SaveSetting(kSection, QStringLiteral("Targets"), refLines(targets));
    SaveSetting(kSection, QStringLiteral("Choices"), refLines(choices));
    SaveSetting(kSection, QStringLiteral("BuildIntermediates"), boolText(plan.buildIntermediates));
    SaveSetting(kSection, QStringLiteral("CountHave"), boolText(plan.countHave));
}

} // namespace planner
