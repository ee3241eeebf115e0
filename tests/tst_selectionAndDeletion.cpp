#include "tests/support/DuplicateFiles.h"
#include "tests/support/TestFiles.h"
#include "tests/support/WindowDriver.h"

#include <QDir>
#include <QDirIterator>
#include <QMessageBox>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>

#include <filesystem>

using Qt::StringLiterals::operator""_s;

namespace {

const ShownBox nothingTicked{u"NOTE"_s, u"Please select the files you want to delete!"_s};
const ShownBox nothingThere{u"NOTE"_s, u"There are no duplicate files to work with."_s};

ShownBox deleted(int files, int failed)
{
    return {
        u"Deletion Complete"_s, u"Deleted %1 files successfully, %2 files failed."_s.arg(files).arg(failed)};
}

QSet<QString> toSet(const QStringList &list)
{
    return {list.cbegin(), list.cend()};
}

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

/// Select All, Unselect and Delete: what is ticked, what is gone from the disk, and what is not.
class tst_selectionAndDeletion : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void keepsTheOldestCopy();
    void keepsTheEarlierOfEquallyOldCopies();
    void ticksEveryCategoryAndDeletesUnseen();
    void unticksTheShownCategoryOnly();
    void unticksGroupsThatAreNotLoaded();
    void ticksGroupsThatAreNotLoaded();
    void keepsLoadedRowsOnUnselect();
    void goesBackToTheFirstRowsOnSelectAll();

    void deletesWhatIsTickedAndNothingElse();
    void asksForTicksWhenThereAreNone();
    void takesNoTickOfAGroupRow();
    void removesAGroupOfTwo_data();
    void removesAGroupOfTwo();
    void leavesAGroupOfThreeOutOfFive();
    void dropsTicksOfGroupsThatAreNotLoaded();
    void deletesTheKeptCopyWhenItIsTicked();
    void countsWhatCannotBeDeleted();
    void leavesTotalsAlone();
    void hasNothingToDoInAnEmptyTree();
    void neverTicksTheOnlyFile();
    void showsPlainInformationBoxes();

private:
    bool scan()
    {
        m_driver->setFolders({m_folder->path()});
        return m_driver->scan();
    }

    QSet<QString> filesOnDisk() const
    {
        QSet<QString> files;
        QDirIterator entries(m_folder->path(), QDir::Files, QDirIterator::Subdirectories);
        while (entries.hasNext())
            files.insert(entries.next());
        return files;
    }

    QStringList write(const QStringList &names, const QByteArray &content) const
    {
        return writeCopies(m_folder->path(), names, content);
    }

    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<WindowDriver> m_driver;
};

void tst_selectionAndDeletion::init()
{
    m_driver.reset(new WindowDriver);
    m_folder.reset(new QTemporaryDir);
}

void tst_selectionAndDeletion::keepsTheOldestCopy()
{
    // Modification times run the other way, to tell the two apart.
    QStringList paths = write({u"b.txt"_s}, "content");
    paths.append(writeLaterThan(paths.last(), m_folder->filePath(u"a.txt"_s), "content"));
    paths.append(writeLaterThan(paths.last(), m_folder->filePath(u"c.txt"_s), "content"));
    for (int i = 0; i < paths.size(); ++i)
        setModificationTime(paths.at(i), 1000 - i);
    // Where creation times are not kept, or follow the others, the latter decide.
    const bool bornInOrder = QFileInfo(paths.first()).birthTime() < QFileInfo(paths.last()).birthTime();
    const QString kept = bornInOrder ? paths.first() : paths.last();
    QVERIFY(scan());
    for (const char *button : {"btnAll", "btnSelectAll"}) {
        m_driver->click(button);
        QCOMPARE(toSet(m_driver->filePaths()) - toSet(m_driver->tickedPaths()), QSet<QString>{kept});
    }
}

void tst_selectionAndDeletion::keepsTheEarlierOfEquallyOldCopies()
{
    // Two names of one file have the same times. The order of the places is the order of the files.
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
    QCOMPARE(m_driver->tickedPaths(), (QStringList{first, third}));
    m_driver->tickAll(true);
    m_driver->click("btnSelectAll");
    QCOMPARE(m_driver->tickedPaths(), (QStringList{first, third}));
}

