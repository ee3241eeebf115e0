#pragma once

#include <QSize>

/// Returns the factor, from 0.25 to 1, that scales \a window to fit into \a available together with its
/// \a frame.
///
/// \a available is the screen without its task bars. \a frame is drawn by the desktop and is not scaled. All
/// sizes are in device-independent pixels.
[[nodiscard]] double screenFitFactor(const QSize &available, const QSize &window, const QSize &frame);

/// Returns the factor for a window of size \a window on the primary screen; 1 if QT_SCALE_FACTOR is set.
[[nodiscard]] double primaryScreenFitFactor(const QSize &window);
