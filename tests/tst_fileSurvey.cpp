#include "scan/FileSurvey.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/SurveyedFiles.h"
#include "tests/support/TestFiles.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <memory>

using Qt::StringLiterals::operator""_s;

/// What a survey reports about files, and which files its filters accept.
class tst_fileSurvey : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void reportsTheMetadataOfAFile();
    void reportsOneIdentityForAllNamesOfAFile();
    void fallsBackToTheModificationTime();
    void startsPathsWithTheFolderAsGiven_data();
    void startsPathsWithTheFolderAsGiven();
    void findsAFileOncePerFolder();
    void checksEachEntryForExclusion();
    void doesNotEnterExcludedFolders();
    void appliesMinimumAndMaximumSize();
    void appliesFileTypes();
    void skipsTheDesktop();
    void ignoresTheHiddenRuleOfTheWindow();

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

void tst_fileSurvey::reportsTheMetadataOfAFile()
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

void tst_fileSurvey::reportsOneIdentityForAllNamesOfAFile()
{
    writeFile(path(u"a"_s), "x");
    writeFile(path(u"z"_s), "x");
    if (!makeHardLink(path(u"a"_s), path(u"b"_s)))
        QSKIP("There are no hard links here");

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

void tst_fileSurvey::startsPathsWithTheFolderAsGiven_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("expected");
    QTest::newRow("relative") << u"folder"_s << u"folder/sub/file"_s;
    QTest::newRow("with a slash") << u"folder/"_s << u"folder/sub/file"_s;
    QTest::newRow("with dots") << u"./folder/../folder"_s << u"./folder/../folder/sub/file"_s;
}

void tst_fileSurvey::startsPathsWithTheFolderAsGiven()
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

void tst_fileSurvey::checksEachEntryForExclusion()
{
    writeFile(path(u"a/file"_s), "x");
    QStringList examined;
    for (const QString &folder : {m_folder->path(), m_folder->path() + u'/'}) {
        SurveyRequest request = everything({folder});
        request.excluded = [&examined](QStringView name, QStringView below) {
            examined.append(u"%1 %2"_s.arg(name, below));
            return false;
        };
        QCOMPARE(surveyQuietly(request).files.size(), std::size_t(1));
    }

    QCOMPARE(examined, (QStringList{u"a a"_s, u"file a/file"_s, u"a a"_s, u"file a/file"_s}));
}

void tst_fileSurvey::doesNotEnterExcludedFolders()
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

void tst_fileSurvey::appliesMinimumAndMaximumSize()
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
    for (const QString &name : {u"a.JPG"_s, u"a.mp3"_s, u"a.zip"_s, u"jpg"_s, u"b.jpg/c"_s})
        writeFile(path(name), "x");
    SurveyRequest request = everything({m_folder->path()});
    request.options.fileTypes = QStringList{u"picture"_s, u"archive"_s};

    QCOMPARE(pathsOf(surveyQuietly(request)), (QStringList{path(u"a.JPG"_s), path(u"a.zip"_s)}));
}

void tst_fileSurvey::skipsTheDesktop()
{
    const QString home = QDir(m_folder->path()).canonicalPath();
    // No other test runs in this process, so the real home is not needed.
    qputenv("HOME", home.toUtf8());
    qputenv("XDG_CONFIG_HOME", home.toUtf8());
    if (QStandardPaths::writableLocation(QStandardPaths::DesktopLocation) != home + u"/Desktop"_s)
        QSKIP("The desktop folder cannot be redirected here");
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

QTEST_GUILESS_MAIN(tst_fileSurvey)
#include "tst_fileSurvey.moc"
