#include "app/MainWindow.h"
#include "app/ScaledWindow.h"
#include "app/ScreenFit.h"
#include "tests/support/PoolGate.h"
#include "tests/support/WindowDriver.h"

#include <QMenu>
#include <QMessageBox>
#include <QScreen>
#include <QTest>
#include <QToolButton>
#include <QWindow>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr QSize windowSize(1025, 723);
constexpr QSize frameSize(16, 40);

} // namespace

/// The window on screens that are too small for it. Qt's offscreen platform has such a screen, of 800x800.
class tst_screenFit : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void shrinksNoMoreThanNecessary_data();
    void shrinksNoMoreThanNecessary();
    void staysPositiveOnATinyScreen();
    void respectsTheUsersScaleFactor();

    void showsTheEntireWindow();
    void looksLikeTheWindow();
    void repaintsWithTheWindow();
    void forwardsClicks();
    void doesNotScaleDialogs();
    void doesNotScaleMenus();
    void centresDialogs();
    void doesNotOwnTheWindow();
    void paintsWhileThePoolIsBusy();
};

void tst_screenFit::cleanup()
{
    qunsetenv("QT_SCALE_FACTOR");
}

void tst_screenFit::shrinksNoMoreThanNecessary_data()
{
    QTest::addColumn<QSize>("available");
    QTest::addColumn<double>("factor");
    QTest::newRow("1366x768, task bar of 40") << QSize(1366, 728) << 688 / 723.0;
    QTest::newRow("1280x720, task bar of 40") << QSize(1280, 680) << 640 / 723.0;
    QTest::newRow("1920x1080 at 150 %, task bar of 40") << QSize(1280, 680) << 640 / 723.0;
    QTest::newRow("3840x2160 at 200 %, task bar of 40") << QSize(1920, 1040) << 1.0;
    QTest::newRow("1920x1080, task bar of 40") << QSize(1920, 1040) << 1.0;
    QTest::newRow("exactly enough") << QSize(1041, 763) << 1.0;
    QTest::newRow("one pixel too low") << QSize(1041, 762) << 722 / 723.0;
    QTest::newRow("one pixel too narrow") << QSize(1040, 763) << 1024 / 1025.0;
    QTest::newRow("800x1280, upright") << QSize(800, 1240) << 784 / 1025.0;
}

void tst_screenFit::shrinksNoMoreThanNecessary()
{
    QFETCH(const QSize, available);
    QFETCH(const double, factor);
    QCOMPARE(screenFitFactor(available, windowSize, frameSize), factor);
}

void tst_screenFit::staysPositiveOnATinyScreen()
{
    for (const QSize &none : {QSize(0, 0), QSize(10, 10), QSize(-1, -1)})
        QVERIFY(screenFitFactor(none, windowSize, frameSize) > 0.1);
}

void tst_screenFit::respectsTheUsersScaleFactor()
{
    qputenv("QT_SCALE_FACTOR", "1");
    MainWindow window;
    QVERIFY(!showOnPrimaryScreen(window));
    QVERIFY(window.isVisible());
    QVERIFY(!window.graphicsProxyWidget());
}

void tst_screenFit::showsTheEntireWindow()
{
    MainWindow window;
    const auto scaled = showOnPrimaryScreen(window);
    const QSize available = QGuiApplication::primaryScreen()->availableSize();
    if (available.width() >= windowSize.width() + frameSize.width())
        QSKIP("The window fits on the screen");
    QVERIFY(scaled);
    QVERIFY(scaled->isVisible());
    QCOMPARE(scaled->width(), available.width() - frameSize.width());
    QCOMPARE(scaled->minimumSize(), scaled->maximumSize());
    QCOMPARE(scaled->windowTitle(), u"Quillory"_s);
    QVERIFY(!scaled->windowIcon().isNull());
    QCOMPARE(window.size(), windowSize);
    // The corners of the window are those of the scaled window.
    const QRectF shown = scaled->mapToScene(scaled->viewport()->rect()).boundingRect();
    QVERIFY(qAbs(shown.left()) < 2 && qAbs(shown.top()) < 2);
    QVERIFY(qAbs(shown.right() - windowSize.width()) < 3 && qAbs(shown.bottom() - windowSize.height()) < 3);
}

