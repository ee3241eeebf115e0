#include "scan/SkipRules.h"
#include "tests/support/CollectedFiles.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using Qt::StringLiterals::operator""_s;

/// Which locations a scan leaves out on request.
class tst_skipRules : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void skipsProtectedLocations_data();
    void skipsProtectedLocations();
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
    return QStandardPaths::writableLocation(QStandardPaths::DesktopLocation) == path(u"Desktop"_s);
}

void tst_skipRules::skipsProtectedLocations_data()
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

void tst_skipRules::skipsProtectedLocations()
{
    QFETCH(const QString, rule);
    QFETCH(const QString, path);
    const bool all = rule == u"all";
    ScanOptions options = everyType();
    options.skipSystem = all || rule == u"system";
    options.skipApps = all || rule == u"apps";
    options.skipDesktop = all || rule == u"desktop";
    options.skipHiddenFolders = all || rule == u"hidden";
    QTEST(isSkippedLocation(path, skippedLocations(options, u"/home/me/Desktop"_s)), "skipped");
}

void tst_skipRules::skipsTheDesktop()
{
    if (!redirectDesktop())
        QSKIP("The desktop folder cannot be redirected here");
    writeFile(path(u"Desktop/1.jpg"_s), "on it");
    writeFile(path(u"Desktop/sub/2.jpg"_s), "below it");
    writeFile(path(u"Documents/Desktop/3.jpg"_s), "only named like it");
    writeFile(path(u"4.jpg"_s), "beside it");
    writeFile(path(u"Desk.jpg"_s), "beside it, with a part of its name");
    writeFile(path(u"DESKTOP of old.jpg"_s), "beside it, beginning with its name");
    writeFile(path(u"Desktop of old/5.jpg"_s), "in a folder that begins with its name");
    const QStringList beside{path(u"4.jpg"_s), path(u"Desk.jpg"_s), path(u"Documents/Desktop/3.jpg"_s)};
    const QStringList below{path(u"Desktop/1.jpg"_s), path(u"Desktop/sub/2.jpg"_s),
        path(u"DESKTOP of old.jpg"_s), path(u"Desktop of old/5.jpg"_s)};

    ScanOptions options = everyType();
    QCOMPARE(sorted(collect({m_home}, options)), sorted(beside + below));
    options.skipSystem = true;
    options.skipApps = true;
    options.skipHiddenFolders = true;
    QCOMPARE(sorted(collect({m_home}, options)), sorted(beside + below));
    options = everyType();
    options.skipDesktop = true;
    QCOMPARE(sorted(collect({m_home}, options)), beside);
    QCOMPARE(collect({path(u"Desktop"_s), path(u"Desktop/sub"_s)}, options), QStringList());
}

void tst_skipRules::resolvesLinksToTheDesktop()
{
    if (!redirectDesktop())
        QSKIP("The desktop folder cannot be redirected here");
    writeFile(path(u"Desktop/1.jpg"_s), "on it");
    writeFile(path(u"elsewhere/sub/2.jpg"_s), "far from it");
    const QString toDesktop = path(u"link to desktop"_s);
    const QString toElsewhere = path(u"Desktop/link to elsewhere"_s);
    if (!makeLink(path(u"Desktop"_s), toDesktop) || !makeLink(path(u"elsewhere"_s), toElsewhere))
        QSKIP("There are no symbolic links here");

    ScanOptions options = everyType();
    options.skipDesktop = true;
    const QString roundabout = path(u"elsewhere/../Desktop"_s);
    const QString found = toElsewhere + u"/sub/2.jpg"_s;
    QCOMPARE(collect({toDesktop, roundabout, toElsewhere}, options), QStringList{found});
    // The walk also begins in the folder that contains the link.
    const QString direct = path(u"elsewhere/sub/2.jpg"_s);
    QCOMPARE(collect({m_home, toElsewhere}, options), (QStringList{direct, found}));
    QCOMPARE(collect({m_home + u'/', toElsewhere + u'/'}, options), (QStringList{direct, found}));
}

void tst_skipRules::ignoresTheCaseOfFoldersAroundTheDesktop()
{
    redirectDesktop();
    writeFile(path(u"user-dirs.dirs"_s), "XDG_DESKTOP_DIR=\"$HOME/PLACES/Desktop\"\n");
    if (QStandardPaths::writableLocation(QStandardPaths::DesktopLocation) != path(u"PLACES/Desktop"_s))
        QSKIP("The desktop folder cannot be redirected here");
    writeFile(path(u"places/desktop/1.jpg"_s), "on it");
    writeFile(path(u"places/desktop.jpg"_s), "beside it, beginning with its name");
    writeFile(path(u"places/desk.jpg"_s), "beside it");
    ScanOptions options = everyType();
    options.skipDesktop = true;
    QCOMPARE(collect({path(u"places"_s)}, options), QStringList{path(u"places/desk.jpg"_s)});
}

void tst_skipRules::doesNotCountSkippedFiles()
{
    if (!redirectDesktop())
        QSKIP("The desktop folder cannot be redirected here");
    writeFile(path(u"Desktop/1.jpg"_s), "on it");
    writeFile(path(u"Desktop/2.jpg"_s), "on it");
    writeFile(path(u"3.jpg"_s), "beside it");
    writeFile(path(u"4.txt"_s), "beside it, of another type");
    ScanOptions options = everyType();
    options.skipDesktop = true;
    options.fileTypes = {u"picture"_s};
    QCOMPARE(collect({m_home}, options), QStringList{path(u"3.jpg"_s)});
    QCOMPARE(scannedFileCount.load(), 2);
    QCOMPARE(acceptedFileCount.load(), 1);
}

QTEST_GUILESS_MAIN(tst_skipRules)
#include "tst_skipRules.moc"
