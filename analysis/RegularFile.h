#pragma once

#include <QFile>
#include <QString>

#include <optional>

/// The size in bytes of the file at \a path, as QFileInfo::size() tells it; 0 when it does not exist. Any
/// thread.
qint64 fileSize(const QString &path);

/// A regular file open for reading, without a buffer: nothing is read but what was asked for.
///
/// Any thread, one at a time. On Unix it works on the descriptor itself: QFile makes further system calls
/// when it takes one over, which for small files is a fifth of the whole time.
class RegularFile
{
public:
    /// Opens the file at \a path. Anything but a regular file is left alone; a pipe in its place is never
    /// waited for. Where another program, a file server for instance, holds a lease on the file, waits until
    /// the system has got it back, as any open does.
    explicit RegularFile(const QString &path);
    ~RegularFile();
    Q_DISABLE_COPY_MOVE(RegularFile)

    [[nodiscard]] bool isOpen() const;

    /// Why the file is not open, or why the last reading failed, in the system's words; empty when neither
    /// did.
    [[nodiscard]] QString errorText() const;

    /// The size in bytes when the file was opened.
    [[nodiscard]] qint64 sizeAtOpening() const;

    /// Has the system fetch \a count bytes from \a position on in the background, if it can.
    void prefetch(qint64 position, qint64 count) const;

    /// Has the system fetch the first \a count bytes in the background and, of a file larger than twice that,
    /// the last ones. False where it cannot.
    [[nodiscard]] bool prefetchEnds(qint64 count) const;

    /// Reads up to \a count bytes from \a position on into \a data and returns how many came before the file
    /// ended or failed.
    qint64 readAt(qint64 position, char *data, qint64 count);

    /// Like readAt(), but nothing is read, and nothing returned, while the bytes are not in memory or the
    /// system does not tell. Still waits when it has only some of them.
    std::optional<qint64> readAtOnce(qint64 position, char *data, qint64 count);

    /// The size in bytes at this moment. Kernel files report 0 and still yield bytes.
    [[nodiscard]] qint64 size() const;

private:
#ifdef Q_OS_UNIX
    int m_descriptor;
    /// Of the opening or the last reading, as errno tells it; 0 for none.
    int m_error = 0;
    qint64 m_sizeAtOpening = 0;
    /// Where the last reading ended.
    qint64 m_end = 0;
#else
    QFile m_file;
#endif
};
