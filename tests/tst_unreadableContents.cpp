#include "analysis/ContentGroups.h"
#include "tests/support/ContentOracle.h"
#include "tests/support/HostileTree.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/UnprivilegedUser.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <memory>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr qint64 mib = 1024LL * 1024;

} // namespace

/// Contents that cannot be compared, and comparisons that are abandoned.
class tst_unreadableContents : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void reportsFilesThatCannotBeRead();
    void reportsFilesOfAnotherSize();
    void reportsAFileThatShrinksDuringTheComparison();
    void reportsTheSystemsReason();
    void endsWhenAbandoned();
    void doesNothingWhenAbandonedFromTheStart();

private:
    [[nodiscard]] QString path(const QString &name) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_unreadableContents::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

QString tst_unreadableContents::path(const QString &name) const
{
    return m_folder->filePath(name);
}

void tst_unreadableContents::reportsFilesThatCannotBeRead()
{
    const QByteArray content(20'000, 'x');
    auto files = writeFiles(m_folder->path(), QList<QByteArray>(6, content));
    QVERIFY(QFile::remove(files[0].path));
    QVERIFY(QFile::remove(files[1].path) && QDir().mkdir(files[1].path));
    QVERIFY(QFile::remove(files[2].path));
    const bool hasPipes = makePipe(files[2].path);
    allowAccess(m_folder->path());
    denyAccess(files[3].path);
    const UnprivilegedUser user;
    if (QFile(files[3].path).open(QIODevice::ReadOnly))
        QSKIP("Permissions have no effect here");

    const ContentGroups result = groupQuietly(files);

    QCOMPARE(result.groups, (Groups{{4, 5}}));
    QCOMPARE(pathsOf(result.unreadable),
        (QStringList{files[0].path, files[1].path, files[2].path, files[3].path}));
    QVERIFY(hasPipes || !QFile::exists(files[2].path));
    for (const UnreadablePath &entry : result.unreadable)
        QVERIFY(!entry.reason.isEmpty());
}

void tst_unreadableContents::reportsFilesOfAnotherSize()
{
    const QByteArray content(20'000, 'x');
    auto files = writeFiles(m_folder->path(), {content, content, content + 'x', content.chopped(1)});
    for (SurveyedFile &file : files)
        file.size = content.size();

    const ContentGroups result = groupQuietly(files);

    QCOMPARE(result.groups, (Groups{{0, 1}}));
    QCOMPARE(pathsOf(result.unreadable), (QStringList{files[2].path, files[3].path}));
}

void tst_unreadableContents::reportsAFileThatShrinksDuringTheComparison()
{
    const QByteArray content(4 * mib, 'x');
    const auto files = writeFiles(m_folder->path(), {content, content, content});
    bool isShrunk = false;
    const auto shrink = [&](qint64 done, qint64 total) {
        if (!isShrunk && done > total / 4)
            isShrunk = QFile::resize(files[1].path, 2 * mib);
    };

    const ContentGroups result = groupByContent(
        files, ContentComparison::Bytes, 1, {.progress = shrink, .abandoned = [] { return false; }});

    QVERIFY(isShrunk);
    QCOMPARE(result.groups, (Groups{{0, 2}}));
    QCOMPARE(pathsOf(result.unreadable), QStringList{files[1].path});
}

void tst_unreadableContents::reportsTheSystemsReason()
{
    const std::vector<SurveyedFile> files{
        {.path = path(u"nowhere"_s), .size = 1}, {.path = path(u"not here"_s), .size = 1}};
    QFile missing(files[0].path);
    QVERIFY(!missing.open(QIODevice::ReadOnly));

    const ContentGroups result = groupQuietly(files);

    QCOMPARE(result.unreadable.size(), 2);
    QCOMPARE(result.unreadable.first().reason, missing.errorString());
}

void tst_unreadableContents::endsWhenAbandoned()
{
    std::vector<SurveyedFile> files;
    for (const QString &name : {u"a"_s, u"b"_s}) {
        QVERIFY(writeSparseFile(path(name), 500 * mib, "end"));
        files.push_back({.path = path(name), .size = 500 * mib});
    }
    std::atomic<qint64> reached = 0;
    const ComparisonCallbacks callbacks{
        .progress = [&](qint64 done, qint64) { reached = done; },
        .abandoned = [&] { return reached > 10 * mib; },
    };

    const ContentGroups result = groupByContent(files, ContentComparison::Bytes, 2, callbacks);

    QVERIFY(result.groups.empty());
    QVERIFY(reached < 20 * mib);
}

void tst_unreadableContents::doesNothingWhenAbandonedFromTheStart()
{
    const std::vector<SurveyedFile> files{{.path = path(u"nowhere"_s)}, {.path = path(u"not here"_s)}};
    bool hasReported = false;
    const ComparisonCallbacks callbacks{
        .progress = [&](qint64, qint64) { hasReported = true; },
        .abandoned = [] { return true; },
    };

    const ContentGroups result = groupByContent(files, ContentComparison::Bytes, 1, callbacks);

    QVERIFY(result.groups.empty());
    QVERIFY(!hasReported);
}

QTEST_GUILESS_MAIN(tst_unreadableContents)
#include "tst_unreadableContents.moc"
