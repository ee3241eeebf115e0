#include "analysis/FileHash.h"

#include "analysis/PoolThreadRelease.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QThreadPool>
#include <QVarLengthArray>
#include <QtConcurrentMap>

#include <algorithm>

namespace {

constexpr int sampleSize = 4096;

using SampleBuffer = QVarLengthArray<char, sampleSize>;

/// Reads up to the buffer's size from the file's current position; what could not be read is left out.
QByteArrayView readSample(QFile &file, SampleBuffer &buffer)
{
    const qint64 count = file.read(buffer.data(), buffer.size());
    return QByteArrayView(buffer.constData(), std::max<qint64>(count, 0));
}

void appendHash(QList<FileHash> &hashes, const FileHash &hash)
{
    hashes.push_back(hash);
}

} // namespace

QByteArray computeFileHash(const QString &path, int chunkSize)
{
    // Opening a pipe would wait for its other end for ever, opening a device can set it off.
    if (!QFileInfo(path).isFile())
        return {};
    QFile file(path);
    // Buffered, QFile reads 16 KiB ahead.
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return {};

    SampleBuffer buffer(std::max(chunkSize, 0));
    QCryptographicHash digest(QCryptographicHash::Sha256);
    digest.addData(readSample(file, buffer));
    // Asked only now: kernel files report no size and still yield bytes.
    const qint64 size = file.size();
    if (size > 2 * qint64(buffer.size())) {
        file.seek(size - buffer.size());
        digest.addData(readSample(file, buffer));
    }
    return digest.result();
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
