#pragma once

#include <QFile>
#include <QString>

#include <optional>

/// A regular file, open for reading and unbuffered: reads only the bytes that the caller requests. Usable by
/// one thread at a time.
///
/// On Unix it calls the system directly: the additional system calls of QFile would take a fifth of the total
/// time for small files.
class RegularFile
{
public:
    /// Opens the file at \a path if it is a regular file. Does not block on a pipe. If another program such
    /// as a file server holds a lease on the file, blocks until the lease is released, as open() does.
    explicit RegularFile(const QString &path);
    ~RegularFile();
    Q_DISABLE_COPY_MOVE(RegularFile)

    [[nodiscard]] bool isOpen() const;

    /// The system's error message if the file is not open or the last read failed; otherwise empty.
    [[nodiscard]] QString errorText() const;

    /// The size in bytes at the time of opening.
    [[nodiscard]] qint64 sizeAtOpening() const;

    /// Starts reading \a count bytes from \a position on into the page cache, if the system can. Does not
    /// block.
    void prefetch(qint64 position, qint64 count) const;

    /// Starts reading the first \a count bytes into the page cache and, if the file is larger than twice
    /// that, the last \a count bytes. Returns false if the system cannot. Does not block.
    [[nodiscard]] bool prefetchEnds(qint64 count) const;

    /// Reads up to \a count bytes from \a position on into \a data. Returns the number of bytes read, which
    /// is lower at the end of the file or after an error; see errorText().
    [[nodiscard]] qint64 readAt(qint64 position, char *data, qint64 count);

    /// Like readAt(), but returns nothing without reading if the bytes are not in the page cache or the
    /// system cannot tell. Blocks if only some of them are.
    [[nodiscard]] std::optional<qint64> readIfCached(qint64 position, char *data, qint64 count);

    /// The current size in bytes. 0 for files of the kernel (/proc) that nevertheless have content.
    [[nodiscard]] qint64 size() const;

private:
#ifdef Q_OS_UNIX
    int m_descriptor;
    /// errno of the open or the last read; 0 if it succeeded.
    int m_error = 0;
    qint64 m_sizeAtOpening = 0;
    /// End position of the last read.
    qint64 m_end = 0;
#else
    QFile m_file;
#endif
};
