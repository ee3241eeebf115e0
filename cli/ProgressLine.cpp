#include "cli/ProgressLine.h"

#include "cli/SizeText.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

using Qt::Literals::StringLiterals::operator""_s;

namespace {

double shareDone(const ProgressState &state)
{
    if (state.totalBytes <= 0)
        return 1;
    return std::clamp(static_cast<double>(state.doneBytes) / static_cast<double>(state.totalBytes), 0.0, 1.0);
}

QString durationText(qint64 seconds)
{
    constexpr qint64 minute = 60;
    constexpr qint64 hour = 60 * minute;
    const auto twoDigits = [](qint64 number) { return QString::number(number).rightJustified(2, u'0'); };
    if (seconds < hour)
        return QString::number(seconds / minute) + u':' + twoDigits(seconds % minute);
    return QString::number(seconds / hour) + u':' + twoDigits(seconds % hour / minute) + u':' +
           twoDigits(seconds % minute);
}

QString timeLeft(const ProgressState &state)
{
    const auto left = static_cast<double>(std::max(state.totalBytes - state.doneBytes, qint64(0)));
    if (left > 0 && state.bytesPerSecond <= 0)
        return {};
    return durationText(left > 0 ? std::llround(left / state.bytesPerSecond) : 0) + u" left"_s;
}

QString bar(double share, int columns)
{
    const int cells = columns - 2;
    const int filled = static_cast<int>(share * cells);
    return u'[' + QString(filled, u'#') + QString(cells - filled, u'.') + u']';
}

/// Weight of the last \a milliseconds in the moving average.
double weightOf(qint64 milliseconds)
{
    // Milliseconds. A shorter time makes the estimate jump with every large file.
    constexpr double timeConstant = 5000;
    return 1 - std::exp(-static_cast<double>(milliseconds) / timeConstant);
}

} // namespace

void RateEstimate::add(qint64 bytes, qint64 milliseconds)
{
    const qint64 passed = milliseconds - m_milliseconds;
    if (passed <= 0)
        return;
    const double rate = static_cast<double>(bytes - m_bytes) * 1000 / static_cast<double>(passed);
    m_rate += (rate - m_rate) * weightOf(passed);
    m_bytes = bytes;
    m_milliseconds = milliseconds;
}

double RateEstimate::bytesPerSecond() const
{
    constexpr qint64 firstSecond = 1000;
    return m_milliseconds < firstSecond ? 0 : m_rate / weightOf(m_milliseconds);
}

QString progressLine(const ProgressState &state, int width)
{
    constexpr int narrowestBar = 12;
    constexpr int widestBar = 32;
    const QString files = counted(state.files, u"file"_s);
    if (!state.comparing)
        return (u"Searching: "_s + files).left(width);
    const double share = shareDone(state);
    QString line = QString::number(static_cast<int>(share * 100)).rightJustified(3) + u'%';
    const QString bytes =
        u"%1 of %2"_s.arg(sizeText(std::min(state.doneBytes, state.totalBytes)), sizeText(state.totalBytes));
    for (const QString &part : {bytes, files, timeLeft(state)}) {
        if (!part.isEmpty() && line.size() + 2 + part.size() <= width)
            line += u"  "_s + part;
    }
    const int columnsLeft = std::min(width - static_cast<int>(line.size()) - 1, widestBar);
    return columnsLeft < narrowestBar ? line.left(width) : bar(share, columnsLeft) + u' ' + line;
}
