#include "tests/support/CommandRun.h"
#include "tests/support/RemovalRun.h"
#include "tests/support/ReportFiles.h"
#include "tests/support/TestFiles.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

using Qt::StringLiterals::operator""_s;

namespace {

/// A Btrfs volume, mounted at a folder while the object exists.
class SharingDisk
{
public:
    explicit SharingDisk(const QString &folder)
        : m_folder(folder)
    {
        const CommandRun run =
            runScript(u"truncate -s 128M \"$1.image\" && mkfs.btrfs -q \"$1.image\" && mkdir -p \"$1\" && "
                      "mount -o loop \"$1.image\" \"$1\""_s,
                {folder});
        m_obstacle = run.exitCode == 0
                         ? QString()
                         : u"No disk shares blocks here: "_s + QString::fromLocal8Bit(run.errors);
    }
    ~SharingDisk()
    {
        if (m_obstacle.isEmpty())
            (void)runScript(u"umount -l \"$1\""_s, {m_folder});
    }
    Q_DISABLE_COPY_MOVE(SharingDisk)

    /// Why there is no such volume; empty if there is.
    [[nodiscard]] QString obstacle() const
    {
        return m_obstacle;
    }

private:
    const QString m_folder;
    QString m_obstacle;
};

} // namespace

/// Removal with the action reflink.
class tst_reflink : public QObject
{
    Q_OBJECT

private slots:
    void sharesBlocks();
};

void tst_reflink::sharesBlocks()
{
    const QTemporaryDir folder;
    const SharingDisk disk(folder.filePath(u"disk"_s));
    if (!disk.obstacle().isEmpty())
        QSKIP(qPrintable(disk.obstacle()));
    // More than one call shares, and not a multiple of the block size.
    const QByteArray content(qsizetype(17) * 1024 * 1024 + 5, 'x');
    const QStringList files{folder.filePath(u"disk/a"_s), folder.filePath(u"disk/b"_s)};
    for (const QString &file : files)
        writeFile(file, content);
    setModificationTime(files.last(), 12345);
    const auto blocksAt = [&files](int index) {
        return runScript(u"sync \"$1\"; filefrag -v \"$1\" | grep shared"_s, {files.at(index)});
    };
    QCOMPARE(blocksAt(1).exitCode, 1);
    const QDateTime modified = QFileInfo(files.last()).lastModified();
    const auto before = identityAt(files.last());

    QCOMPARE(carryOut(reportOf({groupOf(files)}), planning(RemovalAction::Reflink)).exitCode, ExitDone);
    QCOMPARE(blocksAt(1).exitCode, 1);
    QCOMPARE(carryOut(reportOf({groupOf(files)}), applying(RemovalAction::Reflink)).exitCode, ExitDone);

    QCOMPARE(blocksAt(1).exitCode, 0);
    QCOMPARE(identityAt(files.last()), before);
    QCOMPARE(QFileInfo(files.last()).lastModified(), modified);
    QCOMPARE(contentOf(files.last()), content);
    // The blocks may be shared already.
    QCOMPARE(carryOut(reportOf({groupOf(files)}), applying(RemovalAction::Reflink)).exitCode, ExitDone);
}

QTEST_GUILESS_MAIN(tst_reflink)
#include "tst_reflink.moc"
