#include "tests/support/AnalysisRecorder.h"
#include "tests/support/CollectedFiles.h"
#include "tests/support/MarkedCopies.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QTest>

#include <functional>

using Qt::StringLiterals::operator""_s;

namespace {

/// Replaces a file by something else; false if this system does not support it.
using Change = std::function<bool(const QString &path)>;

bool replace(const QString &path, const Change &make)
{
    return QFile::remove(path) && make(path);
}

bool writeOver(const QString &path, const QByteArray &content)
{
    writeFile(path, content);
    return true;
}

} // namespace

Q_DECLARE_METATYPE(Change)
Q_DECLARE_METATYPE(Fate)

/// Files that change during a scan, before their rows are built or before they are deleted.
class tst_concurrentChanges : public QObject, private MarkedCopies
{
    Q_OBJECT

private slots:
    void init();

    void analysesTheRemainingFiles_data();
    void analysesTheRemainingFiles();
    void deletesAfterAChange_data();
    void deletesAfterAChange();
    void showsAChange_data();
    void showsAChange();
    void neverFollowsAFileThatBecameALink();

private:
    void addChanges(Fate (*fate)(Fate pressed, Fate seen));
};

void tst_concurrentChanges::init()
{
    reset();
}

/// Adds a row for every change. \a fate gets the fate of the file if Delete is pressed immediately and the
/// fate if the rows are built again first.
void tst_concurrentChanges::addChanges(Fate (*fate)(Fate pressed, Fate seen))
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<Fate>("fate");
    QTest::addColumn<bool>("hasRow");

    const auto row = [&](const char *name, Fate pressed, Fate seen, const Change &change) {
        QTest::newRow(name) << change << fate(pressed, seen) << (seen != Fate::Unmarked);
    };
    row("vanishes", Fate::Failed, Fate::Unmarked, [](const QString &path) { return QFile::remove(path); });
    row("is emptied", Fate::Deleted, Fate::Deleted, [](const QString &path) { return writeOver(path, ""); });
    row("shrinks", Fate::Deleted, Fate::Deleted,
        [this](const QString &path) { return writeOver(path, m_content.left(5000)); });
    row("grows", Fate::Deleted, Fate::Deleted,
        [this](const QString &path) { return writeOver(path, m_content + "p"); });
    row("turns into a folder", Fate::Failed, Fate::Failed, [](const QString &path) {
        return replace(path, [](const QString &at) { return QDir().mkdir(at); });
    });
    row("turns into a full folder", Fate::Failed, Fate::Failed, [this](const QString &path) {
        return replace(
            path, [this](const QString &at) { return writeOver(at + u"/inside.jpg"_s, m_content); });
    });
    row("turns into a pipe", Fate::Deleted, Fate::Deleted,
        [](const QString &path) { return replace(path, makePipe); });
    row("turns into a socket", Fate::Deleted, Fate::Deleted,
        [](const QString &path) { return replace(path, makeSocket); });
    row("turns into a device", Fate::Deleted, Fate::Deleted,
        [](const QString &path) { return replace(path, makeDevice); });
    row("turns into a link to itself", Fate::Deleted, Fate::Unmarked, [](const QString &path) {
        return replace(path, [](const QString &at) { return makeLink(QFileInfo(at).fileName(), at); });
    });
    row("turns into a link to another file", Fate::Deleted, Fate::Deleted, [](const QString &path) {
        return replace(path, [](const QString &at) { return makeLink(u"../outside/far.jpg"_s, at); });
    });
    row("turns into a link to a folder", Fate::Deleted, Fate::Deleted, [](const QString &path) {
        return replace(path, [](const QString &at) { return makeLink(u"../outside"_s, at); });
    });
}

void tst_concurrentChanges::analysesTheRemainingFiles_data()
{
    addChanges([](Fate pressed, Fate) { return pressed; });
}

/// The second copy changes between the walk and the analysis and so equals no other file.
void tst_concurrentChanges::analysesTheRemainingFiles()
{
    QFETCH(const Change, change);
    const QStringList collected = sorted(collect({path(u"tree"_s)}));
    QCOMPARE(collected, m_copies);
    if (!change(m_copies.at(1)))
        QSKIP("This system does not support this change");

    const Analysis analysis(collected);
    QCOMPARE(analysis.files(), (QList<QStringList>{{m_copies.at(0), m_copies.at(2)}}));
    QCOMPARE(analysis.groups.constFirst().markedFiles.size(), 1);
}

void tst_concurrentChanges::deletesAfterAChange_data()
{
    addChanges([](Fate pressed, Fate) { return pressed; });
}

/// The second copy changes between the view and the deletion.
void tst_concurrentChanges::deletesAfterAChange()
{
    QFETCH(const Change, change);
    QFETCH(const Fate, fate);
    QVERIFY(scanAndMark(m_copies.mid(1)));
    if (!change(m_copies.at(1)))
        QSKIP("This system does not support this change");
    checkDeletion(fate);
}

void tst_concurrentChanges::showsAChange_data()
{
    addChanges([](Fate, Fate seen) { return seen; });
}

/// The second copy changes between the analysis and the view: rows are built and thumbnails loaded
/// afterwards.
void tst_concurrentChanges::showsAChange()
{
    QFETCH(const Change, change);
    QFETCH(const Fate, fate);
    QFETCH(const bool, hasRow);
    QVERIFY(scanAndMark(m_copies.mid(1)));
    if (!change(m_copies.at(1)))
        QSKIP("This system does not support this change");

    m_driver->click("btnAll");
    QTest::qWait(0);
    QCOMPARE(m_driver->fileRow(m_copies.at(1)) != nullptr, hasRow);
    QCOMPARE(m_driver->checkedPaths(), hasRow ? m_copies.mid(1) : m_copies.mid(2));
    checkDeletion(fate);
}

/// Deletes the link, not its target.
void tst_concurrentChanges::neverFollowsAFileThatBecameALink()
{
    QVERIFY(scanAndMark(m_copies.mid(1)));
    QVERIFY(QFile::remove(m_copies.at(1)));
    if (!makeLink(u"1.jpg"_s, m_copies.at(1)))
        QSKIP("This system has no symbolic links");
    checkDeletion(Fate::Deleted);
    QVERIFY(QFile::exists(m_copies.at(0)));
}

QTEST_MAIN(tst_concurrentChanges)
#include "tst_concurrentChanges.moc"
