#pragma once

#include "analysis/ComparisonRun.h"

/// Adds the tasks that compare \a candidates byte by byte and add the groups to \a run. Large files are split
/// into ranges that several tasks compare. \a candidates must not have more sets than
/// ComparisonRun::openFilesPerTask().
void compareRanges(ComparisonRun &run, Candidates candidates);
