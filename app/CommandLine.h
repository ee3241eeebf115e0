#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// What the arguments of the program ask for.
struct CommandLine
{
    /// Folders to list instead of the volumes, in the order given. Absolute, written as the folder dialog
    /// writes them. Empty when the volumes are to be listed.
    QStringList folders;
    /// Text for the standard output (--help, --version). The program prints it and ends.
    std::optional<QString> answer;
    /// What is wrong with the arguments, one line. The program prints it and ends with exit code 2.
    std::optional<QString> error;
};

/// Reads \a arguments, the first of which is the program's name. Needs no application object.
///
/// Accepts the options of Qt as well, in any place, and leaves them to QApplication.
[[nodiscard]] CommandLine parseCommandLine(const QStringList &arguments);
