#include "app/ScreenFit.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace {

/// Borders and title bar of the largest common frame. The actual frame is unknown before the window is shown.
constexpr QSize frameSize(16, 40);
constexpr double minFactor = 0.25; // the window stays visible on a tiny screen

} // namespace

double screenFitFactor(const QSize &available, const QSize &window, const QSize &frame)
{
    const QSizeF room = available - frame;
    return std::clamp(
        std::min(room.width() / window.width(), room.height() / window.height()), minFactor, 1.0);
}

double primaryScreenFitFactor(const QSize &window)
{
    const QScreen *const screen = QGuiApplication::primaryScreen();
    if (!screen || !qEnvironmentVariableIsEmpty("QT_SCALE_FACTOR"))
        return 1;
    return screenFitFactor(screen->availableSize(), window, frameSize);
}
