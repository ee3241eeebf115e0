#pragma once

#include "analysis/ComparisonRun.h"

/// Adds the tasks that split \a candidates, too many to be compared at once, by a hash of their heads or of
/// all their bytes. What agrees is compared then: no hash is trusted.
void splitByHash(ComparisonRun &run, Candidates candidates, Candidates::Hash hash);
