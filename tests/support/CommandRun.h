#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// How a program has ended.
struct CommandRun
{
    /// -1 when it did not start, did not end, or was ended by a signal.
    int exitCode = -1;
    QByteArray output;
    QByteArray errors;
};

/// Where a program runs, and with what.
struct CommandSetup
{
    /// Its working folder; empty: that of the test.
    QString folder = {};
    /// Environment as "NAME=value"; empty: that of the test.
    QStringList environment = {};
    /// "NAME=value", beside the environment of the test.
    QStringList variables = {};
    /// File that standard output goes to; empty: CommandRun::output.
    QString outputFile = {};
    /// What it reads from standard input.
    QByteArray input = {};
};

/// Runs \a program to its end.
[[nodiscard]] CommandRun runCommand(
    const QString &program, const QStringList &arguments, const CommandSetup &setup = {});

/// Runs \a script with bash; its $1, $2 and so on are \a arguments.
[[nodiscard]] CommandRun runScript(
    const QString &script, const QStringList &arguments, const CommandSetup &setup = {});

/// The lines of an output, without empty ones.
[[nodiscard]] QStringList linesIn(const QByteArray &output);
