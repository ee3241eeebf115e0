#include "tests/support/DuplicateFiles.h"
#include "tests/support/ScannedFolder.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QScrollBar>
#include <QTest>

#include <filesystem>

using Qt::StringLiterals::operator""_s;

namespace {

/// Writes a file that was created later than \a other.
QString writeLaterThan(const QString &other, const QString &path, const QByteArray &content)
{
    const QFileInfo first(other);
    do {
        QFile::remove(path);
        writeFile(path, content);
    } while (QFileInfo(path).birthTime() <= first.birthTime() && QFileInfo(path).birthTime().isValid());
    return path;
}

} // namespace

/// Which files Select All and Unselect mark, shown or not, and which files Delete then removes.
class tst_selection : public QObject, private ScannedFolder
{
    Q_OBJECT

private slots:
    void init();

    void keepsTheOldestCopy();
    void keepsTheFirstOfEquallyOldCopies();
    void marksAndDeletesFilesOfEveryCategory();
    void unmarksOnlyTheShownCategory();
    void unmarksGroupsThatAreNotLoaded();
    void marksGroupsThatAreNotLoaded();
    void keepsLoadedRowsOnUnselect();
    void returnsToTheFirstRowsOnSelectAll();
};

void tst_selection::init()
{
    reset();
}

void tst_selection::keepsTheOldestCopy()
{
    // Modification times are in reverse order, to distinguish them from creation times.
    QStringList paths = write({u"b.txt"_s}, "content");
    paths.append(writeLaterThan(paths.last(), m_folder->filePath(u"a.txt"_s), "content"));
    paths.append(writeLaterThan(paths.last(), m_folder->filePath(u"c.txt"_s), "content"));
    for (int i = 0; i < paths.size(); ++i)
        setModificationTime(paths.at(i), 1000 - i);
    // Without usable creation times, the modification times decide.
    const bool bornInOrder = QFileInfo(paths.first()).birthTime() < QFileInfo(paths.last()).birthTime();
    const QString kept = bornInOrder ? paths.first() : paths.last();

    QVERIFY(scan());
    for (const char *button : {"btnAll", "btnSelectAll"}) {
        m_driver->click(button);
        QCOMPARE(toSet(m_driver->filePaths()) - toSet(m_driver->checkedPaths()), QSet<QString>{kept});
    }
}

void tst_selection::keepsTheFirstOfEquallyOldCopies()
{
    // Two hard links have the same times. The order of the folders is the order of the files.
    const QString second = write({u"2/b.txt"_s}, "content").first();
    QVERIFY(QDir().mkpath(m_folder->filePath(u"3"_s)));
    const QString third = m_folder->filePath(u"3/c.txt"_s);
    std::filesystem::create_hard_link(second.toStdU16String(), third.toStdU16String());
    QVERIFY(QDir().mkpath(m_folder->filePath(u"1"_s)));
    const QString first = writeLaterThan(second, m_folder->filePath(u"1/a.txt"_s), "content");
    setModificationTime(second, 1000);
    setModificationTime(first, 2000);

    m_driver->setFolders(
        {m_folder->filePath(u"1"_s), m_folder->filePath(u"2"_s), m_folder->filePath(u"3"_s)});
    QVERIFY(m_driver->scan());
    QCOMPARE(m_driver->filePaths(), (QStringList{first, second, third}));
    QCOMPARE(m_driver->checkedPaths(), (QStringList{first, third}));
    m_driver->checkAll(true);
    m_driver->click("btnSelectAll");
    QCOMPARE(m_driver->checkedPaths(), (QStringList{first, third}));
}

