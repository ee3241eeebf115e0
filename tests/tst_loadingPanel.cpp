#include "tests/support/DuplicateFiles.h"
#include "tests/support/LoadingPanelEvents.h"
#include "tests/support/PrivateCalls.h"
#include "tests/support/WindowDriver.h"

#include <QPointer>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <QVBoxLayout>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int dotInterval = 400;
const auto panelText = u"Loading duplicate files,  wait..."_s;

} // namespace

/// The loading panel, which covers the window until the first rows of a result appear.
class tst_loadingPanel : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void looksAsDesigned();
    void isCentredOverTheWindow();
    void animatesItsDots();
    void closesWithTheFirstRows();
    void appearsOncePerWindow();
    void closesWhenTheNextScanStarts();
    void closesOnItsOwnThread();
    void updatesTheScanStatus();

private:
    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<WindowDriver> m_driver;
    QScopedPointer<LoadingPanelEvents> m_events;
};

void tst_loadingPanel::init()
{
    m_folder.reset(new QTemporaryDir);
    writeCopies(m_folder->path(), {u"a.txt"_s, u"b.txt"_s}, "content");
    m_driver.reset(new WindowDriver);
    m_driver->setFolders({m_folder->path()});
    m_events.reset(new LoadingPanelEvents(&m_driver->window()));
}

// The callbacks refer to local variables of the test that has ended.
void tst_loadingPanel::cleanup()
{
    m_events.reset();
    m_driver.reset();
}

void tst_loadingPanel::looksAsDesigned()
{
    int shown = 0;
    m_events->onShown = [&shown](QWidget *panel) {
        QVERIFY(panel->isWindow());
        QCOMPARE(panel->windowFlags() & Qt::WindowType_Mask, Qt::Dialog);
        QVERIFY(!panel->testAttribute(Qt::WA_DeleteOnClose));
        QVERIFY(!panel->isModal());
        QCOMPARE(panel->minimumSize(), QSize(300, 100));
        QCOMPARE(panel->maximumSize(), QSize(300, 100));
        QCOMPARE(panel->styleSheet(),
            u"\n        background: rgba(243, 247, 255, 0.98);\n        border-radius: 18px;\n"
            "        border: 1px solid #e2eafd;\n    "_s);
        const auto *const layout = qobject_cast<QVBoxLayout *>(panel->layout());
        QVERIFY(layout);
        QCOMPARE(layout->contentsMargins(), QMargins());
        QCOMPARE(layout->spacing(), 0);
        QCOMPARE(layout->count(), 3);
        QVERIFY(layout->itemAt(0)->spacerItem());
        QVERIFY(layout->itemAt(2)->spacerItem());
        const auto *const label = qobject_cast<QLabel *>(layout->itemAt(1)->widget());
        QVERIFY(label);
        QCOMPARE(label->text(), panelText);
        QCOMPARE(label->alignment(), Qt::AlignCenter);
        QCOMPARE(label->styleSheet(),
            u"font-size:17px; color:#376cff; font-weight:500;background:transparent; border:none;"_s);
        ++shown;
    };

    QVERIFY(m_driver->scan());
    QCOMPARE(shown, 1);
}

void tst_loadingPanel::isCentredOverTheWindow()
{
    m_driver->window().move(60, 40);
    QPoint position;
    m_events->onShown = [&position](QWidget *panel) { position = panel->pos(); };
    QVERIFY(m_driver->scan());
    QCOMPARE(position, m_driver->window().geometry().center() - QPoint(150, 50));
}

void tst_loadingPanel::animatesItsDots()
{
    QCOMPARE(m_driver->timers(dotInterval).size(), 0);
    QStringList texts;
    m_events->onShown = [&](QWidget *panel) {
        QCOMPARE(m_driver->timers(dotInterval).size(), 1);
        QTimer *const timer = m_driver->timers(dotInterval).first();
        QVERIFY(timer->isActive() && !timer->isSingleShot());
        for (int i = 0; i < 5; ++i) {
            QMetaObject::invokeMethod(timer, "timeout");
            texts.append(panel->findChild<QLabel *>()->text());
        }
    };

    QVERIFY(m_driver->scan());
    QCOMPARE(texts, (QStringList{panelText + u'.', panelText + u".."_s, panelText + u"..."_s, panelText,
                        panelText + u'.'}));
    QTRY_COMPARE(m_driver->timers(dotInterval).size(), 0);
}

