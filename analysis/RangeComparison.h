#pragma once

#include "analysis/ComparisonRun.h"

/// Adds the tasks that compare \a candidates in step, several of them at once for large files, and add the
/// groups to \a run. No more sets than a task may hold files open.
void compareRanges(ComparisonRun &run, Candidates candidates);
