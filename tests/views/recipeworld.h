#pragma once
// A small recipe world whose totals are worked out by hand, for the bill of materials and where-used.
#include <QStringList>

// 1 Pulse Cannon = 2 Barrel + 1 Core + 5 Iron + 1 Manual; Barrel = 3 Steel, upgraded from 1 Tube;
// Tube = 4 Iron; Core = 2 Steel + 1 Iron + 1 Spark Drill; Spark Drill = 7 Iron; Steel = 3 Iron + 1 Coal.
// Iron per cannon: 5 direct + 2*4 (tubes) + 2*3*3 (barrel steel) + 2*3 (core steel) + 1 (core) + 7
// (drill) = 45.
inline QStringList RecipeWorld() {
    return {
        "INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, TYPE, LVL, PRICE, COST_TO_MANUFACTURE) VALUES "
        "('Pulse Cannon', 'Beam', 20, 9000, 450), ('Spark Drill', 'Device', 4, 300, 20)",
        "INSERT INTO COMPONENTS (COMPONENT_NAME, LVL, PRICE) VALUES ('Barrel', 8, 120), ('Tube', 3, 40), "
        "('Core', 9, -1)",
        "INSERT INTO RAW_MATERIALS (RAW_MATERIAL_NAME, LVL, PRICE) VALUES ('Iron', 1, 2), ('Steel', 4, 15), "
        "('Coal', 1, 0)",
        "INSERT INTO ITEMS (ITEM_NAME, LVL, PRICE) VALUES ('Smith''s Manual', 2, -2)",
        "INSERT INTO EQUIPMENTS_COMPONENTS (EQUIPMENTS_EQUIPMENT, COMPONENTS_COMPONENT, AMOUNT) VALUES "
        "('Pulse Cannon', 'Barrel', 2), ('Pulse Cannon', 'core', 1)",
        "INSERT INTO EQUIPMENTS_RAW_MATERIALS (EQUIPMENTS_EQUIPMENT, RAW_MATERIAL_NAME, AMOUNT) VALUES "
        "('Pulse Cannon', 'Iron', 5), ('Spark Drill', 'Iron', 7)",
        "INSERT INTO EQUIPMENTS_ITEMS (EQUIPMENTS_EQUIPMENT, ITEM_NAME, AMOUNT) VALUES "
        "('Pulse Cannon', 'Smith''s Manual', NULL)",
        "INSERT INTO COMPONENTS_RAW_MATERIALS (COMPONENTS_COMPONENT, RAW_MATERIAL, AMOUNT) VALUES "
        "('Barrel', 'Steel', 3), ('Tube', 'Iron', 4), ('Core', 'Steel', 2), ('Core', 'Iron', 1)",
        "INSERT INTO COMPONENTS_UPGRADE_FROM (COMPONENT_NAME, UPGRADE_FROM, AMOUNT) VALUES ('Barrel', 'Tube', 0)",
        "INSERT INTO COMPONENTS_EQUIPMENTS (COMPONENT_NAME, EQUIPMENT_NAME, AMOUNT) VALUES ('Core', 'Spark Drill', 1)",
        "INSERT INTO RAW_MATERIALS_REFINES_FROM (RAW_MATERIAL_NAME, REFINES_FROM, AMOUNT) VALUES "
        "('Steel', 'Iron', 3), ('Steel', 'Coal', 1)",
    };
}

// Where the records of the recipe world are had: Iron sold at Far Post and mined in two sectors, Coal
// mined, the manual dropped by a MOB that spawns in two sectors, one sector without a system.
inline QStringList RecipeWorldSources() {
    return {
        "INSERT INTO SYSTEMS (SYSTEM_NAME) VALUES ('Aldra')",
        "INSERT INTO SECTORS (SECTOR_NAME, SYSTEM_SYSTEM_NAME) VALUES ('Aldra Drift', 'Aldra'), ('Lone Reach', NULL)",
        "INSERT INTO STATIONS (STATION_NAME, SECTORS_SECTOR) VALUES ('Far Post', 'Lone Reach'), "
        "('Kell''s Anchorage', 'Aldra Drift')",
        "INSERT INTO BUY_RAW_MATERIAL_LOCATIONS (RAW_MATERIAL, STATIONS_STATION) VALUES ('Iron', 'Far Post')",
        "INSERT INTO BUY_EQUIPMENT_LOCATION (EQUIPMENTS_EQUIPMENT, STATIONS_STATION) VALUES "
        "('Spark Drill', 'Kell''s Anchorage')",
        "INSERT INTO MINE_LOCATIONS (RAW_MATERIAL, SECTORS_SECTOR) VALUES ('Iron', 'Lone Reach'), "
        "('Iron', 'Aldra Drift'), ('Coal', 'Aldra Drift')",
        "INSERT INTO MOBS (MOB_NAME) VALUES ('Grey Wraith')",
        "INSERT INTO MOB_ITEM_DROP (MOB_NAME, ITEM_NAME, DROP_FREQUENCY) VALUES ('Grey Wraith', 'Smith''s Manual', "
        "'Rare')",
        "INSERT INTO MOBS_LOCATION (MOB_NAME, SECTOR_NAME, NAV_POINT, SPAWN_RATE) VALUES "
        "('Grey Wraith', 'Lone Reach', 'Nav 2', 'Fast'), ('Grey Wraith', 'Aldra Drift', 'Nav 1', 'Slow'), "
        "('Grey Wraith', 'Aldra Drift', 'Nav 3', 'Slow')",
    };
}
