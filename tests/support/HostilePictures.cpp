#include "tests/support/HostileTree.h"

#include <QtEndian>

namespace {

QByteArray bigEndian(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

/// The checksum at the end of every PNG chunk.
quint32 crc32(const QByteArray &bytes)
{
    quint32 crc = 0xffffffff;
    for (const char byte : bytes) {
        crc ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ ((crc & 1) ? 0xedb88320 : 0);
    }
    return ~crc;
}

QByteArray pngChunk(const QByteArray &type, const QByteArray &content)
{
    return bigEndian(static_cast<quint32>(content.size())) + type + content +
           bigEndian(crc32(type + content));
}

QByteArray pngStart(const QSize &size, char bitDepth, char colorType)
{
    const QByteArray header = bigEndian(static_cast<quint32>(size.width())) +
                              bigEndian(static_cast<quint32>(size.height())) + bitDepth + colorType +
                              QByteArray(3, '\0');
    return QByteArray("\x89PNG\r\n\x1a\n") + pngChunk("IHDR", header);
}

} // namespace

QByteArray pngWithoutPixels(const QSize &size)
{
    return pngStart(size, 8, 2) + pngChunk("IDAT", qCompress(QByteArray(64, '\0')).mid(4));
}

QByteArray blackPng(const QSize &size)
{
    const qsizetype bytesPerRow = 1 + (size.width() + 7) / 8;
    // qCompress() prefixes the stream with the size.
    const QByteArray pixels = qCompress(QByteArray(bytesPerRow * size.height(), '\0'), 1).mid(4);
    return pngStart(size, 1, 0) + pngChunk("IDAT", pixels) + pngChunk("IEND", {});
}

QByteArray jpegWithoutPixels(const QSize &size, bool progressive)
{
    const QByteArray dimensions = bigEndian(static_cast<quint32>(size.height())).mid(2) +
                                  bigEndian(static_cast<quint32>(size.width())).mid(2);
    // Quantisation by one, three components without subsampling, one Huffman code of one bit.
    const QByteArray quantisation = QByteArray::fromHex("ffdb004300") + QByteArray(64, '\1');
    const QByteArray frame = QByteArray::fromHex(progressive ? "ffc2001108" : "ffc0001108") + dimensions +
                             QByteArray::fromHex("03011100021100031100");
    const QByteArray codes = QByteArray(1, '\1') + QByteArray(16, '\0');
    const QByteArray huffman = QByteArray::fromHex("ffc4001400") + codes.left(1) + QByteArray(15, '\0') +
                               QByteArray(1, '\0') + QByteArray::fromHex("ffc4001410") + codes;
    const QByteArray scan =
        QByteArray::fromHex(progressive ? "ffda000c03010002000300000000" : "ffda000c03010002000300003f00");
    return QByteArray::fromHex("ffd8") + quantisation + frame + huffman + scan + QByteArray(256, '\0');
}
