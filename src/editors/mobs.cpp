#include "editors/mobs.h"

#include "core/prompt.h"
#include "data/database.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "editors/gridmodel.h"
#include "editors/gridroutines.h"
#include "views/modmain.h"

#include <memory>

namespace mob {
namespace {
const QString DamageTypes = QStringLiteral("SELECT DAMAGE_TYPE FROM DAMAGE_TYPE ORDER BY DAMAGE_TYPE|1");

GridDef def(const char* widget, const char* listName, const char* columns, const char* table,
            const char* orderBy, const QStringList& dropDowns) {
    const QString cols = QLatin1String(columns), from = QLatin1String(table);
    return GridDef{QLatin1String(widget),
                   QLatin1String(listName),
                   QLatin1String(listName),
                   QStringLiteral("SELECT ") + cols + QStringLiteral(" FROM ") + from +
                       QStringLiteral(" WHERE MOB_NAME = '"),
                   QLatin1String(orderBy),
                   dropDowns,
                   QStringLiteral("SELECT ") + cols + QStringLiteral(", MOB_NAME FROM ") + from +
                       QStringLiteral(" WHERE MOB_NAME = '"),
                   QStringLiteral("MOB_NAME")};
}

QList<GridDef> build() {
    QList<GridDef> g;
    g << def("ubgAttackTypes", "Attack Types", "ATTACK_TYPE, AMOUNT", "MOB_ATTACK_TYPE", "ATTACK_TYPE",
             {DamageTypes});
    g << def("ubgComponents", "Components", "COMPONENT_NAME, DROP_FREQUENCY", "MOB_COMP_DROP",
             "COMPONENT_NAME", {GridChoices::Components, GridChoices::DropFrequencies});
    g << def("ubgEquipment", "Equipment", "EQUIPMENT_NAME, DROP_FREQUENCY", "MOB_EQUIP_DROP",
             "EQUIPMENT_NAME", {GridChoices::Equipment, GridChoices::DropFrequencies});
    g << def("ubgItems", "Items", "ITEM_NAME, DROP_FREQUENCY", "MOB_ITEM_DROP", "ITEM_NAME",
             {GridChoices::Items, GridChoices::DropFrequencies});
    g << def("ubgLocations", "Locations", "SECTOR_NAME, NAV_POINT, SPAWN_RATE", "MOBS_LOCATION",
             "SECTOR_NAME",
             {QStringLiteral("SELECT SECTOR_NAME FROM SECTORS ORDER BY SECTOR_NAME|1"),
              QStringLiteral("SELECT SPAWN_RATE FROM SPAWN_RATE|3")});
    g << def("ubgRawMaterials", "Raw Materials", "RAW_MATERIAL_NAME, DROP_FREQUENCY", "MOB_RAW_MAT_DROP",
             "RAW_MATERIAL_NAME", {GridChoices::RawMaterials, GridChoices::DropFrequencies});
    g << def("ubgResistances", "Resistances", "RESISTANCE, AMOUNT", "MOB_RESISTANCE", "RESISTANCE",
             {DamageTypes});
    g << def("ubgWeaknesses", "Weaknesses", "WEAKNESS, AMOUNT", "MOB_WEAKNESS", "WEAKNESS", {DamageTypes});
    return g;
}

// Every row's value in order: what a new MOB's rows hold once its defaults are in.
QStringList valuesOf(const PropertyList& p) {
    QStringList out;
    for (int i = 0; i < p.count(); ++i)
        out << p.at(i).value;
    return out;
}

void ranged(PropertyRow& r, double minimum, double maximum) {
    r.ranged = true;
    r.minimum = minimum;
    r.maximum = maximum;
}
} // namespace

QString recordSql(const QString& name) {
    return QStringLiteral("SELECT * FROM MOBS INNER JOIN MOB_STATS ON MOBS.MOB_NAME = MOB_STATS.MOB_NAME "
                          "WHERE MOB_STATS.MOB_NAME = '") +
           FixQuotes(name) + QLatin1Char('\'');
}

const QList<GridDef>& grids() {
    static const QList<GridDef> g = build();
    return g;
}

const GridDef& grid(const QString& widget) {
    return FindGridDef(grids(), widget);
}

QStringList tabs() {
    return {QStringLiteral("Comments"),   QStringLiteral("Attack Types"),  QStringLiteral("Resistances"),
            QStringLiteral("Weaknesses"), QStringLiteral("Locations"),     QStringLiteral("Equipment"),
            QStringLiteral("Components"), QStringLiteral("Raw Materials"), QStringLiteral("Items")};
}

QString tabGrid(const QString& tab) {
    for (const GridDef& g : grids())
        if (g.caption == tab)
            return g.widget;
    return QString();
}

LookupTable mobTypes() {
    return {QStringLiteral("MOB Type"), QStringLiteral("MOB_TYPES"), QStringLiteral("MOB_TYPE"), {}, {}};
}

LookupTable factions() {
    return {QStringLiteral("Faction"), QStringLiteral("FACTIONS"), QStringLiteral("FACTION"), {}, {}};
}

void FillProperties(PropertyList& p, const Recordset& rs, bool adding) {
    p.clear();
    const QString mob = QStringLiteral("MOB"), stats = QStringLiteral("Statistics"),
                  temper = QStringLiteral("Temperament"), record = QStringLiteral("Record");
    p.addCategory(mob, QStringLiteral("MOB"));
    PropertyRow& name = p.addField(mob, rs, NameKey, QStringLiteral("MOB Name"));
    // An existing MOB is renamed with the main window's Rename, which carries the name everywhere.
    name.readOnly = !adding;

    PropertyRow& type = p.addField(mob, rs, QStringLiteral("TYPE"));
    type.editor = PropertyEditor::Choice;
    type.lookup = mobTypes();
    type.choices = type.lookup.values();
    type.defaultValue = QStringLiteral("Organic");
    PropertyRow& faction = p.addField(mob, rs, QStringLiteral("FACTION"));
    faction.editor = PropertyEditor::Choice;
    faction.lookup = factions();
    faction.choices = faction.lookup.values();
    faction.defaultValue = QStringLiteral("Unknown");
    ranged(p.addField(mob, rs, QStringLiteral("COMBAT_LEVEL")), 0, 999);
    p.addField(mob, rs, QStringLiteral("BOSS"));

    p.addCategory(stats, stats);
    for (const char* column : {"SHIELD", "HULL", "MASS", "SIGNATURE", "SCAN_RANGE", "AGGRO_RANGE"})
        ranged(p.addField(stats, rs, QLatin1String(column)), 0, 999999999);

    p.addCategory(temper, temper);
    const struct {
        const char* column;
        const char* caption;
    } temperaments[] = {{"BRAVERY", "Bravery"},
                        {"AGGRESSIVENESS", "Aggressiveness"},
                        {"ALTRUISM", "Altruism"},
                        {"INTELIGENCE", "Intelligence"}};
    for (const auto& t : temperaments) {
        PropertyRow& r = p.addField(temper, rs, QLatin1String(t.column), QLatin1String(t.caption));
        r.editor = PropertyEditor::Choice;
        r.choices = TemperamentChoices();
        r.defaultValue = QStringLiteral("Average");
    }

    p.addCategory(record, record);
    p.addField(record, rs, QStringLiteral("CHECK"), QStringLiteral("Checked"));
    p.addField(record, rs, QStringLiteral("SUBMITTED"));
    // Kept by the save itself.
    p.addField(record, rs, QStringLiteral("PERSONAL_DB"), QStringLiteral("Personal")).readOnly = true;
    p.addField(record, rs, QStringLiteral("UPDATED")).readOnly = true;
    p.addField(record, rs, QStringLiteral("LAST_UPDATED")).readOnly = true;

    if (adding) {
        p.load(NameKey, NewName);
        p.load(QStringLiteral("BOSS"), QStringLiteral("No"));
        p.load(QStringLiteral("CHECK"), QStringLiteral("No"));
        p.load(QStringLiteral("SUBMITTED"), QStringLiteral("No"));
        p.load(QStringLiteral("PERSONAL_DB"), QStringLiteral("Yes"));
        p.load(QStringLiteral("UPDATED"), QStringLiteral("Yes"));
        p.applyDefaults();
    }
    p.buildHelp(QStringLiteral("ADD_MOBS"), QStringLiteral("MOB"));
}

void Load(Edit& e, const QString& name) {
    e.adding = name.isEmpty();
    {
        Recordset rs;
        rs.open(recordSql(name));
        if (!e.adding && rs.eof())
            throw NoCurrentRecord();
        FillProperties(*e.props, rs, e.adding);
        e.loadedComments = e.adding ? QString() : NzString(rs.value(QStringLiteral("COMMENTS")));
    }
    e.comments = e.loadedComments;
    e.initial = valuesOf(*e.props);
    // A new MOB's grids start empty, whatever a record called "New MOB" may hold.
    const QString quoted = FixQuotes(e.adding ? QString() : e.props->value(NameKey));
    for (const GridDef& def : grids()) {
        GridModel* g = e.grids.value(def.widget);
        if (!g)
            continue;
        PopulateGrid(*g, def.queries(quoted), true);
        if (def.widget == QLatin1String("ubgLocations"))
            InstallLocationRules(*g, Container);
    }
}

bool Edit::recordChanged() const {
    return props->anyChanged() || comments != loadedComments;
}

bool Edit::hasChanges() const {
    if (valuesOf(*props) != initial || comments != loadedComments)
        return true;
    for (const GridModel* g : grids)
        if (g && GridChanged(*g))
            return true;
    return false;
}

bool CheckName(const QString& name) {
    if (name.isEmpty()) {
        ShowEmptyData();
        return false;
    }
    // The MOB editor has always worded this refusal its own way.
    if (!ValidName(name)) {
        MsgBox(
            QStringLiteral("Names cannot contain a double single-quote! Please change the name to continue."),
            vb::Exclamation, QStringLiteral("Invalid Name"));
        return false;
    }
    return true;
}

SavePlan PlanSave(const Edit& e, const std::function<QDateTime()>& now) {
    SavePlan plan;
    plan.container = Container;
    const QString name = e.name();
    for (const GridDef& def : grids())
        if (const GridModel* g = e.grids.value(def.widget))
            plan.validate.append({g, def.listName});
    plan.checkInput = [name] { return CheckName(name); };

    // The one result set over the join: the record is written through it, and stamped through it
    // once the grids are written.
    auto rs = std::make_shared<Recordset>();
    const PropertyList props = *e.props;
    const QString comments = e.comments;
    const bool adding = e.adding;
    const bool recordChanged = e.recordChanged();
    plan.writeRecord = [=](bool relationsChanged) {
        rs->open(recordSql(name), db(), Recordset::Dynamic);
        if (adding) {
            rs->addNew();
            rs->setValue(QStringLiteral("PERSONAL_DB"), true);
            rs->setValue(QStringLiteral("UPDATED"), true);
            rs->setValue(QStringLiteral("LAST_UPDATED"), now());
            rs->setValue(QStringLiteral("MOB_STATS.MOB_NAME"), name);
            rs->setValue(NameKey, name);
        } else if (rs->eof()) {
            if (!recordChanged && !relationsChanged)
                return false;
            // Deleted or renamed while the editor was open: its link rows must not be written.
            throw NoCurrentRecord();
        }
        bool wrote = props.writeChanged(*rs, [](const QString& key) { return key == NameKey; });
        // Cleared comments are stored as NULL, as every cleared value is.
        const QString stored = adding ? QString() : NzString(rs->value(QStringLiteral("COMMENTS")));
        if (comments != stored) {
            rs->setValue(QStringLiteral("COMMENTS"), comments.isEmpty() ? QVariant() : QVariant(comments));
            wrote = true;
        }
        rs->update();
        return adding || wrote;
    };
    for (const GridDef& def : grids())
        if (const GridModel* g = e.grids.value(def.widget))
            plan.writes.append(SaveStep::forGrid(*g, def.save(FixQuotes(name)), def.keyColumn, name));
    plan.finish = [=](bool changed) {
        if (!adding && changed && !rs->eof()) {
            rs->setValue(QStringLiteral("UPDATED"), true);
            rs->setValue(QStringLiteral("LAST_UPDATED"), now());
            rs->update();
        }
        rs->close();
    };
    return plan;
}

} // namespace mob
