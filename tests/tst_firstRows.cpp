#include "tests/support/DuplicateFiles.h"
#include "tests/support/LoadingPanelEvents.h"
#include "tests/support/PoolGate.h"
#include "tests/support/ScannedFolder.h"

#include <QTest>

#include <array>
#include <chrono>
#include <memory>
#include <utility>

using Qt::StringLiterals::operator""_s;
using std::chrono_literals::operator""ms;

namespace {

constexpr int pairs = 45;
constexpr int resultsPage = 2;
constexpr std::array categoryButtons{
    "btnAll", "btnPictures", "btnVideos", "btnAudios", "btnDocuments", "btnArchives", "btnOthers"};
constexpr std::array actionButtons{"btnSelectAll", "btnUnselect", "btnRemoveSelected"};

} // namespace

/// The results page between the delivery of a result and its first rows.
class tst_firstRows : public QObject, private ScannedFolder
{
    Q_OBJECT

private slots:
    void init();

    void appearAfterOneHundredMilliseconds();
    void enableTheButtonsInEveryScan();
    void ignoreEarlierClicksOnACategory_data();
    void ignoreEarlierClicksOnACategory();
    void doNotAppearAfterBack();
    void appearWithTheNextScanAfterBack();
    void appearAfterTwoDeliveriesCloseTogether();

private:
    /// Calls \a action once, after the next delivery and before its first rows.
    void afterDelivery(const std::function<void()> &action);
    /// Returns after the time at which the rows of the last delivery were due.
    static void waitUntilRowsWereDue();
    /// Checks that the page shows the entire result and that all files but the kept ones are marked.
    void verifyThePageIsFilled();

    template <typename Names>
    QStringList enabled(const Names &names)
    {
        QStringList result;
        for (const char *name : names) {
            if (m_driver->find(name)->isEnabled())
                result.append(QLatin1StringView(name));
        }
        return result;
    }
};

void tst_firstRows::init()
{
    reset();
    writePairs(m_folder->path(), pairs, u"txt"_s);
    m_driver->setFolders({m_folder->path()});
}

void tst_firstRows::afterDelivery(const std::function<void()> &action)
{
    const auto called = std::make_shared<bool>(false);
    connect(
        m_driver->find<QStackedWidget>("stackedWidget"), &QStackedWidget::currentChanged, this,
        [action, called](int page) {
            if (page == resultsPage && !std::exchange(*called, true))
                action();
        },
        Qt::QueuedConnection);
}

void tst_firstRows::waitUntilRowsWereDue()
{
    // A timer never expires before one that was started earlier with a shorter time.
    bool due = false;
    QTimer::singleShot(150ms, Qt::PreciseTimer, qApp, [&due] { due = true; });
    QTRY_VERIFY(due);
}

void tst_firstRows::verifyThePageIsFilled()
{
    QCOMPARE(m_driver->page(), u"duplicatespage"_s);
    QCOMPARE(m_driver->tree()->topLevelItemCount(), 20);
    QCOMPARE(enabled(categoryButtons).size(), 7);
    QCOMPARE(enabled(actionButtons).size(), 3);
    m_driver->loadAllBatches();
    QCOMPARE(m_driver->tree()->topLevelItemCount(), pairs);
    QCOMPARE(m_driver->checkedPaths().size(), pairs);
}

