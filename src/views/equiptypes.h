#pragma once
// The equipment type index and the equipment query builder, used by the main list, the views and the
// editors.
#include <QString>

namespace equip {
enum Type : int {
    Beam = 0,
    Missile = 1,
    Projectile = 2,
    Reactor = 3,
    Engine = 4,
    Shield = 5,
    Device = 6,
    Ammunition = 7,
    All = 8
};
}

int Enumerate(const QString& typeText, bool noRecurse = false);
QString DeEnumerate(int index);
QString GetStatTable(const QString& typeText);
// Runs "SELECT TYPE FROM EQUIPMENTS WHERE EQUIPMENT_NAME = '...'" on the shared connection. A name
// that is not there (or a failed statement) is reported under "FindType" and reads as 0 (Beam).
int FindType(const QString& equipmentName);
QString GetSQL(int typeIndex, bool withMarks, bool statNameOnly, bool withPicture, bool withCustom,
               const QString& className, bool plainAmmunition);
