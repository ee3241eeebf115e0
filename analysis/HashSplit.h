#pragma once

#include "analysis/ComparisonRun.h"

/// Adds the tasks that split \a candidates by \a hash, for sets that are too many to compare at once. Sets
/// with equal hashes are then compared byte by byte.
void splitByHash(ComparisonRun &run, Candidates candidates, Candidates::Hash hash);
