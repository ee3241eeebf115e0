#include "results/GroupDeletion.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/TestFiles.h"
#include "tests/support/UnprivilegedUser.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using Qt::StringLiterals::operator""_s;

/// Which files a deletion removes from disk, and what remains of the groups.
class tst_groupDeletion : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void deletesMarkedFiles_data();
    void deletesMarkedFiles();
    void deletesAPathOfTwoGroupsOnce();
    void processesTheGroupsBackwards();
    void removesFilesThatCouldNotBeDeletedFromTheirGroups();
    void deletesNothingWithoutPermission();
    void deletesNoFolder();
    void deletesALinkButNotItsTarget();
    void keepsNameAndSizeOfAGroup();
    void doesNothingWithoutMarks();
    void usesTheMarksNotTheFlag();

private:
    [[nodiscard]] QString path(const QString &name) const;
    /// Writes the files named in \a files and returns their group with those named in \a marked marked.
    [[nodiscard]] DuplicateGroup group(const QString &files, const QString &marked) const;
    /// Relative paths of everything below the folder, including links and hidden files.
    [[nodiscard]] QStringList leftOnDisk() const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

QStringList words(const QString &text)
{
    return text.split(u' ', Qt::SkipEmptyParts);
}

/// The file names of the groups; bars separate the groups.
QString fileNames(const QList<DuplicateGroup> &groups)
{
    QStringList result;
    for (const DuplicateGroup &group : groups) {
        QStringList names;
        for (const QString &file : group.files)
            names.append(file.section(u'/', -1));
        result.append(names.join(u' '));
    }
    return result.join(u" | "_s);
}

} // namespace

void tst_groupDeletion::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

QString tst_groupDeletion::path(const QString &name) const
{
    return m_folder->filePath(name);
}

DuplicateGroup tst_groupDeletion::group(const QString &files, const QString &marked) const
{
    DuplicateGroup result;
    for (const QString &name : words(files)) {
        result.files.append(path(name));
        writeFile(path(name), "copy");
    }
    QSet<QString> markedFiles;
    for (const QString &name : words(marked))
        markedFiles.insert(path(name));
    setMarkedFiles(result, markedFiles);
    return result;
}

QStringList tst_groupDeletion::leftOnDisk() const
{
    QStringList names;
    const QDir folder(m_folder->path());
    QDirIterator entries(m_folder->path(),
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (entries.hasNext())
        names.append(folder.relativeFilePath(entries.next()));
    names.sort();
    return names;
}

void tst_groupDeletion::deletesMarkedFiles_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QStringList>("marked");
    QTest::addColumn<int>("deleted");
    QTest::addColumn<QString>("groupsAfter");
    QTest::addColumn<QString>("filesAfter");

    const auto row = [](const char *name, const char *files, const char *marked, int deleted,
                         const char *groupsAfter, const char *filesAfter) {
        QTest::newRow(name) << QString::fromLatin1(files).split(u'|')
                            << QString::fromLatin1(marked).split(u'|') << deleted
                            << QString::fromLatin1(groupsAfter) << QString::fromLatin1(filesAfter);
    };
    row("one of two", "a b", "b", 1, "", "a");
    row("both of two", "a b", "a b", 2, "", "");
    row("two of five", "a b c d e", "b d", 2, "a c e", "a c e");
    row("first of three", "a b c", "a", 1, "b c", "b c");
    row("two of three", "a b c", "a c", 2, "", "b");
    row("all of three", "a b c", "a b c", 3, "", "");
    row("of some groups", "a b c|d e|f g|h i j", "a||g|j", 3, "b c | d e | h i", "b c d e f h i");
    row("of neighbours", "a b|c d|e f|g h", "a|c|e|", 3, "g h", "b d f g h");
    row("of the last group", "a b|c d", "|c d", 2, "a b", "a b");
    row("listed twice", "a a b", "a", 1, "", "b");
    row("listed twice among more", "a b a c", "a", 1, "b c", "b c");
    row("kept one listed twice", "a b a", "b", 1, "a a", "a");
    row("one file listed twice", "a a", "a", 1, "", "");
    row("mark of another group's file", "a b|c d", "c|", 1, "a b | c d", "a b d");
}

void tst_groupDeletion::deletesMarkedFiles()
{
    QFETCH(const QStringList, files);
    QFETCH(const QStringList, marked);
    QFETCH(const QString, filesAfter);
    QList<DuplicateGroup> groups;
    for (qsizetype i = 0; i < files.size(); ++i)
        groups.append(group(files.at(i), marked.at(i)));
    QVERIFY(hasMarkedFiles(groups));
    writeFile(path(u"z/bystander"_s), "copy");

    const DeletionResult result = deleteMarkedFiles(groups);
    QTEST(result.deleted, "deleted");
    QCOMPARE(result.failed, 0);
    QTEST(fileNames(groups), "groupsAfter");
    QCOMPARE(leftOnDisk(), words(filesAfter) + QStringList({u"z"_s, u"z/bystander"_s}));
    QVERIFY(!hasMarkedFiles(groups));
    for (const DuplicateGroup &left : std::as_const(groups))
        QVERIFY(!left.hasMarkedFiles);
}

void tst_groupDeletion::deletesAPathOfTwoGroupsOnce()
{
    QList<DuplicateGroup> groups{group(u"a b c"_s, u"a"_s), group(u"a d e"_s, u"a"_s)};
    const DeletionResult result = deleteMarkedFiles(groups);
    QCOMPARE(result.deleted, 1);
    QCOMPARE(result.failed, 1);
    QCOMPARE(fileNames(groups), u"b c | d e"_s);
    QCOMPARE(leftOnDisk(), words(u"b c d e"_s));
}

