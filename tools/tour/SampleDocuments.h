#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// A PDF of one page.
[[nodiscard]] QByteArray pdfPage(const QString &heading, const QString &text);

/// A melody of \a seconds as a WAV file; another \a seed is another melody.
[[nodiscard]] QByteArray melody(quint32 seed, int seconds);

struct ArchiveEntry
{
    QByteArray name;
    QByteArray content;
};

/// A zip archive that holds its entries uncompressed.
[[nodiscard]] QByteArray zipArchive(const QList<ArchiveEntry> &entries);
