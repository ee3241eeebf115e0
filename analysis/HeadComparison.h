#pragma once

#include "analysis/ComparisonRun.h"

#include <span>
#include <vector>

/// Maximum size of a head, the first bytes of a file. Nine of ten files that share their size are no larger,
/// and a disk needs hardly more time for a head than for a single block.
inline constexpr qint64 headSize = 16LL * 1024;

/// Limit for the bytes of heads that a task keeps in memory. More per task lets the disk reorder more reads.
inline constexpr qint64 headMemory = 8LL * 1024 * 1024;

/// Total size in bytes of the heads of \a candidates.
[[nodiscard]] qint64 headBytes(const Candidates &candidates);

/// The head of the first file of a set; empty if it could not be read.
using Head = std::span<const char>;

/// The heads of several size classes.
struct Heads
{
    /// Owns the bytes of all heads.
    std::vector<char> memory;
    /// For each size class, one head for each of its sets.
    std::vector<std::vector<Head>> heads;
};

/// Reads the heads of all sets, in the order in which they probably are on the disk. Reports unreadable files
/// to \a run.
[[nodiscard]] Heads readHeads(ComparisonRun &run, std::span<const Candidates> classes);

/// Reads and compares the heads of the sets of each of \a classes. Returns the labels of each class. Adds the
/// progress: whole files for those that differ, heads for the others.
[[nodiscard]] std::vector<ContentLabels> compareHeads(
    ComparisonRun &run, std::span<const Candidates> classes);
