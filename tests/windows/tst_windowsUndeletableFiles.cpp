#include "tests/support/TestFiles.h"
#include "tests/support/WindowDriver.h"
#include "tests/windows/WindowsFiles.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <optional>

/// Files that Windows refuses to delete are kept and counted as failed.
class tst_windowsUndeletableFiles : public QObject
{
    Q_OBJECT

private slots:
    void keepsTheFileAndCountsAFailure_data();
    void keepsTheFileAndCountsAFailure();
    void skipsAFileThatIsOpenWithoutSharing();
};

namespace {

enum class Obstacle { ReadOnly, OpenWithoutSharing, OpenForReaders };

/// Prevents the deletion of a file during its lifetime.
class Obstruction
{
public:
    Obstruction(const QString &path, Obstacle obstacle)
        : m_path(path)
    {
        if (obstacle == Obstacle::ReadOnly)
            setReadOnly(path, true);
        else
            m_open.emplace(path, obstacle == Obstacle::OpenForReaders ? Sharing::Reading : Sharing::Nothing);
    }
    ~Obstruction()
    {
        m_open.reset();
        setReadOnly(m_path, false);
    }
    Q_DISABLE_COPY_MOVE(Obstruction)

private:
    QString m_path;
    std::optional<OpenFile> m_open;
};

} // namespace

void tst_windowsUndeletableFiles::keepsTheFileAndCountsAFailure_data()
{
    QTest::addColumn<Obstacle>("obstacle");

    QTest::newRow("read-only attribute") << Obstacle::ReadOnly;
    QTest::newRow("open in another program without sharing") << Obstacle::OpenWithoutSharing;
    QTest::newRow("open in another program, shared for reading") << Obstacle::OpenForReaders;
}

void tst_windowsUndeletableFiles::keepsTheFileAndCountsAFailure()
{
    QFETCH(const Obstacle, obstacle);
    const QTemporaryDir folder;
    writeFile(folder.filePath(QStringLiteral("stuck.txt")), "stuck");
    writeFile(folder.filePath(QStringLiteral("copy of stuck.txt")), "stuck");
    writeFile(folder.filePath(QStringLiteral("free.txt")), "free content");
    writeFile(folder.filePath(QStringLiteral("copy of free.txt")), "free content");

    WindowDriver driver;
    driver.setFolders({folder.path()});
    QVERIFY(driver.scan());
    const QStringList marked = driver.checkedPaths();
    QCOMPARE(marked.size(), 2);
    const QString stuck = marked.filter(QStringLiteral("stuck")).constFirst();
    const QString free = marked.filter(QStringLiteral("free")).constFirst();

    const Obstruction obstruction(stuck, obstacle);
    QCOMPARE(driver.clickAndCloseBoxes("btnRemoveSelected"),
        (QList<ShownBox>{{QStringLiteral("Deletion Complete"),
            QStringLiteral("Deleted 1 files successfully, 1 files failed.")}}));
    QVERIFY(QFile::exists(stuck));
    QVERIFY(!QFile::exists(free));
}

void tst_windowsUndeletableFiles::skipsAFileThatIsOpenWithoutSharing()
{
    const QTemporaryDir folder;
    const QString open = folder.filePath(QStringLiteral("open.txt"));
    writeFile(open, "the same");
    writeFile(folder.filePath(QStringLiteral("first.txt")), "the same");
    writeFile(folder.filePath(QStringLiteral("second.txt")), "the same");
    const OpenFile held(open, Sharing::Nothing);

    WindowDriver driver;
    driver.setFolders({folder.path()});
    QVERIFY(driver.scan());

    const QStringList shown = driver.filePaths();
    QCOMPARE(shown.size(), 2);
    QVERIFY(!shown.contains(open));
}

QTEST_MAIN(tst_windowsUndeletableFiles)
#include "tst_windowsUndeletableFiles.moc"
