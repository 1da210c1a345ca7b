#include "editors/items.h"

#include "data/database.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "editors/recordsql.h"
#include "views/modmain.h"

namespace item {
namespace {
QList<GridDef> build() {
    QList<GridDef> g;
    g << GridDef{"ubgMOBs",
                 "Dropped by MOBs",
                 "General: MOBs",
                 "SELECT MOB_NAME, DROP_FREQUENCY FROM MOB_ITEM_DROP WHERE ITEM_NAME = '",
                 "MOB_NAME",
                 {GridChoices::Mobs, GridChoices::DropFrequencies},
                 "SELECT MOB_NAME, DROP_FREQUENCY, ITEM_NAME FROM MOB_ITEM_DROP WHERE ITEM_NAME = '",
                 "ITEM_NAME"};
    // Used in: what is built with it.
    g << GridDef{
        "ubgManuEquip",
        "Equipment",
        "Manufacturing: Equipment",
        "SELECT EQUIPMENTS_EQUIPMENT AS EQUIPMENT_NAME, AMOUNT FROM EQUIPMENTS_ITEMS WHERE ITEM_NAME = '",
        "EQUIPMENTS_EQUIPMENT",
        {GridChoices::Equipment},
        "SELECT EQUIPMENTS_EQUIPMENT, AMOUNT, ITEM_NAME FROM EQUIPMENTS_ITEMS WHERE ITEM_NAME = '",
        "ITEM_NAME"};
    g << GridDef{"ubgManuComps",
                 "Components",
                 "Manufacturing: Components",
                 "SELECT COMPONENT_NAME, AMOUNT FROM COMPONENTS_ITEMS WHERE ITEM_NAME ='",
                 "COMPONENT_NAME",
                 {GridChoices::Components},
                 "SELECT COMPONENT_NAME, AMOUNT, ITEM_NAME FROM COMPONENTS_ITEMS WHERE ITEM_NAME ='",
                 "ITEM_NAME"};
    g << GridDef{"ubgManuRawMats",
                 "Raw Materials",
                 "Manufacturing: Raw Materials",
                 "SELECT RAW_MATERIAL_NAME, AMOUNT FROM RAW_MATERIALS_ITEMS WHERE ITEM_NAME = '",
                 "RAW_MATERIAL_NAME",
                 {GridChoices::RawMaterials},
                 "SELECT RAW_MATERIAL_NAME, AMOUNT, ITEM_NAME FROM RAW_MATERIALS_ITEMS WHERE ITEM_NAME = '",
                 "ITEM_NAME"};
    return g;
}

QVariant orNull(const QString& typed) {
    return typed.isEmpty() ? QVariant() : QVariant(typed);
}
} // namespace

const QList<GridDef>& grids() {
    static const QList<GridDef> g = build();
    return g;
}

const GridDef& grid(const QString& widget) {
    return FindGridDef(grids(), widget);
}

QStringList writeOrder() {
    return {"lstBuyLocations", "ubgManuEquip", "ubgManuComps", "ubgManuRawMats", "ubgMOBs"};
}

QString recordSql(const QString& name) {
    return RecordSql(QStringLiteral("ITEMS"), QStringLiteral("ITEM_NAME"), name);
}

Fields readRecord(const QString& name) {
    Recordset rs;
    OpenStoredRecord(rs, QStringLiteral("ITEMS"), QStringLiteral("ITEM_NAME"), name);
    return ReadPricedFields(rs, QStringLiteral("ITEM_NAME"));
}

void writeRecord(const Fields& f, bool adding, const QDateTime& now) {
    Recordset rs;
    rs.open(recordSql(f.name), db(), Recordset::Dynamic);
    if (adding) {
        // A name already taken is refused by the database when the new row is updated.
        rs.addNew();
        rs.setValue(QStringLiteral("PERSONAL_DB"), true);
        rs.setValue(QStringLiteral("ITEM_NAME"), f.name);
    } else if (rs.eof()) {
        // Deleted or renamed while the editor was open: nothing to change, and no link rows for it.
        throw NoCurrentRecord();
    }
    rs.setValue(QStringLiteral("LVL"), orNull(f.level));
    rs.setValue(QStringLiteral("PRICE"), orNull(f.price));
    rs.setValue(QStringLiteral("COMMENTS"), orNull(f.comments));
    rs.setValue(QStringLiteral("PIC_ID"), f.picture);
    rs.setValue(QStringLiteral("UPDATED"), true);
    rs.setValue(QStringLiteral("LAST_UPDATED"), now);
    rs.update();
}

QString buyLocationsSql(const QString& name) {
    return QStringLiteral("SELECT STATIONS_STATION FROM BUY_ITEM_LOCATIONS WHERE ITEM_NAME = '") +
           FixQuotes(name) + QStringLiteral("' ORDER BY STATIONS_STATION");
}

} // namespace item
