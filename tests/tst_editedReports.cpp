#include "tests/support/RemovalRun.h"
#include "tests/support/ReportFiles.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using Qt::StringLiterals::operator""_s;

namespace {

/// Changes a report before it is carried out.
using Edit = std::function<void(Report &report)>;

void add(ReportGroup &group, const QString &path, FileAction action = FileAction::Remove)
{
    group.files.append({.action = action, .path = path});
}

} // namespace

Q_DECLARE_METATYPE(Edit)

namespace {

/// A row of refuses(). Expects the lines \a refused, and the files \a left in the folder afterwards.
void row(const char *name, const Edit &edit, const QStringList &refused, const QStringList &left)
{
    QTest::newRow(name) << edit << refused << left;
}

} // namespace

/// Removal with reports that were edited by hand. The last copy of each content and all references stay.
class tst_editedReports : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void refuses_data();
    void refuses();
    void refusesAFileThroughALinkedFolder();
    void removesFurtherNamesThatAreMarked();
    void ignoresTheRecordedIdentity();

private:
    // Rows of refuses().
    void addKeptFiles() const;
    void addKeptIndexes() const;
    void addRepeatedPaths() const;
    void addReferencesAndLinks() const;
    void addUnusablePaths() const;
    void addHardLinks() const;

    [[nodiscard]] QString path(const QString &name) const
    {
        return m_folder->filePath(name);
    }

    [[nodiscard]] Report sampleReport() const
    {
        return reportOf(
            {groupOf({path(u"a"_s), path(u"b"_s), path(u"c"_s)}), groupOf({path(u"x"_s), path(u"y"_s)})});
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

/// Two groups: a, b and c; x and y. All have the same content: only the report distinguishes the groups.
void tst_editedReports::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    for (const QString &name : {u"a"_s, u"b"_s, u"c"_s, u"x"_s, u"y"_s})
        writeFile(path(name), "content");
}

void tst_editedReports::refuses_data()
{
    QTest::addColumn<Edit>("edit");
    // "~" means the folder of the test.
    QTest::addColumn<QStringList>("refused");
    QTest::addColumn<QStringList>("left");
    addKeptFiles();
    addKeptIndexes();
    addRepeatedPaths();
    addReferencesAndLinks();
    addUnusablePaths();
#ifdef Q_OS_UNIX
    addHardLinks();
#endif
}

void tst_editedReports::addKeptFiles() const
{
    row("all marked", [](Report &r) { r.groups[0].files[0].action = FileAction::Remove; },
        {u"~/a: the report keeps it"_s}, {u"a"_s, u"x"_s});
    row("kept file marked elsewhere", [this](Report &r) { add(r.groups[1], path(u"a"_s)); },
        {u"~/a: the report keeps it"_s}, {u"a"_s, u"x"_s});
    row("kept file marked once more", [this](Report &r) { add(r.groups[0], path(u"a"_s)); },
        {u"~/a: the report keeps it"_s}, {u"a"_s, u"x"_s});
    row("two groups keep each other's file",
        [this](Report &r) {
            r.groups = {groupOf({path(u"a"_s), path(u"b"_s)}), groupOf({path(u"b"_s), path(u"a"_s)})};
        },
        {u"~/b: the report keeps it"_s, u"~/a: the report keeps it"_s},
        {u"a"_s, u"b"_s, u"c"_s, u"x"_s, u"y"_s});
    row("a ring of groups",
        [this](Report &r) {
            r.groups = {groupOf({path(u"a"_s), path(u"b"_s)}), groupOf({path(u"b"_s), path(u"c"_s)}),
                groupOf({path(u"c"_s), path(u"a"_s)})};
        },
        {u"~/b: the report keeps it"_s, u"~/c: the report keeps it"_s, u"~/a: the report keeps it"_s},
        {u"a"_s, u"b"_s, u"c"_s, u"x"_s, u"y"_s});
    row("a kept file that is marked before",
        [this](Report &r) {
            r.groups = {groupOf({path(u"a"_s), path(u"b"_s)}), groupOf({path(u"b"_s), path(u"c"_s)})};
        },
        {u"~/b: the report keeps it"_s}, {u"a"_s, u"b"_s, u"x"_s, u"y"_s});
}

