#include "tests/support/CommandRun.h"

#include <QProcess>

using Qt::Literals::StringLiterals::operator""_s;

CommandRun runCommand(const QString &program, const QStringList &arguments, const CommandSetup &setup)
{
    constexpr int patience = 300'000;
    QProcess process;
    process.setEnvironment(
        (setup.environment.isEmpty() ? QProcess::systemEnvironment() : setup.environment) + setup.variables);
    if (!setup.folder.isEmpty())
        process.setWorkingDirectory(setup.folder);
    if (!setup.outputFile.isEmpty())
        process.setStandardOutputFile(setup.outputFile);
    process.start(program, arguments);
    process.write(setup.input);
    process.closeWriteChannel();
    if (!process.waitForFinished(patience) || process.exitStatus() != QProcess::NormalExit)
        return {.exitCode = -1, .output = {}, .errors = process.readAllStandardError()};
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

CommandRun runScript(const QString &script, const QStringList &arguments, const CommandSetup &setup)
{
    return runCommand(u"bash"_s, QStringList{u"-c"_s, script, u"bash"_s} + arguments, setup);
}

QStringList linesIn(const QByteArray &output)
{
    return QString::fromUtf8(output).split(u'\n', Qt::SkipEmptyParts);
}
