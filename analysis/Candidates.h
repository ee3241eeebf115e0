#pragma once

#include <QtGlobal>

#include <vector>

/// Files that are known to be equal, by their indexes. The first one is read for all of them.
struct EqualFiles
{
    quint32 first = 0;
    std::vector<quint32> others = {};
    /// Whether the progress contains its bytes: the first file was read to its end before.
    bool isCounted = false;
};

/// Files of equal size that may be equal.
struct Candidates
{
    /// What their contents have in common, beside their beginnings.
    enum class Hash {
        None,    ///< nothing is known
        Head,    ///< the hash of their heads
        Content, ///< a cryptographic hash of all bytes
    };

    std::vector<EqualFiles> sets;
    /// Bytes of each file.
    qint64 size = 0;
    /// So many bytes from the beginning were compared and are equal.
    qint64 equalBytes = 0;
    Hash equalHash = Hash::None;
};

/// For each set of some candidates, a number that it shares with those sets that have the same content.
using ContentLabels = std::vector<int>;
/// The label of a set whose first file could not be read.
inline constexpr int unreadableLabel = -1;

/// Sets that could not be read, or whose label no other set has.
class LoneSets
{
public:
    explicit LoneSets(const ContentLabels &labels);

    [[nodiscard]] bool contains(std::size_t set) const;

private:
    const ContentLabels &m_labels;
    /// How many sets have each label.
    std::vector<int> m_counts;
};

class ComparisonRun;

/// Whether lone sets that were read are candidates of their own after a split, or dealt with.
enum class LoneCandidates { Kept, LeftOut };

/// Splits \a candidates by their \a labels, in the order of their first sets. A set that is dealt with is
/// left out. So is one that could not be read: what else is in it becomes a group.
[[nodiscard]] std::vector<Candidates> splitByLabel(ComparisonRun &run, Candidates candidates,
    const ContentLabels &labels, LoneCandidates lone = LoneCandidates::LeftOut);

/// Makes one set of all sets.
[[nodiscard]] EqualFiles mergedSets(const Candidates &candidates);