/// A path through a link can be deleted only while the link exists, so the failure shows the order.
void tst_groupDeletion::processesTheGroupsBackwards()
{
    const QString link = path(u"link"_s);
    QList<DuplicateGroup> groups{group(u"b c"_s, {}), group(u"a d"_s, {})};
    writeFile(path(u"folder/inside"_s), "copy");
    if (!makeLink(u"folder"_s, link))
        QSKIP("There are no symbolic links here");
    // The second group deletes the link in the marked path of the first group.
    setMarkedFiles(groups[0], {link + u"/inside"_s});
    setMarkedFiles(groups[1], {link});

    const DeletionResult result = deleteMarkedFiles(groups);
    QCOMPARE(result.deleted, 1);
    QCOMPARE(result.failed, 1);
    QVERIFY(QFile::exists(path(u"folder/inside"_s)));
}

void tst_groupDeletion::removesFilesThatCouldNotBeDeletedFromTheirGroups()
{
    QList<DuplicateGroup> groups{
        group(u"a b"_s, u"a"_s), group(u"c d e"_s, u"c d"_s), group(u"f g h"_s, u"f"_s)};
    for (const char *const gone : {"a", "c", "f"})
        QVERIFY(QFile::remove(path(QLatin1StringView(gone))));

    const DeletionResult result = deleteMarkedFiles(groups);
    QCOMPARE(result.deleted, 1);
    QCOMPARE(result.failed, 3);
    QCOMPARE(fileNames(groups), u"g h"_s);
    QCOMPARE(leftOnDisk(), words(u"b e g h"_s));
}

void tst_groupDeletion::deletesNothingWithoutPermission()
{
    QList<DuplicateGroup> groups{group(u"a b c"_s, u"a b"_s)};
    allowReadingOnly(m_folder->path());
    DeletionResult result;
    bool isDenied = false;
    {
        const UnprivilegedUser user;
        isDenied = !QFile(path(u"new"_s)).open(QIODevice::WriteOnly);
        if (isDenied)
            result = deleteMarkedFiles(groups);
    }
    allowAccess(m_folder->path());
    if (!isDenied)
        QSKIP("Permissions have no effect here");
    QCOMPARE(result.deleted, 0);
    QCOMPARE(result.failed, 2);
    QVERIFY(groups.isEmpty());
    QCOMPARE(leftOnDisk(), words(u"a b c"_s));
}

void tst_groupDeletion::deletesNoFolder()
{
    QList<DuplicateGroup> groups{group(u"a b c"_s, u"a b"_s)};
    for (const char *const name : {"a", "b"}) {
        QVERIFY(QFile::remove(path(QLatin1StringView(name))));
        QVERIFY(QDir().mkpath(path(QLatin1StringView(name))));
    }
    writeFile(path(u"b/inside"_s), "precious");

    const DeletionResult result = deleteMarkedFiles(groups);
    QCOMPARE(result.deleted, 0);
    QCOMPARE(result.failed, 2);
    QCOMPARE(leftOnDisk(), words(u"a b b/inside c"_s));
}

void tst_groupDeletion::deletesALinkButNotItsTarget()
{
    QList<DuplicateGroup> groups{group(u"a b"_s, u"a"_s)};
    writeFile(path(u"target"_s), "precious");
    QVERIFY(QFile::remove(path(u"a"_s)));
    if (!makeLink(path(u"target"_s), path(u"a"_s)))
        QSKIP("There are no symbolic links here");
    QCOMPARE(deleteMarkedFiles(groups).deleted, 1);
    QCOMPARE(leftOnDisk(), words(u"b target"_s));
}

void tst_groupDeletion::keepsNameAndSizeOfAGroup()
{
    DuplicateGroup before = group(u"a b c"_s, u"a"_s);
    before.fileName = u"a"_s;
    before.size = 4;
    before.category = u"other"_s;
    before.modified = QDateTime(QDate(2020, 1, 1), QTime(0, 0));
    QList<DuplicateGroup> groups{before};
    QCOMPARE(deleteMarkedFiles(groups).deleted, 1);
    QCOMPARE(groups.size(), 1);
    QCOMPARE(groups.first().fileName, before.fileName);
    QCOMPARE(groups.first().size, before.size);
    QCOMPARE(groups.first().category, before.category);
    QCOMPARE(groups.first().modified, before.modified);
}

void tst_groupDeletion::doesNothingWithoutMarks()
{
    QList<DuplicateGroup> groups{group(u"a b"_s, {}), group(u"c d e"_s, {})};
    const DeletionResult result = deleteMarkedFiles(groups);
    QCOMPARE(result.deleted, 0);
    QCOMPARE(result.failed, 0);
    QCOMPARE(fileNames(groups), u"a b | c d e"_s);
    QCOMPARE(leftOnDisk(), words(u"a b c d e"_s));

    QList<DuplicateGroup> none;
    QCOMPARE(deleteMarkedFiles(none).deleted, 0);
}

/// DuplicateGroup::hasMarkedFiles may be out of date.
void tst_groupDeletion::usesTheMarksNotTheFlag()
{
    QList<DuplicateGroup> groups{group(u"a b"_s, {}), group(u"c d"_s, {})};
    QVERIFY(!hasMarkedFiles({}));
    QVERIFY(!hasMarkedFiles(groups));
    groups[0].hasMarkedFiles = true;
    QVERIFY(!hasMarkedFiles(groups));
    QCOMPARE(deleteMarkedFiles(groups).deleted, 0);
    groups[0].hasMarkedFiles = false;
    groups[1].markedFiles = {path(u"c"_s)};
    QVERIFY(hasMarkedFiles(groups));
    QCOMPARE(deleteMarkedFiles(groups).deleted, 1);
}

QTEST_GUILESS_MAIN(tst_groupDeletion)
#include "tst_groupDeletion.moc"
