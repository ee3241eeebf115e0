#include "analysis/Candidates.h"

#include "analysis/ComparisonRun.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace {

std::size_t numberOfLabels(const ContentLabels &labels)
{
    const auto highest = std::ranges::max_element(labels);
    return highest == labels.end() ? 0 : static_cast<std::size_t>(*highest + 1);
}

/// Adds the other files of a set whose first file could not be read.
void addOthers(ComparisonRun &run, EqualFiles set)
{
    if (set.others.empty())
        return;
    set.first = set.others.back();
    set.others.pop_back();
    run.addGroup(std::move(set));
}

} // namespace

LoneSets::LoneSets(const ContentLabels &labels)
    : m_labels(labels)
    , m_counts(numberOfLabels(labels))
{
    for (const int label : labels) {
        if (label != unreadableLabel)
            ++m_counts[static_cast<std::size_t>(label)];
    }
}

bool LoneSets::contains(std::size_t set) const
{
    const int label = m_labels[set];
    return label == unreadableLabel || m_counts[static_cast<std::size_t>(label)] == 1;
}

std::vector<Candidates> splitByLabel(
    ComparisonRun &run, Candidates candidates, const ContentLabels &labels, LoneCandidates lone)
{
    const LoneSets loneSets(labels);
    std::vector<Candidates> parts;
    constexpr quint32 noPart = std::numeric_limits<quint32>::max();
    std::vector<quint32> partOfLabel(numberOfLabels(labels), noPart);
    for (std::size_t i = 0; i < labels.size(); ++i) {
        EqualFiles &set = candidates.sets[i];
        if (labels[i] == unreadableLabel) {
            addOthers(run, std::move(set));
        } else if (lone == LoneCandidates::LeftOut && loneSets.contains(i)) {
            run.addGroup(std::move(set));
        } else {
            quint32 &part = partOfLabel[static_cast<std::size_t>(labels[i])];
            if (part == noPart) {
                part = static_cast<quint32>(parts.size());
                parts.push_back({{}, candidates.size, candidates.equalBytes, candidates.equalHash});
            }
            parts[part].sets.push_back(std::move(set));
        }
    }
    return parts;
}

EqualFiles mergedSets(const Candidates &candidates)
{
    EqualFiles all = candidates.sets.front();
    for (std::size_t i = 1; i < candidates.sets.size(); ++i) {
        const EqualFiles &set = candidates.sets[i];
        all.others.push_back(set.first);
        all.others.insert(all.others.end(), set.others.begin(), set.others.end());
        all.isCounted = all.isCounted || set.isCounted;
    }
    return all;
}
