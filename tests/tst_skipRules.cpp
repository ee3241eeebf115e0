#include "scan/SkipRules.h"
#include "tests/support/CollectedFiles.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

/// Which locations a scan leaves out on request.
class tst_skipRules : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void skipsProtectedPlaces_data();
    void skipsProtectedPlaces();
    void skipsTheDesktop();
    void resolvesLinksToTheDesktop();
    void ignoresTheCaseOfFoldersAroundTheDesktop();
    void doesNotCountSkippedFiles();

private:
    [[nodiscard]] QString path(const QString &name) const;
    /// Makes a folder below m_home the user's desktop. Returns false if that is not possible.
    bool redirectDesktop();

    std::unique_ptr<QTemporaryDir> m_folder;
    /// Resolved, because the folder for temporary files may be behind a link.
    QString m_home;
};

void tst_skipRules::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    m_home = QDir(m_folder->path()).canonicalPath();
}

QString tst_skipRules::path(const QString &name) const
{
    return m_home + u'/' + name;
}

bool tst_skipRules::redirectDesktop()
{
    // No other test runs in this process, so the real home is not needed.
    qputenv("HOME", m_home.toUtf8());
    qputenv("XDG_CONFIG_HOME", m_home.toUtf8());
    return QStandardPaths::writableLocation(QStandardPaths::DesktopLocation) ==
           path(QStringLiteral("Desktop"));
}

void tst_skipRules::skipsProtectedPlaces_data()
{
    QTest::addColumn<QString>("rule");
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("skipped");

    const auto row = [](const char *rule, const char *path, bool skipped) {
        QTest::addRow("%s: %s", rule, path)
            << QString::fromLatin1(rule) << QString::fromLatin1(path) << skipped;
    };
    row("system", "C:/Windows/System32/a.dll", true);
    row("system", "c:/windows/System32/a.dll", true);
    row("system", "C:/WINDOWS", true);
    row("system", "C:/WindowsApps/x.jpg", true);
    row("system", "C:/Windo/x.jpg", false);
    row("system", "D:/Windows/x.jpg", false);
    row("system", "/C:/Windows/x.jpg", false);
    row("system", "/home/C:/Windows/x.jpg", false);
    row("system", "C:\\Windows\\x.jpg", false);
    row("system", "C:/Program Files/x.jpg", false);
    row("system", "/home/me/Desktop/x.jpg", false);

    row("apps", "C:/Program Files/App/x.jpg", true);
    row("apps", "c:/PROGRAM files/App/x.jpg", true);
    row("apps", "C:/Program Files (x86)/App/x.jpg", true);
    row("apps", "C:/Program FilesX/x.jpg", true);
    row("apps", "C:/Program/x.jpg", false);
    row("apps", "C:/ProgramData/x.jpg", false);
    row("apps", "D:/Program Files/x.jpg", false);
    row("apps", "C:/Windows/x.jpg", false);
    row("apps", "/home/me/Desktop/x.jpg", false);

    row("desktop", "/home/me/Desktop/x.jpg", true);
    row("desktop", "/home/me/Desktop/sub/x.jpg", true);
    row("desktop", "/HOME/Me/desktop/x.jpg", true);
    row("desktop", "/home/me/Desktop of old/x.jpg", true);
    row("desktop", "/home/me/Documents/x.jpg", false);
    row("desktop", "/home/me/x.jpg", false);
    row("desktop", "/mnt/home/me/Desktop/x.jpg", false);
    row("desktop", "C:/Windows/x.jpg", false);

    row("hidden", "C:/Windows/x.jpg", false);
    row("hidden", "C:/Program Files/x.jpg", false);
    row("hidden", "/home/me/Desktop/x.jpg", false);

    row("none", "C:/Windows/x.jpg", false);
    row("none", "/home/me/Desktop/x.jpg", false);
    row("all", "C:/Windows/x.jpg", true);
    row("all", "C:/Program Files/x.jpg", true);
    row("all", "/home/me/Desktop/x.jpg", true);
    row("all", "/home/me/x.jpg", false);
    // No rule protects a file of unknown location.
    row("all", "", false);
}

void tst_skipRules::skipsProtectedPlaces()
{
    QFETCH(const QString, rule);
    QFETCH(const QString, path);
    const bool all = rule == u"all";
    ScanOptions options = everyType();
    options.skipSystem = all || rule == u"system";
    options.skipApps = all || rule == u"apps";
    options.skipDesktop = all || rule == u"desktop";
    options.skipHiddenFolders = all || rule == u"hidden";
    QTEST(isSkippedLocation(path, skippedLocations(options, QStringLiteral("/home/me/Desktop"))), "skipped");
}

