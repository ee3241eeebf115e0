#include "cli/ReportBuilder.h"
#include "tests/support/WorkingFolder.h"

#include <QTest>

#include <map>
#include <memory>
#include <vector>

using Qt::Literals::StringLiterals::operator""_s;

namespace {

/// A file of a survey. With inode 0, the file gets a unique inode.
struct Found
{
    QString path;
    qint32 folder = 0;
    quint64 inode = 0;
    qint64 created = 0;
    qint64 size = 10;
};

std::vector<SurveyedFile> surveyed(const QList<Found> &files)
{
    std::vector<SurveyedFile> result;
    result.reserve(static_cast<std::size_t>(files.size()));
    quint64 ownInode = 1000;
    for (const Found &file : files) {
        result.push_back({.path = file.path,
            .size = file.size,
            .modified = -file.created,
            .created = file.created,
            .identity = {1, file.inode != 0 ? file.inode : ++ownInode},
            .folder = file.folder});
    }
    return result;
}

/// "keep a/x", "remove b/x" and so on.
QStringList described(const ReportGroup &group)
{
    QStringList lines;
    for (const ReportFile &file : group.files) {
        const QStringList names{u"keep"_s, u"remove"_s, u"link"_s, u"reference"_s};
        lines.append(names[static_cast<qsizetype>(file.action)] + u' ' + file.path);
    }
    return lines;
}

/// The report groups of \a files, in which files of equal size count as equal.
QList<ReportGroup> groupsOf(const QList<Found> &files, const SearchedFolders &folders,
    KeepRule rule = KeepRule::First, PathForm form = PathForm::AsGiven)
{
    const UniqueFiles unique = uniteNames(surveyed(files), folders);
    std::map<qint64, std::vector<quint32>> bySize;
    for (quint32 i = 0; i < unique.files.size(); ++i)
        bySize[unique.files[i].size].push_back(i);
    std::vector<std::vector<quint32>> groups;
    groups.reserve(bySize.size());
    for (const auto &[size, members] : bySize)
        groups.push_back(members);
    return reportGroups(groups, unique, folders, rule, form);
}

QStringList groupOf(
    const QList<Found> &files, const SearchedFolders &folders, KeepRule rule = KeepRule::First)
{
    return described(groupsOf(files, folders, rule).value(0));
}

} // namespace

/// Which file of a group is kept, the actions of the other files, and the order of both.
class tst_cliGroups : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void keepsByRule();
    void decidesTiesByFolderAndPath();

    void listsAPathOnce();
    void listsFurtherNamesAsLinks();
    void countsAFileOnce();
    void prefersReferences();
    void protectsReferencesFoundElsewhere();
    void protectsFilesWithANameInAReference();
    void ordersGroupsByFreedBytes();
    void ordersFilesByTheShownPath();

private:
    std::unique_ptr<WorkingFolder> m_place;
};

void tst_cliGroups::init()
{
    m_place = std::make_unique<WorkingFolder>(QStringList{u"a/r"_s, u"b"_s, u"r"_s});
}

void tst_cliGroups::cleanup()
{
    m_place.reset();
}

void tst_cliGroups::keepsByRule()
{
    const SearchedFolders folders({u"a"_s, u"b"_s}, {});
    const QList<Found> files{{.path = u"b/middle"_s, .folder = 1, .created = 9},
        {.path = u"a/long"_s, .folder = 0, .created = 5}, {.path = u"b/s"_s, .folder = 1, .created = 7},
        {.path = u"b/longer"_s, .folder = 1, .created = 1}};
    const auto kept = [&](KeepRule rule) { return groupOf(files, folders, rule).constFirst(); };
    QCOMPARE(kept(KeepRule::Oldest), u"keep b/longer"_s);
    QCOMPARE(kept(KeepRule::Newest), u"keep b/middle"_s);
    QCOMPARE(kept(KeepRule::First), u"keep a/long"_s);
    QCOMPARE(kept(KeepRule::Shortest), u"keep b/s"_s);
    QCOMPARE(groupOf(files, folders).filter(u"remove "_s).size(), 3);
}

