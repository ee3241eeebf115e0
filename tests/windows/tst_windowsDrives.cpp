#include "tests/support/TestFiles.h"
#include "tests/support/WindowDriver.h"
#include "tests/windows/WindowsFiles.h"

#include <QCheckBox>
#include <QDialog>
#include <QDir>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

/// Drives as folders to scan, and the rules that skip the folders of Windows.
class tst_windowsDrives : public QObject
{
    Q_OBJECT

private slots:
    void listsTheRoots();
    void listsTheSecondDrive();
    void skipsTheFolderOfARule_data();
    void skipsTheFolderOfARule();
    void skipsTheWindowsFolderInAScanOfTheDrive_data();
    void skipsTheWindowsFolderInAScanOfTheDrive();
};

namespace {

/// Checks only the skip rule with this check box in the options dialog, or none.
void chooseSkipRule(WindowDriver &driver, const QString &ruleBox)
{
    withModalDialogs([&driver] { driver.click("btnScanOptions"); },
        [&ruleBox](QWidget *dialog) {
            const QList<QCheckBox *> boxes = dialog->findChildren<QCheckBox *>();
            for (QCheckBox *box : boxes) {
                if (box->objectName().startsWith(u"chkSkip"))
                    box->setChecked(box->objectName() == ruleBox);
            }
            dialog->findChild<QPushButton *>(QStringLiteral("btnOkScanOptions"))->click();
        });
}

/// Writes two equal archives to a new folder below \a parent; invalid if Windows denies access.
class PlantedPair
{
public:
    explicit PlantedPair(const QString &parent)
        : m_folder(parent + QStringLiteral("/quillory-test-XXXXXX"))
    {
        if (!m_folder.isValid())
            return;
        const QByteArray content = m_folder.path().toUtf8();
        writeFile(m_folder.filePath(QStringLiteral("one.zip")), content);
        writeFile(m_folder.filePath(QStringLiteral("two.zip")), content);
    }

    [[nodiscard]] bool isValid() const
    {
        return m_folder.isValid();
    }
    [[nodiscard]] QString folder() const
    {
        return m_folder.path();
    }
    /// Number of \a paths that belong to the pair.
    [[nodiscard]] qsizetype countIn(const QStringList &paths) const
    {
        return std::count_if(paths.cbegin(), paths.cend(), [this](const QString &path) {
            return path.startsWith(m_folder.path() + u'/', Qt::CaseInsensitive);
        });
    }

private:
    QTemporaryDir m_folder;
};

} // namespace

void tst_windowsDrives::listsTheRoots()
{
    WindowDriver driver;
    const QStringList folders = driver.folders();
    QVERIFY(folders.contains(QStringLiteral("C:/")));
    for (const QString &folder : folders) {
        const bool isDriveRoot = folder.size() == 3 && folder.at(0).isUpper() && folder.endsWith(u":/");
        const bool isMountedFolder = QStorageInfo(folder).rootPath() == folder;
        QVERIFY2(isDriveRoot || isMountedFolder, qPrintable(folder));
    }
}

void tst_windowsDrives::listsTheSecondDrive()
{
    const QString drive = qEnvironmentVariable("QUILLORY_TEST_SECOND_DRIVE");
    if (drive.isEmpty())
        QSKIP("QUILLORY_TEST_SECOND_DRIVE is not set to a second drive, such as D:/");
    WindowDriver driver;
    QVERIFY(driver.folders().contains(drive));
}

void tst_windowsDrives::skipsTheFolderOfARule_data()
{
    QTest::addColumn<QString>("parent");
    QTest::addColumn<QString>("rule");
    QTest::addColumn<bool>("skipped");

    const QString windows = QStringLiteral("C:/Windows/Temp");
    const QString programs = QStringLiteral("C:/Program Files");
    const QString oldPrograms = QStringLiteral("C:/Program Files (x86)");
    const QString desktop = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    const QString skipSystem = QStringLiteral("chkSkipSystem");
    const QString skipApps = QStringLiteral("chkSkipApps");
    const QString skipDesktop = QStringLiteral("chkSkipDesktop");
    QTest::newRow("system folder") << windows << skipSystem << true;
    QTest::newRow("system folder in capitals") << windows.toUpper() << skipSystem << true;
    QTest::newRow("system folder without the rule") << windows << skipApps << false;
    QTest::newRow("applications") << programs << skipApps << true;
    QTest::newRow("32-bit applications") << oldPrograms << skipApps << true;
    QTest::newRow("applications without the rule") << programs << skipSystem << false;
    QTest::newRow("desktop") << desktop << skipDesktop << true;
    QTest::newRow("desktop without the rule") << desktop << skipSystem << false;
}

void tst_windowsDrives::skipsTheFolderOfARule()
{
    QFETCH(const QString, parent);
    QFETCH(const QString, rule);
    QFETCH(const bool, skipped);
    const PlantedPair inside(parent);
    const PlantedPair outside(QDir::tempPath());
    if (!inside.isValid())
        QSKIP("Only administrators may write to this folder");

    WindowDriver driver;
    driver.setFolders({inside.folder(), outside.folder()});
    chooseSkipRule(driver, rule);
    QVERIFY(driver.scan());
    QCOMPARE(inside.countIn(driver.filePaths()), skipped ? 0 : 2);
    QCOMPARE(outside.countIn(driver.filePaths()), 2);
}

void tst_windowsDrives::skipsTheWindowsFolderInAScanOfTheDrive_data()
{
    QTest::addColumn<QString>("rule");
    QTest::addColumn<bool>("skipped");

    QTest::newRow("rule on") << QStringLiteral("chkSkipSystem") << true;
    QTest::newRow("rule off") << QString() << false;
}

void tst_windowsDrives::skipsTheWindowsFolderInAScanOfTheDrive()
{
    if (!runsUnderWine() && qEnvironmentVariableIsEmpty("QUILLORY_TEST_WHOLE_DRIVE"))
        QSKIP("Scanning a real system drive takes minutes; set QUILLORY_TEST_WHOLE_DRIVE=1 to do it");
    QFETCH(const QString, rule);
    QFETCH(const bool, skipped);
    const PlantedPair inside(QStringLiteral("C:/Windows/Temp"));
    const PlantedPair outside(QDir::tempPath());
    QVERIFY(inside.isValid());

    WindowDriver driver;
    driver.setFolders({QStringLiteral("C:/")});
    chooseSkipRule(driver, rule);
    constexpr int halfAnHour = 30 * 60'000;
    QVERIFY(driver.scan(halfAnHour));
    driver.click("btnArchives");
    QTRY_COMPARE(outside.countIn(driver.filePaths()), 2);
    QCOMPARE(inside.countIn(driver.filePaths()), skipped ? 0 : 2);
}

QTEST_MAIN(tst_windowsDrives)
#include "tst_windowsDrives.moc"
