#pragma once
// Where each record of a shopping list can be had: the stations that sell it (with their sectors and
// systems), the sectors where it is mined, and the MOBs that drop it (with the drop frequency and
// where those MOBs spawn). Read for many records at once, a batch of names per statement.
#include "views/billofmaterials.h"

#include <QHash>
#include <QList>
#include <QString>

namespace planner {

struct Station {
    QString name, sector, system;
};

struct Place {
    QString sector, system;
};

struct Spawn {
    QString sector, system, navPoint, rate;
};

struct Drop {
    QString mob, frequency;
    QList<Spawn> spawns;
};

struct Sources {
    QList<Station> stations; // sell it
    QList<Place> mines;      // raw materials: mined there
    QList<Drop> drops;       // MOBs that drop it
    bool isEmpty() const { return stations.isEmpty() && mines.isEmpty() && drops.isEmpty(); }
};

class SourceBook {
public:
    // Reads the sources of the records (those already read are kept). Throws VbError.
    void load(const QList<bom::Ref>& records);
    void clear();
    // The sources of a record; empty when none were read or it has none.
    const Sources& of(const bom::Ref& record) const;

private:
    QHash<bom::Ref, Sources> m_sources;
};

// "Station (Sector, System)", "Sector (System)", "MOB (Rare) in Sector, Sector": the texts the list
// shows for one source; parts that are not recorded are left out.
QString StationText(const Station& s);
QString PlaceText(const Place& p);
QString DropText(const Drop& d);

} // namespace planner
