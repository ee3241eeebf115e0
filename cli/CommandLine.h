#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <variant>

/// An option of a command, for the parser and the help text.
struct OptionDescription
{
    /// Without the dashes.
    QString name;
    /// Empty for an option without a value.
    QString valueName;
    QString meaning;
    /// Accepted values; empty: any text.
    QStringList words = {};
    /// Whether the value is a list of words, separated by commas.
    bool takesList = false;
};

/// A command of the program.
struct CommandDescription
{
    QString name;
    /// Arguments after the options: "FOLDER...", "REPORT".
    QString operands;
    QString purpose;
    QList<OptionDescription> options;
    /// Printed below the options.
    QString notes;
};

/// What is wrong with a command line.
struct UsageError
{
    /// Without a full stop. Ends with a hint if a valid word is near.
    QString message;
};

/// The options and operands of one command.
struct CommandArguments
{
    bool wantsHelp = false;
    /// Options that were given, with all their values in order. No values for an option that takes none.
    QHash<QString, QStringList> options;
    QStringList operands;

    [[nodiscard]] bool has(const QString &option) const;
    /// The last value of \a option, because a later value overrides an earlier one. \a otherwise if the
    /// option has no value.
    [[nodiscard]] QString value(const QString &option, const QString &otherwise = {}) const;
};

/// Parses \a arguments, which do not include the names of the program and the command. Rejects unknown
/// options, missing or empty values, and words that an option does not accept. With --help, wrong words are
/// accepted.
[[nodiscard]] std::variant<CommandArguments, UsageError> parseCommandLine(
    const CommandDescription &command, const QStringList &arguments);

/// The output of `quillory-cli COMMAND --help`, at most 79 columns wide.
[[nodiscard]] QString helpText(const CommandDescription &command);

/// Parses \a arguments as parseCommandLine() does. Reports wrong usage and prints the help. Returns the
/// parsed arguments, or the exit code if the program should end.
[[nodiscard]] std::variant<CommandArguments, int> readCommandLine(
    const CommandDescription &command, const QStringList &arguments);

/// Prints one line on standard error: the error, and how to get help. \a command is empty if there is none.
/// Returns the exit code.
[[nodiscard]] int reportWrongUsage(const UsageError &error, const QString &command);
