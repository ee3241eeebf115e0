#include "tests/support/CommandRun.h"
#include "tests/support/RandomBytes.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/TestFiles.h"

#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <utility>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using Qt::Literals::StringLiterals::operator""_s;

namespace {

/// Identifies the file at \a path. Of a file with several names, each program lists a different one.
QByteArray identity(const QByteArray &path)
{
#ifdef Q_OS_UNIX
    struct stat facts = {};
    if (::stat(path.constData(), &facts) == 0)
        return QByteArray::number(quint64(facts.st_dev)) + ':' + QByteArray::number(quint64(facts.st_ino));
#endif
    return path;
}

/// The groups of paths that a program printed.
QList<QByteArrayList> pathGroups(const QByteArray &output)
{
    QList<QByteArrayList> found;
    QByteArrayList group;
    for (const QByteArray &line : (output + "\n\n").split('\n')) {
        if (!line.isEmpty())
            group.append(line);
        else if (!group.isEmpty())
            found.append(std::exchange(group, {}));
    }
    return found;
}

/// The groups of files that a program printed, sorted.
QList<QByteArrayList> fileGroups(const QByteArray &output)
{
    QList<QByteArrayList> found = pathGroups(output);
    for (QByteArrayList &group : found) {
        std::ranges::transform(group, group.begin(), identity);
        std::ranges::sort(group);
        // jdupes lists some files by several names.
        group.erase(std::unique(group.begin(), group.end()), group.end());
    }
    std::ranges::sort(found);
    return found;
}

CommandRun findAll(const QString &folder)
{
    return runCommand(QStringLiteral(QUILLORY_CLI),
        {u"find"_s, u"--format=paths"_s, u"--hidden"_s, u"--min-size=0"_s, folder});
}

} // namespace

/// Finds the same groups as fdupes and jdupes, which compare every byte.
class tst_cliCrossCheck : public QObject
{
    Q_OBJECT

private slots:
    void findsTheSameGroups_data();
    void findsTheSameGroups();
    void reportsOnlyEqualFiles();

private:
    static void addFolders(const QString &program, const QStringList &arguments);
    static QString makeTree();
};

/// Creates hard links, empty files, hidden files and folders, links, and files that differ in one byte.
QString tst_cliCrossCheck::makeTree()
{
    static const QTemporaryDir place;
    const auto path = [](const QString &name) { return place.filePath(name); };
    QByteArray content = randomBytes(100'000, 1);
    writeFile(path(u"a/1"_s), content);
    writeFile(path(u"b/.hidden/2"_s), content);
    content[50'000] = char(content[50'000] ^ 1);
    writeFile(path(u"b/3"_s), content);
    writeFile(path(u".4"_s), content);
    for (const QString &name : {u"empty"_s, u"b/empty"_s, u"c/.empty"_s})
        writeFile(path(name), {});
    for (const QString &name : {u"x"_s, u"a/x"_s})
        writeFile(path(name), "x");
    (void)makeHardLink(path(u"x"_s), path(u"c/x"_s));
    (void)makeHardLink(path(u"a/1"_s), path(u"a/0"_s));
    (void)makeLink(path(u"b"_s), path(u"link"_s));
    return place.path();
}

void tst_cliCrossCheck::addFolders(const QString &program, const QStringList &arguments)
{
    QStringList folders{makeTree(), u"/usr/share/doc"_s, u"/usr/include"_s, u"/etc"_s};
    for (const QString &folder : folders) {
        if (QFile::exists(folder))
            QTest::addRow("%s %s", qPrintable(program), qPrintable(folder)) << program << arguments << folder;
    }
}

void tst_cliCrossCheck::findsTheSameGroups_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("folder");
    addFolders(u"fdupes"_s, {u"-r"_s, u"-q"_s});
    // jdupes leaves out empty files by default.
    addFolders(u"jdupes"_s, {u"-r"_s, u"-q"_s, u"-z"_s});
}

void tst_cliCrossCheck::findsTheSameGroups()
{
    QFETCH(const QString, program);
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, folder);
    if (QStandardPaths::findExecutable(program).isEmpty())
        QSKIP(qPrintable(u"there is no "_s + program));
    const QList<QByteArrayList> own = fileGroups(findAll(folder).output);
    const QList<QByteArrayList> theirs =
        fileGroups(runCommand(program, arguments + QStringList{folder}).output);
    QCOMPARE(own.size(), theirs.size());
    QCOMPARE(own, theirs);
}

void tst_cliCrossCheck::reportsOnlyEqualFiles()
{
    const auto content = [](const QByteArray &path) {
        QFile file(QFile::decodeName(path));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    };
    for (const QString &folder : {makeTree(), u"/usr/include"_s}) {
        for (const QByteArrayList &group : pathGroups(findAll(folder).output)) {
            const QByteArray first = content(group.constFirst());
            for (const QByteArray &path : group)
                QVERIFY2(content(path) == first, path.constData());
        }
    }
}

QTEST_GUILESS_MAIN(tst_cliCrossCheck)
#include "tst_cliCrossCheck.moc"
