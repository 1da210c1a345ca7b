#pragma once
// The item icons: 32 x 32 tiles, one shape family (module, crystal, canister, chip, ore...) in one
// colour per index, so that every index looks different.
#include <QImage>

namespace icons {
constexpr int Size = 32;
int familyCount();
int colourCount();
inline int count() {
    return familyCount() * colourCount();
}
QImage draw(int index);
} // namespace icons
