#pragma once

#include "analysis/ComparisonRun.h"

#include <vector>

/// Adds the tasks that split each of \a classes into files of equal content and add the groups to \a run.
void sortByContent(ComparisonRun &run, std::vector<Candidates> classes);
