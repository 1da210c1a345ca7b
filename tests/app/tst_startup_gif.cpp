// The GIF writer: what it writes, Qt's own GIF reader reads back pixel for pixel when the picture has
// at most 256 colours, and close to the original when it has to reduce the colours. And the drawn
// pictures: enough distinct item icons, and pictures that survive the trip through GIF.
#include "gifwriter.h"
#include "icons.h"
#include "scenes.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QImageReader>
#include <QRandomGenerator>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

class TestGifWriter : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void exactRoundTrip_data();
    void exactRoundTrip();
    void manyColoursAreReducedCloseToTheOriginal_data();
    void manyColoursAreReducedCloseToTheOriginal();
    void headerAndTrailer();
    void writeReportsAnUnwritablePath();
    void itemIconsAreManyAndDistinct();
    void scenesSurviveTheRoundTrip();

private:
    static QImage decode(const QByteArray& bytes);
};

QImage TestGifWriter::decode(const QByteArray& bytes) {
    QBuffer buffer;
    buffer.setData(bytes);
    QImageReader reader(&buffer, "gif");
    QImage img = reader.read();
    if (img.isNull())
        qWarning() << reader.errorString();
    return img.convertToFormat(QImage::Format_RGB32);
}

// A picture of the given size using exactly `colours` colours, in a pattern that makes long and short
// runs, so the code table fills and is cleared more than once on the larger sizes.
static QImage patterned(int w, int h, int colours, quint32 seed) {
    QImage img(w, h, QImage::Format_RGB32);
    QRandomGenerator rng(seed);
    QList<QRgb> palette;
    for (int i = 0; i < colours; ++i)
        palette << qRgb((i * 53) % 256, (i * 97 + 11) % 256, (i * 29 + 200) % 256);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            const int i = (y % 7 == 0) ? int(rng.bounded(colours)) : ((x / 3 + y) % colours);
            img.setPixel(x, y, palette.at(i));
        }
    for (int i = 0; i < colours && i < w * h; ++i) // every colour at least once
        img.setPixel(i % w, i / w, palette.at(i));
    return img;
}

void TestGifWriter::exactRoundTrip_data() {
    QTest::addColumn<QImage>("image");
    QImage one(1, 1, QImage::Format_RGB32);
    one.fill(qRgb(10, 20, 30));
    QTest::newRow("one pixel") << one;
    QImage flat(40, 30, QImage::Format_RGB32);
    flat.fill(qRgb(200, 100, 50));
    QTest::newRow("one colour, long runs") << flat;
    QTest::newRow("two colours") << patterned(17, 5, 2, 1);
    QTest::newRow("three colours: table of four") << patterned(33, 9, 3, 2);
    QTest::newRow("odd size, 200 colours") << patterned(37, 23, 200, 3);
    QTest::newRow("exactly 256 colours") << patterned(64, 64, 256, 4);
    QTest::newRow("large noise: code table cleared") << patterned(400, 300, 256, 5);
}

void TestGifWriter::exactRoundTrip() {
    QFETCH(QImage, image);
    const QImage back = decode(gif::encode(image));
    QCOMPARE(back.size(), image.size());
    QCOMPARE(back, image.convertToFormat(QImage::Format_RGB32));
}

void TestGifWriter::manyColoursAreReducedCloseToTheOriginal_data() {
    QTest::addColumn<bool>("dither");
    QTest::newRow("nearest colour") << false;
    QTest::newRow("dithered") << true;
}

void TestGifWriter::manyColoursAreReducedCloseToTheOriginal() {
    QFETCH(bool, dither);
    QImage image(256, 96, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgb(x, (y * 255) / 95, 255 - x / 2));
    const gif::Indexed reduced = gif::quantise(image, 256, dither);
    QVERIFY(reduced.palette.size() <= 256);
    QVERIFY(reduced.palette.size() > 128);
    const QImage back = decode(gif::encode(image, dither));
    QCOMPARE(back.size(), image.size());
    double worstAverage = 0, sumError = 0;
    for (int y = 0; y < image.height(); ++y) {
        double rowError = 0;
        for (int x = 0; x < image.width(); ++x) {
            const QRgb a = image.pixel(x, y), b = back.pixel(x, y);
            const double e = std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) + std::abs(qBlue(a) - qBlue(b));
            rowError += e;
            if (!dither)
                QVERIFY2(e <= 60, qPrintable(QString("pixel %1,%2 off by %3").arg(x).arg(y).arg(e)));
        }
        sumError += rowError;
        worstAverage = std::max(worstAverage, rowError / image.width());
    }
    QVERIFY2(sumError / (image.width() * image.height()) < 16, qPrintable(QString::number(sumError)));
    QVERIFY(worstAverage < 30);
}

void TestGifWriter::headerAndTrailer() {
    const QByteArray bytes = gif::encode(patterned(10, 4, 5, 9));
    QVERIFY(bytes.startsWith("GIF89a"));
    QCOMPARE(quint8(bytes.at(6)), quint8(10)); // width, low byte first
    QCOMPARE(quint8(bytes.at(8)), quint8(4));
    QCOMPARE(quint8(bytes.at(10)) & 0x87, 0x80 | 2); // global table of 8 entries for 5 colours
    QCOMPARE(bytes.back(), char(0x3b));
}

void TestGifWriter::writeReportsAnUnwritablePath() {
    QTemporaryDir dir;
    QString error;
    QVERIFY(!gif::write(patterned(4, 4, 2, 1), dir.filePath("no/such/folder/x.gif"), false, &error));
    QVERIFY(!error.isEmpty());
    const QString path = dir.filePath("x.gif");
    QVERIFY(gif::write(patterned(4, 4, 2, 1), path, false, &error));
    QCOMPARE(QImage(path).size(), QSize(4, 4));
}

void TestGifWriter::itemIconsAreManyAndDistinct() {
    QVERIFY(icons::count() >= 100);
    QSet<QByteArray> seen;
    for (int i = 0; i < icons::count(); ++i) {
        const QImage icon = icons::draw(i);
        QCOMPARE(icon.size(), QSize(32, 32));
        const QImage back = decode(gif::encode(icon));
        QCOMPARE(back.size(), QSize(32, 32));
        const QByteArray hash = QCryptographicHash::hash(
            QByteArray(reinterpret_cast<const char*>(back.constBits()), back.sizeInBytes()), QCryptographicHash::Sha1);
        QVERIFY2(!seen.contains(hash), qPrintable(QString("icon %1 repeats an earlier one").arg(i)));
        seen.insert(hash);
    }
}

void TestGifWriter::scenesSurviveTheRoundTrip() {
    for (const QImage& scene : {scenes::background(), scenes::splash()}) {
        const QImage back = decode(gif::encode(scene, true));
        QCOMPARE(back.size(), scene.size());
        QVERIFY(back.width() >= 400);
    }
    // The list's background stays pale, so black list text stays readable on it.
    const QImage bg = scenes::background();
    QVERIFY(bg.width() >= 1024 && bg.height() >= 768);
    qint64 light = 0;
    for (int y = 0; y < bg.height(); y += 8)
        for (int x = 0; x < bg.width(); x += 8)
            light += qGray(bg.pixel(x, y)) >= 200 ? 1 : 0;
    QVERIFY(light * 100 / ((bg.width() / 8) * (bg.height() / 8)) >= 95);
}

QTEST_MAIN(TestGifWriter)
#include "tst_startup_gif.moc"
