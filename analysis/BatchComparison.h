#pragma once

#include "analysis/ComparisonRun.h"

/// Adds the tasks that compare \a candidates in batches of as many sets as a task can compare at once. Then
/// those that are equal are one set, and the sets that are left are sorted again.
void compareInBatches(ComparisonRun &run, Candidates candidates);
