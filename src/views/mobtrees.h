#pragma once
// The MOB trees: what a MOB attacks with and resists, where it spawns, what it drops; and the other
// way round, which MOBs drop a record. Nodes go through a TreeNodeSink; errors are thrown for the
// window's handler, nodes added before an error stay.
#include "views/buildtree.h"

// Pictures of the MOB trees: the five-step frequency scale, then groups, sectors and MOBs.
namespace mobimg {
enum : int {
    None = 0,
    VeryRare = 5,
    Rare = 6,
    Normal = 7,
    Frequent = 8,
    VeryFrequent = 9,
    Group = 10,
    Sector = 11,
    Mob = 12
};
}

inline const QString NoRecordsFound = QStringLiteral("No Records Found");

// The picture of a drop frequency or a spawn rate word (exact words, case matters); 0 when unknown.
int DropFrequencyImage(const QString& frequency);
int SpawnRateImage(const QString& rate);

void PopulateTacticalTree(const QString& mobName, TreeNodeSink& nodes);
void PopulateSpawnTree(const QString& mobName, TreeNodeSink& nodes);
void PopulateLootTree(const QString& mobName, TreeNodeSink& nodes);

// The MOBs that drop a record: one node per MOB with a "Drop Rate: " child.
enum class DropKind { Equipment, Component, RawMaterial, Item };
void PopulateMOBs(DropKind kind, const QString& name, TreeNodeSink& nodes);

// "Level 12 Drone", with " Boss" after it for a boss.
QString MobTypeLine(const QString& combatLevel, const QString& type, bool boss);
