#include "analysis/FileHash.h"
#include "tests/support/AnalysisRecorder.h"
#include "tests/support/RandomBytes.h"
#include "tests/support/TestFiles.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cstring>
#include <memory>

namespace {

constexpr int sample = 4096;

bool bytesAscend(const QByteArray &first, const QByteArray &second)
{
    return std::memcmp(first.constData(), second.constData(), 32) < 0;
}

} // namespace

/// Which files the analysis groups, in which order, and how it describes a group.
class tst_duplicateAnalysis : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void groupsEqualFiles();
    void findsNothingAmongDifferentFiles();
    void ordersGroupsByTheBytesOfTheirFingerprint();
    void ordersFilesBySizeThenAsTheyCame();
    void groupsFilesOfTwoSizesWithOneFingerprint();
    void groupsByTheSampledBytesOnly();
    void groupsEmptyFiles();
    void groupsAPathWithItself();
    void skipsFilesThatCannotBeOpened();
    void describesAGroupByItsFirstFile_data();
    void describesAGroupByItsFirstFile();
    void marksAllButTheFileCreatedFirst();
    void changesNoFile();

private:
    /// Writes a new file; returns its path.
    QString add(const char *name, const QByteArray &content);

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_duplicateAnalysis::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

QString tst_duplicateAnalysis::add(const char *name, const QByteArray &content)
{
    const QString path = m_folder->filePath(QLatin1StringView(name));
    writeFile(path, content);
    return path;
}

void tst_duplicateAnalysis::groupsEqualFiles()
{
    const QString cat = add("cat.jpg", "miaow");
    const QString dog = add("dog.jpg", "woof!");
    const QString copyOfCat = add("copy of cat.jpg", "miaow");
    const QString bird = add("bird.jpg", "tweet");
    const QString catAgain = add("sub/cat.jpg", "miaow");
    const QString cow = add("cow.jpg", "moo");
    QCOMPARE(Analysis({cat, dog, copyOfCat, bird, catAgain, cow}).files(),
        (QList<QList<QString>>{{cat, copyOfCat, catAgain}}));
}

void tst_duplicateAnalysis::findsNothingAmongDifferentFiles()
{
    QVERIFY(Analysis(QList<QString>()).groups.isEmpty());
    const QString one = add("1", "one");
    QVERIFY(Analysis({one}).groups.isEmpty());
    QVERIFY(Analysis({one, add("2", "two"), add("3", "three")}).groups.isEmpty());
}

void tst_duplicateAnalysis::ordersGroupsByTheBytesOfTheirFingerprint()
{
    QList<QString> paths;
    QList<QByteArray> expected;
    for (int i = 0; i < 60; ++i) {
        const QByteArray content = randomBytes(100 + i % 7, static_cast<quint32>(i));
        paths.append(add(qPrintable(QStringLiteral("%1.first").arg(i)), content));
        paths.append(add(qPrintable(QStringLiteral("%1.second").arg(i)), content));
        expected.append(computeFileHash(paths.last(), sample));
    }
    std::sort(expected.begin(), expected.end(), bytesAscend);
    // Bytes above 127 sort last, not first.
    QVERIFY(static_cast<uchar>(expected.last().at(0)) > 127);

    QList<QByteArray> order;
    for (const QList<QString> &files : Analysis(paths).files()) {
        QCOMPARE(files.size(), 2);
        order.append(computeFileHash(files.first(), sample));
    }
    QCOMPARE(order, expected);
}

void tst_duplicateAnalysis::ordersFilesBySizeThenAsTheyCame()
{
    const QByteArray content = randomBytes(8000, 1);
    const QString z = add("z", content.first(5000));
    const QString m = add("m", content.first(7000));
    const QString a = add("a", content.first(5000));
    const QString b = add("b", content.first(6000));
    const QString y = add("y", content.first(6000));
    const QString c = add("c", content.first(7000));
    const QList<QList<QString>> files = Analysis({m, z, y, a, c, b}).files();
    QCOMPARE(files, (QList<QList<QString>>{{z, a, y, b, m, c}}));
}

/// The fingerprint of a small file does not cover its size.
void tst_duplicateAnalysis::groupsFilesOfTwoSizesWithOneFingerprint()
{
    const QByteArray head = randomBytes(sample, 2);
    const QString large = add("large.txt", head + QByteArray(1904, 'l'));
    const QString small = add("small.jpg", head + QByteArray(904, 's'));
    QVERIFY(Analysis({large, small}).groups.isEmpty());

    // Only a file that shares its size with another one is read.
    const QString asLarge = add("as large", QByteArray(6000, 'x'));
    const QString asSmall = add("as small", QByteArray(5000, 'y'));
    QVERIFY(Analysis({large, small, asLarge}).groups.isEmpty());
    const Analysis analysis({large, asLarge, asSmall, small});
    QCOMPARE(analysis.files(), (QList<QList<QString>>{{small, large}}));
    QCOMPARE(analysis.groups.first().size, 5000);
    QCOMPARE(analysis.groups.first().fileName, QStringLiteral("small.jpg"));
    QCOMPARE(analysis.groups.first().category, QStringLiteral("picture"));
}

void tst_duplicateAnalysis::groupsByTheSampledBytesOnly()
{
    QByteArray content = randomBytes(20000, 3);
    const QString first = add("first", content);
    content[10000] = static_cast<char>(~content.at(10000));
    const QString middleDiffers = add("middle differs", content);
    content[19999] = static_cast<char>(~content.at(19999));
    const QString endDiffers = add("end differs", content);
    QCOMPARE(Analysis({first, middleDiffers, endDiffers}).files(),
        (QList<QList<QString>>{{first, middleDiffers}}));
}