void tst_selectionAndDeletion::ticksEveryCategoryAndDeletesUnseen()
{
    for (const char *suffix : {"jpg", "mp4", "mp3", "txt", "zip", "xyz"})
        writePairs(m_folder->path(), 2, QLatin1StringView(suffix));
    QVERIFY(scan());
    m_driver->click("btnUnselect");
    QCOMPARE(m_driver->tickedPaths(), QStringList());
    m_driver->click("btnPictures");
    m_driver->click("btnSelectAll");
    QCOMPARE(m_driver->filePaths().size(), 4);
    QCOMPARE(m_driver->tickedPaths().size(), 2);
    QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected"), QList<ShownBox>{deleted(12, 0)});
    QCOMPARE(filesOnDisk().size(), 12);
    m_driver->click("btnAll");
    QCOMPARE(m_driver->groupTitles(), QStringList(u"No duplicate files"_s));
}

void tst_selectionAndDeletion::unticksTheShownCategoryOnly()
{
    writePairs(m_folder->path(), 3, u"jpg"_s);
    writePairs(m_folder->path(), 2, u"mp4"_s);
    QVERIFY(scan());
    const QStringList ticked = m_driver->tickedPaths();
    const QSet<QString> before = filesOnDisk();
    m_driver->click("btnVideos");
    m_driver->click("btnUnselect");
    QCOMPARE(m_driver->tickedPaths(), QStringList());
    QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected"), QList<ShownBox>{deleted(3, 0)});
    QCOMPARE(before - filesOnDisk(), toSet(ticked.filter(u".jpg"_s)));
}

void tst_selectionAndDeletion::unticksGroupsThatAreNotLoaded()
{
    writePairs(m_folder->path(), 45, u"txt"_s);
    QVERIFY(scan());
    m_driver->click("btnUnselect");
    m_driver->loadAllBatches();
    QCOMPARE(m_driver->filePaths().size(), 90);
    QCOMPARE(m_driver->tickedPaths(), QStringList());
}

void tst_selectionAndDeletion::ticksGroupsThatAreNotLoaded()
{
    writePairs(m_folder->path(), 45, u"txt"_s);
    QVERIFY(scan());
    m_driver->loadAllBatches();
    const QStringList ticked = m_driver->tickedPaths();
    m_driver->click("btnUnselect");
    m_driver->click("btnSelectAll");
    m_driver->loadAllBatches();
    QCOMPARE(m_driver->tickedPaths(), ticked);
    QCOMPARE(ticked.size(), 45);
}

void tst_selectionAndDeletion::keepsLoadedRowsOnUnselect()
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

void tst_selectionAndDeletion::goesBackToTheFirstRowsOnSelectAll()
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
    // The view has yet to lay the rows out; that must not ask for more of them.
    QCoreApplication::processEvents();
    QCOMPARE(m_driver->groupTitles(), first);
    QCOMPARE(bar->value(), 0);
    m_driver->loadAllBatches();
    QCOMPARE(m_driver->tree()->topLevelItemCount(), 45);
}

void tst_selectionAndDeletion::deletesWhatIsTickedAndNothingElse()
{
    const QStringList copies = write({u"a.txt"_s, u"b.txt"_s, u"c.txt"_s}, "content");
    write({u"alone.txt"_s, u".hidden.txt"_s}, "content of its own");
    writePairs(m_folder->path(), 3, u"jpg"_s);
    QVERIFY(scan());
    const QSet<QString> before = filesOnDisk();
    m_driver->tickAll(false);
    m_driver->tick(copies.at(1));
    QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected"), QList<ShownBox>{deleted(1, 0)});
    QCOMPARE(before - filesOnDisk(), QSet<QString>{copies.at(1)});
    // Nothing is ticked any more.
    QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected"), QList<ShownBox>{nothingTicked});
    QCOMPARE((before - filesOnDisk()).size(), 1);
}

