#pragma once
// What the equipment editor (frmAddEquip) reads and writes, without its window: the record's
// statement per type, its property rows, the ammunition-type choices, the two lists, the eight grids,
// the specials checks and the save.
//
// The record is read and written through GetSQL with the marks, the picture, the custom fields and
// STAT_NAME, and with the plain ammunition columns: every column of it can then be written back to
// EQUIPMENTS or to the type's statistics table. An ammunition's launch type belongs to its ammunition
// type (AMO_TYPES), so the LAUNCH_TYPE row only chooses which ammunition types are offered and is
// never written.
#include "editors/editorsave.h"
#include "editors/griddef.h"

#include <QHash>
#include <QList>
#include <QPair>
#include <QString>

class GridModel;
class PropertyList;
class Recordset;

namespace equipedit {

// The grids: ubgBlueEquip, ubgBlueComps, ubgBlueRawMats, ubgBlueItems (Blueprint), ubgManuEquip,
// ubgManuComps (Manufacturing), ubgMOBs and ubgSpecials (the specials on the General tab).
const QList<GridDef>& grids();
const GridDef& grid(const QString& widget);
// The grids checked by ValidateGrid before a save, in order, with their list names. The specials
// have checks of their own (CheckSpecials).
QList<QPair<QString, QString>> validationOrder();

// The record's statement: GetSQL for the type, restricted to the name (quote-doubled here).
QString recordSql(int type, const QString& name);
// The type index of a stored record. Throws VbError 3021 when there is no such record.
int storedType(const QString& name);

// The two plain lists and the values their pick dialogs offer.
QString classesSql(const QString& name);
QString stationsSql(const QString& name);
QString allClassesSql();
QString allStationsSql();

// The ammunition types of a launch type, as PopulateAmmoList offers them.
QString ammoTypesSql(const QString& launchType);

// The property rows of a record of the type from its statement (rs at its end for a new record):
// General, Prices, the type's statistics, the custom fields in use, and the date of the last change.
// A new record takes the defaults (QUALITY 100). Throws VbError when a choice list cannot be read.
void FillProperties(PropertyList& p, const Recordset& rs, int type, bool isNew);
// The ammunition-type choices (AMO_TYPE_AMO) for the launch type the LAUNCH_TYPE row holds now.
// Throws VbError.
void PopulateAmmoList(PropertyList& p);
// The user chose another launch type: the ammunition types follow, and an ammunition type that the
// new launch type does not offer is cleared. Throws VbError.
void LaunchTypeChanged(PropertyList& p);
// The property values that carry over when a new record's type is changed: every row but TYPE and
// the date, keyed by column.
QHash<QString, QString> CarriedValues(const PropertyList& p);

// The checks of the specials grid, row by row: a special named twice, an empty amount (set to 0), an
// empty unit. Shows the first fault and returns false.
bool CheckSpecials(GridModel& specials);

// Everything the save needs from the window. The grids by widget name; the lists as they are now
// and as they were loaded (joined with "|").
struct SaveInput {
    int type = 0;
    bool isNew = false;
    QString title; // the title label: the name as typed, which a new record's statistics row takes
    const PropertyList* properties = nullptr;
    qint32 picture = 0;
    QString comments;
    QStringList classes, stations;
    QString loadedClasses, loadedStations;
    QHash<QString, GridModel*> grids;
};
// The save: the grids validated, the specials checked, the name rule, then in one transaction the
// record (only its changed rows, picture and comments), the two lists and the grids that changed, in
// their order (ubgBlueEquip twice), and UPDATED with LAST_UPDATED for an existing record that changed.
SavePlan BuildSavePlan(const SaveInput& in);
// The widgets in the order the save rewrites them (lists and grids; ubgBlueEquip twice).
QStringList writeOrder();

} // namespace equipedit