void tst_selection::marksAndDeletesFilesOfEveryCategory()
{
    for (const char *suffix : {"jpg", "mp4", "mp3", "txt", "zip", "xyz"})
        writePairs(m_folder->path(), 2, QLatin1StringView(suffix));
    QVERIFY(scan());

    m_driver->click("btnUnselect");
    QCOMPARE(m_driver->checkedPaths(), QStringList());
    m_driver->click("btnPictures");
    m_driver->click("btnSelectAll");
    QCOMPARE(m_driver->filePaths().size(), 4);
    QCOMPARE(m_driver->checkedPaths().size(), 2);
    QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected"), QList<ShownBox>{deletionBox(12, 0)});
    QCOMPARE(filesOnDisk().size(), 12);
    m_driver->click("btnAll");
    QCOMPARE(m_driver->groupTitles(), QStringList(u"No duplicate files"_s));
}

void tst_selection::unmarksOnlyTheShownCategory()
{
    writePairs(m_folder->path(), 3, u"jpg"_s);
    writePairs(m_folder->path(), 2, u"mp4"_s);
    QVERIFY(scan());
    const QStringList marked = m_driver->checkedPaths();
    const QSet<QString> before = filesOnDisk();

    m_driver->click("btnVideos");
    m_driver->click("btnUnselect");

    QCOMPARE(m_driver->checkedPaths(), QStringList());
    QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected"), QList<ShownBox>{deletionBox(3, 0)});
    QCOMPARE(before - filesOnDisk(), toSet(marked.filter(u".jpg"_s)));
}

void tst_selection::unmarksGroupsThatAreNotLoaded()
{
    writePairs(m_folder->path(), 45, u"txt"_s);
    QVERIFY(scan());
    m_driver->click("btnUnselect");
    m_driver->loadAllBatches();
    QCOMPARE(m_driver->filePaths().size(), 90);
    QCOMPARE(m_driver->checkedPaths(), QStringList());
}

void tst_selection::marksGroupsThatAreNotLoaded()
{
    writePairs(m_folder->path(), 45, u"txt"_s);
    QVERIFY(scan());
    m_driver->loadAllBatches();
    const QStringList marked = m_driver->checkedPaths();

    m_driver->click("btnUnselect");
    m_driver->click("btnSelectAll");
    m_driver->loadAllBatches();

    QCOMPARE(m_driver->checkedPaths(), marked);
    QCOMPARE(marked.size(), 45);
}

void tst_selection::keepsLoadedRowsOnUnselect()
{
    writePairs(m_folder->path(), 45, u"txt"_s);
    QVERIFY(scan());
    m_driver->loadAllBatches();
    QCoreApplication::processEvents();
    QScrollBar *const bar = m_driver->tree()->verticalScrollBar();
    bar->setValue(bar->maximum() / 2);
    const int position = bar->value();
    QVERIFY(position > 0);
    const QTreeWidgetItem *const row = m_driver->tree()->topLevelItem(30);

    m_driver->click("btnUnselect");
    QCoreApplication::processEvents();

    QCOMPARE(m_driver->tree()->topLevelItemCount(), 45);
    QCOMPARE(m_driver->tree()->topLevelItem(30), row);
    QCOMPARE(bar->value(), position);
    for (int i = 0; i < 45; ++i)
        QCOMPARE(m_driver->tree()->topLevelItem(i)->checkState(0), Qt::Unchecked);
    QVERIFY(m_driver->tree()->updatesEnabled());
    QVERIFY(!m_driver->tree()->signalsBlocked());
}

void tst_selection::returnsToTheFirstRowsOnSelectAll()
{
    writePairs(m_folder->path(), 45, u"txt"_s);
    QVERIFY(scan());
    const QStringList first = m_driver->groupTitles();
    m_driver->loadAllBatches();
    QCoreApplication::processEvents();
    QScrollBar *const bar = m_driver->tree()->verticalScrollBar();
    bar->setValue(bar->maximum());

    m_driver->click("btnSelectAll");
    QCOMPARE(m_driver->groupTitles(), first);
    // The view lays the rows out later, which must not load more of them.
    QCoreApplication::processEvents();
    QCOMPARE(m_driver->groupTitles(), first);
    QCOMPARE(bar->value(), 0);
    m_driver->loadAllBatches();
    QCOMPARE(m_driver->tree()->topLevelItemCount(), 45);
}

QTEST_MAIN(tst_selection)
#include "tst_selection.moc"
