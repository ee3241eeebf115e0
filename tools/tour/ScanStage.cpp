#include "tools/tour/ScanStage.h"

#include "tests/support/PoolGate.h"
#include "tests/support/WindowDriver.h"
#include "tools/tour/Camera.h"

#include <QApplication>
#include <QProgressBar>
#include <QTest>
#include <QTimer>

#include <chrono>
#include <tuple>

using std::chrono_literals::operator""h;
using std::chrono_literals::operator""ms;
using std::chrono_literals::operator""s;

namespace {

constexpr int halfWay = 55; // per cent; from here on, the number in the middle of the bar is white

int asInt(std::chrono::milliseconds time)
{
    return static_cast<int>(time.count());
}

/// Takes pictures in the slots of the progress reports, so that it also works for short scans.
class ProgressPictures : public QObject
{
public:
    ProgressPictures(WindowDriver &driver, Camera &camera)
        : m_driver(driver)
        , m_camera(camera)
    {
        connect(driver.find<QProgressBar>("progressBar"), &QProgressBar::valueChanged, this,
            &ProgressPictures::onProgress);
        connect(driver.find<QStackedWidget>("stackedWidget"), &QStackedWidget::currentChanged, this,
            [this] { QTimer::singleShot(50ms, this, &ProgressPictures::onResultsPage); });
    }

private:
    void onProgress(int percent)
    {
        if (m_driver.page() != u"scanpage")
            return;
        const bool analysing = m_driver.labelText("labelScanStatus").startsWith(u"Analyzing");
        int &last = analysing ? m_lastAnalysing : m_lastScanning;
        const bool reported = analysing || !m_driver.labelText("labelCurrentFile").isEmpty();
        if (!reported || percent == 0 || percent == 100 || last >= halfWay)
            return;
        last = percent;
        m_camera.shoot(
            m_driver.window(), analysing ? QStringLiteral("06-analysing") : QStringLiteral("05-scanning"));
    }

    /// The loading panel is visible for 100 ms.
    void onResultsPage()
    {
        const QWidgetList widgets = QApplication::topLevelWidgets();
        for (const QWidget *widget : widgets) {
            if (widget->isVisible() && widget != &m_driver.window())
                m_camera.shoot(m_driver.window(), QStringLiteral("07-loading"));
        }
    }

    WindowDriver &m_driver;
    Camera &m_camera;
    int m_lastScanning = 0;
    int m_lastAnalysing = 0;
};

} // namespace

QString scanAndShoot(WindowDriver &driver, Camera &camera)
{
    const ProgressPictures pictures(driver, camera);
    // Qt scales the pictures of the scan page on the thread pool when it first paints them: before the gate
    // blocks the pool.
    const auto labels = driver.find("scanpage")->findChildren<QLabel *>();
    for (QLabel *label : labels)
        std::ignore = label->grab();
    {
        // A scan of a small folder would end before the page shows its clock and its dots.
        const PoolGate gate;
        driver.click("btnStartScan");
        const bool animated = QTest::qWaitFor(
            [&driver] { return driver.labelText("labelScanStatus").endsWith(u"..."); }, asInt(20s));
        if (!animated)
            return QStringLiteral("the scan page shows no progress");
        camera.shoot(driver.window(), QStringLiteral("05-scanning"));
    }
    if (!driver.waitForResults(asInt(10h)))
        return QStringLiteral("the scan has brought no results page");
    return {};
}
