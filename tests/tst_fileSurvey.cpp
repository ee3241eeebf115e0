#include "scan/FileSurvey.h"
#include "tests/support/Collecting.h"
#include "tests/support/HostileTree.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/TestFiles.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QMutex>
#include <QMutexLocker>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <memory>

using Qt::StringLiterals::operator""_s;

namespace {

/// A request for every file below \a folders that is not hidden.
SurveyRequest everything(const QStringList &folders)
{
    return {.folders = folders, .minSize = 0, .options = everyType()};
}

Survey surveyQuietly(const SurveyRequest &request)
{
    return surveyFiles(request, {.progress = [](qint64) {}, .abandoned = [] { return false; }});
}

QStringList pathsOf(const Survey &survey)
{
    QStringList paths;
    for (const SurveyedFile &file : survey.files)
        paths.append(file.path);
    return sorted(paths);
}

QStringList unreadablePathsOf(const Survey &survey)
{
    QStringList paths;
    for (const UnreadablePath &entry : survey.unreadable)
        paths.append(entry.path);
    return sorted(paths);
}

} // namespace

/// Which files a survey finds, and what it tells of them.
class tst_fileSurvey : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void tellsTheFactsOfAFile();
    void tellsOneIdentityForAllNamesOfAFile();
    void fallsBackToTheModificationTime();
    void beginsPathsWithTheFolderAsGiven_data();
    void beginsPathsWithTheFolderAsGiven();
    void findsAFileOncePerFolder();
    void followsALinkThatIsAFolderOfItsOwn();
    void followsNoOtherLinks();
    void findsNoSpecialFiles();
    void leavesHiddenEntriesOut_data();
    void leavesHiddenEntriesOut();
    void searchesAHiddenFolderThatIsNamed();
    void asksForEachEntryWhetherItIsExcluded();
    void entersNoExcludedFolder();
    void appliesSizeLimitsToBothEnds();
    void appliesFileTypes();
    void leavesTheDesktopOut();
    void ignoresTheHiddenRuleOfTheWindow();
    void reportsWhatItCannotRead();
    void reportsFoldersThatAreNone();
    void reportsPathsThatAreTooLong();
    void countsNamesThatAreNoText();
    void keepsEveryCharacterOfAName();
    void findsTheSameFilesWithAnyNumberOfThreads();
    void countsFilesInItsProgress();
    void endsWhenItIsAbandoned();

private:
    [[nodiscard]] QString path(const QString &name) const;
    [[nodiscard]] Survey surveyTree() const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_fileSurvey::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

QString tst_fileSurvey::path(const QString &name) const
{
    return m_folder->filePath(name);
}

Survey tst_fileSurvey::surveyTree() const
{
    return surveyQuietly(everything({m_folder->path()}));
}

void tst_fileSurvey::tellsTheFactsOfAFile()
{
    writeFile(path(u"a/b"_s), "123");
    setModificationTime(path(u"a/b"_s), 1000);

    const Survey survey = surveyTree();

    QCOMPARE(pathsOf(survey), QStringList{path(u"a/b"_s)});
    const SurveyedFile &file = survey.files.front();
    const QFileInfo facts(path(u"a/b"_s));
    QCOMPARE(file.size, 3);
    QCOMPARE(file.modified, facts.lastModified().toMSecsSinceEpoch());
    QCOMPARE(file.links, 1U);
    QCOMPARE(file.folder, 0);
    if (facts.birthTime().isValid())
        QCOMPARE(file.created, facts.birthTime().toMSecsSinceEpoch());
    QVERIFY(survey.unreadable.isEmpty());
}

void tst_fileSurvey::tellsOneIdentityForAllNamesOfAFile()
{
    writeFile(path(u"a"_s), "x");
    writeFile(path(u"z"_s), "x");
    if (!makeHardLink(path(u"a"_s), path(u"b"_s)))
        QSKIP("This file system knows no hard links");

    Survey survey = surveyTree();

    std::ranges::sort(survey.files, {}, &SurveyedFile::path);
    QCOMPARE(survey.files.size(), std::size_t(3));
    QVERIFY(survey.files[0].identity == survey.files[1].identity);
    QVERIFY(survey.files[0].identity != survey.files[2].identity);
    QVERIFY(survey.files[0].identity.inode != 0);
    QCOMPARE(survey.files[0].links, 2U);
    QCOMPARE(survey.files[1].links, 2U);
    QCOMPARE(survey.files[2].links, 1U);
}

