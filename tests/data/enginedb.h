#pragma once
// The engine's tests run on a new database of the real schema with a few rows of their own.
#include "data/recordset.h"
#include "data/schema.h"
#include "data/sqlfunctions.h"

#include <QFile>
#include <QTemporaryDir>
#include <sqlite3.h>

namespace enginedb {

inline const char* const kRows = R"SQL(
INSERT INTO DB_VERSION VALUES (5);
INSERT INTO CLASSES VALUES ('Fighter'), ('Hauler');
INSERT INTO DAMAGE_TYPE VALUES ('Heat'), ('Kinetic');
INSERT INTO AMO_TYPES VALUES ('Rocket', 'Missile'), ('Slug', 'Projectile');
INSERT INTO EQUIPMENTS (EQUIPMENT_NAME, TYPE, LVL, PRICE, QUALITY, COST_TO_MANUFACTURE, LAST_UPDATED, "CHECK", PIC_ID)
  VALUES ('Hunter''s Lance', 'Beam', 3, 1200, 90, -1, '2026-01-02 03:04:05', 1, 7), ('Ember Beam', 'Beam', 5, -2, 80, 300, NULL, 0, 8),
         ('Red Rocket', 'Ammunition', 2, 10, 50, 5, NULL, 0, 9), ('Iron Slug', 'Ammunition', 1, 0, 50, 5, NULL, 0, 9);
INSERT INTO WEAPON_STATS VALUES ('Hunter''s Lance', 7, 'Heat', 2, 3.5, 900, NULL, NULL), ('Ember Beam', 9, 'Heat', 0, 4, 800, NULL, NULL);
INSERT INTO AMO_STATS VALUES ('Red Rocket', 40, 'Heat', 'Rocket', 20, 3000, 1.5), ('Iron Slug', 10, 'Kinetic', 'Slug', 100, 500, 0);
INSERT INTO COMPONENTS (COMPONENT_NAME, LVL, PRICE, TYPE) VALUES ('Coil', 1, 5, NULL), ('Lens', 2, 9, 'Optic');
INSERT INTO ITEMS (ITEM_NAME, LVL) VALUES ('Crystal', 4);
INSERT INTO RAW_MATERIALS (RAW_MATERIAL_NAME, LVL) VALUES ('Ore', 1), ('Metal', 2);
INSERT INTO EQUIPMENTS_COMPONENTS VALUES ('Hunter''s Lance', 'Coil', 2), ('Hunter''s Lance', 'Lens', 1);
INSERT INTO EQUIPMENTS_ITEMS VALUES ('Hunter''s Lance', 'Crystal', 3);
INSERT INTO EQUIPMENTS_UPGRADE_FROM VALUES ('Hunter''s Lance', 'Ember Beam', 1);
INSERT INTO RAW_MATERIALS_REFINES_FROM VALUES ('Metal', 'Ore', 2);
INSERT INTO EQUIPMENT_CLASS VALUES ('Hunter''s Lance', 'Fighter');
INSERT INTO MOBS (MOB_NAME, TYPE, FACTION, COMMENTS) VALUES ('Void Eel', 'Organic', 'Unknown', 'slippery');
INSERT INTO MOB_STATS (MOB_NAME, COMBAT_LEVEL, SHIELD, HULL, BRAVERY, BOSS) VALUES ('Void Eel', 7, 100, 200, 'High', 1);
INSERT INTO MOB_ATTACK_TYPE VALUES ('Void Eel', 'Kinetic', 5);
INSERT INTO SECTORS VALUES ('Drift', 'Home');
INSERT INTO STATIONS (STATION_NAME, SECTORS_SECTOR) VALUES ('Dock One', 'Drift');
INSERT INTO CHARACTERS VALUES ('Pilot');
)SQL";

// The first column of the first row, as a whole number.
inline long count(const QString& sql, Database& cn) {
    Recordset rs;
    rs.open(sql, cn);
    return long(rs.intValue(0));
}

// Writes the database into dir as "data.vosk" and returns its path (empty on failure). The first call
// builds the file; later calls copy it.
inline QString create(const QTemporaryDir& dir) {
    static QTemporaryDir templateDir;
    static const QString made = [] {
        const QString path = templateDir.filePath(QStringLiteral("template.vosk"));
        sqlite3* h = nullptr;
        char* err = nullptr;
        const bool ok =
            CreateDatabase(path) && sqlite3_open(QFile::encodeName(path).constData(), &h) == SQLITE_OK &&
            RegisterSqlFunctions(h) && sqlite3_exec(h, kRows, nullptr, nullptr, &err) == SQLITE_OK;
        if (err)
            qWarning("enginedb: %s", err);
        sqlite3_free(err);
        sqlite3_close(h);
        return ok ? path : QString();
    }();
    const QString path = dir.filePath(QStringLiteral("data.vosk"));
    return !made.isEmpty() && QFile::copy(made, path) ? path : QString();
}

inline QString connectionFor(const QString& path) {
    return QStringLiteral("Provider=VOSK.SQLite;Data Source=") + path + u';';
}

} // namespace enginedb
