#include "tests/support/LoadingPanelEvents.h"
#include "tests/support/ScannedFolder.h"
#include "tests/support/TextContrast.h"

#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QMenu>
#include <QProgressBar>
#include <QTest>
#include <QToolButton>
#include <QToolTip>

#include <algorithm>
#include <array>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr double readable = 4.5; // WCAG 2.1, level AA
constexpr double readableWhenDisabled = 3;

struct RequiredColors
{
    const char *text;
    const char *background;
    double contrast;
};

/// Required colours of the style sheets with too little contrast.
constexpr std::array requiredColors{
    RequiredColors{"#2d85ff", "#ffffff", 3.55}, // buttons with an outline
    RequiredColors{"#7a8faa", "#ffffff", 3.31}, // category buttons
    RequiredColors{"#2a82ff", "#d2e8ff", 2.92}, // the selected category
    RequiredColors{"#ffffff", "#eaf0f6", 1.15}, // figure on the empty part of the progress bar
    RequiredColors{"#1769ff", "#f7faff", 4.46}, // Add
    RequiredColors{"#376cff", "#f3f7ff", 4.12}, // loading panel
    RequiredColors{"#aaaaaa", "#ffffff", 2.32}, // the row that reports no duplicates
};

/// Buttons with white text on a gradient.
constexpr std::array gradientButtons{"btnStartScan", "btnRemoveSelected"};
constexpr QRgb lightestOfGradient = 0xff409eff; // 2.77:1

double requiredContrast(const ShownText &text)
{
    const auto *const required = std::ranges::find_if(requiredColors, [&text](const RequiredColors &colors) {
        return text.color == QColor(colors.text) && text.background == QColor(colors.background);
    });
    if (required != requiredColors.end())
        return required->contrast - 0.01;
    if (text.color == Qt::white && std::ranges::any_of(gradientButtons, [&text](const char *name) {
            return text.name == QLatin1StringView(name);
        }))
        return contrastRatio(Qt::white, QColor(lightestOfGradient));
    return text.enabled ? readable : readableWhenDisabled;
}

} // namespace

/// Every text is readable on a desktop with dark colours.
class tst_darkDesktop : public QObject, private ScannedFolder
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void showsTheStartPage();
    void showsTheScanPage();
    void showsTheLoadingPanel();
    void showsTheResults();
    void showsThatNothingWasFound();
    void showsTheScanOptions();
    void showsDisabledOptions();
    void showsMessageBoxes();
    void showsTheMenu();
    void showsToolTips();
    void showsTheFolderDialog();

private:
    void verifyTexts(QWidget &window, int expected);
};

void tst_darkDesktop::init()
{
    m_driver.reset();
    const QPalette dark(QColor(0x31, 0x36, 0x3b));
    QApplication::setPalette(dark);
    QToolTip::setPalette(dark);
    reset();
}

void tst_darkDesktop::cleanup()
{
    QToolTip::hideText();
}

/// Verifies that \a window shows at least \a expected texts, all of them readable.
void tst_darkDesktop::verifyTexts(QWidget &window, int expected)
{
    const QList<ShownText> texts = shownTexts(window);
    for (const ShownText &text : texts) {
        const QString measured = u"%1: %2 on %3, %4:1"_s.arg(
            text.name, text.color.name(), text.background.name(), QString::number(text.contrast));
        QVERIFY2(text.contrast >= requiredContrast(text), qPrintable(measured));
    }
    QVERIFY2(texts.size() >= expected, qPrintable(QString::number(texts.size())));
}

void tst_darkDesktop::showsTheStartPage()
{
    m_driver->addFolder(m_folder->path());
    verifyTexts(m_driver->window(), 5);
}

void tst_darkDesktop::showsTheScanPage()
{
    m_driver->find<QStackedWidget>("stackedWidget")->setCurrentIndex(1);
    m_driver->find<QProgressBar>("progressBar")->setValue(0);
    verifyTexts(m_driver->window(), 10);
}

void tst_darkDesktop::showsTheLoadingPanel()
{
    int shown = 0;
    LoadingPanelEvents events(&m_driver->window());
    events.onShown = [&](QWidget *panel) {
        verifyTexts(*panel, 1);
        ++shown;
    };
    write({u"a.txt"_s, u"b.txt"_s}, "the same");
    QVERIFY(scan());
    QCOMPARE(shown, 1);
}

void tst_darkDesktop::showsTheResults()
{
    write({u"a.txt"_s, u"b.txt"_s}, "the same");
    write({u"c.txt"_s, u"d.txt"_s}, "and the same");
    QVERIFY(scan());
    m_driver->tree()->expandAll();
    verifyTexts(m_driver->window(), 18);
}

void tst_darkDesktop::showsThatNothingWasFound()
{
    QVERIFY(scan());
    verifyTexts(m_driver->window(), 12);
}

void tst_darkDesktop::showsTheScanOptions()
{
    m_driver->chooseOptions([this](QWidget *dialog) { verifyTexts(*dialog, 20); });
}

void tst_darkDesktop::showsDisabledOptions()
{
    m_driver->chooseOptions([this](QWidget *dialog) {
        const auto children = dialog->findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
        for (QWidget *child : children)
            child->setEnabled(false);
        verifyTexts(*dialog, 20);
        for (QWidget *child : children)
            child->setEnabled(true);
    });
}

void tst_darkDesktop::showsMessageBoxes()
{
    auto *const menu = m_driver->find<QToolButton>("btnMenu")->menu();
    withModalDialogs([menu] { menu->actions().constFirst()->trigger(); },
        [this](QWidget *box) {
            verifyTexts(*box, 2);
            box->close();
        });
}

void tst_darkDesktop::showsTheMenu()
{
    auto *const menu = m_driver->find<QToolButton>("btnMenu")->menu();
    menu->actions().at(1)->setEnabled(false);
    menu->popup(QPoint());
    menu->setActiveAction(menu->actions().constFirst());
    verifyTexts(*menu, 3);
    menu->close();
}

void tst_darkDesktop::showsToolTips()
{
    m_driver->setFolders({m_folder->path()});
    auto *const list = m_driver->find<QListWidget>("listScanFolders");
    int shown = 0;
    for (QWidget *widget : {m_driver->tree()->viewport(), list->itemWidget(list->item(0))}) {
        QToolTip::showText(QPoint(100, 100), widget->objectName() + u"/home/anna/Pictures"_s, widget);
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget *window : windows) {
            if (window->inherits("QTipLabel") && window->isVisible()) {
                verifyTexts(*window, 1);
                ++shown;
            }
        }
    }
    QCOMPARE(shown, 2);
}

void tst_darkDesktop::showsTheFolderDialog()
{
    withModalDialogs([this] { m_driver->click("btnAddFolder"); },
        [this](QWidget *dialog) {
            verifyTexts(*dialog, 7);
            dialog->close();
        });
}

QTEST_MAIN(tst_darkDesktop)
#include "tst_darkDesktop.moc"
