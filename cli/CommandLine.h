#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <variant>

/// An option as the help shows it and the parser takes it.
struct OptionDescription
{
    /// Without the dashes.
    QString name;
    /// Empty for an option without a value.
    QString valueName;
    QString meaning;
    /// The words that it takes; empty when any text is one.
    QStringList words = {};
    /// Takes several words, separated by commas.
    bool takesList = false;
};

/// A command of the program.
struct CommandDescription
{
    QString name;
    /// What follows the options: "FOLDER...", "REPORT".
    QString operands;
    QString purpose;
    QList<OptionDescription> options;
    /// Printed below the options.
    QString notes;
};

/// Why a command line is wrong: a text without a full stop, and with a hint where there is one.
struct UsageError
{
    QString message;
};

/// The options and operands of one command.
struct CommandArguments
{
    bool wantsHelp = false;
    /// All values of each option that was given, in their order; a list without entries for an option without
    /// a value.
    QHash<QString, QStringList> options;
    QStringList operands;

    [[nodiscard]] bool has(const QString &option) const;
    /// The last value given: as with other programs, a later option wins over an earlier one.
    [[nodiscard]] QString value(const QString &option, const QString &otherwise = {}) const;
};

/// Takes \a arguments (without the program's and the command's name) apart. Refuses unknown options, missing
/// values, empty values, and words that an option does not take. Help that is asked for wins over wrong
/// words.
[[nodiscard]] std::variant<CommandArguments, UsageError> parseCommandLine(
    const CommandDescription &command, const QStringList &arguments);

/// What `quillory-cli COMMAND --help` prints: at most 79 columns wide.
[[nodiscard]] QString helpText(const CommandDescription &command);

/// Takes \a arguments apart, and reports wrong usage or prints the help that is asked for. Returns the
/// arguments, or the exit code when nothing is left to be done.
[[nodiscard]] std::variant<CommandArguments, int> readCommandLine(
    const CommandDescription &command, const QStringList &arguments);

/// Prints one line: what is wrong, and how to get help. \a command may be empty. Returns the exit code.
int reportWrongUsage(const UsageError &error, const QString &command);
