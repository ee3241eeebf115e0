#include "app/CommandLine.h"

#include "app/Version.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <array>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr QLatin1StringView usage(R"(Usage: quillory [OPTION]... [FOLDER]...
Opens a window that finds duplicate files and deletes the copies that you check.

With FOLDERs, the start page lists these folders instead of the mounted volumes.

Options:
  -h, --help     show this text and exit
  -v, --version  show the version and exit

The options of Qt, such as -style and -platform, work as well.
)");

// Options that QApplication and the platform plugins of Qt 6 read.
constexpr std::array qtOptionsWithValue{"display", "name", "platform", "platformpluginpath", "platformtheme",
    "plugin", "qmljsdebugger", "qwindowgeometry", "qwindowicon", "qwindowtitle", "session", "style",
    "stylesheet"};
constexpr std::array qtOptionsWithoutValue{"dograb", "nograb", "reverse", "widgetcount"};

void addOptions(QCommandLineParser &parser)
{
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.addOption(QCommandLineOption(QStringList{u"h"_s, u"help"_s}));
    parser.addOption(QCommandLineOption(QStringList{u"v"_s, u"version"_s}));
    for (const char *name : qtOptionsWithValue)
        parser.addOption(QCommandLineOption(QLatin1StringView(name), {}, u"value"_s));
    for (const char *name : qtOptionsWithoutValue)
        parser.addOption(QCommandLineOption(QLatin1StringView(name)));
}

/// Returns the path in the form that the folder dialog returns: absolute, without "." and "..", without a
/// trailing slash unless it is a root.
QString dialogPath(const QString &folder)
{
    const QFileInfo info(folder);
    const QString path = QDir::cleanPath(info.absoluteFilePath());
    // ".." after a symbolic link is the parent of the link's target; cleanPath() resolves it to the parent of
    // the link.
    const QString target = info.canonicalFilePath();
    return QFileInfo(path).canonicalFilePath() == target ? path : target;
}

/// Replaces control characters, so that a file name cannot break the message into lines.
QString oneLine(QString text)
{
    std::ranges::replace_if(
        text, [](QChar character) { return character.category() == QChar::Other_Control; }, u'?');
    return text;
}

/// Returns the error message for an argument that is not a folder.
std::optional<QString> folderError(const QString &folder)
{
    const QFileInfo info(folder);
    if (info.isDir())
        return std::nullopt;
    return oneLine((info.exists() ? u"not a folder: "_s : u"no such folder: "_s) + folder);
}

} // namespace

CommandLine parseCommandLine(const QStringList &arguments)
{
    CommandLine commandLine;
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(arguments)) {
        commandLine.error = oneLine(parser.errorText()) + u" Try --help."_s;
        return commandLine;
    }
    if (parser.isSet(u"help"_s)) {
        commandLine.answer = usage;
        return commandLine;
    }
    if (parser.isSet(u"version"_s)) {
        commandLine.answer = u"Quillory "_s + quilloryVersion + u'\n';
        return commandLine;
    }
    const QStringList folders = parser.positionalArguments();
    for (const QString &folder : folders) {
        commandLine.error = folderError(folder);
        if (commandLine.error)
            return commandLine;
        commandLine.folders.append(dialogPath(folder));
    }
    return commandLine;
}
