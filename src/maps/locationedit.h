#pragma once
// Adding, changing and deleting a sector's locations, with the rules of the other editors: what the
// player typed is checked first (a refusal is a box and writes nothing), names go through FixQuotes,
// every write runs inside one transaction on the shared connection, which is rolled back on an error
// (the VbError is thrown on for the window to report) or when nothing changed.
#include "maps/locations.h"

// What the player typed into the location form.
struct LocationInput {
    QString sector;
    QString name;
    QString type;
    QString x;
    QString y;
    QString comments;
};

// A coordinate as typed, in the system's number format or with a decimal point; false when it is
// not a finite number within a billion units of the centre.
bool ParseCoordinate(const QString& text, double* value);

// Checks the input, telling the player what is wrong in a box when it is refused. On success *out
// holds the location to write (name and comments trimmed).
bool CheckLocation(const LocationInput& in, NavPoint* out);

// Writes a new location. Throws VbError (rolled back), a duplicate name among them.
void AddLocation(const NavPoint& p);

enum class SaveResult { Saved, NothingChanged };
// Writes the columns that differ between before and after (the same sector). A new name is carried
// into the MOB spawn locations that named the old one. Throws VbError (rolled back).
SaveResult UpdateLocation(const NavPoint& before, const NavPoint& after);

// The MOBs that spawn at a location, by name.
QStringList MobsSpawningAt(const QString& sector, const QString& navPoint);

// Deletes a location. A location where MOBs spawn is refused with a box naming them; otherwise, when
// confirm is set, the player is asked first. Returns true when the row was deleted. Throws VbError
// (rolled back).
bool DeleteLocation(const QString& sector, const QString& navPoint, bool confirm = true);
