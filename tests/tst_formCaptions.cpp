#include "tests/support/DuplicateFiles.h"
#include "tests/support/OptionsDialog.h"
#include "tests/support/WindowDriver.h"

#include <QApplication>
#include <QComboBox>
#include <QFontDatabase>
#include <QStyleOptionComboBox>
#include <QTemporaryDir>
#include <QTest>

#include <array>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr std::array fontSizes{9, 10, 11, 13}; // points; KDE uses 10, GNOME 11

void addFontSizes()
{
    QTest::addColumn<int>("points");
    for (const int points : fontSizes)
        QTest::addRow("%d points", points) << points;
}

void setFontSize(int points)
{
    QFont font = QApplication::font();
    font.setPointSize(points);
    QApplication::setFont(font);
}

/// Checks that the row's captions fit their widgets and have the same font stretch.
void verifyCaptionsFit(const QWidget &form, const QList<const char *> &names)
{
    const int stretch = child<QWidget>(&form, names.constFirst())->font().stretch();
    for (const char *name : names) {
        const auto *const caption = child<QWidget>(&form, name);
        QVERIFY2(caption->sizeHint().width() <= caption->width(), name);
        QCOMPARE(caption->font().stretch(), stretch);
    }
}

int widthOf(const QAbstractButton &button)
{
    return QFontMetrics(button.font()).horizontalAdvance(button.text());
}

void verifyItemsFit(const QComboBox &box)
{
    QStyleOptionComboBox option;
    option.initFrom(&box);
    option.editable = false;
    const QRect textArea =
        box.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &box);
    for (int i = 0; i < box.count(); ++i)
        QVERIFY(QFontMetrics(box.font()).horizontalAdvance(box.itemText(i)) <= textArea.width());
}

} // namespace

/// The captions of both forms at the font sizes of common desktops.
class tst_formCaptions : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void fitsTheCaptionsOfTheWindow_data();
    void fitsTheCaptionsOfTheWindow();
    void fitsTheCaptionsOfTheDialog_data();
    void fitsTheCaptionsOfTheDialog();
    void fitsTheTotals();
    void keepsCategoryButtonsApart();
    void fallsBackToAFontOfTheSameWidth();

private:
    const QFont m_font = QApplication::font();
};

void tst_formCaptions::cleanup()
{
    QApplication::setFont(m_font);
}

void tst_formCaptions::fitsTheCaptionsOfTheWindow_data()
{
    addFontSizes();
}

void tst_formCaptions::fitsTheCaptionsOfTheWindow()
{
    QFETCH(const int, points);
    setFontSize(points);
    WindowDriver driver;
    verifyCaptionsFit(driver.window(), {"labelFilesScanned", "labelDuplicatesFound", "labelElapsedTime"});
    verifyCaptionsFit(driver.window(), {"label"});
}

void tst_formCaptions::fitsTheCaptionsOfTheDialog_data()
{
    addFontSizes();
}

void tst_formCaptions::fitsTheCaptionsOfTheDialog()
{
    QFETCH(const int, points);
    setFontSize(points);
    WindowDriver driver;

    driver.chooseOptions([](QWidget *dialog) {
        verifyCaptionsFit(*dialog, {typeBoxes.cbegin(), typeBoxes.cend()});
        verifyCaptionsFit(*dialog, {skipBoxes.cbegin(), skipBoxes.cend()});
        verifyCaptionsFit(*dialog, {"label"});
        verifyCaptionsFit(*dialog, {"label_3", "label_4"});
        verifyCaptionsFit(*dialog, {"label_5"});
        for (const char *name : {"comboMinUnit", "comboMaxUnit"})
            verifyItemsFit(*child<QComboBox>(dialog, name));
    });
}

void tst_formCaptions::fitsTheTotals()
{
    setFontSize(11);
    QTemporaryDir folder;
    writePairs(folder.path(), 12, u"txt"_s);
    WindowDriver driver;
    driver.setFolders({folder.path()});
    QVERIFY(driver.scan());
    verifyCaptionsFit(driver.window(), {"labelStatsInfo"});
}

// The buttons start 90 pixels apart, 15 of which are padding.
void tst_formCaptions::keepsCategoryButtonsApart()
{
    WindowDriver driver;
    driver.find<QStackedWidget>("stackedWidget")->setCurrentIndex(2);
    const int stretch = driver.find<QPushButton>("btnAll")->font().stretch();
    for (const char *name :
        {"btnAll", "btnPictures", "btnVideos", "btnAudios", "btnDocuments", "btnArchives", "btnOthers"}) {
        driver.click(name);
        const auto *const button = driver.find<QPushButton>(name);
        QCOMPARE(button->font().weight(), QFont::DemiBold);
        QVERIFY2(widthOf(*button) <= 75, name);
        QCOMPARE(button->font().stretch(), stretch);
    }
    QVERIFY(widthOf(*driver.find<QPushButton>("btnDocuments")) > 60); // not narrower than necessary
}

void tst_formCaptions::fallsBackToAFontOfTheSameWidth()
{
    if (QFontDatabase::hasFamily(u"Segoe UI"_s) || !QFontDatabase::hasFamily(u"Open Sans"_s))
        QSKIP("The fallback font is not needed or not installed");
    WindowDriver driver;
    QCOMPARE(QFontInfo(driver.find("btnAll")->font()).family(), u"Open Sans"_s);
}

QTEST_MAIN(tst_formCaptions)
#include "tst_formCaptions.moc"
