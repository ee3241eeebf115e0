#include "cli/FindOptions.h"

#include "cli/Exclusion.h"

#include <QThread>

#include <algorithm>
#include <optional>
#include <utility>

using Qt::Literals::StringLiterals::operator""_s;

namespace {

/// More threads take memory and do not make the search faster.
constexpr qint64 mostThreads = 256;

/// The meaning of the value of \a option; the first of \a meanings if the option was not given.
template <typename Meaning>
Meaning choice(const CommandArguments &arguments, const QString &option,
    const QList<std::pair<QString, Meaning>> &meanings)
{
    const QString word = arguments.value(option, meanings.constFirst().first);
    return std::ranges::find(meanings, word, &std::pair<QString, Meaning>::first)->second;
}

/// Whether \a text consists of ASCII digits.
bool isNumber(QStringView text)
{
    return !text.isEmpty() &&
           std::ranges::all_of(text, [](QChar digit) { return digit >= u'0' && digit <= u'9'; });
}

/// Sets \a size if \a option was given.
std::optional<UsageError> readSize(const CommandArguments &arguments, const QString &option, qint64 &size)
{
    if (!arguments.has(option))
        return {};
    const auto parsed = parseSize(arguments.value(option), option);
    if (const auto *const error = std::get_if<UsageError>(&parsed))
        return *error;
    size = std::get<qint64>(parsed);
    return {};
}

std::optional<UsageError> readSizes(const CommandArguments &arguments, SurveyRequest &filters)
{
    if (auto error = readSize(arguments, u"min-size"_s, filters.minSize))
        return error;
    if (auto error = readSize(arguments, u"max-size"_s, filters.maxSize))
        return error;
    if (filters.minSize > filters.maxSize) {
        return UsageError{u"--min-size %1 is more than --max-size %2"_s.arg(
            QString::number(filters.minSize), QString::number(filters.maxSize))};
    }
    return {};
}

std::optional<UsageError> readThreads(const CommandArguments &arguments, int &threads)
{
    threads = std::max(QThread::idealThreadCount(), 1);
    if (!arguments.has(u"threads"_s))
        return {};
    const QString value = arguments.value(u"threads"_s);
    bool fits = false;
    const qint64 number = value.toLongLong(&fits);
    if (!isNumber(value) || !fits || number < 1)
        return UsageError{u"--threads takes a number from 1, not \"%1\""_s.arg(value)};
    threads = static_cast<int>(std::min(number, mostThreads));
    return {};
}

std::optional<UsageError> readFolders(const CommandArguments &arguments, FindOptions &options)
{
    options.folders = arguments.operands;
    options.references = arguments.options.value(u"reference"_s);
    if (options.folders.isEmpty())
        return UsageError{u"no FOLDER given"_s};
    if (options.folders.contains(QString()))
        return UsageError{u"a FOLDER is empty"_s};
    return {};
}

ScanOptions scanOptions(const CommandArguments &arguments)
{
    const QStringList skipped = arguments.value(u"skip"_s).split(u',');
    ScanOptions options;
    options.fileTypes = arguments.value(u"types"_s, u"other"_s).split(u',');
    options.skipSystem = skipped.contains(u"system"_s);
    options.skipApps = skipped.contains(u"applications"_s);
    options.skipDesktop = skipped.contains(u"desktop"_s);
    return options;
}

} // namespace

std::variant<qint64, UsageError> parseSize(const QString &text, const QString &option)
{
    const QString units = u"KMGT"_s;
    const qsizetype unit = text.isEmpty() ? -1 : units.indexOf(text.back(), 0, Qt::CaseInsensitive);
    const QString digits = unit < 0 ? text : text.chopped(1);
    if (!isNumber(digits)) {
        return UsageError{
            u"--%1 takes a number of bytes, or one with K, M, G or T, not \"%2\""_s.arg(option, text)};
    }
    const qint64 factor = qint64(1) << (10 * (unit + 1));
    bool fits = false;
    const qint64 number = digits.toLongLong(&fits);
    if (!fits || number > std::numeric_limits<qint64>::max() / factor)
        return UsageError{u"--%1 %2 is too large"_s.arg(option, text)};
    return number * factor;
}

std::variant<FindOptions, UsageError> findOptions(const CommandArguments &arguments)
{
    FindOptions options;
    if (const auto error = readFolders(arguments, options))
        return *error;
    if (const auto error = readSizes(arguments, options.filters))
        return *error;
    if (const auto error = readThreads(arguments, options.filters.threads))
        return *error;
    options.filters.includeHidden = arguments.has(u"hidden"_s);
    options.filters.options = scanOptions(arguments);
    options.filters.excluded = exclusionRule(arguments.options.value(u"exclude"_s));
    options.keep = choice<KeepRule>(arguments, u"keep"_s,
        {{u"oldest"_s, KeepRule::Oldest}, {u"newest"_s, KeepRule::Newest}, {u"first"_s, KeepRule::First},
            {u"shortest"_s, KeepRule::Shortest}});
    options.comparison = choice<ContentComparison>(arguments, u"compare"_s,
        {{u"bytes"_s, ContentComparison::Bytes}, {u"sample"_s, ContentComparison::Sample}});
    options.format = choice<ReportFormat>(arguments, u"format"_s,
        {{u"text"_s, ReportFormat::Text}, {u"json"_s, ReportFormat::Json}, {u"csv"_s, ReportFormat::Csv},
            {u"paths"_s, ReportFormat::Paths}});
    options.progress = choice<ProgressWish>(arguments, u"progress"_s,
        {{u"auto"_s, ProgressWish::Auto}, {u"always"_s, ProgressWish::Always},
            {u"never"_s, ProgressWish::Never}});
    options.nullSeparated = arguments.has(u"null"_s);
    options.outputFile = arguments.value(u"output"_s);
    options.failOnDuplicates = arguments.has(u"fail-on-duplicates"_s);
    if (options.nullSeparated && options.format != ReportFormat::Paths)
        return UsageError{u"--null goes with --format paths only"_s};
    return options;
}
