#include "tests/support/DuplicateFiles.h"
#include "tests/support/ScannedFolder.h"

#include <QDir>
#include <QMessageBox>
#include <QTest>

#include <filesystem>

using Qt::StringLiterals::operator""_s;

namespace {

const ShownBox nothingMarked{u"NOTE"_s, u"Please select the files you want to delete!"_s};
const ShownBox nothingThere{u"NOTE"_s, u"There are no duplicate files to work with."_s};

} // namespace

/// Delete: which files it removes, and which message boxes it shows.
class tst_deletion : public QObject, private ScannedFolder
{
    Q_OBJECT

private slots:
    void init();

    void deletesOnlyMarkedFiles();
    void reportsThatNoFileIsMarked();
    void ignoresTheCheckOfAGroupRow();
    void bypassesTheTrash();
    void removesAGroupOfTwo_data();
    void removesAGroupOfTwo();
    void keepsAGroupOfThreeOutOfFive();
    void dropsMarksOfGroupsThatAreNotLoaded();
    void deletesTheKeptCopyWhenItIsMarked();
    void countsFilesThatCannotBeDeleted();
    void keepsTheTotals();
    void doesNothingInAnEmptyTree();
    void neverMarksTheOnlyFile();
    void showsPlainInformationBoxes();
};

void tst_deletion::init()
{
    reset();
}

void tst_deletion::deletesOnlyMarkedFiles()
{
    const QStringList copies = write({u"a.txt"_s, u"b.txt"_s, u"c.txt"_s}, "content");
    write({u"alone.txt"_s, u".hidden.txt"_s}, "content of its own");
    writePairs(m_folder->path(), 3, u"jpg"_s);
    QVERIFY(scan());
    const QSet<QString> before = filesOnDisk();
    m_driver->checkAll(false);
    m_driver->check(copies.at(1));
    QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected"), QList<ShownBox>{deletionBox(1, 0)});
    QCOMPARE(before - filesOnDisk(), QSet<QString>{copies.at(1)});
    // The deletion has removed every mark.
    QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected"), QList<ShownBox>{nothingMarked});
    QCOMPARE((before - filesOnDisk()).size(), 1);
}

void tst_deletion::reportsThatNoFileIsMarked()
{
    writePairs(m_folder->path(), 3, u"jpg"_s);
    QVERIFY(scan());
    m_driver->click("btnUnselect");
    const QSet<QString> before = filesOnDisk();
    const QStringList titles = m_driver->groupTitles();
    QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected"), QList<ShownBox>{nothingMarked});
    QCOMPARE(filesOnDisk(), before);
    QCOMPARE(m_driver->groupTitles(), titles);
}

void tst_deletion::ignoresTheCheckOfAGroupRow()
{
    writePairs(m_folder->path(), 1, u"jpg"_s);
    QVERIFY(scan());
    m_driver->checkAll(false);
    m_driver->tree()->topLevelItem(0)->setCheckState(0, Qt::Checked);
    QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected"), QList<ShownBox>{nothingMarked});
    QCOMPARE(filesOnDisk().size(), 2);
}

/// A file in the trash would keep its second hard link.
void tst_deletion::bypassesTheTrash()
{
    const QStringList copies = write({u"a.txt"_s, u"b.txt"_s}, "content");
    const QTemporaryDir elsewhere;
    const std::filesystem::path otherName(elsewhere.filePath(u"c.txt"_s).toStdU16String());
    std::filesystem::create_hard_link(copies.at(1).toStdU16String(), otherName);
    QVERIFY(scan());
    m_driver->checkAll(false);
    m_driver->check(copies.at(1));
    QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected"), QList<ShownBox>{deletionBox(1, 0)});
    QCOMPARE(std::filesystem::hard_link_count(otherName), 1U);
}

void tst_deletion::removesAGroupOfTwo_data()
{
    QTest::addColumn<bool>("gone");
    QTest::newRow("deleted") << false;
    QTest::newRow("already gone") << true;
}

void tst_deletion::removesAGroupOfTwo()
{
    QFETCH(const bool, gone);
    const QStringList copies = write({u"a.txt"_s, u"b.txt"_s}, "content");
    QVERIFY(scan());
    m_driver->checkAll(false);
    m_driver->check(copies.at(1));
    if (gone)
        QVERIFY(QFile::remove(copies.at(1)));
    QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected"),
        QList<ShownBox>{deletionBox(gone ? 0 : 1, gone ? 1 : 0)});
    QCOMPARE(m_driver->tree()->topLevelItemCount(), 0);
    QCOMPARE(filesOnDisk(), QSet<QString>{copies.at(0)});
    m_driver->click("btnAll");
    QCOMPARE(m_driver->groupTitles(), QStringList(u"No duplicate files"_s));
}

