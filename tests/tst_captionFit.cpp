#include "app/CaptionFit.h"

#include <QApplication>
#include <QFontDatabase>
#include <QImage>
#include <QLabel>
#include <QTest>

using Qt::StringLiterals::operator""_s;

/// Texts fit labels of fixed size in every font.
class tst_captionFit : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void showsEveryLineOfATitle_data();
    void showsEveryLineOfATitle();
    void showsTheWholeOfALongLine_data();
    void showsTheWholeOfALongLine();
    void keepsATitleThatFits();

    void narrowsARowByTheSameAmount();
    void widensAgainForAShorterText();
    void reducesTheFontSizeAsALastResort();

private:
    const QFont m_font = QApplication::font();
};

namespace {

constexpr QSize labelSize(381, 61);
const QString title =
    u"<p align=\"center\"><span style=\"font-size: 20pt; font-weight: 700\">Quillory</span></p>"
    "<p align=\"center\">Jaggy, quick</p><p align=\"center\"><br/></p>"_s;

const QString longTitle =
    QString(title).replace(u"quick"_s, u"quick, and with far more to say about itself than fits"_s);

void prepare(QLabel &label, const QSize &size)
{
    label.setPalette(QPalette(Qt::white));
    label.setAlignment(Qt::AlignTop);
    label.setFixedSize(size);
    label.setText(title);
}

void setPixelSize(int pixels, const QString &family = {})
{
    QFont font = QApplication::font();
    if (!family.isEmpty())
        font.setFamily(family);
    font.setPixelSize(pixels);
    QApplication::setFont(font);
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

void tst_captionFit::cleanup()
{
    QApplication::setFont(m_font);
}

void tst_captionFit::showsEveryLineOfATitle_data()
{
    QTest::addColumn<QString>("family");
    QTest::addColumn<int>("pixels");
    for (const QString &family : {QApplication::font().family(), u"Open Sans"_s}) {
        for (const int pixels : {12, 16, 17, 20})
            QTest::addRow("%s, %d pixels", qPrintable(family), pixels) << family << pixels;
    }
}

void tst_captionFit::showsEveryLineOfATitle()
{
    QFETCH(const QString, family);
    QFETCH(const int, pixels);
    setPixelSize(pixels, family);
    QLabel label;
    prepare(label, labelSize);
    fitTitle(&label);
    QLabel reference;
    prepare(reference, {labelSize.width(), 300});
    reference.setFont(label.font());
    QVERIFY(ink(reference) > 0);
    QCOMPARE(ink(label), ink(reference));
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
        QSKIP("No font is installed: every letter is a box of the same width");
    setPixelSize(pixels);
    QLabel label;
    prepare(label, labelSize);
    label.setText(longTitle);
    fitTitle(&label);
    QVERIFY(QFontInfo(label.font()).pixelSize() >= 8);
    QLabel reference;
    prepare(reference, {labelSize.width() + 1000, 300});
    reference.setFont(label.font());
    reference.setText(longTitle);
    QVERIFY(ink(reference) > 0);
    QCOMPARE(ink(label), ink(reference));
}

void tst_captionFit::keepsATitleThatFits()
{
    setPixelSize(12);
    QLabel label;
    prepare(label, {labelSize.width(), 300});
    fitTitle(&label);
    QCOMPARE(label.margin(), 0);
}

void tst_captionFit::narrowsARowByTheSameAmount()
{
    QLabel wide(u"A caption that is far too wide"_s);
    QLabel narrow(u"A"_s);
    wide.setFixedWidth(wide.sizeHint().width() * 4 / 5);
    narrow.setFixedWidth(100);
    fitRow({&narrow, &wide});
    QVERIFY(wide.sizeHint().width() <= wide.width());
    QVERIFY(wide.font().stretch() > 70);
    QCOMPARE(narrow.font().stretch(), wide.font().stretch());
}

void tst_captionFit::widensAgainForAShorterText()
{
    QLabel label(u"Total 1234567 duplicates"_s);
    const QFont font = label.font();
    label.setFixedWidth(label.sizeHint().width() / 2);
    fitRow({&label});
    QVERIFY(label.font() != font);
    label.setText(u"Total"_s);
    fitRow({&label});
    QCOMPARE(label.font(), font);
}

void tst_captionFit::reducesTheFontSizeAsALastResort()
{
    QLabel label(u"Total 1234567 duplicates"_s);
    label.setFixedWidth(label.sizeHint().width() * 6 / 10);
    fitRow({&label});
    QVERIFY(label.sizeHint().width() <= label.width());
    label.setFixedWidth(5);
    fitRow({&label});
    QVERIFY(QFontInfo(label.font()).pixelSize() >= 8);
}

QTEST_MAIN(tst_captionFit)
#include "tst_captionFit.moc"
