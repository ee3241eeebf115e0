#pragma once

#include "tests/support/CommandRun.h"

#include <QJsonObject>
#include <QTemporaryDir>

/// A folder in which a test runs quillory-cli. All relative names are below it.
class CliFolder
{
public:
    /// \a program is quillory-cli.
    explicit CliFolder(const QString &program);

    /// The absolute path of \a name, without links; of the folder itself when it is empty.
    [[nodiscard]] QString path(const QString &name = {}) const;
    void write(const QString &name, const QByteArray &content = "equal") const;
    /// The content of a file; a text that no test expects when there is none.
    [[nodiscard]] QByteArray content(const QString &name) const;
    /// The names of the files right in the folder, hidden ones too.
    [[nodiscard]] QStringList fileNames() const;

    [[nodiscard]] CommandRun run(const QStringList &arguments, const QStringList &variables = {}) const;
    [[nodiscard]] CommandRun find(const QStringList &arguments) const;
    /// The JSON report of find; empty when the program ends with another exit code.
    [[nodiscard]] QJsonObject report(const QStringList &arguments, int exitCode = 0) const;
    /// The paths of all groups in the order of the report, the first file of each being kept.
    [[nodiscard]] QStringList foundPaths(const QStringList &arguments) const;
    /// Runs \a script with bash; its $1 is the program.
    [[nodiscard]] CommandRun runInShell(const QString &script) const;

    /// Fills \a folder with equal files: a report of them is larger than what a pipe holds.
    void writeLargeOutput(const QString &folder) const;

private:
    const QString m_program;
    const QTemporaryDir m_folder;
};
