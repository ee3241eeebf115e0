#include "analysis/FileHash.h"

#include "analysis/PoolThreadRelease.h"
#include "analysis/RegularFile.h"
#include "analysis/Sha256.h"

#include <QThreadPool>
#include <QVarLengthArray>
#include <QtConcurrentMap>

#include <algorithm>
#include <optional>
#include <span>
#include <vector>

namespace {

constexpr int sampleSize = fingerprintSampleSize;

using SampleBuffer = QVarLengthArray<char, sampleSize>;

/// The fingerprint of an open file whose first \a read bytes are in \a headBuffer.
QByteArray fingerprintFromHead(RegularFile &file, const SampleBuffer &headBuffer, qint64 read)
{
    SampleBuffer tailBuffer(headBuffer.size());
    QByteArrayView tail;
    // The size after the head was read: files of the kernel (/proc) report 0 but have content.
    const qint64 size = file.size();
    if (size > 2 * qint64(headBuffer.size())) {
        const qint64 position = size - tailBuffer.size();
        tail = {tailBuffer.constData(), file.readAt(position, tailBuffer.data(), tailBuffer.size())};
    }
    return sha256({headBuffer.constData(), read}, tail);
}

/// The fingerprint of \a file; empty if it is not open.
QByteArray fingerprintOf(RegularFile &file, int chunkSize)
{
    if (!file.isOpen())
        return {};
    SampleBuffer head(std::max(chunkSize, 0));
    const qint64 read = file.readAt(0, head.data(), head.size());
    return fingerprintFromHead(file, head, read);
}

/// The fingerprint of \a file, empty if it is not open; nothing if its head is not in the page cache.
std::optional<QByteArray> fingerprintIfCached(RegularFile &file)
{
    if (!file.isOpen())
        return QByteArray();
    SampleBuffer head(sampleSize);
    const std::optional<qint64> read = file.readIfCached(0, head.data(), head.size());
    return read ? std::optional(fingerprintFromHead(file, head, *read)) : std::nullopt;
}

using Paths = std::span<const QString>;

/// Files that one thread keeps open, so that the disk can reorder the reads. With a cold cache this halves
/// the time for small files and saves a third for large ones.
constexpr qsizetype filesPerPortion = 16;
/// Files that all threads together keep open. Well below the limit of 256 for a process on some systems.
constexpr qsizetype maxOpenFiles = 64;

QList<Paths> splitIntoPortions(Paths paths)
{
    const qsizetype threads = std::max(1, QThreadPool::globalInstance()->maxThreadCount());
    const qsizetype most = std::clamp<qsizetype>(maxOpenFiles / threads, 1, filesPerPortion);
    // Small enough that all threads finish at about the same time.
    const qsizetype share = static_cast<qsizetype>(paths.size()) / (2 * threads);
    const auto size = static_cast<std::size_t>(std::clamp<qsizetype>(share, 1, most));
    QList<Paths> portions;
    for (; !paths.empty(); paths = paths.subspan(portions.last().size()))
        portions.append(paths.first(std::min(size, paths.size())));
    return portions;
}

/// The fingerprints of the files of a portion. Computes those whose heads are in the page cache immediately;
/// prefetches the others and computes them afterwards.
QList<FileHash> hashPortion(Paths paths, const AbandonCheck &abandoned)
{
    QList<FileHash> hashes;
    hashes.reserve(static_cast<qsizetype>(paths.size()));
    std::vector<std::optional<RegularFile>> files(paths.size());
    for (std::size_t i = 0; i < paths.size(); ++i) {
        hashes.append({paths[i], {}});
        if (abandoned())
            continue;
        RegularFile &file = files[i].emplace(paths[i]);
        std::optional<QByteArray> fingerprint = fingerprintIfCached(file);
        if (!fingerprint && file.prefetchEnds(sampleSize))
            continue;
        hashes.last().hash = fingerprint ? std::move(*fingerprint) : fingerprintOf(file, sampleSize);
        files[i].reset();
    }
    for (std::size_t i = 0; i < paths.size(); ++i) {
        if (files[i] && !abandoned())
            hashes[static_cast<qsizetype>(i)].hash = fingerprintOf(*files[i], sampleSize);
        files[i].reset();
    }
    return hashes;
}

void appendHashes(QList<FileHash> &hashes, const QList<FileHash> &portion)
{
    hashes += portion;
}

} // namespace

QByteArray computeFileHash(const QString &path, int chunkSize)
{
    RegularFile file(path);
    return fingerprintOf(file, chunkSize);
}

QFuture<QList<FileHash>> startComputingHashes(const QStringList &paths, AbandonCheck abandoned)
{
    // The portions point into the copy of the list that the functor owns.
    const auto hashFiles = [paths, abandoned = std::move(abandoned)](
                               Paths portion) { return hashPortion(portion, abandoned); };
    return QtConcurrent::mappedReduced<QList<FileHash>>(QThreadPool::globalInstance(),
        splitIntoPortions({paths.cbegin(), paths.cend()}), hashFiles, appendHashes,
        QtConcurrent::OrderedReduce);
}

QList<FileHash> computeHashesConcurrently(const QStringList &paths)
{
    QFuture<QList<FileHash>> hashes = startComputingHashes(paths, [] { return false; });
    waitReleasingPoolThread(hashes);
    return hashes.takeResult();
}
