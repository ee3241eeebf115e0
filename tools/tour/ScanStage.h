#pragma once

#include <QString>

class Camera;
class WindowDriver;

/// Presses Scan and waits for the first rows of the results; on the way takes pictures of the scan page, once
/// while the files are collected and once while they are compared, and of the panel that covers the results
/// page until its rows are there. Returns what went wrong; empty when nothing did.
[[nodiscard]] QString scanAndShoot(WindowDriver &driver, Camera &camera);
