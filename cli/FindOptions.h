#pragma once

#include "analysis/ContentGroups.h"
#include "cli/CommandLine.h"
#include "scan/FileSurvey.h"

#include <QString>
#include <QStringList>

#include <variant>

/// Decides which file of a group is kept. First decides ties.
enum class KeepRule {
    Oldest,   ///< created first, the window's rule
    Newest,   ///< created last
    First,    ///< by the order of the folders, then by path
    Shortest, ///< fewest bytes in the absolute path
};

enum class ReportFormat { Text, Json, Csv, Paths };

enum class ProgressWish { Auto, Always, Never };

/// The options of `find`, with their defaults.
struct FindOptions
{
    QStringList folders;
    QStringList references;
    /// Its folders are empty.
    SurveyRequest filters;
    KeepRule keep = KeepRule::Oldest;
    ContentComparison comparison = ContentComparison::Bytes;
    ReportFormat format = ReportFormat::Text;
    bool nullSeparated = false;
    /// Empty: standard output.
    QString outputFile;
    ProgressWish progress = ProgressWish::Auto;
    bool failOnDuplicates = false;
};

/// Converts \a arguments to options. Returns an error if a value is invalid or options contradict each other.
[[nodiscard]] std::variant<FindOptions, UsageError> findOptions(const CommandArguments &arguments);

/// The number of bytes in \a text, which may end with K, M, G or T (units of 1024). An error names \a option.
[[nodiscard]] std::variant<qint64, UsageError> parseSize(const QString &text, const QString &option);