void tst_selectionAndDeletion::asksForTicksWhenThereAreNone()
{
    writePairs(m_folder->path(), 3, u"jpg"_s);
    QVERIFY(scan());
    m_driver->click("btnUnselect");
    const QSet<QString> before = filesOnDisk();
    const QStringList titles = m_driver->groupTitles();
    QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected"), QList<ShownBox>{nothingTicked});
    QCOMPARE(filesOnDisk(), before);
    QCOMPARE(m_driver->groupTitles(), titles);
}

void tst_selectionAndDeletion::takesNoTickOfAGroupRow()
{
    writePairs(m_folder->path(), 1, u"jpg"_s);
    QVERIFY(scan());
    m_driver->tickAll(false);
    m_driver->tree()->topLevelItem(0)->setCheckState(0, Qt::Checked);
    QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected"), QList<ShownBox>{nothingTicked});
    QCOMPARE(filesOnDisk().size(), 2);
}

void tst_selectionAndDeletion::removesAGroupOfTwo_data()
{
    QTest::addColumn<bool>("gone");
    QTest::newRow("deleted") << false;
    QTest::newRow("gone already") << true;
}

void tst_selectionAndDeletion::removesAGroupOfTwo()
{
    QFETCH(const bool, gone);
    const QStringList copies = write({u"a.txt"_s, u"b.txt"_s}, "content");
    QVERIFY(scan());
    m_driver->tickAll(false);
    m_driver->tick(copies.at(1));
    if (gone)
        QVERIFY(QFile::remove(copies.at(1)));
    QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected"),
        QList<ShownBox>{deleted(gone ? 0 : 1, gone ? 1 : 0)});
    QCOMPARE(m_driver->tree()->topLevelItemCount(), 0);
    QCOMPARE(filesOnDisk(), QSet<QString>{copies.at(0)});
    m_driver->click("btnAll");
    QCOMPARE(m_driver->groupTitles(), QStringList(u"No duplicate files"_s));
}

void tst_selectionAndDeletion::leavesAGroupOfThreeOutOfFive()
{
    write({u"1.txt"_s, u"2.txt"_s, u"3.txt"_s, u"4.txt"_s, u"5.txt"_s}, "content");
    QVERIFY(scan());
    const QStringList shown = m_driver->filePaths();
    m_driver->tickAll(false);
    m_driver->tick(shown.at(0));
    m_driver->tick(shown.at(3));
    QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected"), QList<ShownBox>{deleted(2, 0)});
    QCOMPARE(m_driver->filePaths(), (QStringList{shown.at(1), shown.at(2), shown.at(4)}));
    QCOMPARE(m_driver->tickedPaths(), QStringList());
    QCOMPARE(m_driver->tree()->topLevelItem(0)->checkState(0), Qt::Unchecked);
    // Still called after the file that was the first.
    QCOMPARE(
        m_driver->groupTitles(), QStringList(QFileInfo(shown.at(0)).fileName() + u"    7 B, 3 file(s)"_s));
}

void tst_selectionAndDeletion::dropsTicksOfGroupsThatAreNotLoaded()
{
    writePairs(m_folder->path(), 45, u"txt"_s);
    QVERIFY(scan());
    const QSet<QString> before = filesOnDisk();
    const QStringList ticked = m_driver->tickedPaths();
    QCOMPARE(ticked.size(), 20);
    QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected"), QList<ShownBox>{deleted(20, 0)});
    QCOMPARE(before - filesOnDisk(), toSet(ticked));
    m_driver->loadAllBatches();
    QCOMPARE(m_driver->tree()->topLevelItemCount(), 25);
    QCOMPARE(m_driver->tickedPaths(), QStringList());
}

void tst_selectionAndDeletion::deletesTheKeptCopyWhenItIsTicked()
{
    write({u"a.txt"_s, u"b.txt"_s}, "content");
    QVERIFY(scan());
    m_driver->tickAll(true);
    QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected"), QList<ShownBox>{deleted(2, 0)});
    QCOMPARE(filesOnDisk(), QSet<QString>());
}

