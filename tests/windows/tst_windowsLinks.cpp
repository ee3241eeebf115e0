#include "tests/support/CollectedFiles.h"
#include "tests/support/TestFiles.h"
#include "tests/windows/WindowsFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <qt_windows.h>

/// Links and junctions lead a scan neither to a file nor into a folder.
class tst_windowsLinks : public QObject
{
    Q_OBJECT

private slots:
    void symbolicLinksAreNotFollowed();
    void junctionsAreNotEntered();
};

namespace {

bool makeSymbolicLink(const QString &link, const QString &target, bool toFolder)
{
    constexpr DWORD withoutElevation = 0x2; // SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE
    const DWORD flags = withoutElevation | (toFolder ? SYMBOLIC_LINK_FLAG_DIRECTORY : 0);
    const auto native = [](const QString &path) { return QString(path).replace(u'/', u'\\').toStdWString(); };
    return CreateSymbolicLinkW(native(link).c_str(), native(target).c_str(), flags) != 0;
}

bool makeJunction(const QString &junction, const QString &target)
{
    return QProcess::execute(QStringLiteral("cmd"),
               {QStringLiteral("/c"), QStringLiteral("mklink"), QStringLiteral("/J"),
                   QDir::toNativeSeparators(junction), QDir::toNativeSeparators(target)}) == 0;
}

} // namespace

void tst_windowsLinks::symbolicLinksAreNotFollowed()
{
    if (runsUnderWine())
        QSKIP("Wine shows symbolic links as plain files and folders");
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("scanned/file.txt"));
    writeFile(file, "file");
    if (!makeSymbolicLink(folder.filePath(QStringLiteral("scanned/link.txt")), file, false) ||
        !makeSymbolicLink(folder.filePath(QStringLiteral("scanned/parent")), folder.path(), true))
        QSKIP("Windows lets only administrators and developers make symbolic links");

    QCOMPARE(collect({folder.filePath(QStringLiteral("scanned"))}), QStringList{file});
}

/// A junction to a folder around it would be walked dozens of times, and two of them practically without end.
void tst_windowsLinks::junctionsAreNotEntered()
{
    const QTemporaryDir folder;
    const QString scanned = folder.filePath(QStringLiteral("scanned"));
    const QString file = scanned + QStringLiteral("/file.txt");
    writeFile(file, "file");
    writeFile(folder.filePath(QStringLiteral("elsewhere/other.txt")), "other");
    if (!makeJunction(scanned + QStringLiteral("/around"), scanned) ||
        !makeJunction(scanned + QStringLiteral("/around too"), folder.path()) ||
        !makeJunction(scanned + QStringLiteral("/aside"), folder.filePath(QStringLiteral("elsewhere"))))
        QSKIP("There are no junctions here");
    if (!QFileInfo(scanned + QStringLiteral("/around")).isJunction())
        QSKIP("Wine shows junctions as plain folders");
    const QStringList collected = collect({scanned});
    for (const QString &junction :
        {QStringLiteral("around"), QStringLiteral("around too"), QStringLiteral("aside")})
        QVERIFY(QDir(scanned).rmdir(junction));
    QCOMPARE(collected, QStringList{file});
}

QTEST_MAIN(tst_windowsLinks)
#include "tst_windowsLinks.moc"
