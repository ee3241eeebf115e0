#include "app/CaptionFit.h"

#include <QFontDatabase>
#include <QImage>
#include <QLabel>
#include <QTest>

using Qt::StringLiterals::operator""_s;

/// Texts in places of a fixed size, in whatever font there is.
class tst_captionFit : public QObject
{
    Q_OBJECT

private slots:
    void showsEveryLineOfATitle_data();
    void showsEveryLineOfATitle();
    void showsTheWholeOfALongLine_data();
    void showsTheWholeOfALongLine();
    void leavesATitleThatFitsAlone();
};

namespace {

constexpr QSize place(381, 61);
const QString title =
    u"<p align=\"center\"><span style=\"font-size: 20pt; font-weight: 700\">Quillory</span></p>"
    "<p align=\"center\">Jaggy, quick</p><p align=\"center\"><br/></p>"_s;

const QString longTitle =
    QString(title).replace(u"quick"_s, u"quick, and with far more to say about itself than fits"_s);

void prepare(QLabel &label, const QSize &size, int pixels)
{
    label.setStyleSheet(u"color: black; background: white"_s);
    label.setAlignment(Qt::AlignTop);
    label.setFixedSize(size);
    label.ensurePolished();
    QFont font = label.font();
    font.setPixelSize(pixels);
    label.setFont(font);
    label.setText(title);
}

/// The number of pixels that the text darkens.
int ink(QLabel &label)
{
    const QImage image = label.grab().toImage().convertToFormat(QImage::Format_Grayscale8);
    int pixels = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            pixels += qGray(image.pixel(x, y)) < 128 ? 1 : 0;
    }
    return pixels;
}

} // namespace

void tst_captionFit::showsEveryLineOfATitle_data()
{
    QTest::addColumn<int>("pixels");
    for (const int pixels : {12, 16, 17})
        QTest::addRow("%d pixels", pixels) << pixels;
}

void tst_captionFit::showsEveryLineOfATitle()
{
    QFETCH(const int, pixels);
    QLabel roomy;
    prepare(roomy, {place.width(), 300}, pixels);
    QLabel label;
    prepare(label, place, pixels);
    fitTitle(&label);
    QVERIFY(ink(roomy) > 0);
    QCOMPARE(ink(label), ink(roomy));
}

void tst_captionFit::showsTheWholeOfALongLine_data()
{
    QTest::addColumn<int>("pixels");
    for (const int pixels : {13, 16, 19, 26})
        QTest::addRow("%d pixels", pixels) << pixels;
}

void tst_captionFit::showsTheWholeOfALongLine()
{
    QFETCH(const int, pixels);
    if (QFontDatabase::families().isEmpty())
        QSKIP("There are no letters here, only boxes of one width");
    QLabel label;
    prepare(label, place, pixels);
    label.setText(longTitle);
    fitCaption(&label);
    fitTitle(&label);
    QVERIFY(label.font().pixelSize() >= 8);
    QLabel roomy;
    prepare(roomy, {place.width() + 1000, 300}, pixels);
    roomy.setFont(label.font());
    roomy.setText(longTitle);
    QVERIFY(ink(roomy) > 0);
    QCOMPARE(ink(label), ink(roomy));
}

void tst_captionFit::leavesATitleThatFitsAlone()
{
    QLabel label;
    prepare(label, {place.width(), 300}, 12);
    fitTitle(&label);
    QCOMPARE(label.margin(), 0);
}

QTEST_MAIN(tst_captionFit)
#include "tst_captionFit.moc"
