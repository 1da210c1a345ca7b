#pragma once
// The printed property sheet of a record: a title, caption/value rows and titled sections of lines,
// written out as simple HTML for the printer.
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

struct PropertySheet {
    QString title;
    QString subtitle;
    QList<QPair<QString, QString>> rows;
    QList<QPair<QString, QStringList>> sections;
};

QString PropertySheetHtml(const PropertySheet& sheet);
// The equipment's sheet, read from the database by name and type: header, prices, statistics,
// specials, buy locations, allowed classes and recipe. Throws on a failed statement.
PropertySheet EquipmentPropertySheet(const QString& name, int typeIndex);