void tst_duplicateAnalysis::groupsEmptyFiles()
{
    const QString one = add("1", {});
    const QString two = add("2", {});
    QVERIFY(Analysis({one}).groups.isEmpty());
    const Analysis analysis({one, two});
    QCOMPARE(analysis.files(), (QList<QList<QString>>{{one, two}}));
    QCOMPARE(analysis.groups.first().size, 0);
}

void tst_duplicateAnalysis::groupsAPathWithItself()
{
    const QString path = add("1", "content");
    const Analysis alone({path, path});
    QCOMPARE(alone.files(), (QList<QList<QString>>{{path, path}}));
    QCOMPARE(alone.groups.first().markedFiles, QSet<QString>());
    QVERIFY(!alone.groups.first().hasMarkedFiles);
}

void tst_duplicateAnalysis::skipsFilesThatCannotBeOpened()
{
    const QString gone = m_folder->filePath(QStringLiteral("gone"));
    const QString goneAsWell = m_folder->filePath(QStringLiteral("gone as well"));
    QVERIFY(Analysis({gone, goneAsWell, gone}).groups.isEmpty());

    // A missing file counts as size 0, like an empty one. A folder has a size, except on Windows.
    const QString empty = add("empty", {});
    const QString emptyToo = add("empty too", {});
    const QString folder = m_folder->path();
    const QByteArray content(std::max<qint64>(QFileInfo(folder).size(), 1), 'x');
    const QString asLarge = add("as large as the folder", content);
    const QString copy = add("copy", content);
    const Analysis analysis({gone, empty, folder, asLarge, goneAsWell, copy, emptyToo});
    QList<QList<QString>> files = analysis.files();
    std::sort(files.begin(), files.end());
    QList<QList<QString>> expected{{empty, emptyToo}, {asLarge, copy}};
    std::sort(expected.begin(), expected.end());
    QCOMPARE(files, expected);
}

void tst_duplicateAnalysis::describesAGroupByItsFirstFile_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QString>("category");

    const auto row = [](const char *first, const char *second, const char *fileName, const char *category) {
        QTest::newRow(first) << QString::fromLatin1(first) << QString::fromLatin1(second)
                             << QString::fromLatin1(fileName) << QString::fromLatin1(category);
    };
    row("photo.JPG", "b.txt", "photo.JPG", "picture");
    row("sub.mp3/clip.flv", "b.mp4", "clip.flv", "other");
    row("clip.mov", "a.jpg", "clip.mov", "video");
    row("song.mp3", "a.jpg", "song.mp3", "audio");
    row("x.pdf", "a.jpg", "x.pdf", "document");
    row("x.tar.7z", "a.jpg", "x.tar.7z", "archive");
    row("photo.heic", "a.jpg", "photo.heic", "other");
    row("README", "a.jpg", "README", "other");
}

void tst_duplicateAnalysis::describesAGroupByItsFirstFile()
{
    QFETCH(const QString, first);
    QFETCH(const QString, second);
    const QString firstPath = m_folder->filePath(first);
    const QString secondPath = m_folder->filePath(second);
    // The second file is created first, so it is the kept file if there are creation times.
    writeFilesOneAfterAnother({secondPath, firstPath}, "content");
    writeFile(firstPath, "content");
    setModificationTime(firstPath, 1000);
    setModificationTime(secondPath, 2000);

    const Analysis analysis({firstPath, secondPath});
    QCOMPARE(analysis.files(), (QList<QList<QString>>{{firstPath, secondPath}}));
    const DuplicateGroup &group = analysis.groups.first();
    QTEST(group.fileName, "fileName");
    QTEST(group.category, "category");
    QCOMPARE(group.size, 7);
    QCOMPARE(group.modified.toSecsSinceEpoch(),
        QDateTime(QDate(2020, 1, 1), QTime(0, 16, 40), Qt::UTC).toSecsSinceEpoch());
}

void tst_duplicateAnalysis::marksAllButTheFileCreatedFirst()
{
    const QList<QString> created{m_folder->filePath(QStringLiteral("1")),
        m_folder->filePath(QStringLiteral("2")), m_folder->filePath(QStringLiteral("3"))};
    if (!writeFilesOneAfterAnother(created, "content"))
        QSKIP("This file system keeps no creation times");
    const QList<QString> listed{created.at(2), created.at(0), created.at(1), created.at(0)};
    const Analysis analysis(listed);
    QCOMPARE(analysis.files(), QList<QList<QString>>{listed});
    QCOMPARE(analysis.groups.first().markedFiles, (QSet<QString>{created.at(1), created.at(2)}));
    QVERIFY(analysis.groups.first().hasMarkedFiles);
}

void tst_duplicateAnalysis::changesNoFile()
{
    const QList<QString> paths{add("1", "content"), add("2", "content"), add("3", "other")};
    for (const QString &path : paths)
        setModificationTime(path, 5000);
    const QDateTime modified = QFileInfo(paths.first()).lastModified();
    QCOMPARE(Analysis(paths).groups.size(), 1);
    for (const QString &path : paths)
        QCOMPARE(QFileInfo(path).lastModified(), modified);
}

QTEST_GUILESS_MAIN(tst_duplicateAnalysis)
#include "tst_duplicateAnalysis.moc"
