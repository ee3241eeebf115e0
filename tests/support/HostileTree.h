#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QSize>
#include <QString>
#include <QTemporaryDir>

/// What a folder holds below it, by the raw bytes of the relative path: kind, inode, size and target of a
/// link, as far as the system has them.
using DiskState = QMap<QByteArray, QByteArray>;

/// A name that is legal on a disk and inconvenient everywhere else.
struct HostileName
{
    const char *description;
    QString name;
};

/// A folder for trees that a QTemporaryDir can neither list nor clear away: too deep for a path, or with
/// names that are no text.
class HostileTree
{
public:
    HostileTree();
    ~HostileTree();
    Q_DISABLE_COPY_MOVE(HostileTree)

    /// The path of an entry, or of the tree itself.
    [[nodiscard]] QString path(const QString &name = {}) const;
    /// Everything below the tree as the disk itself has it, links not followed.
    [[nodiscard]] DiskState state() const;
    /// The raw relative path of the entry with this absolute path.
    [[nodiscard]] QByteArray rawName(const QString &absolutePath) const;

private:
    QTemporaryDir m_folder;
};

/// The entries of \a before that \a after lacks, in the order of their bytes.
[[nodiscard]] QList<QByteArray> goneFrom(const DiskState &before, const DiskState &after);

/// Names with line breaks, quotes, blanks, text from right to left, pictograms and whatever else a disk
/// takes.
[[nodiscard]] QList<HostileName> hostileNames();

/// Writes empty files "0.\a suffix" upwards.
void writeEmptyFiles(const QString &folder, int count, const QString &suffix);
/// Writes a file of \a size bytes of which only \a tail, at its end, takes room on the disk.
[[nodiscard]] bool writeSparseFile(const QString &path, qint64 size, const QByteArray &tail);
/// Makes folders inside each other, \a levels deep, with \a fileName in the innermost; however long the path
/// is.
[[nodiscard]] bool writeDeepFile(const QString &folder, int levels, const QByteArray &folderName,
    const QByteArray &fileName, const QByteArray &content);
/// Makes a node that stands for the null device.
[[nodiscard]] bool makeDevice(const QString &path);
/// Makes a folder whose name is these bytes.
[[nodiscard]] bool makeFolderWithRawName(const QString &folder, const QByteArray &name);

/// The start of an 8-bit colour PNG that claims these dimensions and then stops.
[[nodiscard]] QByteArray pngWithoutPixels(const QSize &size);
/// A complete black and white PNG: a thousandth of a byte per pixel on the disk, an eighth when decoded.
[[nodiscard]] QByteArray blackPng(const QSize &size);
/// The start of a JPEG that claims these dimensions and then stops.
[[nodiscard]] QByteArray jpegWithoutPixels(const QSize &size, bool progressive);
