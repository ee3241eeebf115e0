#include "cli/Commands.h"

#include "app/Version.h"
#include "cli/CommandLine.h"
#include "cli/ExitCode.h"
#include "cli/Find.h"
#include "cli/Hints.h"
#include "cli/Remove.h"
#include "cli/StandardOutput.h"

#include <algorithm>
#include <array>

using Qt::Literals::StringLiterals::operator""_s;

namespace {

struct Command
{
    const CommandDescription &(*description)();
    int (*run)(const QStringList &arguments);
};

constexpr std::array commands{Command{findCommand, runFind}, Command{removeCommand, runRemove}};

QString overview()
{
    return u"Usage: quillory-cli find   [OPTION]... FOLDER...\n"
           "       quillory-cli remove [OPTION]... REPORT\n"
           "       quillory-cli --help | --version | COMMAND --help\n"
           "\n"
           "Finds files with identical contents, and removes or links the copies.\n"
           "\n"
           "Commands:\n"
           "  find    lists identical files; changes nothing\n"
           "  remove  shows what it would do with a JSON report of find; does it with\n"
           "          --apply\n"
           "\n"
           "Options:\n"
           "  --help     prints this text\n"
           "  --version  prints the version\n"
           "\n"
           "Exit codes: 0 done, 1 something could not be read, written or acted on,\n"
           "2 wrong usage, 3 duplicates found (with --fail-on-duplicates), 4 refused\n"
           "because a file was not what the report says, 130 interrupted.\n"_s;
}

int print(const QString &text)
{
    return printToStandardOutput(text) ? ExitDone : ExitFailed;
}

int reportUnknownWord(const QString &word)
{
    QStringList words{u"--help"_s, u"--version"_s};
    for (const Command &command : commands)
        words.append(command.description().name);
    const QString kind = word.startsWith(u'-') ? u"option"_s : u"command"_s;
    QString hint = didYouMean(word, words);
    if (hint.isEmpty())
        hint = didYouMean(u"--"_s + word, words);
    return reportWrongUsage({u"unknown %1 %2%3"_s.arg(kind, word, hint)}, {});
}

} // namespace

int runProgram(const QStringList &arguments)
{
    if (arguments.isEmpty())
        return reportWrongUsage({u"no command given: find or remove"_s}, {});
    const QString &word = arguments.constFirst();
    if (word == u"--help" || word == u"-h")
        return print(overview());
    if (word == u"--version")
        return print(u"quillory-cli "_s + quilloryVersion + u'\n');
    const auto *const command = std::ranges::find_if(
        commands, [&word](const Command &candidate) { return candidate.description().name == word; });
    if (command == commands.end())
        return reportUnknownWord(word);
    return command->run(arguments.sliced(1));
}