void tst_deletion::keepsAGroupOfThreeOutOfFive()
{
    write({u"1.txt"_s, u"2.txt"_s, u"3.txt"_s, u"4.txt"_s, u"5.txt"_s}, "content");
    QVERIFY(scan());
    const QStringList shown = m_driver->filePaths();
    m_driver->checkAll(false);
    m_driver->check(shown.at(0));
    m_driver->check(shown.at(3));
    QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected"), QList<ShownBox>{deletionBox(2, 0)});
    QCOMPARE(m_driver->filePaths(), (QStringList{shown.at(1), shown.at(2), shown.at(4)}));
    QCOMPARE(m_driver->checkedPaths(), QStringList());
    QCOMPARE(m_driver->tree()->topLevelItem(0)->checkState(0), Qt::Unchecked);
    // The title still names the file that was first.
    QCOMPARE(
        m_driver->groupTitles(), QStringList(QFileInfo(shown.at(0)).fileName() + u"    7 B, 3 file(s)"_s));
}

void tst_deletion::dropsMarksOfGroupsThatAreNotLoaded()
{
    writePairs(m_folder->path(), 45, u"txt"_s);
    QVERIFY(scan());
    const QSet<QString> before = filesOnDisk();
    const QStringList marked = m_driver->checkedPaths();
    QCOMPARE(marked.size(), 20);
    QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected"), QList<ShownBox>{deletionBox(20, 0)});
    QCOMPARE(before - filesOnDisk(), toSet(marked));
    m_driver->loadAllBatches();
    QCOMPARE(m_driver->tree()->topLevelItemCount(), 25);
    QCOMPARE(m_driver->checkedPaths(), QStringList());
}

void tst_deletion::deletesTheKeptCopyWhenItIsMarked()
{
    write({u"a.txt"_s, u"b.txt"_s}, "content");
    QVERIFY(scan());
    m_driver->checkAll(true);
    QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected"), QList<ShownBox>{deletionBox(2, 0)});
    QCOMPARE(filesOnDisk(), QSet<QString>());
}

void tst_deletion::countsFilesThatCannotBeDeleted()
{
    const QStringList copies = write({u"a.txt"_s, u"b.txt"_s, u"c.txt"_s, u"d.txt"_s}, "content");
    QVERIFY(scan());
    m_driver->checkAll(false);
    m_driver->check(copies.at(0));
    m_driver->check(copies.at(1));
    // A folder replaces the first file.
    QVERIFY(QFile::remove(copies.at(0)) && QDir().mkpath(copies.at(0)));
    QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected"), QList<ShownBox>{deletionBox(1, 1)});
    QVERIFY(QFileInfo(copies.at(0)).isDir());
    QCOMPARE(toSet(m_driver->filePaths()), (QSet<QString>{copies.at(2), copies.at(3)}));
}

void tst_deletion::keepsTheTotals()
{
    write({u"a.txt"_s, u"b.txt"_s, u"c.txt"_s}, "content");
    QVERIFY(scan());
    const QString totals = m_driver->labelText("labelStatsInfo");
    QCOMPARE(totals, u"Total 1 duplicates, 3 files, size 0.00 GB"_s);
    for (const char *button : {"btnUnselect", "btnSelectAll"}) {
        m_driver->click(button);
        QCOMPARE(m_driver->labelText("labelStatsInfo"), totals);
    }
    m_driver->checkAll(false);
    m_driver->check(m_driver->filePaths().first());
    m_driver->clickAndCloseBoxes("btnRemoveSelected");
    QCOMPARE(m_driver->labelText("labelStatsInfo"), totals);
    m_driver->click("btnAll");
    QCOMPARE(m_driver->labelText("labelStatsInfo"), u"Total 1 duplicates, 2 files, size 0.00 GB"_s);
}

void tst_deletion::doesNothingInAnEmptyTree()
{
    // The tree is empty before the first scan and after everything was deleted.
    for (int round = 0; round < 2; ++round) {
        QCOMPARE(m_driver->tree()->topLevelItemCount(), 0);
        QCOMPARE(m_driver->clickAndCloseBoxes("btnSelectAll"), QList<ShownBox>());
        QCOMPARE(m_driver->clickAndCloseBoxes("btnUnselect"), QList<ShownBox>{nothingThere});
        QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected"), QList<ShownBox>{nothingMarked});
        if (round == 1)
            return;
        writePairs(m_folder->path(), 1, u"txt"_s);
        QVERIFY(scan());
        m_driver->clickAndCloseBoxes("btnRemoveSelected");
    }
}

void tst_deletion::neverMarksTheOnlyFile()
{
    const QStringList copies = write({u"a.txt"_s, u"b.txt"_s}, "content");
    m_driver->setFolders({m_folder->path(), m_folder->path()});
    QVERIFY(m_driver->scan());
    QCOMPARE(m_driver->filePaths().size(), 4);
    m_driver->click("btnSelectAll");
    QCOMPARE(toSet(m_driver->checkedPaths()).size(), 1);
    const QString marked = m_driver->checkedPaths().first();
    // The path is listed twice but can be deleted only once.
    QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected"), QList<ShownBox>{deletionBox(1, 0)});
    QCOMPARE(filesOnDisk(), toSet(copies) - QSet<QString>{marked});
    m_driver->click("btnSelectAll");
    QCOMPARE(m_driver->checkedPaths(), QStringList());
}

void tst_deletion::showsPlainInformationBoxes()
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

QTEST_MAIN(tst_deletion)
#include "tst_deletion.moc"
