#pragma once

#include "scan/ScanOptions.h"

/// Options that collect all files but hidden ones.
ScanOptions scanEverything();
