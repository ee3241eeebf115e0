#include "analysis/DuplicateAnalysis.h"
#include "scan/FileCount.h"
#include "scan/FolderEntries.h"
#include "tests/support/Collecting.h"
#include "tests/support/HostileTree.h"
#include "tests/support/SpecialFiles.h"

#include <QByteArrayList>
#include <QDirIterator>
#include <QFile>
#include <QRandomGenerator>
#include <QSet>
#include <QTest>

#include <algorithm>
#include <cerrno>
#include <utility>

#ifdef Q_OS_LINUX
#include <fcntl.h>
#include <sys/stat.h>
#endif

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int seeds = 60;

/// What names are made of that are text.
const QByteArrayList textPieces{"a", "b", "Z", "0", " ", ".", "-", "%1", "%L2", "\\", "\n", "\t", "\x01",
    "\x1B[31m", "\x7F", "\xC2\x85", "\xEF\xBB\xBF", "\xEF\xBB\xBF", "\xEF\xBF\xBE", "\xEF\xBF\xBF",
    "\xEF\xB7\x90", "\xF4\x8F\xBF\xBF", "\xEF\xBF\xBD", "\xCC\x81", "e\xCC\x81", "\xC3\xA9", "\xE2\x80\xAE",
    "\xE2\x80\x8F", "\xE2\x80\x8D", "\xD7\xA9", "\xE7\x85\xA7", "\xF0\x9F\x98\x80", "\xC2\xA0",
    "\xE3\x80\x80", "?", "*", "\"", "<b>", "&"};

/// Bytes that are no UTF-8: out of place, overlong, surrogates, beyond U+10FFFF, truncated.
const QByteArrayList brokenPieces{"\x80", "\xBF", "\xC0\xAF", "\xC1\xBF", "\xE0\x80\xAF", "\xF0\x80\x80\xAF",
    "\xED\xA0\x80", "\xED\xBF\xBF", "\xED\xA0\xBD\xED\xB8\x80", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80",
    "\xF8\x88\x80\x80\x80", "\xFE", "\xFF", "\xC3", "\xE7\x85", "\xF0\x9F\x98"};

/// A tree of hostile names and what a walk has to make of it, known byte by byte.
class RandomTree
{
public:
    RandomTree(const HostileTree &tree, quint32 seed)
        : m_root(QFile::encodeName(tree.path()))
        , m_random(seed)
    {
        fill({}, 0, true);
    }

    /// Paths below the tree of the files that a walk yields, sorted.
    [[nodiscard]] QList<QByteArray> visibleFiles()
    {
        std::ranges::sort(m_visible);
        return m_visible;
    }

    /// Files and folders that are met but left out because of their names.
    [[nodiscard]] int undecodable() const
    {
        return m_undecodable;
    }

private:
    static constexpr int levels = 2;
    static constexpr int entriesEach = 8;
    /// Of 255 bytes the twin's mark takes three.
    static constexpr int longest = 252;

    void fill(const QByteArray &folder, int level, bool isVisible)
    {
        for (int i = 0; i < entriesEach; ++i) {
            const auto [name, isText] = randomName();
            const bool isFolder = level < levels && m_random.bounded(4) == 0;
            add(folder, name, isText, isFolder, level, isVisible);
            // Its plain twin, or its twin with one more.
            if (m_random.bounded(3) == 0)
                add(folder, "\xEF\xBB\xBF" + name, isText, isFolder, level, isVisible);
        }
    }

    /// A name, and whether it is text.
    std::pair<QByteArray, bool> randomName()
    {
        QByteArray name;
        bool isText = true;
        bool endsBroken = false;
        const bool isLong = m_random.bounded(20) == 0;
        const int count = isLong ? longest : m_random.bounded(1, 6);
        for (int i = 0; i < count; ++i) {
            // Two broken pieces side by side could make a character.
            if (endsBroken)
                name += '~';
            endsBroken = m_random.bounded(20) == 0;
            const QByteArrayList &pieces = endsBroken ? brokenPieces : textPieces;
            const QByteArray &piece = pieces.at(m_random.bounded(static_cast<int>(pieces.size())));
            if (name.size() + piece.size() >= longest)
                break;
            name += piece;
            isText = isText && !endsBroken;
        }
        return {isLong ? name.leftJustified(longest, 'n') : name, isText};
    }

