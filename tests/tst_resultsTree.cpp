#include "tests/support/DuplicateFiles.h"
#include "tests/support/ScannedFolder.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

using Qt::StringLiterals::operator""_s;

namespace {

void makeFile(const QString &path, qint64 size)
{
    writeFile(path, QByteArray());
    if (!QFile::resize(path, size))
        qFatal("Cannot resize %s", qPrintable(path));
}

} // namespace

/// The rows of the results page, and the line with their totals.
class tst_resultsTree : public QObject, private ScannedFolder
{
    Q_OBJECT

private slots:
    void init();

    void showsSizesInTitles_data();
    void showsSizesInTitles();
    void keepsPlaceholdersInNames();
    void buildsGroupRows();
    void buildsFileRows();
    void showsWhetherAllOrSomeFilesAreMarked_data();
    void showsWhetherAllOrSomeFilesAreMarked();
    void skipsMissingFiles();
    void checksOnlyTheClickedRow();
    void countsEveryFileInTheTotals();

    void showsAPlaceholderInAnEmptyCategory();
    void showsNoSelection();
};

void tst_resultsTree::init()
{
    reset();
}

void tst_resultsTree::showsSizesInTitles_data()
{
    QTest::addColumn<qint64>("size");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << qint64(0) << u"0 B"_s;
    QTest::newRow("last byte") << qint64(1023) << u"1023 B"_s;
    QTest::newRow("first KB") << qint64(1024) << u"1.00 KB"_s;
    QTest::newRow("two decimals") << qint64(1500) << u"1.46 KB"_s;
    QTest::newRow("last KB") << qint64(1048575) << u"1024.00 KB"_s;
    QTest::newRow("first MB") << qint64(1048576) << u"1.00 MB"_s;
    QTest::newRow("no GB") << qint64(5) * 1024 * 1024 * 1024 << u"5120.00 MB"_s;
}

void tst_resultsTree::showsSizesInTitles()
{
    QFETCH(const qint64, size);
    QFETCH(const QString, text);
    for (const QString &name : {u"x.dat"_s, u"copy/x.dat"_s})
        makeFile(path(name), size);
    QVERIFY(scan());
    QCOMPARE(m_driver->groupTitles(), QStringList(u"x.dat    %1, 2 file(s)"_s.arg(text)));
}

void tst_resultsTree::keepsPlaceholdersInNames()
{
    writeCopies(m_folder->path(), {u"%1 %2 %3.txt"_s, u"copy/%1 %2 %3.txt"_s}, "content");
    QVERIFY(scan());
    QCOMPARE(m_driver->groupTitles(), QStringList(u"%1 %2 %3.txt    7 B, 2 file(s)"_s));
}

void tst_resultsTree::buildsGroupRows()
{
    writePairs(m_folder->path(), 3, u"txt"_s);
    QVERIFY(scan());
    QCOMPARE(groups(), 3);
    for (int i = 0; i < groups(); ++i) {
        QCOMPARE(group(i)->childCount(), 2);
        QCOMPARE(group(i)->type(), 0);
        QVERIFY(group(i)->isFirstColumnSpanned());
        QVERIFY(!group(i)->isExpanded());
        QVERIFY(group(i)->flags().testFlag(Qt::ItemIsUserCheckable));
        QVERIFY(group(i)->text(0).startsWith(QFileInfo(group(i)->child(0)->text(0)).fileName() + u"    "_s));
    }
}

void tst_resultsTree::buildsFileRows()
{
    const QStringList paths = writeCopies(m_folder->path(), {u"a.txt"_s, u"b.txt"_s}, QByteArray(2047, 'x'));
    const QDateTime time(QDate(2021, 2, 3), QTime(4, 5, 6));
    QFile file(paths.first());
    QVERIFY(file.open(QIODevice::ReadWrite) && file.setFileTime(time, QFileDevice::FileModificationTime));
    file.close();

    QVERIFY(scan());
    for (const QString &each : paths) {
        const QTreeWidgetItem *const row = m_driver->fileRow(each);
        QVERIFY(row);
        QCOMPARE(row->type(), 0);
        QCOMPARE(row->text(1), u"1 KB"_s);
        QVERIFY(!row->icon(0).isNull());
    }

    QCOMPARE(m_driver->fileRow(paths.first())->text(2), u"2021-02-03 04:05:06"_s);
    QCOMPARE(m_driver->fileRow(paths.last())->text(2),
        QFileInfo(paths.last()).lastModified().toString(u"yyyy-MM-dd hh:mm:ss"_s));
}

void tst_resultsTree::showsWhetherAllOrSomeFilesAreMarked_data()
{
    QTest::addColumn<int>("marked");
    QTest::addColumn<Qt::CheckState>("state");
    QTest::newRow("none") << 0 << Qt::Unchecked;
    QTest::newRow("one") << 1 << Qt::PartiallyChecked;
    QTest::newRow("two") << 2 << Qt::PartiallyChecked;
    QTest::newRow("all") << 3 << Qt::Checked;
}