void tst_loadingPanel::closesWithTheFirstRows()
{
    QPointer<QWidget> panel;
    int rowsAtClose = -1;
    m_events->onShown = [&panel](QWidget *shown) { panel = shown; };
    m_events->onClosed = [&] {
        if (rowsAtClose < 0)
            rowsAtClose = m_driver->tree()->topLevelItemCount();
    };

    m_driver->click("btnStartScan");
    QTRY_VERIFY(panel);
    QCOMPARE(m_driver->page(), u"duplicatespage"_s);
    QVERIFY(m_driver->waitForResults());
    QVERIFY(rowsAtClose >= 0);
    QVERIFY(!panel || !panel->isVisible());
    QTRY_VERIFY(!panel);
}

void tst_loadingPanel::appearsOncePerWindow()
{
    int shown = 0;
    m_events->onShown = [&shown](QWidget *) { ++shown; };
    QVERIFY(m_driver->scan());
    for (const char *button : {"btnPictures", "btnDocuments", "btnAll"})
        m_driver->click(button);

    m_driver->click("btnBack");
    QVERIFY(m_driver->scan());

    QCOMPARE(shown, 1);
    // Nothing is left of the panels that were never shown.
    const auto frameless = [this] {
        QList<QWidget *> widgets = m_driver->window().findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
        widgets.removeIf(
            [](const QWidget *each) { return !each->windowFlags().testFlag(Qt::FramelessWindowHint); });
        return widgets.size();
    };
    QTRY_COMPARE(frameless(), 0);
}

// The user can start a scan again before the first rows appear.
void tst_loadingPanel::closesWhenTheNextScanStarts()
{
    QPointer<QWidget> panel;
    bool goneAtStart = false;
    m_events->onShown = [&](QWidget *shown) {
        panel = shown;
        QMetaObject::invokeMethod(
            &m_driver->window(),
            [&] {
                m_driver->click("btnBack");
                m_driver->click("btnStartScan");
                goneAtStart = !panel;
            },
            Qt::QueuedConnection);
    };

    m_driver->click("btnStartScan");
    QTRY_VERIFY(panel || goneAtStart);
    QTRY_VERIFY(goneAtStart);
    QVERIFY(QTest::qWaitFor([this] { return m_driver->filePaths().size() == 2; }, 30'000));
    QCOMPARE(m_driver->page(), u"duplicatespage"_s);
}

/// A call from another thread is queued. The window's thread waits for that thread here, so a blocking call
/// would deadlock.
void tst_loadingPanel::closesOnItsOwnThread()
{
    bool visibleAfterCall = false;
    bool visibleLater = true;
    m_events->onShown = [&](QWidget *shown) {
        const QScopedPointer<QThread> other(
            QThread::create([this] { hideLoadingOverlay(m_driver->window()); }));
        other->start();
        if (!other->wait(10'000))
            qFatal("hideLoadingOverlay() blocks on a thread other than the window's");
        visibleAfterCall = shown->isVisible();
        QMetaObject::invokeMethod(
            &m_driver->window(),
            [&, panel = QPointer<QWidget>(shown)] { visibleLater = panel && panel->isVisible(); },
            Qt::QueuedConnection);
    };

    QVERIFY(m_driver->scan());
    QVERIFY(visibleAfterCall);
    QVERIFY(!visibleLater);
}

void tst_loadingPanel::updatesTheScanStatus()
{
    QString onDelivery;
    QString duringLoad;
    m_events->onShown = [&](QWidget *) { onDelivery = m_driver->labelText("labelScanStatus"); };
    QVERIFY(m_driver->scan());
    QCOMPARE(onDelivery, u"Done!"_s);
    QCOMPARE(m_driver->labelText("labelScanStatus"), u"Loading Complete"_s);
    m_events->onClosed = [&] { duringLoad = m_driver->labelText("labelScanStatus"); };

    m_driver->click("btnAll");
    QCOMPARE(duringLoad, u"Loading duplicate files, please wait..."_s);
    QCOMPARE(m_driver->labelText("labelScanStatus"), u"Loading Complete"_s);
    m_driver->click("btnAudios");
    QCOMPARE(m_driver->labelText("labelScanStatus"), u"No duplicate files found."_s);
}

QTEST_MAIN(tst_loadingPanel)
#include "tst_loadingPanel.moc"
