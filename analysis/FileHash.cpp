#include "analysis/FileHash.h"

#include "analysis/PoolThreadRelease.h"
#include "analysis/RegularFile.h"
#include "analysis/Sha256.h"

#include <QThreadPool>
#include <QVarLengthArray>
#include <QtConcurrentMap>

#include <algorithm>
#include <span>

namespace {

constexpr int sampleSize = 4096;

using SampleBuffer = QVarLengthArray<char, sampleSize>;

/// Reads up to the buffer's size from \a position on; what could not be read is left out.
QByteArrayView readSample(RegularFile &file, qint64 position, SampleBuffer &buffer)
{
    return QByteArrayView(buffer.constData(), file.readAt(position, buffer.data(), buffer.size()));
}

using Paths = std::span<const QString>;

/// Few enough files for all threads to finish at about the same time. For each portion Qt takes a lock and
/// looks at the clock, which for single small files is a tenth of the time.
constexpr qsizetype filesOfAPortion = 16;

QList<Paths> splitIntoPortions(Paths paths)
{
    const qsizetype threads = std::max(1, QThreadPool::globalInstance()->maxThreadCount());
    const qsizetype share = static_cast<qsizetype>(paths.size()) / (2 * threads);
    const auto size = static_cast<std::size_t>(std::clamp<qsizetype>(share, 1, filesOfAPortion));
    QList<Paths> portions;
    for (; !paths.empty(); paths = paths.subspan(portions.last().size()))
        portions.append(paths.first(std::min(size, paths.size())));
    return portions;
}

void appendHashes(QList<FileHash> &hashes, const QList<FileHash> &portion)
{
    hashes += portion;
}

} // namespace

QByteArray computeFileHash(const QString &path, int chunkSize)
{
    RegularFile file(path);
    if (!file.isOpen())
        return {};

    SampleBuffer headBuffer(std::max(chunkSize, 0));
    SampleBuffer tailBuffer(headBuffer.size());
    const QByteArrayView head = readSample(file, 0, headBuffer);
    QByteArrayView tail;
    // Asked only now: kernel files report no size and still yield bytes.
    const qint64 size = file.size();
    if (size > 2 * qint64(headBuffer.size()))
        tail = readSample(file, size - tailBuffer.size(), tailBuffer);
    return sha256(head, tail);
}

QFuture<QList<FileHash>> startComputingHashes(const QList<QString> &paths, std::function<bool()> abandoned)
{
    // The portions point into the list, which the functor keeps.
    const auto hashFiles = [paths, abandoned = std::move(abandoned)](Paths portion) {
        QList<FileHash> hashes;
        hashes.reserve(static_cast<qsizetype>(portion.size()));
        for (const QString &path : portion)
            hashes.append({path, abandoned() ? QByteArray() : computeFileHash(path, sampleSize)});
        return hashes;
    };
    return QtConcurrent::mappedReduced<QList<FileHash>>(QThreadPool::globalInstance(),
        splitIntoPortions({paths.cbegin(), paths.cend()}), hashFiles, appendHashes,
        QtConcurrent::OrderedReduce);
}

QList<FileHash> computeHashesConcurrently(const QList<QString> &paths)
{
    QFuture<QList<FileHash>> hashes = startComputingHashes(paths, [] { return false; });
    waitReleasingPoolThread(hashes);
    return hashes.takeResult();
}
