#pragma once

#include <QString>

class Camera;
class WindowDriver;

/// Presses Scan and waits for the first rows of the results. Takes pictures of the scan page during
/// collection and analysis, and of the loading panel. Returns an error message, or an empty string on
/// success.
[[nodiscard]] QString scanAndShoot(WindowDriver &driver, Camera &camera);
