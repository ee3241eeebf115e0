#pragma once

#include <QByteArray>

/// A JPEG picture of 12 megapixels with noise, so that its size is that of a photo.
QByteArray makePhoto();
