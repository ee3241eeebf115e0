#include "tests/support/CliFolder.h"

#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

using Qt::Literals::StringLiterals::operator""_s;

CliFolder::CliFolder(const QString &program, const QStringList &equalFiles)
    : m_program(program)
{
    for (const QString &name : equalFiles)
        write(name);
}

QString CliFolder::path(const QString &name) const
{
    const QString folder = QFileInfo(m_folder.path()).canonicalFilePath();
    return name.isEmpty() ? folder : folder + u'/' + name;
}

void CliFolder::write(const QString &name, const QByteArray &content) const
{
    writeFile(path(name), content);
}

QByteArray CliFolder::content(const QString &name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(cannot be read)");
}

QStringList CliFolder::fileNames() const
{
    return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden);
}

CommandRun CliFolder::run(const QStringList &arguments, const QStringList &variables) const
{
    return runCommand(m_program, arguments, {.folder = path(), .variables = variables});
}

CommandRun CliFolder::find(const QStringList &arguments) const
{
    return run(QStringList{u"find"_s} + arguments);
}

QJsonObject CliFolder::report(const QStringList &arguments, int exitCode) const
{
    const CommandRun found = find(QStringList{u"--format=json"_s} + arguments);
    if (found.exitCode != exitCode)
        qWarning("exit code %d: %s", found.exitCode, found.errors.constData());
    return found.exitCode == exitCode ? QJsonDocument::fromJson(found.output).object() : QJsonObject();
}

QStringList CliFolder::foundPaths(const QStringList &arguments) const
{
    const CommandRun found = find(QStringList{u"--format=paths"_s, u"--keep=first"_s} + arguments);
    return QString::fromUtf8(found.output).split(u'\n', Qt::SkipEmptyParts);
}

CommandRun CliFolder::runInShell(const QString &script) const
{
    return runScript(script, {m_program}, {.folder = path()});
}

void CliFolder::writeLargeOutput(const QString &folder) const
{
    const QString longName(200, u'x');
    for (int i = 0; i < 1000; ++i)
        write(folder + u'/' + longName + QString::number(i));
}
