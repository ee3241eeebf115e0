#include "results/Thumbnail.h"
#include "tests/support/RandomBytes.h"
#include "tests/support/TestFiles.h"

#include <QBuffer>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cstdlib>
#include <memory>

using Qt::StringLiterals::operator""_s;

namespace {

/// The left half red, the right half blue.
QImage halves(const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            image.setPixelColor(x, y, 2 * x < size.width() ? Qt::red : Qt::blue);
    }
    return image;
}

QByteArray encoded(const QImage &image, const char *format)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, format))
        qFatal("Cannot write a picture as %s", format);
    return buffer.data();
}

/// Scaling and lossy formats change colours slightly.
bool isRoughly(const QColor &color, const QColor &expected)
{
    constexpr int tolerance = 40;
    return std::abs(color.red() - expected.red()) < tolerance &&
           std::abs(color.green() - expected.green()) < tolerance &&
           std::abs(color.blue() - expected.blue()) < tolerance;
}

} // namespace

/// Loads the thumbnails of the file rows.
class tst_thumbnail : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void fitsInto32By32_data();
    void fitsInto32By32();
    void showsTheEntirePicture_data();
    void showsTheEntirePicture();
    void ignoresTheSuffix();
    void keepsTransparency();
    void isNullForOtherContents_data();
    void isNullForOtherContents();
    void toleratesATruncatedPicture_data();
    void toleratesATruncatedPicture();

private:
    [[nodiscard]] QString write(const QString &name, const QByteArray &content) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_thumbnail::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

QString tst_thumbnail::write(const QString &name, const QByteArray &content) const
{
    writeFile(m_folder->filePath(name), content);
    return m_folder->filePath(name);
}

void tst_thumbnail::fitsInto32By32_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("thumbnail");

    const auto row = [](const QSize &size, const QSize &thumbnail) {
        for (const char *const format : {"png", "jpg", "bmp"})
            QTest::addRow("%d x %d %s", size.width(), size.height(), format)
                << QByteArray(format) << size << thumbnail;
    };
    row({32, 32}, {32, 32});
    row({33, 33}, {32, 32});
    row({640, 480}, {32, 24});
    row({480, 640}, {24, 32});
    row({2000, 1000}, {32, 16});
    row({100, 99}, {32, 32});
    row({100, 90}, {32, 28});
    // Small pictures are enlarged.
    row({1, 1}, {32, 32});
    row({2, 1}, {32, 16});
    row({16, 8}, {32, 16});
    // A thumbnail is at least one pixel high and wide.
    row({3000, 1}, {32, 1});
    row({1, 3000}, {1, 32});
    row({3000, 10}, {32, 1});
    row({128, 1}, {32, 1});
    row({130, 2}, {32, 1});
}

void tst_thumbnail::fitsInto32By32()
{
    QFETCH(const QByteArray, format);
    QFETCH(const QSize, size);
    const QString path = write(u"picture"_s, encoded(halves(size), format.constData()));
    const QPixmap thumbnail = loadThumbnail(path);
    QTEST(thumbnail.size(), "thumbnail");
    QCOMPARE(thumbnail.size(), QPixmap(path).scaled(32, 32, Qt::KeepAspectRatio).size());
}

void tst_thumbnail::showsTheEntirePicture_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QSize>("size");
    for (const char *const format : {"png", "jpg", "bmp"}) {
        for (const QSize size : {QSize(1600, 900), QSize(64, 64), QSize(20, 10), QSize(900, 1600)})
            QTest::addRow("%d x %d %s", size.width(), size.height(), format) << QByteArray(format) << size;
    }
}

void tst_thumbnail::showsTheEntirePicture()
{
    QFETCH(const QByteArray, format);
    QFETCH(const QSize, size);

    const QImage thumbnail =
        loadThumbnail(write(u"picture"_s, encoded(halves(size), format.constData()))).toImage();

    QVERIFY(!thumbnail.isNull());
    const int right = thumbnail.width() - 1;
    const int bottom = thumbnail.height() - 1;
    for (const int y : {0, bottom / 2, bottom}) {
        QVERIFY(isRoughly(thumbnail.pixelColor(0, y), Qt::red));
        QVERIFY(isRoughly(thumbnail.pixelColor(right / 2 - 3, y), Qt::red));
        QVERIFY(isRoughly(thumbnail.pixelColor(right / 2 + 4, y), Qt::blue));
        QVERIFY(isRoughly(thumbnail.pixelColor(right, y), Qt::blue));
    }
}

void tst_thumbnail::ignoresTheSuffix()
{
    const QString path = write(u"png.jpg"_s, encoded(halves({64, 32}), "png"));
    QCOMPARE(loadThumbnail(path).size(), QSize(32, 16));
    QCOMPARE(loadThumbnail(write(u"%1.JPG"_s, encoded(halves({64, 32}), "jpg"))).size(), QSize(32, 16));
}

void tst_thumbnail::keepsTransparency()
{
    QImage image(64, 64, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    const QImage thumbnail = loadThumbnail(write(u"x.png"_s, encoded(image, "png"))).toImage();
    QCOMPARE(thumbnail.size(), QSize(32, 32));
    QCOMPARE(thumbnail.pixelColor(16, 16).alpha(), 0);
}

void tst_thumbnail::isNullForOtherContents_data()
{
    QTest::addColumn<QByteArray>("content");
    const QByteArray png = encoded(halves({64, 64}), "png");
    QTest::newRow("empty file") << QByteArray();
    QTest::newRow("text") << QByteArray("This is no picture at all.\n").repeated(100);
    QTest::newRow("noise") << randomBytes(5000, 1);
    QTest::newRow("png signature alone") << png.first(8);
    QTest::newRow("png header alone") << png.first(33);
    QTest::newRow("jpg signature alone") << encoded(halves({64, 64}), "jpg").first(4);
    QTest::newRow("one byte") << QByteArray("x");
}

void tst_thumbnail::isNullForOtherContents()
{
    QFETCH(const QByteArray, content);
    for (const char *const name : {"x.jpg", "x.jpeg", "x.png", "x.gif", "x.bmp", "x.webp"})
        QVERIFY2(loadThumbnail(write(QLatin1StringView(name), content)).isNull(), name);
    QVERIFY(loadThumbnail(m_folder->filePath(u"missing.jpg"_s)).isNull());
    QVERIFY(loadThumbnail(m_folder->path()).isNull());
}

void tst_thumbnail::toleratesATruncatedPicture_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<int>("percent");
    for (const char *const format : {"png", "jpg", "bmp"}) {
        for (const int percent : {10, 50, 90, 99})
            QTest::addRow("%d%% of a %s", percent, format) << QByteArray(format) << percent;
    }
}

/// The thumbnail shows what Qt can decode; it is null if Qt can decode nothing.
void tst_thumbnail::toleratesATruncatedPicture()
{
    QFETCH(const QByteArray, format);
    QFETCH(const int, percent);
    QImage noise(640, 480, QImage::Format_RGB32);
    const QByteArray bytes = randomBytes(noise.sizeInBytes(), 2);
    std::copy(bytes.cbegin(), bytes.cend(), noise.bits());
    const QByteArray complete = encoded(noise, format.constData());
    const QString path = write(u"x"_s, complete.first(complete.size() * percent / 100));

    const QPixmap thumbnail = loadThumbnail(path);
    QCOMPARE(thumbnail.isNull(), QPixmap(path).isNull());
    if (!thumbnail.isNull())
        QCOMPARE(thumbnail.size(), QSize(32, 24));
}

QTEST_MAIN(tst_thumbnail)
#include "tst_thumbnail.moc"
