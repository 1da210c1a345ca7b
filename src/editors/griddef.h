#pragma once
// How an editor declares one relationship grid: its load query and drop-downs for PopulateGrid, its
// list name for ValidateGrid, its save query and key column for SaveUBGrid. Both queries are written
// up to the record's name; the name, a closing quote and " ORDER BY " + the first column follow.
#include <QString>
#include <QStringList>

struct GridDef {
    QString widget;    // "ubgMOBs"
    QString caption;   // the tab or box it sits on
    QString listName;  // "General: MOBs"
    QString loadQuery; // "SELECT MOB_NAME, DROP_FREQUENCY FROM MOB_RAW_MAT_DROP WHERE RAW_MATERIAL_NAME = '"
    QString orderBy;   // "MOB_NAME"
    QStringList dropDowns;
    QString saveQuery; // the grid's columns in order, then the key column
    QString keyColumn;

    // quotedName is the record's name after quote doubling.
    QStringList queries(const QString& quotedName) const {
        return QStringList{loadQuery + quotedName + QStringLiteral("' ORDER BY ") + orderBy} + dropDowns;
    }
    QString save(const QString& quotedName) const {
        return saveQuery + quotedName + QStringLiteral("' ORDER BY ") + orderBy;
    }
};
