#include "tests/support/ImmutableFile.h"
#include "tests/support/RemovalRun.h"
#include "tests/support/ReportFiles.h"
#include "tests/support/SmallDisk.h"
#include "tests/support/TestFiles.h"
#include "tests/support/UnprivilegedUser.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#ifdef Q_OS_LINUX
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#endif

using Qt::StringLiterals::operator""_s;

/// Removal that the system prevents: the exit code is 1 and all files stay.
class tst_removalObstacles : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void needsPermission_data();
    void needsPermission();
    void needsAChangeableFile();
    void needsAWritableVolume_data();
    void needsAWritableVolume();
    void needsOneVolume_data();
    void needsOneVolume();
    void needsAFileSystemThatSharesBlocks();
    void waitsForALease();

private:
    [[nodiscard]] QString path(const QString &name) const
    {
        return m_folder->filePath(name);
    }

    [[nodiscard]] Report pairReport() const
    {
        return reportOf({groupOf({path(u"files/a"_s), path(u"files/b"_s)})});
    }

    /// Checks that the plan and the action report the obstacle and that all files stay.
    void checkObstacle(
        const Report &report, RemovalAction action, const QString &reason, bool seenInPlan = true);

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_removalObstacles::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    writeFile(path(u"files/a"_s), "content");
    writeFile(path(u"files/b"_s), "content");
    QVERIFY(QDir().mkpath(path(u"disk"_s)));
    qputenv("XDG_DATA_HOME", QFile::encodeName(path(u"data"_s)));
}

void tst_removalObstacles::checkObstacle(
    const Report &report, RemovalAction action, const QString &reason, bool seenInPlan)
{
    const QStringList before = treeOf(path(u"files"_s)) + treeOf(path(u"disk"_s));
    const RemovalOutcome planned = carryOut(report, planning(action));
    QCOMPARE(planned.exitCode, seenInPlan ? ExitFailed : ExitDone);
    const RemovalOutcome outcome = carryOut(report, applying(action));
    QCOMPARE(outcome.exitCode, ExitFailed);
    QCOMPARE(outcome.refusals.size(), 1);
    QVERIFY2(outcome.refusals.first().contains(reason), qPrintable(outcome.refusals.first()));
    if (seenInPlan)
        QCOMPARE(planned.refusals, outcome.refusals);
    QCOMPARE(treeOf(path(u"files"_s)) + treeOf(path(u"disk"_s)), before);
}

void tst_removalObstacles::needsPermission_data()
{
    QTest::addColumn<QString>("locked");
    QTest::addColumn<bool>("onlyToLook");
    QTest::newRow("the candidate cannot be read") << u"files/b"_s << false;
    QTest::newRow("the kept file cannot be read") << u"files/a"_s << false;
    QTest::newRow("the folder cannot be entered") << u"files"_s << false;
    QTest::newRow("the folder cannot be changed") << u"files"_s << true;
}

void tst_removalObstacles::needsPermission()
{
#ifdef Q_OS_WIN
    QSKIP("Permissions have no effect here");
#endif
    QFETCH(const QString, locked);
    QFETCH(const bool, onlyToLook);
    const Report report = pairReport();
    allowAccess(m_folder->path());
    if (onlyToLook)
        allowReadingOnly(path(locked));
    else
        denyAccess(path(locked));
    RemovalOutcome planned;
    RemovalOutcome outcome;
    bool isRefused = false;
    {
        const UnprivilegedUser user;
        isRefused = !QFile(path(u"files/new"_s)).open(QFile::WriteOnly);
        planned = carryOut(report, planning(RemovalAction::Delete));
        outcome = carryOut(report, applying(RemovalAction::Delete));
    }
    allowAccess(path(locked));
    QCOMPARE(QDir(path(u"files"_s)).entryList(QDir::Files).contains(u"b"_s), true);
    if (!isRefused)
        QSKIP("Permissions have no effect here");
    QCOMPARE(planned.exitCode, ExitFailed);
    QCOMPARE(outcome.exitCode, ExitFailed);
    QCOMPARE(outcome.refusals, planned.refusals);
    QVERIFY2(outcome.refusals.first().endsWith(u"Permission denied"_s), qPrintable(outcome.refusals.first()));
}

