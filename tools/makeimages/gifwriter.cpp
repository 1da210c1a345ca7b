#include "gifwriter.h"

#include <QFile>
#include <QHash>
#include <algorithm>
#include <array>
#include <climits>
#include <vector>

namespace gif {
namespace {

struct Entry {
    QRgb colour;
    qint64 weight;
};

struct Box {
    int begin;
    int end; // one past the last entry of the box in the shared entry list
    int spread = 0;
    int channel = 0; // 0 red, 1 green, 2 blue: the channel with the widest range
};

int channelOf(QRgb c, int ch) {
    return ch == 0 ? qRed(c) : ch == 1 ? qGreen(c) : qBlue(c);
}

void measure(Box& box, const std::vector<Entry>& entries) {
    int lo[3] = {255, 255, 255}, hi[3] = {0, 0, 0};
    for (int i = box.begin; i < box.end; ++i)
        for (int ch = 0; ch < 3; ++ch) {
            const int v = channelOf(entries[size_t(i)].colour, ch);
            lo[ch] = std::min(lo[ch], v);
            hi[ch] = std::max(hi[ch], v);
        }
    box.spread = -1;
    for (int ch = 0; ch < 3; ++ch)
        if (hi[ch] - lo[ch] > box.spread) {
            box.spread = hi[ch] - lo[ch];
            box.channel = ch;
        }
}

QList<QRgb> medianCut(std::vector<Entry> entries, int maxColours) {
    std::vector<Box> boxes;
    Box all{0, int(entries.size())};
    measure(all, entries);
    boxes.push_back(all);
    while (int(boxes.size()) < maxColours) {
        // Split the box whose colours lie furthest apart; a single colour cannot be split.
        auto widest = std::max_element(boxes.begin(), boxes.end(),
                                       [](const Box& a, const Box& b) { return a.spread < b.spread; });
        if (widest->spread <= 0 || widest->end - widest->begin < 2)
            break;
        Box box = *widest;
        const int ch = box.channel;
        std::sort(entries.begin() + box.begin, entries.begin() + box.end,
                  [ch](const Entry& a, const Entry& b) {
                      return channelOf(a.colour, ch) < channelOf(b.colour, ch);
                  });
        qint64 total = 0;
        for (int i = box.begin; i < box.end; ++i)
            total += entries[size_t(i)].weight;
        qint64 running = 0;
        int cut = box.begin + 1;
        for (int i = box.begin; i < box.end - 1; ++i) {
            running += entries[size_t(i)].weight;
            cut = i + 1;
            if (running * 2 >= total)
                break;
        }
        Box left{box.begin, cut}, right{cut, box.end};
        measure(left, entries);
        measure(right, entries);
        *widest = left;
        boxes.push_back(right);
    }
    QList<QRgb> palette;
    for (const Box& box : boxes) {
        qint64 r = 0, g = 0, b = 0, w = 0;
        for (int i = box.begin; i < box.end; ++i) {
            const Entry& e = entries[size_t(i)];
            r += qRed(e.colour) * e.weight;
            g += qGreen(e.colour) * e.weight;
            b += qBlue(e.colour) * e.weight;
            w += e.weight;
        }
        palette.append(qRgb(int((r + w / 2) / w), int((g + w / 2) / w), int((b + w / 2) / w)));
    }
    return palette;
}

class Nearest {
public:
    explicit Nearest(const QList<QRgb>& palette) : m_palette(palette) {}
    int operator()(QRgb c) {
        c = c | 0xff000000u;
        auto it = m_cache.constFind(c);
        if (it != m_cache.constEnd())
            return *it;
        int best = 0;
        int bestDistance = INT_MAX;
        for (int i = 0; i < m_palette.size(); ++i) {
            const QRgb p = m_palette.at(i);
            const int dr = qRed(p) - qRed(c), dg = qGreen(p) - qGreen(c), db = qBlue(p) - qBlue(c);
            const int d = 3 * dr * dr + 4 * dg * dg + 2 * db * db;
            if (d < bestDistance) {
                bestDistance = d;
                best = i;
            }
        }
        m_cache.insert(c, best);
        return best;
    }

private:
    const QList<QRgb>& m_palette;
    QHash<QRgb, int> m_cache;
};

int bitsFor(int colours) {
    int bits = 1;
    while ((1 << bits) < colours)
        ++bits;
    return bits;
}

void putWord(QByteArray& out, int v) {
    out.append(char(v & 0xff));
    out.append(char((v >> 8) & 0xff));
}

} // namespace

Indexed quantise(const QImage& image, int maxColours, bool dither) {
    const QImage src = image.convertToFormat(QImage::Format_RGB32);
    Indexed result;
    result.width = src.width();
    result.height = src.height();
    result.pixels.resize(qsizetype(src.width()) * src.height());

    QHash<QRgb, qint64> counts;
    for (int y = 0; y < src.height(); ++y) {
        const QRgb* line = reinterpret_cast<const QRgb*>(src.constScanLine(y));
        for (int x = 0; x < src.width(); ++x)
            ++counts[line[x] | 0xff000000u];
    }
    const bool exact = counts.size() <= maxColours;
    if (exact) {
        QHash<QRgb, int> index;
        for (auto it = counts.constBegin(); it != counts.constEnd(); ++it) {
            index.insert(it.key(), int(result.palette.size()));
            result.palette.append(it.key());
        }
        for (int y = 0; y < src.height(); ++y) {
            const QRgb* line = reinterpret_cast<const QRgb*>(src.constScanLine(y));
            for (int x = 0; x < src.width(); ++x)
                result.pixels[qsizetype(y) * src.width() + x] = char(index.value(line[x] | 0xff000000u));
        }
        if (result.palette.isEmpty())
            result.palette.append(qRgb(0, 0, 0));
        return result;
    }

    std::vector<Entry> entries;
    entries.reserve(size_t(counts.size()));
    for (auto it = counts.constBegin(); it != counts.constEnd(); ++it)
        entries.push_back({it.key(), it.value()});
    result.palette = medianCut(std::move(entries), maxColours);
    Nearest nearest(result.palette);

    const int w = src.width();
    // Error rows for Floyd-Steinberg: this row and the next, with a margin of one on each side.
    std::vector<std::array<int, 3>> err(size_t(w + 2)), nextErr(size_t(w + 2));
    for (int y = 0; y < src.height(); ++y) {
        const QRgb* line = reinterpret_cast<const QRgb*>(src.constScanLine(y));
        std::fill(nextErr.begin(), nextErr.end(), std::array<int, 3>{0, 0, 0});
        for (int x = 0; x < w; ++x) {
            QRgb c = line[x];
            if (dither) {
                const auto& e = err[size_t(x + 1)];
                c = qRgb(std::clamp(qRed(c) + e[0] / 16, 0, 255), std::clamp(qGreen(c) + e[1] / 16, 0, 255),
                         std::clamp(qBlue(c) + e[2] / 16, 0, 255));
            }
            const int i = nearest(c);
            result.pixels[qsizetype(y) * w + x] = char(i);
            if (dither) {
                const QRgb p = result.palette.at(i);
                const int d[3] = {qRed(c) - qRed(p), qGreen(c) - qGreen(p), qBlue(c) - qBlue(p)};
                for (int ch = 0; ch < 3; ++ch) {
                    err[size_t(x + 2)][ch] += d[ch] * 7;
                    nextErr[size_t(x)][ch] += d[ch] * 3;
                    nextErr[size_t(x + 1)][ch] += d[ch] * 5;
                    nextErr[size_t(x + 2)][ch] += d[ch];
                }
            }
        }
        std::swap(err, nextErr);
    }
    return result;
}

QByteArray lzwEncode(const QByteArray& indices, int minCodeSize) {
    const int clearCode = 1 << minCodeSize;
    const int endCode = clearCode + 1;
    QByteArray out;
    quint32 bitBuffer = 0;
    int bitCount = 0;
    int codeSize = minCodeSize + 1;
    auto put = [&](int code) {
        bitBuffer |= quint32(code) << bitCount;
        bitCount += codeSize;
        while (bitCount >= 8) {
            out.append(char(bitBuffer & 0xff));
            bitBuffer >>= 8;
            bitCount -= 8;
        }
    };

    QHash<quint32, int> table; // (prefix code << 8 | next index) -> code
    int nextCode = endCode + 1;
    put(clearCode);
    if (!indices.isEmpty()) {
        int prefix = quint8(indices.at(0));
        for (qsizetype i = 1; i < indices.size(); ++i) {
            const int k = quint8(indices.at(i));
            const quint32 key = (quint32(prefix) << 8) | quint32(k);
            auto it = table.constFind(key);
            if (it != table.constEnd()) {
                prefix = *it;
                continue;
            }
            put(prefix);
            if (nextCode < 4096) {
                table.insert(key, nextCode++);
                // The reader adds its entry one code later, so it widens when the code after this
                // one could no longer be told apart at the current width.
                if (nextCode > (1 << codeSize) && codeSize < 12)
                    ++codeSize;
            } else {
                put(clearCode);
                table.clear();
                nextCode = endCode + 1;
                codeSize = minCodeSize + 1;
            }
            prefix = k;
        }
        put(prefix);
    }
    put(endCode);
    if (bitCount > 0)
        out.append(char(bitBuffer & 0xff));
    return out;
}

QByteArray encode(const Indexed& picture) {
    const int tableBits = bitsFor(int(picture.palette.size()));
    const int minCodeSize = std::max(2, tableBits);
    QByteArray out("GIF89a");
    putWord(out, picture.width);
    putWord(out, picture.height);
    out.append(char(0x80 | ((8 - 1) << 4) | (tableBits - 1))); // global table, 8-bit colour source
    out.append(char(0));                                       // background colour index
    out.append(char(0));                                       // square pixels
    for (int i = 0; i < (1 << tableBits); ++i) {
        const QRgb c = i < picture.palette.size() ? picture.palette.at(i) : qRgb(0, 0, 0);
        out.append(char(qRed(c)));
        out.append(char(qGreen(c)));
        out.append(char(qBlue(c)));
    }
    out.append(char(0x2c)); // image descriptor: whole screen, no local table, not interlaced
    putWord(out, 0);
    putWord(out, 0);
    putWord(out, picture.width);
    putWord(out, picture.height);
    out.append(char(0));
    out.append(char(minCodeSize));
    const QByteArray data = lzwEncode(picture.pixels, minCodeSize);
    for (qsizetype pos = 0; pos < data.size(); pos += 255) {
        const qsizetype n = std::min<qsizetype>(255, data.size() - pos);
        out.append(char(n));
        out.append(data.constData() + pos, n);
    }
    out.append(char(0));    // end of the image data
    out.append(char(0x3b)); // trailer
    return out;
}

QByteArray encode(const QImage& image, bool dither) {
    return encode(quantise(image, 256, dither));
}

bool write(const QImage& image, const QString& path, bool dither, QString* error) {
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly)) {
        if (error)
            *error = f.errorString();
        return false;
    }
    const QByteArray bytes = encode(image, dither);
    if (f.write(bytes) != bytes.size()) {
        if (error)
            *error = f.errorString();
        return false;
    }
    return true;
}

} // namespace gif
