#pragma once

#include <QList>
#include <QString>

class QStorageInfo;

/// A mounted volume, as far as the folder list shows it.
struct Volume
{
    QString rootPath;
    /// False for a drive without a medium.
    bool isReady = true;
    bool isReadOnly = false;

    friend bool operator==(const Volume &, const Volume &) = default;
};

[[nodiscard]] Volume volumeOf(const QStorageInfo &storage);

/// Returns all mounted volumes in the order of QStorageInfo::mountedVolumes().
[[nodiscard]] QList<Volume> mountedVolumes();

/// Returns true if \a volume gets a row in the folder list: it is ready and has a root path.
[[nodiscard]] bool isListed(const Volume &volume);
