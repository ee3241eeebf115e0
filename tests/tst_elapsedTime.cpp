#include "scan/ElapsedTime.h"

#include <QTest>

/// The elapsed time as the scan page shows it.
class tst_elapsedTime : public QObject
{
    Q_OBJECT

private slots:
    void showsHoursMinutesAndSeconds_data();
    void showsHoursMinutesAndSeconds();
};

void tst_elapsedTime::showsHoursMinutesAndSeconds_data()
{
    constexpr qint64 second = 1000;
    constexpr qint64 day = 86'400 * second;
    QTest::addColumn<qint64>("milliseconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("at the start") << qint64(0) << "00:00:00";
    QTest::newRow("just before a second is over") << second - 1 << "00:00:00";
    QTest::newRow("one second") << second << "00:00:01";
    QTest::newRow("a minute less a millisecond") << 60 * second - 1 << "00:00:59";
    QTest::newRow("more than an hour") << 3725 * second << "01:02:05";
    QTest::newRow("an afternoon") << 54'321 * second << "15:05:21";
    QTest::newRow("a day less a second") << day - second << "23:59:59";
    QTest::newRow("a day") << day << "00:00:00";
    QTest::newRow("a day and more") << day + 3725 * second << "01:02:05";
    // Milliseconds that do not fit into 32 bits.
    QTest::newRow("fifty days") << 50 * day + second << "00:00:01";
}

void tst_elapsedTime::showsHoursMinutesAndSeconds()
{
    QFETCH(const qint64, milliseconds);
    QTEST(elapsedTimeText(milliseconds), "text");
}

QTEST_GUILESS_MAIN(tst_elapsedTime)
#include "tst_elapsedTime.moc"