void tst_resultsTree::showsWhetherAllOrSomeFilesAreMarked()
{
    QFETCH(const int, marked);
    QFETCH(const Qt::CheckState, state);
    const QStringList paths = writeCopies(m_folder->path(), {u"a.txt"_s, u"b.txt"_s, u"c.txt"_s}, "content");
    QVERIFY(scan());
    QCOMPARE(group(0)->checkState(0), Qt::PartiallyChecked);
    m_driver->checkAll(false);
    for (const QString &each : paths.first(marked))
        m_driver->check(each);

    m_driver->click("btnAll");
    QStringList shown = m_driver->checkedPaths();
    shown.sort();

    QCOMPARE(shown, paths.first(marked));
    QCOMPARE(group(0)->checkState(0), state);
}

void tst_resultsTree::skipsMissingFiles()
{
    const QStringList paths = writeCopies(m_folder->path(), {u"a.txt"_s, u"b.txt"_s, u"c.txt"_s}, "content");
    QVERIFY(scan());
    m_driver->checkAll(true);
    QVERIFY(QFile::remove(paths.at(1)));

    m_driver->click("btnAll");
    QVERIFY(group(0)->text(0).endsWith(u", 3 file(s)"_s));
    QStringList shown = m_driver->filePaths();
    shown.sort();
    QCOMPARE(shown, (QStringList{paths.at(0), paths.at(2)}));
    // Every row is checked, but one file of the group has no row.
    QCOMPARE(m_driver->checkedPaths().size(), 2);
    QCOMPARE(group(0)->checkState(0), Qt::PartiallyChecked);
    QVERIFY(QFile::remove(paths.at(0)) && QFile::remove(paths.at(2)));
    m_driver->click("btnAll");
    QCOMPARE(groups(), 1);
    QCOMPARE(group(0)->childCount(), 0);
    QCOMPARE(group(0)->checkState(0), Qt::Unchecked);
}

void tst_resultsTree::checksOnlyTheClickedRow()
{
    writeCopies(m_folder->path(), {u"a.txt"_s, u"b.txt"_s}, "content");
    QVERIFY(scan());
    const QStringList before = m_driver->checkedPaths();
    group(0)->setCheckState(0, Qt::Checked);

    QCOMPARE(m_driver->checkedPaths(), before);
    group(0)->setCheckState(0, Qt::Unchecked);
    QCOMPARE(m_driver->checkedPaths(), before);
    m_driver->checkAll(true);
    QCOMPARE(group(0)->checkState(0), Qt::Unchecked);
}

void tst_resultsTree::countsEveryFileInTheTotals()
{
    for (const QString &name : {u"a.dat"_s, u"b.dat"_s, u"c.dat"_s})
        makeFile(path(name), qint64(1) << 30);
    writePairs(m_folder->path(), 2, u"txt"_s);
    QVERIFY(scan());
    QCOMPARE(m_driver->labelText("labelStatsInfo"), u"Total 3 duplicates, 7 files, size 3.00 GB"_s);

    m_driver->click("btnOthers");
    QCOMPARE(m_driver->labelText("labelStatsInfo"), u"Total 1 duplicates, 3 files, size 3.00 GB"_s);
    m_driver->click("btnDocuments");
    QCOMPARE(m_driver->labelText("labelStatsInfo"), u"Total 2 duplicates, 4 files, size 0.00 GB"_s);
}

void tst_resultsTree::showsAPlaceholderInAnEmptyCategory()
{
    writePairs(m_folder->path(), 1, u"txt"_s);
    QVERIFY(scan());
    const QString totals = m_driver->labelText("labelStatsInfo");

    m_driver->click("btnVideos");
    QCOMPARE(groups(), 1);
    QCOMPARE(group(0)->text(0), u"No duplicate files"_s);
    QCOMPARE(group(0)->childCount(), 0);
    QCOMPARE(group(0)->flags(), Qt::NoItemFlags);
    QCOMPARE(group(0)->foreground(0).color(), QColor(0xaa, 0xaa, 0xaa));
    QCOMPARE(Qt::Alignment(group(0)->textAlignment(0)), Qt::AlignCenter);
    QCOMPARE(m_driver->labelText("labelStatsInfo"), totals);
    QCOMPARE(m_driver->labelText("labelScanStatus"), u"No duplicate files found."_s);
    for (const char *name : {"btnSelectAll", "btnUnselect", "btnRemoveSelected"})
        QVERIFY(!m_driver->find(name)->isEnabled());
    QVERIFY(m_driver->tree()->updatesEnabled());
    m_driver->click("btnAll");
    QCOMPARE(groups(), 1);
    QCOMPARE(group(0)->childCount(), 2);
    QCOMPARE(m_driver->labelText("labelScanStatus"), u"Loading Complete"_s);
    for (const char *name : {"btnSelectAll", "btnUnselect", "btnRemoveSelected"})
        QVERIFY(m_driver->find(name)->isEnabled());
    QVERIFY(m_driver->tree()->updatesEnabled());
}

void tst_resultsTree::showsNoSelection()
{
    writePairs(m_folder->path(), 5, u"txt"_s);
    QVERIFY(scan());
    QTreeWidget *const tree = m_driver->tree();
    // The row without the arrow that expands it.
    const QRect row = tree->visualItemRect(group(2));
    const QRect inWindow(tree->viewport()->mapTo(&m_driver->window(), row.topLeft()), row.size());
    const QImage before = m_driver->window().grab(inWindow).toImage();
    tree->setCurrentItem(group(2));

    QVERIFY(group(2)->isSelected());
    QCOMPARE(m_driver->window().grab(inWindow).toImage(), before);
}

QTEST_MAIN(tst_resultsTree)
#include "tst_resultsTree.moc"
