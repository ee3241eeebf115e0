#include "tests/support/DuplicateFiles.h"
#include "tests/support/LoadingPanelEvents.h"
#include "tests/support/ScannedFolder.h"

#include <QCursor>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <utility>

using Qt::StringLiterals::operator""_s;

namespace {

/// Counts the mouse moves that a window receives.
class MouseMoves : public QObject
{
public:
    explicit MouseMoves(QWindow *window)
    {
        window->installEventFilter(this);
    }

    int count = 0;

protected:
    bool eventFilter([[maybe_unused]] QObject *watched, QEvent *event) override
    {
        count += event->type() == QEvent::MouseMove ? 1 : 0;
        return false;
    }
};

} // namespace

/// Events that arrive while a category load closes the loading panel.
class tst_eventsDuringALoad : public QObject, private ScannedFolder
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void keepsThePageEmptyAfterBack();
    void startsWithTheFirstBatchDespiteAScroll();
    void defersUserInput();

private:
    QScopedPointer<LoadingPanelEvents> m_events;
};

void tst_eventsDuringALoad::init()
{
    reset();
    writePairs(m_folder->path(), 45, u"txt"_s);
    m_events.reset(new LoadingPanelEvents(&m_driver->window()));
}

void tst_eventsDuringALoad::cleanup()
{
    m_events.reset();
}

void tst_eventsDuringALoad::keepsThePageEmptyAfterBack()
{
    bool back = false;
    m_events->onClosed = [&] {
        if (!std::exchange(back, true))
            QTimer::singleShot(0, &m_driver->window(), [this] { m_driver->click("btnBack"); });
    };
    m_driver->setFolders({m_folder->path()});

    m_driver->click("btnStartScan");
    QTRY_VERIFY_WITH_TIMEOUT(back, 30'000);
    QTRY_COMPARE(m_driver->page(), u"page"_s);
    QCOMPARE(m_driver->tree()->topLevelItemCount(), 0);
    QCOMPARE(m_driver->labelText("labelStatsInfo"), QString());
}

void tst_eventsDuringALoad::startsWithTheFirstBatchDespiteAScroll()
{
    QVERIFY(scan());
    const QStringList firstBatch = m_driver->groupTitles();
    int scrolls = 0;
    m_events->onClosed = [&] {
        QTimer::singleShot(0, &m_driver->window(), [&] {
            m_driver->callSlot("on_treeDuplicates_scroll");
            ++scrolls;
        });
    };

    m_driver->click("btnBack");
    QVERIFY(scan());

    QVERIFY(scrolls > 0);
    QCOMPARE(m_driver->groupTitles(), firstBatch);
    m_driver->click("btnAll");
    QCOMPARE(m_driver->groupTitles(), firstBatch);
}

void tst_eventsDuringALoad::defersUserInput()
{
    QVERIFY(scan());
    MainWindow &window = m_driver->window();
    const MouseMoves moves(window.windowHandle());
    const QPoint corner = window.mapToGlobal(QPoint(10, 10));
    bool closed = false;
    m_events->onClosed = [&] {
        closed = true;
        // The window system delivers the move when user input is processed.
        QCursor::setPos(QCursor::pos() == corner ? corner + QPoint(1, 1) : corner);
    };

    m_driver->click("btnDocuments");
    QVERIFY(closed);
    QCOMPARE(moves.count, 0);
    if (!QTest::qWaitFor([&] { return moves.count > 0; }))
        QSKIP("This platform cannot move the mouse");
}

QTEST_MAIN(tst_eventsDuringALoad)
#include "tst_eventsDuringALoad.moc"
