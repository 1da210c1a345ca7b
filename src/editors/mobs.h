#pragma once
// What the MOB editor (frmAddMob) reads and writes, without its window: the record over MOBS joined
// with MOB_STATS, its property rows, its comments and its eight grids, the loader that fills them and
// the save that writes them back.
//
//   mob::Edit e{&propertyList};           // and the grids by widget name
//   mob::Load(e, name);                   // empty name: a new MOB called "New MOB"
//   ... the user edits the property list, e.comments and the grids ...
//   RunSave(mob::PlanSave(e, Now));       // editorsave.h
//
// The temperaments (BRAVERY, AGGRESSIVENESS, ALTRUISM, INTELIGENCE) are kept in MOB_STATS as their
// words, "Very Low" to "Very High", so that the view and the lists show them as they are stored.
#include "editors/editorsave.h"
#include "editors/griddef.h"
#include "editors/propertylist.h"

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QString>
#include <functional>

class GridModel;
class Recordset;

namespace mob {

inline const QString Container = QStringLiteral("Form frmAddMob");
inline const QString Kind = QStringLiteral("MOBs");
// The name of a new MOB until the user gives it one, and the caption of its window.
inline const QString NewName = QStringLiteral("New MOB");
inline const QString NewCaption = QStringLiteral("New: MOB");
// The property row that holds the name.
inline const QString NameKey = QStringLiteral("MOBS.MOB_NAME");

// The record query for a name as it is stored (it is quote-doubled here).
QString recordSql(const QString& name);
// The grids in the order they are validated and rewritten: ubgAttackTypes, ubgComponents,
// ubgEquipment, ubgItems, ubgLocations, ubgRawMaterials, ubgResistances, ubgWeaknesses.
const QList<GridDef>& grids();
const GridDef& grid(const QString& widget);
// The window's tabs in order: "Comments", then one per grid.
QStringList tabs();
// The widget of the grid a tab shows; empty for "Comments".
QString tabGrid(const QString& tab);
// The lookup tables behind the drop-down and choice lists a player may extend from the editor.
LookupTable mobTypes();
LookupTable factions();

// The editor's state: what the loader fills and the save writes. The property list is the one the
// window shows (or a test's own); the grids are the window's, by widget name.
struct Edit {
    PropertyList* props = nullptr;
    QString comments;
    QString loadedComments;
    bool adding = false;
    // Every row's value once loaded (a new MOB's defaults included): closing asks only after an edit.
    QStringList initial;
    QHash<QString, GridModel*> grids;

    QString name() const { return props->value(NameKey).trimmed(); }
    // A property row or the comments differ from what was read.
    bool recordChanged() const;
    // Whether closing now would lose edits.
    bool hasChanges() const;
};

// Fills the property rows from the record (or the defaults of a new MOB) and the grids from their
// queries. Throws VbError when the record cannot be read (3021 when there is none); a grid whose
// query fails reports itself and stays locked.
void Load(Edit& e, const QString& name);
// The property rows of the joined record; rs is at the record, or at its end for a new MOB.
// Throws VbError when a choice list cannot be read.
void FillProperties(PropertyList& p, const Recordset& rs, bool adding);

// Refuses a name that is empty or holds two adjacent single quotes, with its message. Nothing is
// written before it.
bool CheckName(const QString& name);

// The save as the window runs it: the grids validated in table order, the name rule, then the
// record written through an updatable result set over the join (a new one with PERSONAL_DB,
// UPDATED and LAST_UPDATED set and both key columns named), the changed grids rewritten, and an
// existing record that changed stamped UPDATED and LAST_UPDATED. now() gives the stamp.
SavePlan PlanSave(const Edit& e, const std::function<QDateTime()>& now);

} // namespace mob
