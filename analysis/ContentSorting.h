#pragma once

#include "analysis/ComparisonRun.h"

#include <vector>

/// Adds the tasks that sort the files of each of \a classes by content and add their groups to \a run.
void sortByContent(ComparisonRun &run, std::vector<Candidates> classes);
