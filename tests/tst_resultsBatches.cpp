#include "tests/support/DuplicateFiles.h"
#include "tests/support/ScannedFolder.h"

#include <QScrollBar>
#include <QTest>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int categoryRole = Qt::UserRole + 1;

} // namespace

/// The batches in which the rows of the results page are loaded.
class tst_resultsBatches : public QObject, private ScannedFolder
{
    Q_OBJECT

private slots:
    void init();

    void loadsInBatchesOfTwenty();
    void loadsOneBatchForExactlyTwenty();
    void loadsOnlyPastNinetyPerCent();
    void loadsNothingWithoutAScrollRange();
    void loadsIfLessThanAHundredRemain();
    void loadsEverythingByScrollingToTheEnd();
    void storesTheCategoryOnlyInRowsLoadedInBatches();
};

void tst_resultsBatches::init()
{
    reset();
}

void tst_resultsBatches::loadsInBatchesOfTwenty()
{
    writePairs(m_folder->path(), 45, u"txt"_s);
    QVERIFY(scan());
    QCOMPARE(groups(), 20);
    const QStringList first = m_driver->groupTitles();

    m_driver->callSlot("on_treeDuplicates_scroll");
    QCOMPARE(groups(), 40);
    m_driver->callSlot("on_treeDuplicates_scroll");
    QCOMPARE(groups(), 45);
    m_driver->callSlot("on_treeDuplicates_scroll");
    QCOMPARE(groups(), 45);
    const QStringList titles = m_driver->groupTitles();
    QCOMPARE(titles.first(20), first);
    QCOMPARE(QSet<QString>(titles.cbegin(), titles.cend()).size(), 45);
}

void tst_resultsBatches::loadsOneBatchForExactlyTwenty()
{
    writePairs(m_folder->path(), 20, u"txt"_s);
    QVERIFY(scan());
    QCOMPARE(groups(), 20);
    m_driver->callSlot("on_treeDuplicates_scroll");
    QCOMPARE(groups(), 20);
}

void tst_resultsBatches::loadsOnlyPastNinetyPerCent()
{
    writePairs(m_folder->path(), 70, u"txt"_s);
    QVERIFY(scan());
    QCoreApplication::processEvents();
    QScrollBar *const bar = m_driver->tree()->verticalScrollBar();
    bar->setRange(0, 100);
    bar->setValue(90);

    QCOMPARE(groups(), 20);
    bar->setValue(91);
    // The scroll bar is connected twice, so one change loads two batches.
    QCOMPARE(groups(), 60);
}

void tst_resultsBatches::loadsNothingWithoutAScrollRange()
{
    writePairs(m_folder->path(), 45, u"txt"_s);
    QVERIFY(scan());
    QCoreApplication::processEvents();
    QScrollBar *const bar = m_driver->tree()->verticalScrollBar();
    bar->setValue(1);

    QCOMPARE(groups(), 20);
    // The value changes to 0, as it does when the tree is emptied.
    bar->setRange(0, 0);
    QCOMPARE(bar->value(), 0);
    QCOMPARE(groups(), 20);
}

void tst_resultsBatches::loadsIfLessThanAHundredRemain()
{
    writePairs(m_folder->path(), 45, u"txt"_s);
    QVERIFY(scan());
    QCoreApplication::processEvents();
    QScrollBar *const bar = m_driver->tree()->verticalScrollBar();
    // What remains is counted in steps of the bar, less the pixels of the viewport.
    bar->setRange(0, m_driver->tree()->viewport()->height() + 110);
    bar->setValue(10);

    m_driver->callSlot("on_treeDuplicates_scroll");
    QCOMPARE(groups(), 20);
    bar->setValue(11);
    m_driver->callSlot("on_treeDuplicates_scroll");
    QCOMPARE(groups(), 40);
}

void tst_resultsBatches::loadsEverythingByScrollingToTheEnd()
{
    writePairs(m_folder->path(), 130, u"txt"_s);
    QVERIFY(scan());
    QScrollBar *const bar = m_driver->tree()->verticalScrollBar();
    int rounds = 0;

    QTRY_VERIFY2((bar->setValue(bar->maximum()), ++rounds, groups() == 130), "Not all groups were loaded");
    QVERIFY2(rounds > 1, "All groups were loaded in one batch");
    const QStringList titles = m_driver->groupTitles();
    QCOMPARE(QSet<QString>(titles.cbegin(), titles.cend()).size(), 130);
}

void tst_resultsBatches::storesTheCategoryOnlyInRowsLoadedInBatches()
{
    writePairs(m_folder->path(), 25, u"txt"_s);
    QVERIFY(scan());
    m_driver->loadAllBatches();
    QCOMPARE(group(0)->data(0, categoryRole), QVariant(u"all"_s));
    QCOMPARE(group(24)->data(0, categoryRole), QVariant(u"all"_s));

    m_driver->click("btnDocuments");
    QCOMPARE(group(0)->data(0, categoryRole), QVariant(u"document"_s));
    const QStringList titles = m_driver->groupTitles();
    m_driver->callSlot("refreshCurrentBatchUI");
    QCOMPARE(m_driver->groupTitles(), titles);
    QVERIFY(!group(0)->data(0, categoryRole).isValid());
    m_driver->loadAllBatches();
    QCOMPARE(groups(), 25);
    QCOMPARE(group(20)->data(0, categoryRole), QVariant(u"document"_s));
}

QTEST_MAIN(tst_resultsBatches)
#include "tst_resultsBatches.moc"
