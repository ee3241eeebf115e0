#pragma once

#include "tests/support/CommandRun.h"

#include <QJsonObject>
#include <QTemporaryDir>

/// A temporary folder in which a test runs quillory-cli. File names are relative to it.
class CliFolder
{
public:
    /// \a program is the path of quillory-cli. Creates \a equalFiles.
    explicit CliFolder(const QString &program, const QStringList &equalFiles = {});

    /// The absolute path of \a name without links. The path of the folder itself if \a name is empty.
    [[nodiscard]] QString path(const QString &name = {}) const;
    void write(const QString &name, const QByteArray &content = "equal") const;
    /// The content of a file; a text that no test expects if the file cannot be read.
    [[nodiscard]] QByteArray content(const QString &name) const;
    /// Names of the files directly in the folder, including hidden ones.
    [[nodiscard]] QStringList fileNames() const;

    [[nodiscard]] CommandRun run(const QStringList &arguments, const QStringList &variables = {}) const;
    [[nodiscard]] CommandRun find(const QStringList &arguments) const;
    /// The JSON report of find; empty if the program ends with another exit code than \a exitCode.
    [[nodiscard]] QJsonObject report(const QStringList &arguments, int exitCode = 0) const;
    /// The paths of all groups in the order of the report, with --keep=first.
    [[nodiscard]] QStringList foundPaths(const QStringList &arguments) const;
    /// Runs \a script with bash. Its $1 is the program.
    [[nodiscard]] CommandRun runInShell(const QString &script) const;

    /// Fills \a folder with equal files. Their report is larger than the buffer of a pipe.
    void writeLargeOutput(const QString &folder) const;

private:
    const QString m_program;
    const QTemporaryDir m_folder;
};