void tst_fileSurvey::fallsBackToTheModificationTime()
{
    const QString folder = u"/proc/sys/kernel/random"_s;
    if (!QFileInfo::exists(folder) || QFileInfo(folder + u"/uuid"_s).birthTime().isValid())
        QSKIP("Every file has a creation time here");

    const Survey survey = surveyQuietly(everything({folder}));

    QVERIFY(!survey.files.empty());
    QCOMPARE(survey.files.front().created, survey.files.front().modified);
}

void tst_fileSurvey::beginsPathsWithTheFolderAsGiven_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("expected");
    QTest::newRow("relative") << u"folder"_s << u"folder/sub/file"_s;
    QTest::newRow("with a slash") << u"folder/"_s << u"folder/sub/file"_s;
    QTest::newRow("with dots") << u"./folder/../folder"_s << u"./folder/../folder/sub/file"_s;
}

void tst_fileSurvey::beginsPathsWithTheFolderAsGiven()
{
    QFETCH(const QString, folder);
    QFETCH(const QString, expected);
    writeFile(path(u"folder/sub/file"_s), "x");
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_folder->path()));

    const Survey survey = surveyQuietly(everything({folder}));

    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(pathsOf(survey), QStringList{expected});
}

void tst_fileSurvey::findsAFileOncePerFolder()
{
    writeFile(path(u"a/b/file"_s), "x");

    Survey survey = surveyQuietly(everything({path(u"a"_s), path(u"a/b"_s), path(u"a"_s)}));

    std::ranges::sort(survey.files, {}, &SurveyedFile::folder);
    QCOMPARE(survey.files.size(), std::size_t(3));
    for (qint32 folder = 0; folder < 3; ++folder) {
        QCOMPARE(survey.files[static_cast<std::size_t>(folder)].folder, folder);
        QCOMPARE(survey.files[static_cast<std::size_t>(folder)].path, path(u"a/b/file"_s));
    }
}

void tst_fileSurvey::followsALinkThatIsAFolderOfItsOwn()
{
    writeFile(path(u"target/file"_s), "x");
    if (!makeLink(path(u"target"_s), path(u"link"_s)))
        QSKIP("This file system knows no links");

    QCOMPARE(pathsOf(surveyQuietly(everything({path(u"link"_s)}))), QStringList{path(u"link/file"_s)});
}

void tst_fileSurvey::followsNoOtherLinks()
{
    writeFile(path(u"outside/file"_s), "x");
    QVERIFY(QDir().mkdir(path(u"inside"_s)));
    if (!makeLink(path(u"outside"_s), path(u"inside/folder"_s)))
        QSKIP("This file system knows no links");
    QVERIFY(makeLink(path(u"outside/file"_s), path(u"inside/file"_s)));
    QVERIFY(makeLink(u"nowhere"_s, path(u"inside/dangling"_s)));

    const Survey survey = surveyQuietly(everything({path(u"inside"_s)}));

    QVERIFY(survey.files.empty());
    QVERIFY(survey.unreadable.isEmpty());
}

void tst_fileSurvey::findsNoSpecialFiles()
{
    if (!makePipe(path(u"pipe"_s)))
        QSKIP("This file system knows no pipes");
    QVERIFY(makeSocket(path(u"socket"_s)));

    const Survey survey = surveyTree();

    QVERIFY(survey.files.empty());
    QVERIFY(survey.unreadable.isEmpty());
}

void tst_fileSurvey::leavesHiddenEntriesOut_data()
{
    QTest::addColumn<bool>("includeHidden");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("left out") << false << QStringList{u"shown"_s};
    QTest::newRow("included") << true << QStringList{u".folder/file"_s, u".hidden"_s, u"shown"_s};
}

void tst_fileSurvey::leavesHiddenEntriesOut()
{
    QFETCH(const bool, includeHidden);
    QFETCH(const QStringList, names);
    for (const QString &name : {u".folder/file"_s, u".hidden"_s, u"shown"_s})
        writeFile(path(name), "x");
    SurveyRequest request = everything({m_folder->path()});
    request.includeHidden = includeHidden;

    const Survey survey = surveyQuietly(request);

    QStringList expected;
    for (const QString &name : names)
        expected.append(path(name));
    QCOMPARE(pathsOf(survey), expected);
}

void tst_fileSurvey::searchesAHiddenFolderThatIsNamed()
{
    writeFile(path(u".folder/file"_s), "x");

    QCOMPARE(pathsOf(surveyQuietly(everything({path(u".folder"_s)}))), QStringList{path(u".folder/file"_s)});
}