void tst_editedReports::addKeptIndexes() const
{
    row("kept index moved", [](Report &r) { r.groups[0].kept = 1; }, {u"~/b: the report keeps it"_s},
        {u"a"_s, u"b"_s, u"x"_s});
    row("kept is no index", [](Report &r) { r.groups[0].kept = -1; },
        {u"~/b: its group names no kept file"_s, u"~/c: its group names no kept file"_s},
        {u"a"_s, u"b"_s, u"c"_s, u"x"_s});
    row("kept is no index of a group without marks",
        [](Report &r) {
            r.groups[0].kept = -1;
            for (ReportFile &file : r.groups[0].files)
                file.action = FileAction::Keep;
        },
        {u"group 1: it names no kept file"_s}, {u"a"_s, u"b"_s, u"c"_s, u"x"_s});
    row("no files", [](Report &r) { r.groups[0] = {.files = {}, .kept = -1, .size = 7}; },
        {u"group 1: it names no kept file"_s}, {u"a"_s, u"b"_s, u"c"_s, u"x"_s});
}

void tst_editedReports::addRepeatedPaths() const
{
    row("same path twice", [this](Report &r) { add(r.groups[0], path(u"b"_s)); },
        {u"~/b: the report lists it twice"_s}, {u"a"_s, u"x"_s});
    row("same path in two groups", [this](Report &r) { add(r.groups[1], path(u"b"_s)); },
        {u"~/b: the report lists it twice"_s}, {u"a"_s, u"x"_s});
    row("same path twice, spelt differently", [this](Report &r) { add(r.groups[0], path(u"./b"_s)); },
        {u"~/./b: the report lists it twice"_s}, {u"a"_s, u"x"_s});
    row("kept file, two slashes", [this](Report &r) { add(r.groups[1], m_folder->path() + u"//a"_s); },
        {u"~//a: the report keeps it"_s}, {u"a"_s, u"x"_s});
    row("kept file, through its folder",
        [this](Report &r) {
            QDir().mkpath(path(u"s"_s));
            add(r.groups[1], path(u"s/../a"_s));
        },
        {u"~/s/../a: the report keeps it"_s}, {u"a"_s, u"s"_s, u"x"_s});
}

void tst_editedReports::addReferencesAndLinks() const
{
    row("reference marked", [this](Report &r) { add(r.groups[1], path(u"b"_s), FileAction::Reference); },
        {u"~/b: the report lists it as a reference"_s}, {u"a"_s, u"b"_s, u"x"_s});
    row("reference marked, spelt differently",
        [this](Report &r) {
            r.groups[0].files[1].action = FileAction::Reference;
            add(r.groups[1], path(u"././b"_s));
        },
        {u"~/././b: the report lists it as a reference"_s}, {u"a"_s, u"b"_s, u"x"_s});
    row("link marked", [this](Report &r) { add(r.groups[1], path(u"b"_s), FileAction::Link); },
        {u"~/b: the report lists it as a link"_s}, {u"a"_s, u"b"_s, u"x"_s});
}

void tst_editedReports::addUnusablePaths() const
{
    row("relative path", [](Report &r) { r.groups[0].files[1].path = u"b"_s; },
        {u"b: its path is not absolute"_s}, {u"a"_s, u"b"_s, u"x"_s});
    row("relative kept path", [](Report &r) { r.groups[0].files[0].path = u"a"_s; },
        {u"~/b: the kept file a: its path is not absolute"_s,
            u"~/c: the kept file a: its path is not absolute"_s},
        {u"a"_s, u"b"_s, u"c"_s, u"x"_s});
    row("empty path", [](Report &r) { r.groups[0].files[1].path.clear(); }, {u": its path is not absolute"_s},
        {u"a"_s, u"b"_s, u"x"_s});
    row("path with a NUL", [](Report &r) { r.groups[0].files[1].path += u"\0 not this"_s; },
        {u"~/b\0 not this: its path is no valid text"_s}, {u"a"_s, u"b"_s, u"x"_s});
    row("path with half a character", [](Report &r) { r.groups[0].files[1].path += QChar(0xd800); },
        {u"~/b"_s + QChar(0xd800) + u": its path is no valid text"_s}, {u"a"_s, u"b"_s, u"x"_s});
    row("folder", [this](Report &r) { r.groups[0].files[1].path = m_folder->path(); },
        {u"~: it is no regular file"_s}, {u"a"_s, u"b"_s, u"x"_s});
    row("path that ends with a slash", [](Report &r) { r.groups[0].files[1].path += u'/'; },
        {u"~/b/: it is missing"_s}, {u"a"_s, u"b"_s, u"x"_s});
    row("size changed", [](Report &r) { r.groups[0].size = 8; },
        {u"~/b: its size is not that of the report"_s, u"~/c: its size is not that of the report"_s},
        {u"a"_s, u"b"_s, u"c"_s, u"x"_s});
}

