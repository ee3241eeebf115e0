#include "scan/FileCollection.h"
#include "tests/support/DuplicateFiles.h"
#include "tests/support/PoolGate.h"
#include "tests/support/WindowDriver.h"

#include <QFile>
#include <QProgressBar>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int tick = 500;

void fire(const QList<QTimer *> &timers)
{
    for (QTimer *timer : timers)
        QMetaObject::invokeMethod(timer, "timeout");
}

/// Notes a label's text before every queued call that reaches the window.
class TextsBetweenCalls : public QObject
{
public:
    TextsBetweenCalls(QObject *window, const QLabel *label)
        : m_label(label)
    {
        window->installEventFilter(this);
    }

    QStringList texts;

protected:
    bool eventFilter(QObject * /*object*/, QEvent *event) override
    {
        if (event->type() == QEvent::MetaCall && !texts.contains(m_label->text()))
            texts.append(m_label->text());
        return false;
    }

private:
    const QLabel *const m_label;
};

} // namespace

/// What the scan page says while a scan goes on: dots, time, counters and the file that it has come to.
class tst_scanStatus : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void animatesTheStatusWithUpToThreeDots();
    void showsElapsedTimeAndCounters();
    void namesTheFileBeingScanned();

private:
    QScopedPointer<QTemporaryDir> m_folder;
};

void tst_scanStatus::init()
{
    m_folder.reset(new QTemporaryDir);
    writeCopies(m_folder->path(), {u"a.txt"_s, u"b.txt"_s, u"c.txt"_s}, "content");
}

void tst_scanStatus::animatesTheStatusWithUpToThreeDots()
{
    WindowDriver driver;
    driver.setFolders({m_folder->path()});
    PoolGate gate;
    driver.click("btnStartScan");
    // By itself first, then as fast as it can be made to.
    QTRY_VERIFY(driver.labelText("labelScanStatus").startsWith(u"Scanning, please wait"_s));
    QStringList texts;
    for (int i = 0; i < 12; ++i) {
        fire(driver.timers(tick));
        texts.append(driver.labelText("labelScanStatus"));
    }
    const QString base = u"Scanning, please wait"_s;
    while (texts.size() > 5 && texts.first() != base)
        texts.removeFirst();
    QCOMPARE(texts.first(5), (QStringList{base, base + u'.', base + u".."_s, base + u"..."_s, base}));
}

void tst_scanStatus::showsElapsedTimeAndCounters()
{
    WindowDriver driver;
    driver.setFolders({m_folder->path()});
    PoolGate gate;
    driver.click("btnStartScan");
    QTRY_COMPARE(driver.timers(tick).size(), 2);
    scannedFileCount = 1234;
    driver.find<QLabel>("labelDuplicatesFoundValue")->setText(u"7"_s);
    fire(driver.timers(tick));
    QCOMPARE(driver.labelText("labelFilesScannedValue"), u"1234"_s);
    // Nothing counts duplicates up while the clock runs.
    QCOMPARE(driver.labelText("labelDuplicatesFoundValue"), u"0"_s);
    const QRegularExpression running(u"^00:0[0-9]:[0-5][0-9]$"_s);
    QTRY_VERIFY(driver.labelText("labelElapsedTimeValue") != u"00:00:00");
    QVERIFY(running.match(driver.labelText("labelElapsedTimeValue")).hasMatch());
}

void tst_scanStatus::namesTheFileBeingScanned()
{
#ifdef Q_OS_WIN
    const QString name = u"&lt;b&gt;bold %1 &amp;.txt"_s;
#else
    const QString name = u"<b>bold<b> %1 &amp;.txt"_s;
#endif
    for (int i = 0; i < 150; ++i)
        writeCopies(m_folder->path(), {name.arg(i)}, "content");
    // Shared by all scans of the process and never reset: an earlier scan may have left a mark that is out of
    // reach.
    lastReportedCount = 0;
    WindowDriver driver;
    driver.setFolders({m_folder->path()});
    const TextsBetweenCalls seen(&driver.window(), driver.find<QLabel>("labelCurrentFile"));
    const QSignalSpy progress(driver.find<QProgressBar>("progressBar"), &QProgressBar::valueChanged);
    QVERIFY(driver.scan());

    const QStringList scanning = seen.texts.filter(u"Scanning:"_s);
    QVERIFY(!scanning.isEmpty());
    for (const QString &text : scanning) {
        QVERIFY(text.startsWith(u"Scanning:"_s + m_folder->path()));
        QVERIFY(QFile::exists(text.mid(9)));
    }
    QCOMPARE(driver.find<QLabel>("labelCurrentFile")->textFormat(), Qt::PlainText);
    QCOMPARE(progress.last().first().toInt(), 100);
    // The first report came at the 100th of 153 files at the latest.
    QVERIFY(std::any_of(progress.cbegin(), progress.cend(), [](const QList<QVariant> &change) {
        return change.first().toInt() <= 65 && change.first().toInt() > 0;
    }));
}

QTEST_MAIN(tst_scanStatus)
#include "tst_scanStatus.moc"
