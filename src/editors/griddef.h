#pragma once
// How an editor declares one relationship grid: its load query and drop-downs for PopulateGrid, its
// list name for ValidateGrid, its save query and key column for SaveUBGrid. Both queries are written
// up to the record's name; the name, a closing quote and " ORDER BY " + the first column follow.
#include <QList>
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

// The drop-down lists the relationship grids offer, as "query|column": every record of a kind, by
// name, for the first column; the drop frequencies for the second.
namespace GridChoices {
inline const QString Equipment =
    QStringLiteral("SELECT EQUIPMENT_NAME FROM EQUIPMENTS ORDER BY EQUIPMENT_NAME|1");
inline const QString Components =
    QStringLiteral("SELECT COMPONENT_NAME FROM COMPONENTS ORDER BY COMPONENT_NAME|1");
inline const QString RawMaterials =
    QStringLiteral("SELECT RAW_MATERIAL_NAME FROM RAW_MATERIALS ORDER BY RAW_MATERIAL_NAME|1");
inline const QString Items = QStringLiteral("SELECT ITEM_NAME FROM ITEMS ORDER BY ITEM_NAME|1");
inline const QString Mobs = QStringLiteral("SELECT MOB_NAME FROM MOBS ORDER BY MOB_NAME|1");
inline const QString DropFrequencies = QStringLiteral("SELECT FREQUENCY FROM DROP_FREQUENCY|2");
} // namespace GridChoices

// The grid of the list with the widget's name (the first one when there is none).
inline const GridDef& FindGridDef(const QList<GridDef>& defs, const QString& widget) {
    for (const GridDef& g : defs)
        if (g.widget == widget)
            return g;
    return defs.first();
}