void tst_skipRules::skipsTheDesktop()
{
    if (!redirectDesktop())
        QSKIP("The desktop cannot be moved here");
    writeFile(path(QStringLiteral("Desktop/1.jpg")), "on it");
    writeFile(path(QStringLiteral("Desktop/sub/2.jpg")), "below it");
    writeFile(path(QStringLiteral("Documents/Desktop/3.jpg")), "only named like it");
    writeFile(path(QStringLiteral("4.jpg")), "beside it");
    writeFile(path(QStringLiteral("Desk.jpg")), "beside it, with a part of its name");
    writeFile(path(QStringLiteral("DESKTOP of old.jpg")), "beside it, beginning with its name");
    writeFile(path(QStringLiteral("Desktop of old/5.jpg")), "in a folder that begins with its name");
    const QStringList beside{path(QStringLiteral("4.jpg")), path(QStringLiteral("Desk.jpg")),
        path(QStringLiteral("Documents/Desktop/3.jpg"))};
    const QStringList below{path(QStringLiteral("Desktop/1.jpg")), path(QStringLiteral("Desktop/sub/2.jpg")),
        path(QStringLiteral("DESKTOP of old.jpg")), path(QStringLiteral("Desktop of old/5.jpg"))};

    ScanOptions options = everyType();
    QCOMPARE(sorted(collect({m_home}, options)), sorted(beside + below));
    options.skipSystem = true;
    options.skipApps = true;
    options.skipHiddenFolders = true;
    QCOMPARE(sorted(collect({m_home}, options)), sorted(beside + below));
    options = everyType();
    options.skipDesktop = true;
    QCOMPARE(sorted(collect({m_home}, options)), beside);
    QCOMPARE(collect({path(QStringLiteral("Desktop")), path(QStringLiteral("Desktop/sub"))}, options),
        QStringList());
}

void tst_skipRules::resolvesLinksToTheDesktop()
{
    if (!redirectDesktop())
        QSKIP("The desktop cannot be moved here");
    writeFile(path(QStringLiteral("Desktop/1.jpg")), "on it");
    writeFile(path(QStringLiteral("elsewhere/sub/2.jpg")), "far from it");
    const QString toDesktop = path(QStringLiteral("link to desktop"));
    const QString toElsewhere = path(QStringLiteral("Desktop/link to elsewhere"));
    if (!makeLink(path(QStringLiteral("Desktop")), toDesktop) ||
        !makeLink(path(QStringLiteral("elsewhere")), toElsewhere))
        QSKIP("There are no symbolic links here");

    ScanOptions options = everyType();
    options.skipDesktop = true;
    const QString roundabout = path(QStringLiteral("elsewhere/../Desktop"));
    const QString found = toElsewhere + QStringLiteral("/sub/2.jpg");
    QCOMPARE(collect({toDesktop, roundabout, toElsewhere}, options), QStringList{found});
    // The walk also begins in the folder that contains the link.
    const QString direct = path(QStringLiteral("elsewhere/sub/2.jpg"));
    QCOMPARE(collect({m_home, toElsewhere}, options), (QStringList{direct, found}));
    QCOMPARE(collect({m_home + u'/', toElsewhere + u'/'}, options), (QStringList{direct, found}));
}

void tst_skipRules::ignoresTheCaseOfFoldersAroundTheDesktop()
{
    redirectDesktop();
    writeFile(path(QStringLiteral("user-dirs.dirs")), "XDG_DESKTOP_DIR=\"$HOME/PLACES/Desktop\"\n");
    if (QStandardPaths::writableLocation(QStandardPaths::DesktopLocation) !=
        path(QStringLiteral("PLACES/Desktop")))
        QSKIP("The desktop cannot be moved here");
    writeFile(path(QStringLiteral("places/desktop/1.jpg")), "on it");
    writeFile(path(QStringLiteral("places/desktop.jpg")), "beside it, beginning with its name");
    writeFile(path(QStringLiteral("places/desk.jpg")), "beside it");
    ScanOptions options = everyType();
    options.skipDesktop = true;
    QCOMPARE(collect({path(QStringLiteral("places"))}, options),
        QStringList{path(QStringLiteral("places/desk.jpg"))});
}

void tst_skipRules::doesNotCountSkippedFiles()
{
    if (!redirectDesktop())
        QSKIP("The desktop cannot be moved here");
    writeFile(path(QStringLiteral("Desktop/1.jpg")), "on it");
    writeFile(path(QStringLiteral("Desktop/2.jpg")), "on it");
    writeFile(path(QStringLiteral("3.jpg")), "beside it");
    writeFile(path(QStringLiteral("4.txt")), "beside it, of another type");
    ScanOptions options = everyType();
    options.skipDesktop = true;
    options.fileTypes = {QStringLiteral("picture")};
    QCOMPARE(collect({m_home}, options), QStringList{path(QStringLiteral("3.jpg"))});
    QCOMPARE(scannedFileCount.load(), 2);
    QCOMPARE(acceptedFileCount.load(), 1);
}

QTEST_GUILESS_MAIN(tst_skipRules)
#include "tst_skipRules.moc"
