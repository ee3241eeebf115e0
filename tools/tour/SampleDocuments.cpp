#include "tools/tour/SampleDocuments.h"

#include <QBuffer>
#include <QDataStream>
#include <QPainter>
#include <QPdfWriter>
#include <QRandomGenerator>

#include <array>
#include <cmath>
#include <numbers>

namespace {

/// Writes little-endian numbers, as the WAV and zip formats require.
class LittleEndianStream : public QDataStream
{
public:
    explicit LittleEndianStream(QByteArray *content)
        : QDataStream(content, QIODevice::WriteOnly)
    {
        setByteOrder(LittleEndian);
    }

    void writeText(const QByteArray &text)
    {
        writeRawData(text.constData(), static_cast<int>(text.size()));
    }
};

/// The checksum of zip archives: CRC-32 of IEEE 802.3.
quint32 checkSum(const QByteArray &content)
{
    quint32 sum = 0xffffffff;
    for (const char byte : content) {
        sum ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1) ^ ((sum & 1) != 0 ? 0xedb88320 : 0);
    }
    return ~sum;
}

/// Writes the fields that are both in the header of an entry and in the directory at the end of the archive.
void writeEntryFields(LittleEndianStream &out, const ArchiveEntry &entry)
{
    constexpr quint16 version = 10;
    constexpr quint16 stored = 0;
    constexpr quint16 firstDay = 33; // 1 January 1980
    const auto size = static_cast<quint32>(entry.content.size());
    out << version << quint16(0) << stored << quint16(0) << firstDay << checkSum(entry.content) << size
        << size << static_cast<quint16>(entry.name.size()) << quint16(0);
}

} // namespace

QByteArray pdfPage(const QString &heading, const QString &text)
{
    QByteArray content;
    QBuffer buffer(&content);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(heading);
    writer.setResolution(96);
    QPainter painter(&writer);
    QFont font = painter.font();
    font.setPointSize(20);
    painter.setFont(font);
    painter.drawText(20, 60, heading);
    font.setPointSize(11);
    painter.setFont(font);
    painter.drawText(QRect(20, 90, 600, 800), Qt::TextWordWrap, text);
    painter.end();
    return content;
}

QByteArray melody(quint32 seed, int seconds)
{
    constexpr quint32 rate = 8000; // samples of one byte per second
    constexpr std::array frequencies{220.0, 246.9, 277.2, 329.6, 370.0, 440.0, 493.9, 554.4};
    constexpr int notesPerSecond = 3;
    QRandomGenerator random(seed);
    QByteArray samples;
    for (int note = 0; note < seconds * notesPerSecond; ++note) {
        const double frequency = frequencies.at(random.bounded(quint32(frequencies.size())));
        constexpr quint32 length = rate / notesPerSecond;
        for (quint32 i = 0; i < length; ++i) {
            const double fading = 1.0 - double(i) / length;
            const double angle = 2 * std::numbers::pi * frequency * i / rate;
            samples.append(static_cast<char>(128 + std::lround(90 * fading * std::sin(angle))));
        }
    }

    constexpr quint16 uncompressed = 1;
    constexpr quint16 channels = 1;
    constexpr quint16 bytesPerSample = 1;
    const auto size = static_cast<quint32>(samples.size());
    QByteArray content;
    LittleEndianStream out(&content);
    out.writeText("RIFF");
    out << 36 + size;
    out.writeText("WAVEfmt ");
    out << quint32(16) << uncompressed << channels << rate << rate << bytesPerSample << quint16(8);
    out.writeText("data");
    out << size;
    out.writeText(samples);
    return content;
}

QByteArray zipArchive(const QList<ArchiveEntry> &entries)
{
    QByteArray content;
    LittleEndianStream out(&content);
    QByteArray directory;
    LittleEndianStream directoryOut(&directory);
    for (const ArchiveEntry &entry : entries) {
        directoryOut.writeText("PK\1\2");
        directoryOut << quint16(20);
        writeEntryFields(directoryOut, entry);
        directoryOut << quint16(0) << quint16(0) << quint16(0) << quint32(0)
                     << static_cast<quint32>(content.size());
        directoryOut.writeText(entry.name);

        out.writeText("PK\3\4");
        writeEntryFields(out, entry);
        out.writeText(entry.name);
        out.writeText(entry.content);
    }
    const auto count = static_cast<quint16>(entries.size());
    const auto directoryStart = static_cast<quint32>(content.size());
    out.writeText(directory);
    out.writeText("PK\5\6");
    out << quint16(0) << quint16(0) << count << count << static_cast<quint32>(directory.size())
        << directoryStart << quint16(0);
    return content;
}
