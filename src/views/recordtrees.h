#pragma once
// The trees of the component, raw-material, item and station views: what a record is used in, and
// what a station sells. Group nodes ("Equipment", "Components", ...) with children keyed by the group,
// the kind marker and the name, so that the same navigation as in the loot tree applies.
#include "views/buildtree.h"

enum class RecordKind { Component, RawMaterial, Item };

// Groups without rows are left out; with no rows at all the single node "No Records Found".
void PopulateUsedIn(RecordKind kind, const QString& name, TreeNodeSink& nodes);
void PopulateStationSells(const QString& station, TreeNodeSink& nodes);
