#include "analysis/DuplicateGroup.h"
#include "tests/support/FilesWithoutCreationTime.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/TestFiles.h"

#include <QDateTime>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {

QDateTime day(int days)
{
    return QDateTime(QDate(2001, 1, 1).addDays(days), QTime(12, 0));
}

} // namespace

/// Which file of a group is kept, and which are marked.
class tst_duplicateGroup : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void keepsTheFileCreatedFirst_data();
    void keepsTheFileCreatedFirst();
    void usesTheCreationTimeNotTheModificationTime();
    void usesTheModificationTimeWithoutCreationTimes();
    void comparesCreationTimesWithModificationTimes();
    void keepsAnExistingFileRatherThanAVanishedOne_data();
    void keepsAnExistingFileRatherThanAVanishedOne();
    void marksAllButTheKeptPath_data();
    void marksAllButTheKeptPath();
    void replacesPreviousMarks();

private:
    [[nodiscard]] QString path(char name) const;
    [[nodiscard]] QStringList paths(const QString &names) const;
    bool writeAgedFiles();

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_duplicateGroup::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

QString tst_duplicateGroup::path(char name) const
{
    return m_folder->filePath(QString(QLatin1Char(name)));
}

QStringList tst_duplicateGroup::paths(const QString &names) const
{
    QStringList result;
    for (const QChar name : names)
        result.append(path(name.toLatin1()));
    return result;
}

/// Writes the files "1", "2" and "3" in this order; "t" has the creation time of "2".
bool tst_duplicateGroup::writeAgedFiles()
{
    // A hard link is the only reliable way to get an equal creation time.
    return writeFilesOneAfterAnother(paths(QStringLiteral("123")), "copy") &&
           makeHardLink(path('2'), path('t'));
}

void tst_duplicateGroup::keepsTheFileCreatedFirst_data()
{
    QTest::addColumn<QString>("names");
    QTest::addColumn<int>("kept");

    const auto row = [](const char *names, int kept) {
        QTest::newRow(names) << QString::fromLatin1(names) << kept;
    };
    row("1", 0);
    row("12", 0);
    row("21", 1);
    row("123", 0);
    row("321", 2);
    row("231", 2);
    row("312", 1);
    // Equal times: the earlier file in the list is kept.
    row("2t", 0);
    row("t2", 0);
    row("32t", 1);
    row("3t2", 1);
    row("2t1", 2);
    row("22", 0);
    row("322", 1);
    row("1331", 0);
}

void tst_duplicateGroup::keepsTheFileCreatedFirst()
{
    QFETCH(const QString, names);
    if (!writeAgedFiles())
        QSKIP("This file system keeps no creation times or no hard links");
    QTEST(int(indexOfKeptCopy(paths(names))), "kept");
}

void tst_duplicateGroup::usesTheCreationTimeNotTheModificationTime()
{
    if (!writeAgedFiles())
        QSKIP("This file system keeps no creation times or no hard links");
    setModificationTime(path('1'), 3000);
    setModificationTime(path('2'), 2000);
    setModificationTime(path('3'), 1000);
    // Wine takes the modification time for the creation time.
    if (const QFileInfo file(path('1')); file.birthTime() == file.lastModified())
        QSKIP("This file system keeps no creation times");
    QCOMPARE(indexOfKeptCopy(paths(QStringLiteral("321"))), 2);
}

void tst_duplicateGroup::usesTheModificationTimeWithoutCreationTimes()
{
    FilesWithoutCreationTime files;
    const QList<QString> list{files.path(0), files.path(1), files.path(2)};
    if (!files.setTimes({day(3), day(2), day(1)}))
        QSKIP("This system has no files without creation time");
    QCOMPARE(indexOfKeptCopy(list), 2);
    QVERIFY(files.setTimes({day(3), day(1), day(2)}));
    QCOMPARE(indexOfKeptCopy(list), 1);
    QVERIFY(files.setTimes({day(2), day(1), day(1)}));
    QCOMPARE(indexOfKeptCopy(list), 1);
    QVERIFY(files.setTimes({day(1), day(1), day(1)}));
    QCOMPARE(indexOfKeptCopy(list), 0);
}

