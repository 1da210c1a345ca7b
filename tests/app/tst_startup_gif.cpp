// The GIF writer: Qt's own GIF reader reads back pixel for pixel what it writes.
#include "gifwriter.h"

#include <QBuffer>
#include <QImageReader>
#include <QTest>

class TestGifWriter : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void exactRoundTrip_data() {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("colours");
        QTest::newRow("one pixel") << QSize(1, 1) << 1;
        QTest::newRow("three colours: table of four") << QSize(33, 9) << 3;
        QTest::newRow("large, 256 colours: code table cleared") << QSize(400, 300) << 256;
    }
    // Runs long and short, so that the code table fills and is cleared on the larger sizes.
    void exactRoundTrip() {
        QFETCH(QSize, size);
        QFETCH(int, colours);
        QImage image(size, QImage::Format_RGB32);
        for (int y = 0; y < size.height(); ++y)
            for (int x = 0; x < size.width(); ++x) {
                const int i = (y % 7 == 0) ? (x * 7919 + y * 104729) % colours : (x / 3 + y) % colours;
                image.setPixel(x, y, qRgb((i * 53) % 256, (i * 97 + 11) % 256, (i * 29 + 200) % 256));
            }
        QBuffer buffer;
        buffer.setData(gif::encode(image));
        QCOMPARE(QImageReader(&buffer, "gif").read().convertToFormat(QImage::Format_RGB32), image);
    }
};

QTEST_MAIN(TestGifWriter)
#include "tst_startup_gif.moc"