void tst_cliGroups::decidesTiesByFolderAndPath()
{
    // The first folder is the last one in the alphabet.
    const SearchedFolders folders({u"b"_s, u"a"_s}, {});
    const QList<Found> files{{.path = u"a/x"_s, .folder = 1, .created = 5},
        {.path = u"b/z"_s, .folder = 0, .created = 5}, {.path = u"b/y"_s, .folder = 0, .created = 5}};
    for (const KeepRule rule : {KeepRule::Oldest, KeepRule::Newest, KeepRule::First, KeepRule::Shortest})
        QCOMPARE(
            groupOf(files, folders, rule), QStringList({u"keep b/y"_s, u"remove a/x"_s, u"remove b/z"_s}));
}

void tst_cliGroups::listsAPathOnce()
{
    const SearchedFolders folders({u"a"_s, u"a/r"_s, u"./a"_s, u"b"_s}, {});
    QCOMPARE(folders.given(), QStringList({u"a"_s, u"a/r"_s, u"b"_s}));
    const QStringList group =
        groupOf({{.path = u"a/r/x"_s, .folder = 1, .inode = 7}, {.path = u"a/r/x"_s, .folder = 0, .inode = 7},
                    {.path = u"b/x"_s, .folder = 2}},
            folders);
    QCOMPARE(group, QStringList({u"keep a/r/x"_s, u"remove b/x"_s}));
}

void tst_cliGroups::listsFurtherNamesAsLinks()
{
    const SearchedFolders folders({u"a"_s, u"b"_s}, {});
    const QStringList group =
        groupOf({{.path = u"b/1"_s, .folder = 1, .inode = 7}, {.path = u"a/2"_s, .folder = 0, .inode = 7},
                    {.path = u"a/9"_s, .folder = 0, .inode = 8}, {.path = u"a/3"_s, .folder = 0, .inode = 8},
                    {.path = u"b/0"_s, .folder = 1, .inode = 8}},
            folders);
    QCOMPARE(
        group, QStringList({u"keep a/2"_s, u"remove a/3"_s, u"link a/9"_s, u"link b/0"_s, u"link b/1"_s}));
}

void tst_cliGroups::countsAFileOnce()
{
    const SearchedFolders folders({u"a"_s, u"b"_s}, {});
    const UniqueFiles unique =
        uniteNames(surveyed({{.path = u"a/1"_s, .inode = 7}, {.path = u"a/2"_s, .inode = 8},
                       {.path = u"b/1"_s, .folder = 1, .inode = 7}, {.path = u"a/0"_s, .inode = 7}}),
            folders);
    QCOMPARE(unique.files.size(), std::size_t(2));
    QCOMPARE(unique.furtherNames.size(), std::size_t(2));
    QCOMPARE(unique.files.front().path, u"a/0"_s);
    QCOMPARE(unique.furtherNamesOf(unique.files.front()).size(), std::size_t(2));
    QVERIFY(unique.furtherNamesOf(unique.files.back()).empty());
}

void tst_cliGroups::prefersReferences()
{
    const SearchedFolders folders({u"a"_s}, {u"r"_s});
    QCOMPARE(folders.given(), QStringList({u"a"_s, u"r"_s}));
    const QStringList group = groupOf(
        {{.path = u"a/oldest"_s, .folder = 0, .created = 1}, {.path = u"r/2"_s, .folder = 1, .created = 3},
            {.path = u"r/3"_s, .folder = 1, .created = 2}},
        folders, KeepRule::Oldest);
    QCOMPARE(group, QStringList({u"keep r/3"_s, u"remove a/oldest"_s, u"reference r/2"_s}));
}

