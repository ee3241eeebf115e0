#include "analysis/ContentEquality.h"

#include <algorithm>
#include <optional>
#include <span>
#include <vector>

#ifdef Q_OS_LINUX
#include <fcntl.h>
#endif

namespace {

/// Bytes read from one file before switching to the other. Large enough that a rotating disk rarely seeks,
/// small enough that an abandoned comparison ends immediately.
constexpr qint64 blockSize = qint64(1024) * 1024;

void announceSequentialReading([[maybe_unused]] const QFile &file)
{
#ifdef Q_OS_LINUX
    ::posix_fadvise(file.handle(), 0, 0, POSIX_FADV_SEQUENTIAL);
#endif
}

/// Fills \a block up to the end of the file. Returns the filled part; nothing on an error.
std::optional<std::span<const char>> readBlock(QFile &file, std::span<char> block)
{
    qint64 filled = 0;
    const auto wanted = static_cast<qint64>(block.size());
    while (filled < wanted) {
        const qint64 got = file.read(block.data() + filled, wanted - filled);
        if (got < 0)
            return std::nullopt;
        if (got == 0)
            break;
        filled += got;
    }
    return block.first(static_cast<std::size_t>(filled));
}

} // namespace

ContentEquality compareContents(QFile &first, QFile &second, const AbandonCheck &abandoned)
{
    announceSequentialReading(first);
    announceSequentialReading(second);
    // One byte more than the file has: one call reads a small file and finds its end.
    const auto size = static_cast<std::size_t>(std::clamp<qint64>(first.size() + 1, 1, blockSize));
    std::vector<char> firstBlock(size);
    std::vector<char> secondBlock(size);
    while (true) {
        if (abandoned())
            return ContentEquality::Abandoned;
        const auto firstBytes = readBlock(first, firstBlock);
        if (!firstBytes)
            return ContentEquality::FirstUnreadable;
        const auto secondBytes = readBlock(second, secondBlock);
        if (!secondBytes)
            return ContentEquality::SecondUnreadable;
        if (!std::ranges::equal(*firstBytes, *secondBytes))
            return ContentEquality::Different;
        if (firstBytes->size() < size)
            return ContentEquality::Equal;
    }
}