void tst_fileSurvey::asksForEachEntryWhetherItIsExcluded()
{
    writeFile(path(u"a/file"_s), "x");
    QStringList asked;
    for (const QString &folder : {m_folder->path(), m_folder->path() + u'/'}) {
        SurveyRequest request = everything({folder});
        request.excluded = [&asked](QStringView name, QStringView below) {
            asked.append(u"%1 %2"_s.arg(name, below));
            return false;
        };
        QCOMPARE(surveyQuietly(request).files.size(), std::size_t(1));
    }

    QCOMPARE(asked, (QStringList{u"a a"_s, u"file a/file"_s, u"a a"_s, u"file a/file"_s}));
}

void tst_fileSurvey::entersNoExcludedFolder()
{
    writeFile(path(u"a/file"_s), "x");
    writeFile(path(u"b/a"_s), "x");
    writeFile(path(u"b/file"_s), "x");
    SurveyRequest request = everything({m_folder->path()});
    request.excluded = [](QStringView name, QStringView below) {
        if (below.startsWith(u"a/"))
            qFatal("An excluded folder was entered");
        return name == u"a";
    };

    QCOMPARE(pathsOf(surveyQuietly(request)), QStringList{path(u"b/file"_s)});
}

void tst_fileSurvey::appliesSizeLimitsToBothEnds()
{
    for (int size = 0; size < 6; ++size)
        writeFile(path(QString::number(size)), QByteArray(size, 'x'));
    SurveyRequest request = everything({m_folder->path()});
    request.minSize = 2;
    request.maxSize = 4;

    QCOMPARE(pathsOf(surveyQuietly(request)), (QStringList{path(u"2"_s), path(u"3"_s), path(u"4"_s)}));
}

void tst_fileSurvey::appliesFileTypes()
{
    for (const QString &name : {u"a.JPG"_s, u"a.mp3"_s, u"a.zip"_s, u"jpg"_s, u"a.jpg/b"_s})
        writeFile(path(name), "x");
    SurveyRequest request = everything({m_folder->path()});
    request.options.fileTypes = QStringList{u"picture"_s, u"archive"_s};

    QCOMPARE(pathsOf(surveyQuietly(request)), (QStringList{path(u"a.JPG"_s), path(u"a.zip"_s)}));
}

void tst_fileSurvey::leavesTheDesktopOut()
{
    const QString home = QDir(m_folder->path()).canonicalPath();
    // The tests run in a process of their own, which needs no real home.
    qputenv("HOME", home.toUtf8());
    qputenv("XDG_CONFIG_HOME", home.toUtf8());
    if (QStandardPaths::writableLocation(QStandardPaths::DesktopLocation) != home + u"/Desktop"_s)
        QSKIP("The desktop cannot be moved");
    writeFile(home + u"/Desktop/sub/file"_s, "x");
    writeFile(home + u"/other"_s, "x");
    SurveyRequest request = everything({home});
    QCOMPARE(surveyQuietly(request).files.size(), std::size_t(2));

    request.options.skipDesktop = true;

    QCOMPARE(pathsOf(surveyQuietly(request)), QStringList{home + u"/other"_s});
}

void tst_fileSurvey::ignoresTheHiddenRuleOfTheWindow()
{
    writeFile(path(u".hidden"_s), "x");
    SurveyRequest request = everything({m_folder->path()});
    request.includeHidden = true;
    request.options.skipHiddenFolders = true;

    QCOMPARE(pathsOf(surveyQuietly(request)), QStringList{path(u".hidden"_s)});
}

