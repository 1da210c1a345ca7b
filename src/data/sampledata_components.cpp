// Components in three grades, each grade upgraded from the one below, built from raw materials,
// items and a few simple tools.
#include "data/sampledata_p.h"

namespace {

struct Part {
    const char* type;    // nullptr: no type recorded
    const char* subtype; // nullptr: none
    const char* name;
};

const Part parts[] = {
    {"Circuitry", "Logic Board", "Logic Board"},
    {"Circuitry", "Relay", "Switch Relay"},
    {"Circuitry", nullptr, "Control Chip"},
    {"Optics", "Lens", "Focusing Lens"},
    {"Optics", "Emitter Crystal", "Emitter Crystal"},
    {"Optics", nullptr, "Targeting Prism"},
    {"Power Cell", "Capacitor", "Capacitor Bank"},
    {"Power Cell", "Fuel Cell", "Fuel Cell"},
    {"Hull Plating", "Composite", "Composite Plate"},
    {"Hull Plating", "Ablative", "Ablative Tile"},
    {"Actuator", nullptr, "Gimbal Actuator"},
    {"Actuator", nullptr, "Servo Joint"},
    {"Casing", nullptr, "Warhead Casing"},
    {"Casing", nullptr, "Reactor Shell"},
    {"Unknown", nullptr, "Odd Widget"},
    {nullptr, nullptr, "Coolant Loop"},
    {nullptr, nullptr, "Gyro Core"},
    {nullptr, nullptr, "Navigator's Sextant"},
};

const char* const grades[] = {"Basic", "Advanced", "Military"};

} // namespace

void addComponents(SampleWorld& s) {
    // Simple tools built from materials alone; some components need one.
    const QStringList tools = {"Field Welder", "Survey Drone", "Plasma Torch", "Fabricator Arm"};
    for (const QString& t : tools) {
        writeEquipment(s, t, QStringLiteral("Device"), s.between(2, 10));
        for (const QString& r : s.some(s.rawMaterials, 2))
            s.w.insert("EQUIPMENTS_RAW_MATERIALS", "EQUIPMENTS_EQUIPMENT,RAW_MATERIAL_NAME,AMOUNT",
                       {t, r, 1 + s.below(4)});
        s.plainEquipment << t;
    }

    int index = 0;
    for (const Part& p : parts) {
        const int grades_here = index % 5 == 4 ? 1 : (index % 3 == 2 ? 2 : 3);
        QString previous;
        for (int g = 0; g < grades_here; ++g, ++index) {
            const QString name = QStringLiteral("%1 %2").arg(grades[g], p.name);
            const int level = 3 + g * 12 + s.below(8);
            const int price =
                index % 9 == 4
                    ? -1
                    : (index % 14 == 6 ? -2 : (index % 16 == 8 ? 0 : s.between(50, 800) * (g + 1)));
            const bool personal = s.chance(6);
            // Only types with subtypes get one, and not always.
            const QVariant subtype =
                p.subtype && s.chance(80) ? QVariant(QString::fromLatin1(p.subtype)) : QVariant();
            // Manufacturing fees by the level, some not manufacturable, some never recorded.
            const QVariant fee =
                index % 7 == 5 ? QVariant(-1) : (index % 4 == 3 ? QVariant() : QVariant(level * 25));
            s.w.insert(
                "COMPONENTS",
                "COMPONENT_NAME,LVL,PRICE,COMMENTS,PERSONAL_DB,TYPE,SUBTYPE,PIC_ID,LAST_UPDATED,CHECK,UPDATED,SUBMITTED,"
                "COST_TO_MANUFACTURE",
                {name, level, price,
                 s.chance(25) ? QVariant(QStringLiteral("Standard issue for %1 ships.")
                                             .arg(s.chance(50) ? "light" : "heavy"))
                              : QVariant(),
                 personal, p.type ? QVariant(QString::fromLatin1(p.type)) : QVariant(), subtype, s.below(100),
                 s.date(), s.flag(15), personal || s.flag(10), s.flag(5), fee});
            // Grades reach for the more refined materials.
            const int reach = qMin(int(s.rawMaterials.size()), 12 + g * 15);
            for (const QString& r : s.some(s.rawMaterials, 1 + s.below(3), reach))
                s.w.insert("COMPONENTS_RAW_MATERIALS", "COMPONENTS_COMPONENT,RAW_MATERIAL,AMOUNT",
                           {name, r, 1 + s.below(5)});
            if (s.chance(30))
                s.w.insert("COMPONENTS_ITEMS", "COMPONENT_NAME,ITEM_NAME,AMOUNT",
                           {name, s.pick(s.items), 1 + s.below(2)});
            if (s.chance(15))
                s.w.insert("COMPONENTS_EQUIPMENTS", "COMPONENT_NAME,EQUIPMENT_NAME,AMOUNT",
                           {name, s.pick(s.plainEquipment), 1});
            if (!previous.isEmpty())
                s.w.insert("COMPONENTS_UPGRADE_FROM", "COMPONENT_NAME,UPGRADE_FROM,AMOUNT",
                           {name, previous, 1 + s.below(2)});
            for (const QString& st : s.some(s.stations, s.below(3)))
                s.w.insert("BUY_COMPONENT_LOCATIONS", "COMPONENTS_COMPONENT,STATIONS_STATION", {name, st});
            s.components << name;
            previous = name;
        }
    }
}
