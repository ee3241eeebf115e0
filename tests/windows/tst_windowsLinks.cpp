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

/// A scan follows neither symbolic links nor junctions.
class tst_windowsLinks : public QObject
{
    Q_OBJECT

private slots:
    void doesNotFollowSymbolicLinks();
    void doesNotEnterJunctions();
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

void tst_windowsLinks::doesNotFollowSymbolicLinks()
{
    if (runsUnderWine())
        QSKIP("Wine shows symbolic links as plain files and folders");
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("scanned/file.txt"));
    writeFile(file, "file");
    if (!makeSymbolicLink(folder.filePath(QStringLiteral("scanned/link.txt")), file, false) ||
        !makeSymbolicLink(folder.filePath(QStringLiteral("scanned/parent")), folder.path(), true))
        QSKIP("Only administrators and developers may create symbolic links");

    QCOMPARE(collect({folder.filePath(QStringLiteral("scanned"))}), QStringList{file});
}

/// A scan that entered a junction to a parent folder would repeat it dozens of times; with two of them it
/// would practically never end.
void tst_windowsLinks::doesNotEnterJunctions()
{
    const QTemporaryDir folder;
    const QString scanned = folder.filePath(QStringLiteral("scanned"));
    const QString file = scanned + QStringLiteral("/file.txt");
    writeFile(file, "file");
    writeFile(folder.filePath(QStringLiteral("elsewhere/other.txt")), "other");
    if (!makeJunction(scanned + QStringLiteral("/around"), scanned) ||
        !makeJunction(scanned + QStringLiteral("/around too"), folder.path()) ||
        !makeJunction(scanned + QStringLiteral("/aside"), folder.filePath(QStringLiteral("elsewhere"))))
        QSKIP("This file system has no junctions");
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
