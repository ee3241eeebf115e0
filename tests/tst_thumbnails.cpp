#include "tests/support/TestFiles.h"
#include "tests/support/WindowDriver.h"

#include <QDir>
#include <QFileIconProvider>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

using Qt::StringLiterals::operator""_s;

namespace {

/// Writes two copies of one picture, in two folders.
void writePictures(const QString &folder, const QString &name, const QSize &size, const char *format)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(QColor(200, 30, 60));
    for (const QString &each : {QDir(folder).filePath(name), QDir(folder).filePath(u"copies/"_s + name)}) {
        writeFile(each, QByteArray());
        if (!image.save(each, format))
            qFatal("Cannot write %s", qPrintable(each));
    }
}

// One pixel, black.
const QByteArray smallestGif = QByteArray::fromBase64("R0lGODlhAQABAIAAAAAAAAAAACwAAAAAAQABAAACAkQBADs=");

} // namespace

/// The icons of file rows: thumbnails for pictures, the icon of the file type for other files.
class tst_thumbnails : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void showsPictures_data();
    void showsPictures();
    void enlargesSmallPictures();
    void showsTheSystemIconForOtherFiles_data();
    void showsTheSystemIconForOtherFiles();
    void showsNothingForABrokenPicture();
    void survivesDeletedRows();

private:
    bool scan()
    {
        m_driver->setFolders({m_folder->path()});
        return m_driver->scan();
    }

    [[nodiscard]] QTreeWidgetItem *row(const QString &name)
    {
        return m_driver->fileRow(m_folder->filePath(name));
    }

    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<WindowDriver> m_driver;
};

void tst_thumbnails::init()
{
    m_driver.reset(new WindowDriver);
    m_folder.reset(new QTemporaryDir);
}

void tst_thumbnails::showsPictures_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("thumbnail");

    QTest::newRow("wide") << u"wide.png"_s << QByteArray("PNG") << QSize(640, 320) << QSize(32, 16);
    QTest::newRow("high") << u"high.jpg"_s << QByteArray("JPG") << QSize(300, 1200) << QSize(8, 32);
    QTest::newRow("capitals") << u"square.JPG"_s << QByteArray("JPG") << QSize(64, 64) << QSize(32, 32);
    QTest::newRow("jpeg") << u"photo.jpeg"_s << QByteArray("JPG") << QSize(33, 33) << QSize(32, 32);
    QTest::newRow("bmp") << u"drawing.bmp"_s << QByteArray("BMP") << QSize(64, 32) << QSize(32, 16);
    QTest::newRow("another format") << u"really a png.jpg"_s << QByteArray("PNG") << QSize(64, 32)
                                    << QSize(32, 16);
    QTest::newRow("one line") << u"line.png"_s << QByteArray("PNG") << QSize(1000, 1) << QSize(32, 1);
}

void tst_thumbnails::showsPictures()
{
    QFETCH(const QString, name);
    QFETCH(const QByteArray, format);
    QFETCH(const QSize, size);
    QFETCH(const QSize, thumbnail);
    writePictures(m_folder->path(), name, size, format);

    QVERIFY(scan());
    for (const QString &each : {name, u"copies/"_s + name}) {
        QTRY_VERIFY(!row(each)->icon(0).isNull());
        QCOMPARE(row(each)->icon(0).availableSizes(), QList<QSize>{thumbnail});
        const QColor colour = row(each)->icon(0).pixmap(thumbnail).toImage().pixelColor(0, 0);
        QVERIFY2(
            qAbs(colour.red() - 200) < 5 && qAbs(colour.green() - 30) < 5 && qAbs(colour.blue() - 60) < 5,
            qPrintable(colour.name()));
    }
}

void tst_thumbnails::enlargesSmallPictures()
{
    for (const char *name : {"a.gif", "b.gif"})
        writeFile(m_folder->filePath(QLatin1StringView(name)), smallestGif);
    QVERIFY(scan());
    QTRY_VERIFY(!row(u"a.gif"_s)->icon(0).isNull());
    QCOMPARE(row(u"a.gif"_s)->icon(0).availableSizes(), (QList<QSize>{QSize(32, 32)}));
}

void tst_thumbnails::showsTheSystemIconForOtherFiles_data()
{
    QTest::addColumn<QString>("name");
    // The contents are pictures, but these suffixes have no thumbnails.
    QTest::newRow("tiff") << u"picture.tiff"_s;
    QTest::newRow("ico") << u"picture.ico"_s;
    QTest::newRow("no suffix") << u"png"_s;
    QTest::newRow("text") << u"picture.png.txt"_s;
}

void tst_thumbnails::showsTheSystemIconForOtherFiles()
{
    QFETCH(const QString, name);
    writePictures(m_folder->path(), name, QSize(64, 32), "PNG");

    QVERIFY(scan());
    // Set immediately, not by the event loop.
    QVERIFY(!row(name)->icon(0).isNull());
    const QIcon expected = QFileIconProvider().icon(QFileInfo(m_folder->filePath(name)));
    QTest::qWait(0);
    QCOMPARE(row(name)->icon(0).pixmap(32).toImage(), expected.pixmap(32).toImage());
}

void tst_thumbnails::showsNothingForABrokenPicture()
{
    for (const char *name : {"a.png", "b.png"})
        writeFile(m_folder->filePath(QLatin1StringView(name)), "not a picture");
    writePictures(m_folder->path(), u"good.png"_s, QSize(64, 64), "PNG");

    QVERIFY(scan());
    QTRY_VERIFY(!row(u"good.png"_s)->icon(0).isNull());
    QTRY_VERIFY(!row(u"copies/good.png"_s)->icon(0).isNull());
    QVERIFY(row(u"a.png"_s)->icon(0).isNull());
    QVERIFY(row(u"b.png"_s)->icon(0).isNull());
    QCOMPARE(m_driver->filePaths().size(), 4);
}

void tst_thumbnails::survivesDeletedRows()
{
    writePictures(m_folder->path(), u"picture.png"_s, QSize(64, 64), "PNG");
    QVERIFY(scan());
    // The rows of each load are deleted before the event loop loads their thumbnails.
    for (int i = 0; i < 3; ++i) {
        m_driver->callSlot("refreshCurrentBatchUI");
        m_driver->tree()->clear();
    }

    m_driver->callSlot("refreshCurrentBatchUI");
    delete m_driver->tree()->topLevelItem(0)->takeChild(0);

    QTRY_VERIFY(!m_driver->tree()->topLevelItem(0)->child(0)->icon(0).isNull());
    m_driver->callSlot("refreshCurrentBatchUI");
    m_driver.reset();
    QCoreApplication::processEvents();
}

QTEST_MAIN(tst_thumbnails)
#include "tst_thumbnails.moc"
