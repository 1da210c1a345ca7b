#include "views/propertysheet.h"

#include "data/quotes.h"
#include "data/recordset.h"
#include "views/buildtree.h"
#include "views/equiptypes.h"
#include "views/modmain.h"

QString PropertySheetHtml(const PropertySheet& sheet) {
    QString html = QStringLiteral("<html><body style=\"font-family: sans-serif;\">");
    html += "<h2>" + sheet.title.toHtmlEscaped() + "</h2>";
    if (!sheet.subtitle.isEmpty())
        html += "<p><i>" + sheet.subtitle.toHtmlEscaped() + "</i></p>";
    if (!sheet.rows.isEmpty()) {
        html += QStringLiteral("<table cellspacing=\"0\" cellpadding=\"3\" border=\"1\" width=\"100%\">");
        for (const auto& [caption, value] : sheet.rows)
            html += "<tr><td width=\"40%\"><b>" + caption.toHtmlEscaped() + "</b></td><td>" +
                    value.toHtmlEscaped().replace(QLatin1String("\n"), QLatin1String("<br>")) + "</td></tr>";
        html += QStringLiteral("</table>");
    }
    for (const auto& [heading, lines] : sheet.sections) {
        html += "<h3>" + heading.toHtmlEscaped() + "</h3>";
        if (lines.isEmpty()) {
            html += QStringLiteral("<p>None</p>");
            continue;
        }
        html += QStringLiteral("<p>");
        for (const QString& line : lines) {
            int depth = 0;
            while (depth < line.size() && line.at(depth) == QLatin1Char('\t'))
                ++depth;
            html += QString(depth * 4, QChar(0xA0)) + line.mid(depth).toHtmlEscaped() + "<br>";
        }
        html += QStringLiteral("</p>");
    }
    return html + QStringLiteral("</body></html>");
}

namespace {
QStringList names(const QString& sql) {
    Recordset rs;
    rs.open(sql);
    return PopulateList(rs);
}

QString cellText(Recordset& rs, int i) {
    const FieldKind kind = rs.fieldKind(i);
    if (isWholeNumber(kind))
        return FormatWhole(NzLong(rs.value(i)));
    if (isFraction(kind))
        return RoundText(NzDouble(rs.value(i)));
    return NzString(rs.value(i));
}
} // namespace

PropertySheet EquipmentPropertySheet(const QString& name, int typeIndex) {
    const QString q = FixQuotes(name);
    PropertySheet sheet;
    sheet.title = DeEnumerate(typeIndex) + ": " + name;
    {
        Recordset rs;
        rs.open(GetSQL(typeIndex, false, false, true, true, QString(), false) +
                " AND EQUIPMENTS.EQUIPMENT_NAME = '" + q + "'");
        if (rs.eof())
            throw NoCurrentRecord();
        sheet.subtitle = "Level " + NzString(rs.value(3)) + " " + NzString(rs.value(1));
        if (NzBool(rs.value(7)))
            sheet.subtitle = "Unique " + sheet.subtitle;
        sheet.rows.append({"Manufacturer", NzString(rs.value(2))});
        sheet.rows.append({"Quality", NzString(rs.value(6)) + "%"});
        sheet.rows.append({"Purchase Price", PriceText(FormatWhole(NzLong(rs.value(5))), false)});
        sheet.rows.append({"Manufacturing Fee", PriceText(FormatWhole(NzLong(rs.value(8))), true)});
        const CustomFields& cf = customFields();
        if (cf.on)
            for (int i = 0; i < 3; ++i)
                if (!cf.caption[i].isEmpty())
                    sheet.rows.append({cf.caption[i], NzString(rs.value(11 + i))});
        for (int i = 14; i < rs.fieldCount(); ++i)
            sheet.rows.append({FormatFieldName(rs.fieldName(i)), cellText(rs, i)});
        sheet.rows.append({"Last Updated", NzString(rs.value(9))});
        if (!NzString(rs.value(4)).isEmpty())
            sheet.rows.append({"Comments", NzString(rs.value(4))});
    }
    QStringList specials;
    {
        Recordset rs;
        rs.open("SELECT SPECIAL, AMOUNT, UNITS, ENERGY_USE, RANGE, DURATION, SHUNT FROM EQUIP_SPECIALS WHERE "
                "EQUIPMENT_NAME ='" +
                q + "' ORDER BY SPECIAL");
        for (; !rs.eof(); rs.moveNext()) {
            specials.append(SpecialText(NzString(rs.value(0)), rs.value(1), NzString(rs.value(2))));
            for (int i = 3; i <= 6; ++i) {
                const QString detail = SpecialDetailText(rs.fieldName(i), rs.value(i));
                if (!detail.isEmpty())
                    specials.append("\t" + detail);
            }
        }
    }
    if (!specials.isEmpty())
        sheet.sections.append({"Specials", specials});
    sheet.sections.append({"Buy Locations", names("SELECT STATIONS_STATION FROM BUY_EQUIPMENT_LOCATION WHERE "
                                                  "EQUIPMENTS_EQUIPMENT = '" +
                                                  q + "' ORDER BY STATIONS_STATION")});
    sheet.sections.append({"Allowed Classes", names("SELECT CLASS_NAME FROM EQUIPMENT_CLASS WHERE "
                                                    "EQUIPMENTS_EQUIPMENT = '" +
                                                    q + "' ORDER BY CLASS_NAME")});
    TreeNodeList tree;
    bool recurse = true;
    tree.addNode(QString(), name, name, buildimg::Equipment);
    BuildEquipTree(name, name, tree, recurse);
    QStringList recipe = TreeClipboardText(tree).split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
    if (!recipe.isEmpty())
        recipe.removeFirst(); // the equipment itself is the title
    for (QString& line : recipe)
        line.remove(0, 1);
    sheet.sections.append({"Blueprint", recipe});
    return sheet;
}
