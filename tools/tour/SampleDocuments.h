#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// A PDF of one page.
[[nodiscard]] QByteArray pdfPage(const QString &heading, const QString &text);

/// A WAV file of \a seconds; each \a seed gives a different melody.
[[nodiscard]] QByteArray melody(quint32 seed, int seconds);

struct ArchiveEntry
{
    QByteArray name;
    QByteArray content;
};

/// A zip archive with uncompressed entries.
[[nodiscard]] QByteArray zipArchive(const QList<ArchiveEntry> &entries);
