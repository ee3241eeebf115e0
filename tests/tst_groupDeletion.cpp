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
    void deletesALinkNotItsTarget();
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
    return result.join(QStringLiteral(" | "));
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
    row("nothing but itself", "a a", "a", 1, "", "");
    row("a mark from elsewhere", "a b|c d", "c|", 1, "a b | c d", "a b d");
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
    writeFile(path(QStringLiteral("z/bystander")), "copy");

    const DeletionResult result = deleteMarkedFiles(groups);
    QTEST(result.deleted, "deleted");
    QCOMPARE(result.failed, 0);
    QTEST(fileNames(groups), "groupsAfter");
    QCOMPARE(
        leftOnDisk(), words(filesAfter) + QStringList({QStringLiteral("z"), QStringLiteral("z/bystander")}));
    QVERIFY(!hasMarkedFiles(groups));
    for (const DuplicateGroup &left : std::as_const(groups))
        QVERIFY(!left.hasMarkedFiles);
}

void tst_groupDeletion::deletesAPathOfTwoGroupsOnce()
{
    QList<DuplicateGroup> groups{group(QStringLiteral("a b c"), QStringLiteral("a")),
        group(QStringLiteral("a d e"), QStringLiteral("a"))};
    const DeletionResult result = deleteMarkedFiles(groups);
    QCOMPARE(result.deleted, 1);
    QCOMPARE(result.failed, 1);
    QCOMPARE(fileNames(groups), QStringLiteral("b c | d e"));
    QCOMPARE(leftOnDisk(), words(QStringLiteral("b c d e")));
}

/// A path through a link can be deleted only while the link exists, so the failure shows the order.
void tst_groupDeletion::processesTheGroupsBackwards()
{
    const QString link = path(QStringLiteral("link"));
    QList<DuplicateGroup> groups{group(QStringLiteral("b c"), {}), group(QStringLiteral("a d"), {})};
    writeFile(path(QStringLiteral("folder/inside")), "copy");
    if (!makeLink(QStringLiteral("folder"), link))
        QSKIP("There are no symbolic links here");
    // The second group deletes the link in the marked path of the first group.
    setMarkedFiles(groups[0], {link + QStringLiteral("/inside")});
    setMarkedFiles(groups[1], {link});
    const DeletionResult result = deleteMarkedFiles(groups);
    QCOMPARE(result.deleted, 1);
    QCOMPARE(result.failed, 1);
    QVERIFY(QFile::exists(path(QStringLiteral("folder/inside"))));
}

void tst_groupDeletion::removesFilesThatCouldNotBeDeletedFromTheirGroups()
{
    QList<DuplicateGroup> groups{group(QStringLiteral("a b"), QStringLiteral("a")),
        group(QStringLiteral("c d e"), QStringLiteral("c d")),
        group(QStringLiteral("f g h"), QStringLiteral("f"))};
    for (const char *const gone : {"a", "c", "f"})
        QVERIFY(QFile::remove(path(QLatin1StringView(gone))));
    const DeletionResult result = deleteMarkedFiles(groups);
    QCOMPARE(result.deleted, 1);
    QCOMPARE(result.failed, 3);
    QCOMPARE(fileNames(groups), QStringLiteral("g h"));
    QCOMPARE(leftOnDisk(), words(QStringLiteral("b e g h")));
}

void tst_groupDeletion::deletesNothingWithoutPermission()
{
    QList<DuplicateGroup> groups{group(QStringLiteral("a b c"), QStringLiteral("a b"))};
    allowReadingOnly(m_folder->path());
    DeletionResult result;
    bool keptOut = false;
    {
        const UnprivilegedUser user;
        keptOut = !QFile(path(QStringLiteral("new"))).open(QIODevice::WriteOnly);
        if (keptOut)
            result = deleteMarkedFiles(groups);
    }
    allowAccess(m_folder->path());
    if (!keptOut)
        QSKIP("Permissions keep nobody out here");
    QCOMPARE(result.deleted, 0);
    QCOMPARE(result.failed, 2);
    QVERIFY(groups.isEmpty());
    QCOMPARE(leftOnDisk(), words(QStringLiteral("a b c")));
}

void tst_groupDeletion::deletesNoFolder()
{
    QList<DuplicateGroup> groups{group(QStringLiteral("a b c"), QStringLiteral("a b"))};
    for (const char *const name : {"a", "b"}) {
        QVERIFY(QFile::remove(path(QLatin1StringView(name))));
        QVERIFY(QDir().mkpath(path(QLatin1StringView(name))));
    }
    writeFile(path(QStringLiteral("b/inside")), "precious");
    const DeletionResult result = deleteMarkedFiles(groups);
    QCOMPARE(result.deleted, 0);
    QCOMPARE(result.failed, 2);
    QCOMPARE(leftOnDisk(), words(QStringLiteral("a b b/inside c")));
}

void tst_groupDeletion::deletesALinkNotItsTarget()
{
    QList<DuplicateGroup> groups{group(QStringLiteral("a b"), QStringLiteral("a"))};
    writeFile(path(QStringLiteral("target")), "precious");
    QVERIFY(QFile::remove(path(QStringLiteral("a"))));
    if (!makeLink(path(QStringLiteral("target")), path(QStringLiteral("a"))))
        QSKIP("There are no symbolic links here");
    QCOMPARE(deleteMarkedFiles(groups).deleted, 1);
    QCOMPARE(leftOnDisk(), words(QStringLiteral("b target")));
}

void tst_groupDeletion::keepsNameAndSizeOfAGroup()
{
    DuplicateGroup before = group(QStringLiteral("a b c"), QStringLiteral("a"));
    before.fileName = QStringLiteral("a");
    before.size = 4;
    before.category = QStringLiteral("other");
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
    QList<DuplicateGroup> groups{group(QStringLiteral("a b"), {}), group(QStringLiteral("c d e"), {})};
    const DeletionResult result = deleteMarkedFiles(groups);
    QCOMPARE(result.deleted, 0);
    QCOMPARE(result.failed, 0);
    QCOMPARE(fileNames(groups), QStringLiteral("a b | c d e"));
    QCOMPARE(leftOnDisk(), words(QStringLiteral("a b c d e")));

    QList<DuplicateGroup> none;
    QCOMPARE(deleteMarkedFiles(none).deleted, 0);
}

/// DuplicateGroup::hasMarkedFiles may be out of date.
void tst_groupDeletion::usesTheMarksNotTheFlag()
{
    QList<DuplicateGroup> groups{group(QStringLiteral("a b"), {}), group(QStringLiteral("c d"), {})};
    QVERIFY(!hasMarkedFiles({}));
    QVERIFY(!hasMarkedFiles(groups));
    groups[0].hasMarkedFiles = true;
    QVERIFY(!hasMarkedFiles(groups));
    QCOMPARE(deleteMarkedFiles(groups).deleted, 0);
    groups[0].hasMarkedFiles = false;
    groups[1].markedFiles = {path(QStringLiteral("c"))};
    QVERIFY(hasMarkedFiles(groups));
    QCOMPARE(deleteMarkedFiles(groups).deleted, 1);
}

QTEST_GUILESS_MAIN(tst_groupDeletion)
#include "tst_groupDeletion.moc"
