#include "scan/FileNames.h"
#include "scan/FileSurvey.h"
#include "tests/support/HostileTree.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/SurveyedFiles.h"
#include "tests/support/TestFiles.h"
#include "tests/support/UnprivilegedUser.h"

#include <QDir>
#include <QDirIterator>
#include <QMutex>
#include <QMutexLocker>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <memory>

using Qt::StringLiterals::operator""_s;

/// Which folders a survey reads, what it reports, and how it ends.
class tst_surveyedFolders : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void followsAListedLink();
    void followsNoOtherLinks();
    void findsNoSpecialFiles();
    void skipsHiddenEntries_data();
    void skipsHiddenEntries();
    void searchesAGivenHiddenFolder();
    void reportsUnreadableEntries();
    void reportsPathsThatAreNotFolders();
    void reportsPathsThatAreTooLong();
    void countsUndecodableNames();
    void keepsEveryCharacterOfAName();
    void findsTheSameFilesWithAnyNumberOfThreads();
    void countsFilesInItsProgress();
    void endsWhenAbandoned();

private:
    [[nodiscard]] QString path(const QString &name) const;
    [[nodiscard]] Survey surveyTree() const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_surveyedFolders::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

QString tst_surveyedFolders::path(const QString &name) const
{
    return m_folder->filePath(name);
}

Survey tst_surveyedFolders::surveyTree() const
{
    return surveyQuietly(everything({m_folder->path()}));
}

void tst_surveyedFolders::followsAListedLink()
{
    writeFile(path(u"target/file"_s), "x");
    if (!makeLink(path(u"target"_s), path(u"link"_s)))
        QSKIP("There are no symbolic links here");

    QCOMPARE(pathsOf(surveyQuietly(everything({path(u"link"_s)}))), QStringList{path(u"link/file"_s)});
}

void tst_surveyedFolders::followsNoOtherLinks()
{
    writeFile(path(u"outside/file"_s), "x");
    QVERIFY(QDir().mkdir(path(u"inside"_s)));
    if (!makeLink(path(u"outside"_s), path(u"inside/folder"_s)))
        QSKIP("There are no symbolic links here");
    QVERIFY(makeLink(path(u"outside/file"_s), path(u"inside/file"_s)));
    QVERIFY(makeLink(u"nowhere"_s, path(u"inside/dangling"_s)));

    const Survey survey = surveyQuietly(everything({path(u"inside"_s)}));

    QVERIFY(survey.files.empty());
    QVERIFY(survey.unreadable.isEmpty());
}

void tst_surveyedFolders::findsNoSpecialFiles()
{
    if (!makePipe(path(u"pipe"_s)))
        QSKIP("There are no pipes and sockets here");
    QVERIFY(makeSocket(path(u"socket"_s)));

    const Survey survey = surveyTree();

    QVERIFY(survey.files.empty());
    QVERIFY(survey.unreadable.isEmpty());
}

void tst_surveyedFolders::skipsHiddenEntries_data()
{
    QTest::addColumn<bool>("includeHidden");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("left out") << false << QStringList{u"shown"_s};
    QTest::newRow("included") << true << QStringList{u".folder/file"_s, u".hidden"_s, u"shown"_s};
}

void tst_surveyedFolders::skipsHiddenEntries()
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

void tst_surveyedFolders::searchesAGivenHiddenFolder()
{
    writeFile(path(u".folder/file"_s), "x");

    QCOMPARE(pathsOf(surveyQuietly(everything({path(u".folder"_s)}))), QStringList{path(u".folder/file"_s)});
}

