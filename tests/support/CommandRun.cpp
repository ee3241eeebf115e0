#include "tests/support/CommandRun.h"

#include <QProcess>

using Qt::Literals::StringLiterals::operator""_s;

CommandRun runCommand(const QString &program, const QStringList &arguments, const CommandPlace &place)
{
    constexpr int patience = 300'000;
    QProcess process;
    process.setEnvironment(QProcess::systemEnvironment() + place.variables);
    if (!place.folder.isEmpty())
        process.setWorkingDirectory(place.folder);
    if (!place.outputFile.isEmpty())
        process.setStandardOutputFile(place.outputFile);
    process.start(program, arguments);
    process.write(place.input);
    process.closeWriteChannel();
    if (!process.waitForFinished(patience) || process.exitStatus() != QProcess::NormalExit)
        return {.exitCode = -1, .output = {}, .errors = process.readAllStandardError()};
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

CommandRun runScript(const QString &script, const QStringList &arguments, const CommandPlace &place)
{
    return runCommand(u"bash"_s, QStringList{u"-c"_s, script, u"bash"_s} + arguments, place);
}
