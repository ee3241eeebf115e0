#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QSize>
#include <QString>
#include <QTemporaryDir>

/// Maps the raw relative path of every entry below a folder to a description: kind, inode, size and link
/// target, if the system has them.
using DiskState = QMap<QByteArray, QByteArray>;

/// A valid file name that programs often handle wrongly.
struct HostileName
{
    const char *description;
    QString name;
};

/// A temporary folder whose content QTemporaryDir can neither list nor remove: too deep for a path, or with
/// names that are not text.
class HostileTree
{
public:
    HostileTree();
    ~HostileTree();
    Q_DISABLE_COPY_MOVE(HostileTree)

    /// The path of an entry, or of the tree itself.
    [[nodiscard]] QString path(const QString &name = {}) const;
    /// All entries on the disk; does not follow links.
    [[nodiscard]] DiskState state() const;
    /// The raw relative path of the entry with this absolute path.
    [[nodiscard]] QByteArray rawName(const QString &absolutePath) const;

private:
    QTemporaryDir m_folder;
};

/// The entries of \a before that are missing in \a after, in byte order.
[[nodiscard]] QList<QByteArray> goneFrom(const DiskState &before, const DiskState &after);

/// Names with line breaks, quotes, blanks, right-to-left text, pictograms and other unusual characters.
[[nodiscard]] QList<HostileName> hostileNames();

/// Writes empty files "0.\a suffix" upwards.
void writeEmptyFiles(const QString &folder, int count, const QString &suffix);
/// Writes a sparse file of \a size bytes that ends with \a tail.
[[nodiscard]] bool writeSparseFile(const QString &path, qint64 size, const QByteArray &tail);
/// Creates nested folders, \a levels deep, with a file in the innermost. The path may exceed the limits of
/// the system.
[[nodiscard]] bool writeDeepFile(const QString &folder, int levels, const QByteArray &folderName,
    const QByteArray &fileName, const QByteArray &content);
/// Creates a device node for the null device.
[[nodiscard]] bool makeDevice(const QString &path);
/// Creates a folder whose name consists of these bytes.
[[nodiscard]] bool makeFolderWithRawName(const QString &folder, const QByteArray &name);

/// The start of an 8-bit colour PNG with these dimensions in its header but without pixels.
[[nodiscard]] QByteArray pngWithoutPixels(const QSize &size);
/// A complete black-and-white PNG: 0.001 bytes per pixel on the disk, 0.125 bytes decoded.
[[nodiscard]] QByteArray blackPng(const QSize &size);
/// The start of a JPEG with these dimensions in its header but without pixels.
[[nodiscard]] QByteArray jpegWithoutPixels(const QSize &size, bool progressive);
