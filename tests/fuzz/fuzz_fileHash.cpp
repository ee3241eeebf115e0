#include "analysis/FileHash.h"
#include "tests/fuzz/FuzzReport.h"

#include <QCryptographicHash>

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <limits>

#include <sys/mman.h>
#include <unistd.h>

namespace {

/// Bytes written at each end of a file. The rest is a hole, which makes sizes around 2 and 4 GiB possible,
/// where 32-bit numbers overflow.
constexpr qint64 writtenBytes = qint64(10) * 1024;

/// The content of a file, computed instead of stored.
struct Content
{
    qint64 size;
    QByteArray key;

    char at(qint64 position) const
    {
        if (position >= writtenBytes && position < size - writtenBytes)
            return 0;
        // Differs from its neighbours and from the byte 1 KiB later, so that any shift is detected.
        const auto mixed = quint32(position + 1) * 2654435761u >> 24;
        return char(mixed ^ quint8(key.isEmpty() ? 0 : key.at(position % key.size())));
    }

    QByteArray part(qint64 from, qint64 to) const
    {
        QByteArray bytes(to - from, Qt::Uninitialized);
        for (qint64 i = 0; i < bytes.size(); ++i)
            bytes[i] = at(from + i);
        return bytes;
    }
};

QByteArray expectedHash(const Content &content, int chunkSize)
{
    QByteArray sampled;
    if (chunkSize > 0) {
        sampled = content.part(0, std::min<qint64>(chunkSize, content.size));
        if (content.size - chunkSize > chunkSize)
            sampled += content.part(content.size - chunkSize, content.size);
    }
    return QCryptographicHash::hash(sampled, QCryptographicHash::Sha256);
}

/// A file in memory (Linux only): fast, and gone when the process crashes.
class MemoryFile
{
    Q_DISABLE_COPY_MOVE(MemoryFile)

public:
    explicit MemoryFile(const Content &content)
        : m_descriptor(memfd_create("fuzz_fileHash", MFD_CLOEXEC))
    {
        const qint64 headEnd = std::min(writtenBytes, content.size);
        const qint64 tailStart = std::max(headEnd, content.size - writtenBytes);
        const bool written = ftruncate(m_descriptor, content.size) == 0 &&
                             write(content.part(0, headEnd), 0) &&
                             write(content.part(tailStart, content.size), tailStart);
        if (!written)
            qFatal("Cannot write a file of %lld bytes into memory", content.size);
    }
    ~MemoryFile()
    {
        close(m_descriptor);
    }

    QString path() const
    {
        return QStringLiteral("/proc/self/fd/%1").arg(m_descriptor);
    }

private:
    bool write(const QByteArray &bytes, qint64 position) const
    {
        return pwrite(m_descriptor, bytes.constData(), size_t(bytes.size()), position) == bytes.size();
    }

    int m_descriptor;
};

int consumeChunkSize(FuzzedDataProvider &data)
{
    switch (data.ConsumeIntegralInRange(0, 15)) {
    case 0:
        return data.ConsumeIntegralInRange(std::numeric_limits<int>::min(), 0);
    case 1:
        return data.ConsumeIntegralInRange(4090, 4100);
    case 2:
    case 3:
    case 4:
        return data.ConsumeIntegralInRange(0, int(writtenBytes));
    case 5:
    case 6:
    case 7:
        return data.ConsumeIntegralInRange(0, 40);
    default:
        return 4096;
    }
}

qint64 consumeSize(FuzzedDataProvider &data, int chunkSize)
{
    if (chunkSize < 0 || data.ConsumeBool())
        return data.ConsumeIntegralInRange<qint64>(0, 3 * writtenBytes);
    const auto nearBy = data.ConsumeIntegralInRange<qint64>(-3, 3);
    if (data.ConsumeBool())
        return std::max<qint64>(0, data.ConsumeIntegralInRange(0, 3) * qint64(chunkSize) + nearBy);
    const qint64 power = qint64(1) << data.ConsumeIntegralInRange(16, 45);
    return power + data.ConsumeIntegralInRange(0, 2) * qint64(chunkSize) + nearBy;
}

void check(const Content &content, int chunkSize)
{
    const MemoryFile file(content);
    expectEqual("Fingerprint", computeFileHash(file.path(), chunkSize).toHex(),
        expectedHash(content, chunkSize).toHex(), qMakePair(content.size, chunkSize));
}

} // namespace

/// Checks chunk sizes that overflow an int when doubled. Once only, because AddressSanitizer takes 0.1 s to
/// free such a large buffer.
extern "C" int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/)
{
    check({3 * writtenBytes, "large chunk"}, 1 << 30);
    check({3 * writtenBytes, "larger chunk"}, (1 << 30) + (1 << 29));
    return 0;
}

/// Compares the fingerprint with the reference for any file size and chunk size.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t count)
{
    FuzzedDataProvider data(bytes, count);
    const int chunkSize = consumeChunkSize(data);
    Content content{consumeSize(data, chunkSize), {}};
    content.key = QByteArray::fromStdString(data.ConsumeRemainingBytesAsString());
    check(content, chunkSize);
    return 0;
}
