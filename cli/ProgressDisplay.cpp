#include "cli/ProgressDisplay.h"

#include "cli/Console.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace {

/// Shorter intervals flicker, longer ones look stuck.
constexpr std::chrono::milliseconds redrawInterval(200);

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
    // Reports of several threads can arrive out of order.
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
    while (!m_finishing.wait_for(lock, redrawInterval, [this] { return m_finished; }))
        draw();
}

void ProgressDisplay::draw()
{
    if (m_state.comparing) {
        m_rate.add(m_state.doneBytes, m_sinceComparison.elapsed());
        m_state.bytesPerSecond = m_rate.bytesPerSecond();
    }
    // Some terminals start a new line after a character in the last column.
    const QString line = progressLine(m_state, terminalWidth(Stream::Error) - 1);
    // Overwrites the rest of a longer line in the same write, which avoids flicker.
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
    // The search took less than one interval: a line would only flash.
    if (m_onTerminal && m_drawnColumns == 0)
        return;
    draw();
    writeToStandardError(m_onTerminal ? u'\r' + QString(m_drawnColumns, u' ') + u'\r' : QString(u'\n'));
}
