#include "analysis/FileHash.h"

#include "analysis/PoolThreadRelease.h"
#include "analysis/Sha256.h"

#include <QFile>
#include <QFileInfo>
#include <QThreadPool>
#include <QVarLengthArray>
#include <QtConcurrentMap>

#include <algorithm>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

constexpr int sampleSize = 4096;

using SampleBuffer = QVarLengthArray<char, sampleSize>;

// Buffered, QFile reads 16 KiB ahead.
constexpr QIODevice::OpenMode readUnbuffered = QIODevice::ReadOnly | QIODevice::Unbuffered;

/// Opens \a file for reading; false when that fails or it is not a regular file. Never waits for the other
/// end of a pipe.
bool openRegularFile(QFile &file)
{
#ifdef Q_OS_UNIX
    // To ask for the type first would look the path up twice, which takes as long as reading the file.
    const QByteArray path = QFile::encodeName(file.fileName());
    const int descriptor = ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        return false;
    struct stat status = {};
    if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
        file.open(descriptor, readUnbuffered, QFileDevice::AutoCloseHandle))
        return true;
    ::close(descriptor);
    return false;
#else
    return QFileInfo(file).isFile() && file.open(readUnbuffered);
#endif
}

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
    QFile file(path);
    if (!openRegularFile(file))
        return {};

    SampleBuffer headBuffer(std::max(chunkSize, 0));
    SampleBuffer tailBuffer(headBuffer.size());
    const QByteArrayView head = readSample(file, headBuffer);
    QByteArrayView tail;
    // Asked only now: kernel files report no size and still yield bytes.
    const qint64 size = file.size();
    if (size > 2 * qint64(headBuffer.size())) {
        file.seek(size - tailBuffer.size());
        tail = readSample(file, tailBuffer);
    }
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
