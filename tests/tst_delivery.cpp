#include "tests/support/DuplicateFiles.h"
#include "tests/support/WindowDriver.h"

#include <QAbstractEventDispatcher>
#include <QTemporaryDir>
#include <QTest>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int resultsPage = 2;

/// Intervals of the window's timers and of the calls that QTimer::singleShot() will make, in milliseconds.
QList<int> waitingIntervals(WindowDriver &driver)
{
    const QAbstractEventDispatcher *const dispatcher = QAbstractEventDispatcher::instance();
    QList<int> intervals;
    for (QObject *owner : dispatcher->children() + driver.window().findChildren<QObject *>()) {
        for (const QAbstractEventDispatcher::TimerInfo &timer : dispatcher->registeredTimers(owner))
            intervals.append(timer.interval);
    }
    return intervals;
}

} // namespace

/// The moment when the results of an analysis reach the window.
class tst_delivery : public QObject
{
    Q_OBJECT

private slots:
    void showsTheFirstRowsAfterATenthOfASecond();
};

void tst_delivery::showsTheFirstRowsAfterATenthOfASecond()
{
    const QTemporaryDir folder;
    writeCopies(folder.path(), {u"a.txt"_s, u"b.txt"_s}, "content");
    WindowDriver driver;
    driver.setFolders({folder.path()});
    QList<int> intervals;
    // Queued, so that it runs when the delivery is complete.
    connect(
        driver.find<QStackedWidget>("stackedWidget"), &QStackedWidget::currentChanged, this,
        [&](int page) {
            if (page == resultsPage)
                intervals = waitingIntervals(driver);
        },
        Qt::QueuedConnection);
    QVERIFY(driver.scan());
    QVERIFY(intervals.contains(100));
}

QTEST_MAIN(tst_delivery)
#include "tst_delivery.moc"
