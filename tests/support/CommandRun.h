#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// Result of a program.
struct CommandRun
{
    /// -1 if the program did not start, did not end, or was ended by a signal.
    int exitCode = -1;
    QByteArray output;
    QByteArray errors;
};

/// Working folder, environment and streams of a program.
struct CommandSetup
{
    /// Working folder; empty: that of the test.
    QString folder = {};
    /// Environment as "NAME=value"; empty: that of the test.
    QStringList environment = {};
    /// "NAME=value", in addition to the environment.
    QStringList variables = {};
    /// File for standard output; empty: output is in CommandRun::output.
    QString outputFile = {};
    /// Standard input.
    QByteArray input = {};
};

/// Runs \a program and waits for its end.
[[nodiscard]] CommandRun runCommand(
    const QString &program, const QStringList &arguments, const CommandSetup &setup = {});

/// Runs \a script with bash. \a arguments are its $1, $2 and so on.
[[nodiscard]] CommandRun runScript(
    const QString &script, const QStringList &arguments, const CommandSetup &setup = {});

/// The lines of an output, without empty ones.
[[nodiscard]] QStringList linesIn(const QByteArray &output);
