#pragma once

#include <QtGlobal>

#include <vector>

/// Files that are known to be equal. The first one is read for all of them.
struct EqualFiles
{
    std::vector<quint32> files;
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

class ComparisonRun;

/// Splits \a candidates by their \a labels, in the order of their first sets. Sets that could not be read are
/// left out: what else is in them becomes a group of its own.
[[nodiscard]] std::vector<Candidates> splitByLabel(
    ComparisonRun &run, Candidates candidates, const ContentLabels &labels);

/// Makes one set of all sets.
[[nodiscard]] EqualFiles mergedSets(const Candidates &candidates);