void tst_surveyedFolders::reportsUnreadableEntries()
{
    writeFile(path(u"closed/file"_s), "x");
    writeFile(path(u"listed/file"_s), "x");
    writeFile(path(u"open/file"_s), "x");
    allowAccess(m_folder->path());
    allowAccess(path(u"open"_s));
    denyAccess(path(u"closed"_s));
    QVERIFY(QFile::setPermissions(path(u"listed"_s), QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
    Survey survey;
    {
        const UnprivilegedUser user;
        if (QFile(path(u"closed/file"_s)).open(QIODevice::ReadOnly))
            QSKIP("Permissions have no effect here");
        survey = surveyTree();
    }
    allowAccess(path(u"closed"_s));
    allowAccess(path(u"listed"_s));

    QCOMPARE(pathsOf(survey), QStringList{path(u"open/file"_s)});
    // A folder that can be listed but not searched gives no information about its files.
    QCOMPARE(unreadablePathsOf(survey), (QStringList{path(u"closed"_s), path(u"listed/file"_s)}));
    for (const UnreadablePath &entry : std::as_const(survey.unreadable))
        QCOMPARE(entry.reason, qt_error_string(EACCES));
}

void tst_surveyedFolders::reportsPathsThatAreNotFolders()
{
    writeFile(path(u"file"_s), "x");

    const Survey survey = surveyQuietly(everything({path(u"nowhere"_s), path(u"file"_s)}));

    QVERIFY(survey.files.empty());
    QCOMPARE(unreadablePathsOf(survey), (QStringList{path(u"file"_s), path(u"nowhere"_s)}));
    for (const UnreadablePath &entry : survey.unreadable)
        QVERIFY(!entry.reason.isEmpty());
}

void tst_surveyedFolders::reportsPathsThatAreTooLong()
{
    const HostileTree tree;
    if (!writeDeepFile(tree.path(), 30, QByteArray(200, 'd'), "file", "x"))
        QSKIP("Paths cannot be this long here");

    const Survey survey = surveyQuietly(everything({tree.path()}));

    QVERIFY(survey.files.empty());
    QCOMPARE(survey.unreadable.size(), 1);
    QVERIFY(survey.unreadable.first().path.size() > 3900);
    QVERIFY(!survey.unreadable.first().reason.isEmpty());
}

void tst_surveyedFolders::countsUndecodableNames()
{
    const HostileTree tree;
    writeFile(tree.path(u"file"_s), "x");
    if (!writeFileWithRawName(tree.path(), "caf\xE9", "x"))
        QSKIP("Names must be valid text here");
    QVERIFY(makeFolderWithRawName(tree.path(), "folder\xE9"));

    const Survey survey = surveyQuietly(everything({tree.path()}));

    QCOMPARE(pathsOf(survey), QStringList{tree.path(u"file"_s)});
    QCOMPARE(survey.undecodableNames, 2);
    QVERIFY(survey.unreadable.isEmpty());
}

void tst_surveyedFolders::keepsEveryCharacterOfAName()
{
    QStringList expected;
    for (const HostileName &hostile : hostileNames()) {
#ifdef Q_OS_WIN
        if (!keepsItsNameOnWindows(hostile.name) || !QFile(path(hostile.name)).open(QIODevice::WriteOnly))
            continue;
        QFile::remove(path(hostile.name));
#endif
        writeFile(path(u"folder/"_s + hostile.name), "x");
        expected.append(path(u"folder/"_s + hostile.name));
    }

    QCOMPARE(pathsOf(surveyTree()), sorted(expected));
}

void tst_surveyedFolders::findsTheSameFilesWithAnyNumberOfThreads()
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

void tst_surveyedFolders::countsFilesInItsProgress()
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

void tst_surveyedFolders::endsWhenAbandoned()
{
    writeEmptyFiles(m_folder->path(), 1000, u"txt"_s);
    std::atomic<int> checks = 0;
    const SurveyCallbacks callbacks{
        .progress = [](qint64) {},
        .abandoned = [&checks] { return ++checks > 20; },
    };

    const Survey survey = surveyFiles(everything({m_folder->path()}), callbacks);

    QVERIFY(!survey.files.empty());
    QVERIFY(survey.files.size() <= 20);
}

QTEST_GUILESS_MAIN(tst_surveyedFolders)
#include "tst_surveyedFolders.moc"
