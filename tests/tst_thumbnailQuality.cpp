#include "results/Thumbnail.h"

#include <QImage>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <cstdlib>

using Qt::StringLiterals::operator""_s;

namespace {

/// Vertical lines of one pixel, alternately black and white.
QImage stripes(const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            image.setPixelColor(x, y, x % 2 == 0 ? Qt::black : Qt::white);
    }
    return image;
}

/// Rings that become narrower towards the edge: coarse and fine detail in every direction.
QImage rings(const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    const QPointF centre(size.width() / 2.0, size.height() / 2.0);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const QPointF offset = (QPointF(x, y) - centre) * 40 / size.width();
            const int grey = qRound(127.5 + 127.5 * std::cos(QPointF::dotProduct(offset, offset) / 20));
            image.setPixelColor(x, y, QColor(grey, grey, grey));
        }
    }
    return image;
}

/// Mean difference per pixel between two pictures of the same size, in grey levels.
double meanDifference(const QImage &first, const QImage &second)
{
    qint64 sum = 0;
    for (int y = 0; y < first.height(); ++y) {
        for (int x = 0; x < first.width(); ++x)
            sum += std::abs(qGray(first.pixel(x, y)) - qGray(second.pixel(x, y)));
    }
    return static_cast<double>(sum) / (first.width() * first.height());
}

} // namespace

/// How well thumbnails show the detail of their pictures.
class tst_thumbnailQuality : public QObject
{
    Q_OBJECT

private slots:
    void blendsNeighbouringPixels_data();
    void blendsNeighbouringPixels();
    void keepsTheDetailOfTheFullPicture_data();
    void keepsTheDetailOfTheFullPicture();
};

void tst_thumbnailQuality::blendsNeighbouringPixels_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::newRow("png") << QByteArray("png");
    QTest::newRow("bmp") << QByteArray("bmp");
}

void tst_thumbnailQuality::blendsNeighbouringPixels()
{
    QFETCH(const QByteArray, format);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"x"_s);
    QVERIFY(stripes({128, 128}).save(path, format.constData()));
    const QImage thumbnail = loadThumbnail(path).toImage();
    for (int x = 0; x < thumbnail.width(); ++x)
        QVERIFY(std::abs(qGray(thumbnail.pixel(x, 16)) - 128) < 40);
}

void tst_thumbnailQuality::keepsTheDetailOfTheFullPicture_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QSize>("size");
    for (const char *const format : {"png", "jpg", "bmp"}) {
        for (const QSize size : {QSize(1000, 1000), QSize(700, 500), QSize(400, 300), QSize(150, 200)})
            QTest::addRow("%d x %d %s", size.width(), size.height(), format) << QByteArray(format) << size;
    }
}

/// Decoding at a reduced size may blur the picture a little, but not visibly.
void tst_thumbnailQuality::keepsTheDetailOfTheFullPicture()
{
    QFETCH(const QByteArray, format);
    QFETCH(const QSize, size);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"x"_s);
    QVERIFY(rings(size).save(path, format.constData()));
    const QImage expected = QImage(path).scaled(32, 32, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    const double difference = meanDifference(loadThumbnail(path).toImage(), expected);
    // Decoding at four times the thumbnail's size differs by less than 5, at one or two times by 11 to 18.
    QVERIFY2(difference < 7, qPrintable(QString::number(difference)));
}

QTEST_MAIN(tst_thumbnailQuality)
#include "tst_thumbnailQuality.moc"
