#include "cli/ProgressDisplay.h"

#include "cli/Console.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace {

/// Often enough to look alive, too seldom to flicker.
constexpr std::chrono::milliseconds betweenDrawings(200);

void writeToStandardError(const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    (void)std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stderr);
    (void)std::fflush(stderr);
}

} // namespace

ProgressDisplay::ProgressDisplay(bool shown)
    : m_shown(shown)
    , m_onTerminal(isTerminal(Stream::Error))
{
    if (m_shown)
        m_thread = std::thread(&ProgressDisplay::run, this);
}

ProgressDisplay::~ProgressDisplay()
{
    finish();
}

void ProgressDisplay::showFiles(qint64 files)
{
    if (!m_shown)
        return;
    const std::lock_guard lock(m_mutex);
    // News of several threads may overtake each other.
    m_state.files = std::max(m_state.files, files);
}

void ProgressDisplay::showBytes(qint64 done, qint64 total)
{
    if (!m_shown)
        return;
    const std::lock_guard lock(m_mutex);
    if (!m_state.comparing)
        m_sinceComparison.start();
    m_state.comparing = true;
    m_state.doneBytes = std::max(m_state.doneBytes, done);
    m_state.totalBytes = std::max(m_state.totalBytes, total);
}

void ProgressDisplay::run()
{
    std::unique_lock lock(m_mutex);
    while (!m_finishing.wait_for(lock, betweenDrawings, [this] { return m_finished; }))
        draw();
}

/// The mutex is locked.
void ProgressDisplay::draw()
{
    if (m_state.comparing) {
        m_rate.add(m_state.doneBytes, m_sinceComparison.elapsed());
        m_state.bytesPerSecond = m_rate.bytesPerSecond();
    }
    // A character in the last column would make some terminals begin a new line.
    const QString line = progressLine(m_state, terminalWidth(Stream::Error) - 1);
    // Blanks cover what was longer before, in the same write: nothing flickers.
    writeToStandardError(u'\r' + line.leftJustified(m_drawnColumns));
    m_drawnColumns = line.size();
}

void ProgressDisplay::finish()
{
    if (!m_thread.joinable())
        return;
    {
        const std::lock_guard lock(m_mutex);
        m_finished = true;
    }
    m_finishing.notify_one();
    m_thread.join();
    // A search of less than that would only make the terminal flash.
    if (m_onTerminal && m_drawnColumns == 0)
        return;
    draw();
    writeToStandardError(m_onTerminal ? u'\r' + QString(m_drawnColumns, u' ') + u'\r' : QString(u'\n'));
}
