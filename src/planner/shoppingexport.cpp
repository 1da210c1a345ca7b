#include "planner/shoppingexport.h"

namespace planner {

namespace {
const QString kEol = QStringLiteral("\r\n");

bool obtained(const ShoppingLine& l) {
    return l.checked || l.toGet == 0;
}

QString totalsText(const ShoppingList& list) {
    QString t = QStringLiteral("Total to buy: %1 credits").arg(QuantityText(list.totalCost));
    if (list.unpriced > 0)
        t += QStringLiteral(" (%1 without a price)")
                 .arg(list.unpriced == 1 ? QStringLiteral("1 line")
                                         : QStringLiteral("%1 lines").arg(list.unpriced));
    if (list.fees > 0)
        t += QStringLiteral("; manufacturing fees: %1 credits").arg(QuantityText(list.fees));
    return t;
}

QString groupHeading(const ShoppingList& list, Group g) {
    const GroupTotal& t = list.groups[int(g)];
    QString h = GroupTitle(g) + QStringLiteral(" (%1)").arg(t.lines);
    if (t.cost > 0)
        h += QStringLiteral(" \u2014 %1 credits").arg(QuantityText(t.cost));
    return h;
}

QString csvField(const QString& text) {
    if (!text.contains(u',') && !text.contains(u'"') && !text.contains(u'\n') && !text.contains(u'\r') &&
        text.trimmed() == text)
        return text;
    QString q = text;
    q.replace(u'"', QStringLiteral("\"\""));
    return u'"' + q + u'"';
}
} // namespace

QString TargetsText(const QList<bom::Target>& targets, const bom::RecipeBook& book) {
    QStringList parts;
    for (const bom::Target& t : targets) {
        const int i = book.indexOf(t.ref);
        parts << QuantityText(t.quantity) + QStringLiteral(" \u00d7 ") +
                     (i >= 0 ? book.at(i).name : t.ref.name);
    }
    return parts.join(QStringLiteral(", "));
}

QString ShoppingListText(const ShoppingList& list, const QString& targets) {
    QString out = QStringLiteral("Shopping list: ") + targets + kEol + totalsText(list) + kEol;
    for (const QString& w : list.warnings)
        out += QStringLiteral("! ") + w + kEol;
    for (int g = 0; g < GroupCount; ++g) {
        if (list.groups[g].lines == 0)
            continue;
        out += kEol + groupHeading(list, Group(g)) + kEol;
        for (const ShoppingLine& l : list.lines) {
            if (int(l.group) != g)
                continue;
            QString line = QStringLiteral("  [%1] %2 \u00d7 %3 (%4)")
                               .arg(obtained(l) ? QStringLiteral("x") : QStringLiteral(" "),
                                    QuantityText(l.toGet), l.ref.name, bom::kindWord(l.ref.kind));
            if (l.have > 0)
                line += QStringLiteral(", have %1 of %2")
                            .arg(QuantityText(l.have), QuantityText(l.ordered + l.needed));
            if (l.costKnown)
                line += QStringLiteral(" \u2014 %1 each, %2").arg(l.priceText, QuantityText(l.cost));
            else if (!l.priceText.isEmpty())
                line += QStringLiteral(" \u2014 ") + l.priceText;
            if (!l.where.isEmpty())
                line += QStringLiteral(" \u2014 ") + l.where;
            out += line + kEol;
        }
    }
    return out;
}

QString ShoppingListCsv(const ShoppingList& list) {
    const QStringList header = {"Group", "Name", "Kind",  "Ordered",    "Needed",  "Have", "To Get",
                                "Price", "Cost", "Where", "Other Ways", "Used In", "For",  "Obtained"};
    QString out = header.join(u',') + kEol;
    for (const ShoppingLine& l : list.lines) {
        const QStringList row = {GroupTitle(l.group),
                                 l.ref.name,
                                 bom::kindWord(l.ref.kind),
                                 QString::number(l.ordered),
                                 QString::number(l.needed),
                                 QString::number(l.have),
                                 QString::number(l.toGet),
                                 QString(l.priceText).remove(u','),
                                 l.costKnown ? QString::number(l.cost) : QString(),
                                 l.where,
                                 l.otherWays,
                                 l.usedIn,
                                 l.forTargets,
                                 obtained(l) ? QStringLiteral("Yes") : QStringLiteral("No")};
        QStringList fields;
        for (const QString& f : row)
            fields << csvField(f);
        out += fields.join(u',') + kEol;
    }
    return out;
}

QString ShoppingListHtml(const ShoppingList& list, const QString& targets) {
    QString html = QStringLiteral("<html><body><h2>Shopping List</h2><p><b>%1</b></p><p>%2</p>")
                       .arg(targets.toHtmlEscaped(), totalsText(list).toHtmlEscaped());
    for (const QString& w : list.warnings)
        html += QStringLiteral("<p style=\"color:#a00000\">%1</p>").arg(w.toHtmlEscaped());
    for (int g = 0; g < GroupCount; ++g) {
        if (list.groups[g].lines == 0)
            continue;
        html += QStringLiteral(
                    "<h3>%1</h3><table border=\"1\" cellspacing=\"0\" cellpadding=\"3\" width=\"100%\">"
                    "<tr><th></th><th align=\"right\">To Get</th><th align=\"left\">Name</th>"
                    "<th align=\"right\">Price</th><th align=\"right\">Cost</th>"
                    "<th align=\"left\">Where</th></tr>")
                    .arg(groupHeading(list, Group(g)).toHtmlEscaped());
        for (const ShoppingLine& l : list.lines) {
            if (int(l.group) != g)
                continue;
            html += QStringLiteral(
                        "<tr><td>%1</td><td align=\"right\">%2</td><td>%3</td><td align=\"right\">%4</td>"
                        "<td align=\"right\">%5</td><td>%6</td></tr>")
                        .arg(obtained(l) ? QStringLiteral("\u2611") : QStringLiteral("\u2610"),
                             QuantityText(l.toGet), l.ref.name.toHtmlEscaped(), l.priceText.toHtmlEscaped(),
                             l.costKnown ? QuantityText(l.cost) : QString(), l.where.toHtmlEscaped());
        }
        html += QStringLiteral("</table>");
    }
    return html + QStringLiteral("</body></html>");
}

} // namespace planner
