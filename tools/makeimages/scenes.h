#pragma once
// The larger pictures: the main list's background (a pale space scene that text stays readable on)
// and the splash picture.
#include <QImage>

namespace scenes {
QImage background(); // BG_VOSK.GIF
QImage splash();     // SPLASH.GIF
} // namespace scenes
