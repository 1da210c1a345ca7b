#pragma once
// The small pictures of the record trees, drawn here at 16x16: the build tree's equipment,
// component, refined and other raw material and item; the five-step frequency scale; groups,
// sectors and MOBs.
#include "views/billofmaterials.h"

#include <QIcon>

QIcon BuildTreeIcon(int image); // buildimg:: numbers
QIcon BuildTreeIcon(bom::Kind kind);
QIcon MobTreeIcon(int image); // mobimg:: numbers
QIcon TreeIcon(int image, bool mobTree);
