#pragma once

#include "analysis/ContentGroups.h"
#include "cli/CommandLine.h"
#include "scan/FileSurvey.h"

#include <QString>
#include <QStringList>

#include <variant>

/// Which file of a group is kept. Ties are decided by First.
enum class KeepRule {
    Oldest,   ///< created first, the window's rule
    Newest,   ///< created last
    First,    ///< by the order of the folders, then by path
    Shortest, ///< fewest bytes in its absolute path
};

enum class ReportFormat { Text, Json, Csv, Paths };

enum class ProgressWish { Auto, Always, Never };

/// What `find` is asked for.
struct FindOptions
{
    QStringList folders;
    QStringList references;
    /// Without its folders.
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

/// The options that \a arguments ask for, or why they make no sense.
[[nodiscard]] std::variant<FindOptions, UsageError> findOptions(const CommandArguments &arguments);

/// The number of bytes that \a text states, with K, M, G or T in units of 1024; or why it states none. \a
/// option is named in the error.
[[nodiscard]] std::variant<qint64, UsageError> parseSize(const QString &text, const QString &option);