void tst_fileSurvey::reportsWhatItCannotRead()
{
    writeFile(path(u"closed/file"_s), "x");
    writeFile(path(u"listed/file"_s), "x");
    writeFile(path(u"open/file"_s), "x");
    letEverybodyIn(m_folder->path());
    letEverybodyIn(path(u"open"_s));
    letNobodyIn(path(u"closed"_s));
    QVERIFY(QFile::setPermissions(path(u"listed"_s), QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
    Survey survey;
    {
        const OrdinaryUser user;
        if (QFile(path(u"closed/file"_s)).open(QIODevice::ReadOnly))
            QSKIP("This user reads everything");
        survey = surveyTree();
    }
    letEverybodyIn(path(u"closed"_s));
    letEverybodyIn(path(u"listed"_s));

    QCOMPARE(pathsOf(survey), QStringList{path(u"open/file"_s)});
    // A folder that may be listed and not searched does not tell what its files are.
    QCOMPARE(unreadablePathsOf(survey), (QStringList{path(u"closed"_s), path(u"listed/file"_s)}));
    for (const UnreadablePath &entry : std::as_const(survey.unreadable))
        QCOMPARE(entry.reason, qt_error_string(EACCES));
}

void tst_fileSurvey::reportsFoldersThatAreNone()
{
    writeFile(path(u"file"_s), "x");

    const Survey survey = surveyQuietly(everything({path(u"nowhere"_s), path(u"file"_s)}));

    QVERIFY(survey.files.empty());
    QCOMPARE(unreadablePathsOf(survey), (QStringList{path(u"file"_s), path(u"nowhere"_s)}));
    for (const UnreadablePath &entry : survey.unreadable)
        QVERIFY(!entry.reason.isEmpty());
}

void tst_fileSurvey::reportsPathsThatAreTooLong()
{
    const HostileTree tree;
    if (!writeDeepFile(tree.path(), 30, QByteArray(200, 'd'), "file", "x"))
        QSKIP("This file system has no long paths");

    const Survey survey = surveyQuietly(everything({tree.path()}));

    QVERIFY(survey.files.empty());
    QCOMPARE(survey.unreadable.size(), 1);
    QVERIFY(survey.unreadable.first().path.size() > 3900);
    QVERIFY(!survey.unreadable.first().reason.isEmpty());
}

void tst_fileSurvey::countsNamesThatAreNoText()
{
    const HostileTree tree;
    writeFile(tree.path(u"file"_s), "x");
    if (!writeFileWithRawName(tree.path(), "caf\xE9", "x"))
        QSKIP("This file system takes text only");
    QVERIFY(makeFolderWithRawName(tree.path(), "folder\xE9"));

    const Survey survey = surveyQuietly(everything({tree.path()}));

    QCOMPARE(pathsOf(survey), QStringList{tree.path(u"file"_s)});
    QCOMPARE(survey.undecodableNames, 2);
    QVERIFY(survey.unreadable.isEmpty());
}

void tst_fileSurvey::keepsEveryCharacterOfAName()
{
    QStringList expected;
    for (const HostileName &hostile : hostileNames()) {
        writeFile(path(u"folder/"_s + hostile.name), "x");
        expected.append(path(u"folder/"_s + hostile.name));
    }

    QCOMPARE(pathsOf(surveyTree()), sorted(expected));
}

void tst_fileSurvey::findsTheSameFilesWithAnyNumberOfThreads()
{
    QRandomGenerator random(1);
    QStringList folders{m_folder->path()};
    for (int i = 0; i < 500; ++i) {
        const QString entry =
            folders.at(random.bounded(static_cast<int>(folders.size()))) + u'/' + QString::number(i);
        if (random.bounded(3) == 0) {
            QVERIFY(QDir().mkdir(entry));
            folders.append(entry);
        } else {
            writeFile(entry, "x");
        }
    }
    QStringList expected;
    QDirIterator walk(m_folder->path(), QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext())
        expected.append(walk.next());

    for (const int threads : {0, 1, 2, 8}) {
        SurveyRequest request = everything({m_folder->path()});
        request.threads = threads;
        QCOMPARE(pathsOf(surveyQuietly(request)), sorted(expected));
    }
}

void tst_fileSurvey::countsFilesInItsProgress()
{
    writeEmptyFiles(m_folder->path(), 1000, u"txt"_s);
    QMutex mutex;
    QList<qint64> counts;
    const SurveyCallbacks callbacks{
        .progress =
            [&](qint64 files) {
                const QMutexLocker lock(&mutex);
                counts.append(files);
            },
        .abandoned = [] { return false; },
    };

    const Survey survey = surveyFiles(everything({m_folder->path()}), callbacks);

    QCOMPARE(survey.files.size(), std::size_t(1000));
    QVERIFY(counts.size() > 1);
    QCOMPARE(*std::ranges::max_element(counts), 1000);
}

void tst_fileSurvey::endsWhenItIsAbandoned()
{
    writeEmptyFiles(m_folder->path(), 1000, u"txt"_s);
    std::atomic<int> asked = 0;
    const SurveyCallbacks callbacks{
        .progress = [](qint64) {},
        .abandoned = [&asked] { return ++asked > 20; },
    };

    const Survey survey = surveyFiles(everything({m_folder->path()}), callbacks);

    QVERIFY(!survey.files.empty());
    QVERIFY(survey.files.size() <= 20);
}

QTEST_GUILESS_MAIN(tst_fileSurvey)
#include "tst_fileSurvey.moc"