void tst_removalObstacles::needsAChangeableFile()
{
    const ImmutableFile immutable(path(u"files/b"_s));
    if (!immutable.obstacle().isEmpty())
        QSKIP(qPrintable(immutable.obstacle()));
    for (const auto action : {RemovalAction::Delete, RemovalAction::HardLink, RemovalAction::Trash})
        checkObstacle(pairReport(), action, u"not permitted"_s, false);
}

void tst_removalObstacles::needsAWritableVolume_data()
{
    QTest::addColumn<RemovalAction>("action");
    QTest::newRow("delete") << RemovalAction::Delete;
    QTest::newRow("hard link") << RemovalAction::HardLink;
    QTest::newRow("trash") << RemovalAction::Trash;
}

void tst_removalObstacles::needsAWritableVolume()
{
    QFETCH(const RemovalAction, action);
    SmallDisk disk(path(u"disk"_s));
    if (!disk.obstacle().isEmpty())
        QSKIP(qPrintable(disk.obstacle()));
    writeFile(path(u"disk/a"_s), "content");
    writeFile(path(u"disk/b"_s), "content");
    QVERIFY(disk.makeReadOnly());
    checkObstacle(reportOf({groupOf({path(u"disk/a"_s), path(u"disk/b"_s)})}), action, u"Read-only"_s);
}

void tst_removalObstacles::needsOneVolume_data()
{
    QTest::addColumn<RemovalAction>("action");
    QTest::newRow("hard link") << RemovalAction::HardLink;
    QTest::newRow("reflink") << RemovalAction::Reflink;
}

void tst_removalObstacles::needsOneVolume()
{
    QFETCH(const RemovalAction, action);
    const SmallDisk disk(path(u"disk"_s));
    if (!disk.obstacle().isEmpty())
        QSKIP(qPrintable(disk.obstacle()));
    writeFile(path(u"disk/b"_s), "content");
    checkObstacle(reportOf({groupOf({path(u"files/a"_s), path(u"disk/b"_s)})}), action, u"another volume"_s);
}

void tst_removalObstacles::needsAFileSystemThatSharesBlocks()
{
    const SmallDisk disk(path(u"disk"_s));
    if (!disk.obstacle().isEmpty())
        QSKIP(qPrintable(disk.obstacle()));
    writeFile(path(u"disk/a"_s), "content");
    writeFile(path(u"disk/b"_s), "content");
    checkObstacle(reportOf({groupOf({path(u"disk/a"_s), path(u"disk/b"_s)})}), RemovalAction::Reflink,
        u"does not share blocks"_s);
}

/// Another program, such as a file server, may hold a lease on a file. The kernel asks it to release the
/// lease.
void tst_removalObstacles::waitsForALease()
{
#ifdef Q_OS_LINUX
    const int holder = ::open(QFile::encodeName(path(u"files/b"_s)).constData(), O_RDWR | O_CLOEXEC);
    QVERIFY(holder >= 0);
    // Its default is to end the process.
    ::signal(SIGIO, SIG_IGN);
    if (::fcntl(holder, F_SETLEASE, F_WRLCK) != 0) {
        ::close(holder);
        QSKIP("No leases here");
    }
    int asked = 0;
    const HeldFile held(path(u"files/b"_s), [&] {
        if (++asked == 3)
            ::close(holder);
        return false;
    });
    QVERIFY(!held.obstacle());
    QCOMPARE(asked, 3);
#else
    QSKIP("No leases here");
#endif
}

QTEST_GUILESS_MAIN(tst_removalObstacles)
#include "tst_removalObstacles.moc"
