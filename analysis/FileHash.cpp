#include "analysis/FileHash.h"

#include "analysis/PoolThreadRelease.h"
#include "analysis/RegularFile.h"
#include "analysis/Sha256.h"

#include <QThreadPool>
#include <QVarLengthArray>
#include <QtConcurrentMap>

#include <algorithm>

namespace {

constexpr int sampleSize = 4096;

using SampleBuffer = QVarLengthArray<char, sampleSize>;

/// Reads up to the buffer's size from \a position on; what could not be read is left out.
QByteArrayView readSample(RegularFile &file, qint64 position, SampleBuffer &buffer)
{
    return QByteArrayView(buffer.constData(), file.readAt(position, buffer.data(), buffer.size()));
}

void appendHash(QList<FileHash> &hashes, const FileHash &hash)
{
    hashes.push_back(hash);
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
    const auto hashFile = [abandoned = std::move(abandoned)](const QString &path) {
        return FileHash{path, abandoned() ? QByteArray() : computeFileHash(path, sampleSize)};
    };
    return QtConcurrent::mappedReduced<QList<FileHash>>(
        QThreadPool::globalInstance(), paths, hashFile, appendHash, QtConcurrent::OrderedReduce);
}

QList<FileHash> computeHashesConcurrently(const QList<QString> &paths)
{
    QFuture<QList<FileHash>> hashes = startComputingHashes(paths, [] { return false; });
    waitReleasingPoolThread(hashes);
    return hashes.takeResult();
}
