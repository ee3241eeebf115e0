#pragma once

#include <QByteArray>

/// A JPEG of 12 megapixels as a camera takes them, too detailed to be small.
QByteArray makePhoto();
