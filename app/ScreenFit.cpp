#include "app/ScreenFit.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace {

/// Title bar and borders of the widest usual frame. The true ones are known only once the window is shown.
constexpr QSize frameSize(16, 40);
constexpr double smallestFactor = 0.25; // keeps a screen without room from making the program vanish

} // namespace

double screenFitFactor(const QSize &available, const QSize &window, const QSize &frame)
{
    const QSizeF room = available - frame;
    return std::clamp(
        std::min(room.width() / window.width(), room.height() / window.height()), smallestFactor, 1.0);
}

double primaryScreenFitFactor(const QSize &window)
{
    const QScreen *const screen = QGuiApplication::primaryScreen();
    if (!screen || !qEnvironmentVariableIsEmpty("QT_SCALE_FACTOR"))
        return 1;
    return screenFitFactor(screen->availableSize(), window, frameSize);
}
