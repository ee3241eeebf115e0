#pragma once

#include "analysis/ComparisonRun.h"

#include <span>
#include <vector>

/// Bytes of a head. Nine of ten files that share their size are no longer, and a disk needs hardly more time
/// for it than for less.
inline constexpr qint64 headSize = 16LL * 1024;

/// Bytes of heads that a task keeps in memory.
inline constexpr qint64 headMemory = 8LL * 1024 * 1024;

/// Bytes that the heads of some candidates take.
[[nodiscard]] qint64 headBytes(const Candidates &candidates);

/// The head of the first file of a set, or nothing of one that could not be read.
using Head = std::span<const char>;

/// Heads of files in memory.
struct Heads
{
    std::vector<char> memory;
    /// For each candidates that were asked for, those of its sets.
    std::vector<std::vector<Head>> heads;
};

/// Reads the heads of all sets, in the order in which the disk is likely to have them. Reports files that
/// cannot be read.
[[nodiscard]] Heads readHeads(ComparisonRun &run, std::span<const Candidates> classes);

/// Compares the heads of the sets of each of \a classes among each other and counts the files that are
/// dealt with: those that differ, or that are no longer than a head.
[[nodiscard]] std::vector<ContentLabels> compareHeads(
    ComparisonRun &run, std::span<const Candidates> classes);
