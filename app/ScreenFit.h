#pragma once

#include <QSize>

/// How much smaller a window has to become to fit on a screen together with its frame: more than 0, at
/// most 1.
///
/// \a available is the room that task bars leave; \a window shrinks with the factor, \a frame, which the
/// desktop draws around it, does not. All three in device-independent pixels of the screen.
[[nodiscard]] double screenFitFactor(const QSize &available, const QSize &window, const QSize &frame);

/// The factor for a window of size \a window on the primary screen. 1 where the user has set QT_SCALE_FACTOR.
[[nodiscard]] double primaryScreenFitFactor(const QSize &window);
