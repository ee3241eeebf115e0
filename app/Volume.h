#pragma once

#include <QList>
#include <QString>

class QStorageInfo;

/// What the folder list shows of a volume.
struct Volume
{
    QString rootPath;
    /// False for a drive without a medium.
    bool isReady = true;
    bool isReadOnly = false;

    friend bool operator==(const Volume &, const Volume &) = default;
};

[[nodiscard]] Volume volumeOf(const QStorageInfo &storage);

/// All volumes that the system has mounted, in its order.
[[nodiscard]] QList<Volume> mountedVolumes();

/// Whether the folder list has a row for \a volume.
[[nodiscard]] bool isListed(const Volume &volume);
