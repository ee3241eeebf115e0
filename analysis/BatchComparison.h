#pragma once

#include "analysis/ComparisonRun.h"

/// Adds the tasks that compare \a candidates in batches, each with as many sets as one task can compare. The
/// last task merges equal sets and sorts the remaining sets again with sortByContent().
void compareInBatches(ComparisonRun &run, Candidates candidates);
