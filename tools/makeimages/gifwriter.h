#pragma once
// A small GIF89a writer: Qt reads GIF but cannot write it, and the item icons, the background and the
// splash picture are kept as GIF files. Pictures with more than 256 colours are reduced by median cut.
#include <QByteArray>
#include <QImage>
#include <QList>
#include <QString>

namespace gif {

struct Indexed {
    QList<QRgb> palette; // at most 256 opaque colours
    QByteArray pixels;   // one palette index per pixel, row by row
    int width = 0;
    int height = 0;
};

// Reduces the picture to at most maxColours colours (alpha is dropped: the pictures are opaque).
// A picture that already has few enough colours keeps them exactly. With dither, the rounding error
// is spread to the neighbours (Floyd-Steinberg), which keeps soft gradients from banding.
Indexed quantise(const QImage& image, int maxColours = 256, bool dither = false);

// The variable-length LZW code stream of the GIF format, before it is cut into sub-blocks.
QByteArray lzwEncode(const QByteArray& indices, int minCodeSize);

// The whole file.
QByteArray encode(const Indexed& picture);
QByteArray encode(const QImage& image, bool dither = false);
bool write(const QImage& image, const QString& path, bool dither = false, QString* error = nullptr);

} // namespace gif