void tst_firstRows::appearAfterOneHundredMilliseconds()
{
    // Timers expire in the order of their times, however slow the machine is.
    QStringList order;
    const auto noteAfter = [this, &order](std::chrono::milliseconds time) {
        QTimer::singleShot(
            time, Qt::PreciseTimer, this, [&order, time] { order.append(QString::number(time.count())); });
    };
    connect(m_driver->find<QStackedWidget>("stackedWidget"), &QStackedWidget::currentChanged, this,
        [&noteAfter](int page) {
            if (page == resultsPage)
                noteAfter(90ms);
        });
    afterDelivery([&noteAfter] { noteAfter(110ms); });
    LoadingPanelEvents events(&m_driver->window());
    events.onClosed = [&order] { order.append(u"load"_s); };

    m_driver->click("btnStartScan");
    QTRY_VERIFY_WITH_TIMEOUT(order.contains(u"110"_s), 30'000);
    // The load closes the panel at its start and again at its end.
    order.removeDuplicates();
    QCOMPARE(order, (QStringList{u"90"_s, u"load"_s, u"110"_s}));
    QCOMPARE(m_driver->tree()->topLevelItemCount(), 20);
}

void tst_firstRows::enableTheButtonsInEveryScan()
{
    for (int scan = 0; scan < 2; ++scan) {
        QStringList enabledBefore{u"not recorded"_s};
        afterDelivery([&] { enabledBefore = enabled(categoryButtons) + enabled(actionButtons); });
        QVERIFY(m_driver->scan());
        QCOMPARE(enabledBefore, QStringList());
        verifyThePageIsFilled();
        m_driver->click("btnBack");
    }
}

void tst_firstRows::ignoreEarlierClicksOnACategory_data()
{
    QTest::addColumn<int>("scans");
    for (const char *button : categoryButtons) {
        QTest::addRow("%s in the first scan", button) << 1;
        QTest::addRow("%s in the second scan", button) << 2;
    }
}

/// Such a click would save the marks of rows that do not exist yet.
void tst_firstRows::ignoreEarlierClicksOnACategory()
{
    QFETCH(const int, scans);
    const QByteArray button = QByteArray(QTest::currentDataTag()).split(' ').first();
    if (scans == 2) {
        QVERIFY(m_driver->scan());
        m_driver->click("btnBack");
    }
    int rowsAfterClick = -1;
    afterDelivery([&] {
        m_driver->click(button);
        rowsAfterClick = m_driver->tree()->topLevelItemCount();
    });

    QVERIFY(m_driver->scan());
    QCOMPARE(rowsAfterClick, 0);
    verifyThePageIsFilled();
    for (const char *name : categoryButtons)
        QCOMPARE(m_driver->find(name)->property("selected").toBool(), qstrcmp(name, "btnAll") == 0);
}

void tst_firstRows::doNotAppearAfterBack()
{
    for (int scan = 0; scan < 2; ++scan) {
        bool back = false;
        afterDelivery([&] {
            m_driver->click("btnBack");
            back = true;
        });
        m_driver->click("btnStartScan");
        QTRY_VERIFY_WITH_TIMEOUT(back, 30'000);
        waitUntilRowsWereDue();
        QCOMPARE(m_driver->page(), u"page"_s);
        QCOMPARE(m_driver->tree()->topLevelItemCount(), 0);
        QCOMPARE(m_driver->labelText("labelStatsInfo"), QString());
        QVERIFY(m_driver->find("btnStartScan")->isEnabled());
        for (const QWidget *panel : m_driver->window().findChildren<QWidget *>(Qt::FindDirectChildrenOnly))
            QVERIFY(!panel->isVisible() || !panel->windowFlags().testFlag(Qt::FramelessWindowHint));
        QTRY_COMPARE(m_driver->timers(400).size(), 0);
    }

    QVERIFY(m_driver->scan());
    verifyThePageIsFilled();
}

void tst_firstRows::appearWithTheNextScanAfterBack()
{
    bool again = false;
    afterDelivery([&] {
        m_driver->click("btnBack");
        m_driver->click("btnStartScan");
        again = true;
    });

    m_driver->click("btnStartScan");
    QTRY_VERIFY_WITH_TIMEOUT(again, 30'000);
    QVERIFY(m_driver->waitForResults());
    waitUntilRowsWereDue();
    verifyThePageIsFilled();
    QCOMPARE(m_driver->labelText("labelStatsInfo"), u"Total 45 duplicates, 90 files, size 0.00 GB"_s);
}

void tst_firstRows::appearAfterTwoDeliveriesCloseTogether()
{
    QVERIFY(m_driver->scan());
    PoolGate gate;

    m_driver->click("btnStartScan");
    m_driver->click("btnStartScan");
    gate.runQueuedTasks();

    QTRY_COMPARE(m_driver->labelText("labelCurrentFile"), u"Analyzing..."_s);
    gate.runQueuedTasks();
    QVERIFY(m_driver->waitForResults());
    waitUntilRowsWereDue();
    verifyThePageIsFilled();
}

QTEST_MAIN(tst_firstRows)
#include "tst_firstRows.moc"
