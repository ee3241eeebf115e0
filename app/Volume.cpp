#include "app/Volume.h"

#include <QStorageInfo>

Volume volumeOf(const QStorageInfo &storage)
{
    return {storage.rootPath(), storage.isValid() && storage.isReady(), storage.isReadOnly()};
}

QList<Volume> mountedVolumes()
{
    QList<Volume> volumes;
    const QList<QStorageInfo> storages = QStorageInfo::mountedVolumes();
    for (const QStorageInfo &storage : storages)
        volumes.append(volumeOf(storage));
    return volumes;
}

bool isListed(const Volume &volume)
{
    return volume.isReady && !volume.rootPath.isEmpty();
}