void tst_cliGroups::protectsReferencesFoundElsewhere()
{
    // The reference folder is inside a searched folder and is given by another path.
    const SearchedFolders folders({u"a"_s}, {m_place->path(u"b/../a/r"_s)});
    const QStringList group =
        groupOf({{.path = u"a/r/1"_s}, {.path = u"a/r/2"_s}, {.path = u"a/r.3"_s}}, folders);
    QCOMPARE(group, QStringList({u"keep a/r/1"_s, u"remove a/r.3"_s, u"reference a/r/2"_s}));

    const SearchedFolders whole({u"a"_s}, {u"a"_s});
    QCOMPARE(whole.given(), QStringList{u"a"_s});
    QCOMPARE(groupOf({{.path = u"a/1"_s}, {.path = u"a/2"_s}}, whole),
        QStringList({u"keep a/1"_s, u"reference a/2"_s}));
}

void tst_cliGroups::protectsFilesWithANameInAReference()
{
    const SearchedFolders folders({u"a"_s}, {u"r"_s});
    const QStringList group =
        groupOf({{.path = u"a/1"_s, .folder = 0, .inode = 7}, {.path = u"r/9"_s, .folder = 1, .inode = 7},
                    {.path = u"a/2"_s, .folder = 0, .inode = 8}, {.path = u"r/8"_s, .folder = 1, .inode = 8},
                    {.path = u"a/3"_s, .folder = 0}},
            folders);
    QCOMPARE(group,
        QStringList({u"keep r/8"_s, u"link a/1"_s, u"link a/2"_s, u"remove a/3"_s, u"reference r/9"_s}));
}

void tst_cliGroups::ordersGroupsByFreedBytes()
{
    const SearchedFolders folders({u"a"_s}, {u"r"_s});
    const QList<ReportGroup> groups = groupsOf(
        {{.path = u"a/0"_s, .size = 0}, {.path = u"a/00"_s, .size = 0},
            {.path = u"r/big"_s, .folder = 1, .size = 99}, {.path = u"r/big2"_s, .folder = 1, .size = 99},
            {.path = u"a/y1"_s, .size = 20}, {.path = u"a/y2"_s, .size = 20}, {.path = u"a/x1"_s, .size = 10},
            {.path = u"a/x2"_s, .size = 10}, {.path = u"a/x3"_s, .size = 10}, {.path = u"a/z1"_s, .size = 21},
            {.path = u"a/z2"_s, .size = 21}},
        folders);
    QStringList kept;
    for (const ReportGroup &group : groups)
        kept.append(group.files.constFirst().path);
    QCOMPARE(kept, QStringList({u"a/z1"_s, u"a/x1"_s, u"a/y1"_s, u"a/0"_s, u"r/big"_s}));
    const Removable removable = removableIn(groups);
    QCOMPARE(removable.files, qint64(5));
    QCOMPARE(removable.bytes, qint64(61));
}

void tst_cliGroups::ordersFilesByTheShownPath()
{
    const SearchedFolders folders({u"b"_s, m_place->path(u"a"_s)}, {});
    const QString absoluteA = m_place->path(u"a/x"_s);
    const QList<Found> files{
        {.path = u"b/x"_s, .folder = 0}, {.path = u"b/y"_s, .folder = 0}, {.path = absoluteA, .folder = 1}};
    QCOMPARE(described(groupsOf(files, folders, KeepRule::First, PathForm::AsGiven).constFirst()),
        QStringList({u"keep b/x"_s, u"remove "_s + absoluteA, u"remove b/y"_s}));
    QCOMPARE(described(groupsOf(files, folders, KeepRule::First, PathForm::Absolute).constFirst()),
        QStringList({u"keep "_s + m_place->path(u"b/x"_s), u"remove "_s + absoluteA,
            u"remove "_s + m_place->path(u"b/y"_s)}));
}

QTEST_GUILESS_MAIN(tst_cliGroups)
#include "tst_cliGroups.moc"