void tst_selectionAndDeletion::countsWhatCannotBeDeleted()
{
    const QStringList copies = write({u"a.txt"_s, u"b.txt"_s, u"c.txt"_s, u"d.txt"_s}, "content");
    QVERIFY(scan());
    m_driver->tickAll(false);
    m_driver->tick(copies.at(0));
    m_driver->tick(copies.at(1));
    // A folder in its place is not a file to delete.
    QVERIFY(QFile::remove(copies.at(0)) && QDir().mkpath(copies.at(0)));
    QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected"), QList<ShownBox>{deleted(1, 1)});
    QVERIFY(QFileInfo(copies.at(0)).isDir());
    QCOMPARE(toSet(m_driver->filePaths()), (QSet<QString>{copies.at(2), copies.at(3)}));
}

void tst_selectionAndDeletion::leavesTotalsAlone()
{
    write({u"a.txt"_s, u"b.txt"_s, u"c.txt"_s}, "content");
    QVERIFY(scan());
    const QString totals = m_driver->labelText("labelStatsInfo");
    QCOMPARE(totals, u"Total 1 duplicates, 3 files, size 0.00 GB"_s);
    for (const char *button : {"btnUnselect", "btnSelectAll"}) {
        m_driver->click(button);
        QCOMPARE(m_driver->labelText("labelStatsInfo"), totals);
    }
    m_driver->tickAll(false);
    m_driver->tick(m_driver->filePaths().first());
    m_driver->clickAndCloseBoxes("btnRemoveSelected");
    QCOMPARE(m_driver->labelText("labelStatsInfo"), totals);
    m_driver->click("btnAll");
    QCOMPARE(m_driver->labelText("labelStatsInfo"), u"Total 1 duplicates, 2 files, size 0.00 GB"_s);
}

void tst_selectionAndDeletion::hasNothingToDoInAnEmptyTree()
{
    // Nothing was scanned yet; then, everything was deleted.
    for (int round = 0; round < 2; ++round) {
        QCOMPARE(m_driver->tree()->topLevelItemCount(), 0);
        QCOMPARE(m_driver->clickAndCloseBoxes("btnSelectAll"), QList<ShownBox>());
        QCOMPARE(m_driver->clickAndCloseBoxes("btnUnselect"), QList<ShownBox>{nothingThere});
        QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected"), QList<ShownBox>{nothingTicked});
        if (round == 1)
            return;
        writePairs(m_folder->path(), 1, u"txt"_s);
        QVERIFY(scan());
        m_driver->clickAndCloseBoxes("btnRemoveSelected");
    }
}

void tst_selectionAndDeletion::neverTicksTheOnlyFile()
{
    const QStringList copies = write({u"a.txt"_s, u"b.txt"_s}, "content");
    m_driver->setFolders({m_folder->path(), m_folder->path()});
    QVERIFY(m_driver->scan());
    QCOMPARE(m_driver->filePaths().size(), 4);
    m_driver->click("btnSelectAll");
    QCOMPARE(toSet(m_driver->tickedPaths()).size(), 1);
    const QString ticked = m_driver->tickedPaths().first();
    // The path stands there twice but can be deleted only once.
    QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected"), QList<ShownBox>{deleted(1, 0)});
    QCOMPARE(filesOnDisk(), toSet(copies) - QSet<QString>{ticked});
    m_driver->click("btnSelectAll");
    QCOMPARE(m_driver->tickedPaths(), QStringList());
}

void tst_selectionAndDeletion::showsPlainInformationBoxes()
{
    writePairs(m_folder->path(), 1, u"txt"_s);
    QVERIFY(scan());
    for (const char *button : {"btnRemoveSelected", "btnUnselect", "btnRemoveSelected"}) {
        int boxes = 0;
        withModalDialogs([&] { m_driver->click(button); },
            [&](QWidget *dialog) {
                ++boxes;
                const auto *const box = qobject_cast<QMessageBox *>(dialog);
                dialog->close();
                QVERIFY(box);
                QCOMPARE(box->icon(), QMessageBox::Information);
                QCOMPARE(box->standardButtons(), QMessageBox::Ok);
                QCOMPARE(box->parentWidget(), &m_driver->window());
            });
        QCOMPARE(boxes, 1);
    }
}

QTEST_MAIN(tst_selectionAndDeletion)
#include "tst_selectionAndDeletion.moc"
