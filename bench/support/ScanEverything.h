#pragma once

#include "scan/ScanOptions.h"

/// Settings that collect every file that is not hidden.
ScanOptions scanEverything();
