#include "tests/support/HostileTree.h"
#include "tests/support/TestFiles.h"
#include "tests/support/WindowDriver.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QImage>
#include <QTest>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

using Qt::StringLiterals::operator""_s;

namespace {

constexpr QSize gigantic(30'000, 30'000);

QByteArray picture(const char *format)
{
    QImage image(400, 300, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgb(x % 256, y % 256, (x * y) % 256));
    }
    QBuffer buffer;
    if (!image.save(&buffer, format))
        qFatal("Cannot write a %s", format);
    return buffer.data();
}

/// Peak resident memory of the process in MiB, 0 if unknown.
qint64 peakMemory()
{
#ifdef Q_OS_LINUX
    rusage usage = {};
    return getrusage(RUSAGE_SELF, &usage) == 0 ? usage.ru_maxrss / 1024 : 0;
#else
    return 0;
#endif
}

} // namespace

/// Pictures that are broken or larger than memory: their files are listed, marked and deleted like others.
class tst_hostilePictures : public QObject
{
    Q_OBJECT

private slots:
    void survivesBrokenAndHugePictures_data();
    void survivesBrokenAndHugePictures();
};

void tst_hostilePictures::survivesBrokenAndHugePictures_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("hasIcon");

    QTest::newRow("text named jpg") << u"jpg"_s << QByteArray("no picture at all") << false;
    QTest::newRow("empty file") << u"png"_s << QByteArray() << false;
    QTest::newRow("zeros") << u"bmp"_s << QByteArray(100'000, '\0') << false;
    QTest::newRow("png cut in the header") << u"png"_s << picture("PNG").left(20) << false;
    QTest::newRow("jpg cut in the header") << u"jpeg"_s << picture("JPG").left(20) << false;
    QTest::newRow("jpg cut in half") << u"jpg"_s << picture("JPG").left(picture("JPG").size() / 2) << true;
    QTest::newRow("gigantic png without pixels") << u"png"_s << pngWithoutPixels(gigantic) << false;
    QTest::newRow("gigantic black png") << u"png"_s << blackPng(gigantic) << false;
    QTest::newRow("large black png") << u"png"_s << blackPng(QSize(5000, 5000)) << true;
    QTest::newRow("large jpg without pixels")
        << u"jpg"_s << jpegWithoutPixels(QSize(16'000, 12'000), false) << true;
    QTest::newRow("gigantic jpg without pixels") << u"jpg"_s << jpegWithoutPixels(gigantic, false) << false;
    QTest::newRow("gigantic progressive jpg") << u"jpg"_s << jpegWithoutPixels(gigantic, true) << false;
    QTest::newRow("a million pixels in one line") << u"png"_s << blackPng(QSize(1'000'000, 1)) << true;
}

void tst_hostilePictures::survivesBrokenAndHugePictures()
{
    QFETCH(const QString, suffix);
    QFETCH(const QByteArray, content);
    QFETCH(const bool, hasIcon);
    const HostileTree tree;
    writeFile(tree.path(u"1."_s + suffix), content);
    writeFile(tree.path(u"2."_s + suffix), content);
    const qint64 memoryBefore = peakMemory();
    QElapsedTimer clock;
    clock.start();

    WindowDriver driver;
    driver.setFolders({tree.path()});
    QVERIFY(driver.scan());
    QTest::qWait(0);
    qInfo("%lld ms, %lld MiB more", clock.elapsed(), peakMemory() - memoryBefore);
    QCOMPARE(driver.filePaths().size(), 2);
    for (const QString &path : driver.filePaths())
        QCOMPARE(!driver.fileRow(path)->icon(0).isNull(), hasIcon);
    QCOMPARE(driver.checkedPaths().size(), 1);
    driver.clickAndCloseBoxes("btnRemoveSelected");
    QCOMPARE(tree.state().size(), 1);
    // The pixels would take gigabytes.
    QCOMPARE_LT(peakMemory() - memoryBefore, 700);
}

QTEST_MAIN(tst_hostilePictures)
#include "tst_hostilePictures.moc"