void tst_screenFit::looksLikeTheWindow()
{
    WindowDriver driver;
    driver.removeAllFolders();
    const QImage expected = driver.window().grab().toImage().scaled(
        windowSize / 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    ScaledWindow scaled(driver.window(), 0.5);
    scaled.show();
    const QImage shown = scaled.grab().toImage();
    int different = 0;
    for (int y = 0; y < std::min(shown.height(), expected.height()); ++y) {
        for (int x = 0; x < expected.width(); ++x)
            different += qAbs(qGray(shown.pixel(x, y)) - qGray(expected.pixel(x, y))) > 64 ? 1 : 0;
    }
    // Letters are drawn at the smaller size, not scaled.
    QVERIFY2(different < expected.width() * expected.height() / 100, qPrintable(QString::number(different)));
    const QPoint scan = driver.find("btnStartScan")->mapTo(&driver.window(), QPoint(10, 10));
    QVERIFY(shown.pixelColor(scan / 2).blue() - shown.pixelColor(scan / 2).red() > 100);
}

void tst_screenFit::repaintsWithTheWindow()
{
    WindowDriver driver;
    ScaledWindow scaled(driver.window(), 0.5);
    scaled.show();
    QVERIFY(QTest::qWaitForWindowExposed(&scaled));
    const auto onScreen = [&scaled] { return scaled.screen()->grabWindow(scaled.winId()).toImage(); };
    QTRY_VERIFY(!onScreen().isNull());
    const QImage before = onScreen();
    driver.find<QStackedWidget>("stackedWidget")->setCurrentIndex(1);
    QTRY_VERIFY(onScreen() != before);
}

void tst_screenFit::forwardsClicks()
{
    WindowDriver driver;
    ScaledWindow scaled(driver.window(), 0.8);
    scaled.show();
    int clicks = 0;
    auto *const button = driver.find<QPushButton>("btnStartScan");
    button->disconnect(&driver.window());
    QObject::connect(button, &QPushButton::clicked, this, [&clicks] { ++clicks; });
    const QPoint center = button->mapTo(&driver.window(), button->rect().center());
    QTest::mouseClick(scaled.viewport(), Qt::LeftButton, {}, scaled.mapFromScene(center));
    QCOMPARE(clicks, 1);
    QCOMPARE(scaled.mapFromScene(center), (QPointF(center) * 0.8).toPoint());
}

void tst_screenFit::doesNotScaleDialogs()
{
    WindowDriver driver;
    ScaledWindow scaled(driver.window(), 0.8);
    scaled.show();
    int shown = 0;

    driver.chooseOptions([&](QWidget *dialog) {
        QVERIFY(!dialog->graphicsProxyWidget());
        QCOMPARE(dialog->size(), QSize(793, 490));
        QCOMPARE(dialog->windowHandle()->transientParent(), scaled.windowHandle());
        ++shown;
    });

    QCOMPARE(shown, 1);
}

void tst_screenFit::doesNotScaleMenus()
{
    WindowDriver driver;
    ScaledWindow scaled(driver.window(), 0.8);
    scaled.show();
    auto *const button = driver.find<QToolButton>("btnMenu");
    button->menu()->popup(button->mapToGlobal(QPoint()));
    QVERIFY(button->menu()->isVisible());
    QVERIFY(!button->menu()->graphicsProxyWidget());
    button->menu()->close();
}

void tst_screenFit::centresDialogs()
{
    MainWindow window;
    ScaledWindow scaled(window, 0.5);
    scaled.move(120, 80);
    scaled.show();
    QWidget panel(&window, Qt::Dialog | Qt::FramelessWindowHint);
    panel.setFixedSize(300, 100);
    panel.show();
    const QPoint distance = panel.geometry().center() - scaled.geometry().center();
    QVERIFY2(distance.manhattanLength() <= 2, qPrintable(QString::number(distance.manhattanLength())));
}

void tst_screenFit::doesNotOwnTheWindow()
{
    auto window = std::make_unique<MainWindow>();
    std::make_unique<ScaledWindow>(*window, 0.5)->show();
    QVERIFY(!window->graphicsProxyWidget());
    QCOMPARE(window->size(), windowSize);
}

void tst_screenFit::paintsWhileThePoolIsBusy()
{
    WindowDriver driver;
    ScaledWindow scaled(driver.window(), 0.8);
    scaled.show();
    const PoolGate gate;
    driver.find<QStackedWidget>("stackedWidget")->setCurrentIndex(1);
    const QImage shown = scaled.grab().toImage();
    QVERIFY(!gate.timedOut()); // it does if the window waits for the pool
    QCOMPARE(shown.size(), (QSizeF(windowSize) * 0.8).toSize());
}

QTEST_MAIN(tst_screenFit)
#include "tst_screenFit.moc"