void tst_editedReports::addHardLinks() const
{
    row("kept file marked by its other name",
        [this](Report &r) {
            (void)makeHardLink(path(u"a"_s), path(u"h"_s));
            add(r.groups[0], path(u"h"_s));
        },
        {u"~/h: it is the same file as the kept one"_s}, {u"a"_s, u"h"_s, u"x"_s});
    row("other name of a kept file, elsewhere",
        [this](Report &r) {
            (void)makeHardLink(path(u"a"_s), path(u"h"_s));
            add(r.groups[1], path(u"h"_s));
        },
        {u"~/h: it is the same file as a kept one"_s}, {u"a"_s, u"h"_s, u"x"_s});
    row("other name of a reference",
        [this](Report &r) {
            (void)makeHardLink(path(u"b"_s), path(u"h"_s));
            r.groups[0].files[1].action = FileAction::Reference;
            add(r.groups[1], path(u"h"_s));
        },
        {u"~/h: it is the same file as a reference"_s}, {u"a"_s, u"b"_s, u"h"_s, u"x"_s});
}

void tst_editedReports::refuses()
{
    QFETCH(const Edit, edit);
    QFETCH(QStringList, refused);
    QFETCH(const QStringList, left);
    Report report = sampleReport();
    edit(report);
    for (QString &line : refused)
        line = u"refused: "_s + line.replace(u"~"_s, m_folder->path());
    const QStringList before = QDir(m_folder->path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries);

    for (const bool apply : {false, true}) {
        const RemovalOutcome outcome =
            carryOut(report, {.apply = apply, .action = RemovalAction::Delete, .journal = {}});
        QCOMPARE(outcome.exitCode, ExitRefused);
        for (const QString &line : refused)
            QVERIFY2(outcome.refusals.contains(line), qPrintable(outcome.refusals.join(u'\n')));
        QCOMPARE(outcome.refusals.size(), refused.size());
        QCOMPARE(
            QDir(m_folder->path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries), apply ? left : before);
    }
}

/// The two paths have the same name in the same folder.
void tst_editedReports::refusesAFileThroughALinkedFolder()
{
    if (!makeLink(m_folder->path(), path(u"link"_s)))
        QSKIP("No links here");
    Report report = sampleReport();
    report.groups[0].files.append({.action = FileAction::Remove, .path = path(u"link/a"_s)});
    report.groups[0].files.append({.action = FileAction::Remove, .path = path(u"link/b"_s)});
    report.groups[1].files.append({.action = FileAction::Remove, .path = path(u"link/x"_s)});

    const RemovalOutcome planned = carryOut(report, planning(RemovalAction::Delete));
    QCOMPARE(planned.refusals,
        (QStringList{u"refused: "_s + path(u"link/a"_s) + u": it is the same file as the kept one"_s,
            u"refused: "_s + path(u"link/b"_s) + u": the report lists it twice"_s,
            u"refused: "_s + path(u"link/x"_s) + u": it is the same file as the kept one"_s}));
    const RemovalOutcome outcome = carryOut(report, applying(RemovalAction::Delete));
    QCOMPARE(outcome.exitCode, ExitRefused);
    QCOMPARE(outcome.refusals.size(), 3);
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), (QStringList{u"a"_s, u"x"_s}));
}

/// If an edited report marks both names of a copy, both are removed.
void tst_editedReports::removesFurtherNamesThatAreMarked()
{
    if (!makeHardLink(path(u"b"_s), path(u"h"_s)))
        QSKIP("No hard links here");
    Report report = sampleReport();
    report.groups[0].files.append({.action = FileAction::Remove, .path = path(u"h"_s)});
    for (const bool apply : {false, true})
        QCOMPARE(carryOut(report, {.apply = apply, .action = RemovalAction::Delete, .journal = {}}).exitCode,
            ExitDone);
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), (QStringList{u"a"_s, u"x"_s}));
}

/// Device numbers change when a disk is mounted again.
void tst_editedReports::ignoresTheRecordedIdentity()
{
    Report report = sampleReport();
    for (ReportFile &file : report.groups[0].files)
        file = {
            .action = file.action, .device = 99, .inode = 5, .links = 7, .modified = 1, .path = file.path};
    QCOMPARE(carryOut(report, applying(RemovalAction::Delete)).exitCode, ExitDone);
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), (QStringList{u"a"_s, u"x"_s}));
}

QTEST_GUILESS_MAIN(tst_editedReports)
#include "tst_editedReports.moc"
