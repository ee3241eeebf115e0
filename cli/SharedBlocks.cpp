#include "cli/NameActions.h"

using Qt::StringLiterals::operator""_s;

namespace {

Obstacle unsupported()
{
    return {Obstacle::Kind::System, u"its file system does not share blocks"_s};
}

} // namespace

#ifdef Q_OS_LINUX

#include "cli/SystemError.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <new>

#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

namespace {

/// Bytes to share in one call: the limit of Btrfs.
constexpr quint64 mostAtOnce = 16ULL * 1024 * 1024;

Obstacle obstacleOf(int error)
{
    if (error == EOPNOTSUPP || error == ENOTTY || error == ENOSYS || error == EINVAL)
        return unsupported();
    return systemObstacle(error);
}

/// Shares up to \a length bytes from \a position on. Sets \a shared to the number of bytes that the kernel
/// shared.
std::optional<Obstacle> shareRange(
    const HeldFile &kept, const HeldFile &candidate, quint64 position, quint64 length, quint64 &shared)
{
    // The structure ends with an array of targets: here, one.
    alignas(file_dedupe_range) std::array<char, sizeof(file_dedupe_range) + sizeof(file_dedupe_range_info)>
        memory{};
    auto *const request = new (memory.data()) file_dedupe_range;
    auto &target = *new (memory.data() + sizeof(file_dedupe_range)) file_dedupe_range_info{};
    request->src_offset = position;
    request->src_length = length;
    request->dest_count = 1;
    request->reserved1 = 0;
    request->reserved2 = 0;
    target.dest_fd = candidate.content().handle();
    target.dest_offset = position;
    if (::ioctl(kept.content().handle(), FIDEDUPERANGE, request) != 0)
        return obstacleOf(errno);
    if (target.status == FILE_DEDUPE_RANGE_DIFFERS)
        return Obstacle{Obstacle::Kind::NotAsReported, u"contents differ"_s};
    if (target.status < 0)
        return obstacleOf(-target.status);
    shared = target.bytes_deduped;
    return std::nullopt;
}

/// Some file systems change the modification time when blocks are shared.
void restoreModificationTime(const HeldFile &file)
{
    struct stat status = {};
    const timespec before = file.status().st_mtim;
    if (::fstat(file.content().handle(), &status) == 0 && status.st_mtim.tv_sec == before.tv_sec &&
        status.st_mtim.tv_nsec == before.tv_nsec)
        return;
    const std::array times{timespec{0, UTIME_OMIT}, before};
    (void)::futimens(file.content().handle(), times.data());
}

} // namespace

std::optional<Obstacle> shareBlocks(const HeldFile &kept, const HeldFile &candidate)
{
    const auto size = static_cast<quint64>(candidate.size());
    for (quint64 position = 0; position < size;) {
        quint64 shared = 0;
        const quint64 length = std::min(mostAtOnce, size - position);
        if (const auto obstacle = shareRange(kept, candidate, position, length, shared))
            return obstacle;
        if (shared == 0)
            return unsupported();
        position += shared;
    }
    restoreModificationTime(candidate);
    return std::nullopt;
}

std::optional<Obstacle> foreseeUnsharedBlocks(const HeldFile &kept, const HeldFile &candidate)
{
    quint64 shared = 0;
    return shareRange(kept, candidate, 0, 0, shared);
}

#else

std::optional<Obstacle> shareBlocks(const HeldFile & /*kept*/, const HeldFile & /*candidate*/)
{
    return unsupported();
}

std::optional<Obstacle> foreseeUnsharedBlocks(const HeldFile & /*kept*/, const HeldFile & /*candidate*/)
{
    return unsupported();
}

#endif
