#include "tests/support/ScannedFolder.h"

#include <QFileIconProvider>
#include <QPainter>
#include <QScrollBar>
#include <QTest>

using Qt::StringLiterals::operator""_s;

namespace {

const QColor frameColor(0xdd, 0xe6, 0xee);

QRect inkOf(const QImage &image)
{
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qGray(image.pixel(x, y)) < 128)
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

} // namespace

/// The frame of the results, and texts that are aligned.
class tst_windowDetails : public QObject, private ScannedFolder
{
    Q_OBJECT

private slots:
    void init();

    void theResultsHaveACompleteFrame();
    void nothingElseIsFramed();
    void namesOfVolumesAreAligned();
    void theValuesOfTheScanPageAreAligned();
};

void tst_windowDetails::init()
{
    reset();
}

void tst_windowDetails::theResultsHaveACompleteFrame()
{
    for (int i = 0; i < 30; ++i)
        write({u"a%1"_s.arg(i), u"b%1"_s.arg(i)}, QByteArray::number(i));

    QVERIFY(scan());
    QWidget *const frame = m_driver->find("treeWidgetBg");
    const QImage picture = frame->grab().toImage();
    for (int x = 0; x < picture.width(); ++x) {
        QCOMPARE(picture.pixelColor(x, 0), frameColor);
        QCOMPARE(picture.pixelColor(x, picture.height() - 1), frameColor);
    }
    for (int y = 0; y < picture.height(); ++y) {
        QCOMPARE(picture.pixelColor(0, y), frameColor);
        QCOMPARE(picture.pixelColor(picture.width() - 1, y), frameColor);
    }
}

void tst_windowDetails::nothingElseIsFramed()
{
    for (int i = 0; i < 30; ++i)
        write({u"a%1"_s.arg(i), u"b%1"_s.arg(i)}, QByteArray::number(i));

    QVERIFY(scan());
    QVERIFY(m_driver->tree()->verticalScrollBar()->isVisible());
    QWidget *const frame = m_driver->find("treeWidgetBg");
    const QImage picture = frame->grab(frame->rect().adjusted(1, 1, -1, -1)).toImage();
    int framed = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            framed += picture.pixelColor(x, y) == frameColor ? 1 : 0;
    }
    QCOMPARE(framed, 0);
}

void tst_windowDetails::namesOfVolumesAreAligned()
{
    auto *const list = m_driver->find<QListWidget>("listScanFolders");
    if (list->count() == 0)
        QSKIP("No volume is mounted here, as in a chroot");
    for (int i = 0; i < list->count(); ++i) {
        const auto labels = list->itemWidget(list->item(i))->findChildren<QLabel *>();
        QLabel *const icon = labels.at(1);
        // Some desktops have icons in a smaller size only.
        QPixmap small(16, 16);
        small.fill(Qt::black);
        icon->setPixmap(small);
        QCoreApplication::processEvents();
        QCOMPARE(icon->size(), QSize(24, 24));
        QCOMPARE(icon->grab().toImage().pixelColor(12, 12), QColor(Qt::black));
        QCOMPARE(labels.at(2)->x(), 5 + 24 + 10);
    }
}

void tst_windowDetails::theValuesOfTheScanPageAreAligned()
{
    const auto bottomOf = [this](const char *name) {
        auto *const label = m_driver->find<QLabel>(name);
        label->setText(u"00:00"_s);
        return label->y() + inkOf(label->grab().toImage()).bottom();
    };
    QCOMPARE(bottomOf("labelElapsedTimeValue"), bottomOf("labelDuplicatesFoundValue"));
    QCOMPARE(bottomOf("labelFilesScannedValue"), bottomOf("labelDuplicatesFoundValue"));
}

QTEST_MAIN(tst_windowDetails)
#include "tst_windowDetails.moc"