    void add(const QByteArray &folder, const QByteArray &name, bool isText, bool isFolder, int level,
        bool isVisible)
    {
        const QString parent = QFile::decodeName(m_root);
        const QByteArray path = folder.isEmpty() ? name : folder + '/' + name;
        const bool isHidden = name.startsWith('.');
        // What is there already stays what it is.
        if (name == "." || name == ".." || m_all.contains(path))
            return;
        m_all.insert(path);
        const bool met = isVisible && !isHidden;
        const bool isAdded =
            isFolder ? makeFolderWithRawName(parent, path) : writeFileWithRawName(parent, path, "x");
        QVERIFY2(isAdded, path.toHex().constData());
        m_undecodable += met && !isText ? 1 : 0;
        if (isFolder)
            fill(path, level + 1, met && isText);
        else if (met && isText)
            m_visible.append(path);
    }

    const QByteArray m_root;
    QRandomGenerator m_random;
    QSet<QByteArray> m_all;
    QList<QByteArray> m_visible;
    int m_undecodable = 0;
};

/// How many names of the tree below \a folder are left out.
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

QStringList filesByQt(const QString &folder)
{
    QStringList files;
    QDirIterator walk(folder, QDir::Files | QDir::NoSymLinks, QDirIterator::Subdirectories);
    while (walk.hasNext())
        files.append(walk.next());
    return files;
}

} // namespace

/// A walk yields every file under its own name or leaves it out, whatever bytes the names are made of.
class tst_hostileNames : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyFileIsItselfOrLeftOut_data();
    void everyFileIsItselfOrLeftOut();
    void yieldsWhatQtYieldsWithoutByteOrderMarks();
    void neverTakesAFileForItsCopy();
    void listsHiddenEntriesWhenAsked();
    void saysWhyAFolderCannotBeRead();
    void canBeAskedForMoreOfTheCurrentEntry();
};

void tst_hostileNames::initTestCase()
{
    const HostileTree tree;
    if (!makeFolderWithRawName(tree.path(), "\xFF"))
        QSKIP("Here not every sequence of bytes is a name");
}

void tst_hostileNames::everyFileIsItselfOrLeftOut_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= seeds; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void tst_hostileNames::everyFileIsItselfOrLeftOut()
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

/// QDirIterator itself drops U+FEFF at the start of a name.
void tst_hostileNames::yieldsWhatQtYieldsWithoutByteOrderMarks()
{
    const HostileTree tree;
    int i = 0;
    for (const QByteArray &piece : textPieces + brokenPieces) {
        const QByteArray number = QByteArray::number(++i);
        QVERIFY(writeFileWithRawName(tree.path(), number + piece, "x"));
        QVERIFY(makeFolderWithRawName(tree.path(), number + piece + " folder"));
        QVERIFY(writeFileWithRawName(tree.path(), number + piece + " folder/" + number + piece, "x"));
    }
    QCOMPARE(collect({tree.path()}), filesByQt(tree.path()));
}

void tst_hostileNames::neverTakesAFileForItsCopy()
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

void tst_hostileNames::listsHiddenEntriesWhenAsked()
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

void tst_hostileNames::saysWhyAFolderCannotBeRead()
{
    const HostileTree tree;
    FolderEntries empty(tree.path());
    QVERIFY(!empty.next());
    QCOMPARE(empty.error(), QString());
    FolderEntries missing(tree.path(u"missing"_s));
    QVERIFY(!missing.next());
    QCOMPARE(missing.error(), qt_error_string(ENOENT));
}

void tst_hostileNames::canBeAskedForMoreOfTheCurrentEntry()
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
    QSKIP("Entries are asked for by their paths here");
#endif
}

QTEST_GUILESS_MAIN(tst_hostileNames)
#include "tst_hostileNames.moc"
