#pragma once

#include <QtGlobal>

#include <vector>

/// Indexes of files that are known to be equal. Only the first one is read.
struct EqualFiles
{
    quint32 first = 0;
    std::vector<quint32> others = {};
    /// Whether the first file was already read to its end, so that the progress includes its bytes.
    bool isCounted = false;
};

/// Files of equal size that may be equal.
struct Candidates
{
    /// Which hash all files are known to share.
    enum class Hash {
        None,
        Head,    ///< of the first headSize bytes
        Content, ///< cryptographic, of all bytes
    };

    std::vector<EqualFiles> sets;
    /// Size of each file in bytes.
    qint64 size = 0;
    /// Number of bytes from the start that were compared and are equal.
    qint64 equalBytes = 0;
    Hash equalHash = Hash::None;
};

/// One label for each set of some candidates. Sets with equal labels are equal as far as they were compared;
/// sets with different labels differ.
using ContentLabels = std::vector<int>;
/// The label of a set whose first file could not be read.
inline constexpr int unreadableLabel = -1;

/// The sets that could not be read or that share their label with no other set.
class LoneSets
{
public:
    explicit LoneSets(const ContentLabels &labels);

    [[nodiscard]] bool contains(std::size_t set) const;

private:
    const ContentLabels &m_labels;
    /// Number of sets with each label.
    std::vector<int> m_counts;
};

class ComparisonRun;

/// Whether splitByLabel() returns lone sets as candidates or leaves them out.
enum class LoneCandidates { Kept, LeftOut };

/// Splits \a candidates by \a labels, in the order of the first set with each label. Lone sets that are left
/// out become groups of \a run. Sets that could not be read are always left out; their other files become
/// groups.
[[nodiscard]] std::vector<Candidates> splitByLabel(ComparisonRun &run, Candidates candidates,
    const ContentLabels &labels, LoneCandidates lone = LoneCandidates::LeftOut);

/// One set with the files of all sets of \a candidates.
[[nodiscard]] EqualFiles mergedSets(const Candidates &candidates);
