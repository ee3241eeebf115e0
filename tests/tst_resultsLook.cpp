#include "tests/support/DuplicateFiles.h"
#include "tests/support/ScannedFolder.h"

#include <QApplication>
#include <QHoverEvent>
#include <QTest>

#include <algorithm>
#include <array>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr QRgb selectedCategory = qRgb(0xd2, 0xe8, 0xff);
constexpr QRgb hoveredRow = qRgb(0xea, 0xf4, 0xfb);

/// Bounding rectangle of the pixels that differ.
QRect differences(const QImage &first, const QImage &second)
{
    QRect area;
    for (int y = 0; y < first.height(); ++y) {
        for (int x = 0; x < first.width(); ++x) {
            if (first.pixel(x, y) != second.pixel(x, y))
                area |= QRect(x, y, 1, 1);
        }
    }
    return area;
}

/// The darkest grey in \a area, from 0 to 255.
int darkest(const QImage &picture, const QRect &area)
{
    int value = 255;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x)
            value = std::min(value, qGray(picture.pixel(x, y)));
    }
    return value;
}

} // namespace

/// How the results page is painted, checked by pixels that do not depend on fonts.
class tst_resultsLook : public QObject, private ScannedFolder
{
    Q_OBJECT

private slots:
    void init();

    void highlightsTheAllCategoryAtStartup();
    void paintsThePlaceholderInGrey();
    void paintsThePlaceholderInTheMiddle();
    void paintsCheckBoxesWhiteWithAnOutline_data();
    void paintsCheckBoxesWhiteWithAnOutline();
    void tintsTheHoveredRow();

private:
    /// The viewport of the tree, painted as a part of the window.
    [[nodiscard]] QImage treePicture() const;
    void showPlaceholder();
};

void tst_resultsLook::init()
{
    reset();
    writePairs(m_folder->path(), 3, u"txt"_s);
}

QImage tst_resultsLook::treePicture() const
{
    const QWidget *const viewport = m_driver->tree()->viewport();
    const QRect area(viewport->mapTo(&m_driver->window(), QPoint()), viewport->size());
    return m_driver->window().grab(area).toImage();
}

void tst_resultsLook::showPlaceholder()
{
    QVERIFY(scan());
    m_driver->click("btnVideos");
    QCOMPARE(m_driver->groupTitles(), QStringList(u"No duplicate files"_s));
}

void tst_resultsLook::highlightsTheAllCategoryAtStartup()
{
    m_driver->find<QStackedWidget>("stackedWidget")->setCurrentWidget(m_driver->find("duplicatespage"));
    for (const char *name :
        {"btnAll", "btnPictures", "btnVideos", "btnAudios", "btnDocuments", "btnArchives", "btnOthers"}) {
        auto *const button = m_driver->find(name);
        // Below the text.
        const QPoint spot(40, button->height() - 5);
        const QRgb background =
            m_driver->window().grab().toImage().pixel(button->mapTo(&m_driver->window(), spot));
        QCOMPARE(background == selectedCategory, qstrcmp(name, "btnAll") == 0);
    }
}

void tst_resultsLook::paintsThePlaceholderInGrey()
{
    showPlaceholder();
    const QRect row = m_driver->tree()->visualItemRect(group(0));
    const int text = darkest(treePicture(), row);
    QVERIFY2(text < 250, "The text is not visible");
    // Smoothed edges are lighter than the text colour, never darker.
    QVERIFY2(text >= 0xaa, qPrintable(u"%1 is darker than #aaa"_s.arg(text)));
}

void tst_resultsLook::paintsThePlaceholderInTheMiddle()
{
    showPlaceholder();
    const QRect row = m_driver->tree()->visualItemRect(group(0));
    // Without the frame around the tree.
    const QImage picture = treePicture().copy(row.adjusted(4, 4, -4, -4));
    QImage empty(picture.size(), picture.format());
    empty.fill(picture.pixel(2, 2));
    const QRect text = differences(picture, empty);
    QVERIFY(!text.isEmpty());
    const int right = picture.width() - 1 - text.right();
    QVERIFY2(std::abs(text.left() - right) <= 30,
        qPrintable(u"%1 pixels to the left, %2 to the right"_s.arg(text.left()).arg(right)));
}

void tst_resultsLook::paintsCheckBoxesWhiteWithAnOutline_data()
{
    QTest::addColumn<int>("row");
    // The backgrounds of the rows alternate.
    QTest::newRow("even row") << 0;
    QTest::newRow("odd row") << 1;
}

void tst_resultsLook::paintsCheckBoxesWhiteWithAnOutline()
{
    QFETCH(const int, row);
    QVERIFY(scan());
    group(row)->setCheckState(0, Qt::Checked);
    const QImage checked = treePicture();
    group(row)->setCheckState(0, Qt::Unchecked);
    const QImage unchecked = treePicture();
    // Only the check mark differs, so this area is inside the box.
    const QRect mark = differences(checked, unchecked);

    QVERIFY(!mark.isEmpty());
    QCOMPARE(darkest(unchecked, mark), 255);
    // The outline is to the left of the check mark and above it.
    const int outline = darkest(unchecked, mark.adjusted(-4, -4, 0, 0));
    QVERIFY2(outline < 200, qPrintable(u"an outline of grey %1 is hardly visible"_s.arg(outline)));
}

void tst_resultsLook::tintsTheHoveredRow()
{
    QVERIFY(scan());
    const QRect row = m_driver->tree()->visualItemRect(group(1));
    const QPoint corner(row.right() - 3, row.top() + 3);

    QVERIFY(treePicture().pixel(corner) != hoveredRow);
    QHoverEvent hover(QEvent::HoverMove, row.center(), row.center(), QPointF());
    QApplication::sendEvent(m_driver->tree()->viewport(), &hover);
    QCOMPARE(QColor(treePicture().pixel(corner)).name(), u"#eaf4fb"_s);
    const QRect other = m_driver->tree()->visualItemRect(group(0));
    QVERIFY(treePicture().pixel(other.right() - 3, other.top() + 3) != hoveredRow);
}

QTEST_MAIN(tst_resultsLook)
#include "tst_resultsLook.moc"
