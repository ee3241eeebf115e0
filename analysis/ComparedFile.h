#pragma once

#include "analysis/RegularFile.h"
#include "scan/FileSurvey.h"

#include <QString>

#include <span>

/// A file that is read piece by piece and must have the size that the survey found. Any thread, one at a
/// time.
class ComparedFile
{
public:
    explicit ComparedFile(const SurveyedFile &file);

    /// Why the file could not be opened or read; empty while all goes well.
    [[nodiscard]] const QString &problem() const;

    /// Fills \a piece with the bytes from \a position on; problem() tells why not.
    void read(qint64 position, std::span<char> piece);

    /// As read(), but reads nothing and returns false while the bytes are not in memory.
    [[nodiscard]] bool readFromMemory(qint64 position, std::span<char> piece);

    /// Has the system fetch \a count bytes from \a position on in the background, if it can.
    void prefetch(qint64 position, qint64 count) const;

private:
    void check(qint64 read, std::span<char> piece);

    RegularFile m_file;
    QString m_problem;
};
