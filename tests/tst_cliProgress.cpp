#include "cli/ProgressLine.h"
#include "cli/SizeText.h"

#include <QTest>

using Qt::Literals::StringLiterals::operator""_s;

/// The progress line of a search.
class tst_cliProgress : public QObject
{
    Q_OBJECT

private slots:
    void showsTheState_data();
    void showsTheState();
    void fitsEveryWidth();
    void estimatesTheRateOfTheLastSeconds();
    void writesReadableSizes_data();
    void writesReadableSizes();
};

void tst_cliProgress::showsTheState_data()
{
    constexpr qint64 mebi = 1 << 20;
    QTest::addColumn<ProgressState>("state");
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("line");
    QTest::addRow("searching") << ProgressState{.files = 12345} << 79 << u"Searching: 12345 files"_s;
    QTest::addRow("one file") << ProgressState{.files = 1} << 79 << u"Searching: 1 file"_s;
    QTest::addRow("before an estimate")
        << ProgressState{.files = 2, .comparing = true, .totalBytes = 4 * mebi} << 79
        << u"[..............................]   0%  0 B of 4.00 MB  2 files"_s;
    QTest::addRow("a quarter in a minute")
        << ProgressState{7, true, mebi, 4 * mebi, mebi / 60.0} << 79
        << u"[#######.......................]  25%  1.00 MB of 4.00 MB  7 files  3:00 left"_s;
    QTest::addRow("hours") << ProgressState{7, true, mebi, 100 * mebi, mebi / 60.0} << 60
                           << u"  1%  1.00 MB of 100.00 MB  7 files  1:39:00 left"_s;
    QTest::addRow("nearly done") << ProgressState{7, true, 999, 1000, 100} << 60
                                 << u"[###############.]  99%  999 B of 1000 B  7 files  0:00 left"_s;
    QTest::addRow("done") << ProgressState{7, true, 1000, 1000, 100} << 60
                          << u"[###############] 100%  1000 B of 1000 B  7 files  0:00 left"_s;
    QTest::addRow("more than all") << ProgressState{7, true, 1001, 1000, 0} << 40
                                   << u"100%  1000 B of 1000 B  7 files"_s;
    QTest::addRow("nothing to compare")
        << ProgressState{7, true, 0, 0, 0} << 40 << u"100%  0 B of 0 B  7 files  0:00 left"_s;
    QTest::addRow("narrow") << ProgressState{7, true, mebi, 4 * mebi, mebi / 60.0} << 20
                            << u" 25%  7 files"_s;
}

void tst_cliProgress::showsTheState()
{
    QFETCH(const ProgressState, state);
    QFETCH(const int, width);
    QFETCH(const QString, line);
    QCOMPARE(progressLine(state, width), line);
}

void tst_cliProgress::fitsEveryWidth()
{
    const ProgressState state{1'000'000, true, qint64(1) << 40, qint64(3) << 42, 1};
    for (int width = 0; width < 200; ++width) {
        QVERIFY(progressLine(state, width).size() <= width);
        QVERIFY(progressLine({.files = 1'000'000}, width).size() <= width);
    }
}

void tst_cliProgress::estimatesTheRateOfTheLastSeconds()
{
    RateEstimate rate;
    qint64 bytes = 0;
    qint64 milliseconds = 0;
    const auto pass = [&](int seconds, qint64 bytesPerSecond) {
        for (int i = 0; i < seconds * 5; ++i)
            rate.add(bytes += bytesPerSecond / 5, milliseconds += 200);
    };
    rate.add(100, 900);
    QCOMPARE(rate.bytesPerSecond(), 0.0);
    rate = {};
    pass(1, 1000);
    QVERIFY(qAbs(rate.bytesPerSecond() - 1000) < 1);
    pass(60, 1000);
    QVERIFY(qAbs(rate.bytesPerSecond() - 1000) < 1);
    pass(15, 10);
    QVERIFY(rate.bytesPerSecond() < 100);
    QVERIFY(rate.bytesPerSecond() > 10);
    rate.add(bytes, milliseconds);
    QVERIFY(rate.bytesPerSecond() > 10);
}

void tst_cliProgress::writesReadableSizes_data()
{
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<QString>("text");
    const auto add = [](qint64 bytes, const QString &text) {
        QTest::addRow("%s", qPrintable(text)) << bytes << text;
    };
    add(0, u"0 B"_s);
    add(1023, u"1023 B"_s);
    add(1024, u"1.00 KB"_s);
    add(4404019, u"4.20 MB"_s);
    add(1048575, u"1.00 MB"_s);
    add(1048570, u"1023.99 KB"_s);
    add(qint64(3) << 29, u"1.50 GB"_s);
    add(qint64(5) << 40, u"5.00 TB"_s);
    add(qint64(5) << 50, u"5120.00 TB"_s);
}

void tst_cliProgress::writesReadableSizes()
{
    QFETCH(const qint64, bytes);
    QFETCH(const QString, text);
    QCOMPARE(sizeText(bytes), text);
}

QTEST_GUILESS_MAIN(tst_cliProgress)
#include "tst_cliProgress.moc"