/// A file without creation time takes part with its modification time.
void tst_duplicateGroup::comparesCreationTimesWithModificationTimes()
{
    FilesWithoutCreationTime files;
    const QDateTime now = QDateTime::currentDateTime();
    if (!writeAgedFiles() || !files.setTimes({day(5), now.addYears(1), day(6)}))
        QSKIP("This system has no files with, or none without, creation time");
    // Modified before all others, but created just now.
    setModificationTime(path('1'), -1'000'000'000);
    QCOMPARE(indexOfKeptCopy({path('1'), files.path(0)}), 1);
    QCOMPARE(indexOfKeptCopy({files.path(0), path('1')}), 0);
    QCOMPARE(indexOfKeptCopy({files.path(1), path('2'), path('1')}), 2);
    QCOMPARE(indexOfKeptCopy({path('2'), files.path(2), files.path(0), path('1')}), 2);
}

void tst_duplicateGroup::keepsAnExistingFileRatherThanAVanishedOne_data()
{
    QTest::addColumn<QString>("names");
    QTest::addColumn<int>("kept");

    const auto row = [](const char *names, int kept) {
        QTest::newRow(names) << QString::fromLatin1(names) << kept;
    };
    row("x1", 1);
    row("1x", 0);
    row("x31", 2);
    row("3x1", 2);
    row("xy3", 2);
    row("xy", 0);
}

/// The files "x" and "y" are missing. Keeping them would mark the last copy.
void tst_duplicateGroup::keepsAnExistingFileRatherThanAVanishedOne()
{
    QFETCH(const QString, names);
    if (!writeAgedFiles())
        QSKIP("This file system keeps no creation times or no hard links");
    QTEST(int(indexOfKeptCopy(paths(names))), "kept");
}

void tst_duplicateGroup::marksAllButTheKeptPath_data()
{
    QTest::addColumn<QString>("names");
    QTest::addColumn<QString>("marked");

    const auto row = [](const char *names, const char *marked) {
        QTest::newRow(*names ? names : "no file")
            << QString::fromLatin1(names) << QString::fromLatin1(marked);
    };
    row("", "");
    row("1", "");
    row("12", "2");
    row("21", "2");
    row("2t", "t");
    row("32t", "3t");
    row("231", "23");
    // A folder that is listed twice: the kept file must not be marked through its second entry.
    row("11", "");
    row("111", "");
    row("121", "2");
    row("212", "2");
    row("2211", "2");
}

void tst_duplicateGroup::marksAllButTheKeptPath()
{
    QFETCH(const QString, names);
    QFETCH(const QString, marked);
    if (!writeAgedFiles())
        QSKIP("This file system keeps no creation times or no hard links");
    const QStringList markedPaths = paths(marked);
    DuplicateGroup group;
    group.files = paths(names);
    markAllButKeptCopy(group);
    QCOMPARE(group.markedFiles, QSet<QString>(markedPaths.cbegin(), markedPaths.cend()));
    QCOMPARE(group.hasMarkedFiles, !marked.isEmpty());
    QCOMPARE(group.files, paths(names));
}

void tst_duplicateGroup::replacesPreviousMarks()
{
    writeFile(path('1'), "copy");
    writeFile(path('2'), "copy");
    DuplicateGroup group;
    group.files = paths(QStringLiteral("12"));
    group.markedFiles = {path('1'), path('2'), path('3')};
    group.hasMarkedFiles = true;
    markAllButKeptCopy(group);
    QCOMPARE(group.markedFiles.size(), 1);
    QVERIFY(!group.markedFiles.contains(group.files.at(indexOfKeptCopy(group.files))));

    group.files.removeLast();
    markAllButKeptCopy(group);
    QCOMPARE(group.markedFiles, QSet<QString>());
    QVERIFY(!group.hasMarkedFiles);

    setMarkedFiles(group, {path('1')});
    QCOMPARE(group.markedFiles, QSet<QString>{path('1')});
    QVERIFY(group.hasMarkedFiles);
    setMarkedFiles(group, {});
    QCOMPARE(group.markedFiles, QSet<QString>());
    QVERIFY(!group.hasMarkedFiles);
}

QTEST_GUILESS_MAIN(tst_duplicateGroup)
#include "tst_duplicateGroup.moc"
