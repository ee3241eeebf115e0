#include "cli/CommandLine.h"

#include "cli/ExitCode.h"
#include "cli/Hints.h"
#include "cli/Messages.h"
#include "cli/StandardOutput.h"

#include <QCommandLineOption>
#include <QCommandLineParser>

#include <optional>

using Qt::Literals::StringLiterals::operator""_s;

namespace {

constexpr QLatin1StringView helpOption("help");

QStringList optionNames(const CommandDescription &command)
{
    QStringList names;
    for (const OptionDescription &option : command.options)
        names.append(u"--"_s + option.name);
    return names << u"--"_s + helpOption;
}

/// The unknown option \a name as the user typed it, without its value. For "-name", the parser reports single
/// letters.
QString asTyped(const QString &name, const QStringList &arguments)
{
    for (const QString &argument : arguments) {
        const QString option = argument.section(u'=', 0, 0);
        if (option == u"--"_s + name ||
            (!option.startsWith(u"--"_s) && option.startsWith(u'-') && option.contains(name)))
            return option;
    }
    return u"--"_s + name;
}

UsageError unknownOption(const CommandDescription &command, const QString &name, const QStringList &arguments)
{
    const QString typed = asTyped(name, arguments);
    const QString word = typed.startsWith(u"--"_s) ? typed : u'-' + typed;
    return {u"unknown option "_s + typed + didYouMean(word, optionNames(command))};
}

QString inWords(const QStringList &words)
{
    return words.sliced(0, words.size() - 1).join(u", "_s) + u" or "_s + words.constLast();
}

std::optional<UsageError> checkValue(const OptionDescription &option, const QString &value)
{
    if (value.isEmpty())
        return UsageError{u"--%1 needs a value"_s.arg(option.name)};
    if (option.words.isEmpty())
        return {};
    for (const QString &word : option.takesList ? value.split(u',') : QStringList{value}) {
        if (!option.words.contains(word)) {
            return UsageError{u"--%1 takes %2, not \"%3\"%4"_s.arg(
                option.name, inWords(option.words), word, didYouMean(word, option.words))};
        }
    }
    return {};
}

/// The message of the parser without its capital letter and full stop.
UsageError parserError(QString message)
{
    message.front() = message.front().toLower();
    if (message.endsWith(u'.'))
        message.chop(1);
    return {message};
}

void addOptions(QCommandLineParser &parser, const CommandDescription &command)
{
    parser.addOption(QCommandLineOption(QStringList{u"h"_s, helpOption}));
    for (const OptionDescription &option : command.options) {
        parser.addOption(option.valueName.isEmpty()
                             ? QCommandLineOption(option.name)
                             : QCommandLineOption(option.name, option.meaning, option.valueName));
    }
}

} // namespace

bool CommandArguments::has(const QString &option) const
{
    return options.contains(option);
}

QString CommandArguments::value(const QString &option, const QString &otherwise) const
{
    const QStringList values = options.value(option);
    return values.isEmpty() ? otherwise : values.constLast();
}

std::variant<CommandArguments, UsageError> parseCommandLine(
    const CommandDescription &command, const QStringList &arguments)
{
    QCommandLineParser parser;
    addOptions(parser, command);
    // The parser skips the first argument, which is the name of a program.
    if (!parser.parse(QStringList{command.name} + arguments)) {
        const QStringList unknown = parser.unknownOptionNames();
        if (!unknown.isEmpty())
            return unknownOption(command, unknown.constFirst(), arguments);
        return parserError(parser.errorText());
    }
    CommandArguments result{.wantsHelp = parser.isSet(QString(helpOption)),
        .options = {},
        .operands = parser.positionalArguments()};
    for (const OptionDescription &option : command.options) {
        if (!parser.isSet(option.name))
            continue;
        const QStringList values = parser.values(option.name);
        result.options.insert(option.name, values);
        for (const QString &value : values) {
            const std::optional<UsageError> error = checkValue(option, value);
            if (error && !result.wantsHelp)
                return *error;
        }
    }
    return result;
}

std::variant<CommandArguments, int> readCommandLine(
    const CommandDescription &command, const QStringList &arguments)
{
    const auto parsed = parseCommandLine(command, arguments);
    if (const auto *const error = std::get_if<UsageError>(&parsed))
        return reportWrongUsage(*error, command.name);
    const auto &result = std::get<CommandArguments>(parsed);
    if (result.wantsHelp)
        return printToStandardOutput(helpText(command)) ? ExitDone : ExitFailed;
    return result;
}

int reportWrongUsage(const UsageError &error, const QString &command)
{
    const QString program = command.isEmpty() ? u"quillory-cli"_s : u"quillory-cli "_s + command;
    printMessage(u"%1; see %2 --help"_s.arg(error.message, program));
    return ExitWrongUsage;
}
