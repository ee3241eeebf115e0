#include "tests/support/DuplicateFiles.h"
#include "tests/support/LoadingPanelEvents.h"
#include "tests/support/PoolGate.h"
#include "tests/support/WindowDriver.h"

#include <QApplication>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <QThreadPool>

#include <utility>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int pairs = 45;

/// Returns whether each group row shows a pair of copies and no group is listed twice.
bool rowsAreIntact(WindowDriver &driver)
{
    const QStringList titles = driver.groupTitles();
    if (QSet<QString>(titles.cbegin(), titles.cend()).size() != titles.size())
        return false;
    for (int i = 0; i < titles.size(); ++i) {
        const QTreeWidgetItem *const group = driver.tree()->topLevelItem(i);
        const QString ending = titles.at(i).section(u'-', 1).section(u' ', 0, 0);
        if (group->childCount() != 2 || !group->child(0)->text(0).endsWith(u'-' + ending) ||
            !group->child(1)->text(0).endsWith(u'-' + ending))
            return false;
    }
    return true;
}

} // namespace

/// Results that replace one another, and requests that arrive during a category load.
class tst_interruptedLoads : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void startsEveryResultWithDefaultMarks();
    void neverSavesOldMarksIntoNewGroups();
    void acceptsADeliveryDuringALoad_data();
    void acceptsADeliveryDuringALoad();
    void acceptsRequestsDuringALoad_data();
    void acceptsRequestsDuringALoad();

private:
    /// Checks that the rows are intact, that marks survive a reload and that Delete removes the marked file
    /// alone.
    void verifyPage();
    /// Returns whether no scan is running and the last load has ended.
    bool isIdle();
    /// Starts the first load of a scan or a later load, and sends \a request in the middle of it: presses the
    /// button or calls the slot of that name. Returns whether it arrived there.
    bool requestDuringLoad(const QByteArray &request, bool first);

    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<WindowDriver> m_driver;
    QScopedPointer<LoadingPanelEvents> m_events;
};

void tst_interruptedLoads::init()
{
    m_folder.reset(new QTemporaryDir);
    writePairs(m_folder->path(), pairs, u"txt"_s);
    m_driver.reset(new WindowDriver);
    m_driver->setFolders({m_folder->path()});
    m_events.reset(new LoadingPanelEvents(&m_driver->window()));
}

void tst_interruptedLoads::cleanup()
{
    m_events.reset();
    m_driver.reset();
}

void tst_interruptedLoads::verifyPage()
{
    QVERIFY(rowsAreIntact(*m_driver));
    m_driver->checkAll(false);
    const QString path = m_driver->tree()->topLevelItem(7)->child(0)->text(0);
    m_driver->check(path);

    m_driver->click("btnAll");
    QCOMPARE(m_driver->checkedPaths(), QStringList(path));
    const QSet<QString> before = filesBelow(m_folder->path());
    m_driver->clickAndCloseBoxes("btnRemoveSelected");
    QCOMPARE(before - filesBelow(m_folder->path()), QSet<QString>{path});
}

bool tst_interruptedLoads::isIdle()
{
    const QString status = m_driver->labelText("labelScanStatus");
    return (status == u"Loading Complete" || status == u"No duplicate files found.") &&
           m_driver->page() != u"scanpage" && QThreadPool::globalInstance()->waitForDone(0);
}

