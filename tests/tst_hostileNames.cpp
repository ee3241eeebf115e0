#include "analysis/DuplicateAnalysis.h"
#include "scan/FileCount.h"
#include "scan/FolderEntries.h"
#include "tests/support/CollectedFiles.h"
#include "tests/support/HostileNames.h"
#include "tests/support/HostileTree.h"
#include "tests/support/QtWalk.h"
#include "tests/support/SpecialFiles.h"

#include <QFile>
#include <QTest>

#include <algorithm>
#include <cerrno>

#ifdef Q_OS_LINUX
#include <fcntl.h>
#include <sys/stat.h>
#endif

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int seeds = 60;

/// Number of names below \a folder that are left out.
qsizetype undecodableNamesBelow(const QString &folder)
{
    qsizetype names = 0;
    QStringList folders{folder};
    while (!folders.isEmpty()) {
        FolderEntries entries(folders.takeLast());
        while (entries.next()) {
            if (entries.isFolder())
                folders.append(entries.path());
        }
        names += entries.undecodableNames();
    }
    return names;
}

} // namespace

/// A walk yields every file under its exact name or leaves it out, for names of any bytes.
class tst_hostileNames : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void decodesEveryNameExactlyOrSkipsIt_data();
    void decodesEveryNameExactlyOrSkipsIt();
    void matchesQDirIteratorWithoutByteOrderMarks();
    void neverConfusesNamesThatDifferInAByteOrderMark();
    void listsHiddenEntriesOnRequest();
    void reportsWhyAFolderCannotBeRead();
    void givesAccessToTheCurrentEntry();
};

void tst_hostileNames::initTestCase()
{
    const HostileTree tree;
    if (!makeFolderWithRawName(tree.path(), "\xFF"))
        QSKIP("Names must be valid text here");
}

void tst_hostileNames::decodesEveryNameExactlyOrSkipsIt_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= seeds; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void tst_hostileNames::decodesEveryNameExactlyOrSkipsIt()
{
    QFETCH(const quint32, seed);
    const HostileTree tree;
    RandomTree names(tree, seed);
    const QList<QByteArray> expected = names.visibleFiles();

    QList<QByteArray> collected;
    for (const QString &path : collect({tree.path()}))
        collected.append(tree.rawName(path));
    std::ranges::sort(collected);
    QCOMPARE(collected, expected);
    QCOMPARE(countFiles({tree.path()}, [] { return false; }), expected.size());
    QCOMPARE(undecodableNamesBelow(tree.path()), names.undecodable());
}

/// QDirIterator drops U+FEFF at the start of a name, so no name here starts with it.
void tst_hostileNames::matchesQDirIteratorWithoutByteOrderMarks()
{
    const HostileTree tree;
    int i = 0;
    for (const QByteArray &piece : textPieces() + brokenPieces()) {
        const QByteArray number = QByteArray::number(++i);
        QVERIFY(writeFileWithRawName(tree.path(), number + piece, "x"));
        QVERIFY(makeFolderWithRawName(tree.path(), number + piece + " folder"));
        QVERIFY(writeFileWithRawName(tree.path(), number + piece + " folder/" + number + piece, "x"));
    }
    QCOMPARE(collect({tree.path()}), filesByQt(tree.path()));
}

void tst_hostileNames::neverConfusesNamesThatDifferInAByteOrderMark()
{
    const HostileTree tree;
    QVERIFY(writeFileWithRawName(tree.path(), "report.txt", "plain"));
    QVERIFY(writeFileWithRawName(tree.path(), "\xEF\xBB\xBFreport.txt", "other"));
    QVERIFY(makeFolderWithRawName(tree.path(), "photos"));
    QVERIFY(makeFolderWithRawName(tree.path(), "\xEF\xBB\xBFphotos"));
    QVERIFY(writeFileWithRawName(tree.path(), "photos/1.jpg", "photo"));
    QVERIFY(writeFileWithRawName(tree.path(), "\xEF\xBB\xBFphotos/2.jpg", "image"));
    const AnalysisCallbacks silent{
        .progress = [](int) {}, .duplicatesFound = [](qsizetype) {}, .abandoned = [] { return false; }};
    const QStringList collected = collect({tree.path()});
    QCOMPARE(collected.size(), 4);
    QVERIFY(findDuplicates(collected, silent).isEmpty());

    QVERIFY(writeFileWithRawName(tree.path(), "\xEF\xBB\xBFreport.txt", "plain"));
    const QList<DuplicateGroup> groups = findDuplicates(collect({tree.path()}), silent);
    QCOMPARE(groups.size(), 1);
    QCOMPARE(sorted(groups.constFirst().files),
        (QStringList{tree.path(u"report.txt"_s), tree.path(u"\uFEFFreport.txt"_s)}));
}

void tst_hostileNames::listsHiddenEntriesOnRequest()
{
    const HostileTree tree;
    for (const char *const name : {"file", ".hidden", "..twice", "...", "\xEF\xBB\xBF.marked"})
        QVERIFY(writeFileWithRawName(tree.path(), name, "x"));
    QVERIFY(makeFolderWithRawName(tree.path(), ".folder"));
    QVERIFY(makeLink(u"file"_s, tree.path(u".link"_s)));
    const auto listed = [&tree](HiddenEntries hidden) {
        QList<QByteArray> names;
        for (FolderEntries entries(tree.path(), hidden); entries.next();)
            names.append(tree.rawName(entries.path()));
        std::ranges::sort(names);
        return names;
    };
    QCOMPARE(listed(HiddenEntries::LeftOut), (QList<QByteArray>{"file", "\xEF\xBB\xBF.marked"}));
    QCOMPARE(listed(HiddenEntries::Listed),
        (QList<QByteArray>{"...", "..twice", ".folder", ".hidden", "file", "\xEF\xBB\xBF.marked"}));
}

void tst_hostileNames::reportsWhyAFolderCannotBeRead()
{
    const HostileTree tree;
    FolderEntries empty(tree.path());
    QVERIFY(!empty.next());
    QCOMPARE(empty.error(), QString());
    FolderEntries missing(tree.path(u"missing"_s));
    QVERIFY(!missing.next());
    QCOMPARE(missing.error(), qt_error_string(ENOENT));
}

void tst_hostileNames::givesAccessToTheCurrentEntry()
{
#ifdef Q_OS_LINUX
    const HostileTree tree;
    const QByteArray name = "\xEF\xBB\xBF"
                            "five";
    QVERIFY(writeFileWithRawName(tree.path(), name, "bytes"));
    FolderEntries entries(tree.path());
    QVERIFY(entries.next());
    QCOMPARE(QByteArray(entries.rawName()), name);
    struct stat facts = {};
    QCOMPARE(::fstatat(entries.folderDescriptor(), entries.rawName(), &facts, AT_SYMLINK_NOFOLLOW), 0);
    QCOMPARE(facts.st_size, 5);
#else
    QSKIP("Entries have no descriptor here");
#endif
}

QTEST_GUILESS_MAIN(tst_hostileNames)
#include "tst_hostileNames.moc"
