#include "tests/support/TestFiles.h"
#include "tests/windows/WindowsFiles.h"

#include "scan/FileCollection.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <qt_windows.h>

/// Symbolic links lead a scan neither to a file nor into a folder.
class tst_windowsLinks : public QObject
{
    Q_OBJECT

private slots:
    void symbolicLinksAreNotFollowed();
};

namespace {

bool makeSymbolicLink(const QString &link, const QString &target, bool toFolder)
{
    constexpr DWORD withoutElevation = 0x2; // SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE
    const DWORD flags = withoutElevation | (toFolder ? SYMBOLIC_LINK_FLAG_DIRECTORY : 0);
    const auto native = [](const QString &path) { return QString(path).replace(u'/', u'\\').toStdWString(); };
    return CreateSymbolicLinkW(native(link).c_str(), native(target).c_str(), flags) != 0;
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

    ScanOptions options;
    options.fileTypes = {QStringLiteral("other")};
    const QStringList collected = collectFiles({folder.filePath(QStringLiteral("scanned"))}, options,
        {[] {}, [](const QString &, int) {}, [] { return false; }});
    QCOMPARE(collected, QStringList{file});
}

QTEST_MAIN(tst_windowsLinks)
#include "tst_windowsLinks.moc"
