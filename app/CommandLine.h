#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// The parsed arguments of the program.
struct CommandLine
{
    /// Folders to list instead of the volumes, in the order given; empty for the volumes. Absolute paths in
    /// the form that the folder dialog returns.
    QStringList folders;
    /// Text that the program prints to standard output before it exits (--help, --version).
    std::optional<QString> answer;
    /// One-line error message. The program prints it to standard error and exits with code 2.
    std::optional<QString> error;
};

/// Parses \a arguments, the first of which is the program's name. Needs no application object.
///
/// Accepts the options of Qt, at any position, and ignores them: QApplication reads them.
[[nodiscard]] CommandLine parseCommandLine(const QStringList &arguments);
