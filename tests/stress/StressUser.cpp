#include "tests/stress/StressUser.h"

#include "tests/support/Slowdown.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QScrollBar>
#include <QTest>
#include <QThread>
#include <QThreadPool>

#include <algorithm>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int patienceMilliseconds = 30'000 * slowdown;
constexpr int closingMilliseconds = 2000 * slowdown;
// Leaves enough duplicates for the last window.
constexpr int deletionsAtMost = 150;

/// The buttons to press. A button that is listed more often is pressed more often.
const QList<const char *> &buttons()
{
    static const QList<const char *> names{"btnStartScan", "btnStartScan", "btnStartScan", "btnStartScan",
        "btnStopScan", "btnScanOptions", "btnBack", "btnSelectAll", "btnUnselect", "btnRemoveSelected",
        "btnAll", "btnAll", "btnPictures", "btnVideos", "btnDocuments", "btnOthers"};
    return names;
}

} // namespace

StressUser::StressUser(const QString &tree, int folders, quint32 seed)
    : m_tree(tree)
    , m_folders(folders)
    , m_random(seed)
{
}

void StressUser::useWindow()
{
    m_log.clear();
    m_failure.clear();
    m_watchdog.emplace(patienceMilliseconds);
    openWindow();
    press("btnStartScan");
    if (m_random.below(4) == 0)
        waitForResults();
    for (int steps = m_random.below(16); steps > 0; --steps) {
        letTimePass();
        step();
    }
    letTimePass();
    closeWindow();
    m_watchdog.reset();
}

/// Two of three windows scan a small part of the tree, so their results arrive quickly.
void StressUser::openWindow()
{
    m_driver.reset(new WindowDriver);
    QStringList folders;
    for (int n = m_random.below(2) ? 1 : 10; n > 0; --n)
        folders.append(m_tree + u'/' + QString::number(m_random.below(m_folders)));
    m_driver->listFolders(m_random.below(3) ? folders : QStringList{m_tree});
    record(u"open"_s);
}

void StressUser::step()
{
    switch (m_random.below(10)) {
    case 0:
        waitForResults();
        break;
    case 1:
        scroll();
        break;
    default:
        pressSomething();
    }
}

void StressUser::pressSomething()
{
    QList<const char *> available;
    for (const char *button : buttons()) {
        if (m_driver->find(button)->isVisible() && m_driver->find(button)->isEnabled())
            available.append(button);
    }
    // Always pressing Stop when it is the only enabled button would let no scan finish.
    if (available.size() > 1 || (available.size() == 1 && m_random.below(2)))
        press(m_random.oneOf(available));
}

void StressUser::press(const char *button)
{
    record(QLatin1StringView(button));
    const QLatin1StringView name(button);
    if (name == u"btnRemoveSelected") {
        if (m_counts.deletions == deletionsAtMost)
            return;
        // While another category is shown, a deletion would delete the marked files of all groups.
        m_driver->click("btnAll");
        ++m_counts.deletions;
    }
    m_counts.scans += name == u"btnStartScan" ? 1 : 0;
    m_counts.stops += name == u"btnStopScan" ? 1 : 0;
    withModalDialogs(
        [this, button] { m_driver->click(button); }, [this](QWidget *dialog) { closeDialog(dialog); });
}

/// Leaves the dialog open for a while, so that results arrive behind it.
void StressUser::closeDialog(QWidget *dialog)
{
    if (m_random.below(6) != 0)
        return;
    if (auto *const box = qobject_cast<QMessageBox *>(dialog))
        box->button(QMessageBox::Ok)->click();
    else if (auto *const options = qobject_cast<QDialog *>(dialog))
        options->done(m_random.below(2) ? QDialog::Accepted : QDialog::Rejected);
}

void StressUser::scroll()
{
    record(u"scroll"_s);
    QScrollBar *const bar = m_driver->tree()->verticalScrollBar();
    bar->setValue(m_random.below(2) ? bar->maximum() : m_random.below(bar->maximum() + 1));
}

void StressUser::letTimePass()
{
    static const QList<int> durations{0, 0, 1, 3, 10, 30, 100};
    const int milliseconds = m_random.oneOf(durations);
    record(u"%1 ms"_s.arg(milliseconds));
    // 0 ms processes no event between two clicks, which is faster than any user.
    if (milliseconds > 0)
        QTest::qWait(milliseconds);
}

void StressUser::waitForResults()
{
    record(u"wait for results"_s);
    const auto scanIsOver = [this] {
        m_watchdog->alive(m_log.join(u", "_s));
        return m_driver->page() != u"scanpage";
    };
    if (!QTest::qWaitFor(scanIsOver, 2 * patienceMilliseconds))
        m_failure += u"no results arrived "_s;
    m_counts.results += m_driver->page() == u"duplicatespage" ? 1 : 0;
}

void StressUser::closeWindow()
{
    m_counts.closedDuringScan += m_driver->page() == u"scanpage" ? 1 : 0;
    m_counts.closedWithResults += m_driver->page() == u"duplicatespage" ? 1 : 0;
    record(u"close"_s);
    QElapsedTimer timer;
    timer.start();
    m_driver.reset();
    // Not waitForDone(), which would also end the idle threads.
    while (QThreadPool::globalInstance()->activeThreadCount() > 0 && timer.elapsed() <= closingMilliseconds)
        QThread::msleep(1);
    m_counts.slowestClosing = std::max(m_counts.slowestClosing, timer.elapsed());
    if (timer.elapsed() > closingMilliseconds)
        m_failure += u"closing the window took too long "_s;
    // Calls that are still queued must not reach the deleted window.
    QCoreApplication::processEvents();
}

void StressUser::record(const QString &step)
{
    m_log.append(step);
    m_watchdog->alive(m_log.join(u", "_s));
}
