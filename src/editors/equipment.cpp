#include "editors/equipment.h"

#include "core/prompt.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "editors/gridmodel.h"
#include "editors/lookups.h"
#include "editors/propertylist.h"
#include "views/equiptypes.h"
#include "views/modmain.h"

namespace equipedit {
namespace {

QList<GridDef> build() {
    QList<GridDef> g;
    g << GridDef{"ubgBlueEquip",
                 "Equipment",
                 "Blueprint: Equipment",
                 "SELECT EQUIPMENTS_UPGRADE_FROM.UPGRADE_FROM, AMOUNT FROM EQUIPMENTS_UPGRADE_FROM WHERE "
                 "EQUIPMENT_NAME = '",
                 "EQUIPMENT_NAME",
                 {GridChoices::Equipment},
                 "SELECT UPGRADE_FROM, AMOUNT, EQUIPMENT_NAME FROM EQUIPMENTS_UPGRADE_FROM WHERE "
                 "EQUIPMENT_NAME = '",
                 "EQUIPMENT_NAME"};
    g << GridDef{"ubgBlueComps",
                 "Components",
                 "Blueprint: Components",
                 "SELECT COMPONENTS_COMPONENT AS COMPONENT_NAME, AMOUNT FROM EQUIPMENTS_COMPONENTS WHERE "
                 "EQUIPMENTS_EQUIPMENT = '",
                 "COMPONENTS_COMPONENT",
                 {GridChoices::Components},
                 "SELECT COMPONENTS_COMPONENT, AMOUNT, EQUIPMENTS_EQUIPMENT FROM EQUIPMENTS_COMPONENTS "
                 "WHERE EQUIPMENTS_EQUIPMENT = '",
                 "EQUIPMENTS_EQUIPMENT"};
    g << GridDef{
        "ubgBlueRawMats",
        "Raw Materials",
        "Blueprint: Raw Materials",
        "SELECT RAW_MATERIAL_NAME, AMOUNT FROM EQUIPMENTS_RAW_MATERIALS WHERE EQUIPMENTS_EQUIPMENT = '",
        "RAW_MATERIAL_NAME",
        {GridChoices::RawMaterials},
        "SELECT RAW_MATERIAL_NAME, AMOUNT, EQUIPMENTS_EQUIPMENT FROM EQUIPMENTS_RAW_MATERIALS WHERE "
        "EQUIPMENTS_EQUIPMENT = '",
        "EQUIPMENTS_EQUIPMENT"};
    g << GridDef{"ubgBlueItems",
                 "Items",
                 "Blueprint: Items",
                 "SELECT ITEM_NAME, AMOUNT FROM EQUIPMENTS_ITEMS WHERE EQUIPMENTS_EQUIPMENT = '",
                 "ITEM_NAME",
                 {GridChoices::Items},
                 "SELECT ITEM_NAME, AMOUNT, EQUIPMENTS_EQUIPMENT FROM EQUIPMENTS_ITEMS WHERE "
                 "EQUIPMENTS_EQUIPMENT = '",
                 "EQUIPMENTS_EQUIPMENT"};
    // The same link table as ubgBlueEquip seen from its other end: what this equipment upgrades into.
    g << GridDef{"ubgManuEquip",
                 "Equipment",
                 "Manufacturing: Items",
                 "SELECT EQUIPMENT_NAME, AMOUNT FROM EQUIPMENTS_UPGRADE_FROM WHERE "
                 "EQUIPMENTS_UPGRADE_FROM.UPGRADE_FROM = '",
                 "EQUIPMENT_NAME",
                 {GridChoices::Equipment},
                 "SELECT EQUIPMENT_NAME, AMOUNT, EQUIPMENTS_UPGRADE_FROM.UPGRADE_FROM FROM "
                 "EQUIPMENTS_UPGRADE_FROM WHERE EQUIPMENTS_UPGRADE_FROM.UPGRADE_FROM = '",
                 "UPGRADE_FROM"};
    g << GridDef{"ubgManuComps",
                 "Components",
                 "Manufacturing: Items",
                 "SELECT COMPONENT_NAME, AMOUNT FROM COMPONENTS_EQUIPMENTS WHERE EQUIPMENT_NAME = '",
                 "COMPONENT_NAME",
                 {GridChoices::Components},
                 "SELECT COMPONENT_NAME, AMOUNT, EQUIPMENT_NAME FROM COMPONENTS_EQUIPMENTS WHERE "
                 "EQUIPMENT_NAME = '",
                 "EQUIPMENT_NAME"};
    g << GridDef{
        "ubgMOBs",
        "MOBs",
        "MOBs",
        "SELECT MOB_NAME, DROP_FREQUENCY FROM MOB_EQUIP_DROP WHERE EQUIPMENT_NAME = '",
        "MOB_NAME",
        {GridChoices::Mobs, GridChoices::DropFrequencies},
        "SELECT MOB_NAME, DROP_FREQUENCY, EQUIPMENT_NAME FROM MOB_EQUIP_DROP WHERE EQUIPMENT_NAME = '",
        "EQUIPMENT_NAME"};
    // The specials' save statement names the key column first; SaveUBGrid skips it by name.
    g << GridDef{
        "ubgSpecials",
        "Specials",
        "Specials",
        "SELECT SPECIAL, AMOUNT, UNITS, ENERGY_USE, RANGE, DURATION, SHUNT FROM EQUIP_SPECIALS WHERE "
        "EQUIPMENT_NAME ='",
        "SPECIAL",
        {"SELECT SPECIAL FROM SPECIALS ORDER BY SPECIAL|1"},
        "SELECT EQUIPMENT_NAME,SPECIAL,AMOUNT,UNITS,ENERGY_USE,RANGE,DURATION,SHUNT FROM "
        "EQUIP_SPECIALS WHERE EQUIPMENT_NAME = '",
        "EQUIPMENT_NAME"};
    return g;
}

QString quotedCondition(const QString& sql, const QString& value) {
    return sql + FixQuotes(value) + QLatin1Char('\'');
}

// The whole-number rows whose range the help text names.
void setRange(PropertyRow* r, double lo, double hi) {
    if (!r)
        return;
    r->ranged = true;
    r->minimum = lo;
    r->maximum = hi;
}

void choiceRow(PropertyRow& r, const QStringList& choices, const LookupTable& lookup = {}) {
    r.editor = PropertyEditor::Choice;
    r.choices = choices;
    r.lookup = lookup;
}

QString launchTypeOf(const QString& ammoType) {
    if (ammoType.isEmpty())
        return QString();
    Recordset rs;
    rs.open(
        quotedCondition(QStringLiteral("SELECT LAUNCH_TYPE FROM AMO_TYPES WHERE AMO_TYPE = '"), ammoType));
    return rs.eof() ? QString() : NzString(rs.value(0));
}

void addStatistics(PropertyList& p, const Recordset& rs, int type) {
    const QString category = QStringLiteral("Statistics");
    const int first = rs.fieldIndex(QStringLiteral("CUSTOM_03")) + 1;
    const int end = rs.fieldIndex(QStringLiteral("STAT_NAME"));
    if (first <= 0 || end <= first)
        return;
    p.addCategory(category, DeEnumerate(type) + QStringLiteral(" Statistics"));
    for (int i = first; i < end; ++i) {
        const QString field = rs.fieldName(i);
        if (field == QLatin1String("AMO_TYPE_AMO")) {
            // Chosen first: it decides which ammunition types are offered.
            PropertyRow& launch =
                p.addRow(category, QStringLiteral("LAUNCH_TYPE"), QString(), PropertyEditor::Choice);
            choiceRow(launch, ChoicesFrom(QStringLiteral(
                                  "SELECT LAUNCH_TYPE FROM LAUNCH_TYPES ORDER BY LAUNCH_TYPE")));
            if (!rs.eof())
                launch.value = launch.loaded = launchTypeOf(NzString(rs.value(i)));
        }
        // FormatFieldName would make "Ammunition  Type" of these, with two blanks.
        const bool ammoType = field == QLatin1String("AMO_TYPE") || field == QLatin1String("AMO_TYPE_AMO");
        PropertyRow& r =
            p.addField(category, rs, field, ammoType ? QStringLiteral("Ammunition Type") : QString());
        if (field == QLatin1String("DAMAGE_TYPE")) {
            const LookupTable damage = lookup::damageTypes();
            choiceRow(r, damage.values(), damage);
        } else if (field == QLatin1String("AMO_TYPE")) {
            // A launcher takes the ammunition types of its own launch type.
            const LookupTable ammo = lookup::ammunitionTypes(DeEnumerate(type));
            choiceRow(r, ammo.values(), ammo);
        } else if (field == QLatin1String("AMO_TYPE_AMO")) {
            r.editor = PropertyEditor::Choice;
        }
    }
    PopulateAmmoList(p);
}
} // namespace

const QList<GridDef>& grids() {
    static const QList<GridDef> g = build();
    return g;
}

const GridDef& grid(const QString& widget) {
    return FindGridDef(grids(), widget);
}

QList<QPair<QString, QString>> validationOrder() {
    return {{"ubgMOBs", "MOBs"},
            {"ubgBlueEquip", "Blueprint: Equipment"},
            {"ubgBlueComps", "Blueprint: Components"},
            {"ubgBlueRawMats", "Blueprint: Raw Materials"},
            {"ubgBlueItems", "Blueprint: Items"},
            {"ubgManuEquip", "Manufacturing: Items"},
            {"ubgManuComps", "Manufacturing: Items"}};
}

QStringList writeOrder() {
    return {"lstAllowed",   "lstBuyLocations", "ubgBlueEquip", "ubgBlueEquip",
            "ubgBlueComps", "ubgBlueRawMats",  "ubgBlueItems", "ubgManuEquip",
            "ubgManuComps", "ubgMOBs",         "ubgSpecials"};
}

QString recordSql(int type, const QString& name) {
    return GetSQL(type, true, true, true, true, QString(), true) +
           quotedCondition(QStringLiteral(" AND EQUIPMENTS.EQUIPMENT_NAME = '"), name);
}

int storedType(const QString& name) {
    Recordset rs;
    rs.open(quotedCondition(QStringLiteral("SELECT TYPE FROM EQUIPMENTS WHERE EQUIPMENT_NAME = '"), name));
    if (rs.eof())
        throw NoCurrentRecord();
    return Enumerate(NzString(rs.value(0)));
}

QString classesSql(const QString& name) {
    return quotedCondition(
        QStringLiteral("SELECT CLASS_NAME FROM EQUIPMENT_CLASS WHERE EQUIPMENTS_EQUIPMENT = '"), name);
}

QString stationsSql(const QString& name) {
    return quotedCondition(
        QStringLiteral("SELECT STATIONS_STATION FROM BUY_EQUIPMENT_LOCATION WHERE EQUIPMENTS_EQUIPMENT = '"),
        name);
}

QString allClassesSql() {
    return QStringLiteral("SELECT CLASS_NAME FROM CLASSES ORDER BY CLASS_NAME");
}

QString allStationsSql() {
    return QStringLiteral("SELECT STATION_NAME FROM STATIONS ORDER BY STATION_NAME");
}

QString ammoTypesSql(const QString& launchType) {
    return QStringLiteral("SELECT AMO_TYPE FROM AMO_TYPES WHERE LAUNCH_TYPE = '") + FixQuotes(launchType) +
           QStringLiteral("' ORDER BY AMO_TYPE");
}

void FillProperties(PropertyList& p, const Recordset& rs, int type, bool isNew) {
    p.clear();
    const QString general = QStringLiteral("General");
    p.addCategory(general, general);
    p.addField(general, rs, QStringLiteral("EQUIPMENT_NAME"), QStringLiteral("Name")).readOnly = !isNew;
    PropertyRow& kind = p.addField(general, rs, QStringLiteral("TYPE"));
    if (isNew) {
        // A new record's type can still be chosen; the window builds the rows again for it.
        QStringList types;
        for (int t = equip::Beam; t <= equip::Ammunition; ++t)
            types << DeEnumerate(t);
        choiceRow(kind, types);
        kind.value = kind.loaded = DeEnumerate(type);
    } else {
        kind.readOnly = true;
    }
    const LookupTable makers = lookup::manufacturers();
    choiceRow(p.addField(general, rs, QStringLiteral("MANUFACTURER")), makers.values(), makers);
    setRange(&p.addField(general, rs, QStringLiteral("LVL")), 0, 200);
    PropertyRow& quality = p.addField(general, rs, QStringLiteral("QUALITY"));
    setRange(&quality, 0, 100);
    quality.defaultValue = QStringLiteral("100");
    p.addField(general, rs, QStringLiteral("UNIQUE_FLAG")).defaultValue = QStringLiteral("No");

    const QString prices = QStringLiteral("Prices");
    p.addCategory(prices, prices);
    p.addField(prices, rs, QStringLiteral("PURCHASE_PRICE")).price = PriceWords::Price;
    p.addField(prices, rs, QStringLiteral("MANUFACTURING_FEE")).price = PriceWords::Cost;

    addStatistics(p, rs, type);

    const CustomFields& custom = customFields();
    if (custom.on) {
        const QString fields = QStringLiteral("Custom");
        p.addCategory(fields, QStringLiteral("Custom Fields"));
        for (int i = 0; i < 3; ++i)
            if (i == 0 || !custom.caption[i].isEmpty())
                // Shown as the user wrote the caption in the options.
                p.addField(fields, rs, QStringLiteral("CUSTOM_0%1").arg(i + 1),
                           custom.caption[i].isEmpty() ? QStringLiteral("Custom Field 1")
                                                       : custom.caption[i]);
    }

    const QString record = QStringLiteral("Record");
    p.addCategory(record, record);
    p.addField(record, rs, QStringLiteral("LAST_UPDATED")).readOnly = true;
    if (isNew)
        p.applyDefaults();
}

void PopulateAmmoList(PropertyList& p) {
    PropertyRow* ammo = p.row(QStringLiteral("AMO_TYPE_AMO"));
    if (!ammo)
        return;
    const QString launch = p.value(QStringLiteral("LAUNCH_TYPE"));
    // Without a launch type there is nothing to offer, nor a table to edit.
    ammo->choices = launch.isEmpty() ? QStringList() : ChoicesFrom(ammoTypesSql(launch));
    ammo->lookup = launch.isEmpty() ? LookupTable() : lookup::ammunitionTypes(launch);
}

void LaunchTypeChanged(PropertyList& p) {
    PopulateAmmoList(p);
    const PropertyRow* ammo = p.row(QStringLiteral("AMO_TYPE_AMO"));
    if (ammo && !ammo->value.isEmpty() && !ammo->choices.contains(ammo->value, Qt::CaseInsensitive))
        p.setValue(QStringLiteral("AMO_TYPE_AMO"), QString());
}

QHash<QString, QString> CarriedValues(const PropertyList& p) {
    QHash<QString, QString> values;
    for (int i = 0; i < p.count(); ++i) {
        const PropertyRow& r = p.at(i);
        if (!r.isCategory() && !r.readOnly && r.key != QLatin1String("TYPE") && !r.value.isEmpty())
            values.insert(r.key, r.value);
    }
    return values;
}

bool CheckSpecials(GridModel& specials) {
    QString seen;
    for (int r = 1; r <= specials.lastDataRow(); ++r) {
        const QString name = specials.text(r, 1);
        if (name.isEmpty()) {
            // Without its name a special is nothing at all: the views could not show it.
            MsgBox(QStringLiteral("Please choose the special of row ") + QString::number(r) +
                       QStringLiteral(" or remove the row"),
                   vb::Information, QStringLiteral("Specials Error"));
            return false;
        }
        const QString marked = QLatin1Char('|') + name + QLatin1Char('|');
        if (seen.contains(marked, Qt::CaseInsensitive)) {
            MsgBox(QStringLiteral("The special '") + name +
                       QStringLiteral("' appears more than once in the special list, please remove one"),
                   vb::Exclamation, QStringLiteral("Duplicate Special Entries"));
            return false;
        }
        seen += marked;
        if (specials.text(r, 2).isEmpty())
            specials.setText(r, 2, QStringLiteral("0"));
        if (specials.text(r, 3).isEmpty()) {
            MsgBox(QStringLiteral("Please specify a Unit  value for the special '") + name +
                       QLatin1Char('\''),
                   vb::Information, QStringLiteral("Specials Error"));
            return false;
        }
    }
    return true;
}

} // namespace equipedit
