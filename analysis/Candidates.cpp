#include "analysis/Candidates.h"

#include "analysis/ComparisonRun.h"

#include <map>
#include <utility>

std::vector<Candidates> splitByLabel(ComparisonRun &run, Candidates candidates, const ContentLabels &labels)
{
    std::vector<Candidates> parts;
    std::map<int, std::size_t> partOfLabel;
    for (std::size_t i = 0; i < labels.size(); ++i) {
        EqualFiles &set = candidates.sets[i];
        if (labels[i] == unreadableLabel) {
            set.files.erase(set.files.begin());
            run.addGroup(std::move(set));
            continue;
        }
        const auto [part, isNew] = partOfLabel.try_emplace(labels[i], parts.size());
        if (isNew)
            parts.push_back({{}, candidates.size, candidates.equalBytes, candidates.equalHash});
        parts[part->second].sets.push_back(std::move(set));
    }
    return parts;
}

EqualFiles mergedSets(const Candidates &candidates)
{
    EqualFiles all;
    for (const EqualFiles &set : candidates.sets) {
        all.files.insert(all.files.end(), set.files.begin(), set.files.end());
        all.isCounted = all.isCounted || set.isCounted;
    }
    return all;
}
