// The equipment editor's save: the record through an updatable result set over the type's statement,
// then the lists and the grids that changed, then the stamp of an existing record.
#include "core/clock.h"
#include "core/prompt.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "editors/equipment.h"
#include "editors/propertylist.h"
#include "views/equiptypes.h"
#include "views/modmain.h"

#include <memory>

namespace equipedit {
namespace {
const QString Container = QStringLiteral("Form frmAddEquip");

// Writes the record itself into rs (opened on its statement): a new row with its type and marks, the
// changed property rows, the picture and the comments. True when anything of it was written.
bool writeRecord(Recordset& rs, const SaveInput& in) {
    if (in.isNew) {
        rs.addNew();
        rs.setValue(QStringLiteral("TYPE"), DeEnumerate(in.type));
        rs.setValue(QStringLiteral("PERSONAL_DB"), true);
        // A device has no statistics row to make.
        if (in.type != equip::Device)
            rs.setValue(QStringLiteral("STAT_NAME"), in.title);
    }
    const bool ammunition = in.type == equip::Ammunition;
    bool changed = in.properties->writeChanged(rs, [ammunition](const QString& key) {
        // TYPE is set above for a new record and cannot change for one that exists; an ammunition's
        // launch type belongs to its ammunition type and is not a column of the record.
        return key == QLatin1String("TYPE") || (ammunition && key == QLatin1String("LAUNCH_TYPE"));
    });
    // A new row has nothing stored yet: its picture and comments count as 0 and empty.
    const qint32 storedPicture = in.isNew ? 0 : NzLong(rs.value(QStringLiteral("PIC_ID")));
    if (storedPicture != in.picture) {
        rs.setValue(QStringLiteral("PIC_ID"), in.picture);
        changed = true;
    }
    const QString storedComments = in.isNew ? QString() : NzString(rs.value(QStringLiteral("COMMENTS")));
    if (storedComments != in.comments) {
        rs.setValue(QStringLiteral("COMMENTS"), in.comments);
        changed = true;
    }
    if (in.isNew) {
        rs.setValue(QStringLiteral("UPDATED"), true);
        rs.setValue(QStringLiteral("LAST_UPDATED"), Now());
        changed = true;
    }
    rs.update();
    return changed;
}
} // namespace

SavePlan BuildSavePlan(const SaveInput& in) {
    const QString name = in.properties->value(QStringLiteral("EQUIPMENT_NAME"));
    const QString quoted = FixQuotes(name);
    SavePlan plan;
    plan.container = Container;
    for (const auto& v : validationOrder())
        plan.validate.append({in.grids.value(v.first), v.second});

    GridModel* specials = in.grids.value(QStringLiteral("ubgSpecials"));
    plan.checkInput = [specials, name] {
        if (specials && !CheckSpecials(*specials))
            return false;
        return CheckRecordInput(name, {});
    };

    // The record's result set stays open from the record's write to the stamp after the grids.
    auto rs = std::make_shared<Recordset>();
    plan.writeRecord = [rs, in, name](bool) {
        rs->open(recordSql(in.type, name), db(), Recordset::Dynamic);
        return writeRecord(*rs, in);
    };
    for (const QString& w : writeOrder()) {
        if (w == QLatin1String("lstAllowed")) {
            plan.writes.append(SaveStep::forList(
                in.classes, in.loadedClasses, QStringLiteral("EQUIPMENT_CLASS"),
                QStringLiteral("EQUIPMENTS_EQUIPMENT"), QStringLiteral("CLASS_NAME"), quoted));
        } else if (w == QLatin1String("lstBuyLocations")) {
            plan.writes.append(SaveStep::forList(
                in.stations, in.loadedStations, QStringLiteral("BUY_EQUIPMENT_LOCATION"),
                QStringLiteral("EQUIPMENTS_EQUIPMENT"), QStringLiteral("STATIONS_STATION"), quoted));
        } else {
            const GridDef& def = grid(w);
            const bool again = w == QLatin1String("ubgBlueEquip") && !plan.writes.isEmpty() &&
                               plan.writes.last().grid == in.grids.value(w);
            // The upgrade sources are written twice, the second time in the order of their names;
            // the second pass rewrites the very rows the first one wrote.
            const QString save = again ? def.saveQuery + quoted +
                                             QStringLiteral("' ORDER BY EQUIPMENTS_UPGRADE_FROM.UPGRADE_FROM")
                                       : def.save(quoted);
            plan.writes.append(SaveStep::forGrid(*in.grids.value(w), save, def.keyColumn, name));
        }
    }
    const bool isNew = in.isNew;
    plan.finish = [rs, isNew](bool changed) {
        if (!changed || isNew)
            return;
        rs->setValue(QStringLiteral("UPDATED"), true);
        rs->setValue(QStringLiteral("LAST_UPDATED"), Now());
        rs->update();
    };
    return plan;
}

} // namespace equipedit