bool tst_interruptedLoads::requestDuringLoad(const QByteArray &request, bool first)
{
    bool isLoading = first;
    bool isScheduled = false;
    bool arrived = false;
    m_events->onClosed = [&] {
        if (std::exchange(isScheduled, true))
            return;
        QTimer::singleShot(0, &m_driver->window(), [&] {
            arrived = isLoading;
            if (request.startsWith("btn"))
                m_driver->click(request);
            else
                m_driver->callSlot(request);
        });
    };
    const auto load = [&] {
        if (first) {
            m_driver->click("btnBack");
            m_driver->click("btnStartScan");
            QVERIFY(QTest::qWaitFor([&] { return arrived && isIdle(); }, 30'000));
        } else {
            isLoading = true;
            m_driver->click("btnAll");
            isLoading = false;
            if (request == "btnStartScan")
                QVERIFY(QTest::qWaitFor([&] { return isIdle(); }, 30'000));
        }
    };

    // Delete ends with a message box.
    withModalDialogs(load, [](QWidget *dialog) { dialog->close(); });
    m_events->onClosed = nullptr;
    return arrived;
}

void tst_interruptedLoads::startsEveryResultWithDefaultMarks()
{
    QStringList checked;
    for (int scan = 0; scan < 3; ++scan) {
        QVERIFY(m_driver->scan());
        QCOMPARE(m_driver->tree()->topLevelItemCount(), 20);
        m_driver->loadAllBatches();
        if (scan == 0)
            checked = m_driver->checkedPaths();
        QCOMPARE(checked.size(), pairs);
        QCOMPARE(m_driver->checkedPaths(), checked);
        m_driver->checkAll(scan == 0);
        m_driver->click("btnDocuments");
        m_driver->click("btnBack");
    }
}

void tst_interruptedLoads::neverSavesOldMarksIntoNewGroups()
{
    QVERIFY(m_driver->scan());
    // A hidden window does not need the pool for painting.
    m_driver->window().hide();
    PoolGate gate;

    m_driver->click("btnStartScan");
    gate.runQueuedTasks();

    QTRY_COMPARE(m_driver->labelText("labelCurrentFile"), u"Analyzing..."_s);
    m_driver->click("btnStartScan");
    gate.runQueuedTasks();
    QVERIFY(m_driver->waitForResults());
    // The second scan's result is about to replace the rows that are checked here.
    m_driver->loadAllBatches();
    m_driver->checkAll(true);
    QCOMPARE(m_driver->checkedPaths().size(), 2 * pairs);
    gate.runQueuedTasks();
    QTRY_COMPARE(m_driver->tree()->topLevelItemCount(), 20);
    m_driver->loadAllBatches();
    QCOMPARE(m_driver->filePaths().size(), 2 * pairs);
    QCOMPARE(m_driver->checkedPaths().size(), pairs);
}

void tst_interruptedLoads::acceptsADeliveryDuringALoad_data()
{
    QTest::addColumn<int>("pause");
    QTest::newRow("immediately") << 0;
    QTest::newRow("when the first result's rows are due as well") << 150;
}

void tst_interruptedLoads::acceptsADeliveryDuringALoad()
{
    QFETCH(const int, pause);
    const QTemporaryDir other;
    writePairs(other.path(), 30, u"txt"_s);
    PoolGate gate;
    m_driver->click("btnStartScan");
    gate.runQueuedTasks();
    QTRY_COMPARE(m_driver->labelText("labelCurrentFile"), u"Analyzing..."_s);
    // The first scan is being analysed while the second one collects files.
    m_driver->setFolders({other.path()});
    m_driver->click("btnStartScan");
    gate.runQueuedTasks();
    QCoreApplication::sendPostedEvents(&m_driver->window(), QEvent::MetaCall);
    QCOMPARE(m_driver->page(), u"duplicatespage"_s);
    // The first result is delivered. The second one is ready and arrives in the middle of the load.
    gate.runQueuedTasks();
    gate.open();
    QThread::msleep(static_cast<unsigned long>(pause));
    QVERIFY(QMetaObject::invokeMethod(&m_driver->window(), "onCategoryClicked", Q_ARG(QString, u"all"_s)));
    QCOMPARE(m_driver->tree()->topLevelItemCount(), 0);
    QVERIFY(!m_driver->find("btnRemoveSelected")->isEnabled());
    QVERIFY(!m_driver->find("btnAll")->isEnabled());

    QVERIFY(QTest::qWaitFor([this] { return m_driver->tree()->topLevelItemCount() > 0; }, 30'000));
    QVERIFY(rowsAreIntact(*m_driver));
    m_driver->loadAllBatches();
    QCOMPARE(m_driver->tree()->topLevelItemCount(), 30);
    QCOMPARE(m_driver->checkedPaths().size(), 30);
    for (const QString &path : m_driver->filePaths())
        QVERIFY(path.startsWith(other.path()));
}

void tst_interruptedLoads::acceptsRequestsDuringALoad_data()
{
    QTest::addColumn<bool>("first");
    QTest::addColumn<QByteArray>("request");
    for (const char *request : {"btnAll", "btnDocuments", "btnVideos", "btnSelectAll", "btnUnselect",
             "btnRemoveSelected", "btnBack", "btnStartScan", "btnStopScan", "refreshCurrentBatchUI",
             "on_treeDuplicates_scroll", "on_btnBack_clicked"}) {
        QTest::addRow("%s in the first load", request) << true << QByteArray(request);
        QTest::addRow("%s in a later load", request) << false << QByteArray(request);
    }
}

void tst_interruptedLoads::acceptsRequestsDuringALoad()
{
    QFETCH(const bool, first);
    QFETCH(const QByteArray, request);
    QVERIFY(m_driver->scan());
    const QStringList titles = m_driver->groupTitles();
    const QSet<QString> before = filesBelow(m_folder->path());

    QVERIFY(requestDuringLoad(request, first));

    const QSet<QString> left = filesBelow(m_folder->path());
    // Before the first rows, Delete and the categories are disabled.
    const int deleted = request == "btnRemoveSelected" && !first ? 20 : 0;
    QCOMPARE((before - left).size(), deleted);
    QCOMPARE(rowsAreIntact(*m_driver), request != "btnVideos" || first);
    m_driver->click("btnAll");
    if (m_driver->page() != u"duplicatespage")
        QVERIFY(m_driver->scan());
    if (deleted == 0)
        QCOMPARE(m_driver->groupTitles(), titles);
    verifyPage();
    m_driver->click("btnAll");
    m_driver->loadAllBatches();
    QCOMPARE(m_driver->tree()->topLevelItemCount(), pairs - deleted - 1);
}

QTEST_MAIN(tst_interruptedLoads)
#include "tst_interruptedLoads.moc"
